// Appearance page of the materials dialog: the section and elevation hatches with their
// numbers, background and layer, and the render material of 3D views.
#include <wx/bmpbuttn.h>
#include <wx/bmpcbox.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/colordlg.h>
#include <wx/combobox.h>
#include <wx/dcmemory.h>
#include <wx/image.h>
#include <wx/listctrl.h>
#include <wx/panel.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/wupdlock.h>
#include <wx/xrc/xmlres.h>

#include <HatchPattern.h>
#include <OdCmColor.h>
#include <OdStringWx.h>
#include <PatternCatalogue.h>
#include <RenderMaterialLibrary.h>

#include <vantlib/Layer.h>

#include "app/common/Layers.h"
#include "app/common/ListHelpers.h"
#include "app/common/Previews.h"
#include "app/materials/DlgHatchPattern.h"
#include "app/materials/DlgMaterials.h"
#include "app/materials/DlgRenderMaterial.h"
#include "app/materials/HatchPatternEdit.h"

namespace vl_app {

namespace {
constexpr double kPi = 3.141592653589793;

vantlib::HatchView hatchView(vl_db::EHatchViewType view) {
    return view == vl_db::kHatchElevation ? vantlib::kElevationView : vantlib::kSectionView;
}

// The XRC name of a control of the section or elevation group, e.g. "SECT_HATCH_TYPE".
wxString controlName(vl_db::EHatchViewType view, const char* format) {
    return wxString::Format(format, view == vl_db::kHatchElevation ? "ELEV" : "SECT");
}

// Pattern names a kind of hatch offers.
wxArrayString patternNames(int type) {
    switch (type) {
    case kPatternSolid:
    case kPatternLinear: {
        wxArrayString names;
        names.Add(toWx(type == kPatternSolid ? ca::kSolidPatternName : ca::kUserPatternName));
        return names;
    }
    case kPatternPredefined: {
        wxArrayString names = ca::obtainListOfPatterns(ca::kPreDefined);
        const int solid = names.Index(toWx(ca::kSolidPatternName), false);
        if (solid != wxNOT_FOUND)
            names.RemoveAt(size_t(solid));
        return names;
    }
    case kPatternCustom:
        return ca::obtainListOfPatterns(ca::kCustomDefined);
    default:
        return wxArrayString();
    }
}

wxBitmap colourSwatch(const wxColour& colour, int edge) {
    wxBitmap swatch(edge, edge);
    wxMemoryDC dc(swatch);
    dc.SetBackground(wxBrush(colour));
    dc.Clear();
    dc.SetPen(*wxBLACK_PEN);
    dc.SetBrush(*wxTRANSPARENT_BRUSH);
    dc.DrawRectangle(0, 0, edge, edge);
    return swatch;
}
}  // namespace

void DlgMaterials::onSectHatch(wxCommandEvent&) { openHatchDialog(vl_db::kHatchSection); }
void DlgMaterials::onElevHatch(wxCommandEvent&) { openHatchDialog(vl_db::kHatchElevation); }
void DlgMaterials::onSectHatchType(wxCommandEvent&) { chooseHatchType(vl_db::kHatchSection); }
void DlgMaterials::onElevHatchType(wxCommandEvent&) { chooseHatchType(vl_db::kHatchElevation); }
void DlgMaterials::onSectHatchName(wxCommandEvent&) { chooseHatchName(vl_db::kHatchSection); }
void DlgMaterials::onElevHatchName(wxCommandEvent&) { chooseHatchName(vl_db::kHatchElevation); }
void DlgMaterials::onSectBkgColorChoice(wxCommandEvent&) { chooseBackground(vl_db::kHatchSection); }
void DlgMaterials::onElevBkgColorChoice(wxCommandEvent&) { chooseBackground(vl_db::kHatchElevation); }

void DlgMaterials::onSectHatchCross(wxCommandEvent& event) {
    const bool cross = event.IsChecked();
    changeMaterial([&](vantlib::Material& material) { material.section_pattern().set_cross(cross); });
    updateHatch(vl_db::kHatchSection);
    updateThumbnail();
}

void DlgMaterials::onElevHatchCross(wxCommandEvent& event) {
    const bool cross = event.IsChecked();
    changeMaterial([&](vantlib::Material& material) { material.elevation_pattern().set_cross(cross); });
    updateHatch(vl_db::kHatchElevation);
}

void DlgMaterials::onSectHatchAnnotative(wxCommandEvent& event) {
    const bool annotative = event.IsChecked();
    changeMaterial([&](vantlib::Material& material) { material.section_pattern().set_annotative(annotative); });
}

void DlgMaterials::onElevHatchAnnotative(wxCommandEvent& event) {
    const bool annotative = event.IsChecked();
    changeMaterial([&](vantlib::Material& material) { material.elevation_pattern().set_annotative(annotative); });
}

void DlgMaterials::openHatchDialog(vl_db::EHatchViewType view) {
    if (!m_material || !vl_db::writable(m_libs, m_dbType))
        return;
    saveMaterial();
    try {
        vantlib::Pattern pattern = m_material->pattern(hatchView(view));
        DlgHatchPattern dialog(this, pattern, view);
        if (dialog.ShowModal() != wxID_OK)
            return;
        changeMaterial([&](vantlib::Material& material) { material.set_pattern(hatchView(view), pattern); });
    } catch (const std::exception& error) {
        reportError(error);
    }
    updateHatch(view);
    updateThumbnail();
}

void DlgMaterials::chooseHatchType(vl_db::EHatchViewType view) {
    const int type = XRCCTRL(*this, controlName(view, "%s_HATCH_TYPE"), wxChoice)->GetSelection();
    const wxArrayString names = patternNames(type);
    wxString& lastName = view == vl_db::kHatchElevation ? m_elevHatchName : m_sectHatchName;
    // Switching back to a catalogue kind offers the pattern the user chose there before.
    wxString name;
    if (!names.empty())
        name = names.Index(lastName, false) != wxNOT_FOUND ? lastName : names[0];
    changeMaterial([&](vantlib::Material& material) {
        vantlib::Pattern& pattern = material.pattern(hatchView(view));
        setPatternType(pattern, type);
        pattern.set_name(toOd(name));
    });
    updateHatch(view);
    updateThumbnail();
}

void DlgMaterials::chooseHatchName(vl_db::EHatchViewType view) {
    const wxString name = XRCCTRL(*this, controlName(view, "%s_HATCH_NAME"), wxChoice)->GetStringSelection();
    if (name.empty())
        return;
    (view == vl_db::kHatchElevation ? m_elevHatchName : m_sectHatchName) = name;
    changeMaterial([&](vantlib::Material& material) { material.pattern(hatchView(view)).set_name(toOd(name)); });
    updateHatch(view);
    updateThumbnail();
}

void DlgMaterials::chooseBackground(vl_db::EHatchViewType view) {
    auto* combo = XRCCTRL(*this, controlName(view, "ID_%s_BACKGROUND_COLOR"), wxBitmapComboBox);
    const int selection = combo->GetSelection();
    const int chooser = int(combo->GetCount()) - 1;
    if (selection == 0) {
        changeMaterial([&](vantlib::Material& material) { material.pattern(hatchView(view)).clear_background_color(); });
    } else if (selection == chooser && m_material) {
        wxColourData data;
        const vantlib::Pattern& pattern = m_material->pattern(hatchView(view));
        if (pattern.has_background_color()) {
            const uint32_t rgb = pattern.background_color();
            data.SetColour(wxColour((rgb >> 16) & 0xFF, (rgb >> 8) & 0xFF, rgb & 0xFF));
        }
        wxColourDialog dialog(this, &data);
        if (dialog.ShowModal() == wxID_OK) {
            const wxColour colour = dialog.GetColourData().GetColour();
            const uint32_t rgb = OdCmColor::fromRGB(colour.Red(), colour.Green(), colour.Blue()).rgb();
            changeMaterial([&](vantlib::Material& material) { material.pattern(hatchView(view)).set_background_color(rgb); });
        }
    }
    updateHatch(view);
}

void DlgMaterials::editHatchNumber(vl_db::EHatchViewType view, int field, const wxString& text) {
    static const char* const formats[] = {"TEXT_%s_HATCH_SCALE", "TEXT_%s_HATCH_SPACE", "TEXT_%s_HATCH_ANGLE"};
    auto* control = XRCCTRL(*this, controlName(view, formats[field]), wxTextCtrl);
    double value = 0.0;
    // Scale and spacing must be positive; any number is an angle.
    const bool valid = parseNumber(text, value) && (field == 2 || value > 0.0);
    control->SetBackgroundColour(valid ? wxNullColour : wxColour(255, 210, 210));
    control->SetToolTip(valid ? (field == 0 ? _("Scale") : field == 1 ? _("Spacing") : _("Angle"))
                              : _("Please enter a number greater than zero."));
    control->Refresh();
    if (!valid)
        return;
    changeMaterial([&](vantlib::Material& material) {
        vantlib::Pattern& pattern = material.pattern(hatchView(view));
        if (field == 0)
            pattern.set_scale(value);
        else if (field == 1)
            pattern.set_space(value);
        else
            pattern.set_angle(value * kPi / 180.0);
    });
    const bool wasUpdating = m_updating;
    m_updating = true;
    setBitmap(FindWindow(XRCID(controlName(view, "BTN_%s_HATCH"))),
              hatchPreview(m_material, view, wxSize(56, 56)));
    m_updating = wasUpdating;
    if (view == vl_db::kHatchSection)
        updateThumbnail();
}

void DlgMaterials::editLayer(vl_db::EHatchViewType view, const wxString& text) {
    const auto library = lib();
    changeMaterial([&](vantlib::Material& material) {
        QcSmartPtr<vantlib::Layer> layer;
        if (!text.empty()) {
            layer = library->get<vantlib::Layer>(vantlib::NameKey(toOd(text)));
            if (!layer)
                layer = vantlib::Layer::create(toOd(text));
        }
        vantlib::BimAsset* bim = material.bim_asset(true);
        if (view == vl_db::kHatchElevation)
            bim->set_layer_elevation(layer);
        else
            bim->set_layer(layer);
    });
    try {
        if (vl_db::writable(library))
            library->purge<vantlib::Layer>();
    } catch (const std::exception& error) {
        reportError(error);
    }
}

void DlgMaterials::updateAppearance() {
    const bool wasUpdating = m_updating;
    m_updating = true;
    m_sectHatchName = m_material ? toWx(m_material->section_pattern().name()) : wxString();
    m_elevHatchName = m_material ? toWx(m_material->elevation_pattern().name()) : wxString();
    for (const auto view : {vl_db::kHatchSection, vl_db::kHatchElevation}) {
        updateHatch(view);
        updateLayer(view);
    }
    updateRenderMat();
    m_updating = wasUpdating;
}

void DlgMaterials::updateHatch(vl_db::EHatchViewType view) {
    const bool wasUpdating = m_updating;
    m_updating = true;
    const vantlib::Pattern pattern = m_material ? m_material->pattern(hatchView(view)) : vantlib::Pattern();
    const HatchPatternEdit edit = HatchPatternEdit::fromPattern(pattern);

    const wxBitmap preview = m_material ? hatchPreview(m_material, view, wxSize(56, 56)) : wxBitmap();
    setBitmap(FindWindow(XRCID(controlName(view, "BTN_%s_HATCH"))),
              preview.IsOk() ? preview : wxXmlResource::Get()->LoadBitmap("BmpEmptyMat_32"));

    auto* types = XRCCTRL(*this, controlName(view, "%s_HATCH_TYPE"), wxChoice);
    if (types->IsEmpty())
        for (const wxString& label : {_("None"), _("Solid"), _("Linear"), _("Predefined"), _("Custom")})
            types->Append(label);
    types->SetSelection(m_material ? int(edit.type) : wxNOT_FOUND);

    auto* names = XRCCTRL(*this, controlName(view, "%s_HATCH_NAME"), wxChoice);
    names->Set(patternNames(edit.type));
    if (!names->SetStringSelection(toWx(pattern.name())) && !toWx(pattern.name()).empty() && edit.needsName()) {
        // A pattern the catalogue no longer has stays visible as the material's choice.
        names->Append(toWx(pattern.name()));
        names->SetStringSelection(toWx(pattern.name()));
    }
    names->Enable(edit.needsName());

    const struct {
        const char* label;
        const char* field;
        bool shown;
        wxString text;
    } numbers[] = {
        {"STAT_%s_HATCH_SCALE", "TEXT_%s_HATCH_SCALE", edit.showsScale(), edit.scaleText},
        {"STAT_%s_HATCH_SPACE", "TEXT_%s_HATCH_SPACE", edit.showsSpacing(), edit.spaceText},
        {"STAT_%s_HATCH_ANGLE", "TEXT_%s_HATCH_ANGLE", edit.showsAngle(), edit.angleText},
    };
    for (const auto& number : numbers) {
        FindWindow(XRCID(controlName(view, number.label)))->Show(number.shown);
        auto* field = XRCCTRL(*this, controlName(view, number.field), wxTextCtrl);
        field->Show(number.shown);
        field->SetBackgroundColour(wxNullColour);
        if (field->GetValue() != number.text)
            field->ChangeValue(number.text);
    }
    auto* cross = XRCCTRL(*this, controlName(view, "%s_HATCH_CROSS"), wxCheckBox);
    cross->Show(edit.showsSpacing());
    cross->SetValue(pattern.cross());
    XRCCTRL(*this, controlName(view, "%s_HATCH_ANNOTATIVE"), wxCheckBox)->SetValue(pattern.annotative());

    auto* background = XRCCTRL(*this, controlName(view, "ID_%s_BACKGROUND_COLOR"), wxBitmapComboBox);
    const int swatchEdge = 14;
    background->Clear();
    background->Append(_("None"), colourSwatch(*wxWHITE, swatchEdge));
    if (pattern.has_background_color()) {
        const uint32_t rgb = pattern.background_color();
        const wxColour colour((rgb >> 16) & 0xFF, (rgb >> 8) & 0xFF, rgb & 0xFF);
        background->Append(colour.GetAsString(wxC2S_HTML_SYNTAX), colourSwatch(colour, swatchEdge));
    }
    background->Append(_("Hatch Background Color..."), wxNullBitmap);
    background->SetSelection(pattern.has_background_color() ? 1 : 0);

    FindWindow(XRCID("PANEL_APPEARANCE"))->Layout();
    m_updating = wasUpdating;
}

void DlgMaterials::updateLayer(vl_db::EHatchViewType view) {
    auto* combo = XRCCTRL(*this, controlName(view, "%s_LAYER"), wxComboBox);
    wxArrayString names = getLayers(m_libs ? m_libs->database() : nullptr);
    const auto library = lib();
    if (library) {
        // Layers the library's materials still use are offered too.
        std::vector<QcSmartPtr<vantlib::Layer>> layers;
        try {
            library->get(layers);
        } catch (const std::exception& error) {
            reportError(error);
        }
        for (const auto& layer : layers)
            if (names.Index(toWx(layer->name()), true) == wxNOT_FOUND)
                names.Add(toWx(layer->name()));
    }
    combo->Set(names);
    const vantlib::BimAsset* bim = m_material ? m_material->bim_asset() : nullptr;
    const auto& layer = bim ? (view == vl_db::kHatchElevation ? bim->layer_elevation() : bim->layer())
                            : QcSmartPtr<vantlib::Layer>();
    combo->ChangeValue(layer ? toWx(layer->name()) : wxString());
}

void DlgMaterials::updateThumbnail() {
    const wxBitmap preview = m_material ? hatchPreview(m_material, vl_db::kHatchSection, wxSize(48, 48)) : wxBitmap();
    setBitmap(FindWindow(XRCID("PREVIEW")),
              preview.IsOk() ? preview : wxXmlResource::Get()->LoadBitmap("BmpEmptyMat_32"));

    updateCurrentRow();
}

void DlgMaterials::onRenderMat(wxCommandEvent&) {
    if (!m_material)
        return;
    saveMaterial();
    try {
        DlgRenderMaterial dialog(this, toWx(m_material->appearance()));
        if (dialog.ShowModal() != wxID_OK)
            return;
        const wxString name = dialog.materialName();
        changeMaterial([&](vantlib::Material& material) { material.set_appearance(toOd(name)); });
    } catch (const std::exception& error) {
        reportError(error);
    }
    updateRenderMat();
}

void DlgMaterials::updateRenderMat() {
    const wxString name = m_material ? toWx(m_material->appearance()) : wxString();
    auto* category = XRCCTRL(*this, "STAT_RENDER_MAT_CAT", wxStaticText);
    auto* label = XRCCTRL(*this, "STAT_RENDER_MAT_NAME", wxStaticText);
    auto* button = FindWindow(XRCID("BTN_RENDER_MAT"));
    const ca::RenderMaterialLibrary& library = ca::RenderMaterialLibrary::instance();
    const ca::RenderMaterial* found = name.empty() ? nullptr : library.find(name);
    wxBitmap picture;
    if (found) {
        category->SetLabel(wxString::Format(L"%ls %ls", _("Category: "), ca::RenderMaterialLibrary::categoryText(*found)));
        label->SetLabel(wxString::Format(L"%ls %ls", _("Name: "), found->name));
        wxImage image = library.loadPreview(*found, false);
        if (image.IsOk()) {
            const wxSize edge = button->GetClientSize() - wxSize(8, 8);
            picture = wxBitmap(image.Rescale(std::max(edge.x, 16), std::max(edge.y, 16), wxIMAGE_QUALITY_HIGH));
        }
    } else if (!name.empty()) {
        category->SetLabel(_("Not a library material"));
        label->SetLabel(name);
    } else {
        category->SetLabel(m_material ? _("No render material is assigned.") : wxString());
        label->SetLabel(wxString());
    }
    setBitmap(button, picture.IsOk() ? picture : wxXmlResource::Get()->LoadBitmap("BmpEmptyMat_32"));
}

}  // namespace vl_app
