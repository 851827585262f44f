#pragma once
// What the profiles dialog knows of each shape class without widgets: the parameter panel of
// the layout that shows it and which control of that panel holds which dimension;
// the type labels the filters show and parse.
#include <vector>

#include <wx/string.h>

#include <vantlib/Profile.h>

namespace vl_app {

struct ShapeRow {
    const char* control;  // the value field; its label, symbol, unit and colour marker share the name
    vantlib::ShapeParameter parameter;
    bool length;  // false for slopes, which stay in radians
};

struct ShapePanel {
    vantlib::ObjectType type;
    const char* shortName;  // the class short name of queries ("IShape")
    const char* panel;      // the panel inside PANEL_PROPS
    const char* picture;    // the layout's picture of the shape with its symbols; null for the
                            // custom shape, whose outline is drawn from its geometry
    std::vector<ShapeRow> rows;
};

// Every parametric shape and the custom shape, in the order of the shape choices.
const std::vector<ShapePanel>& shapePanels();
// The panel of a class; null for a type that is no shape the dialog knows.
const ShapePanel* shapePanel(vantlib::ObjectType type);

// The translated shape label of an object type (short form for filters).
wxString shapeLabel(vantlib::ObjectType type, bool shortForm);
// The class short name whose translated short label is `label`; empty when none matches.
wxString shapeShortName(const wxString& label);

// The translated label of a profile type, and back: a label that matches no type is Generic.
wxString profileTypeLabel(vantlib::ProfileType type);
vantlib::ProfileType profileTypeFromLabel(const wxString& label);

}  // namespace vl_app
