// The result window: record, list on the printer and in a file, and the end of the calculation.
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QCloseEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <algorithm>
#include <memory>

#include "base/dates.h"
#include "base/files.h"
#include "report/lst_file.h"
#include "report/record_file.h"
#include "ui/main/beside.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/workbench.h"
#include "ui/widgets/dialogs.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/print_text.h"
#include "ui/widgets/state_strip.h"
#include "ui/widgets/value_box.h"
#include "ui/windows/frmCEOSDiagnose.h"
#include "ui/windows/frmIsoCalc.h"
#include "ui/windows/frmPictureSuperCrit.h"
#include "ui/windows/frmQCalcOut.h"
#include "ui/windows/points_page.h"

namespace quom {

namespace {

constexpr int points_written_at_once = 5000;

QString text_of(const std::string& text) { return QString::fromStdString(text); }

// A list with its own points and results, for another thread.
struct OwnedList {
    std::vector<TpRhoPoint> points;
    std::vector<BatchResult> results;
    ResultList list;
    std::string fault;
};

std::shared_ptr<OwnedList> owned_list(const Session& session, bool with_functions) {
    const auto owned = std::make_shared<OwnedList>();
    owned->points = session.document.exp.points.list();
    owned->results = session.batch;
    owned->list = result_list_of(session, today_text());
    owned->list.WithFunctions = with_functions;
    owned->list.points = owned->points;
    owned->list.results = owned->results;
    return owned;
}

}  // namespace

void frmQCalcOut::connect_output() {
    connect(cmdProtokoll, &QPushButton::clicked, this, [this] { write_row(); });
    connect(cmdOpenNew, &QPushButton::clicked, this, [this] { close_record(true); });
    // A record that is left open is written when the program ends.
    connect(qApp, &QCoreApplication::aboutToQuit, this, [this] { close_record(false); });
    show_record();
    connect(points, &PointsPage::point_chosen, this, [this](int point) { go_to_point(point); });
    connect(points, &PointsPage::running_changed, this, [this](bool running) {
        for (QPushButton* button : {cmdVor, cmdRueck, cmdCalc_OK}) button->setEnabled(!running);
    });
}

// Lists cover data points: direct input has none.
void frmQCalcOut::show_batch_controls() {
    tabs->setTabVisible(tabs->indexOf(points), !direct_);
    for (QRadioButton* option : optResultPrint) option->setEnabled(!direct_);
    optResultPrint[0]->setChecked(true);
    cmdCalc_OK->setText(direct_ ? QStringLiteral("C&lose") : QStringLiteral("E&xit (+ data output)"));
    cmdCalc_OK->setAccessibleName(spoken(cmdCalc_OK->text()));
    cmdCalc_OK->setMinimumWidth(std::max(96, cmdCalc_OK->sizeHint().width()));
    cmdVor->setEnabled(!direct_);
    cmdRueck->setEnabled(!direct_);
    points->refresh();
}

Dialogs& frmQCalcOut::dialogs() const {
    static Dialogs of_platform;
    mdiQUOM* frame = frame_of(const_cast<frmQCalcOut*>(this));
    return frame ? frame->dialogs() : of_platform;
}

void frmQCalcOut::show_record() {
    const CalculationRecord& record = bench_.session.record;
    lblProtText2->show_text(text_of(record.ProtocolFile));
    lblProtText2->setToolTip(QStringLiteral("%1 rows wait to be written").arg(record.ProtocolTable.size()));
    cmdOpenNew->setEnabled(record.ProtocolOpen);
    cmdProtokoll->setEnabled(outcome_.has_result() && !strip->is_stale());
}

void frmQCalcOut::write_row() {
    if (!outcome_.has_result() || strip->is_stale()) return;
    AppendProtocolRow(bench_.session, outcome_, bench_.messages());
    show_record();
}

void frmQCalcOut::close_record(bool with_clipboard) {
    if (!bench_.session.record.ProtocolOpen) return;
    const ClosedProtocol closed = CloseProtocol(bench_.session, today_text());
    if (!closed.fault.empty())
        bench_.tell({.title = "Execution not possible", .text = closed.fault, .kind = MessageKind::warning});
    else if (with_clipboard && !closed.path.empty())
        QApplication::clipboard()->setText(text_of(closed.clipboard));
    show_record();
}

void frmQCalcOut::end_calculation() {
    if (direct_ || optResultPrint[0]->isChecked()) return close_windows();
    put_out();
}

void frmQCalcOut::close_windows() {
    emit calculation_ended();
    if (mdiQUOM* frame = frame_of(this))
        frame->unload_calculation_windows();
    else
        close();
}

// Asks for the file first; then points that were never stepped to are calculated.
void frmQCalcOut::put_out() {
    QString path;
    if (optResultPrint[2]->isChecked()) {
        const auto file = dialogs().save_file(this, {.title = QStringLiteral("Save QUOM result-list as ..."),
                                                     .start = text_of(bench_.session.ProgramPath),
                                                     .filter = QStringLiteral("Result file (*.LST)"),
                                                     .suffix = QStringLiteral("LST")});
        if (!file) return;
        path = text_of(result_file_path(file->toStdString(), bench_.session.ProgramPath));
    }
    points->calculate(true, [this, path](bool all) {
        if (!all) return;  // cancelled: what was calculated is kept
        path.isEmpty() ? print_list() : save_list(path);
    });
}

void frmQCalcOut::print_list() {
    const bool with_functions = chkFuncPrint->isChecked() && chkFuncPrint->isEnabled();
    const auto owned = owned_list(bench_.session, with_functions);
    const QString text = text_of(result_print_text(owned->list));
    dialogs().print(this, {.title = windowTitle(), .head = {}, .lines = text.split(QLatin1Char('\n'))});
    optResultPrint[0]->setChecked(true);
    close_windows();
}

void frmQCalcOut::save_list(const QString& path) {
    const bool with_functions = chkFuncPrint->isChecked() && chkFuncPrint->isEnabled();
    const auto owned = owned_list(bench_.session, with_functions);
    const auto write = [owned, path = path.toStdString()](const Progress&) {
        owned->fault = write_file_atomic(path, result_file_bytes(owned->list));
    };
    points->run(owned->points.size() <= points_written_at_once, write, [this, owned] {
        if (!owned->fault.empty()) {
            bench_.tell(
                {.title = "Execution not possible", .text = owned->fault, .kind = MessageKind::warning});
            return;
        }
        optResultPrint[0]->setChecked(true);
        close_windows();
    });
}

void frmQCalcOut::closeEvent(QCloseEvent* event) {
    close_record(true);
    for (QWidget* window :
         {static_cast<QWidget*>(iso_), static_cast<QWidget*>(diagnosis_), static_cast<QWidget*>(picture_)})
        drop_window(window);
    event->accept();
}

}  // namespace quom
