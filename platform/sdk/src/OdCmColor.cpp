#include "OdCmColor.h"

#include <array>
#include <cmath>
#include <cwchar>

#include "OdError.h"

namespace {

uint32_t pack(int r, int g, int b) {
    return (static_cast<uint32_t>(r) << 16) | (static_cast<uint32_t>(g) << 8) | static_cast<uint32_t>(b);
}

// Indices 10-249 run through 24 hues in steps of 15 degrees, ten entries per hue: five
// brightness levels, each as a full-strength and a pale (half-saturated) colour.
uint32_t hueEntry(int index) {
    static const int kBrightness[5] = {255, 165, 127, 76, 38};
    const int group = (index - 10) / 10;
    const int within = index % 10;
    const double brightness = kBrightness[within / 2];
    const bool pale = (within % 2) == 1;

    const double hue = group * 15.0;
    const int sector = static_cast<int>(hue / 60.0);
    const double f = hue / 60.0 - sector;
    double channel[3];
    switch (sector) {
    case 0: channel[0] = 1; channel[1] = f; channel[2] = 0; break;
    case 1: channel[0] = 1 - f; channel[1] = 1; channel[2] = 0; break;
    case 2: channel[0] = 0; channel[1] = 1; channel[2] = f; break;
    case 3: channel[0] = 0; channel[1] = 1 - f; channel[2] = 1; break;
    case 4: channel[0] = f; channel[1] = 0; channel[2] = 1; break;
    default: channel[0] = 1; channel[1] = 0; channel[2] = 1 - f; break;
    }
    int out[3];
    for (int i = 0; i < 3; ++i) {
        double level = pale ? 0.5 + 0.5 * channel[i] : channel[i];
        out[i] = static_cast<int>(std::floor(brightness * level + 1e-9));
    }
    return pack(out[0], out[1], out[2]);
}

const std::array<uint32_t, 256>& palette() {
    static const std::array<uint32_t, 256> table = [] {
        std::array<uint32_t, 256> t{};
        t[0] = pack(255, 255, 255);
        t[1] = pack(255, 0, 0);
        t[2] = pack(255, 255, 0);
        t[3] = pack(0, 255, 0);
        t[4] = pack(0, 255, 255);
        t[5] = pack(0, 0, 255);
        t[6] = pack(255, 0, 255);
        t[7] = pack(255, 255, 255);
        t[8] = pack(128, 128, 128);
        t[9] = pack(192, 192, 192);
        for (int i = 10; i < 250; ++i) t[i] = hueEntry(i);
        static const int kGreys[6] = {51, 91, 132, 173, 214, 255};
        for (int i = 0; i < 6; ++i) t[250 + i] = pack(kGreys[i], kGreys[i], kGreys[i]);
        return t;
    }();
    return table;
}

struct NamedMethod {
    const wchar_t* name;
    OdCmEntityColor::ColorMethod method;
};
const NamedMethod kNamedMethods[] = {
    {L"BYLAYER", OdCmEntityColor::kByLayer}, {L"BYBLOCK", OdCmEntityColor::kByBlock},
    {L"NONE", OdCmEntityColor::kNone},       {L"BYPEN", OdCmEntityColor::kByPen},
    {L"FOREGROUND", OdCmEntityColor::kForeground},
};

}  // namespace

uint32_t OdCmEntityColor::lookUpRGB(uint16_t colorIndex) {
    if (colorIndex > 255) throw OdError_InvalidIndex();
    return palette()[colorIndex];
}

uint16_t OdCmEntityColor::lookUpACI(uint8_t red, uint8_t green, uint8_t blue) {
    uint16_t best = 1;
    long bestDistance = -1;
    for (int i = 1; i < 256; ++i) {
        uint32_t rgb = palette()[i];
        long dr = static_cast<long>((rgb >> 16) & 0xFF) - red;
        long dg = static_cast<long>((rgb >> 8) & 0xFF) - green;
        long db = static_cast<long>(rgb & 0xFF) - blue;
        long distance = dr * dr + dg * dg + db * db;
        if (bestDistance < 0 || distance < bestDistance) {
            bestDistance = distance;
            best = static_cast<uint16_t>(i);
        }
    }
    return best;
}

OdCmColor::OdCmColor(OdCmEntityColor::ColorMethod method) { setColorMethod(method); }

OdCmColor OdCmColor::fromRGB(uint8_t red, uint8_t green, uint8_t blue) {
    OdCmColor color;
    color.setRGB(red, green, blue);
    return color;
}

OdCmColor OdCmColor::fromIndex(uint16_t colorIndex) {
    OdCmColor color;
    color.setColorIndex(colorIndex);
    return color;
}

void OdCmColor::setColorMethod(OdCmEntityColor::ColorMethod method) {
    if (method < OdCmEntityColor::kByLayer || method > OdCmEntityColor::kNone)
        throw OdError(eInvalidInput, OdString::formatted(L"Unknown colour method %d", int(method)));
    if (method == OdCmEntityColor::kByACI && m_method == OdCmEntityColor::kByColor)
        m_index = OdCmEntityColor::lookUpACI(uint8_t(m_rgb >> 16), uint8_t(m_rgb >> 8), uint8_t(m_rgb));
    else if (method == OdCmEntityColor::kByACI && (m_index < 1 || m_index > 255))
        m_index = OdCmEntityColor::kACIWhite;
    if (method == OdCmEntityColor::kByColor && m_method == OdCmEntityColor::kByACI) m_rgb = OdCmEntityColor::lookUpRGB(m_index);
    m_method = method;
}

void OdCmColor::setRGB(uint8_t red, uint8_t green, uint8_t blue) {
    m_method = OdCmEntityColor::kByColor;
    m_rgb = pack(red, green, blue);
}

void OdCmColor::setColorIndex(uint16_t colorIndex) {
    if (colorIndex > OdCmEntityColor::kACIbyLayer)
        throw OdError(eInvalidInput, OdString::formatted(L"Colour index %u is outside 0-256", unsigned(colorIndex)));
    if (colorIndex == OdCmEntityColor::kACIbyLayer) {
        m_method = OdCmEntityColor::kByLayer;
    } else if (colorIndex == OdCmEntityColor::kACIbyBlock) {
        m_method = OdCmEntityColor::kByBlock;
    } else {
        m_method = OdCmEntityColor::kByACI;
        m_index = colorIndex;
    }
}

uint32_t OdCmColor::rgb() const {
    if (m_method == OdCmEntityColor::kByColor) return m_rgb;
    if (m_method == OdCmEntityColor::kByACI) return OdCmEntityColor::lookUpRGB(m_index);
    return 0;
}

uint8_t OdCmColor::red() const { return static_cast<uint8_t>(rgb() >> 16); }
uint8_t OdCmColor::green() const { return static_cast<uint8_t>(rgb() >> 8); }
uint8_t OdCmColor::blue() const { return static_cast<uint8_t>(rgb()); }

uint16_t OdCmColor::colorIndex() const {
    switch (m_method) {
    case OdCmEntityColor::kByACI: return m_index;
    case OdCmEntityColor::kByLayer: return OdCmEntityColor::kACIbyLayer;
    case OdCmEntityColor::kByColor: return OdCmEntityColor::lookUpACI(red(), green(), blue());
    default: return OdCmEntityColor::kACIbyBlock;
    }
}

OdString OdCmColor::toString() const {
    if (m_method == OdCmEntityColor::kByACI) return OdString::formatted(L"ACI %u", unsigned(m_index));
    if (m_method == OdCmEntityColor::kByColor)
        return OdString::formatted(L"RGB %u,%u,%u", unsigned(red()), unsigned(green()), unsigned(blue()));
    for (const NamedMethod& named : kNamedMethods)
        if (named.method == m_method) return named.name;
    return L"NONE";
}

OdCmColor OdCmColor::fromString(const OdString& text) {
    OdString upper = text;
    upper.trimLeft().trimRight().makeUpper();
    for (const NamedMethod& named : kNamedMethods)
        if (upper == named.name) return OdCmColor(named.method);

    const OdError bad(eInvalidInput, L"Not a colour: " + text);
    unsigned a = 0, b = 0, c = 0;
    int consumed = 0;
    if (upper.left(4) == L"ACI ") {
        if (std::swscanf(upper.c_str(), L"ACI %u%n", &a, &consumed) != 1 || consumed != upper.getLength() || a < 1 || a > 255)
            throw bad;
        return fromIndex(static_cast<uint16_t>(a));
    }
    if (upper.left(4) == L"RGB ") {
        if (std::swscanf(upper.c_str(), L"RGB %u,%u,%u%n", &a, &b, &c, &consumed) != 3 || consumed != upper.getLength() ||
            a > 255 || b > 255 || c > 255)
            throw bad;
        return fromRGB(uint8_t(a), uint8_t(b), uint8_t(c));
    }
    throw bad;
}

bool operator==(const OdCmColor& a, const OdCmColor& b) {
    if (a.m_method != b.m_method) return false;
    if (a.m_method == OdCmEntityColor::kByColor) return a.m_rgb == b.m_rgb;
    if (a.m_method == OdCmEntityColor::kByACI) return a.m_index == b.m_index;
    return true;
}
