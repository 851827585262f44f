// Loading objects of any stored kind through its description. Every result is read in a fixed
// number of queries however many objects it holds: the rows, then the link rows (tags, custom
// values, plies) of all of them at once.
#include <algorithm>
#include <map>
#include <optional>

#include <vantlib/Exception.h>

#include "LibraryAccess.h"
#include "LibraryStore.h"
#include "Text.h"

namespace vantlib {

namespace {

// A WHERE clause with its positional parameters (text or integer).
struct Filter {
    std::string where;
    std::vector<std::string> texts;
    std::vector<int64_t> numbers;
    std::vector<bool> isText;

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

void addStringCondition(Filter& filter, const std::string& column, const StringCriteria& criteria) {
    switch (criteria.mode()) {
    case StringCriteria::kAny:
        return;
    case StringCriteria::kEquals:
        filter.add(column + " = ?");
        filter.text(textToUtf8(criteria.text()));
        return;
    case StringCriteria::kContains:
        // A search for a text, not a pattern: LIKE would need every % and _ escaped and
        // refuses long patterns. lower() folds ASCII letters only, as names are compared.
        filter.add("instr(lower(" + column + "), lower(?)) > 0");
        filter.text(textToUtf8(criteria.text()));
        return;
    case StringCriteria::kSize:
        filter.add(sizeKeySql(column) + " = ?");
        filter.text(textToUtf8(OdString(sizeKey(criteria.text()))));
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

void reportLoadFailure(const LibraryStore& store, ObjectType type, uint32_t id, const OdString& name) {
    if (Library::Reactor* r = store.reactor())
        r->onLoadFailed(store.selfConst(), ObjectKey(type, id), name);
}

// Replaces the name-only stand-ins of references read whole (KindReference::loadTarget) by
// the referenced objects, each read once for the whole result.
void loadReferencedObjects(const LibraryStore& store, const KindDescription& kind,
                           const std::vector<Object*>& objects, const std::vector<std::vector<uint32_t>>& targetIds) {
    for (size_t r = 0; r < kind.references.size(); ++r) {
        const KindReference& reference = kind.references[r];
        if (!reference.loadTarget)
            continue;
        std::set<unsigned> ids;
        for (const auto& row : targetIds)
            if (row[r])
                ids.insert(row[r]);
        std::map<uint32_t, QcSmartPtr<Object>> targets;
        for (const QcSmartPtr<Object>& target : store.loadByIds(reference.target, ids))
            targets.emplace(target->id(), target);
        for (size_t i = 0; i < objects.size(); ++i) {
            auto found = targets.find(targetIds[i][r]);
            if (found != targets.end())
                reference.set(*objects[i], found->second);
        }
    }
}

bool readsWholeTargets(const KindDescription& kind) {
    return std::any_of(kind.references.begin(), kind.references.end(),
                       [](const KindReference& reference) { return reference.loadTarget; });
}

// The filter with the kind's own row condition (kinds sharing a table).
Filter ownRows(const KindDescription& kind, const Filter& filter) {
    Filter own = filter;
    if (!kind.rowCondition.empty())
        own.add(kind.rowCondition);
    return own;
}

std::vector<QcSmartPtr<Object>> queryKind(const LibraryStore& store, const KindDescription& kind, const Filter& given) {
    const Filter filter = ownRows(kind, given);
    // Link rows and whole referenced objects are read by further queries, which must see the
    // same state as the rows.
    const bool wholeTargets = readsWholeTargets(kind);
    std::optional<LibraryStore::ReadScope> snapshot;
    if (kind.hasLinks || wholeTargets)
        snapshot.emplace(store);
    Statement& rows = store.statement(kind.select + filter.where + " ORDER BY " + kind.alias + ".id");
    filter.bindTo(rows);
    const std::weak_ptr<Library>& library = store.weakSelf();
    const int firstReferenceName = int(kind.columns.size()) + 1;
    std::vector<QcSmartPtr<Object>> result;
    std::vector<Object*> objects;
    std::vector<std::vector<uint32_t>> targetIds;
    std::set<unsigned> ids;
    while (rows.step()) {
        QcSmartPtr<Object> object = kind.createFromRow ? kind.createFromRow(rows) : kind.create();
        if (object)
            LibraryAccess::bind(*object, rows.id(0), library);
        if (!object || !kind.read(rows, *object)) {
            reportLoadFailure(store, kind.type, rows.id(0), rows.text(1));
            continue;
        }
        if (wholeTargets)
            targetIds.emplace_back(kind.references.size(), 0u);
        int nameColumn = firstReferenceName;
        for (size_t r = 0; r < kind.references.size(); ++r) {
            const KindReference& reference = kind.references[r];
            if (!reference.isColumn())
                continue;
            const int idColumn = kind.referenceParameter[r];
            if (!rows.isNull(idColumn) && !rows.isNull(nameColumn)) {
                if (reference.loadTarget) {
                    targetIds.back()[r] = rows.id(idColumn);
                } else {
                    QcSmartPtr<Object> target = describeKind(reference.target).create();
                    target->set_name(rows.text(nameColumn));
                    LibraryAccess::bind(*target, rows.id(idColumn), library);
                    reference.set(*object, target);
                }
            }
            ++nameColumn;
        }
        objects.push_back(object.get());
        if (kind.hasLinks && !filter.empty())
            ids.insert(object->id());
        result.push_back(std::move(object));
    }
    rows.reset();
    if (wholeTargets)
        loadReferencedObjects(store, kind, objects, targetIds);
    if (!kind.hasLinks || result.empty())
        return result;

    std::string json;
    const IdRestriction restriction = restrictionTo(ids, !filter.empty(), json);
    std::vector<bool> damaged(result.size(), false);
    for (const KindReference& reference : kind.references)
        if (reference.links)
            reference.links->read(store, kind.type, objects, restriction, damaged);
    if (std::find(damaged.begin(), damaged.end(), true) == damaged.end())
        return result;
    std::vector<QcSmartPtr<Object>> sound;
    sound.reserve(result.size());
    for (size_t i = 0; i < result.size(); ++i) {
        if (damaged[i])
            reportLoadFailure(store, kind.type, result[i]->id(), result[i]->name());
        else
            sound.push_back(result[i]);
    }
    return sound;
}

Filter materialFilter(const KindDescription& kind, const MaterialCriteria& criteria) {
    Filter filter;
    addStringCondition(filter, kind.column(kind.nameColumn), criteria.name);
    addStringCondition(filter, kind.referenceTo(kMaterialType).joinAlias + ".name", criteria.materialClass);
    addTagCondition(filter, kind.column("id"), kMaterial, criteria.tags, criteria.tagMatch);
    return filter;
}

Filter compositionFilter(const KindDescription& kind, const CompositionCriteria& criteria) {
    Filter filter;
    addStringCondition(filter, kind.column(kind.nameColumn), criteria.name);
    if (criteria.baseType != Composition::kAll) {
        filter.add(kind.column("base_type") + " = ?");
        filter.number(int64_t(criteria.baseType));
    }
    if (criteria.compositionType)
        addStringCondition(filter, kind.referenceTo(kCompositionType).joinAlias + ".name",
                           StringCriteria().equals(criteria.compositionType->name()));
    addTagCondition(filter, kind.column("id"), kComposition, criteria.tags, criteria.tagMatch);
    return filter;
}

// A reference column equal to `id`; 0 stands for no reference.
void addIdCondition(Filter& filter, const std::string& column, uint32_t id) {
    if (id == 0) {
        filter.add(column + " IS NULL");
        return;
    }
    filter.add(column + " = ?");
    filter.number(id);
}

// The kind a profile query reads (the class's, or all profiles'); null for an unknown class.
const KindDescription* profileQueryKind(const ProfilesPanelQuery& query) {
    if (query.className.isEmpty())
        return &describeKind(kConstructionProfile);
    const ProfileClass* profileClass = ProfileClass::byName(query.className);
    return profileClass ? &describeKind(profileClass->type()) : nullptr;
}

Filter profileFilter(const KindDescription& kind, const ProfilesPanelQuery& query) {
    Filter filter;
    const std::string& name = kind.referenceTo(kProfileName).joinAlias;
    if (query.type != kAnyProfileType) {
        filter.add("(" + name + ".type & ?) <> 0");
        filter.number(int64_t(query.type));
    }
    if (!query.standards.empty()) {
        std::string in;
        for (const OdString& standard : query.standards) {
            in += in.empty() ? "?" : ", ?";
            filter.text(textToUtf8(standard));
        }
        filter.add(name + ".standard_id IN (SELECT id FROM lib_profile_standard WHERE name IN (" + in + "))");
    }
    addStringCondition(filter, name + ".name", query.name);
    addStringCondition(filter,
                       "coalesce((SELECT s.name || ' ' FROM lib_profile_standard s WHERE s.id = " + name +
                           ".standard_id), '') || coalesce(" + name + ".name || ' ', '') || " + kind.column("size") +
                           " || ' ' || " + kind.column("description"),
                       query.text);
    return filter;
}

// The values of columns first..first+count-1 side by side as bytes: numbers as they are stored,
// texts ended by a zero, so that equal values give equal bytes without formatting anything.
void appendRawValues(const Statement& row, int first, int count, std::string& out) {
    sqlite3_stmt* stmt = row.handle();
    for (int column = first; column < first + count; ++column) {
        const int type = sqlite3_column_type(stmt, column);
        out.push_back(char('0' + type));
        if (type == SQLITE_INTEGER) {
            const sqlite3_int64 value = sqlite3_column_int64(stmt, column);
            out.append(reinterpret_cast<const char*>(&value), sizeof value);
        } else if (type == SQLITE_FLOAT) {
            const double value = sqlite3_column_double(stmt, column);
            out.append(reinterpret_cast<const char*>(&value), sizeof value);
        } else if (type != SQLITE_NULL) {
            const auto* text = sqlite3_column_text(stmt, column);
            out.append(reinterpret_cast<const char*>(text), size_t(sqlite3_column_bytes(stmt, column)));
            out.push_back('\0');
        }
    }
}

// The rows of a list: id, name and depiction only, in the order lists show them (by name,
// letter case ignored, which the name column's collation and index give for free).
std::vector<ObjectSummary> listKind(const LibraryStore& store, const KindDescription& kind, const Filter& given) {
    const Filter filter = ownRows(kind, given);
    Statement& rows = store.statement(kind.listSelect + filter.where + " ORDER BY " + kind.column(kind.nameColumn) +
                                      ", " + kind.column("id"));
    filter.bindTo(rows);
    std::vector<ObjectSummary> result;
    const int values = int(kind.depiction.size());
    while (rows.step()) {
        result.push_back(ObjectSummary{rows.id(0), rows.text(1), std::string()});
        if (values > 0 && !rows.isNull(2))
            appendRawValues(rows, 2, values, result.back().depiction);
    }
    rows.reset();
    return result;
}

template <class T>
std::vector<QcSmartPtr<T>> downcastAll(const std::vector<QcSmartPtr<Object>>& objects) {
    std::vector<QcSmartPtr<T>> result;
    result.reserve(objects.size());
    for (const auto& object : objects)
        result.push_back(QcSmartPtr<T>(static_cast<T*>(object.get())));
    return result;
}

}  // namespace

QcSmartPtr<Object> LibraryStore::loadById(ObjectType type, uint32_t id) const {
    const KindDescription& kind = describeKind(type);
    Filter filter;
    filter.add(kind.column("id") + " = ?");
    filter.number(id);
    auto found = queryKind(*this, kind, filter);
    return found.empty() ? QcSmartPtr<Object>() : found.front();
}

QcSmartPtr<Object> LibraryStore::loadByName(ObjectType type, const OdString& name) const {
    const KindDescription& kind = describeKind(type);
    Filter filter;
    filter.add(kind.column(kind.nameColumn) + " = ?");
    filter.text(textToUtf8(name));
    auto found = queryKind(*this, kind, filter);
    return found.empty() ? QcSmartPtr<Object>() : found.front();
}

std::vector<QcSmartPtr<Object>> LibraryStore::loadByIds(ObjectType type, const std::set<unsigned>& ids) const {
    const KindDescription& kind = describeKind(type);
    if (ids.empty())
        return {};
    Filter filter;
    if (ids.size() == 1) {
        filter.add(kind.column("id") + " = ?");
        filter.number(*ids.begin());
    } else {
        filter.add(kind.column("id") + " IN (SELECT value FROM json_each(?))");
        filter.text(idsAsJson(ids));
    }
    return queryKind(*this, kind, filter);
}

std::vector<QcSmartPtr<Object>> LibraryStore::loadNamed(ObjectType type, const StringCriteria& name) const {
    const KindDescription& kind = describeKind(type);
    Filter filter;
    addStringCondition(filter, kind.column(kind.nameColumn), name);
    return queryKind(*this, kind, filter);
}

std::vector<QcSmartPtr<Material>> LibraryStore::loadMaterials(const MaterialCriteria& criteria) const {
    const KindDescription& kind = describeKind(kMaterial);
    return downcastAll<Material>(queryKind(*this, kind, materialFilter(kind, criteria)));
}

std::vector<QcSmartPtr<Composition>> LibraryStore::loadCompositions(const CompositionCriteria& criteria) const {
    const KindDescription& kind = describeKind(kComposition);
    return downcastAll<Composition>(queryKind(*this, kind, compositionFilter(kind, criteria)));
}

std::vector<QcSmartPtr<Profile>> LibraryStore::loadProfiles(const ProfilesPanelQuery& query) const {
    const KindDescription* kind = profileQueryKind(query);
    if (!kind)
        return {};
    return downcastAll<Profile>(queryKind(*this, *kind, profileFilter(*kind, query)));
}

std::vector<QcSmartPtr<Profile>> LibraryStore::loadProfiles(const ProfileCriteria& criteria) const {
    const KindDescription& kind = describeKind(kConstructionProfile);
    Filter filter;
    if (criteria.nameId)
        addIdCondition(filter, kind.column("name_id"), criteria.nameId);
    addStringCondition(filter, kind.column(kind.nameColumn), criteria.size);
    return downcastAll<Profile>(queryKind(*this, kind, filter));
}

QcSmartPtr<Profile> LibraryStore::loadProfile(const ProfileKey& key) const {
    const KindDescription& kind = describeKind(kConstructionProfile);
    Filter filter;
    addIdCondition(filter, kind.column("name_id"), key.nameId);
    addStringCondition(filter, kind.column(kind.nameColumn), StringCriteria().equals(key.size));
    auto found = queryKind(*this, kind, filter);
    return found.empty() ? QcSmartPtr<Profile>() : QcSmartPtr<Profile>(static_cast<Profile*>(found.front().get()));
}

QcSmartPtr<ProfileName> LibraryStore::loadProfileName(const ProfileNameKey& key) const {
    const KindDescription& kind = describeKind(kProfileName);
    Filter filter;
    addStringCondition(filter, kind.column("name"), StringCriteria().equals(key.name));
    addIdCondition(filter, kind.column("standard_id"), key.standardId);
    filter.add(kind.column("type") + " = ?");
    filter.number(int64_t(key.type));
    auto found = queryKind(*this, kind, filter);
    return found.empty() ? QcSmartPtr<ProfileName>() : QcSmartPtr<ProfileName>(static_cast<ProfileName*>(found.front().get()));
}

std::vector<ObjectSummary> LibraryStore::listNamed(ObjectType type, const StringCriteria& name) const {
    const KindDescription& kind = describeKind(type);
    Filter filter;
    addStringCondition(filter, kind.column(kind.nameColumn), name);
    return listKind(*this, kind, filter);
}

std::vector<ObjectSummary> LibraryStore::listMaterials(const MaterialCriteria& criteria) const {
    const KindDescription& kind = describeKind(kMaterial);
    return listKind(*this, kind, materialFilter(kind, criteria));
}

std::vector<ObjectSummary> LibraryStore::listCompositions(const CompositionCriteria& criteria) const {
    const KindDescription& kind = describeKind(kComposition);
    return listKind(*this, kind, compositionFilter(kind, criteria));
}

ObjectSummary LibraryStore::listOne(ObjectType type, uint32_t id) const {
    const KindDescription& kind = describeKind(type);
    Filter filter;
    filter.add(kind.column("id") + " = ?");
    filter.number(id);
    std::vector<ObjectSummary> found = listKind(*this, kind, filter);
    return found.empty() ? ObjectSummary() : found.front();
}

unsigned LibraryStore::count(ObjectType type) const {
    Statement& stmt = statement(describeKind(type).countAll);
    unsigned n = stmt.step() ? unsigned(stmt.int64(0)) : 0;
    stmt.reset();
    return n;
}

}  // namespace vantlib
