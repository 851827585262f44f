#pragma once
// The command line: the history of prompt output above an input field for typed commands.
#include <functional>

#include <wx/panel.h>

class wxTextCtrl;

class CommandLinePane : public wxPanel {
public:
    CommandLinePane(wxWindow* parent, std::function<void(const wxString&)> execute);

    void appendLine(const wxString& line);

private:
    void onEnter();

    wxTextCtrl* m_history;
    wxTextCtrl* m_input;
    std::function<void(const wxString&)> m_execute;
};
