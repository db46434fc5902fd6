// Any bytes as a substance database of either kind: opened, listed, each substance unpacked.
#include <unistd.h>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "base/files.h"
#include "substance/database.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quom;
    const std::string path = "/tmp/quom_fuzz_" + std::to_string(getpid());
    if (!write_file_atomic(path, {reinterpret_cast<const char*>(data), size}).empty()) return 0;
    for (const int kind : {6, 7}) {
        Session s;
        const LoadResult loaded = LoadDatabase(s, kind, path);
        if (loaded.err && (loaded.fault.empty() || s.database.file.StoffAnzahl() != 0)) std::abort();
        for (int i = 0; i <= s.database.file.StoffAnzahl() + 1; ++i) SelectSubstance(s, i);
    }
    unlink(path.c_str());
    return 0;
}
