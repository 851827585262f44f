#include "app/VantlibTranslations.h"

#include <wx/translation.h>

#include <OdStringWx.h>

namespace vl_app {

bool VantlibTranslations::translate(OdString& out, const OdString& text) {
    const wxTranslations* translations = wxTranslations::Get();
    if (!translations)
        return false;
    const wxString* translated = translations->GetTranslatedString(toWx(text), wxString(), wxString());
    if (!translated)
        return false;
    out = toOd(*translated);
    return true;
}

}  // namespace vl_app
