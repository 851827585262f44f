#pragma once
// Thumbnails of list rows, drawn when a row is first painted and kept by what they depict, so
// that rows showing the same thing (materials sharing a hatch) share one picture. One image
// list serves both lists of a dialog.
#include <functional>
#include <string>
#include <unordered_map>

#include <wx/bitmap.h>
#include <wx/imaglist.h>
#include <wx/string.h>

namespace vl_app {

class ListThumbnails {
public:
    // Square pictures of `edge` pixels; image 0 is `placeholder`.
    ListThumbnails(int edge, const wxBitmap& placeholder);

    int edge() const { return m_edge; }
    wxImageList* images() { return &m_images; }

    // Image index of the picture for `depiction`, drawn with `draw` on first request; 0 (the
    // placeholder) for an empty depiction or a picture that cannot be drawn (also kept).
    int index(const std::string& depiction, const std::function<wxBitmap()>& draw);
    // The picture already drawn for `depiction`; null when there is none yet.
    wxBitmap picture(const std::string& depiction) const;
    // Pictures drawn so far (requests answered from the cache do not count).
    unsigned drawn() const { return m_drawn; }

private:
    int m_edge;
    wxImageList m_images;
    std::unordered_map<std::string, int> m_index;
    unsigned m_drawn = 0;
};

}  // namespace vl_app
