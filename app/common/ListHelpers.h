#pragma once
// Object lists of the library dialogs: each row's item data is the object's id and each row's
// image an index into the list's small image list, whose image 0 is a placeholder that stays.
#include <set>

#include <wx/bitmap.h>
#include <wx/imaglist.h>
#include <wx/listctrl.h>
#include <wx/window.h>

#include <QcSmartPtr.h>

#include <vantlib/Composition.h>
#include <vantlib/Material.h>

namespace vl_app {

// Ids of the selected rows, each once, ascending.
std::set<unsigned> selectedIDs(wxListCtrl* list);
// Deletes every row and every image but the placeholder.
void clear(wxListCtrl* list);
// Makes the single column as wide as the list's client area allows.
void autoColumnSize(wxListCtrl* list);

// Adds the thumbnail of a material (its section hatch) or of a composition (its plies) and
// returns its index; 0, the placeholder, when no picture can be made.
int addToImageList(wxImageList* images, const QcSmartPtr<vantlib::Material>& material);
int addToImageList(wxImageList* images, const QcSmartPtr<vantlib::Composition>& composition);
// Replaces the image at `index` with the object's thumbnail; false when none can be made.
bool updateInImageList(wxImageList* images, int index, const QcSmartPtr<vantlib::Material>& material);
bool updateInImageList(wxImageList* images, int index, const QcSmartPtr<vantlib::Composition>& composition);

// Shows a bitmap on a wxStaticBitmap (keeping the control's layout size) or a wxBitmapButton
// (also as its disabled bitmap).
void setBitmap(wxWindow* window, const wxBitmap& bitmap);

}  // namespace vl_app
