#pragma once
#include <string>

#include <wx/string.h>

// Makes the toolkit's own texts follow the language given on the command line, or the user's
// when none is given; called before the toolkit starts.
void chooseToolkitLanguage(const std::string& language);

// Sets up the translation catalogue "vantlib_app" for `language` (the system's language when
// empty), looked up in res/locale next to the executable or in the build tree.
void setupTranslations(const wxString& language);
