#include "app/properties/EnumValues.h"

#include <algorithm>
#include <cmath>
#include <locale>
#include <set>
#include <sstream>

#include <wx/intl.h>

#include <OdStringWx.h>

namespace vl_app {

using vl_db::EnumTypeSpecifier;

wxString formatEnumValue(long long value) { return wxString::Format("%lld", value); }

namespace {

wxString formatReal(double value, int significantDigits) {
    // The classic locale keeps the decimal point whatever the user's locale says.
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text.precision(significantDigits);
    text << value;
    return wxString::FromUTF8(text.str());
}

// The shortest text that reads back as the same number, so that OK on an untouched cell keeps
// the stored value exactly.
wxString cellText(double value) {
    for (int digits = 15; digits < 17; ++digits) {
        const wxString text = formatReal(value, digits);
        double back = 0.0;
        if (text.ToCDouble(&back) && back == value)
            return text;
    }
    return formatReal(value, 17);
}

template <class T>
wxString cellText(const T& value) {
    return formatEnumValue(value);
}

}  // namespace

wxString formatEnumValue(double value) { return formatReal(value, 16); }

wxString formatEnumValue(const OdString& value) { return toWx(value); }

template <class T>
wxString enumListText(const typename EnumTypeSpecifier<T>::Values& values) {
    bool withDescriptions = false;
    for (const auto& entry : values)
        withDescriptions = withDescriptions || !entry.description.isEmpty();
    wxString text;
    for (const auto& entry : values) {
        if (withDescriptions)
            text += wxString::Format("%s : %s, ", formatEnumValue(entry.value), toWx(entry.description));
        else
            text += wxString::Format("%s, ", formatEnumValue(entry.value));
    }
    // Without the separator after the last value.
    if (!text.empty())
        text.RemoveLast(2);
    return text;
}

namespace {

template <class T>
const EnumTypeSpecifier<T>* asEnumeration(const vl_db::AbstractTypeSpecifier& specifier) {
    return dynamic_cast<const EnumTypeSpecifier<T>*>(&specifier);
}

}  // namespace

wxString enumRowText(const vl_db::AbstractTypeSpecifier& specifier) {
    if (specifier.kind() != vantlib::TypeSpecification::kEnumeration)
        return wxString();
    switch (specifier.primitiveCode()) {
        case vl_db::kIntegerCode:
            if (const auto* list = asEnumeration<long long>(specifier))
                return enumListText<long long>(list->values());
            break;
        case vl_db::kRealCode:
            if (const auto* list = asEnumeration<double>(specifier))
                return enumListText<double>(list->values());
            break;
        case vl_db::kStringCode:
            if (const auto* list = asEnumeration<OdString>(specifier))
                return enumListText<OdString>(list->values());
            break;
        default:
            break;
    }
    return wxString();
}

template <>
std::optional<long long> parseEnumValue<long long>(const wxString& cell) {
    const wxString text = cell.Strip(wxString::both);
    long long value = 0;
    if (text.empty() || !text.ToLongLong(&value, 10))
        return std::nullopt;
    return value;
}

template <>
std::optional<double> parseEnumValue<double>(const wxString& cell) {
    const wxString text = cell.Strip(wxString::both);
    double value = 0.0;
    // Not-a-number equals nothing, not even itself, and infinity is no value to choose from.
    if (text.empty() || !text.ToCDouble(&value) || !std::isfinite(value))
        return std::nullopt;
    return value;
}

template <>
std::optional<OdString> parseEnumValue<OdString>(const wxString& cell) {
    if (cell.Strip(wxString::both).empty())
        return std::nullopt;
    return toOd(cell);
}

template <>
wxString enumTypeTitle<long long>() {
    return _("Integer");
}
template <>
wxString enumTypeTitle<double>() {
    return _("Real");
}
template <>
wxString enumTypeTitle<OdString>() {
    return _("String");
}

namespace {

// The message for a cell that does not convert; none for texts, which always do.
template <class T>
wxString typeMessage();
template <>
wxString typeMessage<long long>() {
    return _("Property values should be of integer type.");
}
template <>
wxString typeMessage<double>() {
    return _("Property values should be of real type.");
}
template <>
wxString typeMessage<OdString>() {
    return wxString();
}

bool isBlank(const wxString& text) { return text.Strip(wxString::both).empty(); }

}  // namespace

template <class T>
EnumReading<T> readEnumRows(const std::vector<EnumRow>& rows, bool withDescriptions) {
    EnumReading<T> reading;
    // An empty cell is reported as undefined rather than as a value of the wrong type.
    for (const EnumRow& row : rows) {
        if (!isBlank(row.value) && !parseEnumValue<T>(row.value)) {
            reading.error = typeMessage<T>();
            return reading;
        }
    }
    for (const EnumRow& row : rows) {
        if (isBlank(row.value)) {
            reading.error = _("One or more property values are undefined.");
            return reading;
        }
    }
    for (const EnumRow& row : rows) {
        const T value = *parseEnumValue<T>(row.value);
        for (const auto& earlier : reading.values) {
            if (earlier.value == value) {
                reading.error = _("Property values must be unique.");
                reading.values.clear();
                return reading;
            }
        }
        reading.values.push_back({value, withDescriptions ? toOd(row.description) : OdString()});
    }
    if (!withDescriptions)
        return reading;
    for (const EnumRow& row : rows) {
        if (isBlank(row.description)) {
            reading.error = _("One or more descriptions are undefined.");
            reading.values.clear();
            return reading;
        }
    }
    std::set<wxString> descriptions;
    for (const EnumRow& row : rows) {
        if (!descriptions.insert(row.description).second) {
            reading.error = _("Descriptions must be unique.");
            reading.values.clear();
            return reading;
        }
    }
    return reading;
}

template <class T>
std::vector<EnumRow> enumRows(const typename EnumTypeSpecifier<T>::Values& values) {
    std::vector<EnumRow> rows;
    rows.reserve(values.size());
    for (const auto& entry : values)
        rows.push_back({cellText(entry.value), toWx(entry.description)});
    return rows;
}

namespace {

// Rows taken nearest to the direction of the move first, so that a block of selected rows
// moves as one.
std::vector<int> movingOrder(const std::vector<EnumRow>& rows, std::vector<int> selection, bool upwards) {
    selection.erase(std::remove_if(selection.begin(), selection.end(),
                                   [&](int row) { return row < 0 || row >= int(rows.size()); }),
                    selection.end());
    std::sort(selection.begin(), selection.end());
    selection.erase(std::unique(selection.begin(), selection.end()), selection.end());
    if (!upwards)
        std::reverse(selection.begin(), selection.end());
    return selection;
}

std::vector<int> moveRows(std::vector<EnumRow>& rows, const std::vector<int>& selection, int step) {
    std::vector<int> order = movingOrder(rows, selection, step < 0);
    if (order.empty())
        return order;
    std::vector<int> moved = order;
    for (std::size_t i = 0; i < order.size(); ++i) {
        const int target = order[i] + step;
        if (target < 0 || target >= int(rows.size()))
            break;
        std::swap(rows[order[i]], rows[target]);
        moved[i] = target;
    }
    return moved;
}

}  // namespace

std::vector<int> moveRowsUp(std::vector<EnumRow>& rows, const std::vector<int>& selection) {
    return moveRows(rows, selection, -1);
}

std::vector<int> moveRowsDown(std::vector<EnumRow>& rows, const std::vector<int>& selection) {
    return moveRows(rows, selection, +1);
}

int removeRows(std::vector<EnumRow>& rows, const std::vector<int>& selection) {
    const std::vector<int> order = movingOrder(rows, selection, true);
    if (order.empty())
        return -1;
    for (auto it = order.rbegin(); it != order.rend(); ++it)
        rows.erase(rows.begin() + *it);
    if (rows.empty())
        return -1;
    return std::min(order.front(), int(rows.size()) - 1);
}

EnumColumns enumColumnWidths(int available, double share) {
    const int width = std::max(available, 0);
    const int value = int(std::lround(width * share));
    return {value, width - value};
}

int draggedValueColumn(int dragged, int available, int minimum) {
    if (dragged < minimum)
        return minimum;
    return std::min(dragged, available - minimum);
}

template wxString enumListText<long long>(const EnumTypeSpecifier<long long>::Values&);
template wxString enumListText<double>(const EnumTypeSpecifier<double>::Values&);
template wxString enumListText<OdString>(const EnumTypeSpecifier<OdString>::Values&);
template EnumReading<long long> readEnumRows<long long>(const std::vector<EnumRow>&, bool);
template EnumReading<double> readEnumRows<double>(const std::vector<EnumRow>&, bool);
template EnumReading<OdString> readEnumRows<OdString>(const std::vector<EnumRow>&, bool);
template std::vector<EnumRow> enumRows<long long>(const EnumTypeSpecifier<long long>::Values&);
template std::vector<EnumRow> enumRows<double>(const EnumTypeSpecifier<double>::Values&);
template std::vector<EnumRow> enumRows<OdString>(const EnumTypeSpecifier<OdString>::Values&);

}  // namespace vl_app
