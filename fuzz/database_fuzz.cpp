// Any bytes as a substance database of either kind: opened, listed, each substance unpacked.
#include <unistd.h>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "base/files.h"
#include "substance/database.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quom;
    const std::string path =
        (std::filesystem::temp_directory_path() / ("quom_fuzz_" + std::to_string(getpid()))).string();
    if (!write_file_atomic(path, {reinterpret_cast<const char*>(data), size}).empty()) return 0;
    for (const int kind : {6, 7}) {
        const OpenedDatabase opened = open_database(kind, path, true);
        const int count = opened.file.StoffAnzahl();
        if ((opened.err != 0) != (count == 0) || (opened.err != 0) == opened.fault.empty()) std::abort();
        for (int i = 0; i <= count + 1; ++i) {
            unpack_substance(opened.file, i, i % 2 == 0);
            read_substance_head(opened.file, i);
        }
    }
    unlink(path.c_str());
    return 0;
}
