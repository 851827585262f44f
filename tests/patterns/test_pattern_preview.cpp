// Pattern pictures and the gallery; needs a display (the test run uses xvfb-run).
#include <gtest/gtest.h>

#include <filesystem>

#include <unistd.h>

#include <wx/app.h>
#include <wx/image.h>

#include "HatchPatternGallery.h"
#include "OdDbDatabase.h"
#include "OdError.h"
#include "PatternPreview.h"
#include "WxDisplay.h"

using namespace ca;
namespace fs = std::filesystem;

namespace {

class PatternPreviewTest : public ::testing::Test {
protected:
    // The other suites of this program need no display, so this one starts wx itself. A GUI
    // application object must exist before the start, or wx starts console-only.
    static void SetUpTestSuite() {
        static bool started = false;
        if (!started) {
            static int argc = 1;
            static char name[] = "test_patterns";
            static char* argv[] = {name, nullptr};
            started = vl_test::startWxWithDisplay([] { return new wxApp; }, argc, argv);
        }
        ASSERT_TRUE(started) << "the pattern previews need a display (run under xvfb-run)";
    }

    static wxBitmap preview(const wxString& name, int type, double scale = 1.0, bool doubleHatch = false,
                            wxSize size = wxSize(64, 64), OdDb::UnitsValue units = OdDb::kUnitsMillimeters,
                            double angle = 0.0) {
        return wxg::PatternPreview(units, size).getPreview(name, type, doubleHatch, scale, *wxWHITE, *wxBLACK, angle);
    }
};

struct PixelCounts {
    size_t white = 0, black = 0, between = 0;
};

PixelCounts countPixels(const wxBitmap& bitmap) {
    wxImage image = bitmap.ConvertToImage();
    PixelCounts counts;
    const unsigned char* rgb = image.GetData();
    for (int i = 0; i < image.GetWidth() * image.GetHeight(); ++i, rgb += 3) {
        if (rgb[0] == 255 && rgb[1] == 255 && rgb[2] == 255)
            ++counts.white;
        else if (rgb[0] == 0 && rgb[1] == 0 && rgb[2] == 0)
            ++counts.black;
        else
            ++counts.between;
    }
    return counts;
}

bool samePicture(const wxBitmap& a, const wxBitmap& b) {
    wxImage x = a.ConvertToImage(), y = b.ConvertToImage();
    return x.GetSize() == y.GetSize() &&
           std::equal(x.GetData(), x.GetData() + 3 * x.GetWidth() * x.GetHeight(), y.GetData());
}

}  // namespace

TEST_F(PatternPreviewTest, LinePatternsAreDrawnAntiAliasedOnTheBackground) {
    wxBitmap bitmap = preview("DIAG", kPreDefined);
    ASSERT_TRUE(bitmap.IsOk());
    EXPECT_EQ(bitmap.GetSize(), wxSize(64, 64));
    PixelCounts counts = countPixels(bitmap);
    EXPECT_GT(counts.white, 64u * 64u / 3);          // mostly background
    EXPECT_GT(counts.between + counts.black, 200u);  // several lines
    EXPECT_GT(counts.between, 100u);                 // diagonal edges are smoothed
}

TEST_F(PatternPreviewTest, SolidFillsWithTheForegroundInAnyCase) {
    for (int type : {kPreDefined, kCustomDefined}) {
        PixelCounts counts = countPixels(preview("solid", type, 3.0, false, wxSize(40, 20)));
        EXPECT_EQ(counts.black, 40u * 20u);
    }
}

TEST_F(PatternPreviewTest, ScaleAngleAndDoubleHatchChangeThePicture) {
    EXPECT_FALSE(samePicture(preview("BRICK", kPreDefined, 0.1), preview("brick", kPreDefined, 0.2)));
    // A drafting scale far above the picture's size still shows several lines, not one.
    PixelCounts coarse = countPixels(preview("DIAG", kPreDefined, 40.0, false, wxSize(32, 32)));
    EXPECT_GT(coarse.between + coarse.black, 120u);
    EXPECT_TRUE(samePicture(preview("BRICK", kPreDefined, 1.0), preview("brick", kPreDefined, 1.0)));
    EXPECT_FALSE(samePicture(preview("_USER", kUserDefined, 5.0), preview("_USER", kUserDefined, 10.0)));
    EXPECT_FALSE(samePicture(preview("_USER", kUserDefined, 5.0), preview("_USER", kUserDefined, 5.0, true)));
    EXPECT_FALSE(samePicture(preview("_USER", kUserDefined, 5.0),
                             preview("_USER", kUserDefined, 5.0, false, wxSize(64, 64), OdDb::kUnitsMillimeters, 0.5)));
}

TEST_F(PatternPreviewTest, UserSpacingIsMeasuredInTheDrawingUnits) {
    // 5 mm in a millimetre drawing and 0.005 in a metre drawing are the same lines.
    EXPECT_TRUE(samePicture(preview("_USER", kUserDefined, 5.0, true),
                            preview("_USER", kUserDefined, 0.005, true, wxSize(64, 64), OdDb::kUnitsMeters)));
    // The same read from a drawing measured in metres; no drawing means millimetres.
    fs::path file = fs::temp_directory_path() / ("vl_patterns_units_" + std::to_string(::getpid()) + ".vldwg");
    fs::remove(file);
    {
        auto drawing = OdDbDatabase::create(OdString::fromUtf8(file.string()), OdDb::kUnitsMeters);
        wxg::PatternPreview fromDrawing(drawing.get(), wxSize(64, 64));
        EXPECT_EQ(fromDrawing.drawingUnits(), OdDb::kUnitsMeters);
        EXPECT_TRUE(samePicture(fromDrawing.getPreview("_USER", kUserDefined, true, 0.005, *wxWHITE, *wxBLACK),
                                preview("_USER", kUserDefined, 5.0, true)));
    }
    fs::remove(file);
    EXPECT_EQ(wxg::PatternPreview(nullptr, wxSize(8, 8)).drawingUnits(), OdDb::kUnitsMillimeters);
    // Spacing finer than the pixels still gives lines, not a black square.
    PixelCounts dense = countPixels(preview("_USER", kUserDefined, 1e-6));
    EXPECT_GT(dense.white + dense.between, 64u * 64u / 4);
}

TEST_F(PatternPreviewTest, EveryCataloguePatternShowsAtSmallAndWideSizes) {
    for (const CataloguedPattern& entry : PatternCatalogue::instance().patterns()) {
        if (entry.pattern.isSolidFill()) continue;
        for (wxSize size : {wxSize(32, 32), wxSize(200, 40)}) {
            SCOPED_TRACE(entry.pattern.name.toUtf8());
            PixelCounts counts = countPixels(preview(entry.pattern.name.c_str(), entry.type, 1.0, false, size));
            size_t total = static_cast<size_t>(size.x) * size.y;
            EXPECT_GT(counts.black + counts.between, total / 50);
            EXPECT_GT(counts.white, total / 5);
        }
    }
}

TEST_F(PatternPreviewTest, BadRequestsThrowOdError) {
    try {
        preview("NO-SUCH-PATTERN", kPreDefined);
        FAIL() << "expected OdError";
    } catch (const OdError& error) {
        EXPECT_EQ(error.code(), eKeyNotFound);
    }
    EXPECT_THROW(preview("DIAG", 5), OdError);
    EXPECT_THROW(preview("DIAG", kPreDefined, 0.0), OdError);
    EXPECT_THROW(preview("DIAG", kPreDefined, -1.0), OdError);
    EXPECT_THROW(preview("DIAG", kPreDefined, 1.0, false, wxSize(0, 10)), OdError);
}

TEST_F(PatternPreviewTest, GalleryShowsEveryPatternAndSelectsByName) {
    wxg::DlgHatchPatternGallery dialog(nullptr);
    wxg::HatchPatternGallery* gallery = dialog.gallery();
    ASSERT_EQ(gallery->patternCount(), PatternCatalogue::instance().patterns().size());
    EXPECT_GE(gallery->columns(), 1);

    EXPECT_TRUE(gallery->select("brick"));
    EXPECT_EQ(gallery->selectedName(), wxString("BRICK"));
    EXPECT_FALSE(gallery->select("no such pattern"));

    // Cells do not overlap and the hit test finds the pattern under each swatch.
    size_t last = gallery->patternCount() - 1;
    EXPECT_EQ(gallery->hitTest(gallery->swatchRect(last).GetTopLeft() + wxPoint(2, 2)), static_cast<int>(last));
    EXPECT_FALSE(gallery->swatchRect(0).Intersects(gallery->swatchRect(1)));

    wxBitmap all = gallery->renderAll(6);
    ASSERT_TRUE(all.IsOk());
    EXPECT_GE(all.GetWidth(), 6 * 96);
    EXPECT_GE(all.GetHeight(), static_cast<int>((gallery->patternCount() + 5) / 6) * 72);
}
