#include "Translations.h"

#include <clocale>
#include <cstdlib>

#include <wx/filename.h>
#include <wx/intl.h>
#include <wx/stdpaths.h>
#include <wx/translation.h>

#include "Prompt.h"

void chooseToolkitLanguage(const std::string& language) {
    // The toolkit translates its stock buttons (OK, Cancel, New, ...) by the process's message
    // locale, which nobody else sets: the numeric locale stays "C" for the file formats.
    if (language.empty()) {
        std::setlocale(LC_MESSAGES, "");
        return;
    }
    const wxLanguageInfo* info = wxLocale::FindLanguageInfo(wxString::FromUTF8(language));
    if (!info)
        return;
    // A bare language ("de") has no locale of its own: its main region's locale serves.
    const wxString region = info->CanonicalName.Contains("_") ? info->CanonicalName
                                                               : info->CanonicalName + "_" + info->CanonicalName.Upper();
    for (const wxString& name : {info->GetLocaleName(), region + ".UTF-8", region + ".utf8", region}) {
        if (name.empty())
            continue;
        if (std::setlocale(LC_MESSAGES, name.utf8_str())) {
            ::setenv("LC_MESSAGES", name.utf8_str(), 1);
            break;
        }
    }
    ::setenv("LANGUAGE", info->CanonicalName.utf8_str(), 1);
}

void setupTranslations(const wxString& language) {
    const wxString exeDir = wxFileName(wxStandardPaths::Get().GetExecutablePath()).GetPath();
    for (const wxString& candidate : {exeDir + "/res/locale", exeDir + "/../res/locale", exeDir + "/locale"}) {
        wxFileName folder = wxFileName::DirName(candidate);
        folder.Normalize(wxPATH_NORM_DOTS | wxPATH_NORM_ABSOLUTE);
        if (folder.DirExists())
            wxFileTranslationsLoader::AddCatalogLookupPathPrefix(folder.GetPath());
    }
    auto* translations = new wxTranslations;
    if (language.empty()) {
        translations->SetLanguage(wxLANGUAGE_DEFAULT);
    } else {
        translations->SetLanguage(language);
    }
    wxTranslations::Set(translations);
    translations->AddStdCatalog();
    const bool found = translations->AddCatalog("vantlib_app");
    if (!found && !language.empty() && !language.StartsWith("en"))
        ca::prompt(wxString::Format(_("No translations for the language \"%s\" were found; texts stay in English."),
                                    language));
}
