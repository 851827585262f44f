#include "PatParser.h"

#include <charconv>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace ca {

namespace {

OdString widen(const std::string& utf8) { return OdString::fromUtf8(utf8); }

std::string trimmed(const std::string& text) {
    const char* blanks = " \t\r\f\v";
    size_t first = text.find_first_not_of(blanks);
    if (first == std::string::npos) return std::string();
    size_t last = text.find_last_not_of(blanks);
    return text.substr(first, last - first + 1);
}

std::string upper(std::string text) {
    for (char& ch : text)
        if (ch >= 'a' && ch <= 'z') ch = static_cast<char>(ch - 'a' + 'A');
    return text;
}

// Parses one number field; from_chars is locale independent, which strtod is not once the UI
// has set a locale with a decimal comma.
bool parseNumber(const std::string& field, double& value) {
    const char* begin = field.data();
    const char* end = begin + field.size();
    if (begin != end && *begin == '+') ++begin;
    if (begin == end) return false;
    auto [stop, error] = std::from_chars(begin, end, value);
    return error == std::errc() && stop == end && std::isfinite(value);
}

class Parser {
public:
    Parser(const OdString& fileName) : m_fileName(fileName) {}

    std::vector<HatchPattern> run(const std::string& text) {
        size_t start = 0;
        if (text.compare(0, 3, "\xEF\xBB\xBF") == 0) start = 3;
        while (start <= text.size()) {
            size_t end = text.find('\n', start);
            if (end == std::string::npos) end = text.size();
            ++m_lineNumber;
            readLine(text.substr(start, end - start));
            start = end + 1;
        }
        finishPattern();
        return std::move(m_patterns);
    }

private:
    [[noreturn]] void fail(const OdString& problem) const {
        throw PatParseError(m_fileName, m_lineNumber, problem);
    }

    void readLine(const std::string& raw) {
        std::string line = trimmed(raw);
        if (line.empty()) return;
        if (line[0] == ';') {
            if (line.size() > 1 && line[1] == '%') readDirective(line.substr(2));
            return;
        }
        size_t comment = line.find(';');
        if (comment != std::string::npos) line = trimmed(line.substr(0, comment));
        if (line.empty()) return;
        if (line[0] == '*')
            readHeader(line.substr(1));
        else
            readLineFamily(line);
    }

    // ";%TYPE=MODEL" and ";%UNITS=..." apply to the current pattern, or, before the first
    // header, to every pattern of the file. Other ";%" lines are comments.
    void readDirective(const std::string& directive) {
        size_t equals = directive.find('=');
        if (equals == std::string::npos) return;
        std::string key = upper(trimmed(directive.substr(0, equals)));
        std::string value = upper(trimmed(directive.substr(equals + 1)));
        HatchPattern* target = m_current ? &m_patterns.back() : nullptr;
        if (key == "TYPE") {
            EPatternKind kind;
            if (value == "MODEL")
                kind = EPatternKind::kModel;
            else if (value == "DRAFTING")
                kind = EPatternKind::kDrafting;
            else
                fail(L"unknown pattern type \"" + widen(value) + L"\" (MODEL or DRAFTING)");
            (target ? target->kind : m_fileKind) = kind;
        } else if (key == "UNITS") {
            EPatternUnits units;
            if (value == "MM" || value == "MILLIMETERS" || value == "MILLIMETRES")
                units = EPatternUnits::kMillimeters;
            else if (value == "INCH" || value == "INCHES")
                units = EPatternUnits::kInches;
            else
                fail(L"unknown pattern units \"" + widen(value) + L"\" (MM or INCH)");
            (target ? target->units : m_fileUnits) = units;
        }
    }

    void readHeader(const std::string& header) {
        finishPattern();
        size_t comma = header.find(',');
        std::string name = trimmed(header.substr(0, comma));
        if (name.empty()) fail(L"pattern header without a name (expected *NAME, description)");
        HatchPattern pattern;
        pattern.name = widen(name);
        if (comma != std::string::npos) pattern.description = widen(trimmed(header.substr(comma + 1)));
        pattern.units = m_fileUnits;
        pattern.kind = m_fileKind;
        pattern.sourceFile = m_fileName;
        pattern.sourceLine = m_lineNumber;
        m_patterns.push_back(std::move(pattern));
        m_current = true;
    }

    void readLineFamily(const std::string& line) {
        if (!m_current) fail(L"line definition before the first *NAME header");
        std::vector<std::string> fields;
        std::stringstream stream(line);
        std::string field;
        while (std::getline(stream, field, ',')) fields.push_back(trimmed(field));
        if (!line.empty() && line.back() == ',') fields.emplace_back();
        // Some published files end a line with a comma before a comment ("1,-1,;..."): an
        // empty last field is ignored, an empty field anywhere else is an error.
        if (fields.size() > 5 && fields.back().empty()) fields.pop_back();
        if (fields.size() < 5)
            fail(OdString::formatted(L"expected angle, x-origin, y-origin, delta-x, delta-y; found %d field%ls",
                                     static_cast<int>(fields.size()), fields.size() == 1 ? L"" : L"s"));
        std::vector<double> numbers;
        for (size_t i = 0; i < fields.size(); ++i) {
            double value = 0.0;
            if (fields[i].empty()) fail(OdString::formatted(L"field %d is empty", static_cast<int>(i + 1)));
            if (!parseNumber(fields[i], value))
                fail(OdString::formatted(L"field %d: \"%ls\" is not a number", static_cast<int>(i + 1),
                                         widen(fields[i]).c_str()));
            numbers.push_back(value);
        }
        PatternLineFamily family;
        family.angleDegrees = numbers[0];
        family.originX = numbers[1];
        family.originY = numbers[2];
        family.deltaX = numbers[3];
        family.deltaY = numbers[4];
        family.dashes.assign(numbers.begin() + 5, numbers.end());
        m_patterns.back().lines.push_back(std::move(family));
    }

    // A pattern needs at least one line family; only the solid fill is defined by its name.
    void finishPattern() {
        if (!m_current) return;
        const HatchPattern& pattern = m_patterns.back();
        if (pattern.lines.empty() && !pattern.isSolidFill())
            throw PatParseError(m_fileName, pattern.sourceLine,
                                L"pattern \"" + pattern.name + L"\" has no line definitions");
        m_current = false;
    }

    OdString m_fileName;
    int m_lineNumber = 0;
    std::vector<HatchPattern> m_patterns;
    bool m_current = false;  // m_patterns.back() is still receiving lines
    EPatternUnits m_fileUnits = EPatternUnits::kMillimeters;
    EPatternKind m_fileKind = EPatternKind::kDrafting;
};

}  // namespace

PatParseError::PatParseError(const OdString& fileName, int lineNumber, const OdString& problem)
    : OdError(eInvalidInput, OdString::formatted(L"%ls, line %d: %ls", fileName.c_str(), lineNumber, problem.c_str())),
      m_fileName(fileName), m_lineNumber(lineNumber), m_problem(problem) {}

std::vector<HatchPattern> parsePatText(const std::string& text, const OdString& fileName) {
    return Parser(fileName).run(text);
}

std::vector<HatchPattern> parsePatFile(const OdString& path) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path.toUtf8(), error)) throw OdError_FileNotFound(path);
    std::ifstream file(path.toUtf8(), std::ios::binary);
    if (!file) throw OdError(eFileAccessErr, L"Cannot open hatch pattern file " + path);
    std::ostringstream content;
    content << file.rdbuf();
    if (file.bad()) throw OdError(eFileAccessErr, L"Cannot read hatch pattern file " + path);
    return parsePatText(content.str(), path);
}

}  // namespace ca
