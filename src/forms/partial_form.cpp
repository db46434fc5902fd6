#include "forms/partial_form.h"

#include "base/number_text.h"
#include "calc/reference_point.h"
#include "forms/calculation_form.h"

namespace quom {
namespace {

// delta(LV)h by Benson's method.
bool is_vaporization(const PartialSelection& selection) {
    return mode_info(selection.mode).family == ModeFamily::vaporization;
}

PartialSituation situation_of(const Fluid& fluid, const PartialSelection& selection) {
    const bool calculation = !selection.diagram_pending;
    const bool tank = mode_info(selection.mode).family == ModeFamily::tank;
    if (calculation && (tank || is_vaporization(selection))) return PartialSituation::benson_only;
    if (fluid.VPhaseOnly) return PartialSituation::vapor_only;
    if (calculation && selection.mode == Mode::T_p) return PartialSituation::assumed_state;
    return fluid.models.Konzept ? PartialSituation::free_choice : PartialSituation::partial_concept;
}

std::string_view assumption_text(PartialSituation situation) {
    switch (situation) {
        case PartialSituation::vapor_only:
            return "The selected EOS can only be used for the calculation of the V-phase.\n"
                   "The L-density is calculated using BENSON's method, \n"
                   "p(LV) or T(LV) using the present vapor press. equation (\"PARTIAL calculation\").";
        case PartialSituation::assumed_state:
            return "Assumption: The values given exactly describe the phase equlibrium.\n"
                   "In this case, the PARTIAL calculation should be selected: By Means of EOS\n"
                   "the V-density is calculated, by means of the BENSON method the L-density.";
        case PartialSituation::free_choice:
            return "The selected EOS allows the calculation of both equilibrium phases L and V "
                   "(\"GLOBAL calculation\"). However, its application can be limited to the V-phase "
                   "(\"PARTIAL calculation\"); the L-phase is then calculated using the BENSON method or the "
                   "database equation rho(L) = Fu(T), p(LV) or T(LV) using a vapor press. equ.";
        case PartialSituation::partial_concept:
            return "The equilibrium calculation L - V is performed with the present vapor press. equation\n"
                   "(PARTIAL calculation concept)";
        case PartialSituation::benson_only:
            return "The calculation of the L-density (or the molar L-volume, resp.) is done \n"
                   "using BENSON's method. In this case a second reference point \n"
                   "(additional to the critical point) is needed.";
    }
    return {};
}

std::string range_text(const SubstanceConstants& substance) {
    if (substance.RhoLTLo == 0 || substance.RhoLTHi == 0) return "(no database function available)";
    return "valid in the range T/K = " + genNum(substance.RhoLTLo) + "..." + genNum(substance.RhoLTHi);
}

std::string status_text(const CalcSetup& setup) {
    if (setup.GlobalCalc)
        return "GLOBAL calculation: L and V density as well as p(LV) or T(LV) using a cubic EOS.";
    return std::string("PARTIAL calculation: L-density using ") +
           (setup.BensonRhoL ? "BENSON's method (Mathias/Cailletet),  "
                             : " database equation rho(L)= Fu(T), ") +
           "V density calc. using EOS. For the calculation of p(LV) or T(LV) the cubic EOS is used.";
}

// Brings the view in line with the setup.
void refresh(const Fluid& fluid, PartialSelection& selection) {
    PartialView& view = selection.view;
    const CalcSetup& setup = selection.setup;
    view.GlobalCalc = setup.GlobalCalc;
    view.BensonRhoL = setup.BensonRhoL;
    view.method = setup.BensonRhoL
                      ? "The L-density is calculated by means of BENSON's method."
                      : "The L-density is calculated by means of the database equation rho(L) = Fu(T).";
    view.range = range_text(fluid.substance);
    view.status = status_text(setup);
    // A proposal that failed closes "Continue >" only where the point is needed.
    const bool needs_point = !setup.GlobalCalc && setup.BensonRhoL;
    view.OK_enabled = !needs_point || setup.benson.TRefL > 0.0f;
}

}  // namespace

PartialSelection OpenPartial(const Fluid& fluid, Mode mode, const CalcSetup& setup, bool diagram_pending) {
    PartialSelection selection{.view = {}, .setup = setup, .mode = mode, .diagram_pending = diagram_pending};
    selection.setup.RhoLWanted = false;
    PartialView& view = selection.view;
    view.situation = situation_of(fluid, selection);
    view.assumption = assumption_text(view.situation);
    if (view.situation == PartialSituation::partial_concept) view.second_title = "Situation of Calculation";
    selection.setup.GlobalCalc = view.situation == PartialSituation::free_choice;
    view.opt_glob_enabled =
        view.situation == PartialSituation::free_choice || view.situation == PartialSituation::assumed_state;
    // delta(LV)h of the Benson model takes his density; a tank may take the equation too.
    if (!diagram_pending && is_vaporization(selection)) selection.setup.BensonRhoL = true;
    view.optPartialBenson_enabled = has_liquid_density(fluid.substance) && !is_vaporization(selection);
    ChooseReference(fluid, selection, ref_proposed);
    return selection;
}

std::optional<Message> ChooseConcept(const Fluid& fluid, PartialSelection& selection, bool global) {
    if (global && fluid.VPhaseOnly)
        return refusal_message("GLOBAL calculation is only possible with a cubic EOS (=> window \"Models\")");
    selection.setup.GlobalCalc = global;
    refresh(fluid, selection);
    return std::nullopt;
}

void ChooseDensity(const Fluid& fluid, PartialSelection& selection, bool benson) {
    selection.setup.BensonRhoL = benson;
    refresh(fluid, selection);
}

bool ChooseReference(const Fluid& fluid, PartialSelection& selection, int Ref_opt) {
    PartialView& view = selection.view;
    view.Ref_opt = Ref_opt;
    view.heading.clear();
    view.reference_text.clear();
    selection.setup.benson = {};
    if (Ref_opt == ref_proposed) {
        const ReferencePointResult point = ReferencePoint(fluid);
        view.heading = "Proposal for the reference point according to the situation:";
        view.reference_text = point.text;
        selection.setup.benson = point.reference();
    } else if (Ref_opt == ref_benson) {
        const ReferencePointResult point = BensonReferencePoint(fluid);
        view.reference_text = point.text;
        selection.setup.benson = point.reference();
    }
    refresh(fluid, selection);
    return Ref_opt == ref_manual;
}

void ReferenceTaken(const Fluid& fluid, PartialSelection& selection, const BensonReference& point) {
    selection.setup.benson = point;
    if (point.complete()) {
        selection.view.reference_text = " T(ref)/K           =" + strNum(point.TRefL) +
                                        "\n p(LV)(ref)/kPa     =" + strNum(point.pLVRef) +
                                        "\n rho(L)(ref)/kg/m^3 =" + strNum(point.rhoLRef) +
                                        "\n rho(V)(ref)/kg/m^3 =" + strNum(point.rhoVRef);
    }
    refresh(fluid, selection);
}

PartialContinue ContinuePartial(const Fluid& fluid, const PartialSelection& selection, bool direct) {
    PartialContinue next{.setup = selection.setup};
    CalcSetup& setup = next.setup;
    setup.RhoLWanted = setup.benson.complete() || (!setup.BensonRhoL && has_liquid_density(fluid.substance));
    if (selection.diagram_pending) {
        next.diagram_setup = true;
        return next;
    }
    next.result_window = selection.mode != Mode::p_rho && selection.mode != Mode::tank_partial;
    next.parameter_input = direct;
    if (direct) next.ParInputKind = input_kind(selection.mode);
    return next;
}

PartialChoice SelectPartial(const Fluid& fluid, Mode mode, const CalcSetup& setup, bool global, bool benson) {
    PartialSelection selection = OpenPartial(fluid, mode, setup);
    if (selection.view.opt_glob_enabled || (global && fluid.VPhaseOnly)) {
        if (auto refusal = ChooseConcept(fluid, selection, global)) return {std::move(refusal), setup};
    }
    if (!benson && !has_liquid_density(fluid.substance))
        return {refusal_message("no database function rho(L) = Fu(T) available"), setup};
    if (benson || selection.view.optPartialBenson_enabled) ChooseDensity(fluid, selection, benson);
    const CalcSetup& chosen = selection.setup;
    if (!chosen.GlobalCalc && chosen.BensonRhoL && !chosen.benson.complete()) {
        ChooseReference(fluid, selection, ref_benson);
        if (!chosen.benson.complete()) ChooseReference(fluid, selection, ref_proposed);
    }
    return {std::nullopt, ContinuePartial(fluid, selection, true).setup};
}

}  // namespace quom
