// Reading material cards (INI-style and YAML) into materials.
#include <vantlib/MaterialCards.h>

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include <yaml-cpp/yaml.h>

#include <vantlib/Library.h>

#include "ExchangeDocument.h"
#include "ExchangeNames.h"
#include "Text.h"

namespace vantlib {

namespace fs = std::filesystem;

namespace {

// The card's three quantities: the key that holds each and the units it may be written in,
// with the power of ten that takes a value into the library's unit.
struct CardUnit {
    const char* text;
    int powerOfTen;
};

struct CardQuantity {
    const char* key;
    PhysicalQuantity quantity;
    std::vector<CardUnit> units;
    std::optional<double> MaterialCard::*field;
};

const std::vector<CardQuantity>& cardQuantities() {
    static const std::vector<CardQuantity> quantities = {
        {"Density", PhysicalQuantity::kDensity,
         {{"kg/m^3", 0}, {"kg/m\u00B3", 0}, {"g/cm^3", 3}, {"g/cm\u00B3", 3}, {"kg/dm^3", 3}, {"t/m^3", 3}},
         &MaterialCard::density},
        {"ThermalConductivity", PhysicalQuantity::kThermalConductivity,
         {{"W/m/K", 0}, {"W/(m*K)", 0}, {"W/m*K", 0}, {"W/(m\u00B7K)", 0}, {"mW/m/K", -3}},
         &MaterialCard::thermalConductivity},
        {"SpecificHeat", PhysicalQuantity::kSpecificHeat,
         {{"J/kg/K", 0}, {"J/(kg*K)", 0}, {"J/(kg\u00B7K)", 0}, {"kJ/kg/K", 3}, {"kJ/(kg*K)", 3}},
         &MaterialCard::specificHeat},
    };
    return quantities;
}

std::string trimmed(const std::string& text) {
    const size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string::npos)
        return std::string();
    const size_t last = text.find_last_not_of(" \t\r\n");
    return text.substr(first, last - first + 1);
}

std::string unquoted(std::string text) {
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"')
        text = text.substr(1, text.size() - 2);
    return text;
}

// A decimal number (a point or a comma before the decimals, an optional exponent) times
// 10^powerOfTen, rounded once: the power of ten moves the exponent of the decimal text, so
// 0,72 kJ becomes exactly 720 J.
std::optional<double> scaledDecimal(std::string number, int powerOfTen) {
    if (number.empty())
        return std::nullopt;
    const size_t comma = number.find(',');
    if (comma != std::string::npos) {
        if (number.find('.') != std::string::npos || number.find(',', comma + 1) != std::string::npos)
            return std::nullopt;
        number[comma] = '.';
    }
    long exponent = 0;
    const size_t e = number.find_first_of("eE");
    std::string mantissa = number.substr(0, e);
    if (e != std::string::npos) {
        const std::string exponentText = number.substr(e + 1);
        const char* begin = exponentText.data() + (exponentText.size() > 1 && exponentText[0] == '+' ? 1 : 0);
        auto [end, error] = std::from_chars(begin, exponentText.data() + exponentText.size(), exponent);
        if (error != std::errc() || end != exponentText.data() + exponentText.size() || begin == end)
            return std::nullopt;
    }
    const char* digits = mantissa.data() + (!mantissa.empty() && mantissa[0] == '+' ? 1 : 0);
    if (std::none_of(mantissa.begin(), mantissa.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return std::nullopt;
    const std::string text = std::string(digits) + "e" + std::to_string(exponent + powerOfTen);
    double value = 0.0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::scientific);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return value;
}

// "2700 kg/m^3" into the card's field, or a CardError naming the line.
void readQuantity(MaterialCard& card, const CardQuantity& quantity, const std::string& valueText, int line) {
    const std::string text = trimmed(unquoted(trimmed(valueText)));
    if (text.empty())
        return;
    const size_t space = text.find_first_of(" \t");
    const std::string number = text.substr(0, space);
    const std::string unit = space == std::string::npos ? std::string() : trimmed(text.substr(space));
    const auto known = std::find_if(quantity.units.begin(), quantity.units.end(),
                                    [&](const CardUnit& u) { return unit == u.text; });
    if (known == quantity.units.end())
        throw CardError(card.file, line,
                        std::string(quantity.key) + " has the unit '" + unit + "', which is no unit of " +
                            quantityName(quantity.quantity) + " known here");
    auto value = scaledDecimal(number, known->powerOfTen);
    if (!value)
        throw CardError(card.file, line, std::string(quantity.key) + " has the value '" + number + "', which is not a number");
    card.*quantity.field = value;
}

const CardQuantity* quantityFor(const std::string& key) {
    for (const CardQuantity& quantity : cardQuantities())
        if (key == quantity.key)
            return &quantity;
    return nullptr;
}

void readIni(MaterialCard& card, std::istream& in) {
    std::string section;
    std::string line;
    for (int number = 1; std::getline(in, line); ++number) {
        if (number == 1 && line.rfind("\xEF\xBB\xBF", 0) == 0)
            line.erase(0, 3);
        const std::string text = trimmed(line);
        if (text.empty() || text[0] == ';' || text[0] == '#')
            continue;
        if (text[0] == '[') {
            if (text.back() != ']')
                throw CardError(card.file, number, "a section name lacks its ']'");
            section = text.substr(1, text.size() - 2);
            continue;
        }
        const size_t equals = text.find('=');
        if (equals == std::string::npos)
            throw CardError(card.file, number, "the line is neither a section, a comment nor 'key = value'");
        const std::string key = trimmed(text.substr(0, equals));
        const std::string value = unquoted(trimmed(text.substr(equals + 1)));
        if (section == "General") {
            if (key == "Name")
                card.name = OdString::fromUtf8(value);
            else if (key == "Description")
                card.description = OdString::fromUtf8(value);
            else if (key == "KindOfMaterial")
                card.className = OdString::fromUtf8(value);
        } else if (const CardQuantity* quantity = quantityFor(key)) {
            readQuantity(card, *quantity, value, number);
        }
    }
}

std::string scalarText(const YAML::Node& node, const MaterialCard& card) {
    if (!node.IsScalar())
        throw CardError(card.file, node.Mark().line + 1, "a value is not a single text");
    return node.as<std::string>();
}

void readYaml(MaterialCard& card, const std::string& text) {
    YAML::Node root;
    try {
        root = YAML::Load(text);
    } catch (const YAML::Exception& e) {
        throw CardError(card.file, e.mark.line + 1, e.msg);
    }
    if (!root.IsMap())
        throw CardError(card.file, 0, "the card is not a YAML mapping");
    if (const YAML::Node general = root["General"]) {
        if (!general.IsMap())
            throw CardError(card.file, general.Mark().line + 1, "'General' is not a mapping");
        if (const YAML::Node name = general["Name"])
            card.name = OdString::fromUtf8(scalarText(name, card));
        if (const YAML::Node description = general["Description"])
            card.description = OdString::fromUtf8(scalarText(description, card));
    }
    if (const YAML::Node models = root["Models"]) {
        if (!models.IsMap())
            throw CardError(card.file, models.Mark().line + 1, "'Models' is not a mapping");
        for (const auto& model : models) {
            if (!model.second.IsMap())
                continue;
            for (const auto& entry : model.second) {
                const std::string key = entry.first.as<std::string>();
                if (key == "KindOfMaterial")
                    card.className = OdString::fromUtf8(scalarText(entry.second, card));
                else if (const CardQuantity* quantity = quantityFor(key))
                    readQuantity(card, *quantity, scalarText(entry.second, card), entry.second.Mark().line + 1);
            }
        }
    }
}

// The newer cards are YAML documents: their first line that says something is "---" or a
// "key:" line, where the older ones have a comment or a [section].
bool isYaml(const std::string& text) {
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const std::string t = trimmed(line);
        if (t.empty() || t[0] == '#' || t[0] == ';')
            continue;
        return t == "---" || (t[0] != '[' && t.back() == ':' && t.find('=') == std::string::npos);
    }
    return false;
}

}  // namespace

MaterialCard readMaterialCard(const std::string& path) {
    MaterialCard card;
    card.file = path;
    std::ifstream in(path, std::ios::binary);
    if (!in)
        throw CardError(path, 0, "the file cannot be read");
    std::ostringstream content;
    content << in.rdbuf();
    const std::string text = content.str();
    if (text.find('\0') != std::string::npos)
        throw CardError(path, 0, "the file is binary, not a material card");
    if (isYaml(text)) {
        readYaml(card, text);
    } else {
        std::istringstream lines(text);
        readIni(card, lines);
    }
    // A card without a name (the template) is known by its file name; one without a kind by
    // its folder.
    const fs::path file(path);
    if (trimmed(card.name.toUtf8()).empty())
        card.name = OdString::fromUtf8(file.stem().string());
    if (trimmed(card.className.toUtf8()).empty())
        card.className = OdString::fromUtf8(fs::absolute(file).parent_path().filename().string());
    return card;
}

std::vector<std::string> findMaterialCards(const std::vector<std::string>& paths) {
    std::vector<std::string> cards;
    for (const std::string& path : paths) {
        std::error_code ec;
        if (fs::is_directory(path, ec)) {
            std::vector<std::string> found;
            for (const auto& entry : fs::recursive_directory_iterator(path, fs::directory_options::skip_permission_denied))
                if (entry.is_regular_file() && entry.path().extension() == ".FCMat")
                    found.push_back(entry.path().string());
            std::sort(found.begin(), found.end());
            cards.insert(cards.end(), found.begin(), found.end());
        } else if (fs::exists(path, ec)) {
            cards.push_back(path);
        } else {
            throw ExchangeError(OdString::fromUtf8(path + ": no such file or folder"));
        }
    }
    return cards;
}

CardImportReport importMaterialCards(const std::shared_ptr<Library>& library, const std::vector<std::string>& paths,
                                     ClashAnswer onClash, const ExchangeProgress& progress) {
    if (!library)
        throw ConsistencyError(OdString(L"No library to import into"));
    CardImportReport report;
    const std::vector<std::string> files = findMaterialCards(paths);
    report.cardsFound = files.size();
    ExchangeDocument doc;
    doc.unit = library->unit();
    doc.uniqueNames = false;
    for (const std::string& file : files) {
        MaterialCard card;
        try {
            card = readMaterialCard(file);
        } catch (const CardError& e) {
            report.failed.push_back(e);
            continue;
        }
        auto material = Material::create(card.name);
        material->set_description(card.description);
        if (doc.names[kMaterialType].insert(foldCase(card.className)).second) {
            doc.namedOf(kMaterialType).push_back(MaterialType::create(card.className));
            ++doc.objectCount;
        }
        material->set_type(MaterialType::create(card.className));
        if (card.density || card.thermalConductivity || card.specificHeat) {
            PhysicalAsset* physical = material->physical_asset(true);
            if (card.density)
                physical->set_density(*card.density, OdString::fromUtf8(baseUnit(PhysicalQuantity::kDensity)));
            if (card.thermalConductivity)
                physical->set_thermal_conductivity(*card.thermalConductivity,
                                                   OdString::fromUtf8(baseUnit(PhysicalQuantity::kThermalConductivity)));
            if (card.specificHeat)
                physical->set_specific_heat(*card.specificHeat, OdString::fromUtf8(baseUnit(PhysicalQuantity::kSpecificHeat)));
        }
        // Two cards may name the same material; the second meets the first as a clash.
        doc.names[kMaterial].insert(foldCase(card.name));
        doc.materials.push_back(material);
        ++doc.objectCount;
        report.imported.push_back(card);
    }
    report.import = writeExchangeDocument(library, doc, onClash, progress);
    return report;
}

}  // namespace vantlib
