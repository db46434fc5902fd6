// Any bytes as a table to import. The first byte says what the user chose. Every line is accounted for, and
// every point that is taken can be kept.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "forms/text_import.h"

namespace {

using namespace quom;

void require(bool holds) {
    if (!holds) std::abort();
}

void require_good(const TpRhoPoint& point) {
    require(point.T >= 0 && std::isfinite(point.T) && point.p >= 0 && std::isfinite(point.p));
    for (const float x : {point.rhoV, point.rhoL, point.HLV, point.cp}) require(x >= 0 && std::isfinite(x));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const unsigned kind = data[0];
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    ImportOptions options;
    if (kind & 1) options.target = ImportTarget::xy;
    if (kind & 2) options.M = 58.08;
    if (kind & 4) options.decimal = ',';
    if (kind & 8) options.delimiter = static_cast<TableDelimiter>(kind / 32 % table_delimiter_count);
    if (kind & 16) {
        options.head_lines = static_cast<int>(kind / 32);
        options.columns[0] = {ImportQuantity::T, "°C"};
        options.columns[kind / 64] = {ImportQuantity::hLV, {}};
    }
    const TextImport import = import_text(bytes, options);
    require(import.bad_rows.size() <= bytes.size() && import.preview.size() <= options.preview_lines);
    for (const TpRhoPoint& point : import.points)
        if (options.target == ImportTarget::data_points && options.columns.empty()) require_good(point);
    for (const XYPoint& point : import.xy) require(std::isfinite(point.x) && std::isfinite(point.y));
    if (import.fault.empty()) {
        const std::size_t taken = import.points.size() + import.xy.size();
        require(static_cast<int>(taken) == import.good_rows);
    } else {
        require(import.points.empty() && import.xy.empty());
    }
    for (const ImportColumn& column : import.columns) require(!column.reason.empty());
    Document document;
    require(take_import(document, import, options.target, kind & 32) == import.can_be_taken());
    return 0;
}
