#include "OaApp.h"

#include <wx/filename.h>

#include "DrawingVariables.h"
#include "OdStringWx.h"

namespace oa {

OaApp* OaApp::s_app = nullptr;

OdDbDatabase* Document::database() const { return m_app.activeDatabase(); }

void Document::sendStringToExecute(const wxString& text) { m_app.executeCommandLine(text); }

OaApp::OaApp() { s_app = this; }

OaApp::~OaApp() {
    if (s_app == this)
        s_app = nullptr;
}

Document* OaApp::activeDocument() { return activeDatabase() ? &m_document : nullptr; }

bool findReferenceFile(OdString& result, const OdString& fileName, OdDbDatabase* db) {
    if (fileName.isEmpty())
        return false;
    const wxFileName wanted(toWx(fileName));
    auto accept = [&result](wxFileName candidate) {
        candidate.Normalize(wxPATH_NORM_DOTS | wxPATH_NORM_ABSOLUTE | wxPATH_NORM_TILDE);
        if (!candidate.FileExists())
            return false;
        result = toOd(candidate.GetFullPath());
        return true;
    };
    if (wanted.IsAbsolute())
        return accept(wanted);

    std::vector<wxString> folders;
    const OdString drawing = host::drawingFileName(db);
    if (!drawing.isEmpty())
        folders.push_back(wxFileName(toWx(drawing)).GetPath());
    for (const OdString& folder : appPreferences().referenceSearchPathList())
        folders.push_back(toWx(folder));
    for (const wxString& folder : folders) {
        wxFileName candidate(wanted);
        candidate.MakeAbsolute(folder);
        if (accept(candidate))
            return true;
    }
    return false;
}

}  // namespace oa
