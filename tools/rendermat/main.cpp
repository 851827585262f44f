// vl_rendermat FOLDER: writes the preview pictures of every render material of the host's
// library into FOLDER/thumbnails (64 pixels) and FOLDER/thumbnails_x2 (128 pixels).
#include <cstdio>
#include <exception>

#include <wx/image.h>
#include <wx/init.h>

#include "RenderMaterialLibrary.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: vl_rendermat FOLDER\n");
        return 2;
    }
    wxInitializer initializer;
    if (!initializer.IsOk()) {
        std::fprintf(stderr, "vl_rendermat: wxWidgets could not be initialised\n");
        return 1;
    }
    wxImage::AddHandler(new wxPNGHandler);
    try {
        const ca::RenderMaterialLibrary library(wxString::FromUTF8(argv[1]));
        const int written = ca::writeRenderMaterialThumbnails(library);
        std::printf("vl_rendermat: %d pictures of %zu materials in %s\n", written, library.materials().size(), argv[1]);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "vl_rendermat: %s\n", e.what());
        return 1;
    }
    return 0;
}
