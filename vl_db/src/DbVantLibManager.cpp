#include <vl_db/DbVantLibManager.h>

#include <OdDbDatabase.h>
#include <OdDbDictionary.h>
#include <OdError.h>

namespace vl_db {

ODRX_DEFINE_MEMBERS(DbVantLibManager, OdDbObject, L"DbVantLibManager")

namespace {

// Version of the stored fields; a record written by a newer version is refused rather than
// misread.
constexpr int32_t kFieldsVersion = 1;

// The class must be known before a drawing is opened, or its record would come back as a
// proxy; the library registers it when it is loaded.
struct ClassRegistration {
    ClassRegistration() { DbVantLibManager::rxInit(); }
    ~ClassRegistration() { DbVantLibManager::rxUninit(); }
};
const ClassRegistration g_registration;

}  // namespace

const wchar_t* DbVantLibManager::dictionaryKey() {
    return L"VANTLIB_LIBRARY_MANAGER";
}

OdDbObjectId DbVantLibManager::getInstance(const OdDbDatabase& db) {
    const OdDbDictionaryPtr dictionary = db.getNamedObjectsDictionaryId().safeOpenObject(OdDb::kForRead);
    return dictionary->getAt(dictionaryKey());
}

OdDbObjectId DbVantLibManager::getOrCreateInstance(OdDbDatabase& db) {
    const OdDbObjectId existing = getInstance(db);
    if (!existing.isNull())
        return existing;
    const OdDbDictionaryPtr dictionary = db.getNamedObjectsDictionaryId().safeOpenObject(OdDb::kForWrite);
    return dictionary->setAt(dictionaryKey(), createObject());
}

OdSmartPtr<DbVantLibManager> DbVantLibManager::open(OdDbDatabase& db, OdDb::OpenMode mode, bool create) {
    const OdDbObjectId id = create ? getOrCreateInstance(db) : getInstance(db);
    if (id.isNull())
        return OdSmartPtr<DbVantLibManager>();
    const OdDbObjectPtr object = id.safeOpenObject(mode);
    if (const auto manager = cast(object.get()))
        return manager;
    const OdDbProxyObjectPtr proxy = OdDbProxyObject::cast(object.get());
    if (!proxy || proxy->originalClassName() != desc()->name())
        throw OdError_NotThatKindOfClass();
    OdSmartPtr<DbVantLibManager> manager = createObject();
    OdDbDwgFiler filer(&db, proxy->rawFields());
    manager->dwgInFields(filer);
    const OdDbDictionaryPtr dictionary = db.getNamedObjectsDictionaryId().safeOpenObject(OdDb::kForWrite);
    dictionary->setAt(dictionaryKey(), manager);
    if (mode != OdDb::kForWrite)
        manager->downgradeOpen();
    return manager;
}

void DbVantLibManager::setPrimaryLibraryEmbedded(bool embedded) {
    assertWriteEnabled();
    m_embedded = embedded;
}

void DbVantLibManager::setPrimaryLibraryPath(const OdString& path) {
    assertWriteEnabled();
    m_primaryPath = path;
}

void DbVantLibManager::setFilterTags(const OdArray<OdString>& tags) {
    assertWriteEnabled();
    m_filterTags = tags;
}

void DbVantLibManager::dwgInFields(OdDbDwgFiler& filer) {
    OdDbObject::dwgInFields(filer);
    const int32_t version = filer.rdInt32();
    if (version < 1 || version > kFieldsVersion)
        throw OdError(eIncompatibleVersion,
                      OdString::formatted(L"Library manager record of version %d is not supported", int(version)));
    m_embedded = filer.rdBool();
    m_primaryPath = filer.rdString();
    const int32_t tagCount = filer.rdInt32();
    if (tagCount < 0)
        throw OdError(eMalformedRecord);
    m_filterTags.clear();
    for (int32_t i = 0; i < tagCount; ++i)
        m_filterTags.append(filer.rdString());
}

void DbVantLibManager::dwgOutFields(OdDbDwgFiler& filer) const {
    OdDbObject::dwgOutFields(filer);
    filer.wrInt32(kFieldsVersion);
    filer.wrBool(m_embedded);
    filer.wrString(m_primaryPath);
    filer.wrInt32(static_cast<int32_t>(m_filterTags.size()));
    for (const OdString& tag : m_filterTags)
        filer.wrString(tag);
}

}  // namespace vl_db
