#include "app/common/ErrorMessages.h"
#include "app/common/DlgCompositionPreview.h"

#include <wx/intl.h>
#include <wx/sizer.h>

#include <CaApp.h>
#include <IconStore.h>
#include <MainWindow.h>
#include <OdStringWx.h>
#include <Prompt.h>

#include <vantlib/Exception.h>

#include "app/ModuleCommands.h"
#include "app/common/Distances.h"
#include "app/common/Helpers.h"
#include "app/common/Previews.h"

namespace vl_app {

int initialPreviewComposition(const std::vector<QcSmartPtr<vantlib::Composition>>& compositions,
                              const std::vector<vl_db::EDbType>& places) {
    for (size_t i = 0; i < compositions.size() && i < places.size(); ++i)
        if (places[i] == vl_db::kDbProject && compositions[i]->has_variable_ply())
            return int(i);
    for (size_t i = 0; i < compositions.size() && i < places.size(); ++i)
        if (places[i] == vl_db::kDbCentral)
            return int(i);
    return compositions.empty() ? -1 : 0;
}

wxSize DlgCompositionPreview::previewSize() {
    return wxg::isDpiForLargeIcons() ? wxSize(720, 480) : wxSize(360, 240);
}

DlgCompositionPreview::DlgCompositionPreview(wxWindow* parent, vl_db::DocumentLibraries* libs)
    : wxDialog(parent, wxID_ANY, _("Composition preview"), wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER) {
    for (const vl_db::EDbType place : {vl_db::kDbProject, vl_db::kDbCentral}) {
        std::vector<QcSmartPtr<vantlib::Composition>> found;
        loadCompositions(libs, place, found);
        m_compositions.insert(m_compositions.end(), found.begin(), found.end());
        m_places.insert(m_places.end(), found.size(), place);
    }

    wxArrayString names;
    for (size_t i = 0; i < m_compositions.size(); ++i)
        names.Add(wxString::Format("%s  [%s]", toWx(m_compositions[i]->name()), whatLib(m_places[i])));

    m_choice = new wxChoice(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, names);
    m_picture = new wxStaticBitmap(this, wxID_ANY, wxBitmap(previewSize()));
    m_details = new wxStaticText(this, wxID_ANY, wxString());

    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(m_choice, wxSizerFlags().Expand().Border(wxALL, 8));
    sizer->Add(m_picture, wxSizerFlags().Center().Border(wxLEFT | wxRIGHT, 8));
    sizer->Add(m_details, wxSizerFlags().Expand().Border(wxALL, 8));
    sizer->Add(CreateStdDialogButtonSizer(wxCLOSE), wxSizerFlags().Expand().Border(wxALL, 8));
    SetSizerAndFit(sizer);
    SetEscapeId(wxID_CLOSE);

    m_choice->Bind(wxEVT_CHOICE, &DlgCompositionPreview::onChoice, this);
    showComposition(initialPreviewComposition(m_compositions, m_places));
    Layout();
    CentreOnParent();
}

void DlgCompositionPreview::showComposition(int index) {
    if (index < 0 || size_t(index) >= m_compositions.size()) {
        m_current = -1;
        m_details->SetLabel(_("The drawing's libraries hold no compositions."));
        return;
    }
    m_current = index;
    m_choice->SetSelection(index);
    const QcSmartPtr<vantlib::Composition>& composition = m_compositions[size_t(index)];
    m_picture->SetBitmap(preview(composition, previewSize(), true));

    const auto library = composition->library();
    const OdDb::UnitsValue unit = library ? library->unit() : OdDb::kUnitsMillimeters;
    const wxString thickness = formatDistance(composition->thickness(), unit, true);
    m_details->SetLabel(composition->has_variable_ply()
                            ? wxString::Format(_("Total thickness: %s, with a variable ply."), thickness)
                            : wxString::Format(_("Total thickness: %s."), thickness));
}

void DlgCompositionPreview::onChoice(wxCommandEvent& event) { showComposition(event.GetSelection()); }

namespace {
void showCompositionPreview() {
    OdDbDatabase* db = ca::curDb();
    if (!db) {
        ca::prompt(_("Open a drawing to preview its compositions."));
        return;
    }
    try {
        DlgCompositionPreview dialog(wxg::mainWindow(), vl_db::docLibs(db));
        dialog.ShowModal();
    } catch (const std::exception& error) {
        ca::prompt(wxString::Format(_("The compositions could not be read: %s"), errorText(error)));
    }
}

const ModuleCommandRegistration compositionPreviewCommand("composition-preview", wxTRANSLATE("Composition preview"),
                                                          showCompositionPreview);
}  // namespace

}  // namespace vl_app
