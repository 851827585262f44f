#include "app/LibraryReactorTexts.h"

#include <wx/intl.h>

namespace vl_app {

namespace {

enum class Word { kMaterial, kComposition, kPhysicalAsset, kConstructionProfile, kObject };

// Clash questions call the profiles by shape (18 to 35) construction profiles; the generic
// profile kind 17 is an object there.
Word clashWord(vantlib::ObjectType type) {
    switch (type) {
    case vantlib::kMaterial: return Word::kMaterial;
    case vantlib::kComposition: return Word::kComposition;
    case vantlib::kPhysicalAsset: return Word::kPhysicalAsset;
    default: break;
    }
    if (type >= vantlib::kFirstProfileShape && type <= vantlib::kLastProfileShape)
        return Word::kConstructionProfile;
    return Word::kObject;
}

// Load failures name the generic profile kind 17 a construction profile and the shapes objects.
Word loadFailureWord(vantlib::ObjectType type) {
    switch (type) {
    case vantlib::kMaterial: return Word::kMaterial;
    case vantlib::kComposition: return Word::kComposition;
    case vantlib::kPhysicalAsset: return Word::kPhysicalAsset;
    case vantlib::kConstructionProfile: return Word::kConstructionProfile;
    default: return Word::kObject;
    }
}

}  // namespace

wxString clashAlreadyContainsText(vantlib::ObjectType type, bool project) {
    switch (clashWord(type)) {
    case Word::kConstructionProfile:
        return project ? _("The current project database already contains a construction profile with the name:")
                       : _("The current central database already contains a construction profile with the name:");
    case Word::kComposition:
        return project ? _("The current project database already contains a composition with the name:")
                       : _("The current central database already contains a composition with the name:");
    case Word::kMaterial:
        return project ? _("The current project database already contains a material with the name:")
                       : _("The current central database already contains a material with the name:");
    case Word::kPhysicalAsset:
        return project ? _("The current project database already contains a physical asset with the name:")
                       : _("The current central database already contains a physical asset with the name:");
    case Word::kObject: break;
    }
    return project ? _("The current project database already contains an object with the name:")
                   : _("The current central database already contains an object with the name:");
}

wxString clashKeepText(vantlib::ObjectType type, bool project) {
    switch (clashWord(type)) {
    case Word::kConstructionProfile:
        return project ? _("Keep the existing construction profile in the current project database. The database will remain unchanged.")
                       : _("Keep the existing construction profile in the current central database. The database will remain unchanged.");
    case Word::kComposition:
        return project ? _("Keep the existing composition in the current project database. The database will remain unchanged.")
                       : _("Keep the existing composition in the current central database. The database will remain unchanged.");
    case Word::kMaterial:
        return project ? _("Keep the existing material in the current project database. The database will remain unchanged.")
                       : _("Keep the existing material in the current central database. The database will remain unchanged.");
    case Word::kPhysicalAsset:
        return project ? _("Keep the existing physical asset in the current project database. The database will remain unchanged.")
                       : _("Keep the existing physical asset in the current central database. The database will remain unchanged.");
    case Word::kObject: break;
    }
    return project ? _("Keep the existing object in the current project database. The database will remain unchanged.")
                   : _("Keep the existing object in the current central database. The database will remain unchanged.");
}

wxString clashReplaceText(vantlib::ObjectType type, bool project) {
    switch (clashWord(type)) {
    case Word::kConstructionProfile:
        return project ? _("Replace the construction profile in the current project database with the one from the source database.")
                       : _("Replace the construction profile in the current central database with the one from the source database.");
    case Word::kComposition:
        return project ? _("Replace the composition in the current project database with the one from the source database.")
                       : _("Replace the composition in the current central database with the one from the source database.");
    case Word::kMaterial:
        return project ? _("Replace the material in the current project database with the one from the source database.")
                       : _("Replace the material in the current central database with the one from the source database.");
    case Word::kPhysicalAsset:
        return project ? _("Replace the physical asset in the current project database with the one from the source database.")
                       : _("Replace the physical asset in the current central database with the one from the source database.");
    case Word::kObject: break;
    }
    return project ? _("Replace the object in the current project database with the one from the source database.")
                   : _("Replace the object in the current central database with the one from the source database.");
}

wxString clashRenameText(vantlib::ObjectType type) {
    switch (clashWord(type)) {
    case Word::kConstructionProfile: return _("Rename the construction profile from the source library to:");
    case Word::kComposition: return _("Rename the composition from the source library to:");
    case Word::kMaterial: return _("Rename the material from the source library to:");
    case Word::kPhysicalAsset: return _("Rename the physical asset from the source library to:");
    case Word::kObject: break;
    }
    return _("Rename the object from the source library to:");
}

wxString loadFailedByIdFormat(vantlib::ObjectType type) {
    switch (loadFailureWord(type)) {
    case Word::kMaterial: return _("Failed to load material with ID %u from %ls");
    case Word::kComposition: return _("Failed to load composition with ID %u from %ls");
    case Word::kPhysicalAsset: return _("Failed to load physical asset with ID %u from %ls");
    case Word::kConstructionProfile: return _("Failed to load construction profile with ID %u from %ls");
    case Word::kObject: break;
    }
    return _("Failed to load object with ID %u from %ls");
}

wxString loadFailedByNameFormat(vantlib::ObjectType type) {
    switch (loadFailureWord(type)) {
    case Word::kMaterial: return _("Failed to load material '%ls' from %ls");
    case Word::kComposition: return _("Failed to load composition '%ls' from %ls");
    case Word::kPhysicalAsset: return _("Failed to load physical asset '%ls' from %ls");
    case Word::kConstructionProfile: return _("Failed to load construction profile '%ls' from %ls");
    case Word::kObject: break;
    }
    return _("Failed to load object '%ls' from %ls");
}

}  // namespace vl_app
