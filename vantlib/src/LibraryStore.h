#pragma once
// The storage behind one Library: the SQLite connection, its cached statements, the
// transaction levels and the object tables. Library forwards to it; the reading, writing and
// copying code lives in the files named after those tasks.
#include <sqlite3.h>

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Transaction.h>

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include <vantlib/Composition.h>
#include <vantlib/Criteria.h>
#include <vantlib/CustomProperty.h>
#include <vantlib/Library.h>
#include <vantlib/Reactor.h>

#include "Kinds.h"
#include "LibraryFile.h"
#include "Statement.h"

namespace vantlib {

class LibraryStore {
public:
    LibraryStore(std::unique_ptr<SQLite::Database> db, const OdString& path, bool readOnly, int schemaVersion);
    ~LibraryStore();

    // ---- Identity
    void attach(const std::shared_ptr<Library>& library) { m_self = library; m_owner = library.get(); }
    std::shared_ptr<Library> self() const { return m_self.lock(); }
    std::shared_ptr<const Library> selfConst() const { return m_self.lock(); }
    const std::weak_ptr<Library>& weakSelf() const { return m_self; }
    Library* owner() const { return m_owner; }
    const OdString& path() const { return m_path; }
    // Also true once the file stopped taking writes while open (see WriteRefused).
    bool isReadOnly() const { return m_readOnly; }
    int schemaVersion() const { return m_schemaVersion; }
    const OdString& guid() const { return m_guid; }
    OdDb::UnitsValue unit() const { return m_unit; }
    const OdString& description() const { return m_description; }
    void setDescription(const OdString& text);
    void loadMeta();

    // ---- SQL
    sqlite3* db() const { return m_db->getHandle(); }
    SQLite::Database& database() { return *m_db; }
    // A prepared statement kept for the life of the connection, reset and ready to bind.
    Statement& statement(const std::string& sql) const;
    void requireWritable() const;

    // ---- Transactions (levels: outermost BEGIN IMMEDIATE, inner SAVEPOINTs)
    unsigned depth() const { return m_depth; }
    void begin();
    void commit();
    void rollback();

    // Runs one write operation of the library's interface. A failure that means the file no
    // longer takes writes turns the library read-only and becomes WriteRefused; damage
    // becomes Damaged; anything else passes as it is.
    template <class Operation>
    auto guardWrite(Operation&& operation) -> decltype(operation()) {
        try {
            return operation();
        } catch (const StorageError& e) {
            writeFailed(e.sqliteCode(), OdString());
            throw;
        }
    }

    // Keeps a write level open for one library operation; rolls it back unless committed.
    class WriteScope {
    public:
        explicit WriteScope(LibraryStore& store) : m_store(store) { m_store.begin(); }
        ~WriteScope() {
            if (!m_done) {
                try { m_store.rollback(); } catch (...) {}
            }
        }
        void commit() {
            // Marked first: a level that was committed must never be rolled back by this
            // scope, even if a reactor throws while hearing of the commit.
            m_done = true;
            m_store.commit();
        }

    private:
        LibraryStore& m_store;
        bool m_done = false;
    };

    // Gives several reads one consistent snapshot when no transaction is open.
    class ReadScope {
    public:
        explicit ReadScope(const LibraryStore& store);

    private:
        // A read has nothing to keep: the transaction is rolled back when the scope ends,
        // which also succeeds while a statement is still mid-result.
        std::optional<SQLite::Transaction> m_snapshot;
    };

    // ---- Names
    // Id of the object of that kind and name (case-insensitive), 0 when none.
    uint32_t findId(ObjectType type, const OdString& name, uint32_t exceptId = 0) const;
    // Id of the object other than `exceptId` that an object of that name would clash with:
    // one of the same kind and name, and for kinds with a name scope, referring to the same
    // scope targets (which are looked up here, never created). 0 when none.
    uint32_t findClash(const Object& object, const OdString& name, uint32_t exceptId = 0) const;
    bool exists(ObjectType type, uint32_t id) const;
    // Id of the object of a name-only kind that has the name of `object`, stored as a copy of
    // `object` when missing. `created` tells which happened.
    uint32_t resolveNamed(const Object& object, bool* created = nullptr);

    // ---- Reading (ReadObjects.cpp)
    QcSmartPtr<Object> loadById(ObjectType type, uint32_t id) const;
    QcSmartPtr<Object> loadByName(ObjectType type, const OdString& name) const;
    std::vector<QcSmartPtr<Object>> loadByIds(ObjectType type, const std::set<unsigned>& ids) const;
    std::vector<QcSmartPtr<Object>> loadNamed(ObjectType type, const StringCriteria& name) const;
    std::vector<QcSmartPtr<Material>> loadMaterials(const MaterialCriteria& criteria) const;
    std::vector<QcSmartPtr<Composition>> loadCompositions(const CompositionCriteria& criteria) const;
    std::vector<QcSmartPtr<Profile>> loadProfiles(const ProfilesPanelQuery& query) const;
    std::vector<QcSmartPtr<Profile>> loadProfiles(const ProfileCriteria& criteria) const;
    QcSmartPtr<Profile> loadProfile(const ProfileKey& key) const;
    QcSmartPtr<ProfileName> loadProfileName(const ProfileNameKey& key) const;
    unsigned count(ObjectType type) const;
    // The same selections as list rows (id, name, depiction), ordered by name.
    std::vector<ObjectSummary> listNamed(ObjectType type, const StringCriteria& name) const;
    std::vector<ObjectSummary> listMaterials(const MaterialCriteria& criteria) const;
    std::vector<ObjectSummary> listCompositions(const CompositionCriteria& criteria) const;
    ObjectSummary listOne(ObjectType type, uint32_t id) const;

    // ---- Writing (WriteObjects.cpp)
    // Library::save: clash resolution through the reactor, then insert or update. `skipped`
    // tells that the clash was answered with skip and the existing object was returned.
    QcSmartPtr<Object> saveObject(const Object& object, bool* skipped = nullptr);
    // Writes the row(s) of an object whose name is known to be free (or which overwrites
    // `targetId`). References come from `referenceIds` when given (a copy has resolved them),
    // else from resolveReferences. Returns the id.
    uint32_t writeObject(const Object& object, uint32_t targetId, const ReferenceIds* referenceIds = nullptr);
    // The ids in this library of what `object` refers to: name-only objects by name (created
    // when missing), other objects by id when they belong to this library, else by name; those
    // must exist.
    ReferenceIds resolveReferences(const KindDescription& kind, const Object& object);
    Library::RemoveResult removeObject(ObjectType type, uint32_t id);
    bool isReferenced(ObjectType type, uint32_t id) const;
    unsigned purge(ObjectType type);

    // ---- Copy (Copy.cpp)
    void copyFrom(const std::shared_ptr<const Library>& source, const std::set<ObjectKey>& keys, IdMapping& mapping,
                  Library::TransactionType transactionType);

    // ---- Reactor helpers
    Library::Reactor* reactor() const;
    void notifySaved(const ObjectKey& key, bool isNew);

private:
    // Before the first change of a transaction: the file must still be the one opened and
    // still be writable.
    void checkFileBeforeWriting();
    // Marks the library read-only and throws the error that `code` means, if it means one.
    // `reason` replaces SQLite's words for the code when given.
    void writeFailed(int code, const OdString& reason);
    void clearNameCaches();
    void forgetName(ObjectType type, uint32_t id);
    std::string savepointName() const;
    // Undoes the innermost level without telling the reactor.
    void rollbackLevel();
    void resetStatements();

    std::unique_ptr<SQLite::Database> m_db;
    mutable std::unordered_map<std::string, std::unique_ptr<Statement>> m_statements;
    // The outermost level; inner levels are savepoints named after their depth.
    std::unique_ptr<SQLite::Transaction> m_outer;
    OdString m_path;
    FileIdentity m_file;
    bool m_readOnly;
    int m_schemaVersion;
    OdString m_guid;
    OdDb::UnitsValue m_unit = OdDb::kUnitsMillimeters;
    OdString m_description;
    std::weak_ptr<Library> m_self;
    Library* m_owner = nullptr;
    unsigned m_depth = 0;
    // Name -> id per name-only kind, filled while a write transaction is open (nobody else
    // can change the file then) and dropped when it ends or rolls back.
    std::unordered_map<uint32_t, std::unordered_map<std::wstring, uint32_t>> m_nameCaches;
};

// Sorted, duplicate-free ids as a JSON array, for "IN (SELECT value FROM json_each(?))".
std::string idsAsJson(const std::set<unsigned>& ids);

}  // namespace vantlib
