#pragma once
// Pictures of hatch patterns: the user-defined line pattern, the catalogue's patterns and the
// solid fill, drawn anti-aliased into bitmaps of any size.
#include <wx/bitmap.h>
#include <wx/colour.h>
#include <wx/gdicmn.h>
#include <wx/string.h>

#include "OdUnits.h"

class OdDbDatabase;

namespace ca {

// Draws a pattern over the whole of `target` (a valid bitmap):
// - `patternType` kUserDefined: parallel lines `scale` drawing units apart at `angleRadians`,
//   crossed by a second set at right angles when `doubleHatch`; the drawing units give their
//   real size (undefined units count as millimetres).
// - kPreDefined / kCustomDefined: the catalogue pattern `name` (any case) at `scale`, rotated by
//   `angleRadians`; "SOLID" fills the bitmap with the foreground colour.
// The picture shows a few repetitions of the pattern at scale 1 whatever the bitmap size (a
// coarse pattern fewer than a fine one); `scale` then enlarges or shrinks the pattern as it
// would in the drawing. Features finer than two pixels are drawn at two pixels.
// Throws OdError: eKeyNotFound for an unknown name, eInvalidInput for an unknown type, a scale
// that is not a positive number, or an invalid bitmap.
void drawBitmap(wxBitmap& target, const wxString& name, int patternType, bool doubleHatch, double scale,
                double angleRadians, const wxColour& background, const wxColour& foreground,
                OdDb::UnitsValue drawingUnits = OdDb::kUnitsMillimeters);

}  // namespace ca

namespace wxg {

class PatternPreview {
public:
    // `db` only supplies the drawing's length units (INSUNITS); null counts as millimetres.
    PatternPreview(OdDbDatabase* db, const wxSize& size);
    PatternPreview(OdDb::UnitsValue drawingUnits, const wxSize& size);

    // A new bitmap of the previewer's size; see ca::drawBitmap. Throws OdError as it does.
    wxBitmap getPreview(const wxString& name, int patternType, bool doubleHatch, double scale,
                        const wxColour& background, const wxColour& foreground, double angleRadians = 0.0) const;

    const wxSize& size() const { return m_size; }
    OdDb::UnitsValue drawingUnits() const { return m_units; }

private:
    OdDb::UnitsValue m_units;
    wxSize m_size;
};

}  // namespace wxg
