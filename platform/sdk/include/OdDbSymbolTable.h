#pragma once
// Named tables of a drawing (the layer table is one). Records keep the order in which they
// were added; names are unique ignoring case.
#include <memory>
#include <vector>

#include "OdDbObject.h"

class OdDbSymbolTableRecord : public OdDbObject {
    ODRX_DECLARE_MEMBERS(OdDbSymbolTableRecord);

    const OdString& getName() const { return m_name; }
    // Throws OdError(eInvalidInput) for an empty name or one with characters a name may not
    // hold (<>/\":;?*|,=`), OdError(eDuplicateKey) when the owning table already has it.
    void setName(const OdString& name);

    void dwgInFields(OdDbDwgFiler& filer) override;
    void dwgOutFields(OdDbDwgFiler& filer) const override;

    static bool isValidName(const OdString& name);

protected:
    OdDbSymbolTableRecord() = default;

private:
    OdString m_name;
};
using OdDbSymbolTableRecordPtr = OdSmartPtr<OdDbSymbolTableRecord>;

class OdDbSymbolTableIterator {
public:
    explicit OdDbSymbolTableIterator(std::vector<OdDbObjectId> ids) : m_ids(std::move(ids)) {}
    void start() { m_index = 0; }
    bool done() const { return m_index >= m_ids.size(); }
    void step() { ++m_index; }
    OdDbObjectId getRecordId() const;  // throws OdError_InvalidIndex when done()
    OdSmartPtr<OdDbSymbolTableRecord> getRecord(OdDb::OpenMode mode = OdDb::kForRead) const;

private:
    std::vector<OdDbObjectId> m_ids;
    size_t m_index = 0;
};
using OdDbSymbolTableIteratorPtr = std::unique_ptr<OdDbSymbolTableIterator>;

class OdDbSymbolTable : public OdDbObject {
    ODRX_DECLARE_MEMBERS(OdDbSymbolTable);

    // Id of the record with this name (case ignored), null when there is none.
    OdDbObjectId getAt(const OdString& name) const;
    bool has(const OdString& name) const { return !getAt(name).isNull(); }
    // Adds the record to the table and to the drawing; the table must be open for write.
    // Throws OdError(eDuplicateKey) for a name already present, OdError(eAlreadyInDb) for a
    // record that belongs to a drawing, OdError(eInvalidInput) for an invalid name.
    OdDbObjectId add(const OdSmartPtr<OdDbSymbolTableRecord>& record);
    // Records in table order (the order they were added).
    OdDbSymbolTableIteratorPtr newIterator() const;
    std::vector<OdDbObjectId> recordIds() const;
    unsigned numRecords() const;

    void dwgInFields(OdDbDwgFiler& filer) override;
    void dwgOutFields(OdDbDwgFiler& filer) const override;

protected:
    OdDbSymbolTable() = default;
    // Which records this table accepts; the layer table takes layers only.
    virtual const OdRxClass* recordClass() const { return OdDbSymbolTableRecord::desc(); }

private:
    friend class OdDbSymbolTableRecord;
    friend class OdDbDatabase;
    std::vector<OdDbObjectId> m_records;
};
using OdDbSymbolTablePtr = OdSmartPtr<OdDbSymbolTable>;
