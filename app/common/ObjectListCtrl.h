#pragma once
// A list of library objects in virtual report mode: it holds no rows of its own and asks its
// model for the text, and its picture source for the image, of the rows it paints. Layouts
// create it as the subclass "ObjectListCtrl" of a wxListCtrl with the wxLC_VIRTUAL style.
#include <wx/listctrl.h>

#include "app/common/ObjectListModel.h"

namespace vl_app {

// Gives the image index of a painted row.
class RowPictures {
public:
    virtual ~RowPictures() = default;
    virtual int imageOf(const ObjectListModel& model, long row) = 0;
};

class ObjectListCtrl : public wxListCtrl {
public:
    ObjectListCtrl() = default;

    // Neither is owned; both must outlive the control's painting. Without `pictures` the rows
    // show text only.
    void attach(const ObjectListModel* model, RowPictures* pictures);
    const ObjectListModel* model() const { return m_model; }

    // Shows the model's rows again (after the model changed).
    void reload();
    // Object id of a row; 0 for a row the model does not have.
    unsigned idAt(long row) const;
    // Gives the single column the list's client width (less a margin for the border).
    void fitColumn();

protected:
    wxString OnGetItemText(long item, long column) const override;
    int OnGetItemImage(long item) const override;

private:
    const ObjectListModel* m_model = nullptr;
    RowPictures* m_pictures = nullptr;

    wxDECLARE_DYNAMIC_CLASS(ObjectListCtrl);
};

}  // namespace vl_app
