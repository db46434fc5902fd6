// The ticks of every chart: places and numbers.
#pragma once
#include <string>
#include <vector>

namespace quom {

struct Ticks {
    std::vector<double> at, between;   // with and without a number, rising, inside the range
    std::vector<std::string> numbers;  // of `at`
    bool operator==(const Ticks&) const = default;
};

// The step of linear_ticks: the smallest of 1, 2, 5 times a power of ten that is at least (high - low)/most.
double round_step(double low, double high, int most = 9);

// Ticks at whole multiples of round_step, with 3 between at a step of 2, else 4; numbers of so many
// significant digits at most. None where low is not below high, where a limit is not finite, and where the
// range is too narrow for its numbers.
Ticks linear_ticks(double low, double high, int most = 9, int digits = 6);
// The same for a given step; none for a step that is not above 0 or gives over 1000 of them.
Ticks step_ticks(double low, double high, double step, int digits = 6);

// Ticks of a logarithmic axis: numbers at the powers of ten, over up to `dense` decades also at 2 and 5 times
// them; 1 to 9 times them between. Where fewer than three numbers fall into the range, those of a linear
// axis; where more than `most` powers do, only every second, third ... of them. None where low is not above 0
// or not below high.
Ticks log_ticks(double low, double high, double dense = 6, int most = 9, int digits = 6);

// Where a logarithmic axis can begin: at low when that is above 0, else three decades below high; 0 when high
// is not above 0 either.
double log_low(double low, double high);

// The number at a tick: so many digits at most, U+2212 as minus, thin blanks between thousands from five
// digits on; from 0.0001 to below a million plain, else as a power of ten: "2·10⁻⁵".
std::string tick_number(double x, int digits = 6);

// 1, 2 or 5 times a power of ten, at least x, and at most x; x above 0.
double up_125(double x);
double down_125(double x);

}  // namespace quom
