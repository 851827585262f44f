#pragma once
// Profiles written into the project and central libraries of a fresh drawing, and helpers that
// act on the profiles dialog as a user does: choosing filters, typing a search, selecting rows.
#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/choice.h>
#include <wx/listctrl.h>
#include <wx/srchctrl.h>
#include <wx/xrc/xmlres.h>

#include <vantlib/vantlib.h>

#include "DrawingWithLibraries.h"

#include "app/profiles/DlgProfiles.h"

namespace vl_profiles_test {

using Kind = vl_app::DlgProfiles::EFilterKind;

class ProfilesFixture : public vl_test::DrawingWithLibraries {
protected:
    void TearDown() override {
        dialog.reset();
        DrawingWithLibraries::TearDown();
    }

    // A stored profile of the shape `type` with the given dimensions.
    QcSmartPtr<vantlib::Profile> profile(const std::shared_ptr<vantlib::Library>& library, const wchar_t* standard,
                                         const wchar_t* name, const wchar_t* size, vantlib::ObjectType type,
                                         std::initializer_list<std::pair<vantlib::ShapeParameter, double>> dimensions,
                                         vantlib::ProfileType profileType = vantlib::kProfileStructuralSteel) {
        QcSmartPtr<vantlib::Profile> created = vantlib::ProfileClass::byType(type)->createEmpty();
        // Names and standards are shared by the profiles of a library: stored once, then reused.
        auto owner = library->get<vantlib::ProfileStandard>(vantlib::NameKey(standard));
        if (!owner)
            owner = library->save(vantlib::ProfileStandard::create(standard));
        auto profileName = library->get<vantlib::ProfileName>(vantlib::ProfileNameKey(name, owner->id(), profileType));
        if (!profileName)
            profileName = library->save(vantlib::ProfileName::create(owner, name, profileType));
        created->set_name(profileName);
        created->set_size(size);
        // Libraries keep only sections that can exist: required dimensions the test leaves out
        // take ordinary values.
        using P = vantlib::ShapeParameter;
        static const std::map<P, double> ordinary{
            {P::kOverallDepth, 200}, {P::kOverallWidth, 100}, {P::kTopFlangeWidth, 80}, {P::kWebThickness, 6},
            {P::kFlangeThickness, 10}, {P::kTopFlangeThickness, 8}, {P::kDepth, 120}, {P::kWidth, 60},
            {P::kThickness, 8}, {P::kFlangeWidth, 60}, {P::kGirth, 20}, {P::kWallThickness, 3},
            {P::kHeadDepth2, 40}, {P::kHeadDepth3, 20}, {P::kBaseDepth1, 10}, {P::kBaseDepth2, 30},
            {P::kBaseDepth3, 20}, {P::kOverallHeight, 150}, {P::kHeadWidth, 60}, {P::kBaseWidth2, 120},
            {P::kBaseWidth4, 40}, {P::kRadius, 40}, {P::kSemiAxis1, 40}, {P::kSemiAxis2, 20}, {P::kXDim, 80},
            {P::kYDim, 50}, {P::kBottomXDim, 60}, {P::kTopXDim, 30}};
        for (const vantlib::ShapeParameterInfo& info : created->isA().parameters())
            if (!info.optional && ordinary.count(info.id))
                created->setParameter(info.id, ordinary.at(info.id));
        for (const auto& [parameter, value] : dimensions)
            created->setParameter(parameter, value);
        return library->save(created);
    }

    vl_app::DlgProfiles& open(vl_db::EMode mode = vl_db::kModeManager, vl_db::EDbType type = vl_db::kDbNone,
                              unsigned id = 0, ProfilesInfo* host = nullptr) {
        dialog = std::make_unique<vl_app::DlgProfiles>(nullptr, libs, mode, type, id, nullptr, host);
        dialog->Show();
        idle();
        return *dialog;
    }

    wxWindow* control(const char* name) const { return dialog->FindWindow(XRCID(name)); }
    wxString text(const char* name) const { return dynamic_cast<wxTextEntry*>(control(name))->GetValue(); }
    vl_app::ObjectListCtrl* list(vl_db::EDbType type) const { return dialog->list(type); }

    std::vector<wxString> rows(vl_db::EDbType type) const {
        std::vector<wxString> texts;
        for (long row = 0; row < list(type)->GetItemCount(); ++row)
            texts.push_back(list(type)->GetItemText(row));
        return texts;
    }
    long selectedRow(vl_db::EDbType type) const {
        return list(type)->GetNextItem(-1, wxLIST_NEXT_ALL, wxLIST_STATE_SELECTED);
    }
    // The values a filter offers, "All" first.
    std::vector<wxString> offered(Kind kind) const {
        std::vector<wxString> values;
        for (const wxString& value : dialog->getFilter(kind)->GetStrings())
            values.push_back(value);
        return values;
    }

    // A click on a row: the list selects it alone, with the events the list sends for that.
    void click(vl_db::EDbType type, const wxString& name) {
        wxListCtrl* target = list(type);
        const long index = target->FindItem(-1, name);
        ASSERT_NE(index, -1) << name;
        for (long other = 0; other < target->GetItemCount(); ++other)
            if (other != index && target->GetItemState(other, wxLIST_STATE_SELECTED))
                target->SetItemState(other, 0, wxLIST_STATE_SELECTED);
        target->SetItemState(index, wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED,
                             wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED);
        idle();
    }

    // Choosing a value of a filter's drop-down list.
    void choose(Kind kind, const wxString& label) {
        wxChoice* choice = dialog->getFilter(kind);
        const int index = choice->FindString(label, true);
        ASSERT_NE(index, wxNOT_FOUND) << label;
        choice->SetSelection(index);
        wxCommandEvent event(wxEVT_CHOICE, choice->GetId());
        event.SetEventObject(choice);
        event.SetInt(index);
        event.SetString(label);
        choice->GetEventHandler()->ProcessEvent(event);
        idle();
    }

    void search(const wxString& text) {
        XRCCTRL(*dialog, "ID_PROFILEFILTER", wxSearchCtrl)->SetValue(text);
        idle();
        // The native search field tells of a change again after a pause in typing.
        wxMilliSleep(300);
        idle();
    }

    void command(const char* name) {
        wxCommandEvent event(wxEVT_MENU, XRCID(name));
        event.SetEventObject(dialog.get());
        dialog->GetEventHandler()->ProcessEvent(event);
        idle();
    }

    void button(int id) {
        wxCommandEvent event(wxEVT_BUTTON, id);
        event.SetEventObject(dialog->FindWindow(id));
        dialog->GetEventHandler()->ProcessEvent(event);
    }

    bool enabled(int id) {
        wxUpdateUIEvent event(id);
        event.SetEventObject(dialog.get());
        dialog->GetEventHandler()->ProcessEvent(event);
        return !event.GetSetEnabled() || event.GetEnabled();
    }

    // Lets pending events run and the dialog have its idle time, as the event loop would.
    void idle() {
        wxTheApp->ProcessPendingEvents();
        wxYield();
        if (dialog) {
            wxIdleEvent event;
            dialog->ProcessWindowEvent(event);
        }
    }

    std::unique_ptr<vl_app::DlgProfiles> dialog;
};

}  // namespace vl_profiles_test
