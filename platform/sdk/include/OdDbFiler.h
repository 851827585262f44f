#pragma once
// Typed field list that drawing objects write themselves into (dwgOutFields) and read back
// from (dwgInFields). The drawing stores the fields of each object as they were written.
#include <cstdint>
#include <vector>

#include "OdDbObjectId.h"
#include "OdString.h"

class OdDbDwgFiler {
public:
    enum FieldType { kBool = 0, kInt32 = 1, kInt64 = 2, kDouble = 3, kString = 4, kObjectId = 5 };
    struct Field {
        FieldType type = kInt32;
        int64_t intValue = 0;  // bool, integers and object handles
        double realValue = 0.0;
        OdString text;
    };

    explicit OdDbDwgFiler(OdDbDatabase* database = nullptr) : m_db(database) {}
    OdDbDwgFiler(OdDbDatabase* database, std::vector<Field> fields) : m_db(database), m_fields(std::move(fields)) {}

    OdDbDatabase* database() const { return m_db; }

    void wrBool(bool value);
    void wrInt32(int32_t value);
    void wrUInt32(uint32_t value) { wrInt64(value); }
    void wrInt64(int64_t value);
    void wrDouble(double value);
    void wrString(const OdString& value);
    void wrObjectId(const OdDbObjectId& id);

    // Each read takes the next field; a field of another type, or reading past the end,
    // throws OdError(eMalformedRecord).
    bool rdBool();
    int32_t rdInt32();
    uint32_t rdUInt32();
    int64_t rdInt64();
    double rdDouble();
    OdString rdString();
    OdDbObjectId rdObjectId();  // resolved against database()

    // The fields not read yet; the filer is then at its end.
    std::vector<Field> readRemaining();

    bool atEnd() const { return m_position >= m_fields.size(); }
    size_t position() const { return m_position; }
    void rewind() { m_position = 0; }
    const std::vector<Field>& fields() const { return m_fields; }

private:
    const Field& next(FieldType type);

    OdDbDatabase* m_db;
    std::vector<Field> m_fields;
    size_t m_position = 0;
};
