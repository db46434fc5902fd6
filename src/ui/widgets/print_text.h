// Prints lists: a text in the fixed font, shown as pages before it goes to the printer.
#pragma once
#include <QString>
#include <QStringList>

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

}  // namespace quom
