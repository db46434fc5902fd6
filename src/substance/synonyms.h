// Names of substances: spellings made alike, and the file of synonyms.
//
// The file is a sequence of blocks closed by a line "END": a line with the CAS number, a head line, one
// synonym a line (upper case, no blanks, normal spellings), an empty line. The head line is a mark and up to
// five fields:
//     #Kopf1_(Kopf2)_(Kopf3)_(Kopf4)_Kopf5
// Its text is Windows-1252; everything below is UTF-8.
#pragma once
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/messages.h"

namespace quom {

inline constexpr const char* SynonymFile = "SYNOM7.TXT";

// Upper case, umlauts included, without blanks, in place.
void NormalizeName(std::string& name);
// A normalised name in the spellings of the file: ETH for ÄTH, CYCLO for ZYKLO, SULF for SULPH, OXID for OXYD
// ...
std::string normal_spelling(std::string normalized);
// What two names are compared by: the text without - ( ) [ ] and point.
std::string without_marks(std::string_view name);

struct SynonymHit {
    bool found = false;
    std::string name;   // the name as NormalizeName leaves it
    std::string casrn;  // of the block that holds it
    std::string head;   // its head line
};
// Looks a name, synonym or CAS number up in the bytes of a synonym file.
SynonymHit find_synonym(std::string_view file_bytes, std::string_view name);
// The file of synonyms of a program folder. fault: one sentence when it is missing, cannot be read, is larger
// than MostSynonymBytes or no file of synonyms (bytes are empty then), or when its end is missing (bytes are
// there).
struct SynonymFileBytes {
    std::string bytes;
    std::string fault;
};
inline constexpr std::uintmax_t MostSynonymBytes = 64u << 20;
SynonymFileBytes read_synonym_file(std::string_view ProgramPath);
// "File of synonyms": the fault as a message to the user.
Message synonym_file_message(const std::string& fault);

// The same in the file of the program folder; a missing file finds nothing.
SynonymHit FindSynonym(std::string_view ProgramPath, std::string_view name);

struct SynonymHead {
    std::string Kopf1, Kopf2, Kopf3, Kopf4, Kopf5;
};
// The fields of a head line of the file (its bytes); a line that is shorter than its marks gives empty
// fields.
SynonymHead split_head(std::string_view head_bytes);

// All names of one substance.
struct SynonymList {
    std::string head;      // Kopf1, the last middle field that is not empty, Kopf5, "CAS-RN: ..", one a line
    std::string synonyms;  // one a line, each with its line end
    int count = 0;
    std::string date;                  // of the file, ten characters
    std::int16_t err = 0;              // -1: the CAS number is not in the file
    std::optional<Message> message{};  // what the user is told of it
};
// The synonyms of a CAS number in the bytes of a synonym file (without date).
SynonymList list_synonyms(std::string_view file_bytes, std::string_view casrn);
// The same in the file of the program folder, with a message when the number is not there.
SynonymList FindSynonymVonCAS(std::string_view ProgramPath, std::string_view casrn);
// The synonyms of a CAS number as a substance has it. err -1 with a message: no CAS number, or not in the
// file.
SynonymList ShowSynonyms(std::string_view ProgramPath, std::string_view StoffCAS);

// One block of a synonym file to be written.
struct SynonymBlock {
    std::string casrn;
    std::string head;  // with its mark
    std::vector<std::string> synonyms;
};
// All blocks of the bytes of a synonym file.
std::vector<SynonymBlock> read_synonym_blocks(std::string_view file_bytes);
// The file's text in UTF-8 with CR LF and "END"; the writer of the file turns it into Windows-1252.
std::string synonym_file_text(std::span<const SynonymBlock> blocks);

}  // namespace quom
