#include <vl_db/HatchPattern.h>

#include <vantlib/Material.h>

namespace vl_db {

HatchPatternInfo hatchPattern(const QcSmartPtr<const vantlib::Material>& material, EHatchViewType view) {
    HatchPatternInfo info;
    if (!material)
        return info;
    const vantlib::Pattern& pattern =
        material->pattern(view == kHatchElevation ? vantlib::kElevationView : vantlib::kSectionView);
    info.name = pattern.name();
    info.angleRadians = pattern.angle();
    switch (pattern.type()) {
    case vantlib::Pattern::kUserDefined:
        // Lines are described by their spacing; a crossed set draws a second family at 90°.
        info.type = kHatchUserDefined;
        info.name = OdString(L"_USER");
        info.scale = pattern.space();
        info.doubleHatch = pattern.cross();
        break;
    case vantlib::Pattern::kPredefined:
    case vantlib::Pattern::kCustom:
        info.scale = pattern.scale();
        if (pattern.name().isEmpty())
            info.type = kHatchUnnamed;
        else
            info.type = pattern.type() == vantlib::Pattern::kPredefined ? kHatchPreDefined : kHatchCustom;
        break;
    default:
        info.type = kHatchNone;
        break;
    }
    return info;
}

}  // namespace vl_db
