// The drawing's planar outlines: polylines with arc segments and circles.
#include <algorithm>
#include <cmath>

#include "OdDbCircle.h"
#include "OdDbPolyline.h"
#include "OdError.h"

ODRX_DEFINE_MEMBERS(OdDbPolyline, OdDbEntity, L"OdDbPolyline")
ODRX_DEFINE_MEMBERS(OdDbCircle, OdDbEntity, L"OdDbCircle")

namespace {

bool isFinite(const OdGePoint2d& point) { return std::isfinite(point.x) && std::isfinite(point.y); }

void requireFinite(const OdGePoint2d& point) {
    if (!isFinite(point))
        throw OdError(eInvalidInput, L"A point of the drawing must have finite coordinates.");
}

// Values read back from a file are checked as strictly as values set by code: a damaged record
// is reported as such instead of turning into an outline nobody can draw.
double readFinite(OdDbDwgFiler& filer) {
    const double value = filer.rdDouble();
    if (!std::isfinite(value))
        throw OdError(eMalformedRecord, L"A coordinate of an outline is not a finite number.");
    return value;
}

}  // namespace

const OdDbPolyline::Vertex& OdDbPolyline::vertex(unsigned index) const {
    if (index >= m_vertices.size())
        throw OdError(eInvalidIndex, OdString::formatted(L"The polyline has no vertex %u.", index));
    return m_vertices[index];
}

void OdDbPolyline::addVertexAt(unsigned index, const OdGePoint2d& point, double bulge) {
    if (index > m_vertices.size())
        throw OdError(eInvalidIndex, OdString::formatted(L"A vertex cannot be inserted at %u.", index));
    requireFinite(point);
    if (!std::isfinite(bulge))
        throw OdError(eInvalidInput, L"The bulge of a segment must be a finite number.");
    assertWriteEnabled();
    m_vertices.insert(m_vertices.begin() + index, Vertex{point, bulge});
}

void OdDbPolyline::removeVertexAt(unsigned index) {
    vertex(index);
    assertWriteEnabled();
    m_vertices.erase(m_vertices.begin() + index);
}

OdGePoint2d OdDbPolyline::getPointAt(unsigned index) const { return vertex(index).point; }
double OdDbPolyline::getBulgeAt(unsigned index) const { return vertex(index).bulge; }

void OdDbPolyline::setPointAt(unsigned index, const OdGePoint2d& point) {
    vertex(index);
    requireFinite(point);
    assertWriteEnabled();
    m_vertices[index].point = point;
}

void OdDbPolyline::setBulgeAt(unsigned index, double bulge) {
    vertex(index);
    if (!std::isfinite(bulge))
        throw OdError(eInvalidInput, L"The bulge of a segment must be a finite number.");
    assertWriteEnabled();
    m_vertices[index].bulge = bulge;
}

void OdDbPolyline::setClosed(bool closed) {
    assertWriteEnabled();
    m_closed = closed;
}

std::vector<OdGePoint2d> OdDbPolyline::samplePoints(double maxStep) const {
    std::vector<OdGePoint2d> points;
    if (m_vertices.empty())
        return points;
    points.push_back(m_vertices.front().point);
    const size_t segments = m_closed ? m_vertices.size() : m_vertices.size() - 1;
    for (size_t i = 0; i < segments; ++i)
        odgeAppendSegmentPoints(points, m_vertices[i].point, m_vertices[(i + 1) % m_vertices.size()].point,
                                m_vertices[i].bulge, maxStep);
    if (m_closed)
        points.pop_back();
    return points;
}

void OdDbPolyline::dwgInFields(OdDbDwgFiler& filer) {
    OdDbEntity::dwgInFields(filer);
    m_closed = filer.rdBool();
    const int32_t count = filer.rdInt32();
    if (count < 0)
        throw OdError(eMalformedRecord, L"Negative vertex count in a polyline");
    std::vector<Vertex> vertices;
    for (int32_t i = 0; i < count; ++i) {
        Vertex v;
        v.point.x = readFinite(filer);
        v.point.y = readFinite(filer);
        v.bulge = readFinite(filer);
        vertices.push_back(v);
    }
    m_vertices = std::move(vertices);
}

void OdDbPolyline::dwgOutFields(OdDbDwgFiler& filer) const {
    OdDbEntity::dwgOutFields(filer);
    filer.wrBool(m_closed);
    filer.wrInt32(static_cast<int32_t>(m_vertices.size()));
    for (const Vertex& v : m_vertices) {
        filer.wrDouble(v.point.x);
        filer.wrDouble(v.point.y);
        filer.wrDouble(v.bulge);
    }
}

void OdDbCircle::setCenter(const OdGePoint2d& center) {
    requireFinite(center);
    assertWriteEnabled();
    m_center = center;
}

void OdDbCircle::setRadius(double radius) {
    if (!std::isfinite(radius) || radius <= 0.0)
        throw OdError(eInvalidInput, L"The radius of a circle must be a finite number above 0.");
    assertWriteEnabled();
    m_radius = radius;
}

std::vector<OdGePoint2d> OdDbCircle::samplePoints(double maxStep) const {
    const double pi = std::acos(-1.0);
    const int steps = std::max(8, static_cast<int>(std::ceil(2.0 * pi / std::max(maxStep, 1e-3))));
    std::vector<OdGePoint2d> points;
    for (int i = 0; i < steps; ++i) {
        const double angle = 2.0 * pi * i / steps;
        points.emplace_back(m_center.x + m_radius * std::cos(angle), m_center.y + m_radius * std::sin(angle));
    }
    return points;
}

void OdDbCircle::dwgInFields(OdDbDwgFiler& filer) {
    OdDbEntity::dwgInFields(filer);
    OdGePoint2d center;
    center.x = readFinite(filer);
    center.y = readFinite(filer);
    const double radius = readFinite(filer);
    if (radius <= 0.0)
        throw OdError(eMalformedRecord, L"A circle of the drawing has no positive radius.");
    m_center = center;
    m_radius = radius;
}

void OdDbCircle::dwgOutFields(OdDbDwgFiler& filer) const {
    OdDbEntity::dwgOutFields(filer);
    filer.wrDouble(m_center.x);
    filer.wrDouble(m_center.y);
    filer.wrDouble(m_radius);
}
