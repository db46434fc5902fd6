#include "substance/identity.h"

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

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

constexpr int most_atoms = 9999;

// Takes the element off the front of a formula; null and nothing taken when there is none.
const Element* take_element(std::string_view& formula) {
    if (formula.empty() || !is_upper(formula.front())) return nullptr;
    const std::size_t letters = formula.size() > 1 && is_lower(formula[1]) ? 2 : 1;
    const auto element = std::find_if(std::begin(elements), std::end(elements), [&](const Element& e) {
        return e.symbol == formula.substr(0, letters);
    });
    if (element == std::end(elements)) return nullptr;
    formula.remove_prefix(letters);
    return element;
}

// Takes the number of atoms off the front, 1 when none is written; -1 when there are too many.
int take_count(std::string_view& formula) {
    if (formula.empty() || !is_digit(formula.front())) return 1;
    int count = 0;
    for (; !formula.empty() && is_digit(formula.front()); formula.remove_prefix(1)) {
        count = 10 * count + (formula.front() - '0');
        if (count > most_atoms) return -1;
    }
    return count;
}

using Atoms = std::map<std::string_view, int>;

std::string text_of(Atoms atoms) {
    std::string text;
    const auto write = [&](std::string_view symbol, int count) {
        if (count > 0) text += std::string(symbol) + (count > 1 ? std::to_string(count) : std::string());
    };
    if (atoms.contains("C")) {
        for (const std::string_view first : {"C", "H"}) {
            write(first, atoms[first]);
            atoms.erase(first);
        }
    }
    for (const auto& [symbol, count] : atoms) write(symbol, count);
    return text;
}

}  // namespace

std::optional<std::vector<ElementCount>> elements_of(std::string_view formula) {
    if (formula.empty()) return std::nullopt;
    std::vector<ElementCount> found;
    while (!formula.empty()) {
        const Element* const element = take_element(formula);
        const int count = element == nullptr ? 0 : take_count(formula);
        if (count < 0 || element == nullptr) return std::nullopt;
        found.push_back({element->symbol, count});
    }
    return found;
}

std::optional<double> molar_mass(std::string_view formula) {
    const auto found = elements_of(formula);
    if (!found) return std::nullopt;
    double M = 0.0;
    for (const ElementCount& part : *found) {
        std::string_view symbol = part.symbol;
        M += take_element(symbol)->mass * part.count;
    }
    return M;
}

std::optional<std::string> hill_formula(std::string_view formula) {
    if (formula.empty()) return std::nullopt;
    std::vector<Atoms> groups(1);  // the formula and the brackets that are open in it
    while (!formula.empty()) {
        Atoms taken;
        if (formula.front() == '(') {
            formula.remove_prefix(1);
            groups.emplace_back();
            continue;
        }
        if (formula.front() == ')') {
            formula.remove_prefix(1);
            if (groups.size() == 1) return std::nullopt;
            taken = std::move(groups.back());
            groups.pop_back();
        } else if (const Element* element = take_element(formula)) {
            taken[element->symbol] = 1;
        }
        const int count = take_count(formula);
        if (taken.empty() || count < 0) return std::nullopt;
        for (const auto& [symbol, n] : taken) {
            groups.back()[symbol] += n * count;
            if (groups.back()[symbol] > most_atoms) return std::nullopt;
        }
    }
    if (groups.size() > 1) return std::nullopt;
    return text_of(groups.front());
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
