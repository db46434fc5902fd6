#include "ui/windows/frmParinput.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <QScopedValueRollback>
#include <QVBoxLayout>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "ui/look/look.h"
#include "ui/main/workbench.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/number_box.h"
#include "ui/widgets/unit_row.h"

namespace quom {

namespace {

constexpr double no_number = std::numeric_limits<double>::quiet_NaN();

QByteArray indexed(const char* name, std::size_t index) {
    return QByteArray(name) + '_' + QByteArray::number(static_cast<int>(index));
}

// What the option of the density or volume box says.
QString option_text(const Document& document, int kind, bool volume) {
    for (const InputBox& box : input_form(document, kind, {.volume = volume}).par)
        if (!box.hint.empty()) return shown(box.hint);
    return {};
}

// Where the unit chosen for a quantity is remembered.
QString unit_key_of(Quantity q) { return QStringLiteral("input/unit/") + shown(unit_choice_of(q)); }

}  // namespace

frmParinput::frmParinput(Workbench& bench, int kind, const CalculationInput& calc, QWidget* parent)
    : InputWindow(parent), bench_(bench), kind_(kind), calc_(calc) {
    form_ = input_form(with_calculation(), kind_, options_);
    setObjectName(QLatin1String(Name));
    setWindowTitle(QString::fromStdString(form_.caption));

    auto* layout = new QVBoxLayout(this);
    // Wide enough for the caption between icon and buttons of the title bar.
    setMinimumWidth(QFontMetrics(head_font()).horizontalAdvance(windowTitle()) + 100);
    layout->addWidget(make_boxes());
    if (QWidget* options = make_options()) layout->addWidget(options);

    cmdParameter_OK = named(new QPushButton(shown(form_.button)), "cmdParameter_OK", shown(form_.button));
    layout->addWidget(cmdParameter_OK);
    layout->addSpacing(2);
    layout->addWidget(rule());
    const bool ends_calculation = kind_ != input_reference_point;
    const QString closing =
        ends_calculation ? QStringLiteral("End calculation <Esc>") : QStringLiteral("Cancel <Esc>");
    if (ends_calculation)
        layout->addWidget(hint_label(QStringLiteral("... closes the input and result window")));
    cmdClose = named(new QPushButton(closing), "cmdClose", closing);
    layout->addWidget(cmdClose);
    layout->addStretch();

    cmdParameter_OK->setDefault(true);
    leave_by(cmdClose);
    std::vector<QWidget*> order;
    for (const UnitRow* row : rows) order.insert(order.end(), {row->par, row->other, row->unit});
    order.insert(order.end(), {optm_n[0], optm_n[1], optRhoV[0], optRhoV[1], cmdParameter_OK, cmdClose});
    set_tab_order(order);
    connect(cmdParameter_OK, &QPushButton::clicked, this, &frmParinput::take);
    connect(&bench_, &Workbench::changed, this, &frmParinput::document_changed);
    show_form();
    const BoxValues values = input_boxes(with_calculation(), bench_.session.factors(), kind_, options_);
    for (std::size_t i = 0; i < form_.par.size(); ++i) show_value(i, values[i]);
    taken_ = input();
    focus_first();
}

QWidget* frmParinput::make_boxes() {
    fraPar = named(new QGroupBox(shown(form_.title)), "fraPar");
    auto* grid = new QGridLayout(fraPar);
    grid->setVerticalSpacing(0);
    for (std::size_t i = 0; i < par.size(); ++i) {
        const QByteArray index = QByteArray::number(static_cast<int>(i));
        Bz[i] = named(new TrimmedLabel({}), "Bz_" + index);
        par[i] = named(new NumberBox, "par_" + index);
        rows[i] = new UnitRow(grid, static_cast<int>(i) * UnitRow::grid_rows, Bz[i], par[i], index);
        connect(rows[i], &UnitRow::edited, this, &frmParinput::input_changed);
        connect(rows[i], &UnitRow::unit_chosen, this,
                [this, i](const QString& unit) { choose_unit(*rows[i], unit); });
        for (NumberBox* box : {par[i], rows[i]->other}) box->on_enter([this, i] { go_on_from(i); });
    }
    return fraPar;
}

QWidget* frmParinput::make_options() {
    if (!form_.optm_n && !form_.optRhoV) return nullptr;
    const bool amount = form_.optm_n;
    auto& buttons = amount ? optm_n : optRhoV;
    auto* group = new QGroupBox(amount ? QStringLiteral("Content as") : QStringLiteral("Input of rho or v"));
    auto* column = new QVBoxLayout(group);
    column->setSpacing(4);
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        const QString text = amount ? (i == 0 ? QStringLiteral("mass m/kg") : QStringLiteral("amount n/kmol"))
                                    : option_text(with_calculation(), kind_, i == 1);
        buttons[i] = named(new QRadioButton(text), indexed(amount ? "optm_n" : "optRhoV", i), text);
        column->addWidget(buttons[i]);
    }
    buttons[0]->setChecked(true);
    connect(buttons[1], &QRadioButton::toggled, this, [this, amount](bool second) {
        choose(amount ? InputOptions{.amount = second} : InputOptions{.volume = second});
    });
    return group;
}

Document frmParinput::with_calculation() const {
    Document document = bench_.document();
    document.calc.CalcMode = calc_.CalcMode;
    document.calc.setup = calc_.setup;
    return document;
}

void frmParinput::focus_first() {
    NumberBox* first = rows[0]->typed_box();
    first->setFocus();
    first->selectAll();
}

// From a box to the next one that is typed in; from the last one to the result.
void frmParinput::go_on_from(std::size_t box) {
    if (box + 1 < form_.par.size())
        rows[box + 1]->typed_box()->setFocus(Qt::TabFocusReason);
    else
        cmdParameter_OK->click();
}

// Labels and boxes of the kind under the options in force.
void frmParinput::show_form() {
    form_ = input_form(with_calculation(), kind_, options_);
    for (std::size_t i = 0; i < par.size(); ++i) {
        const bool used = i < form_.par.size();
        if (used) {
            const InputBox& box = form_.par[i];
            Bz[i]->setText(shown(box.label));
            caption_for(Bz[i], par[i], box.optional ? QStringLiteral("(optional)") : QString());
            par[i]->setPlaceholderText(box.optional ? QStringLiteral("optional") : QString());
            show_units(i);
        }
        rows[i]->set_visible(used);
    }
    arrange();
}

// The units of a box; the one chosen for its dimension, in this window or another, is in force.
void frmParinput::show_units(std::size_t box) {
    const InputBox& shown_box = form_.par[box];
    const auto quantity = quantity_of(shown_box.value);
    const auto M = static_cast<double>(bench_.document().substance.constants.MolMass);
    std::vector<InputUnit> units;
    if (quantity) units = input_units(*quantity, caption_parts(shown_box.label).unit, M);
    const std::string chosen =
        quantity ? bench_.memory.value(unit_key_of(*quantity)).toString().toStdString() : std::string();
    rows[box]->set_units(quantity, std::move(units), chosen, M);
}

void frmParinput::choose_unit(const UnitRow& row, const QString& unit) {
    if (!row.quantity()) return;
    bench_.memory.set(unit_key_of(*row.quantity()), unit);
    for (std::size_t i = 0; i < form_.par.size(); ++i)
        if (rows[i] != &row && quantity_of(form_.par[i].value) == row.quantity()) {
            show_units(i);
            rows[i]->set_visible(true);
        }
    arrange();
}

void frmParinput::arrange() {
    for (std::size_t i = 0; i < rows.size(); ++i) rows[i]->keep_apart(i > 0 ? rows[i - 1] : nullptr);
}

void frmParinput::show_value(std::size_t box, double value) {
    par[box]->setText(QString::fromStdString(box_text(kind_, form_.par[box].value, value)));
}

BoxValues frmParinput::read_boxes() const {
    BoxValues values{};
    for (std::size_t i = 0; i < form_.par.size(); ++i)
        values[i] = box_number(par[i]->text().toStdString()).value_or(no_number);
    return values;
}

void frmParinput::choose(const InputOptions& options) {
    const BoxValues before = read_boxes();
    const BoxValues after =
        convert_boxes(with_calculation(), bench_.session.factors(), kind_, options_, options, before);
    options_ = options;
    const bool same = !has_uncalculated_input();
    show_form();
    for (std::size_t i = 0; i < form_.par.size(); ++i)
        if (!std::isnan(before[i]) && after[i] != before[i]) show_value(i, after[i]);
    // The same values said otherwise.
    if (same) taken_ = input();
    emit input_changed();
}

BoxTexts frmParinput::texts() const {
    BoxTexts typed;
    for (std::size_t i = 0; i < form_.par.size(); ++i) typed[i] = rows[i]->text();
    return typed;
}

// What the boxes say, with the meaning of their numbers.
QStringList frmParinput::input() const {
    QStringList said;
    const BoxTexts typed = texts();
    for (std::size_t i = 0; i < form_.par.size(); ++i)
        said << shown(form_.par[i].label) << QString::fromStdString(typed[i].text);
    return said;
}

bool frmParinput::has_uncalculated_input() const { return input() != taken_; }

// A change from elsewhere: the boxes show the values in force, unless others are being typed.
void frmParinput::document_changed(const Changes& changes) {
    if (changes.units && options_.volume) {
        // The volume typed is one of the former unit.
        show_form();
        for (std::size_t i = 0; i < form_.par.size(); ++i)
            if (form_.par[i].value == BoxValue::volume) par[i]->clear();
        emit input_changed();
    }
    if (!changes.inputs || taking_ || has_uncalculated_input()) return;
    show_document();
}

void frmParinput::show_document() {
    const BoxValues before = read_boxes();
    const BoxValues values = input_boxes(with_calculation(), bench_.session.factors(), kind_, options_);
    for (std::size_t i = 0; i < form_.par.size(); ++i) {
        const BoxValue value = form_.par[i].value;
        if (box_text(kind_, value, before[i]) != box_text(kind_, value, values[i])) show_value(i, values[i]);
    }
    taken_ = input();
}

void frmParinput::take() {
    Document document = with_calculation();
    const InputTaken result = take_input(document, bench_.session.factors(), kind_, options_, texts());
    if (result.refusal) {
        rows[result.box]->refused_box()->refuse(result.rule);
        return;
    }
    for (const UnitRow* row : rows)
        for (NumberBox* box : {row->par, row->other}) box->take_back_refusal();
    if (!result.calculate) {
        emit taken(document.calc.setup.benson);
        return;
    }
    taken_ = input();
    {
        const QScopedValueRollback guard(taking_, true);
        bench_.commit(std::move(document));
    }
    emit calculate();
    emit input_changed();
}

}  // namespace quom
