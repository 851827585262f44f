#pragma once
// Themed pictures by name, the display density and the themed colours of the host.
#include <map>

#include <wx/bitmap.h>
#include <wx/colour.h>
#include <wx/string.h>

namespace wxg {

class IconStore {
public:
    static IconStore& instance();

    void add(const wxString& name, const wxBitmap& bitmap);
    bool contains(const wxString& name) const;
    // A registered picture; else one of the host's stock pictures for that name; else a null
    // bitmap. `size` (pixels) 0 means the host's small-icon size.
    wxBitmap bitmap(const wxString& name, int size = 0) const;

private:
    std::map<wxString, wxBitmap> m_bitmaps;
};

inline wxBitmap themedBitmap(const wxString& name, int size = 0) { return IconStore::instance().bitmap(name, size); }

// True when the screen's density calls for the large (double-size) icons.
bool isDpiForLargeIcons();
int smallIconSize();
// Colour of text in read-only fields and cells.
wxColour readOnlyTextColour();

}  // namespace wxg
