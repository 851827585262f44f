#pragma once
// Unit conversion by unit name and the formatting of reals, angles and unit names.
#include <wx/string.h>

#include "OdUnits.h"

namespace ca {

// Converts `value` between two units of the same kind (mass, length, area, volume, time),
// named like "kg", "g", "lbs", "oz", "t", "m", "ft". Names are matched without regard to case.
// Returns false (and leaves *result alone) for an unknown name or units of different kinds.
bool cvunit(double value, const wxString& fromUnit, const wxString& toUnit, double* result);

// A length in a linear unit format (LUNITS): 1 scientific, 2 decimal, 3 engineering,
// 4 architectural, 5 fractional. A mode or precision of -1 takes the active drawing's LUNITS /
// LUPREC (decimal with 4 places without a drawing); zero suppression and the compact form
// follow the drawing's DIMZIN and UNITMODE. Throws OdError for a mode outside 1-5 or a
// precision above 8.
wxString rtos(double value, int mode = -1, int precision = -1);

// Angle formats (AUNITS): 0 decimal degrees, 1 degrees/minutes/seconds, 2 grads, 3 radians,
// 4 surveyor's units. `radians` is measured counter-clockwise from east.
wxString angtos(double radians, int mode = 0, int precision = 4);

// The full, translated name of a drawing unit ("Millimeters", "Feet", ...).
wxString unitsToString(OdDb::UnitsValue units);

}  // namespace ca
