// Prints lists, a text in the fixed font, and pages that are drawn; both are shown before they go to the
// printer.
#pragma once
#include <QString>
#include <QStringList>
#include <functional>

class QPrinter;
class QWidget;

namespace quom {

struct PrintedText {
    QString title;      // of the dialog and of the job
    QStringList head;   // lines that every page begins with
    QStringList lines;  // of fixed width
};

// Shows the pages; from there the user chooses printer, pages and paper.
void print_with_preview(QWidget* parent, const PrintedText& text);
// Draws all pages; the font is made smaller where a line would not fit the paper.
void paint_pages(QPrinter& printer, const PrintedText& text);

// A page that is drawn: false where the printer cannot be used.
struct PrintedPage {
    QString title;  // of the dialog and of the job
    std::function<bool(QPrinter&)> paint;
};
// Shows the page on A4, across; from there the user chooses printer, paper and margins. False: the printer
// could not be used.
bool print_with_preview(QWidget* parent, const PrintedPage& page);

}  // namespace quom
