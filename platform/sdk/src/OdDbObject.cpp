#include "OdDbObject.h"

#include "OdDbDatabase.h"
#include "OdError.h"

const OdDbObjectId OdDbObjectId::kNull;

bool OdDbObjectId::isValid() const { return m_db && m_db->containsObject(m_handle); }

OdSmartPtr<OdDbObject> OdDbObjectId::openObject(OdDb::OpenMode mode, bool openErased) const {
    if (isNull()) return OdSmartPtr<OdDbObject>();
    return m_db->openObject(m_handle, mode, openErased);
}

OdSmartPtr<OdDbObject> OdDbObjectId::safeOpenObject(OdDb::OpenMode mode) const {
    if (isNull()) throw OdError(eNullObjectId);
    OdSmartPtr<OdDbObject> object = openObject(mode);
    if (!object) throw OdError(eKeyNotFound, OdString::formatted(L"No object with handle %llu", static_cast<unsigned long long>(m_handle)));
    return object;
}

const OdRxClass* OdDbObject::desc() {
    static const OdRxClass cls(L"OdDbObject", nullptr, []() -> OdDbObject* { return new OdDbObject(); });
    return &cls;
}

const OdRxClass* OdDbObject::isA() const { return desc(); }

void OdDbObject::assertWriteEnabled() const {
    if (m_openMode != OdDb::kForWrite) throw OdError(eWasOpenForRead);
    if (OdDbDatabase* db = database()) db->markModified();
}

void OdDbObject::upgradeOpen() {
    m_openMode = OdDb::kForWrite;
    if (OdDbDatabase* db = database()) db->markModified();
}

void OdDbObject::downgradeOpen() { m_openMode = OdDb::kForRead; }

void OdDbObject::dwgInFields(OdDbDwgFiler&) {}
void OdDbObject::dwgOutFields(OdDbDwgFiler&) const {}

void OdDbObject::erase() {
    OdDbDatabase* db = database();
    if (!db) throw OdError(eNullObjectId, L"The object is not in a drawing");
    assertWriteEnabled();
    db->eraseObject(m_id.handle());
}

ODRX_DEFINE_MEMBERS(OdDbProxyObject, OdDbObject, L"OdDbProxyObject")

void OdDbProxyObject::dwgInFields(OdDbDwgFiler& filer) {
    OdDbObject::dwgInFields(filer);
    m_fields = filer.readRemaining();
}

void OdDbProxyObject::dwgOutFields(OdDbDwgFiler& filer) const {
    OdDbObject::dwgOutFields(filer);
    for (const OdDbDwgFiler::Field& field : m_fields) {
        switch (field.type) {
        case OdDbDwgFiler::kBool: filer.wrBool(field.intValue != 0); break;
        case OdDbDwgFiler::kInt32: filer.wrInt32(static_cast<int32_t>(field.intValue)); break;
        case OdDbDwgFiler::kInt64: filer.wrInt64(field.intValue); break;
        case OdDbDwgFiler::kDouble: filer.wrDouble(field.realValue); break;
        case OdDbDwgFiler::kString: filer.wrString(field.text); break;
        case OdDbDwgFiler::kObjectId: filer.wrObjectId(OdDbObjectId(filer.database(), static_cast<uint64_t>(field.intValue))); break;
        }
    }
}
