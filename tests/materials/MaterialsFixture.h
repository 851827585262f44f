#pragma once
// A drawing with an embedded project library and a central library file in a fresh folder, the
// host's active drawing while a test runs, and helpers that act on the materials dialog as a
// user does: selecting rows, typing, choosing commands.
#include <filesystem>
#include <memory>
#include <string>

#include <unistd.h>

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/listctrl.h>
#include <wx/textctrl.h>
#include <wx/xrc/xmlres.h>

#include <CaApp.h>
#include <OdDbDatabase.h>
#include <OdStringWx.h>

#include <vantlib/vantlib.h>

#include <vl_db/DbPreferencesProvider.h>
#include <vl_db/DocumentLibraries.h>

#include "DrawingWithLibraries.h"

#include "app/materials/DlgMaterials.h"

namespace vl_materials_test {

namespace fs = std::filesystem;

using vl_test::od;

class MaterialsFixture : public vl_test::DrawingWithLibraries {
protected:
    void TearDown() override {
        dialog.reset();
        DrawingWithLibraries::TearDown();
    }

    // A stored material with a predefined section hatch ("" for none) and optionally a class.
    QcSmartPtr<vantlib::Material> material(const std::shared_ptr<vantlib::Library>& library, const wchar_t* name,
                                           const wchar_t* pattern = L"DIAG", const wchar_t* className = L"") {
        auto material = vantlib::Material::create(name);
        if (*pattern) {
            material->section_pattern().set_type(vantlib::Pattern::kPredefined);
            material->section_pattern().set_name(pattern);
        }
        if (*className)
            material->set_type(vantlib::MaterialType::create(className));
        return library->save(material);
    }

    QcSmartPtr<vantlib::Material> stored(const std::shared_ptr<vantlib::Library>& library, const wchar_t* name) {
        return library->get<vantlib::Material>(vantlib::NameKey(name));
    }

    // Opens the dialog the way ShowModal would, without a modal loop.
    vl_app::DlgMaterials& open(vl_db::EMode mode = vl_db::kModeManager, vl_db::EDbType type = vl_db::kDbNone,
                               unsigned id = 0) {
        dialog = std::make_unique<vl_app::DlgMaterials>(nullptr, libs, mode, type, id);
        dialog->Show();
        return *dialog;
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

    // Lets pending events and the reload timer run.
    static void settle() {
        wxTheApp->ProcessPendingEvents();
        wxMilliSleep(100);
        wxTheApp->ProcessPendingEvents();
        wxYield();
    }

    std::unique_ptr<vl_app::DlgMaterials> dialog;

};

}  // namespace vl_materials_test
