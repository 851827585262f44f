#pragma once
// The building-physics values of a composition as the user reads them: each value in SI units,
// followed by the imperial ones for an imperial library, or the reason there is no value.
#include <wx/arrstr.h>
#include <wx/string.h>

#include <OdUnits.h>

#include <vantlib/BuildUpPhysics.h>
#include <vantlib/Composition.h>

namespace vl_app {

struct PhysicsTexts {
    wxString resistance;     // thermal resistance of the layers
    wxString transmittance;  // thermal transmittance U
    wxString massPerArea;
    // Remarks: which ply lacks a value, that the variable ply counts with its minimum.
    wxArrayString notes;
};

PhysicsTexts physicsTexts(const vantlib::Composition& composition, const vantlib::BuildUpPhysics& values,
                          bool imperial);
// Every value and remark on its own line, for the text under the preview; empty for a
// composition without plies.
wxString physicsSummary(const vantlib::Composition& composition, OdDb::UnitsValue unit);

}  // namespace vl_app
