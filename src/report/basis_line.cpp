#include "report/basis_line.h"

#include "calc/state_words.h"
#include "engine/ideal_gas.h"
#include "report/report.h"

namespace quom {
namespace {

constexpr const char* Separator = " \u00B7 ";

std::string models_part(const ModelSelection& models) {
    std::string text = eos_name(models.EOSKode) + (models.Konzept ? ", GLOBAL concept" : ", PARTIAL concept");
    if (!models.Konzept && models.EVPKode != Evp::none) text += ", p(LV): " + short_name(models.EVPKode);
    return text;
}

std::string reference_part(const Fluid& fluid) {
    const ReferenceConstants zero = RefConst(fluid.substance, fluid.reference, 0.0);
    const double h = zero.h0 + fluid.reference.hOffset, s = zero.s0 + fluid.reference.sOffset;
    const bool zeros = h == 0.0 && s == 0.0;
    return (zeros ? std::string("h = s = 0")
                  : "h = " + shown(h) + " kJ/kmol, s = " + shown(s) + " kJ/(kmol K)") +
           " at " + shown(zero.TRef0) + " K, " + shown(zero.pRef0) + " kPa, ideal gas";
}

}  // namespace

std::string basis_line(const Fluid& fluid) {
    std::string line = fluid.substance.StoffName + Separator + models_part(fluid.models) + Separator;
    if (fluid.models.cpKode == CpForm::none) return line + "no cp(idG), so no absolute h and s";
    line += reference_part(fluid) + Separator;
    return line + (fluid.models.cpKode == CpForm::sinh_cosh ? "cp(idG): sinh/cosh" : "cp(idG): polynomial");
}

}  // namespace quom
