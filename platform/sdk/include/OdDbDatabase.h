#pragma once
// The drawing document: one SQLite file (extension ".vldwg") holding the header variables,
// the layer table, the named-objects dictionary with the modules' custom objects, and the
// entities. The drawing's tables are named drawing_*; the file may also carry an embedded
// project library whose tables (lib_*) and PRAGMA user_version belong to the library module
// and are never touched here.
//
// Everything is read into memory when the drawing is opened; save() writes it back in one
// transaction, so a failed save leaves the file as it was.
#include <cstdint>
#include <map>
#include <memory>
#include <vector>

#include "OdDbDictionary.h"
#include "OdDbEntity.h"
#include "OdDbLayerTable.h"
#include "OdDbObject.h"
#include "OdTypedValue.h"
#include "OdUnits.h"
#include "OdUnitsFormatter.h"

namespace SQLite { class Database; }

class OdDbDatabase {
public:
    static constexpr const wchar_t* kFileExtension = L".vldwg";
    // Version of the drawing tables this build writes and reads.
    static constexpr int kSchemaVersion = 1;

    // Creates a new drawing file with layer "0", an empty named-objects dictionary and header
    // defaults that suit the unit: inches (and US survey inches) use architectural lengths at
    // 1/16", other imperial units and undefined use decimal at 4 places, metric units use
    // decimal with fewer places for smaller units (mm 1, cm 2, dm 3, others 4) and trailing
    // zeros suppressed. Throws OdError(eFileAccessErr) when the file already exists or cannot
    // be written, OdError(eInvalidInput) for a unit outside 0-24.
    static std::unique_ptr<OdDbDatabase> create(const OdString& path, OdDb::UnitsValue insunits);
    // Opens a drawing. A missing file throws OdError(eFileNotFound); a file that is not a
    // drawing throws OdError(eNotADrawing, "<path> is not a drawing"); drawing tables of a
    // newer version throw OdError(eIncompatibleVersion). None of these modify the file. A
    // file that cannot be written is opened read-only.
    static std::unique_ptr<OdDbDatabase> open(const OdString& path, bool readOnly = false);
    // True when the file exists and is a drawing this build can open (never throws).
    static bool isDrawingFile(const OdString& path);

    ~OdDbDatabase();
    OdDbDatabase(const OdDbDatabase&) = delete;
    OdDbDatabase& operator=(const OdDbDatabase&) = delete;

    // Writes the whole drawing in one transaction. Throws OdError(eFileAccessErr) for a
    // read-only drawing or when the write fails (the file then keeps its previous content).
    void save();
    const OdString& fileName() const { return m_path; }
    bool isReadOnly() const { return m_readOnly; }
    // True when something changed since the drawing was opened or last saved.
    bool isModified() const;

    // Header variables by name (case ignored). The known ones are typed and checked: INSUNITS
    // (0-24), LUNITS (1-5), LUPREC (0-8), DIMZIN (0-15), UNITMODE (0-1), INSUNITSSCALING
    // (bit 1: scale inserted content), SCALINGUNITS (0-24, the unit content is scaled from);
    // setting one to a value of the wrong kind or out of range throws OdError(eInvalidInput).
    // Other names may be set freely. Reading an unknown name throws OdError(eKeyNotFound).
    OdTypedValue getSysVar(const OdString& name) const;
    void setSysVar(const OdString& name, const OdTypedValue& value);
    bool hasSysVar(const OdString& name) const;
    std::vector<OdString> sysVarNames() const;

    OdDb::UnitsValue getINSUNITS() const;
    int getLUNITS() const;
    int getLUPREC() const;
    int getDIMZIN() const;
    int getUNITMODE() const;
    int getINSUNITSSCALING() const;
    OdDb::UnitsValue getScalingUnits() const;
    void setINSUNITS(OdDb::UnitsValue units);
    void setLUNITS(int lunits);
    void setLUPREC(int luprec);
    void setDIMZIN(int dimzin);
    void setUNITMODE(int unitmode);
    void setINSUNITSSCALING(int scaling);
    // LUNITS, LUPREC, DIMZIN and UNITMODE together, for OdUnitsFormatter.
    OdLengthFormat lengthFormat() const;
    OdString formatLength(double value) const { return OdUnitsFormatter::formatL(value, lengthFormat()); }

    OdDbObjectId getLayerTableId() const { return m_layerTableId; }
    OdDbObjectId getNamedObjectsDictionaryId() const { return m_namedObjectsId; }
    // Convenience over the layer table: adds a layer (throws as OdDbSymbolTable::add).
    OdDbObjectId addLayer(const OdString& name, const OdCmColor& color = OdCmColor::fromIndex(7));

    // Adds an object that is not in a drawing yet; returns its new id. Throws
    // OdError(eAlreadyInDb) when it is in a drawing, OdError(eInvalidInput) for null.
    OdDbObjectId addOdDbObject(const OdSmartPtr<OdDbObject>& object, const OdDbObjectId& ownerId = OdDbObjectId());

    // Entities in the order they were added.
    OdDbObjectId addEntity(const OdSmartPtr<OdDbEntity>& entity);
    // Erases an entity; throws OdError(eKeyNotFound) when the id is not an entity here.
    void removeEntity(const OdDbObjectId& id);
    std::vector<OdDbObjectId> entityIds() const;
    // Entities that use a library object, by identifier (type, library kind, id) or by name.
    std::vector<OdDbObjectId> entitiesReferencing(uint32_t objectType, int32_t libraryKind, uint32_t objectId) const;
    std::vector<OdDbObjectId> entitiesReferencing(uint32_t objectType, int32_t libraryKind, const OdString& objectName) const;

    // Object behind an id of this drawing (as OdDbObjectId::openObject).
    OdSmartPtr<OdDbObject> openObject(uint64_t handle, OdDb::OpenMode mode, bool openErased = false);
    bool containsObject(uint64_t handle) const;

private:
    struct Record;
    explicit OdDbDatabase(const OdString& path);

    friend class OdDbObject;
    friend class OdDbObjectId;

    void loadFromFile();
    void writeAll(SQLite::Database& connection);
    void initialiseDefaults(OdDb::UnitsValue insunits);
    OdSmartPtr<OdDbObject> instantiate(Record& record);
    void eraseObject(uint64_t handle);
    void markModified() { m_modified = true; }

    OdString m_path;
    bool m_readOnly = false;
    bool m_modified = false;
    uint64_t m_nextHandle = 1;
    std::map<OdString, OdTypedValue> m_headerVars;  // keys upper case
    std::map<uint64_t, std::unique_ptr<Record>> m_records;
    std::vector<uint64_t> m_entityOrder;
    OdDbObjectId m_layerTableId;
    OdDbObjectId m_namedObjectsId;
};
