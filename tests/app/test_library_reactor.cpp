// Name clashes put to the user through the real question dialog, answered with wxTEST_DIALOG.
#include <cstdio>
#include <set>
#include <stdexcept>

#include <unistd.h>

#include <gtest/gtest.h>

#include <CaApp.h>
#include <CaPreferences.h>
#include <DlgQuestionTesting.h>
#include <Prompt.h>

#include "AppTestSupport.h"
#include "app/LibraryReactor.h"

using app_test::ProjectFixture;
using vantlib::IdMapping;
using vl_app::LibraryReactor;

namespace {

IdMapping::State stateOf(const IdMapping& mapping) {
    EXPECT_EQ(mapping.size(), 1u);
    return mapping.begin()->second.state;
}

class ClashTest : public ProjectFixture {
protected:
    void SetUp() override {
        ProjectFixture::SetUp();
        addMaterials(project, {L"Brick", L"Stone", L"Brick-3", L"Oak"});
        addMaterials(central, {L"Brick", L"Stone", L"Brick-3", L"Oak"});
    }
    LibraryReactor& reactor = *LibraryReactor::instance();
    const LibraryReactor::DlgEnabler askForMaterials{{vantlib::kMaterial}};
};

}  // namespace

TEST_F(ClashTest, QuestionDescribesTheClashInTheProjectAndOverwriteReplaces) {
    IdMapping mapping;
    wxTEST_DIALOG(mapping = copyToProject({L"Brick"}),
                  wxExpectModal<wxg::DlgQuestion>(wxg::DlgQuestion::kSecondAnswer, false, [](wxg::DlgQuestion& dlg) {
                      EXPECT_EQ(dlg.GetTitle(), ca::appName());
                      EXPECT_EQ(dlg.answersMask(), 7u);
                      EXPECT_EQ(dlg.answerLabel(5300), "Skip");
                      EXPECT_EQ(dlg.answerDescription(5300), "Keep the existing material in the current project "
                                                             "database. The database will remain unchanged.");
                      EXPECT_EQ(dlg.answerDescription(5302), "Rename the material from the source library to: 'Brick_2'.");
                  }));
    EXPECT_EQ(stateOf(mapping), IdMapping::kOverwritten);
    EXPECT_EQ(reactor.skipped(vantlib::kMaterial), 0u);
    EXPECT_EQ(materialNames(*project).size(), 4u);
}

TEST_F(ClashTest, SkipAndClosingTheDialogBothCountAsSkipped) {
    IdMapping first, second;
    {
        vantlib::Transaction operation(project);
        wxTEST_DIALOG(first = copyToProject({L"Brick"}), wxExpectModal<wxg::DlgQuestion>(wxg::DlgQuestion::kFirstAnswer));
        wxTEST_DIALOG(second = copyToProject({L"Stone"}), wxExpectModal<wxg::DlgQuestion>(wxID_CANCEL));
        operation.commit();
    }
    EXPECT_EQ(stateOf(first), IdMapping::kNotCopied);
    EXPECT_EQ(stateOf(second), IdMapping::kNotCopied);
    EXPECT_EQ(reactor.skipped(vantlib::kMaterial), 2u) << "counts stay readable after the operation ended";
    EXPECT_EQ(reactor.skipped(vantlib::kComposition), 0u);
}

TEST_F(ClashTest, RenameProposesStemWithUnderscoreAndNextFreeNumber) {
    addMaterials(project, {L"Brick_2"});
    IdMapping mapping;
    wxTEST_DIALOG(mapping = copyToProject({L"Brick-3"}),
                  wxExpectModal<wxg::DlgQuestion>(wxg::DlgQuestion::kThirdAnswer, false, [](wxg::DlgQuestion& dlg) {
                      EXPECT_EQ(dlg.answerDescription(5302), "Rename the material from the source library to: 'Brick_3'.")
                          << "the trailing -3 is stripped and Brick_2 is taken";
                  }));
    EXPECT_EQ(stateOf(mapping), IdMapping::kRenamed);
    EXPECT_EQ(project->get<vantlib::Material>(mapping.begin()->second.id)->name(), OdString(L"Brick_3"));
}

TEST_F(ClashTest, TickedAnswerHoldsForEveryTypeAcrossNestedTransactionsUntilTheNextOperation) {
    {
        vantlib::Transaction operation(project);
        wxTEST_DIALOG(copyToProject({L"Brick"}), wxExpectModal<wxg::DlgQuestion>(wxg::DlgQuestion::kThirdAnswer, true));
        {
            vantlib::Transaction nested(project);
            EXPECT_EQ(stateOf(copyToProject({L"Stone"})), IdMapping::kRenamed) << "answered without asking";
            nested.commit();
        }
        EXPECT_EQ(reactor.rememberedAnswer(vantlib::kComposition), 3u) << "the answer is stored for every type";
        operation.commit();
    }
    EXPECT_EQ(reactor.transactionDepth(), 0u);
    EXPECT_EQ(reactor.rememberedAnswer(vantlib::kMaterial), 3u) << "kept until the next operation begins";

    IdMapping next;
    wxTEST_DIALOG(next = copyToProject({L"Oak"}), wxExpectModal<wxg::DlgQuestion>(wxg::DlgQuestion::kFirstAnswer));
    EXPECT_EQ(stateOf(next), IdMapping::kNotCopied) << "a new outermost transaction asks again";
}

TEST_F(ClashTest, HostDefaultAnswerIsUsedWithoutAsking) {
    ca::preferences().set_VantlibDefaultClashAnswer(1);
    EXPECT_EQ(stateOf(copyToProject({L"Brick"})), IdMapping::kNotCopied);
    EXPECT_EQ(reactor.skipped(vantlib::kMaterial), 1u);
    ca::preferences().set_VantlibDefaultClashAnswer(7);
    LibraryReactor::instance()->reset();
    EXPECT_EQ(reactor.rememberedAnswer(vantlib::kMaterial), 0u) << "values of 4 or more mean ask";
}

TEST_F(ProjectFixture, ClashOfATypeNobodyEnabledIsSkippedSilentlyAndNotCounted) {
    addMaterials(project, {L"Brick"});
    addMaterials(central, {L"Brick"});
    const IdMapping mapping = copyToProject({L"Brick"});
    EXPECT_EQ(mapping.begin()->second.state, IdMapping::kNotCopied);
    EXPECT_EQ(LibraryReactor::instance()->skipped(vantlib::kMaterial), 0u);
}

TEST(LibraryReactor, SkippedCountsExistOnlyForCountedTypes) {
    LibraryReactor* reactor = LibraryReactor::instance();
    reactor->reset();
    EXPECT_EQ(reactor->skipped(vantlib::kMaterial), 0u);
    EXPECT_EQ(reactor->skipped(vantlib::ObjectType(44)), 0u);
    for (unsigned part : {8u, 9u, 10u, 12u})
        EXPECT_THROW(reactor->skipped(vantlib::ObjectType(part)), std::out_of_range) << part;
}

TEST(LibraryReactor, DlgEnablersNestAndTheFactoryEnablesPropertySetKinds) {
    LibraryReactor* reactor = LibraryReactor::instance();
    const std::set<vantlib::ObjectType> before = reactor->dialogTypes();
    {
        const LibraryReactor::DlgEnabler outer({vantlib::kMaterial});
        {
            const auto inner = vl_app::IDlgEnabler::create<LibraryReactor::DlgEnabler, vantlib::ObjectType>();
            EXPECT_EQ(reactor->dialogTypes(),
                      (std::set<vantlib::ObjectType>{vantlib::ObjectType(42), vantlib::ObjectType(43), vantlib::ObjectType(44)}));
        }
        EXPECT_EQ(reactor->dialogTypes(), std::set<vantlib::ObjectType>{vantlib::kMaterial});
    }
    EXPECT_EQ(reactor->dialogTypes(), before);
}

TEST(LibraryReactor, LoadFailuresNameTheObjectByIdOrNameAndTheFile) {
    ca::clearPromptLog();
    auto library = vantlib::Library::create(app_test::od(std::filesystem::temp_directory_path() /
                                                         ("vl_app_load_" + std::to_string(::getpid()) + ".vlib")),
                                            OdDb::kUnitsMillimeters);
    const OdString file = vantlib::getImplFilename(library);
    LibraryReactor* reactor = LibraryReactor::instance();
    reactor->onLoadFailed(library, vantlib::ObjectKey(vantlib::kMaterial, 7), OdString());
    reactor->onLoadFailed(library, vantlib::ObjectKey(vantlib::kConstructionProfile, 3), OdString(L"HEA 200"));
    reactor->onLoadFailed(library, vantlib::ObjectKey(vantlib::ObjectType(20), 4), OdString(L"IPE 100"));
    const wxArrayString log = ca::promptLog();
    ASSERT_EQ(log.size(), 3u);
    EXPECT_EQ(log[0], "Failed to load material with ID 7 from " + wxString(file.c_str()));
    EXPECT_EQ(log[1], "Failed to load construction profile 'HEA 200' from " + wxString(file.c_str()));
    EXPECT_EQ(log[2], "Failed to load object 'IPE 100' from " + wxString(file.c_str())) << "shapes are objects here";
    const std::string path = file.toUtf8();
    library.reset();
    std::remove(path.c_str());
}
