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
        Session s;
        const LoadResult loaded = LoadDatabase(s, kind, path);
        const int count = s.database.file.StoffAnzahl();
        if ((loaded.err != 0) != (count == 0) || (loaded.err != 0) == loaded.fault.empty()) std::abort();
        for (int i = 0; i <= count + 1; ++i) SelectSubstance(s, i);
    }
    unlink(path.c_str());
    return 0;
}
