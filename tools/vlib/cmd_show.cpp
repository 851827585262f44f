// vlib show FILE composition NAME | vlib show FILE material NAME | vlib show FILE profile "FULL NAME"
#include <algorithm>
#include <cmath>
#include <ostream>
#include <stdexcept>

#include <OdNumberText.h>

#include <section/SectionGeometry.h>
#include <vantlib/BuildUpPhysics.h>
#include <vantlib/vantlib.h>
#include <vl_db/Profiles.h>

#include "Arguments.h"
#include "Commands.h"
#include "Kinds.h"
#include "LibraryFiles.h"

namespace vlib {

namespace {

std::string number(double value, int decimals) { return toUtf8(OdString(OdNumberText::fixed(value, decimals))); }
std::string general(double value) { return toUtf8(OdString(OdNumberText::general(value))); }

std::string unitSymbol(OdDb::UnitsValue unit) {
    switch (unit) {
    case OdDb::kUnitsMillimeters: return "mm";
    case OdDb::kUnitsCentimeters: return "cm";
    case OdDb::kUnitsDecimeters: return "dm";
    case OdDb::kUnitsMeters: return "m";
    case OdDb::kUnitsInches: return "in";
    case OdDb::kUnitsFeet: return "ft";
    default: return unitName(unit);
    }
}

const char* functionName(vantlib::MaterialFunction function) {
    static const char* const names[] = {"none",     "structure", "substrate", "insulation",
                                        "finish 1", "finish 2",  "membrane"};
    return unsigned(function) < 7 ? names[function] : "unknown";
}

const char* baseTypeName(vantlib::Composition::Type type) {
    switch (type) {
    case vantlib::Composition::kWall: return "wall";
    case vantlib::Composition::kRoof: return "roof";
    case vantlib::Composition::kSlab: return "slab";
    case vantlib::Composition::kBeam: return "beam";
    case vantlib::Composition::kColumn: return "column";
    case vantlib::Composition::kMember: return "member";
    case vantlib::Composition::kGeneric: return "generic";
    case vantlib::Composition::kFooting: return "footing";
    case vantlib::Composition::kCovering: return "covering";
    case vantlib::Composition::kPlate: return "plate";
    default: return "any";
    }
}

std::string stored(const vantlib::PhysicalValue& value) {
    return general(value.value) + (value.unit.isEmpty() ? "" : " " + toUtf8(value.unit));
}

std::string plyName(const vantlib::Composition& composition, int index) {
    const auto& material = composition.ply(unsigned(index)).material();
    return "ply " + std::to_string(index + 1) + (material ? " \"" + toUtf8(material->name()) + "\"" : std::string());
}

void showComposition(const vantlib::Library& library, const OdString& name, std::ostream& out) {
    const auto composition = library.get<vantlib::Composition>(vantlib::NameKey(name));
    if (!composition)
        throw std::runtime_error("no composition named '" + toUtf8(name) + "'");
    const OdDb::UnitsValue unit = library.unit();
    const std::string symbol = unitSymbol(unit);
    out << "Composition: " << toUtf8(composition->name()) << '\n';
    out << "Base type: " << baseTypeName(composition->type()) << '\n';
    if (composition->composition_type())
        out << "Type: " << toUtf8(composition->composition_type()->name()) << '\n';
    out << "Plies, exterior to interior (" << composition->numPlies() << "):\n";
    for (unsigned index = 0; index < composition->numPlies(); ++index) {
        const vantlib::Ply& ply = composition->ply(index);
        out << "  " << index + 1 << ". " << (ply.material() ? toUtf8(ply.material()->name()) : "(no material)")
            << ", " << functionName(ply.function()) << ", " << general(ply.thickness()) << ' ' << symbol;
        if (int(index) == composition->variable_ply())
            out << " (variable, at least " << general(std::max(0.0, composition->variable_ply_min_thickness()))
                << ' ' << symbol << ')';
        const vantlib::PhysicalAsset* physical = ply.material() ? ply.material()->physical_asset() : nullptr;
        out << ", conductivity "
            << (physical && physical->has_thermal_conductivity() ? stored(physical->thermal_conductivity()) : "none")
            << ", density " << (physical && physical->has_density() ? stored(physical->density()) : "none") << '\n';
    }
    out << "Total thickness: " << general(composition->thickness()) << ' ' << symbol << '\n';

    const vantlib::BuildUpPhysics values = vantlib::buildUpPhysics(*composition, unit);
    const bool imperial = oddbIsImperialUnit(unit);
    if (values.plies == 0) {
        out << "No building-physics values: the composition has no plies.\n";
        return;
    }
    if (values.hasThermalValues()) {
        out << "Thermal resistance R: " << number(values.resistance, 2) << " m2K/W";
        if (imperial)
            out << " (" << number(values.resistance * vantlib::kResistanceToImperial, 2) << " h.ft2.F/Btu)";
        out << "\nThermal transmittance U: " << number(values.transmittance, 3) << " W/(m2K)";
        if (imperial)
            out << " (" << number(values.transmittance * vantlib::kTransmittanceToImperial, 3) << " Btu/(h.ft2.F))";
        out << ", with Rsi " << number(values.surfaces.inside, 2) << " and Rse " << number(values.surfaces.outside, 2)
            << " m2K/W\n";
    } else {
        out << "Thermal resistance R and transmittance U: none, " << plyName(*composition, values.missingConductivity)
            << " has no thermal conductivity\n";
    }
    if (values.hasMass()) {
        out << "Mass per area: " << number(values.massPerArea, 1) << " kg/m2";
        if (imperial)
            out << " (" << number(values.massPerArea * vantlib::kMassPerAreaToImperial, 2) << " lb/ft2)";
        out << '\n';
    } else {
        out << "Mass per area: none, " << plyName(*composition, values.missingDensity) << " has no density\n";
    }
    if (values.variableAtMinimum)
        out << "The variable ply counts with its minimum thickness.\n";
}

void showMaterial(const vantlib::Library& library, const OdString& name, std::ostream& out) {
    const auto material = library.get<vantlib::Material>(vantlib::NameKey(name));
    if (!material)
        throw std::runtime_error("no material named '" + toUtf8(name) + "'");
    const std::string symbol = unitSymbol(library.unit());
    out << "Material: " << toUtf8(material->name()) << '\n';
    if (material->material_type())
        out << "Class: " << toUtf8(material->material_type()->name()) << '\n';
    if (!material->description().isEmpty())
        out << "Description: " << toUtf8(material->description()) << '\n';
    if (!material->section_pattern().name().isEmpty())
        out << "Section hatch: " << toUtf8(material->section_pattern().name()) << '\n';
    if (const vantlib::BimAsset* bim = material->bim_asset()) {
        out << "Default function: " << functionName(bim->default_function()) << '\n';
        if (!bim->thicknesses().empty()) {
            out << "Thicknesses:";
            for (const double thickness : bim->thicknesses())
                out << ' ' << general(thickness) << ' ' << symbol;
            out << '\n';
        }
        out << "Variable thickness: " << (bim->variable_thickness() ? "yes" : "no") << '\n';
    }
    const vantlib::PhysicalAsset* physical = material->physical_asset();
    out << "Thermal conductivity: "
        << (physical && physical->has_thermal_conductivity() ? stored(physical->thermal_conductivity()) : "none") << '\n';
    out << "Density: " << (physical && physical->has_density() ? stored(physical->density()) : "none") << '\n';
    out << "Specific heat: " << (physical && physical->has_specific_heat() ? stored(physical->specific_heat()) : "none")
        << '\n';
}

bool isSlope(vantlib::ShapeParameter id) {
    return id == vantlib::ShapeParameter::kLegSlope || id == vantlib::ShapeParameter::kFlangeSlope ||
           id == vantlib::ShapeParameter::kWebSlope;
}

// A profile by its full name ("IPE 200") or its name with the standard ("EN 10365 IPE 200"),
// letter case ignored; a name that several profiles share is refused with their names.
QcSmartPtr<vantlib::Profile> profileByName(const vantlib::Library& library, const OdString& name) {
    std::vector<QcSmartPtr<vantlib::Profile>> all;
    library.get(all);
    const vantlib::StringCriteria wanted = vantlib::StringCriteria().equals(name);
    std::vector<QcSmartPtr<vantlib::Profile>> found;
    for (const auto& profile : all)
        if (wanted.matches(profile->displayName()) || wanted.matches(vl_db::fullProfileName(*profile)))
            found.push_back(profile);
    if (found.empty())
        throw std::runtime_error("no profile named '" + toUtf8(name) + "'");
    if (found.size() > 1) {
        std::string names;
        for (const auto& profile : found)
            names += "\n  " + toUtf8(profile->displayName());
        throw std::runtime_error("several profiles are named '" + toUtf8(name) + "':" + names);
    }
    return found.front();
}

void showProfile(const vantlib::Library& library, const OdString& name, std::ostream& out) {
    const QcSmartPtr<vantlib::Profile> profile = profileByName(library, name);
    const std::string symbol = unitSymbol(library.unit());
    out << "Profile: " << toUtf8(vl_db::fullProfileName(*profile)) << '\n';
    const auto& profileName = profile->name();
    if (profileName && profileName->standard())
        out << "Standard: " << toUtf8(profileName->standard()->name()) << '\n';
    if (profileName)
        out << "Type: " << toUtf8(vl_db::getProfileTypeLabel(profileName->type())) << '\n';
    out << "Shape: " << toUtf8(vl_db::getProfileShapeLabel(profile->objectType(), false)) << " ("
        << profile->isA().shortName() << ")\n";
    if (!profile->description().isEmpty())
        out << "Description: " << toUtf8(profile->description()) << '\n';
    if (profile->material())
        out << "Material: " << toUtf8(profile->material()->name()) << '\n';
    if (profile->has_offset())
        out << "Offset: " << general(profile->offset().x) << ", " << general(profile->offset().y) << ' ' << symbol << '\n';
    const auto& parameters = profile->isA().parameters();
    if (!parameters.empty())
        out << "Parameters:\n";
    for (const vantlib::ShapeParameterInfo& info : parameters)
        if (profile->hasParameter(info.id))
            out << "  " << info.key << ": " << general(profile->parameter(info.id)) << ' '
                << (isSlope(info.id) ? "rad" : symbol) << '\n';
    const OdString fault = section::sectionFault(*profile);
    if (!fault.isEmpty()) {
        out << "Section: none, " << toUtf8(fault) << '\n';
        return;
    }
    const section::SectionProperties section = section::properties(*profile);
    out << "Area: " << number(section.area, 2) << ' ' << symbol << "2";
    // Tables give areas of sections in cm2 or in2, whatever unit their dimensions use.
    const OdDb::UnitsValue tableUnit = oddbIsImperialUnit(library.unit()) ? OdDb::kUnitsInches : OdDb::kUnitsCentimeters;
    if (library.unit() != tableUnit && library.unit() != OdDb::kUnitsUndefined) {
        const double factor = oddbGetUnitsConversion(library.unit(), tableUnit);
        out << " (" << number(section.area * factor * factor, 2) << ' ' << unitSymbol(tableUnit) << "2)";
    }
    out << '\n';
    if (section.grossArea != section.area)
        out << "Gross area: " << number(section.grossArea, 2) << ' ' << symbol << "2\n";
    out << "Extents: " << general(section.extents.width()) << " x " << general(section.extents.height()) << ' '
        << symbol << '\n';
    // Rounding leaves no sign on a coordinate that is 0 to the places shown.
    const auto coordinate = [](double value) { return number(std::fabs(value) < 0.005 ? 0.0 : value, 2); };
    out << "Centroid from the centre of the extents: " << coordinate(section.centroid.x) << ", "
        << coordinate(section.centroid.y) << ' ' << symbol << '\n';
}

}  // namespace

int showCommand(const Words& words, std::ostream& out) {
    const Arguments args(words, {}, {});
    args.requirePositional(3, "FILE KIND NAME");
    const OdString name = toOd(args.positional()[2]);
    if (isProfileWord(args.positional()[1])) {
        showProfile(*openLibrary(args.positional()[0], true), name, out);
        return 0;
    }
    const Kind& kind = kindFromWord(args.positional()[1]);
    const auto library = openLibrary(args.positional()[0], true);
    if (kind.type == vantlib::kComposition)
        showComposition(*library, name, out);
    else if (kind.type == vantlib::kMaterial)
        showMaterial(*library, name, out);
    else
        throw UsageError(std::string("show prints materials, compositions and profiles, not ") + kind.plural);
    return 0;
}

}  // namespace vlib
