#pragma once
// The text with which the studio describes a drawing's libraries.
#include <wx/string.h>

class OdDbDatabase;

namespace vl_db {

wxString describeLibraries(OdDbDatabase* db);

}  // namespace vl_db
