#include "Kinds.h"

#include <algorithm>
#include <cctype>

#include <vantlib/vantlib.h>

#include "Arguments.h"

namespace vlib {

namespace {

template <class T>
unsigned countOf(const vantlib::Library& library) {
    return library.count<T>();
}

template <class T>
std::vector<OdString> namesOf(const std::vector<QcSmartPtr<T>>& objects) {
    std::vector<OdString> names;
    names.reserve(objects.size());
    for (const auto& object : objects)
        names.push_back(object->name());
    std::sort(names.begin(), names.end(), [](const OdString& a, const OdString& b) { return a.iCompare(b) < 0; });
    return names;
}

template <class T>
std::vector<OdString> allNames(const vantlib::Library& library, const ListFilter&) {
    std::vector<QcSmartPtr<T>> objects;
    library.get(objects, vantlib::NameCriteria());
    return namesOf(objects);
}

std::vector<OdString> materialNames(const vantlib::Library& library, const ListFilter& filter) {
    vantlib::MaterialCriteria criteria;
    if (!filter.className.empty())
        criteria.materialClass.equals(toOd(filter.className));
    for (const auto& tag : filter.tags)
        criteria.tags.push_back(toOd(tag));
    std::vector<QcSmartPtr<vantlib::Material>> materials;
    library.get(materials, criteria);
    return namesOf(materials);
}

std::vector<OdString> compositionNames(const vantlib::Library& library, const ListFilter& filter) {
    vantlib::CompositionCriteria criteria;
    if (!filter.className.empty())
        criteria.compositionType = vantlib::CompositionType::create(toOd(filter.className));
    for (const auto& tag : filter.tags)
        criteria.tags.push_back(toOd(tag));
    std::vector<QcSmartPtr<vantlib::Composition>> compositions;
    library.get(compositions, criteria);
    return namesOf(compositions);
}

template <class T>
uint32_t idByName(const vantlib::Library& library, const OdString& name) {
    const QcSmartPtr<T> object = library.get<T>(vantlib::NameKey(name));
    return object ? object->id() : 0;
}

template <class T>
OdString nameById(const vantlib::Library& library, uint32_t id) {
    const QcSmartPtr<T> object = library.get<T>(id);
    return object ? object->name() : OdString();
}

template <class T>
Kind kindOf(const char* word, const char* plural, bool filterable,
            std::vector<OdString> (*names)(const vantlib::Library&, const ListFilter&) = allNames<T>) {
    return Kind{word, plural, T::kType, filterable, countOf<T>, names, idByName<T>, nameById<T>};
}

std::string lowered(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return char(std::tolower(c)); });
    return text;
}

}  // namespace

const std::vector<Kind>& kinds() {
    static const std::vector<Kind> all{
        kindOf<vantlib::Material>("material", "materials", true, materialNames),
        kindOf<vantlib::Composition>("composition", "compositions", true, compositionNames),
        kindOf<vantlib::MaterialType>("material-class", "material-classes", false),
        kindOf<vantlib::CompositionType>("composition-class", "composition-classes", false),
        kindOf<vantlib::Tag>("tag", "tags", false),
        kindOf<vantlib::Layer>("layer", "layers", false),
        kindOf<vantlib::CustomProperty>("custom-property", "custom-properties", false),
    };
    return all;
}

const Kind& kindFromWord(const std::string& word) {
    const std::string wanted = lowered(word);
    for (const Kind& kind : kinds())
        if (wanted == kind.word || wanted == kind.plural)
            return kind;
    std::string known;
    for (const Kind& kind : kinds())
        known += (known.empty() ? "" : ", ") + std::string(kind.word);
    throw UsageError("unknown kind '" + word + "' (one of: " + known + ")");
}

bool isProfileWord(const std::string& word) {
    const std::string wanted = lowered(word);
    return wanted == "profile" || wanted == "profiles";
}

const Kind* findKind(vantlib::ObjectType type) {
    for (const Kind& kind : kinds())
        if (kind.type == type)
            return &kind;
    return nullptr;
}

OdString toOd(const std::string& utf8) {
    return OdString::fromUtf8(utf8);
}

std::string toUtf8(const OdString& text) {
    return text.toUtf8();
}

}  // namespace vlib
