#include <vl_db/DocumentLibraries.h>

#include <filesystem>

#include <OdDbDatabase.h>

#include <vantlib/Exception.h>

#include <vl_db/FileFinder.h>

#include "LibraryOpening.h"

namespace vl_db {

namespace {

std::filesystem::path fsPath(const OdString& path) {
    return std::filesystem::path(path.str());
}

// Where an external project library stored relative to the drawing is.
OdString absoluteAgainstDrawing(const OdString& stored, const OdString& drawingFile) {
    const std::filesystem::path path = fsPath(stored);
    if (path.is_absolute())
        return detail::normalisedPath(stored);
    return detail::normalisedPath(OdString((fsPath(drawingFile).parent_path() / path).wstring()));
}

// The form in which the drawing stores an external project library: relative to the drawing's
// folder, so that the pair can be moved together.
OdString relativeToDrawing(const OdString& libraryFile, const OdString& drawingFile) {
    const std::filesystem::path library = fsPath(detail::normalisedPath(libraryFile));
    const std::filesystem::path folder = fsPath(detail::normalisedPath(drawingFile)).parent_path();
    const std::filesystem::path relative = library.lexically_relative(folder);
    return relative.empty() ? OdString(library.wstring()) : OdString(relative.wstring());
}

OdDb::UnitsValue libraryUnitFor(OdDb::UnitsValue drawingUnit) {
    return drawingUnit == OdDb::kUnitsUndefined ? OdDb::kUnitsMillimeters : drawingUnit;
}

}  // namespace

DocumentLibraries::DocumentLibraries(OdDbDatabase* db) : m_db(db) {
    if (!db)
        throw OdError(eInvalidInput, L"No drawing given for its libraries");
}

DocumentLibraries::~DocumentLibraries() = default;

void DocumentLibraries::initialize() {
    m_primary = Binding();
    m_secondary = Binding();
    m_primaryPath.empty();
    m_secondaryPath.empty();
    m_primaryEmbedded = false;
    m_drawingFile = detail::normalisedPath(m_db->fileName());
    bindPrimary();
    bindSecondary();
}

DocumentLibraries::Binding DocumentLibraries::bind(const OdString& path, EDbType type) {
    OdString file = path;
    // A file that moved may still be found by the host's search for reference files.
    if (!detail::fileExists(file)) {
        OdString found;
        if (FileFinder* finder = FileFinder::instance(); finder && finder->findFile(found, file.c_str(), m_db))
            file = found;
    }
    const detail::OpenResult opened = detail::openShared(file);
    Binding binding{opened.library, opened.error};
    if (opened.error != LibraryFileError::kNone)
        detail::reportFileError(m_db, path, type, opened.error);
    return binding;
}

void DocumentLibraries::bindPrimary() {
    const OdString& drawingFile = m_drawingFile;
    const DbVantLibManagerPtr manager = vantlibManager();
    if (manager && !manager->isPrimaryLibraryEmbedded() && !manager->primaryLibraryPath().isEmpty()) {
        m_primaryPath = absoluteAgainstDrawing(manager->primaryLibraryPath(), drawingFile);
        m_primary = bind(m_primaryPath, kDbProject);
        return;
    }
    const bool recordedEmbedded = manager && manager->isPrimaryLibraryEmbedded();
    // A drawing whose file holds library tables has an embedded library even when the record
    // of it was not saved.
    if (!recordedEmbedded && !vantlib::Library::containsLibrary(drawingFile))
        return;
    m_primaryEmbedded = true;
    m_primaryPath = drawingFile;
    if (!vantlib::Library::containsLibrary(drawingFile)) {
        m_primary.error = LibraryFileError::kMissing;
        detail::reportFileError(m_db, drawingFile, kDbProject, LibraryFileError::kMissing);
        return;
    }
    // A drawing opened read-only keeps its embedded library read-only as well.
    const detail::OpenResult opened = detail::openShared(drawingFile, m_db->isReadOnly());
    m_primary = Binding{opened.library, opened.error};
    if (opened.error != LibraryFileError::kNone)
        detail::reportFileError(m_db, drawingFile, kDbProject, opened.error);
}

void DocumentLibraries::bindSecondary() {
    m_secondaryPath = centralLibraryPath(m_db->getINSUNITS());
    if (!m_secondaryPath.isEmpty())
        m_secondary = bind(m_secondaryPath, kDbCentral);
}

std::shared_ptr<vantlib::Library> DocumentLibraries::primary(bool create) {
    if (m_primary.library || !create)
        return m_primary.library;
    // A project library that is configured but cannot be used is not replaced by a new one.
    if (!m_primaryPath.isEmpty())
        return nullptr;
    if (m_db->isReadOnly())
        throw vantlib::ReadOnly(m_db->fileName());
    const OdString drawingFile = detail::normalisedPath(m_db->fileName());
    auto created = detail::createShared(drawingFile, libraryUnitFor(m_db->getINSUNITS()));
    const DbVantLibManagerPtr manager = vantlibManager(OdDb::kForWrite, true);
    manager->setPrimaryLibraryEmbedded(true);
    manager->setPrimaryLibraryPath(OdString());
    m_primary = Binding{created, LibraryFileError::kNone};
    m_primaryPath = drawingFile;
    m_primaryEmbedded = true;
    return created;
}

std::shared_ptr<const vantlib::Library> DocumentLibraries::primary() const {
    return m_primary.library;
}

std::shared_ptr<vantlib::Library> DocumentLibraries::secondary() {
    return m_secondary.library;
}

std::shared_ptr<const vantlib::Library> DocumentLibraries::secondary() const {
    return m_secondary.library;
}

bool DocumentLibraries::isPrimaryEmbedded() const {
    return m_primaryEmbedded;
}

std::shared_ptr<vantlib::Library> DocumentLibraries::attachPrimary(const OdString& libraryPath) {
    const OdString file = detail::normalisedPath(libraryPath);
    // Opened with exceptions, so that the caller learns why a file cannot serve.
    const detail::OpenResult opened = detail::openShared(file);
    const std::shared_ptr<vantlib::Library> attached = opened.library ? opened.library : vantlib::Library::open(file);
    const DbVantLibManagerPtr manager = vantlibManager(OdDb::kForWrite, true);
    manager->setPrimaryLibraryEmbedded(false);
    manager->setPrimaryLibraryPath(relativeToDrawing(file, m_db->fileName()));
    m_primary = Binding{attached, LibraryFileError::kNone};
    m_primaryPath = file;
    m_primaryEmbedded = false;
    return attached;
}

LibraryFileError DocumentLibraries::fileError(EDbType type) const {
    switch (type) {
    case kDbProject: return m_primary.error;
    case kDbCentral: return m_secondary.error;
    default: return LibraryFileError::kNone;
    }
}

DbVantLibManagerPtr DocumentLibraries::vantlibManager(OdDb::OpenMode mode, bool create) {
    return DbVantLibManager::open(*m_db, mode, create);
}

DbVantLibManagerPtr DocumentLibraries::vantlibManager() const {
    return DbVantLibManager::open(*m_db, OdDb::kForRead, false);
}

}  // namespace vl_db
