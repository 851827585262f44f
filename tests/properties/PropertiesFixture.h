#pragma once
// Property-set definitions written into the central library of a fresh drawing, and the
// property sets editor opened on them with the studio's categories and structure holder.
#include <memory>

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/button.h>
#include <wx/srchctrl.h>
#include <wx/stattext.h>
#include <wx/textdlg.h>
#include <wx/testing.h>
#include <wx/xrc/xmlres.h>

#include <OdStringWx.h>

#include <vantlib/PropertySets.h>
#include <vl_db/PropertySets.h>

#include "DrawingWithLibraries.h"
#include "MessageBoxes.h"
#include "StudioPropertySets.h"

#include "app/properties/DlgProperties.h"

namespace vl_props_test {

using vl_app::DlgProperties;
using vl_app::PaneRow;
using vl_db::TypeSpecifier;

// Answers the "Invalid name" prompt as if the user typed `text` (OK) or gave up (Cancel); the
// prompt's message is kept for the test.
class AnswerName : public wxExpectModalBase<wxTextEntryDialog, AnswerName> {
public:
    AnswerName(const wxString& text, wxString* message = nullptr, int id = wxID_OK,
               const wxString& title = "Invalid name")
        : m_text(text), m_message(message), m_id(id), m_title(title) {}

protected:
    int OnInvoked(wxTextEntryDialog* dialog) const override {
        EXPECT_EQ(dialog->GetTitle(), m_title);
        if (m_message) {
            // The prompt's message, line by line as its static texts show it.
            wxArrayString lines;
            for (wxWindow* child : dialog->GetChildren())
                if (auto* text = dynamic_cast<wxStaticText*>(child))
                    lines.push_back(text->GetLabel());
            *m_message = wxJoin(lines, '\n', '\0');
        }
        dialog->SetValue(m_text);
        return m_id;
    }

private:
    wxString m_text;
    wxString* m_message;
    int m_id;
    wxString m_title;
};

// A message box answered with `id` (wxID_YES, wxID_NO, wxID_OK); its text and caption kept.
class AnswerMessage : public wxExpectModalBase<wxMessageDialog, AnswerMessage> {
public:
    AnswerMessage(int id, wxString* text = nullptr, wxString* caption = nullptr) : m_id(id), m_text(text), m_caption(caption) {}

protected:
    int OnInvoked(wxMessageDialog* dialog) const override {
        if (m_text)
            *m_text = dialog->GetMessage();
        if (m_caption)
            *m_caption = dialog->GetTitle();
        return m_id;
    }

private:
    int m_id;
    wxString* m_text;
    wxString* m_caption;
};

// The dialog with its protected handlers reachable, as a host's command would not need them.
class TestDialog : public DlgProperties {
public:
    using DlgProperties::DlgProperties;
    using DlgProperties::isValidName;
    using DlgProperties::messageBoxCaption;
    using DlgProperties::onDefinitionMove;
};

class PropertiesFixture : public vl_test::DrawingWithLibraries {
protected:
    void SetUp() override {
        DrawingWithLibraries::SetUp();
        auto library = vl_db::propertySetLibrary(central);
        auto official = library->createNamespace(L"Official", L"Official sets", true);
        auto walls = official->createPropertySet(L"Pset_WallCommon");
        walls->setLabel(L"Pset_WallCommon");
        definition(*walls, L"Reference", L"Reference", vl_db::kStringCode);
        definition(*walls, L"IsExternal", L"Is external", vl_db::kBooleanCode);

        auto office = library->createNamespace(L"Office", L"Office standards", true);
        auto finishes = office->createPropertySet(L"PSet_A");
        finishes->setLabel(L"Wall finishes");
        finishes->addIfcType(L"IfcWall");
        definition(*finishes, L"Thickness", L"Wall thickness", vl_db::kRealCode);
        definition(*finishes, L"Colour", L"Colour", vl_db::kStringCode);
        definition(*finishes, L"Gloss", L"Gloss", vl_db::kIntegerCode);
        auto area = finishes->createValueDefinition(L"FinishedArea");
        area->setLabel(L"Finished area");
        area->setTypeSpecifier(TypeSpecifier<double>(vl_db::kRealCode));
        area->setMeasure(L"AREA");
        auto doors = office->createPropertySet(L"Doors");
        doors->setLabel(L"Door schedule");
        definition(*doors, L"DoorNumber", L"Door number", vl_db::kStringCode);
        vl_db::EnumTypeSpecifier<long long> fire(vl_db::kIntegerCode, {{30, OdString()}, {60, OdString()}}, false);
        auto resistance = doors->createPropertyDefinition(L"FireResistance");
        resistance->setLabel(L"Fire resistance");
        resistance->setTypeSpecifier(fire);

        auto other = library->createNamespace(L"Other", L"Other office", true);
        other->createPropertySet(L"Elsewhere")->setLabel(L"Elsewhere");
        library->commit();
        // Official definitions come with the files they were read from and are not edited.
        vantlib::PropertySetStore store(central);
        auto record = *store.findNamespace(L"Official");
        record.editable = false;
        store.updateNamespace(record);
    }

    void TearDown() override {
        dialog.reset();
        DrawingWithLibraries::TearDown();
    }

    static void definition(vl_db::IPropertySet& set, const wchar_t* name, const wchar_t* label, int code) {
        auto created = set.createPropertyDefinition(name);
        created->setLabel(label);
        created->setTypeSpecifier(*vl_app::plainSpecifier(code));
    }

    TestDialog& open(const OdString& ns = L"Office", vl_app::PropertyDomain domain = vl_app::PropertyDomain::Bim) {
        dialog.reset();
        session = vl_db::propertySetLibrary(central);
        dialog = std::make_unique<TestDialog>(nullptr, session, enabler, host.categories(domain),
                                              host.ifcTypeGetter(domain), ns, domain, &host);
        dialog->Show();
        dialog->InitDialog();
        idle();
        return *dialog;
    }

    void idle() {
        wxTheApp->ProcessPendingEvents();
        wxYield();
    }

    // The library as another program reads it from the file: what was committed.
    std::shared_ptr<vl_db::IPropertySet> storedSet(const wchar_t* ns, const wchar_t* name) {
        reopened = vl_db::propertySetLibrary(vantlib::Library::open(vl_test::od(path("central.vlib"))));
        for (const auto& space : reopened->namespaces())
            if (space->name() == ns)
                for (const auto& set : space->propertySets())
                    if (set->name() == name)
                        return set;
        return nullptr;
    }

    bool press(const char* name) {
        auto* button = dynamic_cast<wxButton*>(dialog->FindWindow(XRCID(name)));
        if (!button || !button->IsEnabled() || !button->IsShown())
            return false;
        wxCommandEvent event(wxEVT_BUTTON, button->GetId());
        event.SetEventObject(button);
        button->ProcessWindowEvent(event);
        idle();
        return true;
    }

    bool enabled(const char* name) const {
        auto* window = dialog->FindWindow(XRCID(name));
        return window && window->IsEnabled() && window->IsShown();
    }

    void select(const wxString& setKey, const wxString& definition = wxString()) {
        const wxTreeItemId item = dialog->findItem(setKey, definition);
        ASSERT_TRUE(item.IsOk()) << setKey << " / " << definition;
        dialog->tree()->SelectItem(item);
        idle();
    }

    wxString selectedText() const { return dialog->tree()->GetItemText(dialog->tree()->GetSelection()); }

    // Labels of the children of a tree item, in order.
    std::vector<wxString> children(const wxTreeItemId& parent) const {
        std::vector<wxString> labels;
        wxTreeItemIdValue cookie;
        for (wxTreeItemId child = dialog->tree()->GetFirstChild(parent, cookie); child.IsOk();
             child = dialog->tree()->GetNextChild(parent, cookie))
            labels.push_back(dialog->tree()->GetItemText(child));
        return labels;
    }

    void type(const wxString& text) {
        dialog->searchCtrl()->SetValue(text);
        idle();
    }

    StudioPropertySets host;
    std::unique_ptr<vl_app::IDlgEnabler> enabler;
    std::shared_ptr<vl_db::ILibrary> session;
    std::shared_ptr<vl_db::ILibrary> reopened;
    std::unique_ptr<TestDialog> dialog;
};

}  // namespace vl_props_test
