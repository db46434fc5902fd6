// The file of a sheet (.oc2): UTF-8 JSON with the mark "format": "QUOM-OC2" and "version": 1. It holds what
// is drawn with its design, axes, texts, labels and legend; neither substance nor models nor parameters, and
// not what the mouse shows at a point.
//
// Fields that this version does not know are kept with the sheet, or with the series that they belong to, and
// are written again.
#pragma once
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "diagrams/graph_document.h"

namespace quom {

inline constexpr std::size_t LargestDiagramFile = std::size_t{64} << 20;  // bytes

// The bytes of a sheet; of a sheet that was read, the same bytes each time.
std::string oc2_bytes(const GraphDocument& sheet);

struct Oc2Read {
    std::optional<GraphDocument> sheet;
    std::string fault;  // why there is none, with the name of the file and the line or the field
};
// Reads a sheet in place of another one, of which the kind of the diagram alone stays. The range of the file
// becomes the one in force and the one that a reset returns to. A field that is missing has its default; one
// of another type or outside its limits, a series that the sheet has no slot for, a file that is nested
// deeper than 32 levels or larger than 64 MB are faults. Never allocates more than a small multiple of the
// bytes.
Oc2Read read_oc2(std::string_view bytes, std::string_view name, const GraphDocument& before);

// The same with files. Writing returns the fault, empty when good, and leaves no half file.
Oc2Read load_oc2(const std::string& path, const GraphDocument& before);
std::string save_oc2(const std::string& path, const GraphDocument& sheet);

// Asked before a sheet with interchanged axes is saved; none for another one.
std::optional<Message> save_question(const GraphDocument& sheet);
// Told once in a session before a sheet is loaded.
Message load_notice();
// Asked before a black sheet is printed; none for another one.
std::optional<Message> print_question(const GraphDocument& sheet);

}  // namespace quom
