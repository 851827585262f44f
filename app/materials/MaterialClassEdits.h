#pragma once
// The edits of the material classes dialog, kept apart from the widgets: the classes as the
// user sees them (stored ones with their ids, new ones with id 0), the stored classes deleted,
// and how the whole set is written to the library in one go.
#include <memory>
#include <stdexcept>
#include <vector>

#include <wx/string.h>

#include <vantlib/Library.h>

namespace vl_app {

struct MaterialClassEntry {
    wxString name;        // as shown and as it will be stored
    unsigned id = 0;      // 0 for a class added in the dialog
    wxString storedName;  // the name in the library; empty for a new class
};

// A stored class that the library would not remove because materials use it.
class MaterialClassInUse : public std::runtime_error {
public:
    explicit MaterialClassInUse(const wxString& className)
        : std::runtime_error("material class in use"), m_name(className) {}
    const wxString& className() const { return m_name; }

private:
    wxString m_name;
};

class MaterialClassEdits {
public:
    // Starts over with the classes of `library` (none for a null library).
    void load(const std::shared_ptr<const vantlib::Library>& library);

    const std::vector<MaterialClassEntry>& entries() const { return m_entries; }
    const std::vector<MaterialClassEntry>& removed() const { return m_removed; }
    bool hasChanges() const;

    // Index of the entry named `name` regardless of letter case; -1 when none.
    int find(const wxString& name) const;
    // Adds a new class unless an entry of that name (any case) exists; returns the index of
    // the added or existing entry, -1 for an empty name.
    int add(const wxString& name);
    // Gives entry `index` a new name. Refused (false) for an empty name or one that another
    // entry carries in any letter case; the library's own rule is checked by the caller.
    bool rename(int index, const wxString& name);
    // Drops entry `index`; a stored class is remembered for removal.
    void remove(int index);

    // Writes everything in one transaction: removals, then renames, then new classes, so a
    // name freed by one edit can be taken by another. Throws MaterialClassInUse or the
    // library's exceptions; the library is then left as it was.
    void apply(const std::shared_ptr<vantlib::Library>& library) const;

private:
    std::vector<MaterialClassEntry> m_entries;
    std::vector<MaterialClassEntry> m_removed;
};

// False when `library` holds a class named exactly `name` (letter case counts) whose id is not
// `id`.
bool materialClassNameOk(const std::shared_ptr<const vantlib::Library>& library, const wxString& name, unsigned id);

}  // namespace vl_app
