#include "CommandLinePane.h"

#include <wx/intl.h>
#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

CommandLinePane::CommandLinePane(wxWindow* parent, std::function<void(const wxString&)> execute)
    : wxPanel(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL, "VL_COMMAND_LINE"),
      m_execute(std::move(execute)) {
    const wxFont mono(wxFontInfo(GetFont().GetPointSize()).Family(wxFONTFAMILY_TELETYPE));
    m_history = new wxTextCtrl(this, wxID_ANY, wxString(), wxDefaultPosition, FromDIP(wxSize(-1, 120)),
                               wxTE_MULTILINE | wxTE_READONLY | wxTE_RICH2 | wxTE_DONTWRAP, wxDefaultValidator,
                               "VL_PROMPT_HISTORY");
    m_history->SetFont(mono);

    auto* inputRow = new wxBoxSizer(wxHORIZONTAL);
    auto* label = new wxStaticText(this, wxID_ANY, _("Command:"));
    label->SetFont(mono);
    inputRow->Add(label, 0, wxALIGN_CENTER_VERTICAL | wxRIGHT, FromDIP(6));
    m_input = new wxTextCtrl(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize, wxTE_PROCESS_ENTER);
    m_input->SetFont(mono);
    m_input->SetHint(_("Type a command and press Enter"));
    m_input->Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent&) { onEnter(); });
    inputRow->Add(m_input, 1, wxEXPAND);

    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(m_history, 1, wxEXPAND);
    column->Add(inputRow, 0, wxEXPAND | wxTOP, FromDIP(4));
    SetSizer(column);
}

void CommandLinePane::appendLine(const wxString& line) {
    if (!m_history->IsEmpty())
        m_history->AppendText("\n");
    m_history->AppendText(line);
    m_history->ShowPosition(m_history->GetLastPosition());
}

void CommandLinePane::onEnter() {
    const wxString text = m_input->GetValue().Strip(wxString::both);
    m_input->Clear();
    if (text.empty())
        return;
    appendLine(_("Command: ") + text);
    m_execute(text);
}
