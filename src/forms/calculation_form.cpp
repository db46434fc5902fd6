#include "forms/calculation_form.h"

#include <algorithm>
#include <cmath>

#include "base/code_page.h"
#include "base/number_text.h"
#include "forms/partial_form.h"

namespace quom {
namespace {

bool asks_for_equilibrium(Messages& messages) {
    return messages.ask({.title = "T-p specification",
                         .text = "Do you intend to describe a VLE?\n"
                                 "Selecting \"Yes\" => the existence of a L-phase is assumed\n"
                                 "and a \"PATIAL calulation\" is carried out",
                         .buttons = Buttons::yes_no,
                         .default_button = Answer::no,
                         .kind = MessageKind::question}) == Answer::yes;
}

constexpr std::string_view label_T = "      T/K     ";
constexpr std::string_view label_p = "      p/kPa = ";

// Box of a density, or of a volume in the unit of the options.
InputBox density_box(const Units& units, const InputOptions& options) {
    struct Text {
        std::string_view label, hint;
    };
    static constexpr std::array<Text, 3> volumes = {{
        {"V/m^3/kmol = ", " Input molar volume, cf. \"Options\""},
        {"V/m^3/kg  = ", " Input specific volume, cf. \"Options\" "},
        {"V/(m^3/m^3)= ", " Input reduced volume, cf. \"Options\" "},
    }};
    if (!options.volume) return {BoxValue::density, "rho/kg/m^3 = ", " Input density kg/m^3 "};
    const Text& text = volumes[static_cast<std::size_t>(std::clamp(units.VolumeMode, 0, 2))];
    return {BoxValue::volume, text.label, text.hint};
}

// Without a vapor pressure equation the second value of an equilibrium can only be typed.
bool second_value_useful(const Document& document, const ModeInfo& mode) {
    if (document.models.EVPKode != Evp::none) return false;
    if (mode.family == ModeFamily::equilibrium) return !document.calc.setup.GlobalCalc;
    return mode.family == ModeFamily::vaporization && hlv_info(document.models.HLVKode).uses_evp;
}

void direct_boxes(const Document& document, const ModeInfo& mode, const InputOptions& options,
                  InputForm& form) {
    const unsigned specified = mode.specified;
    if (specified & spec_T) form.par.push_back({BoxValue::T, label_T, {}});
    if (specified & spec_p) form.par.push_back({BoxValue::p, label_p, {}});
    if (second_value_useful(document, mode)) {
        if (specified & spec_T) {
            form.par.push_back({BoxValue::p, "  p(LV)/kPa = ", {}, true});
        } else {
            form.par.push_back({BoxValue::T, "  T(LV)/K   = ", {}, true});
        }
    }
    if (specified & (spec_rhoV | spec_rhoL)) {
        form.par.push_back(density_box(document.units, options));
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

NumberRule rule_of(const InputBox& box) {
    return box.optional ? NumberRule::optional : NumberRule::above_zero;
}

InputTaken refused(std::size_t box, std::string rule) {
    return {.refusal = no_valid_input(), .box = box, .rule = std::move(rule)};
}

// Refuses the first box without a value that can be taken.
std::optional<InputTaken> refused_value(const InputForm& form, const BoxValues& boxes) {
    if (form.par.empty()) return refused(0, "There is nothing to calculate.");
    for (std::size_t i = 0; i < form.par.size(); ++i) {
        const InputBox& box = form.par[i];
        std::string rule = broken_rule(caption_parts(box.label).name, boxes[i], rule_of(box));
        if (!rule.empty()) return refused(i, std::move(rule));
    }
    return std::nullopt;
}

std::size_t box_of(const InputForm& form, BoxValue value) {
    for (std::size_t i = 0; i < form.par.size(); ++i) {
        if (form.par[i].value == value) return i;
    }
    return 0;
}

double molar_mass_of(const Document& document) {
    return static_cast<double>(document.substance.constants.MolMass);
}

// The density column that a mode reads at data point 0.
float TpRhoPoint::*density_column(const ModeInfo& mode) {
    return mode.specified & spec_rhoL ? &TpRhoPoint::rhoL : &TpRhoPoint::rhoV;
}

InputTaken take_reference_point(Document& document, const Named& value) {
    document.calc.setup.benson = {.TRefL = static_cast<float>(value(BoxValue::T)),
                                  .pLVRef = static_cast<float>(value(BoxValue::pLV)),
                                  .rhoLRef = static_cast<float>(value(BoxValue::rhoL)),
                                  .rhoVRef = static_cast<float>(value(BoxValue::rhoV))};
    return {};
}

// Why an amount or a volume has no mass or density: without M, or beyond what can be stored.
std::string not_convertible(const Document& document, const std::string& name, const char* size) {
    if (!(molar_mass_of(document) > 0.0))
        return name + " needs the molar mass, which the substance does not have.";
    return name + " is too " + size + ".";
}

InputTaken take_tank(Document& document, const InputOptions& options, const InputForm& form,
                     const Named& value) {
    const double m =
        options.amount ? value(BoxValue::tank_n) * molar_mass_of(document) : value(BoxValue::tank_m);
    if (!(static_cast<float>(m) > 0.0f))
        return refused(box_of(form, BoxValue::tank_n), not_convertible(document, "n", "small"));
    document.calc.tank = {.m = static_cast<float>(m),
                          .V = static_cast<float>(value(BoxValue::tank_V)),
                          .T = static_cast<float>(value(BoxValue::T))};
    return {.calculate = true};
}

InputTaken take_point(Document& document, const UnitFactors& factors, const ModeInfo& mode,
                      const InputOptions& options, const InputForm& form, const Named& value) {
    double rho = value(BoxValue::density);
    if (options.volume && form.optRhoV)
        rho = density_of_volume(molar_mass_of(document), factors.vFactor, value(BoxValue::volume));
    if (form.optRhoV && !(static_cast<float>(rho) > 0.0f))
        return refused(box_of(form, BoxValue::volume), not_convertible(document, "V", "large"));
    if (document.exp.points.empty()) document.exp.points.edit().resize(1);
    TpRhoPoint& point = document.exp.points.edit()[0];
    point = {};
    point.T = value(BoxValue::T);
    point.p = value(BoxValue::p);
    point.*density_column(mode) = static_cast<float>(rho);
    document.calc.CurrentPoint = 0;
    return {.calculate = true};
}

}  // namespace

int input_kind(Mode mode) {
    if (mode_info(mode).family == ModeFamily::tank) return input_tank;
    return mode == Mode::none ? input_none : input_direct + number_of(mode);
}

Mode mode_of_kind(int kind) { return kind > input_direct ? mode_of(kind - input_direct) : Mode::none; }

bool is_direct(const Document& document, Mode mode) {
    return !document.options.BatchMode || (mode_info(mode).specified & (spec_tank | spec_process)) != 0;
}

Dispatch CalcDispatch(const Document& document, Mode mode, Messages& messages) {
    Dispatch way;
    way.calc = document.calc;
    way.calc.CalcMode = mode == Mode::none ? Mode::T_rho : mode;
    mode = way.calc.CalcMode;
    const ModeInfo& info = mode_info(mode);
    const ModelSelection& models = document.models;
    const bool vapor_only = models.VPhaseOnly();
    const bool no_liquid = (info.specified & spec_rhoL) && vapor_only;
    if (no_liquid) messages.ask(refusal_message("possible only using a cubic EOS"));
    if (no_liquid || info.family == ModeFamily::none) {
        way.calc.CalcMode = Mode::none;
        way.refused = true;
        return way;
    }
    CalcSetup& setup = way.calc.setup;
    const bool direct = is_direct(document, mode);
    if (direct) way.ParInputKind = input_kind(mode);
    setup.VLEAssumed = mode == Mode::T_p && direct && asks_for_equilibrium(messages);
    if (info.family == ModeFamily::process) {
        way.process_input = true;
        return way;
    }
    const bool benson_hLV = info.family == ModeFamily::vaporization && models.HLVKode == Hlv::evp_benson;
    way.selection = info.family == ModeFamily::equilibrium || mode == Mode::tank_partial ||
                    setup.VLEAssumed || benson_hLV;
    way.result_window = true;
    way.parameter_input = direct;
    if (!way.selection && info.concept_of_models) setup.GlobalCalc = models.Konzept && !vapor_only;
    if (info.family == ModeFamily::tank) setup.GlobalCalc = mode == Mode::tank_global;
    return way;
}

std::optional<Quantity> quantity_of(BoxValue value) {
    switch (value) {
        case BoxValue::T:
            return Quantity::T;
        case BoxValue::p:
        case BoxValue::pLV:
            return Quantity::p;
        case BoxValue::density:
        case BoxValue::rhoL:
        case BoxValue::rhoV:
            return Quantity::rho;
        case BoxValue::volume:
            return Quantity::v;
        case BoxValue::tank_V:
            return Quantity::tank_volume;
        case BoxValue::tank_m:
        case BoxValue::tank_n:
            return Quantity::mass;
    }
    return std::nullopt;
}

InputForm input_form(const Document& document, int kind, const InputOptions& options) {
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
        form.caption = document.calc.setup.GlobalCalc ? "Tank calculation (\"GLOBAL\")"
                                                      : "Tank calculation (\"PARTIAL\")";
        form.title = mode_info(Mode::tank_global).list_title;
        form.optm_n = true;
        form.par = {{BoxValue::tank_V, "      V/m^3   ", {}},
                    options.amount ? InputBox{BoxValue::tank_n, "      n/kmol  ", {}}
                                   : InputBox{BoxValue::tank_m, "      m/kg    ", {}},
                    {BoxValue::T, label_T, {}}};
    } else if (const ModeInfo& mode = mode_info(mode_of_kind(kind)); mode.family != ModeFamily::none) {
        form.caption = "Direct calculation";
        form.title = trim(mode.list_title.empty() ? mode.menu_text : mode.list_title);
        direct_boxes(document, mode, options, form);
    }
    return form;
}

double density_of_volume(double M, double vFactor, double displayed_volume) {
    return displayed_volume > 0.0 ? M * vFactor / displayed_volume : 0.0;
}

double volume_of_density(double M, double vFactor, double rho) { return rho > 0.0 ? M * vFactor / rho : 0.0; }

InputTaken take_input(Document& document, const UnitFactors& factors, int kind, const InputOptions& options,
                      const BoxValues& boxes) {
    const InputForm form = input_form(document, kind, options);
    if (auto refusal = refused_value(form, boxes)) return *std::move(refusal);
    const Named value{form, boxes};
    if (kind == input_reference_point) return take_reference_point(document, value);
    if (kind == input_tank) return take_tank(document, options, form, value);
    return take_point(document, factors, mode_info(mode_of_kind(kind)), options, form, value);
}

InputTaken take_input(Document& document, const UnitFactors& factors, int kind, const InputOptions& options,
                      const BoxTexts& texts) {
    const InputForm form = input_form(document, kind, options);
    BoxValues boxes{};
    for (std::size_t i = 0; i < form.par.size(); ++i) {
        const InputBox& box = form.par[i];
        BoxNumber read = read_box(caption_parts(box.label).name, texts[i].text, rule_of(box), texts[i].zero);
        if (!read.fault.empty()) return refused(i, std::move(read.fault));
        boxes[i] = read.value;
    }
    return take_input(document, factors, kind, options, boxes);
}

BoxValues input_boxes(const Document& document, const UnitFactors& factors, int kind,
                      const InputOptions& options) {
    const InputForm form = input_form(document, kind, options);
    const double M = molar_mass_of(document);
    const TankInput& tank = document.calc.tank;
    const BensonReference& benson = document.calc.setup.benson;
    const TpRhoPoint point = document.exp.points.empty() ? TpRhoPoint{} : document.exp.points[0];
    const double rho = static_cast<double>(point.*density_column(mode_info(mode_of_kind(kind))));
    const auto T = [&] {
        if (kind == input_reference_point) return static_cast<double>(benson.TRefL);
        return kind == input_tank ? static_cast<double>(tank.T) : point.T;
    };
    const struct {
        BoxValue value;
        double x;
    } values[] = {
        {BoxValue::T, T()},
        {BoxValue::p, point.p},
        {BoxValue::pLV, static_cast<double>(benson.pLVRef)},
        {BoxValue::density, rho},
        {BoxValue::volume, volume_of_density(M, factors.vFactor, rho)},
        {BoxValue::rhoL, static_cast<double>(benson.rhoLRef)},
        {BoxValue::rhoV, static_cast<double>(benson.rhoVRef)},
        {BoxValue::tank_V, static_cast<double>(tank.V)},
        {BoxValue::tank_m, static_cast<double>(tank.m)},
        {BoxValue::tank_n, M > 0.0 ? static_cast<double>(tank.m) / M : 0.0},
    };
    BoxValues boxes{};
    for (std::size_t i = 0; i < form.par.size(); ++i)
        for (const auto& row : values)
            if (row.value == form.par[i].value) boxes[i] = row.x;
    return boxes;
}

BoxValues convert_boxes(const Document& document, const UnitFactors& factors, int kind,
                        const InputOptions& from, const InputOptions& to, BoxValues boxes) {
    const InputForm form = input_form(document, kind, from);
    const double M = molar_mass_of(document);
    for (std::size_t i = 0; i < form.par.size(); ++i) {
        const BoxValue value = form.par[i].value;
        double& box = boxes[i];
        if (!std::isfinite(box)) continue;
        if (value == BoxValue::tank_m && to.amount) box = M > 0.0 ? box / M : 0.0;
        if (value == BoxValue::tank_n && !to.amount) box *= M;
        if (value == BoxValue::density && to.volume) box = volume_of_density(M, factors.vFactor, box);
        if (value == BoxValue::volume && !to.volume) box = density_of_volume(M, factors.vFactor, box);
    }
    return boxes;
}

std::string box_text(int kind, BoxValue value, double x) {
    if (x == 0.0) return {};
    const bool is_double = kind > input_direct && (value == BoxValue::T || value == BoxValue::p);
    return is_double ? genNum(x) : genNum(static_cast<float>(x));
}

}  // namespace quom
