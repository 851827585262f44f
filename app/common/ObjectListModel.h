#pragma once
// The rows one object list shows: the object's id, its name and what its thumbnail depicts. The
// list control asks the model for the rows it paints; nothing here knows about widgets.
#include <set>
#include <vector>

#include <vantlib/Library.h>

#include <vl_db/Types.h>

namespace vl_app {

// A row is what the library's list query reads of an object: its id, its name and what its
// thumbnail depicts (rows with the same depiction share a picture; empty: the placeholder).
// Rows keep the library's own types, so that filling a list of many thousand rows converts
// nothing; a name becomes a wxString only when its row is painted.
using ObjectRow = vantlib::ObjectSummary;

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

}  // namespace vl_app
