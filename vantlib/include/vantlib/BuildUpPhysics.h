#pragma once
// Building-physics values of a composition worked out from its plies and their materials'
// physical values: thermal resistance of the layers, thermal transmittance and mass per area,
// all in SI units.
#include <OdUnits.h>

#include <vantlib/Composition.h>

namespace vantlib {

// Surface resistances (m²K/W) for the direction of heat flow of a base type.
struct SurfaceResistances {
    double inside = 0.0;
    double outside = 0.0;
};
SurfaceResistances surfaceResistances(Composition::Type baseType);

struct BuildUpPhysics {
    unsigned plies = 0;
    // Sum of thickness / conductivity over the plies, m²K/W; valid when no ply lacks a
    // conductivity.
    double resistance = 0.0;
    // 1 / (Rsi + R + Rse), W/(m²K).
    double transmittance = 0.0;
    // Sum of density x thickness, kg/m²; valid when no ply lacks a density.
    double massPerArea = 0.0;
    SurfaceResistances surfaces;
    // First ply without a usable conductivity or density; -1 when every ply has one.
    int missingConductivity = -1;
    int missingDensity = -1;
    // The variable ply entered with its minimum thickness.
    bool variableAtMinimum = false;

    bool hasThermalValues() const { return plies > 0 && missingConductivity < 0; }
    bool hasMass() const { return plies > 0 && missingDensity < 0; }
};

// Thicknesses are read in `lengthUnit` (the composition's library unit). Conductivities and
// densities in any of the stored units are converted; an empty unit means the SI unit.
BuildUpPhysics buildUpPhysics(const Composition& composition, OdDb::UnitsValue lengthUnit);

// The SI value of a stored conductivity (W/(m·K)) or density (kg/m³); false for units that are
// not known or values that are not positive.
bool conductivityInSI(const PhysicalValue& stored, double& out);
bool densityInSI(const PhysicalValue& stored, double& out);

// Factors from the SI values to the imperial ones (h·ft²·°F/Btu, Btu/(h·ft²·°F), lb/ft²).
constexpr double kResistanceToImperial = 5.678263;   // 1 m²K/W = 5.678263 h·ft²·°F/Btu
constexpr double kTransmittanceToImperial = 1.0 / 5.678263;
constexpr double kMassPerAreaToImperial = 1.0 / 4.882428;  // 1 lb/ft² = 4.882428 kg/m²

}  // namespace vantlib
