// The demo drawing and the central library it is used with.
#include <ostream>
#include <system_error>

#include <OdDbDatabase.h>

#include <vantlib/vantlib.h>

#include <vl_db/DocumentLibraries.h>

#include "DemoProfiles.h"
#include "DemoPropertySets.h"
#include "DemoWriter.h"
#include "Kinds.h"

namespace vlib::demo {

namespace {

namespace fs = std::filesystem;

// Removes a file under construction (and SQLite's side files) unless it was completed.
class PendingFile {
public:
    explicit PendingFile(fs::path path) : m_path(std::move(path)) { removeAll(); }
    ~PendingFile() {
        if (!m_done)
            removeAll();
    }
    PendingFile(const PendingFile&) = delete;
    PendingFile& operator=(const PendingFile&) = delete;

    const fs::path& path() const { return m_path; }
    OdString odPath() const { return OdString(m_path.wstring()); }
    void moveTo(const fs::path& target) {
        fs::rename(m_path, target);
        m_done = true;
        removeAll();
    }

private:
    void removeAll() const {
        std::error_code ec;
        for (const char* suffix : {"", "-wal", "-shm", "-journal"})
            fs::remove(fs::path(m_path.string() + suffix), ec);
    }
    fs::path m_path;
    bool m_done = false;
};

struct Use {
    const wchar_t* layer;
    vantlib::ObjectType type;
    vl_db::EDbType library;
    const char* name;
};

// Elements of a small house: the walls, floors and roof take their build-ups from the project
// library where the project changed them, and from the central library otherwise.
const Use kUses[] = {
    {L"A-WALL", vantlib::kComposition, vl_db::kDbProject, "EW-01 Clay block, rendered"},
    {L"A-WALL", vantlib::kComposition, vl_db::kDbProject, "EW-01 Clay block, rendered"},
    {L"A-WALL", vantlib::kComposition, vl_db::kDbProject, "EW-03 Calcium silicate, ventilated stone facade"},
    {L"A-WALL", vantlib::kComposition, vl_db::kDbCentral, "IW-01 Metal stud partition"},
    {L"A-WALL", vantlib::kComposition, vl_db::kDbCentral, "IW-02 Calcium silicate, plastered"},
    {L"A-FLOR", vantlib::kComposition, vl_db::kDbProject, "SL-01 Concrete floor, floating screed"},
    {L"A-FLOR", vantlib::kComposition, vl_db::kDbCentral, "SL-02 Ground slab"},
    {L"A-ROOF", vantlib::kComposition, vl_db::kDbCentral, "RF-01 Flat roof, warm deck, tapered"},
    {L"S-COLS", vantlib::kMaterial, vl_db::kDbProject, "Concrete C30/37"},
    {L"S-BEAM", vantlib::kMaterial, vl_db::kDbCentral, "Glued laminated timber GL24h"},
};

uint32_t idIn(const vantlib::Library& library, vantlib::ObjectType type, const OdString& name) {
    QcSmartPtr<vantlib::Object> object;
    if (type == vantlib::kMaterial)
        object = library.get<vantlib::Material>(vantlib::NameKey(name));
    else
        object = library.get<vantlib::Composition>(vantlib::NameKey(name));
    if (!object)
        throw vantlib::ConsistencyError(OdString(L"The demo library lacks ") + name);
    return object->id();
}

struct ProjectProfiles {
    size_t profiles = 0;
    size_t elements = 0;
};

ProjectProfiles writeDrawing(const PendingFile& file, const vantlib::Library& central) {
    ProjectProfiles made;
    auto db = OdDbDatabase::create(file.odPath(), OdDb::kUnitsMillimeters);
    db->addLayer(L"A-WALL", OdCmColor::fromIndex(OdCmEntityColor::kACIRed));
    db->addLayer(L"A-FLOR", OdCmColor::fromIndex(OdCmEntityColor::kACICyan));
    db->addLayer(L"A-ROOF", OdCmColor::fromIndex(OdCmEntityColor::kACIGreen));
    db->addLayer(L"S-COLS", OdCmColor::fromIndex(OdCmEntityColor::kACIYellow));
    db->addLayer(L"S-BEAM", OdCmColor::fromIndex(OdCmEntityColor::kACIMagenta));

    vl_db::DocumentLibraries* libs = vl_db::docLibs(db.get());
    try {
        const auto project = libs->primary(true);
        project->set_description(L"Project library of the demo house");
        fillLibrary(project, projectMaterials(), projectCompositions());
        for (const Use& use : kUses) {
            const OdString name = toOd(use.name);
            const vantlib::Library& source = use.library == vl_db::kDbProject ? *project : central;
            OdDbEntityPtr entity = OdDbEntity::createObject();
            entity->setLayer(use.layer);
            entity->addLibraryReference({uint32_t(use.type), int32_t(use.library), name, idIn(source, use.type, name)});
            db->addEntity(entity);
        }
        made.profiles = addProjectProfiles(project);
        made.elements = addProfileElements(*db, *project, central);
        addSectionOutlines(*db);
        db->save();
    } catch (...) {
        vl_db::closeDocLibs(db.get());
        throw;
    }
    vl_db::closeDocLibs(db.get());
    return made;
}

}  // namespace

DemoFiles writeDemo(const fs::path& dir, std::ostream& out) {
    fs::create_directories(dir);
    const DemoFiles files{dir / "demo.vldwg", dir / "central-metric.vlib"};

    PendingFile centralFile(dir / ".central-metric.part.vlib");
    PendingFile drawingFile(dir / ".demo.part.vldwg");
    size_t steelSections = 0;
    size_t officialPropertySets = 0;
    size_t officePropertySets = 0;
    std::string officialMissing;
    ProjectProfiles projectProfiles;
    {
        const auto central = vantlib::Library::create(centralFile.odPath(), OdDb::kUnitsMillimeters);
        central->set_description(L"Central library, metric (demo content)");
        fillLibrary(central, centralMaterials(), centralCompositions());
        steelSections = addCentralProfiles(central);
        officialPropertySets = addOfficialPropertySets(central, officialMissing);
        officePropertySets = addOfficePropertySets(central);
        projectProfiles = writeDrawing(drawingFile, *central);
    }
    centralFile.moveTo(files.centralLibrary);
    drawingFile.moveTo(files.drawing);

    if (!officialMissing.empty())
        out << officialMissing << '\n';
    out << "Wrote " << files.centralLibrary.string() << ": " << centralMaterials().size() << " materials, "
        << centralCompositions().size() << " compositions, " << steelSections << " steel sections, "
        << officialPropertySets << " official and " << officePropertySets << " office property sets\n"
        << "Wrote " << files.drawing.string() << ": embedded project library with " << projectMaterials().size()
        << " materials, " << projectCompositions().size() << " compositions, " << projectProfiles.profiles
        << " profiles; " << std::size(kUses) + projectProfiles.elements << " elements using them\n";
    return files;
}

}  // namespace vlib::demo
