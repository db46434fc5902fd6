#include "quantities/unit_spelling.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

namespace quom {
namespace {

// Spellings beside the usual one. Small and capital letters are exchanged only where no other unit is meant:
// "mpa" could be millipascal.
struct Alias {
    std::string_view spelling, symbol;
    int power = 1;  // symbol^power
};
constexpr std::array aliases = {
    Alias{"°C", "C"},      Alias{"degC", "C"},    Alias{"℃", "C"},        Alias{"°F", "F"},
    Alias{"degF", "F"},    Alias{"℉", "F"},       Alias{"°R", "R"},       Alias{"degR", "R"},
    Alias{"°K", "K"},      Alias{"degK", "K"},    Alias{"l", "dm", 3},    Alias{"L", "dm", 3},
    Alias{"ml", "cm", 3},  Alias{"mL", "cm", 3},  Alias{"cc", "cm", 3},   Alias{"KJ", "kJ"},
    Alias{"kj", "kJ"},     Alias{"KPa", "kPa"},   Alias{"kpa", "kPa"},    Alias{"KPA", "kPa"},
    Alias{"hpa", "hPa"},   Alias{"MPA", "MPa"},   Alias{"Bar", "bar"},    Alias{"BAR", "bar"},
    Alias{"bara", "bar"},  Alias{"ATM", "atm"},   Alias{"PSI", "psi"},    Alias{"psia", "psi"},
    Alias{"torr", "Torr"}, Alias{"TORR", "Torr"}, Alias{"mmhg", "mmHg"},  Alias{"Kg", "kg"},
    Alias{"KG", "kg"},     Alias{"kMol", "kmol"}, Alias{"kgmol", "kmol"}, Alias{"gmol", "mol"},
    Alias{"Btu", "BTU"},   Alias{"btu", "BTU"},   Alias{"BTU_IT", "BTU"}, Alias{"lbm", "lb"},
    Alias{"hr", "h"},
};

constexpr std::array<std::pair<std::string_view, std::string_view>, 14> plain_signs = {{
    {"**", "^"},
    {"·", "*"},
    {"⋅", "*"},
    {"×", "*"},
    {"⁻", "-"},
    {"¹", "1"},
    {"²", "2"},
    {"³", "3"},
    {"⁴", "4"},
    {"\u00A0", " "},
    {"\u202F", " "},
    {"[", "("},
    {"]", ")"},
    {"º", "°"},
}};

std::string with_plain_signs(std::string_view text) {
    std::string plain;
    while (!text.empty()) {
        const auto sign =
            std::ranges::find_if(plain_signs, [&](const auto& s) { return text.starts_with(s.first); });
        const bool known = sign != plain_signs.end();
        plain += known ? sign->second : text.substr(0, 1);
        text.remove_prefix(known ? sign->first.size() : 1);
    }
    return plain;
}

using Exponents = std::map<std::string, int, std::less<>>;

bool is_digit(char c) { return c >= '0' && c <= '9'; }
// Letters, "_", and the bytes of a sign beyond ASCII.
bool is_symbol(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
           static_cast<unsigned char>(c) > 127;
}

// Reads unit = factor { ["/" | "*"] factor }, factor = symbol [exponent] | "1" | "(" unit ")".
class Reader {
 public:
    explicit Reader(std::string_view text) : rest_(text) {}
    bool read(Exponents& into) {
        product(into, 1);
        return good_ && rest_.empty();
    }

 private:
    static constexpr int deepest = 8;  // brackets

    void blanks() {
        while (rest_.starts_with(' ') || rest_.starts_with('\t')) rest_.remove_prefix(1);
    }
    bool take(char c) {
        blanks();
        if (!rest_.starts_with(c)) return false;
        rest_.remove_prefix(1);
        return true;
    }
    void product(Exponents& into, int sign) {
        good_ = good_ && ++depth_ < deepest;
        factor(into, sign);
        for (blanks(); good_ && !rest_.empty() && rest_.front() != ')'; blanks()) {
            const bool divided = take('/');
            if (!divided) take('*');
            factor(into, divided ? -sign : sign);
        }
        --depth_;
    }
    void factor(Exponents& into, int sign) {
        if (!good_) return;
        if (take('(')) {
            product(into, sign);
            good_ = good_ && take(')');
            return;
        }
        if (take('1')) return;
        const auto end = std::ranges::find_if_not(rest_, is_symbol);
        const std::string_view symbol(rest_.begin(), end);
        rest_.remove_prefix(symbol.size());
        const int power = exponent();
        good_ = good_ && !symbol.empty();
        const auto alias = std::ranges::find(aliases, symbol, &Alias::spelling);
        if (alias == aliases.end())
            into[std::string(symbol)] += sign * power;
        else
            into[std::string(alias->symbol)] += sign * power * alias->power;
    }
    // "^-3", "-3", "3"; 1 where none stands.
    int exponent() {
        const bool raised = rest_.starts_with('^');
        if (raised) rest_.remove_prefix(1);
        const bool negative = rest_.starts_with('-');
        if (negative) rest_.remove_prefix(1);
        if (rest_.empty() || !is_digit(rest_.front())) {
            good_ = good_ && !raised && !negative;
            return 1;
        }
        const int digit = rest_.front() - '0';
        rest_.remove_prefix(1);
        good_ = good_ && digit > 0 && (rest_.empty() || !is_digit(rest_.front()));
        return negative ? -digit : digit;
    }

    std::string_view rest_;
    bool good_ = true;
    int depth_ = 0;
};

void rename(Exponents& exponents, const char* from, const char* to) {
    const auto it = exponents.find(from);
    if (it == exponents.end()) return;
    exponents[to] += it->second;
    exponents.erase(it);
}

}  // namespace

std::string unit_key(std::string_view text) {
    const std::string plain = with_plain_signs(text);
    Exponents exponents;
    if (!Reader(plain).read(exponents)) return {};
    const bool alone = exponents.size() == 1 && exponents.begin()->second == 1;
    if (!alone) {
        rename(exponents, "C", "K");
        rename(exponents, "F", "R");
    }
    std::string key;
    for (const auto& [symbol, exponent] : exponents)
        key += (key.empty() ? "" : " ") + symbol + "^" + std::to_string(exponent);
    return key;
}

}  // namespace quom
