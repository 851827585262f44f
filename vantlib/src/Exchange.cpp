// The JSON exchange document of a library: writing it from the library's objects and reading
// it back through the library's own write path, checked completely before anything is written.
#include <vantlib/Exchange.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <optional>
#include <set>

#include <nlohmann/json.hpp>

#include <vantlib/Composition.h>
#include <vantlib/Library.h>
#include <vantlib/Material.h>
#include <vantlib/Profile.h>
#include <vantlib/PropertySets.h>
#include <vantlib/Transaction.h>

#include "ExchangeDocument.h"
#include "ExchangeNames.h"
#include "Kinds.h"
#include "LibraryStore.h"
#include "Text.h"

namespace vantlib {

// Objects keep their members in a vector, in the order read: small objects parse and free
// much faster than with a tree per object.
using Json = nlohmann::ordered_json;

namespace {

const char* const kFormatName = "vantlib-library";

// The key of a kind's list in the document; empty for kinds it does not hold.
const char* kindKey(ObjectType type) {
    switch (type) {
    case kTag: return "tags";
    case kLayer: return "layers";
    case kMaterialType: return "materialClasses";
    case kCompositionType: return "compositionTypes";
    case kCustomProperty: return "customProperties";
    case kMaterial: return "materials";
    case kComposition: return "compositions";
    case kProfileStandard: return "profileStandards";
    case kProfileName: return "profileNames";
    case kConstructionProfile: return "profiles";
    case kPropertyNamespace: return "propertyNamespaces";
    default: return "";
    }
}

std::string utf8(const OdString& text) { return textToUtf8(text); }

bool isProfileShape(ObjectType type) { return type >= kFirstProfileShape && type <= kLastProfileShape; }

// The kind a document's list and an import's counts go by: every shape counts as a profile.
ObjectType exchangedKind(ObjectType type) { return isProfileShape(type) ? kConstructionProfile : type; }

const std::pair<ProfileType, const char*> kProfileTypeNames[] = {
    {kProfileGeneric, "generic"}, {kProfileStructuralConcrete, "structuralConcrete"},
    {kProfileStructuralSteel, "structuralSteel"}, {kProfileHvac, "hvac"},
    {kProfilePiping, "piping"}, {kProfileElectrical, "electrical"},
};

// Slopes are angles; every other dimension of a shape is a length.
bool isLengthParameter(ShapeParameter id) {
    return id != ShapeParameter::kLegSlope && id != ShapeParameter::kFlangeSlope && id != ShapeParameter::kWebSlope;
}

OdString standardName(const ProfileName& name) { return name.standard() ? name.standard()->name() : OdString(); }

// ---------------------------------------------------------------- writing

// The objects of one kind in the document's order: by name, letter case folded as the library
// compares names (names of a kind differ after folding, so the order is total).
template <class T>
std::vector<QcSmartPtr<T>> sortedByName(std::vector<QcSmartPtr<T>> objects) {
    std::vector<std::pair<std::wstring, QcSmartPtr<T>>> keyed;
    keyed.reserve(objects.size());
    for (auto& object : objects)
        keyed.emplace_back(foldCase(object->name()), object);
    std::sort(keyed.begin(), keyed.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    objects.clear();
    for (auto& entry : keyed)
        objects.push_back(entry.second);
    return objects;
}

// Writes the document's text one value at a time, in the layout of nlohmann-json's dump(2),
// so that the document never stands in memory as JSON values. Every text and number is
// written by nlohmann-json (escaping, shortest exact form of doubles).
class JsonText {
public:
    void beginObject() { open('{'); }
    void endObject() { close('}'); }
    void beginArray() { open('['); }
    void endArray() { close(']'); }
    // The key of the next member of the open object: one of the document's own words, or any
    // text (a custom property's name), which nlohmann-json escapes.
    void key(const char* word) {
        nextLine();
        m_text += '"';
        m_text += word;
        m_text += "\": ";
        m_keyed = true;
    }
    void key(const OdString& text) {
        nextLine();
        m_text += Json(utf8(text)).dump();
        m_text += ": ";
        m_keyed = true;
    }
    template <class T>
    void value(const T& scalar) {
        element();
        m_text += Json(scalar).dump();
    }
    void value(const OdString& text) { value(utf8(text)); }
    // Any JSON value, laid out like the rest of the document.
    void json(const Json& value) {
        if (value.is_object()) {
            beginObject();
            for (auto it = value.begin(); it != value.end(); ++it) {
                key(OdString::fromUtf8(it.key()));
                json(it.value());
            }
            endObject();
        } else if (value.is_array()) {
            beginArray();
            for (const Json& element : value)
                json(element);
            endArray();
        } else {
            element();
            m_text += value.dump();
        }
    }
    template <class T>
    void member(const char* name, const T& scalar) {
        key(name);
        value(scalar);
    }
    std::string finish() {
        m_text += '\n';
        return std::move(m_text);
    }

private:
    // Before a value: a key placed it already, else it is an element of the open array.
    void element() {
        if (m_keyed)
            m_keyed = false;
        else if (!m_empty.empty())
            nextLine();
    }
    void open(char bracket) {
        element();
        m_text += bracket;
        m_empty.push_back(true);
    }
    void close(char bracket) {
        const bool empty = m_empty.back();
        m_empty.pop_back();
        if (!empty) {
            m_text += '\n';
            m_text.append(2 * m_empty.size(), ' ');
        }
        m_text += bracket;
    }
    void nextLine() {
        m_text += m_empty.back() ? "\n" : ",\n";
        m_empty.back() = false;
        m_text.append(2 * m_empty.size(), ' ');
    }

    std::string m_text;
    std::vector<bool> m_empty;  // per open object or array: nothing written into it yet
    bool m_keyed = false;
};

void writePattern(JsonText& out, const char* key, const Pattern& pattern) {
    out.key(key);
    out.beginObject();
    out.member("type", patternTypeName(pattern.type()));
    out.member("name", pattern.name());
    out.member("scale", pattern.scale());
    out.member("space", pattern.space());
    out.member("angle", pattern.angle());
    out.member("cross", pattern.cross());
    out.member("annotative", pattern.annotative());
    if (pattern.has_background_color())
        out.member("background", pattern.background_color());
    out.endObject();
}

void writePhysicalValue(JsonText& out, const char* key, const PhysicalValue& value) {
    out.key(key);
    out.beginObject();
    out.member("value", value.value);
    out.member("unit", value.unit);
    out.endObject();
}

void writeAnnotations(JsonText& out, const AnnotatedObject& object) {
    out.key("tags");
    out.beginArray();
    for (const auto& tag : object.tags())
        out.value(tag->name());
    out.endArray();
    // By property name, so the order does not depend on the ids of either library.
    std::map<std::wstring, const CustomValue*> values;
    for (const CustomValue& value : object.custom_values())
        values.emplace(foldCase(value.property->name()), &value);
    out.key("customValues");
    out.beginObject();
    for (const auto& entry : values) {
        out.key(entry.second->property->name());
        out.value(entry.second->value);
    }
    out.endObject();
}

bool hasName(const QcSmartPtr<Object>& object) { return object && !object->name().isEmpty(); }

void writeMaterial(JsonText& out, const Material& material) {
    out.beginObject();
    out.member("name", material.name());
    out.member("description", material.description());
    out.member("comments", material.comments());
    if (hasName(material.material_type()))
        out.member("class", material.material_type()->name());
    out.member("appearance", material.appearance());
    writePattern(out, "sectionPattern", material.section_pattern());
    writePattern(out, "elevationPattern", material.elevation_pattern());
    if (const BimAsset* bim = material.bim_asset()) {
        out.key("bim");
        out.beginObject();
        if (hasName(bim->layer()))
            out.member("sectionLayer", bim->layer()->name());
        if (hasName(bim->layer_elevation()))
            out.member("elevationLayer", bim->layer_elevation()->name());
        out.member("defaultFunction", functionName(bim->default_function()));
        out.key("thicknesses");
        out.beginArray();
        for (double thickness : bim->thicknesses())
            out.value(thickness);
        out.endArray();
        out.member("variableThickness", bim->variable_thickness());
        out.member("unionElevation", bim->union_elevation());
        out.member("unionSection", bim->union_section());
        out.endObject();
    }
    if (const InformationAsset* info = material.information_asset()) {
        out.key("information");
        out.beginObject();
        out.member("classification", info->classification());
        if (info->has_unique_code())
            out.member("uniqueCode", info->unique_code());
        out.member("cost", info->cost());
        out.member("keynote", info->keynote());
        out.member("label", info->label());
        out.member("manufacturer", info->manufacturer());
        out.member("mark", info->mark());
        out.member("model", info->model());
        out.member("url", info->url());
        out.endObject();
    }
    if (const PhysicalAsset* physical = material.physical_asset()) {
        out.key("physical");
        out.beginObject();
        if (physical->has_density())
            writePhysicalValue(out, "density", physical->density());
        if (physical->has_thermal_conductivity())
            writePhysicalValue(out, "thermalConductivity", physical->thermal_conductivity());
        if (physical->has_specific_heat())
            writePhysicalValue(out, "specificHeat", physical->specific_heat());
        out.endObject();
    }
    writeAnnotations(out, material);
    out.endObject();
}

void writeComposition(JsonText& out, const Composition& composition) {
    out.beginObject();
    out.member("name", composition.name());
    out.member("description", composition.description());
    out.member("comments", composition.comments());
    out.key("baseType");
    out.beginArray();
    for (const std::string& name : baseTypeNames(composition.type()))
        out.value(name);
    out.endArray();
    if (hasName(composition.composition_type()))
        out.member("type", composition.composition_type()->name());
    if (hasName(composition.layer()))
        out.member("layer", composition.layer()->name());
    out.key("plies");
    out.beginArray();
    for (const Ply& ply : composition.plies()) {
        out.beginObject();
        out.member("material", ply.material()->name());
        out.member("thickness", ply.thickness());
        out.member("function", functionName(ply.function()));
        out.endObject();
    }
    out.endArray();
    if (composition.has_variable_ply())
        out.member("variablePly", composition.variable_ply());
    out.member("variablePlyMinThickness", composition.variable_ply_min_thickness());
    writeAnnotations(out, composition);
    out.endObject();
}

void writeProfileName(JsonText& out, const ProfileName& name) {
    out.beginObject();
    out.member("name", name.name());
    if (!standardName(name).isEmpty())
        out.member("standard", standardName(name));
    out.key("type");
    out.beginArray();
    for (const auto& entry : kProfileTypeNames)
        if (name.type() & entry.first)
            out.value(entry.second);
    out.endArray();
    out.endObject();
}

void writeLoop(JsonText& out, const ProfileLoop& loop) {
    out.beginArray();
    for (const ProfileEdge& edge : loop) {
        out.beginArray();
        out.value(edge.start.x);
        out.value(edge.start.y);
        out.value(edge.bulge);
        out.endArray();
    }
    out.endArray();
}

void writeProfile(JsonText& out, const Profile& profile) {
    // Its dimensions mean nothing to this version: written under a shape it does not know, they
    // could not be read back anywhere.
    if (&profile.isA() == &UnknownShapeProfile::desc())
        throw ExchangeError(OdString::formatted(
            L"The profile '%ls' has a shape that this version does not know, so the library cannot be exported "
            L"whole. Export it with the version that made the profile.",
            profile.displayName().c_str()));
    out.beginObject();
    if (hasName(profile.name())) {
        out.member("name", profile.name()->name());
        if (!standardName(*profile.name()).isEmpty())
            out.member("standard", standardName(*profile.name()));
    }
    out.member("size", profile.size());
    out.member("shape", profile.isA().shortName());
    out.member("description", profile.description());
    if (hasName(profile.material()))
        out.member("material", profile.material()->name());
    if (profile.has_offset()) {
        out.key("offset");
        out.beginArray();
        out.value(profile.offset().x);
        out.value(profile.offset().y);
        out.endArray();
    }
    out.key("parameters");
    out.beginObject();
    for (const ShapeParameterInfo& info : profile.isA().parameters())
        if (profile.hasParameter(info.id)) {
            out.key(info.key);
            out.value(profile.parameter(info.id));
        }
    out.endObject();
    if (profile.objectType() == kCustomProfile) {
        const ProfileGeometry& geometry = static_cast<const CustomProfile&>(profile).geometry();
        out.key("geometry");
        out.beginObject();
        out.key("outer");
        writeLoop(out, geometry.outer);
        out.key("holes");
        out.beginArray();
        for (const ProfileLoop& hole : geometry.holes)
            writeLoop(out, hole);
        out.endArray();
        out.endObject();
    }
    out.endObject();
}

// ---- Property-set definitions

const char* const kSpecifierKindNames[] = {"primitive", "enumeration", "formula", "parentReference",
                                           "valueDefinitionReference", "extended"};
static_assert(sizeof(kSpecifierKindNames) / sizeof(kSpecifierKindNames[0]) == TypeSpecification::kLastKind + 1,
              "a name for every kind of type specifier");

// The kinds whose data is the specifier's JSON, which the document holds as JSON.
bool holdsJson(TypeSpecification::Kind kind) {
    return kind != TypeSpecification::kPrimitive && kind != TypeSpecification::kExtended;
}

void writeAliases(JsonText& out, const std::vector<LocalizedName>& aliases) {
    out.key("aliases");
    out.beginArray();
    for (const LocalizedName& alias : aliases) {
        out.beginObject();
        out.member("language", alias.language);
        out.member("name", alias.name);
        out.member("definition", alias.definition);
        out.endObject();
    }
    out.endArray();
}

// What a definition file gave beyond the library's fields, as the text it is stored as.
void writeSource(JsonText& out, const std::string& source) {
    if (!source.empty())
        out.member("source", source);
}

void writeDefinition(JsonText& out, const PropertyDefinitionRecord& definition) {
    out.beginObject();
    out.member("name", definition.name);
    out.member("label", definition.label);
    out.member("description", definition.description);
    out.key("type");
    out.beginObject();
    out.member("kind", kSpecifierKindNames[definition.type.kind]);
    out.member("code", definition.type.code);
    out.member("category", definition.type.valueCategory);
    if (!definition.type.data.empty()) {
        // Data that is not JSON (damaged, or of a kind that is text) goes as text, so nothing is lost.
        Json data = holdsJson(definition.type.kind) ? Json::parse(definition.type.data, nullptr, false) : Json();
        out.key("data");
        if (holdsJson(definition.type.kind) && !data.is_discarded())
            out.json(data);
        else
            out.value(definition.type.data);
    }
    out.endObject();
    if (definition.kind == DefinitionKind::kValue || !definition.measure.isEmpty())
        out.member("measure", definition.measure);
    writeAliases(out, definition.aliases);
    writeSource(out, definition.source);
    out.endObject();
}

void writeDefinitions(JsonText& out, const char* key, const std::vector<PropertyDefinitionRecord>& definitions) {
    out.key(key);
    out.beginArray();
    for (const PropertyDefinitionRecord& definition : definitions)
        writeDefinition(out, definition);
    out.endArray();
}

// Namespaces, sets and definitions in the library's order, which the user chose.
void writePropertyNamespaces(JsonText& out, const PropertySetStore& store) {
    out.key("propertyNamespaces");
    out.beginArray();
    for (const PropertyNamespaceRecord& ns : store.namespaces()) {
        out.beginObject();
        out.member("name", ns.name);
        out.member("label", ns.label);
        out.member("editable", ns.editable);
        out.key("propertySets");
        out.beginArray();
        for (const PropertySetRecord& set : store.propertySets(ns.id)) {
            out.beginObject();
            out.member("name", set.name);
            out.member("label", set.label);
            out.member("description", set.description);
            out.member("visible", set.visible);
            out.member("perInstance", set.perInstance);
            out.member("editable", set.editable);
            out.member("templateType", set.templateType);
            out.member("applicableTypeValue", set.applicableTypeValue);
            out.key("applicableClasses");
            out.beginArray();
            for (const OdString& ifcType : set.applicableClasses)
                out.value(ifcType);
            out.endArray();
            writeAliases(out, set.aliases);
            writeSource(out, set.source);
            writeDefinitions(out, "propertyDefinitions", store.definitions(set.id, DefinitionKind::kProperty));
            writeDefinitions(out, "valueDefinitions", store.definitions(set.id, DefinitionKind::kValue));
            out.endObject();
        }
        out.endArray();
        out.endObject();
    }
    out.endArray();
}

// Profile names by standard and name, profiles then by size: both orders are total, since
// the library keeps those unique after folding.
std::vector<QcSmartPtr<ProfileName>> sortedProfileNames(std::vector<QcSmartPtr<ProfileName>> names) {
    std::sort(names.begin(), names.end(), [](const auto& a, const auto& b) {
        return profileNameKey(standardName(*a), a->name()) < profileNameKey(standardName(*b), b->name());
    });
    return names;
}

std::wstring keyOf(const Profile& profile) {
    const ProfileName* name = profile.name().get();
    return profileKey(name ? standardName(*name) : OdString(), name ? name->name() : OdString(), profile.size());
}

template <class T>
std::vector<QcSmartPtr<T>> allOf(const Library& library) {
    std::vector<QcSmartPtr<T>> objects;
    library.get(objects);
    return objects;
}

// Keeps the objects whose folded names are in `names` (all when `all`).
template <class T>
std::vector<QcSmartPtr<T>> chosen(std::vector<QcSmartPtr<T>> objects, bool all, const std::set<std::wstring>& names) {
    if (!all)
        objects.erase(std::remove_if(objects.begin(), objects.end(),
                                     [&](const QcSmartPtr<T>& o) { return names.count(foldCase(o->name())) == 0; }),
                      objects.end());
    return sortedByName(std::move(objects));
}

// The names of what `object` refers to, by target kind, added to `names`.
void collectReferences(const Object& object, std::map<ObjectType, std::set<std::wstring>>& names) {
    std::vector<const Object*> targets;
    for (const KindReference& reference : describeKind(object.objectType()).references) {
        targets.clear();
        reference.collect(object, targets);
        for (const Object* target : targets)
            if (!target->name().isEmpty())
                names[reference.target].insert(foldCase(target->name()));
    }
}

template <class T>
void writeNames(JsonText& out, const char* key, const std::vector<QcSmartPtr<T>>& objects) {
    out.key(key);
    out.beginArray();
    for (const auto& object : objects)
        out.value(object->name());
    out.endArray();
}

// ---------------------------------------------------------------- reading

// The place of a value in the document, for messages: "materials[3] 'Brick'.bim". Built only
// when a message needs it.
class Place {
public:
    static constexpr size_t kNoIndex = size_t(-1);
    explicit Place(const char* text) : m_member(text) {}
    Place(const char* list, size_t index) : m_member(list), m_index(index) {}
    Place(const Place& parent, const char* member, size_t index = kNoIndex)
        : m_parent(&parent), m_member(member), m_index(index) {}
    // The object's name, once read.
    void setName(const std::string& name) { m_name = name; }

    std::string text() const {
        std::string text = m_parent ? m_parent->text() + "." + m_member : std::string(m_member);
        if (m_index != kNoIndex)
            text += "[" + std::to_string(m_index) + "]";
        if (!m_name.empty())
            text += " '" + m_name + "'";
        return text;
    }

private:
    const Place* m_parent = nullptr;
    const char* m_member;
    size_t m_index = kNoIndex;
    std::string m_name;
};

// One JSON object of the document being read: typed access to its fields, each field read
// once, and an error for any field nobody asked for.
class Fields {
public:
    Fields(const Json& value, Place place) : m_value(value), m_place(std::move(place)) {
        if (!m_value.is_object())
            fail("is not a JSON object");
    }

    [[noreturn]] void fail(const std::string& what) const { throw ExchangeError(OdString::fromUtf8(where() + " " + what)); }
    [[noreturn]] void failField(const std::string& key, const std::string& what) const {
        fail("has a field '" + key + "' that " + what);
    }
    std::string where() const { return m_place.text(); }
    const Place& place() const { return m_place; }

    const Json* find(const char* key) {
        auto it = m_value.find(key);
        if (it == m_value.end())
            return nullptr;
        if (std::none_of(m_found.begin(), m_found.end(), [key](const char* k) { return std::strcmp(k, key) == 0; }))
            m_found.push_back(key);
        return &*it;
    }
    const Json& required(const char* key) {
        if (const Json* v = find(key))
            return *v;
        fail("lacks the field '" + std::string(key) + "'");
    }

    std::string text(const char* key, const std::string& fallback = std::string()) {
        const Json* v = find(key);
        if (!v)
            return fallback;
        if (!v->is_string())
            failField(key, "is not a text");
        return v->get<std::string>();
    }
    std::string requiredText(const char* key) {
        required(key);
        return text(key);
    }
    std::optional<std::string> optionalText(const char* key) {
        if (!m_value.contains(key))
            return std::nullopt;
        return text(key);
    }
    double number(const char* key, double fallback) {
        const Json* v = find(key);
        if (!v)
            return fallback;
        if (!v->is_number())
            failField(key, "is not a number");
        return v->get<double>();
    }
    bool flag(const char* key, bool fallback) {
        const Json* v = find(key);
        if (!v)
            return fallback;
        if (!v->is_boolean())
            failField(key, "is not true or false");
        return v->get<bool>();
    }
    std::optional<int64_t> integer(const char* key, int64_t low, int64_t high) {
        const Json* v = find(key);
        if (!v)
            return std::nullopt;
        if (!v->is_number_integer() || v->get<int64_t>() < low || v->get<int64_t>() > high)
            failField(key, "is not a whole number from " + std::to_string(low) + " to " + std::to_string(high));
        return v->get<int64_t>();
    }

    // Every field was asked for. Fields are found once each, so a count tells; the search for
    // the unknown one runs only when there is one.
    void finish() const {
        if (m_found.size() == m_value.size())
            return;
        for (auto it = m_value.begin(); it != m_value.end(); ++it)
            if (std::none_of(m_found.begin(), m_found.end(), [&](const char* k) { return it.key() == k; }))
                fail("has an unknown field '" + it.key() + "'");
    }
    // The name of the object in messages, once it is known.
    void setName(const std::string& name) { m_place.setName(name); }

private:
    const Json& m_value;
    Place m_place;
    std::vector<const char*> m_found;
};

std::string quoted(const std::string& name) { return "'" + name + "'"; }

const ObjectType (&kNamedKinds)[4] = ExchangeDocument::kNamedKinds;

QcSmartPtr<Object> createNamed(ObjectType type, const OdString& name) {
    QcSmartPtr<Object> object = describeKind(type).create();
    object->set_name(name);
    return object;
}

// Reads a list of the document's object `root`; `each` gets the element and its place for
// messages. An element is dropped once read: freed while it is fresh in the cache, the parsed
// values cost a fraction of what they cost freed all at once at the end.
template <class Each>
void readList(Fields& top, Json& root, const char* key, Each&& each) {
    if (!top.find(key))
        return;
    Json& list = root[key];
    if (!list.is_array())
        throw ExchangeError(OdString::fromUtf8("'" + std::string(key) + "' is not a list"));
    for (size_t i = 0; i < list.size(); ++i) {
        each(static_cast<const Json&>(list[i]), Place(key, i));
        list[i] = nullptr;
    }
}

OdString objectName(Fields& fields) {
    std::string name = fields.requiredText("name");
    if (name.empty())
        fields.fail("has an empty name");
    return OdString::fromUtf8(name);
}

void addName(ExchangeDocument& doc, ObjectType type, const OdString& name, const Place& place) {
    if (!doc.names[type].insert(foldCase(name)).second)
        throw ExchangeError(OdString::fromUtf8(place.text() + ": the name " + quoted(utf8(name)) + " occurs twice in '" +
                                               exchangeKindKey(type) + "'"));
    ++doc.objectCount;
}

Pattern readPattern(Fields& parent, const char* key) {
    Pattern pattern;
    const Json* value = parent.find(key);
    if (!value)
        return pattern;
    Fields fields(*value, Place(parent.place(), key));
    const std::string type = fields.text("type", "none");
    auto parsed = patternTypeFromName(type);
    if (!parsed)
        fields.failField("type", "names no pattern type: " + quoted(type));
    pattern.set_type(*parsed);
    pattern.set_name(OdString::fromUtf8(fields.text("name")));
    pattern.set_scale(fields.number("scale", 1.0));
    pattern.set_space(fields.number("space", 1.0));
    pattern.set_angle(fields.number("angle", 0.0));
    pattern.set_cross(fields.flag("cross", false));
    pattern.set_annotative(fields.flag("annotative", false));
    if (auto background = fields.integer("background", 0, 0xFFFFFFFFll))
        pattern.set_background_color(uint32_t(*background));
    fields.finish();
    return pattern;
}

MaterialFunction readFunction(Fields& fields, const char* key) {
    const std::string name = fields.text(key, "none");
    auto function = functionFromName(name);
    if (!function)
        fields.failField(key, "names no material function: " + quoted(name));
    return *function;
}

std::optional<PhysicalValue> readPhysicalValue(Fields& parent, const char* key, PhysicalQuantity quantity) {
    const Json* value = parent.find(key);
    if (!value)
        return std::nullopt;
    Fields fields(*value, Place(parent.place(), key));
    const Json& number = fields.required("value");
    if (!number.is_number())
        fields.failField("value", "is not a number");
    const std::string unit = fields.requiredText("unit");
    if (!isPhysicalUnit(quantity, unit))
        fields.failField("unit", "names no unit of " + std::string(quantityName(quantity)) + ": " + quoted(unit));
    fields.finish();
    return PhysicalValue{number.get<double>(), OdString::fromUtf8(unit)};
}

// Tags and custom values; custom properties are looked up in `scopes` (the scope each name
// will have once imported).
void readAnnotations(Fields& fields, AnnotatedObject& object,
                     const std::function<QcSmartPtr<CustomProperty>(const std::string&, const Place&)>& property) {
    if (const Json* tags = fields.find("tags")) {
        if (!tags->is_array())
            fields.failField("tags", "is not a list");
        for (const Json& tag : *tags) {
            if (!tag.is_string() || tag.get<std::string>().empty())
                fields.failField("tags", "holds something other than a name");
            object.add_tag(OdString::fromUtf8(tag.get<std::string>()));
        }
    }
    if (const Json* values = fields.find("customValues")) {
        if (!values->is_object())
            fields.failField("customValues", "is not a JSON object");
        for (auto it = values->begin(); it != values->end(); ++it) {
            if (!it->is_string())
                fields.failField("customValues", "holds a value of " + quoted(it.key()) + " that is not a text");
            QcSmartPtr<CustomProperty> p = property(it.key(), fields.place());
            if (!p->appliesTo(object.objectType()))
                fields.fail("has a value of the custom property " + quoted(it.key()) + ", which does not apply to its kind");
            object.set_custom_value(p, OdString::fromUtf8(it->get<std::string>()));
        }
    }
}

// Reads and checks the whole document; nothing is written yet.
class DocumentReader {
public:
    DocumentReader(const Library& library, Json& root) : m_library(library), m_root(root) {}

    ExchangeDocument read() {
        const Json* format = m_root.is_object() && m_root.contains("format") ? &m_root["format"] : nullptr;
        if (!format || !format->is_string() || format->get<std::string>() != kFormatName)
            throw ExchangeError(OdString::fromUtf8(std::string("The document is not a library exchange document (its "
                                                               "'format' is not '") + kFormatName + "')"));
        Fields top(m_root, Place("The document"));
        top.find("format");
        const Json& version = top.required("version");
        if (!version.is_number_integer() || version.get<int64_t>() < 1)
            top.failField("version", "is not a format version");
        if (version.get<int64_t>() > kExchangeFormatVersion)
            throw ExchangeError(OdString::formatted(L"The document has format version %lld; this version reads up to %d",
                                                    (long long)version.get<int64_t>(), kExchangeFormatVersion));
        const std::string unit = top.requiredText("unit");
        auto parsedUnit = unitFromName(unit);
        if (!parsedUnit)
            top.failField("unit", "names no length unit: " + quoted(unit));
        m_doc.unit = *parsedUnit;
        m_doc.description = top.optionalText("description");

        for (int k = 0; k < 4; ++k)
            readList(top, m_root, kindKey(kNamedKinds[k]), [&](const Json& value, const Place& place) {
                if (!value.is_string() || value.get<std::string>().empty())
                    throw ExchangeError(OdString::fromUtf8(place.text() + " is not a name"));
                const OdString name = OdString::fromUtf8(value.get<std::string>());
                addName(m_doc, kNamedKinds[k], name, place);
                m_doc.named[k].push_back(createNamed(kNamedKinds[k], name));
            });
        readList(top, m_root, kindKey(kCustomProperty), [&](const Json& value, const Place& place) {
            Fields fields(value, place);
            const OdString name = objectName(fields);
            const std::string scope = fields.text("appliesTo", "any");
            auto type = scopeFromName(scope);
            if (!type)
                fields.failField("appliesTo", "names no kind of object: " + quoted(scope));
            fields.finish();
            addName(m_doc, kCustomProperty, name, place);
            m_doc.properties.push_back(CustomProperty::create(name, *type));
        });
        // Names first: materials may be listed after the compositions that use them.
        prepareNames(kMaterial);
        prepareNames(kComposition);
        readList(top, m_root, "materials", [&](const Json& value, const Place& place) { readMaterial(value, place); });
        readList(top, m_root, "compositions", [&](const Json& value, const Place& place) { readComposition(value, place); });
        readList(top, m_root, kindKey(kProfileStandard), [&](const Json& value, const Place& place) {
            if (!value.is_string() || value.get<std::string>().empty())
                throw ExchangeError(OdString::fromUtf8(place.text() + " is not a name"));
            const OdString name = OdString::fromUtf8(value.get<std::string>());
            addName(m_doc, kProfileStandard, name, place);
            m_doc.profileStandards.push_back(ProfileStandard::create(name));
        });
        readList(top, m_root, kindKey(kProfileName), [&](const Json& value, const Place& place) { readProfileName(value, place); });
        readList(top, m_root, kindKey(kConstructionProfile), [&](const Json& value, const Place& place) { readProfile(value, place); });
        readList(top, m_root, kindKey(kPropertyNamespace), [&](const Json& value, const Place& place) {
            readPropertyNamespace(value, place);
        });
        top.finish();
        return std::move(m_doc);
    }

private:
    void prepareNames(ObjectType type) {
        const char* key = kindKey(type);
        auto list = m_root.find(key);
        if (list == m_root.end() || !list->is_array())
            return;
        // Elements without a proper name are left to the full read, which says what is wrong.
        for (size_t i = 0; i < list->size(); ++i) {
            const Json& element = (*list)[i];
            auto name = element.is_object() ? element.find("name") : element.end();
            if (name != element.end() && name->is_string() && !name->get_ref<const std::string&>().empty())
                addName(m_doc, type, OdString::fromUtf8(name->get_ref<const std::string&>()), Place(key, i));
        }
    }

    // A reference by name to an object of `type` that the document or the library must hold.
    void requireTarget(ObjectType type, const std::string& name, const Place& place) {
        if (name.empty())
            throw ExchangeError(OdString::fromUtf8(place.text() + " refers to an object without a name"));
        const OdString odName = OdString::fromUtf8(name);
        if (m_doc.names[type].count(foldCase(odName)) || m_library.isNameUsed(type, odName))
            return;
        throw ExchangeError(OdString::fromUtf8(place.text() + " refers to " + quoted(name) + " in '" + exchangeKindKey(type) +
                                               "', which is neither in the document nor in the library"));
    }

    template <class T>
    QcSmartPtr<T> namedTarget(Fields& fields, const char* key) {
        auto name = fields.optionalText(key);
        if (!name)
            return QcSmartPtr<T>();
        requireTarget(T::kType, *name, Place(fields.place(), key));
        return T::create(OdString::fromUtf8(*name));
    }

    // The custom property of that name as it will be once imported: the library's when it has
    // one (shared by name), else the document's.
    QcSmartPtr<CustomProperty> property(const std::string& name, const Place& place) {
        const OdString odName = OdString::fromUtf8(name);
        const std::wstring folded = foldCase(odName);
        auto known = m_properties.find(folded);
        if (known != m_properties.end())
            return known->second;
        QcSmartPtr<CustomProperty> found = m_library.get<CustomProperty>(NameKey(odName));
        for (auto it = m_doc.properties.begin(); !found && it != m_doc.properties.end(); ++it)
            if (sameName((*it)->name(), odName))
                found = *it;
        if (!found) {
            requireTarget(kCustomProperty, name, Place(place, "customValues"));  // throws: it is nowhere
            throw ConsistencyError(OdString(L"Custom property not found"));
        }
        m_properties.emplace(folded, found);
        return found;
    }

    void readTags(Fields& fields, AnnotatedObject& object) {
        readAnnotations(fields, object, [&](const std::string& n, const Place& p) { return property(n, p); });
        for (const auto& tag : object.tags())
            requireTarget(kTag, utf8(tag->name()), Place(fields.place(), "tags"));
    }

    void readMaterial(const Json& value, const Place& place) {
        Fields named(value, place);
        auto material = Material::create(objectName(named));
        named.setName(named.text("name"));
        material->set_description(OdString::fromUtf8(named.text("description")));
        material->set_comments(OdString::fromUtf8(named.text("comments")));
        material->set_type(namedTarget<MaterialType>(named, "class"));
        material->set_appearance(OdString::fromUtf8(named.text("appearance")));
        material->set_pattern(kSectionView, readPattern(named, "sectionPattern"));
        material->set_pattern(kElevationView, readPattern(named, "elevationPattern"));
        if (const Json* value = named.find("bim")) {
            Fields b(*value, Place(named.place(), "bim"));
            BimAsset* bim = material->bim_asset(true);
            bim->set_layer(namedTarget<Layer>(b, "sectionLayer"));
            bim->set_layer_elevation(namedTarget<Layer>(b, "elevationLayer"));
            bim->set_default_function(readFunction(b, "defaultFunction"));
            std::set<double> thicknesses;
            if (const Json* list = b.find("thicknesses")) {
                if (!list->is_array())
                    b.failField("thicknesses", "is not a list");
                for (const Json& t : *list) {
                    if (!t.is_number())
                        b.failField("thicknesses", "holds something other than a number");
                    thicknesses.insert(t.get<double>());
                }
            }
            bim->set_thicknesses(thicknesses);
            bim->set_variable_thickness(b.flag("variableThickness", false));
            bim->set_union_elevation(b.flag("unionElevation", false));
            bim->set_union_section(b.flag("unionSection", false));
            b.finish();
        }
        if (const Json* value = named.find("information")) {
            Fields i(*value, Place(named.place(), "information"));
            InformationAsset* info = material->information_asset(true);
            info->set_classification(OdString::fromUtf8(i.text("classification")));
            if (auto code = i.optionalText("uniqueCode"))
                info->set_unique_code(OdString::fromUtf8(*code));
            info->set_cost(OdString::fromUtf8(i.text("cost")));
            info->set_keynote(OdString::fromUtf8(i.text("keynote")));
            info->set_label(OdString::fromUtf8(i.text("label")));
            info->set_manufacturer(OdString::fromUtf8(i.text("manufacturer")));
            info->set_mark(OdString::fromUtf8(i.text("mark")));
            info->set_model(OdString::fromUtf8(i.text("model")));
            info->set_url(OdString::fromUtf8(i.text("url")));
            i.finish();
        }
        if (const Json* value = named.find("physical")) {
            Fields p(*value, Place(named.place(), "physical"));
            PhysicalAsset* physical = material->physical_asset(true);
            if (auto v = readPhysicalValue(p, "density", PhysicalQuantity::kDensity))
                physical->set_density(v->value, v->unit);
            if (auto v = readPhysicalValue(p, "thermalConductivity", PhysicalQuantity::kThermalConductivity))
                physical->set_thermal_conductivity(v->value, v->unit);
            if (auto v = readPhysicalValue(p, "specificHeat", PhysicalQuantity::kSpecificHeat))
                physical->set_specific_heat(v->value, v->unit);
            p.finish();
        }
        readTags(named, *material);
        named.finish();
        m_doc.materials.push_back(material);
    }

    void readComposition(const Json& value, const Place& place) {
        Fields named(value, place);
        auto composition = Composition::create(objectName(named));
        named.setName(named.text("name"));
        composition->set_description(OdString::fromUtf8(named.text("description")));
        composition->set_comments(OdString::fromUtf8(named.text("comments")));
        uint32_t baseType = Composition::kWall;
        if (const Json* types = named.find("baseType")) {
            if (!types->is_array() || types->empty())
                named.failField("baseType", "is not a list of element kinds");
            baseType = 0;
            for (const Json& type : *types) {
                auto bit = type.is_string() ? baseTypeFromName(type.get<std::string>()) : std::nullopt;
                if (!bit)
                    named.failField("baseType", "holds " + type.dump() + ", which is no kind of element");
                baseType |= *bit;
            }
        }
        composition->set_base_type(Composition::Type(baseType));
        composition->set_type(namedTarget<CompositionType>(named, "type"));
        composition->set_layer(namedTarget<Layer>(named, "layer"));
        if (const Json* plies = named.find("plies")) {
            if (!plies->is_array())
                named.failField("plies", "is not a list");
            for (size_t i = 0; i < plies->size(); ++i) {
                Fields p((*plies)[i], Place(named.place(), "plies", i));
                const std::string material = p.requiredText("material");
                requireTarget(kMaterial, material, Place(p.place(), "material"));
                const Json& thickness = p.required("thickness");
                if (!thickness.is_number())
                    p.failField("thickness", "is not a number");
                composition->append_ply(Ply(Material::create(OdString::fromUtf8(material)), thickness.get<double>(),
                                            readFunction(p, "function")));
                p.finish();
            }
        }
        if (auto variable = named.integer("variablePly", 0, int64_t(composition->numPlies()) - 1))
            composition->set_variable_ply(int(*variable));
        composition->set_variable_ply_min_thickness(named.number("variablePlyMinThickness", 0.0));
        readTags(named, *composition);
        named.finish();
        m_doc.compositions.push_back(composition);
    }

    // The standard a profile name or profile names, as a stand-in; null for none.
    QcSmartPtr<ProfileStandard> standardOf(Fields& fields) {
        auto name = fields.optionalText("standard");
        if (!name)
            return QcSmartPtr<ProfileStandard>();
        requireTarget(kProfileStandard, *name, Place(fields.place(), "standard"));
        return ProfileStandard::create(OdString::fromUtf8(*name));
    }

    void readProfileName(const Json& value, const Place& place) {
        Fields fields(value, place);
        const OdString name = objectName(fields);
        fields.setName(utf8(name));
        QcSmartPtr<ProfileStandard> standard = standardOf(fields);
        uint32_t type = 0;
        if (const Json* types = fields.find("type")) {
            if (!types->is_array() || types->empty())
                fields.failField("type", "is not a list of profile types");
            for (const Json& entry : *types) {
                auto known = std::find_if(std::begin(kProfileTypeNames), std::end(kProfileTypeNames), [&](const auto& t) {
                    return entry.is_string() && entry.get<std::string>() == t.second;
                });
                if (known == std::end(kProfileTypeNames))
                    fields.failField("type", "holds " + entry.dump() + ", which is no profile type");
                type |= known->first;
            }
        } else {
            type = kProfileGeneric;
        }
        fields.finish();
        const OdString standardText = standard ? standard->name() : OdString();
        if (!m_doc.names[kProfileName].insert(profileNameKey(standardText, name)).second)
            throw ExchangeError(OdString::fromUtf8(place.text() + ": the profile name " + quoted(utf8(name)) +
                                                   " occurs twice in its standard"));
        ++m_doc.objectCount;
        m_doc.profileNames.push_back(ProfileName::create(standard, name, ProfileType(type)));
    }

    void readLoop(Fields& fields, const Json& value, ProfileLoop& loop) {
        if (!value.is_array())
            fields.failField("geometry", "holds a loop that is not a list");
        for (const Json& edge : value) {
            if (!edge.is_array() || edge.size() != 3 || !edge[0].is_number() || !edge[1].is_number() || !edge[2].is_number())
                fields.failField("geometry", "holds an edge other than [x, y, bulge]");
            loop.emplace_back(Vector2d(edge[0].get<double>(), edge[1].get<double>()), edge[2].get<double>());
        }
    }

    void readProfile(const Json& value, const Place& place) {
        Fields fields(value, place);
        const std::string shape = fields.requiredText("shape");
        const ProfileClass* shapeClass = ProfileClass::byName(OdString::fromUtf8(shape));
        if (!shapeClass)
            fields.failField("shape", "names no profile shape: " + quoted(shape));
        QcSmartPtr<Profile> profile = shapeClass->createEmpty();
        profile->set_size(OdString::fromUtf8(fields.text("size")));
        QcSmartPtr<ProfileStandard> standard = standardOf(fields);
        const OdString standardText = standard ? standard->name() : OdString();
        OdString nameText;
        if (const auto name = fields.optionalText("name")) {
            nameText = OdString::fromUtf8(*name);
            auto profileName = ProfileName::create(standard, nameText, kProfileGeneric);
            if (!m_doc.names[kProfileName].count(profileNameKey(standardText, nameText)) &&
                m_library.store().findClash(*profileName, nameText) == 0)
                fields.fail("refers to the profile name " + quoted(*name) +
                            ", which is neither in the document nor in the library");
            profile->set_name(profileName);
        } else if (standard) {
            fields.fail("has a standard but no profile name");
        }
        fields.setName(utf8(standardText) + " " + utf8(nameText) + " " + utf8(profile->size()));
        profile->set_description(OdString::fromUtf8(fields.text("description")));
        profile->set_material(namedTarget<Material>(fields, "material"));
        if (const Json* offset = fields.find("offset")) {
            if (!offset->is_array() || offset->size() != 2 || !(*offset)[0].is_number() || !(*offset)[1].is_number())
                fields.failField("offset", "is not [x, y]");
            profile->set_offset(Vector2d((*offset)[0].get<double>(), (*offset)[1].get<double>()));
        }
        if (const Json* parameters = fields.find("parameters")) {
            if (!parameters->is_object())
                fields.failField("parameters", "is not a JSON object");
            for (auto it = parameters->begin(); it != parameters->end(); ++it) {
                const ShapeParameterInfo* info = shapeClass->parameter(it.key().c_str());
                if (!info)
                    fields.failField("parameters", "names " + quoted(it.key()) + ", which the shape " + shape + " lacks");
                if (!it->is_number())
                    fields.failField("parameters", "holds a value of " + quoted(it.key()) + " that is not a number");
                profile->setParameter(info->id, it->get<double>());
            }
        }
        if (const Json* geometry = fields.find("geometry")) {
            if (shapeClass->type() != kCustomProfile)
                fields.failField("geometry", "belongs to custom profiles only");
            Fields g(*geometry, Place(fields.place(), "geometry"));
            ProfileGeometry outline;
            readLoop(fields, g.required("outer"), outline.outer);
            if (const Json* holes = g.find("holes")) {
                if (!holes->is_array())
                    g.failField("holes", "is not a list");
                for (const Json& hole : *holes) {
                    outline.holes.emplace_back();
                    readLoop(fields, hole, outline.holes.back());
                }
            }
            g.finish();
            try {
                static_cast<CustomProfile&>(*profile).set_geometry(outline);
            } catch (const ConsistencyError& e) {
                fields.failField("geometry", "is no outline: " + utf8(e.message()));
            }
        }
        fields.finish();
        if (!m_doc.names[kConstructionProfile].insert(profileKey(standardText, nameText, profile->size())).second)
            throw ExchangeError(OdString::fromUtf8(fields.where() + ": the profile occurs twice in 'profiles'"));
        ++m_doc.objectCount;
        m_doc.profiles.push_back(profile);
    }

    static std::vector<LocalizedName> readAliases(Fields& fields) {
        std::vector<LocalizedName> aliases;
        const Json* list = fields.find("aliases");
        if (!list)
            return aliases;
        if (!list->is_array())
            fields.failField("aliases", "is not a list");
        for (size_t i = 0; i < list->size(); ++i) {
            Fields alias((*list)[i], Place(fields.place(), "aliases", i));
            const std::string language = alias.requiredText("language");
            if (language.empty())
                alias.failField("language", "is empty");
            aliases.push_back({OdString::fromUtf8(language), OdString::fromUtf8(alias.text("name")),
                               OdString::fromUtf8(alias.text("definition"))});
            alias.finish();
        }
        return aliases;
    }

    static TypeSpecification readType(Fields& definition) {
        TypeSpecification type;
        const Json* value = definition.find("type");
        if (!value)
            return type;
        Fields fields(*value, Place(definition.place(), "type"));
        const std::string kind = fields.text("kind", kSpecifierKindNames[0]);
        auto known = std::find(std::begin(kSpecifierKindNames), std::end(kSpecifierKindNames), kind);
        if (known == std::end(kSpecifierKindNames))
            fields.failField("kind", "names no kind of type: " + quoted(kind));
        type.kind = TypeSpecification::Kind(known - std::begin(kSpecifierKindNames));
        type.code = int(fields.integer("code", 0, 0x7fffffff).value_or(type.code));
        type.valueCategory = int(fields.integer("category", 1, 0x7fffffff).value_or(type.valueCategory));
        if (const Json* data = fields.find("data"))
            type.data = data->is_string() ? data->get<std::string>() : data->dump();
        if (type.kind == TypeSpecification::kExtended && type.valueCategory == 1)
            fields.failField("category", "is a single value, which is no extended kind");
        fields.finish();
        return type;
    }

    std::vector<PropertyDefinitionRecord> readDefinitions(Fields& set, const char* key, DefinitionKind kind) {
        std::vector<PropertyDefinitionRecord> definitions;
        const Json* list = set.find(key);
        if (!list)
            return definitions;
        if (!list->is_array())
            set.failField(key, "is not a list");
        std::set<std::wstring> names;
        for (size_t i = 0; i < list->size(); ++i) {
            Fields fields((*list)[i], Place(set.place(), key, i));
            PropertyDefinitionRecord definition;
            definition.kind = kind;
            definition.name = objectName(fields);
            fields.setName(utf8(definition.name));
            if (!names.insert(foldCase(definition.name)).second)
                fields.fail("has a name that another definition of its set has");
            definition.label = OdString::fromUtf8(fields.text("label"));
            definition.description = OdString::fromUtf8(fields.text("description"));
            definition.type = readType(fields);
            definition.measure = OdString::fromUtf8(fields.text("measure"));
            definition.aliases = readAliases(fields);
            definition.source = fields.text("source");
            fields.finish();
            definitions.push_back(std::move(definition));
        }
        return definitions;
    }

    void readPropertyNamespace(const Json& value, const Place& place) {
        Fields fields(value, place);
        ExchangedNamespace ns;
        ns.ns.name = objectName(fields);
        fields.setName(utf8(ns.ns.name));
        ns.ns.label = OdString::fromUtf8(fields.text("label"));
        ns.ns.editable = fields.flag("editable", true);
        if (const Json* sets = fields.find("propertySets")) {
            if (!sets->is_array())
                fields.failField("propertySets", "is not a list");
            std::set<std::wstring> names;
            for (size_t i = 0; i < sets->size(); ++i) {
                Fields s((*sets)[i], Place(fields.place(), "propertySets", i));
                ExchangedNamespace::Set entry;
                PropertySetRecord& set = entry.set;
                set.name = objectName(s);
                s.setName(utf8(set.name));
                if (!names.insert(foldCase(set.name)).second)
                    s.fail("has a name that another set of its namespace has");
                set.label = OdString::fromUtf8(s.text("label"));
                set.description = OdString::fromUtf8(s.text("description"));
                set.visible = s.flag("visible", true);
                set.perInstance = s.flag("perInstance", true);
                set.editable = s.flag("editable", true);
                set.templateType = OdString::fromUtf8(s.text("templateType"));
                set.applicableTypeValue = OdString::fromUtf8(s.text("applicableTypeValue"));
                if (const Json* classes = s.find("applicableClasses")) {
                    std::set<std::wstring> seen;
                    if (!classes->is_array())
                        s.failField("applicableClasses", "is not a list");
                    for (const Json& ifcType : *classes) {
                        if (!ifcType.is_string() || ifcType.get<std::string>().empty())
                            s.failField("applicableClasses", "holds something other than a class name");
                        const OdString name = OdString::fromUtf8(ifcType.get<std::string>());
                        if (!seen.insert(foldCase(name)).second)
                            s.failField("applicableClasses", "names " + quoted(utf8(name)) + " twice");
                        set.applicableClasses.push_back(name);
                    }
                }
                set.aliases = readAliases(s);
                set.source = s.text("source");
                entry.definitions = readDefinitions(s, "propertyDefinitions", DefinitionKind::kProperty);
                for (auto& definition : readDefinitions(s, "valueDefinitions", DefinitionKind::kValue))
                    entry.definitions.push_back(std::move(definition));
                s.finish();
                ns.sets.push_back(std::move(entry));
            }
        }
        fields.finish();
        addName(m_doc, kPropertyNamespace, ns.ns.name, place);
        m_doc.propertyNamespaces.push_back(std::move(ns));
    }

    const Library& m_library;
    Json& m_root;
    ExchangeDocument m_doc;
    // Custom properties by folded name, as values refer to them.
    std::map<std::wstring, QcSmartPtr<CustomProperty>> m_properties;
};

Json parseExchangeDocument(const std::string& text) {
    if (text.find_first_not_of(" \t\r\n") == std::string::npos)
        throw ExchangeError(OdString(L"The document is empty"));
    try {
        return Json::parse(text);
    } catch (const Json::parse_error& e) {
        // The message of the parser already says where ("at line 3, column 7"); its prefix
        // names the exception class, which means nothing to a user.
        std::string message = e.what();
        const size_t end = message.find("] ");
        if (message.rfind("[json.exception", 0) == 0 && end != std::string::npos)
            message.erase(0, end + 2);
        throw ExchangeError(OdString::fromUtf8("The document is not valid JSON: " + message));
    }
}

void scaleLengths(ExchangeDocument& doc, double factor) {
    for (auto& material : doc.materials)
        if (BimAsset* bim = material->bim_asset()) {
            std::set<double> scaled;
            for (double t : bim->thicknesses())
                scaled.insert(t * factor);
            bim->set_thicknesses(scaled);
        }
    for (auto& composition : doc.compositions) {
        for (unsigned i = 0; i < composition->numPlies(); ++i) {
            Ply ply = composition->ply(i);
            ply.set_thickness(ply.thickness() * factor);
            composition->set_ply(i, ply);
        }
        composition->set_variable_ply_min_thickness(composition->variable_ply_min_thickness() * factor);
    }
    auto scaled = [factor](ProfileLoop loop) {
        for (ProfileEdge& edge : loop)
            edge.start = Vector2d(edge.start.x * factor, edge.start.y * factor);
        return loop;
    };
    for (auto& profile : doc.profiles) {
        for (const ShapeParameterInfo& info : profile->isA().parameters())
            if (isLengthParameter(info.id) && profile->hasParameter(info.id))
                profile->setParameter(info.id, profile->parameter(info.id) * factor);
        if (profile->has_offset())
            profile->set_offset(Vector2d(profile->offset().x * factor, profile->offset().y * factor));
        if (profile->objectType() == kCustomProfile) {
            auto& custom = static_cast<CustomProfile&>(*profile);
            ProfileGeometry geometry{scaled(custom.geometry().outer), {}};
            for (const ProfileLoop& hole : custom.geometry().holes)
                geometry.holes.push_back(scaled(hole));
            custom.set_geometry(geometry);
        }
    }
}

// Writes the checked document into the library; runs inside the import's transaction.
class DocumentWriter {
public:
    DocumentWriter(LibraryStore& store, ExchangeDocument& doc, ClashAnswer onClash, const ExchangeProgress& progress,
                   ImportReport& report)
        : m_store(store), m_doc(doc), m_onClash(onClash), m_progress(progress), m_report(report) {}

    void write() {
        for (int k = 0; k < 4; ++k)
            for (const auto& object : m_doc.named[k])
                writeShared(*object);
        for (const auto& property : m_doc.properties)
            writeShared(*property);
        for (const auto& standard : m_doc.profileStandards)
            writeShared(*standard);
        for (const auto& name : m_doc.profileNames)
            writeShared(*name);
        for (const auto& material : m_doc.materials)
            writeOwn(*material);
        for (const auto& profile : m_doc.profiles) {
            if (profile->material()) {
                auto renamed = m_materialNames.find(foldCase(profile->material()->name()));
                if (renamed != m_materialNames.end())
                    profile->set_material(Material::create(renamed->second));
            }
            writeOwn(*profile);
        }
        for (const auto& composition : m_doc.compositions) {
            // A ply names its material as the document does; the material may have been
            // stored under another name.
            for (unsigned i = 0; i < composition->numPlies(); ++i) {
                Ply ply = composition->ply(i);
                auto renamed = m_materialNames.find(foldCase(ply.material()->name()));
                if (renamed != m_materialNames.end())
                    ply.set_material(Material::create(renamed->second));
                composition->set_ply(i, ply);
            }
            writeOwn(*composition);
        }
        if (!m_doc.propertyNamespaces.empty()) {
            PropertySetStore store(m_store.self());
            for (ExchangedNamespace& ns : m_doc.propertyNamespaces)
                writeNamespace(store, ns);
        }
        if (m_progress)
            m_progress(m_done, m_doc.objectCount);
    }

private:
    ImportCounts& counts(ObjectType type) {
        type = exchangedKind(type);
        for (auto& entry : m_report.kinds)
            if (entry.type == type)
                return entry.counts;
        throw ConsistencyError(OdString(L"Kind missing from the import report"));
    }

    // A kind the library held no object of before the import meets no clash: the document's
    // names are unique per kind, so no lookup is needed. (Material cards may repeat a name.)
    bool mayClash(ObjectType type) {
        type = exchangedKind(type);
        auto known = m_mayClash.find(type);
        if (known == m_mayClash.end())
            known = m_mayClash.emplace(type, m_store.count(type) > 0 || !m_doc.uniqueNames).first;
        return known->second;
    }

    void advance() {
        ++m_done;
        if (m_progress && m_done % 256 == 0)
            m_progress(m_done, m_doc.objectCount);
    }

    // Objects shared by name: the library's object of that name (and scope) stays.
    void writeShared(const Object& object) {
        if (mayClash(object.objectType()) && m_store.findClash(object, object.name()) != 0) {
            ++counts(object.objectType()).skipped;
        } else {
            m_store.writeObject(object, 0);
            ++counts(object.objectType()).created;
        }
        advance();
    }

    // A profile's size is renamed within its profile name; the document's profiles of that
    // name are already written or come later with sizes of their own.
    OdString freeName(const Object& object, const OdString& name) const {
        const ObjectType type = exchangedKind(object.objectType());
        for (unsigned n = 2;; ++n) {
            OdString candidate = OdString::formatted(L"%ls_%u", name.c_str(), n);
            if (m_store.findClash(object, candidate) == 0 &&
                (type == kConstructionProfile || !m_doc.names.at(type).count(foldCase(candidate))))
                return candidate;
        }
    }

    void writeOwn(Object& object) {
        const ObjectType type = object.objectType();
        ImportCounts& c = counts(type);
        const uint32_t clash = mayClash(type) ? m_store.findClash(object, object.name()) : 0;
        if (clash == 0) {
            m_store.writeObject(object, 0);
            ++c.created;
        } else if (m_onClash == ClashAnswer::kSkip) {
            ++c.skipped;
        } else if (m_onClash == ClashAnswer::kOverwrite) {
            m_store.writeObject(object, clash);
            ++c.overwritten;
        } else {
            const OdString original = object.name();
            object.set_name(freeName(object, original));
            m_store.writeObject(object, 0);
            ++c.renamed;
            m_report.renames.push_back({type, original, object.name()});
            if (type == kMaterial)
                m_materialNames[foldCase(original)] = object.name();
        }
        advance();
    }

    // A namespace is the unit of a clash: skipped, replaced or renamed whole.
    void writeNamespace(PropertySetStore& store, ExchangedNamespace& ns) {
        ImportCounts& c = counts(kPropertyNamespace);
        const auto existing = store.findNamespace(ns.ns.name);
        if (existing && m_onClash == ClashAnswer::kSkip) {
            ++c.skipped;
            advance();
            return;
        }
        if (existing && m_onClash == ClashAnswer::kOverwrite) {
            store.removeNamespace(existing->id);
            ++c.overwritten;
        } else if (existing) {
            const OdString original = ns.ns.name;
            for (unsigned n = 2;; ++n) {
                OdString candidate = OdString::formatted(L"%ls_%u", original.c_str(), n);
                if (!store.findNamespace(candidate) && !m_doc.names.at(kPropertyNamespace).count(foldCase(candidate))) {
                    ns.ns.name = candidate;
                    break;
                }
            }
            ++c.renamed;
            m_report.renames.push_back({kPropertyNamespace, original, ns.ns.name});
        } else {
            ++c.created;
        }
        const uint32_t namespaceId = store.createNamespace(ns.ns);
        for (ExchangedNamespace::Set& entry : ns.sets) {
            entry.set.namespaceId = namespaceId;
            const uint32_t setId = store.createPropertySet(entry.set);
            for (PropertyDefinitionRecord& definition : entry.definitions) {
                definition.setId = setId;
                store.createDefinition(definition);
            }
        }
        advance();
    }

    LibraryStore& m_store;
    ExchangeDocument& m_doc;
    ClashAnswer m_onClash;
    const ExchangeProgress& m_progress;
    ImportReport& m_report;
    size_t m_done = 0;
    std::map<std::wstring, OdString> m_materialNames;
    std::map<ObjectType, bool> m_mayClash;
};

}  // namespace

FileReadError::FileReadError(std::string file, int line, const std::string& reason)
    : ExchangeError(OdString::fromUtf8(line > 0 ? file + ":" + std::to_string(line) + ": " + reason : file + ": " + reason)),
      m_file(std::move(file)), m_line(line), m_reason(reason) {}

const std::vector<ObjectType>& exchangedKinds() {
    static const std::vector<ObjectType> kinds = {kTag,      kLayer,       kMaterialType,    kCompositionType,
                                                  kCustomProperty, kMaterial, kComposition, kProfileStandard,
                                                  kProfileName,    kConstructionProfile, kPropertyNamespace};
    return kinds;
}

std::string exchangeKindKey(ObjectType type) { return kindKey(type); }

std::wstring profileNameKey(const OdString& standard, const OdString& name) {
    return foldCase(standard) + L'\n' + foldCase(name);
}

std::wstring profileKey(const OdString& standard, const OdString& name, const OdString& size) {
    return profileNameKey(standard, name) + L'\n' + foldCase(size);
}

std::string exchangeUnitName(OdDb::UnitsValue unit) { return unitName(unit); }

ImportCounts ImportReport::total() const {
    ImportCounts sum;
    for (const auto& entry : kinds) {
        sum.created += entry.counts.created;
        sum.skipped += entry.counts.skipped;
        sum.overwritten += entry.counts.overwritten;
        sum.renamed += entry.counts.renamed;
    }
    return sum;
}

std::string exportLibrary(const Library& library, const std::set<ObjectType>& kinds, const ExchangeProgress& progress) {
    for (ObjectType type : kinds)
        if (exchangeKindKey(type).empty())
            throw ConsistencyError(OdString::formatted(L"Objects of kind %u are not exchanged", unsigned(type)));
    const bool everything = kinds.empty();
    auto wanted = [&](ObjectType type) { return everything || kinds.count(type) != 0; };
    // One snapshot for all reads, so the document is one state of the library.
    LibraryStore::ReadScope snapshot(library.store());

    // Compositions and profiles first: the materials they use join the document, and then
    // what those use.
    std::map<ObjectType, std::set<std::wstring>> referenced;
    auto compositions = chosen(wanted(kComposition) ? allOf<Composition>(library) : std::vector<QcSmartPtr<Composition>>(),
                               true, {});
    for (const auto& composition : compositions)
        collectReferences(*composition, referenced);
    std::vector<QcSmartPtr<Profile>> profiles;
    if (wanted(kConstructionProfile)) {
        library.get(profiles, ProfileCriteria());
        std::vector<std::pair<std::wstring, QcSmartPtr<Profile>>> keyed;
        for (auto& profile : profiles) {
            keyed.emplace_back(keyOf(*profile), profile);
            collectReferences(*profile, referenced);
        }
        std::sort(keyed.begin(), keyed.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
        profiles.clear();
        for (auto& entry : keyed)
            profiles.push_back(entry.second);
    }
    // A profile name is chosen with the names of its profiles; a standard with its names.
    std::vector<QcSmartPtr<ProfileName>> profileNames = sortedProfileNames(allOf<ProfileName>(library));
    if (!wanted(kProfileName))
        profileNames.erase(std::remove_if(profileNames.begin(), profileNames.end(),
                                          [&](const auto& n) { return !referenced[kProfileName].count(foldCase(n->name())); }),
                           profileNames.end());
    for (const auto& name : profileNames)
        if (!standardName(*name).isEmpty())
            referenced[kProfileStandard].insert(foldCase(standardName(*name)));
    auto materials = chosen(allOf<Material>(library), wanted(kMaterial), referenced[kMaterial]);
    for (const auto& material : materials)
        collectReferences(*material, referenced);

    const size_t total = materials.size() + compositions.size() + profiles.size();
    size_t done = 0;
    auto advance = [&] {
        if (progress && ++done % 256 == 0)
            progress(done, total);
    };

    JsonText doc;
    doc.beginObject();
    doc.member("format", kFormatName);
    doc.member("version", kExchangeFormatVersion);
    doc.member("unit", unitName(library.unit()));
    doc.member("description", library.description());
    writeNames(doc, "tags", chosen(allOf<Tag>(library), wanted(kTag), referenced[kTag]));
    writeNames(doc, "layers", chosen(allOf<Layer>(library), wanted(kLayer), referenced[kLayer]));
    writeNames(doc, "materialClasses",
               chosen(allOf<MaterialType>(library), wanted(kMaterialType), referenced[kMaterialType]));
    writeNames(doc, "compositionTypes",
               chosen(allOf<CompositionType>(library), wanted(kCompositionType), referenced[kCompositionType]));
    doc.key("customProperties");
    doc.beginArray();
    for (const auto& p : chosen(allOf<CustomProperty>(library), wanted(kCustomProperty), referenced[kCustomProperty])) {
        doc.beginObject();
        doc.member("name", p->name());
        doc.member("appliesTo", scopeName(p->object_type()));
        doc.endObject();
    }
    doc.endArray();
    doc.key("materials");
    doc.beginArray();
    for (const auto& material : materials) {
        writeMaterial(doc, *material);
        advance();
    }
    doc.endArray();
    doc.key("compositions");
    doc.beginArray();
    for (const auto& composition : compositions) {
        writeComposition(doc, *composition);
        advance();
    }
    doc.endArray();
    writeNames(doc, "profileStandards",
               chosen(allOf<ProfileStandard>(library), wanted(kProfileStandard), referenced[kProfileStandard]));
    doc.key("profileNames");
    doc.beginArray();
    for (const auto& name : profileNames)
        writeProfileName(doc, *name);
    doc.endArray();
    doc.key("profiles");
    doc.beginArray();
    for (const auto& profile : profiles) {
        writeProfile(doc, *profile);
        advance();
    }
    doc.endArray();
    if (wanted(kPropertyNamespace))
        writePropertyNamespaces(doc, PropertySetStore(std::const_pointer_cast<Library>(library.store().selfConst())));
    doc.endObject();
    if (progress)
        progress(total, total);
    return doc.finish();
}

ImportReport writeExchangeDocument(const std::shared_ptr<Library>& library, ExchangeDocument& doc, ClashAnswer onClash,
                                   const ExchangeProgress& progress) {
    ImportReport report;
    for (ObjectType type : exchangedKinds())
        report.kinds.push_back({type, {}});
    report.documentUnit = doc.unit;
    report.libraryUnit = library->unit();
    if (doc.unit != library->unit() && doc.unit != OdDb::kUnitsUndefined && library->unit() != OdDb::kUnitsUndefined) {
        scaleLengths(doc, oddbGetUnitsConversion(doc.unit, library->unit()));
        report.converted = true;
    }

    LibraryStore& store = library->store();
    store.guardWrite([&] {
        Transaction transaction(library);
        DocumentWriter(store, doc, onClash, progress, report).write();
        if (doc.description && !doc.description->empty() && library->description().isEmpty())
            library->set_description(OdString::fromUtf8(*doc.description));
        transaction.commit();
    });
    return report;
}

ImportReport importLibrary(const std::shared_ptr<Library>& library, const std::string& document, ClashAnswer onClash,
                           const ExchangeProgress& progress) {
    if (!library)
        throw ConsistencyError(OdString(L"No library to import into"));
    ExchangeDocument doc;
    {
        // The parsed values go before anything is written: they take several times the
        // memory of the document.
        Json root = parseExchangeDocument(document);
        doc = DocumentReader(*library, root).read();
    }

    return writeExchangeDocument(library, doc, onClash, progress);
}

}  // namespace vantlib
