#include "console/calc_setup.h"

#include "base/number_text.h"
#include "calc/calc_input.h"
#include "calc/calc_partial.h"
#include "calc/mode_table.h"

namespace quom::console {
namespace {

constexpr int process_mode = 12, empty_mode = 23;

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
    std::optional<double> SpecifiedValues::*value;
    unsigned specified;
    BoxValue box;
    const char* unit;
    const char* help;
};
constexpr ValueOption value_options[] = {
    {"--T", &SpecifiedValues::T, spec_T | spec_tank, BoxValue::T, "K", "Temperature"},
    {"--p", &SpecifiedValues::p, spec_p, BoxValue::p, "kPa", "Pressure"},
    {"--rho", &SpecifiedValues::rho, spec_rhoV | spec_rhoL, BoxValue::density, "kg/m^3", "Density"},
    {"--m", &SpecifiedValues::m, spec_tank, BoxValue::tank_m, "kg", "Mass in the tank"},
    {"--V", &SpecifiedValues::V, spec_tank, BoxValue::tank_V, "m^3", "Volume of the tank"},
};

}  // namespace

void add_specified_values(CLI::App& app, SpecifiedValues& values) {
    for (const ValueOption& option : value_options)
        add_number(app, option.name, values.*option.value, Range::above_zero, option.unit, option.help);
}

void add_mode(CLI::App& app, int& mode) {
    app.add_option_function<std::string>(
           "--mode",
           [&mode](const std::string& text) {
               const std::optional<double> x = read_number(text);
               const bool whole = x && *x >= 1.0 && *x <= last_mode && *x == static_cast<int>(*x);
               mode = whole ? static_cast<int>(*x) : 0;
               if (mode == process_mode)
                   throw CLI::ValidationError("--mode",
                                              "mode 12 is a process line; \"quomc process\" runs it.");
               if (!whole || mode == empty_mode)
                   throw CLI::ValidationError("--mode",
                                              "\"" + text +
                                                  "\" is no mode of calculation; 1 to 24 are, without "
                                                  "12 and 23.");
           },
           "Mode of calculation")
        ->required()
        ->type_name("N");
}

Refused set_up_mode(Program& program, int mode) {
    Session& s = program.session;
    CalcState& calc = s.calc;
    calc.CalcMode = mode;
    s.options.BatchMode = false;
    const bool benson = calc.BensonRhoL;
    Answering answering(mode == 3 ? program.options.answer : std::nullopt);
    Messages* const messages = s.messages;
    s.messages = &answering;
    const Dispatch way = CalcDispatch(s);
    std::optional<Message> refused;
    if (way.selection) refused = SelectPartial(s, mode != 10 && !calc.VLEAssumed && s.models.Konzept, benson);
    s.messages = messages;
    if (way.refused)
        return Fault{status_no_result, "Mode " + std::to_string(mode) + ": " + answering.refusal + "."};
    if (refused) return Fault{status_no_result, "Mode " + std::to_string(mode) + ": " + refused->text + "."};
    return {};
}

Refused take_values(Session& s, int mode, const SpecifiedValues& values) {
    const unsigned specified = mode_entry(mode)->specified;
    const InputForm form = input_form(s, s.calc.ParInputKind, {});
    BoxValues boxes{};
    for (const ValueOption& option : value_options) {
        const std::optional<double>& value = values.*option.value;
        std::size_t box = 0;
        while (box < form.par.size() && form.par[box].value != option.box) ++box;
        if (box == form.par.size()) {
            if (!value) continue;
            return Fault{status_usage, std::string(option.name) + " is no value of mode " +
                                           std::to_string(mode) + " (" +
                                           std::string(mode_entry(mode)->menu_text) + ")."};
        }
        if (!value && (option.specified & specified))
            return Fault{status_usage, "mode " + std::to_string(mode) + " (" +
                                           std::string(mode_entry(mode)->menu_text) + ") needs " +
                                           option.name + " [" + option.unit + "]."};
        boxes[box] = value.value_or(0.0);
    }
    if (const InputTaken taken = take_input(s, s.calc.ParInputKind, {}, boxes); taken.refusal)
        return Fault{status_usage, taken.refusal->text + "."};
    return {};
}

}  // namespace quom::console
