// Random data sets for tests of files: values of all sizes, with zeros and short numbers among them.
#pragma once
#include <cmath>
#include <random>

#include "fitting/exp_data.h"
#include "fitting/xy_data.h"

namespace quom::test {

class RandomData {
 public:
    explicit RandomData(unsigned seed) : engine_(seed) {}

    double number() {
        switch (whole(4)) {
            case 0:
                return 0;
            case 1:
                return std::round(100 * uniform(0, 1000)) / 100;
            case 2:
                return whole(1000000);
            default:
                return std::pow(10.0, uniform(-20, 20));
        }
    }
    TpRhoPoint point() {
        TpRhoPoint p{.Aus = static_cast<std::int16_t>(-whole(2)), .T = number(), .p = number()};
        for (std::size_t column = 2; column < exp_columns; ++column) set_exp_value(p, column, number());
        return p;
    }
    XYPoint pair() {
        return {static_cast<float>(number()), static_cast<float>(-number()),
                static_cast<std::int16_t>(-whole(2))};
    }
    int whole(int below) { return std::uniform_int_distribution<int>(0, below - 1)(engine_); }

 private:
    double uniform(double from, double to) {
        return std::uniform_real_distribution<double>(from, to)(engine_);
    }
    std::mt19937 engine_;
};

}  // namespace quom::test
