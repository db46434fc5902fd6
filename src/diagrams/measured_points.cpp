#include "diagrams/measured_points.h"

#include <cmath>
#include <string>

#include "base/number_text.h"
#include "engine/unit_factors.h"

namespace quom {
namespace {

using Q = AxisQuantity;

// The value of a quantity in displayed units; 0 where the point has none. rho: that of the phase.
double displayed(const MeasuredPoint& point, double rho, Q quantity, const Fluid& fluid, const Units& units) {
    const UnitFactors f = unit_factors(fluid, units, point.T);
    const double v = rho > 0.0 ? fluid.M / rho * f.vFactor : 0.0;
    switch (quantity) {
        case Q::T:
            return point.T * f.TFactor;
        case Q::inverse_T:
            return point.T > 0.0 ? 1.0 / (point.T * f.TFactor) : 0.0;
        case Q::p:
            return point.p * f.pFactor;
        case Q::ln_p:
            return point.p > 0.0 ? std::log(point.p * f.pFactor) : 0.0;
        case Q::rho:
            return rho;
        case Q::v:
            return v;
        case Q::pv:
            return point.p * f.pFactor * v;
        case Q::hLV:
            return point.hLV * f.uFactor;
        case Q::cp:
            return point.cp * f.uFactor;
        default:
            return 0.0;
    }
}

bool same(double a, double b) { return std::abs(a - b) <= 1e-6 * std::abs(b); }

// Whether the point belongs to the section of the diagram.
bool in_section(const MeasuredPoint& point, double rho, Section section, const LastParameter& parameter,
                double M) {
    switch (section) {
        case Section::isothermal:
            return same(point.T, parameter.T);
        case Section::isobaric:
            return same(point.p, parameter.p);
        case Section::isochoric:
            return rho > 0.0 && same(M / rho, parameter.v);
        default:
            return true;
    }
}

bool uses_density(const KindInfo& kind) {
    for (const Q quantity : {kind.x, kind.y})
        if (quantity == Q::rho || quantity == Q::v || quantity == Q::pv) return true;
    return kind.section == Section::isochoric;
}

bool in_range(const CurveRange& range, const SheetPoint& point) {
    return point.X >= range.XMin && point.X <= range.XMax && point.Y >= range.YMin && point.Y <= range.YMax;
}

}  // namespace

std::vector<SectionPoint> points_of_section(Kind number, const LastParameter& parameter, const Fluid& fluid,
                                            const Units& units, std::span<const MeasuredPoint> measured) {
    const KindInfo& kind = kind_info(number);
    std::vector<SectionPoint> points;
    for (const MeasuredPoint& point : measured) {
        const auto take = [&](double rho, bool liquid, bool vapor) {
            if (!in_section(point, rho, kind.section, parameter, fluid.M)) return;
            const double x = displayed(point, rho, kind.x, fluid, units);
            const double y = displayed(point, rho, kind.y, fluid, units);
            if (x != 0.0 && y != 0.0) points.push_back({x, y, liquid, vapor});
        };
        if (!uses_density(kind)) {
            take(0.0, false, false);
            continue;
        }
        take(static_cast<double>(point.rhoL), true, false);
        take(static_cast<double>(point.rhoV), false, true);
    }
    return points;
}

std::vector<SheetPoint> points_in_diagram(const GraphDocument& sheet, const Fluid& fluid, const Units& units,
                                          std::span<const MeasuredPoint> measured) {
    std::vector<SheetPoint> points;
    for (const SectionPoint& at : points_of_section(sheet.diagram.kind, sheet.last, fluid, units, measured)) {
        const SheetPoint point{static_cast<float>(at.X), static_cast<float>(at.Y)};
        if (in_range(sheet.diagram.range, point)) points.push_back(point);
    }
    return points;
}

Added mnuAddPunkte(GraphDocument& sheet, const Fluid& fluid, const Units& units,
                   std::span<const MeasuredPoint> measured) {
    Added refused;
    Message& message = refused.message.emplace();
    message.kind = MessageKind::warning;
    if (free_point_slot(sheet) == 0) {
        message.title = "Execution not possible";
        message.text = "Maximum " + genNum(PointSlots) +
                       " sets of experimental points possible\nDelete the experimental points if existing";
        return refused;
    }
    const std::vector<SheetPoint> points = points_in_diagram(sheet, fluid, units, measured);
    if (!points.empty()) return cmdExternPoints(sheet, points, PointSource::insertion);
    message.title = "Note";
    message.text =
        "No exper. points in this range of diagram / for this parameter;\n"
        "you can view the existing set of exper. points in the T-p-rho editor (via yellow icon) ";
    return refused;
}

}  // namespace quom
