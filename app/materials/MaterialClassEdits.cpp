#include "app/materials/MaterialClassEdits.h"

#include <OdStringWx.h>

#include <vantlib/MaterialType.h>
#include <vantlib/Transaction.h>

namespace vl_app {

void MaterialClassEdits::load(const std::shared_ptr<const vantlib::Library>& library) {
    m_entries.clear();
    m_removed.clear();
    if (!library)
        return;
    std::vector<QcSmartPtr<vantlib::MaterialType>> classes;
    library->get(classes);
    for (const auto& materialClass : classes) {
        const wxString name = toWx(materialClass->name());
        m_entries.push_back(MaterialClassEntry{name, materialClass->id(), name});
    }
}

bool MaterialClassEdits::hasChanges() const {
    if (!m_removed.empty())
        return true;
    for (const MaterialClassEntry& entry : m_entries)
        if (entry.id == 0 || entry.name != entry.storedName)
            return true;
    return false;
}

int MaterialClassEdits::find(const wxString& name) const {
    for (size_t i = 0; i < m_entries.size(); ++i)
        if (m_entries[i].name.CmpNoCase(name) == 0)
            return int(i);
    return -1;
}

int MaterialClassEdits::add(const wxString& name) {
    if (name.empty())
        return -1;
    const int existing = find(name);
    if (existing >= 0)
        return existing;
    m_entries.push_back(MaterialClassEntry{name, 0, wxString()});
    return int(m_entries.size()) - 1;
}

bool MaterialClassEdits::rename(int index, const wxString& name) {
    if (index < 0 || size_t(index) >= m_entries.size() || name.empty())
        return false;
    const int other = find(name);
    if (other >= 0 && other != index)
        return false;
    m_entries[size_t(index)].name = name;
    return true;
}

void MaterialClassEdits::remove(int index) {
    if (index < 0 || size_t(index) >= m_entries.size())
        return;
    if (m_entries[size_t(index)].id != 0)
        m_removed.push_back(m_entries[size_t(index)]);
    m_entries.erase(m_entries.begin() + index);
}

void MaterialClassEdits::apply(const std::shared_ptr<vantlib::Library>& library) const {
    if (!library)
        throw vantlib::ConsistencyError(OdString(L"The library is not available"));
    vantlib::Transaction transaction(library);
    for (const MaterialClassEntry& entry : m_removed) {
        const auto result = library->remove<vantlib::MaterialType>(entry.id);
        // A class that vanished meanwhile is as good as removed.
        if (result != vantlib::Library::kRemoved && result != vantlib::Library::kNotFound)
            throw MaterialClassInUse(entry.storedName);
    }
    for (const MaterialClassEntry& entry : m_entries) {
        if (entry.id == 0 || entry.name == entry.storedName)
            continue;
        auto materialClass = library->get<vantlib::MaterialType>(entry.id);
        if (!materialClass)
            materialClass = vantlib::MaterialType::create(toOd(entry.name));
        materialClass->set_name(toOd(entry.name));
        library->save(materialClass);
    }
    for (const MaterialClassEntry& entry : m_entries) {
        if (entry.id != 0)
            continue;
        auto materialClass = vantlib::MaterialType::create(toOd(entry.name));
        library->save(materialClass);
    }
    transaction.commit();
}

bool materialClassNameOk(const std::shared_ptr<const vantlib::Library>& library, const wxString& name, unsigned id) {
    if (!library)
        return true;
    std::vector<QcSmartPtr<vantlib::MaterialType>> classes;
    library->get(classes);
    for (const auto& materialClass : classes)
        if (toWx(materialClass->name()) == name && materialClass->id() != id)
            return false;
    return true;
}

}  // namespace vl_app
