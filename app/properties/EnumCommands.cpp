// Studio command of the enumerated values editor: opens it on an enumerated property of the
// drawing's central library, so the editor can be tried and pictured without the property
// sets dialog. OK keeps the edited list in the library, Cancel leaves it as it was.
#include <wx/intl.h>

#include <CaApp.h>
#include <MainWindow.h>
#include <OdStringWx.h>
#include <Prompt.h>

#include <vl_db/DocumentLibraries.h>
#include <vl_db/PropertySets.h>

#include "app/ModuleCommands.h"
#include "app/common/ErrorMessages.h"
#include "app/properties/DlgEnumProperty.h"

namespace vl_app {

namespace {

struct EnumeratedDefinition {
    std::shared_ptr<vl_db::IPropertySet> set;
    std::shared_ptr<vl_db::IPropertyDefinition> definition;
};

// The first enumerated property definition of an editable namespace, or the one named `name`
// (its name or label, ignoring case) when a name is given.
EnumeratedDefinition findEnumeratedDefinition(const vl_db::ILibrary& library, const wxString& name) {
    for (const auto& space : library.namespaces()) {
        if (!space->isEditable())
            continue;
        for (const auto& set : space->propertySets()) {
            for (const auto& definition : set->propertyDefinitions()) {
                const bool named = toWx(definition->name()).IsSameAs(name, false) ||
                                   toWx(definition->label()).IsSameAs(name, false);
                if (!name.empty() ? named
                                  : definition->typeSpecifier()->kind() == vantlib::TypeSpecification::kEnumeration)
                    return {set, definition};
            }
        }
    }
    return {};
}

void runEnumValues() {
    OdDbDatabase* db = ca::curDb();
    if (!db) {
        ca::prompt(_("No drawing is open."));
        return;
    }
    try {
        const auto central = vl_db::docLibs(db)->secondary();
        if (!central) {
            ca::prompt(_("The drawing has no central library."));
            return;
        }
        const auto library = vl_db::propertySetLibrary(central);
        const wxString name = ca::CaApp::instance()->commandArgument();
        const EnumeratedDefinition found = findEnumeratedDefinition(*library, name);
        if (!found.definition) {
            ca::prompt(name.empty() ? _("The central library has no enumerated property in an editable namespace.")
                                    : wxString::Format(_("There is no property definition named \"%s\"."), name));
            return;
        }
        if (!editEnumeration(wxg::mainWindow(), found.set, found.definition->id())) {
            ca::prompt(wxString::Format(_("The property \"%s\" holds no integer, real or text values."),
                                        toWx(found.definition->name())));
            return;
        }
        if (library->hasPendingEdits()) {
            library->commit();
            ca::prompt(wxString::Format(_("The values of \"%s\" were stored."), toWx(found.definition->name())));
        }
    } catch (const std::exception& error) {
        ca::prompt(wxString::Format(_("The enumerated values could not be edited: %s"), errorText(error)));
    }
}

const ModuleCommandRegistration g_enumValues("enum-values", wxTRANSLATE("Enumerated values"), runEnumValues);

}  // namespace

}  // namespace vl_app
