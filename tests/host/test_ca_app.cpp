// The application object: module loading and start-up, reactors, activation, commands, prompts.
#include <gtest/gtest.h>

#include <memory>

#include "CaApp.h"
#include "OaApp.h"
#include "OdDbDatabase.h"
#include "OdStringWx.h"
#include "Prompt.h"
#include "TestSupport.h"

namespace {

int indexOfPrompt(const wxString& text) {
    const wxArrayString log = ca::promptLog();
    for (size_t i = 0; i < log.size(); ++i)
        if (log[i] == text)
            return static_cast<int>(i);
    return -1;
}

struct RecordingReactor : ca::CAppReactor {
    void onActivate(OdDbDatabase* db) override { activated.push_back(db); }
    void onDeactivate(OdDbDatabase* db) override { deactivated.push_back(db); }
    void onDatabaseAddedToEtransmit(const OdDbDatabase*, ca::TransmittalFiles& files) override {
        files.append({OdString(L"/libraries/project.vlib"), ca::TransmittalGraphNode::kLibraryFile});
    }
    void onBeginQuit() override { ++quits; }
    std::vector<OdDbDatabase*> activated;
    std::vector<OdDbDatabase*> deactivated;
    int quits = 0;
};

std::unique_ptr<OdDbDatabase> makeDrawing(const TempFolder& folder, const wxString& name) {
    return OdDbDatabase::create(toOd(folder.file(name)), OdDb::kUnitsMillimeters);
}

}  // namespace

// Modules stay mapped for the life of the process, so the whole load / shut-down story of the
// two test modules is one test.
TEST(CaAppModules, LoadsOnceRunsStartUpOnceAndShutsDownInReverse) {
    ca::clearPromptLog();
    oa::OaApp app;
    app.setModuleDir(VL_TEST_HOST_MODULE_DIR);

    EXPECT_FALSE(app.loadDrx("vl_no_such_module", true));
    EXPECT_EQ(countPromptLines("vl_no_such_module"), 1) << "a missing module is reported";
    EXPECT_FALSE(app.loadDrx("../vl_test_base", true));

    ASSERT_TRUE(app.loadDrx("vl_test_dependent", true));
    EXPECT_TRUE(app.isDrxLoaded("vl_test_base")) << "loaded by the dependent module's start-up";
    EXPECT_TRUE(app.loadDrx("vl_test_base", true));
    EXPECT_TRUE(app.loadDrx("vl_test_dependent", true));
    EXPECT_EQ(countPromptLines("init vl_test_base"), 1);
    EXPECT_EQ(countPromptLines("init vl_test_dependent (base loaded)"), 1);
    ASSERT_NE(app.findCommand("TEST_BASE_HELLO"), nullptr) << "command names ignore case";

    app.uninitAll();
    const int dependentDown = indexOfPrompt("uninit vl_test_dependent");
    const int baseDown = indexOfPrompt("uninit vl_test_base");
    ASSERT_GE(dependentDown, 0);
    ASSERT_GE(baseDown, 0);
    EXPECT_LT(dependentDown, baseDown) << "a module shuts down before the module it loaded";
    EXPECT_EQ(app.findCommand("test_base_hello"), nullptr);

    app.uninitAll();
    EXPECT_EQ(countPromptLines("uninit vl_test_base"), 1) << "shut-down runs once";
}

TEST(CaAppModules, ModuleOfAnotherInterfaceVersionIsRefusedWithoutStarting) {
    ca::clearPromptLog();
    ca::CaApp app;
    app.setModuleDir(VL_TEST_HOST_MODULE_DIR);

    EXPECT_FALSE(app.loadDrx("vl_test_other_interface", true));
    EXPECT_EQ(countPromptLines(wxString::Format("built for version %d of the host interface, but this host has "
                                                "version %d",
                                                ca::kModuleInterfaceVersion + 1, ca::kModuleInterfaceVersion)),
              1);
    EXPECT_FALSE(app.loadDrx("vl_test_no_interface", true));
    EXPECT_EQ(countPromptLines("does not state the version of the host interface"), 1);
    EXPECT_FALSE(app.isDrxLoaded("vl_test_other_interface"));
    EXPECT_FALSE(app.isDrxLoaded("vl_test_no_interface"));

    // Their start-up functions were dropped with them.
    app.runPendingInitializers();
    EXPECT_EQ(countPromptLines("init vl_test_other_interface"), 0);
    EXPECT_EQ(countPromptLines("init vl_test_no_interface"), 0);
    app.uninitAll();
}

TEST(CaAppModules, BrokenModuleFileIsReportedAndNotRecorded) {
    TempFolder folder;
    folder.write("vl_broken.so", "this is not a shared library");
    ca::clearPromptLog();
    ca::CaApp app;
    app.setModuleDir(folder.path());
    EXPECT_FALSE(app.loadDrx("vl_broken", true));
    EXPECT_EQ(countPromptLines("could not be loaded"), 1);
    EXPECT_FALSE(app.isDrxLoaded("vl_broken"));
    ca::clearPromptLog();
    EXPECT_FALSE(app.loadDrx("vl_broken", false));
    EXPECT_EQ(ca::promptLog().size(), 0u) << "quiet when asked not to report";
}

TEST(CaAppModules, InitializersOfLinkedCodeRunOnceWhenAsked) {
    int inits = 0;
    int uninits = 0;
    ca::CaApp app;
    {
        ca::CAppInitializer initializer([&](ca::CaApp*) { ++inits; }, [&](ca::CaApp*) { ++uninits; });
        app.runPendingInitializers();
        app.runPendingInitializers();
        EXPECT_EQ(inits, 1);
    }
    // The initializer is gone (its module was unmapped): nothing is left to shut down.
    app.uninitAll();
    EXPECT_EQ(uninits, 0);
}

TEST(CaAppReactors, RegisterOnceAndReceiveOnlyTheirScope) {
    TempFolder folder;
    auto first = makeDrawing(folder, "first.vldwg");
    auto second = makeDrawing(folder, "second.vldwg");
    ca::CaApp app;
    RecordingReactor documents;
    RecordingReactor application;
    app.addAppReactor(&documents, ca::kDocumentEvents);
    app.addAppReactor(&documents, ca::kDocumentEvents);
    app.addAppReactor(&application, ca::kApplicationEvents);

    app.setActiveDatabase(first.get());
    app.setActiveDatabase(first.get());
    app.setActiveDatabase(second.get());
    EXPECT_EQ(documents.activated, (std::vector<OdDbDatabase*>{first.get(), second.get()}));
    EXPECT_EQ(documents.deactivated, (std::vector<OdDbDatabase*>{first.get()}));
    EXPECT_TRUE(application.activated.empty());
    EXPECT_EQ(ca::curDb(), second.get());

    const ca::TransmittalFiles files = app.collectTransmittalFiles(second.get());
    ASSERT_EQ(files.size(), 1u) << "only the application-scope reactor adds files";
    EXPECT_EQ(files[0].second, 14);
    app.fireBeginQuit();
    EXPECT_EQ(application.quits, 1);
    EXPECT_EQ(documents.quits, 0);

    app.removeAppReactor(&documents);
    app.setActiveDatabase(nullptr);
    EXPECT_EQ(documents.deactivated.size(), 1u);
    EXPECT_EQ(ca::curDb(), nullptr);
}

TEST(CaAppReactors, ReactorMayRemoveAnotherWhileBeingCalled) {
    TempFolder folder;
    auto drawing = makeDrawing(folder, "d.vldwg");
    ca::CaApp app;
    RecordingReactor victim;
    struct Remover : ca::CAppReactor {
        ca::CaApp* app = nullptr;
        ca::CAppReactor* victim = nullptr;
        void onActivate(OdDbDatabase*) override { app->removeAppReactor(victim); }
    } remover;
    remover.app = &app;
    remover.victim = &victim;
    app.addAppReactor(&remover, ca::kDocumentEvents);
    app.addAppReactor(&victim, ca::kDocumentEvents);
    app.setActiveDatabase(drawing.get());
    EXPECT_TRUE(victim.activated.empty()) << "a reactor removed during the event is not called";
    app.setActiveDatabase(nullptr);
}

TEST(OaApp, ActiveDocumentFollowsTheActiveDrawingAndExecutesTypedCommands) {
    TempFolder folder;
    auto drawing = makeDrawing(folder, "doc.vldwg");
    oa::OaApp app;
    EXPECT_EQ(oa::OaApp::s_app, &app);
    EXPECT_EQ(app.activeDocument(), nullptr);
    int infoRuns = 0;
    app.addCommand("bimprojectinfo", "Project info", [&] { ++infoRuns; });
    app.setActiveDatabase(drawing.get());
    ASSERT_NE(app.activeDocument(), nullptr);
    EXPECT_EQ(app.activeDocument()->database(), drawing.get());

    ca::clearPromptLog();
    app.activeDocument()->sendStringToExecute("_BIMPROJECTINFO\n");
    EXPECT_EQ(infoRuns, 1);
    app.sendStringToExecute(".bimprojectinfo nosuchcommand\n");
    EXPECT_EQ(infoRuns, 2);
    EXPECT_EQ(countPromptLines("Unknown command \"nosuchcommand\""), 1);
    app.setActiveDatabase(nullptr);
}

TEST(CaAppCommands, AddReplaceRemoveAndReject) {
    ca::CaApp app;
    int changes = 0;
    app.setCommandsChangedHandler([&] { ++changes; });
    int runs = 0;
    app.addCommand("materials", "Materials...", [&] { runs += 1; });
    app.addCommand("Materials", "Materials (new)...", [&] { runs += 10; });
    ASSERT_EQ(app.commands().size(), 1u) << "same name, other case: replaced";
    EXPECT_EQ(app.commands()[0].menuLabel, "Materials (new)...");
    EXPECT_TRUE(app.runCommand("MATERIALS"));
    EXPECT_EQ(runs, 10);
    EXPECT_THROW(app.addCommand("two words", "x", [] {}), std::invalid_argument);
    EXPECT_THROW(app.addCommand("noaction", "x", {}), std::invalid_argument);
    app.addCommand("failing", "", [] { throw std::runtime_error("library is read-only"); });
    ca::clearPromptLog();
    EXPECT_TRUE(app.runCommand("failing"));
    EXPECT_EQ(countPromptLines("library is read-only"), 1) << "a failing command is reported, not thrown";
    EXPECT_TRUE(app.removeCommand("materials"));
    EXPECT_FALSE(app.removeCommand("materials"));
    EXPECT_EQ(changes, 4);
    EXPECT_FALSE(app.runCommand("materials"));
}

TEST(CaAppCommands, TextAfterTheNameIsTheArgumentOfThatRunOnly) {
    ca::CaApp app;
    std::vector<wxString> seen;
    app.addCommand("inner", "", [&] { seen.push_back(app.commandArgument()); });
    app.addCommand("outer", "", [&] {
        seen.push_back(app.commandArgument());
        app.runCommand("inner");
        seen.push_back(app.commandArgument());
    });
    EXPECT_TRUE(app.runCommand("OUTER  IPE 200 "));
    EXPECT_TRUE(app.runCommand("inner"));
    EXPECT_FALSE(app.runCommand("missing IPE 200"));
    EXPECT_EQ(seen, (std::vector<wxString>{"IPE 200", "", "IPE 200", ""}));
    EXPECT_TRUE(app.commandArgument().empty());
}

TEST(CaAppCommands, LibraryInfoComesFromTheInstalledProvider) {
    ca::CaApp app;
    EXPECT_EQ(app.libraryInfo(nullptr), "(no library module)");
    app.setLibraryInfoProvider([](OdDbDatabase* db) { return db ? wxString("with drawing") : wxString("none"); });
    EXPECT_EQ(app.libraryInfo(nullptr), "none");
}

TEST(Prompt, FormatsWideTextLogsAndFeedsTheSink) {
    ca::clearPromptLog();
    wxArrayString received;
    ca::setPromptSink([&](const wxString& line) { received.push_back(line); });
    ca::promptf(L"Failed to load material with ID %u from %ls", 42u, L"/lib/central.vlib");
    ca::setPromptSink({});
    ca::promptf(L"%ls", L"after the sink");
    ASSERT_EQ(received.size(), 1u);
    EXPECT_EQ(received[0], "Failed to load material with ID 42 from /lib/central.vlib");
    const wxArrayString log = ca::promptLog();
    ASSERT_EQ(log.size(), 2u);
    EXPECT_EQ(log[1], "after the sink");
}

TEST(CaAppServices, ModulesFindTheServicesTheHostOffersByName) {
    ca::CaApp app;
    int geometry = 0;
    EXPECT_EQ(app.service("ProfilesInfo"), nullptr) << "nothing is offered at first";
    app.setService("ProfilesInfo", &geometry);
    EXPECT_EQ(app.service("ProfilesInfo"), &geometry);
    EXPECT_EQ(app.service("profilesinfo"), nullptr) << "service names are exact";
    app.setService("ProfilesInfo", nullptr);
    EXPECT_EQ(app.service("ProfilesInfo"), nullptr) << "a host withdraws what it offered";
}
