#include <vl_db/LibraryReactor.h>

#include <OdDbDatabase.h>

#include <vantlib/vantlib.h>

#include <vl_db/DocumentLibraries.h>
#include <vl_db/Profiles.h>

#include "LibraryOpening.h"

namespace vl_db {

namespace {

template <class T>
OdString nameOf(const vantlib::Library& library, uint32_t id) {
    const QcSmartPtr<T> object = library.get<T>(id);
    return object ? object->name() : OdString();
}

bool isProfileType(vantlib::ObjectType type) {
    return type >= vantlib::kConstructionProfile && type <= vantlib::kLastProfileShape;
}

// Entities may refer to an object by name only, so the name is needed besides the id.
OdString objectName(const vantlib::Library& library, const vantlib::ObjectKey& key) {
    switch (key.type) {
    case vantlib::kMaterial: return nameOf<vantlib::Material>(library, key.id);
    case vantlib::kComposition: return nameOf<vantlib::Composition>(library, key.id);
    case vantlib::kMaterialType: return nameOf<vantlib::MaterialType>(library, key.id);
    case vantlib::kCompositionType: return nameOf<vantlib::CompositionType>(library, key.id);
    case vantlib::kTag: return nameOf<vantlib::Tag>(library, key.id);
    case vantlib::kLayer: return nameOf<vantlib::Layer>(library, key.id);
    case vantlib::kCustomProperty: return nameOf<vantlib::CustomProperty>(library, key.id);
    default: break;
    }
    if (isProfileType(key.type)) {
        const QcSmartPtr<vantlib::Profile> profile = library.get<vantlib::Profile>(key.id);
        return profile ? fullProfileName(*profile) : OdString();
    }
    return OdString();
}

bool sameLibrary(const std::shared_ptr<const vantlib::Library>& a, const std::shared_ptr<const vantlib::Library>& b) {
    if (!a || !b)
        return false;
    return a == b || detail::normalisedPath(a->filename()) == detail::normalisedPath(b->filename());
}

}  // namespace

LibraryReactor::~LibraryReactor() {
    if (vantlib::LibraryManager::instance()->reactor() == this)
        vantlib::LibraryManager::instance()->setReactor(nullptr);
}

vantlib::RemoveResolution LibraryReactor::onRemove(const std::shared_ptr<const vantlib::Library>& library,
                                                   const vantlib::ObjectKey& key) {
    if (!library)
        return vantlib::kRemoveAllow;
    // Entities refer to a profile of any shape as a construction profile.
    const vantlib::ObjectType referenced = isProfileType(key.type) ? vantlib::kConstructionProfile : key.type;
    OdString name;
    bool nameKnown = false;
    for (DocumentLibraries* libs : openDocLibs()) {
        const OdDbDatabase* db = libs->database();
        for (const EDbType kind : {kDbProject, kDbCentral}) {
            const auto bound = kind == kDbProject ? libs->primary() : libs->secondary();
            if (!sameLibrary(bound, library))
                continue;
            if (!db->entitiesReferencing(referenced, int32_t(kind), key.id).empty())
                return vantlib::kRemoveVeto;
            if (!nameKnown) {
                name = objectName(*library, key);
                nameKnown = true;
            }
            if (!name.isEmpty() && !db->entitiesReferencing(referenced, int32_t(kind), name).empty())
                return vantlib::kRemoveVeto;
        }
    }
    return vantlib::kRemoveAllow;
}

void LibraryReactor::onLibraryFileMissing(OdDbDatabase*, const OdString&, EDbType) {}
void LibraryReactor::onLibraryFileLoadingError(OdDbDatabase*, const OdString&, EDbType) {}
void LibraryReactor::onLibraryFileUnknownError(OdDbDatabase*, const OdString&, EDbType) {}
void LibraryReactor::initBalloonNotificationHandler() {}
void LibraryReactor::unInitBalloonNotificationHandler() {}

LibraryReactor* LibraryReactor::current() {
    return dynamic_cast<LibraryReactor*>(vantlib::LibraryManager::instance()->reactor());
}

}  // namespace vl_db
