// The one search for substances: names in both languages, synonyms, formula, CAS number, best hit first. What
// typing into any box shows is find(text) of the index; near(text, 5) where that is empty. The index of the
// open database is substance_names(session).
#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "substance/database_file.h"
#include "substance/name_spelling.h"

namespace quom {

// What a text was found in.
enum class NameKind : std::uint8_t {
    main,  // main name in the language in force
    formula,
    casrn,
    further,         // further name of the database in that language
    other_language,  // name of the database in the other language
    synonym,         // of the file of synonyms
};
// The kind in a word: "name", "formula", "CAS", "german" or "english", "synonym". Englisch: language of the
// main names.
std::string_view kind_word(NameKind kind, bool Englisch);

// How much of it the text is.
enum class NameMatch : std::uint8_t { whole, beginning, word, inside, near };

struct NameHit {
    int index = 0;  // 1-based row of the list
    NameKind kind = NameKind::main;
    NameMatch match = NameMatch::whole;
    std::string_view name;  // what matched, as it is written; lives as long as the index
    TextPart part{};        // of name, that the text stands for; none of a near name
    int apart = 0;          // differing letters of a near name
};

// Every name of a database in its compared form, made once. A value that keeps nothing of the file.
class NameIndex {
 public:
    NameIndex() = default;
    // synonym_bytes: those of the file of synonyms; may be empty.
    NameIndex(const DatabaseFile& file, std::string_view synonym_bytes);

    // Every substance with the text in one of its names, once, by its best match. What FindSubstance finds
    // for the text comes first; then 10 match + rank of the kind (main, formula, CAS number 0, further 1,
    // other language 2, synonym 4; 5 more for an unfinished spelling), the shorter name, the order of the
    // file. Formula and CAS number match as a whole or from their beginning. A text without a letter finds
    // nothing.
    std::vector<NameHit> find(std::string_view text) const;

    // The substances that the whole text names: one, none, or several when it is ambiguous. The first of
    // these that there is: what FindSubstance finds; formulas equal letter by letter; names in any spelling;
    // formulas in any case; formulas of the same atoms ("CH3OH").
    std::vector<NameHit> named(std::string_view text) const;

    // At most count substances with a name that differs from the text in one letter of three, nearest first;
    // a text of digits is compared with CAS numbers, of which one digit may differ. Nothing for less than
    // three letters.
    std::vector<NameHit> near(std::string_view text, std::size_t count) const;

    // What a user may have meant by a text that names no substance: the nearest names, else those that hold
    // it.
    std::vector<NameHit> proposals(std::string_view text, std::size_t count) const;

    // Index that FindSubstance finds for the text, 0 when it finds none.
    int exact(std::string_view text) const;
    // CAS number of a substance that the file of synonyms has under this name or number and the database
    // lacks; empty when there is none.
    std::string_view missing_casrn(std::string_view text) const;

 private:
    struct Entry {
        std::uint32_t key = 0, text = 0;  // where its compared form and its text begin
        std::uint16_t key_length = 0, text_length = 0;
        std::uint32_t letters = 0;  // one bit for each letter that the key has
        std::int32_t index = 0;     // 0: a substance of the file of synonyms that the database lacks
        NameKind kind = NameKind::main;
    };
    // Names that are looked up as a whole, by the hash of their text.
    struct Exact {
        std::uint64_t hash = 0;
        std::uint32_t entry = 0;
        bool operator<(const Exact& other) const {
            return hash != other.hash ? hash < other.hash : entry < other.entry;
        }
    };
    using ExactNames = std::vector<Exact>;

    void add(NameKind kind, int index, std::string_view name);
    void add_row(const SubstanceRow& row, int index);
    void add_synonyms(const DatabaseFile& file, std::string_view synonym_bytes);
    void collect(std::string_view key, int penalty, bool casrn_too, std::vector<std::uint64_t>& best) const;
    void put_first(int index, std::vector<NameHit>& hits) const;
    std::vector<NameHit> of_same_atoms(std::string_view text) const;
    std::string_view key_of(const Entry& e) const {
        return std::string_view(keys_).substr(e.key, e.key_length);
    }
    std::string_view text_of(const Entry& e) const { return {texts_.data() + e.text, e.text_length}; }
    NameHit hit_of(const Entry& e, NameMatch match, int apart = 0) const {
        return {.index = e.index, .kind = e.kind, .match = match, .name = text_of(e), .apart = apart};
    }
    const Entry* looked_up(std::string_view text) const;  // what FindSubstance ends with
    template <class Same>
    const Entry* first_of(const ExactNames& names, std::string_view text, Same same) const;

    std::size_t substances_ = 0;
    std::vector<Entry> entries_;
    std::string keys_;                     // compared forms one after the other, each behind a line end
    std::string begins_;                   // of words, beside keys_
    std::vector<char> texts_;              // the names as they are written
    ExactNames main_names_;                // main names and CAS numbers of the database
    ExactNames synonyms_, synonym_casrn_;  // names and CAS numbers of the file of synonyms
};

}  // namespace quom
