#include "LibraryWork.h"

using namespace vantlib;

QcSmartPtr<Material> toMaterial(const MaterialRecord& r) {
    QcSmartPtr<Material> m = Material::create(OdString::fromUtf8(r.name));
    m->set_description(OdString::fromUtf8(r.description));
    m->set_type(MaterialType::create(OdString::fromUtf8(r.className)));
    m->add_tag(OdString::fromUtf8(r.tag1));
    m->add_tag(OdString::fromUtf8(r.tag2));
    BimAsset* bim = m->bim_asset(true);
    bim->set_layer(Layer::create(OdString::fromUtf8(r.layer)));
    bim->set_default_function(MaterialFunction(r.function));
    bim->set_thicknesses({r.thickness1, r.thickness2});
    InformationAsset* info = m->information_asset(true);
    info->set_unique_code(OdString::fromUtf8(r.uniqueCode));
    info->set_manufacturer(OdString::fromUtf8(r.manufacturer));
    m->physical_asset(true)->set_density(r.density, OdString(L"kg/m\u00B3"));
    return m;
}

QcSmartPtr<Composition> toComposition(const CompositionRecord& r, const std::vector<QcSmartPtr<Material>>& stored) {
    QcSmartPtr<Composition> c = Composition::create(OdString::fromUtf8(r.name), Composition::Type(r.baseType));
    c->set_description(OdString::fromUtf8(r.description));
    c->set_type(CompositionType::create(OdString::fromUtf8(r.typeName)));
    c->set_layer(Layer::create(OdString::fromUtf8(r.layer)));
    c->add_tag(OdString::fromUtf8(r.tag));
    for (int p = 0; p < 3; ++p)
        c->append_ply(Ply(stored[size_t(r.plyMaterial[p])], r.plyThickness[p], MaterialFunction(r.plyFunction[p])));
    return c;
}
