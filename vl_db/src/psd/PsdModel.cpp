// The model of a definition file: comparison, the IFC data types and where files are found.
#include <algorithm>
#include <filesystem>
#include <map>
#include <system_error>

#include "PsdFormat.h"

namespace fs = std::filesystem;

namespace vl_db {

const char* const kPsdNamespace = "http://buildingSMART-tech.org/xml/psd/PSD_IFC4.xsd";


namespace {

struct DataType {
    PsdPrimitive primitive;
    const char* measure;
};

// The simple defined types of the IFC4 schema that a property may be declared with. Numbers that
// the schema declares as INTEGER are integers; REAL and NUMBER are reals; the four measures that
// the library can convert carry its measure key.
const std::map<std::string, DataType>& dataTypes() {
    static const std::map<std::string, DataType> table = [] {
        std::map<std::string, DataType> t;
        for (const char* name : {"IfcBoolean", "IfcLogical"})
            t[name] = {PsdPrimitive::kBoolean, ""};
        for (const char* name : {"IfcInteger", "IfcPositiveInteger", "IfcCountMeasure", "IfcIntegerCountRateMeasure",
                                 "IfcDimensionCount", "IfcDayInMonthNumber", "IfcDayInWeekNumber",
                                 "IfcMonthInYearNumber", "IfcTimeStamp", "IfcCardinalPointReference"})
            t[name] = {PsdPrimitive::kInteger, ""};
        for (const char* name : {"IfcLabel", "IfcText", "IfcIdentifier", "IfcDescriptiveMeasure", "IfcDate",
                                 "IfcDateTime", "IfcTime", "IfcDuration", "IfcURIReference", "IfcGloballyUniqueId",
                                 "IfcPresentableText", "IfcBinary", "IfcBoxAlignment", "IfcFontStyle",
                                 "IfcFontVariant", "IfcFontWeight", "IfcTextAlignment", "IfcTextDecoration",
                                 "IfcTextFontName", "IfcTextTransformation", "IfcLanguageId", "IfcWellKnownTextLiteral"})
            t[name] = {PsdPrimitive::kString, ""};
        for (const char* name :
             {"IfcReal", "IfcNumericMeasure", "IfcParameterValue", "IfcRatioMeasure", "IfcPositiveRatioMeasure",
              "IfcNormalisedRatioMeasure", "IfcPlaneAngleMeasure", "IfcPositivePlaneAngleMeasure",
              "IfcSolidAngleMeasure", "IfcThermodynamicTemperatureMeasure", "IfcTimeMeasure",
              "IfcElectricCurrentMeasure", "IfcAmountOfSubstanceMeasure", "IfcLuminousIntensityMeasure",
              "IfcAbsorbedDoseMeasure", "IfcAccelerationMeasure", "IfcAngularVelocityMeasure", "IfcAreaDensityMeasure",
              "IfcContextDependentMeasure", "IfcCurvatureMeasure", "IfcDoseEquivalentMeasure",
              "IfcDynamicViscosityMeasure", "IfcElectricCapacitanceMeasure", "IfcElectricChargeMeasure",
              "IfcElectricConductanceMeasure", "IfcElectricResistanceMeasure", "IfcElectricVoltageMeasure",
              "IfcEnergyMeasure", "IfcForceMeasure", "IfcFrequencyMeasure", "IfcHeatFluxDensityMeasure",
              "IfcHeatingValueMeasure", "IfcIlluminanceMeasure", "IfcInductanceMeasure", "IfcIonConcentrationMeasure",
              "IfcIsothermalMoistureCapacityMeasure", "IfcKinematicViscosityMeasure", "IfcLinearForceMeasure",
              "IfcLinearMomentMeasure", "IfcLinearStiffnessMeasure", "IfcLinearVelocityMeasure",
              "IfcLuminousFluxMeasure", "IfcLuminousIntensityDistributionMeasure", "IfcMagneticFluxDensityMeasure",
              "IfcMagneticFluxMeasure", "IfcMassDensityMeasure", "IfcMassFlowRateMeasure", "IfcMassPerLengthMeasure",
              "IfcModulusOfElasticityMeasure", "IfcModulusOfLinearSubgradeReactionMeasure",
              "IfcModulusOfRotationalSubgradeReactionMeasure", "IfcModulusOfSubgradeReactionMeasure",
              "IfcMoistureDiffusivityMeasure", "IfcMolecularWeightMeasure", "IfcMomentOfInertiaMeasure",
              "IfcMonetaryMeasure", "IfcPHMeasure", "IfcPlanarForceMeasure", "IfcPowerMeasure", "IfcPressureMeasure",
              "IfcRadioActivityMeasure", "IfcRotationalFrequencyMeasure", "IfcRotationalMassMeasure",
              "IfcRotationalStiffnessMeasure", "IfcSectionModulusMeasure", "IfcSectionalAreaIntegralMeasure",
              "IfcShearModulusMeasure", "IfcSoundPowerLevelMeasure", "IfcSoundPowerMeasure",
              "IfcSoundPressureLevelMeasure", "IfcSoundPressureMeasure", "IfcSpecificHeatCapacityMeasure",
              "IfcSpecularExponent", "IfcSpecularRoughness", "IfcTemperatureGradientMeasure",
              "IfcTemperatureRateOfChangeMeasure", "IfcThermalAdmittanceMeasure", "IfcThermalConductivityMeasure",
              "IfcThermalExpansionCoefficientMeasure", "IfcThermalResistanceMeasure",
              "IfcThermalTransmittanceMeasure", "IfcTorqueMeasure", "IfcVaporPermeabilityMeasure",
              "IfcVolumetricFlowRateMeasure", "IfcWarpingConstantMeasure", "IfcWarpingMomentMeasure"})
            t[name] = {PsdPrimitive::kReal, ""};
        for (const char* name : {"IfcLengthMeasure", "IfcPositiveLengthMeasure", "IfcNonNegativeLengthMeasure"})
            t[name] = {PsdPrimitive::kReal, "LENGTH"};
        t["IfcAreaMeasure"] = {PsdPrimitive::kReal, "AREA"};
        t["IfcVolumeMeasure"] = {PsdPrimitive::kReal, "VOLUME"};
        t["IfcMassMeasure"] = {PsdPrimitive::kReal, "MASS"};
        return t;
    }();
    return table;
}

struct QuantityType {
    const char* name;
    PsdPrimitive primitive;
    const char* measure;
};

// The quantity types of quantity sets; weights are masses.
const QuantityType kQuantityTypes[] = {
    {"Q_LENGTH", PsdPrimitive::kReal, "LENGTH"}, {"Q_AREA", PsdPrimitive::kReal, "AREA"},
    {"Q_VOLUME", PsdPrimitive::kReal, "VOLUME"}, {"Q_WEIGHT", PsdPrimitive::kReal, "MASS"},
    {"Q_COUNT", PsdPrimitive::kInteger, ""},      {"Q_TIME", PsdPrimitive::kReal, ""},
};

char lowerAscii(char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; }

}  // namespace

bool psdDataType(const std::string& ifcType, PsdPrimitive& primitive, std::string& measure) {
    const auto it = dataTypes().find(ifcType);
    if (it == dataTypes().end())
        return false;
    primitive = it->second.primitive;
    measure = it->second.measure;
    return true;
}

std::string defaultPsdDataType(PsdPrimitive primitive, const std::string& measure) {
    if (measure == "LENGTH")
        return "IfcLengthMeasure";
    if (measure == "AREA")
        return "IfcAreaMeasure";
    if (measure == "VOLUME")
        return "IfcVolumeMeasure";
    if (measure == "MASS")
        return "IfcMassMeasure";
    switch (primitive) {
    case PsdPrimitive::kBoolean: return "IfcBoolean";
    case PsdPrimitive::kInteger: return "IfcInteger";
    case PsdPrimitive::kReal: return "IfcReal";
    case PsdPrimitive::kString: break;
    }
    return "IfcLabel";
}

namespace psd {

bool quantityType(const std::string& qtoType, PsdPrimitive& primitive, std::string& measure) {
    for (const QuantityType& q : kQuantityTypes) {
        if (qtoType == q.name) {
            primitive = q.primitive;
            measure = q.measure;
            return true;
        }
    }
    return false;
}

std::string quantityTypeOf(PsdPrimitive primitive, const std::string& measure) {
    for (const QuantityType& q : kQuantityTypes) {
        if (q.primitive == primitive && measure == q.measure)
            return q.name;
    }
    return {};
}

bool sameName(const std::string& a, const std::string& b) {
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return lowerAscii(x) == lowerAscii(y); });
}

}  // namespace psd

std::vector<PsdEnumValue> PsdType::enumValues() const {
    std::vector<PsdEnumValue> values;
    auto describe = [this](const std::string& value) {
        for (const PsdConstant& constant : constants) {
            if (constant.name == value)
                return constant.definition;
        }
        return std::string();
    };
    if (!enumItems.empty()) {
        for (const std::string& item : enumItems)
            values.push_back({item, describe(item)});
    } else {
        for (const PsdConstant& constant : constants)
            values.push_back({constant.name, constant.definition});
    }
    return values;
}

bool operator==(const PsdAlias& a, const PsdAlias& b) { return a.lang == b.lang && a.text == b.text; }

bool operator==(const PsdConstant& a, const PsdConstant& b) {
    return a.name == b.name && a.definition == b.definition && a.nameAliases == b.nameAliases &&
           a.definitionAliases == b.definitionAliases;
}

bool operator==(const PsdEnumValue& a, const PsdEnumValue& b) {
    return a.value == b.value && a.description == b.description;
}

bool operator==(const PsdType& a, const PsdType& b) {
    return a.kind == b.kind && a.primitive == b.primitive && a.dataType == b.dataType && a.measure == b.measure &&
           a.enumListName == b.enumListName && a.enumItems == b.enumItems && a.constants == b.constants &&
           a.extendedKind == b.extendedKind && a.xml == b.xml;
}

bool operator==(const PsdProperty& a, const PsdProperty& b) {
    return a.name == b.name && a.definition == b.definition && a.ifdGuid == b.ifdGuid && a.type == b.type &&
           a.nameAliases == b.nameAliases && a.definitionAliases == b.definitionAliases;
}

bool operator==(const PsdSet& a, const PsdSet& b) {
    return a.kind == b.kind && a.name == b.name && a.definition == b.definition && a.ifdGuid == b.ifdGuid &&
           a.templateType == b.templateType && a.ifcVersion == b.ifcVersion && a.applicability == b.applicability &&
           a.applicableClasses == b.applicableClasses && a.applicableTypeValue == b.applicableTypeValue &&
           a.definitionAliases == b.definitionAliases && a.properties == b.properties;
}

std::vector<std::string> findPsdFiles(const std::vector<std::string>& paths) {
    std::vector<std::string> files;
    for (const std::string& path : paths) {
        std::error_code error;
        const fs::file_status status = fs::status(path, error);
        if (fs::is_regular_file(status)) {
            files.push_back(path);
        } else if (fs::is_directory(status)) {
            std::vector<std::string> found;
            for (fs::recursive_directory_iterator it(path, error), end; !error && it != end; it.increment(error)) {
                std::string extension = it->path().extension().string();
                std::transform(extension.begin(), extension.end(), extension.begin(), lowerAscii);
                if (extension == ".xml" && it->is_regular_file())
                    found.push_back(it->path().string());
            }
            if (error)
                throw PsdError(path, 0, "the folder cannot be read: " + error.message());
            std::sort(found.begin(), found.end());
            files.insert(files.end(), found.begin(), found.end());
        } else {
            throw PsdError(path, 0, "no such file or folder");
        }
    }
    return files;
}

std::string findOfficialPsdFolder(const std::string& executableFolder) {
    for (const char* relative : {"res/psd", "../res/psd"}) {
        const fs::path candidate = (fs::path(executableFolder) / relative).lexically_normal();
        std::error_code error;
        // A folder of that name without files (a build tree's own res/psd) is not the one.
        if (fs::is_directory(candidate, error) && !findPsdFiles({candidate.string()}).empty())
            return candidate.string();
    }
    return {};
}

}  // namespace vl_db
