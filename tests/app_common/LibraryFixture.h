#pragma once
// A drawing with an embedded project library and a central library file in a fresh folder; the
// drawing is the host's active drawing while a test runs.
#include <filesystem>
#include <initializer_list>
#include <memory>
#include <string>

#include <unistd.h>

#include <gtest/gtest.h>
#include <wx/arrstr.h>

#include <CaApp.h>
#include <OdDbDatabase.h>

#include <vantlib/vantlib.h>

#include <vl_db/DbPreferencesProvider.h>
#include <vl_db/DocumentLibraries.h>

#include "DrawingWithLibraries.h"

namespace vl_app_test {

namespace fs = std::filesystem;

using vl_test::od;

inline wxArrayString strings(std::initializer_list<const char*> texts) {
    wxArrayString result;
    for (const char* text : texts)
        result.Add(text);
    return result;
}

class LibraryFixture : public vl_test::DrawingWithLibraries {
protected:


    // A stored material with a section hatch of the host's catalogue ("" for none).
    QcSmartPtr<vantlib::Material> material(const std::shared_ptr<vantlib::Library>& library, const wchar_t* name,
                                           const wchar_t* pattern = L"DIAG", double scale = 1.0) {
        auto material = vantlib::Material::create(name);
        if (*pattern) {
            material->section_pattern().set_type(vantlib::Pattern::kPredefined);
            material->section_pattern().set_name(pattern);
            material->section_pattern().set_scale(scale);
        }
        return library->save(material);
    }


};

}  // namespace vl_app_test
