#pragma once
// Name -> object map of a drawing. The named-objects dictionary holds the drawing's custom
// objects by name (for example its library manager object).
#include <utility>
#include <vector>

#include "OdDbObject.h"

class OdDbDictionary : public OdDbObject {
    ODRX_DECLARE_MEMBERS(OdDbDictionary);

    // Null id when the name is absent. Names compare case-sensitively.
    OdDbObjectId getAt(const OdString& name) const;
    bool has(const OdString& name) const { return !getAt(name).isNull(); }
    // Adds the object to the drawing under this dictionary and maps the name to it; an
    // object already in this drawing is just mapped. A name already present is remapped and
    // the object it named is erased. The dictionary must be open for write and be in a
    // drawing (else OdError(eNullObjectId)); an empty name throws OdError(eInvalidInput).
    OdDbObjectId setAt(const OdString& name, const OdSmartPtr<OdDbObject>& object);
    // Removes the name and erases its object; false when the name was absent.
    bool remove(const OdString& name);
    // Entries in the order they were added.
    std::vector<std::pair<OdString, OdDbObjectId>> entries() const { return m_entries; }
    unsigned numEntries() const { return static_cast<unsigned>(m_entries.size()); }

    void dwgInFields(OdDbDwgFiler& filer) override;
    void dwgOutFields(OdDbDwgFiler& filer) const override;

protected:
    OdDbDictionary() = default;

private:
    std::vector<std::pair<OdString, OdDbObjectId>> m_entries;
};
using OdDbDictionaryPtr = OdSmartPtr<OdDbDictionary>;
