#pragma once
// A two-list dialog on a drawing with both libraries, and what a user does to it: selecting and
// activating rows, typing into fields, choosing commands, and letting the dialog's timers run.
#include <memory>

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/listctrl.h>
#include <wx/textentry.h>
#include <wx/utils.h>
#include <wx/xrc/xmlres.h>

#include "DrawingWithLibraries.h"

#include "app/common/ObjectListCtrl.h"

namespace vl_test {

template <class Dialog>
class TwoListDialogFixture : public DrawingWithLibraries {
public:
    // Lets pending events and the reload timer run.
    static void settle() {
        wxTheApp->ProcessPendingEvents();
        wxMilliSleep(100);
        wxTheApp->ProcessPendingEvents();
        wxYield();
    }

protected:
    void TearDown() override {
        dialog.reset();
        DrawingWithLibraries::TearDown();
    }

    wxWindow* control(const char* name) const { return dialog->FindWindow(XRCID(name)); }
    vl_app::ObjectListCtrl* list(vl_db::EDbType type) const { return dialog->list(type); }
    long row(vl_db::EDbType type, const wxString& name) const { return list(type)->FindItem(-1, name); }

    // A click on a row: the list selects it alone, with the events the list sends for that.
    void click(vl_db::EDbType type, const wxString& name) {
        wxListCtrl* target = list(type);
        const long index = row(type, name);
        ASSERT_NE(index, -1) << name;
        for (long other = 0; other < target->GetItemCount(); ++other)
            if (other != index && target->GetItemState(other, wxLIST_STATE_SELECTED))
                target->SetItemState(other, 0, wxLIST_STATE_SELECTED);
        target->SetItemState(index, wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED,
                             wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED);
        settle();
    }

    // A double click or Enter on a row.
    void activate(vl_db::EDbType type, const wxString& name) {
        click(type, name);
        wxListEvent event(wxEVT_LIST_ITEM_ACTIVATED, list(type)->GetId());
        event.SetEventObject(list(type));
        event.m_itemIndex = row(type, name);
        list(type)->GetEventHandler()->ProcessEvent(event);
    }

    // Typing into a text field: its value changes and it sends the text event.
    void type(const char* name, const wxString& text) {
        auto* entry = dynamic_cast<wxTextEntry*>(control(name));
        ASSERT_TRUE(entry) << name;
        entry->SetValue(text);
    }

    // A menu or tool command as the user's choice sends it.
    void command(const char* name) {
        wxCommandEvent event(wxEVT_MENU, XRCID(name));
        event.SetEventObject(dialog.get());
        dialog->GetEventHandler()->ProcessEvent(event);
    }

    // Whether the command is enabled, as its menu item or tool would show it.
    bool enabled(const char* name) {
        wxUpdateUIEvent event(XRCID(name));
        event.SetEventObject(dialog.get());
        dialog->GetEventHandler()->ProcessEvent(event);
        return !event.GetSetEnabled() || event.GetEnabled();
    }

    std::unique_ptr<Dialog> dialog;
};

}  // namespace vl_test
