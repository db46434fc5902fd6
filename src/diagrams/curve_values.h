// A curve of a diagram as values: y at an abscissa, from the equations themselves and not from the points
// drawn, so that two curves can be compared to the last digits.
#pragma once
#include <memory>
#include <string_view>
#include <vector>

#include "diagrams/curve.h"

namespace quom {

// What a value is of. curve: the diagram has no phases; any: one phase alone, above T(cr).
enum class CurvePart { curve, any, liquid, vapor, two_phase };
// "", "", "liquid", "vapor", "two-phase".
std::string_view part_name(CurvePart part);

struct CurveValue {
    CurvePart part = CurvePart::curve;
    bool returning = false;  // x falls along the curve there: a curve that turns back has both
    double y = 0;            // displayed units
};
// Two values of the same branch: equal parts, any being like each phase, and the same direction.
bool same_branch(const CurveValue& a, const CurveValue& b);

class CurveValues {
 public:
    // The curve that CalcCurve draws for the same input, without loops, tie lines and process lines. Keeps
    // the fluid.
    CurveValues(std::shared_ptr<const Fluid> fluid, const CurveInput& input);
    ~CurveValues();
    CurveValues(CurveValues&&) noexcept;
    CurveValues& operator=(CurveValues&&) noexcept;

    // Every value at x [displayed units], the range of the axes aside; none where the curve has none.
    std::vector<CurveValue> at(double x) const;

 private:
    class Rule;
    std::unique_ptr<Rule> rule_;
};

}  // namespace quom
