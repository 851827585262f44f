// vlstudio: the host application of the library modules.
#include <cstdio>
#include <string>

#include <wx/app.h>
#include <wx/log.h>

#include "StudioApp.h"
#include "StudioHost.h"
#include "StudioOptions.h"
#include "Translations.h"

wxIMPLEMENT_APP_NO_MAIN(StudioApp);

int main(int argc, char** argv) {
    StudioOptions options;
    std::string error;
    if (!options.parse(argc, argv, error)) {
        std::fprintf(stderr, "vlstudio: %s\n\n%s", error.c_str(), StudioOptions::usage());
        return 2;
    }
    if (options.help) {
        std::fputs(StudioOptions::usage(), stdout);
        return 0;
    }
    // Decided before the toolkit starts: listing needs no display.
    if (options.listCommands)
        return listCommandsWithoutDisplay(options);
    // Until the toolkit is up, wx's messages (why it could not start, above all) go to stderr:
    // its message boxes would need the display that may be missing. OnInit hands them back.
    delete wxLog::SetActiveTarget(new wxLogStderr);
    chooseToolkitLanguage(options.lang);
    auto* app = new StudioApp;
    app->setOptions(options);
    wxApp::SetInstance(app);
    // Only the program name goes to wx: the studio has parsed its own options.
    int wxArgc = 1;
    const int result = wxEntry(wxArgc, argv);
    return StudioApp::s_exitCode >= 0 ? StudioApp::s_exitCode : result;
}
