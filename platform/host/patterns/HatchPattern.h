#pragma once
// A hatch pattern as the .pat text format defines it: a named set of line families, each an
// endless set of parallel, optionally dashed lines.
#include <vector>

#include "OdString.h"

namespace ca {

// Pattern types as drawings store them.
enum EHatchPatternType {
    kUserDefined = 0,    // parallel lines with a spacing and angle, named "_USER"
    kPreDefined = 1,     // from the host's own catalogue file (includes the solid fill "SOLID")
    kCustomDefined = 2,  // from .pat files in the configured pattern folders
};

// Name of the user-defined line pattern and of the solid fill.
extern const wchar_t* const kUserPatternName;
extern const wchar_t* const kSolidPatternName;

// Units the pattern's numbers are written in, from a ";%UNITS=" line; millimetres unless said.
enum class EPatternUnits { kMillimeters, kInches };

// Whether a pattern scales with the model (";%TYPE=MODEL") or with the sheet (the default).
enum class EPatternKind { kDrafting, kModel };

// One line of a definition: `angle, x-origin, y-origin, delta-x, delta-y [, dash...]`.
// Line n of the family passes through origin + n * (deltaX along the line, deltaY across it).
// A positive dash draws, a negative one skips, zero is a dot; no dashes means continuous lines.
struct PatternLineFamily {
    double angleDegrees = 0.0;
    double originX = 0.0;
    double originY = 0.0;
    double deltaX = 0.0;
    double deltaY = 0.0;
    std::vector<double> dashes;

    bool isContinuous() const;
    // Length of one repetition of the dash sequence (sum of the absolute dash lengths).
    double dashPeriod() const;
};

struct HatchPattern {
    OdString name;
    OdString description;
    std::vector<PatternLineFamily> lines;
    EPatternUnits units = EPatternUnits::kMillimeters;
    EPatternKind kind = EPatternKind::kDrafting;
    OdString sourceFile;  // file the pattern was read from, for messages
    int sourceLine = 0;   // line of its *NAME header

    bool isSolidFill() const;
};

bool isSolidFillName(const OdString& name);
bool isUserPatternName(const OdString& name);

}  // namespace ca
