#include "report/selection_report.h"

#include "base/code_page.h"
#include "engine/ideal_gas.h"
#include "quantities/quantity_table.h"

namespace quom {

namespace {

// h and s of the ideal gas at the reference point, with their offsets.
struct ReferencePointValues {
    double T = 0, p = 0, h = 0, s = 0;
};
ReferencePointValues reference_values(const Fluid& fluid) {
    const ReferenceConstants zero = RefConst(fluid.substance, fluid.reference, 0.0);
    return {.T = zero.TRef0,
            .p = zero.pRef0,
            .h = zero.h0 + fluid.reference.hOffset,
            .s = zero.s0 + fluid.reference.sOffset};
}

// The unit of displayed values; what a pure number is divided by.
std::string told_unit(const Units& units, Quantity q) {
    const std::string_view unit = unit_text(units, q);
    if (q == Quantity::v && units.VolumeMode == reduced_volume) return "v(cr)";
    if (!unit.empty()) return std::string(unit);
    return quantity_info(q).kind == UnitKind::energy ? "R T" : "R";
}

}  // namespace

std::string substance_head(const SubstanceConstants& substance) {
    std::string head = substance.StoffName;
    for (const std::string& part : {substance.StoffFormulaCompact, substance.StoffCAS})
        if (!trim(part).empty()) head += "  " + std::string(trim(part));
    return head;
}

std::string models_head(const ModelSelection& models) {
    return std::string(trim(eos_info(models.EOSKode).text)) + ", " +
           (models.Konzept ? "GLOBAL concept" : "PARTIAL concept");
}

std::string reference_text(const Fluid& fluid) {
    if (fluid.models.cpKode == CpForm::none) return "no cp(idG), so no absolute h and s";
    const ReferencePointValues zero = reference_values(fluid);
    const bool zeros = zero.h == 0.0 && zero.s == 0.0;
    const std::string values =
        zeros ? "h = s = 0" : "h = " + shown(zero.h) + " kJ/kmol, s = " + shown(zero.s) + " kJ/(kmol K)";
    return values + " of the ideal gas at " + shown(zero.T) + " K, " + shown(zero.p) + " kPa";
}

std::string models_text(const ModelSelection& models) {
    std::string text = models_head(models);
    const auto add = [&text](const char* of, std::string_view model) {
        text += std::string(", ") + of + " ";
        for (const char c : trim(model))
            if (c != ' ' || text.back() != ' ') text += c;
    };
    if (models.EVPKode != Evp::none) add("p(LV):", evp_info(models.EVPKode).text);
    if (models.HLVKode != Hlv::none) add("delta(LV)h:", hlv_info(models.HLVKode).text);
    if (models.cpKode != CpForm::none) add("cp(idG):", cp_info(models.cpKode).text);
    return text;
}

Block substance_block(const SubstanceConstants& substance, int index) {
    return {"substance",
            "",
            {{"index", "#", index, "", ""},
             {"StoffName", "name", substance.StoffName, "", ""},
             {"StoffFormula", "formula", remark(substance.StoffFormulaCompact), "", ""},
             {"StoffCAS", "CAS", remark(std::string(trim(substance.StoffCAS))), "", ""}},
            Layout::json};
}

Block models_block(const ModelSelection& models) {
    return {"models",
            "",
            {{"EOSKode", "EOS", number_of(models.EOSKode), "", ""},
             {"EVPKode", "EVP", number_of(models.EVPKode), "", ""},
             {"HLVKode", "delta(LV)h", number_of(models.HLVKode), "", ""},
             {"cpKode", "cp(idG)", number_of(models.cpKode), "", ""},
             {"Konzept", "concept", models.Konzept ? "GLOBAL" : "PARTIAL", "", ""}},
            Layout::json};
}

Block reference_block(const Fluid& fluid) {
    const ReferencePointValues zero = reference_values(fluid);
    return {"reference",
            "",
            {{"RefKode", "reference", fluid.reference.RefKode, "", ""},
             {"TRef0", "T0", zero.T, "K", ""},
             {"pRef0", "p0", zero.p, "kPa", ""},
             {"h0", "h0", zero.h, "kJ/kmol", "", Quantity::h},
             {"s0", "s0", zero.s, "kJ/(kmol K)", "", Quantity::s},
             {"TEnv", "T(surr)", fluid.reference.TEnv, "K", ""},
             {"pEnv", "p(surr)", fluid.reference.pEnv, "kPa", ""}},
            Layout::json};
}

Footer footer_of(const Fluid& fluid, const Units& units) {
    const SubstanceConstants& substance = fluid.substance;
    Footer footer;
    footer.basis = substance.StoffName;
    if (!trim(substance.StoffCAS).empty()) footer.basis += ", " + std::string(trim(substance.StoffCAS));
    footer.basis += "; " + models_text(fluid.models) + "; " + reference_text(fluid);
    for (const Quantity q : {Quantity::h, Quantity::s, Quantity::v}) {
        const std::string symbol(quantity_info(q).symbol);
        footer.quantities.push_back({symbol, symbol, {}, told_unit(units, q), ""});
    }
    return footer;
}

}  // namespace quom
