#include "PatternCatalogue.h"

#include <algorithm>
#include <filesystem>

#include "OdError.h"
#include "OdStringWx.h"
#include "PatParser.h"

namespace ca {

namespace {

std::wstring keyOf(const OdString& name) {
    OdString key(name);
    key.makeLower();
    return key.str();
}

}  // namespace

PatternCatalogue::PatternCatalogue() { reload(); }

PatternCatalogue& PatternCatalogue::instance() {
    static PatternCatalogue catalogue;
    return catalogue;
}

void PatternCatalogue::setSearchFolders(const std::vector<OdString>& folders) {
    m_folders = folders;
    reload();
}

void PatternCatalogue::reload() {
    m_patterns.clear();
    m_index.clear();
    m_problems.clear();
    // The host's own file is part of the product: a fault in it is a build error, so it throws.
    add(parsePatText(builtinPatternText(), L"vantlib.pat"), kPreDefined);
    for (const OdString& folder : m_folders) loadFolder(folder);
}

void PatternCatalogue::loadFolder(const OdString& folder) {
    namespace fs = std::filesystem;
    std::error_code error;
    fs::path root(folder.toUtf8());
    if (!fs::is_directory(root, error)) {
        m_problems.push_back(L"Hatch pattern folder not found: " + folder);
        return;
    }
    std::vector<fs::path> files;
    for (fs::directory_iterator it(root, error), end; !error && it != end; it.increment(error)) {
        std::string extension = it->path().extension().string();
        std::transform(extension.begin(), extension.end(), extension.begin(),
                       [](unsigned char ch) { return static_cast<char>(std::tolower(ch)); });
        if (extension == ".pat" && it->is_regular_file(error)) files.push_back(it->path());
    }
    if (error) m_problems.push_back(L"Cannot list hatch pattern folder " + folder);
    std::sort(files.begin(), files.end());
    for (const fs::path& file : files) {
        try {
            add(parsePatFile(OdString::fromUtf8(file.string())), kCustomDefined);
        } catch (const OdError& problem) {
            m_problems.push_back(problem.description());
        }
    }
}

void PatternCatalogue::add(std::vector<HatchPattern> patterns, EHatchPatternType type) {
    for (HatchPattern& pattern : patterns) {
        std::wstring key = keyOf(pattern.name);
        if (m_index.count(key) || isUserPatternName(pattern.name)) continue;
        m_index.emplace(key, m_patterns.size());
        m_patterns.push_back(CataloguedPattern{std::move(pattern), type});
    }
}

std::vector<OdString> PatternCatalogue::names(EHatchPatternType type) const {
    std::vector<OdString> result;
    if (type == kUserDefined) {
        result.push_back(kUserPatternName);
        return result;
    }
    for (const CataloguedPattern& entry : m_patterns)
        if (entry.type == type) result.push_back(entry.pattern.name);
    return result;
}

const CataloguedPattern* PatternCatalogue::find(const OdString& name) const {
    auto it = m_index.find(keyOf(name));
    return it == m_index.end() ? nullptr : &m_patterns[it->second];
}

const CataloguedPattern& PatternCatalogue::get(const OdString& name) const {
    if (const CataloguedPattern* entry = find(name)) return *entry;
    throw OdError(eKeyNotFound, L"Unknown hatch pattern \"" + name + L"\"");
}

wxArrayString obtainListOfPatterns(int patternType) {
    wxArrayString result;
    if (patternType != kUserDefined && patternType != kPreDefined && patternType != kCustomDefined) return result;
    for (const OdString& name : PatternCatalogue::instance().names(static_cast<EHatchPatternType>(patternType)))
        result.Add(toWx(name));
    return result;
}

}  // namespace ca
