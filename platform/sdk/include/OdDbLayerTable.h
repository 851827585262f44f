#pragma once
// The drawing's layers. Every drawing has layer "0", which cannot be renamed or erased. A
// renamed layer takes its entities along; a layer that entities are on cannot be erased.
#include "OdCmColor.h"
#include "OdDbSymbolTable.h"

class OdDbLayerTableRecord : public OdDbSymbolTableRecord {
    ODRX_DECLARE_MEMBERS(OdDbLayerTableRecord);

    const OdCmColor& color() const { return m_color; }
    // A layer's colour is a true or index colour; by layer and by block throw
    // OdError(eInvalidInput).
    void setColor(const OdCmColor& color);
    bool isOff() const { return m_off; }
    void setIsOff(bool off);
    bool isFrozen() const { return m_frozen; }
    void setIsFrozen(bool frozen);

    void dwgInFields(OdDbDwgFiler& filer) override;
    void dwgOutFields(OdDbDwgFiler& filer) const override;

protected:
    OdDbLayerTableRecord();

private:
    OdCmColor m_color;
    bool m_off = false;
    bool m_frozen = false;
};
using OdDbLayerTableRecordPtr = OdSmartPtr<OdDbLayerTableRecord>;

class OdDbLayerTable : public OdDbSymbolTable {
    ODRX_DECLARE_MEMBERS(OdDbLayerTable);

protected:
    OdDbLayerTable() = default;
    const OdRxClass* recordClass() const override { return OdDbLayerTableRecord::desc(); }
};
using OdDbLayerTablePtr = OdSmartPtr<OdDbLayerTable>;
