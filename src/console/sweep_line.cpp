#include "console/sweep_line.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "base/code_page.h"
#include "calc/mode_table.h"
#include "calc/quantities.h"
#include "engine/condensed_phases.h"
#include "engine/thermo_functions.h"

namespace quom::console {
namespace {

constexpr std::size_t NumberSpace = 32;

constexpr const char* field_names[field_count] = {"T", "p", "rho", "m", "V"};

bool reads_database(int mode) { return mode >= 14; }
bool has_state(int mode) { return mode <= 10 || mode == 13; }

// What is left of a cell without blanks and quotes.
std::string_view cell_text(std::string_view cell) {
    const auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\r'; };
    while (!cell.empty() && blank(cell.front())) cell.remove_prefix(1);
    while (!cell.empty() && blank(cell.back())) cell.remove_suffix(1);
    if (cell.size() >= 2 && cell.front() == '"' && cell.back() == '"') cell = cell.substr(1, cell.size() - 2);
    return cell;
}

// A number as programs write it; none for anything else, and for one that is not finite.
bool read_cell(std::string_view cell, double& value) {
    if (!cell.empty() && cell.front() == '+') cell.remove_prefix(1);
    const auto [end, error] = std::from_chars(cell.data(), cell.data() + cell.size(), value);
    return error == std::errc() && end == cell.data() + cell.size() && std::isfinite(value);
}

void add_slot(std::vector<SweepColumnSpec>& columns, CalcSlot slot) {
    const bool of_V = (slot >= slot_vV && slot <= slot_cVV) || slot == slot_wV;
    const bool of_L = (slot >= slot_vL && slot <= slot_cVL) || slot == slot_wL;
    columns.push_back({SweepColumn::slot, slot, std::string(trim(slot_name(slot))),
                       of_V   ? phase_V
                       : of_L ? phase_L
                              : -1});
}

void add_state_columns(std::vector<SweepColumnSpec>& columns, int mode, bool functions) {
    const bool tank = mode == 9 || mode == 10;
    columns.push_back({SweepColumn::phase, 0, "phase"});
    columns.push_back({SweepColumn::region, 0, "region"});
    if (mode != 6 && mode != 7) {
        columns.push_back({SweepColumn::rhoV, 0, "rho(V)", phase_V});
        columns.push_back({SweepColumn::rhoL, 0, "rho(L)", phase_L});
        add_slot(columns, slot_vV);
        add_slot(columns, slot_vL);
    }
    if (mode == 1 || mode == 2 || mode == 13 || tank) columns.push_back({SweepColumn::eta, 0, "eta(V)"});
    if (tank) {
        columns.push_back({SweepColumn::fill, 0, "L-phase vol%"});
        columns.push_back({SweepColumn::tank_VV, 0, "V(V)"});
        columns.push_back({SweepColumn::tank_VL, 0, "V(L)"});
        columns.push_back({SweepColumn::tank_mV, 0, "m(V)"});
        columns.push_back({SweepColumn::tank_mL, 0, "m(L)"});
        columns.push_back({SweepColumn::tank_nV, 0, "n(V)"});
        columns.push_back({SweepColumn::tank_nL, 0, "n(L)"});
    }
    if ((functions && mode != 6 && mode != 7) || mode == 8) {
        for (const int phase : {1, 0}) {
            for (const Quantity q : function_rows) {
                if (q != Quantity::v) add_slot(columns, function_slot(q, phase));
            }
        }
    }
    if (mode != 3 && mode != 8) {
        add_slot(columns, slot_hLV);
        add_slot(columns, slot_sLV);
    }
}

}  // namespace

void RowWriter::put(std::string_view text) {
    text.copy(space(text.size()), text.size());
    used_ += text.size();
}

char* RowWriter::space(std::size_t n) {
    if (bytes_.size() - used_ < n) bytes_.resize(std::max(2 * bytes_.size(), used_ + n + 4096));
    return bytes_.data() + used_;
}

void RowWriter::number(double x) {
    char* begin = space(NumberSpace);
    used_ += static_cast<std::size_t>(std::to_chars(begin, begin + NumberSpace, x).ptr - begin);
}

void RowWriter::quoted(std::string_view text, char delimiter) {
    if (text.find_first_of(std::string{delimiter, '"', '\n'}) == std::string_view::npos) return put(text);
    put('"');
    for (const char c : text) {
        if (c == '"') put('"');
        put(c == '\n' ? ' ' : c);
    }
    put('"');
}

std::vector<SweepColumnSpec> sweep_column_table(int mode, bool functions) {
    std::vector<SweepColumnSpec> columns;
    const ModeEntry* entry = mode_entry(mode);
    const unsigned specified = entry ? entry->specified : 0u;
    add_slot(columns, slot_T);
    const bool vapor_pressure = mode >= 19 && mode <= 22;
    if (has_state(mode) || vapor_pressure) add_slot(columns, slot_p);
    if (specified & (spec_rhoV | spec_rhoL)) columns.push_back({SweepColumn::slot, slot_rho, "rho"});
    if (has_state(mode)) add_state_columns(columns, mode, functions);
    if (mode == 11) add_slot(columns, slot_B);
    if (mode == 14) add_slot(columns, slot_rhoL);
    if (mode == 15) add_slot(columns, slot_hLV), add_slot(columns, slot_sLV);
    if (mode == 16) add_slot(columns, slot_cpId);
    if (mode == 17) add_slot(columns, slot_cpL);
    if (mode == 18) add_slot(columns, slot_cpS);
    if (mode == 24) columns.push_back({SweepColumn::rhoS, 0, "rho(S)"});
    columns.push_back({SweepColumn::message, 0, "message"});
    return columns;
}

SweepLine::SweepLine(const Session& s, const SweepSettings& settings, SweepHead head)
    : s_(s),
      settings_(settings),
      head_(std::move(head)),
      request_{.Mode = settings.mode, .Quiet = true, .want_text = reads_database(settings.mode)},
      columns_(sweep_column_table(settings.mode, settings.functions)),
      M_(static_cast<double>(s.substance.MolMass)),
      per_volume_(M_ * s.units.vFactor) {
    s_.messages = nullptr;
    s_.exp.points.assign(1, {});
    s_.calc.BatchResults.assign(1, {});
    s_.calc.ExtLevel = 1;
    s_.calc.ShowFunctions = settings.functions;
}

std::string SweepLine::read(std::string_view line) {
    std::fill(std::begin(fields_), std::end(fields_), 0.0);
    std::size_t begin = 0;
    for (std::size_t column = 0; column < head_.field_of_column.size(); ++column) {
        if (begin > line.size()) {
            return "only " + std::to_string(column) + " of " + std::to_string(head_.field_of_column.size()) +
                   " columns";
        }
        std::size_t end = line.find(head_.delimiter, begin);
        if (end == std::string_view::npos) end = line.size();
        const int field = head_.field_of_column[column];
        if (field >= 0) {
            const std::string_view cell = cell_text(line.substr(begin, end - begin));
            if (!read_cell(cell, fields_[field]))
                return std::string(field_names[field]) + " is no number: \"" +
                       std::string(cell.substr(0, 40)) + "\"";
        }
        begin = end + 1;
    }
    if (begin <= line.size()) return "more columns than the head";
    return {};
}

void SweepLine::store() {
    TpRhoPoint& point = s_.exp.points[0];
    point = {};
    point.T = fields_[field_T];
    point.p = fields_[field_p];
    (settings_.mode == 2 ? point.rhoL : point.rhoV) = static_cast<float>(fields_[field_rho]);
    s_.calc.tank = {.m = static_cast<float>(fields_[field_m]),
                    .V = static_cast<float>(fields_[field_V]),
                    .T = static_cast<float>(fields_[field_T])};
}

std::string_view SweepLine::message_of(const CalcBatchResult& r) {
    if (r.err) return r.fault.empty() ? std::string_view("no result") : std::string_view(r.fault);
    if (!r.warning.empty()) return r.warning;
    const bool solid_allowed = settings_.mode == 16 || settings_.mode == 18 || settings_.mode == 24;
    const double T = r.Result[slot_T];
    if (!solid_allowed && !s_.models.VPhaseOnly && T > 0.0 && T < static_cast<double>(s_.substance.Ttr))
        return "T < T(TP) (Triple Point)";
    return {};
}

double SweepLine::vapor_fraction(const CalcBatchResult& r) const {
    if (settings_.mode == 9 || settings_.mode == 10) return r.tank.y;
    if (!r.IsL) return 1.0;
    if (!r.IsV) return 0.0;
    const double vL = r.Result[slot_vL], vV = r.Result[slot_vV];
    const double v = per_volume_ / fields_[field_rho];
    return vV > vL ? (v - vL) / (vV - vL) : NAN;
}

void SweepLine::cell(const SweepColumnSpec& column, const CalcBatchResult& r, RowWriter& out) {
    const auto known = [&out](double x) {
        if (x != 0.0 && std::isfinite(x)) out.number(x);
    };
    const auto density = [&](int slot) {
        if (r.Result[slot] > 0.0) out.number(per_volume_ / r.Result[slot]);
    };
    const auto share = [&out](double x) {
        if (std::isfinite(x)) out.number(x);
    };
    switch (column.kind) {
        case SweepColumn::slot:
            if (column.slot == slot_rho) return known(fields_[field_rho]);
            return known(r.Result[column.slot]);
        case SweepColumn::phase:
            return out.put(phase_);
        case SweepColumn::region:
            if (!s_.models.VPhaseOnly) out.put(static_cast<char>('0' + s_.scratch.PhaseRegion));
            return;
        case SweepColumn::rhoV:
            return density(slot_vV);
        case SweepColumn::rhoL:
            return density(slot_vL);
        case SweepColumn::rhoS:
            return known(rhoS_Fu(s_, static_cast<float>(fields_[field_T])).rho);
        case SweepColumn::eta:
            return share(vapor_fraction(r));
        case SweepColumn::fill:
            return share(static_cast<double>(r.LPercent));
        case SweepColumn::tank_VL:
            return share(r.tank.VL);
        case SweepColumn::tank_VV:
            return share(r.tank.VV);
        case SweepColumn::tank_mL:
            return share(r.tank.mL);
        case SweepColumn::tank_mV:
            return share(r.tank.mV);
        case SweepColumn::tank_nL:
            return share(r.tank.nL);
        case SweepColumn::tank_nV:
            return share(r.tank.nV);
        case SweepColumn::message:
            return;
    }
}

// Above the critical point liquid and vapor are one fluid: compressed liquid below T(cr), vapor below p(cr).
void SweepLine::find_phases(const CalcBatchResult& r) {
    L_ = r.IsL, V_ = r.IsV;
    phase_ = L_ && V_ ? "V+L" : V_ ? "V" : L_ ? "L" : "";
    if (!(L_ && V_) || r.Result[slot_vL] == 0.0 || r.Result[slot_vL] != r.Result[slot_vV]) return;
    const int region = s_.scratch.PhaseRegion;
    L_ = region == 1, V_ = !L_;
    phase_ = region == 1 ? "L" : region == 3 ? "V" : region == 4 ? "critical" : "fluid";
}

void SweepLine::write(const CalcBatchResult& r, std::string_view message, RowWriter& out) {
    find_phases(r);
    // A function of a database equation stands in a slot of its own and belongs to no phase of the line.
    if (reads_database(settings_.mode)) L_ = V_ = true;
    for (const SweepColumnSpec& column : columns_) {
        if (column.kind == SweepColumn::message) break;
        const bool present = column.phase < 0 || (column.phase == phase_V ? V_ : L_);
        if (!r.err && present) {
            cell(column, r, out);
        } else if (r.err && column.kind == SweepColumn::slot) {
            // Of a line without a result only what was specified.
            const double given = column.slot == slot_T     ? fields_[field_T]
                                 : column.slot == slot_p   ? fields_[field_p]
                                 : column.slot == slot_rho ? fields_[field_rho]
                                                           : 0.0;
            if (given != 0.0) out.number(given);
        }
        out.put(head_.delimiter);
    }
    out.quoted(message, head_.delimiter);
    out.put('\n');
}

LineKind SweepLine::run(std::string_view line, std::uint64_t number, RowWriter& out, std::string& fault) {
    if (cell_text(line).empty()) return LineKind::empty;
    fault = read(line);
    if (!fault.empty()) {
        fault.insert(0, "line " + std::to_string(number) + ": ");
        for (std::size_t i = 1; i < columns_.size(); ++i) out.put(head_.delimiter);
        out.quoted(fault, head_.delimiter);
        out.put('\n');
        return LineKind::malformed;
    }
    store();
    const CalcBatchResult r = CalcBatch(s_, request_);
    const std::string_view message = message_of(r);
    write(r, message, out);
    return r.err ? LineKind::failed : message.empty() ? LineKind::good : LineKind::warned;
}

}  // namespace quom::console
