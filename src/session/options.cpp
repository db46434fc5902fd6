#include "session/options.h"

#include <algorithm>

#include "calc/quantities.h"

namespace quom {
namespace {

bool reduced_possible(const Session& s) {
    return s.substance.Tcr > TinyT && s.substance.pcr > TinyT && s.eos.vcrEOS > 0.0;
}

void refuse(const Session& s, std::string text) {
    s.tell({.title = "Execution not possible", .text = std::move(text), .kind = MessageKind::warning});
}

// Whether the units of the input can be formed; tells the user why not.
bool units_possible(const Session& s, const OptionsInput& input) {
    if (input.specific && static_cast<double>(s.substance.MolMass) < TinyT) {
        refuse(s, "For this substance the molar mass is missing.");
        return false;
    }
    if (!input.chkReduziert) return true;
    if (s.substance.Tcr < TinyT) {
        refuse(s, "For this substance the critical temperature is missing.");
        return false;
    }
    if (!reduced_possible(s)) {
        refuse(s,
               "The selected EOS does not provide V(cr) (critical molar volume).\n"
               "The desired option \"reduced quantities for T, p, v\" is thus not possible.");
        return false;
    }
    return true;
}

// A comma between numbers with a decimal comma: the user may take the semicolon instead.
char checked_delimiter(const Session& s, char sign, std::string_view title) {
    if (sign != ',' || !s.options.DezimalKomma) return sign;
    const Answer answer = s.tell({.title = std::string(title),
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

OptionsInput open_options(Session& s) {
    OptionsInput input;
    input.chkReduziert_enabled = reduced_possible(s);
    if (!input.chkReduziert_enabled && s.units.VolumeMode == 2) {
        s.units.VolumeMode = 0;
        set_unit_factors(s);
    }
    input.specific = s.units.EnergyMode == 3;
    input.chkReduziert = s.units.VolumeMode == 2;
    const Options& o = s.options;
    input.chkPartialKurve_enabled = s.models.VPhaseOnly;
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

bool set_unit_factors(Session& s) {
    Units& u = s.units;
    const bool possible = u.VolumeMode != 2 || reduced_possible(s);
    if (!possible) u.VolumeMode = 0;
    const double M = static_cast<double>(s.substance.MolMass);
    u.uFactor = unitFactor(s, u.TcrStart);
    u.vFactor = u.TFactor = u.pFactor = 1.0;
    if (u.VolumeMode == 1 && M > TinyT) u.vFactor = 1.0 / M;
    if (u.VolumeMode == 2) {
        u.vFactor = 1.0 / s.eos.vcrEOS;
        u.TFactor = 1.0 / s.substance.Tcr;
        u.pFactor = 1.0 / s.substance.pcr;
    }
    return possible;
}

OptionsResult apply_options(Session& s, const OptionsInput& input) {
    OptionsResult result;
    if (!units_possible(s, input)) return result;
    result.taken = true;

    const Units before = s.units;
    s.units.EnergyMode = input.specific ? 3 : 0;
    s.units.VolumeMode = input.chkReduziert ? 2 : (input.specific ? 1 : 0);
    if (input.chkReduziert && s.units.TcrStart == 0.0) s.units.TcrStart = s.substance.Tcr;
    set_unit_factors(s);
    const Units& after = s.units;
    result.units_changed = before.uFactor != after.uFactor || before.vFactor != after.vFactor ||
                           before.TFactor != after.TFactor || before.pFactor != after.pFactor;

    Options& o = s.options;
    o.ResetOnClose = input.chkUnloadGraph2D;
    o.ParSpeichern = input.chkParSpeichern;
    o.chkPartialKurve = input.chkPartialKurve;
    o.chkSKurveOhneKonnode = input.chkSKurveOhneKonnode;
    o.chkCurveTpRestricted = input.chkCurveTpRestricted;
    o.KurvenMischen = input.KurvenMischen;
    result.unload_diagram = result.units_changed && o.ResetOnClose;
    o.Dens = std::clamp(input.Dens, dens_min, dens_max);
    o.BatchMode = input.batch;
    result.menu = calc_menu_captions(input.batch);
    o.SepCSV = checked_delimiter(s, input.SepCSV, "Warning for CSV file");
    o.SepXY = checked_delimiter(s, input.SepXY, "Warning for XY file");
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
