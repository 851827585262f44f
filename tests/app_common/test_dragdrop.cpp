// Dropping dragged library objects onto the other library's list.
#include <gtest/gtest.h>
#include <wx/msgdlg.h>
#include <wx/testing.h>

#include <DlgQuestion.h>
#include <DlgQuestionTesting.h>

#include <OdStringWx.h>

#include "LibraryFixture.h"
#include "app/common/DragDrop.h"

using namespace vl_app;
using vl_app_test::LibraryFixture;

namespace {
VantlibDragData drag(vl_db::EDbType from, vantlib::ObjectType kind, std::vector<vantlib::ObjectKey> keys) {
    VantlibDragData data;
    data.dbType = from;
    data.objectType = kind;
    data.keys = std::move(keys);
    return data;
}
}  // namespace

TEST(VantlibDataObject, CarriesTheSourceStructureItself) {
    VantlibDragData data = drag(vl_db::kDbCentral, vantlib::kMaterial, {{vantlib::kMaterial, 4}, {vantlib::kMaterial, 9}});
    VantlibDataObject source(data);
    EXPECT_EQ(source.GetSize(), 32u);

    // The drop side receives the bytes and reads the keys through the source's own vector.
    VantlibDataObject received;
    ASSERT_TRUE(received.SetData(source.GetFormat(), source.GetSize(), source.GetData()));
    const VantlibDragData* payload = received.dragData();
    ASSERT_NE(payload, nullptr);
    EXPECT_EQ(payload->dbType, vl_db::kDbCentral);
    EXPECT_EQ(payload->objectType, vantlib::kMaterial);
    ASSERT_EQ(payload->keys.size(), 2u);
    EXPECT_EQ(payload->keys.data(), data.keys.data());
    EXPECT_EQ(payload->keys[1].id, 9u);

    EXPECT_EQ(VantlibDataObject().dragData(), nullptr);
    EXPECT_EQ(VantlibDragData().dbType, vl_db::kDbNone);
}

using DropTarget = LibraryFixture;

TEST_F(DropTarget, RefusesOtherKindsItsOwnListAndReadOnlyLibraries) {
    VantlibDropTarget projectMaterials(libs, vl_db::kDbProject, vantlib::kMaterial);
    VantlibDropTarget centralMaterials(libs, vl_db::kDbCentral, vantlib::kMaterial);
    const auto fromCentral = drag(vl_db::kDbCentral, vantlib::kMaterial, {{vantlib::kMaterial, 1}});

    EXPECT_EQ(projectMaterials.acceptance(fromCentral), wxDragCopy);
    EXPECT_EQ(centralMaterials.acceptance(fromCentral), wxDragNone);
    VantlibDropTarget projectCompositions(libs, vl_db::kDbProject, vantlib::kComposition);
    EXPECT_EQ(projectCompositions.acceptance(fromCentral), wxDragNone);
    VantlibDropTarget nowhere(nullptr, vl_db::kDbProject, vantlib::kMaterial);
    EXPECT_EQ(nowhere.acceptance(fromCentral), wxDragNone);

    // A drawing opened for reading offers its project library for reading only.
    material(project, L"Oak");
    db->save();
    auto readOnlyDrawing = OdDbDatabase::open(db->fileName(), true);
    vl_db::DocumentLibraries* readOnlyLibs = vl_db::docLibs(readOnlyDrawing.get());
    ASSERT_TRUE(readOnlyLibs->primary());
    VantlibDropTarget readOnlyProject(readOnlyLibs, vl_db::kDbProject, vantlib::kMaterial);
    EXPECT_EQ(readOnlyProject.acceptance(fromCentral), wxDragNone);
    vl_db::closeDocLibs(readOnlyDrawing.get());
}

TEST_F(DropTarget, DroppingOnADrawingWithoutProjectLibraryCreatesIt) {
    auto bare = OdDbDatabase::create(vl_app_test::od(path("bare.vldwg")), OdDb::kUnitsMillimeters);
    vl_db::DocumentLibraries* bareLibs = vl_db::docLibs(bare.get());
    ASSERT_FALSE(bareLibs->primary());
    VantlibDropTarget target(bareLibs, vl_db::kDbProject, vantlib::kMaterial);
    EXPECT_EQ(target.acceptance(drag(vl_db::kDbCentral, vantlib::kMaterial, {})), wxDragCopy);
    EXPECT_TRUE(bareLibs->primary());
    vl_db::closeDocLibs(bare.get());
}

TEST_F(DropTarget, CopiesEachObjectOnceAndReportsWhetherAnythingWasCopied) {
    const auto oak = material(central, L"Oak");
    const auto pine = material(central, L"Pine");
    VantlibDropTarget projectMaterials(libs, vl_db::kDbProject, vantlib::kMaterial);

    const auto twice = drag(vl_db::kDbCentral, vantlib::kMaterial, {oak->key(), oak->key(), pine->key()});
    EXPECT_EQ(projectMaterials.copyObjects(twice), wxDragCopy);
    EXPECT_EQ(project->count<vantlib::Material>(), 2u);
    EXPECT_FALSE(project->get<vantlib::Material>(vantlib::NameKey(L"Oak")).isNull());
    // The source library is never changed by a drop.
    EXPECT_EQ(central->count<vantlib::Material>(), 2u);

    // A clash is put to the user; keeping the existing one copies nothing new, so the source
    // does not refresh, and the user is told what was kept out.
    wxDragResult result = wxDragCopy;
    wxTEST_DIALOG(result = projectMaterials.copyObjects(drag(vl_db::kDbCentral, vantlib::kMaterial, {oak->key()})),
                  wxExpectModal<wxg::DlgQuestion>(wxg::DlgQuestion::kFirstAnswer),
                  wxExpectModal<wxMessageDialog>(wxID_OK));
    EXPECT_EQ(result, wxDragNone);
    EXPECT_EQ(project->count<vantlib::Material>(), 2u);

    // Composition lists pass their keys on as they come, tagged as materials.
    auto wall = vantlib::Composition::create(L"Wall");
    wall->append_ply(vantlib::Ply(oak, 20.0, vantlib::kFunctionFinish1));
    wall = central->save(wall);
    VantlibDropTarget projectCompositions(libs, vl_db::kDbProject, vantlib::kComposition);
    const auto walls = drag(vl_db::kDbCentral, vantlib::kComposition, {{vantlib::kComposition, wall->id()}});
    EXPECT_EQ(projectCompositions.acceptance(walls), wxDragCopy);
    // The wall brings its material along, whose name the project has: that is asked too.
    wxTEST_DIALOG(result = projectCompositions.copyObjects(walls),
                  wxExpectModal<wxg::DlgQuestion>(wxg::DlgQuestion::kFirstAnswer));
    EXPECT_EQ(result, wxDragCopy);
    EXPECT_FALSE(project->get<vantlib::Composition>(vantlib::NameKey(L"Wall")).isNull());
}
