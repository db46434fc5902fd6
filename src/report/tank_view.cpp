#include "report/tank_view.h"

#include <algorithm>

#include "base/number_text.h"
#include "report/outcome_report.h"

namespace quom {
namespace {

constexpr double FullShare = 99.999;     // [vol.-%], from here on a tank is shown full
constexpr double SmallPressure = 0.01;   // [kPa], below it the general form
constexpr double LargePressure = 10000;  // [kPa], from it on two decimals

std::string pressure_of(const std::optional<double>& p) {
    if (!p || !(*p > 0.0)) return {};
    if (*p < SmallPressure) return genSingle(*p) + " kPa";
    return formatMask(*p, *p < LargePressure ? "###0.0##" : "######0.0#") + " kPa";
}

bool volume_too_small(Reason reason) {
    return reason == Reason::volume_below_b || reason == Reason::volume_below_B;
}

TankFilling filling_of(const Fluid& fluid, const Outcome& outcome) {
    if (volume_too_small(outcome.failure.reason)) return TankFilling::fault;
    if (!outcome.has_result() || outcome.phase == PhaseWord::none) return TankFilling::nothing;
    const double Tcr = fluid.substance.Tcr;
    if (Tcr > 0.0 && outcome.T.value_or(0.0) > Tcr) return TankFilling::supercritical;
    if (outcome.two_phase()) return TankFilling::both;
    return outcome.phase == PhaseWord::L ? TankFilling::liquid : TankFilling::vapor;
}

double share_of(const Outcome& outcome, TankFilling filling) {
    if (filling == TankFilling::liquid) return 100.0;
    if (filling != TankFilling::both || !outcome.tank) return 0.0;
    const double share = outcome.tank->fill * 100.0;
    return std::clamp(share >= FullShare ? 100.0 : share, 0.0, 100.0);
}

}  // namespace

TankView tank_view(const Fluid& fluid, const Outcome& outcome, const CalcSetup& setup) {
    TankView view;
    view.caption =
        setup.GlobalCalc ? "Tank Calculation (GLOBAL method) " : "Tank Calculation (PARTIAL method) ";
    view.filling = filling_of(fluid, outcome);
    if (view.filling == TankFilling::nothing) {
        view.fault = outcome_message(outcome);
        return view;
    }
    if (view.filling == TankFilling::fault) {
        view.fault = " Error: v < B\n Error (cf. help \"Tank\")";
        return view;
    }
    view.pressure = pressure_of(outcome.p);
    if (view.filling == TankFilling::supercritical) {
        view.V = "  supercritical";
        return view;
    }
    view.share = share_of(outcome, view.filling);
    view.level = "Filling level " + formatMask(view.share, "##0.0#") + "vol.-%";
    if (view.share > 0.0) view.L = "  L-phase";
    if (view.share < 100.0) view.V = "  V-phase";
    return view;
}

}  // namespace quom
