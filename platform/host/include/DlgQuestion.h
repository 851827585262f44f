#pragma once
// Modal question with up to three answers (ids 5300, 5301, 5302), each a large button with a
// bold label and a description, and an optional check box. ShowModal returns the chosen
// answer's id, or wxID_CANCEL when the dialog is closed.
#include <array>

#include <wx/dialog.h>

class wxCheckBox;

namespace wxg {

class DlgQuestion : public wxDialog {
public:
    enum { kFirstAnswer = 5300, kSecondAnswer = 5301, kThirdAnswer = 5302 };

    DlgQuestion(wxWindow* parent, const wxString& title);

    void setPrompts(const wxString& first, const wxString& second = wxString());
    // Throws std::invalid_argument for an id outside 5300..5302.
    void addAnswer(int id, const wxString& label, const wxString& description);
    // Which answers are offered: bit 0 -> 5300, bit 1 -> 5301, bit 2 -> 5302. Answers without a
    // label are never offered.
    void setAnswersMask(unsigned mask) { m_mask = mask & 7u; }
    unsigned answersMask() const { return m_mask; }
    bool isOffered(int id) const;
    wxString answerLabel(int id) const;
    wxString answerDescription(int id) const;

    // An empty text hides the check box.
    void setCheckBoxText(const wxString& text) { m_checkText = text; }
    bool isChecked() const { return m_checked; }
    void setChecked(bool checked);

    int ShowModal() override;

private:
    struct Answer {
        wxString label;
        wxString description;
    };
    void buildLayout();
    void onAnswer(int id);

    wxString m_first;
    wxString m_second;
    std::array<Answer, 3> m_answers;
    unsigned m_mask = 7;
    wxString m_checkText;
    bool m_checked = false;
    wxCheckBox* m_checkBox = nullptr;
    bool m_built = false;
};

}  // namespace wxg
