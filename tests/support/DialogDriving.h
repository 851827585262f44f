#pragma once
// Driving a dialog as a user does: running it modally with scripted actions, pressing its
// buttons and tools only when they are enabled.
#include <functional>

#include <gtest/gtest.h>
#include <wx/dialog.h>
#include <wx/toolbar.h>

namespace vl_test {

bool toolEnabled(wxDialog& dialog, int id);

// Shows `dialog` modally and runs `actions` inside its modal loop. The actions end the
// dialog; one that is still open afterwards is closed and fails the test.
inline int runModal(wxDialog& dialog, const std::function<void()>& actions) {
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
inline bool press(wxDialog& dialog, int id) {
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

// Whether a tool of any toolbar of the dialog exists and is enabled (after update-UI).
inline bool toolEnabled(wxDialog& dialog, int id) {
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

}  // namespace vl_test
