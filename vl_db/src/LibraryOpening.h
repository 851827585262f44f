#pragma once
// Opening the library files of drawings: one Library object per file for the whole process,
// so that every drawing that refers to a file sees the same library, and the classification
// of what went wrong when a file cannot be used.
#include <memory>

#include <OdString.h>

#include <vantlib/Library.h>

#include <vl_db/DocumentLibraries.h>

namespace vl_db::detail {

struct OpenResult {
    std::shared_ptr<vantlib::Library> library;
    LibraryFileError error = LibraryFileError::kNone;
};

// Never throws for file problems: they come back as the error. Nothing is written to a file
// that cannot be opened. Read-only and writable opens of a file are kept apart.
OpenResult openShared(const OdString& path, bool readOnly = false);

// Adds the library tables to `path` and keeps the new library for later openShared calls.
std::shared_ptr<vantlib::Library> createShared(const OdString& path, OdDb::UnitsValue unit);

// Absolute, normalised form of a path, used as the identity of a library file.
OdString normalisedPath(const OdString& path);
bool fileExists(const OdString& path);

// Passes a file error to the installed LibraryReactor, if there is one.
void reportFileError(OdDbDatabase* db, const OdString& path, EDbType type, LibraryFileError error);

}  // namespace vl_db::detail
