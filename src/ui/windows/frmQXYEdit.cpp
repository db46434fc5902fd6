#include "ui/windows/frmQXYEdit.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QDateTime>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QRadioButton>

#include "base/number_text.h"
#include "forms/refusal.h"
#include "session/data_files.h"
#include "ui/main/beside.h"
#include "ui/main/data_windows.h"
#include "ui/main/diagram_windows.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/workbench.h"
#include "ui/widgets/notice_strip.h"
#include "ui/widgets/number_box.h"
#include "ui/widgets/print_text.h"
#include "ui/windows/data_controls.h"
#include "ui/windows/frmTextImport.h"
#include "ui/windows/input_window.h"

namespace quom {

namespace {

constexpr int ColumnWidth = 18;  // of the printed list

std::size_t index_of(int line) { return static_cast<std::size_t>(line); }

float& value_of(XYPoint& point, int column) { return column == 0 ? point.x : point.y; }

}  // namespace

frmQXYEdit* frmQXYEdit::open(mdiQUOM& frame) {
    auto* window = frame.find_or_make<frmQXYEdit>();
    frame.open_child(window);
    window->txtX->setFocus();
    return window;
}

frmQXYEdit::frmQXYEdit(mdiQUOM& frame) : frame_(frame) {
    setObjectName(QLatin1String(Name));
    setWindowTitle(QStringLiteral(" Input/Edit points "));
    make_controls();
    build_layout();
    connect_controls();
    show_document();
}

void frmQXYEdit::connect_controls() {
    connect(OKinput, &QPushButton::clicked, this, &frmQXYEdit::enter_line);
    txtY->press_on_enter(OKinput);
    for (NumberBox* box : {txtX, txtY, txtW}) box->installEventFilter(this);
    for (auto* option : optInputMode)
        connect(option, &QRadioButton::clicked, this, [this] {
            show_point();
            show_line_number();
        });
    connect(grid, &DataGrid::marked_changed, this, [this] {
        show_point();
        show_line_number();
    });
    connect(grid, &DataGrid::refused, notice, &NoticeStrip::show_text);
    connect(cmdManip, &QPushButton::clicked, this, [this] {
        fraManip->show();
        layout()->activate();
        if (QWidget* sub = parentWidget(); sub && height() < minimumSizeHint().height())
            sub->resize(sub->width(), sub->height() + minimumSizeHint().height() - height());
        txtW->setFocus();
    });
    connect(cmdCloseManip, &QPushButton::clicked, this, [this] {
        fraManip->hide();
        cmdManip->setFocus();
    });
    connect(cmdExecManip, &QPushButton::clicked, this, &frmQXYEdit::convert);
    txtW->press_on_enter(cmdExecManip);
    connect(cmdLoad, &QPushButton::clicked, this, &frmQXYEdit::load);
    connect(cmdSave, &QPushButton::clicked, this, [this] { save_xy_data(frame_); });
    connect(txtComment, &QLineEdit::editingFinished, this, [this] {
        const std::string comment = txtComment->text().toStdString();
        if (comment != data().comment) change([&](XYData& xy) { xy.comment = comment; });
    });
    connect(XSort, &QPushButton::clicked, this, [this] { change([](XYData& xy) { sort_by_x(xy); }); });
    connect(YSort, &QPushButton::clicked, this, [this] { change([](XYData& xy) { sort_by_y(xy); }); });
    connect(cmdChangeXY, &QPushButton::clicked, this, [this] { change(change_xy); });
    connect(cmdAus, &QPushButton::clicked, this, [this] {
        if (const auto lines = grid->marked())
            toggle(*lines);
        else
            QApplication::beep();
    });
    connect(cmdErase, &QPushButton::clicked, this, [this] { remove_marked(); });
    connect(cmdImport, &QPushButton::clicked, this, [this] { import_text_into(frame_, ImportTarget::xy); });
    connect(cmdClipEinfuegen, &QPushButton::clicked, this, [this] { insert_clipboard(); });
    connect(cmdDrawXY, &QPushButton::clicked, this, [this] {
        open_control_graph(frame_,
                           optIsPoints[1]->isChecked() ? ControlGraph::xy_curve : ControlGraph::xy_points);
    });
    connect(cmdPrint, &QPushButton::clicked, this, &frmQXYEdit::print);
    connect(cmdClose, &QPushButton::clicked, this, [this] {
        if (XYSaveFrage(frame_)) frame_.unload(Name);
    });
    connect(cmdHelp, &QAbstractButton::clicked, this, [this] { show_help_of(this); });
    connect(&frame_.bench(), &Workbench::changed, this, [this](const Changes& changes) {
        if (changes.xy) show_document();
    });
}

const XYData& frmQXYEdit::data() const { return frame_.bench().document().xy; }

template <class Change>
void frmQXYEdit::change(Change make) {
    Document document = frame_.bench().document();
    make(document.xy);
    document.xy.XYGeaendert = true;
    frame_.bench().commit(std::move(document));
}

void frmQXYEdit::show_document() {
    if (const QString comment = QString::fromStdString(data().comment); comment != txtComment->text())
        txtComment->setText(comment);
    const bool any = count() > 0;
    for (QWidget* control : {cmdSave, XSort, YSort, cmdChangeXY, cmdPrint, cmdExecManip})
        control->setEnabled(any);
    if (!any) lblStatus->clear();
    grid->refresh();
}

void frmQXYEdit::show_point() {
    const auto lines = grid->marked();
    if (!optInputMode[1]->isChecked() || !lines || lines->first >= count()) return;
    txtX->setText(text(lines->first, 0));
    txtY->setText(text(lines->first, 1));
}

void frmQXYEdit::show_line_number() {
    const auto lines = grid->marked();
    if (!optInputMode[1]->isChecked())
        lblZeile->setText(QStringLiteral("Add line %1").arg(count() + 1));
    else
        lblZeile->setText(lines ? QStringLiteral("Edit line %1").arg(lines->first + 1) : QString());
}

void frmQXYEdit::enter_line() {
    XYPoint point;
    for (const int column : {0, 1}) {
        NumberBox* box = column == 0 ? txtX : txtY;
        const char* name = column == 0 ? "x" : "y";
        const BoxNumber number = read_box(name, box->typed(), NumberRule::any);
        const std::string fault = number.fault.empty() ? broken_rule_of(column, number.value) : number.fault;
        if (!fault.empty()) return box->refuse(fault);
        value_of(point, column) = static_cast<float>(number.value);
    }
    if (optInputMode[1]->isChecked()) {
        const auto lines = grid->marked();
        if (!lines) {
            frame_.bench().tell(refusal_message("No marked line!"));
            return;
        }
        change([&](XYData& xy) { xy.points.edit()[index_of(lines->first)] = point; });
    } else {
        change([&](XYData& xy) { xy.points.edit().push_back(point); });
        grid->mark({count() - 1, count() - 1});
        txtX->clear();
        txtY->clear();
    }
    notice->show_text({});
    txtX->setFocus();
    txtX->selectAll();
}

// The lines of the grid.

QStringList frmQXYEdit::heads() const { return {QStringLiteral("X"), QStringLiteral("Y")}; }

QString frmQXYEdit::off_hint() const {
    return QStringLiteral(" excludes point from drawing, manipulating, saving and printing ");
}

int frmQXYEdit::count() const { return static_cast<int>(data().points.size()); }

QString frmQXYEdit::text(int line, int column) const {
    const XYPoint& point = data().points[index_of(line)];
    return QString::fromStdString(genNum(column == 0 ? point.x : point.y));
}

bool frmQXYEdit::off(int line) const { return data().points[index_of(line)].Aus != 0; }

std::string frmQXYEdit::broken_rule_of(int column, double value) const {
    return value < 0 ? broken_rule(column == 0 ? "x" : "y", -value, NumberRule::not_negative)
                     : broken_rule(column == 0 ? "x" : "y", value, NumberRule::not_negative);
}

void frmQXYEdit::write(const std::vector<GridNumber>& numbers) {
    change([&](XYData& xy) {
        std::vector<XYPoint>& points = xy.points.edit();
        for (const GridNumber& number : numbers) {
            if (index_of(number.line) >= points.size()) points.resize(index_of(number.line) + 1);
            value_of(points[index_of(number.line)], number.column) = static_cast<float>(number.value);
        }
    });
}

void frmQXYEdit::toggle(GridRange lines) {
    change([&](XYData& xy) { toggle_lines(xy, lines.first + 1, lines.last + 1); });
}

void frmQXYEdit::insert_clipboard() {
    const auto lines = grid->marked();
    const int at = lines ? lines->first : count();
    const int before = count();
    Document document = frame_.bench().document();
    const std::string fault =
        insert_rows(document.xy, at + 1, QApplication::clipboard()->text().toStdString());
    notice->show_text(QString::fromStdString(fault));
    if (!fault.empty()) return;
    frame_.bench().commit(std::move(document));
    grid->mark({at, at + count() - before - 1});
}

void frmQXYEdit::remove_marked() {
    const auto lines = grid->marked();
    if (!lines) {
        frame_.bench().tell(refusal_message("No marked line!"));
        return;
    }
    if (frame_.bench().tell(removal_question(lines->first + 1, lines->last + 1)) != Answer::yes) return;
    grid->clearSelection();
    change([&](XYData& xy) { remove_lines(xy, lines->first + 1, lines->last + 1); });
}

void frmQXYEdit::convert() {
    const BoxNumber W = read_box("W", txtW->typed(), NumberRule::any);
    const auto conversion = static_cast<XYConversion>(chosen_option(optManip, 6));
    const bool needs_W = conversion == XYConversion::y_times_W || conversion == XYConversion::y_plus_W;
    if (needs_W && !W.fault.empty()) return txtW->refuse(W.fault);
    Document document = frame_.bench().document();
    if (quom::convert(document.xy, conversion, W.value))
        frame_.bench().commit(std::move(document));
    else
        frame_.bench().tell(conversion_refusal());
}

void frmQXYEdit::load() {
    if (!load_xy_data(frame_)) return;
    grid->clearSelection();
    lblStatus->setText(shown(xy_loaded_text(data())));
}

void frmQXYEdit::print() {
    const QDateTime now = QDateTime::currentDateTime();
    const QLocale locale = QLocale::system();
    PrintedText text{.title = QStringLiteral("Print list"), .head = {}, .lines = {}};
    text.head << QStringLiteral("List X-Y-data from  %1  %2 o'clock")
                     .arg(locale.toString(now.date(), QLocale::ShortFormat),
                          locale.toString(now.time(), QLocale::ShortFormat))
              << QString()
              << QStringLiteral("X").rightJustified(ColumnWidth) +
                     QStringLiteral("Y").rightJustified(ColumnWidth)
              << QString(2 * ColumnWidth, QLatin1Char('-'));
    for (int line = 0; line < count(); ++line)
        if (!off(line))
            text.lines << this->text(line, 0).rightJustified(ColumnWidth) +
                              this->text(line, 1).rightJustified(ColumnWidth);
    print_with_preview(this, text);
}

void frmQXYEdit::closeEvent(QCloseEvent* event) {
    // A window that is put away with its session asks nothing: the data stay.
    if (isVisible() && !XYSaveFrage(frame_)) return event->ignore();
    QWidget::closeEvent(event);
}

// "+" enters the line, wherever it is typed but in a text.
bool frmQXYEdit::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Plus) {
        OKinput->click();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void frmQXYEdit::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Plus) return OKinput->click();
    QWidget::keyPressEvent(event);
}

}  // namespace quom
