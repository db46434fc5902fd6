// Stands in for libFuzzer: gives every file of the command line, or of its folders, to the fuzz target once.
#include <cstdint>
#include <cstdio>
#include <filesystem>

#include "base/files.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

bool replay(const std::filesystem::path& path) {
    const quom::FileBytes file = quom::read_file(path.string());
    if (!file.bytes) {
        std::fprintf(stderr, "%s\n", file.fault.c_str());
        return false;
    }
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(file.bytes->data()), file.bytes->size());
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    namespace fs = std::filesystem;
    bool good = argc > 1;
    if (!good) std::fprintf(stderr, "Give files or folders to replay.\n");
    int files = 0;
    for (int i = 1; i < argc; ++i) {
        if (!fs::is_directory(argv[i])) {
            good = replay(argv[i]) && good;
            ++files;
            continue;
        }
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(argv[i])) {
            if (!entry.is_regular_file()) continue;
            good = replay(entry.path()) && good;
            ++files;
        }
    }
    std::printf("%d files replayed\n", files);
    return good ? 0 : 1;
}
