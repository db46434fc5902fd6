// diagram: a sheet with curves, as a picture, a diagram file or its data.
#include <algorithm>
#include <memory>

#include "base/files.h"
#include "console/commands.h"
#include "console/diagram_output.h"
#include "console/diagram_run.h"
#include "console/picture_program.h"
#include "diagrams/diagram_file.h"
#include "report/sheet_columns.h"

namespace quom {
namespace {

struct DiagramArguments {
    std::string substance, curves, out;
    std::vector<std::string> marks;
    ModelOptions models;
    DiagramRequest request;
    PictureArguments picture;
};

Fault wrong(std::string message) { return {status_usage, std::move(message)}; }

constexpr std::string_view data_formats[] = {"oc2", "csv", "json"};

Refused check_out(const std::string& out) {
    const std::string extension = extension_of(out);
    if (is_picture(extension) || std::ranges::find(data_formats, extension) != std::end(data_formats))
        return {};
    return wrong("--out: a file *.svg, pdf, png, emf, wmf, bmp, oc2, csv or json is right.");
}

// Overlays stand in the request already; the marks come behind them.
Refused take_marks(const DiagramArguments& a, DiagramRequest& request) {
    for (const std::string& mark : a.marks) {
        const auto words = insertion_words();
        const auto row = std::ranges::find_if(
            words, [&](const InsertionWord& word) { return !word.overlay && word.word == mark; });
        if (row == words.end())
            return wrong("--marks: \"" + mark + "\" is no mark; T, p, v, b, crit, crit-calc are.");
        request.insertions.push_back(row->what);
    }
    return {};
}

Refused write(const Session& session, const Report& report, const DiagramArguments& a) {
    const std::string extension = extension_of(a.out), path = absolute_path(a.out);
    const GraphDocument& sheet = *session.diagram.sheet;
    if (is_picture(extension)) return draw_picture(oc2_bytes(sheet), a.out, a.picture);
    std::string fault;
    if (extension == "oc2")
        fault = save_oc2(path, sheet);
    else if (extension == "csv")
        fault =
            write_file_atomic(path, sheet_csv(sheet_columns(sheet, *session.fluid, session.diagram.units)));
    else
        fault = write_file_atomic(path, to_json(report));
    return fault.empty() ? Refused() : Fault{status_file, fault};
}

Report diagram(Program& program, const DiagramArguments& a) {
    DiagramRequest request = a.request;
    request.curves = a.curves.empty() ? CurveList() : read_curve_list(a.curves);
    for (const Refused& refused : {check_out(a.out), take_marks(a, request), check_request(request)})
        if (refused) return refusal("diagram", *refused);
    if (!a.models.units.empty())
        return refusal("diagram", wrong("--units does not hold for diagrams; --energy and --volume do."));
    if (const Refused refused = prepare(program, a.substance, a.models)) return refusal("diagram", *refused);
    if (const Refused refused = draw_sheet(program.session, request, program.messages))
        return refusal("diagram", *refused);
    Report report = sheet_report(program.session, a.out);
    report.command = "diagram";
    if (const Refused refused = write(program.session, report, a)) return refusal("diagram", *refused);
    return report;
}

void add_contents(CLI::App& app, DiagramArguments& a) {
    app.add_option("--curves", a.curves,
                   "Parameters of the curves: \"T=300,320,340\", \"T=300:400:20;T/degC=150\"")
        ->type_name("LIST");
    constexpr const char* overlays = "Overlays, with the parameter of the last curve";
    struct Flag {
        Insertion what;
        const char* names;
        const char* help;
    };
    const Flag flags[] = {
        {Insertion::coexistence, "--coexistence", "Coexistence curve"},
        {Insertion::inversion, "--inversion", "Inversion curve of the Joule-Thomson effect"},
        {Insertion::loop, "--s-curve,--spinodal", "Metastable and unstable loop"},
        {Insertion::tie_line, "--tie-line", "Tie line"},
        {Insertion::bisector, "--bisector", "Line of the mean of both densities"}};
    for (const Flag& flag : flags)
        app.add_flag_callback(
               flag.names, [&a, what = flag.what] { a.request.insertions.push_back(what); }, flag.help)
            ->group(overlays);
    app.add_option("--marks", a.marks, "T, p, v, b, crit, crit-calc")->delimiter(',')->type_name("LIST");
    app.add_option("--points", a.request.points, "Measured points of a data file")->type_name("FILE.BAQ");
}

void add_design(CLI::App& app, DiagramRequest& request) {
    constexpr const char* group = "Design";
    const auto flag = [&](const char* name, bool& into, const char* help) {
        app.add_flag(name, into, help)->group(group);
    };
    flag("--log-x", request.log_x, "Logarithmic x axis");
    flag("--log-y", request.log_y, "Logarithmic y axis");
    flag("--interchange", request.interchange, "x and y interchanged");
    flag("--black", request.black, "On black");
    flag("--legend", request.legend, "With a legend");
    app.add_option("--title", request.title, "In place of the heading of the diagram")
        ->type_name("TEXT")
        ->group(group);
}

}  // namespace

Action declare_diagram(CLI::App& app) {
    const auto a = std::make_shared<DiagramArguments>();
    add_substance(app, a->substance);
    add_kind(app, a->request.kind);
    add_contents(app, *a);
    add_ranges(app, a->request.x, a->request.y);
    add_density(app, a->request.options.Dens);
    add_triple_rule(app, a->request.options.chkCurveTpRestricted);
    app.add_option("--out", a->out,
                   "Picture (svg, pdf, png, emf, wmf, bmp), diagram file (oc2), data (csv, json)")
        ->required()
        ->type_name("FILE");
    add_design(app, a->request);
    add_picture_options(app, a->picture);
    add_model_options(app, a->models);
    return [a](Program& program) { return diagram(program, *a); };
}

}  // namespace quom
