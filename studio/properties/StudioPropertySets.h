#pragma once
// The studio's side of the property sets editor: the element categories of its building
// model (and of building services for the mechanical domain) with the IFC type of each entity
// type, the visibility dialog, and the structure configuration: which visible property sets
// the drawing's libraries assign to each IFC type, brought up to date when the editor says so.
#include <map>
#include <memory>
#include <vector>

#include <app/properties/PropertySetsHost.h>

// One entity type of the studio's model: its class key, the category it belongs to and the
// IFC type under which property sets are assigned to it.
struct StudioEntityClass {
    const char* key;
    const char* label;     // untranslated; wxGetTranslation gives the user's text
    const char* category;  // untranslated
    const char* ifcType;
    vl_app::PropertyDomain domain;
};

// Every entity type, categories in the order the user sees them.
const std::vector<StudioEntityClass>& studioEntityClasses();
// The IFC type of an entity type's key; empty for a key the studio does not know.
wxString ifcTypeOfEntity(const wxString& key);

// The visible property sets of a drawing's libraries, by the IFC type they are assigned to.
class StructureConfiguration {
public:
    // Reads the configuration again from the drawing's libraries (none without a drawing).
    void update(OdDbDatabase* database);
    // Names of the visible sets assigned to the type, in library order.
    std::vector<wxString> propertySets(const wxString& ifcType) const;
    // How often update ran.
    unsigned updates() const { return m_updates; }

private:
    std::map<wxString, std::vector<wxString>> m_setsByType;
    unsigned m_updates = 0;
};

class StudioPropertySets : public vl_app::PropertySetsHost {
public:
    vl_app::EntityCategories categories(vl_app::PropertyDomain domain) const override;
    vl_app::IfcTypeGetter ifcTypeGetter(vl_app::PropertyDomain domain) const override;
    void showVisibilityDialog(wxWindow* parent, const std::shared_ptr<vl_db::ILibrary>& library) override;
    void updateStructureConfiguration(OdDbDatabase* database) override;

    const StructureConfiguration& structure() const { return m_structure; }

private:
    StructureConfiguration m_structure;
};
