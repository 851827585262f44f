#pragma once
// A material's hatch for one view, reduced to what a picture of it needs: which kind of pattern
// to draw, its name, scale, angle and whether user-defined lines are crossed.
#include <cstdint>

#include <OdString.h>
#include <QcSmartPtr.h>

namespace vantlib {
class Material;
}

namespace vl_db {

// Which hatch of a material: the one of cut (section) views or of elevation views.
enum EHatchViewType : uint32_t {
    kHatchSection = 0,
    kHatchElevation = 1,
};

// How a hatch is drawn. Only user-defined lines and the named kinds produce a picture.
enum EHatchType : uint32_t {
    kHatchUserDefined = 0,  // parallel lines named "_USER"; the scale is their spacing
    kHatchNone = 1,         // the material has no hatch in this view
    kHatchUnnamed = 2,      // a catalogue kind without a pattern name: nothing to draw
    kHatchPreDefined = 3,   // a pattern of the host's own catalogue (including "SOLID")
    kHatchCustom = 4,       // a pattern from the configured pattern files
};

struct HatchPatternInfo {
    EHatchType type = kHatchNone;
    OdString name;
    double scale = 1.0;          // pattern scale; the spacing for user-defined lines
    double angleRadians = 0.0;
    bool doubleHatch = false;    // user-defined lines crossed by a second set
};

// The hatch of `material` for `view`; a null material has none (kHatchNone).
HatchPatternInfo hatchPattern(const QcSmartPtr<const vantlib::Material>& material, EHatchViewType view);

}  // namespace vl_db
