#pragma once
// The values of the hatch pattern dialog apart from its widgets: the kind of pattern, the
// chosen name and the texts of the number fields, their validation, and how they are written
// back into a material's pattern.
#include <wx/string.h>

#include <vantlib/Pattern.h>

namespace vl_app {

// The dialog's kinds of pattern, in the order of its type choice.
enum EPatternType : int {
    kPatternNone = 0,        // no hatch
    kPatternSolid = 1,       // the predefined solid fill "SOLID"
    kPatternLinear = 2,      // user-defined parallel lines "_USER": spacing, angle, cross
    kPatternPredefined = 3,  // a pattern of the host's own catalogue: scale, angle
    kPatternCustom = 4,      // a pattern from the configured pattern files: scale, angle
};

// The kind a stored pattern is shown as; a predefined solid fill counts as kPatternSolid.
EPatternType patternType(const vantlib::Pattern& pattern);
// Sets the stored type that a kind of the dialog stands for.
void setPatternType(vantlib::Pattern& pattern, int type);

// Which field of the dialog holds a value that cannot be stored.
enum EHatchStatus : int {
    kHatchValid = 0,
    kHatchNoPattern = 1,   // a catalogue kind without a chosen pattern
    kHatchBadScale = 2,    // not a positive number
    kHatchBadSpacing = 3,  // not a positive number
    kHatchBadAngle = 4,    // not a number
};

struct HatchPatternEdit {
    EPatternType type = kPatternNone;
    wxString name;  // the chosen catalogue pattern
    wxString scaleText;
    wxString spaceText;
    wxString angleText;  // degrees
    bool cross = false;

    static HatchPatternEdit fromPattern(const vantlib::Pattern& pattern);

    bool showsScale() const { return type == kPatternPredefined || type == kPatternCustom; }
    bool showsSpacing() const { return type == kPatternLinear; }
    bool showsAngle() const { return type == kPatternLinear || showsScale(); }
    bool needsName() const { return showsScale(); }

    EHatchStatus status() const;
    // Writes the values into `pattern`; false, leaving it untouched, while status() is not valid.
    bool store(vantlib::Pattern& pattern) const;
};

// A number typed by the user, in the user's notation or with a decimal point; false for
// anything else (trailing text included).
bool parseNumber(const wxString& text, double& value);

}  // namespace vl_app
