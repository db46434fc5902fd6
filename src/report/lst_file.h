// The result list of a batch: as a text file, .LST, and for the printer.
#pragma once
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "calc/batch_result.h"
#include "calc/mode_table.h"
#include "fitting/exp_data.h"
#include "session/session.h"

namespace quom {

// Lines made of items at columns, counted from 1. A tab to a column that is passed starts a new line.
class TabLine {
 public:
    explicit TabLine(std::string_view line_end) : line_end_(line_end) {}
    TabLine& at(std::size_t column, std::string_view item);  // a tab to the column, then the item
    TabLine& put(std::string_view item);
    void end();  // of the line
    const std::string& text() const { return text_; }
    std::string take() { return std::move(text_); }

 private:
    std::string text_, line_end_;
    std::size_t line_start_ = 0;
};

// What a list shows. The spans belong to the caller; [0] is the direct input and not shown.
struct ResultList {
    std::string date{};  // "2026-11-21"
    std::string substance{};
    std::string title{};       // of the calculation
    std::string model{};       // status text of the models; shown with an equation of state
    std::string evp{};         // name of the vapor pressure equation
    std::string batch_file{};  // name of the file of the data, empty: none
    Mode mode = Mode::none;
    bool GlobalCalc = true;
    bool has_eos = true;  // an equation of state is chosen
    double M = 0;         // [kg/kmol]
    bool WithFunctions = false;
    std::span<const TpRhoPoint> points{};
    std::span<const BatchResult> results{};  // may be fewer than the points
};
// The list of a session's document, without functions; it refers to the session's points and results.
ResultList result_list_of(const Session& session, std::string date);

// The text file: Windows-1252, CR LF. Points without a result are left out.
std::string result_file_bytes(const ResultList& list);
// The same list for the printer: UTF-8, lines end with '\n'.
std::string result_print_text(const ResultList& list);

// Path of a .LST file: a name without "." and shorter than 9 characters gets ".LST", one without a folder is
// taken from the program folder. "LPT..." is a printer and has none: "".
std::string result_file_path(std::string_view name, std::string_view program_path);

}  // namespace quom
