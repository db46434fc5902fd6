#include "ui/windows/frmTextImport.h"

#include <QClipboard>
#include <QComboBox>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QSplitter>
#include <QTableWidget>
#include <QVBoxLayout>
#include <array>
#include <utility>

#include "base/files.h"
#include "forms/shell.h"
#include "ui/look/look.h"
#include "ui/main/data_windows.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/workbench.h"
#include "ui/widgets/dialogs.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/notice_strip.h"
#include "ui/widgets/table_view.h"
#include "ui/windows/import_models.h"
#include "ui/windows/input_window.h"

namespace quom {

namespace {

constexpr std::size_t LargestFile = std::size_t{64} << 20;  // bytes
constexpr int MostHeadLines = 1000;
constexpr int LeastColumnRows = 3, MostColumnRows = 6;

constexpr std::array Delimiters = {
    std::pair{TableDelimiter::tab, "tab"},        std::pair{TableDelimiter::semicolon, "semicolon  ;"},
    std::pair{TableDelimiter::comma, "comma  ,"}, std::pair{TableDelimiter::bar, "bar  |"},
    std::pair{TableDelimiter::blanks, "blanks"},  std::pair{TableDelimiter::one_column, "none, one column"}};

enum ColumnCell { TitleCell, QuantityCell, UnitCell, ReasonCell };

QTableWidgetItem* text_item(const std::string& text) {
    auto* item = new QTableWidgetItem(shown(text));
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    item->setToolTip(shown(text));
    return item;
}

// Rows of data under a head, nothing to type.
TableView* table(const char* name, const QString& caption, QAbstractItemModel* model) {
    auto* view = named(new TableView, name, caption);
    view->setModel(model);
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setTabKeyNavigation(false);
    view->setWordWrap(false);
    view->horizontalHeader()->setHighlightSections(false);
    return view;
}

}  // namespace

frmTextImport::frmTextImport(Workbench& bench, Dialogs& dialogs, ImportTarget target, QWidget* parent)
    : QDialog(parent),
      bench_(bench),
      dialogs_(dialogs),
      preview_(new ImportPreviewModel(this)),
      bad_(new BadRowsModel(this)) {
    setObjectName(QStringLiteral("frmTextImport"));
    setWindowTitle(QStringLiteral("Import text or table"));
    options_.target = target;
    options_.M = static_cast<double>(bench.session.substance().MolMass);
    build_layout();
    connect(cmdClipboard, &QPushButton::clicked, this, &frmTextImport::take_clipboard);
    connect(cmdFile, &QPushButton::clicked, this, &frmTextImport::take_file);
    connect(cmbTarget, &QComboBox::activated, this, [this](int at) {
        options_.target = at == 0 ? ImportTarget::data_points : ImportTarget::xy;
        options_.columns.clear();
        read();
    });
    connect(cmbDelimiter, &QComboBox::activated, this, [this](int at) {
        options_.delimiter = Delimiters[static_cast<std::size_t>(at)].first;
        options_.columns.clear();
        options_.head_lines.reset();
        read();
    });
    connect(cmbDecimal, &QComboBox::activated, this, [this](int at) {
        options_.decimal = at == 0 ? '.' : ',';
        read();
    });
    connect(spnHead, &QSpinBox::valueChanged, this, [this](int lines) {
        options_.head_lines = lines;
        read();
    });
    connect(tblBad->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& row) {
                if (row.isValid()) show_line(bad_->line(row.row()));
            });
    connect(cmdAppend, &QPushButton::clicked, this, [this] { take(false); });
    connect(cmdReplace, &QPushButton::clicked, this, [this] { take(true); });
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::reject);
    const QMimeData* mime = QGuiApplication::clipboard()->mimeData();
    if (mime && mime->hasText())
        take_clipboard();
    else
        read();
}

QWidget* frmTextImport::make_source_row() {
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    cmdClipboard = named(new QPushButton(QStringLiteral("From clip&board")), "cmdClipboard",
                         QStringLiteral("Text from the clipboard"));
    cmdFile = named(new QPushButton(QStringLiteral("&Open file...")), "cmdFile",
                    QStringLiteral("Text from a file"));
    lblSource = named(new QLabel, "lblSource");
    lblSource->setTextFormat(Qt::PlainText);
    for (QPushButton* button : {cmdClipboard, cmdFile}) {
        button->setAutoDefault(false);
        layout->addWidget(button);
    }
    layout->addWidget(lblSource, 1);
    auto* into = new TrimmedLabel(QStringLiteral("&Into"));
    cmbTarget = named(new QComboBox, "cmbTarget");
    cmbTarget->addItems({QStringLiteral("data points T, p, rho, ..."), QStringLiteral("X-Y data")});
    caption_for(into, cmbTarget);
    layout->addWidget(into);
    layout->addWidget(cmbTarget);
    return row;
}

QWidget* frmTextImport::make_form_row() {
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    const auto add = [layout](const char* caption, QWidget* control) {
        auto* label = new TrimmedLabel(QLatin1String(caption));
        caption_for(label, control);
        layout->addWidget(label);
        layout->addWidget(control);
        layout->addSpacing(10);
    };
    cmbDelimiter = named(new QComboBox, "cmbDelimiter");
    for (const auto& [delimiter, text] : Delimiters) cmbDelimiter->addItem(QLatin1String(text));
    cmbDecimal = named(new QComboBox, "cmbDecimal");
    cmbDecimal->addItems({QStringLiteral("point  ."), QStringLiteral("comma  ,")});
    spnHead = named(new QSpinBox, "spnHead");
    spnHead->setRange(0, MostHeadLines);
    spnHead->setKeyboardTracking(false);
    add("&Delimiter", cmbDelimiter);
    add("Deci&mal sign", cmbDecimal);
    add("&Lines above the first row", spnHead);
    layout->addStretch();
    return row;
}

QWidget* frmTextImport::make_tables() {
    tblColumns = named(new QTableWidget(0, 4), "tblColumns", QStringLiteral("Columns of the text"));
    tblColumns->setHorizontalHeaderLabels({QStringLiteral("Column of the text"), QStringLiteral("Taken as"),
                                           QStringLiteral("Unit"), QStringLiteral("Why")});
    tblColumns->horizontalHeader()->setStretchLastSection(true);
    tblColumns->horizontalHeader()->setHighlightSections(false);
    tblColumns->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    tblColumns->setSelectionMode(QAbstractItemView::NoSelection);
    tblColumns->setFocusPolicy(Qt::NoFocus);
    tblColumns->setWordWrap(false);
    tblPreview = table("tblPreview", QStringLiteral("Lines of the text"), preview_);
    tblBad = table("tblBad", QStringLiteral("Rows that are not taken"), bad_);
    tblBad->verticalHeader()->hide();
    tblBad->horizontalHeader()->setStretchLastSection(true);
    tblBad->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    auto* below = new QSplitter(Qt::Horizontal);
    below->addWidget(tblPreview);
    below->addWidget(tblBad);
    below->setStretchFactor(0, 3);
    below->setStretchFactor(1, 2);
    below->setChildrenCollapsible(false);
    return below;
}

void frmTextImport::build_layout() {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(make_source_row());
    layout->addWidget(make_form_row());
    QWidget* below = make_tables();
    layout->addWidget(tblColumns);
    notice = named(new NoticeStrip, "notice");
    layout->addWidget(notice);
    layout->addWidget(below, 1);
    lblCount = named(new QLabel, "lblCount");
    lblCount->setTextFormat(Qt::PlainText);
    lblCount->setWordWrap(true);
    layout->addWidget(lblCount);
    layout->addWidget(rule());
    auto* buttons = new QHBoxLayout;
    cmdClose = named(new QPushButton(QStringLiteral("Cancel <Esc>")), "cmdClose", QStringLiteral("Cancel"));
    cmdReplace = named(new QPushButton(QStringLiteral("&Replace")), "cmdReplace",
                       QStringLiteral("Replace the points that are there"));
    cmdAppend =
        named(new QPushButton(QStringLiteral("&Append")), "cmdAppend", QStringLiteral("Append the rows"));
    buttons->addStretch();
    for (QPushButton* button : {cmdClose, cmdReplace, cmdAppend}) {
        button->setAutoDefault(false);
        button->setMinimumWidth(std::max(96, button->sizeHint().width()));
        buttons->addWidget(button);
    }
    cmdAppend->setDefault(true);
    layout->addLayout(buttons);
    const QSize digits(text_width(*this, 110), fontMetrics().height() * 36);
    resize(natural_size(*this, digits));
}

void frmTextImport::take_clipboard() {
    const QMimeData* mime = QGuiApplication::clipboard()->mimeData();
    const QString text = mime ? mime->text() : QString();
    show_text(text.toUtf8(), QStringLiteral("clipboard"));
}

void frmTextImport::take_file() {
    const auto path = dialogs_.open_file(
        this, {.title = QStringLiteral("Import a text file"),
               .start = bench_.memory.value(QStringLiteral("import/folder")).toString(),
               .filter = QStringLiteral(
                   "Texts and tables (*.csv *.txt *.tsv *.dat *.asc *.prn *.log);;All files (*)"),
               .suffix = {}});
    if (!path) return;
    const FileBytes file = read_file(path->toStdString(), LargestFile);
    if (!file.bytes) {
        bench_.tell({.title = "Import text or table", .text = file.fault, .kind = MessageKind::warning});
        return;
    }
    bench_.memory.set(QStringLiteral("import/folder"), QFileInfo(*path).absolutePath());
    show_text(QByteArray::fromStdString(*file.bytes), QFileInfo(*path).fileName());
}

void frmTextImport::show_text(QByteArray bytes, const QString& source) {
    bytes_ = std::move(bytes);
    source_ = source;
    options_ = {.target = options_.target, .M = options_.M};
    read();
}

// Reads the text as it is understood now, and shows all of it.
void frmTextImport::read() {
    import_ = import_text({bytes_.constData(), static_cast<std::size_t>(bytes_.size())}, options_);
    const QSignalBlocker blocked(spnHead);
    spnHead->setValue(import_.head_lines);
    cmbTarget->setCurrentIndex(options_.target == ImportTarget::xy ? 1 : 0);
    cmbDecimal->setCurrentIndex(import_.decimal == ',' ? 1 : 0);
    for (std::size_t i = 0; i < Delimiters.size(); ++i)
        if (Delimiters[i].first == import_.delimiter) cmbDelimiter->setCurrentIndex(static_cast<int>(i));
    show_columns();
    preview_->show(import_);
    bad_->show(import_.bad_rows);
    tblBad->setVisible(!import_.bad_rows.empty());
    tblPreview->resizeColumnsToContents();
    for (int c = 0; c < preview_->columnCount(); ++c)  // a comment stands in the first cell
        tblPreview->setColumnWidth(c, std::min(tblPreview->columnWidth(c), text_width(*this, 28)));
    tblBad->resizeColumnToContents(0);
    show_sentences();
}

void frmTextImport::show_columns() {
    const int rows = static_cast<int>(import_.columns.size());
    tblColumns->setRowCount(0);
    tblColumns->setRowCount(rows);
    for (int c = 0; c < rows; ++c) {
        const ImportColumn& column = import_.columns[static_cast<std::size_t>(c)];
        tblColumns->setItem(c, TitleCell, text_item(column.title));
        tblColumns->setCellWidget(c, QuantityCell, quantity_box(c));
        if (QComboBox* unit = unit_box(c))
            tblColumns->setCellWidget(c, UnitCell, unit);
        else
            tblColumns->setItem(c, UnitCell, text_item({}));
        tblColumns->setItem(c, ReasonCell, text_item(column.fault.empty() ? column.reason : column.fault));
    }
    tblColumns->resizeRowsToContents();
    for (const int cell : {TitleCell, QuantityCell, UnitCell}) tblColumns->resizeColumnToContents(cell);
    tblColumns->setColumnWidth(TitleCell, std::clamp(tblColumns->columnWidth(TitleCell),
                                                     text_width(*this, 18), text_width(*this, 36)));
    tblColumns->setColumnWidth(QuantityCell, text_width(*this, 18));
    tblColumns->setColumnWidth(UnitCell, text_width(*this, 18));
    const int row_height = rows > 0 ? tblColumns->rowHeight(0) : fontMetrics().height() + 10;
    const int shown_rows = std::clamp(rows, LeastColumnRows, MostColumnRows);
    tblColumns->setFixedHeight(tblColumns->horizontalHeader()->sizeHint().height() + row_height * shown_rows +
                               4);
}

QComboBox* frmTextImport::quantity_box(int column) {
    const auto at = static_cast<std::size_t>(column);
    auto* box = new QComboBox;
    named(box, qPrintable(QStringLiteral("cmbQuantity_%1").arg(column)),
          QStringLiteral("Column %1 is taken as").arg(column + 1));
    const auto add = [box](ImportQuantity q) { box->addItem(shown(import_name(q)), static_cast<int>(q)); };
    add(ImportQuantity::skip);
    if (options_.target == ImportTarget::xy)
        for (const ImportQuantity q : xy_order) add(q);
    else
        for (const ImportQuantity q : data_set_order) add(q);
    box->setCurrentIndex(box->findData(static_cast<int>(import_.columns[at].quantity)));
    // The box goes with the columns that the next reading shows.
    const auto take = [this, at, box] {
        options_.columns[at] = {static_cast<ImportQuantity>(box->currentData().toInt()), {}};
        read();
    };
    connect(box, &QComboBox::activated, this, take, Qt::QueuedConnection);
    return box;
}

QComboBox* frmTextImport::unit_box(int column) {
    const auto at = static_cast<std::size_t>(column);
    const ImportColumn& shown_column = import_.columns[at];
    const std::optional<Quantity> q = quantity_of(shown_column.quantity);
    if (!q) return nullptr;
    auto* box = new QComboBox;
    named(box, qPrintable(QStringLiteral("cmbUnit_%1").arg(column)),
          QStringLiteral("Unit of column %1").arg(column + 1));
    for (const std::string_view unit : units_of(*q)) box->addItem(shown(unit));
    box->setCurrentIndex(box->findText(shown(shown_column.unit)));
    const auto take = [this, at, box] {
        options_.columns[at].quantity = import_.columns[at].quantity;
        options_.columns[at].unit = box->currentText().toStdString();
        read();
    };
    connect(box, &QComboBox::activated, this, take, Qt::QueuedConnection);
    return box;
}

std::size_t frmTextImport::present_points() const {
    const Document& document = bench_.document();
    if (options_.target == ImportTarget::xy) return document.xy.points.size();
    return static_cast<std::size_t>(data_point_count(document.exp));
}

void frmTextImport::show_sentences() {
    const bool points = options_.target == ImportTarget::data_points;
    QStringList sentences;
    const std::string no_database = points ? why_not(bench_.session, Needs::database) : std::string();
    if (!bytes_.isEmpty() && !import_.fault.empty()) sentences << shown(import_.fault);
    for (const std::string& warning : import_.warnings) sentences << shown(warning);
    if (!no_database.empty())
        sentences << QStringLiteral("Data points: ") + shown(no_database) + QLatin1Char('.');
    notice->show_text(sentences.join(QLatin1Char('\n')));

    if (bytes_.isEmpty()) {
        lblSource->setText(QStringLiteral("Paste a table with Ctrl+V, or open a file."));
        lblCount->clear();
    } else {
        lblSource->setText(QStringLiteral("%1, %2").arg(source_, shown(import_.encoding)));
        const std::size_t present = present_points();
        lblCount->setText(
            shown(import_summary(import_)) + QStringLiteral(".  The list has ") +
            (present == 1 ? QStringLiteral("1 point.") : QStringLiteral("%1 points.").arg(present)));
    }
    const bool can = import_.can_be_taken() && no_database.empty();
    cmdAppend->setEnabled(can);
    cmdReplace->setEnabled(can && present_points() > 0);
}

void frmTextImport::show_line(int line) {
    const int row = preview_->row_of(line);
    if (row < 0) return;
    tblPreview->selectRow(row);
    tblPreview->scrollTo(preview_->index(row, 0), QAbstractItemView::PositionAtCenter);
}

void frmTextImport::take(bool replace) {
    const bool unsaved = options_.target == ImportTarget::xy ? bench_.document().xy.XYGeaendert
                                                             : bench_.document().exp.ExpGeaendert;
    if (replace && unsaved && present_points() > 0) {
        const Answer answer = bench_.tell({.title = "WARNING",
                                           .text = "The points that are there have not been saved.\n"
                                                   "Replace them?",
                                           .buttons = Buttons::yes_no,
                                           .default_button = Answer::no,
                                           .kind = MessageKind::question});
        if (answer != Answer::yes) return;
    }
    Document document = bench_.document();
    if (!take_import(document, import_, options_.target, replace)) return;
    bench_.commit(std::move(document));
    accept();
}

void frmTextImport::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Paste)) return take_clipboard();
    QDialog::keyPressEvent(event);
}

bool import_text_into(mdiQUOM& frame, ImportTarget target) {
    frmTextImport window(frame.bench(), frame.dialogs(), target, &frame);
    return window.exec() == QDialog::Accepted;
}

void open_text_import(mdiQUOM& frame, int target) {
    frmTextImport window(frame.bench(), frame.dialogs(),
                         target == 0 ? ImportTarget::data_points : ImportTarget::xy, &frame);
    if (window.exec() != QDialog::Accepted) return;
    if (window.target() == ImportTarget::data_points)
        edit_exp_data(frame, 0);
    else
        edit_xy_data(frame, 0);
}

}  // namespace quom
