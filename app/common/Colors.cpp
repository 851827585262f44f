#include "app/common/Colors.h"

#include <algorithm>
#include <cmath>

namespace vl_app {

VantlibColor convertColorOdCmToVantlib(const OdCmColor& color) {
    VantlibColor result;
    switch (color.colorMethod()) {
    case OdCmEntityColor::kByLayer:
        result.kind = VantlibColor::kByLayer;
        break;
    case OdCmEntityColor::kByBlock:
        result.kind = VantlibColor::kByBlock;
        break;
    case OdCmEntityColor::kByColor:
    case OdCmEntityColor::kByACI:
        // Libraries have no palette: an index colour is kept as the true colour it shows.
        result.kind = VantlibColor::kByColor;
        result.red = color.red();
        result.green = color.green();
        result.blue = color.blue();
        break;
    default:
        result.kind = VantlibColor::kNone;
        break;
    }
    return result;
}

namespace {
uint8_t component(double value) {
    return static_cast<uint8_t>(std::clamp(std::lround(value), 0L, 255L));
}
}  // namespace

OdCmColor convertColorVantlibToOdCm(const VantlibColor& color) {
    switch (color.kind) {
    case VantlibColor::kByLayer: return OdCmColor(OdCmEntityColor::kByLayer);
    case VantlibColor::kByBlock: return OdCmColor(OdCmEntityColor::kByBlock);
    case VantlibColor::kByColor: return OdCmColor::fromRGB(component(color.red), component(color.green), component(color.blue));
    default: return OdCmColor(OdCmEntityColor::kNone);
    }
}

}  // namespace vl_app
