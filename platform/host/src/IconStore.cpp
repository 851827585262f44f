#include "IconStore.h"

#include <wx/app.h>
#include <wx/artprov.h>
#include <wx/display.h>
#include <wx/image.h>
#include <wx/settings.h>
#include <wx/window.h>

#include "MainWindow.h"

namespace wxg {

namespace {

// Stock pictures that stand in for themed icons nobody registered.
wxArtID stockPicture(const wxString& name) {
    static const std::map<wxString, wxArtID> stock = {
        {"NEW", wxART_NEW},           {"ERASE", wxART_DELETE},       {"DELETE", wxART_DELETE},
        {"COPY", wxART_COPY},         {"PASTE", wxART_PASTE},        {"FILTER", wxART_FIND},
        {"FIND", wxART_FIND},         {"OPEN", wxART_FILE_OPEN},     {"SAVE", wxART_FILE_SAVE},
        {"UNDO", wxART_UNDO},         {"REDO", wxART_REDO},          {"ALERT", wxART_WARNING},
        {"WARNING", wxART_WARNING},   {"ERROR", wxART_ERROR},        {"INFO", wxART_INFORMATION},
        {"UP", wxART_GO_UP},          {"DOWN", wxART_GO_DOWN},       {"FOLDER", wxART_FOLDER},
        {"HELP", wxART_HELP},         {"EDIT", wxART_EDIT},          {"PLUS", wxART_PLUS},
        {"MINUS", wxART_MINUS},       {"CLOSE", wxART_CLOSE},        {"REFRESH", wxART_REFRESH},
        {"MOVE_UP", wxART_GO_UP},     {"MOVE_DOWN", wxART_GO_DOWN},
    };
    auto it = stock.find(name.Upper());
    return it == stock.end() ? wxArtID() : it->second;
}

}  // namespace

IconStore& IconStore::instance() {
    static IconStore store;
    return store;
}

void IconStore::add(const wxString& name, const wxBitmap& bitmap) { m_bitmaps[name] = bitmap; }

bool IconStore::contains(const wxString& name) const { return m_bitmaps.count(name) != 0; }

wxBitmap IconStore::bitmap(const wxString& name, int size) const {
    const int wanted = size > 0 ? size : smallIconSize();
    auto it = m_bitmaps.find(name);
    if (it != m_bitmaps.end()) {
        const wxBitmap& stored = it->second;
        if (!stored.IsOk() || (stored.GetWidth() == wanted && stored.GetHeight() == wanted) || size <= 0)
            return stored;
        return wxBitmap(stored.ConvertToImage().Rescale(wanted, wanted, wxIMAGE_QUALITY_HIGH));
    }
    const wxArtID art = stockPicture(name);
    if (art.empty())
        return wxNullBitmap;
    return wxArtProvider::GetBitmap(art, wxART_OTHER, wxSize(wanted, wanted));
}

bool isDpiForLargeIcons() {
    wxWindow* window = mainWindow();
    if (window && window->GetDPIScaleFactor() >= 1.5)
        return true;
    const int index = window ? wxDisplay::GetFromWindow(window) : 0;
    const wxDisplay display(index == wxNOT_FOUND ? 0u : static_cast<unsigned>(index));
    return display.GetPPI().y >= 144;
}

int smallIconSize() { return isDpiForLargeIcons() ? 32 : 16; }

wxColour readOnlyTextColour() {
    // A mid grey that stays readable on both light and dark window backgrounds.
    const wxColour background = wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOW);
    const bool dark = background.GetLuminance() < 0.5;
    return dark ? wxColour(153, 153, 153) : wxColour(102, 102, 102);
}

}  // namespace wxg
