// The calculation record as a delimited file, .CSV, and as text for the clipboard.
#pragma once
#include <optional>
#include <span>
#include <string>

#include "base/messages.h"
#include "quantities/units.h"
#include "report/calc_record.h"
#include "session/calculation_record.h"
#include "session/session.h"

namespace quom {

static_assert(RecordColumns == slot_count);

// The slots as a record keeps them: singles in displayed units, 0 for "no value".
RecordRow record_row(const CalcResult& result);
RecordRow record_row(const Session& session, const Outcome& outcome);

// What stands above the table.
struct RecordHead {
    std::string date{}, substance{}, model{};  // model: status text
    Units units{};
    char separator = ';';
    bool decimal_comma = false;  // numbers have the decimal comma of the system
};
RecordHead record_head(const Session& session, std::string date);

// The file: Windows-1252, CR LF. A slot whose values add up to 0 is left out.
std::string record_bytes(const RecordHead& head, std::span<const RecordRow> rows);
// Bytes of a record as the clipboard gets them: UTF-8, '\n', tabs for the separator.
std::string record_clipboard_text(std::string_view bytes, char separator);

// What the user is told where separator and decimal sign are both a comma.
std::optional<Message> comma_warning(char separator, bool decimal_comma);

// One more row; told of the comma.
void AppendProtocolRow(Session& session, const Outcome& outcome, Messages& messages);

struct ClosedProtocol {
    std::string fault;      // why the rows could not be written; they are kept
    std::string path;       // of the file that was closed; empty: there is none
    std::string clipboard;  // its text with tabs
};
// Writes the rows that wait, and goes on to the next free name. A name that another program has taken since
// is not written over.
ClosedProtocol CloseProtocol(Session& session, const std::string& date);

}  // namespace quom
