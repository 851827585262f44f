#include "app/materials/MaterialThumbnails.h"

#include <OdStringWx.h>

#include <vl_db/HatchPattern.h>

#include "app/common/Previews.h"

namespace vl_app {

MaterialThumbnails::Key MaterialThumbnails::key(const QcSmartPtr<const vantlib::Material>& material, int edge) {
    const vl_db::HatchPatternInfo hatch = vl_db::hatchPattern(material, vl_db::kHatchSection);
    if (hatch.type == vl_db::kHatchNone || hatch.type == vl_db::kHatchUnnamed)
        return Key(unsigned(hatch.type), wxString(), 0.0, 0.0, false, edge);
    // Catalogue names ignore letter case, so "Brick" and "BRICK" draw the same picture.
    return Key(unsigned(hatch.type), toWx(hatch.name).Lower(), hatch.scale, hatch.angleRadians, hatch.doubleHatch,
               edge);
}

const wxBitmap& MaterialThumbnails::thumbnail(const Key& key, const QcSmartPtr<const vantlib::Material>& material) {
    const auto found = m_pictures.find(key);
    if (found != m_pictures.end())
        return found->second;
    const int edge = std::get<5>(key);
    ++m_drawn;
    return m_pictures.emplace(key, hatchPreview(material, vl_db::kHatchSection, wxSize(edge, edge))).first->second;
}

void MaterialThumbnails::clear() {
    m_pictures.clear();
    m_drawn = 0;
}

}  // namespace vl_app
