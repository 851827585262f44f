#include "StepFile.h"

#include <cctype>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <stdexcept>

namespace vantlib {
namespace step {

namespace {

// Lists nest a few levels in real files; the bound keeps a hostile file off the stack.
constexpr int kMaxDepth = 32;

// A fault inside one instance: the instance is left out, reading goes on after its ';'.
struct InstanceFault : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The end of the text where more was due.
struct Truncated {};

void appendUtf8(std::string& out, uint32_t code) {
    if (code < 0x80) {
        out += char(code);
    } else if (code < 0x800) {
        out += char(0xC0 | (code >> 6));
        out += char(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        out += char(0xE0 | (code >> 12));
        out += char(0x80 | ((code >> 6) & 0x3F));
        out += char(0x80 | (code & 0x3F));
    } else if (code < 0x110000) {
        out += char(0xF0 | (code >> 18));
        out += char(0x80 | ((code >> 12) & 0x3F));
        out += char(0x80 | ((code >> 6) & 0x3F));
        out += char(0x80 | (code & 0x3F));
    } else {
        throw InstanceFault("a string holds a character beyond Unicode");
    }
}

class Reader {
public:
    explicit Reader(const std::string& text) : m_text(text) {}

    File read() {
        File file;
        try {
            skipSpace();
            if (!keyword("ISO-10303-21") || !take(';'))
                throw FileError(1, "not an ISO 10303-21 file (it does not begin with ISO-10303-21;)");
            readHeader(file);
            readData(file);
        } catch (const Truncated&) {
            throw FileError(m_line, "the file ends before its data section does (truncated)");
        }
        return file;
    }

private:
    bool atEnd() const { return m_pos >= m_text.size(); }
    char peek() const { return atEnd() ? '\0' : m_text[m_pos]; }
    char next() {
        if (atEnd())
            throw Truncated();
        const char c = m_text[m_pos++];
        if (c == '\n')
            ++m_line;
        return c;
    }

    void skipSpace() {
        while (!atEnd()) {
            const char c = peek();
            if (c == ' ' || c == '\t' || c == '\r' || c == '\n') {
                next();
            } else if (c == '/' && m_pos + 1 < m_text.size() && m_text[m_pos + 1] == '*') {
                next();
                next();
                while (!(peek() == '*' && m_pos + 1 < m_text.size() && m_text[m_pos + 1] == '/'))
                    next();
                next();
                next();
            } else {
                return;
            }
        }
    }

    bool take(char c) {
        skipSpace();
        if (peek() != c)
            return false;
        next();
        return true;
    }

    void expect(char c, const char* what) {
        if (!take(c)) {
            if (atEnd())
                throw Truncated();
            throw InstanceFault(std::string("expected ") + what);
        }
    }

    // An upper-case keyword at the cursor, consumed when it is `word`.
    bool keyword(const char* word) {
        skipSpace();
        const size_t n = std::strlen(word);
        if (m_text.compare(m_pos, n, word) != 0)
            return false;
        const char after = m_pos + n < m_text.size() ? m_text[m_pos + n] : '\0';
        if (std::isalnum(static_cast<unsigned char>(after)) || after == '_' || after == '-')
            return false;
        m_pos += n;
        return true;
    }

    std::string name() {
        skipSpace();
        std::string text;
        while (!atEnd() && (std::isalnum(static_cast<unsigned char>(peek())) || peek() == '_' || peek() == '-'))
            text += char(std::toupper(static_cast<unsigned char>(next())));
        if (text.empty()) {
            if (atEnd())
                throw Truncated();
            throw InstanceFault("expected an entity name");
        }
        return text;
    }

    void readHeader(File& file) {
        if (!keyword("HEADER") || !take(';'))
            throw FileError(m_line, "the HEADER section is missing");
        while (!keyword("ENDSEC")) {
            if (atEnd())
                throw Truncated();
            const int line = m_line;
            try {
                const std::string type = name();
                const std::vector<Value> arguments = list(0);
                expect(';', "';' after a header entity");
                if (type == "FILE_SCHEMA" && !arguments.empty() && arguments[0].kind == Value::kList)
                    for (const Value& schema : arguments[0].items)
                        if (schema.kind == Value::kString)
                            file.schemas.push_back(upper(schema.text));
            } catch (const InstanceFault& e) {
                throw FileError(line, std::string("the header cannot be read: ") + e.what());
            }
        }
        if (!take(';'))
            throw FileError(m_line, "expected ';' after ENDSEC");
    }

    void readData(File& file) {
        if (!keyword("DATA"))
            throw FileError(m_line, "the DATA section is missing");
        if (peekAfterSpace() == '(')
            list(0);  // the section's name and schema (later editions); one schema is all we read
        if (!take(';'))
            throw FileError(m_line, "expected ';' after DATA");
        while (true) {
            skipSpace();
            if (atEnd())
                throw Truncated();
            if (keyword("ENDSEC")) {
                if (!take(';'))
                    throw Truncated();
                if (!keyword("END-ISO-10303-21") || !take(';'))
                    throw FileError(m_line, "the file does not end with END-ISO-10303-21; (truncated)");
                return;
            }
            const int line = m_line;
            try {
                Instance instance = readInstance();
                instance.line = line;
                const uint64_t id = instance.id;
                if (!file.instances.emplace(id, std::move(instance)).second)
                    file.faults.push_back({line, "#" + std::to_string(id) + " is defined twice"});
            } catch (const InstanceFault& e) {
                file.faults.push_back({line, e.what()});
                skipPastSemicolon();
            }
        }
    }

    char peekAfterSpace() {
        skipSpace();
        return peek();
    }

    Instance readInstance() {
        Instance instance;
        if (!take('#'))
            throw InstanceFault("expected an instance '#number='");
        instance.id = integer();
        expect('=', "'=' after the instance's number");
        if (peekAfterSpace() == '(') {
            // A complex instance (records of several entities): read, kept without a type.
            list(0);
        } else {
            instance.type = name();
            instance.arguments = list(0);
        }
        expect(';', "';' at the end of the instance");
        return instance;
    }

    uint64_t integer() {
        skipSpace();
        uint64_t value = 0;
        size_t digits = 0;
        while (std::isdigit(static_cast<unsigned char>(peek()))) {
            if (value > (UINT64_MAX - 9) / 10)
                throw InstanceFault("an instance number is too large");
            value = value * 10 + uint64_t(next() - '0');
            ++digits;
        }
        if (digits == 0) {
            if (atEnd())
                throw Truncated();
            throw InstanceFault("expected an instance number");
        }
        return value;
    }

    std::vector<Value> list(int depth) {
        if (depth > kMaxDepth)
            throw InstanceFault("lists are nested too deeply");
        expect('(', "'('");
        std::vector<Value> items;
        if (take(')'))
            return items;
        while (true) {
            items.push_back(value(depth + 1));
            if (take(')'))
                return items;
            expect(',', "',' or ')' between values");
        }
    }

    Value value(int depth) {
        skipSpace();
        Value v;
        const char c = peek();
        if (atEnd())
            throw Truncated();
        if (c == '$') {
            next();
        } else if (c == '*') {
            next();
            v.kind = Value::kDerived;
        } else if (c == '#') {
            next();
            v.kind = Value::kRef;
            v.ref = integer();
        } else if (c == '\'') {
            v.kind = Value::kString;
            v.text = string();
        } else if (c == '"') {
            next();
            v.kind = Value::kString;
            while (peek() != '"')
                v.text += next();
            next();
        } else if (c == '.') {
            next();
            v.kind = Value::kEnum;
            while (peek() != '.') {
                const char e = next();
                if (!std::isalnum(static_cast<unsigned char>(e)) && e != '_')
                    throw InstanceFault("an enumeration holds '" + std::string(1, e) + "'");
                v.text += e;
            }
            next();
        } else if (c == '(') {
            v.kind = Value::kList;
            v.items = list(depth);
        } else if (c == '+' || c == '-' || c == '.' || std::isdigit(static_cast<unsigned char>(c))) {
            v.kind = Value::kNumber;
            v.number = number();
        } else if (std::isalpha(static_cast<unsigned char>(c))) {
            v.kind = Value::kTyped;
            v.text = name();
            std::vector<Value> inner = list(depth);
            if (inner.size() != 1)
                throw InstanceFault("the typed value " + v.text + " does not hold one value");
            v.items = std::move(inner);
        } else {
            throw InstanceFault("unexpected '" + std::string(1, c) + "'");
        }
        return v;
    }

    double number() {
        const size_t start = m_pos;
        while (!atEnd() && (std::isdigit(static_cast<unsigned char>(peek())) || std::strchr("+-.eE", peek())))
            next();
        if (atEnd())
            throw Truncated();
        const char* first = m_text.data() + start;
        const char* last = m_text.data() + m_pos;
        // "5." is how the syntax writes reals; from_chars reads it (and never the locale's comma).
        if (first != last && *first == '+')
            ++first;
        double value = 0.0;
        const auto result = std::from_chars(first, last, value);
        if (result.ec != std::errc() || result.ptr != last)
            throw InstanceFault("'" + m_text.substr(start, m_pos - start) + "' is not a number");
        return value;
    }

    uint32_t hex(size_t count) {
        uint32_t value = 0;
        for (size_t i = 0; i < count; ++i) {
            const char c = next();
            if (!std::isxdigit(static_cast<unsigned char>(c)))
                throw InstanceFault("a string holds a bad hexadecimal escape");
            value = value * 16 + uint32_t(std::isdigit(static_cast<unsigned char>(c)) ? c - '0' : std::toupper(c) - 'A' + 10);
        }
        return value;
    }

    // Between apostrophes: '' for an apostrophe and the escapes \\, \S\, \X\, \X2\ and \X4\.
    std::string string() {
        next();
        std::string text;
        while (true) {
            const char c = next();
            if (c == '\'') {
                if (peek() != '\'')
                    return text;
                next();
                text += '\'';
            } else if (c == '\\') {
                const char e = next();
                if (e == '\\') {
                    text += '\\';
                } else if (e == 'S' && next() == '\\') {
                    appendUtf8(text, uint32_t(static_cast<unsigned char>(next())) + 128);
                } else if (e == 'P') {
                    next();
                    if (next() != '\\')
                        throw InstanceFault("a string holds a bad code page escape");
                } else if (e == 'X') {
                    const char form = next();
                    if (form == '\\') {
                        appendUtf8(text, hex(2));
                    } else if (form == '2' || form == '4') {
                        if (next() != '\\')
                            throw InstanceFault("a string holds a bad escape");
                        while (peek() != '\\') {
                            uint32_t code = hex(form == '2' ? 4 : 8);
                            if (form == '2' && code >= 0xD800 && code < 0xDC00 && peek() != '\\') {
                                const uint32_t low = hex(4);
                                code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
                            }
                            appendUtf8(text, code);
                        }
                        next();
                        if (next() != 'X' || next() != '0' || next() != '\\')
                            throw InstanceFault("a string's escape does not end with \\X0\\");
                    } else {
                        throw InstanceFault("a string holds a bad escape");
                    }
                } else {
                    throw InstanceFault("a string holds a bad escape");
                }
            } else {
                text += c;
            }
        }
    }

    // After a fault: on to the next ';' that is not inside a string.
    void skipPastSemicolon() {
        while (true) {
            const char c = next();
            if (c == ';')
                return;
            if (c == '\'') {
                while (next() != '\'') {
                }
            }
        }
    }

    static std::string upper(std::string text) {
        for (char& c : text)
            c = char(std::toupper(static_cast<unsigned char>(c)));
        return text;
    }

    const std::string& m_text;
    size_t m_pos = 0;
    int m_line = 1;
};

}  // namespace

File parse(const std::string& text) {
    try {
        return Reader(text).read();
    } catch (const InstanceFault& e) {
        throw FileError(0, e.what());
    }
}

std::string encodeString(const std::string& utf8) {
    std::string out;
    std::string wide;  // hex of UTF-16 units waiting for their \X2\ ... \X0\ group
    auto flush = [&] {
        if (!wide.empty())
            out += "\\X2\\" + wide + "\\X0\\";
        wide.clear();
    };
    for (size_t i = 0; i < utf8.size();) {
        const unsigned char c = static_cast<unsigned char>(utf8[i]);
        if (c < 0x80) {
            flush();
            if (c == '\'')
                out += "''";
            else if (c == '\\')
                out += "\\\\";
            else
                out += char(c);
            ++i;
            continue;
        }
        const size_t length = c >= 0xF0 ? 4 : c >= 0xE0 ? 3 : 2;
        uint32_t code = c & (length == 4 ? 0x07 : length == 3 ? 0x0F : 0x1F);
        for (size_t k = 1; k < length && i + k < utf8.size(); ++k)
            code = (code << 6) | (static_cast<unsigned char>(utf8[i + k]) & 0x3F);
        i += length;
        char unit[5];
        if (code >= 0x10000) {
            code -= 0x10000;
            std::snprintf(unit, sizeof unit, "%04X", unsigned(0xD800 + (code >> 10)));
            wide += unit;
            code = 0xDC00 + (code & 0x3FF);
        }
        std::snprintf(unit, sizeof unit, "%04X", unsigned(code));
        wide += unit;
    }
    flush();
    return out;
}

}  // namespace step
}  // namespace vantlib
