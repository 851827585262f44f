// The file-path service: remembered folders and default extensions.
#include <gtest/gtest.h>

#include "CaFileDialog.h"
#include "FileDialogTesting.h"
#include "TestSupport.h"
#include "WxgConfig.h"

TEST(FileDialog, ChosenFolderIsRememberedUnderTheDialogKey) {
    FreshSettings settings;
    ca::FileDialogRequest request;
    request.dialogKey = "BimPropertiesImport";
    request.title = "Select xml file to import";
    request.filterDescription = "XML Files";
    request.defaultExtension = "xml";
    request.defaultFolder = "/libraries";
    TempFolder data;
    const wxString file = data.write("psets.xml", "<psets/>");
    wxString path;
    bool chosen = false;
    wxTEST_DIALOG(chosen = ca::getFilePath(path, request), ExpectFilePath(file));
    ASSERT_TRUE(chosen);
    EXPECT_EQ(path, file);
    settings.restart();
    EXPECT_EQ(wxg::WxgConfig::readString("/FileDialogs/BimPropertiesImport"), data.path());
}

TEST(FileDialog, SavedNameGetsTheDefaultExtensionAndCancelChangesNothing) {
    FreshSettings settings;
    ca::FileDialogRequest request;
    request.dialogKey = "BimPropertiesExport";
    request.defaultExtension = "xml";
    request.mode = ca::kSaveFile;
    TempFolder out;
    wxString path;
    wxTEST_DIALOG(ca::getFilePath(path, request), ExpectFilePath(out.file("psets")));
    EXPECT_EQ(path, out.file("psets.xml"));

    path = "unchanged";
    bool chosen = true;
    wxTEST_DIALOG(chosen = ca::getFilePath(path, request), ExpectFilePath("/elsewhere/x.xml", wxID_CANCEL));
    EXPECT_FALSE(chosen);
    EXPECT_EQ(path, "unchanged");
    EXPECT_EQ(wxg::WxgConfig::readString("/FileDialogs/BimPropertiesExport"), out.path());
}
