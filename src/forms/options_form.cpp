#include "forms/options_form.h"

#include <algorithm>

#include "base/constants.h"
#include "engine/unit_factors.h"
#include "forms/refusal.h"

namespace quom {
namespace {

// A comma between numbers with a decimal comma: the user may take the semicolon instead.
char checked_delimiter(const Options& options, char sign, std::string_view title, Messages& messages) {
    if (sign != ',' || !options.DezimalKomma) return sign;
    const Answer answer = messages.ask({.title = std::string(title),
                                        .text = "With computer setting \"Germany\" (decimal point = comma)\n"
                                                " the comma as separator is not useful; \n"
                                                "Select semicolon?",
                                        .buttons = Buttons::yes_no,
                                        .default_button = Answer::yes,
                                        .kind = MessageKind::question});
    return answer == Answer::yes ? ';' : sign;
}

}  // namespace

int delimiter_index(char sign) {
    for (std::size_t i = 0; i < delimiters.size(); ++i) {
        if (delimiters[i].sign == sign) return static_cast<int>(i);
    }
    return 0;
}

bool take_back_reduced(Document& document, const Fluid& fluid) {
    int& mode = document.units.VolumeMode;
    if (mode != reduced_volume || !unit_refusal(fluid, 0, reduced_volume)) return false;
    mode = volume_molar;
    return true;
}

OptionsInput open_options(const Document& document, const Fluid& fluid) {
    const Units& units = document.units;
    OptionsInput input;
    input.chkReduziert_enabled = !unit_refusal(fluid, 0, reduced_volume);
    input.specific = units.EnergyMode == energy_per_mass;
    input.chkReduziert = units.VolumeMode == reduced_volume && input.chkReduziert_enabled;
    input.chkPartialKurve_enabled = document.models.VPhaseOnly();
    const Options& o = document.options;
    input.chkUnloadGraph2D = o.ResetOnClose;
    input.chkParSpeichern = o.ParSpeichern;
    input.chkPartialKurve = o.chkPartialKurve;
    input.chkSKurveOhneKonnode = o.chkSKurveOhneKonnode;
    input.chkCurveTpRestricted = o.chkCurveTpRestricted;
    input.KurvenMischen = o.KurvenMischen;
    input.Dens = o.Dens;
    input.batch = o.BatchMode;
    input.SepCSV = o.SepCSV;
    input.SepXY = o.SepXY;
    return input;
}

std::optional<Message> unit_refusal(const Fluid& fluid, int EnergyMode, int VolumeMode) {
    const SubstanceConstants& c = fluid.substance;
    if ((EnergyMode == energy_per_mass || VolumeMode == volume_per_mass) &&
        static_cast<double>(c.MolMass) < TinyT)
        return refusal_message("For this substance the molar mass is missing.");
    if (VolumeMode != reduced_volume) return std::nullopt;
    if (c.Tcr < TinyT) return refusal_message("For this substance the critical temperature is missing.");
    if (c.pcr > TinyT && fluid.eos.vcrEOS > 0.0) return std::nullopt;
    return refusal_message(
        "The selected EOS does not provide V(cr) (critical molar volume).\n"
        "The desired option \"reduced quantities for T, p, v\" is thus not possible.");
}

std::optional<Message> take_units(Document& document, const Fluid& fluid, int EnergyMode, int VolumeMode) {
    if (auto refusal = unit_refusal(fluid, EnergyMode, VolumeMode)) return refusal;
    Units& units = document.units;
    units.EnergyMode = EnergyMode;
    units.VolumeMode = VolumeMode;
    if (VolumeMode == reduced_volume && units.TcrStart == 0.0) units.TcrStart = fluid.substance.Tcr;
    return std::nullopt;
}

OptionsResult apply_options(Document& document, const Fluid& fluid, const OptionsInput& input,
                            Messages& messages) {
    OptionsResult result;
    const UnitFactors before = unit_factors(fluid, document.units);
    const int volume = input.chkReduziert ? reduced_volume : (input.specific ? volume_per_mass : 0);
    if (const auto refusal = take_units(document, fluid, input.specific ? energy_per_mass : 0, volume)) {
        messages.ask(*refusal);
        return result;
    }
    result.taken = true;
    result.units_changed = before != unit_factors(fluid, document.units);

    Options& o = document.options;
    o.ResetOnClose = input.chkUnloadGraph2D;
    o.ParSpeichern = input.chkParSpeichern;
    o.chkPartialKurve = input.chkPartialKurve;
    o.chkSKurveOhneKonnode = input.chkSKurveOhneKonnode;
    o.chkCurveTpRestricted = input.chkCurveTpRestricted;
    o.KurvenMischen = input.KurvenMischen;
    result.unload_diagram = result.units_changed && o.ResetOnClose;
    o.Dens = std::clamp(input.Dens, dens_min, dens_max);
    o.BatchMode = input.batch;
    o.SepCSV = checked_delimiter(o, input.SepCSV, "Warning for CSV file", messages);
    o.SepXY = checked_delimiter(o, input.SepXY, "Warning for XY file", messages);
    return result;
}

std::vector<MenuCaption> calc_menu_captions(bool batch) {
    if (batch) {
        return {{0, "columns T, rho(V) => p, state L/V     + thermod. Fu."},
                {1, "columns T, rho(L) => p, state L/V     + thermod. Fu."},
                {2, "columns T, p         => rho, state L/V  + thermod. Fu."},
                {3, "columns p, rho(V) => T, state L/V     + thermod. Fu."}};
    }
    return {{0, "T, rho    => p, State L/V     + Functions"},
            {1, "T, rho(L) => p, State L/V     + Functions"},
            {2, "T, p         => rho, state L/V  + thermod. Fu."},
            {3, "p, rho      => T, state L/V     + thermod. Fu."}};
}

}  // namespace quom
