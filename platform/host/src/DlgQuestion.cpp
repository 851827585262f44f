#include "DlgQuestion.h"

#include <stdexcept>

#include <wx/artprov.h>
#include <wx/checkbox.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/statline.h>
#include <wx/stattext.h>

#include "CommandLinkButton.h"

namespace wxg {

namespace {
bool isAnswerId(int id) { return id >= DlgQuestion::kFirstAnswer && id <= DlgQuestion::kThirdAnswer; }
}  // namespace

DlgQuestion::DlgQuestion(wxWindow* parent, const wxString& title)
    : wxDialog(parent, wxID_ANY, title, wxDefaultPosition, wxDefaultSize, wxDEFAULT_DIALOG_STYLE, "DlgQuestion") {}

void DlgQuestion::setPrompts(const wxString& first, const wxString& second) {
    m_first = first;
    m_second = second;
}

void DlgQuestion::addAnswer(int id, const wxString& label, const wxString& description) {
    if (!isAnswerId(id))
        throw std::invalid_argument("A question's answer ids are 5300, 5301 and 5302");
    m_answers[id - kFirstAnswer] = {label, description};
}

bool DlgQuestion::isOffered(int id) const {
    return isAnswerId(id) && (m_mask & (1u << (id - kFirstAnswer))) && !m_answers[id - kFirstAnswer].label.empty();
}

wxString DlgQuestion::answerLabel(int id) const { return isAnswerId(id) ? m_answers[id - kFirstAnswer].label : wxString(); }

wxString DlgQuestion::answerDescription(int id) const {
    return isAnswerId(id) ? m_answers[id - kFirstAnswer].description : wxString();
}

void DlgQuestion::setChecked(bool checked) {
    m_checked = checked;
    if (m_checkBox)
        m_checkBox->SetValue(checked);
}

int DlgQuestion::ShowModal() {
    buildLayout();
    // wxDialog::ShowModal runs wxWidgets' modal hook first, so tests can answer the question.
    return wxDialog::ShowModal();
}

void DlgQuestion::buildLayout() {
    if (m_built)
        return;
    m_built = true;
    const int wrap = FromDIP(420);
    const int gap = FromDIP(12);

    auto* top = new wxBoxSizer(wxVERTICAL);
    auto* header = new wxBoxSizer(wxHORIZONTAL);
    header->Add(new wxStaticBitmap(this, wxID_ANY, wxArtProvider::GetBitmap(wxART_QUESTION, wxART_MESSAGE_BOX)),
                0, wxALIGN_TOP | wxRIGHT, gap);
    auto* prompts = new wxBoxSizer(wxVERTICAL);
    if (!m_first.empty()) {
        auto* first = new wxStaticText(this, wxID_ANY, m_first);
        first->SetFont(first->GetFont().Bold());
        first->Wrap(wrap);
        prompts->Add(first, 0, wxBOTTOM, FromDIP(6));
    }
    if (!m_second.empty()) {
        auto* second = new wxStaticText(this, wxID_ANY, m_second);
        second->Wrap(wrap);
        prompts->Add(second, 0);
    }
    header->Add(prompts, 1, wxEXPAND);
    top->Add(header, 0, wxEXPAND | wxALL, gap);

    auto* answers = new wxBoxSizer(wxVERTICAL);
    wxWindow* firstAnswer = nullptr;
    for (int id = kFirstAnswer; id <= kThirdAnswer; ++id) {
        if (!isOffered(id))
            continue;
        const Answer& answer = m_answers[id - kFirstAnswer];
        auto* button = new CommandLinkButton(this, id, answer.label, answer.description, wrap - FromDIP(32));
        answers->Add(button, 0, wxEXPAND | wxBOTTOM, FromDIP(4));
        if (!firstAnswer)
            firstAnswer = button;
    }
    top->Add(answers, 0, wxEXPAND | wxLEFT | wxRIGHT, gap + FromDIP(20));
    Bind(wxEVT_BUTTON, [this](wxCommandEvent& event) {
        if (isAnswerId(event.GetId()))
            onAnswer(event.GetId());
        else
            event.Skip();
    });

    if (!m_checkText.empty()) {
        top->Add(new wxStaticLine(this), 0, wxEXPAND | wxLEFT | wxRIGHT | wxTOP, gap);
        m_checkBox = new wxCheckBox(this, wxID_ANY, m_checkText);
        m_checkBox->SetValue(m_checked);
        m_checkBox->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent& event) { m_checked = event.IsChecked(); });
        top->Add(m_checkBox, 0, wxALL, gap);
    } else {
        top->AddSpacer(gap);
    }

    SetEscapeId(wxID_CANCEL);
    SetSizerAndFit(top);
    CentreOnParent();
    if (firstAnswer)
        firstAnswer->SetFocus();
}

void DlgQuestion::onAnswer(int id) {
    if (m_checkBox)
        m_checked = m_checkBox->GetValue();
    if (IsModal())
        EndModal(id);
    else
        SetReturnCode(id);
}

}  // namespace wxg
