#pragma once
// Base of the reactor that the data module reports library events to. It adds what the drawing
// side knows: which objects the open drawings use (so that they are not removed) and the
// errors of the library files that a drawing refers to. The user interface derives from it
// and installs its reactor with vantlib::LibraryManager::instance()->setReactor.
#include <memory>

#include <OdString.h>

#include <vantlib/Reactor.h>

#include <vl_db/Types.h>

class OdDbDatabase;

namespace vl_db {

class LibraryReactor : public vantlib::Library::Reactor {
public:
    LibraryReactor() = default;
    ~LibraryReactor() override;

    // Refuses when an entity of an open drawing uses the object through the drawing's project
    // or central library (see docLibs).
    vantlib::RemoveResolution onRemove(const std::shared_ptr<const vantlib::Library>& library,
                                       const vantlib::ObjectKey& key) override;

    // The library file of a drawing could not be used; the library stays unavailable and the
    // file untouched. These may be called from a thread other than the main one. The default
    // does nothing: tools read DocumentLibraries::fileError instead.
    virtual void onLibraryFileMissing(OdDbDatabase* db, const OdString& path, EDbType type);
    // Not a library, or written by a newer version.
    virtual void onLibraryFileLoadingError(OdDbDatabase* db, const OdString& path, EDbType type);
    // Any other failure to read the file.
    virtual void onLibraryFileUnknownError(OdDbDatabase* db, const OdString& path, EDbType type);

    // Called when the studio hooks the library manager in and out; the user interface shows
    // the file errors as notifications between the two.
    virtual void initBalloonNotificationHandler();
    virtual void unInitBalloonNotificationHandler();

    // The installed reactor of the data module when it is one of these, else null.
    static LibraryReactor* current();
};

}  // namespace vl_db
