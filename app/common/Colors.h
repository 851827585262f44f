#pragma once
// Colours as a library stores them and as the drawing does.
#include <cstdint>

#include <OdCmColor.h>

namespace vl_app {

// A library colour: by layer, by block, a true colour, or none.
struct VantlibColor {
    enum Kind : int32_t {
        kNone = -1,
        kByLayer = 0,
        kByBlock = 1,
        kByColor = 2,
    };
    Kind kind = kNone;
    double red = 0.0;  // 0-255
    double green = 0.0;
    double blue = 0.0;
};

// By layer and by block keep their kind; true and index colours both become true colours;
// every other method becomes none.
VantlibColor convertColorOdCmToVantlib(const OdCmColor& color);
OdCmColor convertColorVantlibToOdCm(const VantlibColor& color);

}  // namespace vl_app
