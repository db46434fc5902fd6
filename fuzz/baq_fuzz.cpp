// Any bytes as the file of a data set. What is read is written and read again alike; a fault names a line.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "fitting/baq_file.h"

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quom;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const BaqResult first = read_baq(bytes, "fuzz.BAQ");
    require(first.file.has_value() == first.fault.empty());
    if (!first.file) {
        require(first.line > 0 &&
                first.fault.starts_with("\"fuzz.BAQ\", line " + std::to_string(first.line)));
        return 0;
    }
    // A point needs a value at least, and a value a character.
    require(first.file->points.size() >= 2 && first.file->points.size() <= size);

    ExperimentalData set;
    set.points = SharedVector<TpRhoPoint>(first.file->points);
    set.file.ExpDate = first.file->date;
    set.file.ExpComment = first.file->comment;
    set.file.ExpCAS = first.file->CAS;
    set.file.ExpName = first.file->name;
    const Encoded written = baq_bytes(set);
    const BaqResult second = read_baq(written.bytes, "again.BAQ");
    require(written.replaced == 0 && second.file.has_value() && second.file->note.empty());
    require(second.file->points.size() == first.file->points.size());
    set.points = SharedVector<TpRhoPoint>(second.file->points);
    set.file.ExpDate = second.file->date;
    set.file.ExpComment = second.file->comment;
    set.file.ExpCAS = second.file->CAS;
    set.file.ExpName = second.file->name;
    require(baq_bytes(set).bytes == written.bytes);
    return 0;
}
