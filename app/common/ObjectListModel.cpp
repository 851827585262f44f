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

}  // namespace vl_app
