#include "ExchangeNames.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include <vantlib/Exception.h>

namespace vantlib {

namespace {

// Indexed by OdDb::UnitsValue.
const char* const kUnitNames[] = {
    "unitless",    "inches",     "feet",        "miles",        "millimeters",   "centimeters",   "meters",
    "kilometers",  "microinches", "mils",       "yards",        "angstroms",     "nanometers",    "microns",
    "decimeters",  "decameters", "hectometers", "gigameters",   "astronomical units", "light years", "parsecs",
    "US survey feet", "US survey inches", "US survey yards", "US survey miles",
};
static_assert(std::size(kUnitNames) == OdDb::kUnitsMax + 1, "one name per drawing unit");

const char* const kPatternTypes[] = {"none", "user", "predefined", "custom"};
const char* const kFunctions[] = {"none", "structure", "substrate", "insulation", "finish1", "finish2", "membrane"};
// Indexed by the bit of Composition::Type.
const char* const kBaseTypes[] = {"wall", "roof", "slab", "beam", "column", "member",
                                  "all", "generic", "footing", "covering", "plate"};

template <size_t N>
std::optional<size_t> indexOf(const char* const (&names)[N], const std::string& name) {
    for (size_t i = 0; i < N; ++i)
        if (name == names[i])
            return i;
    return std::nullopt;
}

}  // namespace

std::string unitName(OdDb::UnitsValue unit) {
    const int index = int(unit);
    if (index < 0 || index > OdDb::kUnitsMax)
        throw ConsistencyError(OdString::formatted(L"Unknown length unit %d", index));
    return kUnitNames[index];
}

std::optional<OdDb::UnitsValue> unitFromName(const std::string& name) {
    if (auto index = indexOf(kUnitNames, name))
        return OdDb::UnitsValue(*index);
    return std::nullopt;
}

const char* patternTypeName(Pattern::Type type) { return kPatternTypes[std::min<size_t>(type, 3)]; }

std::optional<Pattern::Type> patternTypeFromName(const std::string& name) {
    if (auto index = indexOf(kPatternTypes, name))
        return Pattern::Type(*index);
    return std::nullopt;
}

const char* functionName(MaterialFunction function) { return kFunctions[std::min<size_t>(function, 6)]; }

std::optional<MaterialFunction> functionFromName(const std::string& name) {
    if (auto index = indexOf(kFunctions, name))
        return MaterialFunction(*index);
    return std::nullopt;
}

std::vector<std::string> baseTypeNames(uint32_t baseType) {
    std::vector<std::string> names;
    for (size_t bit = 0; bit < 32; ++bit)
        if (baseType & (1u << bit)) {
            if (bit >= std::size(kBaseTypes))
                throw ConsistencyError(OdString::formatted(L"Unknown base type bit %u", unsigned(bit)));
            names.push_back(kBaseTypes[bit]);
        }
    return names;
}

std::optional<uint32_t> baseTypeFromName(const std::string& name) {
    if (auto index = indexOf(kBaseTypes, name))
        return 1u << *index;
    return std::nullopt;
}

const char* scopeName(ObjectType type) {
    switch (type) {
    case kMaterial: return "materials";
    case kComposition: return "compositions";
    default: return "any";
    }
}

std::optional<ObjectType> scopeFromName(const std::string& name) {
    if (name == "any")
        return kUnknownObject;
    if (name == "materials")
        return kMaterial;
    if (name == "compositions")
        return kComposition;
    return std::nullopt;
}

namespace {

const std::vector<std::string>& unitsOf(PhysicalQuantity quantity) {
    static const std::vector<std::string> density = {"kg/m\u00B3", "g/cm\u00B3", "kg/dm\u00B3", "lbs/ft\u00B3",
                                                     "lbs/in\u00B3"};
    static const std::vector<std::string> conductivity = {"W/(m\u00B7K)", "BTU/(hr\u00B7ft\u00B7\u00B0F)"};
    static const std::vector<std::string> specificHeat = {"J/(kg\u00B7K)", "Cal/(g\u00B7C)",
                                                          "BTU/(lbs\u00B7\u00B0F)"};
    switch (quantity) {
    case PhysicalQuantity::kDensity: return density;
    case PhysicalQuantity::kThermalConductivity: return conductivity;
    case PhysicalQuantity::kSpecificHeat: break;
    }
    return specificHeat;
}

}  // namespace

const char* quantityName(PhysicalQuantity quantity) {
    switch (quantity) {
    case PhysicalQuantity::kDensity: return "density";
    case PhysicalQuantity::kThermalConductivity: return "thermal conductivity";
    case PhysicalQuantity::kSpecificHeat: break;
    }
    return "specific heat";
}

bool isPhysicalUnit(PhysicalQuantity quantity, const std::string& unit) {
    const auto& units = unitsOf(quantity);
    return std::find(units.begin(), units.end(), unit) != units.end();
}

const char* baseUnit(PhysicalQuantity quantity) { return unitsOf(quantity).front().c_str(); }

}  // namespace vantlib
