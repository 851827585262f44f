// Demo profiles: the central library's steel catalogue and the project's own sections.
#include "DemoProfiles.h"

#include <vantlib/vantlib.h>

#include <vantlib/Exchange.h>
#include <vl_db/Profiles.h>

#include "Kinds.h"

namespace vlib::demo {

namespace {

QcSmartPtr<vantlib::ProfileName> projectName(const std::shared_ptr<vantlib::Library>& project, const wchar_t* name,
                                             vantlib::ProfileType type) {
    return project->save(vantlib::ProfileName::create(QcSmartPtr<vantlib::ProfileStandard>(), name, type));
}

// A profile of the library by standard (empty: none), name, type and size.
QcSmartPtr<vantlib::Profile> findProfile(const vantlib::Library& library, const wchar_t* standard, const wchar_t* name,
                                         vantlib::ProfileType type, const wchar_t* size) {
    uint32_t standardId = 0;
    if (*standard) {
        const auto found = library.get<vantlib::ProfileStandard>(vantlib::NameKey(standard));
        standardId = found ? found->id() : 0;
    }
    const auto profileName = library.get<vantlib::ProfileName>(vantlib::ProfileNameKey(name, standardId, type));
    const auto profile =
        profileName ? library.get<vantlib::Profile>(vantlib::ProfileKey(profileName->id(), size)) : QcSmartPtr<vantlib::Profile>();
    if (!profile)
        throw vantlib::ConsistencyError(OdString::formatted(L"The demo library lacks the profile %ls %ls", name, size));
    return profile;
}

struct ProfileUse {
    const wchar_t* layer;
    vl_db::EDbType library;
    const wchar_t* standard;
    const wchar_t* name;
    vantlib::ProfileType type;
    const wchar_t* size;
};

// Columns and beams of the demo house, of catalogue sections and of the project's own.
const ProfileUse kProfileUses[] = {
    {L"S-COLS", vl_db::kDbCentral, L"DIN 1025", L"HEB", vantlib::kProfileStructuralSteel, L"200"},
    {L"S-COLS", vl_db::kDbProject, L"", L"Column tube", vantlib::kProfileStructuralSteel, L"139.7x6.3"},
    {L"S-BEAM", vl_db::kDbCentral, L"DIN 1025", L"IPE", vantlib::kProfileStructuralSteel, L"300"},
    {L"S-BEAM", vl_db::kDbCentral, L"DIN 1026-1", L"UPN", vantlib::kProfileStructuralSteel, L"200"},
    {L"S-BEAM", vl_db::kDbProject, L"", L"Glulam beam", vantlib::kProfileGeneric, L"200x240"},
    {L"S-BEAM", vl_db::kDbProject, L"", L"Handrail", vantlib::kProfileGeneric, L"Oak 60"},
};

}  // namespace

size_t addCentralProfiles(const std::shared_ptr<vantlib::Library>& central) {
    const vantlib::ImportReport report = vantlib::importLibrary(central, europeanSteelCatalogue());
    for (const auto& entry : report.kinds)
        if (entry.type == vantlib::kConstructionProfile)
            return entry.counts.created;
    return 0;
}

size_t addProjectProfiles(const std::shared_ptr<vantlib::Library>& project) {
    vantlib::Transaction transaction(project);
    const auto flat = projectName(project, L"Flat bar", vantlib::kProfileStructuralSteel);
    auto bar = vantlib::RectangleProfile::create(flat, L"100x10");
    bar->set_x_dim(100);
    bar->set_y_dim(10);
    project->save(bar);

    const auto tubes = projectName(project, L"Column tube", vantlib::kProfileStructuralSteel);
    auto tube = vantlib::CircleHollowProfile::create(tubes, L"139.7x6.3");
    tube->set_radius(139.7 / 2);
    tube->set_wall_thickness(6.3);
    project->save(tube);

    const auto glulam = projectName(project, L"Glulam beam", vantlib::kProfileGeneric);
    auto beam = vantlib::RectangleProfile::create(glulam, L"200x240");
    beam->set_x_dim(200);
    beam->set_y_dim(240);
    beam->set_description(L"GL24h, visible in the living room");
    project->save(beam);

    const auto ducts = projectName(project, L"Ventilation duct", vantlib::kProfileHvac);
    auto duct = vantlib::RoundedRectangleProfile::create(ducts, L"400x200");
    duct->set_x_dim(400);
    duct->set_y_dim(200);
    duct->set_rounding_radius(20);
    project->save(duct);

    // A handrail with a round top: a half circle over a 60 x 40 rectangle.
    const auto rails = projectName(project, L"Handrail", vantlib::kProfileGeneric);
    auto rail = vantlib::CustomProfile::create(rails, L"Oak 60");
    vantlib::ProfileGeometry outline;
    outline.outer = {vantlib::ProfileEdge(vantlib::Vector2d(-30, 0)), vantlib::ProfileEdge(vantlib::Vector2d(30, 0)),
                     vantlib::ProfileEdge(vantlib::Vector2d(30, 40), 1.0), vantlib::ProfileEdge(vantlib::Vector2d(-30, 40))};
    rail->set_geometry(outline);
    project->save(rail);
    transaction.commit();
    return 5;
}

size_t addProfileElements(OdDbDatabase& database, const vantlib::Library& project, const vantlib::Library& central) {
    for (const ProfileUse& use : kProfileUses) {
        const vantlib::Library& library = use.library == vl_db::kDbProject ? project : central;
        const auto profile = findProfile(library, use.standard, use.name, use.type, use.size);
        OdDbEntityPtr entity = OdDbEntity::createObject();
        entity->setLayer(use.layer);
        entity->addLibraryReference({uint32_t(vantlib::kConstructionProfile), int32_t(use.library),
                                     vl_db::fullProfileName(*profile), profile->id()});
        database.addEntity(entity);
    }
    return std::size(kProfileUses);
}

}  // namespace vlib::demo
