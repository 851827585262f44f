// Reading and writing a drawing's SQLite file.
#include <SQLiteCpp/SQLiteCpp.h>
#include <unistd.h>

#include <filesystem>

#include "OdDbDatabase.h"
#include "OdDbDatabaseRecord.h"
#include "OdError.h"

namespace {

namespace fs = std::filesystem;

constexpr int kBusyTimeoutMs = 5000;

const char* const kSchema[] = {
    "CREATE TABLE IF NOT EXISTS drawing_meta(key TEXT PRIMARY KEY, value TEXT NOT NULL)",
    "CREATE TABLE IF NOT EXISTS drawing_header(name TEXT PRIMARY KEY, value TEXT NOT NULL)",
    "CREATE TABLE IF NOT EXISTS drawing_objects(handle INTEGER PRIMARY KEY, class_name TEXT NOT NULL, owner INTEGER NOT NULL)",
    "CREATE TABLE IF NOT EXISTS drawing_fields(handle INTEGER NOT NULL, seq INTEGER NOT NULL, kind INTEGER NOT NULL,"
    " int_value INTEGER, real_value REAL, text_value TEXT, PRIMARY KEY(handle, seq))",
    "CREATE TABLE IF NOT EXISTS drawing_entities(position INTEGER PRIMARY KEY, handle INTEGER NOT NULL)",
};

fs::path toPath(const OdString& path) { return fs::u8path(path.toUtf8()); }

OdError notADrawing(const OdString& path) { return OdError(eNotADrawing, path + L" is not a drawing"); }

std::string metaValue(SQLite::Database& db, const char* key) {
    SQLite::Statement query(db, "SELECT value FROM drawing_meta WHERE key = ?");
    query.bind(1, key);
    return query.executeStep() ? query.getColumn(0).getString() : std::string();
}

int64_t metaInteger(SQLite::Database& db, const char* key, const OdString& path) {
    std::string text = metaValue(db, key);
    try {
        size_t used = 0;
        long long value = std::stoll(text, &used);
        if (used != text.size()) throw std::invalid_argument(key);
        return value;
    } catch (const std::exception&) {
        throw OdError(eMalformedRecord, OdString::fromUtf8(std::string("Drawing ") + key + " is damaged in ") + path);
    }
}

bool canWrite(const fs::path& file) {
    std::error_code ignored;
    fs::path folder = fs::absolute(file, ignored).parent_path();
    // The folder too: SQLite writes its journal beside the file.
    return ::access(file.c_str(), W_OK) == 0 && ::access(folder.c_str(), W_OK) == 0;
}

}  // namespace

std::unique_ptr<OdDbDatabase> OdDbDatabase::create(const OdString& path, OdDb::UnitsValue insunits) {
    if (insunits < OdDb::kUnitsUndefined || insunits > OdDb::kUnitsMax)
        throw OdError(eInvalidInput, OdString::formatted(L"Unknown drawing unit %d", int(insunits)));
    if (path.isEmpty()) throw OdError(eInvalidInput, L"A drawing needs a file name");
    std::error_code ec;
    if (fs::exists(toPath(path), ec)) throw OdError(eFileAccessErr, path + L" already exists");

    std::unique_ptr<OdDbDatabase> db(new OdDbDatabase(path));
    db->initialiseDefaults(insunits);
    try {
        SQLite::Database connection(path.toUtf8(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        connection.setBusyTimeout(kBusyTimeoutMs);
        db->writeAll(connection);
    } catch (const std::exception& e) {
        fs::remove(toPath(path), ec);
        throw OdError(eFileAccessErr, L"Cannot create " + path + L": " + OdString::fromUtf8(e.what()));
    }
    db->m_modified = false;
    return db;
}

bool OdDbDatabase::isDrawingFile(const OdString& path) {
    try {
        open(path, true);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

std::unique_ptr<OdDbDatabase> OdDbDatabase::open(const OdString& path, bool readOnly) {
    const fs::path file = toPath(path);
    std::error_code ec;
    if (path.isEmpty() || !fs::exists(file, ec)) throw OdError_FileNotFound(path);
    if (!fs::is_regular_file(file, ec)) throw notADrawing(path);

    std::unique_ptr<OdDbDatabase> db(new OdDbDatabase(path));
    db->m_readOnly = readOnly || !canWrite(file);
    db->loadFromFile();
    db->m_modified = false;
    return db;
}

void OdDbDatabase::loadFromFile() {
    // Everything is read through a read-only connection: a file that turns out not to be a
    // drawing is never touched.
    std::unique_ptr<SQLite::Database> connection;
    try {
        connection = std::make_unique<SQLite::Database>(m_path.toUtf8(), SQLite::OPEN_READONLY);
        connection->setBusyTimeout(kBusyTimeoutMs);
        if (!connection->tableExists("drawing_meta")) throw notADrawing(m_path);
    } catch (const SQLite::Exception&) {
        throw notADrawing(m_path);
    }

    try {
        SQLite::Database& sql = *connection;
        std::string version = metaValue(sql, "schema_version");
        if (version.empty()) throw notADrawing(m_path);
        int64_t schema = metaInteger(sql, "schema_version", m_path);
        if (schema > kSchemaVersion)
            throw OdError(eIncompatibleVersion, OdString::formatted(L"%ls was written by a newer version (drawing format %lld, this build reads up to %d)",
                                                                    m_path.c_str(), static_cast<long long>(schema), kSchemaVersion));
        for (const char* table : {"drawing_header", "drawing_objects", "drawing_fields", "drawing_entities"})
            if (!sql.tableExists(table)) throw notADrawing(m_path);

        m_nextHandle = static_cast<uint64_t>(metaInteger(sql, "next_handle", m_path));
        m_layerTableId = OdDbObjectId(this, static_cast<uint64_t>(metaInteger(sql, "layer_table", m_path)));
        m_namedObjectsId = OdDbObjectId(this, static_cast<uint64_t>(metaInteger(sql, "named_objects", m_path)));

        SQLite::Statement header(sql, "SELECT name, value FROM drawing_header");
        while (header.executeStep()) {
            OdString name = OdString::fromUtf8(header.getColumn(0).getString());
            try {
                m_headerVars[name] = OdTypedValue::fromText(OdString::fromUtf8(header.getColumn(1).getString()));
            } catch (const OdError& e) {
                throw OdError(eMalformedRecord, L"Header variable " + name + L": " + e.description());
            }
        }

        SQLite::Statement objects(sql, "SELECT handle, class_name, owner FROM drawing_objects ORDER BY handle");
        while (objects.executeStep()) {
            auto record = std::make_unique<Record>();
            record->handle = static_cast<uint64_t>(objects.getColumn(0).getInt64());
            record->className = OdString::fromUtf8(objects.getColumn(1).getString());
            record->owner = static_cast<uint64_t>(objects.getColumn(2).getInt64());
            if (record->handle == 0 || record->handle >= m_nextHandle)
                throw OdError(eMalformedRecord, OdString::formatted(L"Object handle %llu is out of range", static_cast<unsigned long long>(record->handle)));
            m_records[record->handle] = std::move(record);
        }

        SQLite::Statement fields(sql, "SELECT handle, kind, int_value, real_value, text_value FROM drawing_fields ORDER BY handle, seq");
        while (fields.executeStep()) {
            auto owner = m_records.find(static_cast<uint64_t>(fields.getColumn(0).getInt64()));
            int kind = fields.getColumn(1).getInt();
            if (owner == m_records.end() || kind < OdDbDwgFiler::kBool || kind > OdDbDwgFiler::kObjectId)
                throw OdError(eMalformedRecord, L"A field belongs to no object or has an unknown kind");
            OdDbDwgFiler::Field field;
            field.type = static_cast<OdDbDwgFiler::FieldType>(kind);
            field.intValue = fields.getColumn(2).getInt64();
            field.realValue = fields.getColumn(3).getDouble();
            field.text = OdString::fromUtf8(fields.getColumn(4).getString());
            owner->second->fields.push_back(field);
        }

        SQLite::Statement entities(sql, "SELECT handle FROM drawing_entities ORDER BY position");
        while (entities.executeStep()) {
            uint64_t handle = static_cast<uint64_t>(entities.getColumn(0).getInt64());
            if (!m_records.count(handle)) throw OdError(eMalformedRecord, L"An entity entry names no object");
            m_entityOrder.push_back(handle);
        }
        if (!containsObject(m_layerTableId.handle()) || !containsObject(m_namedObjectsId.handle()))
            throw OdError(eMalformedRecord, L"The layer table or the named-objects dictionary is missing");
    } catch (const OdError& e) {
        if (e.code() == eMalformedRecord) throw OdError(eMalformedRecord, m_path + L" is damaged: " + e.description());
        throw;
    } catch (const SQLite::Exception& e) {
        throw OdError(eFileAccessErr, L"Cannot read " + m_path + L": " + OdString::fromUtf8(e.what()));
    }
}

void OdDbDatabase::save() {
    if (m_readOnly) throw OdError(eFileAccessErr, m_path + L" is open read-only");
    try {
        SQLite::Database connection(m_path.toUtf8(), SQLite::OPEN_READWRITE);
        connection.setBusyTimeout(kBusyTimeoutMs);
        writeAll(connection);
    } catch (const OdError&) {
        throw;
    } catch (const std::exception& e) {
        throw OdError(eFileAccessErr, L"Cannot save " + m_path + L": " + OdString::fromUtf8(e.what()));
    }
    m_modified = false;
}

void OdDbDatabase::writeAll(SQLite::Database& connection) {
    // Serialise first, so that an object failing to write itself stops the save before the
    // file is touched.
    struct Row {
        uint64_t handle;
        std::string className;
        uint64_t owner;
        std::vector<OdDbDwgFiler::Field> fields;
    };
    std::vector<Row> rows;
    for (const auto& entry : m_records) {
        const Record& record = *entry.second;
        if (record.erased) continue;
        Row row{record.handle, record.className.toUtf8(), record.owner, record.fields};
        if (record.object) {
            OdDbDwgFiler filer(this);
            record.object->dwgOutFields(filer);
            row.fields = filer.fields();
        }
        rows.push_back(std::move(row));
    }

    SQLite::Transaction transaction(connection);
    for (const char* statement : kSchema) connection.exec(statement);
    // A newer program may have rewritten the file since it was opened.
    std::string version = metaValue(connection, "schema_version");
    if (!version.empty() && metaInteger(connection, "schema_version", m_path) > kSchemaVersion)
        throw OdError(eIncompatibleVersion, m_path + L" was written by a newer version");
    for (const char* table : {"drawing_header", "drawing_objects", "drawing_fields", "drawing_entities"})
        connection.exec(std::string("DELETE FROM ") + table);

    SQLite::Statement meta(connection, "INSERT OR REPLACE INTO drawing_meta(key, value) VALUES (?, ?)");
    auto putMeta = [&meta](const char* key, const std::string& value) {
        meta.bind(1, key);
        meta.bind(2, value);
        meta.exec();
        meta.reset();
    };
    putMeta("schema_version", std::to_string(kSchemaVersion));
    putMeta("next_handle", std::to_string(m_nextHandle));
    putMeta("layer_table", std::to_string(m_layerTableId.handle()));
    putMeta("named_objects", std::to_string(m_namedObjectsId.handle()));

    SQLite::Statement header(connection, "INSERT INTO drawing_header(name, value) VALUES (?, ?)");
    for (const auto& entry : m_headerVars) {
        header.bind(1, entry.first.toUtf8());
        header.bind(2, entry.second.toText().toUtf8());
        header.exec();
        header.reset();
    }

    SQLite::Statement object(connection, "INSERT INTO drawing_objects(handle, class_name, owner) VALUES (?, ?, ?)");
    SQLite::Statement field(connection,
                            "INSERT INTO drawing_fields(handle, seq, kind, int_value, real_value, text_value) VALUES (?, ?, ?, ?, ?, ?)");
    for (const Row& row : rows) {
        object.bind(1, static_cast<int64_t>(row.handle));
        object.bind(2, row.className);
        object.bind(3, static_cast<int64_t>(row.owner));
        object.exec();
        object.reset();
        for (size_t i = 0; i < row.fields.size(); ++i) {
            const OdDbDwgFiler::Field& f = row.fields[i];
            field.bind(1, static_cast<int64_t>(row.handle));
            field.bind(2, static_cast<int64_t>(i));
            field.bind(3, static_cast<int>(f.type));
            field.bind(4, f.intValue);
            field.bind(5, f.realValue);
            field.bind(6, f.text.toUtf8());
            field.exec();
            field.reset();
        }
    }

    SQLite::Statement entity(connection, "INSERT INTO drawing_entities(position, handle) VALUES (?, ?)");
    for (size_t i = 0; i < m_entityOrder.size(); ++i) {
        entity.bind(1, static_cast<int64_t>(i));
        entity.bind(2, static_cast<int64_t>(m_entityOrder[i]));
        entity.exec();
        entity.reset();
    }
    transaction.commit();
}
