#include "ui/windows/frmCompare.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSplitter>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "base/number_text.h"
#include "forms/diagram_form.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/workbench.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/number_box.h"
#include "ui/widgets/refusal_line.h"
#include "ui/widgets/table_copy.h"
#include "ui/widgets/table_view.h"
#include "ui/windows/data_controls.h"
#include "ui/windows/frmQGraph2D.h"
#include "ui/windows/frmTpVSInputBox.h"

namespace quom {

namespace {

constexpr int Digits = 6;

QString cell_of(const Value& value) {
    switch (value.kind) {
        case Value::Kind::number:
            return QString::fromStdString(digitsNum(value.number, Digits));
        case Value::Kind::whole:
            return QString::number(value.whole);
        case Value::Kind::text:
            return QString::fromStdString(value.text);
        default:
            return {};
    }
}

// A table of the report without the columns for programs.
void fill(QStandardItemModel& model, const Table& table) {
    std::vector<std::size_t> columns;
    QStringList heads;
    for (std::size_t k = 0; k < table.columns.size(); ++k) {
        const Column& column = table.columns[k];
        if (column.layout == Layout::json) continue;
        columns.push_back(k);
        const QString unit = QString::fromStdString(column.unit),
                      label = QString::fromStdString(column.label);
        heads << (unit.isEmpty() ? label : label + QStringLiteral(" / ") + unit);
    }
    model.clear();
    model.setHorizontalHeaderLabels(heads);
    for (const auto& row : table.rows) {
        QList<QStandardItem*> cells;
        for (const std::size_t k : columns) {
            auto* cell = new QStandardItem(cell_of(row[k]));
            cell->setEditable(false);
            if (row[k].is_number()) cell->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            cells << cell;
        }
        model.appendRow(cells);
    }
}

TableView* table_view(QTabWidget* tabs, const char* name, const QString& title) {
    auto* view = named(new TableView(tabs), name, title);
    view->setModel(new QStandardItemModel(view));
    view->verticalHeader()->hide();
    view->setTabKeyNavigation(false);
    tabs->addTab(view, title);
    return view;
}

const Table* table_of(const Report& report, std::string_view key) {
    for (const ReportSection& section : report.sections)
        if (const auto* table = std::get_if<Table>(&section); table && table->key == key) return table;
    return nullptr;
}

bool same_diagram(const DiagramRec& a, const DiagramRec& b) {
    return a.kind == b.kind && a.range == b.range && a.XTitle == b.XTitle && a.YTitle == b.YTitle;
}

}  // namespace

frmCompare* frmCompare::open(mdiQUOM& frame) {
    auto* window = frame.find_or_make<frmCompare>();
    frame.open_child(window, frame.child(frmQGraph2D::Name));
    window->lstEquations->setFocus();
    return window;
}

frmCompare::frmCompare(mdiQUOM& frame)
    : lblDiagram(named(head_label(QString(), this), "lblDiagram")),
      lblParameter(named(new TrimmedLabel(QString(), this), "lblParameter")),
      lblReference(named(new TrimmedLabel(QStringLiteral("Reference"), this), "lblReference")),
      lblNotes(named(hint_label(QString(), this), "lblNotes")),
      lstEquations(named(new QListWidget(this), "lstEquations", QStringLiteral("Equations"))),
      cmbReference(named(new QComboBox(this), "cmbReference")),
      txtParameter(named(new NumberBox(14, this), "txtParameter")),
      tabs(named(new QTabWidget(this), "tabs", QStringLiteral("Deviations"))),
      frame_(frame) {
    setObjectName(QLatin1String(Name));
    setWindowTitle(QStringLiteral("Compare equations"));
    cmdDraw = data_button(this, "cmdDraw", "Draw curves", "puts the curves of the equations on the sheet");
    cmdCopy = data_button(this, "cmdCopy", "Copy table", "copies the table in sight");
    cmdClose = data_button(this, "cmdClose", "Close <Esc>");
    cmdClose->setAccessibleName(QStringLiteral("Close"));
    tblCurve = table_view(tabs, "tblCurve", QStringLiteral("Over the curve"));
    tblPoints = table_view(tabs, "tblPoints", QStringLiteral("Over the points"));
    tblValues = table_view(tabs, "tblValues", QStringLiteral("Values"));
    tblMeasured = table_view(tabs, "tblMeasured", QStringLiteral("At the points"));
    build_layout();

    leave_by(cmdClose);
    connect(this, &InputWindow::left, this, [this] { frame_.unload(Name); });
    connect(lstEquations, &QListWidget::itemChanged, this, [this] {
        wanted_.clear();
        for (int i = 0; i < lstEquations->count(); ++i)
            if (lstEquations->item(i)->checkState() == Qt::Checked)
                wanted_.push_back(offered_[static_cast<std::size_t>(i)]);
        show_reference();
        show_table();
    });
    connect(cmbReference, &QComboBox::currentIndexChanged, this, &frmCompare::show_table);
    connect(txtParameter, &QLineEdit::editingFinished, this, [this] {
        if (take_typed(false)) show_table();
    });
    connect(cmdDraw, &QPushButton::clicked, this, &frmCompare::draw);
    connect(cmdCopy, &QPushButton::clicked, this, &frmCompare::copy);
    txtParameter->press_on_enter(cmdDraw);
    // Another substance closes the window with its sheet; another model, other data: anew.
    connect(&frame_.bench(), &Workbench::changed, this, [this] {
        shown_.reset();
        sheet_changed();
    });
    sheet_changed();
}

void frmCompare::build_layout() {
    auto* left = new QWidget(this);
    auto* choices = new QVBoxLayout(left);
    choices->setContentsMargins(0, 0, 0, 0);
    choices->addWidget(lstEquations, 1);
    auto* grid = new QGridLayout;
    add_form_row(grid, 0, lblReference, cmbReference);
    add_form_row(grid, 1, lblParameter, txtParameter);
    add_refusal_line(grid, 2, txtParameter);
    caption_for(lblReference, cmbReference);
    choices->addLayout(grid);
    auto* split = new QSplitter(this);
    split->addWidget(left);
    split->addWidget(tabs);
    split->setStretchFactor(1, 1);
    split->setChildrenCollapsible(false);
    split->setSizes({300, 560});
    lstEquations->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    lstEquations->setTextElideMode(Qt::ElideRight);
    lstEquations->setSpacing(1);
    cmbReference->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cmbReference->setMinimumContentsLength(18);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdClose);
    buttons->addStretch();
    buttons->addWidget(cmdCopy);
    buttons->addWidget(cmdDraw);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lblDiagram);
    layout->addWidget(split, 1);
    layout->addWidget(lblNotes);
    layout->addWidget(rule(this));
    layout->addLayout(buttons);
    set_tab_order({lstEquations, cmbReference, txtParameter, tabs, tblCurve, tblPoints, tblValues,
                   tblMeasured, cmdClose, cmdCopy, cmdDraw});
}

void frmCompare::sheet_changed() {
    const auto& sheet = frame_.session().diagram.sheet;
    if (!sheet) return;
    const DiagramState& next = frame_.session().diagram.state;
    if (shown_ && same_diagram(shown_->diagram, sheet->diagram) && shown_->T == next.T &&
        shown_->p == next.p && shown_->v == next.v)
        return;
    shown_ = Shown{sheet->diagram, next.T, next.p, next.v};
    show_offers();
    show_table();
}

// What was checked stays so where it is offered; at first the models in force and the next entry.
void frmCompare::show_offers() {
    const Session& session = frame_.session();
    offered_ = compare_choices(session);
    const std::size_t in_force = choice_in_force(session, offered_);
    const auto is_wanted = [&](const CompareChoice& c) {
        return std::ranges::find(wanted_, c) != wanted_.end();
    };
    const bool none = std::ranges::none_of(offered_, is_wanted);
    {
        const QSignalBlocker quiet(lstEquations);
        lstEquations->clear();
        for (std::size_t i = 0; i < offered_.size(); ++i) {
            auto* item = new QListWidgetItem(QString::fromStdString(offered_[i].name), lstEquations);
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
            const bool checked = none ? i == in_force : is_wanted(offered_[i]);
            item->setCheckState(checked ? Qt::Checked : Qt::Unchecked);
        }
        if (!offered_.empty()) lstEquations->setCurrentRow(0);
    }
    if (none && !offered_.empty()) wanted_.push_back(offered_[in_force]);
    const GraphDocument& sheet = *session.diagram.sheet;
    lblDiagram->setText(QString::fromStdString(sheet.diagram.title));
    const bool parameter = has_parameter(session);
    lblParameter->setVisible(parameter);
    txtParameter->setVisible(parameter);
    if (parameter) {
        const ParameterBox box = parameter_box(session);
        lblParameter->setText(shown(box.label));
        caption_for(lblParameter, txtParameter);
        txtParameter->setText(shown(box.text));
    }
    show_reference();
}

// The equations that are checked; the one chosen before stays.
void frmCompare::show_reference() {
    const QSignalBlocker quiet(cmbReference);
    const QString before = cmbReference->currentText();
    cmbReference->clear();
    for (const CompareChoice& choice : chosen()) cmbReference->addItem(QString::fromStdString(choice.name));
    const int at = cmbReference->findText(before);
    if (cmbReference->count() > 0) cmbReference->setCurrentIndex(std::max(at, 0));
}

std::vector<CompareChoice> frmCompare::chosen() const {
    std::vector<CompareChoice> choices;
    for (std::size_t i = 0; i < offered_.size(); ++i)
        if (lstEquations->item(static_cast<int>(i))->checkState() == Qt::Checked)
            choices.push_back(offered_[i]);
    return choices;
}

std::size_t frmCompare::reference_of(const std::vector<CompareChoice>& choices) const {
    const int at = cmbReference->currentIndex();
    return at < 0 || static_cast<std::size_t>(at) >= choices.size() ? 0 : static_cast<std::size_t>(at);
}

void frmCompare::show_nothing(const QString& reason) {
    for (TableView* view : {tblCurve, tblPoints, tblValues, tblMeasured})
        static_cast<QStandardItemModel*>(view->model())->clear();
    lblNotes->setText(reason);
    cmdCopy->setEnabled(false);
    cmdDraw->setEnabled(false);
}

void frmCompare::show_table() {
    const Session& session = frame_.session();
    if (!session.diagram.sheet) return;
    if (offered_.size() < 2)
        return show_nothing(QStringLiteral("There is one equation at most for the curves of this diagram."));
    const std::vector<CompareChoice> choices = chosen();
    if (choices.size() < 2) return show_nothing(QStringLiteral("Check two or more equations."));
    const CompareInput input = compare_input(session, choices, reference_of(choices));
    const CurveComparison table = compare_curves(input);
    const Report report = comparison_report(session, input, table);
    const struct {
        TableView* view;
        const char* key;
    } views[] = {
        {tblCurve, "curves"}, {tblPoints, "points"}, {tblValues, "values"}, {tblMeasured, "measured"}};
    for (const auto& [view, key] : views) {
        auto& model = static_cast<QStandardItemModel&>(*view->model());
        const Table* found = table_of(report, key);
        if (found)
            fill(model, *found);
        else
            model.clear();
        view->resizeColumnsToContents();
        tabs->setTabEnabled(tabs->indexOf(view), found != nullptr && !found->rows.empty());
    }
    QStringList notes;
    for (const std::string& note : table.notes) notes << QString::fromStdString(note);
    lblNotes->setText(notes.join(QLatin1Char('\n')));
    cmdCopy->setEnabled(true);
    cmdDraw->setEnabled(true);
}

// What was typed is the parameter of the next curve from now on. tell: messages of a refused one.
bool frmCompare::take_typed(bool tell) {
    Session& session = frame_.session();
    if (!has_parameter(session)) return true;
    SilentMessages nobody;
    Messages& hears = tell ? frame_.bench().messages() : static_cast<Messages&>(nobody);
    const ParameterTaken taken = take_parameter(session, txtParameter->typed(), hears);
    if (tell && !taken.fault.empty()) txtParameter->refuse(taken.fault);
    return taken.taken;
}

void frmCompare::draw() {
    if (auto* box = frame_.child<frmTpVSInputBox>()) box->drop_curve();
    if (!frame_.session().diagram.sheet || !take_typed(true)) return;
    const std::vector<CompareChoice> choices = chosen();
    draw_comparison(frame_.session(), choices, reference_of(choices), frame_.bench().messages());
    show_table();
    if (auto* window = frame_.child<frmQGraph2D>()) window->refresh();
}

void frmCompare::copy() {
    if (auto* view = qobject_cast<TableView*>(tabs->currentWidget()))
        copy_table(quom::table_of(*view->model()));
}

}  // namespace quom
