// Modes 4 and 5 (L-V equilibrium), 6 and 7 (delta(LV)h), and the block on delta(LV)h of all other modes.
#include "base/code_page.h"
#include "base/number_text.h"
#include "report/list_writer.h"

namespace quom {

namespace {

// What differs between T => p(LV) and p => T(LV).
struct Side {
    std::string_view limit;        // behind the specified value
    std::string_view heat_limit;   // the same of modes 6 and 7
    std::string_view evp_head;     // + name of the equation
    std::string_view evp_colon;    // behind the name
    std::string_view without_evp;  // head when the data set has to help out
    std::string_view no_data;
    std::string_view from_data;
    std::string_view data_mask;
    std::string_view eos_head;  // head of the GLOBAL calculation
    bool eos_name_in_head;
    std::string_view eos_value;
    std::string_view unit;
};
constexpr Side side_T = {.limit = " > T(cr) !!!",
                         .heat_limit = " >= T(cr) !!!",
                         .evp_head = "p(LV) from present vapor pressure equation: ",
                         .evp_colon = ":",
                         .without_evp = "No vapor pressure equation available",
                         .no_data = " no p(LV) available from data set",
                         .from_data = " p(LV)(from data set) = ",
                         .data_mask = "####0.0#",
                         .eos_head = "p(LV) from ",
                         .eos_name_in_head = true,
                         .eos_value = " p(LV) = ",
                         .unit = " kPa"};
constexpr Side side_p = {.limit = " > p(cr) !!!",
                         .heat_limit = " >= p(cr) !!!",
                         .evp_head = "T(LV) from present vapor pressure equation: ",
                         .evp_colon = "",
                         .without_evp = " No T(LV) available/calculable",
                         .no_data = " no T(LV) available from data set",
                         .from_data = " T(LV) (from data set) = ",
                         .data_mask = "####.0#",
                         .eos_head = "T(LV) using cubic EOS",
                         .eos_name_in_head = false,
                         .eos_value = " T(LV) = ",
                         .unit = " K"};

bool given_T(const ListWriter& w) { return w.info().specified & spec_T; }
const Side& side(const ListWriter& w) { return given_T(w) ? side_T : side_p; }

// The coordinate that was searched for.
double found(const ListWriter& w) { return given_T(w) ? w.p() : w.T(); }
std::string found_text(const ListWriter& w) {
    return given_T(w) ? pressure_text(w.p()) : formatMask(w.T(), "####.000");
}

// The specified value lies at or above the critical one.
bool beyond_limit(const ListWriter& w) {
    return w.outcome.failure.reason == (given_T(w) ? Reason::above_critical_T : Reason::above_critical_p) &&
           (given_T(w) ? w.T() >= w.fluid.substance.Tcr : w.p() >= w.fluid.substance.pcr);
}

bool nothing_in_data(const ListWriter& w) {
    const Reason reason = w.outcome.failure.reason;
    return reason == Reason::no_p_available || reason == Reason::no_T_available;
}

void show_saturation(ListWriter& w) {
    const Side& k = side(w);
    ViewText& head = w.view.co1;
    ViewText& value = w.view.txtco2;
    switch (w.outcome.saturation) {
        case SaturationSource::eos:
            head.text = k.eos_head;
            if (k.eos_name_in_head) head.text += eos_text(w.fluid);
            value.text = std::string(k.eos_value) + found_text(w);
            break;
        case SaturationSource::evp:
            head.text = k.evp_head;
            head.text.append(trim(evp_info(w.fluid.models.EVPKode).text)).append(k.evp_colon);
            value.text = found_text(w);
            break;
        case SaturationSource::data_point:
            head.text = k.without_evp;
            value.text = std::string(k.from_data) + formatMask(found(w), k.data_mask);
            break;
        case SaturationSource::none:
            return;
    }
    value.text += k.unit;
}

std::string heat_text(double h) { return formatMask(h, h < 1000.0 ? "##0.00" : "##########.0"); }

// Displayed value with its label, and the entropy of vaporization, between rulers.
void value_lines(ListWriter& w, double h) {
    const Units& units = w.settings.units;
    const std::string value = label_text(units, Quantity::hLV) + " = " + heat_text(h);
    std::string entropy =
        "(entropy of vaporiz. delta(LV)s = delta(LV)h / T: " + label_text(units, Quantity::sLV);
    entropy += " = " + strSingle(h / w.T()) + ")";
    w.ruler(value.size(), '-');
    w.line(value);
    w.ruler(value.size(), '-');
    w.line(entropy);
    w.ruler(entropy.size(), '-');
}

void compressibility_lines(ListWriter& w, const VaporizationOutcome& heat) {
    const bool benson = w.fluid.models.HLVKode == Hlv::evp_benson;
    w.line("Following compressibility factors z were used:");
    if (heat.zL) w.line("z(L) = " + strSingle(*heat.zL));
    if (heat.zV) w.line("z(V) = " + strSingle(*heat.zV));
    w.line("z(V) using " + std::string(eos_text(w.fluid)));
    w.line(benson ? "rho(L) for z(L) calculation (MATHIAS/CAILLETET/BENSON)"
                  : "rho(L) for z(L) calculation using database function rho(L) = Fu(T)");
}

// The same quantity by the database equation, where the substance has one.
void comparison_line(ListWriter& w, double value, double database) {
    w.line("(cf. function from database: " + label_text(w.settings.units, Quantity::hLV) + " = " +
           heat_text(database * w.factor(Quantity::hLV)) +
           ", difference = " + formatMask((value / database - 1.0) * 100.0, "##0.0#") + " %)");
}

std::string heat_head(const ListWriter& w) {
    return "Enthalpy of vaporization from " + std::string(trim(hlv_info(w.fluid.models.HLVKode).text));
}

}  // namespace

void write_heat(ListWriter& w) {
    const VaporizationOutcome& heat = *w.outcome.vaporization;
    const bool main = w.info().family == ModeFamily::vaporization;
    if (!main) w.line(heat_head(w));
    if (!heat.hLV) {
        w.line("no result received");
        const std::string why = heat.source.empty() ? std::string(reason_text(heat.reason)) : heat.source;
        if (!why.empty()) w.line(why);
        return;
    }
    if (main && !heat.source.empty()) w.line(heat.source);
    value_lines(w, *heat.hLV * w.factor(Quantity::hLV));
    if (hlv_info(w.fluid.models.HLVKode).uses_zeta) compressibility_lines(w, heat);
    if (heat.database) comparison_line(w, *heat.hLV, *heat.database);
}

void write_equilibrium(ListWriter& w) {
    if (!show_specified(w)) return;
    if (beyond_limit(w)) return refuse(w.view.par1, w.view.par1.text + std::string(side(w).limit));
    if (nothing_in_data(w)) {
        w.view.co1.text = side(w).without_evp;
        return refuse(w.view.txtco2, std::string(side(w).no_data));
    }
    if (!w.outcome.has_result()) return write_fault(w);
    show_saturation(w);
    if (w.settings.setup.GlobalCalc && !w.fluid.VPhaseOnly && !w.fluid.models.Konzept) {
        constexpr std::string_view remark =
            "(Calculation of density is not possible using a vapor pressure equation!)";
        w.ruler(remark.size(), '-');
        w.line(remark);
        w.ruler(remark.size(), '-');
    }
    write_densities(w);
}

void write_vaporization(ListWriter& w) {
    if (!show_specified(w)) return;
    if (beyond_limit(w)) return refuse(w.view.par1, w.view.par1.text + std::string(side(w).heat_limit));
    w.view.co1.text = heat_head(w);
    if (w.outcome.has_result()) {
        if (given_T(w) && w.outcome.p) w.view.txtco2.text = " p(LV) = " + pressure_text(w.p()) + " kPa";
        if (!given_T(w)) w.view.txtco2.text = " T(LV) = " + formatMask(w.T(), "####.000") + " K";
    }
    if (w.outcome.vaporization) return write_heat(w);
    w.line("no result received");
    w.line(failure_text(w.outcome.failure));
}

}  // namespace quom
