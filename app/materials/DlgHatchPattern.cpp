#include "app/materials/DlgHatchPattern.h"

#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/xrc/xmlres.h>

#include <CaApp.h>
#include <IconStore.h>
#include <OdError.h>
#include <PatternCatalogue.h>
#include <PatternPreview.h>

namespace vl_app {

namespace {
// Size of the pattern previews in the list.
wxSize previewSize() { return wxg::isDpiForLargeIcons() ? wxSize(96, 96) : wxSize(48, 48); }
}  // namespace

wxBEGIN_EVENT_TABLE(DlgHatchPattern, wxg::QcThemedDialog)
    EVT_INIT_DIALOG(DlgHatchPattern::onInitDialog)
    EVT_CHOICE(XRCID("CHOICE_TYPE"), DlgHatchPattern::onType)
    EVT_LIST_ITEM_SELECTED(XRCID("LIST_PATTERNS"), DlgHatchPattern::onSelect)
    EVT_LIST_ITEM_DESELECTED(XRCID("LIST_PATTERNS"), DlgHatchPattern::onDeselect)
    EVT_LIST_ITEM_ACTIVATED(XRCID("LIST_PATTERNS"), DlgHatchPattern::onActivate)
    EVT_TEXT(XRCID("TEXT_SCALE"), DlgHatchPattern::onText)
    EVT_TEXT(XRCID("TEXT_SPACE"), DlgHatchPattern::onText)
    EVT_TEXT(XRCID("TEXT_ANGLE"), DlgHatchPattern::onText)
    EVT_CHECKBOX(XRCID("CHECK_CROSS"), DlgHatchPattern::onCross)
    EVT_BUTTON(wxID_OK, DlgHatchPattern::onOK)
    EVT_UPDATE_UI(wxID_OK, DlgHatchPattern::onUpdateUI)
wxEND_EVENT_TABLE()

DlgHatchPattern::DlgHatchPattern(wxWindow* parent, vantlib::Pattern& pattern, vl_db::EHatchViewType view)
    : QcThemedDialog(parent, "DlgHatchPattern"), m_pattern(pattern), m_view(view),
      m_edit(HatchPatternEdit::fromPattern(pattern)) {
    SetTitle(view == vl_db::kHatchElevation ? _("Elevation Hatch Pattern") : _("Section Hatch Pattern"));
    m_list = XRCCTRL(*this, "LIST_PATTERNS", wxListCtrl);
}


EPatternType DlgHatchPattern::getType(const vantlib::Pattern& pattern) { return patternType(pattern); }

void DlgHatchPattern::setType(vantlib::Pattern& pattern, int type) { setPatternType(pattern, type); }

void DlgHatchPattern::onInitDialog(wxInitDialogEvent& event) {
    auto* choice = XRCCTRL(*this, "CHOICE_TYPE", wxChoice);
    choice->Clear();
    choice->Append(_("None"));
    choice->Append(_("Solid"));
    choice->Append(_("Linear"));
    choice->Append(_("Predefined"));
    choice->Append(_("Custom"));
    choice->SetSelection(m_edit.type);

    XRCCTRL(*this, "TEXT_SCALE", wxTextCtrl)->ChangeValue(m_edit.scaleText);
    XRCCTRL(*this, "TEXT_SPACE", wxTextCtrl)->ChangeValue(m_edit.spaceText);
    XRCCTRL(*this, "TEXT_ANGLE", wxTextCtrl)->ChangeValue(m_edit.angleText);
    XRCCTRL(*this, "CHECK_CROSS", wxCheckBox)->SetValue(m_edit.cross);

    // The fields carry pictures when the host's theme has them; the text labels say the same.
    for (const char* field : {"SCALE", "SPACE", "ANGLE"}) {
        auto* picture = XRCCTRL(*this, wxString::Format("STAT_%s", field), wxStaticBitmap);
        const wxBitmap bitmap = wxg::themedBitmap(field);
        if (bitmap.IsOk())
            picture->SetBitmap(bitmap);
    }
    updateType();
    event.Skip();
}

void DlgHatchPattern::fillPatterns(EPatternType type) {
    const wxSize size = previewSize();
    auto* previews = new wxImageList(size.x, size.y, false);
    const int hostType = type == kPatternCustom ? ca::kCustomDefined : ca::kPreDefined;
    const wxArrayString names = ca::obtainListOfPatterns(hostType);
    const wxg::PatternPreview previewer(ca::curDb(), size);

    m_list->Freeze();
    m_list->DeleteAllItems();
    m_list->AssignImageList(previews, wxIMAGE_LIST_NORMAL);
    long selectedRow = -1;
    for (const wxString& name : names) {
        wxBitmap picture;
        try {
            picture = previewer.getPreview(name, hostType, false, 1.0, *wxWHITE, *wxBLACK);
        } catch (const OdError&) {
            // A pattern that cannot be drawn is still listed, with a blank picture.
            picture = wxBitmap(size);
        }
        const int image = previews->Add(picture);
        const long row = m_list->InsertItem(m_list->GetItemCount(), name, image);
        if (name == m_edit.name)
            selectedRow = row;
    }
    m_list->Thaw();
    if (selectedRow >= 0) {
        m_list->SetItemState(selectedRow, wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED,
                             wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED);
        m_list->EnsureVisible(selectedRow);
    } else {
        // A pattern that this kind does not list is not a choice any more.
        m_edit.name.clear();
    }
}

void DlgHatchPattern::updateType() {
    const bool scale = m_edit.showsScale();
    const bool spacing = m_edit.showsSpacing();
    const bool angle = m_edit.showsAngle();
    const auto show = [this](const char* name, bool visible) { FindWindow(XRCID(name))->Show(visible); };
    show("LABEL_SCALE", scale);
    show("STAT_SCALE", scale && XRCCTRL(*this, "STAT_SCALE", wxStaticBitmap)->GetBitmap().IsOk());
    show("TEXT_SCALE", scale);
    show("LABEL_SPACE", spacing);
    show("STAT_SPACE", spacing && XRCCTRL(*this, "STAT_SPACE", wxStaticBitmap)->GetBitmap().IsOk());
    show("TEXT_SPACE", spacing);
    show("CHECK_CROSS", spacing);
    show("LABEL_ANGLE", angle);
    show("STAT_ANGLE", angle && XRCCTRL(*this, "STAT_ANGLE", wxStaticBitmap)->GetBitmap().IsOk());
    show("TEXT_ANGLE", angle);

    m_list->Enable(scale);
    if (scale) {
        fillPatterns(m_edit.type);
    } else {
        m_list->DeleteAllItems();
    }
    updateStatus();
}

void DlgHatchPattern::updateStatus() {
    wxString message;
    switch (m_edit.status()) {
    case kHatchNoPattern: message = _("Please select a pattern."); break;
    case kHatchBadScale: message = _("The scale must be a positive number."); break;
    case kHatchBadSpacing: message = _("The spacing must be a positive number."); break;
    case kHatchBadAngle: message = _("The angle must be a number of degrees."); break;
    case kHatchValid: break;
    }
    auto* text = XRCCTRL(*this, "STAT_ERROR", wxStaticText);
    // The hidden line keeps its last text: its room stays reserved at the height of one line.
    if (!message.empty())
        text->SetLabel(message);
    text->Show(!message.empty());
    FindWindow(XRCID("BMP_ERROR"))->Show(!message.empty());
    Layout();
}

bool DlgHatchPattern::store() {
    if (!m_edit.store(m_pattern)) {
        updateStatus();
        return false;
    }
    return true;
}

void DlgHatchPattern::onType(wxCommandEvent& event) {
    const int selection = event.GetSelection();
    if (selection < kPatternNone || selection > kPatternCustom)
        return;
    m_edit.type = EPatternType(selection);
    updateType();
}

void DlgHatchPattern::onSelect(wxListEvent& event) {
    m_edit.name = m_list->GetItemText(event.GetIndex());
    updateStatus();
}

void DlgHatchPattern::onDeselect(wxListEvent&) {
    if (m_list->GetSelectedItemCount() == 0)
        m_edit.name.clear();
    updateStatus();
}

void DlgHatchPattern::onActivate(wxListEvent& event) {
    m_edit.name = m_list->GetItemText(event.GetIndex());
    if (store())
        EndModal(wxID_OK);
}

void DlgHatchPattern::onText(wxCommandEvent&) {
    m_edit.scaleText = XRCCTRL(*this, "TEXT_SCALE", wxTextCtrl)->GetValue();
    m_edit.spaceText = XRCCTRL(*this, "TEXT_SPACE", wxTextCtrl)->GetValue();
    m_edit.angleText = XRCCTRL(*this, "TEXT_ANGLE", wxTextCtrl)->GetValue();
    updateStatus();
}

void DlgHatchPattern::onCross(wxCommandEvent& event) { m_edit.cross = event.IsChecked(); }

void DlgHatchPattern::onOK(wxCommandEvent&) {
    if (store())
        EndModal(wxID_OK);
}

void DlgHatchPattern::onUpdateUI(wxUpdateUIEvent& event) { event.Enable(m_edit.status() == kHatchValid); }

}  // namespace vl_app
