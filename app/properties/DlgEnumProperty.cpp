#include "app/properties/DlgEnumProperty.h"

#include <algorithm>
#include <initializer_list>

#include <wx/bmpbuttn.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/intl.h>
#include <wx/msgdlg.h>
#include <wx/sizer.h>

#include <IconStore.h>
#include <WxgConfig.h>

#include "app/common/ErrorMessages.h"
#include "app/properties/EnumProperty.h"

namespace vl_app {

namespace {

const wxString kWindowKey = "DLG_ENUM_PROPERTY";
constexpr int kMargin = 8;  // device-independent pixels around and between the controls

// The definition's list, or an empty one when the definition holds single values of T.
template <class T>
vl_db::EnumTypeSpecifier<T> storedEnumeration(const vl_db::TypeSpecifierPtr& specifier) {
    if (const auto* list = dynamic_cast<const vl_db::EnumTypeSpecifier<T>*>(specifier.get()))
        return *list;
    return vl_db::EnumTypeSpecifier<T>(specifier ? specifier->primitiveCode() : vl_db::EnumTypeSpecifier<T>::defaultCode());
}

wxBitmapButton* toolButton(wxWindow* parent, const wxString& name, const wxString& icon, const wxString& tooltip) {
    auto* button = new wxBitmapButton(parent, wxID_ANY, wxg::themedBitmap(icon), wxDefaultPosition, wxDefaultSize,
                                      wxBU_AUTODRAW, wxDefaultValidator, name);
    button->SetToolTip(tooltip);
    return button;
}

}  // namespace

template <class T>
EnumPropGrid<T>::EnumPropGrid(wxWindow* parent, const std::vector<EnumRow>& rows)
    : wxGrid(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxWANTS_CHARS | wxBORDER_THEME, "GRID") {
    CreateGrid(int(rows.size()), 2, wxGridSelectRows);
    EnableEditing(true);
    EnableGridLines(true);
    SetRowLabelSize(0);
    SetDefaultCellOverflow(false);
    DisableDragRowSize();
    DisableDragGridSize();
    SetColLabelValue(0, enumTypeTitle<T>());
    SetColLabelValue(1, _("Description"));
    SetLabelBackgroundColour(parent->GetBackgroundColour());
    SetLabelTextColour(parent->GetForegroundColour());
    SetDefaultCellTextColour(parent->GetForegroundColour());
    setRows(rows);
}

template <class T>
std::vector<EnumRow> EnumPropGrid<T>::rows() const {
    std::vector<EnumRow> rows;
    for (int row = 0; row < GetNumberRows(); ++row)
        rows.push_back({GetCellValue(row, 0), GetCellValue(row, 1)});
    return rows;
}

template <class T>
void EnumPropGrid<T>::setRows(const std::vector<EnumRow>& rows) {
    const int count = int(rows.size());
    if (GetNumberRows() > count)
        DeleteRows(count, GetNumberRows() - count);
    else if (GetNumberRows() < count)
        AppendRows(count - GetNumberRows());
    for (int row = 0; row < count; ++row) {
        SetCellValue(row, 0, rows[row].value);
        SetCellValue(row, 1, rows[row].description);
    }
}

template <class T>
std::vector<int> EnumPropGrid<T>::selectedRows() const {
    std::vector<int> rows;
    for (int row : GetSelectedRows())
        rows.push_back(row);
    return rows;
}

template <class T>
void EnumPropGrid<T>::selectRows(const std::vector<int>& rows) {
    ClearSelection();
    for (int row : rows)
        SelectRow(row, true);
    if (!rows.empty()) {
        const int column = std::max(GetGridCursorCol(), 0);
        SetGridCursor(rows.front(), column);
        MakeCellVisible(rows.front(), column);
        // Moving the cursor clears the selection of a row-selecting grid; select again.
        for (int row : rows)
            SelectRow(row, true);
    }
}

template <class T>
void EnumPropGrid<T>::commitEdit() {
    if (IsCellEditControlShown()) {
        SaveEditControlValue();
        DisableCellEditControl();
    }
}

template <class T>
DlgEnumProperty<T>::DlgEnumProperty(wxWindow* parent, uint32_t definitionId, const vl_db::TypeSpecifierPtr& specifier,
                                    const std::shared_ptr<vl_db::IPropertySet>& propertySet)
    : wxDialog(parent, wxID_ANY, _("Enumerated Property"), wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
      m_definitionId(definitionId),
      m_propertySet(propertySet) {
    const vl_db::EnumTypeSpecifier<T> stored = storedEnumeration<T>(specifier);
    m_code = stored.primitiveCode();
    const int margin = FromDIP(kMargin);

    m_mapping = new wxCheckBox(this, wxID_ANY, _("Mapping"), wxDefaultPosition, wxDefaultSize, 0, wxDefaultValidator,
                               "CB_MAPPING");
    m_mapping->SetValue(stored.hasDescriptions());
    auto* add = toolButton(this, "BTN_ADD", "NEW", _("Add new enumerated value"));
    auto* remove = toolButton(this, "BTN_REMOVE", "ERASE", _("Remove selected enumerated values"));
    auto* up = toolButton(this, "BTN_MOVE_UP", "MOVE_UP", _("Move selected enumerated values upwards"));
    auto* down = toolButton(this, "BTN_MOVE_DOWN", "MOVE_DOWN", _("Move selected enumerated values downwards"));
    m_grid = new EnumPropGrid<T>(this, enumRows<T>(stored.values()));
    m_allowCustom = new wxCheckBox(this, wxID_ANY, _("Allow values outside the list"), wxDefaultPosition,
                                   wxDefaultSize, 0, wxDefaultValidator, "CB_ALLOW_CUSTOM");
    m_allowCustom->SetValue(stored.allowCustomValue());

    auto* tools = new wxBoxSizer(wxHORIZONTAL);
    tools->Add(m_mapping, 0, wxALIGN_CENTER_VERTICAL);
    tools->AddStretchSpacer();
    for (wxBitmapButton* button : {add, remove, up, down})
        tools->Add(button, 0, wxLEFT, FromDIP(2));

    auto* content = new wxBoxSizer(wxVERTICAL);
    content->Add(tools, 0, wxEXPAND | wxLEFT | wxRIGHT | wxTOP, margin);
    content->Add(m_grid, 1, wxEXPAND | wxLEFT | wxRIGHT | wxTOP, margin);
    content->Add(m_allowCustom, 0, wxLEFT | wxRIGHT | wxTOP, margin);
    content->Add(CreateSeparatedButtonSizer(wxOK | wxCANCEL), 0, wxEXPAND | wxALL, margin);
    SetSizer(content);
    SetMinSize(FromDIP(wxSize(300, 240)));

    m_grid->EnableDragColSize(m_mapping->GetValue());
    if (!m_mapping->GetValue())
        m_grid->HideCol(1);
    // A set of a namespace that is not editable is shown, not changed.
    m_editable = m_propertySet && m_propertySet->isEditable();
    if (!m_editable) {
        m_grid->EnableEditing(false);
        for (wxWindow* control : std::initializer_list<wxWindow*>{m_mapping, m_allowCustom, add, remove, up, down})
            control->Disable();
    }

    Bind(wxEVT_SIZE, &DlgEnumProperty::onSize, this);
    m_grid->Bind(wxEVT_GRID_COL_SIZE, &DlgEnumProperty::onColumnSize, this);
    m_mapping->Bind(wxEVT_CHECKBOX, &DlgEnumProperty::onMapping, this);
    Bind(wxEVT_BUTTON, &DlgEnumProperty::onAdd, this, add->GetId());
    Bind(wxEVT_BUTTON, &DlgEnumProperty::onRemove, this, remove->GetId());
    Bind(wxEVT_BUTTON, &DlgEnumProperty::onMoveUp, this, up->GetId());
    Bind(wxEVT_BUTTON, &DlgEnumProperty::onMoveDown, this, down->GetId());
    Bind(wxEVT_BUTTON, &DlgEnumProperty::onOk, this, wxID_OK);

    wxg::WxgConfig::restoreWindow(this, kWindowKey, FromDIP(wxSize(420, 360)));
    Layout();
    fitColumns();
}

template <class T>
bool DlgEnumProperty<T>::isMapping() const {
    return m_mapping->GetValue();
}

template <class T>
int DlgEnumProperty<T>::availableWidth() const {
    // The grid's own client width leaves out its border and a vertical scroll bar, so the two
    // columns never call for a horizontal one.
    return m_grid->GetClientSize().x;
}

template <class T>
void DlgEnumProperty<T>::fitColumns() {
    const int available = availableWidth();
    if (available <= 0)
        return;
    if (!isMapping()) {
        m_grid->SetColSize(0, available);
        return;
    }
    const EnumColumns widths = enumColumnWidths(available, m_share);
    m_grid->SetColSize(0, widths.value);
    m_grid->SetColSize(1, widths.description);
}

template <class T>
void DlgEnumProperty<T>::onSize(wxSizeEvent& event) {
    event.Skip();
    Layout();
    fitColumns();
}

template <class T>
void DlgEnumProperty<T>::onColumnSize(wxGridSizeEvent& event) {
    if (event.GetRowOrCol() == 0 && isMapping()) {
        const int available = availableWidth();
        const int width = draggedValueColumn(m_grid->GetColSize(0), available, FromDIP(kEnumColumnMinimum));
        if (available > 0)
            m_share = double(width) / available;
    }
    fitColumns();
}

template <class T>
void DlgEnumProperty<T>::onMapping(wxCommandEvent&) {
    m_grid->commitEdit();
    if (isMapping())
        m_grid->ShowCol(1);
    else
        m_grid->HideCol(1);
    m_grid->EnableDragColSize(isMapping());
    fitColumns();
}

template <class T>
void DlgEnumProperty<T>::onAdd(wxCommandEvent&) {
    m_grid->commitEdit();
    m_grid->AppendRows(1);
    const int row = m_grid->GetNumberRows() - 1;
    m_grid->selectRows({row});
    m_grid->SetGridCursor(row, 0);
    m_grid->SetFocus();
}

template <class T>
void DlgEnumProperty<T>::onRemove(wxCommandEvent&) {
    m_grid->commitEdit();
    std::vector<int> selection = m_grid->selectedRows();
    if (selection.empty()) {
        // Without a selection the row of the current cell goes, if there is one.
        const int current = m_grid->GetGridCursorRow();
        if (current < 0 || current >= m_grid->GetNumberRows())
            return;
        selection.push_back(current);
    }
    std::vector<EnumRow> rows = m_grid->rows();
    const int next = removeRows(rows, selection);
    m_grid->ClearSelection();
    m_grid->setRows(rows);
    if (next >= 0)
        m_grid->selectRows({next});
}

template <class T>
void DlgEnumProperty<T>::move(bool upwards) {
    m_grid->commitEdit();
    const std::vector<int> selection = m_grid->selectedRows();
    if (selection.empty())
        return;
    std::vector<EnumRow> rows = m_grid->rows();
    const std::vector<int> moved = upwards ? moveRowsUp(rows, selection) : moveRowsDown(rows, selection);
    m_grid->setRows(rows);
    std::vector<int> ordered = moved;
    std::sort(ordered.begin(), ordered.end());
    m_grid->selectRows(ordered);
}

template <class T>
void DlgEnumProperty<T>::onMoveUp(wxCommandEvent&) {
    move(true);
}

template <class T>
void DlgEnumProperty<T>::onMoveDown(wxCommandEvent&) {
    move(false);
}

template <class T>
void DlgEnumProperty<T>::onOk(wxCommandEvent&) {
    if (!m_editable) {
        EndModal(wxID_CANCEL);
        return;
    }
    m_grid->commitEdit();
    const EnumReading<T> reading = readEnumRows<T>(m_grid->rows(), isMapping());
    if (!reading.error.empty()) {
        wxMessageBox(reading.error, _("Warning"), wxOK | wxICON_WARNING, this);
        return;
    }
    try {
        const auto definition = findDefinition(*m_propertySet, m_definitionId);
        if (!definition) {
            showMessage(this, _("The property definition no longer exists; the list cannot be stored."), wxICON_WARNING);
            EndModal(wxID_CANCEL);
            return;
        }
        definition->setTypeSpecifier(vl_db::EnumTypeSpecifier<T>(m_code, reading.values, m_allowCustom->GetValue()));
    } catch (const std::exception& error) {
        showError(this, error);
        return;
    }
    EndModal(wxID_OK);
}

bool editEnumeration(wxWindow* parent, const std::shared_ptr<vl_db::IPropertySet>& propertySet, uint32_t definitionId) {
    if (!propertySet)
        return false;
    const auto definition = findDefinition(*propertySet, definitionId);
    if (!definition)
        return false;
    const vl_db::TypeSpecifierPtr specifier = definition->typeSpecifier();
    std::unique_ptr<wxDialog> dialog;
    switch (specifier->primitiveCode()) {
        case vl_db::kIntegerCode:
            dialog = std::make_unique<DlgEnumProperty<long long>>(parent, definitionId, specifier, propertySet);
            break;
        case vl_db::kRealCode:
            dialog = std::make_unique<DlgEnumProperty<double>>(parent, definitionId, specifier, propertySet);
            break;
        case vl_db::kStringCode:
            dialog = std::make_unique<DlgEnumProperty<OdString>>(parent, definitionId, specifier, propertySet);
            break;
        default:
            return false;
    }
    dialog->ShowModal();
    wxg::WxgConfig::saveWindow(dialog.get(), kWindowKey);
    return true;
}

template class EnumPropGrid<long long>;
template class EnumPropGrid<double>;
template class EnumPropGrid<OdString>;
template class DlgEnumProperty<long long>;
template class DlgEnumProperty<double>;
template class DlgEnumProperty<OdString>;

}  // namespace vl_app
