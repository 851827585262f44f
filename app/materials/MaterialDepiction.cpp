#include "app/materials/MaterialDepiction.h"

#include <OdStringWx.h>

#include <vl_db/HatchPattern.h>

namespace vl_app {

wxString materialDepiction(const QcSmartPtr<const vantlib::Material>& material) {
    if (!material)
        return wxString();
    const vl_db::HatchPatternInfo hatch = vl_db::hatchPattern(material, vl_db::kHatchSection);
    if (hatch.type == vl_db::kHatchNone || hatch.type == vl_db::kHatchUnnamed)
        return wxString();
    // Catalogue names ignore letter case, so "Brick" and "BRICK" draw the same picture.
    return wxString::Format("%u|%s|%.17g|%.17g|%d", unsigned(hatch.type), toWx(hatch.name).Lower(), hatch.scale,
                            hatch.angleRadians, int(hatch.doubleHatch));
}

}  // namespace vl_app
