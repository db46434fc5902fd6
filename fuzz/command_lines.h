// Command lines of quomc made of any bytes, and what no run of them may do. The fuzz target and the test with
// random bytes share them.
#pragma once
#include <cmath>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <span>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "console/quomc.h"

namespace quom::fuzz {

// Reads choices and numbers from bytes; at their end every choice is the first one.
class Choices {
 public:
    explicit Choices(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}
    bool at_end() const { return used_ >= bytes_.size(); }
    unsigned byte() { return at_end() ? 0u : bytes_[used_++]; }
    std::string_view one_of(std::span<const std::string_view> words) { return words[byte() % words.size()]; }
    // A number of the size of T, p, rho; sometimes a strange one.
    std::string number() {
        static constexpr std::string_view strange[] = {
            "0",  "-1",   "1e-300", "1e300", "nan",  "inf",   "1e-9", "0x10", "300,5", "",
            " 5", "+300", "1D2",    "5bar",  "-20C", "20 °C", "1e",   "--T",  "3e2",   "1e30"};
        const unsigned kind = byte();
        if (kind < 40) return std::string(one_of(strange));
        std::ostringstream text;
        text << std::pow(10.0, kind % 7 - 1.0) * (1.0 + byte() / 32.0);
        return text.str();
    }
    std::string rest() {
        std::string text(bytes_.begin() + static_cast<std::ptrdiff_t>(std::min(used_, bytes_.size())),
                         bytes_.end());
        used_ = bytes_.size();
        return text;
    }

 private:
    std::span<const std::uint8_t> bytes_;
    std::size_t used_ = 0;
};

struct CommandLine {
    std::vector<std::string> args;
    std::string input;  // of the standard input
};

// No argument names a file that could be written.
inline CommandLine command_line_of(std::span<const std::uint8_t> bytes) {
    static constexpr std::string_view commands[] = {"state", "saturation", "calc", "virial", "tank",
                                                    "iso",   "sweep",      "show", "models", "find",
                                                    "state", "calc",       "sweep"};
    static constexpr std::string_view substances[] = {
        "propane", "water",    "7727-37-9", "CO2",    "#3",     "Ethanol", "helium",  "#0",         "#9999",
        "propan3", "hydrogen", "",          "decane", "oxygen", "'",       "ammonia", "formic acid"};
    static constexpr std::string_view valued[] = {
        "--T",    "--p",      "--rho",    "--m",    "--V",    "--n",    "--value", "--T0",
        "--p0",   "--b0",     "--b1",     "--b2",   "--tref", "--pref", "--tenv",  "--penv",
        "--href", "--sref",   "--watson", "--mode", "--ext",  "--eos",  "--evp",   "--hlv",
        "--cp",   "--energy", "--volume", "--jobs", "--ref"};
    static constexpr std::string_view codes[] = {"0",  "1",  "2",  "3",  "4",  "5",  "6",  "7",
                                                 "8",  "9",  "10", "11", "12", "13", "14", "15",
                                                 "16", "17", "18", "19", "24", "-1", "99"};
    static constexpr std::string_view whole[] = {"--json",
                                                 "--functions",
                                                 "--benson",
                                                 "--database-rhol",
                                                 "--concept=partial",
                                                 "--concept=global",
                                                 "--phase=L",
                                                 "--phase=V",
                                                 "--hold=h",
                                                 "--hold=s",
                                                 "--hold=v",
                                                 "--hold=eH",
                                                 "--hold=x",
                                                 "--answer=no",
                                                 "--answer=yes",
                                                 "--ji=/dev/null",
                                                 "--help",
                                                 "--nothing",
                                                 "--units=T=C,p=bar,h=kJ/kg",
                                                 "--units=h=m"};
    Choices from(bytes);
    CommandLine line;
    const std::string command(from.one_of(commands));
    line.args = {command, std::string(from.one_of(substances))};
    if (command == "sweep") line.args.insert(line.args.end(), {"--in", "-", "--out", "-"});
    // What most commands need; more follows by chance.
    const unsigned needs = from.byte();
    if (command == "calc" || command == "sweep")
        line.args.insert(line.args.end(), {"--mode", std::string(from.one_of(codes))});
    if (command != "find" && command != "show" && command != "models" && command != "sweep") {
        if (needs & 1u) line.args.insert(line.args.end(), {"--T", from.number()});
        if (needs & 2u) line.args.insert(line.args.end(), {"--p", from.number()});
        if (needs & 4u) line.args.insert(line.args.end(), {"--rho", from.number()});
    }
    for (unsigned n = from.byte() % 5; n > 0; --n) {
        if (from.byte() & 1u) {
            line.args.emplace_back(from.one_of(whole));
            continue;
        }
        const std::string option(from.one_of(valued));
        line.args.push_back(option);
        line.args.push_back(from.byte() & 1u ? std::string(from.one_of(codes)) : from.number());
    }
    if (command == "sweep") {
        static constexpr std::string_view heads[] = {"T;p\n",   "T/C;p/bar\n", "T,rho\n", "p\trho\n",
                                                     "T;m;V\n", "T;p;x\n",     ""};
        line.input = from.one_of(heads);
        for (int row = 0; row < 3; ++row) line.input += from.number() + ";" + from.number() + "\n";
        line.input += from.rest();
    }
    return line;
}

inline bool is_word_letter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }

// Whether the word stands in the text between other than letters.
inline bool has_word(std::string_view text, std::string_view word) {
    for (std::size_t at = text.find(word); at != std::string_view::npos; at = text.find(word, at + 1)) {
        const bool before = at > 0 && is_word_letter(text[at - 1]);
        const bool behind = at + word.size() < text.size() && is_word_letter(text[at + word.size()]);
        if (!before && !behind) return true;
    }
    return false;
}

// The text without the lines of rows that could not be read.
inline std::string without_refused_rows(const std::string& text) {
    std::istringstream lines(text);
    std::string rest;
    for (std::string line; std::getline(lines, line);) {
        if (line.find("malformed") == std::string::npos) rest += line + '\n';
    }
    return rest;
}

// A volume or density that is no positive number, anywhere in the object; empty when there is none.
inline std::string impossible_value(const nlohmann::json& json) {
    for (const auto& [key, value] : json.items()) {
        if (value.is_structured()) {
            if (const std::string inner = impossible_value(value); !inner.empty()) return inner;
        }
        const bool volume =
            (key == "rho" || key.starts_with("rho_") || key == "v" || key.starts_with("v_")) &&
            !key.ends_with("_difference");
        if (volume && value.is_number() && !(value.get<double>() > 0.0)) return key + " = " + value.dump();
    }
    return {};
}

// Runs the command line over the starter database in the folder; what is wrong with the answer, empty when
// nothing is.
inline std::string fault_of(const CommandLine& line, const std::string& starter_folder) {
    std::vector<std::string> args = {"--program-folder", starter_folder};
    args.insert(args.end(), line.args.begin(), line.args.end());
    std::istringstream in(line.input);
    std::ostringstream out_stream, err_stream;
    const int status = quomc_main(args, in, out_stream, err_stream);
    const std::string out = out_stream.str(), err = err_stream.str();
    if (status < 0 || status > 3) return "status " + std::to_string(status);
    if (status != 0 && err.empty()) return "no reason on standard error";
    if (status == 0 && out.empty()) return "no output";
    const bool own_words = out.find("Usage:") != std::string::npos;  // of the help
    // A refusal repeats what was typed, that of a row of a table too, and a list without a result has
    // "(Error)" for its pressure.
    if (status == 0 && !own_words) {
        const std::string told = without_refused_rows(out);
        for (const std::string_view word : {"nan", "inf", "NaN", "(Error)"}) {
            if (has_word(told, word)) return "the output has " + std::string(word);
        }
    }
    const bool wants_json = std::find(args.begin(), args.end(), "--json") != args.end();
    if (!wants_json || own_words || out.empty()) return {};
    const nlohmann::json json = nlohmann::json::parse(out, nullptr, false);
    if (json.is_discarded()) return "the output is no JSON";
    return impossible_value(json);
}

// The line as a shell would take it.
inline std::string text_of(const CommandLine& line) {
    std::string text = "quomc";
    for (const std::string& word : line.args) text += " '" + word + "'";
    return line.input.empty() ? text : text + " <<< '" + line.input + "'";
}

}  // namespace quom::fuzz
