#pragma once
// A full circle of the drawing plane.
#include <vector>

#include "OdDbEntity.h"
#include "OdGePoint2d.h"

class OdDbCircle : public OdDbEntity {
    ODRX_DECLARE_MEMBERS(OdDbCircle);

    const OdGePoint2d& center() const { return m_center; }
    // Throws OdError(eInvalidInput) for a coordinate that is not a finite number.
    void setCenter(const OdGePoint2d& center);
    double radius() const { return m_radius; }
    // Throws OdError(eInvalidInput) unless the radius is a finite number above 0.
    void setRadius(double radius);

    // Points round the circle, counter-clockwise from its rightmost point, no more than
    // `maxStep` radians apart; the first point is not repeated at the end.
    std::vector<OdGePoint2d> samplePoints(double maxStep = kOdGeArcStep) const;

    void dwgInFields(OdDbDwgFiler& filer) override;
    void dwgOutFields(OdDbDwgFiler& filer) const override;

protected:
    OdDbCircle() = default;

private:
    OdGePoint2d m_center;
    double m_radius = 1.0;
};
using OdDbCirclePtr = OdSmartPtr<OdDbCircle>;
