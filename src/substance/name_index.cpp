#include "substance/name_index.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <functional>
#include <limits>
#include <optional>
#include <utility>

#include "base/code_page.h"
#include "substance/database.h"
#include "substance/identity.h"
#include "substance/name_spelling.h"
#include "substance/search.h"
#include "substance/synonyms.h"

namespace quom {
namespace {

constexpr std::size_t LongestName = 1000;  // bytes; what is longer is no name
constexpr int UnfinishedPenalty = 5;
constexpr std::uint64_t NoMatch = std::numeric_limits<std::uint64_t>::max();

constexpr int rank_of(NameKind kind) {
    switch (kind) {
        case NameKind::main:
        case NameKind::formula:
        case NameKind::casrn:
            return 0;
        case NameKind::further:
            return 1;
        case NameKind::other_language:
            return 2;
        case NameKind::synonym:
            break;
    }
    return 4;
}

// Score, length and entry of a match in one number, the better match is the smaller one.
constexpr std::uint64_t packed(int score, std::uint16_t length, std::size_t entry) {
    return static_cast<std::uint64_t>(score) << 48 | static_cast<std::uint64_t>(length) << 32 | entry;
}
constexpr int score_of(std::uint64_t match) { return static_cast<int>(match >> 48); }
constexpr std::size_t entry_of(std::uint64_t match) { return match & 0xFFFFFFFFu; }

std::uint64_t hash_of(std::string_view text) { return std::hash<std::string_view>{}(text); }

bool looks_like_casrn(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789- ") == std::string_view::npos;
}

std::uint32_t letters_of(std::string_view key) {
    std::uint32_t letters = 0;
    for (const char c : key) letters |= 1u << (static_cast<unsigned char>(c) % 32u);
    return letters;
}

}  // namespace

std::string_view kind_word(NameKind kind, bool Englisch) {
    switch (kind) {
        case NameKind::formula:
            return "formula";
        case NameKind::casrn:
            return "CAS";
        case NameKind::other_language:
            return Englisch ? "german" : "english";
        case NameKind::synonym:
            return "synonym";
        case NameKind::main:
        case NameKind::further:
            break;
    }
    return "name";
}

NameIndex::NameIndex(const DatabaseFile& file, std::string_view synonym_bytes)
    : substances_(file.rows.size()) {
    int index = 0;
    for (const SubstanceRow& row : file.rows) add_row(row, ++index);
    add_synonyms(file, synonym_bytes);
    for (ExactNames* names : {&main_names_, &synonyms_, &synonym_casrn_})
        std::sort(names->begin(), names->end());
}

void NameIndex::add(NameKind kind, int index, std::string_view name) {
    Entry entry{.key = static_cast<std::uint32_t>(keys_.size() + 1),
                .text = static_cast<std::uint32_t>(texts_.size()),
                .text_length = static_cast<std::uint16_t>(name.size()),
                .index = index,
                .kind = kind};
    texts_.insert(texts_.end(), name.begin(), name.end());
    if (index != 0) {
        const ComparedName compared = compared_name(name);
        entry.key_length = static_cast<std::uint16_t>(compared.key.size());
        entry.letters = letters_of(compared.key);
        keys_.append(1, '\n').append(compared.key);
        begins_.append(1, '\0').append(compared.begins);
    }
    entries_.push_back(entry);
}

void NameIndex::add_row(const SubstanceRow& row, int index) {
    const auto add_names = [&](std::string_view names, NameKind first, NameKind others) {
        for (NameKind kind = first; !names.empty(); kind = others) {
            const std::string_view name = trim(names.substr(0, names.find(';')));
            if (!name.empty() && name.size() <= LongestName) add(kind, index, name);
            names.remove_prefix(std::min(names.find(';'), names.size() - 1) + 1);
        }
    };
    const auto remember = [&](const std::string& text) {
        main_names_.push_back({hash_of(text), static_cast<std::uint32_t>(entries_.size() - 1)});
    };
    add(NameKind::main, index, main_name(row.SubstanceName));
    remember(upper_text(main_name(row.SubstanceName)));
    add(NameKind::casrn, index, trim(row.SubstanceCAS));
    remember(std::string(trim(row.SubstanceCAS)));
    add(NameKind::formula, index, trim(row.SubstanceFormula));
    if (const std::size_t end = row.SubstanceName.find(';'); end != std::string::npos)
        add_names(std::string_view(row.SubstanceName).substr(end + 1), NameKind::further, NameKind::further);
    add_names(row.OtherName, NameKind::other_language, NameKind::other_language);
}

void NameIndex::add_synonyms(const DatabaseFile& file, std::string_view synonym_bytes) {
    ExactNames rows;  // CAS numbers of the database, for FindCAS
    int index = 0;
    for (const SubstanceRow& row : file.rows)
        rows.push_back({hash_of(row.SubstanceCAS), static_cast<std::uint32_t>(++index)});
    std::sort(rows.begin(), rows.end());
    const auto find_cas = [&](const std::string& casrn) {
        for (auto at = std::lower_bound(rows.begin(), rows.end(), Exact{hash_of(casrn), 0});
             at != rows.end() && at->hash == hash_of(casrn); ++at)
            if (file.rows[at->entry - 1].SubstanceCAS == casrn) return static_cast<int>(at->entry);
        return 0;
    };
    for (const SynonymBlock& block : read_synonym_blocks(synonym_bytes)) {
        const auto entry = [&] { return static_cast<std::uint32_t>(entries_.size() - 1); };
        const int owner = find_cas(block.casrn);
        add(NameKind::casrn, 0, text_left(block.casrn, 20));
        entries_.back().index = owner;  // of the number itself, which is in no key: the database has it too
        synonym_casrn_.push_back({hash_of(block.casrn), entry()});
        for (const std::string& name : block.synonyms) {
            if (name.size() > LongestName) continue;
            add(NameKind::synonym, owner, name);
            synonyms_.push_back({hash_of(without_marks(name)), entry()});
        }
    }
}

template <class Same>
const NameIndex::Entry* NameIndex::first_of(const ExactNames& names, std::string_view text, Same same) const {
    const std::uint64_t hash = hash_of(text);
    for (auto at = std::lower_bound(names.begin(), names.end(), Exact{hash, 0});
         at != names.end() && at->hash == hash; ++at)
        if (same(text_of(entries_[at->entry]))) return &entries_[at->entry];
    return nullptr;
}

const NameIndex::Entry* NameIndex::looked_up(std::string_view text) const {
    const std::string wanted = upper_text(trim_right(text));
    if (wanted.empty()) return nullptr;
    const auto in_tables = [&](std::string_view name) {
        return name == wanted || upper_text(name) == wanted;
    };
    if (const Entry* entry = first_of(main_names_, wanted, in_tables)) return entry;

    std::string name(text);
    NormalizeName(name);
    if (name.empty()) return nullptr;
    const std::string key = without_marks(normal_spelling(name));
    const Entry* by_casrn =
        first_of(synonym_casrn_, name, [&](std::string_view casrn) { return casrn == name; });
    const Entry* by_name = key.empty() ? nullptr : first_of(synonyms_, key, [&](std::string_view line) {
        return without_marks(line) == key;
    });
    // The block that comes first in the file.
    return by_name == nullptr || (by_casrn != nullptr && by_casrn < by_name) ? by_casrn : by_name;
}

int NameIndex::exact(std::string_view text) const {
    const Entry* found = looked_up(text);
    return found == nullptr ? 0 : found->index;
}

std::string_view NameIndex::missing_casrn(std::string_view text) const {
    const Entry* found = looked_up(text);
    if (found == nullptr || found->index != 0) return {};
    while (found->kind != NameKind::casrn) --found;  // the number heads its block
    return text_of(*found);
}

// Writes the best match of every substance; penalty is added to its score.
void NameIndex::collect(std::string_view key, int penalty, bool casrn_too,
                        std::vector<std::uint64_t>& best) const {
    std::size_t at = 0, entry = 0;
    while (at + key.size() <= keys_.size()) {
        const void* found = ::memmem(keys_.data() + at, keys_.size() - at, key.data(), key.size());
        if (found == nullptr) return;
        at = static_cast<std::size_t>(static_cast<const char*>(found) - keys_.data());
        while (entry + 1 < entries_.size() && entries_[entry + 1].key <= at) ++entry;
        const Entry& e = entries_[entry];
        const bool at_beginning = at == e.key;
        const bool is_name = e.kind != NameKind::formula && e.kind != NameKind::casrn;
        const NameMatch match = at_beginning
                                    ? e.key_length == key.size() ? NameMatch::whole : NameMatch::beginning
                                : begins_[at] != '\0' ? NameMatch::word
                                                      : NameMatch::inside;
        bool settled = !is_name || at_beginning;  // nothing better follows in this name
        if ((is_name || at_beginning) && (e.kind != NameKind::casrn || casrn_too)) {
            std::uint64_t& known = best[static_cast<std::size_t>(e.index) - 1];
            const int rank = rank_of(e.kind) + penalty;
            known = std::min(known, packed(10 * static_cast<int>(match) + rank, e.text_length, entry));
            settled = settled || known <= packed(10 * static_cast<int>(NameMatch::word) + rank, 0, 0);
        }
        at = settled ? e.key + e.key_length : at + 1;
    }
}

std::vector<NameHit> NameIndex::find(std::string_view text) const {
    std::vector<NameHit> hits;
    const std::string key = compared_name(text).key;
    if (key.empty() || substances_ == 0) return hits;
    std::vector<std::uint64_t> best(substances_, NoMatch);
    const bool casrn_too = looks_like_casrn(text) && key.size() > 2;
    const std::vector<std::string> unfinished = unfinished_spellings(key);
    for (const std::string& other : unfinished) collect(other, UnfinishedPenalty, casrn_too, best);
    collect(key, 0, casrn_too, best);

    struct Ranked {
        std::uint64_t order;
        std::size_t entry;
    };
    std::vector<Ranked> ranked;
    for (std::size_t i = 0; i < best.size(); ++i)
        if (best[i] != NoMatch) ranked.push_back({best[i] >> 32 << 32 | i, entry_of(best[i])});
    std::sort(ranked.begin(), ranked.end(),
              [](const Ranked& a, const Ranked& b) { return a.order < b.order; });
    hits.reserve(ranked.size());
    for (const Ranked& one : ranked) {
        NameHit& hit =
            hits.emplace_back(hit_of(entries_[one.entry], static_cast<NameMatch>(score_of(one.order) / 10)));
        hit.part = part_of_name(hit.name, key);
        for (const std::string& other : unfinished)
            if (hit.part.length == 0) hit.part = part_of_name(hit.name, other);
    }
    if (hits.empty()) hits = of_same_atoms(text);
    put_first(exact(text), hits);
    return hits;
}

// Moves the substance to the front, or puts it there.
void NameIndex::put_first(int index, std::vector<NameHit>& hits) const {
    if (index == 0) return;
    const auto at = std::ranges::find(hits, index, &NameHit::index);
    if (at != hits.end()) {
        std::rotate(hits.begin(), at, at + 1);
        return;
    }
    const auto main = std::ranges::find_if(
        entries_, [&](const Entry& e) { return e.index == index && e.kind == NameKind::main; });
    if (main != entries_.end()) hits.insert(hits.begin(), hit_of(*main, NameMatch::whole));
}

std::vector<NameHit> NameIndex::of_same_atoms(std::string_view text) const {
    std::vector<NameHit> hits;
    const std::optional<std::string> atoms = hill_formula(trim(text));
    if (!atoms) return hits;
    for (const Entry& entry : entries_)
        if (entry.kind == NameKind::formula && hill_formula(text_of(entry)) == atoms) {
            hits.push_back(hit_of(entry, NameMatch::whole));
            hits.back().part = {0, entry.text_length};
        }
    return hits;
}

std::vector<NameHit> NameIndex::named(std::string_view text) const {
    std::vector<NameHit> hits = find(text);
    if (const int known = exact(text); known != 0) {
        std::erase_if(hits, [&](const NameHit& hit) { return hit.index != known; });
        return hits;
    }
    const std::string key = compared_name(text).key;
    std::erase_if(hits, [&](const NameHit& hit) {
        return hit.match != NameMatch::whole || compared_name(hit.name).key != key;
    });
    if (hits.empty()) return of_same_atoms(text);
    const auto is_name = [](const NameHit& hit) { return hit.kind != NameKind::formula; };
    const auto is_formula = [&](const NameHit& hit) { return !is_name(hit) && hit.name == trim(text); };
    if (std::ranges::any_of(hits, is_formula))
        std::erase_if(hits, std::not_fn(is_formula));
    else if (std::ranges::any_of(hits, is_name))
        std::erase_if(hits, std::not_fn(is_name));
    return hits;
}

std::vector<NameHit> NameIndex::near(std::string_view text, std::size_t count) const {
    const std::string key = compared_name(text).key;
    const bool digits = looks_like_casrn(text);
    std::vector<NameHit> hits;
    if (text_length(key) < 3) return hits;
    const int limit = digits ? 1 : std::max(static_cast<int>(text_length(key)) / 3, 1);
    const std::uint32_t letters = letters_of(key);

    std::vector<std::uint64_t> best(substances_, NoMatch);
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        const Entry& e = entries_[i];
        if (e.key_length == 0 || e.kind == NameKind::formula || (e.kind == NameKind::casrn) != digits)
            continue;
        // Each change brings at most one letter in and one letter out.
        if (std::popcount(letters & ~e.letters) > limit || std::popcount(e.letters & ~letters) > limit)
            continue;
        const int apart = letters_apart(key, key_of(e), limit);
        if (apart > limit) continue;
        std::uint64_t& known = best[static_cast<std::size_t>(e.index) - 1];
        known = std::min(known, packed(10 * apart + rank_of(e.kind), e.text_length, i));
    }
    std::vector<std::uint64_t> found;
    std::copy_if(best.begin(), best.end(), std::back_inserter(found),
                 [](std::uint64_t m) { return m != NoMatch; });
    std::sort(found.begin(), found.end());
    if (found.size() > count) found.resize(count);
    for (const std::uint64_t match : found)
        hits.push_back(hit_of(entries_[entry_of(match)], NameMatch::near, score_of(match) / 10));
    return hits;
}

std::vector<NameHit> NameIndex::proposals(std::string_view text, std::size_t count) const {
    std::vector<NameHit> hits = near(text, count);
    if (!hits.empty()) {
        std::erase_if(hits, [least = hits.front().apart](const NameHit& hit) { return hit.apart > least; });
        return hits;
    }
    hits = find(text);
    if (hits.size() > count) hits.resize(count);
    return hits;
}

}  // namespace quom
