#include "app/properties/Measures.h"

#include <wx/intl.h>

#include <OdError.h>

namespace vl_app {

namespace {

const wchar_t* const kMeasureKeys[kMeasureCount] = {L"", L"LENGTH", L"AREA", L"VOLUME", L"MASS"};

void checkIndex(int measure) {
    if (measure < 0 || measure >= kMeasureCount)
        throw OdError_InvalidIndex();
}

}  // namespace

Measure getMeasure(const OdString& key) {
    for (int measure = 0; measure < kMeasureCount; ++measure)
        if (key == kMeasureKeys[measure])
            return Measure(measure);
    return kNoMeasure;
}

OdString measureKey(int measure) {
    checkIndex(measure);
    return OdString(kMeasureKeys[measure]);
}

wxString measureLabel(int measure) {
    checkIndex(measure);
    // Translated once, on first use: the module's language is set before any dialog opens.
    static const wxString labels[kMeasureCount] = {wxString(), _("Length"), _("Area"), _("Volume"), _("Mass")};
    return labels[measure];
}

}  // namespace vl_app
