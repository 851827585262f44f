#include "OdDbSymbolTable.h"

#include "OdDbDatabase.h"
#include "OdDbEntity.h"
#include "OdDbLayerTable.h"
#include "OdError.h"

ODRX_DEFINE_MEMBERS(OdDbSymbolTableRecord, OdDbObject, L"OdDbSymbolTableRecord")
ODRX_DEFINE_MEMBERS(OdDbSymbolTable, OdDbObject, L"OdDbSymbolTable")

bool OdDbSymbolTableRecord::isValidName(const OdString& name) {
    static const std::wstring kForbidden = L"<>/\\\":;?*|,=`";
    if (name.isEmpty() || name.getLength() > 255) return false;
    OdString trimmed = name;
    if (trimmed.trimLeft().trimRight() != name) return false;
    for (wchar_t ch : name.str())
        if (ch < 32 || kForbidden.find(ch) != std::wstring::npos) return false;
    return true;
}

void OdDbSymbolTableRecord::setName(const OdString& name) {
    if (!isValidName(name)) throw OdError(eInvalidInput, L"Invalid name: \"" + name + L"\"");
    assertWriteEnabled();
    if (database() && isKindOf(OdDbLayerTableRecord::desc()) && m_name == L"0" && name != L"0")
        throw OdError(eInvalidInput, L"Layer 0 cannot be renamed");
    if (OdSmartPtr<OdDbSymbolTable> table = OdDbSymbolTable::cast(ownerId().openObject().get())) {
        OdDbObjectId other = table->getAt(name);
        if (!other.isNull() && other != objectId()) throw OdError(eDuplicateKey, L"The name " + name + L" is already in use");
    }
    const OdString previous = m_name;
    m_name = name;
    if (OdDbDatabase* db = database(); db && isKindOf(OdDbLayerTableRecord::desc()) && !previous.isEmpty()) {
        // Entities name their layer; they follow it to its new name.
        for (const OdDbObjectId& id : db->entityIds()) {
            OdSmartPtr<OdDbEntity> entity = OdDbEntity::cast(id.openObject().get());
            if (entity && entity->layer().iCompare(previous) == 0) OdSmartPtr<OdDbEntity>(id.openObject(OdDb::kForWrite))->setLayer(name);
        }
    }
}

void OdDbSymbolTableRecord::dwgInFields(OdDbDwgFiler& filer) {
    OdDbObject::dwgInFields(filer);
    m_name = filer.rdString();
}

void OdDbSymbolTableRecord::dwgOutFields(OdDbDwgFiler& filer) const {
    OdDbObject::dwgOutFields(filer);
    filer.wrString(m_name);
}

OdDbObjectId OdDbSymbolTableIterator::getRecordId() const {
    if (done()) throw OdError_InvalidIndex();
    return m_ids[m_index];
}

OdSmartPtr<OdDbSymbolTableRecord> OdDbSymbolTableIterator::getRecord(OdDb::OpenMode mode) const {
    return OdSmartPtr<OdDbSymbolTableRecord>(getRecordId().openObject(mode));
}

std::vector<OdDbObjectId> OdDbSymbolTable::recordIds() const {
    std::vector<OdDbObjectId> ids;
    for (const OdDbObjectId& id : m_records)
        if (id.isValid()) ids.push_back(id);
    return ids;
}

unsigned OdDbSymbolTable::numRecords() const { return static_cast<unsigned>(recordIds().size()); }

OdDbSymbolTableIteratorPtr OdDbSymbolTable::newIterator() const {
    return std::make_unique<OdDbSymbolTableIterator>(recordIds());
}

OdDbObjectId OdDbSymbolTable::getAt(const OdString& name) const {
    for (const OdDbObjectId& id : recordIds()) {
        OdSmartPtr<OdDbSymbolTableRecord> record = OdDbSymbolTableRecord::cast(id.openObject().get());
        if (record && record->getName().iCompare(name) == 0) return id;
    }
    return OdDbObjectId();
}

OdDbObjectId OdDbSymbolTable::add(const OdSmartPtr<OdDbSymbolTableRecord>& record) {
    if (!record) throw OdError(eInvalidInput, L"Cannot add a null record");
    if (!database()) throw OdError(eNullObjectId, L"The table is not in a drawing");
    if (!record->isKindOf(recordClass())) throw OdError_NotThatKindOfClass();
    if (record->database()) throw OdError(eAlreadyInDb);
    if (!OdDbSymbolTableRecord::isValidName(record->getName()))
        throw OdError(eInvalidInput, L"Invalid name: \"" + record->getName() + L"\"");
    assertWriteEnabled();
    if (has(record->getName())) throw OdError(eDuplicateKey, L"The name " + record->getName() + L" is already in use");
    OdDbObjectId id = database()->addOdDbObject(record, objectId());
    m_records.push_back(id);
    return id;
}

void OdDbSymbolTable::dwgInFields(OdDbDwgFiler& filer) {
    OdDbObject::dwgInFields(filer);
    int32_t count = filer.rdInt32();
    if (count < 0) throw OdError(eMalformedRecord, L"Negative record count in a table");
    m_records.clear();
    for (int32_t i = 0; i < count; ++i) m_records.push_back(filer.rdObjectId());
}

void OdDbSymbolTable::dwgOutFields(OdDbDwgFiler& filer) const {
    OdDbObject::dwgOutFields(filer);
    std::vector<OdDbObjectId> ids = recordIds();
    filer.wrInt32(static_cast<int32_t>(ids.size()));
    for (const OdDbObjectId& id : ids) filer.wrObjectId(id);
}
