#pragma once
// Physical quantities of materials as a value with its unit: density, thermal conductivity and
// specific heat. Each class converts between the units of its own quantity only.
#include <cstdint>
#include <map>

#include <wx/arrstr.h>
#include <wx/string.h>

namespace vl_app {

class PhysicalUnit {
public:
    // One enumeration over all quantities; the numbers are stable.
    enum Unit : uint32_t {
        kNone = 0,
        kKgPerM3 = 1,           // density
        kGPerCm3 = 2,
        kKgPerDm3 = 3,
        kLbsPerFt3 = 4,
        kLbsPerIn3 = 5,
        kWPerMK = 6,            // thermal conductivity
        kBtuPerHrFtF = 7,
        kJPerKgK = 8,           // specific heat
        kCalPerGC = 9,
        kBtuPerLbsF = 10,
    };

    PhysicalUnit(double value, Unit unit) : m_value(value), m_unit(unit) {}
    virtual ~PhysicalUnit() = default;
    PhysicalUnit(const PhysicalUnit&) = default;
    PhysicalUnit& operator=(const PhysicalUnit&) = default;
    PhysicalUnit(PhysicalUnit&&) = default;
    PhysicalUnit& operator=(PhysicalUnit&&) = default;

    // Stores both as given, without conversion.
    virtual void value(double value, Unit unit);
    // The stored value expressed in `unit`; unchanged for a unit of another quantity.
    virtual double value(Unit unit) const;
    // Converts the stored value to `unit` and keeps it; a unit of another quantity is ignored.
    virtual void unit(Unit unit);
    virtual Unit unit() const;
    // "<value> <symbol>" in `unit` (the stored unit for kNone).
    virtual wxString formattedValue(Unit unit) const;
    virtual bool isUnitSupported(Unit unit) const = 0;
    // Appends the symbols of the quantity's units in enumeration order.
    virtual void supportedUnits(wxArrayString& symbols) const = 0;
    virtual Unit defaultUnit() const = 0;
    virtual Unit defaultMetricUnit() const = 0;
    virtual Unit defaultImperialUnit() const = 0;

    // Symbol shown to the user (translated where the symbol has words); empty for kNone.
    static wxString abbr(Unit unit);
    // Untranslated symbol, the form that is stored.
    static wxString unitId(Unit unit);
    // The unit whose symbol is exactly `symbol`; kNone when there is none.
    static Unit unitByAbbr(const wxString& symbol);

protected:
    // Factor that turns a value in `from` into one in `to`.
    virtual double conversionFactor(Unit from, Unit to) const = 0;
    // `factors` holds how many base units one unit is worth; 1.0 for units it lacks.
    double conversionFactorFromMap(Unit from, Unit to, const std::map<Unit, double>& factors) const;

private:
    double m_value;
    Unit m_unit;
};

class Density : public PhysicalUnit {
public:
    Density() : PhysicalUnit(0.0, kNone) {}
    Density(double value, Unit unit) : PhysicalUnit(value, unit) {}

    bool isUnitSupported(Unit unit) const override;
    void supportedUnits(wxArrayString& symbols) const override { units(symbols); }
    Unit defaultUnit() const override { return baseUnit(); }
    Unit defaultMetricUnit() const override { return baseMetricUnit(); }
    Unit defaultImperialUnit() const override { return baseImperialUnit(); }

    static Unit baseUnit() { return kKgPerM3; }
    static Unit baseMetricUnit() { return kKgPerM3; }
    static Unit baseImperialUnit() { return kLbsPerFt3; }
    static void units(wxArrayString& symbols);

protected:
    // Mass ratio over the cube of the length ratio, both asked of the host.
    double conversionFactor(Unit from, Unit to) const override;
};

class ThermalConductivity : public PhysicalUnit {
public:
    ThermalConductivity() : PhysicalUnit(0.0, kNone) {}
    ThermalConductivity(double value, Unit unit) : PhysicalUnit(value, unit) {}

    bool isUnitSupported(Unit unit) const override;
    void supportedUnits(wxArrayString& symbols) const override { units(symbols); }
    Unit defaultUnit() const override { return baseUnit(); }
    Unit defaultMetricUnit() const override { return baseMetricUnit(); }
    Unit defaultImperialUnit() const override { return baseImperialUnit(); }

    static Unit baseUnit() { return kWPerMK; }
    static Unit baseMetricUnit() { return kWPerMK; }
    static Unit baseImperialUnit() { return kBtuPerHrFtF; }
    static void units(wxArrayString& symbols);

protected:
    double conversionFactor(Unit from, Unit to) const override;
};

class SpecificHeat : public PhysicalUnit {
public:
    SpecificHeat() : PhysicalUnit(0.0, kNone) {}
    SpecificHeat(double value, Unit unit) : PhysicalUnit(value, unit) {}

    bool isUnitSupported(Unit unit) const override;
    void supportedUnits(wxArrayString& symbols) const override { units(symbols); }
    Unit defaultUnit() const override { return baseUnit(); }
    Unit defaultMetricUnit() const override { return baseMetricUnit(); }
    Unit defaultImperialUnit() const override { return baseImperialUnit(); }

    static Unit baseUnit() { return kJPerKgK; }
    static Unit baseMetricUnit() { return kJPerKgK; }
    static Unit baseImperialUnit() { return kBtuPerLbsF; }
    static void units(wxArrayString& symbols);

protected:
    double conversionFactor(Unit from, Unit to) const override;
};

}  // namespace vl_app
