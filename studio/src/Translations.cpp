#include "Translations.h"

#include <wx/filename.h>
#include <wx/intl.h>
#include <wx/stdpaths.h>
#include <wx/translation.h>

#include "Prompt.h"

void setupTranslations(const wxString& language) {
    const wxString exeDir = wxFileName(wxStandardPaths::Get().GetExecutablePath()).GetPath();
    for (const wxString& candidate : {exeDir + "/res/locale", exeDir + "/../res/locale", exeDir + "/locale"}) {
        wxFileName folder = wxFileName::DirName(candidate);
        folder.Normalize(wxPATH_NORM_DOTS | wxPATH_NORM_ABSOLUTE);
        if (folder.DirExists())
            wxFileTranslationsLoader::AddCatalogLookupPathPrefix(folder.GetPath());
    }
    auto* translations = new wxTranslations;
    if (language.empty())
        translations->SetLanguage(wxLANGUAGE_DEFAULT);
    else
        translations->SetLanguage(language);
    wxTranslations::Set(translations);
    translations->AddStdCatalog();
    const bool found = translations->AddCatalog("vantlib_app");
    if (!found && !language.empty() && !language.StartsWith("en"))
        ca::prompt(wxString::Format(_("No translations for the language \"%s\" were found; texts stay in English."),
                                    language));
}
