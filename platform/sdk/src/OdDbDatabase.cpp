#include "OdDbDatabase.h"

#include <algorithm>

#include "OdDbDatabaseRecord.h"
#include "OdError.h"

namespace {

struct KnownVariable {
    const wchar_t* name;
    int minimum;
    int maximum;
};

// Header variables the drawing types and checks; all of them are integers.
const KnownVariable kKnownVariables[] = {
    {L"INSUNITS", 0, OdDb::kUnitsMax}, {L"LUNITS", 1, 5},         {L"LUPREC", 0, 8},
    {L"DIMZIN", 0, 15},                {L"UNITMODE", 0, 1},       {L"INSUNITSSCALING", 0, 255},
    {L"SCALINGUNITS", 0, OdDb::kUnitsMax},
};

OdString variableKey(const OdString& name) {
    OdString key = name;
    key.trimLeft().trimRight().makeUpper();
    return key;
}

const KnownVariable* knownVariable(const OdString& key) {
    for (const KnownVariable& v : kKnownVariables)
        if (key == v.name) return &v;
    return nullptr;
}

}  // namespace

OdDbDatabase::OdDbDatabase(const OdString& path) : m_path(path) {}

OdDbDatabase::~OdDbDatabase() {
    // Objects may outlive the drawing in someone's smart pointer; cut their link to it.
    for (auto& entry : m_records) {
        if (entry.second->object) {
            entry.second->object->m_id = OdDbObjectId();
            entry.second->object->m_ownerId = OdDbObjectId();
        }
    }
}

bool OdDbDatabase::isModified() const { return m_modified; }

void OdDbDatabase::initialiseDefaults(OdDb::UnitsValue insunits) {
    int lunits = OdDb::kDecimal, luprec = 4, dimzin = 0;
    switch (insunits) {
    case OdDb::kUnitsInches:
    case OdDb::kUnitsUSSurveyInch: lunits = OdDb::kArchitectural; luprec = 4; break;
    case OdDb::kUnitsMillimeters: luprec = 1; dimzin = 8; break;
    case OdDb::kUnitsCentimeters: luprec = 2; dimzin = 8; break;
    case OdDb::kUnitsDecimeters: luprec = 3; dimzin = 8; break;
    case OdDb::kUnitsMeters:
    case OdDb::kUnitsKilometers:
    case OdDb::kUnitsMicrons:
    case OdDb::kUnitsNanometers:
    case OdDb::kUnitsAngstroms:
    case OdDb::kUnitsDekameters:
    case OdDb::kUnitsHectometers:
    case OdDb::kUnitsGigameters: luprec = 4; dimzin = 8; break;
    default: break;
    }
    setSysVar(L"INSUNITS", OdTypedValue(static_cast<int>(insunits)));
    setSysVar(L"LUNITS", OdTypedValue(lunits));
    setSysVar(L"LUPREC", OdTypedValue(luprec));
    setSysVar(L"DIMZIN", OdTypedValue(dimzin));
    setSysVar(L"UNITMODE", OdTypedValue(0));
    setSysVar(L"INSUNITSSCALING", OdTypedValue(0));
    setSysVar(L"SCALINGUNITS", OdTypedValue(static_cast<int>(insunits)));

    OdSmartPtr<OdDbLayerTable> layers = OdDbLayerTable::createObject();
    m_layerTableId = addOdDbObject(layers);
    OdSmartPtr<OdDbLayerTableRecord> layerZero = OdDbLayerTableRecord::createObject();
    layerZero->setName(L"0");
    layers->add(layerZero);
    m_namedObjectsId = addOdDbObject(OdDbDictionary::createObject());
}

OdTypedValue OdDbDatabase::getSysVar(const OdString& name) const {
    auto found = m_headerVars.find(variableKey(name));
    if (found == m_headerVars.end()) throw OdError(eKeyNotFound, L"Unknown header variable " + name);
    return found->second;
}

bool OdDbDatabase::hasSysVar(const OdString& name) const { return m_headerVars.count(variableKey(name)) != 0; }

std::vector<OdString> OdDbDatabase::sysVarNames() const {
    std::vector<OdString> names;
    for (const auto& entry : m_headerVars) names.push_back(entry.first);
    return names;
}

void OdDbDatabase::setSysVar(const OdString& name, const OdTypedValue& value) {
    const OdString key = variableKey(name);
    if (key.isEmpty()) throw OdError(eInvalidInput, L"A header variable needs a name");
    if (value.isNone()) throw OdError(eInvalidInput, L"Header variable " + key + L" needs a value");
    OdTypedValue stored = value;
    if (const KnownVariable* known = knownVariable(key)) {
        if (!value.isNumeric()) throw OdError(eInvalidInput, L"Header variable " + key + L" takes an integer");
        int number = value.asInt();
        if (number < known->minimum || number > known->maximum)
            throw OdError(eInvalidInput, OdString::formatted(L"%ls=%d is outside %d-%d", key.c_str(), number, known->minimum, known->maximum));
        stored = OdTypedValue(number);
    }
    m_headerVars[key] = stored;
    m_modified = true;
}

OdDb::UnitsValue OdDbDatabase::getINSUNITS() const { return static_cast<OdDb::UnitsValue>(getSysVar(L"INSUNITS").asInt()); }
int OdDbDatabase::getLUNITS() const { return getSysVar(L"LUNITS").asInt(); }
int OdDbDatabase::getLUPREC() const { return getSysVar(L"LUPREC").asInt(); }
int OdDbDatabase::getDIMZIN() const { return getSysVar(L"DIMZIN").asInt(); }
int OdDbDatabase::getUNITMODE() const { return getSysVar(L"UNITMODE").asInt(); }
int OdDbDatabase::getINSUNITSSCALING() const { return getSysVar(L"INSUNITSSCALING").asInt(); }
OdDb::UnitsValue OdDbDatabase::getScalingUnits() const { return static_cast<OdDb::UnitsValue>(getSysVar(L"SCALINGUNITS").asInt()); }
void OdDbDatabase::setINSUNITS(OdDb::UnitsValue units) { setSysVar(L"INSUNITS", OdTypedValue(static_cast<int>(units))); }
void OdDbDatabase::setLUNITS(int lunits) { setSysVar(L"LUNITS", OdTypedValue(lunits)); }
void OdDbDatabase::setLUPREC(int luprec) { setSysVar(L"LUPREC", OdTypedValue(luprec)); }
void OdDbDatabase::setDIMZIN(int dimzin) { setSysVar(L"DIMZIN", OdTypedValue(dimzin)); }
void OdDbDatabase::setUNITMODE(int unitmode) { setSysVar(L"UNITMODE", OdTypedValue(unitmode)); }
void OdDbDatabase::setINSUNITSSCALING(int scaling) { setSysVar(L"INSUNITSSCALING", OdTypedValue(scaling)); }

OdLengthFormat OdDbDatabase::lengthFormat() const {
    OdLengthFormat format;
    format.lunits = getLUNITS();
    format.luprec = getLUPREC();
    format.dimzin = getDIMZIN();
    format.unitmode = getUNITMODE();
    return format;
}

OdDbObjectId OdDbDatabase::addLayer(const OdString& name, const OdCmColor& color) {
    OdSmartPtr<OdDbLayerTable> layers(m_layerTableId.safeOpenObject(OdDb::kForWrite));
    OdSmartPtr<OdDbLayerTableRecord> layer = OdDbLayerTableRecord::createObject();
    layer->setName(name);
    layer->setColor(color);
    return layers->add(layer);
}

OdDbObjectId OdDbDatabase::addOdDbObject(const OdSmartPtr<OdDbObject>& object, const OdDbObjectId& ownerId) {
    if (!object) throw OdError(eInvalidInput, L"Cannot add a null object to a drawing");
    if (object->database() || !object->objectId().isNull()) throw OdError(eAlreadyInDb);
    auto record = std::make_unique<Record>();
    record->handle = m_nextHandle++;
    record->className = object->isA()->name();
    record->owner = ownerId.database() == this ? ownerId.handle() : 0;
    record->object = object;
    object->m_id = OdDbObjectId(this, record->handle);
    object->m_ownerId = OdDbObjectId(this, record->owner);
    object->m_erased = false;
    OdDbObjectId id = object->m_id;
    m_records[record->handle] = std::move(record);
    m_modified = true;
    return id;
}

OdDbObjectId OdDbDatabase::addEntity(const OdSmartPtr<OdDbEntity>& entity) {
    if (!entity) throw OdError(eInvalidInput, L"Cannot add a null entity");
    if (entity->database()) throw OdError(eAlreadyInDb);
    OdSmartPtr<OdDbSymbolTable> layers(m_layerTableId.safeOpenObject());
    if (!layers->has(entity->layer())) throw OdError(eKeyNotFound, L"The drawing has no layer " + entity->layer());
    OdDbObjectId id = addOdDbObject(entity);
    m_entityOrder.push_back(id.handle());
    return id;
}

void OdDbDatabase::removeEntity(const OdDbObjectId& id) {
    if (id.database() != this || std::find(m_entityOrder.begin(), m_entityOrder.end(), id.handle()) == m_entityOrder.end())
        throw OdError(eKeyNotFound, L"The id is not an entity of this drawing");
    eraseObject(id.handle());
}

std::vector<OdDbObjectId> OdDbDatabase::entityIds() const {
    std::vector<OdDbObjectId> ids;
    for (uint64_t handle : m_entityOrder) ids.emplace_back(const_cast<OdDbDatabase*>(this), handle);
    return ids;
}

std::vector<OdDbObjectId> OdDbDatabase::entitiesReferencing(uint32_t objectType, int32_t libraryKind, uint32_t objectId) const {
    std::vector<OdDbObjectId> found;
    for (const OdDbObjectId& id : entityIds()) {
        OdSmartPtr<OdDbEntity> entity = OdDbEntity::cast(id.openObject().get());
        if (entity && entity->references(objectType, libraryKind, objectId)) found.push_back(id);
    }
    return found;
}

std::vector<OdDbObjectId> OdDbDatabase::entitiesReferencing(uint32_t objectType, int32_t libraryKind, const OdString& objectName) const {
    std::vector<OdDbObjectId> found;
    for (const OdDbObjectId& id : entityIds()) {
        OdSmartPtr<OdDbEntity> entity = OdDbEntity::cast(id.openObject().get());
        if (entity && entity->references(objectType, libraryKind, objectName)) found.push_back(id);
    }
    return found;
}

bool OdDbDatabase::containsObject(uint64_t handle) const {
    auto found = m_records.find(handle);
    return found != m_records.end() && !found->second->erased;
}

OdSmartPtr<OdDbObject> OdDbDatabase::instantiate(Record& record) {
    if (record.object) return record.object;
    const OdDbObjectId id(this, record.handle);
    OdDbDwgFiler filer(this, record.fields);
    const OdRxClass* cls = odrxFindClass(record.className);
    if (!cls) {
        // Not cached: once the class's module registers it, the next open builds the real object.
        OdSmartPtr<OdDbProxyObject> proxy(new OdDbProxyObject());
        proxy->m_originalClassName = record.className;
        proxy->dwgInFields(filer);
        proxy->m_id = id;
        proxy->m_ownerId = OdDbObjectId(this, record.owner);
        proxy->m_erased = record.erased;
        return proxy;
    }
    OdSmartPtr<OdDbObject> object(cls->create());
    object->dwgInFields(filer);
    if (!filer.atEnd())
        throw OdError(eMalformedRecord, OdString::formatted(L"Object %llu (%ls) has %u unread fields", static_cast<unsigned long long>(record.handle),
                                                            record.className.c_str(), unsigned(filer.fields().size() - filer.position())));
    object->m_id = id;
    object->m_ownerId = OdDbObjectId(this, record.owner);
    object->m_erased = record.erased;
    record.object = object;
    record.fields.clear();
    return object;
}

OdSmartPtr<OdDbObject> OdDbDatabase::openObject(uint64_t handle, OdDb::OpenMode mode, bool openErased) {
    auto found = m_records.find(handle);
    if (found == m_records.end() || (found->second->erased && !openErased)) return OdSmartPtr<OdDbObject>();
    const bool cached = static_cast<bool>(found->second->object);
    OdSmartPtr<OdDbObject> object = instantiate(*found->second);
    if (mode == OdDb::kForWrite) {
        object->m_openMode = OdDb::kForWrite;
        m_modified = true;
    } else if (!cached || object->numRefs() <= 2) {
        // Nobody else holds it (the record and this pointer are the only references).
        object->m_openMode = OdDb::kForRead;
    }
    return object;
}

void OdDbDatabase::eraseObject(uint64_t handle) {
    auto found = m_records.find(handle);
    if (found == m_records.end() || found->second->erased) return;
    if (handle == m_layerTableId.handle() || handle == m_namedObjectsId.handle())
        throw OdError(eInvalidInput, L"The layer table and the named-objects dictionary cannot be erased");
    Record& record = *found->second;
    if (OdSmartPtr<OdDbLayerTableRecord> layer = OdDbLayerTableRecord::cast(instantiate(record).get())) {
        if (layer->getName() == L"0") throw OdError(eInvalidInput, L"Layer 0 cannot be erased");
        for (const OdDbObjectId& id : entityIds()) {
            OdSmartPtr<OdDbEntity> entity = OdDbEntity::cast(id.openObject().get());
            if (entity && entity->layer().iCompare(layer->getName()) == 0)
                throw OdError(eInvalidInput, L"Layer " + layer->getName() + L" is in use and cannot be erased");
        }
    }
    record.erased = true;
    if (record.object) record.object->m_erased = true;
    m_entityOrder.erase(std::remove(m_entityOrder.begin(), m_entityOrder.end(), handle), m_entityOrder.end());
    m_modified = true;
}
