// Any bytes as a table of a sweep. The first byte says which options go with it and in what amounts the rest
// comes in; the rows must not depend on the amounts.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "console/sweep_rows.h"

namespace {

using namespace quom;

constexpr double M = 44;  // [kg/kmol]

void require(bool holds) {
    if (!holds) std::abort();
}

// All rows of the table as text.
std::string read_table(std::string_view bytes, Mode mode, const TableOptions& options, std::size_t most) {
    TableInput input(
        [&bytes, most](char* into, std::size_t space) {
            const std::size_t n = std::min({space, most, bytes.size()});
            bytes.copy(into, n);
            bytes.remove_prefix(n);
            return static_cast<std::ptrdiff_t>(n);
        },
        256);
    const SweepHead head = read_sweep_head(input, mode, M, options);
    if (!head.fault.empty()) return head.fault;
    std::string text, piece;
    for (std::uint64_t line = input.line(); input.next(piece); line = input.line()) {
        SweepRows rows;
        read_rows(piece, line, head, options, rows);
        require(line + rows.size() == input.line() && rows.kept.size() == rows.size());
        require(rows.faults.size() ==
                static_cast<std::size_t>(std::ranges::count(rows.kind, RowKind::malformed)));
        std::size_t faults = 0;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            text += static_cast<char>('0' + static_cast<int>(rows.kind[i]));
            text += rows.kept[i];
            text += '\n';
            if (rows.kind[i] == RowKind::malformed) text += rows.faults[faults++];
            for (const SweepHead::Column& column : head.columns) {
                if (column.field < 0) continue;
                const double x = rows.value[column.field][i];
                require(std::isfinite(x) == (rows.kind[i] == RowKind::good));
                text += std::to_string(x);
            }
        }
    }
    return text + input.fault();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const unsigned kind = data[0];
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    TableOptions options;
    if (kind & 1) options.decimal = ',';
    if (kind & 2) options.columns = "T/C,p/bar,note";
    if (kind & 4) options.keep = "all";
    const Mode mode = kind & 8 ? Mode::tank_global : kind & 16 ? Mode::T_rho : Mode::T_p;
    require(read_table(bytes, mode, options, 1 << 20) == read_table(bytes, mode, options, 1 + kind / 32));
    parse_grid(bytes, mode, M);
    return 0;
}
