// Rows of profile names and profiles. A profile's dimensions are one JSON object keyed by the
// parameters' stored keys and a custom outline one JSON value, so a new shape needs no new
// table or column; SQLite's JSON functions can still look inside both.
#include "ProfileRows.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string_view>

#include <OdNumberText.h>

#include <vantlib/Exception.h>
#include <vantlib/Translations.h>

// The marker lets the catalogue extraction find the module's texts.
#ifndef wxTRANSLATE
#define wxTRANSLATE(text) L"" text
#endif

namespace vantlib {

namespace {

std::string number(double value) {
    std::string text;
    for (wchar_t ch : OdNumberText::precise(value))
        text += char(ch);
    return text;
}

// A reader of the little JSON these columns hold: objects of numbers and arrays of numbers.
// Numbers are read as C reads them, whatever the process locale.
class JsonReader {
public:
    explicit JsonReader(std::string_view text) : m_text(text) {}

    bool consume(char ch) {
        skipBlanks();
        if (m_pos < m_text.size() && m_text[m_pos] == ch) {
            ++m_pos;
            return true;
        }
        return false;
    }
    bool readNumber(double& value) {
        skipBlanks();
        const char* begin = m_text.data() + m_pos;
        const auto [end, error] = std::from_chars(begin, m_text.data() + m_text.size(), value);
        if (error != std::errc() || end == begin || !std::isfinite(value))
            return false;
        m_pos += size_t(end - begin);
        return true;
    }
    bool readKey(std::string_view& key) {
        if (!consume('"'))
            return false;
        const size_t end = m_text.find('"', m_pos);
        if (end == std::string_view::npos)
            return false;
        key = m_text.substr(m_pos, end - m_pos);
        m_pos = end + 1;
        return consume(':');
    }
    bool atEnd() {
        skipBlanks();
        return m_pos == m_text.size();
    }

private:
    void skipBlanks() {
        while (m_pos < m_text.size() && std::isspace((unsigned char)m_text[m_pos]))
            ++m_pos;
    }
    std::string_view m_text;
    size_t m_pos = 0;
};

// The text of a column without copying it.
std::string_view columnText(const Statement& row, int column) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(row.handle(), column));
    return text ? std::string_view(text, size_t(sqlite3_column_bytes(row.handle(), column))) : std::string_view();
}

bool readLoop(JsonReader& reader, ProfileLoop& loop) {
    if (!reader.consume('['))
        return false;
    if (reader.consume(']'))
        return true;
    do {
        ProfileEdge edge;
        if (!reader.consume('[') || !reader.readNumber(edge.start.x) || !reader.consume(',') ||
            !reader.readNumber(edge.start.y) || !reader.consume(',') || !reader.readNumber(edge.bulge) ||
            !reader.consume(']'))
            return false;
        loop.push_back(edge);
    } while (reader.consume(','));
    return reader.consume(']');
}

void writeLoop(const ProfileLoop& loop, std::string& json) {
    json += '[';
    for (size_t i = 0; i < loop.size(); ++i) {
        if (i)
            json += ',';
        json += '[' + number(loop[i].start.x) + ',' + number(loop[i].start.y) + ',' + number(loop[i].bulge) + ']';
    }
    json += ']';
}

}  // namespace

std::string parametersToJson(const Profile& profile) {
    std::string json = "{";
    // In the class's order, so equal profiles give equal text.
    for (const ShapeParameterInfo& info : profile.isA().parameters()) {
        if (!profile.hasParameter(info.id))
            continue;
        if (json.size() > 1)
            json += ',';
        json += std::string("\"") + info.key + "\":" + number(profile.parameter(info.id));
    }
    return json + "}";
}

bool parametersFromJson(std::string_view json, Profile& profile) {
    JsonReader reader(json);
    if (!reader.consume('{'))
        return false;
    const std::vector<ShapeParameterInfo>& known = profile.isA().parameters();
    if (!reader.consume('}')) {
        do {
            std::string_view key;
            double value = 0.0;
            if (!reader.readKey(key) || !reader.readNumber(value))
                return false;
            // A dimension this version does not know would be lost by the next save.
            auto found = std::find_if(known.begin(), known.end(),
                                      [key](const ShapeParameterInfo& info) { return key == info.key; });
            if (found == known.end())
                return false;
            profile.setParameter(found->id, value);
        } while (reader.consume(','));
        if (!reader.consume('}'))
            return false;
    }
    return reader.atEnd();
}

std::string geometryToJson(const ProfileGeometry& geometry) {
    std::string json = "{\"outer\":";
    writeLoop(geometry.outer, json);
    json += ",\"holes\":[";
    for (size_t i = 0; i < geometry.holes.size(); ++i) {
        if (i)
            json += ',';
        writeLoop(geometry.holes[i], json);
    }
    return json + "]}";
}

bool geometryFromJson(std::string_view json, ProfileGeometry& geometry) {
    JsonReader reader(json);
    std::string_view key;
    if (!reader.consume('{') || !reader.readKey(key) || key != "outer" || !readLoop(reader, geometry.outer) ||
        !reader.consume(',') || !reader.readKey(key) || key != "holes" || !reader.consume('['))
        return false;
    if (!reader.consume(']')) {
        do {
            geometry.holes.emplace_back();
            if (!readLoop(reader, geometry.holes.back()))
                return false;
        } while (reader.consume(','));
        if (!reader.consume(']'))
            return false;
    }
    return reader.consume('}') && reader.atEnd();
}

// ---- Profile names

const std::vector<std::string>& profileNameColumns() {
    static const std::vector<std::string> columns = {"name", "standard_id", "type"};
    return columns;
}

bool readProfileNameRow(const Statement& row, Object& object) {
    ProfileName& name = static_cast<ProfileName&>(object);
    name.set_name(row.text(1));
    const int64_t type = row.int64(3);
    if (type <= 0 || type > int64_t(kProfileElectrical) * 2 - 1)
        return false;
    name.set_type(ProfileType(type));
    return true;
}

void bindProfileNameRow(Statement& stmt, const Object& object) {
    const ProfileName& name = static_cast<const ProfileName&>(object);
    stmt.bind(1, name.Object::name()).bind(3, unsigned(name.type()));
}

// ---- Profiles

const std::vector<std::string>& profileColumns() {
    static const std::vector<std::string> columns = {"size",       "name_id",  "description", "material_id", "object_type",
                                                     "has_offset", "offset_x", "offset_y",    "parameters",  "geometry"};
    return columns;
}

QcSmartPtr<Object> createProfileFromRow(const Statement& row) {
    const int64_t storedType = row.int64(5);
    if (const ProfileClass* profileClass = ProfileClass::byType(ObjectType(storedType)))
        return QcSmartPtr<Object>(profileClass->createEmpty().get());
    // A class of a later version; a number below the shapes' is damage.
    if (storedType < kFirstProfileShape || storedType > int64_t(UINT32_MAX))
        return QcSmartPtr<Object>();
    return QcSmartPtr<Object>(
        new UnknownShapeProfile(unsigned(storedType), std::string(columnText(row, 9)), std::string(columnText(row, 10))));
}

bool readProfileRow(const Statement& row, Object& object) {
    Profile& profile = static_cast<Profile&>(object);
    profile.set_size(row.text(1));
    profile.set_description(row.text(3));
    if (row.boolean(6))
        profile.set_offset(Vector2d(row.real(7), row.real(8)));
    if (&profile.isA() == &UnknownShapeProfile::desc())
        return true;
    if (!parametersFromJson(columnText(row, 9), profile))
        return false;
    if (profile.objectType() == kCustomProfile) {
        ProfileGeometry geometry;
        if (!geometryFromJson(columnText(row, 10), geometry))
            return false;
        if (!geometry.empty()) {
            try {
                static_cast<CustomProfile&>(profile).set_geometry(geometry);
            } catch (const ConsistencyError&) {
                return false;
            }
        }
    }
    return true;
}

void bindProfileRow(Statement& stmt, const Object& object) {
    const Profile& profile = static_cast<const Profile&>(object);
    const OdString fault = shapeFault(profile);
    if (!fault.isEmpty())
        throw ConsistencyError(OdString::formatted(translate(wxTRANSLATE("The profile \"%ls\" cannot be saved: %ls")).c_str(),
                                                   profile.displayName().c_str(),
                                                   fault.c_str()));
    stmt.bind(1, profile.size())
        .bind(3, profile.description())
        .bind(6, profile.has_offset() ? 1 : 0)
        .bind(7, profile.offset().x)
        .bind(8, profile.offset().y);
    if (&profile.isA() == &UnknownShapeProfile::desc()) {
        const auto& unknown = static_cast<const UnknownShapeProfile&>(profile);
        stmt.bind(5, unknown.storedType()).bind(9, unknown.storedParameters());
        if (unknown.storedGeometry().empty())
            stmt.bindNull(10);
        else
            stmt.bind(10, unknown.storedGeometry());
        return;
    }
    stmt.bind(5, unsigned(profile.objectType())).bind(9, parametersToJson(profile));
    if (profile.objectType() == kCustomProfile)
        stmt.bind(10, geometryToJson(static_cast<const CustomProfile&>(profile).geometry()));
    else
        stmt.bindNull(10);
}

}  // namespace vantlib
