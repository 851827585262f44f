#include "app/common/Distances.h"

#include <CaApp.h>
#include <OdDbDatabase.h>
#include <OdError.h>
#include <OdStringWx.h>
#include <OdUnitsFormatter.h>

#include "app/common/Helpers.h"

namespace vl_app {

namespace {
// Insertion scaling of the active drawing: content is scaled from its scaling units.
constexpr int kScaleInsertedContent = 1;

struct ActiveDrawingUnits {
    OdLengthFormat format;  // decimal with 4 places when no drawing is active
    bool scaling = false;
    OdDb::UnitsValue scalingUnits = OdDb::kUnitsUndefined;
};

ActiveDrawingUnits activeDrawingUnits() {
    ActiveDrawingUnits units;
    if (const OdDbDatabase* db = ca::curDb()) {
        units.format = db->lengthFormat();
        units.scaling = (db->getINSUNITSSCALING() & kScaleInsertedContent) != 0;
        units.scalingUnits = db->getScalingUnits();
    }
    return units;
}
}  // namespace

bool parseDistance(double& out, const wxString& text, OdDb::UnitsValue unit) {
    try {
        const double parsed = OdUnitsFormatter::unformatL(toOd(text));
        const ActiveDrawingUnits units = activeDrawingUnits();
        const double factor = units.scaling ? oddbGetUnitsConversion(units.scalingUnits, unit) : 1.0;
        out = parsed * factor;
        return true;
    } catch (const OdError&) {
        // Malformed text: the caller keeps its value and tells the user.
        return false;
    }
}

wxString formatDistance(double value, OdDb::UnitsValue unit, bool withUnit) {
    const ActiveDrawingUnits units = activeDrawingUnits();
    const double factor = units.scaling ? oddbGetUnitsConversion(unit, units.scalingUnits) : 1.0;
    wxString text = toWx(OdUnitsFormatter::formatL(value * factor, units.format));
    if (withUnit && units.format.lunits == OdDb::kDecimal)
        text += " " + abbr(unit);
    return text;
}

wxArrayString arrStr(const std::set<double>& values, OdDb::UnitsValue unit) {
    wxArrayString texts;
    for (const double value : values)
        texts.Add(formatDistance(value, unit, false));
    return texts;
}

}  // namespace vl_app
