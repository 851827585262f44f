// Copying objects between libraries. The requested objects are read from the source in
// batches; each brings what it depends on, and each source object is handled once.
#include <map>

#include <vantlib/Exception.h>

#include "LibraryAccess.h"
#include "LibraryStore.h"

namespace vantlib {

namespace {

class Copier {
public:
    Copier(LibraryStore& target, IdMapping& mapping) : m_target(target), m_mapping(mapping) {}

    // Copies an object with what it refers to and returns its id in the target. Objects of
    // name-only kinds are shared by name; others are decided on (clash) before anything they
    // refer to is copied, so a skipped object brings nothing along.
    uint32_t copy(const Object& object, bool primary) {
        const KindDescription& kind = describeKind(object.objectType());
        if (kind.nameOnly)
            return copyNamed(object);
        uint32_t id = 0;
        if (known(object.key(), id))
            return id;
        if (!primary && kind.reusedByCopies)
            if (uint32_t existing = m_target.findClash(object, object.name())) {
                m_mapping.set(object.key(), IdMapping::Value{existing, IdMapping::kReused});
                return existing;
            }
        Decision decision = decide(object);
        if (decision.action == kSaveSkip)
            return skip(object, decision.clash);
        ReferenceIds referenceIds(kind.references.size());
        std::vector<const Object*> targets;
        for (size_t r = 0; r < kind.references.size(); ++r) {
            targets.clear();
            kind.references[r].collect(object, targets);
            for (const Object* target : targets)
                referenceIds[r].push_back(copy(*target, false));
        }
        return write(object, decision, referenceIds, primary);
    }

private:
    bool known(const ObjectKey& key, uint32_t& id) const {
        auto it = m_mapping.find(key);
        if (it == m_mapping.end())
            return false;
        id = it->second.id;
        return true;
    }

    // The target's object of the same name is used as it is.
    uint32_t copyNamed(const Object& object) {
        uint32_t id = 0;
        if (object.id() != 0 && known(object.key(), id))
            return id;
        bool created = false;
        id = m_target.resolveNamed(object, &created);
        if (object.id() != 0)
            m_mapping.set(object.key(), IdMapping::Value{id, created ? IdMapping::kCopied : IdMapping::kReused});
        return id;
    }

    // What to do with an incoming object: ask the reactor when its name is taken.
    struct Decision {
        SaveResolution action = kSaveOverwrite;
        uint32_t clash = 0;
        QcSmartPtr<Object> renamed;
    };

    Decision decide(const Object& object) {
        Decision decision;
        ObjectType type = object.objectType();
        decision.clash = m_target.findClash(object, object.name());
        if (decision.clash == 0)
            return decision;
        Library::Reactor* r = m_target.reactor();
        if (!r) {
            decision.action = kSaveSkip;
            return decision;
        }
        QcSmartPtr<Object> work = LibraryAccess::exactCopy(object);
        Library::Reactor::ObjectInfo info(work, m_target.selfConst());
        decision.action = r->onObjectNotUnique(info);
        if (decision.action == kSaveRename) {
            if (m_target.findClash(*work, work->name()))
                r->onObjectNotUniqueRename(info);
            if (work->name().isEmpty() || m_target.findClash(*work, work->name())) {
                r->onObjectNotUniqueFail(info);
                throw ObjectNotUnique(type, object.name());
            }
            decision.renamed = work;
        } else if (decision.action != kSaveOverwrite) {
            decision.action = kSaveSkip;
        }
        return decision;
    }

    uint32_t skip(const Object& object, uint32_t existingId) {
        m_mapping.set(object.key(), IdMapping::Value{existingId, IdMapping::kNotCopied});
        return existingId;
    }

    uint32_t write(const Object& object, const Decision& decision, const ReferenceIds& referenceIds, bool primary) {
        IdMapping::Value result;
        if (decision.clash == 0)
            result = {m_target.writeObject(object, 0, &referenceIds), IdMapping::kCopied};
        else if (decision.action == kSaveOverwrite)
            result = {m_target.writeObject(object, decision.clash, &referenceIds), IdMapping::kOverwritten};
        else
            result = {m_target.writeObject(*decision.renamed, 0, &referenceIds), IdMapping::kRenamed};
        m_mapping.set(object.key(), result);
        if (primary)
            if (Library::Reactor* r = m_target.reactor())
                r->onPrimaryCopy(m_target.selfConst(), object.key(), ObjectKey(object.objectType(), result.id));
        return result.id;
    }

    LibraryStore& m_target;
    IdMapping& m_mapping;
};

}  // namespace

void LibraryStore::copyFrom(const std::shared_ptr<const Library>& source, const std::set<ObjectKey>& keys,
                            IdMapping& mapping, Library::TransactionType transactionType) {
    requireWritable();
    if (!source)
        throw ConsistencyError(OdString(L"No source library to copy from"));

    // Read every requested object first, one batch per kind.
    std::map<ObjectType, std::set<unsigned>> idsByType;
    for (const ObjectKey& key : keys)
        idsByType[key.type].insert(key.id);
    std::vector<QcSmartPtr<Object>> objects;
    std::set<ObjectKey> found;
    for (const auto& entry : idsByType) {
        for (auto& object : source->store().loadByIds(entry.first, entry.second)) {
            found.insert(object->key());
            objects.push_back(object);
        }
    }

    IdMapping before = mapping;
    Copier copier(*this, mapping);
    try {
        if (transactionType == Library::kPerObject) {
            for (const auto& object : objects) {
                IdMapping kept = mapping;
                try {
                    WriteScope scope(*this);
                    copier.copy(*object, true);
                    scope.commit();
                } catch (...) {
                    mapping = kept;
                    throw;
                }
            }
        } else {
            WriteScope scope(*this);
            for (const auto& object : objects)
                copier.copy(*object, true);
            scope.commit();
        }
    } catch (...) {
        if (transactionType != Library::kPerObject)
            mapping = before;
        throw;
    }
    // Requested objects the source does not hold were not copied.
    for (const ObjectKey& key : keys)
        if (!found.count(key) && !mapping.contains(key))
            mapping.set(key, IdMapping::Value{0, IdMapping::kNotCopied});
    if (Library::Reactor* r = reactor())
        r->onCopied(selfConst(), mapping);
}

}  // namespace vantlib
