#include "vl_resources.h"

#include <iterator>
#include <memory>

#include <wx/filesys.h>
#include <wx/image.h>
#include <wx/log.h>

namespace vl_res {

namespace {

// Keep in step with VL_RES_PICTURES in res/CMakeLists.txt.
const Picture kPictures[] = {
    {"toolicons_32_light_alert", 32},
    {"toolicons_16_light_new", 16},
    {"toolicons_16_light_copyclip", 16},
    {"toolicons_16_light_erase", 16},
    {"toolicons_16_light_cui_group", 16},
    {"toolicons_32_light_cui_group", 32},
    {"toolicons_16_light_vantlib_materials", 16},
    {"toolicons_32_light_vantlib_materials", 32},
    {"toolicons_16_light_vantlib_compositions", 16},
    {"toolicons_32_light_vantlib_compositions", 32},
    {"toolicons_16_light_filter", 16},
    {"toolicons_16_light_vantlib_db", 16},
    {"toolicons_16_light_vantlib_wall", 16},
    {"toolicons_16_light_vantlib_slab", 16},
    {"toolicons_16_light_vantlib_roof", 16},
    {"toolicons_16_light_vantlib_generic", 16},
    {"rotate-qrtr-left", 16},
    {"rotate-qrtr-right", 16},
    {"mirror-vertical", 16},
    {"mirror-horizontal", 16},
    {"vl_lock", 16},
    {"vl_lock_x2", 32},
    {"vl_unlock", 16},
    {"vl_unlock_x2", 32},
    {"vl_empty_cmp", 16},
    {"vl_empty_cmp_32", 32},
    {"vl_empty_cmp_64", 64},
    {"vl_empty_mat", 16},
    {"vl_empty_mat_32", 32},
    {"vl_profile_i_shape", 150},
    {"vl_profile_rect_shape", 150},
    {"vl_profile_rect_h_shape", 150},
    {"vl_profile_circular_shape", 150},
    {"vl_profile_circular_h_shape", 150},
    {"vl_profile_asym_i_shape", 150},
    {"vl_profile_l_shape", 150},
    {"vl_profile_u_shape", 150},
    {"vl_profile_c_shape", 150},
    {"vl_profile_z_shape", 150},
    {"vl_profile_t_shape", 150},
    {"vl_profile_rail_a_shape", 150},
    {"vl_profile_rail_f_shape", 150},
    {"vl_profile_ellipse_shape", 150},
    {"vl_profile_round_rect_shape", 150},
    {"vl_profile_trapezium_shape", 150},
};

const char* const kLayouts[] = {
    "vl_dlg_compositions.xrc",
    "vl_dlg_custom_properties.xrc",
    "vl_dlg_hatch_pattern.xrc",
    "vl_dlg_materials.xrc",
    "vl_dlg_material_classes.xrc",
    "vl_dlg_profiles.xrc",
    "vl_dlg_profile_offset.xrc",
    "vl_dlg_profile_save.xrc",
    "vl_dlg_properties.xrc",
    "vl_dlg_render_material.xrc",
};

}  // namespace

const Picture* pictures(std::size_t* count)
{
    if (count)
        *count = std::size(kPictures);
    return kPictures;
}

const char* const* layouts(std::size_t* count)
{
    if (count)
        *count = std::size(kLayouts);
    return kLayouts;
}

wxString picturePath(const wxString& name)
{
    for (const Picture& p : kPictures) {
        if (name == p.name)
            return wxString(kMemoryPrefix) + ".._bitmaps_" + name + ".png";
    }
    return wxString();
}

wxString layoutPath(const wxString& fileName)
{
    return wxString(kMemoryPrefix) + fileName;
}

wxBitmap picture(const wxString& name)
{
    const wxString path = picturePath(name);
    if (path.empty())
        return wxNullBitmap;
    wxFileSystem fs;
    std::unique_ptr<wxFSFile> file(fs.OpenFile(path));
    if (!file || !file->GetStream())
        return wxNullBitmap;
    wxImage image;
    wxLogNull quiet;
    if (!image.LoadFile(*file->GetStream(), wxBITMAP_TYPE_PNG))
        return wxNullBitmap;
    return wxBitmap(image);
}

}  // namespace vl_res
