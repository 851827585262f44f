// Behaviour of the in-memory objects: tags, custom values, plies and the variable ply.
#include <algorithm>

#include <OdError.h>

#include <vantlib/Composition.h>
#include <vantlib/Criteria.h>
#include <vantlib/CustomProperty.h>
#include <vantlib/Exception.h>
#include <vantlib/IdMapping.h>
#include <vantlib/Library.h>
#include <vantlib/Material.h>

#include "LibraryStore.h"
#include "Text.h"

namespace vantlib {

void Object::save() {
    std::shared_ptr<Library> owner = library();
    if (!owner)
        throw ConsistencyError(OdString::formatted(L"'%ls' belongs to no library and cannot be saved", name().c_str()));
    bool skipped = false;
    LibraryStore& store = owner->store();
    QcSmartPtr<Object> stored = store.guardWrite([&] { return store.saveObject(*this, &skipped); });
    if (stored && !skipped) {
        m_id = stored->id();
        m_name = stored->name();
    }
}

// ---- AnnotatedObject

void AnnotatedObject::set_tags(const Tags& tags) {
    m_tags.clear();
    for (const auto& tag : tags)
        if (tag)
            add_tag(tag);
}

bool AnnotatedObject::add_tag(const OdString& name) { return add_tag(Tag::create(name)); }

bool AnnotatedObject::add_tag(const QcSmartPtr<Tag>& tag) {
    if (!tag || tag->name().isEmpty())
        throw ConsistencyError(OdString(L"A tag needs a name"));
    if (has_tag(tag->name()))
        return false;
    m_tags.push_back(tag);
    return true;
}

bool AnnotatedObject::remove_tag(const OdString& name) {
    auto it = std::find_if(m_tags.begin(), m_tags.end(), [&](const QcSmartPtr<Tag>& t) { return sameName(t->name(), name); });
    if (it == m_tags.end())
        return false;
    m_tags.erase(it);
    return true;
}

bool AnnotatedObject::has_tag(const OdString& name) const {
    return std::any_of(m_tags.begin(), m_tags.end(), [&](const QcSmartPtr<Tag>& t) { return sameName(t->name(), name); });
}

static CustomValues::const_iterator findValue(const CustomValues& values, const QcSmartPtr<CustomProperty>& property) {
    if (!property)
        return values.end();
    return std::find_if(values.begin(), values.end(),
                        [&](const CustomValue& v) { return sameName(v.property->name(), property->name()); });
}

bool AnnotatedObject::has_custom_value(const QcSmartPtr<CustomProperty>& property) const {
    return findValue(m_customValues, property) != m_customValues.end();
}

OdString AnnotatedObject::custom_value(const QcSmartPtr<CustomProperty>& property) const {
    auto it = findValue(m_customValues, property);
    return it == m_customValues.end() ? OdString() : it->value;
}

void AnnotatedObject::set_custom_value(const QcSmartPtr<CustomProperty>& property, const OdString& value) {
    if (!property || property->name().isEmpty())
        throw ConsistencyError(OdString(L"A custom value needs a named property"));
    if (!property->appliesTo(objectType()))
        throw ConsistencyError(OdString::formatted(L"Custom property '%ls' does not apply to this kind of object",
                                                   property->name().c_str()));
    auto it = findValue(m_customValues, property);
    if (it != m_customValues.end()) {
        m_customValues[size_t(it - m_customValues.begin())].value = value;
        return;
    }
    m_customValues.push_back(CustomValue{property, value});
}

bool AnnotatedObject::clear_custom_value(const QcSmartPtr<CustomProperty>& property) {
    auto it = findValue(m_customValues, property);
    if (it == m_customValues.end())
        return false;
    m_customValues.erase(it);
    return true;
}

// ---- CustomProperty

static void checkPropertyKind(ObjectType kind) {
    if (kind != kUnknownObject && kind != kMaterial && kind != kComposition)
        throw ConsistencyError(OdString::formatted(L"Custom properties apply to materials, compositions or any object, not to kind %u",
                                                   unsigned(kind)));
}

CustomProperty::CustomProperty(const OdString& name, ObjectType objectType)
    : Object(kCustomProperty, name), m_objectType(objectType) {
    checkPropertyKind(objectType);
}

QcSmartPtr<CustomProperty> CustomProperty::create(const OdString& name, ObjectType objectType) {
    return QcSmartPtr<CustomProperty>(new CustomProperty(name, objectType));
}

void CustomProperty::set_object_type(ObjectType objectType) {
    checkPropertyKind(objectType);
    m_objectType = objectType;
}

// ---- Material

Material::Material(const OdString& name) : AnnotatedObject(kMaterial, name) {}

QcSmartPtr<Material> Material::create(const OdString& name) { return QcSmartPtr<Material>(new Material(name)); }

BimAsset* Material::bim_asset(bool create) {
    if (!m_bim && create)
        m_bim.emplace();
    return m_bim ? &*m_bim : nullptr;
}

InformationAsset* Material::information_asset(bool create) {
    if (!m_info && create)
        m_info.emplace();
    return m_info ? &*m_info : nullptr;
}

PhysicalAsset* Material::physical_asset(bool create) {
    if (!m_physical && create)
        m_physical.emplace();
    return m_physical ? &*m_physical : nullptr;
}

// ---- Ply and Composition

Ply Ply::defaultPly(const QcSmartPtr<Material>& material) {
    if (!material)
        throw ConsistencyError(OdString(L"A ply needs a material"));
    const BimAsset* bim = material->bim_asset();
    return Ply(material, bim ? bim->default_thickness() : 0.0, bim ? bim->default_function() : kFunctionNone);
}

Composition::Composition(const OdString& name, Type baseType) : AnnotatedObject(kComposition, name), m_baseType(baseType) {}

QcSmartPtr<Composition> Composition::create(const OdString& name, Type baseType) {
    return QcSmartPtr<Composition>(new Composition(name, baseType));
}

const Ply& Composition::ply(unsigned index) const {
    if (index >= m_plies.size())
        throw OdError_InvalidIndex();
    return m_plies[index];
}

void Composition::set_ply(unsigned index, const Ply& ply) {
    if (index >= m_plies.size())
        throw OdError_InvalidIndex();
    m_plies[index] = ply;
}

void Composition::insert_ply(unsigned index, const Ply& ply) {
    if (index > m_plies.size())
        throw OdError_InvalidIndex();
    m_plies.insert(m_plies.begin() + index, ply);
    if (m_variablePly >= int(index))
        ++m_variablePly;
}

void Composition::remove_ply(unsigned index) {
    if (index >= m_plies.size())
        throw OdError_InvalidIndex();
    m_plies.erase(m_plies.begin() + index);
    if (m_variablePly == int(index))
        m_variablePly = -1;
    else if (m_variablePly > int(index))
        --m_variablePly;
}

void Composition::move_ply(unsigned from, unsigned to) {
    if (from >= m_plies.size() || to >= m_plies.size())
        throw OdError_InvalidIndex();
    if (from == to)
        return;
    Ply moved = m_plies[from];
    m_plies.erase(m_plies.begin() + from);
    m_plies.insert(m_plies.begin() + to, moved);
    int v = m_variablePly;
    if (v == int(from))
        m_variablePly = int(to);
    else if (from < to && v > int(from) && v <= int(to))
        --m_variablePly;
    else if (to < from && v >= int(to) && v < int(from))
        ++m_variablePly;
}

void Composition::set_variable_ply(int index) {
    if (index < -1 || index >= int(m_plies.size()))
        throw OdError_InvalidIndex();
    m_variablePly = index;
}

double Composition::thickness() const {
    double total = 0.0;
    for (const Ply& p : m_plies)
        total += p.thickness();
    return total;
}

// ---- Criteria and mapping

bool StringCriteria::matches(const OdString& candidate) const {
    switch (m_mode) {
    case kAny: return true;
    case kEquals: return sameName(candidate, m_text);
    case kContains: return foldCase(candidate).find(foldCase(m_text)) != std::wstring::npos;
    case kSize: return sizeKey(candidate) == sizeKey(m_text);
    }
    return false;
}

unsigned IdMapping::copiedCount() const {
    unsigned n = 0;
    for (const auto& entry : m_map)
        if (entry.second.state != kNotCopied)
            ++n;
    return n;
}

}  // namespace vantlib
