#include "ui/windows/frmTpRhoEdit.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <algorithm>

#include "ui/main/beside.h"
#include "ui/main/data_windows.h"
#include "ui/main/diagram_windows.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/workbench.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/notice_strip.h"
#include "ui/widgets/number_box.h"
#include "ui/widgets/print_text.h"
#include "ui/windows/data_controls.h"
#include "ui/windows/frmTextImport.h"
#include "ui/windows/input_window.h"

namespace quom {

namespace {

std::size_t index_of(int line) { return static_cast<std::size_t>(line) + 1; }  // [0] is the direct input

}  // namespace

frmTpRhoEdit* frmTpRhoEdit::open(mdiQUOM& frame) {
    auto* window = frame.find_or_make<frmTpRhoEdit>();
    frame.open_child(window);
    window->y[0]->setFocus();
    return window;
}

frmTpRhoEdit::frmTpRhoEdit(mdiQUOM& frame) : frame_(frame) {
    setObjectName(QLatin1String(Name));
    make_controls();
    build_layout();
    set_tab_order();
    connect_controls();
    show_units();
    show_document();
}

void frmTpRhoEdit::connect_controls() {
    connect(OKinput, &QPushButton::clicked, this, &frmTpRhoEdit::enter_line);
    y[exp_columns - 1]->press_on_enter(OKinput);
    for (NumberBox* box : y) box->installEventFilter(this);
    txtMol->installEventFilter(this);
    const auto units_from = [this](QRadioButton* option) {
        connect(option, &QRadioButton::clicked, this, &frmTpRhoEdit::choose_units);
    };
    for (auto* option : opt_T_unit) units_from(option);
    for (auto* option : opt_p_Unit) units_from(option);
    for (auto* option : opt_Rho_Unit) units_from(option);
    connect(txtMol, &QLineEdit::editingFinished, this, &frmTpRhoEdit::choose_units);
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
    connect(cmdBatchLoad, &QPushButton::clicked, this, [this] { load(false); });
    connect(cmdBatchAdd, &QPushButton::clicked, this, [this] { load(true); });
    connect(cmdBatchSave, &QPushButton::clicked, this, [this] { save_exp_data(frame_); });
    connect(cmdSaveXY, &QPushButton::clicked, this, [this] { save_exp_data_as_xy(frame_); });
    connect(txtComment, &QLineEdit::editingFinished, this, [this] {
        const std::string comment = txtComment->text().toStdString();
        if (comment != data().file.ExpComment)
            change([&](ExperimentalData& exp) { exp.file.ExpComment = comment; });
    });
    connect(TSort, &QPushButton::clicked, this, [this] { sort_by(false); });
    connect(pSort, &QPushButton::clicked, this, [this] { sort_by(true); });
    connect(cmdAus, &QPushButton::clicked, this, &frmTpRhoEdit::toggle_marked);
    connect(cmdErase, &QPushButton::clicked, this, [this] { remove_marked(); });
    connect(cmdImport, &QPushButton::clicked, this,
            [this] { import_text_into(frame_, ImportTarget::data_points); });
    connect(cmdClipEinfuegen, &QPushButton::clicked, this, [this] { insert_clipboard(); });
    for (int i = 0; i < 5; ++i)
        connect(optFitFunction[i], &QRadioButton::clicked, this, [this, i] {
            Document document = frame_.bench().document();
            document.exp.optFitFunction = i + 1;
            frame_.bench().commit(std::move(document));
        });
    connect(cmdGraphFunction, &QPushButton::clicked, this,
            [this] { open_control_graph(frame_, ControlGraph::y_T); });
    connect(cmdlogGraf, &QPushButton::clicked, this,
            [this] { open_control_graph(frame_, ControlGraph::ln_p); });
    connect(cmdPrintTpVListe, &QPushButton::clicked, this, [this] {
        const PrintedTable table = exp_printed_table(data());
        PrintedText text{.title = windowTitle().simplified(), .head = {}, .lines = {}};
        for (const std::string& line : table.head) text.head << shown(line);
        for (const std::string& line : table.lines) text.lines << shown(line);
        print_with_preview(this, text);
    });
    connect(cmdClose, &QPushButton::clicked, this, [this] {
        if (BatchSaveFrage(frame_)) frame_.unload(Name);
    });
    connect(cmdHelp, &QAbstractButton::clicked, this, [this] { show_help_of(this); });
    connect(&frame_.bench(), &Workbench::changed, this, &frmTpRhoEdit::document_changed);
}

const ExperimentalData& frmTpRhoEdit::data() const { return frame_.bench().document().exp; }

template <class Change>
void frmTpRhoEdit::change(Change make) {
    Document document = frame_.bench().document();
    make(document.exp);
    document.exp.ExpGeaendert = true;
    frame_.bench().commit(std::move(document));
}

void frmTpRhoEdit::document_changed(const Changes& changes) {
    if (changes.data) show_document();
    if (changes.substance) show_units();
}

void frmTpRhoEdit::show_document() {
    if (data().file.ExpFile.empty()) loaded_ = false;
    setWindowTitle(QString::fromStdString(exp_window_caption(data(), loaded_)));
    if (const QString comment = QString::fromStdString(data().file.ExpComment); comment != txtComment->text())
        txtComment->setText(comment);
    optFitFunction[std::clamp(data().optFitFunction, 1, 5) - 1]->setChecked(true);
    const bool any = count() > 0;
    for (QWidget* control : {cmdBatchSave, TSort, pSort, cmdGraphFunction, cmdlogGraf, cmdPrintTpVListe})
        control->setEnabled(any);
    grid->refresh();
}

// Units and boxes.

ExpInputUnits frmTpRhoEdit::chosen_units() const {
    ExpInputUnits units;
    units.T = static_cast<TUnit>(chosen_option(opt_T_unit, 2));
    units.p = static_cast<PUnit>(chosen_option(opt_p_Unit, 3));
    units.rho = static_cast<RhoInput>(chosen_option(opt_Rho_Unit, 2));
    units.MolMass = static_cast<double>(frame_.session().substance().MolMass);
    units.n = box_number(txtMol->typed()).value_or(0);
    return units;
}

ExpBoxes frmTpRhoEdit::box_texts() const {
    ExpBoxes texts;
    for (std::size_t i = 0; i < exp_columns; ++i) texts[i] = y[i]->typed();
    return texts;
}

// What is typed stays the same point in the other units.
void frmTpRhoEdit::choose_units() {
    const ExpInputUnits now = chosen_units();
    if (now.rho == RhoInput::volume && now.n <= 0) return txtMol->refuse("n must be above 0.");
    if (now == units_) return;
    const ExpBoxPoint typed = exp_point(box_texts(), units_);
    if (!typed.refusal) {
        const ExpBoxes boxes = exp_boxes(typed.point, now);
        for (std::size_t i = 0; i < exp_columns; ++i) y[i]->setText(shown(boxes[i]));
    }
    show_units();
}

void frmTpRhoEdit::show_units() {
    const double M = static_cast<double>(frame_.session().substance().MolMass);
    const bool molar = M > 1e-6;
    opt_Rho_Unit[1]->setEnabled(molar);
    opt_Rho_Unit[1]->setToolTip(molar ? QString() : QStringLiteral("needs the molar mass of a substance"));
    if (!molar) opt_Rho_Unit[0]->setChecked(true);
    units_ = chosen_units();
    const bool volume = units_.rho == RhoInput::volume;
    const DensityCaptions captions = density_captions(units_.rho);
    lblDensity->setText(shown(captions.quantity));
    lblY[2]->setText(shown(captions.V));
    lblY[3]->setText(shown(captions.L));
    for (const std::size_t i : {2, 3}) lblUnit[i]->setText(shown(captions.unit));
    lblUnit[0]->setText(opt_T_unit[chosen_option(opt_T_unit, 2)]->text());
    lblUnit[1]->setText(opt_p_Unit[chosen_option(opt_p_Unit, 3)]->text());
    for (std::size_t i = 0; i < exp_columns; ++i) caption_for(lblY[i], y[i], lblUnit[i]->text());
    txtMol->setEnabled(volume);
    lblMolHint->setText(volume ? shown(volume_hint(M)).trimmed() : QString());
    lblMolHint->setVisible(volume);
}

void frmTpRhoEdit::show_point() {
    const auto lines = grid->marked();
    if (!optInputMode[1]->isChecked() || !lines || lines->first >= count()) return;
    const ExpBoxes boxes = exp_boxes(data().points[index_of(lines->first)], units_);
    for (std::size_t i = 0; i < exp_columns; ++i) y[i]->setText(shown(boxes[i]));
}

void frmTpRhoEdit::show_line_number() {
    const auto lines = grid->marked();
    const int line = !optInputMode[1]->isChecked() ? count() + 1 : lines ? lines->first + 1 : 0;
    lblZeile->setText(line > 0 ? QStringLiteral("line %1").arg(line) : QString());
}

void frmTpRhoEdit::enter_line() {
    const ExpBoxPoint read = exp_point(box_texts(), units_);
    if (read.refusal) return y[read.refusal->box]->refuse(read.refusal->rule);
    if (read.blank) return QApplication::beep();
    if (optInputMode[1]->isChecked()) {
        const auto lines = grid->marked();
        if (!lines) {
            frame_.bench().tell(refusal_message("No marked line!"));
            return;
        }
        change([&](ExperimentalData& exp) { exp.points.edit()[index_of(lines->first)] = read.point; });
    } else {
        change([&](ExperimentalData& exp) { exp.points.edit().push_back(read.point); });
        grid->mark({count() - 1, count() - 1});
        for (NumberBox* box : y) box->clear();
    }
    notice->show_text({});
    y[0]->setFocus();
    y[0]->selectAll();
}

// The lines of the grid.

QStringList frmTpRhoEdit::heads() const {
    QStringList heads;
    for (const ExpColumn& column : exp_column_table)
        heads << shown(column.head) + QLatin1Char('\n') + shown(column.unit);
    return heads;
}

QString frmTpRhoEdit::off_hint() const {
    return QStringLiteral("excluding that line from graph and fitting");
}

int frmTpRhoEdit::count() const { return data_point_count(data()); }

QString frmTpRhoEdit::text(int line, int column) const {
    return shown(exp_text(data().points[index_of(line)], static_cast<std::size_t>(column)));
}

bool frmTpRhoEdit::off(int line) const { return data().points[index_of(line)].Aus != 0; }

std::string frmTpRhoEdit::broken_rule_of(int column, double value) const {
    return broken_exp_rule(static_cast<std::size_t>(column), value);
}

void frmTpRhoEdit::write(const std::vector<GridNumber>& numbers) {
    change([&](ExperimentalData& exp) {
        std::vector<TpRhoPoint>& points = exp.points.edit();
        for (const GridNumber& number : numbers) {
            if (index_of(number.line) >= points.size()) points.resize(index_of(number.line) + 1);
            set_exp_value(points[index_of(number.line)], static_cast<std::size_t>(number.column),
                          number.value);
        }
    });
}

void frmTpRhoEdit::toggle(GridRange lines) {
    Document document = frame_.bench().document();  // the file knows no inactive lines: nothing is unsaved
    toggle_lines(document.exp, lines.first + 1, lines.last + 1);
    frame_.bench().commit(std::move(document));
}

void frmTpRhoEdit::toggle_marked() {
    if (const auto lines = grid->marked())
        toggle(*lines);
    else
        QApplication::beep();
}

void frmTpRhoEdit::insert_clipboard() {
    const auto lines = grid->marked();
    const int at = lines ? lines->first : count();
    const int before = count();
    Document document = frame_.bench().document();
    const std::string fault =
        insert_rows(document.exp, at + 1, QApplication::clipboard()->text().toStdString());
    notice->show_text(QString::fromStdString(fault));
    if (!fault.empty()) return;
    frame_.bench().commit(std::move(document));
    grid->mark({at, at + count() - before - 1});
}

void frmTpRhoEdit::remove_marked() {
    const auto lines = grid->marked();
    if (!lines) {
        frame_.bench().tell(refusal_message("No marked line!"));
        return;
    }
    if (frame_.bench().tell(removal_question(lines->first + 1, lines->last + 1)) != Answer::yes) return;
    grid->clearSelection();
    change([&](ExperimentalData& exp) { remove_lines(exp, lines->first + 1, lines->last + 1); });
}

void frmTpRhoEdit::sort_by(bool pressure) {
    change([&](ExperimentalData& exp) { pressure ? sort_by_p(exp) : sort_by_T(exp); });
}

// Files.

void frmTpRhoEdit::load(bool add) {
    if (!load_exp_data(frame_, add)) return;
    loaded_ = !add;
    grid->clearSelection();
    show_document();
}

void frmTpRhoEdit::closeEvent(QCloseEvent* event) {
    // A window that is put away with its session asks nothing: the data stay.
    if (isVisible() && !BatchSaveFrage(frame_)) return event->ignore();
    QWidget::closeEvent(event);
}

// "+" enters the line, wherever it is typed but in a text.
bool frmTpRhoEdit::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Plus) {
        OKinput->click();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void frmTpRhoEdit::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Plus) return OKinput->click();
    QWidget::keyPressEvent(event);
}

}  // namespace quom
