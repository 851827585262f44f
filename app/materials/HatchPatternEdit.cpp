#include "app/materials/HatchPatternEdit.h"

#include <cmath>

#include <OdStringWx.h>

namespace vl_app {

namespace {
constexpr double kPi = 3.141592653589793;

wxString formatNumber(double value) { return wxString::Format("%g", value); }

bool positiveNumber(const wxString& text) {
    double value = 0.0;
    return parseNumber(text, value) && value > 0.0;
}
}  // namespace

EPatternType patternType(const vantlib::Pattern& pattern) {
    switch (pattern.type()) {
    case vantlib::Pattern::kUserDefined: return kPatternLinear;
    case vantlib::Pattern::kPredefined: return pattern.isSolid() ? kPatternSolid : kPatternPredefined;
    case vantlib::Pattern::kCustom: return kPatternCustom;
    default: return kPatternNone;
    }
}

void setPatternType(vantlib::Pattern& pattern, int type) {
    switch (type) {
    case kPatternSolid:
    case kPatternPredefined: pattern.set_type(vantlib::Pattern::kPredefined); break;
    case kPatternLinear: pattern.set_type(vantlib::Pattern::kUserDefined); break;
    case kPatternCustom: pattern.set_type(vantlib::Pattern::kCustom); break;
    default: pattern.set_type(vantlib::Pattern::kNone); break;
    }
}

bool parseNumber(const wxString& text, double& value) {
    const wxString trimmed = wxString(text).Strip(wxString::both);
    if (trimmed.empty())
        return false;
    double parsed = 0.0;
    if (!trimmed.ToDouble(&parsed) && !trimmed.ToCDouble(&parsed))
        return false;
    if (!std::isfinite(parsed))
        return false;
    value = parsed;
    return true;
}

HatchPatternEdit HatchPatternEdit::fromPattern(const vantlib::Pattern& pattern) {
    HatchPatternEdit edit;
    edit.type = patternType(pattern);
    if (edit.type == kPatternPredefined || edit.type == kPatternCustom)
        edit.name = toWx(pattern.name());
    edit.scaleText = formatNumber(pattern.scale());
    edit.spaceText = formatNumber(pattern.space());
    edit.angleText = formatNumber(pattern.angle() * 180.0 / kPi);
    edit.cross = pattern.cross();
    return edit;
}

EHatchStatus HatchPatternEdit::status() const {
    if (needsName() && name.empty())
        return kHatchNoPattern;
    if (showsScale() && !positiveNumber(scaleText))
        return kHatchBadScale;
    if (showsSpacing() && !positiveNumber(spaceText))
        return kHatchBadSpacing;
    double angle = 0.0;
    if (showsAngle() && !parseNumber(angleText, angle))
        return kHatchBadAngle;
    return kHatchValid;
}

bool HatchPatternEdit::store(vantlib::Pattern& pattern) const {
    if (status() != kHatchValid)
        return false;
    setPatternType(pattern, type);
    switch (type) {
    case kPatternSolid: pattern.set_name(OdString(L"SOLID")); break;
    case kPatternLinear: pattern.set_name(OdString(L"_USER")); break;
    case kPatternPredefined:
    case kPatternCustom: pattern.set_name(toOd(name)); break;
    default: pattern.set_name(OdString()); break;
    }
    double value = 0.0;
    if (showsAngle() && parseNumber(angleText, value))
        pattern.set_angle(value * kPi / 180.0);
    // Lines are measured by their spacing, which takes the scale's place for them.
    if (showsSpacing() && parseNumber(spaceText, value)) {
        pattern.set_space(value);
        pattern.set_scale(value);
    } else if (showsScale() && parseNumber(scaleText, value)) {
        pattern.set_scale(value);
    }
    pattern.set_cross(cross);
    return true;
}

}  // namespace vl_app
