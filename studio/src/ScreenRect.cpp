#include "ScreenRect.h"

#include <wx/toplevel.h>

#ifdef __WXGTK__
#include <dlfcn.h>

#include <cstdint>
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

// GTK draws a widget with its children into any cairo context; the symbols are looked up in
// the toolkit and cairo that wxWidgets already loaded.
wxImage gtkRenderedWindow(wxTopLevelWindow* window) {
    using SurfaceCreate = void* (*)(int, int, int);
    using Create = void* (*)(void*);
    using Draw = void (*)(void*, void*);
    using Size = int (*)(void*);
    using Destroy = void (*)(void*);
    using Data = unsigned char* (*)(void*);
    using Stride = int (*)(void*);
    static const auto surfaceCreate = reinterpret_cast<SurfaceCreate>(dlsym(RTLD_DEFAULT, "cairo_image_surface_create"));
    static const auto create = reinterpret_cast<Create>(dlsym(RTLD_DEFAULT, "cairo_create"));
    static const auto draw = reinterpret_cast<Draw>(dlsym(RTLD_DEFAULT, "gtk_widget_draw"));
    static const auto width = reinterpret_cast<Size>(dlsym(RTLD_DEFAULT, "gtk_widget_get_allocated_width"));
    static const auto height = reinterpret_cast<Size>(dlsym(RTLD_DEFAULT, "gtk_widget_get_allocated_height"));
    static const auto destroy = reinterpret_cast<Destroy>(dlsym(RTLD_DEFAULT, "cairo_destroy"));
    static const auto flush = reinterpret_cast<Destroy>(dlsym(RTLD_DEFAULT, "cairo_surface_flush"));
    static const auto surfaceDestroy = reinterpret_cast<Destroy>(dlsym(RTLD_DEFAULT, "cairo_surface_destroy"));
    static const auto data = reinterpret_cast<Data>(dlsym(RTLD_DEFAULT, "cairo_image_surface_get_data"));
    static const auto stride = reinterpret_cast<Stride>(dlsym(RTLD_DEFAULT, "cairo_image_surface_get_stride"));
    void* widget = window->GetHandle();
    if (!surfaceCreate || !create || !draw || !width || !height || !destroy || !flush || !surfaceDestroy || !data ||
        !stride || !widget)
        return wxImage();
    const int w = width(widget), h = height(widget);
    if (w <= 1 || h <= 1)
        return wxImage();
    constexpr int kArgb32 = 0;  // CAIRO_FORMAT_ARGB32: native-endian 0xAARRGGBB words
    void* surface = surfaceCreate(kArgb32, w, h);
    void* context = create(surface);
    draw(widget, context);
    destroy(context);
    flush(surface);
    wxImage image(w, h);
    const unsigned char* pixels = data(surface);
    const int rowBytes = stride(surface);
    for (int y = 0; y < h; ++y) {
        const auto* row = reinterpret_cast<const uint32_t*>(pixels + size_t(y) * size_t(rowBytes));
        for (int x = 0; x < w; ++x)
            image.SetRGB(x, y, (row[x] >> 16) & 0xff, (row[x] >> 8) & 0xff, row[x] & 0xff);
    }
    surfaceDestroy(surface);
    return image;
}
#endif

}  // namespace

wxImage renderedWindow(wxTopLevelWindow* window) {
#ifdef __WXGTK__
    return gtkRenderedWindow(window);
#else
    (void)window;
    return wxImage();
#endif
}

wxRect onScreenRect(wxTopLevelWindow* window) {
#ifdef __WXGTK__
    wxRect rect;
    if (gtkFrameExtents(window, rect))
        return rect;
#endif
    return window->GetScreenRect();
}
