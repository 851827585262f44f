#include "DrawingSession.h"

#include <wx/filename.h>
#include <wx/intl.h>

#include "CaApp.h"
#include "OdDbDatabase.h"
#include "OdStringWx.h"

DrawingSession::DrawingSession(ca::CaApp& app) : m_app(app) {}

DrawingSession::~DrawingSession() { close(); }

bool DrawingSession::open(const wxString& path, wxString& error) {
    if (!wxFileName::FileExists(path)) {
        error = wxString::Format(_("The drawing %s does not exist."), path);
        return false;
    }
    std::unique_ptr<OdDbDatabase> opened;
    try {
        opened = OdDbDatabase::open(toOd(wxFileName(path).GetAbsolutePath()));
    } catch (const OdError& e) {
        switch (e.code()) {
        case eNotADrawing:
            error = wxString::Format(_("%s is not a drawing, or it is damaged."), path);
            break;
        case eIncompatibleVersion:
            error = wxString::Format(_("%s was written by a newer version and cannot be opened."), path);
            break;
        default:
            error = wxString::Format(_("The drawing %s could not be opened: %s"), path, toWx(e.description()));
            break;
        }
        return false;
    } catch (const std::exception& e) {
        error = wxString::Format(_("The drawing %s could not be opened: %s"), path, wxString::FromUTF8(e.what()));
        return false;
    }
    // Reactors see the new drawing before the old one goes away.
    std::unique_ptr<OdDbDatabase> previous = std::move(m_db);
    m_db = std::move(opened);
    m_app.setActiveDatabase(m_db.get());
    return true;
}

void DrawingSession::close() {
    if (!m_db)
        return;
    if (m_app.activeDatabase() == m_db.get())
        m_app.setActiveDatabase(nullptr);
    m_db.reset();
}
