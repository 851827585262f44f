#include "app/materials/DlgMaterialClasses.h"

#include <algorithm>
#include <cstdint>

#include <wx/msgdlg.h>
#include <wx/stattext.h>
#include <wx/textdlg.h>
#include <wx/toolbar.h>
#include <wx/xrc/xmlres.h>

#include <OdStringWx.h>

#include <vantlib/Exception.h>
#include <vantlib/Material.h>
#include <vantlib/MaterialType.h>

#include "app/common/ErrorMessages.h"
#include "app/common/Helpers.h"

namespace vl_app {

wxBEGIN_EVENT_TABLE(DlgMaterialClasses, wxg::QcThemedDialog)
    EVT_INIT_DIALOG(DlgMaterialClasses::onInitDialog)
    EVT_TOOL(XRCID("TOOL_NEW"), DlgMaterialClasses::onNew)
    EVT_TOOL(XRCID("TOOL_DELETE"), DlgMaterialClasses::onDelete)
    EVT_LISTBOX_DCLICK(XRCID("LIST_CLASSES"), DlgMaterialClasses::onListDoubleClick)
    EVT_BUTTON(wxID_OK, DlgMaterialClasses::onOK)
    EVT_UPDATE_UI(XRCID("TOOL_NEW"), DlgMaterialClasses::onUpdateUI)
    EVT_UPDATE_UI(XRCID("TOOL_DELETE"), DlgMaterialClasses::onUpdateUI)
wxEND_EVENT_TABLE()

DlgMaterialClasses::DlgMaterialClasses(wxWindow* parent, vl_db::DocumentLibraries* libs, vl_db::EDbType dbType)
    : QcThemedDialog(parent, "DlgMaterialClasses"), m_libs(libs), m_dbType(dbType) {
    m_list = XRCCTRL(*this, "LIST_CLASSES", wxListBox);
}


std::shared_ptr<vantlib::Library> DlgMaterialClasses::lib() const { return vl_db::library(m_libs, m_dbType, false); }

wxString DlgMaterialClasses::selected() const {
    const int entry = selectedEntry();
    return entry >= 0 ? m_edits.entries()[size_t(entry)].name : wxString();
}

bool DlgMaterialClasses::nameOk(const wxString& name, unsigned id) const {
    return materialClassNameOk(lib(), name, id);
}

int DlgMaterialClasses::selectedEntry() const {
    const int row = m_list->GetSelection();
    if (row == wxNOT_FOUND)
        return -1;
    return int(reinterpret_cast<intptr_t>(m_list->GetClientData(unsigned(row))));
}

void DlgMaterialClasses::updateList(int selectIndex) {
    // The list box sorts its rows, so each row carries its index into the edits.
    m_list->Freeze();
    m_list->Clear();
    const auto& entries = m_edits.entries();
    for (size_t i = 0; i < entries.size(); ++i) {
        const int row = m_list->Append(entries[i].name, reinterpret_cast<void*>(intptr_t(i)));
        if (int(i) == selectIndex)
            m_list->SetSelection(row);
    }
    m_list->Thaw();
    if (m_list->GetSelection() != wxNOT_FOUND)
        m_list->EnsureVisible(m_list->GetSelection());
}

void DlgMaterialClasses::onInitDialog(wxInitDialogEvent& event) {
    XRCCTRL(*this, "STAT_LIB", wxStaticText)->SetLabel(whatLib(m_dbType));
    try {
        m_edits.load(lib());
    } catch (const std::exception& e) {
        showError(this, e, _("The material classes could not be read: %s"));
    }
    updateList(-1);
    event.Skip();
}

void DlgMaterialClasses::onNew(wxCommandEvent&) {
    const wxString name = wxGetTextFromUser(_("Name:"), _("Add material class"), wxString(), this, wxDefaultCoord,
                                            wxDefaultCoord, true).Strip(wxString::both);
    if (name.empty())
        return;
    updateList(m_edits.add(name));
}

void DlgMaterialClasses::onListDoubleClick(wxCommandEvent&) {
    const int entry = selectedEntry();
    if (entry < 0)
        return;
    const MaterialClassEntry current = m_edits.entries()[size_t(entry)];
    const wxString name = wxGetTextFromUser(_("Name:"), _("Material class"), current.name, this, wxDefaultCoord,
                                            wxDefaultCoord, true).Strip(wxString::both);
    if (name.empty() || name == current.name)
        return;
    // A name taken by another class, stored or listed, is refused without a word: the list
    // keeps the old name, which says enough.
    try {
        if (!nameOk(name, current.id))
            return;
    } catch (const std::exception& e) {
        showError(this, e);
        return;
    }
    if (m_edits.rename(entry, name))
        updateList(entry);
}

void DlgMaterialClasses::onDelete(wxCommandEvent&) {
    const int entry = selectedEntry();
    if (entry < 0)
        return;
    const MaterialClassEntry current = m_edits.entries()[size_t(entry)];
    try {
        const auto library = lib();
        if (current.id != 0 && library) {
            const auto materialClass = library->get<vantlib::MaterialType>(current.id);
            if (materialClass && vantlib::isMaterialClassUsed(library, materialClass)) {
                showMessage(this, wxString::Format(_("Can't remove %ls because it is in use."), current.name), wxICON_INFORMATION);
                return;
            }
        }
    } catch (const std::exception& e) {
        showError(this, e);
        return;
    }
    // The row that takes the deleted one's place in the sorted list becomes the selection.
    const int row = m_list->GetSelection();
    m_edits.remove(entry);
    updateList(-1);
    if (m_list->GetCount() > 0)
        m_list->SetSelection(std::min(row, int(m_list->GetCount()) - 1));
}

void DlgMaterialClasses::onOK(wxCommandEvent&) {
    if (!m_edits.hasChanges()) {
        EndModal(wxID_OK);
        return;
    }
    if (!vl_db::writable(m_libs, m_dbType)) {
        showMessage(this, _("The library can't be changed any more: it is read-only or no longer available. "
                       "Press Cancel to close without saving."), wxICON_WARNING);
        return;
    }
    try {
        m_edits.apply(lib());
    } catch (const MaterialClassInUse& e) {
        showMessage(this, wxString::Format(_("Can't remove %ls because it is in use."), e.className()), wxICON_INFORMATION);
        return;
    } catch (const std::exception& e) {
        showError(this, e, _("The material classes could not be saved: %s"));
        return;
    }
    EndModal(wxID_OK);
}

void DlgMaterialClasses::onUpdateUI(wxUpdateUIEvent& event) {
    const bool canChange = vl_db::writable(m_libs, m_dbType);
    if (event.GetId() == XRCID("TOOL_DELETE"))
        event.Enable(canChange && m_list->GetSelection() != wxNOT_FOUND);
    else
        event.Enable(canChange);
}

}  // namespace vl_app
