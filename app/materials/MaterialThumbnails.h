#pragma once
// Thumbnails of materials for the list image lists. A thumbnail depends only on the material's
// section hatch, so materials that share a pattern share one picture, drawn once.
#include <map>
#include <tuple>

#include <wx/bitmap.h>
#include <wx/gdicmn.h>
#include <wx/string.h>

#include <QcSmartPtr.h>

#include <vantlib/Material.h>

namespace vl_app {

class MaterialThumbnails {
public:
    // Everything a hatch picture depends on: kind, name, scale, angle, crossing, edge.
    using Key = std::tuple<unsigned, wxString, double, double, bool, int>;

    // The key of the section hatch of `material` drawn `edge` pixels square.
    static Key key(const QcSmartPtr<const vantlib::Material>& material, int edge);

    // The picture for the key, drawn on first request from `material`; a null bitmap when the
    // hatch cannot be drawn (that answer is kept too).
    const wxBitmap& thumbnail(const Key& key, const QcSmartPtr<const vantlib::Material>& material);

    // How many pictures were drawn (requests answered from the cache do not count).
    unsigned drawn() const { return m_drawn; }
    void clear();

private:
    std::map<Key, wxBitmap> m_pictures;
    unsigned m_drawn = 0;
};

}  // namespace vl_app
