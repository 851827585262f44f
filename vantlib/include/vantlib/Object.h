#pragma once
// Base of every object stored in a library. Objects handed out by a library are private
// copies: editing one changes nothing until it is saved (Object::save or Library::save).
#include <memory>
#include <vector>

#include <OdString.h>
#include <QcSmartPtr.h>

#include <vantlib/Types.h>

namespace vantlib {

class Library;

class Object : public QcRefCounted {
public:
    ~Object() override = default;

    // Kind of the object. Composition hides type() with its base type, so generic code that
    // needs the kind of any object uses objectType().
    ObjectType type() const { return m_type; }
    ObjectType objectType() const { return m_type; }
    // 0 while the object has never been stored.
    uint32_t id() const { return m_id; }
    ObjectKey key() const { return ObjectKey(m_type, m_id); }

    const OdString& name() const { return m_name; }
    void set_name(const OdString& name) { m_name = name; }
    // Name as shown to the user; the name itself for every kind stored today.
    virtual OdString displayName() const { return m_name; }

    // The library the object was read from or last saved to; null for a new object.
    std::shared_ptr<Library> library() const { return m_library.lock(); }

    // Stores the object back into its library (Library::save) and takes over the stored id
    // and name (a clash may rename it). When a clash is answered with skip the object keeps
    // its id and nothing is stored. Throws ConsistencyError when it belongs to no library.
    void save();

    // A copy that is not stored yet (id 0) but remembers the library, so save() stores it as a
    // new object there.
    QcSmartPtr<Object> cloneObjectBase() const { return QcSmartPtr<Object>(cloneUnstored()); }

protected:
    explicit Object(ObjectType type, const OdString& name = OdString()) : m_type(type), m_name(name) {}
    Object(const Object&) = default;
    Object& operator=(const Object&) = default;
    virtual Object* cloneImpl() const = 0;
    Object* cloneUnstored() const {
        Object* copy = cloneImpl();
        copy->m_id = 0;
        return copy;
    }

private:
    friend class LibraryAccess;  // storage code sets ids and owners
    ObjectType m_type;
    uint32_t m_id = 0;
    OdString m_name;
    std::weak_ptr<Library> m_library;
};

// Objects with only a name: tags, layers, material and composition types.
template <class Derived, ObjectType Kind>
class NamedObject : public Object {
public:
    static constexpr ObjectType kType = Kind;
    static QcSmartPtr<Derived> create(const OdString& name) { return QcSmartPtr<Derived>(new Derived(name)); }
    QcSmartPtr<Derived> cloneObject() const { return QcSmartPtr<Derived>(static_cast<Derived*>(cloneUnstored())); }

protected:
    explicit NamedObject(const OdString& name) : Object(Kind, name) {}
    Object* cloneImpl() const override { return new Derived(static_cast<const Derived&>(*this)); }
};

}  // namespace vantlib
