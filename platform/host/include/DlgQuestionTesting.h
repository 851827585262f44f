#pragma once
// Lets tests answer a DlgQuestion through wxWidgets' modal testing hook:
//     wxTEST_DIALOG(code, wxExpectModal<wxg::DlgQuestion>(5301, true));
// The optional inspector sees the dialog before it is answered (prompts, offered answers).
#include <functional>

#include <wx/testing.h>

#include "DlgQuestion.h"

template <>
class wxExpectModal<wxg::DlgQuestion> : public wxExpectModalBase<wxg::DlgQuestion> {
public:
    explicit wxExpectModal(int answerId, bool checked = false,
                           std::function<void(wxg::DlgQuestion&)> inspector = {})
        : m_answerId(answerId), m_checked(checked), m_inspector(std::move(inspector)) {}

protected:
    int OnInvoked(wxg::DlgQuestion* dlg) const override {
        if (m_inspector)
            m_inspector(*dlg);
        dlg->setChecked(m_checked);
        return m_answerId;
    }

private:
    int m_answerId;
    bool m_checked;
    std::function<void(wxg::DlgQuestion&)> m_inspector;
};
