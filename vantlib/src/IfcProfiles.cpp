// Profiles in IFC files: the parameterized profile definitions read from, and written as, the
// instances of an ISO 10303-21 file (StepFile.h reads the syntax).
#include <vantlib/ProfileCatalogues.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <map>

#include <vantlib/Library.h>

#include "CatalogueProfiles.h"
#include "StepFile.h"
#include "Text.h"

namespace vantlib {

namespace {

// One attribute after the three every parameterized profile has (type, name, position).
struct Slot {
    ShapeParameter parameter;
    bool used;
    bool angle;
};

constexpr Slot length(ShapeParameter p) { return {p, true, false}; }
constexpr Slot angle(ShapeParameter p) { return {p, true, true}; }
// An attribute our shape does not keep (flange edge radii and slopes of I-shapes).
constexpr Slot kIgnored{ShapeParameter::kDepth, false, false};

struct IfcShape {
    const char* entity;
    ObjectType type;
    std::vector<Slot> ifc4;
    std::vector<Slot> ifc2x3;
    // Whether IFC4 has the entity; the crane rails are of IFC2x3 only.
    bool inIfc4;
};

const std::vector<IfcShape>& ifcShapes() {
    using P = ShapeParameter;
    static const std::vector<IfcShape> shapes = [] {
        std::vector<IfcShape> list;
        auto add = [&](const char* entity, ObjectType type, std::vector<Slot> ifc4, std::vector<Slot> more2x3,
                       bool inIfc4 = true, size_t common = SIZE_MAX) {
            // IFC2x3 has the IFC4 attributes it shares (the first `common`) and then its own.
            std::vector<Slot> ifc2x3(ifc4.begin(), ifc4.begin() + std::min(common, ifc4.size()));
            ifc2x3.insert(ifc2x3.end(), more2x3.begin(), more2x3.end());
            list.push_back({entity, type, std::move(ifc4), std::move(ifc2x3), inIfc4});
        };
        add("IFCISHAPEPROFILEDEF", kIShapeProfile,
            {length(P::kOverallWidth), length(P::kOverallDepth), length(P::kWebThickness), length(P::kFlangeThickness),
             length(P::kFilletRadius), kIgnored, kIgnored},
            {}, true, 5);
        add("IFCASYMMETRICISHAPEPROFILEDEF", kAsymmetricIShapeProfile,
            {length(P::kOverallWidth), length(P::kOverallDepth), length(P::kWebThickness), length(P::kFlangeThickness),
             length(P::kFilletRadius), length(P::kTopFlangeWidth), length(P::kTopFlangeThickness),
             length(P::kTopFlangeFilletRadius), kIgnored, kIgnored, kIgnored, kIgnored},
            {length(P::kCentreOfGravityInY)}, true, 8);
        add("IFCLSHAPEPROFILEDEF", kLShapeProfile,
            {length(P::kDepth), length(P::kWidth), length(P::kThickness), length(P::kFilletRadius),
             length(P::kEdgeRadius), angle(P::kLegSlope)},
            {length(P::kCentreOfGravityInX), length(P::kCentreOfGravityInY)});
        add("IFCUSHAPEPROFILEDEF", kUShapeProfile,
            {length(P::kDepth), length(P::kFlangeWidth), length(P::kWebThickness), length(P::kFlangeThickness),
             length(P::kFilletRadius), length(P::kEdgeRadius), angle(P::kFlangeSlope)},
            {length(P::kCentreOfGravityInX)});
        add("IFCCSHAPEPROFILEDEF", kCShapeProfile,
            {length(P::kDepth), length(P::kWidth), length(P::kWallThickness), length(P::kGirth),
             length(P::kInternalFilletRadius)},
            {length(P::kCentreOfGravityInX)});
        add("IFCZSHAPEPROFILEDEF", kZShapeProfile,
            {length(P::kDepth), length(P::kFlangeWidth), length(P::kWebThickness), length(P::kFlangeThickness),
             length(P::kFilletRadius), length(P::kEdgeRadius)},
            {});
        add("IFCTSHAPEPROFILEDEF", kTShapeProfile,
            {length(P::kDepth), length(P::kFlangeWidth), length(P::kWebThickness), length(P::kFlangeThickness),
             length(P::kFilletRadius), length(P::kFlangeEdgeRadius), length(P::kWebEdgeRadius), angle(P::kWebSlope),
             angle(P::kFlangeSlope)},
            {length(P::kCentreOfGravityInY)});
        const std::vector<Slot> railA = {length(P::kOverallHeight), length(P::kBaseWidth2), length(P::kRadius),
                                         length(P::kHeadWidth), length(P::kHeadDepth2), length(P::kHeadDepth3),
                                         length(P::kWebThickness), length(P::kBaseWidth4), length(P::kBaseDepth1),
                                         length(P::kBaseDepth2), length(P::kBaseDepth3), length(P::kCentreOfGravityInY)};
        add("IFCCRANERAILASHAPEPROFILEDEF", kCraneRailAShapeProfile, railA, {}, false);
        const std::vector<Slot> railF = {length(P::kOverallHeight), length(P::kHeadWidth), length(P::kRadius),
                                         length(P::kHeadDepth2), length(P::kHeadDepth3), length(P::kWebThickness),
                                         length(P::kBaseDepth1), length(P::kBaseDepth2), length(P::kCentreOfGravityInY)};
        add("IFCCRANERAILFSHAPEPROFILEDEF", kCraneRailFShapeProfile, railF, {}, false);
        add("IFCCIRCLEPROFILEDEF", kCircleProfile, {length(P::kRadius)}, {});
        add("IFCCIRCLEHOLLOWPROFILEDEF", kCircleHollowProfile, {length(P::kRadius), length(P::kWallThickness)}, {});
        add("IFCELLIPSEPROFILEDEF", kEllipseProfile, {length(P::kSemiAxis1), length(P::kSemiAxis2)}, {});
        add("IFCRECTANGLEPROFILEDEF", kRectangleProfile, {length(P::kXDim), length(P::kYDim)}, {});
        add("IFCRECTANGLEHOLLOWPROFILEDEF", kRectangleHollowProfile,
            {length(P::kXDim), length(P::kYDim), length(P::kWallThickness), length(P::kInnerFilletRadius),
             length(P::kOuterFilletRadius)},
            {});
        add("IFCROUNDEDRECTANGLEPROFILEDEF", kRoundedRectangleProfile,
            {length(P::kXDim), length(P::kYDim), length(P::kRoundingRadius)}, {});
        add("IFCTRAPEZIUMPROFILEDEF", kTrapeziumProfile,
            {length(P::kBottomXDim), length(P::kTopXDim), length(P::kYDim), length(P::kTopXOffset)}, {});
        return list;
    }();
    return shapes;
}

const IfcShape* shapeOfEntity(const std::string& entity) {
    for (const IfcShape& shape : ifcShapes())
        if (entity == shape.entity)
            return &shape;
    return nullptr;
}

const IfcShape* shapeOfType(ObjectType type) {
    for (const IfcShape& shape : ifcShapes())
        if (shape.type == type)
            return &shape;
    return nullptr;
}

// "IFCISHAPEPROFILEDEF" -> "IfcIShapeProfileDef", for messages and counts.
std::string entityLabel(const IfcShape& shape) {
    return "Ifc" + std::string(ProfileClass::byType(shape.type)->shortName()) + "ProfileDef";
}

const step::Value& unwrapped(const step::Value& value) {
    return value.kind == step::Value::kTyped && !value.items.empty() ? unwrapped(value.items.front()) : value;
}

double prefixFactor(const std::string& prefix) {
    static const std::map<std::string, double> factors = {
        {"EXA", 1e18},  {"PETA", 1e15}, {"TERA", 1e12}, {"GIGA", 1e9},   {"MEGA", 1e6},   {"KILO", 1e3},
        {"HECTO", 1e2}, {"DECA", 1e1},  {"DECI", 1e-1}, {"CENTI", 1e-2}, {"MILLI", 1e-3}, {"MICRO", 1e-6},
        {"NANO", 1e-9}, {"PICO", 1e-12}, {"FEMTO", 1e-15}, {"ATTO", 1e-18}};
    auto it = factors.find(prefix);
    return it == factors.end() ? 1.0 : it->second;
}

// The size of one unit in metres or radians; 0 when the instance is no unit we can size.
double unitSize(const step::File& file, uint64_t id, int depth = 0) {
    const step::Instance* unit = file.find(id);
    if (!unit || depth > 4)
        return 0.0;
    if (unit->type == "IFCSIUNIT" && unit->arguments.size() == 4) {
        const step::Value& prefix = unit->arguments[2];
        return prefix.kind == step::Value::kEnum ? prefixFactor(prefix.text) : 1.0;
    }
    if (unit->type == "IFCCONVERSIONBASEDUNIT" && unit->arguments.size() == 4 &&
        unit->arguments[3].kind == step::Value::kRef) {
        const step::Instance* measure = file.find(unit->arguments[3].ref);
        if (!measure || measure->type != "IFCMEASUREWITHUNIT" || measure->arguments.size() != 2)
            return 0.0;
        const step::Value& factor = unwrapped(measure->arguments[0]);
        if (factor.kind != step::Value::kNumber || measure->arguments[1].kind != step::Value::kRef)
            return 0.0;
        return factor.number * unitSize(file, measure->arguments[1].ref, depth + 1);
    }
    return 0.0;
}

struct FileUnits {
    double millimetresPerLength = 1.0;  // a file without units is read in millimetres
    double radiansPerAngle = 1.0;
};

FileUnits unitsOf(const step::File& file) {
    FileUnits units;
    for (const auto& entry : file.instances) {
        const step::Instance& assignment = entry.second;
        if (assignment.type != "IFCUNITASSIGNMENT" || assignment.arguments.empty() ||
            assignment.arguments[0].kind != step::Value::kList)
            continue;
        for (const step::Value& ref : assignment.arguments[0].items) {
            const step::Instance* unit = ref.kind == step::Value::kRef ? file.find(ref.ref) : nullptr;
            if (!unit || unit->arguments.size() < 2 || unit->arguments[1].kind != step::Value::kEnum)
                continue;
            const double size = unitSize(file, ref.ref);
            if (size <= 0.0)
                continue;
            if (unit->arguments[1].text == "LENGTHUNIT")
                units.millimetresPerLength = size * 1000.0;
            else if (unit->arguments[1].text == "PLANEANGLEUNIT")
                units.radiansPerAngle = size;
        }
    }
    return units;
}

std::string textOf(const step::Value& value) {
    const step::Value& v = unwrapped(value);
    return v.kind == step::Value::kString ? v.text : std::string();
}

// The standard and description a material profile gives its profile definition.
struct ProfileUse {
    std::string standard;
    std::string description;
};

std::map<uint64_t, ProfileUse> profileUses(const step::File& file) {
    std::map<uint64_t, ProfileUse> uses;
    for (const auto& entry : file.instances) {
        const step::Instance& use = entry.second;
        if (use.type != "IFCMATERIALPROFILE" || use.arguments.size() != 6 || use.arguments[3].kind != step::Value::kRef)
            continue;
        ProfileUse& found = uses[use.arguments[3].ref];
        if (found.standard.empty())
            found.standard = textOf(use.arguments[5]);
        if (found.description.empty())
            found.description = textOf(use.arguments[1]);
    }
    return uses;
}

// "IPE 200" (as written here) or "HEA100" into the profile name and size; labels without a
// leading name ("40-2.6" of a hollow section) take one from the shape.
std::pair<std::string, std::string> nameAndSize(const std::string& label, const Profile& profile) {
    const size_t space = label.find_last_of(' ');
    if (space != std::string::npos && space > 0 && space + 1 < label.size())
        return {label.substr(0, space), label.substr(space + 1)};
    size_t letters = 0;
    while (letters < label.size() && std::isalpha(static_cast<unsigned char>(label[letters])))
        ++letters;
    if (letters > 0 && letters < label.size())
        return {label.substr(0, letters), sizeOf(label)};
    std::string name = profile.isA().shortName();
    if (profile.objectType() == kCircleHollowProfile)
        name = "CHS";
    else if (profile.objectType() == kRectangleHollowProfile)
        name = profile.parameter(ShapeParameter::kXDim) == profile.parameter(ShapeParameter::kYDim) ? "SHS" : "RHS";
    return {name, label};
}

// A real as the syntax writes it: shortest exact digits, always with a decimal point.
std::string real(double value) {
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    std::string text(buffer, result.ptr);
    const size_t exponent = text.find('e');
    std::string mantissa = text.substr(0, exponent);
    if (mantissa.find('.') == std::string::npos)
        mantissa += '.';
    if (exponent == std::string::npos)
        return mantissa;
    return mantissa + "E" + text.substr(exponent + 1);
}

// Globally unique ids in the file's 22-character form, from a counter: unique within the file,
// and the same for the same library.
std::string globalId(uint64_t counter) {
    static const char kDigits[] = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_$";
    std::string id(22, '0');
    id[0] = '3';
    for (int i = 21; i > 0 && counter; --i, counter /= 64)
        id[size_t(i)] = kDigits[counter % 64];
    return id;
}

}  // namespace

CatalogueContent readIfcProfilesText(const std::string& text, const std::string& file) {
    step::File parsed;
    try {
        parsed = step::parse(text);
    } catch (const step::FileError& e) {
        throw CatalogueError(file, e.line(), e.what());
    }
    CatalogueContent content;
    for (const step::Fault& fault : parsed.faults)
        content.skipped.emplace_back(file, fault.line, fault.reason);
    const bool ifc2x3 = !parsed.schemas.empty() && parsed.schemas.front() == "IFC2X3";
    const FileUnits units = unitsOf(parsed);
    const std::map<uint64_t, ProfileUse> uses = profileUses(parsed);
    size_t definitions = 0;
    for (const auto& entry : parsed.instances) {
        const step::Instance& instance = entry.second;
        const IfcShape* shape = shapeOfEntity(instance.type);
        if (!shape)
            continue;
        ++definitions;
        const std::vector<Slot>& slots = ifc2x3 || !shape->inIfc4 ? shape->ifc2x3 : shape->ifc4;
        const std::string what = "#" + std::to_string(instance.id) + " " + entityLabel(*shape);
        try {
            if (instance.arguments.size() != 3 + slots.size())
                throw std::invalid_argument("has " + std::to_string(instance.arguments.size()) + " attributes, not " +
                                            std::to_string(3 + slots.size()));
            std::vector<std::pair<ShapeParameter, double>> values;
            for (size_t i = 0; i < slots.size(); ++i) {
                const step::Value& value = unwrapped(instance.arguments[3 + i]);
                if (value.kind == step::Value::kNull || !slots[i].used)
                    continue;
                if (value.kind != step::Value::kNumber)
                    throw std::invalid_argument("has attribute " + std::to_string(4 + i) + ", which is not a number");
                values.emplace_back(slots[i].parameter,
                                    value.number * (slots[i].angle ? units.radiansPerAngle : units.millimetresPerLength));
            }
            const ProfileClass& cls = *ProfileClass::byType(shape->type);
            QcSmartPtr<Profile> profile = buildProfile(cls, std::string(), values);
            std::string label = textOf(instance.arguments[1]);
            if (label.empty())
                label = "#" + std::to_string(instance.id);
            const auto named = nameAndSize(label, *profile);
            profile->set_size(OdString::fromUtf8(named.second));
            CatalogueProfile read;
            read.name = named.first;
            auto use = uses.find(instance.id);
            if (use != uses.end()) {
                read.standard = use->second.standard;
                profile->set_description(OdString::fromUtf8(use->second.description));
            }
            read.profile = profile;
            read.catalogueClass = entityLabel(*shape);
            read.line = instance.line;
            content.profiles.push_back(std::move(read));
        } catch (const std::invalid_argument& e) {
            content.skipped.emplace_back(file, instance.line, what + " " + e.what());
        }
    }
    if (definitions == 0)
        throw CatalogueError(file, 0, "holds no parameterized profile definitions");
    return content;
}

IfcExport exportIfcProfiles(const Library& library) {
    std::vector<QcSmartPtr<Profile>> profiles;
    library.get(profiles, ProfileCriteria());
    const double toMillimetres = library.unit() == OdDb::kUnitsUndefined || library.unit() == OdDb::kUnitsMillimeters
                                     ? 1.0
                                     : oddbGetUnitsConversion(library.unit(), OdDb::kUnitsMillimeters);
    IfcExport result;
    std::string data;
    uint64_t next = 7;
    uint64_t guid = 0;
    auto line = [&](uint64_t id, const std::string& body) { data += "#" + std::to_string(id) + "=" + body + ";\n"; };
    auto quoted = [](const OdString& text) {
        const std::string utf8 = textToUtf8(text);
        return utf8.empty() ? std::string("$") : "'" + step::encodeString(utf8) + "'";
    };
    std::vector<std::pair<std::wstring, QcSmartPtr<Profile>>> sorted;
    for (auto& profile : profiles) {
        const ProfileName* name = profile->name().get();
        const OdString standard = name && name->standard() ? name->standard()->name() : OdString();
        sorted.emplace_back(foldCase(standard) + L'\n' + (name ? foldCase(name->name()) : std::wstring()) + L'\n' +
                                foldCase(profile->size()),
                            profile);
    }
    std::sort(sorted.begin(), sorted.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::string types;
    for (const auto& entry : sorted) {
        const Profile& profile = *entry.second;
        const IfcShape* shape = shapeOfType(profile.objectType());
        if (!shape || !shape->inIfc4) {
            ++result.leftOut;
            continue;
        }
        const ProfileName* name = profile.name().get();
        const OdString label = name && !name->name().isEmpty() ? name->name() + L" " + profile.size() : profile.size();
        std::string attributes = ".AREA.," + quoted(label) + ",$";
        for (const Slot& slot : shape->ifc4) {
            attributes += ',';
            if (slot.used && profile.hasParameter(slot.parameter))
                attributes += real(profile.parameter(slot.parameter) * (slot.angle ? 1.0 : toMillimetres));
            else
                attributes += '$';
        }
        const uint64_t definition = next++;
        line(definition, shape->entity + ("(" + attributes + ")"));
        const OdString standard = name && name->standard() ? name->standard()->name() : OdString();
        const uint64_t use = next++;
        line(use, "IFCMATERIALPROFILE($," + quoted(profile.description()) + ",$,#" + std::to_string(definition) + ",$," +
                      quoted(standard) + ")");
        const uint64_t set = next++;
        line(set, "IFCMATERIALPROFILESET(" + quoted(label) + ",$,(#" + std::to_string(use) + "),$)");
        const uint64_t type = next++;
        line(type, "IFCBEAMTYPE('" + globalId(++guid) + "',$," + quoted(label) + ",$,$,$,$,$,$,.BEAM.)");
        line(next++, "IFCRELASSOCIATESMATERIAL('" + globalId(++guid) + "',$,$,$,(#" + std::to_string(type) + "),#" +
                         std::to_string(set) + ")");
        types += (types.empty() ? "#" : ",#") + std::to_string(type);
        ++result.written;
    }
    if (!types.empty())
        line(next++, "IFCRELDECLARES('" + globalId(++guid) + "',$,$,$,#5,(" + types + "))");

    const std::string name = library.description().isEmpty() ? std::string("'Profiles'") : quoted(library.description());
    result.text = "ISO-10303-21;\nHEADER;\n"
                  "FILE_DESCRIPTION(('ViewDefinition [DesignTransferView]'),'2;1');\n"
                  "FILE_NAME('profiles.ifc','',(''),(''),'vantlib','vantlib','');\n"
                  "FILE_SCHEMA(('IFC4'));\nENDSEC;\nDATA;\n"
                  "#1=IFCPROJECT('" + globalId(1ull << 60) + "',$," + name + ",$,$,$,$,$,#4);\n"
                  "#2=IFCSIUNIT(*,.LENGTHUNIT.,.MILLI.,.METRE.);\n"
                  "#3=IFCSIUNIT(*,.PLANEANGLEUNIT.,$,.RADIAN.);\n"
                  "#4=IFCUNITASSIGNMENT((#2,#3));\n"
                  "#5=IFCPROJECTLIBRARY('" + globalId((1ull << 60) + 1) + "',$," + name + ",$,$,$,$,$,$);\n"
                  "#6=IFCRELDECLARES('" + globalId((1ull << 60) + 2) + "',$,$,$,#1,(#5));\n" +
                  data + "ENDSEC;\nEND-ISO-10303-21;\n";
    return result;
}

}  // namespace vantlib
