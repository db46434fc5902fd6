#include "console/name_matches.h"

#include <algorithm>
#include <functional>
#include <map>
#include <numeric>
#include <optional>

#include "base/code_page.h"
#include "base/files.h"
#include "substance/search.h"
#include "substance/synonyms.h"

namespace quom {
namespace {

// What names are compared by: upper case, normal spelling, without blanks and marks.
std::string key_of(std::string_view name) {
    std::string key(name);
    NormalizeName(key);
    return without_marks(normal_spelling(std::move(key)));
}

using SynonymsByCas = std::map<std::string, std::vector<std::string>>;

SynonymsByCas synonyms_of(const NameSource& source) {
    SynonymsByCas by_cas;
    const FileBytes file = read_file(find_in_folder(source.ProgramPath, SynonymFile));
    if (!file.bytes) return by_cas;
    for (SynonymBlock& block : read_synonym_blocks(*file.bytes))
        by_cas.emplace(std::move(block.casrn), std::move(block.synonyms));
    return by_cas;
}

// How a name matches; none when it does not.
using Judge = std::function<std::optional<int>(const std::string& key)>;

// The best match of every substance, best first. Names in the database count before synonyms.
std::vector<NameMatch> best_matches(const NameSource& source, const Judge& judge, bool with_formula) {
    const SynonymsByCas synonyms = synonyms_of(source);
    std::vector<NameMatch> matches;
    const auto& rows = source.file.rows;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        std::optional<NameMatch> best;
        const auto offer = [&](std::string_view name, bool synonym) {
            const std::optional<int> rank = judge(key_of(name));
            if (!rank || (best && best->rank <= *rank)) return;
            best = NameMatch{static_cast<int>(i) + 1, *rank, synonym ? std::string(name) : std::string()};
        };
        std::string_view names = rows[i].SubstanceName;
        offer(names.substr(0, names.find(';')), false);
        if (with_formula) {
            offer(rows[i].SubstanceFormula, false);
            offer(rows[i].SubstanceCAS, false);
        }
        while (names.find(';') != std::string_view::npos) {
            names.remove_prefix(names.find(';') + 1);
            offer(trim(names.substr(0, names.find(';'))), true);
        }
        const auto found = synonyms.find(rows[i].SubstanceCAS);
        if (found != synonyms.end())
            for (const std::string& name : found->second) offer(name, true);
        if (best) matches.push_back(std::move(*best));
    }
    std::stable_sort(matches.begin(), matches.end(),
                     [](const NameMatch& a, const NameMatch& b) { return a.rank < b.rank; });
    return matches;
}

// Letters to be changed, put in, left out or exchanged with the next (Damerau 1964), limit + 1 when there are
// more.
int letters_apart(const std::string& a, const std::string& b, int limit) {
    const auto n = static_cast<int>(b.size());
    if (std::abs(static_cast<int>(a.size()) - n) > limit) return limit + 1;
    std::vector<int> before(b.size() + 1), row(b.size() + 1), next(b.size() + 1);
    std::iota(row.begin(), row.end(), 0);
    for (std::size_t i = 1; i <= a.size(); ++i) {
        next[0] = static_cast<int>(i);
        for (std::size_t k = 1; k <= b.size(); ++k) {
            next[k] = std::min({row[k] + 1, next[k - 1] + 1, row[k - 1] + (a[i - 1] != b[k - 1] ? 1 : 0)});
            if (i > 1 && k > 1 && a[i - 1] == b[k - 2] && a[i - 2] == b[k - 1])
                next[k] = std::min(next[k], before[k - 2] + 1);
        }
        before.swap(row);
        row.swap(next);
    }
    return std::min(row[b.size()], limit + 1);
}

}  // namespace

std::vector<NameMatch> matching_substances(const NameSource& source, std::string_view text) {
    const std::string wanted = key_of(text);
    if (wanted.empty()) return {};
    const Judge contains = [&](const std::string& key) -> std::optional<int> {
        const std::size_t at = key.find(wanted);
        if (at == std::string::npos) return std::nullopt;
        return key == wanted ? 0 : at == 0 ? 1 : 2;
    };
    return best_matches(source, contains, true);
}

std::vector<NameMatch> near_substances(const NameSource& source, std::string_view text, std::size_t count) {
    const std::string wanted = key_of(text);
    const int limit = std::min(3, static_cast<int>(text_length(wanted)) / 3);
    const Judge near = [&](const std::string& key) -> std::optional<int> {
        const int apart = letters_apart(key, wanted, limit);
        return apart <= limit ? std::optional<int>(apart) : std::nullopt;
    };
    std::vector<NameMatch> matches;
    if (limit > 0) matches = best_matches(source, near, false);
    if (matches.empty()) matches = matching_substances(source, text);
    if (matches.size() > count) matches.resize(count);
    return matches;
}

}  // namespace quom
