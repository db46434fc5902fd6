// Tables for other programs: on the clipboard, and in files.
#pragma once
#include <QString>
#include <string>

#include "report/table_export.h"

class QAbstractItemModel;
class QWidget;

namespace quom {

// Puts the table on the clipboard, as text with tabs and as a table of a page; csv: also as that text.
void copy_table(const ExportTable& table, const std::string& csv = {});

// Asks for a file and writes the table in the form that its name has: .csv with the delimiter and the decimal
// sign of the options, .tsv or .txt with tabs, .html. For a widget of the main window, which is told when the
// file cannot be written. name: proposed, without an ending.
bool save_table(QWidget* widget, const ExportTable& table, const QString& name);

// A grid as it is shown: heads and rows in their order. A head "p / kPa" is parted into name and unit.
ExportTable table_of(const QAbstractItemModel& model);

}  // namespace quom
