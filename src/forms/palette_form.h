// The search over all that the program can do: which entries hold what is typed, best first.
#pragma once
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "forms/start_page_form.h"
#include "substance/name_index.h"

namespace quom {

// In the order in which entries stand that are equally good.
enum class PaletteKind { calculation, substance, models, window, graph_2d, graph_3d, help };
std::string_view palette_kind_text(PaletteKind kind);

struct PaletteEntry {
    PaletteKind kind{};
    std::string id{};      // what it is remembered by
    std::string text{};    // what is searched and shown
    std::string detail{};  // shown behind it: where the entry stands, the name that was found
    std::string reason{};  // why it cannot run now; empty: it can
    // Found by the search for substances: how well (0 at the beginning of a word, 1 inside) and what matched.
    // -1: to be searched by its text.
    int found = -1;
    TextPart part{};
    bool in_detail = false;  // the part is one of the detail
};

struct PaletteHit {
    PaletteEntry entry;
    std::vector<TextPart> marks;         // what was typed, in its text, in order, without overlap
    std::vector<TextPart> detail_marks;  // in its detail
};

inline constexpr std::size_t PaletteRows = 10, PaletteRemembered = 8, PaletteSubstances = 4;

// Entries that hold every word that is typed, in any order and any case of letters. Words at the beginning of
// a word come before those inside of one; then what can run before what cannot, words in the order typed,
// what was used last (used: identities, last first), the kind, the order given. Nothing typed: the entries
// used last.
std::vector<PaletteHit> palette_hits(const std::vector<PaletteEntry>& entries, std::string_view typed,
                                     const std::vector<std::string>& used);

// Substances that the text finds, the best first, with what was found of them as detail where it is not the
// name shown. An identity is name, formula, CAS number and database, see substance_id.
std::vector<PaletteEntry> palette_substances(const DatabaseFile& file, const NameIndex& names,
                                             std::string_view typed);
// The identity of a substance as the palette remembers it, and back; an empty name when it is none.
std::string substance_id(const RecentSubstance& substance);
RecentSubstance substance_of_id(std::string_view id);

// The identities with one put first, and no more than are remembered.
std::vector<std::string> with_used(std::vector<std::string> used, const std::string& id);

}  // namespace quom
