#include "ui/windows/frmParinput.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <cmath>
#include <limits>

#include "ui/look/look.h"
#include "ui/main/workbench.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/number_box.h"

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
    set_tab_order({par[0], par[1], par[2], par[3], optm_n[0], optm_n[1], optRhoV[0], optRhoV[1],
                   cmdParameter_OK, cmdClose});
    connect(cmdParameter_OK, &QPushButton::clicked, this, &frmParinput::take);
    connect(&bench_, &Workbench::changed, this, [this](const Changes& changes) {
        if (!changes.units || !options_.volume) return;
        // The volume typed is one of the former unit.
        show_form();
        for (std::size_t i = 0; i < form_.par.size(); ++i)
            if (form_.par[i].value == BoxValue::volume) par[i]->clear();
    });
    show_form();
    const BoxValues values = input_boxes(with_calculation(), bench_.session.factors(), kind_, options_);
    for (std::size_t i = 0; i < form_.par.size(); ++i) show_value(i, values[i]);
    focus_first();
}

QWidget* frmParinput::make_boxes() {
    fraPar = named(new QGroupBox(shown(form_.title)), "fraPar");
    auto* grid = new QGridLayout(fraPar);
    for (std::size_t i = 0; i < par.size(); ++i) {
        Bz[i] = named(new TrimmedLabel({}), indexed("Bz", i));
        par[i] = named(new NumberBox, indexed("par", i));
        add_form_row(grid, static_cast<int>(i), Bz[i], par[i]);
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
    par[0]->setFocus();
    par[0]->selectAll();
}

// Labels and boxes of the kind under the options in force; the last box presses the button.
void frmParinput::show_form() {
    form_ = input_form(with_calculation(), kind_, options_);
    for (std::size_t i = 0; i < par.size(); ++i) {
        const bool used = i < form_.par.size();
        Bz[i]->setVisible(used);
        par[i]->setVisible(used);
        par[i]->press_on_enter(i + 1 == form_.par.size() ? cmdParameter_OK : nullptr);
        if (!used) continue;
        const InputBox& box = form_.par[i];
        Bz[i]->setText(shown(box.label));
        caption_for(Bz[i], par[i], box.optional ? QStringLiteral("(optional)") : QString());
        par[i]->setPlaceholderText(box.optional ? QStringLiteral("optional") : QString());
    }
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
    show_form();
    for (std::size_t i = 0; i < form_.par.size(); ++i)
        if (!std::isnan(before[i]) && after[i] != before[i]) show_value(i, after[i]);
}

void frmParinput::take() {
    Document document = with_calculation();
    const InputTaken result = take_input(document, bench_.session.factors(), kind_, options_, read_boxes());
    if (result.refusal) {
        bench_.tell(*result.refusal);
        par[result.box]->setFocus();
        par[result.box]->selectAll();
        return;
    }
    if (!result.calculate) {
        emit taken(document.calc.setup.benson);
        return;
    }
    bench_.commit(std::move(document));
    emit calculate();
}

}  // namespace quom
