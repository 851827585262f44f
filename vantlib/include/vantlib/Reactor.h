#pragma once
// The one observer of all libraries (LibraryManager::instance()->setReactor). Every
// operation has a default that does nothing or allows.
#include <memory>

#include <OdString.h>

#include <vantlib/IdMapping.h>
#include <vantlib/Library.h>
#include <vantlib/Object.h>

namespace vantlib {

class Library::Reactor {
public:
    // Description of an incoming object whose name is taken in the target library.
    class ObjectInfo {
    public:
        ObjectInfo(const QcSmartPtr<Object>& object, const std::shared_ptr<const Library>& target)
            : m_object(object), m_target(target) {}
        ObjectType type() const { return m_object->objectType(); }
        // The library receiving the object.
        const std::shared_ptr<const Library>& library() const { return m_target; }
        const OdString& name() const { return m_object->name(); }
        OdString displayName() const { return m_object->displayName(); }
        // Gives the incoming object this name when no other object of its kind in the target
        // library bears it; tells whether it was taken.
        bool tryName(const OdString& name);
        const QcSmartPtr<Object>& object() const { return m_object; }

    private:
        QcSmartPtr<Object> m_object;
        std::shared_ptr<const Library> m_target;
    };

    virtual ~Reactor() = default;

    virtual void onTransactionBegin(const std::shared_ptr<const Library>& library);
    virtual void onTransactionEnd(const std::shared_ptr<const Library>& library, TransactionResult result);
    // Called when a clash stays unresolved (rename answered but no free name was set); the
    // library throws ObjectNotUnique afterwards if this returns.
    virtual void onObjectNotUniqueFail(ObjectInfo& info);
    virtual SaveResolution onObjectNotUnique(ObjectInfo& info);
    // Called after a rename answer when the object's name is still taken: should set a free
    // name with tryName. The default tries "name_2", "name_3", ...
    virtual void onObjectNotUniqueRename(ObjectInfo& info);
    // A new object was stored.
    virtual void onSaved(const std::shared_ptr<const Library>& library, const ObjectKey& key);
    virtual RemoveResolution onRemove(const std::shared_ptr<const Library>& library, const ObjectKey& key);
    virtual void onRemoved(const std::shared_ptr<const Library>& library, const ObjectKey& key);
    // A copy into `target` finished (inside its transaction).
    virtual void onCopied(const std::shared_ptr<const Library>& target, const IdMapping& mapping);
    // An existing object was changed (saved again or overwritten).
    virtual void onModified(const std::shared_ptr<const Library>& library, const ObjectKey& key);
    // An object could not be read (damaged record); it is left out of the result.
    virtual void onLoadFailed(const std::shared_ptr<const Library>& library, const ObjectKey& key, const OdString& name);
    // A requested object (not a dependency) was copied: source key and its key in the target.
    virtual void onPrimaryCopy(const std::shared_ptr<const Library>& target, const ObjectKey& source, const ObjectKey& copy);
    // The library was closed; it can no longer be reached, so only its identity is given.
    virtual void onClosed(const OdString& filename, const OdString& guid);
};

using Reactor = Library::Reactor;

}  // namespace vantlib
