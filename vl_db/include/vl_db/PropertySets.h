#pragma once
// Property-set definitions of a library as the property sets editor reaches them: abstract
// interfaces held by shared pointer, implemented over a vantlib library.
//
// Edits are kept in one transaction of the library, opened by the first edit and kept until
// commit(); an ILibrary destroyed without commit, or rollback(), discards them. That is how
// the editor's OK keeps and its Cancel drops what the user did while it was open. Failures are
// vantlib exceptions: ObjectNotUnique for a taken name, ConsistencyError for an empty name,
// an unknown id or an edit of something that is not editable.
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include <OdString.h>

#include <vantlib/PropertySets.h>
#include <vl_db/TypeSpecifier.h>

class OdDbDatabase;

namespace vantlib {
class Library;
}

namespace vl_db {

// Kind of an object of the editor's tree.
enum ObjectTypeWrapper : uint32_t {
    kNamespaceObject = 1,
    kPropertySetObject = 2,
    kPropertyDefinitionObject = 3,
    kValueDefinitionObject = 4,
};

using vantlib::LocalizedName;

class IAbstractDefinition {
public:
    virtual ~IAbstractDefinition() = default;

    virtual ObjectTypeWrapper objectType() const = 0;
    virtual uint32_t id() const = 0;
    virtual OdString name() const = 0;
    virtual void setName(const OdString& name) = 0;
    virtual OdString label() const = 0;
    virtual void setLabel(const OdString& label) = 0;
    virtual OdString description() const = 0;
    virtual void setDescription(const OdString& description) = 0;
    // A copy; setTypeSpecifier stores a changed one.
    virtual TypeSpecifierPtr typeSpecifier() const = 0;
    virtual void setTypeSpecifier(const AbstractTypeSpecifier& specifier) = 0;
    virtual std::vector<LocalizedName> aliases() const = 0;
    virtual void setAliases(const std::vector<LocalizedName>& aliases) = 0;
};

class IPropertyDefinition : public IAbstractDefinition {};

class IValueDefinition : public IAbstractDefinition {
public:
    // "LENGTH", "AREA", "VOLUME", "MASS" or empty for none.
    virtual OdString measure() const = 0;
    virtual void setMeasure(const OdString& measure) = 0;
};

class IPropertySet {
public:
    virtual ~IPropertySet() = default;

    virtual uint32_t id() const = 0;
    // The key under which the editor finds the set again.
    virtual OdString name() const = 0;
    virtual void setName(const OdString& name) = 0;
    virtual OdString label() const = 0;
    virtual void setLabel(const OdString& label) = 0;
    virtual OdString description() const = 0;
    virtual void setDescription(const OdString& description) = 0;
    // Visibility may be changed also when the set is not editable.
    virtual bool isVisible() const = 0;
    virtual void setVisible(bool visible) = 0;
    virtual bool isPerInstance() const = 0;
    virtual void setPerInstance(bool perInstance) = 0;
    // False for a set of a namespace that is not editable.
    virtual bool isEditable() const = 0;
    virtual OdString templateType() const = 0;
    virtual void setTemplateType(const OdString& templateType) = 0;
    virtual OdString applicableTypeValue() const = 0;
    virtual void setApplicableTypeValue(const OdString& value) = 0;
    virtual std::vector<LocalizedName> aliases() const = 0;
    virtual void setAliases(const std::vector<LocalizedName>& aliases) = 0;

    virtual std::vector<std::shared_ptr<IPropertyDefinition>> propertyDefinitions() const = 0;
    virtual std::vector<std::shared_ptr<IValueDefinition>> valueDefinitions() const = 0;
    // Appended last, of type String.
    virtual std::shared_ptr<IPropertyDefinition> createPropertyDefinition(const OdString& name) = 0;
    virtual std::shared_ptr<IValueDefinition> createValueDefinition(const OdString& name) = 0;
    // False when the set has no such definition.
    virtual bool removePropertyDefinition(uint32_t id) = 0;
    virtual bool removeValueDefinition(uint32_t id) = 0;
    // Remove every definition of the kind; return how many could not be removed.
    virtual unsigned removeAllPropertyDefinitions() = 0;
    virtual unsigned removeAllValueDefinitions() = 0;
    // Move the definition at index `from` to index `to`; false, with nothing changed, when
    // either index is outside the list.
    virtual bool movePropertyDefinition(unsigned from, unsigned to) = 0;
    virtual bool moveValueDefinition(unsigned from, unsigned to) = 0;

    // The IFC types the set is assigned to, in order.
    virtual std::vector<OdString> ifcTypes() const = 0;
    // False when the set was assigned to the type already.
    virtual bool addIfcType(const OdString& ifcType) = 0;
    // False when the set was not assigned to the type.
    virtual bool removeIfcType(const OdString& ifcType) = 0;
};

class INamespace {
public:
    virtual ~INamespace() = default;

    virtual uint32_t id() const = 0;
    virtual OdString name() const = 0;
    // The label shown to the user; the name when no label is set.
    virtual OdString displayLabel() const = 0;
    virtual void setDisplayLabel(const OdString& label) = 0;
    virtual bool isEditable() const = 0;
    virtual std::vector<std::shared_ptr<IPropertySet>> propertySets() const = 0;
    // The sets and their definitions as a tree shows them (ids, names, labels), read at once.
    virtual std::vector<vantlib::PropertySetOutline> outline() const = 0;
    // Appended last.
    virtual std::shared_ptr<IPropertySet> createPropertySet(const OdString& name) = 0;
    // Removes the set with its definitions; false when the namespace has no such set.
    virtual bool removePropertySet(uint32_t id) = 0;
};

// Reading and writing of property-set definition files, which the library leaves to the
// reader and writer of that format. import returns the id of the namespace that received the
// sets; export writes the sets of one namespace (0: all).
struct PropertySetFileHandlers {
    std::function<uint32_t(vantlib::PropertySetStore& store, const OdString& path)> importFile;
    std::function<void(const vantlib::PropertySetStore& store, const OdString& path, uint32_t namespaceId)> exportFile;
};

class ILibrary {
public:
    virtual ~ILibrary() = default;

    virtual std::vector<std::shared_ptr<INamespace>> namespaces() const = 0;
    // Appended last.
    virtual std::shared_ptr<INamespace> createNamespace(const OdString& name, const OdString& label, bool editable) = 0;
    // Removes the namespace with its sets; false when there is none of that id.
    virtual bool deleteNamespace(uint32_t id) = 0;
    // Imports the property sets of an XML file as a pending edit; the id of the namespace that
    // received them. The reader's errors pass on. `flag` and `database` are the editor's.
    virtual uint32_t importXml(const OdString& path, int flag, OdDbDatabase* database) = 0;
    // Exports the sets of a namespace (0: of all) to an XML file; the writer's errors pass on.
    virtual bool exportXml(const OdString& path, int flag, OdDbDatabase* database, uint32_t namespaceId) = 0;
    // The folder the import dialog starts in.
    virtual OdString defaultFileLocation() const = 0;
    // Keeps every edit made since the last commit.
    virtual void commit() = 0;
    // Drops every edit made since the last commit.
    virtual void rollback() = 0;
    // True while edits wait for commit() or rollback().
    virtual bool hasPendingEdits() const = 0;
};

// The property-set definitions of a library. `files` reads and writes definition files; without
// it they are the PSD XML files of psdFileHandlers() (PsdLibrary.h). A handler left empty in a
// given `files` makes its call raise ConsistencyError.
std::shared_ptr<ILibrary> propertySetLibrary(const std::shared_ptr<vantlib::Library>& library,
                                             PropertySetFileHandlers files = {});

}  // namespace vl_db
