#include "app/compositions/CompositionPhysicsText.h"

#include <wx/intl.h>

#include <OdStringWx.h>

namespace vl_app {

namespace {
wxString number(double value, int decimals) { return wxString::FromCDouble(value, decimals); }

wxString plyName(const vantlib::Composition& composition, int index) {
    const QcSmartPtr<vantlib::Material>& material = composition.ply(unsigned(index)).material();
    return material ? toWx(material->name()) : wxString::Format("%d", index + 1);
}
}  // namespace

PhysicsTexts physicsTexts(const vantlib::Composition& composition, const vantlib::BuildUpPhysics& values,
                          bool imperial) {
    PhysicsTexts texts;
    if (values.plies == 0)
        return texts;
    if (values.hasThermalValues()) {
        texts.resistance = number(values.resistance, 2) + L" m\u00B2K/W";
        texts.transmittance = number(values.transmittance, 3) + L" W/(m\u00B2K)";
        if (imperial) {
            texts.resistance += L" (" + number(values.resistance * vantlib::kResistanceToImperial, 2) +
                                L" h\u00B7ft\u00B2\u00B7\u00B0F/Btu)";
            texts.transmittance += L" (" + number(values.transmittance * vantlib::kTransmittanceToImperial, 3) +
                                   L" Btu/(h\u00B7ft\u00B2\u00B7\u00B0F))";
        }
    } else {
        texts.notes.Add(wxString::Format(_("No thermal values: the ply \"%s\" has no thermal conductivity."),
                                         plyName(composition, values.missingConductivity)));
    }
    if (values.hasMass()) {
        texts.massPerArea = number(values.massPerArea, 1) + L" kg/m\u00B2";
        if (imperial)
            texts.massPerArea +=
                L" (" + number(values.massPerArea * vantlib::kMassPerAreaToImperial, 2) + L" lb/ft\u00B2)";
    } else {
        texts.notes.Add(wxString::Format(_("No mass per area: the ply \"%s\" has no density."),
                                         plyName(composition, values.missingDensity)));
    }
    if (values.variableAtMinimum && (values.hasThermalValues() || values.hasMass()))
        texts.notes.Add(_("The variable ply counts with its minimum thickness."));
    return texts;
}

wxString physicsSummary(const vantlib::Composition& composition, OdDb::UnitsValue unit) {
    const vantlib::BuildUpPhysics values = vantlib::buildUpPhysics(composition, unit);
    const PhysicsTexts texts = physicsTexts(composition, values, oddbIsImperialUnit(unit));
    wxArrayString lines;
    if (!texts.resistance.empty())
        lines.Add(wxString::Format(_("R = %s"), texts.resistance));
    if (!texts.transmittance.empty())
        lines.Add(wxString::Format(_("U = %s"), texts.transmittance));
    if (!texts.massPerArea.empty())
        lines.Add(wxString::Format(_("Mass per area: %s"), texts.massPerArea));
    for (const wxString& note : texts.notes)
        lines.Add(note);
    return wxJoin(lines, '\n', 0);
}

}  // namespace vl_app
