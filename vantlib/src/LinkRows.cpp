#include "LinkRows.h"

#include <map>

#include <vantlib/Composition.h>
#include <vantlib/Reactor.h>

#include "LibraryAccess.h"
#include "LibraryStore.h"

namespace vantlib {

namespace {

std::string andClause(const std::string& condition) { return condition.empty() ? condition : " AND " + condition; }
std::string whereClause(const std::string& condition) { return condition.empty() ? condition : " WHERE " + condition; }

// Walks link rows ordered by owner id alongside the owners sorted by id; returns the index of
// the owner of `ownerId`, or objects.size() when none of them is.
size_t ownerIndex(const std::vector<Object*>& objects, size_t& cursor, uint32_t ownerId) {
    while (cursor < objects.size() && objects[cursor]->id() < ownerId)
        ++cursor;
    if (cursor < objects.size() && objects[cursor]->id() == ownerId)
        return cursor;
    return objects.size();
}

// Steps through link rows ordered by owner id (column 0) and hands each row whose owner is
// among `objects` (sorted by id) to `attach` with that owner's index; resets the statement.
template <class Attach>
void forOwnedRows(Statement& rows, const std::vector<Object*>& objects, Attach attach) {
    size_t cursor = 0;
    while (rows.step()) {
        const size_t index = ownerIndex(objects, cursor, rows.id(0));
        if (cursor == objects.size())
            break;
        if (index != objects.size())
            attach(index);
    }
    rows.reset();
}

void readTags(const LibraryStore& store, ObjectType owner, const std::vector<Object*>& objects,
              const IdRestriction& restriction, std::vector<bool>&) {
    Statement& rows = store.statement(
        "SELECT ot.object_id, t.id, t.name FROM lib_object_tag ot JOIN lib_tag t ON t.id = ot.tag_id"
        " WHERE ot.object_type = ?1" + andClause(restriction.sql("ot.object_id", 2)) + " ORDER BY ot.object_id, ot.position");
    rows.bind(1, unsigned(owner));
    restriction.bind(rows, 2);
    forOwnedRows(rows, objects, [&](size_t index) {
        QcSmartPtr<Tag> tag = Tag::create(rows.text(2));
        LibraryAccess::bind(*tag, rows.id(1), store.weakSelf());
        LibraryAccess::tags(static_cast<AnnotatedObject&>(*objects[index])).push_back(tag);
    });
}

void writeTags(LibraryStore& store, ObjectType owner, uint32_t id, const Object&, const std::vector<uint32_t>& targets,
               bool replace) {
    if (replace)
        store.statement("DELETE FROM lib_object_tag WHERE object_type = ?1 AND object_id = ?2").bind(1, unsigned(owner)).bind(2, id).run();
    int position = 0;
    for (uint32_t tagId : targets)
        store.statement("INSERT INTO lib_object_tag(object_type, object_id, position, tag_id) VALUES (?1, ?2, ?3, ?4)")
            .bind(1, unsigned(owner)).bind(2, id).bind(3, position++).bind(4, tagId).run();
}

void readCustomValues(const LibraryStore& store, ObjectType owner, const std::vector<Object*>& objects,
                      const IdRestriction& restriction, std::vector<bool>& damaged) {
    Statement& rows = store.statement(
        "SELECT cv.object_id, p.id, p.name, p.object_type, cv.value FROM lib_custom_value cv"
        " JOIN lib_custom_property p ON p.id = cv.property_id WHERE cv.object_type = ?1" +
        andClause(restriction.sql("cv.object_id", 2)) + " ORDER BY cv.object_id, p.id");
    rows.bind(1, unsigned(owner));
    restriction.bind(rows, 2);
    forOwnedRows(rows, objects, [&](size_t index) {
        const int kind = rows.integer(3);
        if (!isCustomPropertyScope(kind)) {
            damaged[index] = true;
            return;
        }
        QcSmartPtr<CustomProperty> property = CustomProperty::create(rows.text(2), ObjectType(kind));
        LibraryAccess::bind(*property, rows.id(1), store.weakSelf());
        LibraryAccess::customValues(static_cast<AnnotatedObject&>(*objects[index])).push_back(CustomValue{property, rows.text(4)});
    });
}

void writeCustomValues(LibraryStore& store, ObjectType owner, uint32_t id, const Object& object,
                       const std::vector<uint32_t>& targets, bool replace) {
    if (replace)
        store.statement("DELETE FROM lib_custom_value WHERE object_type = ?1 AND object_id = ?2").bind(1, unsigned(owner)).bind(2, id).run();
    const CustomValues& values = static_cast<const AnnotatedObject&>(object).custom_values();
    for (size_t i = 0; i < values.size() && i < targets.size(); ++i)
        // INSERT OR REPLACE: two properties whose names differ only in case are the same one.
        store.statement("INSERT OR REPLACE INTO lib_custom_value(object_type, object_id, property_id, value) VALUES (?1, ?2, ?3, ?4)")
            .bind(1, unsigned(owner)).bind(2, id).bind(3, targets[i]).bind(4, values[i].value).run();
}

// Plies, then every material they use in one batch; plies of one result share the copy of a
// material they have in common. A composition whose variable ply it does not hold is damaged.
void readPlies(const LibraryStore& store, ObjectType, const std::vector<Object*>& objects,
               const IdRestriction& restriction, std::vector<bool>& damaged) {
    struct PlyRow {
        uint32_t composition, material;
        double thickness;
        int function;
    };
    std::vector<PlyRow> plyRows;
    std::set<unsigned> materialIds;
    Statement& plies = store.statement("SELECT composition_id, material_id, thickness, function FROM lib_ply" +
                                       whereClause(restriction.sql("composition_id", 1)) +
                                       " ORDER BY composition_id, position");
    restriction.bind(plies, 1);
    while (plies.step()) {
        plyRows.push_back(PlyRow{plies.id(0), plies.id(1), plies.real(2), plies.integer(3)});
        materialIds.insert(plies.id(1));
    }
    plies.reset();
    std::map<uint32_t, QcSmartPtr<Material>> materials;
    for (auto& material : store.loadByIds(kMaterial, materialIds))
        materials.emplace(material->id(), QcSmartPtr<Material>(static_cast<Material*>(material.get())));
    size_t cursor = 0;
    for (const PlyRow& row : plyRows) {
        size_t index = ownerIndex(objects, cursor, row.composition);
        if (cursor == objects.size())
            break;
        if (index == objects.size())
            continue;
        auto material = materials.find(row.material);
        if (material == materials.end() || row.function < int(kFunctionNone) || row.function > int(kFunctionMembrane)) {
            damaged[index] = true;
            continue;
        }
        LibraryAccess::plies(static_cast<Composition&>(*objects[index]))
            .push_back(Ply(material->second, row.thickness, MaterialFunction(row.function)));
    }
    for (size_t i = 0; i < objects.size(); ++i) {
        const Composition& c = static_cast<const Composition&>(*objects[i]);
        if (c.variable_ply() < -1 || c.variable_ply() >= int(c.numPlies()))
            damaged[i] = true;
    }
}

void writePlies(LibraryStore& store, ObjectType, uint32_t id, const Object& object, const std::vector<uint32_t>& targets,
                bool replace) {
    const Composition& composition = static_cast<const Composition&>(object);
    if (targets.size() != composition.numPlies())
        throw ConsistencyError(OdString(L"The materials of the plies are not resolved"));
    if (replace)
        store.statement("DELETE FROM lib_ply WHERE composition_id = ?1").bind(1, id).run();
    for (unsigned i = 0; i < composition.numPlies(); ++i) {
        const Ply& ply = composition.ply(i);
        store.statement("INSERT INTO lib_ply(composition_id, position, material_id, thickness, function) VALUES (?1, ?2, ?3, ?4, ?5)")
            .bind(1, id).bind(2, i).bind(3, targets[i]).bind(4, ply.thickness()).bind(5, unsigned(ply.function())).run();
    }
}

}  // namespace

const LinkRows kTagRows{readTags, writeTags};
const LinkRows kCustomValueRows{readCustomValues, writeCustomValues};
const LinkRows kPlyRows{readPlies, writePlies};

}  // namespace vantlib
