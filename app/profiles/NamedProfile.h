#pragma once
// Profiles named on the studio's command line by their full name ("IPE 200").
#include <wx/string.h>

#include <QcSmartPtr.h>

#include <vantlib/Profile.h>

#include <vl_db/DocumentLibraries.h>
#include <vl_db/Types.h>

namespace vl_app {

// The profile of that full name (letter case ignored), the project library first; null when
// neither library has one. `library` tells where it was found.
QcSmartPtr<vantlib::Profile> findProfileByName(vl_db::DocumentLibraries* libs, const wxString& fullName,
                                               vl_db::EDbType& library);

}  // namespace vl_app
