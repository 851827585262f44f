// The module's embedded resources: what the registration puts into the memory file system, that
// every dialog layout loads with the controls its dialog code looks up, and that every picture
// loads at its size.
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include <wx/app.h>
#include <wx/dialog.h>
#include <wx/filesys.h>
#include <wx/grid.h>
#include <wx/image.h>
#include <wx/listctrl.h>
#include <wx/log.h>
#include <wx/menu.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/toolbar.h>
#include <wx/xrc/xmlres.h>

#include "vl_resources.h"

namespace {

// Collects errors and warnings that wx reports while resources load.
class RecordingLog : public wxLog {
public:
    std::vector<wxString> messages;

protected:
    void DoLogTextAtLevel(wxLogLevel level, const wxString& msg) override
    {
        if (level <= wxLOG_Warning)
            messages.push_back(msg);
    }
};

class Resources : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        if (s_initializer)
            return;
        wxApp::SetInstance(new wxApp);
        s_initializer = std::make_unique<wxInitializer>();
        ASSERT_TRUE(s_initializer->IsOk()) << "no display";
        wxImage::AddHandler(new wxPNGHandler);
        wxXmlResource::Get()->InitAllHandlers();
        delete wxLog::SetActiveTarget(s_log = new RecordingLog);
        InitVantlibXmlResource();
        s_registrationMessages = s_log->messages;
    }

    void SetUp() override { s_log->messages.clear(); }

    static wxString joined(const std::vector<wxString>& messages)
    {
        wxString all;
        for (const wxString& m : messages)
            all << m << "\n";
        return all;
    }

    static std::unique_ptr<wxInitializer> s_initializer;
    static RecordingLog* s_log;
    static std::vector<wxString> s_registrationMessages;
};

std::unique_ptr<wxInitializer> Resources::s_initializer;
RecordingLog* Resources::s_log = nullptr;
std::vector<wxString> Resources::s_registrationMessages;

// A control a dialog's code looks up: its name, its class and, where the dialog shows a fixed
// text, the label (for tools: the tooltip). "unknown" marks a placeholder for a control made in
// code.
struct Control {
    const char* name;
    const char* cls;
    const char* text = nullptr;
};

struct Layout {
    const char* dialog;
    std::vector<Control> controls;
};

const std::vector<Layout>& layouts()
{
    static const std::vector<Layout> table = {
        {"DlgMaterials",
         {{"PANEL_LEFT", "wxPanel"}, {"FILTER_CLASS", "wxChoice"}, {"TBAR_EDIT", "wxToolBar"},
          {"TOOL_FILTER", "tool", "Filter"}, {"TOOL_NEW", "tool", "New Material"}, {"TOOL_DEL", "tool", "Delete"},
          {"SPLITTER", "wxSplitterWindow"}, {"PANEL_TOP", "wxPanel"}, {"LIST_PROJECT", "ObjectListCtrl"},
          {"PANEL_BOTTOM", "wxPanel"}, {"LIST_LIBRARY", "ObjectListCtrl"}, {"PANEL_MAT", "wxPanel"},
          {"PREVIEW", "wxStaticBitmap"}, {"STAT_NAME", "wxStaticText"}, {"STAT_DSCR", "wxStaticText"},
          {"TABBOOK", "wxNotebook"}, {"PANEL_IDENTITY", "wxPanel"}, {"TEXT_NAME", "wxTextCtrl"},
          {"COMBO_CLASS", "wxComboBox"}, {"BTN_CLASS", "wxButton", "..."}, {"TEXT_DSCR", "wxTextCtrl"},
          {"BMP_ERROR", "wxStaticBitmap"}, {"STAT_ERROR", "wxStaticText"}, {"PANEL_APPEARANCE", "wxPanel"},
          {"STAT_SECT_TITLE", "wxStaticText", " Section"}, {"BTN_SECT_HATCH", "wxBitmapButton"},
          {"SECT_HATCH_TYPE", "wxControl"}, {"SECT_HATCH_NAME", "wxControl"},
          {"STAT_SECT_HATCH_SCALE", "wxStaticBitmap"}, {"TEXT_SECT_HATCH_SCALE", "wxTextCtrl"},
          {"STAT_SECT_HATCH_SPACE", "wxStaticBitmap"}, {"TEXT_SECT_HATCH_SPACE", "wxTextCtrl"},
          {"STAT_SECT_HATCH_ANGLE", "wxStaticBitmap"}, {"TEXT_SECT_HATCH_ANGLE", "wxTextCtrl"},
          {"SECT_HATCH_CROSS", "wxCheckBox", "Cross"}, {"SECT_HATCH_ANNOTATIVE", "wxCheckBox", "Annotative"},
          {"ID_SECT_BACKGROUND_COLOR", "wxControl"}, {"SECT_LAYER", "wxComboBox"}, {"BTN_SECT_COLOR", "wxButton", "Color"},
          {"STAT_ELEV_TITLE", "wxStaticText", " Elevation"}, {"BTN_ELEV_HATCH", "wxBitmapButton"},
          {"ELEV_HATCH_TYPE", "wxControl"}, {"ELEV_HATCH_NAME", "wxControl"},
          {"STAT_ELEV_HATCH_SCALE", "wxStaticBitmap"}, {"TEXT_ELEV_HATCH_SCALE", "wxTextCtrl"},
          {"STAT_ELEV_HATCH_SPACE", "wxStaticBitmap"}, {"TEXT_ELEV_HATCH_SPACE", "wxTextCtrl"},
          {"STAT_ELEV_HATCH_ANGLE", "wxStaticBitmap"}, {"TEXT_ELEV_HATCH_ANGLE", "wxTextCtrl"},
          {"ELEV_HATCH_CROSS", "wxCheckBox", "Cross"}, {"ELEV_HATCH_ANNOTATIVE", "wxCheckBox", "Annotative"},
          {"ID_ELEV_BACKGROUND_COLOR", "wxControl"}, {"ELEV_LAYER", "wxComboBox"}, {"BTN_ELEV_COLOR", "wxButton", "Color"},
          {"STAT_RENDER_TITLE", "wxStaticText", " 3D"}, {"BTN_RENDER_MAT", "wxBitmapButton"},
          {"STAT_RENDER_MAT_CAT", "wxStaticText"}, {"STAT_RENDER_MAT_NAME", "wxStaticText"},
          {"PANEL_PROPS", "wxPanel"}, {"PANEL_PROPGRID", "wxPanel"},
          {"BTN_CUSTOM_PROPS", "wxButton", "Custom Properties..."},
          {"BTN_ASSET_STRUCT", "wxButton", "Add Structural Asset"}, {"BTN_ASSET_THERMAL", "wxButton", "Add Thermal Asset"},
          {"TBAR_CUSTOMPROP", "wxToolBar"}, {"TOOL_CUSTOMPROP_NEW", "tool", "Add Custom Property Value"},
          {"TOOL_CUSTOMPROP_DELETE", "tool", "Delete Custom Property Value"},
          {"wxID_OK", "wxButton", "OK"}, {"wxID_CANCEL", "wxButton", "Cancel"}}},
        {"DlgMaterialClasses",
         {{"STAT_LIB", "wxStaticText"}, {"TBAR_EDIT", "wxToolBar"}, {"TOOL_NEW", "tool", "Add Class"},
          {"TOOL_DELETE", "tool", "Delete"}, {"LIST_CLASSES", "wxListBox"},
          {"wxID_OK", "wxButton", "OK"}, {"wxID_CANCEL", "wxButton", "Cancel"}}},
        {"DlgHatchPattern",
         {{"CHOICE_TYPE", "wxChoice"}, {"LIST_PATTERNS", "wxListCtrl"}, {"STAT_SCALE", "wxStaticBitmap"},
          {"STAT_SPACE", "wxStaticBitmap"}, {"STAT_ANGLE", "wxStaticBitmap"}, {"TEXT_SCALE", "wxTextCtrl"},
          {"TEXT_SPACE", "wxTextCtrl"}, {"TEXT_ANGLE", "wxTextCtrl"}, {"CHECK_CROSS", "wxCheckBox", "Cross"},
          {"wxID_OK", "wxButton", "OK"}, {"wxID_CANCEL", "wxButton", "Cancel"}}},
        {"DlgRenderMaterial",
         {{"SEARCH_MAT", "wxSearchCtrl"}, {"PREVIEW", "wxBitmapButton"}, {"GRID_MATS", "unknown"},
          {"BTN_CLEAR", "wxButton", "Clear"}, {"wxID_OK", "wxButton", "OK"}, {"wxID_CANCEL", "wxButton", "Cancel"}}},
        {"DlgCustomProperties",
         {{"STAT_LIB", "wxStaticText"}, {"TBAR_PROPS", "wxToolBar"},
          {"TOOL_NEW_ANY", "tool", "Add Generic Custom Property"}, {"TOOL_NEW_MAT", "tool", "Add Material Custom Property"},
          {"TOOL_NEW_CMP", "tool", "Add Composition Custom Property"}, {"TOOL_DELETE", "tool", "Delete"},
          {"LIST_PROPS", "wxListCtrl"}, {"wxID_OK", "wxButton", "OK"}, {"wxID_CANCEL", "wxButton", "Cancel"}}},
        {"DlgCompositions",
         {{"PANEL_LEFT", "wxPanel"}, {"FILTER_TYPE", "wxChoice"}, {"TBAR_EDIT", "wxToolBar"},
          {"TOOL_FILTER", "tool", "Filter"}, {"TOOL_NEW", "tool", "New Composition"}, {"TOOL_DEL", "tool", "Delete"},
          {"SPLITTER", "wxSplitterWindow"}, {"PANEL_TOP", "wxPanel"}, {"LIST_PROJECT", "ObjectListCtrl"},
          {"PANEL_BOTTOM", "wxPanel"}, {"LIST_LIBRARY", "ObjectListCtrl"}, {"PANEL_CMP", "wxPanel"},
          {"PREVIEW", "wxStaticBitmap"}, {"TEXT_NAME", "wxTextCtrl"}, {"CHOICE_CMP_TYPE", "wxChoice"},
          {"BMP_ERROR", "wxStaticBitmap"}, {"STAT_ERROR", "wxStaticText"}, {"STAT_EXT", "wxStaticText", "Exterior"},
          {"TBAR_PLY_EDIT", "wxToolBar"}, {"TOOL_PLY_NEW", "tool", "Add Ply"}, {"TOOL_PLY_DUPL", "tool", "Duplicate Ply"},
          {"TOOL_PLY_DEL", "tool", "Delete"}, {"STATIC_LINE_TOP", "wxStaticLine"}, {"GRID_PLIES", "unknown"},
          {"STATIC_LINE_BOTTOM", "wxStaticLine"}, {"STAT_INT", "wxStaticText", "Interior"},
          {"PANEL_PROPGRID", "wxPanel"}, {"BTN_CUSTOM_PROPS", "wxButton", "Custom Properties..."},
          {"TBAR_CUSTOMPROP", "wxToolBar"}, {"TOOL_CUSTOMPROP_DELETE", "tool", "Delete Custom Property Value"},
          {"BTN_UNSELECT", "wxButton", "Unselect"}, {"wxID_OK", "wxButton", "OK"}, {"wxID_CANCEL", "wxButton", "Cancel"}}},
        {"DlgProfiles",
         {{"PANEL_LEFT", "wxPanel"}, {"ID_SET_FILTERS", "wxStaticText", "Filters:"},
          {"ID_SEL_TYPE_CHOICES", "wxChoice"}, {"ID_STANDARD_CHOICES", "wxChoice"}, {"ID_SHAPE_CHOICES", "wxChoice"},
          {"ID_SEL_NAME_CHOICES", "wxChoice"}, {"ID_PROFILEFILTER", "wxSearchCtrl"}, {"TBAR_EDIT", "wxToolBar"},
          {"TOOL_SAVE", "tool", "Save Profile"}, {"TOOL_NEW", "tool", "New Profile"}, {"TOOL_DEL", "tool", "Delete Profile"},
          {"TOOL_PROJ_INFO", "tool", "Project and Central Database Information"},
          {"LIST_PROJECT", "ObjectListCtrl"}, {"LIST_LIBRARY", "ObjectListCtrl"}, {"PANEL_CMP", "wxPanel"},
          {"PANEL_PREVIEW", "wxPanel"}, {"TBAR_CUSTOM_PROFILE", "wxToolBar"}, {"TOOL_ROTATE_LEFT", "tool", "Left turn"},
          {"TOOL_ROTATE_RIGHT", "tool", "Right turn"}, {"TOOL_MIRROR_VERTICAL", "tool", "Vertical mirror"},
          {"TOOL_MIRROR_HORIZONTAL", "tool", "Horizontal mirror"},
          {"ID_SET_PROPS", "wxStaticText", "Set the type, standard and name:"}, {"ID_SET_TYPE", "wxChoice"},
          {"ID_TYPE_TXTCTRL", "wxTextCtrl"}, {"ID_SET_STANDARD", "wxTextCtrl"}, {"ID_SET_NAME", "wxTextCtrl"},
          {"ID_SIZE_VALUE", "wxTextCtrl"}, {"ID_SHAPE_TXTCTRL", "wxTextCtrl"}, {"ID_SET_SHAPE_CHOICE", "wxChoice"},
          {"PICK_PROFILE_BUTTON", "wxBitmapButton"}, {"BTN_OFFSET", "wxBitmapButton"},
          {"STAT_ERROR", "wxStaticText", "Error"}, {"PANEL_PROPS", "wxPanel"}, {"PANEL_CUSTOM_SHAPE", "wxPanel"},
          {"PANEL_ASYM_ISHAPE_GRID", "wxPanel"}, {"PANEL_ISHAPE_GRID", "wxPanel"}, {"PANEL_LSHAPE_GRID", "wxPanel"},
          {"PANEL_USHAPE_GRID", "wxPanel"}, {"PANEL_CSHAPE_GRID", "wxPanel"}, {"PANEL_ZSHAPE_GRID", "wxPanel"},
          {"PANEL_TSHAPE_GRID", "wxPanel"}, {"PANEL_RAIL_A_SHAPE_GRID", "wxPanel"},
          {"PANEL_RAIL_F_SHAPE_GRID", "wxPanel"}, {"PANEL_CIRCULAR_SHAPE_GRID", "wxPanel"},
          {"PANEL_CIRCULAR_H_SHAPE_GRID", "wxPanel"}, {"PANEL_ELLIPSE_SHAPE_GRID", "wxPanel"},
          {"PANEL_RECTANGLE_SHAPE_GRID", "wxPanel"}, {"PANEL_RECT_HOLLOW_SHAPE_GRID", "wxPanel"},
          {"PANEL_RECT_ROUND_SHAPE_GRID", "wxPanel"}, {"PANEL_TRAPEZIUM_SHAPE_GRID", "wxPanel"},
          {"PANEL_PROPGRID", "wxPanel"}, {"BTN_UNSELECT", "wxButton", "unselect"}, {"wxID_NEW", "wxButton"},
          {"wxID_SAVE", "wxButton"}, {"wxID_OK", "wxButton"}, {"wxID_CANCEL", "wxButton"}}},
        {"DLG_PROFILE_EXTRA_OFFSET",
         {{"ECCENTRICITY_PANEL", "wxPanel"}, {"RADIOBTN_TOP_LEFT", "wxRadioButton", "Top-left"},
          {"RADIOBTN_TOP_MIDDLE", "wxRadioButton", "Top-middle"}, {"RADIOBTN_TOP_RIGHT", "wxRadioButton", "Top-right"},
          {"RADIOBTN_MIDDLE_LEFT", "wxRadioButton", "Middle-left"}, {"RADIOBTN_CENTER", "wxRadioButton", "Center"},
          {"RADIOBTN_MIDDLE_RIGHT", "wxRadioButton", "Middle-right"},
          {"RADIOBTN_BOTTOM_LEFT", "wxRadioButton", "Bottom-left"},
          {"RADIOBTN_BOTTOM_MIDDLE", "wxRadioButton", "Bottom-middle"},
          {"RADIOBTN_BOTTOM_RIGHT", "wxRadioButton", "Bottom-right"}, {"PROFILE_PREVIEW", "wxStaticBitmap"},
          {"TEXTCTRL_X_OFFSET", "wxTextCtrl"}, {"X_UNIT", "wxStaticText"}, {"TEXTCTRL_Y_OFFSET", "wxTextCtrl"},
          {"Y_UNIT", "wxStaticText"}, {"BTN_CENTROID", "wxButton", "Centroid"}, {"BTN_INVARIANT", "wxChoice"},
          {"BTN_CANCEL", "wxButton", "Cancel"}, {"BTN_APPLY", "wxButton", "Apply"}}},
        {"DLG_PROFILE_SAVE",
         {{"TEXT_QUESTION", "wxStaticText"}, {"wxID_SAVE", "wxButton", "Save"}, {"wxID_OK", "wxButton", "OK"},
          {"wxID_CANCEL", "wxButton", "Cancel"}}},
        {"BIM_PROPERTIES",
         {{"CHOICE_NAMESPACE", "wxChoice"}, {"BMP_BTN_NEW_PROP_SET", "wxButton", "Set"},
          {"BMP_BTN_NEW_PROP_DEF", "wxButton", "Property"}, {"BMP_BTN_NEW_VAL_DEF", "wxButton", "Value"},
          {"BMP_BTN_UP", "wxButton", "Up"}, {"BMP_BTN_DOWN", "wxButton", "Down"},
          {"BMP_BTN_DELETE", "wxButton", "Remove"}, {"SEARCH_CTRL", "wxSearchCtrl"},
          {"TREE_NAMESPACE", "wxTreeCtrl"}, {"PANEL_SETTINGS", "wxPanel"}, {"PANEL_CATEGORIES", "wxPanel"},
          {"PANEL_TREE_CATEGORIES", "wxPanel"}, {"BTN_CHECK_ALL_CATEGORIES", "wxButton", "All"},
          {"BTN_UNCHECK_ALL_CATEGORIES", "wxButton", "None"}, {"BTN_IMPORT_PROP_SET", "wxButton", "Import..."},
          {"BTN_EXPORT_PROP_SET", "wxButton", "Export..."}, {"BTN_ATTR_SET_VIS", "wxButton", "Visibility..."},
          {"wxID_OK", "wxButton", "OK"}, {"wxID_CANCEL", "wxButton", "Cancel"}}},
    };
    return table;
}

// Parameters of the profile shape panels; each has a label, a symbol, a value field, a unit and a
// colour marker.
const char* const kProfileParameters[] = {
    "ASYM_ISHAPE_HEIGHT", "ASYM_ISHAPE_WIDTH", "ASYM_ISHAPE_FWIDTH", "ASYM_ISHAPE_WTHICK", "ASYM_ISHAPE_FTHICK",
    "ASYM_ISHAPE_TFTHICK", "ASYM_ISHAPE_FRADIUS", "ASYM_ISHAPE_TFRADIUS", "ASYM_ISHAPE_GRAV_CENTR_Y",
    "ISHAPE_HEIGHT", "ISHAPE_WIDTH", "ISHAPE_WTHICK", "ISHAPE_FTHICK", "ISHAPE_FRADIUS",
    "LSHAPE_HEIGHT", "LSHAPE_WIDTH", "LSHAPE_FTHICK", "LSHAPE_FRADIUS", "LSHAPE_ERADIUS", "LSHAPE_LSLOPE",
    "LSHAPE_GRAV_CENTR_X", "LSHAPE_GRAV_CENTR_Y",
    "USHAPE_HEIGHT", "USHAPE_WIDTH", "USHAPE_WTHICK", "USHAPE_FTHICK", "USHAPE_FRADIUS", "USHAPE_ERADIUS",
    "USHAPE_FSLOPE", "USHAPE_GRAV_CNTR_X",
    "CSHAPE_HEIGHT", "CSHAPE_GIRTH", "CSHAPE_WIDTH", "CSHAPE_WALL_THICK", "CSHAPE_IFRADIUS", "CSHAPE_GRAV_CNTR_X",
    "ZSHAPE_HEIGHT", "ZSHAPE_FWIDTH", "ZSHAPE_WTHICK", "ZSHAPE_FTHICK", "ZSHAPE_ERADIUS", "ZSHAPE_FRADIUS",
    "TSHAPE_HEIGHT", "TSHAPE_WIDTH", "TSHAPE_WTHICK", "TSHAPE_FTHICK", "TSHAPE_FRADIUS", "TSHAPE_FERADIUS",
    "TSHAPE_WERADIUS", "TSHAPE_WSLOPE", "TSHAPE_FSLOPE", "TSHAPE_GRAV_CNTR_Y",
    "FSHAPE_RAIL_HDEPTH3", "FSHAPE_RAIL_HDEPTH2", "FSHAPE_RAIL_BDEPTH1", "FSHAPE_RAIL_BDEPTH2",
    "FSHAPE_RAIL_HEIGHT", "FSHAPE_RAIL_HWIDTH", "FSHAPE_RAIL_WTHICK", "FSHAPE_RAIL_RADIUS",
    "FSHAPE_RAIL_GRAV_CNTR_Y",
    "ASHAPE_RAIL_HDEPTH3", "ASHAPE_RAIL_HDEPTH2", "ASHAPE_RAIL_BDEPTH1", "ASHAPE_RAIL_BDEPTH3",
    "ASHAPE_RAIL_BDEPTH2", "ASHAPE_RAIL_HEIGHT", "ASHAPE_RAIL_BWIDTH2", "ASHAPE_RAIL_HWIDTH",
    "ASHAPE_RAIL_BWIDTH4", "ASHAPE_RAIL_WTHICK", "ASHAPE_RAIL_RADIUS", "ASHAPE_RAIL_GRAV_CNTR_Y",
    "CIRCULAR_SHAPE_RADIUS", "CIRCULAR_H_SHAPE_RADIUS", "CIRCULAR_H_SHAPE_WTHICK",
    "ELLIPSE_SHAPE_SEMI_AX2", "ELLIPSE_SHAPE_SEMI_AX1", "RECT_SHAPE_Y_DIM", "RECT_SHAPE_X_DIM",
    "TRAPEZIUM_SHAPE_YDIM", "TRAPEZIUM_SHAPE_BOT_XDIM", "TRAPEZIUM_SHAPE_TOP_XDIM", "TRAPEZIUM_SHAPE_TOPX_OFFSET",
    "RECT_H_SHAPE_Y_DIM", "RECT_H_SHAPE_X_DIM", "RECT_H_SHAPE_WALL_THICK", "RECT_H_IFRADIUS", "RECT_H_OFRADIUS",
    "ROUND_RECT_SHAPE_Y_DIM", "ROUND_RECT_SHAPE_X_DIM", "ROUND_RECT_RADIUS",
};

// Context menus: resource name and item name with label.
const std::map<std::string, std::vector<std::pair<const char*, const char*>>>& menus()
{
    static const std::map<std::string, std::vector<std::pair<const char*, const char*>>> table = {
        {"MENU_BIM_MAT_PROJ", {{"TOOL_NEW_IN_PROJ", "New Material"}, {"TOOL_DUPLICATE", "Duplicate"},
                               {"TOOL_DEL", "Delete"}, {"TOOL_COPY_TO_LIBR", "Copy to Central Database"},
                               {"TOOL_MAKE_COMP", "Make Composition"}}},
        {"MENU_BIM_MAT_LIBR", {{"TOOL_NEW_IN_LIBR", "New Material"}, {"TOOL_DUPLICATE", "Duplicate"},
                               {"TOOL_DEL", "Delete"}, {"TOOL_COPY_TO_PROJ", "Copy to Project"},
                               {"TOOL_MAKE_COMP", "Make Composition"}}},
        {"MENU_BIM_CMP_PROJ", {{"TOOL_NEW_IN_PROJ", "New Composition"}, {"TOOL_DUPLICATE", "Duplicate"},
                               {"TOOL_DEL", "Delete"}, {"TOOL_COPY_TO_LIBR", "Copy to Central Database"}}},
        {"MENU_BIM_CMP_LIBR", {{"TOOL_NEW_IN_LIBR", "New Composition"}, {"TOOL_DUPLICATE", "Duplicate"},
                               {"TOOL_DEL", "Delete"}, {"TOOL_COPY_TO_PROJ", "Copy to Project"}}},
        {"MENU_BIM_RENDER_MAT", {{"TOOL_SMALL", "Small"}, {"TOOL_MEDIUM", "Medium"}, {"TOOL_LARGE", "Large"}}},
        {"MENU_BIM_PROFILE_LIBR", {{"TOOL_NEW_IN_LIBR", "New Profile"}}},
        {"MENU_BIM_PROFILE_PROJ", {{"TOOL_NEW_IN_PROJ", "New Profile"}}},
        {"MENU_NAMESPACE_OBJECT", {{"TOOL_NEW_PROPERTY_SET", "New Property Set"}}},
        {"MENU_PROPERTY_SET_OBJECT", {{"TOOL_NEW_PROPERTY_SET", "New Property Set"},
                                      {"TOOL_NEW_PROPERTY_DEFINITION", "New Property Definition"},
                                      {"TOOL_NEW_VALUE_DEFINITION", "New Value Definition"},
                                      {"TOOL_DELETE_PROPERTY_SET", "Delete Property Set"}}},
        {"MENU_PROPERTY_DEFINITION_GROUP", {{"TOOL_NEW_PROPERTY_SET", "New Property Set"},
                                            {"TOOL_NEW_PROPERTY_DEFINITION", "New Property Definition"},
                                            {"TOOL_DELETE_DEFINITION", "Remove All Property Definitions from Set"}}},
        {"MENU_VALUE_DEFINITION_GROUP", {{"TOOL_NEW_PROPERTY_SET", "New Property Set"},
                                         {"TOOL_NEW_VALUE_DEFINITION", "New Value Definition"},
                                         {"TOOL_DELETE_DEFINITION", "Remove All Value Definitions from Set"}}},
        {"MENU_PROPERTY_DEFINITION_OBJECT", {{"TOOL_NEW_PROPERTY_SET", "New Property Set"},
                                             {"TOOL_NEW_PROPERTY_DEFINITION", "New Property Definition"},
                                             {"TOOL_DELETE_DEFINITION", "Remove Property Definition from Set"}}},
        {"MENU_VALUE_DEFINITION_OBJECT", {{"TOOL_NEW_PROPERTY_SET", "New Property Set"},
                                          {"TOOL_NEW_VALUE_DEFINITION", "New Value Definition"},
                                          {"TOOL_DELETE_DEFINITION", "Remove Value Definition from Set"}}},
    };
    return table;
}

// The tool with this id on any toolbar of the dialog.
const wxToolBarToolBase* findTool(wxWindow* root, int id)
{
    for (wxWindow* child : root->GetChildren()) {
        if (auto* bar = wxDynamicCast(child, wxToolBar)) {
            if (const wxToolBarToolBase* tool = bar->FindById(id))
                return tool;
        }
        if (const wxToolBarToolBase* tool = findTool(child, id))
            return tool;
    }
    return nullptr;
}

std::set<wxString> memoryFiles()
{
    std::set<wxString> names;
    wxFileSystem fs;
    for (wxString f = fs.FindFirst(wxString(vl_res::kMemoryPrefix) + "*", wxFILE); !f.empty(); f = fs.FindNext())
        names.insert(f);
    return names;
}

}  // namespace

TEST_F(Resources, RegistrationEmbedsLayoutsPicturesAndTheToolbarCopies)
{
    EXPECT_TRUE(s_registrationMessages.empty()) << joined(s_registrationMessages);

    std::set<wxString> expected;
    std::size_t count = 0;
    const char* const* files = vl_res::layouts(&count);
    ASSERT_EQ(count, 10u);
    for (std::size_t i = 0; i < count; ++i)
        expected.insert(vl_res::layoutPath(files[i]));
    const vl_res::Picture* pictures = vl_res::pictures(&count);
    // 29 of the module, and the 16 pictures of the profile shapes.
    ASSERT_EQ(count, 45u);
    for (std::size_t i = 0; i < count; ++i)
        expected.insert(vl_res::picturePath(pictures[i].name));
    for (const char* name : {"toolicons_16_light_new", "toolicons_16_light_copyclip", "toolicons_16_light_erase",
                             "toolicons_16_light_filter"})
        expected.insert(wxString(vl_res::kMemoryPrefix) + ".._bitmaps_toolbar_" + name + ".png");

    const std::set<wxString> registered = memoryFiles();
    EXPECT_EQ(registered.size(), 59u);
    EXPECT_EQ(registered, expected);
    EXPECT_EQ(vl_res::picturePath("vl_lock"), "memory:XRC_resource/vl_xrc.inl$.._bitmaps_vl_lock.png");
}

TEST_F(Resources, EveryLayoutIsLoadedAndParses)
{
    std::size_t count = 0;
    const char* const* files = vl_res::layouts(&count);
    for (std::size_t i = 0; i < count; ++i) {
        wxXmlResource res(wxXRC_NO_SUBCLASSING);
        EXPECT_TRUE(res.Load(vl_res::layoutPath(files[i]))) << files[i];
    }
    EXPECT_TRUE(s_log->messages.empty()) << joined(s_log->messages);
}

TEST_F(Resources, EveryDialogLoadsWithItsControls)
{
    for (const Layout& layout : layouts()) {
        SCOPED_TRACE(layout.dialog);
        wxDialog dlg;
        ASSERT_TRUE(wxXmlResource::Get()->LoadDialog(&dlg, nullptr, layout.dialog));
        EXPECT_TRUE(s_log->messages.empty()) << joined(s_log->messages);
        s_log->messages.clear();

        for (const Control& c : layout.controls) {
            SCOPED_TRACE(c.name);
            const int id = wxXmlResource::GetXRCID(c.name);
            if (std::string(c.cls) == "tool") {
                const wxToolBarToolBase* tool = findTool(&dlg, id);
                ASSERT_NE(tool, nullptr);
                EXPECT_TRUE(tool->GetNormalBitmap().IsOk());
                EXPECT_EQ(tool->GetShortHelp(), c.text);
                continue;
            }
            if (std::string(c.cls) == "unknown") {
                // A placeholder that code fills with AttachUnknownControl.
                EXPECT_NE(dlg.FindWindow(wxString(c.name) + "_container"), nullptr);
                continue;
            }
            wxWindow* w = dlg.FindWindow(id);
            ASSERT_NE(w, nullptr);
            const wxClassInfo* cls = wxClassInfo::FindClass(c.cls);
            ASSERT_NE(cls, nullptr);
            EXPECT_TRUE(w->IsKindOf(cls)) << w->GetClassInfo()->GetClassName();
            if (c.text) {
                EXPECT_EQ(wxControl::RemoveMnemonics(w->GetLabel()), c.text);
            }
        }

    }
}

TEST_F(Resources, ProfileParameterRowsHaveLabelSymbolValueUnitAndMarker)
{
    wxDialog dlg;
    ASSERT_TRUE(wxXmlResource::Get()->LoadDialog(&dlg, nullptr, "DlgProfiles"));
    EXPECT_EQ(std::size(kProfileParameters), 92u);
    for (const char* p : kProfileParameters) {
        SCOPED_TRACE(p);
        const wxString name(p);
        wxWindow* value = dlg.FindWindow(wxXmlResource::GetXRCID(p));
        ASSERT_NE(value, nullptr);
        EXPECT_TRUE(value->IsKindOf(wxCLASSINFO(wxTextCtrl)));
        for (const char* suffix : {"_LABEL", "_ABBR", "_UNIT"}) {
            wxWindow* text = dlg.FindWindow(wxXmlResource::GetXRCID(name + suffix));
            ASSERT_NE(text, nullptr) << suffix;
            EXPECT_TRUE(text->IsKindOf(wxCLASSINFO(wxStaticText))) << suffix;
            // Every row sits in the panel of its shape inside the parameter area.
            EXPECT_EQ(text->GetParent(), value->GetParent()) << suffix;
        }
        EXPECT_EQ(value->GetParent()->GetParent(), dlg.FindWindow(wxXmlResource::GetXRCID("PANEL_PROPS")));
        EXPECT_NE(dlg.FindWindow(wxXmlResource::GetXRCID(name + "_COL")), nullptr);
        const wxString unit = dlg.FindWindow(wxXmlResource::GetXRCID(name + "_UNIT"))->GetLabel();
        EXPECT_EQ(unit, name.Contains("SLOPE") ? "rad" : "mm");
    }
    // Symbols and labels the shape pictures refer to, including their odd pairings.
    EXPECT_EQ(dlg.FindWindow(wxXmlResource::GetXRCID("ISHAPE_FTHICK_ABBR"))->GetLabel(), "r");
    EXPECT_EQ(dlg.FindWindow(wxXmlResource::GetXRCID("TRAPEZIUM_SHAPE_BOT_XDIM_ABBR"))->GetLabel(), "o");
    EXPECT_EQ(dlg.FindWindow(wxXmlResource::GetXRCID("ASHAPE_RAIL_BDEPTH2_ABBR"))->GetLabel(), "d5");
    EXPECT_EQ(dlg.FindWindow(wxXmlResource::GetXRCID("ELLIPSE_SHAPE_SEMI_AX2_LABEL"))->GetLabel(), "b");

}

TEST_F(Resources, GridPlaceholdersTakeTheirControls)
{
    wxDialog cmp;
    ASSERT_TRUE(wxXmlResource::Get()->LoadDialog(&cmp, nullptr, "DlgCompositions"));
    auto* plies = new wxGrid(&cmp, wxID_ANY);
    EXPECT_TRUE(wxXmlResource::Get()->AttachUnknownControl("GRID_PLIES", plies, &cmp));
    // The attached control takes the placeholder's name and id, so code finds it like any other.
    EXPECT_EQ(cmp.FindWindow(wxXmlResource::GetXRCID("GRID_PLIES")), plies);
    EXPECT_EQ(plies->GetName(), "GRID_PLIES");


    wxDialog render;
    ASSERT_TRUE(wxXmlResource::Get()->LoadDialog(&render, nullptr, "DlgRenderMaterial"));
    EXPECT_TRUE(wxXmlResource::Get()->AttachUnknownControl("GRID_MATS", new wxGrid(&render, wxID_ANY), &render));

}

TEST_F(Resources, ContextMenusHaveTheirItems)
{
    for (const auto& [name, items] : menus()) {
        SCOPED_TRACE(name);
        std::unique_ptr<wxMenu> menu(wxXmlResource::Get()->LoadMenu(name));
        ASSERT_NE(menu, nullptr);
        EXPECT_EQ(menu->GetMenuItemCount() - [&] {
            size_t separators = 0;
            for (const wxMenuItem* item : menu->GetMenuItems())
                separators += item->IsSeparator();
            return separators;
        }(), items.size());
        for (const auto& [item, label] : items) {
            const wxMenuItem* entry = menu->FindItem(wxXmlResource::GetXRCID(item));
            ASSERT_NE(entry, nullptr) << item;
            EXPECT_EQ(entry->GetItemLabelText(), label);
        }
    }
}

TEST_F(Resources, EveryPictureLoadsAtItsSize)
{
    std::size_t count = 0;
    const vl_res::Picture* pictures = vl_res::pictures(&count);
    for (std::size_t i = 0; i < count; ++i) {
        SCOPED_TRACE(pictures[i].name);
        const wxBitmap bmp = vl_res::picture(pictures[i].name);
        ASSERT_TRUE(bmp.IsOk());
        EXPECT_EQ(bmp.GetSize(), wxSize(pictures[i].edge, pictures[i].edge));
        // The picture is drawn, not blank: some pixel is opaque.
        const wxImage img = bmp.ConvertToImage();
        bool opaque = false;
        for (int y = 0; y < img.GetHeight() && !opaque; ++y)
            for (int x = 0; x < img.GetWidth() && !opaque; ++x)
                opaque = !img.HasAlpha() || img.GetAlpha(x, y) > 200;
        EXPECT_TRUE(opaque);
    }
    EXPECT_FALSE(vl_res::picture("no_such_picture").IsOk());
    EXPECT_TRUE(vl_res::picturePath("no_such_picture").empty());
}

TEST_F(Resources, NamedBitmapsResolveToTheirPictures)
{
    const std::map<std::string, int> named = {
        {"BmpEmptyMat", 16},  {"BmpEmptyMat_32", 32}, {"BmpEmptyCmp", 16}, {"BmpEmptyCmp_32", 32},
        {"BmpEmptyCmp_64", 64}, {"BmpLock", 16},      {"BmpLock_x2", 32},  {"BmpUnlock", 16},
        {"BmpUnlock_x2", 32}, {"Bmp16Any", 16},       {"Bmp16Mat", 16},    {"Bmp16Cmp", 16},
        {"Bmp32Any", 32},     {"Bmp32Mat", 32},       {"Bmp32Cmp", 32},    {"BmpNew", 16},
        {"BmpErase", 16},     {"BmpFilter", 16},      {"BmpCopyClip", 16}, {"BmpCmpWall", 16},
        {"BmpCmpSlab", 16},   {"BmpCmpRoof", 16},     {"BmpCmpGeneric", 16},
    };
    for (const auto& [name, edge] : named) {
        SCOPED_TRACE(name);
        const wxBitmap bmp = wxXmlResource::Get()->LoadBitmap(name);
        ASSERT_TRUE(bmp.IsOk());
        EXPECT_EQ(bmp.GetSize(), wxSize(edge, edge));
    }
    EXPECT_TRUE(s_log->messages.empty()) << joined(s_log->messages);
}

TEST_F(Resources, DialogsFitOnASmallScreen)
{
    for (const Layout& layout : layouts()) {
        SCOPED_TRACE(layout.dialog);
        wxDialog dlg;
        ASSERT_TRUE(wxXmlResource::Get()->LoadDialog(&dlg, nullptr, layout.dialog));
        const wxSize min = dlg.GetBestSize();
        EXPECT_LE(min.x, 1100);
        EXPECT_LE(min.y, 720);
        EXPECT_GE(min.x, 200);
        EXPECT_GE(min.y, 100);

    }
}
