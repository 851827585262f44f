#pragma once
// A library: one SQLite database (a ".vlib" file, or the lib_ tables inside a drawing file)
// holding materials, compositions and what they refer to.
//
// Kinds handled by the template operations: Tag, Layer, MaterialType, CompositionType,
// CustomProperty, Material, Composition, ProfileStandard, ProfileName, Profile (every shape)
// and each profile class. Criteria: StringCriteria and NameCriteria (on the name, every kind;
// a profile's name is its size), MaterialCriteria (Material), CompositionCriteria
// (Composition), ProfileCriteria and ProfilesPanelQuery (Profile).
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <OdString.h>
#include <OdUnits.h>
#include <QcSmartPtr.h>

#include <vantlib/Criteria.h>
#include <vantlib/Exception.h>
#include <vantlib/IdMapping.h>
#include <vantlib/Object.h>

namespace vantlib {

class LibraryStore;

// What an object list shows of one object.
struct ObjectSummary {
    uint32_t id = 0;
    OdString name;
    // Everything the object's list thumbnail depends on, as bytes to compare (not to show):
    // objects with the same depiction look the same. Empty when there is nothing to draw.
    std::string depiction;
};

class Library : public std::enable_shared_from_this<Library> {
public:
    class Reactor;  // Reactor.h

    // How copy() groups its writes.
    enum TransactionType : uint32_t {
        kSingleTransaction = 0,  // all or nothing: one transaction (nested in an open one)
        kPerObject = 1,          // each requested object with its dependencies in its own
                                 // transaction: a failure keeps what was copied before it
    };

    enum RemoveResult : uint32_t {
        kRemoved = 0,
        kNotFound = 1,
        kReferenced = 2,  // another object of the library refers to it
        kVetoed = 3,      // the reactor refused (an open drawing uses it)
    };

    // Schema version this build writes and the newest it reads.
    static constexpr int kSchemaVersion = 3;

    // Adds the library tables to a new or existing SQLite file (a drawing file keeps its own
    // tables). Throws AlreadyExists when the file holds a library, NotALibrary when it is not
    // an SQLite database, ReadOnly when it cannot be written.
    static std::shared_ptr<Library> create(const OdString& path, OdDb::UnitsValue unit);
    // Opens an existing library. Throws FileMissing, NotALibrary, NewerSchema or Damaged
    // without touching the file. A file that cannot be written opens read-only. A writable
    // open first undoes a write that a stopped program left unfinished; a read-only open of
    // such a file throws NeedsRecovery. Older schemas are migrated on a writable open.
    static std::shared_ptr<Library> open(const OdString& path, bool readOnly = false);
    // True when the file exists and holds library tables (any schema version).
    static bool containsLibrary(const OdString& path);

    ~Library();
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    // True for a library opened read-only, and from the moment its file stopped taking writes
    // (WriteRefused, FileReplaced) or turned out damaged (Damaged).
    bool isReadOnly() const;
    // PRAGMA user_version of the file as read at opening (kSchemaVersion once migrated).
    int schemaVersion() const;
    const OdString& filename() const;
    // Identity of the library, kept for its whole life (also when the file is moved).
    const OdString& guid() const;
    // Length unit of thicknesses and distances stored in the library.
    OdDb::UnitsValue unit() const;
    bool isImperial() const;
    const OdString& description() const;
    void set_description(const OdString& text);

    // True when an object of that kind other than `exceptId` has this name (case-insensitive).
    bool isNameUsed(ObjectType type, const OdString& name, uint32_t exceptId = 0) const;
    // True when `object` would clash under this name with an object other than `exceptId`:
    // for profiles, another profile of the same profile name with this size; for profile
    // names, another name of the same standard.
    bool isNameUsed(const Object& object, const OdString& name, uint32_t exceptId = 0) const;

    // ---- Reading. Every object returned is a fresh copy; null when absent.
    template <class T> QcSmartPtr<T> get(uint32_t id) const;
    template <class T> QcSmartPtr<T> get(const NameKey& name) const;
    // Profile by its profile name and size (the size compared as names are).
    template <class T> QcSmartPtr<T> get(const ProfileKey& key) const;
    // ProfileName by its text, standard and type.
    template <class T> QcSmartPtr<T> get(const ProfileNameKey& key) const;
    // Replaces the contents of `out` with the matching objects, ordered by id.
    template <class T, class Criteria> void get(std::vector<QcSmartPtr<T>>& out, const Criteria& criteria) const;
    // Every object of the kind, ordered by id.
    template <class T> void get(std::vector<QcSmartPtr<T>>& out) const { get(out, StringCriteria()); }
    // The objects of these ids that exist, ordered by id.
    template <class T> void get(std::vector<QcSmartPtr<T>>& out, const std::set<unsigned>& ids) const;
    template <class T> unsigned count() const;

    // The matching objects as the rows of an object list, read without loading the objects:
    // ordered by name (letter case ignored), then by id.
    template <class T, class Criteria> void list(std::vector<ObjectSummary>& out, const Criteria& criteria) const;
    // One object as a list row; id 0 when it does not exist.
    template <class T> ObjectSummary listRow(uint32_t id) const;

    // ---- Writing. Each throws ReadOnly on a read-only library. Outside a Transaction each
    // call is a transaction of its own.

    // Stores a new object (id 0 or from another library) or the changed object of this
    // library, and returns the stored copy with its id. References (class, tags, layers,
    // composition type, custom properties) are resolved by name and created when missing; a
    // ply's material must exist in this library. A name clash goes to the reactor (no reactor:
    // ObjectNotUnique); a skipped save returns the existing object.
    template <class T> QcSmartPtr<T> save(const QcSmartPtr<T>& object);

    template <class T> RemoveResult remove(const QcSmartPtr<T>& object);
    template <class T> RemoveResult remove(uint32_t id);
    // Removes what it can; returns the ids that stay because something refers to them or the
    // reactor vetoed. Unknown ids are ignored.
    template <class T> std::set<unsigned> remove(const std::set<unsigned>& ids);

    // Removes objects that nothing refers to (Tag, Layer); returns how many. A read-only
    // library is left as it is (0).
    template <class T> unsigned purge();

    // Copies objects of `source` with what they depend on (a composition its materials; a
    // material its class, tags, layers and custom properties), each dependency once.
    // Dependencies other than materials are matched by name and reused when the target has
    // them; a clash of a material or composition goes to the reactor (no reactor: skip).
    // The mapping receives an entry for every source object considered.
    void copy(const std::shared_ptr<const Library>& source, const std::set<ObjectKey>& keys, IdMapping& mapping,
              TransactionType transactionType = kSingleTransaction);
    template <class T>
    IdMapping copy(const std::shared_ptr<const Library>& source, const std::set<unsigned>& ids,
                   TransactionType transactionType = kSingleTransaction);

    // Transaction depth (0 when none is open); see Transaction.h.
    unsigned transactionDepth() const;

    // Storage access for the module's own code.
    LibraryStore& store() const { return *m_store; }

private:
    Library(std::unique_ptr<LibraryStore> store);
    static std::shared_ptr<Library> attachStore(std::unique_ptr<LibraryStore> store);
    friend class LibraryStore;
    std::unique_ptr<LibraryStore> m_store;
};

// The library's file name, for messages; empty for a null library.
OdString getImplFilename(const Library& library);
OdString getImplFilename(const std::shared_ptr<const Library>& library);

template <class T>
IdMapping Library::copy(const std::shared_ptr<const Library>& source, const std::set<unsigned>& ids,
                        TransactionType transactionType) {
    std::set<ObjectKey> keys;
    for (unsigned id : ids)
        keys.insert(ObjectKey(T::kType, id));
    IdMapping mapping(shared_from_this());
    copy(source, keys, mapping, transactionType);
    return mapping;
}

}  // namespace vantlib
