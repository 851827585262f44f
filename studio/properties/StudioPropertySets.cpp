#include "StudioPropertySets.h"

#include <wx/intl.h>

#include <OdStringWx.h>
#include <Prompt.h>

#include <vl_db/DocumentLibraries.h>
#include <vl_db/PropertySets.h>

#include "VisibilityDialog.h"

using vl_app::PropertyDomain;

const std::vector<StudioEntityClass>& studioEntityClasses() {
    static const std::vector<StudioEntityClass> classes{
        {"Wall", wxTRANSLATE("Wall"), wxTRANSLATE("Walls"), "IfcWall", PropertyDomain::Bim},
        {"WallStandardCase", wxTRANSLATE("Standard wall"), wxTRANSLATE("Walls"), "IfcWallStandardCase", PropertyDomain::Bim},
        {"CurtainWall", wxTRANSLATE("Curtain wall"), wxTRANSLATE("Curtain walls"), "IfcCurtainWall", PropertyDomain::Bim},
        {"Slab", wxTRANSLATE("Slab"), wxTRANSLATE("Slabs"), "IfcSlab", PropertyDomain::Bim},
        {"Roof", wxTRANSLATE("Roof"), wxTRANSLATE("Roofs"), "IfcRoof", PropertyDomain::Bim},
        {"Beam", wxTRANSLATE("Beam"), wxTRANSLATE("Beams"), "IfcBeam", PropertyDomain::Bim},
        {"Column", wxTRANSLATE("Column"), wxTRANSLATE("Columns"), "IfcColumn", PropertyDomain::Bim},
        {"Member", wxTRANSLATE("Member"), wxTRANSLATE("Members"), "IfcMember", PropertyDomain::Bim},
        {"Plate", wxTRANSLATE("Plate"), wxTRANSLATE("Plates"), "IfcPlate", PropertyDomain::Bim},
        {"Door", wxTRANSLATE("Door"), wxTRANSLATE("Doors"), "IfcDoor", PropertyDomain::Bim},
        {"Window", wxTRANSLATE("Window"), wxTRANSLATE("Windows"), "IfcWindow", PropertyDomain::Bim},
        {"Stair", wxTRANSLATE("Stair"), wxTRANSLATE("Stairs"), "IfcStair", PropertyDomain::Bim},
        {"StairFlight", wxTRANSLATE("Stair flight"), wxTRANSLATE("Stairs"), "IfcStairFlight", PropertyDomain::Bim},
        {"Railing", wxTRANSLATE("Railing"), wxTRANSLATE("Railings"), "IfcRailing", PropertyDomain::Bim},
        {"Covering", wxTRANSLATE("Covering"), wxTRANSLATE("Coverings"), "IfcCovering", PropertyDomain::Bim},
        {"Space", wxTRANSLATE("Space"), wxTRANSLATE("Spaces and zones"), "IfcSpace", PropertyDomain::Bim},
        {"Zone", wxTRANSLATE("Zone"), wxTRANSLATE("Spaces and zones"), "IfcZone", PropertyDomain::Bim},
        {"DuctSegment", wxTRANSLATE("Duct segment"), wxTRANSLATE("Ducts"), "IfcDuctSegment", PropertyDomain::Mechanical},
        {"DuctFitting", wxTRANSLATE("Duct fitting"), wxTRANSLATE("Ducts"), "IfcDuctFitting", PropertyDomain::Mechanical},
        {"AirTerminal", wxTRANSLATE("Air terminal"), wxTRANSLATE("Ducts"), "IfcAirTerminal", PropertyDomain::Mechanical},
        {"PipeSegment", wxTRANSLATE("Pipe segment"), wxTRANSLATE("Pipes"), "IfcPipeSegment", PropertyDomain::Mechanical},
        {"PipeFitting", wxTRANSLATE("Pipe fitting"), wxTRANSLATE("Pipes"), "IfcPipeFitting", PropertyDomain::Mechanical},
        {"Valve", wxTRANSLATE("Valve"), wxTRANSLATE("Pipes"), "IfcValve", PropertyDomain::Mechanical},
        {"SanitaryTerminal", wxTRANSLATE("Sanitary terminal"), wxTRANSLATE("Pipes"), "IfcSanitaryTerminal",
         PropertyDomain::Mechanical},
        {"Pump", wxTRANSLATE("Pump"), wxTRANSLATE("Equipment"), "IfcPump", PropertyDomain::Mechanical},
        {"Fan", wxTRANSLATE("Fan"), wxTRANSLATE("Equipment"), "IfcFan", PropertyDomain::Mechanical},
        {"Boiler", wxTRANSLATE("Boiler"), wxTRANSLATE("Equipment"), "IfcBoiler", PropertyDomain::Mechanical},
        {"CableSegment", wxTRANSLATE("Cable segment"), wxTRANSLATE("Electrical"), "IfcCableSegment",
         PropertyDomain::Mechanical},
        {"LightFixture", wxTRANSLATE("Light fixture"), wxTRANSLATE("Electrical"), "IfcLightFixture",
         PropertyDomain::Mechanical},
        {"Outlet", wxTRANSLATE("Outlet"), wxTRANSLATE("Electrical"), "IfcOutlet", PropertyDomain::Mechanical},
    };
    return classes;
}

wxString ifcTypeOfEntity(const wxString& key) {
    for (const StudioEntityClass& entity : studioEntityClasses())
        if (key == entity.key)
            return entity.ifcType;
    return wxString();
}

vl_app::EntityCategories StudioPropertySets::categories(PropertyDomain domain) const {
    vl_app::EntityCategories categories;
    for (const StudioEntityClass& entity : studioEntityClasses()) {
        if (entity.domain != domain)
            continue;
        const wxString name = wxGetTranslation(entity.category);
        if (categories.empty() || categories.back().name != name)
            categories.push_back({name, {}});
        categories.back().types.push_back({entity.key, wxGetTranslation(entity.label)});
    }
    return categories;
}

vl_app::IfcTypeGetter StudioPropertySets::ifcTypeGetter(PropertyDomain) const {
    return [](const vl_app::EntityType& type) { return ifcTypeOfEntity(type.key); };
}

void StudioPropertySets::showVisibilityDialog(wxWindow* parent, const std::shared_ptr<vl_db::ILibrary>& library) {
    VisibilityDialog dialog(parent, library);
    dialog.ShowModal();
}

void StudioPropertySets::updateStructureConfiguration(OdDbDatabase* database) {
    m_structure.update(database);
}

void StructureConfiguration::update(OdDbDatabase* database) {
    ++m_updates;
    m_setsByType.clear();
    if (!database)
        return;
    vl_db::DocumentLibraries* libs = vl_db::docLibs(database);
    size_t count = 0;
    for (const auto& library : {libs->primary(false), libs->secondary()}) {
        if (!library)
            continue;
        const auto definitions = vl_db::propertySetLibrary(library);
        for (const auto& ns : definitions->namespaces())
            for (const auto& set : ns->propertySets()) {
                if (!set->isVisible())
                    continue;
                ++count;
                for (const OdString& type : set->ifcTypes())
                    m_setsByType[toWx(type)].push_back(toWx(set->name()));
            }
    }
    ca::prompt(wxString::Format(wxPLURAL("The structure shows %zu property set.", "The structure shows %zu property sets.",
                                         count),
                                count));
}

std::vector<wxString> StructureConfiguration::propertySets(const wxString& ifcType) const {
    const auto found = m_setsByType.find(ifcType);
    return found == m_setsByType.end() ? std::vector<wxString>() : found->second;
}
