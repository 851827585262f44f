#pragma once
// Lengths as text in the active drawing's notation (LUNITS, LUPREC, DIMZIN, UNITMODE), for
// values stored in a library's length unit.
#include <set>

#include <wx/arrstr.h>
#include <wx/string.h>

#include <OdUnits.h>

namespace vl_app {

// Reads a length written in any of the drawing notations. When the active drawing scales
// inserted content (INSUNITSSCALING bit 1) the value is converted from the drawing's scaling
// units to `unit`. Malformed text returns false and leaves `out` as it was.
bool parseDistance(double& out, const wxString& text, OdDb::UnitsValue unit);
// The counterpart of parseDistance. With `withUnit` and decimal notation the unit's symbol
// follows after a blank.
wxString formatDistance(double value, OdDb::UnitsValue unit, bool withUnit);
// The values in ascending order, each formatted as a distance in `unit` (without symbol).
wxArrayString arrStr(const std::set<double>& values, OdDb::UnitsValue unit);

}  // namespace vl_app
