#include "BuiltinCommands.h"

#include <wx/intl.h>

#include "AboutDialog.h"
#include "DrawingSession.h"
#include "HatchPatternGallery.h"
#include "MainFrame.h"
#include "OaApp.h"
#include "OdStringWx.h"
#include "OutlinePickDialog.h"
#include "PreferencesDialog.h"
#include "Prompt.h"

// `frame` is read when a command runs: commands are registered before the window exists.
void registerBuiltinCommands(oa::OaApp& app, DrawingSession& session, MainFrame*& frame) {
    app.addCommand("about", wxString(), [&app, &frame] {
        AboutDialog dialog(frame, app);
        dialog.ShowModal();
    });
    app.addCommand("preferences", wxString(), [&frame] {
        PreferencesDialog dialog(frame);
        dialog.ShowModal();
    });
    app.addCommand("open", wxString(), [&frame] {
        if (frame)
            frame->chooseAndOpenDrawing();
    });
    app.addCommand("close", wxString(), [&frame] {
        if (frame)
            frame->closeDrawing();
    });
    app.addCommand("etransmit", wxString(), [&app, &session] {
        if (!session.database()) {
            ca::prompt(_("No drawing is open."));
            return;
        }
        const ca::TransmittalFiles files = app.collectTransmittalFiles(session.database());
        ca::prompt(wxString::Format(_("%u file(s) travel with the drawing:"), files.size()));
        for (const auto& file : files)
            ca::prompt("  " + wxString::Format(_("%s (type %d)"), toWx(file.first), static_cast<int>(file.second)));
    });
    app.addCommand("hatch-patterns", _("Hatch patterns"), [&frame] {
        wxg::DlgHatchPatternGallery gallery(frame);
        gallery.ShowModal();
    });
    // The view in which the profiles editor lets the user pick an outline for a custom profile.
    app.addCommand("pick-outline", wxString(), [&session, &frame] {
        if (!session.database()) {
            ca::prompt(_("No drawing is open."));
            return;
        }
        const std::vector<OdDbObjectId> picked = pickOutline(frame, *session.database());
        if (picked.empty())
            ca::prompt(_("No outline was picked."));
        else
            ca::prompt(wxString::Format(wxPLURAL("An outline with %u hole was picked.", "An outline with %u holes was picked.",
                                                 unsigned(picked.size() - 1)),
                                        unsigned(picked.size() - 1)));
    });
    app.addCommand("commands", wxString(), [&app] {
        for (const ca::Command& command : app.commands())
            ca::prompt("  " + command.name);
    });
}
