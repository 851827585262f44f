#pragma once
// The rows one object list shows: the object's id, its name and what its thumbnail depicts. The
// list control asks the model for the rows it paints; nothing here knows about widgets.
#include <set>
#include <vector>

#include <wx/string.h>

#include <vantlib/Library.h>

#include <vl_db/Types.h>

namespace vl_app {

struct ObjectRow {
    unsigned id = 0;
    wxString name;
    // Everything the row's thumbnail depends on; rows with the same depiction share a picture.
    // Empty: the placeholder.
    wxString depiction;
};

class ObjectListModel {
public:
    explicit ObjectListModel(vl_db::EDbType dbType) : m_dbType(dbType) {}

    vl_db::EDbType dbType() const { return m_dbType; }

    // Replaces the rows; they are shown in the order given.
    void assign(std::vector<ObjectRow> rows);
    void clear() { m_rows.clear(); }
    long size() const { return long(m_rows.size()); }
    bool valid(long index) const { return index >= 0 && index < size(); }
    const ObjectRow& row(long index) const { return m_rows[size_t(index)]; }
    // Row of the object, -1 when the list does not show it.
    long find(unsigned id) const;
    // Replaces the name and depiction of the object's row; false when it has no row.
    bool update(const ObjectRow& changed);
    // Removes the rows of these objects.
    void erase(const std::set<unsigned>& ids);

private:
    vl_db::EDbType m_dbType;
    std::vector<ObjectRow> m_rows;
};

// Rows from the library's list query, in its order.
ObjectRow toRow(const vantlib::ObjectSummary& summary);
std::vector<ObjectRow> toRows(const std::vector<vantlib::ObjectSummary>& summaries);

}  // namespace vl_app
