#include "app/common/ListThumbnails.h"

#include <wx/image.h>

namespace vl_app {

ListThumbnails::ListThumbnails(int edge, const wxBitmap& placeholder) : m_edge(edge), m_images(edge, edge, true, 1) {
    wxBitmap first = placeholder;
    if (!first.IsOk() || first.GetWidth() != edge || first.GetHeight() != edge) {
        wxImage blank(edge, edge);
        blank.InitAlpha();
        std::fill(blank.GetAlpha(), blank.GetAlpha() + edge * edge, 0);
        first = first.IsOk() ? wxBitmap(first.ConvertToImage().Rescale(edge, edge, wxIMAGE_QUALITY_HIGH)) : wxBitmap(blank);
    }
    m_images.Add(first);
}

int ListThumbnails::index(const std::string& depiction, const std::function<wxBitmap()>& draw) {
    if (depiction.empty())
        return 0;
    const auto found = m_index.find(depiction);
    if (found != m_index.end())
        return found->second;
    ++m_drawn;
    wxBitmap picture = draw();
    if (picture.IsOk() && (picture.GetWidth() != m_edge || picture.GetHeight() != m_edge))
        picture = wxBitmap(picture.ConvertToImage().Rescale(m_edge, m_edge, wxIMAGE_QUALITY_HIGH));
    const int added = picture.IsOk() ? m_images.Add(picture) : 0;
    m_index.emplace(depiction, added < 0 ? 0 : added);
    return added < 0 ? 0 : added;
}

wxBitmap ListThumbnails::picture(const std::string& depiction) const {
    const auto found = m_index.find(depiction);
    if (found == m_index.end() || found->second <= 0)
        return wxNullBitmap;
    return m_images.GetBitmap(found->second);
}

}  // namespace vl_app
