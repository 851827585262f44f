#include "app/materials/DlgCustomProperties.h"

#include <wx/imaglist.h>
#include <wx/msgdlg.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/toolbar.h>
#include <wx/xrc/xmlres.h>

#include <IconStore.h>
#include <OdStringWx.h>

#include <vantlib/Exception.h>
#include <vantlib/Transaction.h>

#include "app/common/ErrorMessages.h"
#include "app/common/Helpers.h"
#include "app/common/ListHelpers.h"

namespace vl_app {

namespace {
// Image indices of the list rows.
enum ERowImage { kImageAny = 0, kImageMaterial = 1, kImageComposition = 2 };

// A stored property that the library kept because objects carry its values.
struct PropertyInUse {
    wxString name;
};

wxBitmap rowBitmap(int size, const char* kind) {
    wxBitmap bitmap = wxXmlResource::Get()->LoadBitmap(wxString::Format("Bmp%i%s", size, kind));
    if (bitmap.IsOk() && bitmap.GetHeight() == size)
        return bitmap;
    // Sizes without their own picture scale the small one.
    wxBitmap small = wxXmlResource::Get()->LoadBitmap(wxString::Format("Bmp%i%s", 16, kind));
    if (small.IsOk())
        return wxBitmap(small.ConvertToImage().Rescale(size, size, wxIMAGE_QUALITY_HIGH));
    return wxBitmap(size, size);
}
}  // namespace

wxBEGIN_EVENT_TABLE(DlgCustomProperties, wxg::QcThemedDialog)
    EVT_INIT_DIALOG(DlgCustomProperties::onInitDialog)
    EVT_TOOL(XRCID("TOOL_NEW_ANY"), DlgCustomProperties::onNew)
    EVT_TOOL(XRCID("TOOL_NEW_MAT"), DlgCustomProperties::onNew)
    EVT_TOOL(XRCID("TOOL_NEW_CMP"), DlgCustomProperties::onNew)
    EVT_TOOL(XRCID("TOOL_DELETE"), DlgCustomProperties::onDelete)
    EVT_LIST_END_LABEL_EDIT(XRCID("LIST_PROPS"), DlgCustomProperties::onEndLabelEdit)
    EVT_LIST_ITEM_ACTIVATED(XRCID("LIST_PROPS"), DlgCustomProperties::onActivate)
    EVT_BUTTON(wxID_OK, DlgCustomProperties::onOK)
    EVT_SIZE(DlgCustomProperties::onSize)
    EVT_UPDATE_UI(XRCID("TOOL_NEW_ANY"), DlgCustomProperties::onUpdateUI)
    EVT_UPDATE_UI(XRCID("TOOL_NEW_MAT"), DlgCustomProperties::onUpdateUI)
    EVT_UPDATE_UI(XRCID("TOOL_NEW_CMP"), DlgCustomProperties::onUpdateUI)
    EVT_UPDATE_UI(XRCID("TOOL_DELETE"), DlgCustomProperties::onUpdateUI)
wxEND_EVENT_TABLE()

DlgCustomProperties::DlgCustomProperties(wxWindow* parent, vl_db::DocumentLibraries* libs, vl_db::EDbType dbType,
                                         vantlib::ObjectType objectType, vl_db::EMode mode)
    : QcThemedDialog(parent, "DlgCustomProperties"), m_libs(libs), m_dbType(dbType), m_objectType(objectType),
      m_mode(mode) {
    m_list = XRCCTRL(*this, "LIST_PROPS", wxListCtrl);
}


vantlib::ObjectType DlgCustomProperties::type(EChooseKind kind) {
    switch (kind) {
    case kChooseMaterial: return vantlib::kMaterial;
    case kChooseComposition: return vantlib::kComposition;
    default: return vantlib::kUnknownObject;
    }
}

DlgCustomProperties::EChooseKind DlgCustomProperties::type(vantlib::ObjectType objectType) {
    switch (objectType) {
    case vantlib::kMaterial: return kChooseMaterial;
    case vantlib::kComposition: return kChooseComposition;
    default: return kChooseAny;
    }
}

std::shared_ptr<vantlib::Library> DlgCustomProperties::lib() const { return vl_db::library(m_libs, m_dbType, false); }

QcSmartPtr<vantlib::CustomProperty> DlgCustomProperties::selected() const {
    const long row = selectedRow();
    if (row < 0)
        return QcSmartPtr<vantlib::CustomProperty>();
    const size_t index = size_t(m_list->GetItemData(row));
    return index < m_properties.size() ? m_properties[index] : QcSmartPtr<vantlib::CustomProperty>();
}

long DlgCustomProperties::selectedRow() const { return m_list->GetNextItem(-1, wxLIST_NEXT_ALL, wxLIST_STATE_SELECTED); }

long DlgCustomProperties::rowOf(size_t index) const {
    for (long row = 0; row < m_list->GetItemCount(); ++row)
        if (size_t(m_list->GetItemData(row)) == index)
            return row;
    return -1;
}

int DlgCustomProperties::imageOf(const vantlib::CustomProperty& property) const {
    switch (property.object_type()) {
    case vantlib::kMaterial: return kImageMaterial;
    case vantlib::kComposition: return kImageComposition;
    default: return kImageAny;
    }
}

void DlgCustomProperties::onInitDialog(wxInitDialogEvent& event) {
    if (m_mode == vl_db::kModeManager)
        SetTitle(_("Edit Custom Properties"));
    else if (m_mode == vl_db::kModePicker)
        SetTitle(_("Select/Create a Custom Property"));
    XRCCTRL(*this, "STAT_LIB", wxStaticText)->SetLabel(whatLib(m_dbType));

    auto* tools = XRCCTRL(*this, "TBAR_PROPS", wxToolBar);
    if (m_objectType == vantlib::kMaterial)
        tools->DeleteTool(XRCID("TOOL_NEW_CMP"));
    else if (m_objectType == vantlib::kComposition)
        tools->DeleteTool(XRCID("TOOL_NEW_MAT"));
    const wxBitmap erase = wxg::themedBitmap("ERASE");
    if (erase.IsOk() && tools->FindById(XRCID("TOOL_DELETE")))
        tools->SetToolNormalBitmap(XRCID("TOOL_DELETE"), erase);
    tools->Realize();

    m_list->InsertColumn(0, _("Name"), wxLIST_FORMAT_LEFT, std::max(m_list->GetClientSize().GetWidth() - 6, 50));
    const int iconSize = wxg::smallIconSize();
    auto* images = new wxImageList(iconSize, iconSize, true);
    images->Add(rowBitmap(iconSize, "Any"));
    images->Add(rowBitmap(iconSize, "Mat"));
    images->Add(rowBitmap(iconSize, "Cmp"));
    m_list->AssignImageList(images, wxIMAGE_LIST_SMALL);

    try {
        m_properties = vantlib::getCustomProperties(lib(), m_objectType);
    } catch (const std::exception& e) {
        showError(this, e, _("The custom properties could not be read: %s"));
    }
    updateList();
    event.Skip();
}

void DlgCustomProperties::updateList() {
    m_list->Freeze();
    m_list->DeleteAllItems();
    for (size_t i = 0; i < m_properties.size(); ++i) {
        if (!m_properties[i])
            continue;
        const long row = m_list->InsertItem(m_list->GetItemCount(), toWx(m_properties[i]->name()),
                                            imageOf(*m_properties[i]));
        m_list->SetItemData(row, long(i));
    }
    m_list->Thaw();
}

bool DlgCustomProperties::isNameListed(const wxString& name, size_t exceptIndex) const {
    for (size_t i = 0; i < m_properties.size(); ++i)
        if (i != exceptIndex && m_properties[i] && toWx(m_properties[i]->name()).CmpNoCase(name) == 0)
            return true;
    return false;
}

wxString DlgCustomProperties::newName() const {
    const wxString base = _("NEW");
    const auto library = lib();
    const auto taken = [&](const wxString& candidate) {
        if (isNameListed(candidate, m_properties.size()))
            return true;
        // Properties of other kinds are not listed but hold their names; a deleted one frees
        // its name only when the edits are saved, before new properties are stored.
        const auto stored = library ? library->get<vantlib::CustomProperty>(vantlib::NameKey(toOd(candidate)))
                                    : QcSmartPtr<vantlib::CustomProperty>();
        return stored && m_removed.count(stored->id()) == 0;
    };
    const wxString stem = stripNumeral(base);
    wxString candidate = base;
    for (int counter = 1; taken(candidate);)
        candidate = wxString::Format("%ls-%d", stem, ++counter);
    return candidate;
}

void DlgCustomProperties::onNew(wxCommandEvent& event) {
    if (m_list->GetEditControl())
        m_list->EndEditLabel(false);
    EChooseKind kind = kChooseAny;
    if (event.GetId() == XRCID("TOOL_NEW_MAT"))
        kind = kChooseMaterial;
    else if (event.GetId() == XRCID("TOOL_NEW_CMP"))
        kind = kChooseComposition;
    QcSmartPtr<vantlib::CustomProperty> property;
    try {
        property = vantlib::CustomProperty::create(toOd(newName()), type(kind));
    } catch (const std::exception& e) {
        showError(this, e);
        return;
    }
    m_properties.push_back(property);
    const size_t index = m_properties.size() - 1;
    m_changed.insert(index);
    const long row = m_list->InsertItem(m_list->GetItemCount(), toWx(property->name()), imageOf(*property));
    m_list->SetItemData(row, long(index));
    m_list->SetItemState(row, wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED, wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED);
    m_list->EnsureVisible(row);
    m_list->SetFocus();
    m_list->EditLabel(row);
}

void DlgCustomProperties::onEndLabelEdit(wxListEvent& event) {
    if (event.IsEditCancelled())
        return;
    const long row = event.GetIndex();
    if (row < 0 || row >= m_list->GetItemCount())
        return;
    const size_t index = size_t(m_list->GetItemData(row));
    if (index >= m_properties.size() || !m_properties[index])
        return;
    const wxString name = wxString(event.GetLabel()).Strip(wxString::both);
    if (name.empty() || isNameListed(name, index)) {
        // The row keeps its name, as with a refused class name: an empty or doubled name
        // could not be stored.
        event.Veto();
        return;
    }
    m_properties[index]->set_name(toOd(name));
    m_changed.insert(index);
}

void DlgCustomProperties::onDelete(wxCommandEvent&) {
    const long row = selectedRow();
    if (row < 0)
        return;
    const size_t index = size_t(m_list->GetItemData(row));
    if (index >= m_properties.size() || !m_properties[index])
        return;
    const QcSmartPtr<vantlib::CustomProperty> property = m_properties[index];
    if (property->id() != 0) {
        try {
            if (vantlib::isCustomPropUsed(lib(), property)) {
                showMessage(this, wxString::Format(_("Can't remove %ls because it is in use."), toWx(property->name())), wxICON_INFORMATION);
                return;
            }
        } catch (const std::exception& e) {
            showError(this, e);
            return;
        }
        m_removed.insert(property->id());
    }
    m_properties[index] = QcSmartPtr<vantlib::CustomProperty>();
    m_changed.erase(index);
    m_list->DeleteItem(row);
}

bool DlgCustomProperties::save() {
    if (m_list->GetEditControl())
        m_list->EndEditLabel(false);
    if (m_changed.empty() && m_removed.empty())
        return true;
    const auto library = lib();
    if (!vl_db::writable(m_libs, m_dbType) || !library) {
        showMessage(this, _("The library can't be changed any more: it is read-only or no longer available. "
                       "Press Cancel to close without saving."), wxICON_WARNING);
        return false;
    }
    std::vector<std::pair<size_t, QcSmartPtr<vantlib::CustomProperty>>> stored;
    try {
        vantlib::Transaction transaction(library);
        for (unsigned id : m_removed) {
            const auto result = library->remove<vantlib::CustomProperty>(id);
            if (result != vantlib::Library::kRemoved && result != vantlib::Library::kNotFound) {
                const auto property = library->get<vantlib::CustomProperty>(id);
                throw PropertyInUse{property ? toWx(property->name()) : wxString()};
            }
        }
        for (size_t index : m_changed)
            if (index < m_properties.size() && m_properties[index])
                stored.emplace_back(index, library->save(m_properties[index]));
        transaction.commit();
    } catch (const PropertyInUse& e) {
        showMessage(this, wxString::Format(_("Can't remove %ls because it is in use."), e.name), wxICON_INFORMATION);
        return false;
    } catch (const std::exception& e) {
        showError(this, e, _("The custom properties could not be saved: %s"));
        return false;
    }
    for (auto& [index, property] : stored)
        m_properties[index] = property;
    m_changed.clear();
    m_removed.clear();
    return true;
}

void DlgCustomProperties::onActivate(wxListEvent& event) {
    if (m_mode != vl_db::kModePicker) {
        event.Skip();
        return;
    }
    if (save())
        EndModal(wxID_OK);
}

void DlgCustomProperties::onOK(wxCommandEvent&) {
    if (save())
        EndModal(wxID_OK);
}

void DlgCustomProperties::onSize(wxSizeEvent&) {
    Layout();
    // Size events arrive before the column exists.
    if (m_list->GetColumnCount() > 0)
        autoColumnSize(m_list);
}

void DlgCustomProperties::onUpdateUI(wxUpdateUIEvent& event) {
    const bool canChange = vl_db::writable(m_libs, m_dbType);
    if (event.GetId() == XRCID("TOOL_DELETE"))
        event.Enable(canChange && selectedRow() >= 0);
    else
        event.Enable(canChange);
}

}  // namespace vl_app
