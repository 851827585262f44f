#pragma once
// Dragging library objects from one list of a dialog onto the other copies them into that
// list's library. The payload only travels between lists of this process during one
// synchronous DoDragDrop: it is the in-memory image of the source's VantlibDragData, whose keys
// the drop side reads through the vector's own pointers.
#include <memory>
#include <vector>

#include <wx/dataobj.h>
#include <wx/dnd.h>

#include <vantlib/Types.h>

#include <vl_db/DocumentLibraries.h>
#include <vl_db/Types.h>

namespace vl_app {

struct VantlibDragData {
    vl_db::EDbType dbType = vl_db::kDbNone;             // library the objects come from
    vantlib::ObjectType objectType = vantlib::kUnknownObject;  // kind of object dragged
    std::vector<vantlib::ObjectKey> keys;               // the dragged objects
};

// Data object in the host's format for library objects; its buffer is a VantlibDragData image.
class VantlibDataObject : public wxCustomDataObject {
public:
    VantlibDataObject();
    // Carries `data`, which must outlive the drag.
    explicit VantlibDataObject(const VantlibDragData& data);
    ~VantlibDataObject() override;

    // The payload as the source's structure; null when the buffer is not one.
    const VantlibDragData* dragData() const;
};

// Drop target of a list that shows the objects of kind `objectType` of library `dbType`.
class VantlibDropTarget : public wxDropTarget {
public:
    VantlibDropTarget(vl_db::DocumentLibraries* libs, vl_db::EDbType dbType, vantlib::ObjectType objectType);

    wxDragResult OnDragOver(wxCoord x, wxCoord y, wxDragResult def) override;
    wxDragResult OnData(wxCoord x, wxCoord y, wxDragResult def) override;
    bool OnDrop(wxCoord x, wxCoord y) override;

    // What a drop of `data` here would do: wxDragCopy when the objects are of the list's kind,
    // come from the other library and this library may change; else wxDragNone.
    wxDragResult acceptance(const VantlibDragData& data) const;
    // Copies the payload's objects into this list's library; wxDragCopy when at least one
    // object was copied, wxDragNone when nothing was (all skipped, or the copy failed, which is
    // reported to the user).
    wxDragResult copyObjects(const VantlibDragData& data) const;

private:
    const VantlibDragData* dragData();
    // The drawing's project library, created when it has none; null when that is impossible.
    std::shared_ptr<vantlib::Library> projectLibrary() const;

    vl_db::DocumentLibraries* m_libs;
    vl_db::EDbType m_dbType;
    vantlib::ObjectType m_objectType;
};

}  // namespace vl_app
