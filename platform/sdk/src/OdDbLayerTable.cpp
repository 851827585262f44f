#include "OdDbLayerTable.h"

#include "OdError.h"

ODRX_DEFINE_MEMBERS(OdDbLayerTableRecord, OdDbSymbolTableRecord, L"OdDbLayerTableRecord")
ODRX_DEFINE_MEMBERS(OdDbLayerTable, OdDbSymbolTable, L"OdDbLayerTable")

OdDbLayerTableRecord::OdDbLayerTableRecord() : m_color(OdCmColor::fromIndex(OdCmEntityColor::kACIWhite)) {}

void OdDbLayerTableRecord::setColor(const OdCmColor& color) {
    if (!color.isByColor() && !color.isByACI())
        throw OdError(eInvalidInput, L"A layer's colour must be a true or index colour, not " + color.toString());
    assertWriteEnabled();
    m_color = color;
}

void OdDbLayerTableRecord::setIsOff(bool off) {
    assertWriteEnabled();
    m_off = off;
}

void OdDbLayerTableRecord::setIsFrozen(bool frozen) {
    assertWriteEnabled();
    m_frozen = frozen;
}

void OdDbLayerTableRecord::dwgInFields(OdDbDwgFiler& filer) {
    OdDbSymbolTableRecord::dwgInFields(filer);
    try {
        m_color = OdCmColor::fromString(filer.rdString());
    } catch (const OdError& e) {
        throw OdError(eMalformedRecord, e.description());
    }
    m_off = filer.rdBool();
    m_frozen = filer.rdBool();
}

void OdDbLayerTableRecord::dwgOutFields(OdDbDwgFiler& filer) const {
    OdDbSymbolTableRecord::dwgOutFields(filer);
    filer.wrString(m_color.toString());
    filer.wrBool(m_off);
    filer.wrBool(m_frozen);
}
