// Mode 11: the second virial coefficient of every equation that gives one. Mode 12: start of a process.
#include "calc/calc_run.h"
#include "engine/volume_solver.h"

namespace quom {
namespace {

// The equations that are compared, in the order of their codes.
constexpr Eos compared[] = {Eos::virial_van_der_waals, Eos::virial_berthelot,     Eos::virial_redlich_kwong,
                            Eos::virial_soave,         Eos::virial_peng_robinson, Eos::pitzer_curl};

}  // namespace

void mode_virial(CalcRun& run) {
    if (!take_T(run)) return;
    const Fluid& fluid = run.fluid;
    const SubstanceConstants& substance = fluid.substance;
    const Eos partner = fluid.eos_row().virial;
    std::optional<double>& B = run.out.B;
    if (substance.Tcr > TinyT && substance.pcr > TinyT) {
        for (const Eos code : compared) {
            const EosInfo& eos = eos_info(code);
            const std::shared_ptr<const Fluid> other = with_eos(fluid, code);
            VirialOutcome& row = run.out.virial.emplace_back();
            row.code = code;
            row.omega_zero = (eos.needs_omega || eos.warns_omega) && substance.omega == 0.0;
            if (other->has_eos()) row.B = present(VirialB(*other, run.T()));
            if (code == partner) B = row.B;
        }
    }
    // The Tovarn/Ji equations have B of their own form, the others of the V-phase are themselves.
    const bool own = fluid.eos_row().family == EosFamily::tovarn_ji || fluid.VPhaseOnly;
    if (!B && own && fluid.has_eos()) B = present(VirialB(fluid, run.T()));
}

void mode_process(CalcRun& run) {
    if (take_T(run)) take_p(run);
}

}  // namespace quom
