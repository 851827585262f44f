// Loading objects. Every result is read in a fixed number of queries however many objects it
// holds: the rows, then the tags, custom values and plies of all of them at once.
#include <algorithm>
#include <map>

#include <vantlib/Exception.h>

#include "LibraryAccess.h"
#include "LibraryStore.h"
#include "Rows.h"
#include "Schema.h"
#include "Text.h"

namespace vantlib {

namespace {

// A WHERE clause with its positional parameters (text or integer).
struct Filter {
    std::string where;
    std::vector<std::string> texts;
    std::vector<int64_t> numbers;
    std::vector<bool> isText;
    // Set when the filter selects objects by a set of ids (given as JSON).
    const std::string* idsJson = nullptr;

    void text(const std::string& value) { texts.push_back(value); isText.push_back(true); }
    void number(int64_t value) { numbers.push_back(value); isText.push_back(false); }
    void add(const std::string& condition) { where += where.empty() ? " WHERE " : " AND "; where += condition; }

    void bindTo(Statement& stmt) const {
        size_t t = 0, n = 0;
        for (size_t i = 0; i < isText.size(); ++i) {
            if (isText[i])
                stmt.bind(int(i + 1), texts[t++]);
            else
                stmt.bind(int(i + 1), numbers[n++]);
        }
    }
    bool empty() const { return where.empty(); }
};

std::string escapeLike(const OdString& text) {
    std::string in = textToUtf8(text), out;
    for (char ch : in) {
        if (ch == '%' || ch == '_' || ch == '\\')
            out += '\\';
        out += ch;
    }
    return out;
}

void addStringCondition(Filter& filter, const std::string& column, const StringCriteria& criteria) {
    switch (criteria.mode()) {
    case StringCriteria::kAny:
        return;
    case StringCriteria::kEquals:
        filter.add(column + " = ?");
        filter.text(textToUtf8(criteria.text()));
        return;
    case StringCriteria::kContains:
        filter.add(column + " LIKE ? ESCAPE '\\'");
        filter.text("%" + escapeLike(criteria.text()) + "%");
        return;
    }
}

void addTagCondition(Filter& filter, const std::string& idColumn, ObjectType type, const std::vector<OdString>& tags,
                     TagMatch match) {
    std::vector<OdString> unique;
    for (const OdString& tag : tags)
        if (std::none_of(unique.begin(), unique.end(), [&](const OdString& u) { return sameName(u, tag); }))
            unique.push_back(tag);
    if (unique.empty())
        return;
    std::string condition = idColumn +
                            " IN (SELECT ot.object_id FROM lib_object_tag ot JOIN lib_tag t ON t.id = ot.tag_id"
                            " WHERE ot.object_type = " + std::to_string(unsigned(type)) + " AND t.name IN (";
    for (size_t i = 0; i < unique.size(); ++i) {
        condition += i ? ", ?" : "?";
    }
    condition += ")";
    if (match == kAllTags)
        condition += " GROUP BY ot.object_id HAVING count(DISTINCT ot.tag_id) = " + std::to_string(unique.size());
    condition += ")";
    filter.add(condition);
    for (const OdString& tag : unique)
        filter.text(textToUtf8(tag));
}

// Restriction of a batch query to the objects loaded: none (all of the kind), one id, or a
// JSON list of ids.
struct IdRestriction {
    const std::string* idsJson = nullptr;
    uint32_t singleId = 0;

    std::string sql(const std::string& column, int parameter) const {
        std::string p = "?" + std::to_string(parameter);
        if (singleId)
            return column + " = " + p;
        if (idsJson)
            return column + " IN (SELECT value FROM json_each(" + p + "))";
        return std::string();
    }
    void bind(Statement& stmt, int parameter) const {
        if (singleId)
            stmt.bind(parameter, singleId);
        else if (idsJson)
            stmt.bind(parameter, *idsJson);
    }
};

// The restriction of follow-up queries to the objects a query read: none when it read every
// object of the kind. `json` holds the id list the restriction points to.
IdRestriction restrictionTo(const std::set<unsigned>& ids, bool filtered, std::string& json) {
    IdRestriction restriction;
    if (!filtered)
        return restriction;
    if (ids.size() == 1) {
        restriction.singleId = *ids.begin();
    } else {
        json = idsAsJson(ids);
        restriction.idsJson = &json;
    }
    return restriction;
}

std::string andClause(const std::string& condition) { return condition.empty() ? condition : " AND " + condition; }
std::string whereClause(const std::string& condition) { return condition.empty() ? condition : " WHERE " + condition; }

// Attaches tags and custom values to objects sorted by id, reading them in two queries.
void attachAnnotations(const LibraryStore& store, ObjectType type, const std::vector<AnnotatedObject*>& objects,
                       const IdRestriction& restriction) {
    if (objects.empty())
        return;
    Statement& tags = store.statement(
        "SELECT ot.object_id, t.id, t.name FROM lib_object_tag ot JOIN lib_tag t ON t.id = ot.tag_id"
        " WHERE ot.object_type = ?1" + andClause(restriction.sql("ot.object_id", 2)) + " ORDER BY ot.object_id, ot.position");
    tags.bind(1, unsigned(type));
    restriction.bind(tags, 2);
    const std::weak_ptr<Library>& library = store.weakSelf();
    size_t cursor = 0;
    while (tags.step()) {
        uint32_t objectId = tags.id(0);
        while (cursor < objects.size() && objects[cursor]->id() < objectId)
            ++cursor;
        if (cursor == objects.size())
            break;
        if (objects[cursor]->id() != objectId)
            continue;
        QcSmartPtr<Tag> tag = Tag::create(tags.text(2));
        LibraryAccess::bind(*tag, tags.id(1), library);
        LibraryAccess::tags(*objects[cursor]).push_back(tag);
    }
    tags.reset();

    Statement& values = store.statement(
        "SELECT cv.object_id, p.id, p.name, p.object_type, cv.value FROM lib_custom_value cv"
        " JOIN lib_custom_property p ON p.id = cv.property_id WHERE cv.object_type = ?1" +
        andClause(restriction.sql("cv.object_id", 2)) + " ORDER BY cv.object_id, p.id");
    values.bind(1, unsigned(type));
    restriction.bind(values, 2);
    cursor = 0;
    while (values.step()) {
        uint32_t objectId = values.id(0);
        while (cursor < objects.size() && objects[cursor]->id() < objectId)
            ++cursor;
        if (cursor == objects.size())
            break;
        if (objects[cursor]->id() != objectId)
            continue;
        QcSmartPtr<CustomProperty> property = CustomProperty::create(values.text(2), ObjectType(values.integer(3)));
        LibraryAccess::bind(*property, values.id(1), library);
        LibraryAccess::customValues(*objects[cursor]).push_back(CustomValue{property, values.text(4)});
    }
    values.reset();
}

void reportLoadFailure(const LibraryStore& store, ObjectType type, uint32_t id, const OdString& name) {
    if (Library::Reactor* r = store.reactor())
        r->onLoadFailed(store.selfConst(), ObjectKey(type, id), name);
}

std::vector<QcSmartPtr<Material>> queryMaterials(const LibraryStore& store, const Filter& filter) {
    LibraryStore::ReadScope snapshot(store);
    Statement& rows = store.statement(std::string(kMaterialSelect) + filter.where + " ORDER BY m.id");
    filter.bindTo(rows);
    std::vector<QcSmartPtr<Material>> result;
    std::vector<AnnotatedObject*> annotated;
    std::set<unsigned> ids;
    while (rows.step()) {
        QcSmartPtr<Material> material(new Material());
        if (!readMaterialRow(rows, *material, store.weakSelf())) {
            reportLoadFailure(store, kMaterial, rows.id(0), rows.text(1));
            continue;
        }
        annotated.push_back(material.get());
        if (!filter.empty())
            ids.insert(material->id());
        result.push_back(std::move(material));
    }
    rows.reset();
    std::string json;
    const IdRestriction restriction = restrictionTo(ids, !filter.empty(), json);
    if (!result.empty())
        attachAnnotations(store, kMaterial, annotated, restriction);
    return result;
}

std::vector<QcSmartPtr<Composition>> queryCompositions(const LibraryStore& store, const Filter& filter) {
    LibraryStore::ReadScope snapshot(store);
    Statement& rows = store.statement(std::string(kCompositionSelect) + filter.where + " ORDER BY k.id");
    filter.bindTo(rows);
    std::vector<QcSmartPtr<Composition>> result;
    std::vector<AnnotatedObject*> annotated;
    std::set<unsigned> ids;
    while (rows.step()) {
        QcSmartPtr<Composition> composition(new Composition());
        readCompositionRow(rows, *composition, store.weakSelf());
        annotated.push_back(composition.get());
        ids.insert(composition->id());
        result.push_back(std::move(composition));
    }
    rows.reset();
    if (result.empty())
        return result;
    std::string json;
    const IdRestriction restriction = restrictionTo(ids, !filter.empty(), json);
    attachAnnotations(store, kComposition, annotated, restriction);

    // Plies, then every material they use in one batch; plies of one result share the copy of
    // a material they have in common.
    struct PlyRow {
        uint32_t composition, material;
        double thickness;
        int function;
    };
    std::vector<PlyRow> plyRows;
    std::set<unsigned> materialIds;
    Statement& plies = store.statement("SELECT composition_id, material_id, thickness, function FROM lib_ply" +
                                       whereClause(restriction.sql("composition_id", 1)) +
                                       " ORDER BY composition_id, position");
    restriction.bind(plies, 1);
    while (plies.step()) {
        plyRows.push_back(PlyRow{plies.id(0), plies.id(1), plies.real(2), plies.integer(3)});
        materialIds.insert(plies.id(1));
    }
    plies.reset();
    std::map<uint32_t, QcSmartPtr<Material>> materials;
    if (!materialIds.empty()) {
        Filter byIds;
        if (materialIds.size() == 1) {
            byIds.add("m.id = ?");
            byIds.number(*materialIds.begin());
        } else {
            byIds.add("m.id IN (SELECT value FROM json_each(?))");
            byIds.text(idsAsJson(materialIds));
        }
        for (auto& material : queryMaterials(store, byIds))
            materials.emplace(material->id(), material);
    }
    size_t cursor = 0;
    std::vector<bool> damaged(result.size(), false);
    for (const PlyRow& row : plyRows) {
        while (cursor < result.size() && result[cursor]->id() < row.composition)
            ++cursor;
        if (cursor == result.size())
            break;
        if (result[cursor]->id() != row.composition)
            continue;
        auto material = materials.find(row.material);
        if (material == materials.end() || row.function < int(kFunctionNone) || row.function > int(kFunctionMembrane)) {
            damaged[cursor] = true;
            continue;
        }
        LibraryAccess::plies(*result[cursor]).push_back(Ply(material->second, row.thickness, MaterialFunction(row.function)));
    }
    std::vector<QcSmartPtr<Composition>> sound;
    sound.reserve(result.size());
    for (size_t i = 0; i < result.size(); ++i) {
        Composition& c = *result[i];
        if (c.variable_ply() < -1 || c.variable_ply() >= int(c.numPlies()))
            damaged[i] = true;
        if (damaged[i])
            reportLoadFailure(store, kComposition, c.id(), c.name());
        else
            sound.push_back(result[i]);
    }
    return sound;
}

QcSmartPtr<Object> makeNamed(ObjectType type, const Statement& row, const std::weak_ptr<Library>& library) {
    QcSmartPtr<Object> object;
    OdString name = row.text(1);
    switch (type) {
    case kTag: object = Tag::create(name); break;
    case kLayer: object = Layer::create(name); break;
    case kMaterialType: object = MaterialType::create(name); break;
    case kCompositionType: object = CompositionType::create(name); break;
    case kCustomProperty: {
        int kind = row.integer(2);
        if (kind != kUnknownObject && kind != kMaterial && kind != kComposition)
            return QcSmartPtr<Object>();
        object = CustomProperty::create(name, ObjectType(kind));
        break;
    }
    default: throw ConsistencyError(OdString::formatted(L"Objects of kind %u are not stored in libraries", unsigned(type)));
    }
    LibraryAccess::bind(*object, row.id(0), library);
    return object;
}

std::vector<QcSmartPtr<Object>> queryNamed(const LibraryStore& store, ObjectType type, const Filter& filter) {
    const char* table = tableOf(type);
    std::string columns = type == kCustomProperty ? "id, name, object_type" : "id, name";
    Statement& rows = store.statement("SELECT " + columns + " FROM " + table + filter.where + " ORDER BY id");
    filter.bindTo(rows);
    std::vector<QcSmartPtr<Object>> result;
    while (rows.step()) {
        QcSmartPtr<Object> object = makeNamed(type, rows, store.weakSelf());
        if (object)
            result.push_back(object);
        else
            reportLoadFailure(store, type, rows.id(0), rows.text(1));
    }
    rows.reset();
    return result;
}

bool isNamedKind(ObjectType type) {
    return type == kTag || type == kLayer || type == kMaterialType || type == kCompositionType || type == kCustomProperty;
}

std::vector<QcSmartPtr<Object>> queryAny(const LibraryStore& store, ObjectType type, Filter& filter,
                                         const std::string& materialIdColumn, const std::string& compositionIdColumn,
                                         const std::string& namedIdColumn) {
    std::vector<QcSmartPtr<Object>> result;
    if (type == kMaterial) {
        filter.where.replace(filter.where.find("$id"), 3, materialIdColumn);
        for (auto& m : queryMaterials(store, filter))
            result.push_back(m);
    } else if (type == kComposition) {
        filter.where.replace(filter.where.find("$id"), 3, compositionIdColumn);
        for (auto& c : queryCompositions(store, filter))
            result.push_back(c);
    } else if (isNamedKind(type)) {
        filter.where.replace(filter.where.find("$id"), 3, namedIdColumn);
        result = queryNamed(store, type, filter);
    } else {
        throw ConsistencyError(OdString::formatted(L"Objects of kind %u are not stored in libraries", unsigned(type)));
    }
    return result;
}

}  // namespace

QcSmartPtr<Object> LibraryStore::loadById(ObjectType type, uint32_t id) const {
    Filter filter;
    filter.add("$id = ?");
    filter.number(id);
    auto found = queryAny(*this, type, filter, "m.id", "k.id", "id");
    return found.empty() ? QcSmartPtr<Object>() : found.front();
}

QcSmartPtr<Object> LibraryStore::loadByName(ObjectType type, const OdString& name) const {
    Filter filter;
    filter.add("$id = ?");
    filter.text(textToUtf8(name));
    auto found = queryAny(*this, type, filter, "m.name", "k.name", "name");
    return found.empty() ? QcSmartPtr<Object>() : found.front();
}

std::vector<QcSmartPtr<Object>> LibraryStore::loadByIds(ObjectType type, const std::set<unsigned>& ids) const {
    if (ids.empty())
        return {};
    Filter filter;
    filter.add("$id IN (SELECT value FROM json_each(?))");
    filter.text(idsAsJson(ids));
    return queryAny(*this, type, filter, "m.id", "k.id", "id");
}

std::vector<QcSmartPtr<Object>> LibraryStore::loadNamed(ObjectType type, const StringCriteria& name) const {
    if (type == kMaterial) {
        MaterialCriteria criteria;
        criteria.name = name;
        std::vector<QcSmartPtr<Object>> result;
        for (auto& m : loadMaterials(criteria))
            result.push_back(m);
        return result;
    }
    if (type == kComposition) {
        CompositionCriteria criteria;
        criteria.name = name;
        std::vector<QcSmartPtr<Object>> result;
        for (auto& c : loadCompositions(criteria))
            result.push_back(c);
        return result;
    }
    if (!isNamedKind(type))
        throw ConsistencyError(OdString::formatted(L"Objects of kind %u are not stored in libraries", unsigned(type)));
    Filter filter;
    addStringCondition(filter, "name", name);
    return queryNamed(*this, type, filter);
}

std::vector<QcSmartPtr<Material>> LibraryStore::loadMaterials(const MaterialCriteria& criteria) const {
    Filter filter;
    addStringCondition(filter, "m.name", criteria.name);
    addStringCondition(filter, "c.name", criteria.materialClass);
    addTagCondition(filter, "m.id", kMaterial, criteria.tags, criteria.tagMatch);
    return queryMaterials(*this, filter);
}

std::vector<QcSmartPtr<Composition>> LibraryStore::loadCompositions(const CompositionCriteria& criteria) const {
    Filter filter;
    addStringCondition(filter, "k.name", criteria.name);
    if (criteria.baseType != Composition::kAll) {
        filter.add("k.base_type = ?");
        filter.number(int64_t(criteria.baseType));
    }
    if (criteria.compositionType)
        addStringCondition(filter, "ct.name", StringCriteria().equals(criteria.compositionType->name()));
    addTagCondition(filter, "k.id", kComposition, criteria.tags, criteria.tagMatch);
    return queryCompositions(*this, filter);
}

unsigned LibraryStore::count(ObjectType type) const {
    const char* table = tableOf(type);
    if (!table)
        throw ConsistencyError(OdString::formatted(L"Objects of kind %u are not stored in libraries", unsigned(type)));
    Statement& stmt = statement(std::string("SELECT count(*) FROM ") + table);
    unsigned n = stmt.step() ? unsigned(stmt.int64(0)) : 0;
    stmt.reset();
    return n;
}

}  // namespace vantlib
