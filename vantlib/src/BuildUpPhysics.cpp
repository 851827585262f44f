#include "vantlib/BuildUpPhysics.h"

#include <algorithm>

namespace vantlib {

SurfaceResistances surfaceResistances(Composition::Type baseType) {
    // Standard surface resistances by direction of heat flow (m²K/W): upward through roofs
    // 0.10 inside, downward through slabs and floors 0.17 inside, horizontal through walls
    // and every other element 0.13 inside; 0.04 outside in each case.
    switch (baseType) {
    case Composition::kRoof: return {0.10, 0.04};
    case Composition::kSlab: return {0.17, 0.04};
    default: return {0.13, 0.04};
    }
}

namespace {
// Stored units and how many SI units one of them is worth.
struct UnitFactor {
    const wchar_t* id;
    double factor;
};
const UnitFactor kConductivityUnits[] = {
    {L"W/(m\u00B7K)", 1.0},
    {L"BTU/(hr\u00B7ft\u00B7\u00B0F)", 1.730735},
};
const UnitFactor kDensityUnits[] = {
    {L"kg/m\u00B3", 1.0},      {L"g/cm\u00B3", 1000.0},     {L"kg/dm\u00B3", 1000.0},
    {L"lbs/ft\u00B3", 16.018463}, {L"lbs/in\u00B3", 27679.905},
};

template <size_t N>
bool toSI(const PhysicalValue& stored, const UnitFactor (&units)[N], double& out) {
    if (!(stored.value > 0.0))
        return false;
    if (stored.unit.isEmpty()) {
        out = stored.value;
        return true;
    }
    for (const UnitFactor& unit : units) {
        if (stored.unit == OdString(unit.id)) {
            out = stored.value * unit.factor;
            return true;
        }
    }
    return false;
}
}  // namespace

bool conductivityInSI(const PhysicalValue& stored, double& out) { return toSI(stored, kConductivityUnits, out); }
bool densityInSI(const PhysicalValue& stored, double& out) { return toSI(stored, kDensityUnits, out); }

BuildUpPhysics buildUpPhysics(const Composition& composition, OdDb::UnitsValue lengthUnit) {
    BuildUpPhysics result;
    result.plies = composition.numPlies();
    result.surfaces = surfaceResistances(composition.type());
    const double metres = oddbMetersPerUnit(lengthUnit);
    for (unsigned index = 0; index < result.plies; ++index) {
        const Ply& ply = composition.ply(index);
        double thickness = ply.thickness();
        if (int(index) == composition.variable_ply()) {
            thickness = std::max(0.0, composition.variable_ply_min_thickness());
            result.variableAtMinimum = true;
        }
        thickness *= metres;
        const PhysicalAsset* asset = ply.material() ? ply.material()->physical_asset() : nullptr;
        double conductivity = 0.0;
        if (asset && asset->has_thermal_conductivity() && conductivityInSI(asset->thermal_conductivity(), conductivity))
            result.resistance += thickness / conductivity;
        else if (result.missingConductivity < 0)
            result.missingConductivity = int(index);
        double density = 0.0;
        if (asset && asset->has_density() && densityInSI(asset->density(), density))
            result.massPerArea += density * thickness;
        else if (result.missingDensity < 0)
            result.missingDensity = int(index);
    }
    if (result.hasThermalValues())
        result.transmittance = 1.0 / (result.surfaces.inside + result.resistance + result.surfaces.outside);
    return result;
}

}  // namespace vantlib
