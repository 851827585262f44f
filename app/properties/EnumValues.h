#pragma once
// The widget-free rules of the enumerated values editor: how a list reads as one line of text,
// how a grid cell converts to a value of the list's type, which rows the move and remove
// buttons touch, how wide the grid's two columns are, and what makes a list invalid.
#include <optional>
#include <vector>

#include <wx/string.h>

#include <OdString.h>

#include <vl_db/TypeSpecifier.h>

namespace vl_app {

// The text of one value as the editor shows it: integers in plain decimal, reals with 16
// significant digits in the shorter of fixed and scientific notation, texts as they are.
// Independent of the process locale.
wxString formatEnumValue(long long value);
wxString formatEnumValue(double value);
wxString formatEnumValue(const OdString& value);

// The one-line text of a list: "v1, v2" without descriptions, "v1 : d1, v2 : d2" with them.
template <class T>
wxString enumListText(const typename vl_db::EnumTypeSpecifier<T>::Values& values);
// The text of a definition's specifier: its list for an enumeration of an integer, real or
// text, an empty text for anything else.
wxString enumRowText(const vl_db::AbstractTypeSpecifier& specifier);

// A cell converted to T: the whole cell must be the number (surrounding blanks allowed);
// nothing for a cell that is not one, and for an empty cell. Texts convert as they are.
template <class T>
std::optional<T> parseEnumValue(const wxString& cell);
template <>
std::optional<long long> parseEnumValue<long long>(const wxString& cell);
template <>
std::optional<double> parseEnumValue<double>(const wxString& cell);
template <>
std::optional<OdString> parseEnumValue<OdString>(const wxString& cell);

// One row of the editor's grid as the user left it.
struct EnumRow {
    wxString value;
    wxString description;
};

// The list the rows make, or the message of the first check they fail (in this order: a value
// that is not of the type, an empty value, two equal values, and with descriptions an empty
// description and two equal descriptions).
template <class T>
struct EnumReading {
    typename vl_db::EnumTypeSpecifier<T>::Values values;
    wxString error;  // empty when the rows are valid
};
template <class T>
EnumReading<T> readEnumRows(const std::vector<EnumRow>& rows, bool withDescriptions);

// The rows of a stored list as the grid shows them; a real is written with as many digits as
// it takes to read back as the same number.
template <class T>
std::vector<EnumRow> enumRows(const typename vl_db::EnumTypeSpecifier<T>::Values& values);

// The title of the value column: "Integer", "Real" or "String".
template <class T>
wxString enumTypeTitle();
template <>
wxString enumTypeTitle<long long>();
template <>
wxString enumTypeTitle<double>();
template <>
wxString enumTypeTitle<OdString>();

// Moves the rows one place up (or down): the selected rows are taken in the given order, each
// swapped with its neighbour; the moving stops at the first that would leave the list. Nothing
// moves when the first selected row is the first (or last) row. Returns the selection after
// the move, which follows the rows.
std::vector<int> moveRowsUp(std::vector<EnumRow>& rows, const std::vector<int>& selection);
std::vector<int> moveRowsDown(std::vector<EnumRow>& rows, const std::vector<int>& selection);

// Removes the given rows (any order, duplicates ignored) and returns the row to select
// afterwards: the one now at the first removed position, else the last row; -1 when the list
// is empty afterwards or nothing was removed.
int removeRows(std::vector<EnumRow>& rows, const std::vector<int>& selection);

// The grid's column widths. The first column keeps its share of the available width; a drag of
// the first column is held between the minimum and the available width less the minimum.
constexpr int kEnumColumnMinimum = 70;  // device-independent pixels
struct EnumColumns {
    int value;
    int description;
};
// The widths for an available width and a share of the first column.
EnumColumns enumColumnWidths(int available, double share);
// The first column's width after a drag to `dragged` pixels, with `minimum` the minimum in
// pixels of the screen.
int draggedValueColumn(int dragged, int available, int minimum);

}  // namespace vl_app
