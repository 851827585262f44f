#include "DemoWriter.h"

#include <cmath>
#include <map>
#include <string>
#include <ostream>

#include <vantlib/vantlib.h>

#include "Kinds.h"

namespace vlib::demo {

namespace {

void applyHatch(vantlib::Pattern& pattern, const Hatch& hatch) {
    if (!hatch.pattern || !*hatch.pattern) {
        pattern.set_type(vantlib::Pattern::kNone);
        return;
    }
    pattern.set_type(vantlib::Pattern::kPredefined);
    pattern.set_name(toOd(hatch.pattern));
    pattern.set_scale(hatch.scale);
    pattern.set_angle(hatch.angleDeg * M_PI / 180.0);
}

// A render material of the host's catalogue that shows the class in 3D.
OdString renderMaterialFor(const std::string& className) {
    static const std::map<std::string, const wchar_t*> byClass{
        {"Concrete", L"Concrete - Cast in Place"}, {"Masonry", L"Brick - Common Red"},
        {"Metal", L"Steel - Brushed"},             {"Timber", L"Oak - Natural"},
        {"Glass", L"Glass - Clear"},               {"Stone", L"Granite - Grey"},
        {"Gypsum", L"Plaster - White"},            {"Finish", L"Paint - Matt White"},
    };
    auto found = byClass.find(className);
    return found == byClass.end() ? OdString() : OdString(found->second);
}

QcSmartPtr<vantlib::Material> makeMaterial(const Material& source) {
    auto material = vantlib::Material::create(toOd(source.name));
    material->set_description(toOd(source.description));
    material->set_type(vantlib::MaterialType::create(toOd(source.className)));
    applyHatch(material->section_pattern(), source.section);
    applyHatch(material->elevation_pattern(), source.elevation);

    vantlib::BimAsset* bim = material->bim_asset(true);
    bim->set_default_function(vantlib::MaterialFunction(source.function));
    bim->set_thicknesses(std::set<double>(source.thicknesses.begin(), source.thicknesses.end()));
    bim->set_variable_thickness(source.variableThickness);
    bim->set_layer(vantlib::Layer::create(L"A-SECT-MATL"));
    bim->set_layer_elevation(vantlib::Layer::create(L"A-ELEV-MATL"));

    vantlib::PhysicalAsset* physical = material->physical_asset(true);
    // Stored unit identifiers are the symbols of the metric base units.
    physical->set_density(source.density, L"kg/m\u00B3");
    physical->set_thermal_conductivity(source.thermalConductivity, L"W/(m\u00B7K)");
    physical->set_specific_heat(source.specificHeat, L"J/(kg\u00B7K)");

    material->set_appearance(renderMaterialFor(source.className));
    for (const char* tag : source.tags)
        material->add_tag(toOd(tag));

    // Values of the library's custom properties, as a practice would keep them.
    const bool combustible = source.className == std::string("Timber") || source.className == std::string("Insulation");
    material->set_custom_value(vantlib::CustomProperty::create(L"Fire reaction class", vantlib::kMaterial),
                               combustible ? L"E" : L"A1");
    material->set_custom_value(vantlib::CustomProperty::create(L"Supplier", vantlib::kMaterial),
                               L"As named in the product schedule");
    return material;
}

const wchar_t* layerFor(BaseType type) {
    switch (type) {
    case kWall: return L"A-WALL";
    case kRoof: return L"A-ROOF";
    case kSlab: return L"A-FLOR";
    }
    return L"A-GENM";
}

QcSmartPtr<vantlib::Composition> makeComposition(const vantlib::Library& library, const Composition& source) {
    auto composition = vantlib::Composition::create(toOd(source.name), vantlib::Composition::Type(source.baseType));
    composition->set_description(toOd(source.description));
    composition->set_type(vantlib::CompositionType::create(toOd(source.className)));
    composition->set_layer(vantlib::Layer::create(layerFor(source.baseType)));
    for (const char* tag : source.tags)
        composition->add_tag(toOd(tag));
    for (const Ply& ply : source.plies) {
        const auto material = library.get<vantlib::Material>(vantlib::NameKey(toOd(ply.material)));
        if (!material)
            throw vantlib::ConsistencyError(OdString::formatted(L"Composition '%ls' uses the unknown material '%ls'",
                                                                toOd(source.name).c_str(), toOd(ply.material).c_str()));
        if (ply.variable) {
            if (composition->has_variable_ply())
                throw vantlib::ConsistencyError(
                    OdString::formatted(L"Composition '%ls' has more than one variable ply", toOd(source.name).c_str()));
            composition->append_ply(vantlib::Ply(material, ply.thickness, vantlib::MaterialFunction(ply.function)));
            composition->set_variable_ply(int(composition->numPlies()) - 1);
            // The listed thickness is the least the element is built with: the thermal
            // values of the composition are those of that thickness.
            composition->set_variable_ply_min_thickness(ply.thickness);
        } else {
            composition->append_ply(vantlib::Ply(material, ply.thickness, vantlib::MaterialFunction(ply.function)));
        }
    }
    return composition;
}

}  // namespace

void fillLibrary(const std::shared_ptr<vantlib::Library>& library, const std::vector<Material>& materials,
                 const std::vector<Composition>& compositions) {
    vantlib::Transaction transaction(library);
    for (const Material& material : materials)
        library->save(makeMaterial(material));
    for (const Composition& composition : compositions)
        library->save(makeComposition(*library, composition));
    transaction.commit();
}

}  // namespace vlib::demo
