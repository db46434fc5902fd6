#include "report/lst_file.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <thread>
#include <utility>

#include "base/code_page.h"
#include "base/files.h"
#include "base/number_text.h"
#include "base/threads.h"
#include "engine/model_catalogue.h"
#include "report/point_comparison.h"
#include "report/titles.h"

namespace quom {
namespace {

constexpr double limit = 500.0;  // of big deviations [%]
constexpr std::string_view big_text = "(dev.> 500%!)";
constexpr std::string_view no_mean = "             ";
constexpr std::size_t line_width = 70;
constexpr std::size_t points_at_a_time = 512;

// Where things stand, and the words that differ between file and printer.
struct Form {
    std::string_view title;
    std::size_t title_column, head_column, colon_column;  // colon 0: it is in the labels
    std::string_view substance, calculation, model, evp, count, batch, by_eos, by_benson;
    std::size_t by_column;  // of by_eos, by_benson
    std::string_view number_head;
    std::size_t number_column, phase_head_column, phase_column, line_column;
    Compared<std::size_t> head, value, unit;
    char thick, thin;  // of the separator lines
    std::string_view mean_text;
    bool plain_labels;  // a plain 2 for the sign of the square
    char underline;
};

constexpr Form file_form = {.title = "QUOM Results of Calculation",
                            .title_column = 20,
                            .head_column = 3,
                            .colon_column = 0,
                            .substance = "Substance            : ",
                            .calculation = "Calculation          : ",
                            .model = "model                : ",
                            .evp = "Vapor Pressure Equation ",
                            .count = "Number of Data Sets  : ",
                            .batch = "Name of Batchfile    : ",
                            .by_eos = "Enthalpy of Vaporization (using EOS)",
                            .by_benson = "(BENSON's method)",
                            .by_column = 26,
                            .number_head = "#",
                            .number_column = 1,
                            .phase_head_column = 3,
                            .phase_column = 4,
                            .line_column = 1,
                            .head = {9, 20, 32, 46, 59},
                            .value = {9, 20, 32, 46, 60},
                            .unit = {11, 21, 35, 49, 61},
                            .thick = '=',
                            .thin = '-',
                            .mean_text = "arithmet. mean of ABS(%-deviations):",
                            .plain_labels = true,
                            .underline = '\xC4'};
constexpr Form print_form = {.title = "QUOM: Results of Calculation",
                             .title_column = 32,
                             .head_column = 13,
                             .colon_column = 39,
                             .substance = "Substance",
                             .calculation = "Calculation",
                             .model = "Model",
                             .evp = "Vapor Press. Equation",
                             .count = "Number of Data Sets",
                             .batch = "Name Batchfile",
                             .by_eos = "Enthalpy of Vaporization del(LV)h calc. using EOS",
                             .by_benson = "(BENSON's method)",
                             .by_column = 42,
                             .number_head = "No.",
                             .number_column = 10,
                             .phase_head_column = 12,
                             .phase_column = 13,
                             .line_column = 10,
                             .head = {19, 30, 42, 58, 71},
                             .value = {19, 30, 42, 58, 71},
                             .unit = {21, 31, 45, 59, 71},
                             .thick = 'X',
                             .thin = 'X',
                             .mean_text = "arithmetic mean of ABS(%-deviations):",
                             .plain_labels = false,
                             .underline = '-'};

constexpr Compared<std::string_view> measured_heads = {"T(exp)", "p(exp)", "rhoV(exp)", "rhoL(exp)",
                                                       "delta(LV)h(exp)"};
constexpr Compared<std::string_view> calculated_heads = {"T(calc)", "p(calc)", "rhoV(calc)", "rhoL(calc)",
                                                         "delta(LV)h(calc)"};
constexpr Compared<std::string_view> difference_heads = {"delta T", "delta p", "delta rhoV", "delta rhoL",
                                                         "delta(LV)h"};
constexpr Compared<std::string_view> units = {"K", "kPa", "kg/m^3", "kg/m^3", "kJ/kmol"};

// Rows of the section of functions, by their labels, with a line between the groups.
constexpr std::size_t line_here = ExtendedRows;
constexpr std::size_t function_section_rows[] = {0,  1,  2,  3,  4,  5,  9,  12,        13, line_here, 21, 23,
                                                 22, 15, 16, 17, 18, 19, 20, line_here, 6,  7,         8};

std::string in_1252(std::string_view text) { return cp1252_from_utf8(text).bytes; }

std::string extended_text(const Form& form, std::size_t row) {
    return in_1252(form.plain_labels ? extended_label_plain(row) : std::string(extended_label(row)));
}

// A value of a quantity as a single; delta(LV)h as a whole number.
std::string value_text(std::size_t q, float x) {
    return q == compared_hLV ? printNum(round_half_even(static_cast<double>(x))) : printNum(x);
}

// The list in the making, in Windows-1252 for both forms.
class ListWriter {
 public:
    ListWriter(const Form& form, const ResultList& list) : form_(form), list_(list), line_("\r\n") {
        for (std::size_t row = 0; row < ExtendedRows; ++row) labels_[row] = extended_text(form, row) + ": ";
    }

    void head() {
        line_.at(59, list_.date).end();
        line_.at(form_.title_column, form_.title).end();
        line_.end();
        entry(form_.substance, in_1252(list_.substance));
        entry(form_.calculation, in_1252(list_.title));
        if (mode_info(list_.mode).family == ModeFamily::equilibrium)
            line_.at(form_.by_column, list_.GlobalCalc ? form_.by_eos : form_.by_benson).end();
        if (list_.has_eos) entry(form_.model, in_1252(list_.model));
        if (!list_.GlobalCalc || !list_.has_eos) entry(form_.evp, in_1252(list_.evp));
        entry(form_.count, printNum(list_.points.empty() ? 0 : static_cast<int>(list_.points.size()) - 1));
        if (!list_.batch_file.empty()) entry(form_.batch, in_1252(list_.batch_file));
        separator(form_.thick);
        line_.at(form_.number_column, form_.number_head);
        row(form_.head, measured_heads);
        line_.at(form_.phase_head_column, "phase");
        row(form_.head, calculated_heads);
        row(form_.head, difference_heads);
        separator(form_.thin);
        row(form_.unit, units);
        separator(form_.thick);
    }

    // A point with a result; first: nothing stands before it.
    void point(std::size_t i, bool first, DeviationMeans& means) {
        const TpRhoPoint& point = list_.points[i];
        const BatchResult& result = list_.results[i];
        if (!first) separator(form_.thin);
        line_.at(form_.number_column, genNum(static_cast<int>(i)));
        line_.at(form_.value[compared_T], printNum(point.T));
        line_.at(form_.value[compared_p], printNum(point.p));
        line_.at(form_.value[compared_rhoV], printNum(point.rhoV));
        line_.at(form_.value[compared_rhoL], printNum(point.rhoL));
        line_.at(form_.value[compared_hLV], printNum(point.HLV)).end();
        line_.at(form_.phase_column, result.phase());
        if (list_.mode == Mode::functions) return functions_of(result);
        const PointComparison c = compare_point(point, result);
        means.add(c);
        for (std::size_t q = 0; q < compared_count; ++q) {
            if (std::fabs(static_cast<double>(c.calculated[q])) > compared_least)
                line_.at(form_.value[q], value_text(q, c.calculated[q]));
        }
        line_.end();
        for (std::size_t q = 0; q < compared_count; ++q) {
            if (c.both[q] && c.difference[q] != 0.0F)
                line_.at(form_.value[q], value_text(q, c.difference[q]));
        }
        line_.end();
        for (std::size_t q = 0; q < compared_count; ++q) {
            if (std::fabs(c.deviation[q]) > compared_least)
                line_.at(form_.value[q], deviation_text(c.deviation[q]));
        }
        line_.end();
    }

    void means(const DeviationMeans& means) {
        separator(form_.thick);
        line_.at(form_.line_column, form_.mean_text).end();
        for (std::size_t q = 0; q < compared_count; ++q) line_.at(form_.value[q], mean_text(means.mean(q)));
        line_.end();
        line_.put("\n\n").end();
    }

    void head_of_functions() {
        constexpr std::string_view title = "T -, p -, v - derivatives and thermodynamic functions";
        line_.put("\n\n\n").end();
        line_.put(title).end();
        line_.put(std::string(title.size(), form_.underline)).end();
        line_.end();
        separator('-');
        line_.at(26, "L-phase").at(52, "V-phase").end();
        separator('-');
    }

    void functions(std::size_t i) {
        const BatchResult& result = list_.results[i];
        if (result.TCalc == 0.0F || result.pCalc == 0.0F) return;
        const bool L = result.phase().find('L') != std::string_view::npos;
        const bool V = result.phase().find('V') != std::string_view::npos;
        const auto rho = static_cast<double>(V ? result.rhoVCalc : result.rhoLCalc);
        line_.put("for data set" + strNum(static_cast<int>(i))).end();
        line_.put("T/K =" + printNum(result.TCalc)).at(18, "p/kPa =" + printNum(result.pCalc));
        if (rho > 0.0) line_.at(36, "v/m^3/kmol =" + printNum(static_cast<float>(list_.M / rho)));
        line_.end();
        const bool has_L = L && has_rows(result, &PhasePair::L), has_V = V && has_rows(result, &PhasePair::V);
        for (const std::size_t row : function_section_rows) {
            if (row == line_here) {
                separator('-');
                continue;
            }
            line_.at(5, labels_[row]);
            if (has_L) line_.at(22, printNum(result.Extended[row].L));
            if (has_V) line_.at(48, printNum(result.Extended[row].V));
            line_.end();
        }
    }

    std::string take() { return line_.take(); }

 private:
    void entry(std::string_view label, const std::string& value) {
        line_.at(form_.head_column, label);
        if (form_.colon_column) line_.at(form_.colon_column, ": ");
        line_.put(value).end();
    }
    void separator(char c) { line_.at(form_.line_column, std::string(line_width, c)).end(); }
    void row(const Compared<std::size_t>& columns, const Compared<std::string_view>& texts) {
        for (std::size_t q = 0; q < compared_count; ++q) line_.at(columns[q], texts[q]);
        line_.end();
    }
    void functions_of(const BatchResult& result) {
        const std::pair<std::string_view, float> rows[] = {
            {" Enthalpy        h/kJ/kmol     =", result.h},  {" Entropy         s/kJ/(kmol*K) =", result.s},
            {" Gibbs Enthalpy  g/kJ/kmol     =", result.g},  {" Exergy of H     e/kJ/kmol     =", result.eH},
            {" Exergy of U     e/kJ/kmol     =", result.eU},
        };
        line_.end();
        line_.end();
        for (const auto& [label, value] : rows)
            line_.at(form_.value[compared_T], label).put(printNum(value)).end();
    }
    static std::string deviation_text(double deviation) {
        if (!(deviation < limit)) return std::string(big_text);
        return "(" + formatMask(deviation, "####.##") + " %)";
    }
    static std::string mean_text(const std::optional<double>& mean) {
        if (!mean || !(*mean > compared_least)) return std::string(no_mean);
        if (!(*mean < limit)) return std::string(big_text);
        return printNum(std::floor(*mean * 100.0 + 0.5) / 100.0) + "%";
    }
    // A phase without functions has no value in any row.
    static bool has_rows(const BatchResult& result, float PhasePair::*phase) {
        return std::any_of(result.Extended.begin(), result.Extended.end(),
                           [phase](const PhasePair& pair) { return pair.*phase != 0.0F; });
    }

    const Form& form_;
    const ResultList& list_;
    TabLine line_;
    std::array<std::string, ExtendedRows> labels_;
};

// Texts of portions of points, made on all cores and put together in their order.
struct Portion {
    std::string points, functions;
    DeviationMeans means;
};

bool is_listed(const ResultList& list, std::size_t i) {
    return i < list.results.size() && list.results[i].has_result();
}

void write_portion(const Form& form, const ResultList& list, std::size_t first, std::size_t first_listed,
                   Portion& portion) {
    const std::size_t end = std::min(first + points_at_a_time, list.points.size());
    ListWriter points(form, list), functions(form, list);
    for (std::size_t i = first; i < end; ++i) {
        if (!is_listed(list, i)) continue;
        points.point(i, i == first_listed, portion.means);
        if (list.WithFunctions && list.mode != Mode::functions) functions.functions(i);
    }
    portion.points = points.take();
    portion.functions = functions.take();
}

std::vector<Portion> write_portions(const Form& form, const ResultList& list) {
    const std::size_t measured = list.points.empty() ? 0 : list.points.size() - 1;
    std::vector<Portion> portions((measured + points_at_a_time - 1) / points_at_a_time);
    std::size_t first_listed = 1;
    while (first_listed < list.points.size() && !is_listed(list, first_listed)) ++first_listed;
    std::atomic<std::size_t> next{0};
    const auto work = [&] {
        for (std::size_t k = next++; k < portions.size(); k = next++)
            write_portion(form, list, 1 + k * points_at_a_time, first_listed, portions[k]);
    };
    const auto others = static_cast<int>(
        std::min<std::size_t>(portions.size(), std::max(1U, std::thread::hardware_concurrency())));
    std::vector<std::thread> threads = start_threads(others - 1, work);
    work();
    for (std::thread& thread : threads) thread.join();
    return portions;
}

std::string list_bytes(const Form& form, const ResultList& list) {
    const std::vector<Portion> portions = write_portions(form, list);
    std::size_t size = 4096;
    for (const Portion& portion : portions) size += portion.points.size() + portion.functions.size();
    std::string bytes;
    bytes.reserve(size);
    ListWriter head(form, list);
    head.head();
    bytes += head.take();
    DeviationMeans means;
    for (const Portion& portion : portions) {
        bytes += portion.points;
        means.add(portion.means);
    }
    if (list.mode == Mode::functions) return bytes;
    ListWriter end(form, list);
    end.means(means);
    if (list.WithFunctions) end.head_of_functions();
    bytes += end.take();
    for (const Portion& portion : portions) bytes += portion.functions;
    return bytes;
}

}  // namespace

TabLine& TabLine::at(std::size_t column, std::string_view item) {
    if (text_.size() - line_start_ + 1 > column) end();
    text_.append(line_start_ + column - 1 - text_.size(), ' ');
    return put(item);
}

TabLine& TabLine::put(std::string_view item) {
    text_ += item;
    return *this;
}

void TabLine::end() {
    text_ += line_end_;
    line_start_ = text_.size();
}

ResultList result_list_of(const Session& session, std::string date) {
    const Document& document = session.document;
    return {.date = std::move(date),
            .substance = document.substance.constants.StoffName,
            .title = CalcTitle(document.calc.CalcMode, document.calc.setup),
            .model = ModelStatus(document.models),
            .evp = std::string(trim(evp_info(document.models.EVPKode).text)),
            .batch_file = document.exp.file.ExpTitle,
            .mode = document.calc.CalcMode,
            .GlobalCalc = document.calc.setup.GlobalCalc,
            .has_eos = document.models.EOSKode != Eos::none,
            .M = session.fluid->M,
            .points = document.exp.points.list(),
            .results = session.batch};
}

std::string result_file_bytes(const ResultList& list) { return list_bytes(file_form, list); }

std::string result_print_text(const ResultList& list) {
    std::string text = utf8_from_1252(list_bytes(print_form, list));
    std::erase(text, '\r');
    return text;
}

std::string result_file_path(std::string_view name, std::string_view program_path) {
    if (upper_text(name.substr(0, 3)) == "LPT") return {};
    std::string path(name);
    if (path.find('.') == std::string::npos && text_length(path) < 9) path += ".LST";
    return has_folder_part(path) ? path : join_path(program_path, path);
}

}  // namespace quom
