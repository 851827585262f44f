// Dialogs built from layout resources, with their rectangles in the settings store.
#include <gtest/gtest.h>

#include <wx/log.h>
#include <wx/notebook.h>
#include <wx/panel.h>
#include <wx/splitter.h>
#include <wx/testing.h>
#include <wx/textctrl.h>
#include <wx/xrc/xmlres.h>

#include "OdError.h"
#include "QcThemedDialog.h"
#include "TestSupport.h"
#include "WxgConfig.h"

namespace {
const char* const kLayout = R"(<?xml version="1.0" encoding="UTF-8"?>
<resource xmlns="http://www.wxwidgets.org/wxxrc" version="2.5.3.0">
  <object class="wxDialog" name="DLG_HOST_TEST">
    <title>Host test</title>
    <style>wxDEFAULT_DIALOG_STYLE|wxRESIZE_BORDER</style>
    <object class="wxBoxSizer">
      <orient>wxVERTICAL</orient>
      <object class="sizeritem">
        <object class="wxTextCtrl" name="TEXT_NAME"><value>Brick</value></object>
      </object>
    </object>
  </object>
</resource>
)";

class ThemedDialogTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        static TempFolder folder;
        wxXmlResource::Get()->InitAllHandlers();
        ASSERT_TRUE(wxXmlResource::Get()->Load(folder.write("host_test.xrc", kLayout)));
    }
};
}  // namespace

TEST_F(ThemedDialogTest, LoadsItsLayoutByName) {
    wxg::QcThemedDialog dialog(nullptr, "DLG_HOST_TEST");
    EXPECT_EQ(dialog.GetTitle(), "Host test");
    auto* name = XRCCTRL(dialog, "TEXT_NAME", wxTextCtrl);
    ASSERT_NE(name, nullptr);
    EXPECT_EQ(name->GetValue(), "Brick");
}

TEST_F(ThemedDialogTest, UnknownLayoutIsAClearError) {
    wxLogNull quiet;
    try {
        wxg::QcThemedDialog dialog(nullptr, "DLG_NOT_THERE");
        FAIL() << "expected an error";
    } catch (const OdError& e) {
        EXPECT_NE(std::string(e.what()).find("DLG_NOT_THERE"), std::string::npos);
    }
}

TEST_F(ThemedDialogTest, ModalRunsGoThroughTheTestingHook) {
    wxg::QcThemedDialog dialog(nullptr, "DLG_HOST_TEST");
    int result = 0;
    wxTEST_DIALOG(result = dialog.ShowModal(), wxExpectDismissableModal<wxg::QcThemedDialog>(wxID_OK));
    EXPECT_EQ(result, wxID_OK);
}

TEST_F(ThemedDialogTest, WindowRectangleIsRestoredUnderTheLayoutNameAndStoredWhenItGoes) {
    FreshSettings settings;
    {
        wxg::QcThemedDialog dialog(nullptr, "DLG_HOST_TEST", wxSize(420, 300));
        EXPECT_EQ(dialog.GetSize(), wxSize(420, 300)) << "the default size the first time";
        dialog.SetSize(wxRect(30, 40, 500, 350));
    }
    settings.restart();
    wxRect stored;
    ASSERT_TRUE(wxg::WxgConfig::loadWindowRect("DLG_HOST_TEST", stored));
    EXPECT_EQ(stored.GetSize(), wxSize(500, 350));
    wxg::QcThemedDialog again(nullptr, "DLG_HOST_TEST", wxSize(420, 300));
    EXPECT_EQ(again.GetSize(), wxSize(500, 350));
}

TEST_F(ThemedDialogTest, KeptSplitterAndNotebookPositionsComeBack) {
    FreshSettings settings;
    const auto build = [](wxg::QcThemedDialog& dialog, wxSplitterWindow*& splitter, wxNotebook*& book) {
        dialog.SetSize(600, 400);
        splitter = new wxSplitterWindow(&dialog, wxID_ANY, wxPoint(0, 0), wxSize(600, 300));
        splitter->SplitVertically(new wxPanel(splitter), new wxPanel(splitter), 100);
        book = new wxNotebook(&dialog, wxID_ANY, wxPoint(0, 300), wxSize(600, 100));
        for (const char* title : {"One", "Two", "Three"})
            book->AddPage(new wxPanel(book), title);
        dialog.keepSashPosition(splitter, "DLG_HOST_TEST/sash");
        dialog.keepPage(book, "DLG_HOST_TEST/page");
    };
    wxSplitterWindow* splitter = nullptr;
    wxNotebook* book = nullptr;
    {
        wxg::QcThemedDialog dialog(nullptr, "DLG_HOST_TEST");
        build(dialog, splitter, book);
        EXPECT_EQ(book->GetSelection(), 0) << "nothing stored yet";
        splitter->SetSashPosition(230);
        book->SetSelection(2);
    }
    settings.restart();
    wxg::QcThemedDialog again(nullptr, "DLG_HOST_TEST");
    build(again, splitter, book);
    EXPECT_EQ(splitter->GetSashPosition(), 230);
    EXPECT_EQ(book->GetSelection(), 2);
}
