#pragma once
// Identity of an object inside one open drawing: the drawing plus a handle that stays the same
// across save and open.
#include <cstdint>
#include <functional>

#include "OdSmartPtr.h"

class OdDbDatabase;
class OdDbObject;

namespace OdDb {
enum OpenMode { kNotOpen = -1, kForRead = 0, kForWrite = 1, kForNotify = 2 };
}  // namespace OdDb

class OdDbObjectId {
public:
    OdDbObjectId() = default;
    OdDbObjectId(OdDbDatabase* database, uint64_t handle) : m_db(handle ? database : nullptr), m_handle(database ? handle : 0) {}

    static const OdDbObjectId kNull;

    bool isNull() const { return m_handle == 0; }
    // True while the drawing holds an object under this id (not erased).
    bool isValid() const;
    uint64_t handle() const { return m_handle; }
    OdDbDatabase* database() const { return m_db; }

    // The object, or null for a null id or an erased object. Opening for write lets the
    // object's setters run; opening for read makes them throw OdError(eWasOpenForRead) unless
    // another holder has it open for write.
    OdSmartPtr<OdDbObject> openObject(OdDb::OpenMode mode = OdDb::kForRead, bool openErased = false) const;
    // As openObject, but a null id throws OdError(eNullObjectId) and a missing object
    // OdError(eKeyNotFound).
    OdSmartPtr<OdDbObject> safeOpenObject(OdDb::OpenMode mode = OdDb::kForRead) const;

    friend bool operator==(const OdDbObjectId& a, const OdDbObjectId& b) { return a.m_db == b.m_db && a.m_handle == b.m_handle; }
    friend bool operator!=(const OdDbObjectId& a, const OdDbObjectId& b) { return !(a == b); }
    friend bool operator<(const OdDbObjectId& a, const OdDbObjectId& b) {
        return a.m_db != b.m_db ? std::less<OdDbDatabase*>()(a.m_db, b.m_db) : a.m_handle < b.m_handle;
    }

private:
    OdDbDatabase* m_db = nullptr;
    uint64_t m_handle = 0;
};
