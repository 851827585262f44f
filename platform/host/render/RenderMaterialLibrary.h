#pragma once
// The host's library of render materials: the looks that 3D views give surfaces (brick,
// concrete, metal, wood, glass, stone, plaster ...), each with a category path and preview
// pictures. The pictures are made by the build (tools/rendermat) into a folder with two
// subfolders: "thumbnails" (64 pixels) and "thumbnails_x2" (128 pixels).
#include <cstdint>
#include <vector>

#include <wx/image.h>
#include <wx/string.h>

namespace ca {

// How a material's preview is drawn.
enum class RenderTexture {
    kBrick,       // courses of bricks in running bond with mortar joints
    kBlock,       // large blocks in stack bond
    kConcrete,    // speckled grey with pores
    kBrushedMetal,
    kTreadPlate,  // metal with raised diamonds
    kCorrugated,  // corrugated sheet
    kWood,        // grain along the boards
    kParquet,     // strips in basket weave
    kGlass,       // gradient with a reflection
    kAshlar,      // cut stone blocks of varied shade
    kMarble,      // veined stone
    kGravel,      // loose stones
    kPlaster,     // fine noise
    kTile,        // square tiles with grout
    kRoofTile,    // overlapping rows of tiles
    kFabric,      // woven threads
    kInsulation,  // fibrous wool
    kPaint,       // flat colour with a slight sheen
    kGrass,
    kWater,
};

struct RenderMaterial {
    wxString name;                   // unique without regard to case
    std::vector<wxString> category;  // path from the outermost level, e.g. {"Masonry", "Brick"}
    wxString fileName;               // picture file name inside the thumbnail folders
    RenderTexture texture = RenderTexture::kPaint;
    uint32_t colour = 0x808080;      // main colour, 0xRRGGBB
    uint32_t accent = 0x404040;      // joints, grain, veins or highlights
};

class RenderMaterialLibrary {
public:
    // The library the host's dialogs use, on defaultFolder().
    static RenderMaterialLibrary& instance();
    // $VL_RENDER_MATERIALS when set, else "render_materials" beside the executable.
    static wxString defaultFolder();

    explicit RenderMaterialLibrary(const wxString& folder);

    const wxString& folder() const { return m_folder; }
    void setFolder(const wxString& folder) { m_folder = folder; }

    // Every material, ordered by category path and name.
    const std::vector<RenderMaterial>& materials() const { return m_materials; }
    // Case-insensitive lookup; null when absent.
    const RenderMaterial* find(const wxString& name) const;
    // Materials whose name or category path contains `text`, ignoring case; all for an empty
    // text. In library order.
    std::vector<const RenderMaterial*> search(const wxString& text) const;

    // The picture file of a material: folder/thumbnails/NAME.png, or in thumbnails_x2 for the
    // large picture. The file may be missing.
    wxString previewPath(const RenderMaterial& material, bool large) const;
    // The picture; an invalid image when the file is missing or unreadable (no message).
    wxImage loadPreview(const RenderMaterial& material, bool large) const;

    // The category path joined with `separator`.
    static wxString categoryText(const RenderMaterial& material, const wxString& separator = " > ");

private:
    wxString m_folder;
    std::vector<RenderMaterial> m_materials;
};

// Draws a material's preview, edge × edge pixels; the same material and edge always give the
// same picture.
wxImage paintRenderMaterial(const RenderMaterial& material, int edge);

// Writes the pictures of every material of `library` into its folder (64 pixels into
// "thumbnails", 128 into "thumbnails_x2"), creating the folders. Throws OdError when a folder
// or file cannot be written. Returns the number of files written.
int writeRenderMaterialThumbnails(const RenderMaterialLibrary& library);

}  // namespace ca
