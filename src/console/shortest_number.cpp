#include "console/shortest_number.h"

#include <charconv>

#ifdef QUOM_HAVE_FMT
#define FMT_HEADER_ONLY
#include <fmt/format.h>
#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#endif

namespace quom {
namespace {

char* write_any(double x, char* to) { return std::to_chars(to, to + number_space, x).ptr; }

#ifdef QUOM_HAVE_FMT

// One digit: regions, counts.
bool is_digit(double x) { return x >= 0.0 && x < 10.0 && x == static_cast<double>(static_cast<int>(x)); }

constexpr int most_digits = 17;
constexpr double first_inexact_integer = 9007199254740992.0;  // 2^53

constexpr std::array<std::uint64_t, most_digits + 1> powers_of_ten = [] {
    std::array<std::uint64_t, most_digits + 1> powers{};
    std::uint64_t power = 1;
    for (std::uint64_t& p : powers) {
        p = power;
        power *= 10;
    }
    return powers;
}();

// Decimal digits of x > 0: the number of bits gives it but for one, 1233/4096 is log10(2).
int count_digits(std::uint64_t x) {
    const int n = (static_cast<int>(std::bit_width(x)) * 1233) >> 12;
    return n + (x >= powers_of_ten[static_cast<std::size_t>(n)] ? 1 : 0);
}

// Eight digits each of two numbers below 1e8, as text, the first digit in the lowest byte.
struct TwoWords {
    std::uint64_t first, second;
};

#ifdef __SSE2__

// Both at once: split in halves, in pairs and in digits, each part above the one in front of it.
TwoWords eight_digits_each(std::uint64_t x, std::uint64_t y) {
    const __m128i eight = _mm_set_epi64x(static_cast<std::int64_t>(y), static_cast<std::int64_t>(x));
    const __m128i upper = _mm_srli_epi64(_mm_mul_epu32(eight, _mm_set1_epi64x(3518437209)), 45);  // x/10000
    const __m128i lower = _mm_sub_epi64(eight, _mm_mul_epu32(upper, _mm_set1_epi64x(10000)));
    const __m128i four = _mm_or_si128(upper, _mm_slli_epi64(lower, 32));
    const __m128i hundreds = _mm_srli_epi16(_mm_mulhi_epu16(four, _mm_set1_epi16(5243)), 3);  // x/100
    const __m128i rest = _mm_sub_epi16(four, _mm_mullo_epi16(hundreds, _mm_set1_epi16(100)));
    const __m128i pairs = _mm_or_si128(hundreds, _mm_slli_epi32(rest, 16));
    const __m128i tens = _mm_mulhi_epu16(pairs, _mm_set1_epi16(6554));  // x/10
    const __m128i ones = _mm_sub_epi16(pairs, _mm_mullo_epi16(tens, _mm_set1_epi16(10)));
    const __m128i digits = _mm_or_si128(tens, _mm_slli_epi16(ones, 8));
    const __m128i text = _mm_or_si128(digits, _mm_set1_epi8('0'));
    return {static_cast<std::uint64_t>(_mm_cvtsi128_si64(text)),
            static_cast<std::uint64_t>(_mm_cvtsi128_si64(_mm_unpackhi_epi64(text, text)))};
}

#else

// Split in halves, in pairs and in digits, side by side in one word.
std::uint64_t eight_digits(std::uint32_t x) {
    const std::uint64_t halves = (x / 10000) | (static_cast<std::uint64_t>(x % 10000) << 32);
    const std::uint64_t hundreds = ((halves * 10486) >> 20) & 0x0000007F0000007FULL;
    const std::uint64_t pairs = ((halves - 100 * hundreds) << 16) | hundreds;
    const std::uint64_t tens = ((pairs * 103) >> 10) & 0x000F000F000F000FULL;
    return (((pairs - 10 * tens) << 8) | tens) | 0x3030303030303030ULL;
}
TwoWords eight_digits_each(std::uint64_t x, std::uint64_t y) {
    return {eight_digits(static_cast<std::uint32_t>(x)), eight_digits(static_cast<std::uint32_t>(y))};
}

#endif

// Seventeen digits, ready to be written.
struct Digits {
    std::uint64_t first, second, last;

    // x < 1e17
    explicit Digits(std::uint64_t x) {
        const std::uint64_t upper = x / 1'000'000'000, lower = x % 1'000'000'000, middle = lower / 10;
        const TwoWords words = eight_digits_each(upper, middle);
        first = words.first;
        second = words.second;
        last = '0' + (lower - 10 * middle);
    }
    void write(char* to) const {
        std::memcpy(to, &first, 8);
        std::memcpy(to + 8, &second, 8);
        std::memcpy(to + 16, &last, 8);
    }
    // With a point behind the first `whole` digits, 1 to 16. The words are put together before they are
    // written: bytes that are read back from a word just written cost more than all else here.
    void write_with_point(int whole, char* to) const {
        const std::uint64_t second_on = (second << 8) | (first >> 56), last_on = (last << 8) | (second >> 56);
        std::memcpy(to + 16, &last_on, 8);
        if (whole < 8) {
            const std::uint64_t word = with_point(first, first << 8, whole);
            std::memcpy(to, &word, 8);
            std::memcpy(to + 8, &second_on, 8);
        } else if (whole < 16) {
            const std::uint64_t word = with_point(second, second_on, whole - 8);
            std::memcpy(to, &first, 8);
            std::memcpy(to + 8, &word, 8);
        } else {
            std::memcpy(to, &first, 8);
            std::memcpy(to + 8, &second, 8);
            to[16] = '.';
        }
    }

 private:
    // n bytes of `before`, a point, and of `behind` what is left.
    static std::uint64_t with_point(std::uint64_t before, std::uint64_t behind, int n) {
        const std::uint64_t low = (std::uint64_t{1} << (8 * n)) - 1;
        return (before & low) | (std::uint64_t{'.'} << (8 * n)) | (behind & ~((low << 8) | 0xFF));
    }
};
static_assert(std::endian::native == std::endian::little);

// x = significand 10^power, n digits, the first of them at 10^lead. The plain form where it is not longer
// than the one with an exponent (d.ddde+xx); false for all others.
bool is_plain(int n, int lead) {
    const int with_exponent = n + (n > 1 ? 1 : 0) + 4;
    if (lead < 0) return n + 1 - lead <= with_exponent;
    return lead < n - 1 || lead + 1 <= with_exponent;
}

// A plain number above 0 with n and lead as in is_plain.
char* write_plain(const Digits& digits, int n, int lead, char* to) {
    if (lead < 0) {
        std::memcpy(to, "0.00000", 8);
        digits.write(to + 1 - lead);
        return to + 1 - lead + n;
    }
    const int whole = lead + 1;
    if (n > whole) {
        digits.write_with_point(whole, to);
        return to + n + 1;
    }
    digits.write(to);
    return to + whole;
}

#endif

}  // namespace

#ifdef QUOM_HAVE_FMT

char* write_shortest(double x, char* to) {
    if (is_digit(x)) {
        *to = static_cast<char>('0' + static_cast<int>(x));
        return to + 1;
    }
    const double size = std::fabs(x);
    if (!(size >= 1e-5 && size < first_inexact_integer)) return write_any(x + 0.0, to);
    const auto decimal = fmt::detail::dragonbox::to_decimal(size);
    const auto significand = static_cast<std::uint64_t>(decimal.significand);
    const int n = count_digits(significand), lead = n + decimal.exponent - 1;
    if (!is_plain(n, lead)) return write_any(x, to);
    if (x < 0.0) *to++ = '-';
    return write_plain(Digits(significand * powers_of_ten[static_cast<std::size_t>(most_digits - n)]), n,
                       lead, to);
}

#else

char* write_shortest(double x, char* to) { return write_any(x + 0.0, to); }

#endif

}  // namespace quom
