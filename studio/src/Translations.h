#pragma once
#include <wx/string.h>

// Sets up the translation catalogue "vantlib_app" for `language` (the system's language when
// empty), looked up in res/locale next to the executable or in the build tree.
void setupTranslations(const wxString& language);
