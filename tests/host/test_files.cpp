// File names, absolute paths and the reference-file search.
#include <gtest/gtest.h>

#include <wx/filename.h>

#include "CaPreferences.h"
#include "OaApp.h"
#include "OdDbDatabase.h"
#include "OdStringWx.h"
#include "TestSupport.h"
#include "UtFile.h"

TEST(UtFileName, BareNameIsItsOwnFullPath) {
    ut::FileName bare(OdString(L"central.vlib"));
    EXPECT_EQ(bare.fullPath(), bare.fullName());
    ut::FileName withFolder(OdString(L"/old/place/central.vlib"));
    EXPECT_EQ(withFolder.fullPath(), L"/old/place/central.vlib");
    EXPECT_EQ(withFolder.fullName(), L"central.vlib");
    EXPECT_EQ(withFolder.name(), L"central");
    EXPECT_EQ(withFolder.ext(), L"vlib");
    EXPECT_TRUE(withFolder.isAbsolute());
}

TEST(UtAbsolutePath, ResolvesAgainstTheDrawingsFolder) {
    EXPECT_EQ(ut::getAbsolutePath(L"lib/project.vlib", L"/work/house/house.vldwg"), L"/work/house/lib/project.vlib");
    EXPECT_EQ(ut::getAbsolutePath(L"../shared/central.vlib", L"/work/house/house.vldwg"), L"/work/shared/central.vlib");
    EXPECT_EQ(ut::getAbsolutePath(L"/abs/x/../y.vlib", L"/work/house/house.vldwg"), L"/abs/y.vlib");
    EXPECT_EQ(ut::getAbsolutePath(L"", L"/work/house.vldwg"), L"");
}

TEST(FindReferenceFile, LooksNextToTheDrawingThenAlongTheSearchPaths) {
    FreshSettings settings;
    TempFolder drawingFolder;
    TempFolder searchA;
    TempFolder searchB;
    auto drawing = OdDbDatabase::create(toOd(drawingFolder.file("house.vldwg")), OdDb::kUnitsMeters);
    drawingFolder.write("beside.vlib", "x");
    searchB.write("central.vlib", "x");
    oa::appPreferences().set_ReferenceSearchPaths(toOd(searchA.path() + ";" + searchB.path()));

    OdString found;
    ASSERT_TRUE(oa::findReferenceFile(found, L"beside.vlib", drawing.get()));
    EXPECT_EQ(found, toOd(drawingFolder.file("beside.vlib")));
    ASSERT_TRUE(oa::findReferenceFile(found, L"central.vlib", drawing.get()));
    EXPECT_EQ(found, toOd(searchB.file("central.vlib")));
    ASSERT_TRUE(oa::findReferenceFile(found, L"central.vlib", nullptr)) << "search paths work without a drawing";

    found = L"unchanged";
    EXPECT_FALSE(oa::findReferenceFile(found, L"missing.vlib", drawing.get()));
    EXPECT_FALSE(oa::findReferenceFile(found, toOd(searchA.file("central.vlib")), drawing.get()))
        << "an absolute path is taken as it is";
    EXPECT_FALSE(oa::findReferenceFile(found, L"", drawing.get()));
    EXPECT_EQ(found, L"unchanged");
}
