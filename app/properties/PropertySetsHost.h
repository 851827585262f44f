#pragma once
// What the property sets editor needs of its host: the element categories a property set can
// be assigned to (with the IFC type of each entity type), the host's dialog for the visibility
// of namespaces and property sets, and the holder of the structure configuration, which learns
// when the editor changed what it shows. A host offers an object of a derived class as the
// service kPropertySetsHostService; without one the editor shows no categories and no
// visibility dialog.
#include <functional>
#include <memory>
#include <vector>

#include <wx/string.h>

class OdDbDatabase;
class wxWindow;

namespace vl_db {
class ILibrary;
}

namespace vl_app {

// The name under which a host offers its PropertySetsHost to modules (ca::CaApp::service).
inline constexpr const char* kPropertySetsHostService = "PropertySetsHost";

// An entity type of the host: the key it knows the type by and the text the user reads.
struct EntityType {
    wxString key;
    wxString label;
};

// A category of elements with its entity types, both in the order the user sees.
struct EntityCategory {
    wxString name;
    std::vector<EntityType> types;
};

using EntityCategories = std::vector<EntityCategory>;
// The IFC type (e.g. "IfcWall") under which a property set is assigned to an entity type.
using IfcTypeGetter = std::function<wxString(const EntityType&)>;

// The domain the editor works in: building elements, or building services.
enum class PropertyDomain : int { Bim = 0, Mechanical = 1 };

class PropertySetsHost {
public:
    virtual ~PropertySetsHost() = default;

    virtual EntityCategories categories(PropertyDomain domain) const = 0;
    virtual IfcTypeGetter ifcTypeGetter(PropertyDomain domain) const = 0;
    // Shows the visibility of the library's namespaces and property sets for the user to
    // change; the changes are edits of `library`, kept or dropped with the editor's.
    virtual void showVisibilityDialog(wxWindow* parent, const std::shared_ptr<vl_db::ILibrary>& library) = 0;
    // The editor changed property sets of the drawing's libraries; the structure
    // configuration is brought up to date.
    virtual void updateStructureConfiguration(OdDbDatabase* database) = 0;
};

}  // namespace vl_app
