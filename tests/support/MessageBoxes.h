#pragma once
// Answers to the message boxes a test expects (wxTEST_DIALOG): OK after checking the text, or
// OK after keeping it for the test to look at.
#include <gtest/gtest.h>
#include <wx/msgdlg.h>
#include <wx/testing.h>

namespace vl_test {

class ExpectMessage : public wxExpectModal<wxMessageDialog> {
public:
    explicit ExpectMessage(const wxString& text) : wxExpectModal<wxMessageDialog>(wxID_OK), m_text(text) {}

protected:
    int OnInvoked(wxMessageDialog* dialog) const override {
        EXPECT_EQ(dialog->GetMessage(), m_text);
        return wxID_OK;
    }

private:
    wxString m_text;
};

class CaptureMessage : public wxExpectModal<wxMessageDialog> {
public:
    explicit CaptureMessage(wxString& text) : wxExpectModal<wxMessageDialog>(wxID_OK), m_text(text) {}

protected:
    int OnInvoked(wxMessageDialog* dialog) const override {
        m_text = dialog->GetMessage();
        return wxID_OK;
    }

private:
    wxString& m_text;
};

}  // namespace vl_test
