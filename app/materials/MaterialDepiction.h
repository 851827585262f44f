#pragma once
// What the list thumbnail of a material depicts: its section hatch. Materials with the same
// depiction share one picture, drawn once.
#include <wx/string.h>

#include <QcSmartPtr.h>

#include <vantlib/Material.h>

namespace vl_app {

// Kind, name, scale, angle and crossing of the section hatch as one text; empty when the hatch
// draws no picture (no pattern, or an unnamed one).
wxString materialDepiction(const QcSmartPtr<const vantlib::Material>& material);

}  // namespace vl_app
