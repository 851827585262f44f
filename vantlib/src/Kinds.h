#pragma once
// Every kind of object a library stores, described once: its table and columns, how a row
// becomes an object and an object a row, and the references it holds to objects of other
// kinds. Reading, writing, copying, the "is it in use" question and purging all work from
// these descriptions, so a new kind is one description (plus its tables in the schema).
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <vantlib/Object.h>

#include "Statement.h"

namespace vantlib {

class LibraryStore;

// Restriction of a follow-up query to the objects a query read: none (every object of the
// kind), one id, or a JSON list of ids.
struct IdRestriction {
    const std::string* idsJson = nullptr;
    uint32_t singleId = 0;

    // The condition on `column` with the restriction bound at `parameter`; empty for none.
    std::string sql(const std::string& column, int parameter) const;
    void bind(Statement& stmt, int parameter) const;
};

// Ids of the objects an object refers to, one list per reference of its kind (in the order
// KindReference::collect gives them; 0 for a column reference that is absent).
using ReferenceIds = std::vector<std::vector<uint32_t>>;

// References kept as rows of a table of their own (tags, custom values, plies).
struct LinkRows {
    // Attaches the rows to `objects` (sorted by id) in one query; marks the objects whose rows
    // this version cannot represent in `damaged`.
    void (*read)(const LibraryStore& store, ObjectType owner, const std::vector<Object*>& objects,
                 const IdRestriction& restriction, std::vector<bool>& damaged);
    // Writes the rows of one object; `targets` are the ids of what it refers to. `replace`:
    // the object is stored already and its old rows go.
    void (*write)(LibraryStore& store, ObjectType owner, uint32_t id, const Object& object,
                  const std::vector<uint32_t>& targets, bool replace);
};

// One reference from objects of a kind to objects of another kind.
struct KindReference {
    ObjectType target = kUnknownObject;
    // Table and column holding the referenced id: the kind's own table for a column
    // reference, the link table otherwise. "Is it in use" and purge look there.
    std::string table;
    std::string column;
    // The objects `owner` refers to, in order (never null).
    void (*collect)(const Object& owner, std::vector<const Object*>& targets) = nullptr;
    // Column references: alias of the referenced table joined into the kind's SELECT, and how
    // the referenced object (read by its name) is given to the owner.
    std::string joinAlias;
    void (*set)(Object& owner, const QcSmartPtr<Object>& target) = nullptr;
    // Link references: their rows.
    const LinkRows* links = nullptr;
    // Column references: the referenced object is read whole (with what it refers to) rather
    // than as its name alone.
    bool loadTarget = false;
    // Derived: the target kind is shared by name (KindDescription::nameOnly).
    bool targetNameOnly = false;

    bool isColumn() const { return links == nullptr; }
};

struct KindDescription {
    ObjectType type = kUnknownObject;
    std::string table;
    std::string alias;  // of the table in `select`
    std::string nameColumn = "name";
    // Columns written from an object, in bind order (parameters 1..n). The SELECT reads them
    // at 1..n after the id (column 0), followed by the names of column references.
    std::vector<std::string> columns;
    // An empty object of the kind.
    QcSmartPtr<Object> (*create)() = nullptr;
    // For kinds whose rows hold objects of several classes: the empty object a row needs
    // (null when this version does not know its class). Replaces `create` when reading.
    QcSmartPtr<Object> (*createFromRow)(const Statement& row) = nullptr;
    // Kinds sharing a table: the condition (over `alias`) on the rows of this kind, and the
    // kind whose description spans every row of the table.
    std::string rowCondition;
    ObjectType family = kUnknownObject;
    // Column references whose targets, with the name, identify an object: names are unique
    // among the objects referring to the same targets (a profile's size within its profile
    // name). Empty: names are unique in the kind.
    std::vector<std::string> nameScope;
    // The name may be empty (a profile without a size).
    bool allowEmptyName = false;
    // A copy that brings an object of this kind along as a dependency uses the target's object
    // of the same identity (name and scope) instead of raising a clash: profile names.
    bool reusedByCopies = false;
    // Fills the object's own values from the row (id and library are set by the caller, and
    // so are referenced objects); false when the row holds values this version cannot
    // represent.
    bool (*read)(const Statement& row, Object& object) = nullptr;
    // Binds the object's own values; the columns of references are bound by the caller.
    void (*bind)(Statement& stmt, const Object& object) = nullptr;
    std::vector<KindReference> references;
    // Objects shared by name between objects and libraries (tags, layers, classes): a
    // reference to a missing one creates it, and a copy reuses the target's object of that
    // name instead of raising a clash.
    bool nameOnly = false;
    // Library::purge removes the objects of this kind that nothing refers to.
    bool purgeable = false;
    // SQL expressions (over `alias`) of everything an object's list thumbnail depends on.
    // The depiction is their values side by side; a NULL first value means there is nothing
    // to draw. No expressions: the kind's rows have no picture.
    std::vector<std::string> depiction;

    // ---- Derived when the kind is registered.
    std::string select;      // every row, joined with the names of column references; WHERE may follow
    std::string listSelect;  // id, name and the depiction's values of every row, with the same joins
    std::string insert;
    std::string update;      // the id is bound after the columns
    std::string remove;
    std::string findByName;  // ?1 name, ?2 id to leave out
    std::string findScoped;  // ?1 name, ?2 id to leave out, ?3.. the scope's target ids (NULL: none)
    std::vector<size_t> scopeReferences;  // index in `references` of each nameScope column
    std::string exists;
    std::string countAll;
    std::string inUse;       // ?1 id; empty when no kind refers to this one
    std::string unused;      // ids nothing refers to
    std::vector<int> referenceParameter;  // per reference: its bind parameter (0 for links)
    bool hasLinks = false;

    std::string column(const std::string& name) const { return alias + "." + name; }
    // The WHERE clause restricting the table to this kind's rows; empty when it has all rows.
    std::string where() const { return rowCondition.empty() ? std::string() : " WHERE " + rowCondition; }
    // The first reference to `target` (throws when there is none).
    const KindReference& referenceTo(ObjectType target) const;
};

// The description of a stored kind; throws ConsistencyError for any other kind.
const KindDescription& describeKind(ObjectType type);
// Null for kinds without a table of their own.
const KindDescription* findKind(ObjectType type);
// True when a stored custom property may apply to `type`: any kind (kUnknownObject) or a kind
// whose objects carry custom values.
bool isCustomPropertyScope(int type);
// Every stored kind, in the order of their types.
const std::vector<const KindDescription*>& storedKinds();

}  // namespace vantlib
