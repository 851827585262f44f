#pragma once
// The enumerated values editor: the values of a definition's list in a grid, optionally each
// with a description ("Mapping"), with buttons to add, remove and move values, and whether
// values outside the list are allowed. OK checks the list and stores it as the definition's
// type; Cancel leaves the definition as it was. The list of a set that is not editable is only
// shown.
#include <cstdint>
#include <memory>
#include <vector>

#include <wx/dialog.h>
#include <wx/grid.h>

#include <OdString.h>

#include <vl_db/PropertySets.h>
#include <vl_db/TypeSpecifier.h>

#include "app/properties/EnumValues.h"

class wxBitmapButton;
class wxCheckBox;

namespace vl_app {

// The grid of one list: a value column titled by the type, and a description column.
template <class T>
class EnumPropGrid : public wxGrid {
public:
    EnumPropGrid(wxWindow* parent, const std::vector<EnumRow>& rows);

    std::vector<EnumRow> rows() const;
    void setRows(const std::vector<EnumRow>& rows);
    // The selected rows in the order the user selected them; none when no row is selected.
    std::vector<int> selectedRows() const;
    void selectRows(const std::vector<int>& rows);
    // Ends an edit in progress, keeping what was typed.
    void commitEdit();
};

template <class T>
class DlgEnumProperty : public wxDialog {
public:
    // Edits the list of `definitionId` in `propertySet`; `specifier` is the definition's type
    // now (an enumeration of T, or a single value of T's code, which starts an empty list).
    DlgEnumProperty(wxWindow* parent, uint32_t definitionId, const vl_db::TypeSpecifierPtr& specifier,
                    const std::shared_ptr<vl_db::IPropertySet>& propertySet);

    EnumPropGrid<T>* grid() const { return m_grid; }
    bool isMapping() const;
    // The first column's share of the grid's width.
    double valueColumnShare() const { return m_share; }

private:
    void onSize(wxSizeEvent& event);
    void onColumnSize(wxGridSizeEvent& event);
    void onMapping(wxCommandEvent& event);
    void onAdd(wxCommandEvent& event);
    void onRemove(wxCommandEvent& event);
    void onMoveUp(wxCommandEvent& event);
    void onMoveDown(wxCommandEvent& event);
    void onOk(wxCommandEvent& event);

    void move(bool upwards);
    // The width the two columns share.
    int availableWidth() const;
    void fitColumns();

    uint32_t m_definitionId;
    std::shared_ptr<vl_db::IPropertySet> m_propertySet;
    int m_code;
    EnumPropGrid<T>* m_grid = nullptr;
    wxCheckBox* m_mapping = nullptr;
    wxCheckBox* m_allowCustom = nullptr;
    double m_share = 0.5;
    bool m_editable = true;
};

// Opens the editor that fits the definition's type (integer, real or text), modally, and keeps
// its window rectangle. False, with nothing shown, for a definition of another type or one the
// set does not have.
bool editEnumeration(wxWindow* parent, const std::shared_ptr<vl_db::IPropertySet>& propertySet, uint32_t definitionId);

extern template class EnumPropGrid<long long>;
extern template class EnumPropGrid<double>;
extern template class EnumPropGrid<OdString>;
extern template class DlgEnumProperty<long long>;
extern template class DlgEnumProperty<double>;
extern template class DlgEnumProperty<OdString>;

}  // namespace vl_app
