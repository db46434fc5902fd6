#include "report/titles.h"

#include <array>

#include "report/calc_record.h"

namespace quom {

namespace {

constexpr std::array<std::string_view, ExtendedRows> labels = {" (dp/dV) at T",
                                                               " (dp/dT) at v",
                                                               " (dV/dp) at T",
                                                               " (dV/dT) at p",
                                                               " (dT/dV) at p",
                                                               " (dT/dp) at v",
                                                               " alpha/(1/K)  ",
                                                               "   chi/(1/kPa)",
                                                               "  beta/(1/K)  ",
                                                               "       d2p/dV²",
                                                               "",
                                                               "",
                                                               "       d2V/dT²",
                                                               "       d2T/dV²",
                                                               "     ln (phi*)",
                                                               "    dln phi/dT",
                                                               "  d2ln phi/dT²",
                                                               "   (s-s_idG)/R",
                                                               "   (h-h_idG)/R",
                                                               "   (g-g_idG)/R",
                                                               " (cp-cp_idG)/R",
                                                               " (dT/dp) at H",
                                                               " cv/kJ/kmol/K ",
                                                               " cp/kJ/kmol/K "};

std::string_view concept_text(bool global) {
    return global ? " (GLOBAL calculation)" : " (PARTIAL calculation)";
}

}  // namespace

std::string CalcTitle(Mode mode, const CalcSetup& setup) {
    const ModeInfo& info = mode_info(mode);
    std::string title(info.list_title);
    if (info.family == ModeFamily::equilibrium) title += concept_text(setup.GlobalCalc);
    if (mode == Mode::functions) title += concept_text(true);
    return title;
}

std::string CalcCaption(Mode mode, const CalcSetup& setup) {
    if (mode_info(mode).family != ModeFamily::tank)
        return "Result of the Calculation: " + CalcTitle(mode, setup);
    std::string caption(mode_info(mode).list_title);
    if (mode == Mode::tank_global) return caption += concept_text(true);
    caption += " (PARTIAL calculation, rho(L)) ";
    return caption += setup.BensonRhoL ? " (acc. BENSON's method)" : " from database)";
}

std::string_view extended_label(std::size_t row) {
    return row < labels.size() ? labels[row] : std::string_view();
}

std::string extended_label_plain(std::size_t row) {
    constexpr std::string_view square = "²";
    const std::string_view label = extended_label(row);
    const std::size_t at = label.find(square);
    if (at == std::string_view::npos) return std::string(label);
    std::string plain(label.substr(0, at));
    plain.push_back('2');
    return plain.append(label.substr(at + square.size()));
}

}  // namespace quom
