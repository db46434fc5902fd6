// Copies of sessions: what is read is written and read back as the same; what is not names a line.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "session/recovery.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quom;
    const SessionCopyRead read = read_session_copy({reinterpret_cast<const char*>(data), size});
    if (!read.copy) {
        if (!read.fault.starts_with("line ")) std::abort();
        return 0;
    }
    if (copy_preview(*read.copy).empty()) std::abort();
    const SessionCopyRead again = read_session_copy(session_copy_bytes(*read.copy));
    if (!again.copy || again.copy->document != read.copy->document) std::abort();
    return 0;
}
