#pragma once
// Run-time class descriptors of drawing objects, and the registry by name that lets a drawing
// rebuild its objects when it is opened.
#include <vector>

#include "OdString.h"

class OdDbObject;

class OdRxClass {
public:
    // Makes a new, empty object of the class (reference count 0).
    using Constructor = OdDbObject* (*)();

    OdRxClass(const OdString& name, const OdRxClass* parent, Constructor constructor);
    OdRxClass(const OdRxClass&) = delete;
    OdRxClass& operator=(const OdRxClass&) = delete;

    const OdString& name() const { return m_name; }
    const OdRxClass* myParent() const { return m_parent; }
    bool isDerivedFrom(const OdRxClass* other) const;
    // Throws OdError(eInvalidContext) for a class without a constructor.
    OdDbObject* create() const;

private:
    OdString m_name;
    const OdRxClass* m_parent;
    Constructor m_constructor;
};

// Registry of the classes whose records a drawing can turn back into objects. The drawing's
// own classes are always registered; modules register theirs when they load (ClassName::rxInit)
// and withdraw them when they unload (rxUninit); a module must not unload while open drawings
// still hold objects of its classes. Registering another class under a name already
// taken throws OdError(eDuplicateKey); registering the same class twice is harmless.
void odrxRegisterClass(const OdRxClass* cls);
void odrxUnregisterClass(const OdRxClass* cls);
const OdRxClass* odrxFindClass(const OdString& name);  // null when not registered
std::vector<const OdRxClass*> odrxRegisteredClasses();

// Members every drawing-object class declares: desc(), isA(), cast(), createObject(),
// rxInit(), rxUninit(). Use ODRX_DECLARE_MEMBERS in the class body and ODRX_DEFINE_MEMBERS
// in one source file. The class needs a default constructor (it may be protected).
#define ODRX_DECLARE_MEMBERS(ClassName)                                       \
public:                                                                       \
    static const OdRxClass* desc();                                           \
    const OdRxClass* isA() const override;                                    \
    static OdSmartPtr<ClassName> cast(const OdDbObject* object);              \
    static OdSmartPtr<ClassName> createObject();                              \
    static void rxInit();                                                     \
    static void rxUninit()

#define ODRX_DEFINE_MEMBERS(ClassName, ParentName, RegisteredName)                               \
    const OdRxClass* ClassName::desc() {                                                        \
        static const OdRxClass cls(RegisteredName, ParentName::desc(),                          \
                                   []() -> OdDbObject* { return new ClassName(); });            \
        return &cls;                                                                            \
    }                                                                                           \
    const OdRxClass* ClassName::isA() const { return desc(); }                                  \
    OdSmartPtr<ClassName> ClassName::cast(const OdDbObject* object) {                           \
        if (!object || !object->isKindOf(desc())) return OdSmartPtr<ClassName>();               \
        return OdSmartPtr<ClassName>(static_cast<ClassName*>(const_cast<OdDbObject*>(object))); \
    }                                                                                           \
    OdSmartPtr<ClassName> ClassName::createObject() { return OdSmartPtr<ClassName>(new ClassName()); } \
    void ClassName::rxInit() { odrxRegisterClass(desc()); }                                     \
    void ClassName::rxUninit() { odrxUnregisterClass(desc()); }
