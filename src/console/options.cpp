#include "console/options.h"

#include <algorithm>
#include <functional>
#include <initializer_list>

#include "base/number_text.h"
#include "forms/reference_form.h"

namespace quom {
namespace {

constexpr const char* models_group = "Models (default: as the model window chooses)";
constexpr const char* reference_group = "Reference state and environment";
constexpr const char* unit_group = "Units of the output";

double checked_number(const std::string& name, const std::string& text, NumberRange range,
                      const std::string& unit) {
    const std::optional<double> x = read_number(text);
    const std::string quoted = "\"" + text + "\"";
    if (!x) {
        const bool comma = text.find(',') != std::string::npos;
        throw CLI::ValidationError(name, quoted + " is not a number; a number " +
                                             (comma ? "with a decimal point" : "such as 300 or 1.5E2") +
                                             " is right" + (unit.empty() ? "." : " [" + unit + "]."));
    }
    if (range == NumberRange::above_zero && !(*x > 0.0))
        throw CLI::ValidationError(name,
                                   text + " is not possible; a number above 0 is right [" + unit + "].");
    return *x;
}

// The number and unit of an option; q: whose unit it must be, none: any.
GivenValue checked_value(const std::string& name, const std::string& text, std::optional<Quantity> q,
                         NumberRange range) {
    const std::string own(q ? units_of(*q).front() : std::string_view());
    const std::optional<GivenValue> given = read_given_value(text);
    if (!given || given->unit.empty()) return {checked_number(name, text, range, own), {}};
    if (!q) return *given;
    constexpr double any_molar_mass = 1.0;
    const OwnValue value = own_value(*given, *q, any_molar_mass);
    if (!value.fault.empty()) throw CLI::ValidationError(name, value.fault + ".");
    if (range == NumberRange::above_zero && !(value.value > 0.0))
        throw CLI::ValidationError(name, text + " is not possible; a value above 0 " + own + " is right.");
    return *given;
}

// Adds an option that takes one of a few whole numbers; into is called with the number.
CLI::Option* add_code(CLI::App& app, const std::string& name, std::vector<int> codes, const std::string& help,
                      std::function<void(int)> into) {
    std::sort(codes.begin(), codes.end());
    return app
        .add_option_function<std::string>(
            name,
            [into = std::move(into), name, codes = std::move(codes)](const std::string& text) {
                const std::optional<double> x = read_number(text);
                const auto code =
                    std::find_if(codes.begin(), codes.end(), [&](int c) { return x && *x == c; });
                if (code == codes.end()) {
                    std::string list;
                    for (const int c : codes) list += (list.empty() ? "" : ", ") + std::to_string(c);
                    throw CLI::ValidationError(name, "\"" + text + "\" is no code; there are " + list + ".");
                }
                into(*code);
            },
            help)
        ->type_name("CODE");
}

// The numbers of a table of models.
template <class Rows>
std::vector<int> codes_of(const Rows& rows) {
    std::vector<int> codes;
    for (const auto& row : rows) codes.push_back(number_of(row.code));
    return codes;
}

template <class T>
struct Word {
    const char* word;
    T value;
};
template <class T>
CLI::Option* add_word(CLI::App& app, const std::string& name, std::optional<T>& into,
                      std::initializer_list<Word<T>> words, const std::string& help) {
    std::string form;
    for (const Word<T>& w : words) form += (form.empty() ? "" : "|") + std::string(w.word);
    return app
        .add_option_function<std::string>(
            name,
            [&into, name, form, list = std::vector<Word<T>>(words)](const std::string& text) {
                for (const Word<T>& w : list)
                    if (text == w.word) into = w.value;
                if (std::none_of(list.begin(), list.end(), [&](const Word<T>& w) { return text == w.word; }))
                    throw CLI::ValidationError(name,
                                               "\"" + text + "\" is not possible; " + form + " is right.");
            },
            help)
        ->type_name(form);
}

}  // namespace

CLI::Option* add_number(CLI::App& app, const std::string& name, std::optional<double>& into,
                        NumberRange range, const std::string& unit, const std::string& help) {
    return app
        .add_option_function<std::string>(
            name,
            [&into, name, range, unit](const std::string& text) {
                into = checked_number(name, text, range, unit);
            },
            help)
        ->type_name(unit.empty() ? "NUMBER" : unit);
}

CLI::Option* add_quantity(CLI::App& app, const std::string& name, std::optional<double>& into, Quantity q,
                          NumberRange range, const std::string& help) {
    return app
        .add_option_function<std::string>(
            name,
            [&into, name, q, range](const std::string& text) {
                into = own_value(checked_value(name, text, q, range), q, 0.0).value;
            },
            help)
        ->type_name(std::string(units_of(q).front()));
}

CLI::Option* add_quantity(CLI::App& app, const std::string& name, std::optional<GivenValue>& into,
                          std::optional<Quantity> q, NumberRange range, const std::string& help) {
    return app
        .add_option_function<std::string>(
            name,
            [&into, name, q, range](const std::string& text) { into = checked_value(name, text, q, range); },
            help)
        ->type_name(q ? std::string(units_of(*q).front()) : "NUMBER");
}

void add_global_options(CLI::App& app, GlobalOptions& options) {
    app.add_option("--program-folder", options.program_folder,
                   "Folder of the starter database and of all output")
        ->type_name("DIR");
    app.add_option("--db", options.db, "Substance database *.Q07 or *.Q06 (default: quom.q07)")
        ->type_name("FILE");
    app.add_flag("--json", options.json, "One JSON object in place of text");
    add_word<Answer>(app, "--answer", options.answer, {{"yes", Answer::yes}, {"no", Answer::no}},
                     "Answer to questions (default: that of the question)");
}

void add_model_options(CLI::App& app, ModelOptions& o) {
    const auto group = [](CLI::Option* option, const char* name) { option->group(name); };
    group(add_code(app, "--eos", codes_of(eos_list()), "Equation of state; see \"quomc models\"",
                   [&o](int code) { o.eos = eos_of(code); }),
          models_group);
    group(add_code(app, "--evp", codes_of(evp_list()), "Vapor pressure equation",
                   [&o](int code) { o.evp = evp_of(code); }),
          models_group);
    group(add_code(app, "--hlv", codes_of(hlv_list()), "Enthalpy of vaporization",
                   [&o](int code) { o.hlv = hlv_of(code); }),
          models_group);
    group(add_code(app, "--cp", {number_of(CpForm::polynomial), number_of(CpForm::sinh_cosh)},
                   "Ideal gas heat capacity", [&o](int code) { o.cp = cp_form_of(code); }),
          models_group);
    group(add_number(app, "--watson", o.watson, NumberRange::above_zero, "", "Watson exponent (of --hlv 4)"),
          models_group);
    group(add_word<bool>(app, "--concept", o.global, {{"global", true}, {"partial", false}},
                         "One equation for both phases, or for the vapor alone"),
          models_group);
    auto* benson = app.add_flag_callback(
        "--benson", [&o] { o.benson = true; }, "rho(L) by Benson's method");
    auto* database = app.add_flag_callback(
        "--database-rhol", [&o] { o.benson = false; }, "rho(L) by the equation of the database");
    benson->excludes(database);
    group(benson, models_group);
    group(database, models_group);
    group(app.add_option("--ji", o.ji, "Parameter file of --eos 7 and 8")->type_name("FILE"), models_group);
    group(add_number(app, "--b0", o.b0, NumberRange::any, "m^3/kmol", "--eos 10: B = b0 - b1/T^b2"),
          models_group);
    group(add_number(app, "--b1", o.b1, NumberRange::any, "", "b1 (default 0)"), models_group);
    group(add_number(app, "--b2", o.b2, NumberRange::any, "", "b2 (default 0)"), models_group);

    std::vector<int> references;
    for (const ReferenceOption& option : reference_options) references.push_back(option.RefKode);
    group(add_code(app, "--ref", references, "1 zero at --tref, --pref; 2, 10 formation (conventional; dfG)",
                   [&o](int code) { o.ref = code; }),
          reference_group);
    group(add_quantity(app, "--tref", o.tref, Quantity::T, NumberRange::above_zero,
                       "Reference temperature (298.15)"),
          reference_group);
    group(add_quantity(app, "--pref", o.pref, Quantity::p, NumberRange::above_zero,
                       "Reference pressure (101.325)"),
          reference_group);
    group(add_quantity(app, "--href", o.href, Quantity::h, NumberRange::any, "Added to every h"),
          reference_group);
    group(add_quantity(app, "--sref", o.sref, Quantity::s, NumberRange::any, "Added to every s"),
          reference_group);
    group(add_quantity(app, "--tenv", o.tenv, Quantity::T, NumberRange::above_zero,
                       "Environment of exergies (298.15)"),
          reference_group);
    group(add_quantity(app, "--penv", o.penv, Quantity::p, NumberRange::above_zero,
                       "Environment of exergies (101.325)"),
          reference_group);

    group(add_code(app, "--energy", {0, 1, 2, 3}, "kJ/kmol (0), K (1), per R T (2), kJ/kg (3)",
                   [&o](int code) { o.energy = code; }),
          unit_group);
    group(add_code(app, "--volume", {0, 1, 2}, "m^3/kmol (0), m^3/kg (1), v/v(cr) (2)",
                   [&o](int code) { o.volume = code; }),
          unit_group);
    group(app.add_option("--units", o.units, "By quantity: h=kJ/kg,T=C; energy=, entropy= for all of a kind")
              ->check([](const std::string& text) {
                  constexpr double any_molar_mass = 1.0;
                  const std::string fault = parse_units(text, any_molar_mass).fault;
                  return fault.empty() ? fault : fault + ".";
              })
              ->type_name("TEXT"),
          unit_group);
}

void add_substance(CLI::App& app, std::string& into) {
    app.add_option("SUBSTANCE", into, "Name (English or German), synonym, CAS number or '#index'")
        ->required()
        ->type_name("");
}

}  // namespace quom
