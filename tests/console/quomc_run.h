// Drives quomc over the starter database as a program would.
#pragma once
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "console/quomc.h"

namespace quom::console {

struct Outcome {
    int status = -1;
    std::string out, err;
    nlohmann::json json() const { return nlohmann::json::parse(out); }
};

// Arguments separated by blanks; "~" stands for a blank inside of one.
inline Outcome quomc(const std::string& line) {
    std::vector<std::string> args;
    if (line.find("--program-folder") == std::string::npos) args = {"--program-folder", QUOM_STARTER_DATA};
    std::istringstream words(line);
    for (std::string word; words >> word; args.push_back(word))
        for (char& c : word)
            if (c == '~') c = ' ';
    std::istringstream in;
    std::ostringstream out, err;
    Outcome run;
    run.status = quomc_main(std::move(args), in, out, err);
    run.out = out.str(), run.err = err.str();
    return run;
}

}  // namespace quom::console
