#include "RenderMaterialLibrary.h"

#include <algorithm>
#include <cstdlib>

#include <wx/filefn.h>
#include <wx/filename.h>
#include <wx/log.h>
#include <wx/stdpaths.h>
#include <wx/utils.h>

#include "OdError.h"
#include "OdStringWx.h"

namespace ca {

namespace {

using T = RenderTexture;

struct CatalogueEntry {
    const char* name;
    const char* category;  // levels separated by '/'
    const char* fileName;
    RenderTexture texture;
    uint32_t colour;
    uint32_t accent;
};

// The host's render materials. File names never change: drawings refer to materials by name,
// the pictures are found by file name.
const CatalogueEntry kCatalogue[] = {
    {"Brick - Common Red", "Masonry/Brick", "brick_common_red", T::kBrick, 0xA2452E, 0xC9BFB0},
    {"Brick - Yellow Stock", "Masonry/Brick", "brick_yellow_stock", T::kBrick, 0xC9A15E, 0xE2DACB},
    {"Brick - Dark Engineering", "Masonry/Brick", "brick_engineering", T::kBrick, 0x4A2A25, 0x8E8A84},
    {"Brick - White Glazed", "Masonry/Brick", "brick_white_glazed", T::kBrick, 0xEDEBE4, 0x9C9A94},
    {"Concrete Block - Grey", "Masonry/Block", "block_grey", T::kBlock, 0x9A9894, 0x6D6B67},
    {"Aerated Block", "Masonry/Block", "block_aerated", T::kBlock, 0xE4E1D8, 0xB5B1A6},
    {"Concrete - Cast in Place", "Concrete", "concrete_cast", T::kConcrete, 0xA7A49E, 0x7E7B75},
    {"Concrete - Exposed Aggregate", "Concrete", "concrete_aggregate", T::kGravel, 0x9D958A, 0x5E574E},
    {"Concrete - Polished", "Concrete", "concrete_polished", T::kConcrete, 0xC3C1BC, 0xA09D97},
    {"Concrete - Dark Screed", "Concrete", "concrete_screed", T::kConcrete, 0x6F6D6A, 0x4F4D4A},
    {"Steel - Brushed", "Metal/Steel", "steel_brushed", T::kBrushedMetal, 0xB4B8BC, 0x8C9196},
    {"Steel - Tread Plate", "Metal/Steel", "steel_tread_plate", T::kTreadPlate, 0x9EA3A8, 0xD5D9DD},
    {"Steel - Corrugated Galvanised", "Metal/Steel", "steel_corrugated", T::kCorrugated, 0xAEB4B8, 0x6E7478},
    {"Aluminium - Anodised", "Metal/Aluminium", "aluminium_anodised", T::kBrushedMetal, 0xCFD2D6, 0xA9ADB2},
    {"Copper - Bright", "Metal/Copper", "copper_bright", T::kBrushedMetal, 0xC46F3C, 0x8E4620},
    {"Copper - Patina", "Metal/Copper", "copper_patina", T::kPlaster, 0x6FA895, 0x4C7F6E},
    {"Zinc - Standing Seam", "Metal/Zinc", "zinc_standing_seam", T::kCorrugated, 0x8A9096, 0x60666C},
    {"Oak - Natural", "Wood/Hardwood", "oak_natural", T::kWood, 0xB98A52, 0x87603A},
    {"Walnut", "Wood/Hardwood", "walnut", T::kWood, 0x6B4A33, 0x402A1C},
    {"Beech", "Wood/Hardwood", "beech", T::kWood, 0xD4A876, 0xAD835A},
    {"Pine", "Wood/Softwood", "pine", T::kWood, 0xE0BF85, 0xB48A4E},
    {"Oak Parquet - Basket Weave", "Wood/Flooring", "oak_parquet", T::kParquet, 0xB4834D, 0x8A5F34},
    {"Glass - Clear", "Glass", "glass_clear", T::kGlass, 0xBFDCE6, 0xFFFFFF},
    {"Glass - Tinted Blue", "Glass", "glass_tinted_blue", T::kGlass, 0x4C7FA6, 0xDCEBF5},
    {"Glass - Frosted", "Glass", "glass_frosted", T::kPlaster, 0xDDE7EA, 0xC6D3D7},
    {"Granite - Grey", "Stone/Granite", "granite_grey", T::kConcrete, 0x8F8E8C, 0x2F2E2D},
    {"Limestone Ashlar", "Stone/Limestone", "limestone_ashlar", T::kAshlar, 0xD8CBAE, 0xA79A7F},
    {"Sandstone Ashlar", "Stone/Sandstone", "sandstone_ashlar", T::kAshlar, 0xC99E6E, 0x9C7448},
    {"Marble - Carrara", "Stone/Marble", "marble_carrara", T::kMarble, 0xEEEEEC, 0x8E9296},
    {"Marble - Nero", "Stone/Marble", "marble_nero", T::kMarble, 0x26262A, 0xD0D0D0},
    {"Slate", "Stone/Slate", "slate", T::kPlaster, 0x4C5257, 0x33383C},
    {"Gravel", "Stone/Loose", "gravel", T::kGravel, 0xA39C90, 0x625B51},
    {"Plaster - White", "Plaster", "plaster_white", T::kPlaster, 0xF0EEE8, 0xD9D6CE},
    {"Plaster - Ochre Render", "Plaster", "plaster_ochre", T::kPlaster, 0xD6A960, 0xB38945},
    {"Gypsum Board", "Plaster", "gypsum_board", T::kPaint, 0xE9E8E3, 0xD2D1CB},
    {"Ceramic Tile - White", "Tile/Ceramic", "tile_white", T::kTile, 0xF3F3F1, 0xA8A8A4},
    {"Ceramic Tile - Terracotta", "Tile/Ceramic", "tile_terracotta", T::kTile, 0xB65E3A, 0xD9CFC0},
    {"Roof Tile - Clay", "Roofing", "roof_tile_clay", T::kRoofTile, 0xA94B2E, 0x6E2C1A},
    {"Roof Tile - Slate Grey", "Roofing", "roof_tile_slate", T::kRoofTile, 0x585E64, 0x33383C},
    {"Carpet - Charcoal", "Finishes/Fabric", "carpet_charcoal", T::kFabric, 0x4A4C50, 0x35373A},
    {"Fabric - Linen", "Finishes/Fabric", "fabric_linen", T::kFabric, 0xD9CDB5, 0xB8AB91},
    {"Paint - Matt White", "Finishes/Paint", "paint_white", T::kPaint, 0xF4F3EF, 0xFFFFFF},
    {"Paint - Signal Red", "Finishes/Paint", "paint_red", T::kPaint, 0xB3241E, 0xE8746E},
    {"Mineral Wool", "Insulation", "mineral_wool", T::kInsulation, 0xE3C86E, 0xB89A3E},
    {"Rigid Foam - Pink", "Insulation", "rigid_foam_pink", T::kPlaster, 0xE8A9B6, 0xD18C9B},
    {"Grass", "Site", "grass", T::kGrass, 0x5B8C3A, 0x2F5A1C},
    {"Water - Pool", "Site", "water_pool", T::kWater, 0x3C8DB8, 0xBFE4F4},
};

std::vector<RenderMaterial> buildCatalogue() {
    std::vector<RenderMaterial> materials;
    for (const CatalogueEntry& entry : kCatalogue) {
        RenderMaterial material;
        material.name = wxString::FromUTF8(entry.name);
        for (const wxString& level : wxSplit(wxString::FromUTF8(entry.category), '/', 0))
            material.category.push_back(level);
        material.fileName = wxString::FromUTF8(entry.fileName) + ".png";
        material.texture = entry.texture;
        material.colour = entry.colour;
        material.accent = entry.accent;
        materials.push_back(std::move(material));
    }
    std::stable_sort(materials.begin(), materials.end(), [](const RenderMaterial& a, const RenderMaterial& b) {
        if (a.category != b.category)
            return a.category < b.category;
        return a.name.CmpNoCase(b.name) < 0;
    });
    return materials;
}

}  // namespace

RenderMaterialLibrary& RenderMaterialLibrary::instance() {
    static RenderMaterialLibrary library(defaultFolder());
    return library;
}

wxString RenderMaterialLibrary::defaultFolder() {
    wxString folder;
    if (wxGetEnv("VL_RENDER_MATERIALS", &folder) && !folder.empty())
        return folder;
    wxFileName executable(wxStandardPaths::Get().GetExecutablePath());
    return wxFileName(executable.GetPath(), "render_materials").GetFullPath();
}

RenderMaterialLibrary::RenderMaterialLibrary(const wxString& folder)
    : m_folder(folder), m_materials(buildCatalogue()) {}

const RenderMaterial* RenderMaterialLibrary::find(const wxString& name) const {
    for (const RenderMaterial& material : m_materials)
        if (material.name.CmpNoCase(name) == 0)
            return &material;
    return nullptr;
}

std::vector<const RenderMaterial*> RenderMaterialLibrary::search(const wxString& text) const {
    const wxString needle = text.Lower();
    std::vector<const RenderMaterial*> found;
    for (const RenderMaterial& material : m_materials) {
        if (needle.empty() || material.name.Lower().Contains(needle) || categoryText(material).Lower().Contains(needle))
            found.push_back(&material);
    }
    return found;
}

wxString RenderMaterialLibrary::previewPath(const RenderMaterial& material, bool large) const {
    wxFileName path(m_folder, material.fileName);
    path.AppendDir(large ? "thumbnails_x2" : "thumbnails");
    return path.GetFullPath();
}

wxImage RenderMaterialLibrary::loadPreview(const RenderMaterial& material, bool large) const {
    const wxString path = previewPath(material, large);
    wxImage image;
    if (wxFileExists(path)) {
        wxLogNull quiet;  // an unreadable picture shows as none
        image.LoadFile(path, wxBITMAP_TYPE_ANY);
    }
    return image;
}

wxString RenderMaterialLibrary::categoryText(const RenderMaterial& material, const wxString& separator) {
    wxString text;
    for (const wxString& level : material.category) {
        if (!text.empty())
            text << separator;
        text << level;
    }
    return text;
}

int writeRenderMaterialThumbnails(const RenderMaterialLibrary& library) {
    struct Size {
        const char* folder;
        int edge;
    };
    const Size sizes[] = {{"thumbnails", 64}, {"thumbnails_x2", 128}};
    if (!wxImage::FindHandler(wxBITMAP_TYPE_PNG))
        wxImage::AddHandler(new wxPNGHandler);
    int written = 0;
    for (const Size& size : sizes) {
        const wxString folder = wxFileName(library.folder(), size.folder).GetFullPath();
        if (!wxFileName::Mkdir(folder, wxS_DIR_DEFAULT, wxPATH_MKDIR_FULL))
            throw OdError(eFileAccessErr, OdString(L"Cannot create the folder ") + toOd(folder));
        for (const RenderMaterial& material : library.materials()) {
            const wxString path = library.previewPath(material, size.edge > 64);
            wxLogNull quiet;  // the failure is reported by the exception
            if (!paintRenderMaterial(material, size.edge).SaveFile(path, wxBITMAP_TYPE_PNG))
                throw OdError(eFileAccessErr, OdString(L"Cannot write the picture ") + toOd(path));
            ++written;
        }
    }
    return written;
}

}  // namespace ca
