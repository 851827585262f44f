// The studio as a user starts it: screenshots, command listing, drawings good and bad.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <initializer_list>
#include <sstream>
#include <set>

#include <wx/image.h>
#include <wx/init.h>

#include "OdDbDatabase.h"
#include "StudioRun.h"

namespace {

class WxBaseEnvironment : public ::testing::Environment {
public:
    void SetUp() override {
        ASSERT_TRUE(wxInitialize());
        wxImage::AddHandler(new wxPNGHandler);
    }
    void TearDown() override { wxUninitialize(); }
};

::testing::Environment* const g_wxBase = ::testing::AddGlobalTestEnvironment(new WxBaseEnvironment);

// Distinct colours of a picture, counted up to `limit`.
size_t colourCount(const wxImage& image, size_t limit = 64) {
    std::set<unsigned long> colours;
    const unsigned char* data = image.GetData();
    const size_t pixels = static_cast<size_t>(image.GetWidth()) * image.GetHeight();
    for (size_t i = 0; i < pixels && colours.size() < limit; ++i)
        colours.insert((unsigned long)data[3 * i] << 16 | (unsigned long)data[3 * i + 1] << 8 | data[3 * i + 2]);
    return colours.size();
}

wxImage loadPicture(const std::string& path) {
    wxImage image;
    image.LoadFile(wxString::FromUTF8(path), wxBITMAP_TYPE_PNG);
    return image;
}

}  // namespace

TEST(Studio, ScreenshotOfTheMainWindowIsARealPicture) {
    StudioRunner studio;
    const std::string picture = studio.file("main.png");
    const StudioResult result = studio.run({"--screenshot", picture});
    ASSERT_EQ(result.exitCode, 0) << result.err;
    const wxImage image = loadPicture(picture);
    ASSERT_TRUE(image.IsOk());
    EXPECT_GE(image.GetWidth(), 600);
    EXPECT_GE(image.GetHeight(), 400);
    EXPECT_GT(colourCount(image), 8u) << "text and frames, not a blank area";
}

TEST(Studio, ScreenshotDuringACommandShowsItsDialog) {
    StudioRunner studio;
    const StudioResult main = studio.run({"--screenshot", studio.file("main.png")});
    const StudioResult about = studio.run({"--command", "about", "--screenshot", studio.file("about.png")});
    ASSERT_EQ(about.exitCode, 0) << about.err;
    const wxImage window = loadPicture(studio.file("main.png"));
    const wxImage dialog = loadPicture(studio.file("about.png"));
    ASSERT_TRUE(window.IsOk() && dialog.IsOk());
    EXPECT_LT(dialog.GetWidth() * dialog.GetHeight(), window.GetWidth() * window.GetHeight())
        << "the modal dialog was captured, not the main window";
    EXPECT_GT(colourCount(dialog), 8u);
}

TEST(Studio, ListsBuiltInCommandsAndRejectsUnknownOnes) {
    StudioRunner studio;
    const StudioResult list = studio.run({"--list-commands"});
    ASSERT_EQ(list.exitCode, 0) << list.err;
    EXPECT_NE(list.out.find("about\n"), std::string::npos);
    EXPECT_NE(list.out.find("open\n"), std::string::npos);

    const StudioResult unknown = studio.run({"--command", "no_such_command"});
    EXPECT_EQ(unknown.exitCode, 2);
    EXPECT_NE(unknown.err.find("no_such_command"), std::string::npos);

    const StudioResult badOption = studio.run({"--frobnicate"});
    EXPECT_EQ(badOption.exitCode, 2);
    const StudioResult help = studio.run({"--help"});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_NE(help.out.find("--screenshot"), std::string::npos);
}

TEST(Studio, HelpAndCommandListNeedNoDisplayTheWindowFailsCleanlyWithout) {
    StudioRunner studio;
    const StudioResult help = studio.runWithoutDisplay({"--help"});
    EXPECT_EQ(help.exitCode, 0) << help.err;
    EXPECT_NE(help.out.find("--list-commands"), std::string::npos);
    const StudioResult list = studio.runWithoutDisplay({"--list-commands"});
    ASSERT_EQ(list.exitCode, 0) << list.err;
    EXPECT_NE(list.out.find("about\n"), std::string::npos) << list.out;
    EXPECT_NE(list.out.find("materials\n"), std::string::npos) << "the modules' commands too: " << list.out;

    // The window itself does need one: a clear message and a failed exit, not a toolkit crash.
    const StudioResult window = studio.runWithoutDisplay({});
    EXPECT_NE(window.exitCode, 0);
    EXPECT_NE(window.err.find("DISPLAY"), std::string::npos) << window.err;
    EXPECT_EQ(window.err.find("Gtk-ERROR"), std::string::npos) << window.err;
}

// The studio's own lines on the command line follow --lang like the module's.
TEST(Studio, CommandLineLinesAreGermanUnderLangDe) {
    StudioRunner studio;
    const std::string drawing = studio.file("haus.vldwg");
    OdDbDatabase::create(OdString::fromUtf8(drawing), OdDb::kUnitsMillimeters);
    const StudioResult result =
        studio.run({drawing, "--lang", "de", "--command", "etransmit", "--screenshot", studio.file("de.png")});
    ASSERT_EQ(result.exitCode, 0) << result.err;
    EXPECT_NE(result.err.find("Modul vantlib_app geladen."), std::string::npos) << result.err;
    EXPECT_NE(result.err.find(drawing + " geöffnet."), std::string::npos) << result.err;
    EXPECT_NE(result.err.find("werden mit der Zeichnung weitergegeben"), std::string::npos) << result.err;
    EXPECT_EQ(result.err.find("Opened "), std::string::npos) << result.err;
    EXPECT_EQ(result.err.find("Library manager ready"), std::string::npos) << result.err;
    EXPECT_NE(result.err.find("Bibliotheksverwaltung bereit"), std::string::npos) << result.err;
}

TEST(Studio, OpensADrawingAndReportsItsTransmittalFiles) {
    StudioRunner studio;
    const std::string drawing = studio.file("house.vldwg");
    OdDbDatabase::create(OdString::fromUtf8(drawing), OdDb::kUnitsMillimeters);
    const StudioResult result =
        studio.run({drawing, "--command", "etransmit", "--screenshot", studio.file("drawing.png")});
    ASSERT_EQ(result.exitCode, 0) << result.err;
    EXPECT_NE(result.err.find("Opened " + drawing), std::string::npos) << result.err;
    EXPECT_NE(result.err.find("travel with the drawing"), std::string::npos) << result.err;
}

TEST(Studio, MissingOrBrokenDrawingIsReportedAndTheStudioStaysUp) {
    StudioRunner studio;
    const StudioResult missing = studio.run({studio.file("nowhere.vldwg"), "--screenshot", studio.file("m.png")});
    EXPECT_EQ(missing.exitCode, 0) << "the window came up and was captured";
    EXPECT_NE(missing.err.find("does not exist"), std::string::npos) << missing.err;
    EXPECT_TRUE(loadPicture(studio.file("m.png")).IsOk());

    const std::string broken = studio.file("broken.vldwg");
    std::ofstream(broken) << "not a drawing at all";
    const StudioResult damaged = studio.run({broken, "--screenshot", studio.file("b.png")});
    EXPECT_EQ(damaged.exitCode, 0);
    EXPECT_NE(damaged.err.find("is not a drawing"), std::string::npos) << damaged.err;
    std::ifstream check(broken);
    std::string content;
    std::getline(check, content);
    EXPECT_EQ(content, "not a drawing at all") << "the broken file is left as it was";
}

TEST(Studio, MainWindowRectangleIsKeptBetweenRuns) {
    StudioRunner studio;
    ASSERT_EQ(studio.run({"--screenshot", studio.file("first.png")}).exitCode, 0);
    std::ifstream settings(studio.file("vlstudio.ini"));
    std::stringstream text;
    text << settings.rdbuf();
    EXPECT_NE(text.str().find("StudioMainFrame="), std::string::npos) << text.str();
}

// The studio on the demo drawing with its central library.
class DemoStudio : public ::testing::Test {
protected:
    void SetUp() override {
        const std::string demo = studio.file("demo");
        ASSERT_EQ(std::system((std::string(VL_BIN_DIR) + "/vlib demo '" + demo + "' > /dev/null").c_str()), 0);
        drawing = demo + "/demo.vldwg";
        central = demo + "/central-metric.vlib";
    }

    // Runs the command (with its argument) and writes the picture of what it shows.
    StudioResult run(const std::string& command, const std::string& picture) {
        return command.empty() ? studio.run({drawing, "--central", central, "--screenshot", picture})
                               : studio.run({drawing, "--central", central, "--command", command, "--screenshot", picture});
    }
    wxImage mainWindow() {
        const std::string picture = studio.file("main.png");
        EXPECT_EQ(run(std::string(), picture).exitCode, 0);
        return loadPicture(picture);
    }
    // Each command shows a window of its own, drawn, and no module is missing.
    void expectOwnWindows(std::initializer_list<const char*> commands) {
        const wxImage window = mainWindow();
        for (const char* command : commands) {
            SCOPED_TRACE(command);
            const std::string picture = studio.file("shot.png");
            const StudioResult result = run(command, picture);
            ASSERT_EQ(result.exitCode, 0) << result.err;
            EXPECT_EQ((result.out + result.err).find("not loaded"), std::string::npos) << result.out << result.err;
            const wxImage shown = loadPicture(picture);
            ASSERT_TRUE(shown.IsOk());
            EXPECT_NE(shown.GetSize(), window.GetSize()) << "the command's window was captured, not the main window";
            EXPECT_GT(colourCount(shown), 8u);
        }
    }

    StudioRunner studio;
    std::string drawing, central;
};

// The module's dialogs come from its XRC layouts: each command must show its own dialog on the
// demo drawing, not an error about a missing layout.
TEST_F(DemoStudio, ModuleCommandsShowTheirDialogs) {
    expectOwnWindows({"materials", "pick-material", "material-preview", "material-classes", "hatch-pattern",
                      "render-material", "custom-properties", "composition-preview", "copy-central-to-project",
                      "compositions", "new-composition", "pick-composition", "new-profile", "import-library",
                      "export-library", "enum-values", "preferences"});
}

TEST_F(DemoStudio, PropertySetCommandsShowTheEditorInBothDomains) {
    std::vector<wxImage> pictures;
    for (const char* command : {"bim-properties Office", "mech-properties Office"}) {
        SCOPED_TRACE(command);
        const std::string picture = studio.file(std::to_string(pictures.size()) + ".png");
        const StudioResult result = run(command, picture);
        ASSERT_EQ(result.exitCode, 0) << result.err;
        pictures.push_back(loadPicture(picture));
        ASSERT_TRUE(pictures.back().IsOk());
        EXPECT_GT(colourCount(pictures.back()), 8u);
    }
    // The mechanical domain hides the value and visibility buttons: another picture.
    EXPECT_FALSE(pictures[0].GetSize() == pictures[1].GetSize() &&
                 std::equal(pictures[0].GetData(), pictures[0].GetData() + pictures[0].GetWidth() * pictures[0].GetHeight() * 3,
                            pictures[1].GetData()));
}

// Commands that take a profile's name after theirs, and the view in which outlines are picked.
TEST_F(DemoStudio, ProfileOffsetAndOutlinePickingShowTheirWindows) {
    expectOwnWindows({"profile-offset IPE 200", "profile-offset Handrail Oak 60", "pick-outline",
                      "profiles Handrail Oak 60"});
    const wxImage window = mainWindow();
    // A name that no library has opens nothing and says so.
    const StudioResult unknown = run("profile-offset IPE 9999", studio.file("unknown.png"));
    ASSERT_EQ(unknown.exitCode, 0) << unknown.err;
    EXPECT_NE((unknown.out + unknown.err).find("IPE 9999"), std::string::npos) << unknown.out << unknown.err;
    EXPECT_EQ(loadPicture(studio.file("unknown.png")).GetSize(), window.GetSize());
}
