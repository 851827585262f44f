#include "OdRxClass.h"

#include <map>
#include <mutex>

#include "OdDbCircle.h"
#include "OdDbDictionary.h"
#include "OdDbEntity.h"
#include "OdDbLayerTable.h"
#include "OdDbObject.h"
#include "OdDbPolyline.h"
#include "OdError.h"

namespace {

struct ClassRegistry {
    std::mutex mutex;
    std::map<OdString, const OdRxClass*> byName;
};

void insert(ClassRegistry& registry, const OdRxClass* cls);

// The drawing's own classes are always present, so that any drawing can be read back.
struct BuiltInClassRegistry : ClassRegistry {
    BuiltInClassRegistry() {
        for (const OdRxClass* cls : {OdDbObject::desc(), OdDbProxyObject::desc(), OdDbSymbolTable::desc(),
                                     OdDbSymbolTableRecord::desc(), OdDbLayerTable::desc(),
                                     OdDbLayerTableRecord::desc(), OdDbDictionary::desc(), OdDbEntity::desc(),
                                     OdDbPolyline::desc(), OdDbCircle::desc()})
            insert(*this, cls);
    }
};

void insert(ClassRegistry& registry, const OdRxClass* cls) {
    auto found = registry.byName.find(cls->name());
    if (found != registry.byName.end() && found->second != cls)
        throw OdError(eDuplicateKey, L"Another class is already registered as " + cls->name());
    registry.byName[cls->name()] = cls;
}

ClassRegistry& registry() {
    static BuiltInClassRegistry instance;
    return instance;
}

}  // namespace

OdRxClass::OdRxClass(const OdString& name, const OdRxClass* parent, Constructor constructor)
    : m_name(name), m_parent(parent), m_constructor(constructor) {}

bool OdRxClass::isDerivedFrom(const OdRxClass* other) const {
    for (const OdRxClass* cls = this; cls; cls = cls->m_parent)
        if (cls == other) return true;
    return false;
}

OdDbObject* OdRxClass::create() const {
    if (!m_constructor) throw OdError(eInvalidContext, L"Class " + m_name + L" cannot create objects");
    return m_constructor();
}

void odrxRegisterClass(const OdRxClass* cls) {
    if (!cls) throw OdError(eInvalidInput, L"Cannot register a null class");
    ClassRegistry& r = registry();
    std::lock_guard<std::mutex> lock(r.mutex);
    insert(r, cls);
}

void odrxUnregisterClass(const OdRxClass* cls) {
    if (!cls) return;
    ClassRegistry& r = registry();
    std::lock_guard<std::mutex> lock(r.mutex);
    auto found = r.byName.find(cls->name());
    if (found != r.byName.end() && found->second == cls) r.byName.erase(found);
}

const OdRxClass* odrxFindClass(const OdString& name) {
    ClassRegistry& r = registry();
    std::lock_guard<std::mutex> lock(r.mutex);
    auto found = r.byName.find(name);
    return found == r.byName.end() ? nullptr : found->second;
}

std::vector<const OdRxClass*> odrxRegisteredClasses() {
    ClassRegistry& r = registry();
    std::lock_guard<std::mutex> lock(r.mutex);
    std::vector<const OdRxClass*> classes;
    for (const auto& entry : r.byName) classes.push_back(entry.second);
    return classes;
}
