#include "substance/name_spelling.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <numeric>

namespace quom {
namespace {

// À to ß, and, 32 further, à to ÿ.
constexpr std::array<std::string_view, 32> latin_letters = {
    "A", "A", "A", "A", "AE", "A", "AE", "C", "E", "E", "E", "E", "I",  "I", "I",  "I",
    "D", "N", "O", "O", "O",  "O", "OE", "X", "O", "U", "U", "U", "UE", "Y", "TH", "SS"};

struct Stem {
    std::string_view from, to;
};
constexpr Stem stems[] = {{"AETH", "ETH"},    {"GLYKO", "GLYCO"}, {"KARBO", "CARBO"},   {"SULPH", "SULF"},
                          {"AZET", "ACET"},   {"SEK", "SEC"},     {"ZYKLO", "CYCLO"},   {"ZYCLO", "CYCLO"},
                          {"CYKLO", "CYCLO"}, {"DEKAN", "DECAN"}, {"KRESOL", "CRESOL"}, {"OXYD", "OXID"}};
// Numbers that end in A: in TETRAETHYL the A is theirs, in TETRAAETHYL the second one is not.
constexpr std::string_view multipliers[] = {"TETR", "PENT", "HEX", "HEPT", "OCT", "OKT", "DEC", "DEK", "MET"};

bool is_letter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (static_cast<unsigned char>(c) & 0x80) != 0;
}
bool is_digit(char c) { return c >= '0' && c <= '9'; }
bool is_mark(char c) { return std::string_view(" -()[].,'\t").find(c) != std::string_view::npos; }

bool begins_word(std::string_view name, std::size_t at) {
    const char before = at == 0 ? ' ' : name[at - 1];
    return is_letter(name[at]) ? !is_letter(before)
                               : is_digit(name[at]) && !is_letter(before) && !is_digit(before);
}

using Origin = ComparedName::Origin;

void append(ComparedName& to, std::string_view letters, bool begins, Origin origin) {
    to.key += letters;
    to.origins.insert(to.origins.end(), letters.size(), origin);
    to.begins.append(letters.size(), '\0');
    if (begins) to.begins[to.begins.size() - letters.size()] = '\1';
}

// "Me-" and "Et-" as words of their own are METHYL and ETHYL.
void write_out_prefix(ComparedName& name, Origin hyphen) {
    const std::size_t n = name.key.size();
    if (n < 2 || name.begins[n - 2] == '\0') return;
    if (name.key.ends_with("ME")) append(name, "THYL", false, hyphen);
    if (name.key.ends_with("ET")) append(name, "HYL", false, hyphen);
}

// Capital letters and digits of a name, accents resolved.
ComparedName plain_letters(std::string_view name) {
    ComparedName plain;
    plain.key.reserve(name.size() + 2);
    plain.begins.reserve(name.size() + 2);
    plain.origins.reserve(name.size() + 2);
    for (std::size_t at = 0; at < name.size(); ++at) {
        const char c = name[at];
        const auto origin = [at](std::size_t bytes) {
            return Origin{static_cast<std::uint32_t>(at), static_cast<std::uint32_t>(at + bytes)};
        };
        if (c == '-') write_out_prefix(plain, origin(1));
        if (is_mark(c)) continue;
        const bool begins = begins_word(name, at);
        const auto code = static_cast<unsigned char>(at + 1 < name.size() ? name[at + 1] : '\0');
        if (c == '\xC3' && code >= 0x80 && code <= 0xBF) {
            append(plain, code == 0xBF ? "Y" : latin_letters[code & 0x1Fu], begins, origin(2));
            ++at;
        } else {
            const char capital = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
            append(plain, {&capital, 1}, begins, origin(1));
        }
    }
    return plain;
}

bool follows_multiplier(std::string_view before) {
    return std::any_of(std::begin(multipliers), std::end(multipliers),
                       [&](std::string_view multiplier) { return before.ends_with(multiplier); });
}

const Stem* stem_at(std::string_view key, std::size_t at) {
    if (std::string_view("ACDGKOSZ").find(key[at]) == std::string_view::npos) return nullptr;
    for (const Stem& stem : stems) {
        if (!key.substr(at).starts_with(stem.from)) continue;
        if (&stem == stems && follows_multiplier(key.substr(0, at))) continue;
        return &stem;
    }
    return nullptr;
}

}  // namespace

ComparedName compared_name(std::string_view name) {
    ComparedName plain = plain_letters(name);
    std::size_t at = 0;
    while (at < plain.key.size() && stem_at(plain.key, at) == nullptr) ++at;
    if (at == plain.key.size()) return plain;

    ComparedName spelled{plain.key.substr(0, at), plain.begins.substr(0, at), plain.origins};
    spelled.origins.resize(at);
    while (at < plain.key.size()) {
        const Stem* stem = stem_at(plain.key, at);
        const std::string_view letters =
            stem == nullptr ? std::string_view(plain.key).substr(at, 1) : stem->to;
        const std::size_t written = stem == nullptr ? 1 : stem->from.size();
        // A stem that gets shorter loses its first letters: they belong to the first one that is left.
        const std::size_t dropped = written - letters.size();
        const std::size_t first = spelled.key.size();
        append(spelled, letters, plain.begins[at] != '\0', {});
        for (std::size_t i = 0; i < letters.size(); ++i)
            spelled.origins[first + i] = plain.origins[at + dropped + i];
        spelled.origins[first].begin = plain.origins[at].begin;
        at += written;
    }
    return spelled;
}

TextPart part_of_name(std::string_view name, std::string_view key) {
    const ComparedName compared = compared_name(name);
    std::size_t found = key.empty() ? std::string::npos : compared.key.find(key);
    for (std::size_t at = found; at != std::string::npos; at = compared.key.find(key, at + 1)) {
        if (at != 0 && compared.begins[at] == '\0') continue;
        found = at;
        break;
    }
    if (found == std::string::npos) return {};
    const std::size_t begin = compared.origins[found].begin;
    return {begin, compared.origins[found + key.size() - 1].end - begin};
}

std::vector<std::string> unfinished_spellings(std::string_view key) {
    constexpr std::size_t shortest = 3;  // two letters stand for too much
    std::vector<std::string> others;
    for (const Stem& stem : stems) {
        for (std::size_t n = std::min(stem.from.size() - 1, key.size()); n >= shortest; --n) {
            if (!key.ends_with(stem.from.substr(0, n))) continue;
            std::string other(key.substr(0, key.size() - n));
            other += stem.to.substr(0, n - (stem.from.size() - stem.to.size()));
            if (other != key && std::find(others.begin(), others.end(), other) == others.end())
                others.push_back(std::move(other));
            break;
        }
    }
    return others;
}

int letters_apart(std::string_view a, std::string_view b, int limit) {
    const auto m = static_cast<int>(a.size());
    const auto n = static_cast<int>(b.size());
    if (std::abs(m - n) > limit) return limit + 1;
    const auto at = [](int i) { return static_cast<std::size_t>(i); };
    std::vector<int> before(at(n) + 1, limit + 1), row(at(n) + 1), next(at(n) + 1, limit + 1);
    std::iota(row.begin(), row.end(), 0);
    for (int i = 1; i <= m; ++i) {
        const int from = std::max(1, i - limit), to = std::min(n, i + limit);  // beyond it takes more
        std::fill(next.begin(), next.end(), limit + 1);
        next[0] = std::min(i, limit + 1);
        int least = next[0];
        for (int k = from; k <= to; ++k) {
            int& cost = next[at(k)];
            cost = std::min({row[at(k)] + 1, next[at(k - 1)] + 1,
                             row[at(k - 1)] + (a[at(i - 1)] != b[at(k - 1)] ? 1 : 0), limit + 1});
            if (i > 1 && k > 1 && a[at(i - 1)] == b[at(k - 2)] && a[at(i - 2)] == b[at(k - 1)])
                cost = std::min(cost, before[at(k - 2)] + 1);
            least = std::min(least, cost);
        }
        if (least > limit) return limit + 1;
        before.swap(row);
        row.swap(next);
    }
    return std::min(row[at(n)], limit + 1);
}

}  // namespace quom
