#pragma once
// Property-set definition files in a library: the model of a file (PsdXml.h) as the library's
// sets and definitions, and back. What the library has a field for goes there (name,
// definition, template type, IFC classes, applicable type value, aliases, type and measure);
// the rest of the file (identifiers, the IFC data type as written, the constants of an
// enumeration with their aliases, alias lists the merged aliases do not give back) is kept as the
// record's `source`, so that a set read from a file is written back as that file.
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include <OdString.h>

#include <vantlib/PropertySets.h>
#include <vl_db/PropertySets.h>
#include <vl_db/PsdXml.h>

namespace vl_db {

// A set of a definition file as the library's records; the set's namespace and the
// definitions' set are left for the caller.
struct PsdLibrarySet {
    vantlib::PropertySetRecord set;
    std::vector<vantlib::PropertyDefinitionRecord> properties;
};

PsdLibrarySet librarySetOf(const PsdSet& set);
// The library's set as the model of a file. Value definitions follow the properties (a file
// knows only properties). Throws PsdError for a definition that no file can hold: a formula,
// a reference, a primitive code other than the four, or a value definition whose name a
// property of the set has.
PsdSet psdSetOf(const vantlib::PropertySetStore& store, uint32_t setId);
// The same of a set's records: its property and value definitions in order.
PsdSet psdSetOf(const vantlib::PropertySetRecord& set, const std::vector<vantlib::PropertyDefinitionRecord>& properties,
                const std::vector<vantlib::PropertyDefinitionRecord>& values);

// Where an import puts its sets: the namespace of that name (letter case ignored), made with
// the label and flag when the library has none.
struct PsdImportTarget {
    OdString namespaceName;
    OdString label;
    bool editable = true;
};

// Reads every definition file at `paths` (files, or folders searched as findPsdFiles does) and
// appends their sets to the target namespace, in one transaction: when a file cannot be read, a
// set's name is taken or the namespace cannot be edited, the library is left as it was. Errors:
// PsdError (file and line) and the library's exceptions. Returns the namespace's id.
// `progress` hears (files read, files) while the files are read.
uint32_t importPsdFiles(vantlib::PropertySetStore& store, const std::vector<std::string>& paths,
                        const PsdImportTarget& target,
                        const std::function<void(size_t done, size_t total)>& progress = {});

// The namespace an import of `path` goes into when none is named: the folder's name (a
// file's folder), "Imported" when it has none.
OdString psdNamespaceNameOf(const std::string& path);

// Writes the sets: to `target` as one file when it names an .xml file (then exactly one set is
// allowed), else into the folder `target` (made when missing) as one file per set, named after
// the set. Every file is written beside its place first and moved there only when all were
// written, so a failure leaves no file half-written and none of the export behind. Throws
// PsdError. Returns the files written.
std::vector<std::string> exportPsdFiles(const vantlib::PropertySetStore& store, const std::vector<uint32_t>& setIds,
                                        const std::string& target);

// The sets of a namespace (0: of every namespace), in order.
std::vector<uint32_t> namespaceSetIds(const vantlib::PropertySetStore& store, uint32_t namespaceId);

// The file handlers propertySetLibrary uses when given none: an import goes into the namespace
// named after the folder it reads (a file's folder), made editable when missing; an export
// writes a namespace's sets as exportPsdFiles does.
PropertySetFileHandlers psdFileHandlers();

}  // namespace vl_db
