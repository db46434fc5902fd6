#include "report/comparison_report.h"

#include <cmath>

#include "base/code_page.h"
#include "base/number_text.h"
#include "report/titles.h"

namespace quom {
namespace {

// One quantity in two lines: "rho(L)  847.6 kg/m^3  equation of state, -14.93 %" above
// "rho(L)  996.3 kg/m^3  record, rho(L) = Fu(T)".
void add_line(Block& block, const std::string& key, const char* label, const std::string& unit, double factor,
              const std::optional<ComparedValue>& compared, std::string_view equation) {
    Field eos{key, "", {}, unit, ""}, record{key + "_record", "", {}, unit, ""};
    Field difference{key + "_difference", "", {}, "%", ""};
    if (compared) {
        eos.label = label;
        eos.value = factor * compared->eos;
        eos.note =
            "equation of state, " + formatMask(compared->difference_percent(), "+0.00;-0.00;0.00") + " %";
        record.label = label;
        record.value = factor * compared->record;
        difference.value = compared->difference_percent();
        record.note = "record, " + std::string(equation);
    }
    for (Field* field : {&eos, &record, &difference}) block.fields.push_back(std::move(*field));
}

}  // namespace

Block comparison_block(const RecordComparison& comparison, const Units& units, const UnitFactors& factors) {
    const bool any = comparison.any();
    Block block{
        "comparison",
        any ? "The record beside the equation of state, both saturated at T = " + shown(comparison.T) + " K"
            : "",
        {{"T", "", any ? Value(comparison.T) : Value(), "K", ""}},
        any ? Layout::list : Layout::json};
    add_line(block, "p", "p(LV)", "kPa", 1.0, comparison.p, trim(evp_info(comparison.evp).text));
    block.fields.push_back({"evp", "", comparison.p ? Value(number_of(comparison.evp)) : Value(), "", ""});
    add_line(block, "rho_L", "rho(L)", "kg/m^3", 1.0, comparison.rhoL, "rho(L) = Fu(T)");
    add_line(block, "hLV", "delta(LV)h", std::string(unit_text(units, Quantity::hLV)),
             display_factor(factors, Quantity::hLV), comparison.hLV, "delta(LV)h = Fu(T)");
    return block;
}

Block comparison_block(const Fluid& fluid, const Outcome& outcome, const Units& units) {
    return comparison_block(compare_with_record(fluid, outcome), units,
                            outcome_factors(fluid, outcome, units));
}

}  // namespace quom
