#pragma once
// Translation provider for the texts the data module produces for users.
#include <OdString.h>

namespace vantlib {

class Translations {
public:
    virtual ~Translations() = default;
    // Puts the translation of `text` into `out`; false when there is none.
    virtual bool translate(OdString& out, const OdString& text) = 0;

    // Installs the provider (not owned); null removes it.
    static void set(Translations* provider);
    static Translations* get();
};

// `text` translated by the installed provider, or `text` itself.
OdString translate(const OdString& text);

}  // namespace vantlib
