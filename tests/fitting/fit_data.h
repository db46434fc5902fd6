// Points to fit, from the folder tests/data/fits.
#pragma once
#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "fitting/fit.h"
#include "fitting/known_fits.h"
#include "support/test_paths.h"

namespace quom::test {

// The pairs of a file; the first line says what they are and where they come from.
inline std::vector<FitPoint> fit_points(const std::string& name) {
    std::ifstream file(test_data() + "/data/fits/" + name + ".csv");
    std::string line;
    std::vector<FitPoint> points;
    EXPECT_TRUE(std::getline(file, line)) << name;
    while (std::getline(file, line)) {
        const std::size_t comma = line.find(',');
        points.push_back({std::stod(line.substr(0, comma)), std::stod(line.substr(comma + 1))});
    }
    return points;
}

}  // namespace quom::test
