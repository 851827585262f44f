#include "LibraryOpening.h"

#include <filesystem>
#include <map>

#include <vantlib/Exception.h>

#include <vl_db/LibraryReactor.h>

namespace vl_db::detail {

namespace {

using LibraryCache = std::map<OdString, std::weak_ptr<vantlib::Library>>;

LibraryCache& cache() {
    static LibraryCache libraries;
    return libraries;
}

std::shared_ptr<vantlib::Library> cached(const OdString& key) {
    auto& libraries = cache();
    const auto it = libraries.find(key);
    if (it == libraries.end())
        return nullptr;
    if (auto library = it->second.lock())
        return library;
    libraries.erase(it);
    return nullptr;
}

}  // namespace

OdString normalisedPath(const OdString& path) {
    if (path.isEmpty())
        return path;
    std::error_code ec;
    std::filesystem::path absolute = std::filesystem::absolute(std::filesystem::path(path.str()), ec);
    if (ec)
        absolute = std::filesystem::path(path.str());
    return OdString(absolute.lexically_normal().wstring());
}

bool fileExists(const OdString& path) {
    std::error_code ec;
    return !path.isEmpty() && std::filesystem::is_regular_file(std::filesystem::path(path.str()), ec);
}

OpenResult openShared(const OdString& path, bool readOnly) {
    const OdString file = normalisedPath(path);
    const OdString key = readOnly ? file + L"|read-only" : file;
    if (auto library = cached(key))
        return {library, LibraryFileError::kNone};
    OpenResult result;
    try {
        result.library = vantlib::Library::open(file, readOnly);
        cache()[key] = result.library;
    } catch (const vantlib::FileMissing&) {
        result.error = LibraryFileError::kMissing;
    } catch (const vantlib::NotALibrary&) {
        result.error = LibraryFileError::kLoadingError;
    } catch (const vantlib::NewerSchema&) {
        result.error = LibraryFileError::kLoadingError;
    } catch (const vantlib::Damaged&) {
        result.error = LibraryFileError::kLoadingError;
    } catch (const std::exception&) {
        result.error = LibraryFileError::kUnknownError;
    }
    return result;
}

std::shared_ptr<vantlib::Library> createShared(const OdString& path, OdDb::UnitsValue unit) {
    const OdString key = normalisedPath(path);
    auto library = vantlib::Library::create(key, unit);
    cache()[key] = library;
    return library;
}

void reportFileError(OdDbDatabase* db, const OdString& path, EDbType type, LibraryFileError error) {
    LibraryReactor* reactor = LibraryReactor::current();
    if (!reactor)
        return;
    switch (error) {
    case LibraryFileError::kNone: break;
    case LibraryFileError::kMissing: reactor->onLibraryFileMissing(db, path, type); break;
    case LibraryFileError::kLoadingError: reactor->onLibraryFileLoadingError(db, path, type); break;
    case LibraryFileError::kUnknownError: reactor->onLibraryFileUnknownError(db, path, type); break;
    }
}

}  // namespace vl_db::detail
