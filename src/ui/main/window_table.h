// The windows of the program in one table: what makes each, how long it stays, how and where it opens, and
// its page of the help.
#pragma once
#include <QSize>
#include <QStringView>
#include <span>

class QWidget;

namespace quom {

class mdiQUOM;

// What the user may change of the size of a window.
enum class Sizing { free, width_only, fixed };

// What a window belongs to. One of a calculation goes with its substance too, one of a substance with its
// database.
enum class Lifetime { calculation, substance, database, program };

// Its part among the windows of a calculation.
enum class Part { none, models, input, result, beside_result };

struct WindowRow {
    const char* name;  // object name
    Lifetime lifetime;
    Part part;
    int help;  // topic; 0 is the index
    Sizing sizing = Sizing::free;
    QSize first{};  // size in which it opens, never below its size hint; empty: that of the hint
    // Makes it, not yet shown. Null: it is made by what opens it, with values of its own, or is modal.
    QWidget* (*make)(mdiQUOM&) = nullptr;
};

// In the order in which windows of one lifetime close.
std::span<const WindowRow> window_rows();

// The row of an object name; of a name that is not there that of a window of the program with no part.
const WindowRow& window_row(QStringView name);

}  // namespace quom
