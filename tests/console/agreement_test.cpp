// One question, one answer: state, calc (text and JSON), sweep and the batches of states agree over random
// states of all substances and equations in phase, region, every number, every warning and every reason.
#include <gmock/gmock.h>

#include <algorithm>
#include <charconv>
#include <map>
#include <random>

#include "base/number_text.h"
#include "console/command_reports.h"
#include "console/sweep.h"
#include "engine/model_catalogue.h"
#include "engine/state_columns.h"
#include "quomc_run.h"
#include "report/outcome_report.h"
#include "support/starter_session.h"

namespace quom {
namespace {

using Json = nlohmann::json;

constexpr int StateCount = 10000;
constexpr int CommandStep = 160;  // every so many states go through the whole program too
constexpr double SameNumber = 1e-12;

// Two of T [K], p [kPa], rho [kg/m^3].
struct Point {
    std::optional<double> T, p, rho;
    Mode mode() const { return !rho ? Mode::T_p : p ? Mode::p_rho : Mode::T_rho; }
};

class RandomStates {
 public:
    double uniform(double low, double high) { return std::uniform_real_distribution<>(low, high)(engine_); }
    std::size_t index(std::size_t n) { return std::uniform_int_distribution<std::size_t>(0, n - 1)(engine_); }
    // T from 0.3 to 3 T(cr), p from 1 Pa to 300 MPa; densities about those that the equation has there.
    Point point(const Fluid& fluid) {
        const double Tcr = fluid.substance.Tcr > 0 ? fluid.substance.Tcr : 500.0;
        const double T = Tcr * uniform(0.3, uniform(0.0, 1.0) < 0.7 ? 1.2 : 3.0);
        const double p = std::exp(uniform(std::log(1e-3), std::log(3e5)));
        const double kind = uniform(0.0, 1.0);
        if (kind < 0.5 || !(fluid.M > 0.0)) return {T, p, {}};
        const VolumeResult volume = VolumeTp(fluid, T, p);
        const double v = volume.VFlag ? volume.vV : volume.vL;
        if (!(v > 0.0)) return {T, p, {}};
        // Of liquids and dense vapors also what lies within the dome.
        const double rho = fluid.M / v * std::exp(uniform(-1.0, 1.0) * (kind < 0.8 ? 1.0 : 0.05));
        if (kind < 0.8) return {T, {}, rho};
        return {{}, p, rho};
    }

 private:
    std::mt19937_64 engine_{20260711};
};

// What one way answers: names to numbers, and words. An absent number is not in the map.
struct Answer {
    std::string phase, reason;
    std::map<std::string, double> numbers;
    std::vector<std::string> warnings;
};

// The value of a member of the JSON object.
void take(Answer& answer, const Json& value, const std::string& name) {
    if (value.is_number()) answer.numbers[name] = value.get<double>();
}

void take_words(Answer& answer, const Json& json) {
    if (!json["reason"].is_null()) answer.reason = json["reason"].get<std::string>();
    for (const Json& warning : json["warnings"])
        answer.warnings.push_back(warning["name"].get<std::string>());
    std::ranges::sort(answer.warnings);
    if (json.contains("state") && json["state"]["phase"].is_string())
        answer.phase = json["state"]["phase"].get<std::string>();
}

constexpr const char* functions[] = {"v", "h", "s", "g", "u", "a", "eH", "eU", "cp", "cV", "w"};

// Names of slots and columns of a function: "h(L)", "sound speed(L)".
std::string slot_of(const std::string& function, const std::string& phase) {
    return (function == "w" ? "sound speed" : function) + "(" + phase + ")";
}

Answer answer_of_state(const Json& json) {
    Answer answer;
    take_words(answer, json);
    if (!answer.reason.empty()) return answer;
    for (const char* name : {"T", "p"}) take(answer, json["state"][name], name);
    take(answer, json["state"]["PhaseRegion"], "region");
    for (const char* function : functions) {
        for (const char* phase : {"L", "V"})
            take(answer, json["functions"][std::string(function) + "_" + phase], slot_of(function, phase));
    }
    return answer;
}

Answer answer_of_calc(const Json& json) {
    Answer answer;
    take_words(answer, json);
    if (!answer.reason.empty()) return answer;
    for (const char* name : {"T", "p"}) take(answer, json["slots"][name], name);
    take(answer, json["state"]["PhaseRegion"], "region");
    for (const char* function : functions) {
        for (const char* phase : {"L", "V"})
            take(answer, json["slots"][std::string(function) + "_" + phase], slot_of(function, phase));
    }
    return answer;
}

std::vector<std::string> cells_of(std::string_view line) {
    std::vector<std::string> list(1);
    bool quoted = false;
    for (const char c : line) {
        if (c == '"') quoted = !quoted;
        if (c == '\n') break;
        if (c == ';' && !quoted) {
            list.emplace_back();
        } else {
            list.back() += c;
        }
    }
    return list;
}

// table: head and one row. Names are read without their units.
Answer answer_of_sweep(std::string_view table) {
    Answer answer;
    const std::size_t row = std::min(table.find('\n') + 1, table.size());
    const std::vector<std::string> names = cells_of(table), values = cells_of(table.substr(row));
    EXPECT_EQ(names.size(), values.size()) << table;
    for (std::size_t i = 0; i < std::min(names.size(), values.size()); ++i) {
        const std::string name = names[i].substr(0, names[i].find('/')), &value = values[i];
        if (name == "phase") answer.phase = value;
        if (name == "reason") answer.reason = value;
        if (name == "warnings") {
            std::istringstream words(value);
            for (std::string word; words >> word;) answer.warnings.push_back(word);
            std::ranges::sort(answer.warnings);
        }
        if (const std::optional<double> x = read_number(value)) answer.numbers[name] = *x;
    }
    if (!answer.reason.empty()) answer.numbers.clear();
    // Columns that state and calc do not have under this name.
    for (const char* other : {"rho", "eta(V)", "rho(V)", "rho(L)", "delta(LV)h", "delta(LV)s"})
        answer.numbers.erase(other);
    return answer;
}

// The size of the terms that a function is a sum of; 0 for what is no sum.
double scale_of(const std::string& name, double T) {
    const std::string function = name.substr(0, name.find('('));
    if (function == "s") return 10 * RGas;
    if (function == "cp" || function == "cV") return RGas;
    const bool energy = std::ranges::count(std::array{"h", "u", "g", "a", "eH", "eU"}, function) > 0;
    return energy ? 10 * RGas * T : 0.0;
}

// T [K]: of the terms of batches, which do not cancel digit by digit as single calls do; 0 for single calls.
void expect_same(const Answer& a, const Answer& b, const std::string& text, double T = 0.0) {
    EXPECT_EQ(a.phase, b.phase) << text;
    EXPECT_EQ(a.reason, b.reason) << text;
    EXPECT_EQ(a.warnings, b.warnings) << text;
    EXPECT_EQ(a.numbers.size(), b.numbers.size()) << text;
    for (const auto& [name, x] : a.numbers) {
        const auto found = b.numbers.find(name);
        ASSERT_NE(found, b.numbers.end()) << text << ": " << name;
        EXPECT_NEAR(found->second, x, SameNumber * std::max(std::fabs(x), scale_of(name, T)))
            << text << ": " << name;
    }
}

// The numbers behind "=" of the last row of this name in the result list.
std::vector<double> row_of(const std::string& list, const std::string& name) {
    std::vector<double> numbers;
    const std::size_t begin = list.rfind("\n" + name);
    if (begin == std::string::npos) return numbers;
    const std::size_t end = list.find('\n', begin + 1);
    const std::string line = list.substr(begin + 1, end - begin - 1);
    std::istringstream words(line.substr(std::min(line.find('=') + 1, line.size())));
    for (std::string word; words >> word;) {
        if (const std::optional<double> x = read_number(word)) numbers.push_back(*x);
    }
    return numbers;
}

// The list shows the same numbers with seven digits; one fluid above the critical point stands in both
// columns.
void expect_same_text(const Answer& answer, const Outcome& outcome, const std::string& list,
                      const std::string& text) {
    const bool twice = outcome.IsL && outcome.IsV && !outcome.two_phase();
    struct Row {
        const char* name;
        const char* function;
    };
    for (const Row& row :
         {Row{"Enthalpy  ", "h"}, Row{"Entropy  ", "s"}, Row{"Volume  ", "v"}, Row{"Speed of Sound", "w"}}) {
        std::vector<double> expected;
        for (const char* phase : {"L", "V"}) {
            const auto found = answer.numbers.find(slot_of(row.function, phase));
            if (found != answer.numbers.end()) expected.push_back(found->second);
        }
        if (twice) expected.insert(expected.end(), expected.begin(), expected.end());
        const std::vector<double> shown = row_of(list, row.name);
        ASSERT_EQ(shown.size(), expected.size()) << text << row.name << "\n" << list;
        for (std::size_t i = 0; i < shown.size(); ++i)
            EXPECT_NEAR(shown[i], expected[i], 1e-6 * std::fabs(expected[i])) << text << row.name;
    }
}

// The batch has the same phase and numbers; what cancels is compared at the scale of its terms.
void expect_same_columns(const Fluid& fluid, const Point& point, const Answer& answer,
                         const std::string& text) {
    StateColumns columns;
    states_at(fluid, std::span(&*point.T, 1), std::span(&*point.p, 1), columns);
    ASSERT_EQ(columns.size(), 1u);
    if (!answer.reason.empty()) {
        EXPECT_EQ(reason_name(columns.reason[0]), answer.reason) << text;
        EXPECT_TRUE(std::isnan(columns.v[0])) << text;
        return;
    }
    const ColumnPhase phase = columns.phase[0];
    const std::string word = phase == ColumnPhase::L       ? "L"
                             : phase == ColumnPhase::V     ? "V"
                             : phase == ColumnPhase::fluid ? answer.phase
                                                           : "V+L";
    EXPECT_EQ(answer.phase, word) << text;
    const char* const column = answer.phase == "L" ? "L" : "V";
    const auto compare = [&](const char* function, double x) {
        const auto found = answer.numbers.find(slot_of(function, column));
        EXPECT_EQ(found == answer.numbers.end(), std::isnan(x)) << text << " " << function << " " << x;
        if (found == answer.numbers.end() || std::isnan(x)) return;
        const double scale = std::max(std::fabs(found->second), scale_of(function, *point.T));
        EXPECT_NEAR(x, found->second, SameNumber * scale) << text << function;
    };
    compare("v", columns.v[0]);
    compare("h", columns.h[0]);
    compare("u", columns.u[0]);
    compare("s", columns.s[0]);
    compare("g", columns.g[0]);
    compare("a", columns.a[0]);
    compare("cp", columns.cp[0]);
    compare("cV", columns.cV[0]);
    compare("w", columns.w[0]);
}

// A session with a substance and an equation, without the search for names.
class Workbench {
 public:
    Workbench() : session_(test::starter_session()) {}
    Session& session() { return session_; }
    int substances() const { return session_.database.StoffAnzahl(); }
    std::vector<Eos> offered() const {
        std::vector<Eos> codes;
        for (const ModelList::Entry& entry :
             AktualisiereEOSKombi(session_.substance(), session_.document.models).entries)
            codes.push_back(eos_of(entry.code));
        return codes;
    }
    void choose(int substance) { SelectSubstance(session_, substance); }
    void choose(Eos code) {
        Document document = session_.document;
        document.models = proposed_models(session_.substance(), {.EOSKode = code});
        document.eos_input = {.b0 = 0.05,
                              .b1 = 30,
                              .b2 = 0.9,
                              .JiP3 = 0.45,
                              .JiP4 = 0.1,
                              .JiP5 = 0.05,
                              .JiZc = 0.31,
                              .JiB1 = 0.2};
        document.calc.ShowFunctions = true;
        document.calc.setup.GlobalCalc = document.models.Konzept;
        commit(session_, std::move(document));
    }
    void choose(Mode mode) {
        Document document = session_.document;
        document.calc.CalcMode = mode;
        commit(session_, std::move(document));
    }

 private:
    Session session_;
};

std::string describe(const Session& session, const Point& point) {
    std::string text = session.substance().StoffName + " (#" +
                       std::to_string(session.document.substance.StoffIndexAktiv) + ") --eos " +
                       std::to_string(number_of(session.document.models.EOSKode));
    if (point.T) text += " --T " + exactNum(*point.T);
    if (point.p) text += " --p " + exactNum(*point.p);
    if (point.rho) text += " --rho " + exactNum(*point.rho);
    return text + ": ";
}

// A sweep over the point: the table that goes in and the one that comes out.
struct SweepText {
    std::string in, out;
};
SweepText sweep_text(const Session& session, const Point& point) {
    std::string names, values;
    const auto add = [&](const char* name, const std::optional<double>& x) {
        if (!x) return;
        names += (names.empty() ? "" : ";") + std::string(name);
        values += (values.empty() ? "" : ";") + exactNum(*x);
    };
    add("T", point.T);
    add("p", point.p);
    add("rho", point.rho);
    SweepText text{.in = names + "\n" + values + "\n", .out = {}};
    const SweepSettings settings{.calculation = {.mode = point.mode(),
                                                 .setup = session.document.calc.setup,
                                                 .units = session.document.units,
                                                 .factors = session.factors()},
                                 .plan = make_sweep_plan(point.mode(), true, session.document.units, {}, {})};
    std::istringstream in(text.in);
    const SweepStreams streams{
        .read = [&in](char* into, std::size_t n) -> std::ptrdiff_t {
            in.read(into, static_cast<std::streamsize>(n));
            return in.gcount();
        },
        .write = [&text](std::string_view bytes) { return text.out.append(bytes), true; }};
    run_sweep(session.fluid, settings, nullptr, streams);
    return text;
}

// The same state as a program would ask for it.
void expect_same_commands(const Session& session, const Point& point, const Answer& answer,
                          const std::string& text) {
    const Eos code = session.document.models.EOSKode;
    if (eos_info(code).family == EosFamily::tovarn_ji) return;  // needs a file
    std::string line = " #" + std::to_string(session.document.substance.StoffIndexAktiv) + " --eos " +
                       std::to_string(number_of(code));
    if (code == Eos::virial_manual) line += " --b0 0.05 --b1 30 --b2 0.9";
    std::string values;
    if (point.T) values += " --T " + exactNum(*point.T);
    if (point.p) values += " --p " + exactNum(*point.p);
    if (point.rho) values += " --rho " + exactNum(*point.rho);
    const std::string mode = " --mode " + std::to_string(number_of(point.mode()));
    expect_same(answer, answer_of_state(quomc("state" + line + values + " --json").json()), "state " + text);
    expect_same(answer, answer_of_calc(quomc("calc" + line + mode + values + " --functions --json").json()),
                "calc " + text);
    const SweepText sweep = sweep_text(session, point);
    const CommandRun run = quomc("sweep" + line + mode + " --functions --jobs 1 --in - --out -", sweep.in);
    EXPECT_EQ(run.out, sweep.out) << text;
}

void check_point(Workbench& bench, const Point& point, bool through_program) {
    Session& session = bench.session();
    bench.choose(point.mode());
    const std::string text = describe(session, point);
    const Json state =
        Json::parse(to_json(state_report(session, state_at(*session.fluid, point.T, point.p, point.rho))));
    StateInput input;
    input.mode = point.mode();
    input.T = point.T;
    input.p = point.p;
    input.rho = point.rho;
    input.setup = session.document.calc.setup;
    const Outcome outcome = CalcBatch(*session.fluid, input);
    const Json calc = Json::parse(to_json(calc_report(session, outcome)));
    const Answer answer = answer_of_state(state);
    expect_same(answer, answer_of_calc(calc), "state and calc: " + text);
    EXPECT_EQ(state["message"], calc["message"]) << text;
    const SweepText sweep = sweep_text(session, point);
    expect_same(answer, answer_of_sweep(sweep.out), "state and sweep: " + text,
                point.mode() == Mode::T_p ? *point.T : 0.0);
    if (answer.reason.empty()) expect_same_text(answer, outcome, calc_text(session, outcome), text);
    if (!point.rho) expect_same_columns(*session.fluid, point, answer, text);
    if (through_program) expect_same_commands(session, point, answer, text);
}

TEST(Agreement, of_all_ways_over_random_states) {
    Workbench bench;
    RandomStates random;
    int results = 0, failures = 0;
    constexpr int PerEquation = 5;
    for (int i = 0; i < StateCount; ++i) {
        if (i % PerEquation == 0) {
            bench.choose(1 + (i / PerEquation) % bench.substances());
            const std::vector<Eos> codes = bench.offered();
            bench.choose(codes[random.index(codes.size())]);
        }
        const Point point = random.point(*bench.session().fluid);
        check_point(bench, point, i % CommandStep == 0);
        results += state_at(*bench.session().fluid, point.T, point.p, point.rho).has_result();
        if (HasFailure() && ++failures > 25) break;
    }
    EXPECT_GT(results, StateCount * 8 / 10);
}

}  // namespace
}  // namespace quom
