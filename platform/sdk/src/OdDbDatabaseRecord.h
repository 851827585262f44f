#pragma once
// One stored object of a drawing, private to the drawing's sources.
#include <cstdint>
#include <vector>

#include "OdDbDatabase.h"

struct OdDbDatabase::Record {
    uint64_t handle = 0;
    OdString className;
    uint64_t owner = 0;
    bool erased = false;
    // The live object once it has been opened with its class registered; until then the
    // fields as they were stored.
    OdSmartPtr<OdDbObject> object;
    std::vector<OdDbDwgFiler::Field> fields;
};
