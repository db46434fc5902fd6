#include "substance/identity.h"

#include <algorithm>

namespace quom {
namespace {

struct Element {
    std::string_view symbol;
    double mass;
};
constexpr Element elements[] = {
    {"H", 1.0080},  {"D", 2.0141},  {"He", 4.0026}, {"Li", 6.94},   {"Be", 9.0122}, {"B", 10.81},
    {"C", 12.011},  {"N", 14.007},  {"O", 15.999},  {"F", 18.998},  {"Ne", 20.180}, {"Na", 22.990},
    {"Mg", 24.305}, {"Al", 26.982}, {"Si", 28.085}, {"P", 30.974},  {"S", 32.06},   {"Cl", 35.45},
    {"Ar", 39.95},  {"K", 39.098},  {"Ca", 40.078}, {"Ti", 47.867}, {"V", 50.942},  {"Cr", 51.996},
    {"Mn", 54.938}, {"Fe", 55.845}, {"Co", 58.933}, {"Ni", 58.693}, {"Cu", 63.546}, {"Zn", 65.38},
    {"Ga", 69.723}, {"Ge", 72.630}, {"As", 74.922}, {"Se", 78.971}, {"Br", 79.904}, {"Kr", 83.798},
    {"Rb", 85.468}, {"Sr", 87.62},  {"Zr", 91.224}, {"Nb", 92.906}, {"Mo", 95.95},  {"Ag", 107.87},
    {"Cd", 112.41}, {"In", 114.82}, {"Sn", 118.71}, {"Sb", 121.76}, {"Te", 127.60}, {"I", 126.90},
    {"Xe", 131.29}, {"Cs", 132.91}, {"Ba", 137.33}, {"Ta", 180.95}, {"W", 183.84},  {"Re", 186.21},
    {"Os", 190.23}, {"Ir", 192.22}, {"Pt", 195.08}, {"Au", 196.97}, {"Hg", 200.59}, {"Tl", 204.38},
    {"Pb", 207.2},  {"Bi", 208.98}, {"U", 238.03}};

bool is_upper(char c) { return c >= 'A' && c <= 'Z'; }
bool is_lower(char c) { return c >= 'a' && c <= 'z'; }
bool is_digit(char c) { return c >= '0' && c <= '9'; }

// The end of the table for a symbol that is not in it.
const Element* element_of(std::string_view symbol) {
    return std::find_if(std::begin(elements), std::end(elements),
                        [symbol](const Element& e) { return e.symbol == symbol; });
}

}  // namespace

std::optional<std::vector<ElementCount>> elements_of(std::string_view formula) {
    if (formula.empty()) return std::nullopt;
    std::vector<ElementCount> found;
    for (std::size_t k = 0; k < formula.size();) {
        if (!is_upper(formula[k])) return std::nullopt;
        const std::size_t letters = k + 1 < formula.size() && is_lower(formula[k + 1]) ? 2 : 1;
        const Element* const element = element_of(formula.substr(k, letters));
        if (element == std::end(elements)) return std::nullopt;
        k += letters;
        int count = 0;
        const std::size_t digits = k;
        for (; k < formula.size() && is_digit(formula[k]); ++k) {
            count = 10 * count + (formula[k] - '0');
            if (count > 9999) return std::nullopt;
        }
        found.push_back({element->symbol, k == digits ? 1 : count});
    }
    return found;
}

std::optional<double> molar_mass(std::string_view formula) {
    const auto found = elements_of(formula);
    if (!found) return std::nullopt;
    double M = 0.0;
    for (const ElementCount& part : *found) M += element_of(part.symbol)->mass * part.count;
    return M;
}

bool is_cas_number(std::string_view text) {
    const std::size_t n = text.size();
    if (n < 7 || n > 12 || text[n - 2] != '-' || text[n - 5] != '-') return false;
    int sum = 0, place = 0;
    for (std::size_t k = n - 2; k-- > 0;) {
        if (k == n - 5) continue;
        if (!is_digit(text[k])) return false;
        sum += ++place * (text[k] - '0');
    }
    return is_digit(text[n - 1]) && sum % 10 == text[n - 1] - '0';
}

}  // namespace quom
