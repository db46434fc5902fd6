// Import of any text or table into the data set or the X-Y data: shows how the text is understood, and takes
// corrections.
#pragma once
#include <QDialog>

#include "forms/text_import.h"

class QComboBox;
class QLabel;
class QPushButton;
class QSpinBox;
class QTableView;
class QTableWidget;

namespace quom {

class BadRowsModel;
class Dialogs;
class ImportPreviewModel;
class NoticeStrip;
class TableView;
class Workbench;
class mdiQUOM;

// Accepted: the points are in the document. Rejected: the document is as it was.
class frmTextImport : public QDialog {
    Q_OBJECT
 public:
    frmTextImport(Workbench& bench, Dialogs& dialogs, ImportTarget target, QWidget* parent = nullptr);

    void take_clipboard();
    void take_file();
    // Shows a text; source: where it comes from.
    void show_text(QByteArray bytes, const QString& source);
    const TextImport& import() const { return import_; }
    ImportTarget target() const { return options_.target; }

    QPushButton *cmdClipboard, *cmdFile;
    QLabel* lblSource;
    QComboBox *cmbTarget, *cmbDelimiter, *cmbDecimal;
    QSpinBox* spnHead;
    QTableWidget* tblColumns;  // a row for each column of the text: combos of quantity and unit
    TableView *tblPreview, *tblBad;
    NoticeStrip* notice;
    QLabel* lblCount;
    QPushButton *cmdAppend, *cmdReplace, *cmdClose;

 protected:
    void keyPressEvent(QKeyEvent* event) override;

 private:
    void build_layout();
    QWidget* make_source_row();
    QWidget* make_form_row();
    QWidget* make_tables();
    void read();
    void show_columns();
    QComboBox* quantity_box(int column);
    QComboBox* unit_box(int column);
    void show_sentences();
    void show_line(int line);
    void take(bool replace);
    std::size_t present_points() const;

    Workbench& bench_;
    Dialogs& dialogs_;
    QByteArray bytes_;
    QString source_;
    ImportOptions options_;
    TextImport import_;
    ImportPreviewModel* preview_;
    BadRowsModel* bad_;
};

// Opens the window; true when points were taken.
bool import_text_into(mdiQUOM& frame, ImportTarget target);
// "Import text or table...": the same, and then the editor of what was taken.
void open_text_import(mdiQUOM& frame, int target);

}  // namespace quom
