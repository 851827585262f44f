#pragma once
// Lets the data module show its texts in the user's language, through the catalogue that the
// user interface loaded.
#include <vantlib/Translations.h>

namespace vl_app {

class VantlibTranslations : public vantlib::Translations {
public:
    // False, with `out` unchanged, when there are no translations or none for `text`.
    bool translate(OdString& out, const OdString& text) override;
};

}  // namespace vl_app
