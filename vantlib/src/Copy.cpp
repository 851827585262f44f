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

    uint32_t copy(const QcSmartPtr<Object>& object, bool primary) {
        switch (object->objectType()) {
        case kMaterial: return copyMaterial(static_cast<const Material&>(*object), primary);
        case kComposition: return copyComposition(static_cast<const Composition&>(*object), primary);
        default: return copyNamed(*object);
        }
    }

private:
    bool known(const ObjectKey& key, uint32_t& id) const {
        auto it = m_mapping.find(key);
        if (it == m_mapping.end())
            return false;
        id = it->second.id;
        return true;
    }

    // Tags, layers, classes, composition types and custom properties are shared by name:
    // the target's object of the same name is used as it is.
    uint32_t copyNamed(const Object& object) {
        uint32_t id = 0;
        if (object.id() != 0 && known(object.key(), id))
            return id;
        ObjectType propertyKind = object.objectType() == kCustomProperty
                                      ? static_cast<const CustomProperty&>(object).object_type()
                                      : kUnknownObject;
        bool created = false;
        id = m_target.resolveNamed(object.objectType(), object.name(), &created, propertyKind);
        if (object.id() != 0)
            m_mapping.set(object.key(), IdMapping::Value{id, created ? IdMapping::kCopied : IdMapping::kReused});
        return id;
    }

    void copyAnnotations(const AnnotatedObject& object) {
        for (const auto& tag : object.tags())
            copyNamed(*tag);
        for (const auto& value : object.custom_values())
            copyNamed(*value.property);
    }

    uint32_t copyMaterial(const Material& material, bool primary) {
        uint32_t id = 0;
        if (known(material.key(), id))
            return id;
        Decision decision = decide(material);
        if (decision.action == kSaveSkip)
            return skip(material, decision.clash);
        if (material.material_type())
            copyNamed(*material.material_type());
        if (const BimAsset* bim = material.bim_asset()) {
            if (bim->layer())
                copyNamed(*bim->layer());
            if (bim->layer_elevation())
                copyNamed(*bim->layer_elevation());
        }
        copyAnnotations(material);
        return write(material, decision, nullptr, primary);
    }

    uint32_t copyComposition(const Composition& composition, bool primary) {
        uint32_t id = 0;
        if (known(composition.key(), id))
            return id;
        Decision decision = decide(composition);
        if (decision.action == kSaveSkip)
            return skip(composition, decision.clash);
        std::vector<uint32_t> plyMaterials;
        for (const Ply& ply : composition.plies())
            plyMaterials.push_back(copyMaterial(*ply.material(), false));
        if (composition.composition_type())
            copyNamed(*composition.composition_type());
        if (composition.layer())
            copyNamed(*composition.layer());
        copyAnnotations(composition);
        return write(composition, decision, &plyMaterials, primary);
    }

    // What to do with an incoming material or composition: ask the reactor when its name is
    // taken. Decided before anything it depends on is copied, so a skipped object brings
    // nothing along.
    struct Decision {
        SaveResolution action = kSaveOverwrite;
        uint32_t clash = 0;
        QcSmartPtr<Object> renamed;
    };

    Decision decide(const Object& object) {
        Decision decision;
        ObjectType type = object.objectType();
        decision.clash = m_target.findId(type, object.name());
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
            if (m_target.findId(type, work->name()))
                r->onObjectNotUniqueRename(info);
            if (work->name().isEmpty() || m_target.findId(type, work->name())) {
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

    uint32_t write(const Object& object, const Decision& decision, const std::vector<uint32_t>* plyMaterials, bool primary) {
        IdMapping::Value result;
        if (decision.clash == 0)
            result = {m_target.writeObject(object, 0, plyMaterials), IdMapping::kCopied};
        else if (decision.action == kSaveOverwrite)
            result = {m_target.writeObject(object, decision.clash, plyMaterials), IdMapping::kOverwritten};
        else
            result = {m_target.writeObject(*decision.renamed, 0, plyMaterials), IdMapping::kRenamed};
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
                    copier.copy(object, true);
                    scope.commit();
                } catch (...) {
                    mapping = kept;
                    throw;
                }
            }
        } else {
            WriteScope scope(*this);
            for (const auto& object : objects)
                copier.copy(object, true);
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
