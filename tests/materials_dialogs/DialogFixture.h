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

    // Shows `dialog` modally and runs `actions` inside its modal loop. The actions end the
    // dialog; one that is still open afterwards is closed and fails the test.
    static int runModal(wxDialog& dialog, const std::function<void()>& actions) {
        dialog.CallAfter([&dialog, actions] {
            actions();
            if (dialog.IsModal()) {
                ADD_FAILURE() << "the dialog is still open after the scripted actions";
                dialog.EndModal(wxID_ABORT);
            }
        });
        return dialog.ShowModal();
    }

    // Presses a button or a toolbar tool if the user could: false when it is disabled.
    static bool press(wxDialog& dialog, int id) {
        dialog.UpdateWindowUI(wxUPDATE_UI_RECURSE);
        wxWindow* button = dialog.FindWindow(id);
        if (button && !button->IsThisEnabled())
            return false;
        if (!button && !toolEnabled(dialog, id))
            return false;
        wxCommandEvent event(button ? wxEVT_BUTTON : wxEVT_TOOL, id);
        event.SetEventObject(button ? button : &dialog);
        dialog.ProcessWindowEvent(event);
        return true;
    }
    static bool press(wxDialog& dialog, const char* xrcName) { return press(dialog, XRCID(xrcName)); }

    // Whether a tool of any toolbar of the dialog exists and is enabled (after update-UI).
    static bool toolEnabled(wxDialog& dialog, int id) {
        dialog.UpdateWindowUI(wxUPDATE_UI_RECURSE);
        wxWindowList pending = dialog.GetChildren();
        while (!pending.empty()) {
            wxWindow* window = pending.front();
            pending.pop_front();
            if (auto* tools = dynamic_cast<wxToolBar*>(window); tools && tools->FindById(id))
                return tools->GetToolEnabled(id);
            for (wxWindow* child : window->GetChildren())
                pending.push_back(child);
        }
        return false;
    }
    static bool toolEnabled(wxDialog& dialog, const char* xrcName) { return toolEnabled(dialog, XRCID(xrcName)); }



};

}  // namespace vl_mat_test
