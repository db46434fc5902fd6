// Lines and polygons cut at a rectangle, and rounded to units.
#pragma once
#include <QPolygonF>
#include <QRectF>
#include <vector>

#include "ui/charts/vector_sink.h"

namespace quom {

// The parts of the line inside the box, borders included. The line is broken at points that are not finite.
std::vector<QPolygonF> line_inside(const QPolygonF& line, const QRectF& box);

// The polygon cut at the box; points that are not finite are left out. Empty when nothing is left.
QPolygonF polygon_inside(const QPolygonF& polygon, const QRectF& box);

// The parts of a line, and the parts of areas, inside outlines.
std::vector<QPolygonF> line_inside(const QPolygonF& line, const UnitPolygons& outlines, Qt::FillRule rule);
UnitPolygons polygons_inside(const UnitPolygons& polygons, Qt::FillRule rule, const UnitPolygons& outlines,
                             Qt::FillRule outline_rule);

// Rounded, equal neighbours once. A line shorter than a unit keeps two equal points.
UnitPoints rounded_line(const QPolygonF& line);
// ... without a repeated first point at the end; empty with fewer than three points.
UnitPoints rounded_polygon(const QPolygonF& polygon);

}  // namespace quom
