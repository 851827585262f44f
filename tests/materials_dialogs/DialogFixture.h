#pragma once
// A drawing with an embedded project library and a central library file in a fresh folder, the
// drawing being the host's active one, plus the means to drive a modal dialog: actions run
// inside its modal loop, and controls are used only while their update-UI state allows.
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include <unistd.h>

#include <gtest/gtest.h>
#include <wx/dialog.h>
#include <wx/msgdlg.h>
#include <wx/testing.h>
#include <wx/textdlg.h>
#include <wx/toolbar.h>
#include <wx/xrc/xmlres.h>

#include <CaApp.h>
#include <OdDbDatabase.h>

#include <vantlib/vantlib.h>

#include <vl_db/DbPreferencesProvider.h>
#include <vl_db/DocumentLibraries.h>

#include "DialogDriving.h"
#include "DrawingWithLibraries.h"

namespace vl_mat_test {

namespace fs = std::filesystem;

using vl_test::od;

// Answers a text prompt (wxGetTextFromUser) as if the user typed `text` and pressed OK.
class TypeText : public wxExpectModalBase<wxTextEntryDialog, TypeText> {
public:
    explicit TypeText(const wxString& text) : m_text(text) {}

protected:
    int OnInvoked(wxTextEntryDialog* dialog) const override {
        dialog->SetValue(m_text);
        return wxID_OK;
    }

private:
    wxString m_text;
};

// Dismisses a message box with OK and keeps its text for the test to check.
class ReadMessage : public wxExpectModalBase<wxMessageDialog, ReadMessage> {
public:
    explicit ReadMessage(wxString* text) : m_text(text) {}

protected:
    int OnInvoked(wxMessageDialog* dialog) const override {
        *m_text = dialog->GetMessage();
        return wxID_OK;
    }

private:
    wxString* m_text;
};

class DialogFixture : public vl_test::DrawingWithLibraries {
protected:
    // Dialog driving shared by the test programs (tests/support).
    static int runModal(wxDialog& dialog, const std::function<void()>& actions) {
        return vl_test::runModal(dialog, actions);
    }
    static bool press(wxDialog& dialog, int id) { return vl_test::press(dialog, id); }
    static bool press(wxDialog& dialog, const char* xrcName) { return vl_test::press(dialog, XRCID(xrcName)); }
    static bool toolEnabled(wxDialog& dialog, int id) { return vl_test::toolEnabled(dialog, id); }
    static bool toolEnabled(wxDialog& dialog, const char* xrcName) { return toolEnabled(dialog, XRCID(xrcName)); }
};

}  // namespace vl_mat_test
