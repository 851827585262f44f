// Creating and editing profiles in the profiles dialog as a user does, with the studio's own
// profile services: typing a new profile, saving it, the questions before a duplicate is
// stored, changing a stored profile and the drawing entities that use it.
#include <algorithm>

#include <wx/choice.h>
#include <wx/modalhook.h>
#include <wx/msgdlg.h>
#include <wx/testing.h>
#include <wx/textctrl.h>

#include <DlgQuestionTesting.h>
#include <OdStringWx.h>
#include <QcPropertyGrid.h>
#include <StudioProfilesInfo.h>

#include <vl_db/Profiles.h>

#include "MessageBoxes.h"
#include "ProfilesFixture.h"
#include "app/profiles/DlgSaveProfile.h"

namespace vl_profiles_test {

namespace {

using P = vantlib::ShapeParameter;
using vl_app::DlgProfiles;
using vl_app::DlgSaveProfile;

// Fails the test for any modal dialog shown while it lives, and closes that dialog at once.
class NoDialogExpected : public wxModalDialogHook {
public:
    NoDialogExpected() { Register(); }
    ~NoDialogExpected() override { Unregister(); }

protected:
    int Enter(wxDialog* dialog) override {
        wxString text = dialog->GetTitle();
        if (auto* box = dynamic_cast<wxMessageDialog*>(dialog))
            text = box->GetMessage();
        ADD_FAILURE() << "unexpected dialog: " << text.utf8_str();
        return wxID_CANCEL;
    }
    void Exit(wxDialog*) override {}
};

// Answers the save question with `answer`, keeping its text for the test.
class AnswerSaveQuestion : public wxExpectModalBase<DlgSaveProfile, AnswerSaveQuestion> {
public:
    AnswerSaveQuestion(int answer, wxString& question, bool& offeredSave)
        : m_answer(answer), m_question(question), m_offeredSave(offeredSave) {}

protected:
    int OnInvoked(DlgSaveProfile* dialog) const override {
        dialog->InitDialog();
        m_question = dialog->question();
        m_offeredSave = dialog->FindWindow(wxID_SAVE)->IsShown() && dialog->FindWindow(wxID_CANCEL)->IsShown() &&
                        !dialog->FindWindow(wxID_OK)->IsShown();
        return m_answer;
    }

private:
    int m_answer;
    wxString& m_question;
    bool& m_offeredSave;
};

class ProfileEditing : public ProfilesFixture {
protected:
    void SetUp() override {
        ProfilesFixture::SetUp();
        beam = profile(project, L"EN 10365", L"IPE", L"300", vantlib::kIShapeProfile,
                       {{P::kOverallDepth, 300}, {P::kOverallWidth, 150}, {P::kWebThickness, 7.1},
                        {P::kFlangeThickness, 10.7}});
        ipe200 = profile(central, L"EN 10365", L"IPE", L"200", vantlib::kIShapeProfile,
                         {{P::kOverallDepth, 200}, {P::kOverallWidth, 100}, {P::kWebThickness, 5.6},
                          {P::kFlangeThickness, 8.5}, {P::kFilletRadius, 12}});
    }

    void type(const char* name, const wxString& value) {
        auto* field = dynamic_cast<wxTextCtrl*>(control(name));
        ASSERT_TRUE(field) << name;
        ASSERT_TRUE(field->IsEditable()) << name;
        field->SetValue(value);
    }

    void pick(const char* name, const wxString& label) {
        auto* choice = dynamic_cast<wxChoice*>(control(name));
        ASSERT_TRUE(choice->IsShown()) << name;
        ASSERT_TRUE(choice->SetStringSelection(label)) << label;
        wxCommandEvent event(wxEVT_CHOICE, choice->GetId());
        event.SetEventObject(choice);
        event.SetInt(choice->GetSelection());
        event.SetString(label);
        choice->GetEventHandler()->ProcessEvent(event);
        idle();
    }

    // New, then the type, name, size and shape of a rectangle with its two dimensions.
    void typeNewRectangle(const wxString& name, const wxString& size, const wxString& y, const wxString& x) {
        button(wxID_NEW);
        idle();
        ASSERT_TRUE(dialog->isCreating());
        pick("ID_SET_TYPE", "Generic");
        type("ID_SET_NAME", name);
        type("ID_SIZE_VALUE", size);
        pick("ID_SET_SHAPE_CHOICE", "Rectangle profile");
        type("RECT_SHAPE_Y_DIM", y);
        type("RECT_SHAPE_X_DIM", x);
    }

    void describe(const wxString& text) {
        auto* grid = dynamic_cast<wxg::QcPropertyGrid*>(control("PANEL_PROPGRID")->GetChildren().front());
        ASSERT_TRUE(grid);
        grid->SetPropertyValue("description", text);
    }

    void save() {
        button(wxID_SAVE);
        idle();
    }

    // The stored profiles of the user-defined standard in the project library.
    std::vector<QcSmartPtr<vantlib::Profile>> userDefined() const {
        std::vector<QcSmartPtr<vantlib::Profile>> all, found;
        project->get(all);
        for (const auto& stored : all)
            if (stored->name() && stored->name()->standard() &&
                stored->name()->standard()->name() == vl_db::getUserDefinedGlobalLabel())
                found.push_back(stored);
        return found;
    }

    StudioProfilesInfo host;
    QcSmartPtr<vantlib::Profile> beam, ipe200;
};

TEST_F(ProfileEditing, ANewProfileIsStoredInTheUserStandardWithoutAQuestionAndSelected) {
    // Whatever standard the filter shows, a new profile is user-defined.
    open(vl_db::kModeManager, vl_db::kDbNone, 0, &host);
    choose(Kind::kFilterStandard, "EN 10365");
    typeNewRectangle("Plate", "200x10", "10", "-5");
    // The second dimension was typed negative: it is stored as 0, which makes no section.
    wxString error;
    wxTEST_DIALOG(save(), vl_test::CaptureMessage(error));
    EXPECT_NE(error.find("cannot be saved"), wxString::npos) << error;
    EXPECT_TRUE(userDefined().empty());
    EXPECT_FALSE(project->get<vantlib::ProfileStandard>(vantlib::NameKey(vl_db::getUserDefinedGlobalLabel())))
        << "a refused profile leaves no standard or name behind";
    EXPECT_TRUE(dialog->isCreating());
    {
        NoDialogExpected none;
        type("RECT_SHAPE_X_DIM", "200");
        save();
    }
    const auto stored = userDefined();
    ASSERT_EQ(stored.size(), 1u);
    EXPECT_EQ(stored[0]->type(), vantlib::kRectangleProfile);
    EXPECT_EQ(stored[0]->name()->name(), OdString(L"Plate"));
    EXPECT_EQ(stored[0]->name()->type(), vantlib::kProfileGeneric);
    EXPECT_EQ(stored[0]->size(), OdString(L"200x10"));
    EXPECT_EQ(stored[0]->parameter(P::kYDim), 10);
    EXPECT_EQ(stored[0]->parameter(P::kXDim), 200);
    // The standard filter hid it: the filters went back to All and it is the selection.
    EXPECT_FALSE(dialog->isCreating());
    ASSERT_TRUE(dialog->selectedProfile());
    EXPECT_EQ(dialog->selectedProfile()->id(), stored[0]->id());
    EXPECT_EQ(list(vl_db::kDbProject)->GetItemText(selectedRow(vl_db::kDbProject)), "Plate 200x10");
    const auto standards = offered(Kind::kFilterStandard);
    EXPECT_NE(std::find(standards.begin(), standards.end(), "user defined"), standards.end());
}

TEST_F(ProfileEditing, TheSameProfileIsNeverStoredTwiceAndTheSameGeometryIsAskedFor) {
    open(vl_db::kModeManager, vl_db::kDbNone, 0, &host);
    {
        NoDialogExpected none;
        typeNewRectangle("Plate", "200x10", "10", "200");
        save();
    }
    ASSERT_EQ(userDefined().size(), 1u);
    const unsigned first = userDefined()[0]->id();

    // Identical: OK alone, nothing stored, the stored one selected.
    wxString question;
    bool offeredSave = true;
    typeNewRectangle("Plate", "200x10", "10", "200");
    wxTEST_DIALOG(save(), AnswerSaveQuestion(wxID_OK, question, offeredSave));
    EXPECT_EQ(question, "Profile \"Plate 200x10\" already exists in profile library");
    EXPECT_FALSE(offeredSave);
    EXPECT_EQ(userDefined().size(), 1u);
    EXPECT_EQ(dialog->id(), first);
    EXPECT_FALSE(dialog->isCreating());

    // Only the description differs: the same geometry is asked for; Cancel stores nothing.
    typeNewRectangle("Plate", "200x10", "10", "200");
    describe("galvanised");
    wxTEST_DIALOG(save(), AnswerSaveQuestion(wxID_CANCEL, question, offeredSave));
    EXPECT_EQ(question, "The profile library already contains profile \"Plate 200x10\" with the same geometry. Do "
                        "you want to save it anyway?");
    EXPECT_TRUE(offeredSave);
    EXPECT_EQ(userDefined().size(), 1u);
    EXPECT_EQ(dialog->id(), first);

    // The same geometry under another size: Save stores it.
    typeNewRectangle("Plate", "10x200", "10", "200");
    wxTEST_DIALOG(save(), AnswerSaveQuestion(wxID_SAVE, question, offeredSave));
    EXPECT_EQ(userDefined().size(), 2u);
    EXPECT_EQ(toWx(vl_db::fullProfileName(*dialog->selectedProfile())), "Plate 10x200");

    // Another section under a name and size already taken is refused.
    typeNewRectangle("Plate", "200x10", "20", "300");
    wxTEST_DIALOG(save(), vl_test::ExpectMessage("A user-defined profile \"Plate 200x10\" of this type already "
                                                 "exists. Choose another name or size."));
    EXPECT_EQ(userDefined().size(), 2u);
}

TEST_F(ProfileEditing, NameLookupIsMadeOnlyInTheUserStandard) {
    open(vl_db::kModeManager, vl_db::kDbNone, 0, &host);
    EXPECT_FALSE(dialog->isProfileExist("IPE 300", vl_db::kDbProject, vantlib::kProfileStructuralSteel));
    auto user = profile(project, vl_db::getUserDefinedGlobalLabel().c_str(), L"IPE", L"300", vantlib::kIShapeProfile,
                        {}, vantlib::kProfileStructuralSteel);
    const auto found = dialog->isProfileExist("IPE 300", vl_db::kDbProject, vantlib::kProfileStructuralSteel);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->id(), user->id());
    EXPECT_FALSE(dialog->isProfileExist("IPE 300", vl_db::kDbProject, vantlib::kProfileHvac));
    EXPECT_FALSE(dialog->isProfileExist("IPE 3000", vl_db::kDbProject, vantlib::kProfileStructuralSteel));
    EXPECT_FALSE(dialog->isProfileExist("IPE 300", vl_db::kDbCentral, vantlib::kProfileStructuralSteel));
}

TEST_F(ProfileEditing, EditingADimensionChangesTheStoredProfileAndAddsNoOptionalOne) {
    open(vl_db::kModeManager, vl_db::kDbNone, 0, &host);
    // A central profile is shown, not edited.
    click(vl_db::kDbCentral, "IPE 200");
    EXPECT_FALSE(dynamic_cast<wxTextCtrl*>(control("ISHAPE_HEIGHT"))->IsEditable());
    EXPECT_FALSE(control("ID_SET_SHAPE_CHOICE")->IsShown());

    click(vl_db::kDbProject, "IPE 300");
    EXPECT_FALSE(control("ISHAPE_FRADIUS")->IsShown());
    {
        NoDialogExpected none;
        type("ISHAPE_HEIGHT", "310");
        save();
    }
    const auto stored = project->get<vantlib::IShapeProfile>(beam->id());
    ASSERT_TRUE(stored);
    EXPECT_EQ(stored->overall_depth(), 310);
    EXPECT_DOUBLE_EQ(stored->flange_thickness(), 10.7);
    EXPECT_EQ(stored->overall_width(), 150);
    EXPECT_FALSE(stored->has_fillet_radius());
    EXPECT_EQ(dialog->id(), beam->id());
}

TEST_F(ProfileEditing, WithoutProfileServicesNothingIsWritten) {
    open();
    click(vl_db::kDbProject, "IPE 300");
    type("ISHAPE_HEIGHT", "310");
    EXPECT_FALSE(enabled(wxID_SAVE));
    EXPECT_FALSE(dialog->isToBeSaved(dialog->selectedProfile()));
    EXPECT_FALSE(dialog->updateSavedProfile());
    EXPECT_EQ(project->get<vantlib::IShapeProfile>(beam->id())->overall_depth(), 300);
}

TEST_F(ProfileEditing, AChangedProfileInUseAsksWhatBecomesOfItsEntities) {
    const OdDbObjectId column = db->addEntity(OdDbEntity::createObject());
    vl_db::setProfileId({column}, vl_db::kDbProject, beam->id(), vl_db::fullProfileName(*beam));
    open(vl_db::kModeManager, vl_db::kDbNone, 0, &host);
    const auto users = [&](unsigned id) { return vl_db::findProfileId(*db, vl_db::kDbProject, id); };

    // Abandoned: nothing changes.
    click(vl_db::kDbProject, "IPE 300");
    type("ISHAPE_HEIGHT", "320");
    wxString prompt;
    wxTEST_DIALOG(save(), wxExpectModal<wxg::DlgQuestion>(wxg::DlgQuestion::kThirdAnswer, false,
                                                          [&](wxg::DlgQuestion& question) {
                                                              prompt = question.answerLabel(5301);
                                                          }));
    EXPECT_EQ(prompt, "Keep entities");
    EXPECT_EQ(project->get<vantlib::IShapeProfile>(beam->id())->overall_depth(), 300);

    // Update: the profile changes and its entities keep using it.
    type("ISHAPE_HEIGHT", "320");
    wxTEST_DIALOG(save(), wxExpectModal<wxg::DlgQuestion>(wxg::DlgQuestion::kFirstAnswer));
    EXPECT_EQ(project->get<vantlib::IShapeProfile>(beam->id())->overall_depth(), 320);
    EXPECT_EQ(users(beam->id()), std::vector<OdDbObjectId>{column});

    // Keep entities: the profile changes; the entities move to a copy of it as it was.
    type("ISHAPE_HEIGHT", "330");
    wxTEST_DIALOG(save(), wxExpectModal<wxg::DlgQuestion>(wxg::DlgQuestion::kSecondAnswer));
    EXPECT_EQ(project->get<vantlib::IShapeProfile>(beam->id())->overall_depth(), 330);
    EXPECT_TRUE(users(beam->id()).empty());
    const auto kept = project->get<vantlib::Profile>(vantlib::ProfileKey(beam->name()->id(), L"300-2"));
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->parameter(P::kOverallDepth), 320);
    EXPECT_EQ(users(kept->id()), std::vector<OdDbObjectId>{column});
    EXPECT_EQ(rows(vl_db::kDbProject), (std::vector<wxString>{"IPE 300", "IPE 300-2"}));
}

TEST_F(ProfileEditing, RenamingMakesAUserProfileThatTheEntitiesFollow) {
    const OdDbObjectId column = db->addEntity(OdDbEntity::createObject());
    vl_db::setProfileId({column}, vl_db::kDbProject, beam->id(), vl_db::fullProfileName(*beam));
    open(vl_db::kModeManager, vl_db::kDbNone, 0, &host);
    click(vl_db::kDbProject, "IPE 300");
    {
        NoDialogExpected none;
        type("ID_SET_NAME", "Girder");
        save();
    }
    EXPECT_FALSE(project->get<vantlib::Profile>(vantlib::ProfileKey(beam->name()->id(), L"300")));
    const auto stored = userDefined();
    ASSERT_EQ(stored.size(), 1u);
    EXPECT_EQ(toWx(vl_db::fullProfileName(*stored[0])), "Girder 300");
    EXPECT_EQ(stored[0]->parameter(P::kOverallDepth), 300);
    EXPECT_EQ(vl_db::findProfileId(*db, vl_db::kDbProject, stored[0]->id()), std::vector<OdDbObjectId>{column});
    EXPECT_EQ(dialog->id(), stored[0]->id());

    // Changing only the shape keeps name and size: the profile is replaced by one of the new shape.
    {
        NoDialogExpected none;
        pick("ID_SET_SHAPE_CHOICE", "Rectangle profile");
        type("RECT_SHAPE_Y_DIM", "300");
        type("RECT_SHAPE_X_DIM", "150");
        save();
    }
    const auto replaced = userDefined();
    ASSERT_EQ(replaced.size(), 1u);
    EXPECT_EQ(replaced[0]->type(), vantlib::kRectangleProfile);
    EXPECT_EQ(toWx(vl_db::fullProfileName(*replaced[0])), "Girder 300");
    EXPECT_EQ(vl_db::findProfileId(*db, vl_db::kDbProject, replaced[0]->id()), std::vector<OdDbObjectId>{column});
}

TEST_F(ProfileEditing, APickedOutlineIsSavedAsACustomProfile) {
    CustomProfileInfo picked;
    picked.unit = OdDb::kUnitsMillimeters;
    picked.profile = vantlib::CustomProfile::create(QcSmartPtr<vantlib::ProfileName>(), OdString());
    vantlib::ProfileGeometry outline;
    outline.outer = {vantlib::ProfileEdge({0, 0}), vantlib::ProfileEdge({120, 0}), vantlib::ProfileEdge({120, 40}),
                     vantlib::ProfileEdge({0, 40})};
    picked.profile->set_geometry(outline);
    dialog = std::make_unique<DlgProfiles>(nullptr, libs, vl_db::kModeManager, vl_db::kDbNone, 0, &picked, &host);
    dialog->Show();
    idle();
    QcSmartPtr<vantlib::Profile> shown;
    dialog->displayPredefinedFromCustom(shown);
    ASSERT_TRUE(dialog->isCreating());
    EXPECT_EQ(shown.get(), picked.profile.get());
    EXPECT_EQ(dynamic_cast<wxChoice*>(control("ID_SET_SHAPE_CHOICE"))->GetStringSelection(), "Custom profile");
    {
        NoDialogExpected none;
        type("ID_SET_NAME", "Sill");
        type("ID_SIZE_VALUE", "120x40");
        save();
    }
    const auto stored = userDefined();
    ASSERT_EQ(stored.size(), 1u);
    ASSERT_EQ(stored[0]->type(), vantlib::kCustomProfile);
    EXPECT_EQ(static_cast<const vantlib::CustomProfile&>(*stored[0]).geometry(), outline);

    // The outline turned since is what an edit of the stored profile saves.
    vantlib::ProfileGeometry turned;
    turned.outer = {vantlib::ProfileEdge({0, 0}), vantlib::ProfileEdge({40, 0}), vantlib::ProfileEdge({40, 120}),
                    vantlib::ProfileEdge({0, 120})};
    picked.profile->set_geometry(turned);
    click(vl_db::kDbProject, "Sill 120x40");
    {
        NoDialogExpected none;
        save();
    }
    const auto edited = project->get<vantlib::CustomProfile>(stored[0]->id());
    ASSERT_TRUE(edited);
    EXPECT_EQ(edited->geometry(), turned);

    // Opened without a picked outline, the dialog saves a custom profile as the custom profile it is.
    dialog.reset();
    open(vl_db::kModeManager, vl_db::kDbNone, 0, &host);
    click(vl_db::kDbProject, "Sill 120x40");
    {
        NoDialogExpected none;
        type("ID_SIZE_VALUE", "120x40");
        save();
    }
    const auto again = project->get<vantlib::CustomProfile>(stored[0]->id());
    ASSERT_TRUE(again);
    EXPECT_EQ(again->geometry(), turned);
}

TEST_F(ProfileEditing, TheNewProfileCommandOpensOnAnEmptyNewProfile) {
    class LookAtIt : public wxExpectModalBase<DlgProfiles, LookAtIt> {
    public:
        explicit LookAtIt(bool& creating) : m_creating(creating) {}

    protected:
        int OnInvoked(DlgProfiles* shown) const override {
            shown->InitDialog();
            m_creating = shown->isCreating() && !shown->selectedProfile() && shown->FindWindow(wxID_SAVE)->IsShown();
            return wxID_CANCEL;
        }

    private:
        bool& m_creating;
    };
    bool creating = false;
    QcSmartPtr<vantlib::Profile> result;
    wxTEST_DIALOG(DlgProfiles::createProfile(libs, result, nullptr, &host), LookAtIt(creating));
    EXPECT_TRUE(creating);
}

}  // namespace

}  // namespace vl_profiles_test
