// kinds: the kinds of diagrams with their numbers.
#include "console/commands.h"
#include "diagrams/axis_texts.h"

namespace quom {
namespace {

std::string_view section_word(Section section) {
    switch (section) {
        case Section::isothermal:
            return "isothermal";
        case Section::isobaric:
            return "isobaric";
        case Section::isochoric:
            return "isochoric";
        case Section::projection:
            return "projection";
        case Section::inversion:
            return "inversion";
        case Section::database:
            return "database";
        case Section::none:
            break;
    }
    return "";
}

// The option that the curves of a section take.
std::string_view parameter_option(Section section) {
    switch (section) {
        case Section::isothermal:
            return "--T";
        case Section::isobaric:
            return "--p";
        case Section::isochoric:
            return "--v";
        default:
            return "";
    }
}

Report kinds(Program&) {
    Table table{"kinds",
                "",
                {{"kind", "kind", ""},
                 {"title", "title", ""},
                 {"x", "x", ""},
                 {"y", "y", ""},
                 {"parameter", "takes", ""},
                 {"section", "section", ""},
                 {"axis_code", "axes", "", Layout::json},
                 {"boundary", "boundary", "", Layout::json}},
                {}};
    for (const KindInfo& kind : kind_list()) {
        if (kind.x == AxisQuantity::none) continue;  // a process line is drawn into another diagram
        table.rows.push_back(
            {static_cast<int>(kind.kind), kind_title(kind.kind, {}), axis_symbol(kind.x), axis_symbol(kind.y),
             remark(std::string(parameter_option(kind.section))), section_word(kind.section), kind.axis_code,
             kind.boundary == Kind::none ? Value() : Value(static_cast<int>(kind.boundary))});
    }
    Report report;
    report.title = "Kinds of diagrams, for \"quomc curve SUBSTANCE --kind N\"";
    report.sections.emplace_back(std::move(table));
    return report;
}

}  // namespace

Action declare_kinds(CLI::App&) { return kinds; }

}  // namespace quom
