#pragma once
// Steel section catalogues read into profiles: the YAML section tables of the open parts library
// (".blt"), the CSV preset table of the open CAD program, and IFC profile libraries (".ifc",
// ISO 10303-21), whose profiles can also be written back as an IFC4 project library.
//
// A row or entity that cannot be read (a missing or non-numeric column, a negative dimension,
// an unknown class, an entity of the wrong arity) is reported with its file and line and left
// out; a file that cannot be read as a whole (not a table, a truncated IFC file, one without
// profiles) stops the import before anything is written. What is read goes into the library
// in one transaction, through the exchange import.
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <vantlib/Exchange.h>
#include <vantlib/Profile.h>

namespace vantlib {

// A row, entity or file that could not be read: the file, the line (0 when the file as a
// whole failed) and why.
class CatalogueError : public FileReadError {
public:
    using FileReadError::FileReadError;
};

// One profile as a catalogue gives it: its standard (empty for none), profile name and type,
// and the profile with its size and dimensions in millimetres (slopes in radians).
struct CatalogueProfile {
    std::string standard;
    std::string name;
    ProfileType type = kProfileStructuralSteel;
    QcSmartPtr<Profile> profile;
    // The catalogue's class the profile was read from ("HEA", "IfcIShapeProfileDef", ...).
    std::string catalogueClass;
    int line = 0;
};

struct CatalogueContent {
    std::vector<CatalogueProfile> profiles;
    std::vector<CatalogueError> skipped;
};

// Each reads one file; throws CatalogueError when the file as a whole cannot be read.
CatalogueContent readSectionTable(const std::string& path);  // YAML (.blt, .yaml, .yml)
CatalogueContent readPresetTable(const std::string& path);   // CSV
CatalogueContent readIfcProfiles(const std::string& path);   // ISO 10303-21
// By the file's extension.
CatalogueContent readProfileCatalogue(const std::string& path);

// The same readers over text already in memory (`file` names it in messages).
CatalogueContent readSectionTableText(const std::string& text, const std::string& file);
CatalogueContent readPresetTableText(const std::string& text, const std::string& file);
CatalogueContent readIfcProfilesText(const std::string& text, const std::string& file);

struct CatalogueImportReport {
    // Profiles read per catalogue class, in the order the classes came.
    std::vector<std::pair<std::string, size_t>> classes;
    std::vector<CatalogueError> skipped;
    ImportReport import;
};

// Reads every file and imports what could be read in one transaction; throws CatalogueError
// (nothing written) when one of the files cannot be read as a whole.
CatalogueImportReport importProfileCatalogues(const std::shared_ptr<Library>& library,
                                              const std::vector<std::string>& paths,
                                              ClashAnswer onClash = ClashAnswer::kSkip,
                                              const ExchangeProgress& progress = {});

struct IfcExport {
    std::string text;
    size_t written = 0;
    // Custom profiles have no parametric form in the file.
    size_t leftOut = 0;
};

// An IFC4 project library of the library's parametric profiles, lengths in millimetres: each
// profile as its parameterized profile definition ("IPE 200": name and size), declared through
// a beam type with a material profile set whose category is the standard.
IfcExport exportIfcProfiles(const Library& library);

}  // namespace vantlib
