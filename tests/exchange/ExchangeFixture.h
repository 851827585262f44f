#pragma once
// A library holding one object of every exchanged kind with every field set away from its
// default, and helpers to move documents between libraries.
#include <memory>
#include <string>

#include <vantlib/Exchange.h>

#include "support.h"

namespace vltest {

class ExchangeTest : public ::testing::Test {
protected:
    // Fills `library` with the full sample content (lengths in millimetres).
    static void fillSample(const std::shared_ptr<Library>& library);
    std::shared_ptr<Library> newLibrary(const char* name, OdDb::UnitsValue unit = OdDb::kUnitsMillimeters) {
        return Library::create(dir.file(name), unit);
    }

    TempDir dir;
};

}  // namespace vltest
