#pragma once
// Construction profiles as the drawing side shows and uses them: their order in lists, their
// names and labels, and the drawing entities that use them.
#include <vector>

#include <OdDbDatabase.h>
#include <OdString.h>

#include <vantlib/Profile.h>

#include <vl_db/Types.h>

namespace vl_db {

using ProfilePtr = QcSmartPtr<vantlib::Profile>;

// Standard, then profile name, then size; names ignore letter case and numbers inside a
// text compare by value ("IPE 80" before "IPE 100", "100x8" before "100x10"). Profiles that
// tie keep their library order.
void sortProfiles(std::vector<ProfilePtr>& profiles);
// "IPE 200": the profile name and the size, or the one of them that is not empty.
OdString fullProfileName(const vantlib::Profile& profile);
OdString fullProfileName(const QcSmartPtr<const vantlib::Profile>& profile);

// English labels (the module translates them): "Structural Steel" and so on; several bits
// are joined by ", "; no bit is "Generic".
OdString getProfileTypeLabel(vantlib::ProfileType type);
// Label of a profile class by its object type: the long form ("I-shape profile") or the short
// form for filters ("I-shape"). Empty for a type that is no profile class.
OdString getProfileShapeLabel(vantlib::ObjectType type, bool shortForm);

// Name under which libraries store the standard of profiles that users define themselves.
OdString getUserDefinedGlobalLabel();

enum EStringVersion : uint32_t {
    kStoredString = 0,     // as libraries store it
    kDisplayedString = 1,  // as lists show it (translated)
};
// The standard name in the other form: only the user-defined standard differs between them.
OdString convertProfileStandardLabel(const OdString& standard, EStringVersion wanted);

// ---- Drawing entities using profiles. An entity refers to a profile of the project or
// central library (`library`) by the profile's id, with the object type
// vantlib::kConstructionProfile whatever the profile's shape.

// The entities of the drawing that use the profile.
std::vector<OdDbObjectId> findProfileId(const OdDbDatabase& database, EDbType library, uint32_t profileId);
// Makes the entities use the profile (replacing the profile they used, of either library).
void setProfileId(const std::vector<OdDbObjectId>& entities, EDbType library, uint32_t profileId,
                  const OdString& fullName);
// Detaches the profile from every entity that uses it; returns those entities.
std::vector<OdDbObjectId> removeProfileId(OdDbDatabase& database, EDbType library, uint32_t profileId);

}  // namespace vl_db
