#include "diagrams/ticks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <span>
#include <string_view>

#include "base/number_text.h"

namespace quom {
namespace {

constexpr double MostTicks = 1000;
constexpr double Slack = 1e-9;         // of a step: ends of a range that are meant to be ticks
constexpr double LargestWhole = 1e15;  // multiples beyond are not told apart
constexpr std::string_view Minus = "\u2212", ThinBlank = "\u2009", Times = "\u00B7";

// factor 10^power; negative powers are divided by: 3 x 0.1 is not 0.3, 3/10 is.
double times_power(double factor, int power) {
    return power < 0 ? factor / std::pow(10.0, -power) : factor * std::pow(10.0, power);
}

int power_below(double x) {
    const int power = static_cast<int>(std::floor(std::log10(x)));
    return times_power(1, power + 1) <= x ? power + 1 : power;
}

bool is_range(double low, double high) { return low < high && std::isfinite(high - low); }

// A step as factor and power of ten, so that its multiples are rounded once.
struct Step {
    double factor = 1;
    int power = 0;
    double value() const { return times_power(factor, power); }
};

// The multiples first to last of a step that lie in a range.
struct Multiples {
    double first = 0, last = -1;
    double count() const { return last - first + 1; }
};
Multiples multiples_in(double low, double high, double step) {
    const double first = std::ceil(low / step - Slack), last = std::floor(high / step + Slack);
    if (!(std::abs(first) < LargestWhole) || !(std::abs(last) < LargestWhole)) return {};
    return {first, last};
}

std::vector<double> values_of(const Step& step, double low, double high) {
    std::vector<double> values;
    const Multiples m = multiples_in(low, high, step.value());
    if (m.count() > MostTicks) return values;
    const auto count = static_cast<std::size_t>(std::max(m.count(), 0.0));
    for (std::size_t k = 0; k < count; ++k) {
        const double i = m.first + static_cast<double>(k);
        values.push_back(std::clamp(times_power(i * step.factor, step.power), low, high) + 0.0);  // no -0
    }
    return values;
}

Step step_of_125(double low, double high, int most) {
    const double least = (high - low) / std::max(most, 1);
    const int power = power_below(least);
    for (const double factor : {1.0, 2.0, 5.0})
        if (times_power(factor, power) >= least * (1.0 - Slack)) return {factor, power};
    return {1.0, power + 1};
}

Ticks with_numbers(std::vector<double> at, std::vector<double> between, int digits) {
    Ticks ticks{std::move(at), {}, {}};
    for (const double x : ticks.at) ticks.numbers.push_back(tick_number(x, digits));
    std::ranges::set_difference(between, ticks.at, std::back_inserter(ticks.between));
    return ticks;
}

// Ticks at the multiples of a step, the fine ones a whole share of it.
Ticks ticks_at(const Step& step, const Step& fine, double low, double high, int digits) {
    return with_numbers(values_of(step, low, high), values_of(fine, low, high), digits);
}

// factors times powers of ten, every so many powers.
std::vector<double> log_values(std::span<const double> factors, double low, double high, int every = 1) {
    std::vector<double> values;
    const int first = power_below(low), last = power_below(high);
    for (int power = first; power <= last; ++power) {
        if (power % every != 0) continue;
        for (const double factor : factors) {
            const double x = times_power(factor, power);
            if (x >= low * (1 - Slack) && x <= high * (1 + Slack)) values.push_back(std::clamp(x, low, high));
        }
    }
    return values;
}

constexpr auto ones = std::to_array<double>({1});
constexpr auto one_two_five = std::to_array<double>({1, 2, 5});
constexpr auto one_to_nine = std::to_array<double>({1, 2, 3, 4, 5, 6, 7, 8, 9});

std::string superscript(int power) {
    constexpr auto digits = std::to_array<std::string_view>(
        {"\u2070", "\u00B9", "\u00B2", "\u00B3", "\u2074", "\u2075", "\u2076", "\u2077", "\u2078", "\u2079"});
    std::string text = power < 0 ? "\u207B" : "";
    for (const char c : genNum(std::abs(power))) text += digits[static_cast<std::size_t>(c - '0')];
    return text;
}

// "12345.6" with thin blanks between the thousands of its whole part.
std::string with_thin_blanks(std::string_view plain) {
    const std::size_t whole = std::min(plain.find('.'), plain.size());
    std::string text;
    for (std::size_t i = 0; i < plain.size(); ++i) {
        if (whole >= 5 && i > 0 && i < whole && (whole - i) % 3 == 0) text += ThinBlank;
        text += plain[i];
    }
    return text;
}

}  // namespace

double round_step(double low, double high, int most) {
    return is_range(low, high) ? step_of_125(low, high, most).value() : 0.0;
}

Ticks linear_ticks(double low, double high, int most, int digits) {
    if (!is_range(low, high) || !(round_step(low, high, most) > 0.0)) return {};
    const Step step = step_of_125(low, high, most);
    const bool of_two = step.factor == 2.0;
    const Step fine = of_two ? Step{5.0, step.power - 1} : Step{2.0 * step.factor, step.power - 1};
    return ticks_at(step, fine, low, high, digits);
}

Ticks step_ticks(double low, double high, double step, int digits) {
    if (!is_range(low, high) || !(step > 0.0) || !std::isfinite(step)) return {};
    const int power = power_below(step);
    const double factor = step / times_power(1, power);
    // 25 and 0.3 are kept as 2.5 and 3 times a power; what is no short number is multiplied as it stands.
    const bool is_short = std::abs(factor * 1e6 - std::round(factor * 1e6)) < 1e-3;
    const Step whole = is_short ? Step{std::round(factor * 1e6) / 1e6, power} : Step{step, 0};
    Ticks ticks = with_numbers(values_of(whole, low, high), {}, digits);
    const int parts = std::lround(factor) == 2 && is_short ? 4 : 5;
    if (ticks.at.size() * static_cast<std::size_t>(parts) > static_cast<std::size_t>(MostTicks)) return ticks;
    return with_numbers(std::move(ticks.at), values_of({whole.factor / parts, whole.power}, low, high),
                        digits);
}

Ticks log_ticks(double low, double high, double dense, int most, int digits) {
    if (!(low > 0.0) || !is_range(low, high)) return {};
    const double decades = std::log10(high / low);
    std::vector<double> at =
        log_values(decades <= dense ? std::span<const double>(one_two_five) : ones, low, high);
    if (at.size() < 3) return linear_ticks(low, high, most, digits);
    if (decades > dense) {
        const int every = static_cast<int>(std::ceil(static_cast<double>(at.size()) / std::max(most, 1)));
        if (every > 1) return with_numbers(log_values(ones, low, high, every), at, digits);
    }
    return with_numbers(std::move(at), log_values(one_to_nine, low, high), digits);
}

double log_low(double low, double high) {
    if (low > 0.0) return low;
    return high > 0.0 ? high / 1000.0 : 0.0;
}

std::string tick_number(double x, int digits) {
    if (!std::isfinite(x)) return digitsNum(x, digits);
    std::string text = x < 0.0 ? std::string(Minus) : std::string();
    // Rounded first: 999999.9 with six digits is a million.
    const double size = std::abs(Val(digitsNum(x, digits)));
    if (size == 0.0) return "0";
    const int power = power_below(size);
    if (power >= -4 && power < 6) {
        const std::string mask =
            "0." + std::string(static_cast<std::size_t>(std::max(digits - 1 - power, 0)), '#');
        std::string plain = formatMask(size, mask);
        if (plain.ends_with('.')) plain.pop_back();
        return text + with_thin_blanks(plain);
    }
    const std::string mantissa = genNum(size / times_power(1, power), digits);
    if (mantissa != "1") text += mantissa + std::string(Times);
    return text + "10" + superscript(power);
}

double up_125(double x) {
    const int power = power_below(x);
    for (const double factor : {1.0, 2.0, 5.0})
        if (times_power(factor, power) >= x * (1.0 - Slack)) return times_power(factor, power);
    return times_power(1.0, power + 1);
}

double down_125(double x) {
    const int power = power_below(x * (1.0 + Slack));
    for (const double factor : {5.0, 2.0})
        if (times_power(factor, power) <= x * (1.0 + Slack)) return times_power(factor, power);
    return times_power(1.0, power);
}

}  // namespace quom
