#include <gtest/gtest.h>

#include <set>

#include "OdCmColor.h"
#include "OdError.h"

namespace {

uint32_t rgb(int r, int g, int b) { return (uint32_t(r) << 16) | (uint32_t(g) << 8) | uint32_t(b); }

}  // namespace

TEST(ColorPalette, NamedAndGreyEntries) {
    using OdCmEntityColor::lookUpRGB;
    EXPECT_EQ(lookUpRGB(1), rgb(255, 0, 0));
    EXPECT_EQ(lookUpRGB(2), rgb(255, 255, 0));
    EXPECT_EQ(lookUpRGB(3), rgb(0, 255, 0));
    EXPECT_EQ(lookUpRGB(4), rgb(0, 255, 255));
    EXPECT_EQ(lookUpRGB(5), rgb(0, 0, 255));
    EXPECT_EQ(lookUpRGB(6), rgb(255, 0, 255));
    EXPECT_EQ(lookUpRGB(7), rgb(255, 255, 255));
    EXPECT_EQ(lookUpRGB(8), rgb(128, 128, 128));
    EXPECT_EQ(lookUpRGB(9), rgb(192, 192, 192));
    EXPECT_EQ(lookUpRGB(250), rgb(51, 51, 51));
    EXPECT_EQ(lookUpRGB(255), rgb(255, 255, 255));
    EXPECT_THROW(lookUpRGB(256), OdError_InvalidIndex);
}

TEST(ColorPalette, HueEntriesFollowTheirScheme) {
    using OdCmEntityColor::lookUpRGB;
    // Ten entries per hue: five brightness levels, each strong then pale.
    EXPECT_EQ(lookUpRGB(10), rgb(255, 0, 0));
    EXPECT_EQ(lookUpRGB(11), rgb(255, 127, 127));
    EXPECT_EQ(lookUpRGB(12), rgb(165, 0, 0));
    EXPECT_EQ(lookUpRGB(18), rgb(38, 0, 0));
    EXPECT_EQ(lookUpRGB(20), rgb(255, 63, 0));
    EXPECT_EQ(lookUpRGB(30), rgb(255, 127, 0));
    EXPECT_EQ(lookUpRGB(50), rgb(255, 255, 0));
    EXPECT_EQ(lookUpRGB(90), rgb(0, 255, 0));
    EXPECT_EQ(lookUpRGB(130), rgb(0, 255, 255));
    EXPECT_EQ(lookUpRGB(170), rgb(0, 0, 255));
    EXPECT_EQ(lookUpRGB(210), rgb(255, 0, 255));
    EXPECT_EQ(lookUpRGB(240), rgb(255, 0, 63));
    EXPECT_EQ(lookUpRGB(249), rgb(38, 19, 23));
}

TEST(ColorPalette, NearestIndexFindsEachEntryAgain) {
    std::set<uint32_t> seen;
    for (int i = 1; i < 256; ++i) {
        uint32_t value = OdCmEntityColor::lookUpRGB(uint16_t(i));
        uint16_t found = OdCmEntityColor::lookUpACI(uint8_t(value >> 16), uint8_t(value >> 8), uint8_t(value));
        EXPECT_EQ(OdCmEntityColor::lookUpRGB(found), value) << i;
        // A duplicate colour is found under its first index.
        if (!seen.insert(value).second) {
            EXPECT_LT(found, i);
        }
    }
    EXPECT_EQ(OdCmEntityColor::lookUpACI(255, 255, 255), 7);
    EXPECT_EQ(OdCmEntityColor::lookUpACI(250, 5, 5), 1);
    EXPECT_EQ(OdCmEntityColor::lookUpACI(50, 50, 50), 250);
}

TEST(OdCmColor, MethodsFromIndexAndRgb) {
    EXPECT_TRUE(OdCmColor().isByLayer());
    EXPECT_TRUE(OdCmColor::fromIndex(0).isByBlock());
    EXPECT_TRUE(OdCmColor::fromIndex(256).isByLayer());
    EXPECT_THROW(OdCmColor::fromIndex(257), OdError);

    OdCmColor index = OdCmColor::fromIndex(30);
    EXPECT_TRUE(index.isByACI());
    EXPECT_EQ(index.colorIndex(), 30);
    EXPECT_EQ(index.red(), 255);
    EXPECT_EQ(index.green(), 127);
    EXPECT_EQ(index.blue(), 0);

    OdCmColor trueColor = OdCmColor::fromRGB(250, 5, 5);
    EXPECT_TRUE(trueColor.isByColor());
    EXPECT_EQ(trueColor.rgb(), rgb(250, 5, 5));
    EXPECT_EQ(trueColor.colorIndex(), 1);
    EXPECT_EQ(OdCmColor(OdCmEntityColor::kByLayer).colorIndex(), 256);
    EXPECT_EQ(OdCmColor(OdCmEntityColor::kByBlock).rgb(), 0u);

    // Switching methods keeps the colour as close as it can.
    trueColor.setColorMethod(OdCmEntityColor::kByACI);
    EXPECT_EQ(trueColor.colorIndex(), 1);
    index.setColorMethod(OdCmEntityColor::kByColor);
    EXPECT_EQ(index.rgb(), rgb(255, 127, 0));

    // Same RGB through two methods is still two different colours.
    EXPECT_NE(OdCmColor::fromIndex(1), OdCmColor::fromRGB(255, 0, 0));
    EXPECT_EQ(OdCmColor::fromIndex(1), OdCmColor::fromIndex(1));
}

TEST(OdCmColor, TextFormRoundTripsAndRejectsJunk) {
    const OdCmColor colors[] = {OdCmColor(), OdCmColor(OdCmEntityColor::kByBlock), OdCmColor(OdCmEntityColor::kNone),
                                OdCmColor(OdCmEntityColor::kForeground), OdCmColor::fromIndex(42),
                                OdCmColor::fromRGB(1, 2, 3)};
    for (const OdCmColor& color : colors) EXPECT_EQ(OdCmColor::fromString(color.toString()), color) << color.toString().toUtf8();
    EXPECT_EQ(OdCmColor::fromString(L" rgb 10,20,30 ").rgb(), rgb(10, 20, 30));
    for (const wchar_t* bad : {L"", L"RED", L"ACI 0", L"ACI 256", L"ACI 5x", L"RGB 1,2", L"RGB 1,2,300", L"RGB 1,2,3,4"})
        EXPECT_THROW(OdCmColor::fromString(bad), OdError) << OdString(bad).toUtf8();
}
