// Measures of value definitions: stored keys compared exactly, labels by index, and indexes
// outside the table refused as the SDK refuses them.
#include <gtest/gtest.h>

#include <OdError.h>

#include "app/properties/Measures.h"

using namespace vl_app;

TEST(Measures, KeysAreComparedExactlyAndUnknownOnesMeanNoMeasure) {
    EXPECT_EQ(kAreaMeasure, getMeasure(OdString(L"AREA")));
    EXPECT_EQ(kMassMeasure, getMeasure(OdString(L"MASS")));
    EXPECT_EQ(kNoMeasure, getMeasure(OdString(L"area")));
    EXPECT_EQ(kNoMeasure, getMeasure(OdString()));
    EXPECT_EQ(kNoMeasure, getMeasure(OdString(L"LENGTH ")));
    for (int measure = 0; measure < kMeasureCount; ++measure)
        EXPECT_EQ(measure, getMeasure(measureKey(measure))) << "the key of each index leads back to it";
}

TEST(Measures, LabelsFollowTheChoiceAndOtherIndexesAreInvalid) {
    EXPECT_EQ(wxString(), measureLabel(kNoMeasure));
    EXPECT_EQ(wxString("Length"), measureLabel(kLengthMeasure));
    EXPECT_EQ(wxString("Mass"), measureLabel(kMassMeasure));
    for (int invalid : {-1, kMeasureCount}) {
        try {
            measureLabel(invalid);
            FAIL() << "index " << invalid << " gave a label";
        } catch (const OdError& e) {
            EXPECT_EQ(eInvalidIndex, e.code());
        }
        EXPECT_THROW(measureKey(invalid), OdError_InvalidIndex);
    }
}
