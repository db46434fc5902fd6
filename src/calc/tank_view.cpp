#include "calc/tank_view.h"

#include <algorithm>

#include "base/number_text.h"

namespace quom {
namespace {

constexpr double FullShare = 99.999;

std::string pressure_of(double p) {
    if (!(p > 0.0)) return {};
    if (p < 0.01) return genNum(static_cast<float>(p)) + " kPa";
    return formatMask(p, p < 10000.0 ? "###0.0##" : "######0.0#") + " kPa";
}

TankFilling filling_of(const Session& s, const CalcBatchResult& r) {
    if (r.Text == "ERROR1" || r.Text == "ERROR3") return TankFilling::fault;
    if (r.Text == "ERROR2") return TankFilling::liquid;
    if (r.err || (!r.IsL && !r.IsV)) return TankFilling::nothing;
    if (s.substance.Tcr > 0.0 && r.Result[slot_T] - s.substance.Tcr > 0.0) return TankFilling::supercritical;
    if (r.IsL && r.IsV) return TankFilling::both;
    return r.IsL ? TankFilling::liquid : TankFilling::vapor;
}

}  // namespace

TankView tank_view(const Session& s, const CalcBatchResult& result) {
    TankView view;
    view.caption =
        s.calc.GlobalCalc ? "Tank Calculation (GLOBAL method) " : "Tank Calculation (PARTIAL method) ";
    view.filling = filling_of(s, result);
    if (view.filling == TankFilling::nothing) {
        view.fault = result.fault;
        return view;
    }
    if (view.filling == TankFilling::fault) {
        view.fault = " Error: v < B\n Error (cf. help \"Tank\")";
        return view;
    }
    view.pressure = pressure_of(result.Result[slot_p]);
    if (view.filling == TankFilling::supercritical) {
        view.V = "  supercritical";
        return view;
    }
    view.share = view.filling == TankFilling::both     ? static_cast<double>(result.LPercent)
                 : view.filling == TankFilling::liquid ? 100.0
                                                       : 0.0;
    view.share = std::clamp(view.share >= FullShare ? 100.0 : view.share, 0.0, 100.0);
    view.level = "Filling level " + formatMask(view.share, "##0.0#") + "vol.-%";
    if (view.share > 0.0) view.L = "  L-phase";
    if (view.share < 100.0) view.V = "  V-phase";
    return view;
}

}  // namespace quom
