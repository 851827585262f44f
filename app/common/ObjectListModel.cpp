#include "app/common/ObjectListModel.h"

#include <algorithm>

namespace vl_app {

void ObjectListModel::assign(std::vector<ObjectRow> rows) { m_rows = std::move(rows); }

long ObjectListModel::find(unsigned id) const {
    const auto found = std::find_if(m_rows.begin(), m_rows.end(), [id](const ObjectRow& row) { return row.id == id; });
    return found == m_rows.end() ? -1 : long(found - m_rows.begin());
}

bool ObjectListModel::update(const ObjectRow& changed) {
    const long index = find(changed.id);
    if (index < 0)
        return false;
    m_rows[size_t(index)] = changed;
    return true;
}

void ObjectListModel::erase(const std::set<unsigned>& ids) {
    m_rows.erase(std::remove_if(m_rows.begin(), m_rows.end(), [&](const ObjectRow& row) { return ids.count(row.id) > 0; }),
                 m_rows.end());
}

void sortByName(std::vector<ObjectRow>& rows) {
    // Folding each name once keeps the sort cheap for catalogues of many thousand rows.
    std::vector<std::pair<wxString, size_t>> keys;
    keys.reserve(rows.size());
    for (size_t i = 0; i < rows.size(); ++i)
        keys.emplace_back(rows[i].name.Lower(), i);
    std::sort(keys.begin(), keys.end(), [&](const auto& a, const auto& b) {
        const int order = a.first.compare(b.first);
        return order != 0 ? order < 0 : rows[a.second].id < rows[b.second].id;
    });
    std::vector<ObjectRow> sorted;
    sorted.reserve(rows.size());
    for (const auto& key : keys)
        sorted.push_back(std::move(rows[key.second]));
    rows = std::move(sorted);
}

}  // namespace vl_app
