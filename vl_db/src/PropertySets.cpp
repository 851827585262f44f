// The editor's interfaces over a library's property-set store. Every object reads its fields
// when it is listed; a change reads the stored row again, changes the one field and writes
// the row back, so two objects of the same row never undo each other's changes.
#include <vl_db/PropertySets.h>

#include <filesystem>

#include <vantlib/Library.h>
#include <vantlib/Transaction.h>
#include <vl_db/PsdLibrary.h>

namespace vl_db {

namespace {

using vantlib::ConsistencyError;
using vantlib::DefinitionKind;
using vantlib::PropertyDefinitionRecord;
using vantlib::PropertyNamespaceRecord;
using vantlib::PropertySetRecord;

// What the objects of one ILibrary share: the store and the transaction of pending edits.
class Session {
public:
    explicit Session(const std::shared_ptr<vantlib::Library>& library) : m_store(library) {}

    const vantlib::PropertySetStore& store() const { return m_store; }
    // The store for a change: the transaction of pending edits is open from here on.
    vantlib::PropertySetStore& edit() {
        if (!m_edits)
            m_edits = std::make_unique<vantlib::Transaction>(m_store.library());
        return m_store;
    }
    void commit() {
        if (m_edits) {
            m_edits->commit();
            m_edits.reset();
        }
    }
    void rollback() {
        if (m_edits) {
            m_edits->rollback();
            m_edits.reset();
        }
    }
    bool pending() const { return m_edits != nullptr; }

    bool isNamespaceEditable(uint32_t namespaceId) const {
        auto found = m_store.findNamespace(namespaceId);
        return found && found->editable;
    }
    bool isSetEditable(const PropertySetRecord& set) const { return set.editable && isNamespaceEditable(set.namespaceId); }

    PropertySetRecord set(uint32_t id) const {
        auto found = m_store.findPropertySet(id);
        if (!found)
            throw ConsistencyError(OdString::formatted(L"There is no property set with the id %u", unsigned(id)));
        return *found;
    }
    // The set, which must be editable.
    PropertySetRecord editableSet(uint32_t id) const {
        PropertySetRecord found = set(id);
        if (!isSetEditable(found))
            throw ConsistencyError(OdString::formatted(L"The property set '%ls' cannot be edited", found.name.c_str()));
        return found;
    }

private:
    vantlib::PropertySetStore m_store;
    std::unique_ptr<vantlib::Transaction> m_edits;
};

using SessionPtr = std::shared_ptr<Session>;

template <class Interface, ObjectTypeWrapper Type>
class Definition : public Interface {
public:
    Definition(SessionPtr session, PropertyDefinitionRecord record) : m_session(std::move(session)), m_record(std::move(record)) {}

    ObjectTypeWrapper objectType() const override { return Type; }
    uint32_t id() const override { return m_record.id; }
    OdString name() const override { return m_record.name; }
    void setName(const OdString& name) override {
        change([&](PropertyDefinitionRecord& r) { r.name = name; });
    }
    OdString label() const override { return m_record.label; }
    void setLabel(const OdString& label) override {
        change([&](PropertyDefinitionRecord& r) { r.label = label; });
    }
    OdString description() const override { return m_record.description; }
    void setDescription(const OdString& description) override {
        change([&](PropertyDefinitionRecord& r) { r.description = description; });
    }
    TypeSpecifierPtr typeSpecifier() const override { return specifierFromStorage(m_record.type); }
    void setTypeSpecifier(const AbstractTypeSpecifier& specifier) override {
        const vantlib::TypeSpecification stored = storageOf(specifier);
        change([&](PropertyDefinitionRecord& r) { r.type = stored; });
    }
    std::vector<LocalizedName> aliases() const override { return m_record.aliases; }
    void setAliases(const std::vector<LocalizedName>& aliases) override {
        change([&](PropertyDefinitionRecord& r) { r.aliases = aliases; });
    }

protected:
    template <class Change>
    void change(Change&& apply) {
        auto current = m_session->store().findDefinition(m_record.id);
        if (!current)
            throw ConsistencyError(OdString::formatted(L"The definition '%ls' no longer exists", m_record.name.c_str()));
        m_session->editableSet(current->setId);
        apply(*current);
        m_session->edit().updateDefinition(*current);
        m_record = *current;
    }

    SessionPtr m_session;
    PropertyDefinitionRecord m_record;
};

using PropertyDefinition = Definition<IPropertyDefinition, kPropertyDefinitionObject>;

class ValueDefinition : public Definition<IValueDefinition, kValueDefinitionObject> {
public:
    using Definition::Definition;

    OdString measure() const override { return m_record.measure; }
    void setMeasure(const OdString& measure) override {
        change([&](PropertyDefinitionRecord& r) { r.measure = measure; });
    }
};

class PropertySet : public IPropertySet {
public:
    PropertySet(SessionPtr session, PropertySetRecord record, bool namespaceEditable)
        : m_session(std::move(session)), m_record(std::move(record)), m_editable(m_record.editable && namespaceEditable) {}

    uint32_t id() const override { return m_record.id; }
    OdString name() const override { return m_record.name; }
    void setName(const OdString& name) override {
        change([&](PropertySetRecord& r) { r.name = name; });
    }
    OdString label() const override { return m_record.label; }
    void setLabel(const OdString& label) override {
        change([&](PropertySetRecord& r) { r.label = label; });
    }
    OdString description() const override { return m_record.description; }
    void setDescription(const OdString& description) override {
        change([&](PropertySetRecord& r) { r.description = description; });
    }
    bool isVisible() const override { return m_record.visible; }
    void setVisible(bool visible) override {
        PropertySetRecord current = m_session->set(m_record.id);
        current.visible = visible;
        m_session->edit().updatePropertySet(current);
        m_record = current;
    }
    bool isPerInstance() const override { return m_record.perInstance; }
    void setPerInstance(bool perInstance) override {
        change([&](PropertySetRecord& r) { r.perInstance = perInstance; });
    }
    bool isEditable() const override { return m_editable; }
    OdString templateType() const override { return m_record.templateType; }
    void setTemplateType(const OdString& templateType) override {
        change([&](PropertySetRecord& r) { r.templateType = templateType; });
    }
    OdString applicableTypeValue() const override { return m_record.applicableTypeValue; }
    void setApplicableTypeValue(const OdString& value) override {
        change([&](PropertySetRecord& r) { r.applicableTypeValue = value; });
    }
    std::vector<LocalizedName> aliases() const override { return m_record.aliases; }
    void setAliases(const std::vector<LocalizedName>& aliases) override {
        change([&](PropertySetRecord& r) { r.aliases = aliases; });
    }

    std::vector<std::shared_ptr<IPropertyDefinition>> propertyDefinitions() const override {
        return definitions<IPropertyDefinition, PropertyDefinition>(DefinitionKind::kProperty);
    }
    std::vector<std::shared_ptr<IValueDefinition>> valueDefinitions() const override {
        return definitions<IValueDefinition, ValueDefinition>(DefinitionKind::kValue);
    }
    std::shared_ptr<IPropertyDefinition> createPropertyDefinition(const OdString& name) override {
        return std::make_shared<PropertyDefinition>(m_session, create(name, DefinitionKind::kProperty));
    }
    std::shared_ptr<IValueDefinition> createValueDefinition(const OdString& name) override {
        return std::make_shared<ValueDefinition>(m_session, create(name, DefinitionKind::kValue));
    }
    bool removePropertyDefinition(uint32_t id) override { return remove(id, DefinitionKind::kProperty); }
    bool removeValueDefinition(uint32_t id) override { return remove(id, DefinitionKind::kValue); }
    unsigned removeAllPropertyDefinitions() override { return removeAll(DefinitionKind::kProperty); }
    unsigned removeAllValueDefinitions() override { return removeAll(DefinitionKind::kValue); }
    bool movePropertyDefinition(unsigned from, unsigned to) override { return move(DefinitionKind::kProperty, from, to); }
    bool moveValueDefinition(unsigned from, unsigned to) override { return move(DefinitionKind::kValue, from, to); }

    std::vector<OdString> ifcTypes() const override { return m_record.applicableClasses; }
    bool addIfcType(const OdString& ifcType) override {
        m_session->editableSet(m_record.id);
        const bool added = m_session->edit().addApplicableClass(m_record.id, ifcType);
        m_record = m_session->set(m_record.id);
        return added;
    }
    bool removeIfcType(const OdString& ifcType) override {
        m_session->editableSet(m_record.id);
        const bool removed = m_session->edit().removeApplicableClass(m_record.id, ifcType);
        m_record = m_session->set(m_record.id);
        return removed;
    }

private:
    template <class Change>
    void change(Change&& apply) {
        PropertySetRecord current = m_session->editableSet(m_record.id);
        apply(current);
        m_session->edit().updatePropertySet(current);
        m_record = current;
    }

    template <class Interface, class Implementation>
    std::vector<std::shared_ptr<Interface>> definitions(DefinitionKind kind) const {
        std::vector<std::shared_ptr<Interface>> list;
        for (PropertyDefinitionRecord& record : m_session->store().definitions(m_record.id, kind))
            list.push_back(std::make_shared<Implementation>(m_session, std::move(record)));
        return list;
    }

    PropertyDefinitionRecord create(const OdString& name, DefinitionKind kind) {
        m_session->editableSet(m_record.id);
        PropertyDefinitionRecord record;
        record.setId = m_record.id;
        record.kind = kind;
        record.name = name;
        record.label = name;
        record.type = storageOf(TypeSpecifier<OdString>(kStringCode));
        record.id = m_session->edit().createDefinition(record);
        return record;
    }

    bool remove(uint32_t id, DefinitionKind kind) {
        m_session->editableSet(m_record.id);
        auto found = m_session->store().findDefinition(id);
        if (!found || found->setId != m_record.id || found->kind != kind)
            return false;
        return m_session->edit().removeDefinition(id);
    }

    unsigned removeAll(DefinitionKind kind) {
        m_session->editableSet(m_record.id);
        const size_t before = m_session->store().definitions(m_record.id, kind).size();
        const unsigned removed = m_session->edit().removeDefinitions(m_record.id, kind);
        return unsigned(before - removed);
    }

    bool move(DefinitionKind kind, unsigned from, unsigned to) {
        m_session->editableSet(m_record.id);
        return m_session->edit().moveDefinition(m_record.id, kind, from, to);
    }

    SessionPtr m_session;
    PropertySetRecord m_record;
    bool m_editable;
};

class Namespace : public INamespace {
public:
    Namespace(SessionPtr session, PropertyNamespaceRecord record) : m_session(std::move(session)), m_record(std::move(record)) {}

    uint32_t id() const override { return m_record.id; }
    OdString name() const override { return m_record.name; }
    OdString displayLabel() const override { return m_record.label.isEmpty() ? m_record.name : m_record.label; }
    void setDisplayLabel(const OdString& label) override {
        PropertyNamespaceRecord current = editable();
        current.label = label;
        m_session->edit().updateNamespace(current);
        m_record = current;
    }
    bool isEditable() const override { return m_record.editable; }

    std::vector<std::shared_ptr<IPropertySet>> propertySets() const override {
        std::vector<std::shared_ptr<IPropertySet>> list;
        for (PropertySetRecord& record : m_session->store().propertySets(m_record.id))
            list.push_back(std::make_shared<PropertySet>(m_session, std::move(record), m_record.editable));
        return list;
    }
    std::vector<vantlib::PropertySetOutline> outline() const override { return m_session->store().outline(m_record.id); }
    std::shared_ptr<IPropertySet> createPropertySet(const OdString& name) override {
        editable();
        PropertySetRecord record;
        record.namespaceId = m_record.id;
        record.name = name;
        record.label = name;
        record.id = m_session->edit().createPropertySet(record);
        return std::make_shared<PropertySet>(m_session, record, true);
    }
    bool removePropertySet(uint32_t id) override {
        editable();
        auto found = m_session->store().findPropertySet(id);
        if (!found || found->namespaceId != m_record.id)
            return false;
        m_session->editableSet(id);
        return m_session->edit().removePropertySet(id);
    }

private:
    // The namespace as stored, which must be editable.
    PropertyNamespaceRecord editable() const {
        auto current = m_session->store().findNamespace(m_record.id);
        if (!current)
            throw ConsistencyError(OdString::formatted(L"The namespace '%ls' no longer exists", m_record.name.c_str()));
        if (!current->editable)
            throw ConsistencyError(OdString::formatted(L"The namespace '%ls' cannot be edited", current->name.c_str()));
        return *current;
    }

    SessionPtr m_session;
    PropertyNamespaceRecord m_record;
};

class Library : public ILibrary {
public:
    Library(const std::shared_ptr<vantlib::Library>& library, PropertySetFileHandlers files)
        : m_session(std::make_shared<Session>(library)), m_files(std::move(files)) {}
    // Edits not committed go with the library object, also while the editor's objects live on.
    ~Library() override {
        try {
            m_session->rollback();
        } catch (...) {
            // A destructor must not throw; the transaction's own end discards the edits anyway.
        }
    }

    std::vector<std::shared_ptr<INamespace>> namespaces() const override {
        std::vector<std::shared_ptr<INamespace>> list;
        for (PropertyNamespaceRecord& record : m_session->store().namespaces())
            list.push_back(std::make_shared<Namespace>(m_session, std::move(record)));
        return list;
    }
    std::shared_ptr<INamespace> createNamespace(const OdString& name, const OdString& label, bool editable) override {
        PropertyNamespaceRecord record;
        record.name = name;
        record.label = label;
        record.editable = editable;
        record.id = m_session->edit().createNamespace(record);
        return std::make_shared<Namespace>(m_session, record);
    }
    bool deleteNamespace(uint32_t id) override { return m_session->edit().removeNamespace(id); }

    uint32_t importXml(const OdString& path, int, OdDbDatabase*) override {
        if (!m_files.importFile)
            throw ConsistencyError(OdString(L"This library reads no property-set definition files"));
        return m_files.importFile(m_session->edit(), path);
    }
    bool exportXml(const OdString& path, int, OdDbDatabase*, uint32_t namespaceId) override {
        if (!m_files.exportFile)
            throw ConsistencyError(OdString(L"This library writes no property-set definition files"));
        m_files.exportFile(m_session->store(), path, namespaceId);
        return true;
    }
    OdString defaultFileLocation() const override {
        const OdString& file = m_session->store().library()->filename();
        return OdString::fromUtf8(std::filesystem::path(file.toUtf8()).parent_path().string());
    }
    void commit() override { m_session->commit(); }
    void rollback() override { m_session->rollback(); }
    bool hasPendingEdits() const override { return m_session->pending(); }

private:
    SessionPtr m_session;
    PropertySetFileHandlers m_files;
};

}  // namespace

std::shared_ptr<ILibrary> propertySetLibrary(const std::shared_ptr<vantlib::Library>& library, PropertySetFileHandlers files) {
    if (!library)
        throw ConsistencyError(OdString(L"Property sets need a library"));
    if (!files.importFile && !files.exportFile)
        files = psdFileHandlers();
    return std::make_shared<Library>(library, std::move(files));
}

}  // namespace vl_db
