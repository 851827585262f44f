#pragma once
// The drawing's record of its libraries: whether the project library is embedded in the
// drawing, the path of an external project library (relative to the drawing), and the tags
// that the library dialogs filter by. One per drawing, in the named-objects dictionary.
#include <OdArray.h>
#include <OdDbObject.h>
#include <OdString.h>

class OdDbDatabase;

namespace vl_db {

class DbVantLibManager : public OdDbObject {
    ODRX_DECLARE_MEMBERS(DbVantLibManager);

    // Key of the object in the drawing's named-objects dictionary.
    static const wchar_t* dictionaryKey();

    // Id of the drawing's manager object; null when the drawing has none.
    static OdDbObjectId getInstance(const OdDbDatabase& db);
    // Id of the drawing's manager object, added to the drawing when it has none.
    static OdDbObjectId getOrCreateInstance(OdDbDatabase& db);
    // The drawing's manager object opened in `mode`; null when it has none and `create` is
    // false. A record read while this class was not registered (a proxy) is turned back into
    // a manager object.
    static OdSmartPtr<DbVantLibManager> open(OdDbDatabase& db, OdDb::OpenMode mode, bool create);

    bool isPrimaryLibraryEmbedded() const { return m_embedded; }
    void setPrimaryLibraryEmbedded(bool embedded);
    // Path of an external project library as stored: relative to the drawing's folder where
    // possible. Empty when the project library is embedded or there is none.
    OdString primaryLibraryPath() const { return m_primaryPath; }
    void setPrimaryLibraryPath(const OdString& path);
    OdArray<OdString> filterTags() const { return m_filterTags; }
    void setFilterTags(const OdArray<OdString>& tags);

    void dwgInFields(OdDbDwgFiler& filer) override;
    void dwgOutFields(OdDbDwgFiler& filer) const override;

protected:
    DbVantLibManager() = default;

private:
    bool m_embedded = false;
    OdString m_primaryPath;
    OdArray<OdString> m_filterTags;
};
using DbVantLibManagerPtr = OdSmartPtr<DbVantLibManager>;

}  // namespace vl_db
