#include "app/common/Helpers.h"

#include <algorithm>
#include <cwctype>

#include <wx/intl.h>

#include <CaUnits.h>
#include <OdStringWx.h>

#include <vantlib/Criteria.h>
#include <vantlib/Tag.h>

namespace vl_app {

wxString abbr(OdDb::UnitsValue unit) {
    switch (unit) {
    case OdDb::kUnitsUndefined: return _("?");
    case OdDb::kUnitsInches: return _("in");
    case OdDb::kUnitsFeet: return _("ft");
    case OdDb::kUnitsMiles: return _("mi");
    case OdDb::kUnitsMillimeters: return _("mm");
    case OdDb::kUnitsCentimeters: return _("cm");
    case OdDb::kUnitsMeters: return _("m");
    case OdDb::kUnitsKilometers: return _("km");
    case OdDb::kUnitsMicroinches: return _(L"\u00B5in");
    case OdDb::kUnitsMils: return _("mil");
    case OdDb::kUnitsYards: return _("yd");
    case OdDb::kUnitsAngstroms: return _(L"\u00C5");
    case OdDb::kUnitsNanometers: return _("nm");
    case OdDb::kUnitsMicrons: return _(L"\u00B5m");
    case OdDb::kUnitsDecimeters: return _("dm");
    case OdDb::kUnitsDekameters: return _("dam");
    case OdDb::kUnitsHectometers: return _("hm");
    case OdDb::kUnitsGigameters: return _("Gm");
    case OdDb::kUnitsAstronomical: return _("AU");
    case OdDb::kUnitsLightYears: return _("ly");
    case OdDb::kUnitsParsecs: return _("pc");
    case OdDb::kUnitsUSSurveyFeet: return _("usft");
    case OdDb::kUnitsUSSurveyInch: return _("usin");
    case OdDb::kUnitsUSSurveyYard: return _("usyd");
    case OdDb::kUnitsUSSurveyMile: return _("usmi");
    }
    return wxString();
}

wxString full(OdDb::UnitsValue unit) { return ca::unitsToString(unit); }

wxString compositionBaseType(vantlib::Composition::Type type) {
    switch (type) {
    case vantlib::Composition::kWall: return _("Wall");
    case vantlib::Composition::kRoof: return _("Roof");
    case vantlib::Composition::kSlab: return _("Slab");
    case vantlib::Composition::kBeam: return _("Beam");
    case vantlib::Composition::kColumn: return _("Column");
    case vantlib::Composition::kMember: return _("Member");
    case vantlib::Composition::kGeneric: return _("Generic");
    case vantlib::Composition::kFooting: return _("Footing");
    case vantlib::Composition::kCovering: return _("Covering");
    case vantlib::Composition::kPlate: return _("Plate");
    default: return _("All");
    }
}

namespace {
// The base types a composition can have, in the order of the type choices.
const vantlib::Composition::Type kChoosableBaseTypes[] = {
    vantlib::Composition::kWall,   vantlib::Composition::kSlab,    vantlib::Composition::kRoof,
    vantlib::Composition::kBeam,   vantlib::Composition::kColumn,  vantlib::Composition::kMember,
    vantlib::Composition::kFooting, vantlib::Composition::kCovering, vantlib::Composition::kPlate,
    vantlib::Composition::kGeneric,
};
}  // namespace

vantlib::Composition::Type compositionBaseType(const wxString& label) {
    for (const auto type : kChoosableBaseTypes)
        if (label == compositionBaseType(type))
            return type;
    return vantlib::Composition::kAll;
}

wxArrayString baseCompositionClasses() {
    wxArrayString labels;
    for (const auto type : kChoosableBaseTypes)
        labels.Add(compositionBaseType(type));
    return labels;
}

wxString materialFunction(vantlib::MaterialFunction function) {
    switch (function) {
    case vantlib::kFunctionNone: return _("None");
    case vantlib::kFunctionStructure: return _("Structure");
    case vantlib::kFunctionSubstrate: return _("Substrate");
    case vantlib::kFunctionInsulation: return _("Insulation");
    case vantlib::kFunctionFinish1: return _("Finish1");
    case vantlib::kFunctionFinish2: return _("Finish2");
    case vantlib::kFunctionMembrane: return _("Membrane");
    }
    return _("?");
}

wxArrayString functions() {
    wxArrayString labels;
    for (unsigned function = vantlib::kFunctionNone; function <= vantlib::kFunctionMembrane; ++function)
        labels.Add(materialFunction(static_cast<vantlib::MaterialFunction>(function)));
    return labels;
}

namespace {
template <class T>
wxArrayString sortedNames(const std::shared_ptr<const vantlib::Library>& library) {
    wxArrayString names;
    if (!library)
        return names;
    std::vector<QcSmartPtr<T>> objects;
    library->get<T>(objects);
    for (const auto& object : objects)
        names.Add(toWx(object->name()));
    names.Sort();
    return names;
}

template <class T>
wxArrayString namesOfBoth(vl_db::DocumentLibraries* libs) {
    wxArrayString names;
    if (!libs)
        return names;
    const std::shared_ptr<const vantlib::Library> project = libs->primary();
    const std::shared_ptr<const vantlib::Library> central = libs->secondary();
    for (const auto& name : sortedNames<T>(project))
        names.Add(name);
    for (const auto& name : sortedNames<T>(central))
        names.Add(name);
    return names;
}
}  // namespace

wxArrayString materialClasses(const std::shared_ptr<const vantlib::Library>& library) {
    return sortedNames<vantlib::MaterialType>(library);
}

wxArrayString materialClasses(vl_db::DocumentLibraries* libs) { return namesOfBoth<vantlib::MaterialType>(libs); }

wxArrayString compositionClasses(const std::shared_ptr<const vantlib::Library>& library) {
    return sortedNames<vantlib::CompositionType>(library);
}

wxArrayString compositionClasses(vl_db::DocumentLibraries* libs) {
    return namesOfBoth<vantlib::CompositionType>(libs);
}

wxString stripNumeral(const wxString& text) {
    const int hyphen = text.Find(L'-', true);
    if (hyphen == wxNOT_FOUND)
        return text;
    const wxString numeral = text.Mid(static_cast<size_t>(hyphen) + 1);
    if (numeral.empty())
        return text;
    for (const wxUniChar c : numeral)
        if (!std::iswdigit(static_cast<wint_t>(c.GetValue())))
            return text;
    return text.Left(static_cast<size_t>(hyphen));
}

QcSmartPtr<vantlib::Material> duplicateMaterial(const QcSmartPtr<vantlib::Material>& material,
                                                const std::shared_ptr<vantlib::Library>& library) {
    if (!material)
        return QcSmartPtr<vantlib::Material>();
    const wxString name = toWx(material->name());
    const wxString base = stripNumeral(name);
    wxString candidate = name;
    if (library) {
        for (int n = 2; library->get<vantlib::Material>(vantlib::NameKey(toOd(candidate))); ++n)
            candidate = wxString::Format(L"%ls-%d", base.wc_str(), n);
    }
    QcSmartPtr<vantlib::Material> copy = material->cloneObject();
    copy->set_name(toOd(candidate));
    if (vantlib::InformationAsset* information = copy->information_asset())
        information->clear_unique_code();
    return copy;
}

namespace {
template <class T>
void loadAll(vl_db::DocumentLibraries* libs, vl_db::EDbType type, std::vector<QcSmartPtr<T>>& out) {
    out.clear();
    if (!libs)
        return;
    const auto append = [&](vl_db::EDbType which) {
        const auto library = vl_db::library(libs, which, false);
        if (!library)
            return;
        std::vector<QcSmartPtr<T>> objects;
        library->get(objects, vantlib::NameCriteria());
        out.insert(out.end(), objects.begin(), objects.end());
    };
    if (type == vl_db::kDbProject || type == vl_db::kDbNone)
        append(vl_db::kDbProject);
    if (type == vl_db::kDbCentral || type == vl_db::kDbNone)
        append(vl_db::kDbCentral);
}
}  // namespace

void loadCompositions(vl_db::DocumentLibraries* libs, vl_db::EDbType type,
                      std::vector<QcSmartPtr<vantlib::Composition>>& out) {
    loadAll(libs, type, out);
}

void loadCompositionTypes(vl_db::DocumentLibraries* libs, vl_db::EDbType type,
                          std::vector<QcSmartPtr<vantlib::CompositionType>>& out) {
    loadAll(libs, type, out);
}

wxString whatLib(vl_db::EDbType type) {
    switch (type) {
    case vl_db::kDbProject: return _("In project");
    case vl_db::kDbCentral: return _("In central database");
    default: return wxString();
    }
}

std::shared_ptr<vantlib::Library> getLib(vl_db::DocumentLibraries* libs, vl_db::EDbType type) {
    if (!libs)
        return nullptr;
    switch (type) {
    case vl_db::kDbProject: return libs->primary(false);
    case vl_db::kDbCentral: return libs->secondary();
    default: return nullptr;
    }
}

}  // namespace vl_app
