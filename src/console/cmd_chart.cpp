// chart: a log p-h, T-s or h-s chart, as a picture, a chart file or its states.
#include <algorithm>
#include <memory>

#include "base/files.h"
#include "base/number_text.h"
#include "console/commands.h"
#include "console/diagram_output.h"
#include "console/picture_program.h"

namespace quom {
namespace {

struct ChartArguments {
    std::string substance, kind, reference, out;
    ModelOptions models;
    bool black = false;
    PictureArguments picture;
};

Fault wrong(std::string message) { return {status_usage, std::move(message)}; }

std::string list_of(std::span<const std::string_view> words) {
    std::string list;
    for (const std::string_view word : words) list += (list.empty() ? "" : "|") + std::string(word);
    return list;
}

template <class Choice>
Choice choice_of(const std::string& word, std::span<const std::string_view> words) {
    return static_cast<Choice>(std::ranges::find(words, word) - words.begin());
}

CLI::Option* add_choice(CLI::App& app, const std::string& name, std::string& into,
                        std::span<const std::string_view> words, const std::string& help) {
    return app.add_option(name, into, help)
        ->check([words](const std::string& text) {
            return std::ranges::find(words, text) != words.end()
                       ? std::string()
                       : "\"" + text + "\" is not possible; " + list_of(words) + " is right.";
        })
        ->type_name(list_of(words));
}

// --ref of all commands, which a chart extends by the states that its zero may lie at.
void add_reference(CLI::App& app, ChartArguments& a) {
    const std::string group = app.get_option("--ref")->get_group();
    app.remove_option(app.get_option("--ref"));
    app.add_option_function<std::string>(
           "--ref",
           [&a](const std::string& text) {
               const auto words = chart_reference_words();
               if (std::ranges::find(words, text) != words.end()) {
                   a.reference = text;
                   return;
               }
               const std::optional<double> code = read_number(text);
               if (!code || (*code != 1.0 && *code != 2.0 && *code != 10.0))
                   throw CLI::ValidationError("--ref", "\"" + text + "\" is not possible; " + list_of(words) +
                                                           " or 1, 2, 10 is right.");
               a.models.ref = static_cast<int>(*code);
           },
           "Zero of h and s: 0C, -40C, nbp, triple of the saturated liquid")
        ->type_name(list_of(chart_reference_words()) + "|CODE")
        ->group(group);
}

Refused check(const ChartArguments& a) {
    const std::string extension = extension_of(a.out);
    if (!is_picture(extension) && extension != "json" && extension != "csv")
        return wrong("--out: a file *.json, csv, svg, pdf, png, emf, wmf or bmp is right.");
    if (a.models.energy != 0 || a.models.volume != 0)
        return wrong("A chart takes its units by --units, not by --energy and --volume.");
    return {};
}

Report chart(Program& program, const ChartArguments& a) {
    if (const Refused refused = check(a)) return refusal("chart", *refused);
    if (const Refused refused = prepare(program, a.substance, a.models)) return refusal("chart", *refused);
    ChartOptions options;
    options.units = program.output_units;
    options.reference = choice_of<ChartReference>(a.reference, chart_reference_words());
    program.output_units = {};  // the report has no values of them
    ChartFile file{
        make_state_chart(*program.session.fluid, choice_of<ChartKind>(a.kind, chart_kind_words()), options),
        a.black};
    if (!file.chart.exists()) return refusal("chart", {status_no_result, file.chart.fault});
    const std::string extension = extension_of(a.out), path = absolute_path(a.out);
    if (is_picture(extension)) {
        if (const Refused refused = draw_picture(chart_bytes(file), a.out, a.picture))
            return refusal("chart", *refused);
    } else {
        const std::string fault =
            extension == "csv" ? write_file_atomic(path, chart_csv(file.chart)) : save_chart(path, file);
        if (!fault.empty()) return refusal("chart", {status_file, fault});
    }
    return chart_report(program.session, file, a.out);
}

}  // namespace

Action declare_chart(CLI::App& app) {
    const auto a = std::make_shared<ChartArguments>();
    a->reference = chart_reference_words().front();
    add_substance(app, a->substance);
    add_choice(app, "--kind", a->kind, chart_kind_words(), "log p-h, T-s or h-s")->required();
    app.add_option("--out", a->out, "Picture (svg, pdf, png, emf, wmf, bmp), chart file (json), states (csv)")
        ->required()
        ->type_name("FILE");
    app.add_flag("--black", a->black, "On black");
    add_picture_options(app, a->picture);
    add_model_options(app, a->models);
    add_reference(app, *a);
    return [a](Program& program) { return chart(program, *a); };
}

}  // namespace quom
