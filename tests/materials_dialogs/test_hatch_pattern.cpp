// The hatch pattern dialog: kinds of pattern, the fields each shows, validation of the numbers
// and what OK writes back into the material's pattern.
#include <vector>

#include <wx/app.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/listctrl.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include "DialogFixture.h"
#include "app/materials/DlgHatchPattern.h"

namespace vl_mat_test {

namespace {

constexpr double kPi = 3.141592653589793;

vantlib::Pattern predefined(const wchar_t* name, double scale = 1.0) {
    vantlib::Pattern pattern;
    pattern.set_type(vantlib::Pattern::kPredefined);
    pattern.set_name(name);
    pattern.set_scale(scale);
    return pattern;
}

TEST(HatchPatternEdit, StoredPatternsShowAsTheDialogsKinds) {
    using vl_app::DlgHatchPattern;
    EXPECT_EQ(DlgHatchPattern::getType(predefined(L"SOLID")), vl_app::kPatternSolid);
    EXPECT_EQ(DlgHatchPattern::getType(predefined(L"solid")), vl_app::kPatternSolid);
    EXPECT_EQ(DlgHatchPattern::getType(predefined(L"DIAG")), vl_app::kPatternPredefined);
    vantlib::Pattern pattern;
    EXPECT_EQ(DlgHatchPattern::getType(pattern), vl_app::kPatternNone);
    pattern.set_type(vantlib::Pattern::kUserDefined);
    EXPECT_EQ(DlgHatchPattern::getType(pattern), vl_app::kPatternLinear);
    pattern.set_type(vantlib::Pattern::kCustom);
    EXPECT_EQ(DlgHatchPattern::getType(pattern), vl_app::kPatternCustom);
    for (int kind : {vl_app::kPatternSolid, vl_app::kPatternPredefined, vl_app::kPatternLinear, vl_app::kPatternCustom,
                     vl_app::kPatternNone}) {
        DlgHatchPattern::setType(pattern, kind);
        pattern.set_name(kind == vl_app::kPatternSolid ? L"SOLID" : L"X");
        EXPECT_EQ(DlgHatchPattern::getType(pattern), kind);
    }
}

TEST(HatchPatternEdit, NumbersAreValidatedAndStoredInTheirSlots) {
    vantlib::Pattern pattern = predefined(L"DIAG", 2.0);
    vl_app::HatchPatternEdit edit = vl_app::HatchPatternEdit::fromPattern(pattern);
    EXPECT_EQ(edit.scaleText, "2");
    EXPECT_EQ(edit.angleText, "0");

    edit.angleText = "90";
    edit.scaleText = "0.5";
    ASSERT_TRUE(edit.store(pattern));
    EXPECT_DOUBLE_EQ(pattern.angle(), kPi / 2);
    EXPECT_DOUBLE_EQ(pattern.scale(), 0.5);

    const vantlib::Pattern before = pattern;
    for (const char* bad : {"", "abc", "0", "-1", "2x", "nan"}) {
        edit.scaleText = bad;
        EXPECT_EQ(edit.status(), vl_app::kHatchBadScale) << bad;
        EXPECT_FALSE(edit.store(pattern));
    }
    edit.scaleText = "1";
    edit.angleText = "ten";
    EXPECT_EQ(edit.status(), vl_app::kHatchBadAngle);
    EXPECT_FALSE(edit.store(pattern));
    EXPECT_EQ(pattern, before);

    // Lines: the spacing goes where a picture of them reads it, the angle and cross too; a bad
    // scale no longer matters because lines have none.
    edit.type = vl_app::kPatternLinear;
    edit.scaleText = "junk";
    edit.angleText = "-45";
    edit.spaceText = "3";
    edit.cross = true;
    ASSERT_TRUE(edit.store(pattern));
    EXPECT_EQ(pattern.type(), vantlib::Pattern::kUserDefined);
    EXPECT_EQ(pattern.name(), OdString(L"_USER"));
    EXPECT_DOUBLE_EQ(pattern.space(), 3.0);
    EXPECT_DOUBLE_EQ(pattern.scale(), 3.0);
    EXPECT_DOUBLE_EQ(pattern.angle(), -kPi / 4);
    EXPECT_TRUE(pattern.cross());

    edit.type = vl_app::kPatternCustom;
    edit.name.clear();
    EXPECT_EQ(edit.status(), vl_app::kHatchNoPattern);
}

class HatchPatternDialog : public DialogFixture {
protected:
    static wxChoice* typeChoice(wxDialog& dialog) { return XRCCTRL(dialog, "CHOICE_TYPE", wxChoice); }
    static wxListCtrl* list(wxDialog& dialog) { return XRCCTRL(dialog, "LIST_PATTERNS", wxListCtrl); }
    static bool shown(wxDialog& dialog, const char* name) { return dialog.FindWindow(XRCID(name))->IsShown(); }

    static void chooseType(wxDialog& dialog, int type) {
        typeChoice(dialog)->SetSelection(type);
        wxCommandEvent event(wxEVT_CHOICE, XRCID("CHOICE_TYPE"));
        event.SetEventObject(typeChoice(dialog));
        event.SetInt(type);
        dialog.ProcessWindowEvent(event);
    }

    static void type(wxDialog& dialog, const char* field, const wxString& text) {
        XRCCTRL(dialog, field, wxTextCtrl)->SetValue(text);  // sends the text event as typing does
    }

    static long rowOf(wxDialog& dialog, const wxString& name) { return list(dialog)->FindItem(-1, name); }

    static wxString selectedName(wxDialog& dialog) {
        const long row = list(dialog)->GetNextItem(-1, wxLIST_NEXT_ALL, wxLIST_STATE_SELECTED);
        return row < 0 ? wxString() : list(dialog)->GetItemText(row);
    }
};

TEST_F(HatchPatternDialog, OpensOnThePatternAndWritesTheEditsOnOk) {
    vantlib::Pattern pattern = predefined(L"DIAG", 2.0);
    vl_app::DlgHatchPattern dialog(nullptr, pattern, vl_db::kHatchElevation);
    EXPECT_EQ(dialog.GetTitle(), "Elevation Hatch Pattern");
    const int result = runModal(dialog, [&] {
        EXPECT_EQ(typeChoice(dialog)->GetCount(), 5u);
        EXPECT_EQ(typeChoice(dialog)->GetSelection(), vl_app::kPatternPredefined);
        EXPECT_EQ(selectedName(dialog), "DIAG");
        EXPECT_TRUE(list(dialog)->IsEnabled());
        EXPECT_TRUE(shown(dialog, "TEXT_SCALE"));
        EXPECT_FALSE(shown(dialog, "TEXT_SPACE"));
        EXPECT_FALSE(shown(dialog, "CHECK_CROSS"));

        const long net = rowOf(dialog, "NET");
        ASSERT_GE(net, 0);
        list(dialog)->SetItemState(net, wxLIST_STATE_SELECTED, wxLIST_STATE_SELECTED);
        type(dialog, "TEXT_ANGLE", "90");
        type(dialog, "TEXT_SCALE", "4");
        // The pattern itself waits for OK.
        EXPECT_EQ(pattern.name(), OdString(L"DIAG"));
        EXPECT_TRUE(press(dialog, wxID_OK));
    });
    EXPECT_EQ(result, wxID_OK);
    EXPECT_EQ(pattern.type(), vantlib::Pattern::kPredefined);
    EXPECT_EQ(pattern.name(), OdString(L"NET"));
    EXPECT_DOUBLE_EQ(pattern.scale(), 4.0);
    EXPECT_DOUBLE_EQ(pattern.angle(), kPi / 2);
}

TEST_F(HatchPatternDialog, EachKindShowsItsFieldsAndBadNumbersBlockOk) {
    vantlib::Pattern pattern = predefined(L"SOLID");
    vl_app::DlgHatchPattern dialog(nullptr, pattern, vl_db::kHatchSection);
    EXPECT_EQ(dialog.GetTitle(), "Section Hatch Pattern");
    const vantlib::Pattern original = pattern;
    const int result = runModal(dialog, [&] {
        EXPECT_EQ(typeChoice(dialog)->GetSelection(), vl_app::kPatternSolid);
        EXPECT_FALSE(list(dialog)->IsEnabled());
        EXPECT_FALSE(shown(dialog, "TEXT_SCALE"));
        EXPECT_FALSE(shown(dialog, "TEXT_ANGLE"));

        chooseType(dialog, vl_app::kPatternLinear);
        EXPECT_FALSE(shown(dialog, "TEXT_SCALE"));
        EXPECT_TRUE(shown(dialog, "TEXT_SPACE"));
        EXPECT_TRUE(shown(dialog, "CHECK_CROSS"));
        EXPECT_TRUE(shown(dialog, "TEXT_ANGLE"));
        EXPECT_EQ(list(dialog)->GetItemCount(), 0);

        type(dialog, "TEXT_SPACE", "wide");
        EXPECT_FALSE(press(dialog, wxID_OK));
        EXPECT_TRUE(shown(dialog, "STAT_ERROR"));
        EXPECT_EQ(XRCCTRL(dialog, "STAT_ERROR", wxStaticText)->GetLabel(), "The spacing must be a positive number.");
        type(dialog, "TEXT_SPACE", "5");
        EXPECT_FALSE(shown(dialog, "STAT_ERROR"));

        // A catalogue kind needs a chosen pattern before OK.
        chooseType(dialog, vl_app::kPatternPredefined);
        EXPECT_TRUE(list(dialog)->IsEnabled());
        EXPECT_GT(list(dialog)->GetItemCount(), 10);
        EXPECT_EQ(selectedName(dialog), "");
        EXPECT_FALSE(press(dialog, wxID_OK));

        chooseType(dialog, vl_app::kPatternNone);
        EXPECT_FALSE(shown(dialog, "TEXT_ANGLE"));
        EXPECT_TRUE(press(dialog, wxID_CANCEL));
    });
    EXPECT_EQ(result, wxID_CANCEL);
    EXPECT_EQ(pattern, original);
}

TEST_F(HatchPatternDialog, LinesAreStoredWithSpacingAngleAndCross) {
    vantlib::Pattern pattern;
    vl_app::DlgHatchPattern dialog(nullptr, pattern, vl_db::kHatchSection);
    runModal(dialog, [&] {
        chooseType(dialog, vl_app::kPatternLinear);
        type(dialog, "TEXT_SPACE", "2.5");
        type(dialog, "TEXT_ANGLE", "30");
        auto* cross = XRCCTRL(dialog, "CHECK_CROSS", wxCheckBox);
        cross->SetValue(true);
        wxCommandEvent event(wxEVT_CHECKBOX, XRCID("CHECK_CROSS"));
        event.SetEventObject(cross);
        event.SetInt(1);
        dialog.ProcessWindowEvent(event);
        EXPECT_TRUE(press(dialog, wxID_OK));
    });
    EXPECT_EQ(pattern.type(), vantlib::Pattern::kUserDefined);
    EXPECT_EQ(pattern.name(), OdString(L"_USER"));
    EXPECT_DOUBLE_EQ(pattern.space(), 2.5);
    EXPECT_DOUBLE_EQ(pattern.angle(), kPi / 6);
    EXPECT_TRUE(pattern.cross());
}

TEST_F(HatchPatternDialog, DoubleClickingAPatternAcceptsIt) {
    vantlib::Pattern pattern = predefined(L"DIAG");
    vl_app::DlgHatchPattern dialog(nullptr, pattern, vl_db::kHatchSection);
    const int result = runModal(dialog, [&] {
        const long row = rowOf(dialog, "BRICK");
        ASSERT_GE(row, 0);
        wxListEvent event(wxEVT_LIST_ITEM_ACTIVATED, XRCID("LIST_PATTERNS"));
        event.SetEventObject(list(dialog));
        event.SetIndex(row);
        dialog.ProcessWindowEvent(event);
    });
    EXPECT_EQ(result, wxID_OK);
    EXPECT_EQ(pattern.name(), OdString(L"BRICK"));
}

TEST_F(HatchPatternDialog, PatternsKeepTheirPlacesWhenTheErrorLineComesAndGoes) {
    vantlib::Pattern pattern = predefined(L"DIAG");
    vl_app::DlgHatchPattern dialog(nullptr, pattern, vl_db::kHatchSection);
    runModal(dialog, [&] {
        // Where each picture of the grid is, after the layout has settled.
        const auto places = [&dialog] {
            dialog.Layout();
            wxTheApp->Yield(true);
            std::vector<wxPoint> points{list(dialog)->GetPosition(), wxPoint(list(dialog)->GetSize().x, list(dialog)->GetSize().y)};
            for (long row = 0; row < list(dialog)->GetItemCount(); ++row) {
                wxPoint point;
                list(dialog)->GetItemPosition(row, point);
                points.push_back(point);
            }
            return points;
        };
        ASSERT_FALSE(shown(dialog, "STAT_ERROR"));
        const std::vector<wxPoint> withoutError = places();
        ASSERT_GT(withoutError.size(), 10u);

        // Clearing the choice brings "Please select a pattern."; choosing again takes it away.
        const long diag = rowOf(dialog, "DIAG");
        list(dialog)->SetItemState(diag, 0, wxLIST_STATE_SELECTED);
        ASSERT_TRUE(shown(dialog, "STAT_ERROR"));
        EXPECT_EQ(places(), withoutError) << "the grid moved when the error line appeared";
        list(dialog)->SetItemState(diag, wxLIST_STATE_SELECTED, wxLIST_STATE_SELECTED);
        ASSERT_FALSE(shown(dialog, "STAT_ERROR"));
        EXPECT_EQ(places(), withoutError);
        EXPECT_TRUE(press(dialog, wxID_CANCEL));
    });
}

}  // namespace

}  // namespace vl_mat_test
