#pragma once
// The drawing open in the studio; it is the application's active document.
#include <memory>

#include <wx/string.h>

class OdDbDatabase;

namespace ca { class CaApp; }

class DrawingSession {
public:
    explicit DrawingSession(ca::CaApp& app);
    ~DrawingSession();

    // Opens `path` and makes it the active drawing. On failure the previous drawing stays open
    // and `error` says why.
    bool open(const wxString& path, wxString& error);
    void close();
    OdDbDatabase* database() const { return m_db.get(); }

private:
    ca::CaApp& m_app;
    std::unique_ptr<OdDbDatabase> m_db;
};
