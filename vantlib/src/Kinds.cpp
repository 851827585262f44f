// The stored kinds. Each block below is the whole description of one kind; the SQL the
// storage code runs for it is derived from the description once, when the registry is built.
#include "Kinds.h"

#include <algorithm>
#include <map>

#include <vantlib/Composition.h>
#include <vantlib/Exception.h>
#include <vantlib/Material.h>
#include <vantlib/Profile.h>

#include "LinkRows.h"
#include "ProfileRows.h"
#include "Rows.h"

namespace vantlib {

std::string IdRestriction::sql(const std::string& column, int parameter) const {
    std::string p = "?" + std::to_string(parameter);
    if (singleId)
        return column + " = " + p;
    if (idsJson)
        return column + " IN (SELECT value FROM json_each(" + p + "))";
    return std::string();
}

void IdRestriction::bind(Statement& stmt, int parameter) const {
    if (singleId)
        stmt.bind(parameter, singleId);
    else if (idsJson)
        stmt.bind(parameter, *idsJson);
}

const KindReference& KindDescription::referenceTo(ObjectType target) const {
    for (const KindReference& reference : references)
        if (reference.target == target)
            return reference;
    throw ConsistencyError(OdString::formatted(L"Objects of kind %u do not refer to kind %u", unsigned(type), unsigned(target)));
}

namespace {

template <class T>
QcSmartPtr<Object> createEmpty() {
    return QcSmartPtr<Object>(new T());
}

void addIfPresent(const Object* object, std::vector<const Object*>& targets) {
    if (object)
        targets.push_back(object);
}

// ---- Name-only kinds: a name (and for custom properties the kind they apply to).

bool readName(const Statement& row, Object& object) {
    object.set_name(row.text(1));
    return true;
}

void bindName(Statement& stmt, const Object& object) { stmt.bind(1, object.name()); }

KindDescription nameOnlyKind(ObjectType type, const char* table, QcSmartPtr<Object> (*create)(), bool purgeable) {
    KindDescription kind;
    kind.type = type;
    kind.table = table;
    kind.alias = "n";
    kind.columns = {"name"};
    kind.create = create;
    kind.read = readName;
    kind.bind = bindName;
    kind.nameOnly = true;
    kind.purgeable = purgeable;
    return kind;
}

KindDescription customPropertyKind() {
    KindDescription kind = nameOnlyKind(kCustomProperty, "lib_custom_property", createEmpty<CustomProperty>, false);
    kind.columns = {"name", "object_type"};
    kind.read = [](const Statement& row, Object& object) {
        int appliesTo = row.integer(2);
        if (!isCustomPropertyScope(appliesTo))
            return false;
        object.set_name(row.text(1));
        static_cast<CustomProperty&>(object).set_object_type(ObjectType(appliesTo));
        return true;
    };
    kind.bind = [](Statement& stmt, const Object& object) {
        stmt.bind(1, object.name()).bind(2, unsigned(static_cast<const CustomProperty&>(object).object_type()));
    };
    return kind;
}

// ---- References shared by the annotated kinds.

void addAnnotations(KindDescription& kind) {
    KindReference tags;
    tags.target = kTag;
    tags.table = "lib_object_tag";
    tags.column = "tag_id";
    tags.collect = [](const Object& owner, std::vector<const Object*>& targets) {
        for (const auto& tag : static_cast<const AnnotatedObject&>(owner).tags())
            targets.push_back(tag.get());
    };
    tags.links = &kTagRows;
    kind.references.push_back(tags);

    KindReference values;
    values.target = kCustomProperty;
    values.table = "lib_custom_value";
    values.column = "property_id";
    values.collect = [](const Object& owner, std::vector<const Object*>& targets) {
        for (const auto& value : static_cast<const AnnotatedObject&>(owner).custom_values())
            targets.push_back(value.property.get());
    };
    values.links = &kCustomValueRows;
    kind.references.push_back(values);
}

KindReference columnReference(ObjectType target, const char* table, const char* column, const char* joinAlias,
                              void (*collect)(const Object&, std::vector<const Object*>&),
                              void (*set)(Object&, const QcSmartPtr<Object>&)) {
    KindReference reference;
    reference.target = target;
    reference.table = table;
    reference.column = column;
    reference.joinAlias = joinAlias;
    reference.collect = collect;
    reference.set = set;
    return reference;
}

template <class T>
QcSmartPtr<T> as(const QcSmartPtr<Object>& object) {
    return QcSmartPtr<T>(static_cast<T*>(object.get()));
}

const Material& material(const Object& object) { return static_cast<const Material&>(object); }
const Composition& composition(const Object& object) { return static_cast<const Composition&>(object); }

KindDescription materialKind() {
    KindDescription kind;
    kind.type = kMaterial;
    kind.table = "lib_material";
    kind.alias = "m";
    kind.columns = materialColumns();
    kind.create = createEmpty<Material>;
    kind.read = readMaterialRow;
    kind.bind = bindMaterialRow;
    // The section hatch: its kind (none when it draws nothing: no pattern, or a catalogue kind
    // without a name), name (letter case ignored, as the catalogues do), scale, spacing, angle
    // and crossing.
    kind.depiction = {"CASE WHEN m.sect_type = 1 OR (m.sect_type IN (2, 3) AND m.sect_name <> '') THEN m.sect_type END",
                      "lower(m.sect_name)", "m.sect_scale", "m.sect_space", "m.sect_angle", "m.sect_cross"};
    kind.references.push_back(columnReference(
        kMaterialType, "lib_material", "class_id", "c",
        [](const Object& owner, std::vector<const Object*>& targets) { addIfPresent(material(owner).material_type().get(), targets); },
        [](Object& owner, const QcSmartPtr<Object>& target) { static_cast<Material&>(owner).set_type(as<MaterialType>(target)); }));
    kind.references.push_back(columnReference(
        kLayer, "lib_material", "sect_layer_id", "sl",
        [](const Object& owner, std::vector<const Object*>& targets) {
            if (const BimAsset* bim = material(owner).bim_asset())
                addIfPresent(bim->layer().get(), targets);
        },
        [](Object& owner, const QcSmartPtr<Object>& target) {
            if (BimAsset* bim = static_cast<Material&>(owner).bim_asset())
                bim->set_layer(as<Layer>(target));
        }));
    kind.references.push_back(columnReference(
        kLayer, "lib_material", "elev_layer_id", "el",
        [](const Object& owner, std::vector<const Object*>& targets) {
            if (const BimAsset* bim = material(owner).bim_asset())
                addIfPresent(bim->layer_elevation().get(), targets);
        },
        [](Object& owner, const QcSmartPtr<Object>& target) {
            if (BimAsset* bim = static_cast<Material&>(owner).bim_asset())
                bim->set_layer_elevation(as<Layer>(target));
        }));
    addAnnotations(kind);
    return kind;
}

KindDescription compositionKind() {
    KindDescription kind;
    kind.type = kComposition;
    kind.table = "lib_composition";
    kind.alias = "k";
    kind.columns = compositionColumns();
    kind.create = createEmpty<Composition>;
    kind.read = readCompositionRow;
    kind.bind = bindCompositionRow;
    // The plies from the outside in, each by its thickness and its material's section hatch,
    // and the variable ply.
    kind.depiction = {
        "(SELECT group_concat(ply, ';') FROM (SELECT p.thickness || ':' || pm.sect_type || ':' || lower(pm.sect_name)"
        " || ':' || pm.sect_scale || ':' || pm.sect_space || ':' || pm.sect_angle || ':' || pm.sect_cross AS ply"
        " FROM lib_ply p JOIN lib_material pm ON pm.id = p.material_id WHERE p.composition_id = k.id"
        " ORDER BY p.position))",
        "k.variable_ply"};
    // Plies first: a copy brings the materials before the names they use.
    KindReference plies;
    plies.target = kMaterial;
    plies.table = "lib_ply";
    plies.column = "material_id";
    plies.collect = [](const Object& owner, std::vector<const Object*>& targets) {
        const Composition& c = composition(owner);
        for (const Ply& ply : c.plies()) {
            if (!ply.material())
                throw ConsistencyError(OdString::formatted(L"A ply of '%ls' has no material", c.name().c_str()));
            targets.push_back(ply.material().get());
        }
    };
    plies.links = &kPlyRows;
    kind.references.push_back(plies);
    kind.references.push_back(columnReference(
        kCompositionType, "lib_composition", "type_id", "ct",
        [](const Object& owner, std::vector<const Object*>& targets) { addIfPresent(composition(owner).composition_type().get(), targets); },
        [](Object& owner, const QcSmartPtr<Object>& target) { static_cast<Composition&>(owner).set_type(as<CompositionType>(target)); }));
    kind.references.push_back(columnReference(
        kLayer, "lib_composition", "layer_id", "ly",
        [](const Object& owner, std::vector<const Object*>& targets) { addIfPresent(composition(owner).layer().get(), targets); },
        [](Object& owner, const QcSmartPtr<Object>& target) { static_cast<Composition&>(owner).set_layer(as<Layer>(target)); }));
    addAnnotations(kind);
    return kind;
}

// ---- Profiles: standards (shared by name), profile names, and one table of profiles of every
// shape, read as the kind of all profiles or as the kind of one shape.

KindDescription profileNameKind() {
    KindDescription kind;
    kind.type = kProfileName;
    kind.table = "lib_profile_name";
    kind.alias = "pn";
    kind.columns = profileNameColumns();
    kind.create = createEmpty<ProfileName>;
    kind.read = readProfileNameRow;
    kind.bind = bindProfileNameRow;
    kind.nameScope = {"standard_id"};
    kind.reusedByCopies = true;
    kind.references.push_back(columnReference(
        kProfileStandard, "lib_profile_name", "standard_id", "ps",
        [](const Object& owner, std::vector<const Object*>& targets) {
            addIfPresent(static_cast<const ProfileName&>(owner).standard().get(), targets);
        },
        [](Object& owner, const QcSmartPtr<Object>& target) {
            static_cast<ProfileName&>(owner).set_standard(as<ProfileStandard>(target));
        }));
    return kind;
}

const Profile& profile(const Object& object) { return static_cast<const Profile&>(object); }

KindDescription profileKind(ObjectType type) {
    KindDescription kind;
    kind.type = type;
    kind.family = kConstructionProfile;
    kind.table = "lib_profile";
    kind.alias = "p";
    kind.nameColumn = "size";
    kind.columns = profileColumns();
    kind.createFromRow = createProfileFromRow;
    kind.read = readProfileRow;
    kind.bind = bindProfileRow;
    if (type != kConstructionProfile)
        kind.rowCondition = "p.object_type = " + std::to_string(unsigned(type));
    kind.nameScope = {"name_id"};
    kind.allowEmptyName = true;
    KindReference name = columnReference(
        kProfileName, "lib_profile", "name_id", "pn",
        [](const Object& owner, std::vector<const Object*>& targets) { addIfPresent(profile(owner).name().get(), targets); },
        [](Object& owner, const QcSmartPtr<Object>& target) { static_cast<Profile&>(owner).set_name(as<ProfileName>(target)); });
    name.loadTarget = true;
    kind.references.push_back(name);
    kind.references.push_back(columnReference(
        kMaterial, "lib_profile", "material_id", "pm",
        [](const Object& owner, std::vector<const Object*>& targets) { addIfPresent(profile(owner).material().get(), targets); },
        [](Object& owner, const QcSmartPtr<Object>& target) { static_cast<Profile&>(owner).set_material(as<Material>(target)); }));
    return kind;
}

// ---- Derived SQL

std::string joined(const std::vector<std::string>& parts, const char* separator) {
    std::string text;
    for (const std::string& part : parts) {
        if (!text.empty())
            text += separator;
        text += part;
    }
    return text;
}

void derive(KindDescription& kind, const std::map<ObjectType, KindDescription>& all) {
    const std::string& a = kind.alias;
    if (kind.family == kUnknownObject)
        kind.family = kind.type;
    std::vector<std::string> selected{a + ".id"}, parameters, assignments, joins;
    for (size_t i = 0; i < kind.columns.size(); ++i) {
        selected.push_back(a + "." + kind.columns[i]);
        parameters.push_back("?" + std::to_string(i + 1));
        assignments.push_back(kind.columns[i] + " = ?" + std::to_string(i + 1));
    }
    for (KindReference& reference : kind.references) {
        reference.targetNameOnly = all.at(reference.target).nameOnly;
        int parameter = 0;
        if (reference.isColumn()) {
            for (size_t i = 0; i < kind.columns.size(); ++i)
                if (kind.columns[i] == reference.column)
                    parameter = int(i + 1);
            if (parameter == 0 || reference.table != kind.table)
                throw ConsistencyError(OdString(L"A column reference must name a column of its kind"));
            const KindDescription& target = all.at(reference.target);
            selected.push_back(reference.joinAlias + "." + target.nameColumn);
            joins.push_back(" LEFT JOIN " + target.table + " " + reference.joinAlias + " ON " + reference.joinAlias +
                            ".id = " + a + "." + reference.column);
        } else {
            kind.hasLinks = true;
        }
        kind.referenceParameter.push_back(parameter);
    }
    std::string from = " FROM " + kind.table + " " + a;
    for (const std::string& join : joins)
        from += join;
    kind.select = "SELECT " + joined(selected, ", ") + from;
    std::vector<std::string> listed{a + ".id", a + "." + kind.nameColumn};
    listed.insert(listed.end(), kind.depiction.begin(), kind.depiction.end());
    kind.listSelect = "SELECT " + joined(listed, ", ") + from;
    kind.insert = "INSERT INTO " + kind.table + "(" + joined(kind.columns, ", ") + ") VALUES (" + joined(parameters, ", ") + ")";
    kind.update = "UPDATE " + kind.table + " SET " + joined(assignments, ", ") + " WHERE id = ?" +
                  std::to_string(kind.columns.size() + 1);
    kind.remove = "DELETE FROM " + kind.table + " WHERE id = ?1";
    kind.findByName = "SELECT id FROM " + kind.table + " WHERE " + kind.nameColumn + " = ?1 AND id <> ?2";
    std::string scoped;
    for (size_t s = 0; s < kind.nameScope.size(); ++s) {
        size_t r = 0;
        while (r < kind.references.size() &&
               !(kind.references[r].isColumn() && kind.references[r].column == kind.nameScope[s]))
            ++r;
        if (r == kind.references.size())
            throw ConsistencyError(OdString(L"A name scope must name a column reference of its kind"));
        kind.scopeReferences.push_back(r);
        scoped += " AND " + kind.nameScope[s] + " IS ?" + std::to_string(s + 3);
    }
    if (!kind.nameScope.empty())
        kind.findScoped = "SELECT id FROM " + kind.table + " WHERE " + kind.nameColumn + " = ?1 AND id <> ?2" + scoped;
    const std::string own = kind.rowCondition.empty() ? std::string() : " AND " + kind.rowCondition;
    kind.exists = "SELECT 1 FROM " + kind.table + " " + a + " WHERE " + a + ".id = ?1" + own;
    kind.countAll = "SELECT count(*) FROM " + kind.table + " " + a + kind.where();

    // Every place any kind keeps a reference to this one, each once.
    std::vector<std::pair<std::string, std::string>> places;
    for (const auto& entry : all)
        for (const KindReference& reference : entry.second.references) {
            std::pair<std::string, std::string> place(reference.table, reference.column);
            if (reference.target == kind.type && std::find(places.begin(), places.end(), place) == places.end())
                places.push_back(place);
        }
    std::vector<std::string> exists, used;
    for (const auto& place : places) {
        exists.push_back("EXISTS (SELECT 1 FROM " + place.first + " WHERE " + place.second + " = ?1)");
        used.push_back("SELECT " + place.second + " FROM " + place.first + " WHERE " + place.second + " IS NOT NULL");
    }
    if (!places.empty())
        kind.inUse = "SELECT 1 WHERE " + joined(exists, " OR ");
    kind.unused = "SELECT " + a + ".id FROM " + kind.table + " " + a + kind.where();
    if (!places.empty())
        kind.unused += std::string(kind.rowCondition.empty() ? " WHERE " : " AND ") + a + ".id NOT IN (" +
                       joined(used, " UNION ") + ")";
}

struct Registry {
    std::map<ObjectType, KindDescription> kinds;
    std::vector<const KindDescription*> ordered;
    // Indexed by type, for the lookups on every read and write.
    std::vector<const KindDescription*> byType;

    Registry() {
        for (KindDescription kind : {nameOnlyKind(kTag, "lib_tag", createEmpty<Tag>, true),
                                     nameOnlyKind(kLayer, "lib_layer", createEmpty<Layer>, true),
                                     nameOnlyKind(kMaterialType, "lib_material_type", createEmpty<MaterialType>, false),
                                     nameOnlyKind(kCompositionType, "lib_composition_type", createEmpty<CompositionType>, false),
                                     customPropertyKind(), materialKind(), compositionKind(),
                                     nameOnlyKind(kProfileStandard, "lib_profile_standard", createEmpty<ProfileStandard>, false),
                                     profileNameKind(), profileKind(kConstructionProfile)})
            kinds.emplace(kind.type, kind);
        for (const ProfileClass* shape : ProfileClass::all())
            kinds.emplace(shape->type(), profileKind(shape->type()));
        byType.resize(kinds.rbegin()->first + 1, nullptr);
        for (auto& entry : kinds) {
            derive(entry.second, kinds);
            ordered.push_back(&entry.second);
            byType[entry.first] = &entry.second;
        }
    }
};

const Registry& registry() {
    static const Registry instance;
    return instance;
}

}  // namespace

const KindDescription* findKind(ObjectType type) {
    const auto& byType = registry().byType;
    return type < byType.size() ? byType[type] : nullptr;
}

const KindDescription& describeKind(ObjectType type) {
    if (const KindDescription* kind = findKind(type))
        return *kind;
    throw ConsistencyError(OdString::formatted(L"Objects of kind %u are not stored in libraries", unsigned(type)));
}

const std::vector<const KindDescription*>& storedKinds() { return registry().ordered; }

bool isCustomPropertyScope(int type) {
    if (type == kUnknownObject)
        return true;
    const KindDescription* kind = type > 0 ? findKind(ObjectType(type)) : nullptr;
    return kind && std::any_of(kind->references.begin(), kind->references.end(),
                               [](const KindReference& reference) { return reference.target == kCustomProperty; });
}

}  // namespace vantlib
