// Procedural previews of render materials: plain pixel work on a wxImage, so pictures can be
// made without a display (the build draws them). Every texture is laid out in a 64-unit square
// whatever the edge, so the small and the large picture show the same thing.
#include <algorithm>
#include <cmath>
#include <cstdint>

#include "RenderMaterialLibrary.h"

namespace ca {

namespace {

struct Rgb {
    double r, g, b;
};

Rgb rgb(uint32_t packed) {
    return Rgb{double((packed >> 16) & 0xFF), double((packed >> 8) & 0xFF), double(packed & 0xFF)};
}

Rgb mix(const Rgb& a, const Rgb& b, double t) {
    t = std::clamp(t, 0.0, 1.0);
    return Rgb{a.r + (b.r - a.r) * t, a.g + (b.g - a.g) * t, a.b + (b.b - a.b) * t};
}

Rgb shade(const Rgb& c, double factor) { return Rgb{c.r * factor, c.g * factor, c.b * factor}; }

uint32_t hashInts(int x, int y, uint32_t seed) {
    uint32_t h = seed ^ 0x9E3779B9u;
    h ^= uint32_t(x) * 0x85EBCA6Bu;
    h = (h << 13) | (h >> 19);
    h ^= uint32_t(y) * 0xC2B2AE35u;
    h ^= h >> 16;
    h *= 0x7FEB352Du;
    h ^= h >> 15;
    h *= 0x846CA68Bu;
    h ^= h >> 16;
    return h;
}

// Uniform in [0, 1).
double random01(int x, int y, uint32_t seed) { return (hashInts(x, y, seed) & 0xFFFFFF) / double(0x1000000); }

double smooth(double t) { return t * t * (3.0 - 2.0 * t); }

// Smooth noise in [0, 1) with features one unit apart.
double valueNoise(double x, double y, uint32_t seed) {
    const int ix = int(std::floor(x));
    const int iy = int(std::floor(y));
    const double fx = smooth(x - ix);
    const double fy = smooth(y - iy);
    const double a = random01(ix, iy, seed), b = random01(ix + 1, iy, seed);
    const double c = random01(ix, iy + 1, seed), d = random01(ix + 1, iy + 1, seed);
    return (a + (b - a) * fx) * (1.0 - fy) + (c + (d - c) * fx) * fy;
}

// Several octaves of noise, still in [0, 1).
double fractalNoise(double x, double y, uint32_t seed, int octaves = 4) {
    double sum = 0.0, weight = 0.5, total = 0.0;
    for (int i = 0; i < octaves; ++i) {
        sum += weight * valueNoise(x, y, seed + uint32_t(i) * 101u);
        total += weight;
        x *= 2.0;
        y *= 2.0;
        weight *= 0.5;
    }
    return sum / total;
}

uint32_t seedOf(const wxString& text) {
    uint32_t h = 2166136261u;
    for (wxUniChar c : text) {
        h ^= uint32_t(c.GetValue());
        h *= 16777619u;
    }
    return h;
}

// The colour of one point of a texture, in texture units (0..64 across the picture).
class TexturePainter {
public:
    TexturePainter(const RenderMaterial& material)
        : m_texture(material.texture), m_colour(rgb(material.colour)), m_accent(rgb(material.accent)),
          m_seed(seedOf(material.fileName)) {}

    Rgb at(double x, double y) const {
        switch (m_texture) {
        case RenderTexture::kBrick: return courses(x, y, 18.0, 8.0, 1.5, 0.5, 0.12);
        case RenderTexture::kBlock: return courses(x, y, 30.0, 15.0, 1.2, 0.5, 0.06);
        case RenderTexture::kConcrete: return concrete(x, y);
        case RenderTexture::kBrushedMetal: return brushedMetal(x, y);
        case RenderTexture::kTreadPlate: return treadPlate(x, y);
        case RenderTexture::kCorrugated: return corrugated(x, y);
        case RenderTexture::kWood: return wood(x, y);
        case RenderTexture::kParquet: return parquet(x, y);
        case RenderTexture::kGlass: return glass(x, y);
        case RenderTexture::kAshlar: return ashlar(x, y);
        case RenderTexture::kMarble: return marble(x, y);
        case RenderTexture::kGravel: return gravel(x, y);
        case RenderTexture::kPlaster: return plaster(x, y);
        case RenderTexture::kTile: return tile(x, y);
        case RenderTexture::kRoofTile: return roofTile(x, y);
        case RenderTexture::kFabric: return fabric(x, y);
        case RenderTexture::kInsulation: return insulation(x, y);
        case RenderTexture::kPaint: return paint(x, y);
        case RenderTexture::kGrass: return grass(x, y);
        case RenderTexture::kWater: return water(x, y);
        }
        return m_colour;
    }

private:
    double grain(double x, double y, double scale = 0.35) const { return fractalNoise(x * scale, y * scale, m_seed); }

    // Units laid in courses with joints; every other course shifted by `offset` of a unit.
    Rgb courses(double x, double y, double length, double height, double joint, double offset, double variation) const {
        const int row = int(std::floor(y / height));
        const double shifted = x + (row % 2 ? offset * length : 0.0);
        const int column = int(std::floor(shifted / length));
        const double inX = shifted - column * length;
        const double inY = y - row * height;
        const double fine = grain(x, y, 0.8);
        if (inX < joint || inY < joint)
            return shade(m_accent, 0.85 + 0.25 * fine);
        const double unitShade = 1.0 - variation + 2.0 * variation * random01(column, row, m_seed);
        Rgb c = shade(m_colour, unitShade * (0.88 + 0.24 * fine));
        // A little shadow under the upper joint gives the units depth.
        if (inY < joint + 1.2)
            c = shade(c, 0.85);
        return c;
    }

    Rgb concrete(double x, double y) const {
        Rgb c = shade(m_colour, 0.88 + 0.22 * grain(x, y, 0.12));
        const double speck = random01(int(x * 2.0), int(y * 2.0), m_seed + 7);
        if (speck < 0.05)
            c = mix(c, m_accent, 0.7);
        else if (speck > 0.97)
            c = shade(c, 1.12);
        const double pore = valueNoise(x * 0.45, y * 0.45, m_seed + 3);
        if (pore > 0.93)
            c = shade(m_accent, 0.8);
        return c;
    }

    Rgb brushedMetal(double x, double y) const {
        const double streak = fractalNoise(x * 0.02, y * 1.3, m_seed, 3);
        Rgb c = mix(m_accent, m_colour, 0.35 + 0.65 * streak);
        const double sheen = std::exp(-std::pow((y - 22.0) / 12.0, 2.0));
        return mix(c, Rgb{255, 255, 255}, 0.35 * sheen);
    }

    Rgb treadPlate(double x, double y) const {
        Rgb base = brushedMetal(x, y);
        const double cell = 12.0;
        const int cx = int(std::floor(x / cell)), cy = int(std::floor(y / cell));
        const double u = x - (cx + 0.5) * cell, v = y - (cy + 0.5) * cell;
        // Diamonds alternate between the two diagonals.
        const bool rising = (cx + cy) % 2 == 0;
        const double along = rising ? (u + v) : (u - v);
        const double across = rising ? (u - v) : (u + v);
        if (std::abs(along) < 7.0 && std::abs(across) < 1.8) {
            const double light = across < 0 ? 1.25 : 0.8;
            return shade(mix(base, m_accent, 0.3), light);
        }
        return shade(base, 0.92);
    }

    Rgb corrugated(double x, double y) const {
        const double wave = std::sin(x * 2.0 * M_PI / 8.0);
        Rgb c = mix(m_accent, m_colour, 0.5 + 0.5 * wave);
        c = shade(c, 0.92 + 0.12 * grain(x, y, 0.1));
        if (wave > 0.92)
            c = mix(c, Rgb{255, 255, 255}, 0.35);
        return c;
    }

    Rgb wood(double x, double y) const {
        const double board = 16.0;
        const int row = int(std::floor(y / board));
        const double inY = y - row * board;
        if (inY < 0.8)
            return shade(m_accent, 0.6);
        const double warp = 5.0 * fractalNoise(x * 0.025 + row * 3.1, inY * 0.12, m_seed, 3);
        const double rings = 0.5 + 0.5 * std::sin((inY + warp + row * 2.3) * 1.7);
        Rgb c = mix(m_colour, m_accent, std::pow(rings, 3.0));
        const double fibre = valueNoise(x * 0.08, y * 3.0, m_seed + 11);
        c = shade(c, (0.92 + 0.12 * fibre) * (0.94 + 0.12 * random01(row, 0, m_seed)));
        return c;
    }

    // Basket weave: squares of three strips, alternately along and across.
    Rgb parquet(double x, double y) const {
        const double square = 16.0;
        const int sx = int(std::floor(x / square)), sy = int(std::floor(y / square));
        const double u = x - sx * square, v = y - sy * square;
        const bool along = (sx + sy) % 2 == 0;
        const double across = along ? v : u;
        const double length = along ? u : v;
        const int strip = int(across / (square / 3.0));
        const double inStrip = across - strip * (square / 3.0);
        if (inStrip < 0.7 || length < 0.7)
            return shade(m_accent, 0.55);
        const double fibre = valueNoise((along ? x : y) * 0.1, (along ? y : x) * 2.5, m_seed + uint32_t(strip));
        const double tone = 0.9 + 0.18 * random01(sx * 3 + strip, sy, m_seed);
        return shade(mix(m_colour, m_accent, 0.45 * fibre), tone);
    }

    Rgb glass(double x, double y) const {
        Rgb c = mix(shade(m_colour, 1.08), shade(m_colour, 0.8), y / 64.0);
        const double diagonal = x + y;
        if (std::abs(diagonal - 40.0) < 6.0)
            c = mix(c, m_accent, 0.45 * (1.0 - std::abs(diagonal - 40.0) / 6.0));
        if (std::abs(diagonal - 54.0) < 2.0)
            c = mix(c, m_accent, 0.3);
        return c;
    }

    Rgb ashlar(double x, double y) const {
        const double height = 14.0;
        const int row = int(std::floor(y / height));
        const double inY = y - row * height;
        // Blocks of a row have lengths between 18 and 34 units.
        double start = -random01(row, 99, m_seed) * 20.0;
        int index = 0;
        double length = 18.0 + 16.0 * random01(row, index, m_seed);
        while (start + length <= x) {
            start += length;
            ++index;
            length = 18.0 + 16.0 * random01(row, index, m_seed);
        }
        const double inX = x - start;
        const double fine = grain(x, y, 0.5);
        if (inX < 1.4 || inY < 1.4)
            return shade(m_accent, 0.85 + 0.2 * fine);
        const double tone = 0.88 + 0.2 * random01(index, row, m_seed + 5);
        return shade(m_colour, tone * (0.9 + 0.2 * fine));
    }

    Rgb marble(double x, double y) const {
        const double turbulence = 6.0 * fractalNoise(x * 0.05, y * 0.05, m_seed, 5);
        const double vein = std::abs(std::sin(x * 0.09 + y * 0.05 + turbulence));
        Rgb c = shade(m_colour, 0.95 + 0.08 * grain(x, y, 0.2));
        if (vein < 0.14)
            c = mix(c, m_accent, 0.85 * (1.0 - vein / 0.14));
        return c;
    }

    Rgb gravel(double x, double y) const {
        const double cell = 6.0;
        const int cx = int(std::floor(x / cell)), cy = int(std::floor(y / cell));
        double best = 1e9, second = 1e9;
        int bestX = 0, bestY = 0;
        for (int j = cy - 1; j <= cy + 1; ++j)
            for (int i = cx - 1; i <= cx + 1; ++i) {
                const double px = (i + 0.15 + 0.7 * random01(i, j, m_seed)) * cell;
                const double py = (j + 0.15 + 0.7 * random01(i, j, m_seed + 1)) * cell;
                const double d = std::hypot(x - px, y - py);
                if (d < best) {
                    second = best;
                    best = d;
                    bestX = i;
                    bestY = j;
                } else if (d < second) {
                    second = d;
                }
            }
        const double edge = second - best;
        Rgb stone = mix(m_colour, m_accent, random01(bestX, bestY, m_seed + 2) * 0.8);
        stone = shade(stone, 1.1 - 0.25 * std::min(best / cell, 1.0));
        if (edge < 0.9)
            return shade(m_accent, 0.55);
        return stone;
    }

    Rgb plaster(double x, double y) const {
        Rgb c = mix(m_colour, m_accent, 0.8 * fractalNoise(x * 0.09, y * 0.09, m_seed, 5));
        return shade(c, 0.96 + 0.08 * random01(int(x * 2.0), int(y * 2.0), m_seed + 9));
    }

    Rgb tile(double x, double y) const {
        const double size = 16.0;
        const double u = std::fmod(x, size), v = std::fmod(y, size);
        if (u < 1.3 || v < 1.3)
            return shade(m_accent, 0.9 + 0.15 * grain(x, y, 0.8));
        const double glaze = 1.06 - 0.1 * ((u + v) / (2.0 * size));
        return shade(m_colour, glaze * (0.97 + 0.05 * grain(x, y, 0.3)));
    }

    Rgb roofTile(double x, double y) const {
        const double height = 10.0, width = 14.0;
        const int row = int(std::floor(y / height));
        const double shifted = x + (row % 2 ? width / 2.0 : 0.0);
        const int column = int(std::floor(shifted / width));
        const double u = shifted - column * width, v = y - row * height;
        // Rounded lower edges: the tile's bottom follows an arc.
        const double arc = 2.0 * std::pow((u - width / 2.0) / (width / 2.0), 2.0);
        if (v > height - arc || u < 0.6)
            return shade(m_accent, 0.7);
        const double tone = 0.9 + 0.15 * random01(column, row, m_seed);
        return shade(m_colour, tone * (1.08 - 0.3 * (v / height)) * (0.94 + 0.1 * grain(x, y, 0.6)));
    }

    Rgb fabric(double x, double y) const {
        const double thread = 2.0;
        const int ix = int(std::floor(x / thread)), iy = int(std::floor(y / thread));
        const bool warp = (ix + iy) % 2 == 0;
        const double across = warp ? (x - ix * thread) : (y - iy * thread);
        const double round = std::sin(across / thread * M_PI);
        Rgb c = mix(m_accent, m_colour, 0.3 + 0.7 * round);
        return shade(c, 0.93 + 0.14 * grain(x, y, 0.15));
    }

    Rgb insulation(double x, double y) const {
        const double fibres = fractalNoise(x * 0.6, y * 0.08, m_seed, 4);
        const double tufts = fractalNoise(x * 0.07, y * 0.07, m_seed + 13, 3);
        Rgb c = mix(m_accent, m_colour, 0.25 + 0.75 * fibres);
        return shade(c, 0.85 + 0.3 * tufts);
    }

    Rgb paint(double x, double y) const {
        const double sheen = 0.5 + 0.5 * std::cos((x - y) / 90.0 * M_PI);
        Rgb c = mix(shade(m_colour, 0.94), m_accent, 0.12 * sheen);
        return shade(c, 0.985 + 0.03 * random01(int(x * 2.0), int(y * 2.0), m_seed));
    }

    Rgb grass(double x, double y) const {
        const double blades = fractalNoise(x * 0.7, y * 0.09, m_seed, 3);
        const double patches = fractalNoise(x * 0.05, y * 0.05, m_seed + 17, 3);
        Rgb c = mix(m_accent, m_colour, blades * 1.3 - 0.1);
        return shade(c, 0.85 + 0.35 * patches);
    }

    Rgb water(double x, double y) const {
        Rgb c = mix(shade(m_colour, 1.1), shade(m_colour, 0.75), y / 64.0);
        const double ripple = std::sin(y * 0.9 + 5.0 * fractalNoise(x * 0.06, y * 0.1, m_seed, 3));
        if (ripple > 0.8)
            c = mix(c, m_accent, (ripple - 0.8) * 3.0);
        return c;
    }

    RenderTexture m_texture;
    Rgb m_colour;
    Rgb m_accent;
    uint32_t m_seed;
};

unsigned char channel(double value) { return static_cast<unsigned char>(std::clamp(std::lround(value), 0L, 255L)); }

}  // namespace

wxImage paintRenderMaterial(const RenderMaterial& material, int edge) {
    edge = std::max(edge, 1);
    wxImage image(edge, edge, false);
    const TexturePainter painter(material);
    const double unit = 64.0 / edge;
    // Two samples per pixel and axis smooth the edges of joints and veins.
    const double offsets[] = {0.25, 0.75};
    for (int py = 0; py < edge; ++py)
        for (int px = 0; px < edge; ++px) {
            double r = 0, g = 0, b = 0;
            for (double oy : offsets)
                for (double ox : offsets) {
                    const Rgb c = painter.at((px + ox) * unit, (py + oy) * unit);
                    r += c.r;
                    g += c.g;
                    b += c.b;
                }
            image.SetRGB(px, py, channel(r / 4), channel(g / 4), channel(b / 4));
        }
    return image;
}

}  // namespace ca
