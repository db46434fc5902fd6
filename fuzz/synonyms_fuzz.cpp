// Any bytes as a file of synonyms; its first line is also what is looked up.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "substance/synonyms.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quom;
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const std::string first = bytes.substr(0, bytes.find('\n'));
    find_synonym(bytes, first);
    const SynonymList list = list_synonyms(bytes, first);
    if (list.count != std::count(list.synonyms.begin(), list.synonyms.end(), '\n')) std::abort();
    for (const SynonymBlock& block : read_synonym_blocks(bytes)) split_head(block.head);
    return 0;
}
