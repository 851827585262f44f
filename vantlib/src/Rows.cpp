#include "Rows.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include <OdNumberText.h>

#include "LibraryAccess.h"
#include "Text.h"

namespace vantlib {

const std::vector<std::string>& materialColumns() {
    static const std::vector<std::string> columns = {
        "name", "description", "comments", "class_id", "appearance",
        "sect_type", "sect_name", "sect_scale", "sect_space", "sect_angle", "sect_cross", "sect_annotative", "sect_background",
        "elev_type", "elev_name", "elev_scale", "elev_space", "elev_angle", "elev_cross", "elev_annotative", "elev_background",
        "has_bim", "sect_layer_id", "elev_layer_id", "default_function", "thicknesses", "variable_thickness",
        "union_elevation", "union_section",
        "has_info", "classification", "unique_code", "cost", "keynote", "label", "manufacturer", "mark", "model", "url",
        "has_physical", "density", "density_unit", "conductivity", "conductivity_unit", "specific_heat", "specific_heat_unit"};
    return columns;
}

namespace {

bool readPattern(const Statement& row, int first, Pattern& pattern) {
    int type = row.integer(first);
    if (type < int(Pattern::kNone) || type > int(Pattern::kCustom))
        return false;
    pattern.set_type(Pattern::Type(type));
    pattern.set_name(row.text(first + 1));
    pattern.set_scale(row.real(first + 2));
    pattern.set_space(row.real(first + 3));
    pattern.set_angle(row.real(first + 4));
    pattern.set_cross(row.boolean(first + 5));
    pattern.set_annotative(row.boolean(first + 6));
    if (row.isNull(first + 7))
        pattern.clear_background_color();
    else
        pattern.set_background_color(uint32_t(row.int64(first + 7)));
    return true;
}

void bindPattern(Statement& stmt, int first, const Pattern& pattern) {
    stmt.bind(first, unsigned(pattern.type()))
        .bind(first + 1, pattern.name())
        .bind(first + 2, pattern.scale())
        .bind(first + 3, pattern.space())
        .bind(first + 4, pattern.angle())
        .bind(first + 5, int(pattern.cross()))
        .bind(first + 6, int(pattern.annotative()));
    if (pattern.has_background_color())
        stmt.bind(first + 7, int64_t(pattern.background_color()));
    else
        stmt.bindNull(first + 7);
}

void bindOptionalReal(Statement& stmt, int index, bool present, double value) {
    if (present)
        stmt.bind(index, value);
    else
        stmt.bindNull(index);
}

}  // namespace

bool readMaterialRow(const Statement& row, Object& object) {
    Material& material = static_cast<Material&>(object);
    material.set_name(row.text(1));
    material.set_description(row.text(2));
    material.set_comments(row.text(3));
    material.set_appearance(row.text(5));
    if (!readPattern(row, 6, material.section_pattern()) || !readPattern(row, 14, material.elevation_pattern()))
        return false;
    if (row.boolean(22)) {
        int function = row.integer(25);
        if (function < int(kFunctionNone) || function > int(kFunctionMembrane))
            return false;
        BimAsset* bim = material.bim_asset(true);
        bim->set_default_function(MaterialFunction(function));
        bim->set_thicknesses(thicknessesFromText(row.utf8(26)));
        bim->set_variable_thickness(row.boolean(27));
        bim->set_union_elevation(row.boolean(28));
        bim->set_union_section(row.boolean(29));
    }
    if (row.boolean(30)) {
        InformationAsset* info = material.information_asset(true);
        info->set_classification(row.text(31));
        if (!row.isNull(32))
            info->set_unique_code(row.text(32));
        info->set_cost(row.text(33));
        info->set_keynote(row.text(34));
        info->set_label(row.text(35));
        info->set_manufacturer(row.text(36));
        info->set_mark(row.text(37));
        info->set_model(row.text(38));
        info->set_url(row.text(39));
    }
    if (row.boolean(40)) {
        PhysicalAsset* physical = material.physical_asset(true);
        if (!row.isNull(41))
            physical->set_density(row.real(41), row.text(42));
        if (!row.isNull(43))
            physical->set_thermal_conductivity(row.real(43), row.text(44));
        if (!row.isNull(45))
            physical->set_specific_heat(row.real(45), row.text(46));
    }
    return true;
}

void bindMaterialRow(Statement& stmt, const Object& object) {
    const Material& material = static_cast<const Material&>(object);
    stmt.bind(1, material.name())
        .bind(2, material.description())
        .bind(3, material.comments())
        .bind(5, material.appearance());
    bindPattern(stmt, 6, material.section_pattern());
    bindPattern(stmt, 14, material.elevation_pattern());
    const BimAsset* bim = material.bim_asset();
    stmt.bind(22, int(bim != nullptr))
        .bind(25, unsigned(bim ? bim->default_function() : kFunctionNone))
        .bind(26, bim ? thicknessesToText(bim->thicknesses()) : std::string())
        .bind(27, int(bim && bim->variable_thickness()))
        .bind(28, int(bim && bim->union_elevation()))
        .bind(29, int(bim && bim->union_section()));
    const InformationAsset* info = material.information_asset();
    InformationAsset none;
    const InformationAsset& i = info ? *info : none;
    stmt.bind(30, int(info != nullptr)).bind(31, i.classification());
    if (i.has_unique_code())
        stmt.bind(32, i.unique_code());
    else
        stmt.bindNull(32);
    stmt.bind(33, i.cost()).bind(34, i.keynote()).bind(35, i.label()).bind(36, i.manufacturer())
        .bind(37, i.mark()).bind(38, i.model()).bind(39, i.url());
    const PhysicalAsset* physical = material.physical_asset();
    PhysicalAsset nothing;
    const PhysicalAsset& p = physical ? *physical : nothing;
    stmt.bind(40, int(physical != nullptr));
    bindOptionalReal(stmt, 41, p.has_density(), p.density().value);
    stmt.bind(42, p.density().unit);
    bindOptionalReal(stmt, 43, p.has_thermal_conductivity(), p.thermal_conductivity().value);
    stmt.bind(44, p.thermal_conductivity().unit);
    bindOptionalReal(stmt, 45, p.has_specific_heat(), p.specific_heat().value);
    stmt.bind(46, p.specific_heat().unit);
}

const std::vector<std::string>& compositionColumns() {
    static const std::vector<std::string> columns = {"name",    "description", "comments",     "base_type",
                                                     "type_id", "layer_id",    "variable_ply", "variable_min"};
    return columns;
}

bool readCompositionRow(const Statement& row, Object& object) {
    Composition& composition = static_cast<Composition&>(object);
    composition.set_name(row.text(1));
    composition.set_description(row.text(2));
    composition.set_comments(row.text(3));
    composition.set_base_type(Composition::Type(row.int64(4)));
    // The variable ply index is checked once the plies are attached.
    LibraryAccess::setVariablePlyRaw(composition, row.integer(7));
    composition.set_variable_ply_min_thickness(row.real(8));
    return true;
}

void bindCompositionRow(Statement& stmt, const Object& object) {
    const Composition& composition = static_cast<const Composition&>(object);
    stmt.bind(1, composition.name())
        .bind(2, composition.description())
        .bind(3, composition.comments())
        .bind(4, unsigned(composition.type()))
        .bind(7, composition.variable_ply())
        .bind(8, composition.variable_ply_min_thickness());
}

// Stored with a point whatever the process locale, so that a library written under one locale
// reads the same under another.
std::string thicknessesToText(const std::set<double>& values) {
    std::string text;
    for (double v : values) {
        if (!text.empty())
            text += ' ';
        for (wchar_t ch : OdNumberText::precise(v))
            text += char(ch);
    }
    return text;
}

std::set<double> thicknessesFromText(const std::string& text) {
    std::set<double> values;
    size_t start = 0;
    while (start < text.size()) {
        const size_t end = std::min(text.find(' ', start), text.size());
        double v = 0.0;
        if (end > start && OdNumberText::parse(std::wstring(text.begin() + long(start), text.begin() + long(end)), v))
            values.insert(v);
        start = end + 1;
    }
    return values;
}

}  // namespace vantlib
