#pragma once
// Lengths as text in the drawing's notations (LUNITS), and back.
#include "OdString.h"

namespace OdDb {
enum LUnits {
    kScientific = 1,    // 1.5500E+01
    kDecimal = 2,       // 15.5000
    kEngineering = 3,   // 1'-3.5000"   (value in inches)
    kArchitectural = 4, // 1'-3 1/2"    (value in inches)
    kFractional = 5,    // 15 1/2
};
}  // namespace OdDb

// How lengths are written: the header variables LUNITS, LUPREC, DIMZIN and UNITMODE.
struct OdLengthFormat {
    int lunits = OdDb::kDecimal;
    // Decimal places; for architectural and fractional the denominator is 2^luprec. 0-8.
    int luprec = 4;
    // Decimal: bit 4 suppresses the leading zero (.5), bit 8 trailing zeros (1.5 not 1.5000).
    // Feet and inches (lowest two bits): 0 suppresses zero feet and exactly zero inches,
    // 1 writes both, 2 writes zero feet and suppresses zero inches, 3 writes zero inches and
    // suppresses zero feet. Bits 4 and 8 also apply to the decimal inches of engineering.
    int dimzin = 0;
    // 1 writes the compact form that can be typed back: 1'6-1/2", 15-1/2.
    int unitmode = 0;
};

class OdUnitsFormatter {
public:
    // Throws OdError(eInvalidInput) for LUNITS outside 1-5, LUPREC outside 0-8, a value that
    // is not finite.
    static OdString formatL(double value, const OdLengthFormat& format);
    static OdString formatL(double value, int lunits, int luprec, int dimzin = 0, int unitmode = 0);

    // Parses every notation that formatL writes, whatever the current LUNITS, plus plain
    // numbers with sign and exponent: 1'-6 1/2", 1'6-1/2", 1'-6.5", 18.5, 1.85E+01, 3/4",
    // 18 1/2, 18-1/2, 2'. Feet and inch notations give inches. Leading and trailing blanks
    // are ignored. Anything else throws OdError(eInvalidInput).
    static double unformatL(const OdString& text);
};
