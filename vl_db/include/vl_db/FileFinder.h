#pragma once
// Resolves the file name of a library that is not where the drawing says it is. The host
// application installs its own finder (search paths of reference files); without one no
// resolution is attempted.
#include <OdString.h>

class OdDbDatabase;

namespace vl_db {

class FileFinder {
public:
    virtual ~FileFinder();

    // True with `result` set to an existing file when `fileName` could be resolved for `db`.
    virtual bool findFile(OdString& result, const wchar_t* fileName, OdDbDatabase* db) = 0;

    // The installed finder or null. The caller keeps ownership of what it installs and
    // withdraws it (setInstance(nullptr)) before deleting it.
    static FileFinder* instance();
    static void setInstance(FileFinder* finder);
};

}  // namespace vl_db
