#include "forms/exp_data_form.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"

namespace quom {

namespace {

constexpr double Atmosphere = 101.325, TorrPerAtmosphere = 760, CelsiusZero = 273.15;
constexpr std::size_t ColumnWidth = 15;  // of the printed table

// Half up, to so many decimals.
double rounded(double x, int decimals) {
    const double scale = std::pow(10.0, decimals);
    return std::floor(x * scale + 0.5) / scale;
}

bool is_density(std::size_t column) { return column == 2 || column == 3; }

std::string right_aligned(std::string_view text, std::size_t width) {
    return std::string(width - std::min(width, text.size()), ' ') + std::string(text);
}

std::string box_text(std::size_t column, double value, const ExpInputUnits& units) {
    if (column == 0) return genNum(rounded(units.T == TUnit::celsius ? value - CelsiusZero : value, 3));
    if (column == 1) {
        if (units.p == PUnit::kPa) return genNum(rounded(value, 5));
        const double atm = value / Atmosphere;
        return genSingle(units.p == PUnit::atm ? atm : atm * TorrPerAtmosphere);
    }
    if (is_density(column) && units.rho == RhoInput::volume)
        return value > 0 ? genSingle(units.MolMass * units.n / value) : std::string();
    return genSingle(value);
}

// The number of a box in K, kPa, kg/m^3.
double stored(std::size_t column, double value, const ExpInputUnits& units) {
    if (column == 0) return units.T == TUnit::celsius ? value + CelsiusZero : value;
    if (column == 1) {
        if (units.p == PUnit::kPa) return value;
        return (units.p == PUnit::atm ? value : value / TorrPerAtmosphere) * Atmosphere;
    }
    if (is_density(column) && units.rho == RhoInput::volume)
        return value > 0 ? units.MolMass * units.n / value : value;
    return value;
}

std::string_view box_name(std::size_t column, const ExpInputUnits& units) {
    if (is_density(column) && units.rho == RhoInput::volume) return column == 2 ? "v_V" : "v_L";
    return exp_column_table[column].name;
}

}  // namespace

const std::array<ExpColumn, exp_columns> exp_column_table = {{{"T /", "K", "T"},
                                                              {"p /", "kPa", "p"},
                                                              {"rhoV/", "kg/m^3", "rho_V"},
                                                              {"rhoL/", "kg/m^3", "rho_L"},
                                                              {"delta(LV)h /", "kJ/kmol", "delta(LV)h"},
                                                              {"cp /", "kJ/(kmol K)", "cp"}}};

std::optional<Document> document_for_new_data(const Session& session, Messages& messages) {
    if (session.document.substance.StoffIndexAktiv < 1) {
        messages.ask({.title = "friendly remark",
                      .text = "first choose a substance or load a project;\n"
                              "and after that you can view or load exper. data"});
        return std::nullopt;
    }
    Document document = session.document;
    if (data_point_count(document.exp) > 0) {
        if (messages.ask({.title = "WARNING",
                          .text = "Input of new data is expected;\nthe existing data are deleted.\n"
                                  "Do you want this?",
                          .buttons = Buttons::yes_no,
                          .default_button = Answer::no,
                          .kind = MessageKind::warning}) != Answer::yes)
            return std::nullopt;
        clear_points(document.exp);
        document.calc.CurrentPoint = 0;
    }
    return document;
}

std::string broken_exp_rule(std::size_t column, double value) {
    return broken_rule(exp_column_table[column].name, value, NumberRule::not_negative);
}

std::string exp_text(const TpRhoPoint& point, std::size_t column) {
    const double value = exp_value(point, column);
    return column < 2 ? genNum(value) : genSingle(value);
}

ExpBoxes exp_boxes(const TpRhoPoint& point, const ExpInputUnits& units) {
    ExpBoxes boxes;
    for (std::size_t i = 0; i < exp_columns; ++i)
        if (const double value = exp_value(point, i); value != 0) boxes[i] = box_text(i, value, units);
    return boxes;
}

ExpBoxPoint exp_point(const ExpBoxes& boxes, const ExpInputUnits& units) {
    ExpBoxPoint read;
    read.blank = true;
    for (std::size_t i = 0; i < exp_columns; ++i) {
        const auto refuse = [&](std::string rule) { read.refusal = BoxRefusal{i, std::move(rule)}; };
        const auto number = box_number(boxes[i]);
        const std::string name(box_name(i, units));
        if (!number) {
            refuse(boxes[i] + " is no number.");
            return read;
        }
        if (*number != 0) read.blank = false;
        const bool missing = boxes[i].find_first_not_of(' ') == std::string::npos;
        if (missing) continue;
        const double value = stored(i, *number, units);
        std::string rule = broken_rule(name, value, NumberRule::not_negative,
                                       i == 0 && units.T == TUnit::celsius ? "-273.15 °C" : "0");
        if (!rule.empty()) {
            refuse(std::move(rule));
            return read;
        }
        set_exp_value(read.point, i, value);
    }
    return read;
}

DensityCaptions density_captions(RhoInput rho) {
    if (rho == RhoInput::volume) return {"m^3", "mol. volume", "v_V", "v_L"};
    return {"kg/m^3", "Density", "rho_V", "rho_L"};
}

std::string volume_hint(double MolMass) {
    return " applying the input value after conversion rho = M n / V (molar mass M/(kg/kmol)=  " +
           formatMask(MolMass, "####.##") + ") ";
}

PrintedTable exp_printed_table(const ExperimentalData& data) {
    PrintedTable table;
    std::string heads = "      ", units = heads;
    for (const ExpColumn& column : exp_column_table) {
        heads += right_aligned(column.head, ColumnWidth);
        units += right_aligned(column.unit, ColumnWidth);
    }
    table.head = {heads, units, std::string(heads.size(), '-')};
    for (int i = 1; i <= data_point_count(data); ++i) {
        const TpRhoPoint& point = data.points[static_cast<std::size_t>(i)];
        std::string line = right_aligned(std::to_string(i), 6);
        for (std::size_t c = 0; c < exp_columns; ++c) line += right_aligned(exp_text(point, c), ColumnWidth);
        table.lines.push_back(point.Aus != 0 ? line + "  off" : line);
    }
    return table;
}

std::string exp_window_caption(const ExperimentalData& data, bool loaded) {
    if (data.file.ExpFile.empty()) return "  experimental data input / edit";
    const std::string& name = data.file.ExpName;
    if (loaded) return "experimental data, " + name + " (File " + data.file.ExpFile + ")";
    return "exper. data " + name + ", input/edit (file " + data.file.ExpFile + ")";
}

}  // namespace quom
