#include "calc/calc_partial.h"

#include "base/number_text.h"
#include "calc/calc_input.h"
#include "calc/reference_point.h"

namespace quom {
namespace {

PartialSituation situation_of(const Session& s, bool diagram_pending) {
    const int mode = s.calc.CalcMode;
    if (!diagram_pending && (mode == 10 || mode == 6 || mode == 7)) return PartialSituation::benson_only;
    if (s.models.VPhaseOnly) return PartialSituation::vapor_only;
    if (!diagram_pending && mode == 3) return PartialSituation::assumed_state;
    return s.models.Konzept ? PartialSituation::free_choice : PartialSituation::partial_concept;
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

std::string status_text(const Session& s) {
    if (s.calc.GlobalCalc)
        return "GLOBAL calculation: L and V density as well as p(LV) or T(LV) using a cubic EOS.";
    return std::string("PARTIAL calculation: L-density using ") +
           (s.calc.BensonRhoL ? "BENSON's method (Mathias/Cailletet),  "
                              : " database equation rho(L)= Fu(T), ") +
           "V density calc. using EOS. For the calculation of p(LV) or T(LV) the cubic EOS is used.";
}

// Brings the view in line with the record.
void refresh(const Session& s, PartialSelection& selection) {
    PartialView& view = selection.view;
    view.GlobalCalc = s.calc.GlobalCalc;
    view.BensonRhoL = s.calc.BensonRhoL;
    view.method = s.calc.BensonRhoL
                      ? "The L-density is calculated by means of BENSON's method."
                      : "The L-density is calculated by means of the database equation rho(L) = Fu(T).";
    view.range = range_text(s.substance);
    view.status = status_text(s);
    // A proposal that failed closes the way only where the point is needed.
    const bool needs_point = !s.calc.GlobalCalc && s.calc.BensonRhoL;
    view.OK_enabled = !needs_point || s.benson.TRefL > 0.0f;
}

}  // namespace

bool has_liquid_density(const SubstanceConstants& substance) {
    const LiquidPoint point = liquid_point(substance);
    return (substance.RhoLTLo > 0 && substance.RhoLTHi > 0) || (point.rho > TinyT && point.T > TinyT);
}

PartialSelection OpenPartial(Session& s, bool diagram_pending) {
    PartialSelection selection;
    selection.diagram_pending = diagram_pending;
    s.calc.RhoLWanted = false;
    s.calc.ParInputKind = input_reference_point;
    s.benson = {};
    PartialView& view = selection.view;
    view.situation = situation_of(s, diagram_pending);
    view.assumption = assumption_text(view.situation);
    if (view.situation == PartialSituation::partial_concept) view.second_title = "Situation of Calculation";
    s.calc.GlobalCalc = view.situation == PartialSituation::free_choice;
    view.opt_glob_enabled =
        view.situation == PartialSituation::free_choice || view.situation == PartialSituation::assumed_state;
    // A tank and delta(LV)h of model 6: the density by Benson's method; a tank may take the equation too.
    if (!diagram_pending && (s.calc.CalcMode == 6 || s.calc.CalcMode == 7)) s.calc.BensonRhoL = true;
    view.optPartialBenson_enabled =
        has_liquid_density(s.substance) && s.calc.CalcMode != 6 && s.calc.CalcMode != 7;
    ChooseReference(s, selection, ref_proposed);
    return selection;
}

std::optional<Message> ChooseConcept(Session& s, PartialSelection& selection, bool global) {
    if (global && s.models.VPhaseOnly) {
        refresh(s, selection);
        return Message{.title = "Execution not possible",
                       .text = "GLOBAL calculation is only possible with a cubic EOS (=> window \"Models\")",
                       .kind = MessageKind::warning};
    }
    s.calc.GlobalCalc = global;
    refresh(s, selection);
    return std::nullopt;
}

void ChooseDensity(Session& s, PartialSelection& selection, bool benson) {
    s.calc.BensonRhoL = benson;
    refresh(s, selection);
}

bool ChooseReference(Session& s, PartialSelection& selection, int Ref_opt) {
    PartialView& view = selection.view;
    view.Ref_opt = Ref_opt;
    view.heading.clear();
    view.reference_text.clear();
    s.benson = {};
    if (Ref_opt == ref_proposed) {
        const ReferencePointResult point = TakeReferencePoint(s);
        view.heading = "Proposal for the reference point according to the situation:";
        view.reference_text = point.text;
    } else if (Ref_opt == ref_benson) {
        const ReferencePointResult point = BensonReferencePoint(s);
        if (point.err == 0) store(s.benson, point);
        view.reference_text = point.text;
    } else {
        s.calc.ParInputKind = input_reference_point;
    }
    refresh(s, selection);
    return Ref_opt == ref_manual;
}

void ReferenceTaken(Session& s, PartialSelection& selection) {
    const BensonReference& point = s.benson;
    if (is_complete(point)) {
        selection.view.reference_text = " T(ref)/K           =" + strNum(point.TRefL) +
                                        "\n p(LV)(ref)/kPa     =" + strNum(point.pLVRef) +
                                        "\n rho(L)(ref)/kg/m^3 =" + strNum(point.rhoLRef) +
                                        "\n rho(V)(ref)/kg/m^3 =" + strNum(point.rhoVRef);
    }
    refresh(s, selection);
}

PartialContinue ContinuePartial(Session& s, const PartialSelection& selection) {
    CalcState& calc = s.calc;
    calc.RhoLWanted = is_complete(s.benson) || (!calc.BensonRhoL && has_liquid_density(s.substance));
    if (selection.diagram_pending) return {.diagram_setup = true};
    PartialContinue next;
    const int mode = calc.CalcMode;
    next.result_window = mode != 13 && mode != 10;
    if (is_direct(s, mode)) {
        calc.ParInputKind = mode == 10 ? input_tank : input_direct + mode;
        next.parameter_input = true;
    }
    return next;
}

std::optional<Message> SelectPartial(Session& s, bool global, bool benson) {
    PartialSelection selection = OpenPartial(s);
    if (selection.view.opt_glob_enabled || (global && s.models.VPhaseOnly)) {
        if (auto refused = ChooseConcept(s, selection, global)) return refused;
    }
    if (!benson && !has_liquid_density(s.substance)) {
        return Message{.title = "Execution not possible",
                       .text = "no database function rho(L) = Fu(T) available",
                       .kind = MessageKind::warning};
    }
    if (benson || selection.view.optPartialBenson_enabled) ChooseDensity(s, selection, benson);
    if (!s.calc.GlobalCalc && s.calc.BensonRhoL && !is_complete(s.benson)) {
        ChooseReference(s, selection, ref_benson);
        if (!is_complete(s.benson)) ChooseReference(s, selection, ref_proposed);
    }
    ContinuePartial(s, selection);
    return std::nullopt;
}

}  // namespace quom
