// The rules of the enumerated values editor that need no widgets: the one-line text of a list,
// what a cell converts to, the five checks, moving and removing rows, and the column widths.
#include <gtest/gtest.h>

#include "DecimalCommaLocale.h"
#include "app/properties/EnumValues.h"

using namespace vl_app;
using vl_db::EnumTypeSpecifier;

namespace {

std::vector<EnumRow> rowsOf(std::initializer_list<const char*> values) {
    std::vector<EnumRow> rows;
    for (const char* value : values)
        rows.push_back({value, wxString()});
    return rows;
}

std::vector<wxString> valuesOf(const std::vector<EnumRow>& rows) {
    std::vector<wxString> values;
    for (const EnumRow& row : rows)
        values.push_back(row.value);
    return values;
}

}  // namespace

TEST(EnumRowText, ListsValuesAloneOrWithTheirDescriptions) {
    EXPECT_EQ(enumRowText(EnumTypeSpecifier<long long>(6, {{1, L""}, {2, L""}}, false)), "1, 2");
    EXPECT_EQ(enumRowText(EnumTypeSpecifier<long long>(6, {{1, L"one"}, {2, L"two"}}, false)), "1 : one, 2 : two");
    // One description is enough to show every value as a pair.
    EXPECT_EQ(enumRowText(EnumTypeSpecifier<OdString>(11, {{L"A", L""}, {L"B", L"bee"}}, true)), "A : , B : bee");
    EXPECT_EQ(enumRowText(EnumTypeSpecifier<OdString>(11, {{L"only", L""}}, false)), "only");
    EXPECT_EQ(enumRowText(EnumTypeSpecifier<double>(10)), "");
    // Not an enumeration: no text.
    EXPECT_EQ(enumRowText(vl_db::TypeSpecifier<long long>(6)), "");
    EXPECT_EQ(enumRowText(vl_db::FormulaTypeSpecifier<OdString>(L"a+b")), "");
}

TEST(EnumRowText, RealsHaveSixteenSignificantDigitsWhateverTheLocale) {
    DecimalCommaLocale comma;
    ASSERT_TRUE(comma.active());
    EXPECT_EQ(formatEnumValue(0.1), "0.1");
    EXPECT_EQ(formatEnumValue(1.0 / 3.0), "0.3333333333333333");
    EXPECT_EQ(formatEnumValue(2.0), "2");
    EXPECT_EQ(formatEnumValue(-1.5e20), "-1.5e+20");
    EXPECT_EQ(formatEnumValue(-9223372036854775807LL - 1), "-9223372036854775808");
    EXPECT_EQ(enumRowText(EnumTypeSpecifier<double>(10, {{0.1, L""}, {2.5, L""}}, false)), "0.1, 2.5");
}

TEST(EnumCells, ConvertOnlyWhenTheWholeCellIsANumberOfTheType) {
    DecimalCommaLocale comma;
    ASSERT_TRUE(comma.active());
    EXPECT_EQ(parseEnumValue<long long>(" 42 "), 42);
    EXPECT_EQ(parseEnumValue<long long>("-7"), -7);
    EXPECT_FALSE(parseEnumValue<long long>("1.5"));
    EXPECT_FALSE(parseEnumValue<long long>("12abc"));
    EXPECT_FALSE(parseEnumValue<long long>("9223372036854775808"));
    EXPECT_FALSE(parseEnumValue<long long>(""));
    EXPECT_EQ(parseEnumValue<double>("1.5"), 1.5);
    EXPECT_EQ(parseEnumValue<double>("1e3"), 1000.0);
    // The decimal separator is the point, also in a locale that writes a comma.
    EXPECT_FALSE(parseEnumValue<double>("1,5"));
    EXPECT_FALSE(parseEnumValue<double>("nan"));
    EXPECT_FALSE(parseEnumValue<double>("inf"));
    // A formatted real reads back as the same number.
    EXPECT_EQ(parseEnumValue<double>(formatEnumValue(1.0 / 3.0)), 1.0 / 3.0);
    EXPECT_EQ(parseEnumValue<OdString>(" as typed "), OdString(L" as typed "));
    EXPECT_FALSE(parseEnumValue<OdString>("  "));
}

TEST(EnumChecks, RefuseValuesOfAnotherTypeAndUndefinedOrRepeatedValues) {
    EXPECT_EQ(readEnumRows<long long>(rowsOf({"1", "1.5"}), false).error, "Property values should be of integer type.");
    const auto reals = readEnumRows<double>(rowsOf({"1", "1.5"}), false);
    EXPECT_EQ(reals.error, "");
    ASSERT_EQ(reals.values.size(), 2u);
    EXPECT_EQ(reals.values[1].value, 1.5);
    EXPECT_EQ(readEnumRows<double>(rowsOf({"1", "x"}), false).error, "Property values should be of real type.");

    EXPECT_EQ(readEnumRows<long long>(rowsOf({"1", ""}), false).error, "One or more property values are undefined.");
    EXPECT_EQ(readEnumRows<OdString>(rowsOf({"A", " "}), false).error, "One or more property values are undefined.");
    // A value of the wrong type is reported before an empty one.
    EXPECT_EQ(readEnumRows<long long>(rowsOf({"", "x"}), false).error, "Property values should be of integer type.");

    EXPECT_EQ(readEnumRows<OdString>(rowsOf({"Oak", "Ash", "Oak"}), false).error, "Property values must be unique.");
    // Equal as numbers, whatever their text.
    EXPECT_EQ(readEnumRows<double>(rowsOf({"1", "1.0"}), false).error, "Property values must be unique.");
    EXPECT_EQ(readEnumRows<long long>(rowsOf({"7", "+7"}), false).error, "Property values must be unique.");
    // Texts differing in case are different values.
    EXPECT_EQ(readEnumRows<OdString>(rowsOf({"oak", "Oak"}), false).error, "");
}

TEST(EnumChecks, DescriptionsAreCheckedAndKeptOnlyWithMapping) {
    const std::vector<EnumRow> missing = {{"1", "one"}, {"2", ""}};
    EXPECT_EQ(readEnumRows<long long>(missing, true).error, "One or more descriptions are undefined.");
    const auto unmapped = readEnumRows<long long>(missing, false);
    EXPECT_EQ(unmapped.error, "");
    const std::vector<EnumRow> repeated = {{"1", "same"}, {"2", "same"}};
    EXPECT_EQ(readEnumRows<long long>(repeated, true).error, "Descriptions must be unique.");

    // Without Mapping the descriptions left in the grid are not stored.
    const auto dropped = readEnumRows<long long>(repeated, false);
    ASSERT_EQ(dropped.values.size(), 2u);
    EXPECT_TRUE(dropped.values[0].description.isEmpty());
    const auto kept = readEnumRows<OdString>({{"PL", "Plaster"}, {"TI", "Tiles"}}, true);
    ASSERT_EQ(kept.values.size(), 2u);
    EXPECT_EQ(kept.values[1].description, OdString(L"Tiles"));

    // An empty list is a valid list.
    const auto empty = readEnumRows<double>({}, true);
    EXPECT_EQ(empty.error, "");
    EXPECT_TRUE(empty.values.empty());
}

TEST(EnumRowMoves, StopAtTheEdgesAndCarryTheSelection) {
    std::vector<EnumRow> rows = rowsOf({"a", "b", "c", "d"});
    EXPECT_EQ(moveRowsUp(rows, {0}), std::vector<int>{0});
    EXPECT_EQ(valuesOf(rows), (std::vector<wxString>{"a", "b", "c", "d"}));
    EXPECT_EQ(moveRowsDown(rows, {3}), std::vector<int>{3});
    EXPECT_EQ(valuesOf(rows), (std::vector<wxString>{"a", "b", "c", "d"}));
    // A first selected row at the edge holds back the others too.
    moveRowsUp(rows, {2, 0});
    EXPECT_EQ(valuesOf(rows), (std::vector<wxString>{"a", "b", "c", "d"}));

    // A block moves as one, in whatever order it was selected.
    EXPECT_EQ(moveRowsUp(rows, {2, 1}), (std::vector<int>{0, 1}));
    EXPECT_EQ(valuesOf(rows), (std::vector<wxString>{"b", "c", "a", "d"}));
    EXPECT_EQ(moveRowsDown(rows, {0, 1}), (std::vector<int>{2, 1}));
    EXPECT_EQ(valuesOf(rows), (std::vector<wxString>{"a", "b", "c", "d"}));
    // Descriptions travel with their values.
    rows[1].description = "bee";
    moveRowsDown(rows, {1});
    EXPECT_EQ(rows[2].value, "b");
    EXPECT_EQ(rows[2].description, "bee");
}

TEST(EnumRowRemoval, SelectsTheRowThatTookTheFirstRemovedPlace) {
    std::vector<EnumRow> rows = rowsOf({"a", "b", "c", "d", "e"});
    EXPECT_EQ(removeRows(rows, {3, 1}), 1);
    EXPECT_EQ(valuesOf(rows), (std::vector<wxString>{"a", "c", "e"}));
    // The last row gone: its predecessor is selected.
    EXPECT_EQ(removeRows(rows, {2}), 1);
    EXPECT_EQ(removeRows(rows, {7}), -1);
    EXPECT_EQ(rows.size(), 2u);
    EXPECT_EQ(removeRows(rows, {0, 1}), -1);
    EXPECT_TRUE(rows.empty());
}

TEST(EnumColumnWidths, KeepTheShareAndHoldADragBetweenTheMinimums) {
    EXPECT_EQ(enumColumnWidths(400, 0.25).value, 100);
    EXPECT_EQ(enumColumnWidths(400, 0.25).description, 300);
    // Rounding never makes the columns wider than the room they share.
    const EnumColumns odd = enumColumnWidths(301, 0.5);
    EXPECT_EQ(odd.value + odd.description, 301);
    EXPECT_EQ(draggedValueColumn(30, 400, 70), 70);
    EXPECT_EQ(draggedValueColumn(70, 400, 70), 70);
    EXPECT_EQ(draggedValueColumn(200, 400, 70), 200);
    EXPECT_EQ(draggedValueColumn(390, 400, 70), 330);
}
