#include "calc/calc_input.h"

#include <algorithm>
#include <cmath>

#include "base/code_page.h"
#include "base/number_text.h"
#include "calc/calc_partial.h"
#include "calc/mode_table.h"
#include "engine/vaporization_enthalpy.h"

namespace quom {
namespace {

Message refusal(std::string text) {
    return {.title = "Execution not possible", .text = std::move(text), .kind = MessageKind::warning};
}

bool asks_for_equilibrium(Session& s) {
    return s.tell({.title = "T-p specification",
                   .text = "Do you intend to describe a VLE?\n"
                           "Selecting \"Yes\" => the existence of a L-phase is assumed\n"
                           "and a \"PATIAL calulation\" is carried out",
                   .buttons = Buttons::yes_no,
                   .default_button = Answer::no,
                   .kind = MessageKind::question}) == Answer::yes;
}

// Modes that read s.calc.GlobalCalc and do not pass the selection of the concept.
bool takes_concept_of_models(int mode) {
    return mode == 1 || mode == 2 || mode == 3 || mode == 6 || mode == 7 || mode == 8 || mode == 11 ||
           mode == 13;
}

constexpr std::string_view label_T = "      T/K     ";
constexpr std::string_view label_p = "      p/kPa = ";

// Box of a density, or of a volume in the unit of the options.
InputBox density_box(const Session& s, const InputOptions& options) {
    struct Text {
        std::string_view label, hint;
    };
    static constexpr std::array<Text, 3> volumes = {{
        {"V/m^3/kmol = ", " Input molar volume, cf. \"Options\""},
        {"V/m^3/kg  = ", " Input specific volume, cf. \"Options\" "},
        {"V/(m^3/m^3)= ", " Input reduced volume, cf. \"Options\" "},
    }};
    if (!options.volume) return {BoxValue::density, "rho/kg/m^3 = ", " Input density kg/m^3 "};
    const Text& text = volumes[static_cast<std::size_t>(std::clamp(s.units.VolumeMode, 0, 2))];
    return {BoxValue::volume, text.label, text.hint};
}

// Without a vapor pressure equation the second value of an equilibrium can only be typed.
bool second_value_useful(const Session& s, int mode) {
    if (s.models.EVPKode != 0) return false;
    if (mode == 4 || mode == 5) return !s.calc.GlobalCalc;
    const int model = s.models.HLVKode;
    return (mode == 6 || mode == 7) &&
           (model == hlv_chen || model == hlv_evp_rhoL || model == hlv_evp_benson);
}

void direct_boxes(const Session& s, int mode, const InputOptions& options, InputForm& form) {
    const ModeEntry* entry = mode_entry(mode);
    const unsigned specified = entry ? entry->specified : 0u;
    if (specified & spec_T) form.par.push_back({BoxValue::T, label_T, {}});
    if (specified & spec_p) form.par.push_back({BoxValue::p, label_p, {}});
    if (second_value_useful(s, mode)) {
        if (specified & spec_T) {
            form.par.push_back({BoxValue::p, "  p(LV)/kPa = ", {}, true});
        } else {
            form.par.push_back({BoxValue::T, "  T(LV)/K   = ", {}, true});
        }
    }
    if (specified & (spec_rhoV | spec_rhoL)) {
        form.par.push_back(density_box(s, options));
        form.optRhoV = true;
    }
}

// Values of the boxes by what they mean; 0 where the form has none.
struct Named {
    const InputForm& form;
    const BoxValues& boxes;
    double operator()(BoxValue value) const {
        for (std::size_t i = 0; i < form.par.size(); ++i) {
            if (form.par[i].value == value) return boxes[i];
        }
        return 0.0;
    }
};

// The first box without a value that can be taken; none when all have one.
std::optional<std::size_t> faulty_box(const InputForm& form, const BoxValues& boxes) {
    for (std::size_t i = 0; i < form.par.size(); ++i) {
        const auto stored = static_cast<float>(boxes[i]);  // most are kept as singles
        if (!std::isfinite(stored)) return i;
        if (form.par[i].optional ? stored < 0.0f : !(stored > 0.0f)) return i;
    }
    return form.par.empty() ? std::optional<std::size_t>(0) : std::nullopt;
}

std::size_t box_of(const InputForm& form, BoxValue value) {
    for (std::size_t i = 0; i < form.par.size(); ++i) {
        if (form.par[i].value == value) return i;
    }
    return 0;
}

}  // namespace

Message no_valid_input() { return refusal("no valid input"); }

bool is_direct(const Session& s, int mode) {
    return !s.options.BatchMode || mode == 9 || mode == 10 || mode == 12;
}

Dispatch CalcDispatch(Session& s) {
    CalcState& calc = s.calc;
    if (calc.CalcMode == 0) calc.CalcMode = 1;
    const int mode = calc.CalcMode;
    if (mode_entry(mode) == nullptr) return {.refused = true};
    if (mode == 2 && s.models.VPhaseOnly) {
        s.tell(refusal("possible only using a cubic EOS"));
        calc.CalcMode = 0;
        return {.refused = true};
    }
    const bool direct = is_direct(s, mode);
    if (direct) calc.ParInputKind = mode == 9 || mode == 10 ? input_tank : input_direct + mode;
    calc.VLEAssumed = mode == 3 && direct && asks_for_equilibrium(s);

    Dispatch way;
    if (mode == 12) {
        way.process_input = true;
        return way;
    }
    const bool benson_hLV = (mode == 6 || mode == 7) && s.models.HLVKode == hlv_evp_benson;
    way.selection = mode == 4 || mode == 5 || mode == 10 || calc.VLEAssumed || benson_hLV;
    way.result_window = true;
    way.parameter_input = direct;
    if (!way.selection && takes_concept_of_models(mode))
        calc.GlobalCalc = s.models.Konzept && !s.models.VPhaseOnly;
    if (mode == 9 || mode == 10) calc.GlobalCalc = mode == 9;
    return way;
}

InputRecord input_record(const Session& s) {
    const CalcState& c = s.calc;
    return {.CalcMode = c.CalcMode,
            .ParInputKind = c.ParInputKind,
            .GlobalCalc = c.GlobalCalc,
            .BensonRhoL = c.BensonRhoL,
            .RhoLWanted = c.RhoLWanted,
            .VLEAssumed = c.VLEAssumed,
            .benson = s.benson};
}

void put_back(Session& s, const InputRecord& record) {
    CalcState& c = s.calc;
    c.CalcMode = record.CalcMode;
    c.ParInputKind = record.ParInputKind;
    c.GlobalCalc = record.GlobalCalc;
    c.BensonRhoL = record.BensonRhoL;
    c.RhoLWanted = record.RhoLWanted;
    c.VLEAssumed = record.VLEAssumed;
    s.benson = record.benson;
}

InputForm input_form(const Session& s, int kind, const InputOptions& options) {
    InputForm form;
    form.button = "Calculate";
    if (kind == input_reference_point) {
        form.caption = "Input: Reference Point";
        form.title = partial_reference_title;
        form.button = "O.K.";
        form.par = {{BoxValue::T, "        T/K = ", {}},
                    {BoxValue::pLV, "  p(LV)/kPa = ", {}},
                    {BoxValue::rhoL, "rho(L)/kg/m^3= ", {}},
                    {BoxValue::rhoV, "rho_V/kg/m^3= ", {}}};
    } else if (kind == input_tank) {
        form.caption = s.calc.GlobalCalc ? "Tank calculation (\"GLOBAL\")" : "Tank calculation (\"PARTIAL\")";
        form.title = mode_entry(9)->list_title;
        form.optm_n = true;
        form.par = {{BoxValue::tank_V, "      V/m^3   ", {}},
                    options.amount ? InputBox{BoxValue::tank_n, "      n/kmol  ", {}}
                                   : InputBox{BoxValue::tank_m, "      m/kg    ", {}},
                    {BoxValue::T, label_T, {}}};
    } else if (kind > input_direct && kind <= input_direct + last_mode) {
        const ModeEntry& entry = *mode_entry(kind - input_direct);
        form.caption = "Direct calculation";
        form.title = trim(entry.list_title.empty() ? entry.menu_text : entry.list_title);
        direct_boxes(s, kind - input_direct, options, form);
    }
    return form;
}

std::optional<double> box_number(std::string_view text) {
    std::string number(trim(text));
    if (number.empty()) return 0.0;
    std::replace(number.begin(), number.end(), ',', '.');
    const std::optional<double> value = read_number(number);
    return value && std::isfinite(*value) ? value : std::nullopt;
}

double density_of_volume(const Session& s, double displayed_volume) {
    if (!(displayed_volume > 0.0)) return 0.0;
    return static_cast<double>(s.substance.MolMass) * s.units.vFactor / displayed_volume;
}

double volume_of_density(const Session& s, double rho) {
    if (!(rho > 0.0)) return 0.0;
    return static_cast<double>(s.substance.MolMass) * s.units.vFactor / rho;
}

InputTaken take_input(Session& s, int kind, const InputOptions& options, const BoxValues& boxes) {
    const InputForm form = input_form(s, kind, options);
    if (const auto box = faulty_box(form, boxes)) return {.refusal = no_valid_input(), .box = *box};
    const Named value{form, boxes};
    const double M = static_cast<double>(s.substance.MolMass);
    if (kind == input_reference_point) {
        s.benson.TRefL = static_cast<float>(value(BoxValue::T));
        s.benson.pLVRef = static_cast<float>(value(BoxValue::pLV));
        s.benson.rhoLRef = static_cast<float>(value(BoxValue::rhoL));
        s.benson.rhoVRef = static_cast<float>(value(BoxValue::rhoV));
        return {};
    }
    if (kind == input_tank) {
        const double m = options.amount ? value(BoxValue::tank_n) * M : value(BoxValue::tank_m);
        if (!(m > 0.0)) return {.refusal = no_valid_input(), .box = box_of(form, BoxValue::tank_n)};
        s.calc.tank = {.m = static_cast<float>(m),
                       .V = static_cast<float>(value(BoxValue::tank_V)),
                       .T = static_cast<float>(value(BoxValue::T))};
        return {.calculate = true};
    }
    const unsigned specified = mode_entry(kind - input_direct)->specified;
    double rho = value(BoxValue::density);
    if (options.volume && form.optRhoV) rho = density_of_volume(s, value(BoxValue::volume));
    if (form.optRhoV && !(rho > 0.0))
        return {.refusal = no_valid_input(), .box = box_of(form, BoxValue::volume)};
    if (s.exp.points.empty()) s.exp.points.resize(1);
    TpRhoPoint& point = s.exp.points[0];
    point = {};
    point.T = value(BoxValue::T);
    point.p = value(BoxValue::p);
    (specified & spec_rhoL ? point.rhoL : point.rhoV) = static_cast<float>(rho);
    s.exp.CurrentPoint = 0;
    return {.calculate = true};
}

BoxValues input_boxes(const Session& s, int kind, const InputOptions& options) {
    const InputForm form = input_form(s, kind, options);
    const double M = static_cast<double>(s.substance.MolMass);
    const TankInput& tank = s.calc.tank;
    const bool reference = kind == input_reference_point;
    const TpRhoPoint point = s.exp.points.empty() ? TpRhoPoint{} : s.exp.points[0];
    const double rho = static_cast<double>(kind == input_direct + 2 ? point.rhoL : point.rhoV);
    BoxValues boxes{};
    for (std::size_t i = 0; i < form.par.size(); ++i) {
        double& box = boxes[i];
        switch (form.par[i].value) {
            case BoxValue::T:
                box = reference            ? static_cast<double>(s.benson.TRefL)
                      : kind == input_tank ? static_cast<double>(tank.T)
                                           : point.T;
                break;
            case BoxValue::p:
                box = point.p;
                break;
            case BoxValue::pLV:
                box = static_cast<double>(s.benson.pLVRef);
                break;
            case BoxValue::density:
                box = rho;
                break;
            case BoxValue::volume:
                box = volume_of_density(s, rho);
                break;
            case BoxValue::rhoL:
                box = static_cast<double>(s.benson.rhoLRef);
                break;
            case BoxValue::rhoV:
                box = static_cast<double>(s.benson.rhoVRef);
                break;
            case BoxValue::tank_V:
                box = static_cast<double>(tank.V);
                break;
            case BoxValue::tank_m:
                box = static_cast<double>(tank.m);
                break;
            case BoxValue::tank_n:
                box = M > 0.0 ? static_cast<double>(tank.m) / M : 0.0;
                break;
        }
    }
    return boxes;
}

BoxValues convert_boxes(const Session& s, int kind, const InputOptions& from, const InputOptions& to,
                        BoxValues boxes) {
    const InputForm form = input_form(s, kind, from);
    const double M = static_cast<double>(s.substance.MolMass);
    for (std::size_t i = 0; i < form.par.size(); ++i) {
        const BoxValue value = form.par[i].value;
        if (!std::isfinite(boxes[i])) continue;
        if (value == BoxValue::tank_m && to.amount) boxes[i] = M > 0.0 ? boxes[i] / M : 0.0;
        if (value == BoxValue::tank_n && !to.amount) boxes[i] *= M;
        if (value == BoxValue::density && to.volume) boxes[i] = volume_of_density(s, boxes[i]);
        if (value == BoxValue::volume && !to.volume) boxes[i] = density_of_volume(s, boxes[i]);
    }
    return boxes;
}

std::string box_text(int kind, BoxValue value, double x) {
    if (x == 0.0) return {};
    const bool is_double = kind > input_direct && (value == BoxValue::T || value == BoxValue::p);
    return is_double ? genNum(x) : genNum(static_cast<float>(x));
}

VirialInput virial_input(const Session& s) { return {s.eos.EOSb, s.eos.EOSnb, s.eos.EOSm}; }

std::optional<Message> take_virial_input(Session& s, const VirialInput& input) {
    if (!std::isfinite(input.b0) || !std::isfinite(input.b1) || !std::isfinite(input.b2))
        return no_valid_input();
    s.eos.EOSb = input.b0;
    s.eos.EOSnb = input.b1;
    s.eos.EOSm = input.b2;
    return std::nullopt;
}

}  // namespace quom
