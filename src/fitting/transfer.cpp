#include "fitting/transfer.h"

#include <algorithm>
#include <cmath>

#include "base/constants.h"
#include "base/number_text.h"
#include "substance/record.h"

namespace quom {
namespace {

struct Limits {
    std::int16_t TLo = 0, THi = 0;
};
Limits whole_limits(const FitInput& input) {
    double lowest = 0.0, highest = 0.0;
    bool first = true;
    for (const FitPoint& point : input.points) {
        if (!point.active) continue;
        lowest = first ? point.x : std::min(lowest, point.x);
        highest = first ? point.x : std::max(highest, point.x);
        first = false;
    }
    return {to_i16(std::trunc(lowest)), to_i16(std::trunc(highest))};
}

template <std::size_t n>
void set(std::array<float, n>& cells, std::initializer_list<double> values) {
    cells = {};
    std::ranges::transform(values, cells.begin(), [](double v) { return static_cast<float>(v); });
}

Message refusal(std::string text) {
    return {"Execution not possible", std::move(text), Buttons::ok, Answer::ok, MessageKind::warning};
}

// Why the record would read the cp coefficients as another form; empty when it would not.
std::string misread(const SubstanceConstants& substance, FitModel model, const std::vector<double>& par,
                    CpPhase phase) {
    const bool gas = phase == CpPhase::ideal_gas;
    if (model == FitModel::shomate && std::fabs(par[4]) < (gas ? 1.0 : 10.0))
        return "The parameter E is too small: the database equation would read it as a coefficient of T^4.";
    if (gas) return "";
    const double CpFormBound = substance.StoffCAS.starts_with("7440-59-7") ? 500.0 : 100.0;
    const bool large_C = std::fabs(par[2]) >= CpFormBound;
    if (model == FitModel::dippr_cp && !large_C)
        return "The parameter C is too small: the database equation would be read as a polynomial.";
    if (model == FitModel::dippr_cp) return "";
    if (large_C)
        return "The parameter C is too large: the database equation would be read as a DIPPR function.";
    if (std::fabs(par[0]) < 1e-8)
        return "The parameter A is too small: the database equation would be read without it.";
    return "";
}

struct CpCells {
    std::array<float, 5>& C;
    std::int16_t &TLo, &THi;
};
CpCells cp_cells(SubstanceConstants& s, FitModel model, CpPhase phase) {
    if (phase == CpPhase::liquid) return {s.cpL, s.cpLTLo, s.cpLTHi};
    if (phase == CpPhase::solid) return {s.cpS, s.cpSTLo, s.cpSTHi};
    if (model == FitModel::dippr_cp) return {s.cpDIPPR, s.cpDIPPRTLo, s.cpDIPPRTHi};
    return {s.cpPoly, s.cpPolyTLo, s.cpPolyTHi};
}

void set_cp(SubstanceConstants& s, FitModel model, const std::vector<double>& par, CpPhase phase, Limits T) {
    const CpCells cells = cp_cells(s, model, phase);
    const double C4 = model == FitModel::cp_polynomial ? 0.0 : par[4];
    // The function is even in C.
    const double C2 = model == FitModel::dippr_cp ? std::fabs(par[2]) : par[2];
    set(cells.C, {par[0], par[1], C2, par[3], C4});
    cells.TLo = T.TLo;
    cells.THi = T.THi;
    set_presence_flags(s);
}

void set_frost(SubstanceConstants& s, const FitInput& input, const std::vector<double>& par, Limits T) {
    const double f = input.constants.UseLg ? 1.0 : LnTen;
    if (input.model == FitModel::dippr_pressure)
        set(s.KFDB, {par[0] / f, par[1] / f, TZeroC, par[2], 0, 0, 0, par[3] / f, par[4]});
    else
        set(s.KFDB, {par[0] / f, par[1] / f, par[2], par[3], par[4] / f});
    s.KFTLo = T.TLo;
    s.KFTHi = T.THi;
}

void set_density(SubstanceConstants& s, const FitInput& input, const std::vector<double>& par, Limits T) {
    if (input.model == FitModel::rackett)
        set(s.RhoL, {0, par[0], par[1], par[2]});
    else if (input.model == FitModel::leuna)
        set(s.RhoL, {par[0], par[1], par[2], par[3], 0, 0, par[4]});
    else
        set(s.RhoL, {par[0], par[1], par[2], par[3]});
    if (input.constants.TcFit > 0.0) s.RhoLTcr = static_cast<float>(input.constants.TcFit);
    s.RhoLTLo = T.TLo;
    s.RhoLTHi = T.THi;
}

void set_vaporization(SubstanceConstants& s, const FitInput& input, const std::vector<double>& par,
                      Limits T) {
    if (input.model == FitModel::majer)
        set(s.HLV, {par[0], par[2], 0, 0, 0, par[1]});
    else
        set(s.HLV, {par[0], par[1], par[2], par[3], par[4]});
    s.HLVTcr = static_cast<float>(input.constants.TcFit);
    s.HLVTLo = T.TLo;
    s.HLVTHi = T.THi;
}

// First lines of the box; empty where there are none.
std::string message_head(const FitInput& input) {
    const bool UseLg = input.constants.UseLg;
    switch (input.model) {
        case FitModel::antoine:
            return std::string("These parameters are") + (UseLg ? "" : " (after recalculation to lg)") +
                   " included in the\nANTOINE (Lo-p) parameter set of QUOM.\n";
        case FitModel::frost_kalkwarf:
        case FitModel::frost_thodos:
        case FitModel::dippr_pressure:
            return std::string("These parameters are inserted") +
                   (UseLg ? " " : " (after conversion to lg) ") + "in the\nFROST-KALKWARF-MILLER equation.\n";
        default:
            return "";
    }
}

void set_equation(SubstanceConstants& s, const FitInput& input, const std::vector<double>& par,
                  CpPhase optcpPhase) {
    const Limits T = whole_limits(input);
    const FitConstants& constants = input.constants;
    const double f = constants.UseLg ? 1.0 : LnTen;
    switch (fit_model(input.model).quantity) {
        case FitQuantity::liquid_density:
            return set_density(s, input, par, T);
        case FitQuantity::vaporization_enthalpy:
            return set_vaporization(s, input, par, T);
        case FitQuantity::heat_capacity:
            return set_cp(s, input.model, par, optcpPhase, T);
        default:
            break;
    }
    if (input.model == FitModel::antoine) {
        set(s.AntLo, {par[0] / f, par[1] / f, par[2]});
        s.AntLoTLo = T.TLo;
        s.AntLoTHi = T.THi;
    } else if (input.model == FitModel::wagner) {
        set(s.Wagner, {par[0], par[1], par[2], 3, par[3], 6});
        s.WagnerTcr = static_cast<float>(constants.TcFit);
        s.Wagnerpcr = static_cast<float>(constants.pcFit);
        s.WagnerTLo = T.TLo;
        s.WagnerTHi = T.THi;
    } else {
        set_frost(s, input, par, T);
    }
}

}  // namespace

Transfer apply_fit(const SubstanceConstants& substance, const FitInput& input, const FitResult& result,
                   CpPhase optcpPhase) {
    Transfer transfer{substance, false, {}};
    const FitModelRow& row = fit_model(input.model);
    if (row.quantity == FitQuantity::general || !result.has_parameters()) {
        transfer.message = refusal("There are no parameters of an equation of the database.");
        return transfer;
    }
    if (input.model == FitModel::august_rankine) {
        transfer.message = refusal(
            "AUGUST/DUPRÉ-RANKINE are equations not used by QUOM.\n"
            "If you want to use AUGUST, chooce ANTOINE C-fixed = 273.15");
        return transfer;
    }
    const std::vector<double> par = result.values();
    if (row.quantity == FitQuantity::heat_capacity) {
        const std::string reason = misread(substance, input.model, par, optcpPhase);
        if (!reason.empty()) {
            transfer.message = refusal(reason);
            return transfer;
        }
    }
    if (std::ranges::any_of(par, [](double p) { return !std::isfinite(static_cast<float>(p)); })) {
        transfer.message = refusal("A parameter is too large for the database.");
        return transfer;
    }
    const bool density_polynomial =
        row.quantity == FitQuantity::liquid_density && input.model != FitModel::rackett;
    if (density_polynomial && std::fabs(par[0]) <= TinyT) {
        transfer.message = refusal("Without a parameter A the database equation would be read as RACKETT's.");
        return transfer;
    }
    set_equation(transfer.substance, input, par, optcpPhase);
    transfer.applied = true;
    transfer.message = {"Parameters successfully applied",
                        message_head(input) +
                            "These parameters are active now in the respive database function of QUOM\n"
                            "and can be viewed/edited under \"Data/Database Editor\".\n"
                            "Single value calculations y=f(T) can be carried out\n"
                            "under \"Calculation / Database functions\".",
                        Buttons::ok, Answer::ok, MessageKind::info};
    return transfer;
}

}  // namespace quom
