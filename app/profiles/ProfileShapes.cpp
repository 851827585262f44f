#include "app/profiles/ProfileShapes.h"

#include <wx/intl.h>

#include <OdStringWx.h>

#include <vl_db/Profiles.h>

namespace vl_app {

namespace {
using P = vantlib::ShapeParameter;
constexpr bool kLength = true;
constexpr bool kSlope = false;
}  // namespace

const std::vector<ShapePanel>& shapePanels() {
    static const std::vector<ShapePanel> panels = {
        {vantlib::kAsymmetricIShapeProfile, "AsymmetricIShape", "PANEL_ASYM_ISHAPE_GRID", "BMP_ASYM_I_SHAPE_PROFILE",
         {{"ASYM_ISHAPE_HEIGHT", P::kOverallDepth, kLength},
          {"ASYM_ISHAPE_WIDTH", P::kOverallWidth, kLength},
          {"ASYM_ISHAPE_FWIDTH", P::kTopFlangeWidth, kLength},
          {"ASYM_ISHAPE_WTHICK", P::kWebThickness, kLength},
          {"ASYM_ISHAPE_FTHICK", P::kFlangeThickness, kLength},
          {"ASYM_ISHAPE_TFTHICK", P::kTopFlangeThickness, kLength},
          {"ASYM_ISHAPE_FRADIUS", P::kFilletRadius, kLength},
          {"ASYM_ISHAPE_TFRADIUS", P::kTopFlangeFilletRadius, kLength},
          {"ASYM_ISHAPE_GRAV_CENTR_Y", P::kCentreOfGravityInY, kLength}}},
        {vantlib::kIShapeProfile, "IShape", "PANEL_ISHAPE_GRID", "BMP_I_SHAPE_PROFILE",
         {{"ISHAPE_HEIGHT", P::kOverallDepth, kLength},
          {"ISHAPE_WIDTH", P::kOverallWidth, kLength},
          {"ISHAPE_WTHICK", P::kWebThickness, kLength},
          {"ISHAPE_FTHICK", P::kFlangeThickness, kLength},
          {"ISHAPE_FRADIUS", P::kFilletRadius, kLength}}},
        {vantlib::kLShapeProfile, "LShape", "PANEL_LSHAPE_GRID", "BMP_L_SHAPE_PROFILE",
         {{"LSHAPE_HEIGHT", P::kDepth, kLength},
          {"LSHAPE_WIDTH", P::kWidth, kLength},
          {"LSHAPE_FTHICK", P::kThickness, kLength},
          {"LSHAPE_FRADIUS", P::kFilletRadius, kLength},
          {"LSHAPE_ERADIUS", P::kEdgeRadius, kLength},
          {"LSHAPE_LSLOPE", P::kLegSlope, kSlope},
          {"LSHAPE_GRAV_CENTR_X", P::kCentreOfGravityInX, kLength},
          {"LSHAPE_GRAV_CENTR_Y", P::kCentreOfGravityInY, kLength}}},
        {vantlib::kUShapeProfile, "UShape", "PANEL_USHAPE_GRID", "BMP_U_SHAPE_PROFILE",
         {{"USHAPE_HEIGHT", P::kDepth, kLength},
          {"USHAPE_WIDTH", P::kFlangeWidth, kLength},
          {"USHAPE_WTHICK", P::kWebThickness, kLength},
          {"USHAPE_FTHICK", P::kFlangeThickness, kLength},
          {"USHAPE_FRADIUS", P::kFilletRadius, kLength},
          {"USHAPE_ERADIUS", P::kEdgeRadius, kLength},
          {"USHAPE_FSLOPE", P::kFlangeSlope, kSlope},
          {"USHAPE_GRAV_CNTR_X", P::kCentreOfGravityInX, kLength}}},
        {vantlib::kCShapeProfile, "CShape", "PANEL_CSHAPE_GRID", "BMP_C_SHAPE_PROFILE",
         {{"CSHAPE_HEIGHT", P::kDepth, kLength},
          {"CSHAPE_GIRTH", P::kGirth, kLength},
          {"CSHAPE_WIDTH", P::kWidth, kLength},
          {"CSHAPE_WALL_THICK", P::kWallThickness, kLength},
          {"CSHAPE_IFRADIUS", P::kInternalFilletRadius, kLength},
          {"CSHAPE_GRAV_CNTR_X", P::kCentreOfGravityInX, kLength}}},
        {vantlib::kZShapeProfile, "ZShape", "PANEL_ZSHAPE_GRID", "BMP_Z_SHAPE_PROFILE",
         {{"ZSHAPE_HEIGHT", P::kDepth, kLength},
          {"ZSHAPE_FWIDTH", P::kFlangeWidth, kLength},
          {"ZSHAPE_WTHICK", P::kWebThickness, kLength},
          {"ZSHAPE_FTHICK", P::kFlangeThickness, kLength},
          {"ZSHAPE_ERADIUS", P::kEdgeRadius, kLength},
          {"ZSHAPE_FRADIUS", P::kFilletRadius, kLength}}},
        {vantlib::kTShapeProfile, "TShape", "PANEL_TSHAPE_GRID", "BMP_T_SHAPE_PROFILE",
         {{"TSHAPE_HEIGHT", P::kDepth, kLength},
          {"TSHAPE_WIDTH", P::kFlangeWidth, kLength},
          {"TSHAPE_WTHICK", P::kWebThickness, kLength},
          {"TSHAPE_FTHICK", P::kFlangeThickness, kLength},
          {"TSHAPE_FRADIUS", P::kFilletRadius, kLength},
          {"TSHAPE_FERADIUS", P::kFlangeEdgeRadius, kLength},
          {"TSHAPE_WERADIUS", P::kWebEdgeRadius, kLength},
          {"TSHAPE_WSLOPE", P::kWebSlope, kSlope},
          {"TSHAPE_FSLOPE", P::kFlangeSlope, kSlope},
          {"TSHAPE_GRAV_CNTR_Y", P::kCentreOfGravityInY, kLength}}},
        {vantlib::kCraneRailAShapeProfile, "CraneRailAShape", "PANEL_RAIL_A_SHAPE_GRID", "BMP_RAIL_A_SHAPE_PROFILE",
         {{"ASHAPE_RAIL_HDEPTH3", P::kHeadDepth3, kLength},
          {"ASHAPE_RAIL_HDEPTH2", P::kHeadDepth2, kLength},
          {"ASHAPE_RAIL_BDEPTH1", P::kBaseDepth1, kLength},
          {"ASHAPE_RAIL_BDEPTH3", P::kBaseDepth3, kLength},
          {"ASHAPE_RAIL_BDEPTH2", P::kBaseDepth2, kLength},
          {"ASHAPE_RAIL_HEIGHT", P::kOverallHeight, kLength},
          {"ASHAPE_RAIL_BWIDTH2", P::kBaseWidth2, kLength},
          {"ASHAPE_RAIL_HWIDTH", P::kHeadWidth, kLength},
          {"ASHAPE_RAIL_BWIDTH4", P::kBaseWidth4, kLength},
          {"ASHAPE_RAIL_WTHICK", P::kWebThickness, kLength},
          {"ASHAPE_RAIL_RADIUS", P::kRadius, kLength},
          {"ASHAPE_RAIL_GRAV_CNTR_Y", P::kCentreOfGravityInY, kLength}}},
        {vantlib::kCraneRailFShapeProfile, "CraneRailFShape", "PANEL_RAIL_F_SHAPE_GRID", "BMP_RAIL_F_SHAPE_PROFILE",
         {{"FSHAPE_RAIL_HDEPTH3", P::kHeadDepth3, kLength},
          {"FSHAPE_RAIL_HDEPTH2", P::kHeadDepth2, kLength},
          {"FSHAPE_RAIL_BDEPTH1", P::kBaseDepth1, kLength},
          {"FSHAPE_RAIL_BDEPTH2", P::kBaseDepth2, kLength},
          {"FSHAPE_RAIL_HEIGHT", P::kOverallHeight, kLength},
          {"FSHAPE_RAIL_HWIDTH", P::kHeadWidth, kLength},
          {"FSHAPE_RAIL_WTHICK", P::kWebThickness, kLength},
          {"FSHAPE_RAIL_RADIUS", P::kRadius, kLength},
          {"FSHAPE_RAIL_GRAV_CNTR_Y", P::kCentreOfGravityInY, kLength}}},
        {vantlib::kCircleProfile, "Circle", "PANEL_CIRCULAR_SHAPE_GRID", "BMP_CIRCULAR_SHAPE_PROFILE",
         {{"CIRCULAR_SHAPE_RADIUS", P::kRadius, kLength}}},
        {vantlib::kCircleHollowProfile, "CircleHollow", "PANEL_CIRCULAR_H_SHAPE_GRID", "BMP_CIRCULAR_H_SHAPE_PROFILE",
         {{"CIRCULAR_H_SHAPE_RADIUS", P::kRadius, kLength},
          {"CIRCULAR_H_SHAPE_WTHICK", P::kWallThickness, kLength}}},
        {vantlib::kEllipseProfile, "Ellipse", "PANEL_ELLIPSE_SHAPE_GRID", "BMP_ELLIPSE_SHAPE_PROFILE",
         {{"ELLIPSE_SHAPE_SEMI_AX2", P::kSemiAxis2, kLength},
          {"ELLIPSE_SHAPE_SEMI_AX1", P::kSemiAxis1, kLength}}},
        {vantlib::kRectangleProfile, "Rectangle", "PANEL_RECTANGLE_SHAPE_GRID", "BMP_RECT_SHAPE_PROFILE",
         {{"RECT_SHAPE_Y_DIM", P::kYDim, kLength}, {"RECT_SHAPE_X_DIM", P::kXDim, kLength}}},
        {vantlib::kRectangleHollowProfile, "RectangleHollow", "PANEL_RECT_HOLLOW_SHAPE_GRID", "BMP_RECT_H_SHAPE_PROFILE",
         {{"RECT_H_SHAPE_Y_DIM", P::kYDim, kLength},
          {"RECT_H_SHAPE_X_DIM", P::kXDim, kLength},
          {"RECT_H_SHAPE_WALL_THICK", P::kWallThickness, kLength},
          {"RECT_H_IFRADIUS", P::kInnerFilletRadius, kLength},
          {"RECT_H_OFRADIUS", P::kOuterFilletRadius, kLength}}},
        {vantlib::kRoundedRectangleProfile, "RoundedRectangle", "PANEL_RECT_ROUND_SHAPE_GRID", "BMP_ROUND_RECT_SHAPE_PROFILE",
         {{"ROUND_RECT_SHAPE_Y_DIM", P::kYDim, kLength},
          {"ROUND_RECT_SHAPE_X_DIM", P::kXDim, kLength},
          {"ROUND_RECT_RADIUS", P::kRoundingRadius, kLength}}},
        {vantlib::kTrapeziumProfile, "Trapezium", "PANEL_TRAPEZIUM_SHAPE_GRID", "BMP_TRAPEZIUM_SHAPE_PROFILE",
         {{"TRAPEZIUM_SHAPE_YDIM", P::kYDim, kLength},
          {"TRAPEZIUM_SHAPE_BOT_XDIM", P::kBottomXDim, kLength},
          {"TRAPEZIUM_SHAPE_TOP_XDIM", P::kTopXDim, kLength},
          {"TRAPEZIUM_SHAPE_TOPX_OFFSET", P::kTopXOffset, kLength}}},
        {vantlib::kCustomProfile, "CustomShape", "PANEL_CUSTOM_SHAPE", nullptr, {}},
    };
    return panels;
}

const ShapePanel* shapePanel(vantlib::ObjectType type) {
    for (const ShapePanel& panel : shapePanels())
        if (panel.type == type)
            return &panel;
    return nullptr;
}

wxString shapeLabel(vantlib::ObjectType type, bool shortForm) {
    const OdString label = vl_db::getProfileShapeLabel(type, shortForm);
    return label.isEmpty() ? wxString() : wxGetTranslation(toWx(label));
}

wxString shapeShortName(const wxString& label) {
    if (label.empty())
        return wxString();
    for (const ShapePanel& panel : shapePanels())
        if (shapeLabel(panel.type, true) == label)
            return panel.shortName;
    return wxString();
}

wxString profileTypeLabel(vantlib::ProfileType type) {
    return wxGetTranslation(toWx(vl_db::getProfileTypeLabel(type)));
}

vantlib::ProfileType profileTypeFromLabel(const wxString& label) {
    for (const vantlib::ProfileType type :
         {vantlib::kProfileGeneric, vantlib::kProfileStructuralConcrete, vantlib::kProfileStructuralSteel,
          vantlib::kProfileHvac, vantlib::kProfilePiping, vantlib::kProfileElectrical})
        if (profileTypeLabel(type) == label)
            return type;
    return vantlib::kProfileGeneric;
}

}  // namespace vl_app
