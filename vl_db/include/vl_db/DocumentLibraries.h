#pragma once
// The two libraries of a drawing. The project (primary) library is embedded in the drawing's
// file or stored in a library file beside it; the central (secondary) library is the default
// library that the preferences name for the drawing's units. A library that cannot be used is
// null; the reason goes to the reactor (LibraryReactor::onLibraryFile...) and is kept in
// fileError(), and the file is left as it was.
#include <memory>
#include <vector>

#include <OdDbObjectId.h>
#include <OdString.h>

#include <vantlib/Library.h>

#include <vl_db/DbVantLibManager.h>
#include <vl_db/Types.h>

class OdDbDatabase;

namespace vl_db {

// Why a library of a drawing is not available.
enum class LibraryFileError {
    kNone = 0,      // available, or simply not configured
    kMissing,       // the file does not exist (and the file finder did not find it)
    kLoadingError,  // not a library, damaged, or written by a newer version
    kUnknownError,  // anything else that prevented reading it
};

class DocumentLibraries {
public:
    // Binds nothing yet; docLibs() makes and initialises the object of a drawing.
    explicit DocumentLibraries(OdDbDatabase* db);
    ~DocumentLibraries();
    DocumentLibraries(const DocumentLibraries&) = delete;
    DocumentLibraries& operator=(const DocumentLibraries&) = delete;

    OdDbDatabase* database() const { return m_db; }
    // The drawing's file when the libraries were bound.
    const OdString& drawingFile() const { return m_drawingFile; }

    // (Re)binds both libraries from the drawing's manager object and the preferences, and
    // reports files that cannot be used. Libraries still held by callers stay valid.
    void initialize();

    // The project library. With `create`, a drawing without one gets an embedded library in
    // its own file (in the drawing's unit, millimetres when it has none); throws when that
    // fails. The manager object records it; the drawing must be saved to keep the record.
    std::shared_ptr<vantlib::Library> primary(bool create);
    std::shared_ptr<const vantlib::Library> primary() const;
    // The central library.
    std::shared_ptr<vantlib::Library> secondary();
    std::shared_ptr<const vantlib::Library> secondary() const;

    bool isPrimaryEmbedded() const;
    // Makes an existing library file the drawing's project library (stored relative to the
    // drawing) and binds it. Throws the library's file errors, leaving the drawing unchanged.
    std::shared_ptr<vantlib::Library> attachPrimary(const OdString& libraryPath);

    // Absolute file of each library as the drawing refers to it (also when it could not be
    // opened); empty when none is configured. The drawing's own file for an embedded library.
    OdString primaryPath() const { return m_primaryPath; }
    OdString secondaryPath() const { return m_secondaryPath; }
    LibraryFileError fileError(EDbType type) const;

    // The drawing's manager object; null when it has none and `create` is false.
    DbVantLibManagerPtr vantlibManager(OdDb::OpenMode mode, bool create);
    DbVantLibManagerPtr vantlibManager() const;

    template <class T>
    QcSmartPtr<T> getFromPrimary(const vantlib::NameKey& key) const {
        const auto library = primary();
        return library ? library->get<T>(key) : QcSmartPtr<T>();
    }
    template <class T>
    QcSmartPtr<T> getFromSecondary(const vantlib::NameKey& key) const {
        const auto library = secondary();
        return library ? library->get<T>(key) : QcSmartPtr<T>();
    }

private:
    struct Binding {
        std::shared_ptr<vantlib::Library> library;
        LibraryFileError error = LibraryFileError::kNone;
    };
    void bindPrimary();
    void bindSecondary();
    Binding bind(const OdString& path, EDbType type);

    OdDbDatabase* m_db;
    OdString m_drawingFile;
    OdString m_primaryPath;
    OdString m_secondaryPath;
    bool m_primaryEmbedded = false;
    Binding m_primary;
    Binding m_secondary;
};

// The libraries of a drawing, made and initialised on first use; null for a null drawing.
// The object lives until closeDocLibs(db): call it before the drawing is closed (the
// vantlib_db module does so when the host deactivates a drawing). An entry whose drawing file
// differs from the drawing's (a new drawing at the address of a closed one) is made afresh.
DocumentLibraries* docLibs(OdDbDatabase* db);
void closeDocLibs(OdDbDatabase* db);
// Every drawing that has its libraries bound, for code that must consult all open drawings.
std::vector<DocumentLibraries*> openDocLibs();

// The library of a type: 0 project (created only with `create`), 1 central; null otherwise.
std::shared_ptr<vantlib::Library> library(DocumentLibraries* libs, EDbType type, bool create);
// Whether the user may change that library: it exists and is not read-only.
bool writable(DocumentLibraries* libs, EDbType type);
bool writable(const std::shared_ptr<const vantlib::Library>& library);
std::shared_ptr<vantlib::Library> getPrimary(OdDbDatabase* db, bool create);

// The central library file for a drawing in `units` as the preferences name it (absolute;
// relative paths are taken against the roamable root folder); empty when none is set.
OdString centralLibraryPath(int insunits);
// True for the imperial drawing units (inches, feet, miles, yards and their US survey forms).
bool isImperialUnit(int insunits);

}  // namespace vl_db
