#include "OdDbFiler.h"

#include <limits>

#include "OdError.h"

namespace {

const wchar_t* fieldTypeName(OdDbDwgFiler::FieldType type) {
    switch (type) {
    case OdDbDwgFiler::kBool: return L"bool";
    case OdDbDwgFiler::kInt32: return L"int32";
    case OdDbDwgFiler::kInt64: return L"int64";
    case OdDbDwgFiler::kDouble: return L"double";
    case OdDbDwgFiler::kString: return L"string";
    case OdDbDwgFiler::kObjectId: return L"object id";
    }
    return L"unknown";
}

}  // namespace

void OdDbDwgFiler::wrBool(bool value) {
    Field f;
    f.type = kBool;
    f.intValue = value ? 1 : 0;
    m_fields.push_back(f);
}

void OdDbDwgFiler::wrInt32(int32_t value) {
    Field f;
    f.type = kInt32;
    f.intValue = value;
    m_fields.push_back(f);
}

void OdDbDwgFiler::wrInt64(int64_t value) {
    Field f;
    f.type = kInt64;
    f.intValue = value;
    m_fields.push_back(f);
}

void OdDbDwgFiler::wrDouble(double value) {
    Field f;
    f.type = kDouble;
    f.realValue = value;
    m_fields.push_back(f);
}

void OdDbDwgFiler::wrString(const OdString& value) {
    Field f;
    f.type = kString;
    f.text = value;
    m_fields.push_back(f);
}

void OdDbDwgFiler::wrObjectId(const OdDbObjectId& id) {
    Field f;
    f.type = kObjectId;
    f.intValue = static_cast<int64_t>(id.handle());
    m_fields.push_back(f);
}

const OdDbDwgFiler::Field& OdDbDwgFiler::next(FieldType type) {
    if (atEnd())
        throw OdError(eMalformedRecord, OdString::formatted(L"Record ends before field %u (%ls expected)",
                                                            unsigned(m_position), fieldTypeName(type)));
    const Field& f = m_fields[m_position];
    if (f.type != type)
        throw OdError(eMalformedRecord, OdString::formatted(L"Field %u holds %ls where %ls was expected", unsigned(m_position),
                                                            fieldTypeName(f.type), fieldTypeName(type)));
    ++m_position;
    return f;
}

bool OdDbDwgFiler::rdBool() { return next(kBool).intValue != 0; }
int32_t OdDbDwgFiler::rdInt32() { return static_cast<int32_t>(next(kInt32).intValue); }
int64_t OdDbDwgFiler::rdInt64() { return next(kInt64).intValue; }
double OdDbDwgFiler::rdDouble() { return next(kDouble).realValue; }
OdString OdDbDwgFiler::rdString() { return next(kString).text; }

uint32_t OdDbDwgFiler::rdUInt32() {
    int64_t value = next(kInt64).intValue;
    if (value < 0 || value > std::numeric_limits<uint32_t>::max())
        throw OdError(eMalformedRecord, OdString::formatted(L"Field %u is not an unsigned 32-bit value", unsigned(m_position - 1)));
    return static_cast<uint32_t>(value);
}

OdDbObjectId OdDbDwgFiler::rdObjectId() {
    return OdDbObjectId(m_db, static_cast<uint64_t>(next(kObjectId).intValue));
}

std::vector<OdDbDwgFiler::Field> OdDbDwgFiler::readRemaining() {
    std::vector<Field> rest;
    if (m_position < m_fields.size()) rest.assign(m_fields.begin() + static_cast<std::ptrdiff_t>(m_position), m_fields.end());
    m_position = m_fields.size();
    return rest;
}
