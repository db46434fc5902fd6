#include "console/calc_setup.h"

#include "base/number_text.h"
#include "forms/calculation_form.h"
#include "forms/partial_form.h"

namespace quom {
namespace {

// The answer to the question of mode 3, without writing it.
class Answering : public Messages {
 public:
    explicit Answering(std::optional<Answer> answer) : answer_(answer) {}
    Answer ask(const Message& message) override {
        if (message.buttons == Buttons::ok) refusal = message.text;
        return answer_.value_or(message.default_button);
    }
    std::string refusal;

 private:
    std::optional<Answer> answer_;
};

struct ValueOption {
    const char* name;
    std::optional<GivenValue> SpecifiedArguments::*argument;
    std::optional<double> SpecifiedValues::*value;
    std::optional<double> StateInput::*input;
    unsigned specified;
    std::array<BoxValue, 3> boxes;  // that take it
    Quantity quantity;
    const char* help;
};
constexpr ValueOption value_options[] = {
    {"--T",
     &SpecifiedArguments::T,
     &SpecifiedValues::T,
     &StateInput::T,
     spec_T | spec_tank,
     {BoxValue::T, BoxValue::T, BoxValue::T},
     Quantity::T,
     "Temperature"},
    {"--p",
     &SpecifiedArguments::p,
     &SpecifiedValues::p,
     &StateInput::p,
     spec_p,
     {BoxValue::p, BoxValue::pLV, BoxValue::p},
     Quantity::p,
     "Pressure"},
    {"--rho",
     &SpecifiedArguments::rho,
     &SpecifiedValues::rho,
     &StateInput::rho,
     spec_rhoV | spec_rhoL,
     {BoxValue::density, BoxValue::rhoL, BoxValue::rhoV},
     Quantity::rho,
     "Density"},
    {"--m",
     &SpecifiedArguments::m,
     &SpecifiedValues::m,
     &StateInput::m,
     spec_tank,
     {BoxValue::tank_m, BoxValue::tank_m, BoxValue::tank_m},
     Quantity::mass,
     "Mass in the tank"},
    {"--V",
     &SpecifiedArguments::V,
     &SpecifiedValues::V,
     &StateInput::V,
     spec_tank,
     {BoxValue::tank_V, BoxValue::tank_V, BoxValue::tank_V},
     Quantity::tank_volume,
     "Volume of the tank"},
};

std::string mode_text(const ModeInfo& mode) {
    return "mode " + std::to_string(number_of(mode.mode)) + " (" + std::string(mode.menu_text) + ")";
}

// "1 to 24 are, without 12 and 23".
std::string mode_numbers() {
    std::string without;
    for (const ModeInfo& mode : mode_list()) {
        if (!mode.on_console)
            without += (without.empty() ? "" : " and ") + std::to_string(number_of(mode.mode));
    }
    return std::to_string(number_of(mode_list().front().mode)) + " to " +
           std::to_string(number_of(mode_list().back().mode)) + " are, without " + without;
}

}  // namespace

void add_specified_values(CLI::App& app, SpecifiedArguments& arguments) {
    for (const ValueOption& option : value_options)
        add_quantity(app, option.name, arguments.*option.argument, option.quantity, NumberRange::above_zero,
                     option.help);
}

Refused convert(const SpecifiedArguments& arguments, double M, SpecifiedValues& into) {
    for (const ValueOption& option : value_options) {
        const std::optional<GivenValue>& given = arguments.*option.argument;
        if (!given) continue;
        const OwnValue own = own_value(*given, option.quantity, M);
        if (!own.fault.empty())
            return Fault{status_no_result, std::string(option.name) + ": " + own.fault + "."};
        into.*option.value = own.value;
    }
    return {};
}

void add_mode(CLI::App& app, Mode& mode) {
    app.add_option_function<std::string>(
           "--mode",
           [&mode](const std::string& text) {
               const std::optional<double> x = read_number(text);
               const bool whole = x && *x == round_half_even(*x) && *x > 0.0 && *x < 100.0;
               mode = whole ? mode_of(static_cast<int>(*x)) : Mode::none;
               if (mode_info(mode).family == ModeFamily::process)
                   throw CLI::ValidationError(
                       "--mode", "mode " + text + " is a process line; \"quomc process\" runs it.");
               if (mode == Mode::none || !mode_info(mode).on_console)
                   throw CLI::ValidationError(
                       "--mode", "\"" + text + "\" is no mode of calculation; " + mode_numbers() + ".");
           },
           "Mode of calculation")
        ->required()
        ->type_name("N");
}

Refused set_up_mode(Program& program, Mode mode) {
    Session& session = program.session;
    Document document = session.document;
    document.options.BatchMode = false;
    const std::string number = std::to_string(number_of(mode));
    Answering answering(mode == Mode::T_p ? program.options.answer : std::nullopt);
    const Dispatch way = CalcDispatch(document, mode, answering);
    if (way.refused) return Fault{status_no_result, "Mode " + number + ": " + answering.refusal + "."};
    const bool benson = document.calc.setup.BensonRhoL;
    document.calc = way.calc;
    document.calc.setup.BensonRhoL = benson;
    if (way.selection) {
        const bool global =
            mode != Mode::tank_partial && !document.calc.setup.VLEAssumed && document.models.Konzept;
        const PartialChoice choice = SelectPartial(*session.fluid, mode, document.calc.setup, global, benson);
        if (choice.refusal)
            return Fault{status_no_result, "Mode " + number + ": " + choice.refusal->text + "."};
        document.calc.setup = choice.setup;
    }
    commit(session, std::move(document));
    return {};
}

Refused take_values(Session& session, const SpecifiedValues& values) {
    Document document = session.document;
    const ModeInfo& mode = mode_info(document.calc.CalcMode);
    const int kind = input_kind(mode.mode);
    const InputForm form = input_form(document, kind, {});
    BoxValues boxes{};
    for (const ValueOption& option : value_options) {
        const std::optional<double>& value = values.*option.value;
        std::size_t box = 0;
        while (box < form.par.size() && std::ranges::count(option.boxes, form.par[box].value) == 0) ++box;
        const bool needed = option.specified & mode.specified;
        if (box == form.par.size()) {
            if (!value) continue;
            return Fault{status_usage, std::string(option.name) + " is no value of " + mode_text(mode) + "."};
        }
        if (!value && needed)
            return Fault{status_usage, mode_text(mode) + " needs " + option.name + " [" +
                                           std::string(units_of(option.quantity).front()) + "]."};
        boxes[box] = value.value_or(0.0);
    }
    const InputTaken taken = take_input(document, session.factors(), kind, {}, boxes);
    if (taken.refusal) return Fault{status_usage, taken.refusal->text + ": " + taken.rule};
    commit(session, std::move(document));
    return {};
}

StateInput exact_input(const Document& document, const SpecifiedValues& values) {
    StateInput input = state_input(document, 0);
    const unsigned specified = mode_info(input.mode).specified;
    for (const ValueOption& option : value_options) {
        if (option.specified & specified) input.*option.input = values.*option.value;
    }
    return input;
}

}  // namespace quom
