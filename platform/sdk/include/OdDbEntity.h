#pragma once
// Drawing entities: things on a layer that may use library objects (a wall using a
// composition, a beam using a profile, a face using a material).
#include <cstdint>
#include <vector>

#include "OdCmColor.h"
#include "OdDbObject.h"

// One use of a library object by an entity.
struct OdDbLibraryReference {
    uint32_t objectType = 0;   // numeric kind of the library object (4 material, 5 composition, ...)
    int32_t libraryKind = 0;   // 0 project library, 1 central library
    OdString objectName;
    uint32_t objectId = 0;     // identifier inside its library; 0 when only the name is known

    friend bool operator==(const OdDbLibraryReference& a, const OdDbLibraryReference& b) {
        return a.objectType == b.objectType && a.libraryKind == b.libraryKind &&
               a.objectName == b.objectName && a.objectId == b.objectId;
    }
};

class OdDbEntity : public OdDbObject {
    ODRX_DECLARE_MEMBERS(OdDbEntity);

    // Layer by name; a new entity is on layer "0". setLayer throws OdError(eKeyNotFound) when
    // the entity is in a drawing that has no layer of that name.
    const OdString& layer() const { return m_layer; }
    void setLayer(const OdString& layerName);
    OdDbObjectId layerId() const;  // null when not in a drawing or the layer is gone

    const OdCmColor& color() const { return m_color; }
    void setColor(const OdCmColor& color);

    const std::vector<OdDbLibraryReference>& libraryReferences() const { return m_references; }
    void setLibraryReferences(const std::vector<OdDbLibraryReference>& references);
    void addLibraryReference(const OdDbLibraryReference& reference);
    // Removes every reference to the object (type, library kind and id); returns how many.
    unsigned removeLibraryReferences(uint32_t objectType, int32_t libraryKind, uint32_t objectId);
    bool references(uint32_t objectType, int32_t libraryKind, uint32_t objectId) const;
    bool references(uint32_t objectType, int32_t libraryKind, const OdString& objectName) const;

    void dwgInFields(OdDbDwgFiler& filer) override;
    void dwgOutFields(OdDbDwgFiler& filer) const override;

protected:
    OdDbEntity() = default;

private:
    OdString m_layer = L"0";
    OdCmColor m_color;
    std::vector<OdDbLibraryReference> m_references;
};
using OdDbEntityPtr = OdSmartPtr<OdDbEntity>;
