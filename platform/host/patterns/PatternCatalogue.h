#pragma once
// The host's catalogue of hatch patterns: its own pattern file (compiled into the host, the
// predefined patterns) followed by every .pat file in the configured pattern folders (custom
// patterns). Names are unique without regard to case; the first definition of a name in this
// order wins, so a folder file cannot replace a predefined pattern or one found before it.
#include <map>
#include <vector>

#include <wx/arrstr.h>

#include "HatchPattern.h"

namespace ca {

struct CataloguedPattern {
    HatchPattern pattern;
    EHatchPatternType type = kPreDefined;
};

class PatternCatalogue {
public:
    // A catalogue of the host's own patterns only.
    PatternCatalogue();

    // The catalogue the host's dialogs use.
    static PatternCatalogue& instance();

    // Folders searched, in order, for *.pat files (files of one folder in name order); reloads.
    void setSearchFolders(const std::vector<OdString>& folders);
    const std::vector<OdString>& searchFolders() const { return m_folders; }
    // Reads the folders again (after files were added or changed).
    void reload();

    // Every pattern in catalogue order: predefined ones first, then custom ones.
    const std::vector<CataloguedPattern>& patterns() const { return m_patterns; }
    // Names of the patterns of one type in catalogue order; for user-defined, "_USER".
    std::vector<OdString> names(EHatchPatternType type) const;

    // Case-insensitive lookup; null when absent.
    const CataloguedPattern* find(const OdString& name) const;
    // As find(), but an unknown name throws OdError(eKeyNotFound).
    const CataloguedPattern& get(const OdString& name) const;

    // Folder files that could not be read or parsed, one message each, from the last load.
    // Such a file contributes no patterns; the rest of the catalogue is unaffected.
    const std::vector<OdString>& loadProblems() const { return m_problems; }

private:
    void add(std::vector<HatchPattern> patterns, EHatchPatternType type);
    void loadFolder(const OdString& folder);

    std::vector<OdString> m_folders;
    std::vector<CataloguedPattern> m_patterns;
    std::map<std::wstring, size_t> m_index;  // lower-cased name -> position in m_patterns
    std::vector<OdString> m_problems;
};

// The text of the host's own pattern file, as compiled in.
const char* builtinPatternText();

// Names of the host catalogue's patterns of `patternType` (EHatchPatternType), in catalogue
// order, for pattern lists; an unknown type gives an empty list.
wxArrayString obtainListOfPatterns(int patternType);

}  // namespace ca
