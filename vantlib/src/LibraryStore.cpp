#include "LibraryStore.h"

#include <vantlib/Exception.h>
#include <vantlib/LibraryManager.h>

#include "LibraryAccess.h"
#include "LibraryFile.h"
#include "Schema.h"
#include "Text.h"

namespace vantlib {

LibraryStore::LibraryStore(std::unique_ptr<SQLite::Database> db, const OdString& path, bool readOnly, int schemaVersion)
    : m_db(std::move(db)), m_path(path), m_file(identityOf(path)), m_readOnly(readOnly), m_schemaVersion(schemaVersion) {}

LibraryStore::~LibraryStore() {
    // Statements must be finalised before the connection closes.
    m_statements.clear();
}

Statement& LibraryStore::statement(const std::string& sql) const {
    auto it = m_statements.find(sql);
    if (it == m_statements.end())
        it = m_statements.emplace(sql, std::make_unique<Statement>(db(), sql)).first;
    return it->second->reset();
}

void LibraryStore::requireWritable() const {
    if (m_readOnly)
        throw ReadOnly(m_path);
}

void LibraryStore::loadMeta() {
    Statement& stmt = statement("SELECT key, value FROM lib_meta");
    while (stmt.step()) {
        std::string key = stmt.utf8(0);
        if (key == "guid")
            m_guid = stmt.text(1);
        else if (key == "unit")
            m_unit = OdDb::UnitsValue(std::atoi(stmt.utf8(1).c_str()));
        else if (key == "description")
            m_description = stmt.text(1);
    }
    stmt.reset();
}

void LibraryStore::setDescription(const OdString& text) {
    requireWritable();
    guardWrite([&] {
        WriteScope scope(*this);
        statement("INSERT OR REPLACE INTO lib_meta(key, value) VALUES ('description', ?1)").bind(1, text).run();
        scope.commit();
    });
    m_description = text;
}

// ---- Transactions

std::string LibraryStore::savepointName() const { return "vl_level_" + std::to_string(m_depth); }

void LibraryStore::checkFileBeforeWriting() {
    if (identityOf(m_path) != m_file) {
        m_readOnly = true;
        throw FileReplaced(m_path);
    }
    // An open connection could still write a file whose permissions were taken away, but the
    // owner of the file has said that it is not to be changed any more.
    if (!canWrite(m_path))
        writeFailed(SQLITE_READONLY, OdString(L"the file or its folder is read-only"));
}

void LibraryStore::writeFailed(int code, const OdString& reason) {
    if (code == SQLITE_READONLY_DBMOVED) {
        m_readOnly = true;
        throw FileReplaced(m_path);
    }
    if (isWriteRefusal(code)) {
        m_readOnly = true;
        throw WriteRefused(m_path, reason.isEmpty() ? plainReason(code) : reason);
    }
    if (isDamage(code)) {
        m_readOnly = true;
        throw Damaged(m_path, plainReason(code));
    }
}

void LibraryStore::begin() {
    requireWritable();
    if (m_depth == 0) {
        checkFileBeforeWriting();
        // IMMEDIATE takes the write lock now (waiting up to the busy timeout), so that what
        // this transaction reads cannot be changed by another process before it writes.
        try {
            m_outer = std::make_unique<SQLite::Transaction>(*m_db, SQLite::TransactionBehavior::IMMEDIATE);
        } catch (const SQLite::Exception& e) {
            OdString message = textFromUtf8(std::string(e.what()));
            writeFailed(e.getExtendedErrorCode(), OdString());
            throw StorageError(OdString(L"BEGIN: ") + message, e.getExtendedErrorCode());
        }
        clearNameCaches();
    } else {
        // SQLiteCpp's Savepoint (3.2) rolls back without releasing the savepoint, which would
        // leave one behind per undone level, so the inner levels are written here.
        statement("SAVEPOINT " + savepointName()).run();
    }
    ++m_depth;
    if (Library::Reactor* r = reactor()) {
        try {
            r->onTransactionBegin(selfConst());
        } catch (...) {
            // The caller never gets the level, so close it here.
            rollbackLevel();
            throw;
        }
    }
}

void LibraryStore::commit() {
    if (m_depth == 0)
        throw ConsistencyError(OdString(L"No transaction to commit"));
    if (m_depth == 1) {
        try {
            m_outer->commit();
        } catch (const SQLite::Exception& e) {
            // The changes cannot be kept: undo them (SQLite may have done so already) rather
            // than leave the level half open. The message is the commit's, taken first.
            OdString message = textFromUtf8(std::string(e.what()));
            int code = e.getExtendedErrorCode();
            resetStatements();
            m_outer.reset();
            m_depth = 0;
            clearNameCaches();
            if (Library::Reactor* r = reactor())
                r->onTransactionEnd(selfConst(), kTransactionRolledBack);
            writeFailed(code, OdString());
            throw StorageError(OdString(L"COMMIT: ") + message, code);
        }
        m_outer.reset();
        m_depth = 0;
        clearNameCaches();
    } else {
        --m_depth;
        statement("RELEASE " + savepointName()).run();
    }
    if (Library::Reactor* r = reactor())
        r->onTransactionEnd(selfConst(), kTransactionCommitted);
}

void LibraryStore::rollback() {
    if (m_depth == 0)
        return;
    rollbackLevel();
    if (Library::Reactor* r = reactor())
        r->onTransactionEnd(selfConst(), kTransactionRolledBack);
}

void LibraryStore::resetStatements() {
    // Statements left mid-result would keep a rollback from releasing locks.
    for (auto& entry : m_statements)
        sqlite3_reset(entry.second->handle());
}

void LibraryStore::rollbackLevel() {
    resetStatements();
    --m_depth;
    clearNameCaches();
    if (m_depth == 0) {
        // SQLiteCpp's transaction rolls back, and accepts that SQLite may already have undone
        // the transaction after a failed write; one still open afterwards is a real failure.
        m_outer.reset();
        if (sqlite3_get_autocommit(db()) == 0)
            throw StorageError(OdString(L"ROLLBACK: ") + textFromUtf8(std::string(sqlite3_errmsg(db()))),
                               sqlite3_extended_errcode(db()));
    } else if (sqlite3_get_autocommit(db()) == 0) {
        // (Without a transaction SQLite has undone the whole of it; the outer levels end too.)
        std::string name = savepointName();
        execute(db(), ("ROLLBACK TO " + name + "; RELEASE " + name).c_str());
    }
}

LibraryStore::ReadScope::ReadScope(const LibraryStore& store) {
    if (store.m_depth == 0 && sqlite3_get_autocommit(store.db()))
        m_snapshot.emplace(*store.m_db);
}

void LibraryStore::clearNameCaches() { m_nameCaches.clear(); }

void LibraryStore::forgetName(ObjectType type, uint32_t id) {
    auto cache = m_nameCaches.find(type);
    if (cache == m_nameCaches.end())
        return;
    for (auto it = cache->second.begin(); it != cache->second.end(); ++it)
        if (it->second == id) {
            cache->second.erase(it);
            return;
        }
}

// ---- Names

uint32_t LibraryStore::findId(ObjectType type, const OdString& name, uint32_t exceptId) const {
    Statement& stmt = statement(describeKind(type).findByName);
    stmt.bind(1, name).bind(2, exceptId);
    uint32_t id = stmt.step() ? stmt.id(0) : 0;
    stmt.reset();
    return id;
}

uint32_t LibraryStore::findClash(const Object& object, const OdString& name, uint32_t exceptId) const {
    const KindDescription& kind = describeKind(object.objectType());
    if (kind.nameScope.empty())
        return findId(kind.type, name, exceptId);
    // The scope's targets as this library knows them; a target it lacks means no clash.
    std::vector<uint32_t> scope;
    std::vector<const Object*> targets;
    for (size_t r : kind.scopeReferences) {
        const KindReference& reference = kind.references[r];
        targets.clear();
        reference.collect(object, targets);
        uint32_t id = 0;
        if (!targets.empty()) {
            const Object& target = *targets.front();
            if (target.id() != 0 && LibraryAccess::belongsTo(target, m_owner))
                id = target.id();
            else if (reference.targetNameOnly)
                id = target.name().isEmpty() ? 0 : findId(reference.target, target.name());
            else
                id = findClash(target, target.name());
            if (id == 0)
                return 0;
        }
        scope.push_back(id);
    }
    Statement& stmt = statement(kind.findScoped);
    stmt.bind(1, name).bind(2, exceptId);
    for (size_t i = 0; i < scope.size(); ++i)
        stmt.bindRef(int(i + 3), scope[i]);
    uint32_t id = stmt.step() ? stmt.id(0) : 0;
    stmt.reset();
    return id;
}

bool LibraryStore::exists(ObjectType type, uint32_t id) const {
    const KindDescription* kind = findKind(type);
    if (!kind)
        return false;
    Statement& stmt = statement(kind->exists);
    bool found = stmt.bind(1, id).step();
    stmt.reset();
    return found;
}

uint32_t LibraryStore::resolveNamed(const Object& object, bool* created) {
    ObjectType type = object.objectType();
    const KindDescription& kind = describeKind(type);
    if (!kind.nameOnly)
        throw ConsistencyError(OdString::formatted(L"Objects of kind %u are not shared by name", unsigned(type)));
    const OdString& name = object.name();
    if (name.isEmpty())
        throw ConsistencyError(OdString::formatted(L"A referenced object of kind %u has no name", unsigned(type)));
    if (created)
        *created = false;
    std::unordered_map<std::wstring, uint32_t>* cache = m_depth > 0 ? &m_nameCaches[type] : nullptr;
    std::wstring folded;
    if (cache) {
        folded = foldCase(name);
        auto it = cache->find(folded);
        if (it != cache->end())
            return it->second;
    }
    uint32_t id = findId(type, name);
    if (id == 0) {
        id = writeObject(object, 0);
        if (created)
            *created = true;
    }
    if (cache)
        cache->emplace(std::move(folded), id);
    return id;
}

// ---- Reactor

Library::Reactor* LibraryStore::reactor() const { return LibraryManager::instance()->reactor(); }

void LibraryStore::notifySaved(const ObjectKey& key, bool isNew) {
    if (Library::Reactor* r = reactor()) {
        if (isNew)
            r->onSaved(selfConst(), key);
        else
            r->onModified(selfConst(), key);
    }
}

std::string idsAsJson(const std::set<unsigned>& ids) {
    std::string json = "[";
    json.reserve(ids.size() * 7 + 2);
    bool first = true;
    for (unsigned id : ids) {
        if (!first)
            json += ',';
        json += std::to_string(id);
        first = false;
    }
    json += ']';
    return json;
}

}  // namespace vantlib
