#include "ScreenRect.h"

#include <wx/toplevel.h>

#ifdef __WXGTK__
#include <dlfcn.h>
#endif

namespace {

#ifdef __WXGTK__
// GTK's own answer, looked up in the toolkit wxWidgets already loaded (its headers are not
// needed for two calls with plain C types).
bool gtkFrameExtents(wxTopLevelWindow* window, wxRect& rect) {
    struct Rectangle {
        int x, y, width, height;
    };
    using GetWindow = void* (*)(void*);
    using GetFrameExtents = void (*)(void*, Rectangle*);
    static const auto getWindow = reinterpret_cast<GetWindow>(dlsym(RTLD_DEFAULT, "gtk_widget_get_window"));
    static const auto getExtents = reinterpret_cast<GetFrameExtents>(dlsym(RTLD_DEFAULT, "gdk_window_get_frame_extents"));
    void* widget = window->GetHandle();
    if (!getWindow || !getExtents || !widget)
        return false;
    void* gdkWindow = getWindow(widget);
    if (!gdkWindow)
        return false;
    Rectangle extents{0, 0, 0, 0};
    getExtents(gdkWindow, &extents);
    if (extents.width <= 1 || extents.height <= 1)
        return false;
    rect = wxRect(extents.x, extents.y, extents.width, extents.height);
    return true;
}
#endif

}  // namespace

wxRect onScreenRect(wxTopLevelWindow* window) {
#ifdef __WXGTK__
    wxRect rect;
    if (gtkFrameExtents(window, rect))
        return rect;
#endif
    return window->GetScreenRect();
}
