#include "report/sheet_columns.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "base/code_page.h"
#include "base/number_text.h"
#include "diagrams/axis_texts.h"
#include "diagrams/graph_view.h"
#include "report/selection_report.h"

namespace quom {
namespace {

constexpr const char* CommentMark = "# ";

struct Head {
    std::string name, unit;
};
struct Column {
    Head head;
    std::size_t count = 0;
    std::function<float(std::size_t)> value;
};

std::string one_line(std::string_view text) {
    std::string line(trim(text));
    std::ranges::replace_if(
        line, [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
    return line;
}

// Symbol and unit of an axis with the text of its kind; other texts stand as they are.
Head axis_head(const std::string& title, const std::string& of_kind, AxisQuantity quantity,
               const Units& units) {
    const std::string_view unit = axis_unit(quantity, units);
    if (title == of_kind && !unit.empty()) return {std::string(axis_symbol(quantity)), std::string(unit)};
    return {one_line(title), {}};
}

Head hidden_head(std::int16_t par) {
    switch (par) {
        case par_T:
            return {"T", "K"};
        case par_p:
            return {"p", "kPa"};
        case par_v:
            return {"v", "m^3/kmol"};
        case par_fraction:
            return {"eta(V)", {}};
        default:
            return {};
    }
}

class ColumnMaker {
 public:
    ColumnMaker(const GraphDocument& sheet, const Fluid& fluid, const Units& units, std::string_view file)
        : sheet_(sheet) {
        const DiagramRec& diagram = sheet.diagram;
        const KindInfo& kind = kind_info(diagram.kind);
        const AxisTexts texts = axis_texts(diagram.kind, units);
        axes_[0] = axis_head(diagram.XTitle, texts.X, kind.x, units);
        axes_[1] = axis_head(diagram.YTitle, texts.Y, kind.y, units);
        const std::string number =
            diagram.kind == Kind::none ? "" : genNum(static_cast<int>(diagram.kind)) + ", ";
        table_.comment = CommentMark;
        table_.title = {"diagram: " + number + one_line(diagram.title),
                        "substance: " + one_line(substance_head(fluid.substance)),
                        "models in force: " + one_line(models_text(fluid.models)),
                        "reference state: " + one_line(reference_text(fluid))};
        if (!file.empty())
            table_.title.push_back("loaded from " + one_line(file) +
                                   "; the file does not tell substance, models and reference state");
    }

    ExportTable table() {
        for (int slot = 1; slot <= CurveSlots; ++slot)
            if (!sheet_.curve(slot).CurveFree) add_curve("C." + genNum(slot), sheet_.curve(slot));
        for (int set = 1; set <= PointSlots; ++set)
            if (!sheet_.set(set).PointFree)
                add_series("P." + genNum(set), sheet_.set(set).series, sheet_.set(set).series.legend);
        for (int mark = FirstMark; mark <= LastMark; ++mark)
            if (sheet_.mark(mark).shown())
                add_series("M." + genNum(mark), sheet_.mark(mark).series,
                           sheet_.mark(mark).series.label.text);
        fill_rows();
        return std::move(table_);
    }

 private:
    void add_series(const std::string& name, const Series& series, std::string_view text) {
        std::string_view told = trim(text);
        if (told.starts_with(name + " ")) told = trim(told.substr(name.size()));
        table_.title.push_back(name + ": " + one_line(told));
        const auto& points = series.points;
        const bool turned = sheet_.Interchanged;
        for (const bool y : {turned, !turned})
            columns_.push_back({{name + " " + axes_[y].name, axes_[y].unit},
                                points.size(),
                                [&points, y](std::size_t i) { return y ? points[i].Y : points[i].X; }});
    }

    void add_curve(const std::string& name, const CurveSlot& curve) {
        add_series(name, curve.series, curve.series.legend);
        const auto& hidden = curve.CurveHidden;
        for (const bool tag : {false, true}) {
            const Head head = hidden_head(tag ? curve.Tag : curve.Par);
            if (head.name.empty() || hidden.empty()) continue;
            columns_.push_back(
                {{name + " " + head.name, head.unit},
                 std::min(hidden.size(), curve.series.points.size()),
                 [&hidden, tag](std::size_t i) { return tag ? hidden[i].Tag : hidden[i].Par; }});
        }
    }

    // A hidden value may be of the same quantity as an axis: each name is there once.
    void name_twins() {
        for (auto column = columns_.begin(); column != columns_.end(); ++column)
            if (std::any_of(columns_.begin(), column,
                            [&](const Column& before) { return before.head.name == column->head.name; }))
                column->head.name += " (point)";
    }

    void fill_rows() {
        name_twins();
        std::size_t rows = 0;
        bool any_unit = false;
        for (const Column& column : columns_) {
            table_.heads.push_back(column.head.name);
            table_.units.push_back(column.head.unit);
            rows = std::max(rows, column.count);
            any_unit = any_unit || !column.head.unit.empty();
        }
        if (!any_unit) table_.units.clear();
        table_.rows.resize(rows);
        for (std::size_t i = 0; i < rows; ++i) {
            table_.rows[i].reserve(columns_.size());
            for (const Column& column : columns_) {
                const float x = i < column.count ? column.value(i) : NAN;
                table_.rows[i].emplace_back(std::isfinite(x) ? genNum(x) : std::string(), true);
            }
        }
    }

    const GraphDocument& sheet_;
    Head axes_[2];  // x, y of the kind
    std::vector<Column> columns_;
    ExportTable table_;
};

}  // namespace

ExportTable sheet_columns(const GraphDocument& sheet, const Fluid& fluid, const Units& units,
                          std::string_view file) {
    return ColumnMaker(sheet, fluid, units, file).table();
}

std::string sheet_csv(ExportTable columns, char delimiter, char decimal) {
    columns.comment = CommentMark;
    return to_csv(columns, delimiter, decimal);
}

}  // namespace quom
