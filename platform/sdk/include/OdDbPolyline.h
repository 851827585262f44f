#pragma once
// Planar outlines of a drawing: a polyline of straight and arc segments, open or closed.
#include <vector>

#include "OdDbEntity.h"
#include "OdGePoint2d.h"

class OdDbPolyline : public OdDbEntity {
    ODRX_DECLARE_MEMBERS(OdDbPolyline);

    unsigned numVerts() const { return static_cast<unsigned>(m_vertices.size()); }
    // Inserts a vertex before `index` (numVerts() appends). The bulge belongs to the segment
    // that starts at the vertex. Throws OdError(eInvalidIndex) past the end and
    // OdError(eInvalidInput) for a coordinate or bulge that is not a finite number.
    void addVertexAt(unsigned index, const OdGePoint2d& point, double bulge = 0.0);
    void removeVertexAt(unsigned index);
    OdGePoint2d getPointAt(unsigned index) const;
    double getBulgeAt(unsigned index) const;
    void setPointAt(unsigned index, const OdGePoint2d& point);
    void setBulgeAt(unsigned index, double bulge);

    // A closed polyline has a segment from its last vertex back to the first.
    bool isClosed() const { return m_closed; }
    void setClosed(bool closed);

    // The outline as straight pieces: every vertex and points along the arcs no more than
    // `maxStep` radians apart. A closed polyline does not repeat its first point at the end.
    std::vector<OdGePoint2d> samplePoints(double maxStep = kOdGeArcStep) const;

    void dwgInFields(OdDbDwgFiler& filer) override;
    void dwgOutFields(OdDbDwgFiler& filer) const override;

protected:
    OdDbPolyline() = default;

private:
    struct Vertex {
        OdGePoint2d point;
        double bulge = 0.0;
    };
    const Vertex& vertex(unsigned index) const;

    std::vector<Vertex> m_vertices;
    bool m_closed = false;
};
using OdDbPolylinePtr = OdSmartPtr<OdDbPolyline>;
