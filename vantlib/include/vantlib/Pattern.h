#pragma once
// Hatch pattern of a material in section or elevation view.
#include <cstdint>

#include <OdString.h>

namespace vantlib {

class Pattern {
public:
    enum Type : uint32_t {
        kNone = 0,         // no hatch
        kUserDefined = 1,  // parallel lines (name "_USER"): space, angle, cross
        kPredefined = 2,   // from the host's standard catalogue (name "SOLID" is a solid fill)
        kCustom = 3,       // from a custom pattern file
    };

    Type type() const { return m_type; }
    void set_type(Type type) { m_type = type; }
    const OdString& name() const { return m_name; }
    void set_name(const OdString& name) { m_name = name; }
    bool isSolid() const { return m_type == kPredefined && m_name.iCompare(OdString(L"SOLID")) == 0; }

    double scale() const { return m_scale; }
    void set_scale(double scale) { m_scale = scale; }
    double space() const { return m_space; }
    void set_space(double space) { m_space = space; }
    // Radians.
    double angle() const { return m_angle; }
    void set_angle(double radians) { m_angle = radians; }
    bool cross() const { return m_cross; }
    void set_cross(bool cross) { m_cross = cross; }
    bool annotative() const { return m_annotative; }
    void set_annotative(bool annotative) { m_annotative = annotative; }

    // Background colour as the drawing's packed colour value; absent means no background.
    bool has_background_color() const { return m_hasBackground; }
    uint32_t background_color() const { return m_background; }
    void set_background_color(uint32_t color) { m_background = color; m_hasBackground = true; }
    void clear_background_color() { m_background = 0; m_hasBackground = false; }

    friend bool operator==(const Pattern& a, const Pattern& b) {
        return a.m_type == b.m_type && a.m_name == b.m_name && a.m_scale == b.m_scale && a.m_space == b.m_space &&
               a.m_angle == b.m_angle && a.m_cross == b.m_cross && a.m_annotative == b.m_annotative &&
               a.m_hasBackground == b.m_hasBackground && a.m_background == b.m_background;
    }
    friend bool operator!=(const Pattern& a, const Pattern& b) { return !(a == b); }

private:
    Type m_type = kNone;
    OdString m_name;
    double m_scale = 1.0;
    double m_space = 1.0;
    double m_angle = 0.0;
    bool m_cross = false;
    bool m_annotative = false;
    bool m_hasBackground = false;
    uint32_t m_background = 0;
};

}  // namespace vantlib
