// Definition files in a library. Import reads every file before it writes anything and writes
// in one transaction; export writes beside the target and moves the files in place only when
// all of them were written.
#include <vl_db/PsdLibrary.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <map>
#include <set>
#include <system_error>
#include <tuple>
#include <utility>

#include <pugixml.hpp>

#include <vantlib/Exception.h>
#include <vantlib/Library.h>
#include <vantlib/Transaction.h>

#include "PsdFormat.h"

namespace vl_db {

namespace {

namespace fs = std::filesystem;

using vantlib::DefinitionKind;
using vantlib::LocalizedName;
using vantlib::PropertyDefinitionRecord;
using vantlib::PropertySetRecord;
using vantlib::TypeSpecification;

std::string utf8(const OdString& text) { return text.toUtf8(); }
OdString od(const std::string& text) { return OdString::fromUtf8(text); }

// ---- Source: the JSON kept beside the library's fields

std::string textOf(const JsonValue& source, const char* key) {
    auto it = source.find(key);
    return it != source.end() && it->is_string() ? it->get<std::string>() : std::string();
}

JsonValue parseSource(const std::string& text) {
    if (text.empty())
        return JsonValue::object();
    JsonValue source = JsonValue::parse(text, nullptr, false);
    return source.is_object() ? source : JsonValue::object();
}

JsonValue aliasesToJson(const std::vector<PsdAlias>& aliases) {
    JsonValue list = JsonValue::array();
    for (const PsdAlias& alias : aliases)
        list.push_back(JsonValue::array({alias.lang, alias.text}));
    return list;
}

std::vector<PsdAlias> aliasesFromJson(const JsonValue& source, const char* key) {
    std::vector<PsdAlias> aliases;
    auto it = source.find(key);
    if (it == source.end() || !it->is_array())
        return aliases;
    for (const JsonValue& entry : *it) {
        if (entry.is_array() && entry.size() == 2 && entry[0].is_string() && entry[1].is_string())
            aliases.push_back({entry[0].get<std::string>(), entry[1].get<std::string>()});
    }
    return aliases;
}

// ---- Aliases: a file's name and definition aliases are lists of their own; the library keeps
// one entry per language with both texts.

struct MergedAlias {
    std::string lang;
    std::string name;
    std::string definition;
};

std::vector<MergedAlias> mergeAliases(const std::vector<PsdAlias>& names, const std::vector<PsdAlias>& definitions) {
    std::vector<MergedAlias> merged;
    auto entry = [&merged](const std::string& lang) -> MergedAlias& {
        for (MergedAlias& alias : merged) {
            if (alias.lang == lang)
                return alias;
        }
        merged.push_back({lang, {}, {}});
        return merged.back();
    };
    for (const PsdAlias& alias : names)
        entry(alias.lang).name = alias.text;
    for (const PsdAlias& alias : definitions)
        entry(alias.lang).definition = alias.text;
    return merged;
}

std::vector<LocalizedName> localized(const std::vector<MergedAlias>& merged) {
    std::vector<LocalizedName> aliases;
    aliases.reserve(merged.size());
    for (const MergedAlias& alias : merged)
        aliases.push_back({od(alias.lang), od(alias.name), od(alias.definition)});
    return aliases;
}

// A file's alias list is kept whole when the merged aliases alone would not give it back (a
// language listed without text or twice, an order the merge does not keep): the merge gives the
// languages that have a text, in the merged order.
void keepAliasList(JsonValue& source, const char* key, const std::vector<PsdAlias>& fileList,
                   const std::vector<MergedAlias>& merged, std::string MergedAlias::*text) {
    size_t next = 0;
    bool same = true;
    for (const MergedAlias& alias : merged) {
        if ((alias.*text).empty())
            continue;
        if (next >= fileList.size() || fileList[next].lang != alias.lang || fileList[next].text != alias.*text) {
            same = false;
            break;
        }
        ++next;
    }
    if (!same || next != fileList.size())
        source[key] = aliasesToJson(fileList);
}

// One of the two lists from the library's aliases: the languages of `order` first, in that
// order, while the library still has them, then the other languages that have a text.
std::vector<PsdAlias> splitAliases(const std::vector<LocalizedName>& aliases, const std::vector<PsdAlias>& order,
                                   OdString LocalizedName::*text) {
    std::vector<PsdAlias> list;
    std::set<std::string> listed;
    for (const PsdAlias& kept : order) {
        if (!listed.insert(kept.lang).second)
            continue;
        for (const LocalizedName& alias : aliases) {
            if (utf8(alias.language) == kept.lang) {
                list.push_back({kept.lang, utf8(alias.*text)});
                break;
            }
        }
    }
    for (const LocalizedName& alias : aliases) {
        const std::string lang = utf8(alias.language);
        if (!listed.count(lang) && !(alias.*text).isEmpty())
            list.push_back({lang, utf8(alias.*text)});
    }
    return list;
}

// The name and definition alias lists of the library's aliases: the lists the file had while
// the library's aliases are still what they merge to, else lists made of the library's aliases
// in the order of the kept lists.
std::pair<std::vector<PsdAlias>, std::vector<PsdAlias>> aliasLists(const std::vector<LocalizedName>& aliases,
                                                                   const JsonValue& source) {
    std::vector<PsdAlias> names = aliasesFromJson(source, "nameAliases");
    std::vector<PsdAlias> definitions = aliasesFromJson(source, "definitionAliases");
    const bool keptNames = source.contains("nameAliases");
    const bool keptDefinitions = source.contains("definitionAliases");
    if (!keptNames)
        names = splitAliases(aliases, {}, &LocalizedName::name);
    if (!keptDefinitions)
        definitions = splitAliases(aliases, {}, &LocalizedName::definition);
    if ((keptNames || keptDefinitions) && !(localized(mergeAliases(names, definitions)) == aliases)) {
        names = splitAliases(aliases, keptNames ? names : std::vector<PsdAlias>(), &LocalizedName::name);
        definitions = splitAliases(aliases, keptDefinitions ? definitions : std::vector<PsdAlias>(), &LocalizedName::definition);
    }
    return {std::move(names), std::move(definitions)};
}

// ---- Types

// The value category of an extended kind; kinds without one of their own count as complex.
int categoryOfKind(const std::string& kind) {
    if (kind == "TypePropertyBoundedValue")
        return kBoundedValue;
    if (kind == "TypePropertyListValue")
        return kListValue;
    if (kind == "TypePropertyTableValue")
        return kTableValue;
    if (kind == "TypePropertyReferenceValue")
        return kReferenceValue;
    return kComplexValue;
}

// The primitive of an extended kind: that of the first data type it names, text otherwise.
int primitiveOfExtended(const std::string& xml) {
    pugi::xml_document fragment;
    if (fragment.load_buffer(xml.data(), xml.size(), pugi::parse_default, pugi::encoding_utf8)) {
        const pugi::xpath_node dataType = fragment.select_node("//DataType[@type]");
        PsdPrimitive primitive;
        std::string measure;
        if (dataType && psdDataType(dataType.node().attribute("type").value(), primitive, measure))
            return int(primitive);
    }
    return kStringCode;
}

std::string extendedKindOf(const std::string& xml) {
    pugi::xml_document fragment;
    if (fragment.load_buffer(xml.data(), xml.size(), pugi::parse_default, pugi::encoding_utf8))
        return fragment.document_element().first_child().name();
    return std::string();
}

JsonValue constantsToJson(const std::vector<PsdConstant>& constants) {
    JsonValue list = JsonValue::array();
    for (const PsdConstant& constant : constants) {
        JsonValue entry = {{"name", constant.name}, {"definition", constant.definition}};
        if (!constant.nameAliases.empty())
            entry["nameAliases"] = aliasesToJson(constant.nameAliases);
        if (!constant.definitionAliases.empty())
            entry["definitionAliases"] = aliasesToJson(constant.definitionAliases);
        list.push_back(std::move(entry));
    }
    return list;
}

std::vector<PsdConstant> constantsFromJson(const JsonValue& source) {
    std::vector<PsdConstant> constants;
    auto it = source.find("constants");
    if (it == source.end() || !it->is_array())
        return constants;
    for (const JsonValue& entry : *it) {
        if (!entry.is_object())
            continue;
        constants.push_back({textOf(entry, "name"), textOf(entry, "definition"), aliasesFromJson(entry, "nameAliases"),
                             aliasesFromJson(entry, "definitionAliases")});
    }
    return constants;
}

std::vector<std::string> stringsFromJson(const JsonValue& source, const char* key) {
    std::vector<std::string> strings;
    auto it = source.find(key);
    if (it != source.end() && it->is_array()) {
        for (const JsonValue& entry : *it) {
            if (entry.is_string())
                strings.push_back(entry.get<std::string>());
        }
    }
    return strings;
}

void typeToLibrary(const PsdType& type, PropertyDefinitionRecord& record, JsonValue& source) {
    switch (type.kind) {
    case PsdTypeKind::kSingleValue:
    case PsdTypeKind::kQuantity:
        record.type = TypeSpecification{TypeSpecification::kPrimitive, int(type.primitive), kSingleValue, std::string()};
        record.measure = od(type.measure);
        // Kept even when empty: a file's text without a data type is written back without one.
        source[type.kind == PsdTypeKind::kQuantity ? "quantityType" : "dataType"] = type.dataType;
        return;
    case PsdTypeKind::kEnumeration: {
        EnumTypeSpecifier<OdString> enumeration;
        for (const PsdEnumValue& value : type.enumValues())
            enumeration.addValue(od(value.value), od(value.description));
        record.type = storageOf(enumeration);
        if (!type.enumListName.empty())
            source["enumList"] = type.enumListName;
        source["enumItems"] = type.enumItems;
        source["constants"] = constantsToJson(type.constants);
        return;
    }
    case PsdTypeKind::kExtended:
        record.type = storageOf(ExtendedTypeSpecifier(primitiveOfExtended(type.xml), categoryOfKind(type.extendedKind), type.xml));
        source["extendedKind"] = type.extendedKind;
        return;
    }
}

PsdPrimitive primitiveOf(int code, const std::string& owner) {
    switch (code) {
    case kBooleanCode: return PsdPrimitive::kBoolean;
    case kIntegerCode: return PsdPrimitive::kInteger;
    case kRealCode: return PsdPrimitive::kReal;
    case kStringCode: return PsdPrimitive::kString;
    default: break;
    }
    throw PsdError(std::string(), 0, owner + " has a type of code " + std::to_string(code) + ", which definition files cannot hold");
}

template <class T, class Format>
std::vector<PsdEnumValue> enumValuesOf(const AbstractTypeSpecifier& specifier, Format format) {
    std::vector<PsdEnumValue> values;
    for (const auto& value : static_cast<const EnumTypeSpecifier<T>&>(specifier).values())
        values.push_back({format(value.value), utf8(value.description)});
    return values;
}

std::vector<PsdEnumValue> enumValuesOf(const AbstractTypeSpecifier& specifier) {
    if (dynamic_cast<const EnumTypeSpecifier<long long>*>(&specifier))
        return enumValuesOf<long long>(specifier, [](long long value) { return std::to_string(value); });
    if (dynamic_cast<const EnumTypeSpecifier<double>*>(&specifier))
        return enumValuesOf<double>(specifier, [](double value) { return JsonValue(value).dump(); });
    return enumValuesOf<OdString>(specifier, [](const OdString& value) { return utf8(value); });
}

// The enumeration of the file when the library's values are still those it gives, else one
// made of the library's values that keeps the aliases of the constants still there.
void enumerationToFile(const std::vector<PsdEnumValue>& values, const JsonValue& source, PsdType& type) {
    type.enumListName = textOf(source, "enumList");
    type.enumItems = stringsFromJson(source, "enumItems");
    type.constants = constantsFromJson(source);
    if (type.enumValues() == values)
        return;
    std::vector<PsdConstant> constants;
    type.enumItems.clear();
    for (const PsdEnumValue& value : values) {
        type.enumItems.push_back(value.value);
        auto kept = std::find_if(type.constants.begin(), type.constants.end(),
                                 [&](const PsdConstant& constant) { return constant.name == value.value; });
        PsdConstant constant = kept != type.constants.end() ? *kept : PsdConstant{value.value, {}, {}, {}};
        constant.definition = value.description;
        constants.push_back(std::move(constant));
    }
    type.constants = std::move(constants);
}

PsdType typeToFile(const PropertyDefinitionRecord& record, const JsonValue& source, bool quantitySet) {
    const std::string owner = "The definition '" + utf8(record.name) + "'";
    TypeSpecifierPtr specifier = specifierFromStorage(record.type);
    PsdType type;
    switch (specifier->kind()) {
    case TypeSpecification::kPrimitive:
        type.primitive = primitiveOf(specifier->primitiveCode(), owner);
        type.measure = utf8(record.measure);
        if (quantitySet) {
            // The writer checks the kept quantity type against the primitive and measure.
            type.kind = PsdTypeKind::kQuantity;
            type.dataType = textOf(source, "quantityType");
        } else {
            type.kind = PsdTypeKind::kSingleValue;
            type.dataType = source.contains("dataType") ? textOf(source, "dataType")
                                                        : defaultPsdDataType(type.primitive, type.measure);
        }
        return type;
    case TypeSpecification::kEnumeration:
        type.kind = PsdTypeKind::kEnumeration;
        enumerationToFile(enumValuesOf(*specifier), source, type);
        return type;
    case TypeSpecification::kExtended: {
        type.kind = PsdTypeKind::kExtended;
        type.xml = static_cast<const ExtendedTypeSpecifier&>(*specifier).definitionText();
        type.extendedKind = source.contains("extendedKind") ? textOf(source, "extendedKind") : extendedKindOf(type.xml);
        return type;
    }
    case TypeSpecification::kFormula:
    case TypeSpecification::kParentReference:
    case TypeSpecification::kValueDefinitionReference:
        break;
    }
    throw PsdError(std::string(), 0, owner + " is computed or refers to another value, which definition files cannot hold");
}

PsdProperty propertyToFile(const PropertyDefinitionRecord& record, bool quantitySet) {
    const JsonValue source = parseSource(record.source);
    PsdProperty property;
    property.name = utf8(record.name);
    property.definition = utf8(record.description);
    property.ifdGuid = textOf(source, "ifdguid");
    property.type = typeToFile(record, source, quantitySet);
    std::tie(property.nameAliases, property.definitionAliases) = aliasLists(record.aliases, source);
    return property;
}

// Names compared as the library compares them: ASCII letters folded, whatever the locale.
std::string lowerAscii(std::string text) {
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z')
            c = char(c - 'A' + 'a');
    }
    return text;
}

bool isXmlFileName(const std::string& target) { return lowerAscii(fs::path(target).extension().string()) == ".xml"; }

// A file's name for a set: its name with the characters no file name may hold replaced.
std::string fileNameOf(const std::string& setName) {
    std::string name = setName;
    for (char& c : name) {
        if (c == '/' || c == '\\' || c == ':' || c == '*' || c == '?' || c == '"' || c == '<' || c == '>' || c == '|' ||
            static_cast<unsigned char>(c) < 0x20)
            c = '_';
    }
    if (name == "." || name == "..")
        name = "_";
    return name + ".xml";
}

// Removes a file an export left behind; the export's own error is the one that counts.
void removeQuietly(const fs::path& path) {
    std::error_code ignored;
    fs::remove(path, ignored);
}

}  // namespace

PsdLibrarySet librarySetOf(const PsdSet& file) {
    PsdLibrarySet result;
    PropertySetRecord& set = result.set;
    set.name = od(file.name);
    set.description = od(file.definition);
    set.templateType = od(file.templateType);
    set.applicableTypeValue = od(file.applicableTypeValue);
    // A set that applies to types only holds no values of its own per occurrence.
    set.perInstance = file.templateType != "PSET_TYPEDRIVENONLY" && file.templateType != "QTO_TYPEDRIVENONLY";
    for (const std::string& ifcType : file.applicableClasses)
        set.applicableClasses.push_back(od(ifcType));
    const std::vector<MergedAlias> setAliases = mergeAliases({}, file.definitionAliases);
    set.aliases = localized(setAliases);
    JsonValue setSource = {{"ifdguid", file.ifdGuid}, {"ifcVersion", file.ifcVersion}, {"applicability", file.applicability}};
    if (file.kind == PsdSetKind::kQuantitySet)
        setSource["quantitySet"] = true;
    keepAliasList(setSource, "definitionAliases", file.definitionAliases, setAliases, &MergedAlias::definition);
    set.source = setSource.dump();

    for (const PsdProperty& property : file.properties) {
        PropertyDefinitionRecord record;
        record.kind = DefinitionKind::kProperty;
        record.name = od(property.name);
        record.description = od(property.definition);
        const std::vector<MergedAlias> aliases = mergeAliases(property.nameAliases, property.definitionAliases);
        record.aliases = localized(aliases);
        JsonValue source = JsonValue::object();
        if (!property.ifdGuid.empty())
            source["ifdguid"] = property.ifdGuid;
        typeToLibrary(property.type, record, source);
        keepAliasList(source, "nameAliases", property.nameAliases, aliases, &MergedAlias::name);
        keepAliasList(source, "definitionAliases", property.definitionAliases, aliases, &MergedAlias::definition);
        record.source = source.dump();
        result.properties.push_back(std::move(record));
    }
    return result;
}

PsdSet psdSetOf(const PropertySetRecord& record, const std::vector<PropertyDefinitionRecord>& properties,
                const std::vector<PropertyDefinitionRecord>& values) {
    const JsonValue source = parseSource(record.source);
    PsdSet file;
    const auto quantitySet = source.find("quantitySet");
    file.kind = quantitySet != source.end() && quantitySet->is_boolean() && quantitySet->get<bool>() ? PsdSetKind::kQuantitySet
                                                                                                    : PsdSetKind::kPropertySet;
    file.name = utf8(record.name);
    file.definition = utf8(record.description);
    file.ifdGuid = textOf(source, "ifdguid");
    file.templateType = utf8(record.templateType);
    // A set made in the library is written for the schema version of the official files.
    file.ifcVersion = source.contains("ifcVersion") ? textOf(source, "ifcVersion") : std::string("IFC4");
    file.applicability = textOf(source, "applicability");
    for (const OdString& ifcType : record.applicableClasses)
        file.applicableClasses.push_back(utf8(ifcType));
    file.applicableTypeValue = utf8(record.applicableTypeValue);
    file.definitionAliases = aliasLists(record.aliases, source).second;

    const bool quantities = file.kind == PsdSetKind::kQuantitySet;
    try {
        for (const PropertyDefinitionRecord& definition : properties)
            file.properties.push_back(propertyToFile(definition, quantities));
        for (const PropertyDefinitionRecord& definition : values) {
            for (const PsdProperty& property : file.properties) {
                if (psd::sameName(property.name, utf8(definition.name)))
                    throw PsdError(std::string(), 0, "The value definition '" + property.name +
                                                         "' has the name of a property, and a file holds both as properties");
            }
            file.properties.push_back(propertyToFile(definition, quantities));
        }
    } catch (const PsdError& error) {
        // Named after the set, the file it would have been.
        throw PsdError(file.name, 0, error.reason());
    }
    return file;
}

PsdSet psdSetOf(const vantlib::PropertySetStore& store, uint32_t setId) {
    const auto record = store.findPropertySet(setId);
    if (!record)
        throw vantlib::ConsistencyError(OdString::formatted(L"There is no property set with the id %u", unsigned(setId)));
    return psdSetOf(*record, store.definitions(setId, DefinitionKind::kProperty), store.definitions(setId, DefinitionKind::kValue));
}

uint32_t importPsdFiles(vantlib::PropertySetStore& store, const std::vector<std::string>& paths, const PsdImportTarget& target,
                        const std::function<void(size_t, size_t)>& progress) {
    // Every file is read, and every name checked, before the library is touched.
    std::vector<std::string> files = findPsdFiles(paths);
    if (files.empty())
        throw PsdError(paths.empty() ? std::string() : paths.front(), 0, "There are no definition files (*.xml) to import");
    std::vector<PsdLibrarySet> sets;
    std::map<std::string, std::string> fileOfName;
    for (const std::string& path : files) {
        PsdSet file = readPsd(path);
        const std::string key = lowerAscii(file.name);
        auto [it, added] = fileOfName.emplace(key, path);
        if (!added)
            throw PsdError(path, 0, "The set '" + file.name + "' is also the set of " + it->second);
        sets.push_back(librarySetOf(file));
        if (progress)
            progress(sets.size(), files.size());
    }

    vantlib::Transaction transaction(store.library());
    const auto existing = store.findNamespace(target.namespaceName);
    uint32_t namespaceId = 0;
    if (existing) {
        if (!existing->editable)
            throw vantlib::ConsistencyError(
                OdString::formatted(L"The namespace '%ls' cannot be edited, so no sets can be imported into it", existing->name.c_str()));
        namespaceId = existing->id;
    } else {
        vantlib::PropertyNamespaceRecord ns;
        ns.name = target.namespaceName;
        ns.label = target.label;
        ns.editable = target.editable;
        namespaceId = store.createNamespace(ns);
    }
    for (size_t i = 0; i < sets.size(); ++i) {
        PsdLibrarySet& entry = sets[i];
        entry.set.namespaceId = namespaceId;
        uint32_t setId = 0;
        try {
            setId = store.createPropertySet(entry.set);
        } catch (const vantlib::ObjectNotUnique&) {
            throw PsdError(files[i], 0, "The namespace '" + utf8(target.namespaceName) + "' has a set named '" +
                                            utf8(entry.set.name) + "' already");
        }
        store.createDefinitions(setId, entry.properties);
    }
    transaction.commit();
    return namespaceId;
}

std::vector<uint32_t> namespaceSetIds(const vantlib::PropertySetStore& store, uint32_t namespaceId) {
    std::vector<uint32_t> ids;
    for (const auto& ns : store.namespaces()) {
        if (namespaceId != 0 && ns.id != namespaceId)
            continue;
        for (const PropertySetRecord& set : store.propertySets(ns.id))
            ids.push_back(set.id);
    }
    return ids;
}

std::vector<std::string> exportPsdFiles(const vantlib::PropertySetStore& store, const std::vector<uint32_t>& setIds,
                                        const std::string& target) {
    const bool oneFile = isXmlFileName(target);
    if (oneFile && setIds.size() != 1)
        throw PsdError(target, 0, "A definition file holds one set; choose one set or export into a folder");
    if (setIds.empty())
        throw PsdError(target, 0, "There are no property sets to export");

    // The files as written, all of them in memory before anything is written.
    std::vector<std::pair<fs::path, std::string>> texts;
    std::set<std::string> names;
    for (uint32_t setId : setIds) {
        PsdSet set;
        try {
            set = psdSetOf(store, setId);
        } catch (const PsdError& error) {
            throw PsdError(target, 0, error.reason() + " (in the set '" + error.file() + "')");
        }
        const fs::path path = oneFile ? fs::path(target) : fs::path(target) / fileNameOf(set.name);
        if (!names.insert(lowerAscii(path.filename().string())).second)
            throw PsdError(target, 0, "Two of the sets would be written to the file " + path.filename().string());
        texts.emplace_back(path, writePsdText(set));
    }

    std::error_code error;
    const fs::path folder = oneFile ? fs::path(target).parent_path() : fs::path(target);
    if (!folder.empty())
        fs::create_directories(folder, error);
    if (error)
        throw PsdError(target, 0, "The folder " + folder.string() + " cannot be made: " + error.message());

    // A folder where a file should go would refuse the file only when the others are in place.
    for (const auto& entry : texts) {
        if (fs::is_directory(entry.first))
            throw PsdError(entry.first.string(), 0, "A folder has the name of the file to be written");
    }
    // Written beside their places first, then moved: a folder that refuses a file keeps none.
    std::vector<fs::path> written;
    try {
        for (const auto& [path, text] : texts) {
            fs::path partial = path;
            partial += ".partial";
            std::FILE* out = std::fopen(partial.string().c_str(), "wb");
            if (out)
                written.push_back(partial);
            const bool complete = out && std::fwrite(text.data(), 1, text.size(), out) == text.size();
            const bool closed = out && std::fclose(out) == 0;
            if (!complete || !closed)
                throw PsdError(path.string(), 0, "The file cannot be written");
        }
        for (const auto& [path, text] : texts) {
            fs::path partial = path;
            partial += ".partial";
            fs::rename(partial, path, error);
            if (error)
                throw PsdError(path.string(), 0, "The file cannot be written: " + error.message());
        }
    } catch (...) {
        for (const fs::path& partial : written)
            removeQuietly(partial);
        throw;
    }
    std::vector<std::string> paths;
    for (const auto& entry : texts)
        paths.push_back(entry.first.string());
    return paths;
}

OdString psdNamespaceNameOf(const std::string& path) {
    const fs::path given(path);
    std::error_code error;
    const fs::path folder = fs::is_directory(given, error) ? given : given.parent_path();
    // "folder/" names its folder too.
    std::string name = folder.filename().empty() ? folder.parent_path().filename().string() : folder.filename().string();
    if (name.empty() || name == "." || name == "..")
        name = "Imported";
    return od(name);
}

PropertySetFileHandlers psdFileHandlers() {
    PropertySetFileHandlers handlers;
    handlers.importFile = [](vantlib::PropertySetStore& store, const OdString& path) {
        PsdImportTarget target;
        target.namespaceName = psdNamespaceNameOf(path.toUtf8());
        return importPsdFiles(store, {path.toUtf8()}, target);
    };
    handlers.exportFile = [](const vantlib::PropertySetStore& store, const OdString& path, uint32_t namespaceId) {
        exportPsdFiles(store, namespaceSetIds(store, namespaceId), path.toUtf8());
    };
    return handlers;
}

}  // namespace vl_db
