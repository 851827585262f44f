// Section tables read into profiles (the YAML and CSV tables here, IFC files in IfcProfiles.cpp)
// and imported through the exchange document's write path.
#include <vantlib/ProfileCatalogues.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <fstream>
#include <map>
#include <optional>
#include <sstream>

#include <yaml-cpp/yaml.h>

#include <vantlib/Library.h>

#include "CatalogueProfiles.h"
#include "ExchangeDocument.h"
#include "Text.h"

namespace vantlib {


// ---------------------------------------------------------------- shared by the readers

std::optional<double> parseNumber(std::string text) {
    text.erase(0, text.find_first_not_of(" \t"));
    text.erase(text.find_last_not_of(" \t") + 1);
    const char* first = text.data();
    const char* last = first + text.size();
    if (first != last && *first == '+')
        ++first;
    double value = 0.0;
    const auto result = std::from_chars(first, last, value);
    if (text.empty() || result.ec != std::errc() || result.ptr != last || !std::isfinite(value))
        return std::nullopt;
    return value;
}

QcSmartPtr<Profile> buildProfile(const ProfileClass& shape, const std::string& size,
                                 const std::vector<std::pair<ShapeParameter, double>>& values) {
    QcSmartPtr<Profile> profile = shape.createEmpty();
    profile->set_size(OdString::fromUtf8(size));
    for (const auto& entry : values) {
        const ShapeParameterInfo* info = shape.parameter(entry.first);
        const bool signedValue = entry.first == ShapeParameter::kCentreOfGravityInX ||
                                 entry.first == ShapeParameter::kCentreOfGravityInY ||
                                 entry.first == ShapeParameter::kTopXOffset;
        if (!signedValue && entry.second < 0)
            throw std::invalid_argument("has a negative " + std::string(info->key));
        if (!info->optional && !signedValue && entry.second == 0)
            throw std::invalid_argument("has a zero " + std::string(info->key));
        profile->setParameter(entry.first, entry.second);
    }
    for (const ShapeParameterInfo& info : shape.parameters())
        if (!info.optional && info.id != ShapeParameter::kCentreOfGravityInX &&
            info.id != ShapeParameter::kCentreOfGravityInY && info.id != ShapeParameter::kTopXOffset &&
            profile->parameter(info.id) == 0)
            throw std::invalid_argument("has no " + std::string(info.key));
    return profile;
}

std::string sizeOf(const std::string& label) {
    size_t letters = 0;
    while (letters < label.size() && std::isalpha(static_cast<unsigned char>(label[letters])))
        ++letters;
    const std::string rest = label.substr(letters);
    const size_t start = rest.find_first_not_of(" -_");
    return start == std::string::npos ? label : rest.substr(start);
}

namespace {

std::string stripped(const std::string& text) {
    const size_t start = text.find_first_not_of(" \t");
    return start == std::string::npos ? std::string() : text.substr(start, text.find_last_not_of(" \t") - start + 1);
}

std::string readWholeFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in)
        throw CatalogueError(path, 0, "cannot be read");
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

// ---------------------------------------------------------------- YAML section tables

enum class TableShape { kI, kU, kLEqual, kLUnequal, kChs, kShs, kRhs, kZ };

struct TableClass {
    const char* id;
    const char* name;
    TableShape shape;
};

// The parametric classes of the tables; the tables' generic classes have no rows.
const TableClass kTableClasses[] = {
    {"ibeam_hea", "HEA", TableShape::kI},        {"ibeam_heaa", "HEAA", TableShape::kI},
    {"ibeam_heb", "HEB", TableShape::kI},        {"ibeam_hem", "HEM", TableShape::kI},
    {"ibeam_ipe", "IPE", TableShape::kI},        {"ibeam_ipe750", "IPE", TableShape::kI},
    {"ibeam_ipea", "IPEa", TableShape::kI},      {"ibeam_ipeo", "IPEo", TableShape::kI},
    {"ibeam_iper", "IPEr", TableShape::kI},      {"ibeam_ipev", "IPEv", TableShape::kI},
    {"inp", "INP", TableShape::kI},              {"cbeam_upe", "UPE", TableShape::kU},
    {"cbeam_upn", "UPN", TableShape::kU},        {"cbeam_uap", "UAP", TableShape::kU},
    {"lbeam_lnp_equal", "L", TableShape::kLEqual}, {"lbeam_lnp_unequal", "L", TableShape::kLUnequal},
    {"hollow_circle", "CHS", TableShape::kChs},  {"hollow_square", "SHS", TableShape::kShs},
    {"hollow_rectangular", "RHS", TableShape::kRhs}, {"zbeam", "Z", TableShape::kZ},
};

struct ColumnUse {
    std::vector<const char*> columns;  // the first the table has is used
    ShapeParameter parameter;
    double factor;
    bool required;
};

const ProfileClass& shapeClass(TableShape shape) {
    switch (shape) {
    case TableShape::kI: return IShapeProfile::desc();
    case TableShape::kU: return UShapeProfile::desc();
    case TableShape::kLEqual:
    case TableShape::kLUnequal: return LShapeProfile::desc();
    case TableShape::kChs: return CircleHollowProfile::desc();
    case TableShape::kShs:
    case TableShape::kRhs: return RectangleHollowProfile::desc();
    case TableShape::kZ: return ZShapeProfile::desc();
    }
    throw ConsistencyError(OdString(L"Unknown table shape"));
}

std::vector<ColumnUse> columnUses(TableShape shape) {
    using P = ShapeParameter;
    switch (shape) {
    case TableShape::kI:
        return {{{"h"}, P::kOverallDepth, 1, true}, {{"b"}, P::kOverallWidth, 1, true},
                {{"tw"}, P::kWebThickness, 1, true}, {{"tf"}, P::kFlangeThickness, 1, true},
                {{"r", "r1"}, P::kFilletRadius, 1, false}};
    case TableShape::kU:
        return {{{"h"}, P::kDepth, 1, true}, {{"b"}, P::kFlangeWidth, 1, true}, {{"tw"}, P::kWebThickness, 1, true},
                {{"tf"}, P::kFlangeThickness, 1, true}, {{"r", "r1"}, P::kFilletRadius, 1, false}};
    case TableShape::kLEqual:
        return {{{"a"}, P::kDepth, 1, true}, {{"t"}, P::kThickness, 1, true}, {{"r1"}, P::kFilletRadius, 1, false},
                {{"r2"}, P::kEdgeRadius, 1, false}};
    case TableShape::kLUnequal:
        return {{{"a"}, P::kDepth, 1, true}, {{"b"}, P::kWidth, 1, true}, {{"t"}, P::kThickness, 1, true},
                {{"r1"}, P::kFilletRadius, 1, false}, {{"r2"}, P::kEdgeRadius, 1, false}};
    case TableShape::kChs: return {{{"D"}, P::kRadius, 0.5, true}, {{"t"}, P::kWallThickness, 1, true}};
    case TableShape::kShs:
        return {{{"b"}, P::kXDim, 1, true}, {{"b"}, P::kYDim, 1, true}, {{"t"}, P::kWallThickness, 1, true}};
    case TableShape::kRhs:
        return {{{"b"}, P::kXDim, 1, true}, {{"h"}, P::kYDim, 1, true}, {{"t"}, P::kWallThickness, 1, true}};
    case TableShape::kZ:
        return {{{"h"}, P::kDepth, 1, true}, {{"c1"}, P::kFlangeWidth, 1, true}, {{"tw"}, P::kWebThickness, 1, true},
                {{"tf"}, P::kFlangeThickness, 1, true}};
    }
    return {};
}

int lineOf(const YAML::Node& node) { return node.Mark().line >= 0 ? node.Mark().line + 1 : 0; }

// The class's standard: the group of its (first) standard, else the standard's own name.
std::string tableStandard(const YAML::Node& standards) {
    YAML::Node first = standards.IsSequence() && standards.size() > 0 ? standards[0] : standards;
    if (!first.IsMap())
        return std::string();
    for (const char* key : {"group", "standard"})
        if (first[key] && first[key].IsScalar())
            return first[key].Scalar();
    return std::string();
}

void readTable(const YAML::Node& table, const TableClass& known, const std::string& standard, const std::string& file,
               CatalogueContent& content) {
    const YAML::Node columns = table["columns"];
    const YAML::Node data = table["data"];
    if (!columns || !columns.IsSequence() || !data || !data.IsMap()) {
        content.skipped.emplace_back(file, lineOf(table), std::string("the table of class '") + known.id +
                                                              "' has no columns or no data");
        return;
    }
    std::map<std::string, size_t> position;
    for (size_t i = 0; i < columns.size(); ++i)
        if (columns[i].IsScalar())
            position.emplace(columns[i].Scalar(), i);
    std::vector<std::pair<const ColumnUse*, size_t>> used;
    const std::vector<ColumnUse> uses = columnUses(known.shape);
    for (const ColumnUse& use : uses) {
        auto found = std::find_if(use.columns.begin(), use.columns.end(), [&](const char* c) { return position.count(c); });
        if (found != use.columns.end())
            used.emplace_back(&use, position[*found]);
        else if (use.required) {
            content.skipped.emplace_back(file, lineOf(columns), std::string("the table of class '") + known.id +
                                                                    "' lacks the column '" + use.columns.front() + "'");
            return;
        }
    }
    const ProfileClass& shape = shapeClass(known.shape);
    for (auto row = data.begin(); row != data.end(); ++row) {
        const std::string label = row->first.Scalar();
        const int line = lineOf(row->first);
        try {
            const YAML::Node& values = row->second;
            if (!values.IsSequence())
                throw std::invalid_argument("is not a list of values");
            if (values.size() != columns.size())
                throw std::invalid_argument("has " + std::to_string(values.size()) + " values for " +
                                            std::to_string(columns.size()) + " columns");
            std::vector<std::pair<ShapeParameter, double>> parameters;
            for (const auto& entry : used) {
                const YAML::Node& cell = values[entry.second];
                const std::optional<double> number = cell.IsScalar() ? parseNumber(cell.Scalar()) : std::nullopt;
                if (!number)
                    throw std::invalid_argument("has a value of '" + columns[entry.second].Scalar() + "' that is not a number");
                parameters.emplace_back(entry.first->parameter, *number * entry.first->factor);
            }
            CatalogueProfile profile;
            profile.standard = standard;
            profile.name = known.name;
            profile.profile = buildProfile(shape, sizeOf(label), parameters);
            profile.catalogueClass = known.name;
            profile.line = line;
            content.profiles.push_back(std::move(profile));
        } catch (const std::invalid_argument& e) {
            content.skipped.emplace_back(file, line, "the row '" + label + "' " + e.what());
        }
    }
}

}  // namespace

CatalogueContent readSectionTableText(const std::string& text, const std::string& file) {
    CatalogueContent content;
    YAML::Node root;
    try {
        root = YAML::Load(text);
    } catch (const YAML::Exception& e) {
        throw CatalogueError(file, e.mark.line >= 0 ? e.mark.line + 1 : 0, "is not a YAML section table: " + e.msg);
    }
    const YAML::Node classes = root.IsMap() ? root["classes"] : YAML::Node();
    if (!classes || !classes.IsSequence())
        throw CatalogueError(file, 0, "is not a section table (it has no list of classes)");
    for (const YAML::Node& cls : classes) {
        const YAML::Node parameters = cls.IsMap() ? cls["parameters"] : YAML::Node();
        const YAML::Node tables = parameters && parameters.IsMap() ? parameters["tables"] : YAML::Node();
        if (!tables)
            continue;  // a generic class, whose dimensions the user gives
        const std::string id = cls["id"] && cls["id"].IsScalar() ? cls["id"].Scalar() : std::string();
        auto known = std::find_if(std::begin(kTableClasses), std::end(kTableClasses),
                                  [&](const TableClass& c) { return id == c.id; });
        if (known == std::end(kTableClasses)) {
            content.skipped.emplace_back(file, lineOf(cls), "the class '" + id + "' is unknown");
            continue;
        }
        const std::string standard = cls["standards"] ? tableStandard(cls["standards"]) : std::string();
        if (tables.IsSequence())
            for (const YAML::Node& table : tables)
                readTable(table, *known, standard, file, content);
        else
            readTable(tables, *known, standard, file, content);
    }
    if (content.profiles.empty() && content.skipped.empty())
        throw CatalogueError(file, 0, "holds no section table");
    return content;
}

// ---------------------------------------------------------------- CSV preset table

CatalogueContent readPresetTableText(const std::string& text, const std::string& file) {
    CatalogueContent content;
    std::istringstream lines(text);
    std::string line;
    int number = 0;
    bool anyRow = false;
    while (std::getline(lines, line)) {
        ++number;
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        const size_t start = line.find_first_not_of(" \t");
        if (start == std::string::npos || line[start] == '#')
            continue;
        anyRow = true;
        std::vector<std::string> fields;
        std::stringstream cells(line);
        for (std::string cell; std::getline(cells, cell, ',');)
            fields.push_back(stripped(cell));
        try {
            if (fields.size() < 3)
                throw std::invalid_argument("has no category, name and class");
            const std::string& category = fields[0];
            const std::string& label = fields[1];
            const std::string& code = fields[2];
            static const std::map<std::string, size_t> kValues = {{"C", 2}, {"H", 4}, {"R", 2}, {"RH", 3}, {"U", 4}};
            auto known = kValues.find(code);
            if (known == kValues.end())
                throw std::invalid_argument("has the unknown class '" + code + "'");
            if (fields.size() != 3 + known->second)
                throw std::invalid_argument("has " + std::to_string(fields.size() - 3) + " dimensions where class " + code +
                                            " has " + std::to_string(known->second));
            std::vector<double> v;
            for (size_t i = 3; i < fields.size(); ++i) {
                const std::optional<double> parsed = parseNumber(fields[i]);
                if (!parsed)
                    throw std::invalid_argument("has the dimension '" + fields[i] + "', which is not a number");
                v.push_back(*parsed);
            }
            using P = ShapeParameter;
            QcSmartPtr<Profile> profile;
            // "HEAA100" of the category "HEA" is HEAA 100; a label that does not begin with its
            // category ("W4x13" of "American Wide Flange") is a size of the category.
            const bool named = label.rfind(category, 0) == 0 && label.size() > category.size();
            size_t letters = 0;
            while (named && letters < label.size() && std::isalpha(static_cast<unsigned char>(label[letters])))
                ++letters;
            const std::string name = named ? label.substr(0, letters) : category;
            const std::string size = named ? sizeOf(label) : label;
            if (code == "C")
                profile = buildProfile(CircleHollowProfile::desc(), size, {{P::kRadius, v[0] / 2}, {P::kWallThickness, v[1]}});
            else if (code == "H")
                profile = buildProfile(IShapeProfile::desc(), size,
                                       {{P::kOverallWidth, v[0]}, {P::kOverallDepth, v[1]}, {P::kWebThickness, v[2]},
                                        {P::kFlangeThickness, v[3]}});
            else if (code == "R")
                profile = buildProfile(RectangleProfile::desc(), size, {{P::kXDim, v[0]}, {P::kYDim, v[1]}});
            else if (code == "RH")
                profile = buildProfile(RectangleHollowProfile::desc(), size,
                                       {{P::kXDim, v[0]}, {P::kYDim, v[1]}, {P::kWallThickness, v[2]}});
            else
                profile = buildProfile(UShapeProfile::desc(), size,
                                       {{P::kDepth, v[0]}, {P::kFlangeWidth, v[1]}, {P::kWebThickness, v[2]},
                                        {P::kFlangeThickness, v[3]}});
            CatalogueProfile entry;
            entry.name = name;
            // Solid rectangles are timber, the channels of the light-metal category aluminium.
            entry.type = code == "R" || category.find("Aluminium") != std::string::npos ? kProfileGeneric
                                                                                         : kProfileStructuralSteel;
            entry.profile = profile;
            entry.catalogueClass = category;
            entry.line = number;
            content.profiles.push_back(std::move(entry));
        } catch (const std::invalid_argument& e) {
            content.skipped.emplace_back(file, number, std::string("the row ") + e.what());
        }
    }
    if (!anyRow)
        throw CatalogueError(file, 0, "holds no rows");
    return content;
}

CatalogueContent readSectionTable(const std::string& path) { return readSectionTableText(readWholeFile(path), path); }
CatalogueContent readPresetTable(const std::string& path) { return readPresetTableText(readWholeFile(path), path); }
CatalogueContent readIfcProfiles(const std::string& path) { return readIfcProfilesText(readWholeFile(path), path); }

CatalogueContent readProfileCatalogue(const std::string& path) {
    std::string extension = path.substr(path.find_last_of('.') == std::string::npos ? path.size() : path.find_last_of('.'));
    std::transform(extension.begin(), extension.end(), extension.begin(), [](unsigned char c) { return char(std::tolower(c)); });
    if (extension == ".blt" || extension == ".yaml" || extension == ".yml")
        return readSectionTable(path);
    if (extension == ".csv")
        return readPresetTable(path);
    if (extension == ".ifc")
        return readIfcProfiles(path);
    throw CatalogueError(path, 0, "is no section table (.blt, .yaml, .csv) and no IFC file (.ifc)");
}

CatalogueImportReport importProfileCatalogues(const std::shared_ptr<Library>& library, const std::vector<std::string>& paths,
                                              ClashAnswer onClash, const ExchangeProgress& progress) {
    if (!library)
        throw ConsistencyError(OdString(L"No library to import into"));
    CatalogueImportReport report;
    ExchangeDocument doc;
    doc.unit = OdDb::kUnitsMillimeters;
    std::map<std::string, size_t> classIndex;
    for (const std::string& path : paths) {
        CatalogueContent content = readProfileCatalogue(path);
        report.skipped.insert(report.skipped.end(), content.skipped.begin(), content.skipped.end());
        for (CatalogueProfile& entry : content.profiles) {
            const OdString standard = OdString::fromUtf8(entry.standard);
            const OdString name = OdString::fromUtf8(entry.name);
            const std::wstring key = profileKey(standard, name, entry.profile->size());
            if (doc.names[kConstructionProfile].count(key)) {
                report.skipped.emplace_back(path, entry.line, "the profile '" + entry.name + " " +
                                                                  textToUtf8(entry.profile->size()) + "' was read before");
                continue;
            }
            QcSmartPtr<ProfileStandard> standardObject;
            if (!entry.standard.empty()) {
                standardObject = ProfileStandard::create(standard);
                if (doc.names[kProfileStandard].insert(foldCase(standard)).second) {
                    doc.profileStandards.push_back(standardObject);
                    ++doc.objectCount;
                }
            }
            QcSmartPtr<ProfileName> profileName = ProfileName::create(standardObject, name, entry.type);
            if (doc.names[kProfileName].insert(profileNameKey(standard, name)).second) {
                doc.profileNames.push_back(profileName);
                ++doc.objectCount;
            }
            entry.profile->set_name(profileName);
            doc.names[kConstructionProfile].insert(key);
            doc.profiles.push_back(entry.profile);
            ++doc.objectCount;
            auto counted = classIndex.find(entry.catalogueClass);
            if (counted == classIndex.end()) {
                counted = classIndex.emplace(entry.catalogueClass, report.classes.size()).first;
                report.classes.emplace_back(entry.catalogueClass, 0);
            }
            ++report.classes[counted->second].second;
        }
    }
    report.import = writeExchangeDocument(library, doc, onClash, progress);
    return report;
}

}  // namespace vantlib
