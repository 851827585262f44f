// Storing and removing objects: name clashes, references resolved by name, dependent rows.
#include <vantlib/Exception.h>

#include "LibraryAccess.h"
#include "LibraryStore.h"
#include "Text.h"

namespace vantlib {

ReferenceIds LibraryStore::resolveReferences(const KindDescription& kind, const Object& object) {
    ReferenceIds ids(kind.references.size());
    std::vector<const Object*> targets;
    for (size_t r = 0; r < kind.references.size(); ++r) {
        const KindReference& reference = kind.references[r];
        targets.clear();
        reference.collect(object, targets);
        for (const Object* target : targets) {
            uint32_t id = 0;
            if (reference.targetNameOnly) {
                // A column reference without a name is no reference; a link needs one.
                if (!reference.isColumn() || !target->name().isEmpty())
                    id = resolveNamed(*target);
            } else {
                if (target->id() != 0 && LibraryAccess::belongsTo(*target, m_owner))
                    id = target->id();
                else
                    id = findClash(*target, target->name());
                if (id == 0 || !exists(reference.target, id))
                    throw ConsistencyError(OdString::formatted(L"'%ls', which '%ls' refers to, is not in the library",
                                                               target->name().c_str(), object.name().c_str()));
            }
            ids[r].push_back(id);
        }
    }
    return ids;
}

uint32_t LibraryStore::writeObject(const Object& object, uint32_t targetId, const ReferenceIds* referenceIds) {
    requireWritable();
    const KindDescription& kind = describeKind(object.objectType());
    if (object.name().isEmpty() && !kind.allowEmptyName)
        throw ConsistencyError(OdString(L"An object needs a name to be stored"));
    ReferenceIds resolved;
    if (!referenceIds) {
        resolved = resolveReferences(kind, object);
        referenceIds = &resolved;
    }
    if (referenceIds->size() != kind.references.size())
        throw ConsistencyError(OdString(L"The references of the object are not resolved"));
    const bool replace = targetId != 0;
    Statement& stmt = statement(replace ? kind.update : kind.insert);
    kind.bind(stmt, object);
    for (size_t r = 0; r < kind.references.size(); ++r)
        if (kind.referenceParameter[r])
            stmt.bindRef(kind.referenceParameter[r], (*referenceIds)[r].empty() ? 0 : (*referenceIds)[r].front());
    if (replace)
        stmt.bind(int(kind.columns.size() + 1), targetId);
    stmt.run();
    const uint32_t id = replace ? targetId : uint32_t(sqlite3_last_insert_rowid(db()));
    // The name cache may hold the old name.
    if (replace && kind.nameOnly)
        forgetName(kind.type, id);
    for (size_t r = 0; r < kind.references.size(); ++r)
        if (const LinkRows* links = kind.references[r].links)
            links->write(*this, kind.type, id, object, (*referenceIds)[r], replace);
    notifySaved(ObjectKey(kind.type, id), !replace);
    return id;
}

QcSmartPtr<Object> LibraryStore::saveObject(const Object& object, bool* skipped) {
    if (skipped)
        *skipped = false;
    requireWritable();
    ObjectType type = object.objectType();
    const KindDescription& kind = describeKind(type);  // refuses kinds that are not stored
    if (object.name().isEmpty() && !kind.allowEmptyName)
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
    if (uint32_t clash = findClash(*work, work->name(), targetId)) {
        Library::Reactor* r = reactor();
        if (!r)
            throw ObjectNotUnique(type, work->name());
        Library::Reactor::ObjectInfo info(work, selfConst());
        SaveResolution resolution = r->onObjectNotUnique(info);
        if (resolution == kSaveOverwrite) {
            targetId = clash;
        } else if (resolution == kSaveRename) {
            if (findClash(*work, work->name(), targetId))
                r->onObjectNotUniqueRename(info);
            if (work->name().isEmpty() || findClash(*work, work->name(), targetId)) {
                r->onObjectNotUniqueFail(info);
                throw ObjectNotUnique(type, object.name());
            }
        } else {
            scope.commit();
            if (skipped)
                *skipped = true;
            // The existing object may be of another class of the same family.
            return loadById(kind.family, clash);
        }
    }

    uint32_t id = writeObject(*work, targetId);
    scope.commit();
    LibraryAccess::bind(*work, id, m_self);
    return work;
}

bool LibraryStore::isReferenced(ObjectType type, uint32_t id) const {
    const KindDescription* kind = findKind(type);
    if (!kind || kind->inUse.empty())
        return false;
    Statement& stmt = statement(kind->inUse);
    bool used = stmt.bind(1, id).step();
    stmt.reset();
    return used;
}

Library::RemoveResult LibraryStore::removeObject(ObjectType type, uint32_t id) {
    requireWritable();
    const KindDescription& kind = describeKind(type);
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
    statement(kind.remove).bind(1, id).run();
    forgetName(type, id);
    scope.commit();
    if (r)
        r->onRemoved(selfConst(), key);
    return Library::kRemoved;
}

unsigned LibraryStore::purge(ObjectType type) {
    const KindDescription& kind = describeKind(type);
    if (!kind.purgeable)
        throw ConsistencyError(OdString::formatted(L"Objects of kind %u are not purged", unsigned(type)));
    if (m_readOnly)
        return 0;
    WriteScope scope(*this);
    std::vector<uint32_t> ids;
    Statement& select = statement(kind.unused);
    while (select.step())
        ids.push_back(select.id(0));
    select.reset();
    for (uint32_t id : ids) {
        statement(kind.remove).bind(1, id).run();
        forgetName(type, id);
    }
    scope.commit();
    if (Library::Reactor* r = reactor())
        for (uint32_t id : ids)
            r->onRemoved(selfConst(), ObjectKey(type, id));
    return unsigned(ids.size());
}

}  // namespace vantlib
