#include "substance/synonyms.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "base/code_page.h"
#include "base/dates.h"
#include "base/files.h"
#include "base/number_text.h"

namespace quom {
namespace {

struct Spelling {
    std::string_view from, to;
};
constexpr Spelling stems[] = {{"ÄTH", "ETH"},     {"GLYKO", "GLYCO"}, {"KARBO", "CARBO"},  {"SULPH", "SULF"},
                              {"AZET", "ACET"},   {"SEK", "SEC"},     {"ZYKLO", "CYCLO"},  {"ZYCLO", "CYCLO"},
                              {"CYKLO", "CYCLO"}, {"DEKAN", "DECAN"}, {"KRESOL", "CRESOL"}};
constexpr Spelling prefixes[] = {{"ME-", "METHYL"}, {"ET-", "ETHYL"}, {"SAEURE", "SÄURE"}};

void replace_all(std::string& text, const Spelling& spelling) {
    for (std::size_t at = text.find(spelling.from); at != std::string::npos;
         at = text.find(spelling.from, at + spelling.to.size()))
        text.replace(at, spelling.from.size(), spelling.to);
}

// Place of a part in characters, 1-based; 0 when it is not there.
unsigned place_of(std::string_view text, std::string_view part) {
    const std::size_t at = text.find(part);
    return at == std::string_view::npos ? 0u : static_cast<unsigned>(text_length(text.substr(0, at))) + 1u;
}

// ..OXYD becomes ..OXID, OXYDI.. stays. The two places are compared bit by bit, not by value: an OXYDI whose
// place has all the bits of that of OXYD ends the work too.
void spell_oxide(std::string& text) {
    while ((~place_of(text, "OXYDI") & place_of(text, "OXYD")) != 0) text[text.find("OXYD") + 2] = 'I';
}

// The lines of a synonym file one after the other; the end of the file counts as a line "END".
class SynonymLines {
 public:
    explicit SynonymLines(std::string_view bytes) : rest_(bytes) {}
    std::string_view next() {
        if (rest_.empty()) return "END";
        const std::size_t end = rest_.find('\n');
        std::string_view line = rest_.substr(0, end);
        rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
        if (line.ends_with('\r')) line.remove_suffix(1);
        return line;
    }
    // The next CAS line, without blanks at its end; empty lines before it do not count.
    std::string_view next_cas() {
        std::string_view line;
        do {
            line = trim_right(next());
        } while (line.empty());
        return line;
    }
    bool at_end() const { return rest_.empty(); }

 private:
    std::string_view rest_;
};

bool is_mark(char c) { return std::string_view("-()[].").find(c) != std::string_view::npos; }

// True when the line without its marks is the key.
bool equals_key(std::string_view line, std::string_view key) {
    std::size_t k = 0;
    for (const char c : line) {
        if (is_mark(c)) continue;
        if (k == key.size() || key[k] != c) return false;
        ++k;
    }
    return k == key.size();
}

// Text without its first and last character.
std::string_view unwrapped(std::string_view text) {
    return text.size() < 2 ? std::string_view() : text.substr(1, text.size() - 2);
}

std::string_view without_first(std::string_view text) { return text.substr(text.empty() ? 0 : 1); }

Message cas_not_listed() {
    return {.title = "Execution not possible",
            .text =
                "CASRN is still lacking in the list of synonyms\nATTENTION!\nIn this situation you cannot "
                "find this "
                "substance\nvia input of the name.",
            .kind = MessageKind::warning};
}

std::string synonym_path(std::string_view ProgramPath) { return resolve_path(SynonymFile, ProgramPath); }

// Digits and hyphens with a hyphen among them, "00-00-0" too.
bool has_form_of_casrn(std::string_view line) {
    return line.size() <= 12 && line.find('-') != std::string_view::npos &&
           line.find_first_not_of("0123456789-") == std::string_view::npos;
}

// What speaks against the bytes; empty when nothing does.
std::string content_fault(std::string_view bytes) {
    SynonymLines lines(bytes);
    const std::string_view first = lines.next_cas();
    const std::string rule = ": a CAS number with its names is right, block after block, and END";
    if (trim(bytes).empty()) return "is empty" + rule;
    if (first != "END" && !has_form_of_casrn(first)) return "is no file of synonyms" + rule;
    return {};
}

// The last line that is not empty is END.
bool has_end(std::string_view bytes) {
    const std::size_t last = bytes.find_last_not_of(" \r\n\x1A");
    const std::string_view text = bytes.substr(0, last == std::string_view::npos ? 0 : last + 1);
    return text == "END" || text.ends_with("\nEND");
}

}  // namespace

SynonymFileBytes read_synonym_file(std::string_view ProgramPath) {
    const std::string path = find_in_folder(ProgramPath, SynonymFile);
    if (path.empty())
        return {.bytes = {},
                .fault = "The program folder \"" + std::string(ProgramPath) + "\" has no file of synonyms " +
                         SynonymFile + ": only the names of the database are found."};
    std::error_code unknown;
    const std::uintmax_t size = std::filesystem::file_size(path, unknown);
    if (!unknown && size > MostSynonymBytes)
        return {.bytes = {},
                .fault = "The file of synonyms \"" + path + "\" has " + std::to_string(size) +
                         " bytes, at most " + std::to_string(MostSynonymBytes) +
                         " (64 MB) are read: only the names of the database are found."};
    FileBytes file = read_file(path);
    if (!file.bytes)
        return {.bytes = {}, .fault = file.fault + ": only the names of the database are found."};
    if (const std::string fault = content_fault(*file.bytes); !fault.empty())
        return {.bytes = {}, .fault = "\"" + path + "\" " + fault + "."};
    SynonymFileBytes good{.bytes = std::move(*file.bytes), .fault = {}};
    if (!has_end(good.bytes))
        good.fault = "The file of synonyms \"" + path + "\" has no line END, it may be cut off.";
    return good;
}

Message synonym_file_message(const std::string& fault) {
    return {.title = "File of synonyms", .text = fault, .kind = MessageKind::warning};
}

void NormalizeName(std::string& name) {
    name = upper_text(name);
    std::erase(name, ' ');
}

std::string normal_spelling(std::string name) {
    for (const Spelling& stem : stems) replace_all(name, stem);
    spell_oxide(name);
    for (const Spelling& prefix : prefixes) replace_all(name, prefix);
    return name;
}

std::string without_marks(std::string_view name) {
    std::string key(name);
    std::erase_if(key, is_mark);
    return key;
}

SynonymHit find_synonym(std::string_view file_bytes, std::string_view name) {
    SynonymHit hit;
    hit.name = name;
    NormalizeName(hit.name);
    const Encoded key = cp1252_from_utf8(without_marks(normal_spelling(hit.name)));
    if (hit.name.empty()) return hit;
    const bool comparable = !key.bytes.empty() && key.replaced == 0;

    SynonymLines lines(file_bytes);
    for (;;) {
        const std::string_view cas = lines.next_cas();
        if (cas == "END") return hit;
        const std::string_view head = lines.next();
        hit.found = cas == hit.name;
        for (std::string_view line; !hit.found && !lines.at_end() && !(line = lines.next()).empty();)
            hit.found = comparable && equals_key(line, key.bytes);
        if (!hit.found) continue;
        hit.casrn = utf8_from_1252(cas);
        hit.head = utf8_from_1252(head);
        return hit;
    }
}

SynonymHit FindSynonym(std::string_view ProgramPath, std::string_view name) {
    return find_synonym(read_synonym_file(ProgramPath).bytes, name);
}

SynonymHead split_head(std::string_view head_bytes) {
    const std::string_view text = without_first(head_bytes);
    SynonymHead parts;
    const std::size_t first = text.find('_');
    parts.Kopf1 = utf8_from_1252(text.substr(0, first));
    if (first == std::string_view::npos) return parts;

    const std::string_view rest = text.substr(first);
    const std::size_t last = rest.rfind('_');
    parts.Kopf5 = utf8_from_1252(rest.substr(last + 1));
    if (last == 0) return parts;
    std::string_view between = rest.substr(1, last - 1);
    for (std::string* middle : {&parts.Kopf2, &parts.Kopf3, &parts.Kopf4}) {
        const std::size_t end = between.find('_');
        *middle = utf8_from_1252(unwrapped(between.substr(0, end)));
        if (end == std::string_view::npos) break;
        between.remove_prefix(end + 1);
    }
    return parts;
}

SynonymList list_synonyms(std::string_view file_bytes, std::string_view casrn) {
    const std::string_view wanted = trim(casrn);
    SynonymList list;
    SynonymLines lines(file_bytes);
    std::string_view line;
    do {
        line = trim_right(lines.next());
    } while (line != "END" && (wanted.empty() || line != wanted));
    if (line == "END") {
        list.err = -1;
        return list;
    }
    const SynonymHead head = split_head(lines.next());
    const std::string& middle = !head.Kopf4.empty()   ? head.Kopf4
                                : !head.Kopf3.empty() ? head.Kopf3
                                                      : head.Kopf2;
    list.head = head.Kopf1 + '\n' + middle + '\n' + head.Kopf5 + "\nCAS-RN: " + std::string(wanted);
    while (!lines.at_end() && !(line = lines.next()).empty()) {
        list.synonyms += utf8_from_1252(line) + '\n';
        ++list.count;
    }
    return list;
}

SynonymList FindSynonymVonCAS(std::string_view ProgramPath, std::string_view casrn) {
    const std::string path = synonym_path(ProgramPath);
    SynonymList list = list_synonyms(read_synonym_file(ProgramPath).bytes, casrn);
    list.date = file_date_text(path);
    if (list.err != 0) list.message = cas_not_listed();
    return list;
}

SynonymList ShowSynonyms(std::string_view ProgramPath, std::string_view StoffCAS) {
    const std::string_view casrn = trim(StoffCAS);
    if (!casrn.empty() && (Val(casrn) != 0.0 || casrn == "00-00-0"))
        return FindSynonymVonCAS(ProgramPath, casrn);
    SynonymList list;
    list.err = -1;
    list.message =
        Message{.title = "WARNING", .text = "CASRN not given/ not correct", .kind = MessageKind::warning};
    return list;
}

std::vector<SynonymBlock> read_synonym_blocks(std::string_view file_bytes) {
    std::vector<SynonymBlock> blocks;
    SynonymLines lines(file_bytes);
    for (;;) {
        const std::string_view cas = lines.next_cas();
        if (cas == "END") return blocks;
        SynonymBlock block{utf8_from_1252(cas), utf8_from_1252(lines.next()), {}};
        for (std::string_view line; !lines.at_end() && !(line = lines.next()).empty();)
            block.synonyms.push_back(utf8_from_1252(line));
        blocks.push_back(std::move(block));
    }
}

std::string synonym_file_text(std::span<const SynonymBlock> blocks) {
    std::string text;
    for (const SynonymBlock& block : blocks) {
        text += block.casrn + "\r\n" + block.head + "\r\n";
        for (const std::string& synonym : block.synonyms) text += synonym + "\r\n";
        text += "\r\n";
    }
    return text + "END\r\n";
}

}  // namespace quom
