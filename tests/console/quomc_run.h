// Drives quomc over the starter database as a program would.
#pragma once
#include <gtest/gtest.h>

#include <cmath>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "console/quomc.h"
#include "support/test_paths.h"

namespace quom {

struct CommandRun {
    int status = -1;
    std::string out, err;
    nlohmann::json json() const { return nlohmann::json::parse(out); }
};

// Arguments separated by blanks; "~" stands for a blank inside of one. input: what the standard input holds.
inline CommandRun quomc(const std::string& line, const std::string& input = {}) {
    std::vector<std::string> args;
    if (line.find("--program-folder") == std::string::npos) args = {"--program-folder", test::starter_data()};
    std::istringstream words(line);
    for (std::string word; words >> word; args.push_back(word))
        for (char& c : word)
            if (c == '~') c = ' ';
    std::istringstream in(input);
    std::ostringstream out, err;
    CommandRun run;
    run.status = quomc_main(std::move(args), in, out, err);
    run.out = out.str();
    run.err = err.str();
    return run;
}

// The JSON object of a command that has a result.
inline nlohmann::json found(const std::string& line) {
    const CommandRun run = quomc(line + " --json");
    EXPECT_EQ(run.status, 0) << line << "\n" << run.err;
    return run.status == 0 ? run.json() : nlohmann::json();
}
inline double at(const nlohmann::json& json, const std::string& pointer) {
    const nlohmann::json& x = json.at(nlohmann::json::json_pointer(pointer));
    EXPECT_TRUE(x.is_number()) << pointer;
    return x.is_number() ? x.get<double>() : std::nan("");
}
// The row of a table whose key has a value.
inline nlohmann::json row(const nlohmann::json& table, const char* key, const nlohmann::json& value) {
    for (const nlohmann::json& r : table)
        if (r[key] == value) return r;
    ADD_FAILURE() << "no row with " << key << " " << value;
    return {};
}
// A number as an argument takes it, in all its digits.
inline std::string number(double x) { return nlohmann::json(x).dump(); }

}  // namespace quom
