#include "app/common/ObjectListCtrl.h"

#include <OdStringWx.h>

namespace vl_app {

wxIMPLEMENT_DYNAMIC_CLASS(ObjectListCtrl, wxListCtrl);

void ObjectListCtrl::attach(const ObjectListModel* model, RowPictures* pictures) {
    m_model = model;
    m_pictures = pictures;
    reload();
}

void ObjectListCtrl::reload() {
    const long count = m_model ? m_model->size() : 0;
    SetItemCount(count);
    Refresh();
}

unsigned ObjectListCtrl::idAt(long row) const {
    return m_model && m_model->valid(row) ? m_model->row(row).id : 0;
}

void ObjectListCtrl::fitColumn() {
    if (GetColumnCount() > 0)
        SetColumnWidth(0, std::max(GetClientSize().x - 6, 20));
}

wxString ObjectListCtrl::OnGetItemText(long item, long) const {
    return m_model && m_model->valid(item) ? toWx(m_model->row(item).name) : wxString();
}

int ObjectListCtrl::OnGetItemImage(long item) const {
    // A list without pictures draws no image.
    if (!m_pictures)
        return -1;
    if (!m_model || !m_model->valid(item))
        return 0;
    return m_pictures->imageOf(*m_model, item);
}

}  // namespace vl_app
