#pragma once
// The application object seen as documents: the active document and typed command input.
#include <wx/string.h>

#include "CaApp.h"
#include "CaPreferences.h"

namespace oa {

class OaApp;

class Document {
public:
    explicit Document(OaApp& app) : m_app(app) {}
    OdDbDatabase* database() const;
    void sendStringToExecute(const wxString& text);

private:
    OaApp& m_app;
};

class OaApp : public ca::CaApp {
public:
    OaApp();
    ~OaApp() override;

    // The application object of the process; null before the host has made it.
    static OaApp* s_app;

    // The document of the active drawing, null when no drawing is open.
    Document* activeDocument();
    void sendStringToExecute(const wxString& text) { executeCommandLine(text); }

private:
    Document m_document{*this};
};

// Looks for a referenced file: an existing absolute path as it is; a relative one next to the
// drawing `db`, then in each reference search path (AppPreferences). On success `result` holds
// the absolute path of the file found.
bool findReferenceFile(OdString& result, const OdString& fileName, OdDbDatabase* db);

}  // namespace oa
