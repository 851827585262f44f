#pragma once
// Conversions between the SDK's wide text and wxWidgets text at the UI boundary.
#include <wx/string.h>

#include "OdString.h"

inline wxString toWx(const OdString& text) { return wxString(text.c_str()); }
inline OdString toOd(const wxString& text) { return OdString(text.ToStdWstring()); }
