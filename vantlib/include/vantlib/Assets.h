#pragma once
// The three assets a material may carry: BIM (views and thicknesses), information (catalogue
// data) and physical (thermal values).
#include <set>

#include <OdString.h>

#include <vantlib/Tag.h>
#include <vantlib/Types.h>

namespace vantlib {

class BimAsset {
public:
    // Layer of the section view; null when none.
    const QcSmartPtr<Layer>& layer() const { return m_layer; }
    void set_layer(const QcSmartPtr<Layer>& layer) { m_layer = layer; }
    const QcSmartPtr<Layer>& layer_elevation() const { return m_layerElevation; }
    void set_layer_elevation(const QcSmartPtr<Layer>& layer) { m_layerElevation = layer; }

    MaterialFunction default_function() const { return m_defaultFunction; }
    void set_default_function(MaterialFunction function) { m_defaultFunction = function; }

    // Available thicknesses in the library's length unit, ascending; the first is the default.
    const std::set<double>& thicknesses() const { return m_thicknesses; }
    void set_thicknesses(const std::set<double>& thicknesses) { m_thicknesses = thicknesses; }
    double default_thickness() const { return m_thicknesses.empty() ? 0.0 : *m_thicknesses.begin(); }

    bool variable_thickness() const { return m_variableThickness; }
    void set_variable_thickness(bool variable) { m_variableThickness = variable; }
    bool union_elevation() const { return m_unionElevation; }
    void set_union_elevation(bool value) { m_unionElevation = value; }
    bool union_section() const { return m_unionSection; }
    void set_union_section(bool value) { m_unionSection = value; }

private:
    QcSmartPtr<Layer> m_layer;
    QcSmartPtr<Layer> m_layerElevation;
    MaterialFunction m_defaultFunction = kFunctionNone;
    std::set<double> m_thicknesses;
    bool m_variableThickness = false;
    bool m_unionElevation = false;
    bool m_unionSection = false;
};

class InformationAsset {
public:
    const OdString& classification() const { return m_classification; }
    void set_classification(const OdString& v) { m_classification = v; }
    // A unique code identifies the material to other systems; copies must not keep it.
    bool has_unique_code() const { return m_hasUniqueCode; }
    const OdString& unique_code() const { return m_uniqueCode; }
    void set_unique_code(const OdString& v) { m_uniqueCode = v; m_hasUniqueCode = true; }
    void clear_unique_code() { m_uniqueCode.empty(); m_hasUniqueCode = false; }
    const OdString& cost() const { return m_cost; }
    void set_cost(const OdString& v) { m_cost = v; }
    const OdString& keynote() const { return m_keynote; }
    void set_keynote(const OdString& v) { m_keynote = v; }
    const OdString& label() const { return m_label; }
    void set_label(const OdString& v) { m_label = v; }
    const OdString& manufacturer() const { return m_manufacturer; }
    void set_manufacturer(const OdString& v) { m_manufacturer = v; }
    const OdString& mark() const { return m_mark; }
    void set_mark(const OdString& v) { m_mark = v; }
    const OdString& model() const { return m_model; }
    void set_model(const OdString& v) { m_model = v; }
    const OdString& url() const { return m_url; }
    void set_url(const OdString& v) { m_url = v; }

private:
    OdString m_classification, m_uniqueCode, m_cost, m_keynote, m_label, m_manufacturer, m_mark, m_model, m_url;
    bool m_hasUniqueCode = false;
};

// A physical value with the identifier of its unit (for example "kg/m3", "W/(m.K)", "J/(kg.K)").
struct PhysicalValue {
    double value = 0.0;
    OdString unit;
};

class PhysicalAsset {
public:
    bool has_density() const { return m_hasDensity; }
    const PhysicalValue& density() const { return m_density; }
    void set_density(double value, const OdString& unit) { m_density = {value, unit}; m_hasDensity = true; }
    void clear_density() { m_density = {}; m_hasDensity = false; }

    bool has_thermal_conductivity() const { return m_hasConductivity; }
    const PhysicalValue& thermal_conductivity() const { return m_conductivity; }
    void set_thermal_conductivity(double value, const OdString& unit) { m_conductivity = {value, unit}; m_hasConductivity = true; }
    void clear_thermal_conductivity() { m_conductivity = {}; m_hasConductivity = false; }

    bool has_specific_heat() const { return m_hasSpecificHeat; }
    const PhysicalValue& specific_heat() const { return m_specificHeat; }
    void set_specific_heat(double value, const OdString& unit) { m_specificHeat = {value, unit}; m_hasSpecificHeat = true; }
    void clear_specific_heat() { m_specificHeat = {}; m_hasSpecificHeat = false; }

private:
    PhysicalValue m_density, m_conductivity, m_specificHeat;
    bool m_hasDensity = false, m_hasConductivity = false, m_hasSpecificHeat = false;
};

}  // namespace vantlib
