#include "DrawingCheck.h"

#include <filesystem>

#include <OdDbDatabase.h>

#include <vantlib/Library.h>
#include <vantlib/Profile.h>

#include <vl_db/DbVantLibManager.h>

#include "Kinds.h"

namespace vlib {

namespace {

// The project library as the drawing records it: embedded, or a file relative to the drawing.
std::shared_ptr<const vantlib::Library> projectLibraryOf(OdDbDatabase& db, const std::string& drawingPath) {
    const auto manager = vl_db::DbVantLibManager::open(db, OdDb::kForRead, false);
    if (manager && !manager->isPrimaryLibraryEmbedded() && !manager->primaryLibraryPath().isEmpty()) {
        std::filesystem::path file(manager->primaryLibraryPath().str());
        if (file.is_relative())
            file = std::filesystem::path(drawingPath).parent_path() / file;
        return vantlib::Library::open(OdString(file.wstring()), true);
    }
    if (vantlib::Library::containsLibrary(toOd(drawingPath)))
        return vantlib::Library::open(toOd(drawingPath), true);
    return nullptr;
}

}  // namespace

DrawingCheck checkDrawingReferences(const std::string& drawingPath, const std::string& centralPath) {
    DrawingCheck result;
    const auto db = OdDbDatabase::open(toOd(drawingPath), true);
    const auto project = projectLibraryOf(*db, drawingPath);
    const auto central = centralPath.empty() ? nullptr : vantlib::Library::open(toOd(centralPath), true);

    for (const OdDbObjectId& id : db->entityIds()) {
        const OdDbEntityPtr entity = OdDbEntity::cast(id.openObject().get());
        if (!entity)
            continue;
        for (const OdDbLibraryReference& reference : entity->libraryReferences()) {
            const char* libraryWord = reference.libraryKind == 0 ? "project" : "central";
            const auto& library = reference.libraryKind == 0 ? project : central;
            if (reference.libraryKind == 1 && !central) {
                ++result.uncheckedCentralReferences;
                continue;
            }
            ++result.checkedReferences;
            const Kind* kind = findKind(vantlib::ObjectType(reference.objectType));
            const std::string what = (kind ? std::string(kind->word) : "object of kind " + std::to_string(reference.objectType)) +
                                     " '" + toUtf8(reference.objectName) + "'";
            const std::string where = "entity " + std::to_string(id.handle()) + " uses the " + libraryWord + " " + what;
            if (!library) {
                result.problems.push_back(where + ", but the drawing has no " + libraryWord + " library");
                continue;
            }
            if (reference.objectType == vantlib::kConstructionProfile) {
                // Profiles are referred to by id, whatever their shape.
                if (!library->get<vantlib::Profile>(reference.objectId))
                    result.problems.push_back(where + ", which the library lacks");
                continue;
            }
            if (!kind) {
                result.problems.push_back(where + ", a kind that cannot be checked");
                continue;
            }
            const bool found = reference.objectId != 0 ? !kind->nameOf(*library, reference.objectId).isEmpty()
                                                       : kind->idOf(*library, reference.objectName) != 0;
            if (!found)
                result.problems.push_back(where + ", which the library lacks");
        }
    }
    return result;
}

}  // namespace vlib
