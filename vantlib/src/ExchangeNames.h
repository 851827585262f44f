#pragma once
// The words of the exchange document for the library's enumerations, both ways. Reading
// gives nothing (std::nullopt) for a word that names nothing.
#include <optional>
#include <string>

#include <OdUnits.h>

#include <vantlib/Composition.h>
#include <vantlib/Pattern.h>
#include <vantlib/Types.h>

namespace vantlib {

std::string unitName(OdDb::UnitsValue unit);
std::optional<OdDb::UnitsValue> unitFromName(const std::string& name);

const char* patternTypeName(Pattern::Type type);
std::optional<Pattern::Type> patternTypeFromName(const std::string& name);

const char* functionName(MaterialFunction function);
std::optional<MaterialFunction> functionFromName(const std::string& name);

// One name per bit of the base type, lowest bit first. Throws ConsistencyError for a bit
// that names no kind of element.
std::vector<std::string> baseTypeNames(uint32_t baseType);
std::optional<uint32_t> baseTypeFromName(const std::string& name);

// Kinds a custom property applies to: "any", "materials", "compositions".
const char* scopeName(ObjectType type);
std::optional<ObjectType> scopeFromName(const std::string& name);

// The physical quantities of a material and the identifiers of their units, as the library
// stores them (UTF-8: "kg/m³", "W/(m·K)", "J/(kg·K)", ...).
enum class PhysicalQuantity { kDensity, kThermalConductivity, kSpecificHeat };
const char* quantityName(PhysicalQuantity quantity);
bool isPhysicalUnit(PhysicalQuantity quantity, const std::string& unit);
// The unit values are converted into when they come from elsewhere (the metric base unit).
const char* baseUnit(PhysicalQuantity quantity);

}  // namespace vantlib
