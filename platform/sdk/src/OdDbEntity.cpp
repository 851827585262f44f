#include "OdDbEntity.h"

#include <algorithm>

#include "OdDbDatabase.h"
#include "OdError.h"

ODRX_DEFINE_MEMBERS(OdDbEntity, OdDbObject, L"OdDbEntity")

OdDbObjectId OdDbEntity::layerId() const {
    OdDbDatabase* db = database();
    if (!db) return OdDbObjectId();
    OdSmartPtr<OdDbSymbolTable> layers = OdDbSymbolTable::cast(db->getLayerTableId().openObject().get());
    return layers ? layers->getAt(m_layer) : OdDbObjectId();
}

void OdDbEntity::setLayer(const OdString& layerName) {
    if (!OdDbSymbolTableRecord::isValidName(layerName)) throw OdError(eInvalidInput, L"Invalid layer name: \"" + layerName + L"\"");
    if (OdDbDatabase* db = database()) {
        OdSmartPtr<OdDbSymbolTable> layers = OdDbSymbolTable::cast(db->getLayerTableId().openObject().get());
        if (!layers || !layers->has(layerName)) throw OdError(eKeyNotFound, L"The drawing has no layer " + layerName);
    }
    assertWriteEnabled();
    m_layer = layerName;
}

void OdDbEntity::setColor(const OdCmColor& color) {
    assertWriteEnabled();
    m_color = color;
}

void OdDbEntity::setLibraryReferences(const std::vector<OdDbLibraryReference>& references) {
    assertWriteEnabled();
    m_references = references;
}

void OdDbEntity::addLibraryReference(const OdDbLibraryReference& reference) {
    assertWriteEnabled();
    m_references.push_back(reference);
}

unsigned OdDbEntity::removeLibraryReferences(uint32_t objectType, int32_t libraryKind, uint32_t objectId) {
    auto matches = [&](const OdDbLibraryReference& r) {
        return r.objectType == objectType && r.libraryKind == libraryKind && r.objectId == objectId;
    };
    auto count = std::count_if(m_references.begin(), m_references.end(), matches);
    if (count == 0) return 0;
    assertWriteEnabled();
    m_references.erase(std::remove_if(m_references.begin(), m_references.end(), matches), m_references.end());
    return static_cast<unsigned>(count);
}

bool OdDbEntity::references(uint32_t objectType, int32_t libraryKind, uint32_t objectId) const {
    return std::any_of(m_references.begin(), m_references.end(), [&](const OdDbLibraryReference& r) {
        return r.objectType == objectType && r.libraryKind == libraryKind && r.objectId == objectId;
    });
}

bool OdDbEntity::references(uint32_t objectType, int32_t libraryKind, const OdString& objectName) const {
    return std::any_of(m_references.begin(), m_references.end(), [&](const OdDbLibraryReference& r) {
        return r.objectType == objectType && r.libraryKind == libraryKind && r.objectName == objectName;
    });
}

void OdDbEntity::dwgInFields(OdDbDwgFiler& filer) {
    OdDbObject::dwgInFields(filer);
    m_layer = filer.rdString();
    try {
        m_color = OdCmColor::fromString(filer.rdString());
    } catch (const OdError& e) {
        throw OdError(eMalformedRecord, e.description());
    }
    int32_t count = filer.rdInt32();
    if (count < 0) throw OdError(eMalformedRecord, L"Negative reference count in an entity");
    m_references.clear();
    for (int32_t i = 0; i < count; ++i) {
        OdDbLibraryReference r;
        r.objectType = filer.rdUInt32();
        r.libraryKind = filer.rdInt32();
        r.objectName = filer.rdString();
        r.objectId = filer.rdUInt32();
        m_references.push_back(r);
    }
}

void OdDbEntity::dwgOutFields(OdDbDwgFiler& filer) const {
    OdDbObject::dwgOutFields(filer);
    filer.wrString(m_layer);
    filer.wrString(m_color.toString());
    filer.wrInt32(static_cast<int32_t>(m_references.size()));
    for (const OdDbLibraryReference& r : m_references) {
        filer.wrUInt32(r.objectType);
        filer.wrInt32(r.libraryKind);
        filer.wrString(r.objectName);
        filer.wrUInt32(r.objectId);
    }
}
