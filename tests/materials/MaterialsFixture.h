#pragma once
// A drawing with an embedded project library and a central library file in a fresh folder, the
// host's active drawing while a test runs, and helpers that act on the materials dialog as a
// user does: selecting rows, typing, choosing commands.
#include <filesystem>
#include <memory>
#include <string>

#include <unistd.h>

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/listctrl.h>
#include <wx/textctrl.h>
#include <wx/xrc/xmlres.h>

#include <CaApp.h>
#include <OdDbDatabase.h>
#include <OdStringWx.h>

#include <vantlib/vantlib.h>

#include <vl_db/DbPreferencesProvider.h>
#include <vl_db/DocumentLibraries.h>

#include "TwoListDialogFixture.h"

#include "app/materials/DlgMaterials.h"

namespace vl_materials_test {

namespace fs = std::filesystem;

using vl_test::od;

class MaterialsFixture : public vl_test::TwoListDialogFixture<vl_app::DlgMaterials> {
protected:
    // A stored material with a predefined section hatch ("" for none) and optionally a class.
    QcSmartPtr<vantlib::Material> material(const std::shared_ptr<vantlib::Library>& library, const wchar_t* name,
                                           const wchar_t* pattern = L"DIAG", const wchar_t* className = L"") {
        auto material = vantlib::Material::create(name);
        if (*pattern) {
            material->section_pattern().set_type(vantlib::Pattern::kPredefined);
            material->section_pattern().set_name(pattern);
        }
        if (*className)
            material->set_type(vantlib::MaterialType::create(className));
        return library->save(material);
    }

    QcSmartPtr<vantlib::Material> stored(const std::shared_ptr<vantlib::Library>& library, const wchar_t* name) {
        return library->get<vantlib::Material>(vantlib::NameKey(name));
    }

    // Opens the dialog the way ShowModal would, without a modal loop.
    vl_app::DlgMaterials& open(vl_db::EMode mode = vl_db::kModeManager, vl_db::EDbType type = vl_db::kDbNone,
                               unsigned id = 0) {
        dialog = std::make_unique<vl_app::DlgMaterials>(nullptr, libs, mode, type, id);
        dialog->Show();
        return *dialog;
    }
};

}  // namespace vl_materials_test
