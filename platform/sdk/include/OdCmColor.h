#pragma once
// Colour of layers and entities: by layer, by block, a true colour or an index into the
// standard 256-entry palette.
#include <cstdint>

#include "OdString.h"

namespace OdCmEntityColor {
enum ColorMethod {
    kByLayer = 0,
    kByBlock = 1,
    kByColor = 2,  // true colour (red, green, blue)
    kByACI = 3,    // palette index 1-255
    kByPen = 4,
    kForeground = 5,
    kNone = 6,
};

// Palette indices with a meaning of their own.
constexpr uint16_t kACIbyBlock = 0;
constexpr uint16_t kACIRed = 1;
constexpr uint16_t kACIYellow = 2;
constexpr uint16_t kACIGreen = 3;
constexpr uint16_t kACICyan = 4;
constexpr uint16_t kACIBlue = 5;
constexpr uint16_t kACIMagenta = 6;
constexpr uint16_t kACIWhite = 7;
constexpr uint16_t kACIbyLayer = 256;

// RGB of a palette index 0-255, packed 0x00RRGGBB. Index 0 (by block) reads as white like 7.
// Throws OdError(eInvalidIndex) for indices above 255.
uint32_t lookUpRGB(uint16_t colorIndex);
// Palette index 1-255 nearest to the given RGB (smallest squared distance; the lowest index
// wins a tie, so pure white gives 7, not 255).
uint16_t lookUpACI(uint8_t red, uint8_t green, uint8_t blue);
}  // namespace OdCmEntityColor

class OdCmColor {
public:
    OdCmColor() = default;  // by layer
    explicit OdCmColor(OdCmEntityColor::ColorMethod method);
    static OdCmColor fromRGB(uint8_t red, uint8_t green, uint8_t blue);
    static OdCmColor fromIndex(uint16_t colorIndex);

    OdCmEntityColor::ColorMethod colorMethod() const { return m_method; }
    // Sets the method alone; switching to kByACI keeps a valid index (7 when none was set),
    // switching to kByColor keeps the current RGB.
    void setColorMethod(OdCmEntityColor::ColorMethod method);

    bool isByLayer() const { return m_method == OdCmEntityColor::kByLayer; }
    bool isByBlock() const { return m_method == OdCmEntityColor::kByBlock; }
    bool isByColor() const { return m_method == OdCmEntityColor::kByColor; }
    bool isByACI() const { return m_method == OdCmEntityColor::kByACI; }
    bool isNone() const { return m_method == OdCmEntityColor::kNone; }

    // True colour; the method becomes kByColor.
    void setRGB(uint8_t red, uint8_t green, uint8_t blue);
    // 0 gives by block, 256 by layer, 1-255 an index colour; anything else throws
    // OdError(eInvalidInput).
    void setColorIndex(uint16_t colorIndex);

    // The colour's components: a true colour's own, an index colour's palette entry, 0 for
    // the other methods.
    uint8_t red() const;
    uint8_t green() const;
    uint8_t blue() const;
    uint32_t rgb() const;  // 0x00RRGGBB
    // Index of the colour: its own for kByACI, 0 by block, 256 by layer, the nearest palette
    // entry for a true colour, 0 for the other methods.
    uint16_t colorIndex() const;

    // Readable form, also the stored form: "BYLAYER", "BYBLOCK", "NONE", "BYPEN",
    // "FOREGROUND", "ACI 12", "RGB 255,128,0". fromString throws OdError(eInvalidInput).
    OdString toString() const;
    static OdCmColor fromString(const OdString& text);

    friend bool operator==(const OdCmColor& a, const OdCmColor& b);
    friend bool operator!=(const OdCmColor& a, const OdCmColor& b) { return !(a == b); }

private:
    OdCmEntityColor::ColorMethod m_method = OdCmEntityColor::kByLayer;
    uint16_t m_index = 0;
    uint32_t m_rgb = 0;
};
