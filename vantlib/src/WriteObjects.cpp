// Storing and removing objects: name clashes, references resolved by name, dependent rows.
#include <vantlib/Exception.h>

#include "LibraryAccess.h"
#include "LibraryStore.h"
#include "Rows.h"
#include "Schema.h"
#include "Text.h"

namespace vantlib {

namespace {

bool isStoredKind(ObjectType type) { return tableOf(type) != nullptr; }

void writeTags(LibraryStore& store, ObjectType type, uint32_t id, const Tags& tags, bool replace) {
    if (replace)
        store.statement("DELETE FROM lib_object_tag WHERE object_type = ?1 AND object_id = ?2").bind(1, unsigned(type)).bind(2, id).run();
    int position = 0;
    for (const auto& tag : tags) {
        uint32_t tagId = store.resolveNamed(kTag, tag->name());
        store.statement("INSERT INTO lib_object_tag(object_type, object_id, position, tag_id) VALUES (?1, ?2, ?3, ?4)")
            .bind(1, unsigned(type)).bind(2, id).bind(3, position++).bind(4, tagId).run();
    }
}

void writeCustomValues(LibraryStore& store, ObjectType type, uint32_t id, const CustomValues& values, bool replace) {
    if (replace)
        store.statement("DELETE FROM lib_custom_value WHERE object_type = ?1 AND object_id = ?2").bind(1, unsigned(type)).bind(2, id).run();
    for (const auto& value : values) {
        uint32_t propertyId = store.resolveNamed(kCustomProperty, value.property->name(), nullptr, value.property->object_type());
        // INSERT OR REPLACE: two properties whose names differ only in case are the same one.
        store.statement("INSERT OR REPLACE INTO lib_custom_value(object_type, object_id, property_id, value) VALUES (?1, ?2, ?3, ?4)")
            .bind(1, unsigned(type)).bind(2, id).bind(3, propertyId).bind(4, value.value).run();
    }
}

uint32_t refId(LibraryStore& store, ObjectType type, const Object* object) {
    return object && !object->name().isEmpty() ? store.resolveNamed(type, object->name()) : 0;
}

}  // namespace

uint32_t LibraryStore::writeObject(const Object& object, uint32_t targetId, const std::vector<uint32_t>* plyMaterialIds) {
    requireWritable();
    ObjectType type = object.objectType();
    if (object.name().isEmpty())
        throw ConsistencyError(OdString(L"An object needs a name to be stored"));
    bool replace = targetId != 0;
    uint32_t id = targetId;
    switch (type) {
    case kTag:
    case kLayer:
    case kMaterialType:
    case kCompositionType:
    case kCustomProperty: {
        std::string table = tableOf(type);
        if (type == kCustomProperty) {
            unsigned kind = unsigned(static_cast<const CustomProperty&>(object).object_type());
            if (replace)
                statement("UPDATE lib_custom_property SET name = ?1, object_type = ?2 WHERE id = ?3").bind(1, object.name()).bind(2, kind).bind(3, id).run();
            else
                statement("INSERT INTO lib_custom_property(name, object_type) VALUES (?1, ?2)").bind(1, object.name()).bind(2, kind).run();
        } else if (replace) {
            statement("UPDATE " + table + " SET name = ?1 WHERE id = ?2").bind(1, object.name()).bind(2, id).run();
        } else {
            statement("INSERT INTO " + table + "(name) VALUES (?1)").bind(1, object.name()).run();
        }
        // The small-kind name cache may hold the old name.
        if (replace)
            for (auto it = m_nameCache[type].begin(); it != m_nameCache[type].end(); ++it) {
                if (it->second == id) {
                    m_nameCache[type].erase(it);
                    break;
                }
            }
        break;
    }
    case kMaterial: {
        const Material& material = static_cast<const Material&>(object);
        MaterialRefs refs;
        refs.classId = refId(*this, kMaterialType, material.material_type().get());
        if (const BimAsset* bim = material.bim_asset()) {
            refs.sectionLayerId = refId(*this, kLayer, bim->layer().get());
            refs.elevationLayerId = refId(*this, kLayer, bim->layer_elevation().get());
        }
        Statement& stmt = statement(replace ? kMaterialUpdate : kMaterialInsert);
        bindMaterialRow(stmt, material, refs);
        if (replace)
            stmt.bind(kMaterialColumns + 1, id);
        stmt.run();
        break;
    }
    case kComposition: {
        const Composition& composition = static_cast<const Composition&>(object);
        if (!plyMaterialIds || plyMaterialIds->size() != composition.numPlies())
            throw ConsistencyError(OdString(L"The materials of the plies are not resolved"));
        CompositionRefs refs;
        refs.typeId = refId(*this, kCompositionType, composition.composition_type().get());
        refs.layerId = refId(*this, kLayer, composition.layer().get());
        Statement& stmt = statement(replace ? kCompositionUpdate : kCompositionInsert);
        bindCompositionRow(stmt, composition, refs);
        if (replace)
            stmt.bind(kCompositionColumns + 1, id);
        stmt.run();
        break;
    }
    default:
        throw ConsistencyError(OdString::formatted(L"Objects of kind %u are not stored in libraries", unsigned(type)));
    }
    if (!replace)
        id = uint32_t(sqlite3_last_insert_rowid(db()));

    if (type == kMaterial || type == kComposition) {
        const AnnotatedObject& annotated = static_cast<const AnnotatedObject&>(object);
        writeTags(*this, type, id, annotated.tags(), replace);
        writeCustomValues(*this, type, id, annotated.custom_values(), replace);
    }
    if (type == kComposition) {
        const Composition& composition = static_cast<const Composition&>(object);
        if (replace)
            statement("DELETE FROM lib_ply WHERE composition_id = ?1").bind(1, id).run();
        for (unsigned i = 0; i < composition.numPlies(); ++i) {
            const Ply& ply = composition.ply(i);
            statement("INSERT INTO lib_ply(composition_id, position, material_id, thickness, function) VALUES (?1, ?2, ?3, ?4, ?5)")
                .bind(1, id).bind(2, i).bind(3, (*plyMaterialIds)[i]).bind(4, ply.thickness()).bind(5, unsigned(ply.function())).run();
        }
    }
    notifySaved(ObjectKey(type, id), !replace);
    return id;
}

QcSmartPtr<Object> LibraryStore::saveObject(const Object& object, bool* skipped) {
    if (skipped)
        *skipped = false;
    requireWritable();
    ObjectType type = object.objectType();
    if (!isStoredKind(type))
        throw ConsistencyError(OdString::formatted(L"Objects of kind %u are not stored in libraries", unsigned(type)));
    if (object.name().isEmpty())
        throw ConsistencyError(OdString(L"An object needs a name to be stored"));

    WriteScope scope(*this);
    uint32_t targetId = 0;
    if (object.id() != 0 && LibraryAccess::belongsTo(object, m_owner)) {
        if (!exists(type, object.id()))
            throw ConsistencyError(OdString::formatted(L"'%ls' was removed from the library", object.name().c_str()));
        targetId = object.id();
    }
    // The clash question may rename the object: work on a copy so the caller's stays as given.
    QcSmartPtr<Object> work = LibraryAccess::exactCopy(object);
    if (uint32_t clash = findId(type, work->name(), targetId)) {
        Library::Reactor* r = reactor();
        if (!r)
            throw ObjectNotUnique(type, work->name());
        Library::Reactor::ObjectInfo info(work, selfConst());
        SaveResolution resolution = r->onObjectNotUnique(info);
        if (resolution == kSaveOverwrite) {
            targetId = clash;
        } else if (resolution == kSaveRename) {
            if (findId(type, work->name(), targetId))
                r->onObjectNotUniqueRename(info);
            if (work->name().isEmpty() || findId(type, work->name(), targetId)) {
                r->onObjectNotUniqueFail(info);
                throw ObjectNotUnique(type, object.name());
            }
        } else {
            scope.commit();
            if (skipped)
                *skipped = true;
            return loadById(type, clash);
        }
    }

    std::vector<uint32_t> plyMaterialIds;
    if (type == kComposition) {
        const Composition& composition = static_cast<const Composition&>(*work);
        for (const Ply& ply : composition.plies()) {
            const QcSmartPtr<Material>& material = ply.material();
            if (!material)
                throw ConsistencyError(OdString::formatted(L"A ply of '%ls' has no material", composition.name().c_str()));
            uint32_t materialId = 0;
            if (material->id() != 0 && LibraryAccess::belongsTo(*material, m_owner))
                materialId = material->id();
            else
                materialId = findId(kMaterial, material->name());
            if (materialId == 0 || !exists(kMaterial, materialId))
                throw ConsistencyError(OdString::formatted(L"Material '%ls' of composition '%ls' is not in the library",
                                                           material->name().c_str(), composition.name().c_str()));
            plyMaterialIds.push_back(materialId);
        }
    }
    uint32_t id = writeObject(*work, targetId, &plyMaterialIds);
    scope.commit();
    LibraryAccess::bind(*work, id, m_self);
    return work;
}

bool LibraryStore::isReferenced(ObjectType type, uint32_t id) const {
    const char* sql = nullptr;
    switch (type) {
    case kMaterial: sql = "SELECT 1 FROM lib_ply WHERE material_id = ?1 LIMIT 1"; break;
    case kTag: sql = "SELECT 1 FROM lib_object_tag WHERE tag_id = ?1 LIMIT 1"; break;
    case kLayer:
        sql = "SELECT 1 WHERE EXISTS (SELECT 1 FROM lib_material WHERE sect_layer_id = ?1)"
              " OR EXISTS (SELECT 1 FROM lib_material WHERE elev_layer_id = ?1)"
              " OR EXISTS (SELECT 1 FROM lib_composition WHERE layer_id = ?1)";
        break;
    case kMaterialType: sql = "SELECT 1 FROM lib_material WHERE class_id = ?1 LIMIT 1"; break;
    case kCompositionType: sql = "SELECT 1 FROM lib_composition WHERE type_id = ?1 LIMIT 1"; break;
    case kCustomProperty: sql = "SELECT 1 FROM lib_custom_value WHERE property_id = ?1 LIMIT 1"; break;
    default: return false;
    }
    Statement& stmt = statement(sql);
    bool used = stmt.bind(1, id).step();
    stmt.reset();
    return used;
}

Library::RemoveResult LibraryStore::removeObject(ObjectType type, uint32_t id) {
    requireWritable();
    if (!isStoredKind(type))
        throw ConsistencyError(OdString::formatted(L"Objects of kind %u are not stored in libraries", unsigned(type)));
    WriteScope scope(*this);
    if (!exists(type, id)) {
        scope.commit();
        return Library::kNotFound;
    }
    if (isReferenced(type, id)) {
        scope.commit();
        return Library::kReferenced;
    }
    ObjectKey key(type, id);
    Library::Reactor* r = reactor();
    if (r && r->onRemove(selfConst(), key) == kRemoveVeto) {
        scope.commit();
        return Library::kVetoed;
    }
    statement(std::string("DELETE FROM ") + tableOf(type) + " WHERE id = ?1").bind(1, id).run();
    if (type < 8)
        m_nameCache[type].clear();
    scope.commit();
    if (r)
        r->onRemoved(selfConst(), key);
    return Library::kRemoved;
}

unsigned LibraryStore::purge(ObjectType type) {
    const char* unused = nullptr;
    switch (type) {
    case kTag: unused = "SELECT id FROM lib_tag WHERE id NOT IN (SELECT tag_id FROM lib_object_tag)"; break;
    case kLayer:
        unused = "SELECT id FROM lib_layer WHERE id NOT IN (SELECT sect_layer_id FROM lib_material WHERE sect_layer_id IS NOT NULL"
                 " UNION SELECT elev_layer_id FROM lib_material WHERE elev_layer_id IS NOT NULL"
                 " UNION SELECT layer_id FROM lib_composition WHERE layer_id IS NOT NULL)";
        break;
    default:
        throw ConsistencyError(OdString::formatted(L"Objects of kind %u are not purged", unsigned(type)));
    }
    if (m_readOnly)
        return 0;
    WriteScope scope(*this);
    std::vector<uint32_t> ids;
    Statement& select = statement(unused);
    while (select.step())
        ids.push_back(select.id(0));
    select.reset();
    for (uint32_t id : ids)
        statement(std::string("DELETE FROM ") + tableOf(type) + " WHERE id = ?1").bind(1, id).run();
    m_nameCache[type].clear();
    scope.commit();
    if (Library::Reactor* r = reactor())
        for (uint32_t id : ids)
            r->onRemoved(selfConst(), ObjectKey(type, id));
    return unsigned(ids.size());
}

}  // namespace vantlib
