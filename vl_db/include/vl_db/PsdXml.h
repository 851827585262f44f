#pragma once
// Property-set definition files (PSD XML): the official form in which property sets and quantity
// sets of the IFC schema are published, one set per file. This is a reader and writer between
// such a file and a plain model of it; the library maps the model onto its own definitions.
//
// All text is UTF-8. Lists keep the order of the file. Kinds of property the editor cannot edit
// (bounded, list, table, reference and complex values, and any kind we do not know) are kept as
// the XML text of their PropertyType element, so that writing gives them back unchanged.
#include <cstddef>
#include <string>
#include <vector>

#include <vantlib/Exchange.h>

namespace vl_db {

// The namespace that the official files declare as their default namespace; the writer declares
// it too.
extern const char* const kPsdNamespace;

// Files larger than this are refused before they are parsed (the official files are below 60 kB).
constexpr size_t kPsdMaxFileBytes = 8u << 20;

// Primitive codes of the library's property types.
enum class PsdPrimitive : int { kBoolean = 1, kInteger = 6, kReal = 10, kString = 11 };

struct PsdAlias {
    std::string lang;  // "de-DE", "en", ...
    std::string text;  // may be empty: the official files list languages without a text
};

// One named constant of an enumeration, with its explanation.
struct PsdConstant {
    std::string name;
    std::string definition;
    std::vector<PsdAlias> nameAliases;
    std::vector<PsdAlias> definitionAliases;
};

// A value of an enumeration as an editor offers it.
struct PsdEnumValue {
    std::string value;
    std::string description;
};

enum class PsdTypeKind {
    kSingleValue,  // TypePropertySingleValue
    kEnumeration,  // TypePropertyEnumeratedValue
    kQuantity,     // a quantity of a quantity set (QtoType)
    kExtended,     // anything else, kept as XML
};

struct PsdType {
    PsdTypeKind kind = PsdTypeKind::kSingleValue;

    // kSingleValue and kQuantity. `dataType` is the IFC type as written ("IfcLengthMeasure"),
    // empty when the file declares none (which reads as text); for a quantity it is the
    // quantity type ("Q_LENGTH"). `measure` is "LENGTH", "AREA", "VOLUME", "MASS" or empty.
    PsdPrimitive primitive = PsdPrimitive::kString;
    std::string dataType;
    std::string measure;

    // kEnumeration: the items of the EnumList in order, the list's name, and the ConstantDefs
    // that explain the items. The official files sometimes leave the EnumList empty and name
    // the values only as constants; enumValues() gives the values an editor shows.
    std::string enumListName;
    std::vector<std::string> enumItems;
    std::vector<PsdConstant> constants;

    // kExtended: the element's kind ("TypePropertyBoundedValue", ...) and the whole
    // PropertyType element as XML without namespace declarations or prefixes.
    std::string extendedKind;
    std::string xml;

    // The enumeration's values in order, each described by the definition of its constant:
    // the EnumList's items, or the constants' names when the list is empty.
    std::vector<PsdEnumValue> enumValues() const;
};

struct PsdProperty {
    std::string name;
    std::string definition;
    std::string ifdGuid;
    PsdType type;
    std::vector<PsdAlias> nameAliases;
    std::vector<PsdAlias> definitionAliases;
};

enum class PsdSetKind {
    kPropertySet,  // root PropertySetDef
    kQuantitySet,  // root QtoSetDef
};

struct PsdSet {
    PsdSetKind kind = PsdSetKind::kPropertySet;
    std::string name;
    std::string definition;
    std::string ifdGuid;
    std::string templateType;  // PSET_TYPEDRIVENOVERRIDE, PSET_OCCURRENCEDRIVEN, ... or empty
    std::string ifcVersion;    // "IFC4"
    std::string applicability;
    std::vector<std::string> applicableClasses;  // IFC entity names, as written
    std::string applicableTypeValue;
    std::vector<PsdAlias> definitionAliases;  // the files give a set no name aliases
    std::vector<PsdProperty> properties;
};

bool operator==(const PsdAlias& a, const PsdAlias& b);
bool operator==(const PsdConstant& a, const PsdConstant& b);
bool operator==(const PsdEnumValue& a, const PsdEnumValue& b);
bool operator==(const PsdType& a, const PsdType& b);
bool operator==(const PsdProperty& a, const PsdProperty& b);
bool operator==(const PsdSet& a, const PsdSet& b);
inline bool operator!=(const PsdSet& a, const PsdSet& b) { return !(a == b); }

// A file that cannot be read: its name, the line (0 when the file as a whole is to blame) and
// why. The message is "file:line: reason".
class PsdError : public vantlib::FileReadError {
public:
    using FileReadError::FileReadError;
};

// Reads one file; throws PsdError. `fileName` names the text in messages.
PsdSet readPsd(const std::string& path);
PsdSet readPsdText(const std::string& text, const std::string& fileName);

// Writes the set as PSD XML (UTF-8, the default namespace of the official files) that readPsd
// reads back to an equal set. Throws PsdError when the file cannot be written or the set cannot
// be written as a valid file (no name, an extended type whose XML does not parse).
void writePsd(const PsdSet& set, const std::string& path);
std::string writePsdText(const PsdSet& set);

// The primitive code and measure key of an IFC data type name; false for a name this reader
// does not know.
bool psdDataType(const std::string& ifcType, PsdPrimitive& primitive, std::string& measure);
// The IFC data type that a definition without one is written with: IfcBoolean, IfcInteger,
// IfcLabel, IfcReal, or the measure's own type (IfcLengthMeasure, IfcAreaMeasure, ...).
std::string defaultPsdDataType(PsdPrimitive primitive, const std::string& measure);

// The definition files at `paths`: files as given, folders searched for "*.xml" below them, each
// folder's files sorted by path. Throws PsdError for a path that does not exist.
std::vector<std::string> findPsdFiles(const std::vector<std::string>& paths);
// The folder of the official definitions shipped with the program ("res/psd" beside or above the
// folder of the executable) that holds definition files; empty when there is none.
std::string findOfficialPsdFolder(const std::string& executableFolder);

}  // namespace vl_db
