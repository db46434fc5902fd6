#include "report/record_file.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "base/code_page.h"
#include "base/files.h"
#include "base/number_text.h"
#include "engine/model_catalogue.h"

namespace quom {
namespace {

constexpr std::size_t largest_record = std::size_t{1} << 30;
constexpr std::string_view line_end = "\r\n";

std::string_view volume_line_text(int VolumeMode) {
    if (VolumeMode == volume_per_mass) return "[v] = m^3/kg";
    return VolumeMode == reduced_volume ? "[v(red)] = 1" : "[v] = m^3/kmol ";
}

std::string_view energy_line(int EnergyMode) {
    if (EnergyMode == energy_molar) return "molar SI-units for function z: [z] = kJ/kmol or kJ/(kmol K)";
    if (EnergyMode == energy_per_mass) return "specific SI-units for function z: [z] = kJ/kg or kJ/(kg K)";
    return {};
}

// Slots that are kept: those whose values do not add up to 0.
std::vector<std::size_t> kept_slots(std::span<const RecordRow> rows) {
    std::vector<std::size_t> kept;
    for (std::size_t slot = 0; slot < RecordColumns; ++slot) {
        double sum = 0.0;
        for (const RecordRow& row : rows) sum += static_cast<double>(row[slot]);
        if (sum != 0.0) kept.push_back(slot);
    }
    return kept;
}

std::string cell(float x, bool decimal_comma) {
    std::string text = genNum(x);
    if (decimal_comma) std::replace(text.begin(), text.end(), '.', ',');
    return text;
}

// Removes a file without contents.
void remove_empty(const std::string& path) {
    std::error_code error;
    if (std::filesystem::is_regular_file(path, error) && std::filesystem::file_size(path, error) == 0)
        std::filesystem::remove(path, error);
}

}  // namespace

RecordRow record_row(const CalcResult& result) {
    RecordRow row{};
    for (std::size_t i = 0; i < row.size(); ++i) {
        const auto x = static_cast<float>(result.values[i]);
        row[i] = std::isfinite(x) ? x : 0.0F;
    }
    return row;
}

RecordRow record_row(const Session& session, const Outcome& outcome) {
    return record_row(calc_result(outcome, session.factors(outcome.T.value_or(0.0))));
}

RecordHead record_head(const Session& session, std::string date) {
    const Document& document = session.document;
    return {.date = std::move(date),
            .substance = document.substance.constants.StoffName,
            .model = ModelStatus(document.models),
            .units = document.units,
            .separator = document.options.SepCSV,
            .decimal_comma = document.options.DezimalKomma};
}

std::string record_bytes(const RecordHead& head, std::span<const RecordRow> rows) {
    std::string bytes = "QUOM-6: p-V-T Calculations of States and Processes - record from ";
    const auto line = [&bytes](std::string_view text) { bytes.append(text).append(line_end); };
    line(head.date);
    line(cp1252_from_utf8(head.substance).bytes);
    line(cp1252_from_utf8(head.model).bytes);
    bytes += "units: [T] = K   [p] = kPa   [B] = m^3/kmol    ";
    line(volume_line_text(head.units.VolumeMode));
    if (const std::string_view energies = energy_line(head.units.EnergyMode); !energies.empty())
        line(energies);
    line("");
    const std::vector<std::size_t> kept = kept_slots(rows);
    for (const std::size_t slot : kept)
        bytes.append(slot_name(static_cast<CalcSlot>(slot))) += head.separator;
    line("");
    for (const RecordRow& row : rows) {
        for (const std::size_t slot : kept)
            bytes.append(cell(row[slot], head.decimal_comma)) += head.separator;
        line("");
    }
    return bytes;
}

std::string record_clipboard_text(std::string_view bytes, char separator) {
    std::string text = utf8_from_1252(bytes);
    std::erase(text, '\r');
    std::replace(text.begin(), text.end(), separator, '\t');
    return text;
}

std::optional<Message> comma_warning(char separator, bool decimal_comma) {
    if (separator != ',' || !decimal_comma) return std::nullopt;
    return Message{.title = "Warning delimiter",
                   .text =
                       "\n\"Comma\" as decimal character is not reasonable for "
                       "computer setting \"Germany\". The content of the the\n"
                       "clipboard is not Excel-compatible in this case.\n\n"
                       "unconditoinal recommendation: semicolon  (setting under \"Options\") ",
                   .kind = MessageKind::warning};
}

void AppendProtocolRow(Session& session, const Outcome& outcome, Messages& messages) {
    const Options& options = session.document.options;
    if (const auto warning = comma_warning(options.SepCSV, options.DezimalKomma)) messages.ask(*warning);
    session.record.ProtocolOpen = true;
    session.record.ProtocolTable.push_back(record_row(session, outcome));
}

ClosedProtocol CloseProtocol(Session& session, const std::string& date) {
    CalculationRecord& record = session.record;
    ClosedProtocol closed;
    const bool taken = !find_in_folder(session.ProgramPath, record.ProtocolFile).empty();
    if (record.ProtocolFile.empty() || (record.ProtocolOpen && taken))
        record.ProtocolFile = NewProtocolName(session.ProgramPath, date);
    const std::string path = join_path(session.ProgramPath, record.ProtocolFile);
    if (record.ProtocolOpen) {
        closed.fault =
            write_file_atomic(path, record_bytes(record_head(session, date), record.ProtocolTable));
        if (!closed.fault.empty()) return closed;
        record.ProtocolOpen = false;
        record.ProtocolTable.clear();
    }
    remove_empty(path);
    if (const FileBytes file = read_file(path, largest_record); file.bytes) {
        closed.path = path;
        closed.clipboard = record_clipboard_text(*file.bytes, session.document.options.SepCSV);
    }
    record.ProtocolFile = NewProtocolName(session.ProgramPath, date);
    return closed;
}

}  // namespace quom
