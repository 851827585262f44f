#include "OdDbDictionary.h"

#include "OdDbDatabase.h"
#include "OdError.h"

ODRX_DEFINE_MEMBERS(OdDbDictionary, OdDbObject, L"OdDbDictionary")

OdDbObjectId OdDbDictionary::getAt(const OdString& name) const {
    for (const auto& entry : m_entries)
        if (entry.first == name) return entry.second.isValid() ? entry.second : OdDbObjectId();
    return OdDbObjectId();
}

OdDbObjectId OdDbDictionary::setAt(const OdString& name, const OdSmartPtr<OdDbObject>& object) {
    if (name.isEmpty()) throw OdError(eInvalidInput, L"A dictionary entry needs a name");
    if (!object) throw OdError(eInvalidInput, L"Cannot store a null object under " + name);
    OdDbDatabase* db = database();
    if (!db) throw OdError(eNullObjectId, L"The dictionary is not in a drawing");
    if (object->database() && object->database() != db) throw OdError(eAlreadyInDb, L"The object belongs to another drawing");
    assertWriteEnabled();

    OdDbObjectId id = object->database() ? object->objectId() : db->addOdDbObject(object, objectId());
    for (auto& entry : m_entries) {
        if (entry.first != name) continue;
        if (entry.second != id && entry.second.isValid()) {
            // The replaced object goes with its name; erase it whatever its current open mode.
            OdSmartPtr<OdDbObject> old = entry.second.openObject(OdDb::kForWrite);
            old->erase();
        }
        entry.second = id;
        return id;
    }
    m_entries.emplace_back(name, id);
    return id;
}

bool OdDbDictionary::remove(const OdString& name) {
    for (auto it = m_entries.begin(); it != m_entries.end(); ++it) {
        if (it->first != name) continue;
        assertWriteEnabled();
        if (OdSmartPtr<OdDbObject> old = it->second.openObject(OdDb::kForWrite)) old->erase();
        m_entries.erase(it);
        return true;
    }
    return false;
}

void OdDbDictionary::dwgInFields(OdDbDwgFiler& filer) {
    OdDbObject::dwgInFields(filer);
    int32_t count = filer.rdInt32();
    if (count < 0) throw OdError(eMalformedRecord, L"Negative entry count in a dictionary");
    m_entries.clear();
    for (int32_t i = 0; i < count; ++i) {
        OdString name = filer.rdString();
        m_entries.emplace_back(name, filer.rdObjectId());
    }
}

void OdDbDictionary::dwgOutFields(OdDbDwgFiler& filer) const {
    OdDbObject::dwgOutFields(filer);
    std::vector<std::pair<OdString, OdDbObjectId>> live;
    for (const auto& entry : m_entries)
        if (entry.second.isValid()) live.push_back(entry);
    filer.wrInt32(static_cast<int32_t>(live.size()));
    for (const auto& entry : live) {
        filer.wrString(entry.first);
        filer.wrObjectId(entry.second);
    }
}
