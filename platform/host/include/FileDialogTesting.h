#pragma once
// Lets tests answer the file-path service (ca::getFilePath) through wxWidgets' modal testing
// hook:
//     wxTEST_DIALOG(ca::getFilePath(path, request), ExpectFilePath("/data/psets.xml"));
// wx's own wxExpectModal<wxFileDialog> is not enough under GTK: the native chooser takes a path
// set from code only once its pending events have been handled, so this one handles them.
#include <chrono>

#include <wx/app.h>
#include <wx/filedlg.h>
#include <wx/testing.h>
#include <wx/utils.h>

class ExpectFilePath : public wxExpectModalBase<wxFileDialog, ExpectFilePath> {
public:
    explicit ExpectFilePath(const wxString& path, int id = wxID_OK) : m_path(path), m_id(id) {}

protected:
    int OnInvoked(wxFileDialog* dialog) const override {
        dialog->SetPath(m_path);
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(3);
        while (dialog->GetPath() != m_path && std::chrono::steady_clock::now() < end) {
            wxTheApp->Yield(true);
            wxMilliSleep(5);
        }
        return m_id;
    }

private:
    wxString m_path;
    int m_id;
};
