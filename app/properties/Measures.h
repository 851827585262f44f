#pragma once
// The measure of a value definition: what its real number measures. The library stores the
// measure as a key; the definition pane offers it as a choice whose index is the Measure.
#include <wx/string.h>

#include <OdString.h>

namespace vl_app {

enum Measure : int {
    kNoMeasure = 0,
    kLengthMeasure = 1,
    kAreaMeasure = 2,
    kVolumeMeasure = 3,
    kMassMeasure = 4,
};

constexpr int kMeasureCount = 5;

// The measure of a stored key ("LENGTH", "AREA", "VOLUME", "MASS"; compared exactly); no
// measure for an empty or unknown key.
Measure getMeasure(const OdString& key);
// The stored key of a measure; empty for none. Throws OdError_InvalidIndex outside 0-4.
OdString measureKey(int measure);
// The translated label of a measure, as the Measure choice shows it; empty for none. Throws
// OdError_InvalidIndex outside 0-4.
wxString measureLabel(int measure);

}  // namespace vl_app
