// The profiles dialog driven as a user drives it: opening, selecting in both lists, filtering,
// searching, deleting, copying and the picker modes.
#include <sqlite3.h>
#include <wx/button.h>
#include <wx/msgdlg.h>
#include <wx/testing.h>

#include "app/common/DragDrop.h"

#include <OdStringWx.h>

#include <vl_db/Profiles.h>

#include "ProfilesFixture.h"
#include "app/profiles/ProfileShapes.h"
#include "MessageBoxes.h"

namespace vl_profiles_test {

namespace {

using vl_test::ExpectMessage;

using P = vantlib::ShapeParameter;
using vl_app::DlgProfiles;

// A host that allows some standards; the libraries hold those of them that `present` names.
class StandardsHost : public ProfilesInfo {
public:
    StandardsHost(std::set<OdString> allowed, std::set<OdString> present)
        : m_allowed(std::move(allowed)), m_present(std::move(present)) {}

    void getAllowedProfileStandards(std::set<OdString>& standards) override { standards = m_allowed; }
    bool expandProfileStandards(OdDbDatabase*, std::set<OdString>& standards) override {
        std::set<OdString> found;
        for (const OdString& standard : standards)
            if (m_present.count(standard))
                found.insert(standard);
        standards = found;
        return !found.empty();
    }

private:
    std::set<OdString> m_allowed;
    std::set<OdString> m_present;
};

class ProfilesDialog : public ProfilesFixture {
protected:
    void SetUp() override {
        ProfilesFixture::SetUp();
        ipe200 = profile(central, L"EN 10365", L"IPE", L"200", vantlib::kIShapeProfile,
                         {{P::kOverallDepth, 200}, {P::kOverallWidth, 100}, {P::kWebThickness, 5.6},
                          {P::kFlangeThickness, 8.5}, {P::kFilletRadius, 12}});
        profile(central, L"EN 10365", L"IPE", L"80", vantlib::kIShapeProfile,
                {{P::kOverallDepth, 80}, {P::kOverallWidth, 46}, {P::kWebThickness, 3.8}, {P::kFlangeThickness, 5.2}});
        profile(central, L"EN 10365", L"HEA", L"100", vantlib::kIShapeProfile,
                {{P::kOverallDepth, 96}, {P::kOverallWidth, 100}, {P::kWebThickness, 5}, {P::kFlangeThickness, 8}});
        profile(central, L"EN 10219", L"RHS", L"100x50x4", vantlib::kRectangleHollowProfile,
                {{P::kYDim, 100}, {P::kXDim, 50}, {P::kWallThickness, 4}});
        profile(central, L"AISC", L"W", L"8x10", vantlib::kIShapeProfile,
                {{P::kOverallDepth, 200}, {P::kOverallWidth, 100}, {P::kWebThickness, 4}, {P::kFlangeThickness, 5}});
        profile(central, L"DIN 1025", L"Duct", L"200x100", vantlib::kRectangleProfile,
                {{P::kYDim, 100}, {P::kXDim, 200}}, vantlib::kProfileHvac);
        beam = profile(project, L"EN 10365", L"IPE", L"300", vantlib::kIShapeProfile,
                       {{P::kOverallDepth, 300}, {P::kOverallWidth, 150}, {P::kWebThickness, 7.1},
                        {P::kFlangeThickness, 10.7}});
    }

    QcSmartPtr<vantlib::Profile> ipe200, beam;
};

TEST_F(ProfilesDialog, OpensOnTheFirstCentralRowAndShowsItsShape) {
    open();
    // Sorted by standard, name and size, sizes by their numbers.
    EXPECT_EQ(rows(vl_db::kDbCentral), (std::vector<wxString>{"W 8x10", "Duct 200x100", "RHS 100x50x4", "HEA 100",
                                                               "IPE 80", "IPE 200"}));
    EXPECT_EQ(rows(vl_db::kDbProject), (std::vector<wxString>{"IPE 300"}));
    // Even with project rows, the first central row is the selection.
    EXPECT_EQ(selectedRow(vl_db::kDbCentral), 0);
    EXPECT_EQ(selectedRow(vl_db::kDbProject), -1);
    EXPECT_EQ(dialog->currentDb(), vl_db::kDbCentral);
    EXPECT_EQ(text("ID_SET_STANDARD"), "AISC");
    EXPECT_EQ(text("ID_SET_NAME"), "W");
    EXPECT_EQ(text("ID_SIZE_VALUE"), "8x10");
    EXPECT_EQ(text("ID_TYPE_TXTCTRL"), "Structural Steel");
    EXPECT_EQ(list(vl_db::kDbProject)->GetColumnCount(), 1);

    // The I-shape panel: the fillet radius row only for the profile that has one.
    click(vl_db::kDbCentral, "IPE 200");
    EXPECT_TRUE(control("PANEL_ISHAPE_GRID")->IsShown());
    EXPECT_TRUE(control("PANEL_PREVIEW")->IsShown());
    EXPECT_FALSE(control("PANEL_RECT_HOLLOW_SHAPE_GRID")->IsShown());
    EXPECT_EQ(text("ISHAPE_HEIGHT"), "200");
    EXPECT_EQ(text("ISHAPE_WTHICK"), "5.6");
    EXPECT_FALSE(dynamic_cast<wxTextCtrl*>(control("ISHAPE_HEIGHT"))->IsEditable());
    EXPECT_TRUE(control("ISHAPE_FRADIUS")->IsShown());
    EXPECT_EQ(text("ISHAPE_FRADIUS"), "12");
    click(vl_db::kDbCentral, "IPE 80");
    EXPECT_FALSE(control("ISHAPE_FRADIUS")->IsShown());
    EXPECT_FALSE(control("ISHAPE_FRADIUS_LABEL")->IsShown());

    // A hollow section; selecting there clears the project list and the reverse.
    click(vl_db::kDbProject, "IPE 300");
    EXPECT_EQ(selectedRow(vl_db::kDbCentral), -1);
    EXPECT_EQ(dialog->id(), beam->id());
    click(vl_db::kDbCentral, "RHS 100x50x4");
    EXPECT_EQ(selectedRow(vl_db::kDbProject), -1);
    EXPECT_TRUE(control("PANEL_RECT_HOLLOW_SHAPE_GRID")->IsShown());
    EXPECT_FALSE(control("PANEL_ISHAPE_GRID")->IsShown());
    EXPECT_EQ(text("RECT_H_SHAPE_WALL_THICK"), "4");
    EXPECT_EQ(text("ID_SHAPE_TXTCTRL"), "Hollow rectangle profile");
}

TEST_F(ProfilesDialog, EveryShapePictureIsInTheLayout) {
    for (const vl_app::ShapePanel& panel : vl_app::shapePanels()) {
        if (panel.picture) {
            EXPECT_TRUE(wxXmlResource::Get()->LoadBitmap(panel.picture).IsOk()) << panel.picture;
        }
    }
    // Every parametric shape has its picture; only the custom shape has none.
    for (const vl_app::ShapePanel& panel : vl_app::shapePanels())
        EXPECT_EQ(panel.picture == nullptr, panel.type == vantlib::kCustomProfile) << panel.shortName;
    profile(central, L"EN 10055", L"T", L"50", vantlib::kTShapeProfile, {{P::kDepth, 50}, {P::kFlangeWidth, 50}});
    open();
    click(vl_db::kDbCentral, "Duct 200x100");
    EXPECT_TRUE(control("PANEL_PREVIEW")->IsShown());
    click(vl_db::kDbCentral, "T 50");
    EXPECT_TRUE(control("PANEL_PREVIEW")->IsShown());
    EXPECT_TRUE(control("PANEL_TSHAPE_GRID")->IsShown());
}

// A library written by a later version may hold a shape this build does not know.
TEST_F(ProfilesDialog, AShapeOfALaterVersionIsListedAsGeneric) {
    QcSmartPtr<vantlib::Profile> later = profile(central, L"EN 10365", L"IPE", L"240", vantlib::kIShapeProfile, {});
    sqlite3* file = nullptr;
    ASSERT_EQ(SQLITE_OK, sqlite3_open(vantlib::getImplFilename(central).toUtf8().c_str(), &file));
    const int changed = sqlite3_exec(file,
                                     ("UPDATE lib_profile SET object_type = 35, parameters = '{\"arm\":3}' WHERE id = " +
                                      std::to_string(later->id()))
                                         .c_str(),
                                     nullptr, nullptr, nullptr);
    sqlite3_close(file);
    ASSERT_EQ(SQLITE_OK, changed);
    open();
    click(vl_db::kDbCentral, "IPE 240");
    EXPECT_EQ(text("ID_SHAPE_TXTCTRL"), "Generic");
    EXPECT_EQ(text("ID_SIZE_VALUE"), "240");
    for (const vl_app::ShapePanel& panel : vl_app::shapePanels())
        EXPECT_FALSE(control(panel.panel)->IsShown()) << panel.panel;
    EXPECT_FALSE(control("PANEL_PREVIEW")->IsShown());
    // The shape filter offers only shapes it can name.
    wxChoice* shapes = dialog->getFilter(Kind::kFilterShape);
    for (unsigned i = 0; i < shapes->GetCount(); ++i)
        EXPECT_FALSE(shapes->GetString(i).empty());
}

TEST_F(ProfilesDialog, PreselectionLooksOnlyWhereItIsTold) {
    open(vl_db::kModeManager, vl_db::kDbProject, beam->id());
    EXPECT_EQ(dialog->currentDb(), vl_db::kDbProject);
    EXPECT_EQ(selectedRow(vl_db::kDbProject), 0);
    EXPECT_EQ(text("ID_SIZE_VALUE"), "300");

    // A project preselection of an id only the central library has selects nothing.
    const auto only = profile(central, L"EN 10365", L"IPE", L"400", vantlib::kIShapeProfile, {{P::kOverallDepth, 400}});
    ASSERT_FALSE(project->get<vantlib::Profile>(only->id()));
    open(vl_db::kModeManager, vl_db::kDbProject, only->id());
    EXPECT_TRUE(dialog->selectedNone());
    EXPECT_EQ(selectedRow(vl_db::kDbCentral), -1);
    EXPECT_EQ(selectedRow(vl_db::kDbProject), -1);

    // An unknown library falls back to the central one.
    open(vl_db::kModeManager, vl_db::kDbNone, only->id());
    EXPECT_EQ(dialog->currentDb(), vl_db::kDbCentral);
    EXPECT_EQ(list(vl_db::kDbCentral)->GetItemText(selectedRow(vl_db::kDbCentral)), "IPE 400");
}

TEST_F(ProfilesDialog, FiltersNarrowEachOtherAndComeBackToAll) {
    open();
    EXPECT_EQ(offered(Kind::kFilterType), (std::vector<wxString>{"All", "HVAC", "Structural Steel"}));
    EXPECT_EQ(offered(Kind::kFilterShape), (std::vector<wxString>{"All", "Hollow rectangle", "I-shape", "Rectangle"}));
    EXPECT_EQ(offered(Kind::kFilterStandard),
              (std::vector<wxString>{"All", "AISC", "DIN 1025", "EN 10219", "EN 10365"}));

    choose(Kind::kFilterType, "Structural Steel");
    EXPECT_EQ(rows(vl_db::kDbCentral).size(), 5u);
    // The chosen filter keeps its entries; the others offer only what is listed.
    EXPECT_EQ(offered(Kind::kFilterType), (std::vector<wxString>{"All", "HVAC", "Structural Steel"}));
    EXPECT_EQ(offered(Kind::kFilterShape), (std::vector<wxString>{"All", "Hollow rectangle", "I-shape"}));
    EXPECT_EQ(offered(Kind::kFilterStandard), (std::vector<wxString>{"All", "AISC", "EN 10219", "EN 10365"}));

    choose(Kind::kFilterStandard, "EN 10365");
    choose(Kind::kFilterName, "IPE");
    EXPECT_EQ(rows(vl_db::kDbCentral), (std::vector<wxString>{"IPE 80", "IPE 200"}));
    EXPECT_EQ(rows(vl_db::kDbProject), (std::vector<wxString>{"IPE 300"}));
    EXPECT_EQ(dialog->getFilterLabel(Kind::kFilterType), "Structural Steel");

    // The name filter matches whole names, the search any part of the text.
    search("20");
    EXPECT_EQ(rows(vl_db::kDbCentral), (std::vector<wxString>{"IPE 200"}));
    EXPECT_TRUE(rows(vl_db::kDbProject).empty());
    search("");

    choose(Kind::kFilterStandard, "All");
    choose(Kind::kFilterName, "All");
    choose(Kind::kFilterType, "All");
    EXPECT_EQ(rows(vl_db::kDbCentral).size(), 6u);
    EXPECT_EQ(offered(Kind::kFilterShape).size(), 4u);
    EXPECT_EQ(offered(Kind::kFilterName), (std::vector<wxString>{"All", "Duct", "HEA", "IPE", "RHS", "W"}));

    choose(Kind::kFilterShape, "Hollow rectangle");
    EXPECT_EQ(rows(vl_db::kDbCentral), (std::vector<wxString>{"RHS 100x50x4"}));
    choose(Kind::kFilterShape, "All");
}

TEST_F(ProfilesDialog, TheNextDialogStartsWithTheFiltersOfThePrevious) {
    open();
    choose(Kind::kFilterShape, "I-shape");
    choose(Kind::kFilterName, "HEA");
    open();
    EXPECT_EQ(dialog->getFilterLabel(Kind::kFilterShape), "I-shape");
    EXPECT_EQ(rows(vl_db::kDbCentral), (std::vector<wxString>{"HEA 100"}));

    // A remembered name that no library holds any longer leaves its filter on "All".
    dialog.reset();
    std::set<unsigned> hea;
    std::vector<QcSmartPtr<vantlib::Profile>> all;
    central->get(all);
    for (const auto& stored : all)
        if (stored->name()->name() == L"HEA")
            hea.insert(stored->id());
    central->remove<vantlib::Profile>(hea);
    open();
    EXPECT_EQ(dialog->getFilterLabel(Kind::kFilterName), "All");
    EXPECT_EQ(dialog->getFilterLabel(Kind::kFilterShape), "I-shape");
    EXPECT_EQ(rows(vl_db::kDbCentral).size(), 3u);
    // The filters are remembered for the whole process: leave them as the other tests expect.
    choose(Kind::kFilterShape, "All");
    choose(Kind::kFilterName, "All");
}

TEST_F(ProfilesDialog, HostStandardsRestrictTheLists) {
    StandardsHost some({L"AISC", L"JIS"}, {L"AISC"});
    open(vl_db::kModeManager, vl_db::kDbNone, 0, &some);
    EXPECT_EQ(rows(vl_db::kDbCentral), (std::vector<wxString>{"W 8x10"}));
    EXPECT_TRUE(rows(vl_db::kDbProject).empty());
    // A chosen standard overrides the host's list.
    dialog->getFilter(Kind::kFilterStandard)->Append("EN 10365");
    choose(Kind::kFilterStandard, "EN 10365");
    EXPECT_EQ(rows(vl_db::kDbProject), (std::vector<wxString>{"IPE 300"}));
    choose(Kind::kFilterStandard, "All");

    StandardsHost none({L"JIS"}, {});
    {
        wxTEST_DIALOG(open(vl_db::kModeManager, vl_db::kDbNone, 0, &none),
                      ExpectMessage("Libraries do not contain standards specified in BIMPROFILESTANDARDS."));
    }
    EXPECT_TRUE(rows(vl_db::kDbCentral).empty());
    EXPECT_THROW(dialog->composeProfilesQuery(), vl_app::NoStandardsError);
}

TEST_F(ProfilesDialog, DeletingKeepsProfilesThatEntitiesUse) {
    auto ipe400 = profile(project, L"EN 10365", L"IPE", L"400", vantlib::kIShapeProfile, {{P::kOverallDepth, 400}});
    auto ipe500 = profile(project, L"EN 10365", L"IPE", L"500", vantlib::kIShapeProfile, {{P::kOverallDepth, 500}});
    const OdDbObjectId column = db->addEntity(OdDbEntity::createObject());
    const OdDbObjectId girder = db->addEntity(OdDbEntity::createObject());
    vl_db::setProfileId({column}, vl_db::kDbProject, beam->id(), vl_db::fullProfileName(*beam));
    vl_db::setProfileId({girder}, vl_db::kDbProject, ipe500->id(), vl_db::fullProfileName(*ipe500));
    open();

    click(vl_db::kDbProject, "IPE 300");
    {
        wxTEST_DIALOG(command("TOOL_DEL"),
                      ExpectMessage("Couldn't remove profile 'IPE 300'.\nIt is referenced in one or more entities."));
    }
    EXPECT_TRUE(project->get<vantlib::Profile>(beam->id()));

    for (const char* name : {"IPE 300", "IPE 400", "IPE 500"})
        list(vl_db::kDbProject)
            ->SetItemState(list(vl_db::kDbProject)->FindItem(-1, name), wxLIST_STATE_SELECTED, wxLIST_STATE_SELECTED);
    idle();
    {
        wxTEST_DIALOG(command("TOOL_DEL"),
                      ExpectMessage("Some profiles couldn't be removed.\nThese are referenced in one or more "
                                    "entities:\n    EN 10365 IPE 300\n    EN 10365 IPE 500"));
    }
    EXPECT_FALSE(project->get<vantlib::Profile>(ipe400->id()));
    EXPECT_EQ(rows(vl_db::kDbProject), (std::vector<wxString>{"IPE 300", "IPE 500"}));
}

TEST_F(ProfilesDialog, CopyCommandsOnlyGuard) {
    open();
    click(vl_db::kDbCentral, "IPE 200");
    // Copying is done by dragging; the command copies nothing into a writable library.
    command("TOOL_COPY_TO_PROJ");
    EXPECT_EQ(rows(vl_db::kDbProject).size(), 1u);
    // Nothing selected in the project list: no message.
    command("TOOL_COPY_TO_LIBR");

    dialog.reset();
    central.reset();
    preferences.setDefaultMetricLibrary(vl_test::od(path("nowhere/missing.vlib")));
    vl_db::closeDocLibs(db.get());
    libs = vl_db::docLibs(db.get());
    project = libs->primary(true);
    open();
    // A missing central library leaves its list empty.
    EXPECT_TRUE(rows(vl_db::kDbCentral).empty());
    EXPECT_EQ(rows(vl_db::kDbProject).size(), 1u);
    click(vl_db::kDbProject, "IPE 300");
    {
        wxTEST_DIALOG(command("TOOL_COPY_TO_LIBR"), ExpectMessage("No destination library."));
    }
}

TEST_F(ProfilesDialog, DroppingCentralRowsOnTheProjectListCopiesThem) {
    open();
    click(vl_db::kDbCentral, "RHS 100x50x4");
    auto* target = dynamic_cast<vl_app::VantlibDropTarget*>(list(vl_db::kDbProject)->GetDropTarget());
    ASSERT_TRUE(target);
    vl_app::VantlibDragData drag;
    drag.dbType = vl_db::kDbCentral;
    drag.objectType = vantlib::kConstructionProfile;
    for (const unsigned id : dialog->browser()->selectedIds(vl_db::kDbCentral))
        drag.keys.emplace_back(vantlib::kConstructionProfile, id);
    ASSERT_EQ(drag.keys.size(), 1u);
    EXPECT_EQ(target->acceptance(drag), wxDragCopy);
    EXPECT_EQ(target->copyObjects(drag), wxDragCopy);
    dialog->updateLists(true);
    EXPECT_EQ(rows(vl_db::kDbProject), (std::vector<wxString>{"RHS 100x50x4", "IPE 300"}));
    // The copy keeps its shape and dimensions, and its name and standard come along.
    std::vector<QcSmartPtr<vantlib::Profile>> copied;
    project->get(copied);
    ASSERT_EQ(copied.size(), 2u);
    for (const auto& copy : copied) {
        if (copy->size() != L"100x50x4")
            continue;
        EXPECT_EQ(copy->type(), vantlib::kRectangleHollowProfile);
        EXPECT_DOUBLE_EQ(copy->parameter(P::kWallThickness), 4.0);
        EXPECT_EQ(copy->name()->standard()->name(), L"EN 10219");
    }
    drag.dbType = vl_db::kDbProject;
    EXPECT_EQ(target->acceptance(drag), wxDragNone) << "a list refuses its own rows";
}

TEST_F(ProfilesDialog, PickerModes) {
    open(vl_db::kModeProfilePicker);
    EXPECT_EQ(dialog->FindWindow(wxID_OK)->GetLabel(), "Select");
    EXPECT_TRUE(dialog->FindWindow(XRCID("BTN_UNSELECT"))->IsShown());
    EXPECT_TRUE(dialog->FindWindow(wxID_CANCEL)->IsShown());
    EXPECT_TRUE(enabled(wxID_OK));
    // The button ends the dialog (its modal result is checked through selectProfiles below).
    button(XRCID("BTN_UNSELECT"));
    EXPECT_FALSE(dialog->IsShown());

    open(vl_db::kModePicker);
    EXPECT_FALSE(dialog->FindWindow(XRCID("BTN_UNSELECT"))->IsShown());
    EXPECT_EQ(dialog->FindWindow(wxID_OK)->GetLabel(), "Select");
    // Nothing selected: OK is off in the picker.
    dialog->browser()->deselectAll(vl_db::kDbCentral);
    dialog->setSelectedProfile(vl_db::kDbCentral);
    EXPECT_FALSE(enabled(wxID_OK));

    open(vl_db::kModeManager);
    EXPECT_FALSE(dialog->FindWindow(wxID_CANCEL)->IsShown());
    EXPECT_FALSE(dialog->FindWindow(XRCID("BTN_UNSELECT"))->IsShown());
    EXPECT_NE(dialog->FindWindow(wxID_OK)->GetLabel(), "Select");
    dialog->browser()->deselectAll(vl_db::kDbCentral);
    dialog->setSelectedProfile(vl_db::kDbCentral);
    EXPECT_TRUE(enabled(wxID_OK));
}

TEST_F(ProfilesDialog, SelectProfilesReturnsThePick) {
    class PickIpe200 : public wxExpectModalBase<DlgProfiles, PickIpe200> {
    protected:
        int OnInvoked(DlgProfiles* dlg) const override {
            dlg->InitDialog();
            wxListCtrl* centralList = dlg->list(vl_db::kDbCentral);
            const long row = centralList->FindItem(-1, "IPE 200");
            centralList->SetItemState(row, wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED,
                                      wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED);
            return wxID_OK;
        }
    };
    QcSmartPtr<vantlib::Profile> picked;
    DlgProfiles::EButton answer = DlgProfiles::kButtonCancel;
    wxTEST_DIALOG(answer = DlgProfiles::selectProfiles(0, libs, picked, nullptr, nullptr, vl_db::kDbNone,
                                                       vl_db::kModePicker),
                  PickIpe200());
    EXPECT_EQ(answer, DlgProfiles::kButtonOk);
    ASSERT_TRUE(picked);
    EXPECT_EQ(picked->id(), ipe200->id());

    class Unselect : public wxExpectModalBase<DlgProfiles, Unselect> {
    protected:
        int OnInvoked(DlgProfiles*) const override { return DlgProfiles::kButtonUnselect; }
    };
    wxTEST_DIALOG(answer = DlgProfiles::selectProfiles(0, libs, picked, nullptr, nullptr, vl_db::kDbNone,
                                                       vl_db::kModeProfilePicker),
                  Unselect());
    EXPECT_EQ(answer, DlgProfiles::kButtonUnselect);
}

TEST_F(ProfilesDialog, PickingInTheModelAsksTheHostAndComesBack) {
    class PickingHost : public ProfilesInfo {
    public:
        vl_app::DlgProfiles::CustomProfileInfo getProfileFromGeometricSel(OdDb::UnitsValue unit) override {
            ++calls;
            vl_app::DlgProfiles::CustomProfileInfo info;
            info.unit = unit;
            return info;
        }
        int calls = 0;
    };
    class Answer : public wxExpectModalBase<DlgProfiles, Answer> {
    public:
        explicit Answer(int answer) : m_answer(answer) {}

    protected:
        int OnInvoked(DlgProfiles*) const override { return m_answer; }

    private:
        int m_answer;
    };
    PickingHost host;
    vl_app::DlgProfiles::CustomProfileInfo info;
    info.unit = OdDb::kUnitsInches;
    QcSmartPtr<vantlib::Profile> picked;
    DlgProfiles::EButton answer = DlgProfiles::kButtonOk;
    // The pick button ends the modal run with 1; the dialog comes back after the host's pick.
    wxTEST_DIALOG(answer = DlgProfiles::selectProfiles(0, libs, picked, &info, &host, vl_db::kDbNone,
                                                       vl_db::kModePicker),
                  Answer(1), Answer(wxID_CANCEL));
    EXPECT_EQ(host.calls, 1);
    EXPECT_EQ(info.unit, OdDb::kUnitsMillimeters) << "the host's answer is the caller's custom profile";
    EXPECT_EQ(answer, DlgProfiles::kButtonCancel);
    EXPECT_FALSE(picked);
}

}  // namespace

}  // namespace vl_profiles_test
