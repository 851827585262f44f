// The DocumentLibraries of every open drawing, and the free functions over them.
#include <map>
#include <memory>

#include <OdDbDatabase.h>

#include <vl_db/DocumentLibraries.h>

#include "LibraryOpening.h"

namespace vl_db {

namespace {

using Registry = std::map<OdDbDatabase*, std::unique_ptr<DocumentLibraries>>;

Registry& registry() {
    static Registry libraries;
    return libraries;
}

}  // namespace

DocumentLibraries* docLibs(OdDbDatabase* db) {
    if (!db)
        return nullptr;
    auto& libraries = registry();
    const auto it = libraries.find(db);
    if (it != libraries.end()) {
        if (it->second->drawingFile() == detail::normalisedPath(db->fileName()))
            return it->second.get();
        libraries.erase(it);
    }
    auto created = std::make_unique<DocumentLibraries>(db);
    DocumentLibraries* libs = created.get();
    libraries.emplace(db, std::move(created));
    libs->initialize();
    return libs;
}

void closeDocLibs(OdDbDatabase* db) {
    registry().erase(db);
}

std::vector<DocumentLibraries*> openDocLibs() {
    std::vector<DocumentLibraries*> all;
    for (const auto& entry : registry())
        all.push_back(entry.second.get());
    return all;
}

std::shared_ptr<vantlib::Library> library(DocumentLibraries* libs, EDbType type, bool create) {
    if (!libs)
        return nullptr;
    switch (type) {
    case kDbProject: return libs->primary(create);
    case kDbCentral: return libs->secondary();
    default: return nullptr;
    }
}

bool writable(const std::shared_ptr<const vantlib::Library>& library) {
    return library && !library->isReadOnly();
}

bool writable(DocumentLibraries* libs, EDbType type) {
    return writable(library(libs, type, false));
}

std::shared_ptr<vantlib::Library> getPrimary(OdDbDatabase* db, bool create) {
    DocumentLibraries* libs = docLibs(db);
    return libs ? libs->primary(create) : nullptr;
}

}  // namespace vl_db
