#include "app/common/ListHelpers.h"

#include <wx/bmpbuttn.h>
#include <wx/statbmp.h>

#include "app/common/Previews.h"

namespace vl_app {

std::set<unsigned> selectedIDs(wxListCtrl* list) {
    std::set<unsigned> ids;
    if (!list || list->GetItemCount() == 0 || list->GetSelectedItemCount() == 0)
        return ids;
    for (long row = 0; row < list->GetItemCount(); ++row)
        if (list->GetItemState(row, wxLIST_STATE_SELECTED) & wxLIST_STATE_SELECTED)
            ids.insert(static_cast<unsigned>(list->GetItemData(row)));
    return ids;
}

void clear(wxListCtrl* list) {
    if (!list)
        return;
    list->DeleteAllItems();
    if (wxImageList* images = list->GetImageList(wxIMAGE_LIST_SMALL))
        for (int index = images->GetImageCount() - 1; index >= 1; --index)
            images->Remove(index);
}

void autoColumnSize(wxListCtrl* list) {
    if (list)
        list->SetColumnWidth(0, list->GetClientSize().x - 6);
}

namespace {
wxBitmap materialThumbnail(wxImageList* images, const QcSmartPtr<vantlib::Material>& material) {
    if (!images)
        return wxNullBitmap;
    return hatchPreview(material, vl_db::kHatchSection, images->GetSize());
}

int add(wxImageList* images, const wxBitmap& bitmap) {
    return images && bitmap.IsOk() ? images->Add(bitmap) : 0;
}

bool replace(wxImageList* images, int index, const wxBitmap& bitmap) {
    return images && bitmap.IsOk() && images->Replace(index, bitmap);
}

// A composition thumbnail fitted to the list's image size, which the dialog chose by density.
wxBitmap compositionImage(wxImageList* images, const QcSmartPtr<vantlib::Composition>& composition) {
    if (!images)
        return wxNullBitmap;
    const wxBitmap thumbnail = compositionThumbnail(composition);
    const wxSize size = images->GetSize();
    if (!thumbnail.IsOk() || thumbnail.GetSize() == size)
        return thumbnail;
    return wxBitmap(thumbnail.ConvertToImage().Scale(size.x, size.y, wxIMAGE_QUALITY_HIGH));
}
}  // namespace

int addToImageList(wxImageList* images, const QcSmartPtr<vantlib::Material>& material) {
    return add(images, materialThumbnail(images, material));
}

int addToImageList(wxImageList* images, const QcSmartPtr<vantlib::Composition>& composition) {
    return add(images, compositionImage(images, composition));
}

bool updateInImageList(wxImageList* images, int index, const QcSmartPtr<vantlib::Material>& material) {
    return replace(images, index, materialThumbnail(images, material));
}

bool updateInImageList(wxImageList* images, int index, const QcSmartPtr<vantlib::Composition>& composition) {
    return replace(images, index, compositionImage(images, composition));
}

void setBitmap(wxWindow* window, const wxBitmap& bitmap) {
    if (auto* picture = wxDynamicCast(window, wxStaticBitmap)) {
        // Setting a bitmap resizes the control; the dialog's layout must not move.
        const wxSize size = picture->GetClientSize();
        picture->SetBitmap(bitmap);
        picture->SetClientSize(size);
    } else if (auto* button = wxDynamicCast(window, wxBitmapButton)) {
        button->SetBitmap(bitmap, wxLEFT);
        button->SetBitmapDisabled(bitmap);
    }
    if (window)
        window->Refresh(true);
}

}  // namespace vl_app
