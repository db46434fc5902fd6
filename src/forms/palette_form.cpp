#include "forms/palette_form.h"

#include <algorithm>
#include <optional>
#include <tuple>

#include "base/code_page.h"
#include "substance/search.h"

namespace quom {

namespace {

constexpr int NotFound = 3;
const std::string SubstancePrefix = "substance:";

bool is_word_letter(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
           (static_cast<unsigned char>(c) & 0x80) != 0;
}

std::vector<std::string> words_of(std::string_view text) {
    std::vector<std::string> words;
    std::string word;
    for (const char c : std::string(text) + ' ') {
        if (c != ' ') {
            word += c;
        } else if (!word.empty()) {
            words.push_back(std::move(word));
            word.clear();
        }
    }
    return words;
}

struct Found {
    std::size_t at = 0;
    int place = NotFound;  // 0 at the beginning of a word, 1 inside
};

// Best place of a word: the first at the beginning of a word, else the first inside.
Found find_word(std::string_view text, std::string_view word) {
    Found best;
    for (std::size_t at = text.find(word); at != std::string_view::npos; at = text.find(word, at + 1)) {
        if (at == 0 || !is_word_letter(text[at - 1]) || !is_word_letter(word[0])) return {at, 0};
        if (best.place == NotFound) best = {at, 1};
    }
    return best;
}

void add_mark(std::vector<TextPart>& marks, std::size_t at, std::size_t length) {
    for (const TextPart& m : marks)
        if (at < m.begin + m.length && m.begin < at + length) return;
    marks.push_back({at, length});
}

// Upper case has as many bytes as the text for the letters of the code page.
std::string compared(std::string_view text) {
    std::string upper = upper_text(text);
    return upper.size() == text.size() ? upper : std::string(text);
}

struct Ranked {
    PaletteHit hit;
    int place = 0;
    bool in_order = true;  // the words stand as they were typed
    std::size_t used = 0, order = 0;
};

std::optional<Ranked> rank(const PaletteEntry& entry, const std::vector<std::string>& words) {
    Ranked ranked{.hit = {.entry = entry, .marks = {}, .detail_marks = {}}};
    if (entry.found >= 0) {
        ranked.place = entry.found;
        if (entry.part.length > 0)
            (entry.in_detail ? ranked.hit.detail_marks : ranked.hit.marks) = {entry.part};
        return ranked;
    }
    const std::string text = compared(entry.text), detail = compared(entry.detail);
    std::size_t behind = 0;
    for (const std::string& word : words) {
        const Found in_text = find_word(text, word), in_detail = find_word(detail, word);
        if (in_text.place == NotFound && in_detail.place == NotFound) return std::nullopt;
        // The detail serves where the text does not hold the word.
        if (in_text.place != NotFound) {
            add_mark(ranked.hit.marks, in_text.at, word.size());
            ranked.place += in_text.place;
            ranked.in_order = ranked.in_order && in_text.at >= behind;
            behind = in_text.at + word.size();
        } else {
            add_mark(ranked.hit.detail_marks, in_detail.at, word.size());
            ranked.place += 1;
        }
    }
    for (std::vector<TextPart>* marks : {&ranked.hit.marks, &ranked.hit.detail_marks})
        std::ranges::sort(*marks, {}, &TextPart::begin);
    return ranked;
}

}  // namespace

std::string_view palette_kind_text(PaletteKind kind) {
    constexpr std::string_view Texts[] = {"Calculation", "Substance", "Models", "Window",
                                          "2D Graph",    "3D Graph",  "Help"};
    return Texts[static_cast<std::size_t>(kind)];
}

std::vector<PaletteHit> palette_hits(const std::vector<PaletteEntry>& entries, std::string_view typed,
                                     const std::vector<std::string>& used) {
    const std::vector<std::string> words = words_of(compared(typed));
    std::vector<Ranked> found;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const auto last = std::ranges::find(used, entries[i].id);
        if (words.empty() && last == used.end()) continue;
        std::optional<Ranked> ranked = rank(entries[i], words);
        if (!ranked) continue;
        ranked->used = static_cast<std::size_t>(last - used.begin());
        ranked->order = i;
        found.push_back(std::move(*ranked));
    }
    std::ranges::sort(found, {}, [](const Ranked& r) {
        return std::tuple(r.place, !r.hit.entry.reason.empty(), !r.in_order, r.used, r.hit.entry.kind,
                          r.order);
    });
    std::vector<PaletteHit> hits;
    hits.reserve(found.size());
    for (Ranked& r : found) hits.push_back(std::move(r.hit));
    return hits;
}

std::vector<PaletteEntry> palette_substances(const DatabaseFile& file, const NameIndex& names,
                                             std::string_view typed) {
    std::vector<PaletteEntry> entries;
    for (const NameHit& hit : names.find(typed)) {
        if (entries.size() == PaletteSubstances) break;
        const SubstanceRow& row = file.rows[static_cast<std::size_t>(hit.index) - 1];
        const std::string name = main_name(row.SubstanceName);
        const bool other = hit.kind != NameKind::main;
        entries.push_back({.kind = PaletteKind::substance,
                           .id = substance_id({name, row.SubstanceFormula, row.SubstanceCAS, file.path}),
                           .text = name,
                           .detail = other ? std::string(hit.name) : row.SubstanceFormula,
                           .found = hit.match == NameMatch::inside ? 1 : 0,
                           .part = hit.part,
                           .in_detail = other});
    }
    return entries;
}

std::string substance_id(const RecentSubstance& s) {
    return SubstancePrefix + s.name + '\t' + s.formula + '\t' + s.casrn + '\t' + s.database;
}

RecentSubstance substance_of_id(std::string_view id) {
    if (!id.starts_with(SubstancePrefix)) return {};
    id.remove_prefix(SubstancePrefix.size());
    RecentSubstance s;
    std::string* const fields[] = {&s.name, &s.formula, &s.casrn, &s.database};
    for (std::string* field : fields) {
        const std::size_t end = std::min(id.find('\t'), id.size());
        *field = id.substr(0, end);
        id.remove_prefix(std::min(end + 1, id.size()));
    }
    return s;
}

std::vector<std::string> with_used(std::vector<std::string> used, const std::string& id) {
    std::erase(used, id);
    used.insert(used.begin(), id);
    if (used.size() > PaletteRemembered) used.resize(PaletteRemembered);
    return used;
}

}  // namespace quom
