#pragma once
// Base of everything a drawing stores: layer tables and layers, dictionaries, entities and the
// custom objects of modules (such as the drawing's library manager).
#include "OdDbFiler.h"
#include "OdDbObjectId.h"
#include "OdRxClass.h"
#include "OdSmartPtr.h"
#include "QcSmartPtr.h"

class OdDbObject : public QcRefCounted {
public:
    OdDbObject() = default;
    ~OdDbObject() override = default;
    OdDbObject(const OdDbObject&) = delete;
    OdDbObject& operator=(const OdDbObject&) = delete;

    static const OdRxClass* desc();
    virtual const OdRxClass* isA() const;
    bool isKindOf(const OdRxClass* cls) const { return isA()->isDerivedFrom(cls); }
    static OdSmartPtr<OdDbObject> cast(const OdDbObject* object) { return OdSmartPtr<OdDbObject>(const_cast<OdDbObject*>(object)); }

    OdDbObjectId objectId() const { return m_id; }
    OdDbDatabase* database() const { return m_id.database(); }
    OdDbObjectId ownerId() const { return m_ownerId; }
    void setOwnerId(const OdDbObjectId& owner) { m_ownerId = owner; }

    bool isReadEnabled() const { return m_openMode != OdDb::kNotOpen; }
    bool isWriteEnabled() const { return m_openMode == OdDb::kForWrite; }
    bool isErased() const { return m_erased; }
    // Throws OdError(eWasOpenForRead) unless the object is open for write (objects that are
    // not in a drawing yet are always writable).
    void assertWriteEnabled() const;
    void upgradeOpen();
    void downgradeOpen();

    // Persistence. Derived classes call the parent's version first, then write their own
    // fields; dwgInFields reads them back in the same order.
    virtual void dwgInFields(OdDbDwgFiler& filer);
    virtual void dwgOutFields(OdDbDwgFiler& filer) const;

    // Removes the object from its drawing (it is not saved any more); throws
    // OdError(eNullObjectId) for an object that is not in a drawing.
    void erase();

private:
    friend class OdDbDatabase;
    friend class OdDbObjectId;

    OdDbObjectId m_id;
    OdDbObjectId m_ownerId;
    OdDb::OpenMode m_openMode = OdDb::kForWrite;
    bool m_erased = false;
};
using OdDbObjectPtr = OdSmartPtr<OdDbObject>;

// A record whose class is not registered in this process (its module is not loaded). It keeps
// the stored fields unchanged so that saving the drawing loses nothing.
class OdDbProxyObject : public OdDbObject {
    ODRX_DECLARE_MEMBERS(OdDbProxyObject);

    const OdString& originalClassName() const { return m_originalClassName; }
    const std::vector<OdDbDwgFiler::Field>& rawFields() const { return m_fields; }

    void dwgInFields(OdDbDwgFiler& filer) override;
    void dwgOutFields(OdDbDwgFiler& filer) const override;

protected:
    OdDbProxyObject() = default;

private:
    friend class OdDbDatabase;
    OdString m_originalClassName;
    std::vector<OdDbDwgFiler::Field> m_fields;
};
using OdDbProxyObjectPtr = OdSmartPtr<OdDbProxyObject>;
