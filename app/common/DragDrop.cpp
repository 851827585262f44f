#include "app/common/DragDrop.h"

#include "app/common/LibraryCopy.h"

#include <wx/intl.h>
#include <wx/msgdlg.h>

#include <Clipboard.h>
#include <OdError.h>
#include <OdStringWx.h>

#include <vantlib/Exception.h>
#include <vantlib/IdMapping.h>
#include <vantlib/Library.h>

namespace vl_app {

static_assert(sizeof(VantlibDragData) == 8 + 3 * sizeof(void*),
              "the payload is the structure's own image: two 32-bit fields and the vector's pointers");

namespace {
// The data object of the drag this process is running. While hovering, some platforms only
// tell the target which formats are offered; the payload is then read from the source itself,
// which lives for the whole synchronous DoDragDrop.
const VantlibDataObject*& activeSource() {
    static const VantlibDataObject* source = nullptr;
    return source;
}
}  // namespace

VantlibDataObject::VantlibDataObject() : wxCustomDataObject(cma::ClipboardFormatIds::vantlibObject()) {}

VantlibDataObject::VantlibDataObject(const VantlibDragData& data) : VantlibDataObject() {
    SetData(sizeof(VantlibDragData), &data);
    activeSource() = this;
}

VantlibDataObject::~VantlibDataObject() {
    if (activeSource() == this)
        activeSource() = nullptr;
}

const VantlibDragData* VantlibDataObject::dragData() const {
    if (GetSize() != sizeof(VantlibDragData))
        return nullptr;
    return static_cast<const VantlibDragData*>(GetData());
}

VantlibDropTarget::VantlibDropTarget(vl_db::DocumentLibraries* libs, vl_db::EDbType dbType,
                                     vantlib::ObjectType objectType)
    : m_libs(libs), m_dbType(dbType), m_objectType(objectType) {
    SetDataObject(new VantlibDataObject());
}

const VantlibDragData* VantlibDropTarget::dragData() {
    if (GetData()) {
        const auto* received = dynamic_cast<const VantlibDataObject*>(GetDataObject());
        return received ? received->dragData() : nullptr;
    }
    return activeSource() ? activeSource()->dragData() : nullptr;
}

std::shared_ptr<vantlib::Library> VantlibDropTarget::projectLibrary() const {
    if (!m_libs)
        return nullptr;
    try {
        return m_libs->primary(true);
    } catch (const vantlib::Exception&) {
        // A drawing that cannot take a project library refuses drops like a read-only library;
        // hovering must not raise a message on every mouse move.
        return nullptr;
    } catch (const OdError&) {
        return nullptr;
    }
}

wxDragResult VantlibDropTarget::acceptance(const VantlibDragData& data) const {
    // A list takes only its own kind of object, and never its own objects.
    if (data.objectType != m_objectType || data.dbType == m_dbType)
        return wxDragNone;
    if (!m_libs)
        return wxDragNone;
    if (m_dbType == vl_db::kDbProject && !projectLibrary())
        return wxDragNone;
    return vl_db::writable(m_libs, m_dbType) ? wxDragCopy : wxDragNone;
}

wxDragResult VantlibDropTarget::copyObjects(const VantlibDragData& data) const {
    if (!m_libs)
        return wxDragNone;
    const std::shared_ptr<vantlib::Library> source = vl_db::library(m_libs, data.dbType, false);
    const std::shared_ptr<vantlib::Library> target = vl_db::library(m_libs, m_dbType, false);
    const std::set<vantlib::ObjectKey> keys(data.keys.begin(), data.keys.end());
    // The drag source only learns whether anything was copied; the user learns what was not.
    const CopyOutcome outcome = vl_app::copyObjects(nullptr, source, target, keys, m_objectType);
    return outcome.copied > 0 ? wxDragCopy : wxDragNone;
}

wxDragResult VantlibDropTarget::OnDragOver(wxCoord, wxCoord, wxDragResult) {
    const VantlibDragData* data = dragData();
    return data ? acceptance(*data) : wxDragNone;
}

bool VantlibDropTarget::OnDrop(wxCoord, wxCoord) { return projectLibrary() != nullptr; }

wxDragResult VantlibDropTarget::OnData(wxCoord, wxCoord, wxDragResult) {
    const VantlibDragData* data = dragData();
    return data ? copyObjects(*data) : wxDragNone;
}

}  // namespace vl_app
