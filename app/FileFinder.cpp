#include "app/FileFinder.h"

#include <OaApp.h>
#include <UtFile.h>

namespace vl_app {

bool FileFinder::findFile(OdString& result, const wchar_t* fileName, OdDbDatabase* db) {
    if (!fileName || !db)
        return false;
    const ut::FileName file{OdString(fileName)};
    const OdString fullPath = file.fullPath();
    if (oa::findReferenceFile(result, fullPath, db))
        return true;
    // A library moved together with the project is still found by its name alone.
    const OdString fullName = file.fullName();
    if (fullName == fullPath)
        return false;
    return oa::findReferenceFile(result, fullName, db);
}

}  // namespace vl_app
