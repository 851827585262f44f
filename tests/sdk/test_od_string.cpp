#include <gtest/gtest.h>

#include "OdArray.h"
#include "OdString.h"
#include "QcSmartPtr.h"

TEST(OdString, Utf8RoundTripKeepsNonAsciiText) {
    OdString text(L"kg/m\u00B3 \u00B5m \u00C5 \u20AC \U0001F600");
    EXPECT_EQ(OdString::fromUtf8(text.toUtf8()), text);
    EXPECT_EQ(OdString::fromUtf8("\xC3\x85"), OdString(L"\u00C5"));
    // A broken sequence becomes a replacement character instead of being dropped or overrun.
    EXPECT_EQ(OdString::fromUtf8("a\xC3").getLength(), 2);
}

TEST(OdString, FormatGrowsBeyondItsFirstBuffer) {
    std::wstring longName(1000, L'x');
    OdString s = OdString::formatted(L"%ls-%d", longName.c_str(), 42);
    EXPECT_EQ(s.getLength(), 1003);
    EXPECT_EQ(s.right(3), OdString(L"-42"));
}

TEST(OdString, CaseInsensitiveCompareAndFind) {
    EXPECT_EQ(OdString(L"Brick").iCompare(L"bRICK"), 0);
    EXPECT_LT(OdString(L"Brick").iCompare(L"brickwork"), 0);
    EXPECT_EQ(OdString(L"Concrete C30").iFind(L"c30"), 9);
    EXPECT_EQ(OdString(L"Concrete").iFind(L"steel"), -1);
    EXPECT_EQ(OdString(L"A-B-3").findRev(L'-'), 3);
    EXPECT_EQ(OdString(L"A-B-3").mid(4), OdString(L"3"));
    EXPECT_EQ(OdString(L"abc").mid(10), OdString());
}

TEST(OdArray, OutOfRangeAccessThrowsInvalidIndex) {
    OdArray<int> values{1, 2};
    EXPECT_THROW(values[2], OdError_InvalidIndex);
    EXPECT_THROW(values.insertAt(3, 5), OdError_InvalidIndex);
    values.insertAt(2, 3);
    EXPECT_EQ(values.last(), 3);
}

namespace {
struct Counted : QcRefCounted {
    explicit Counted(int* deaths) : deaths(deaths) {}
    ~Counted() override { ++*deaths; }
    int* deaths;
};
}  // namespace

TEST(QcSmartPtr, LastReleaseDeletesOnce) {
    int deaths = 0;
    {
        QcSmartPtr<Counted> a(new Counted(&deaths));
        QcSmartPtr<Counted> b = a;
        EXPECT_EQ(a->numRefs(), 2);
        a = nullptr;
        EXPECT_EQ(deaths, 0);
    }
    EXPECT_EQ(deaths, 1);
}
