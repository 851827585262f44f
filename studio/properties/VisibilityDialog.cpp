#include "VisibilityDialog.h"

#include <vector>

#include <wx/button.h>
#include <wx/intl.h>
#include <wx/msgdlg.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <OdStringWx.h>

#include <vl_db/PropertySets.h>

namespace {

// What an item stands for: a namespace or one of its sets.
class VisibilityData : public wxClientData {
public:
    VisibilityData(uint32_t namespaceId, uint32_t setId, const wxString& name) : namespaceId(namespaceId), setId(setId), name(name) {}
    uint32_t namespaceId;
    uint32_t setId;  // 0 for a namespace
    wxString name;
};

}  // namespace

VisibilityDialog::VisibilityDialog(wxWindow* parent, const std::shared_ptr<vl_db::ILibrary>& library)
    : wxDialog(parent, wxID_ANY, _("Visibility of Property Sets"), wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
      m_library(library) {
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(new wxStaticText(this, wxID_ANY, _("Property sets shown in the drawing:")), 0, wxALL, FromDIP(10));
    m_tree = new wxTreeListCtrl(this, wxID_ANY, wxDefaultPosition, FromDIP(wxSize(380, 360)),
                                wxTL_SINGLE | wxTL_CHECKBOX | wxTL_3STATE | wxTL_NO_HEADER);
    m_tree->AppendColumn(_("Property set"), wxCOL_WIDTH_AUTOSIZE);
    sizer->Add(m_tree, 1, wxEXPAND | wxLEFT | wxRIGHT, FromDIP(10));
    sizer->Add(CreateSeparatedButtonSizer(wxOK | wxCANCEL), 0, wxEXPAND | wxALL, FromDIP(10));
    SetSizerAndFit(sizer);
    m_tree->Bind(wxEVT_TREELIST_ITEM_CHECKED, &VisibilityDialog::onChecked, this);
    Bind(wxEVT_BUTTON, &VisibilityDialog::onOk, this, wxID_OK);
    fill();
    CentreOnParent();
}

void VisibilityDialog::fill() {
    m_tree->DeleteAllItems();
    if (!m_library)
        return;
    const wxTreeListItem root = m_tree->GetRootItem();
    for (const auto& ns : m_library->namespaces()) {
        const auto sets = ns->propertySets();
        if (sets.empty())
            continue;
        const wxTreeListItem nsItem =
            m_tree->AppendItem(root, toWx(ns->displayLabel()), -1, -1, new VisibilityData(ns->id(), 0, toWx(ns->name())));
        for (const auto& set : sets) {
            const wxTreeListItem item =
                m_tree->AppendItem(nsItem, toWx(set->label()), -1, -1, new VisibilityData(ns->id(), set->id(), toWx(set->name())));
            m_tree->CheckItem(item, set->isVisible() ? wxCHK_CHECKED : wxCHK_UNCHECKED);
        }
        m_tree->UpdateItemParentStateRecursively(m_tree->GetFirstChild(nsItem));
        m_tree->Expand(nsItem);
    }
}

wxTreeListItem VisibilityDialog::findItem(const wxString& namespaceName, const wxString& setName) const {
    for (wxTreeListItem nsItem = m_tree->GetFirstChild(m_tree->GetRootItem()); nsItem.IsOk();
         nsItem = m_tree->GetNextSibling(nsItem)) {
        const auto* data = static_cast<VisibilityData*>(m_tree->GetItemData(nsItem));
        if (!data || data->name != namespaceName)
            continue;
        if (setName.empty())
            return nsItem;
        for (wxTreeListItem item = m_tree->GetFirstChild(nsItem); item.IsOk(); item = m_tree->GetNextSibling(item)) {
            const auto* setData = static_cast<VisibilityData*>(m_tree->GetItemData(item));
            if (setData && setData->name == setName)
                return item;
        }
    }
    return wxTreeListItem();
}

void VisibilityDialog::setChecked(const wxTreeListItem& item, bool checked) {
    m_tree->CheckItemRecursively(item, checked ? wxCHK_CHECKED : wxCHK_UNCHECKED);
    m_tree->UpdateItemParentStateRecursively(item);
}

void VisibilityDialog::onChecked(wxTreeListEvent& event) {
    const wxTreeListItem item = event.GetItem();
    setChecked(item, m_tree->GetCheckedState(item) == wxCHK_CHECKED);
}

unsigned VisibilityDialog::apply() {
    unsigned changed = 0;
    for (const auto& ns : m_library->namespaces()) {
        for (const auto& set : ns->propertySets()) {
            for (wxTreeListItem nsItem = m_tree->GetFirstChild(m_tree->GetRootItem()); nsItem.IsOk();
                 nsItem = m_tree->GetNextSibling(nsItem))
                for (wxTreeListItem item = m_tree->GetFirstChild(nsItem); item.IsOk(); item = m_tree->GetNextSibling(item)) {
                    const auto* data = static_cast<VisibilityData*>(m_tree->GetItemData(item));
                    if (!data || data->setId != set->id() || data->namespaceId != ns->id())
                        continue;
                    const bool visible = m_tree->GetCheckedState(item) == wxCHK_CHECKED;
                    if (visible != set->isVisible()) {
                        set->setVisible(visible);
                        ++changed;
                    }
                }
        }
    }
    return changed;
}

void VisibilityDialog::onOk(wxCommandEvent& event) {
    try {
        apply();
    } catch (const std::exception& error) {
        wxMessageBox(wxString::Format(_("The visibility could not be changed: %s"), wxString::FromUTF8(error.what())),
                     GetTitle(), wxOK | wxICON_ERROR, this);
        return;
    }
    event.Skip();
}
