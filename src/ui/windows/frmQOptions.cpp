#include "ui/windows/frmQOptions.h"

#include <QAction>
#include <QButtonGroup>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QSlider>
#include <QVBoxLayout>

#include "ui/look/look.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/workbench.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/wrapped_button.h"
#include "ui/windows/frmReferenz.h"
#include "ui/windows/input_window.h"

namespace quom {

namespace {

constexpr int line_length = 60;  // characters of a wrapped line

QGroupBox* group_box(const char* title, QVBoxLayout*& column) {
    auto* group = new QGroupBox(QLatin1String(title));
    column = new QVBoxLayout(group);
    column->setSpacing(4);
    return group;
}

// What a check box or an option means, under it.
void add_note(QVBoxLayout* column, QWidget* control, const char* note) {
    if (!note) return;
    const QString text = QString::fromLatin1(note).trimmed();
    control->setAccessibleDescription(text);
    QLabel* label = hint_label(text);
    label->setContentsMargins(20, 0, 0, 2);
    column->addWidget(label);
}

QCheckBox* check(QVBoxLayout* column, const char* name, const char* caption, const char* note = nullptr) {
    const QString text = QLatin1String(caption);
    auto* box = named(new WrappedCheck(text, line_length), name, text);
    column->addWidget(box);
    add_note(column, box, note);
    return box;
}

struct OptionText {
    const char *text, *note;
};

// Two options of one question, with what each of them means.
void options(QVBoxLayout* column, const char* name, QRadioButton* (&buttons)[2],
             const OptionText (&texts)[2]) {
    auto* one_of = new QButtonGroup(column->parentWidget());
    for (int i = 0; i < 2; ++i) {
        const QString text = QLatin1String(texts[i].text);
        buttons[i] =
            named(new WrappedOption(text, line_length), QByteArray(name) + '_' + QByteArray::number(i), text);
        one_of->addButton(buttons[i]);
        column->addWidget(buttons[i]);
        add_note(column, buttons[i], texts[i].note);
    }
}

QComboBox* delimiter_box(const char* name) {
    auto* box = named(new QComboBox, name);
    for (const Delimiter& delimiter : delimiters) {
        QString text = shown(delimiter.text);
        if (box->count() == 0) text += QStringLiteral(" (= default setting)");
        box->addItem(text);
    }
    return box;
}

char delimiter_of(const QComboBox* box) {
    return delimiters[static_cast<std::size_t>(box->currentIndex())].sign;
}

}  // namespace

frmQOptions::frmQOptions(Workbench& bench, QWidget* parent)
    : QDialog(parent), bench_(bench), opened_(open_options(bench.document(), bench.fluid())) {
    setObjectName(QStringLiteral("frmQOptions"));
    setWindowTitle(QStringLiteral("  Options"));

    auto* columns = new QGridLayout;
    auto* left = new QVBoxLayout;
    for (QWidget* group : {make_units(), make_calculation(), make_delimiters(), make_reference()})
        left->addWidget(group);
    left->addStretch();
    auto* right = new QVBoxLayout;
    for (QWidget* group : {make_diagrams(), make_curves()}) right->addWidget(group);
    right->addStretch();
    columns->addLayout(left, 0, 0);
    columns->addLayout(right, 0, 1);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(columns);
    cmdOK = named(new QPushButton(QStringLiteral("O. K.")), "cmdOK", QStringLiteral("O. K."));
    cmdClose =
        named(new QPushButton(QStringLiteral("Cancel <Esc>")), "cmdClose", QStringLiteral("Cancel <Esc>"));
    add_end_row(layout, cmdClose, cmdOK);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    set_tab_order({optMolarSpez[0], optMolarSpez[1], chkReduziert, OptCalcMode[0], OptCalcMode[1], cmbSepCSV,
                   cmbSepXY, cmdNormierung, chkUnloadGraph2D, optKurvenMischen[0], optKurvenMischen[1],
                   chkParSpeichern, chkPartialKurve, chkSKurveOhneKonnode, chkCurveTpRestricted,
                   Slider1_punktdichte, cmdClose, cmdOK});
    connect(cmdOK, &QPushButton::clicked, this, &frmQOptions::take);
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::reject);
    connect(cmdNormierung, &QPushButton::clicked, this, [this] { frmReferenz(bench_, this).exec(); });
    show_settings(opened_);
    // Settings that were changed elsewhere; a reference state chosen from here changes none of them.
    connect(&bench_, &Workbench::changed, this, [this](const Changes& changes) {
        if (!changes.units && !changes.options && !changes.models && !changes.substance) return;
        opened_ = open_options(bench_.document(), bench_.fluid());
        show_settings(opened_);
    });
}

QWidget* frmQOptions::make_units() {
    QVBoxLayout* column;
    QWidget* group = group_box("Unit of calculated quantities", column);
    options(column, "optMolarSpez", optMolarSpez,
            {{"molar quantities", " e. g. kJ/kmol or m^3/kmol "},
             {"specific quantities", " e. g. kJ/kg or m^3/kg "}});
    chkReduziert = check(column, "chkReduziert", "reduced quantities z(red) = z/z(cr)");
    return group;
}

QWidget* frmQOptions::make_calculation() {
    QVBoxLayout* column;
    QWidget* group = group_box("Calculation mode", column);
    options(column, "OptCalcMode", OptCalcMode,
            {{"batch calculation",
              " processing a \"batch list\" with specificated values T, p,...; input under menue point "
              "\"Data/exper. data..\"; "},
             {"direct calculation", " single input T, p, ... => calculation "}});
    return group;
}

QWidget* frmQOptions::make_delimiters() {
    auto* group = new QGroupBox(QStringLiteral("Files"));
    auto* grid = new QGridLayout(group);
    cmbSepCSV = delimiter_box("cmbSepCSV");
    cmbSepXY = delimiter_box("cmbSepXY");
    add_form_row(grid, 0, new TrimmedLabel(QStringLiteral("delimiter character for CSV file")), cmbSepCSV);
    const QString hint = QStringLiteral(" semicolon recommended ");
    cmbSepCSV->setAccessibleDescription(spoken(hint));
    grid->addWidget(hint_label(hint), 1, 1);
    add_form_row(grid, 2, new TrimmedLabel(QStringLiteral("delimiter for the *.XY text file")), cmbSepXY);
    return group;
}

QWidget* frmQOptions::make_reference() {
    auto* group = new QGroupBox(QStringLiteral("Reference state for thermodynamic functions"));
    auto* row = new QHBoxLayout(group);
    const QString caption = QStringLiteral("Adjust / View ");
    cmdNormierung = named(new TrimmedButton(caption), "cmdNormierung",
                          caption + QStringLiteral("the reference state for thermodynamic functions"));
    cmdNormierung->setAutoDefault(false);
    row->addWidget(cmdNormierung);
    row->addStretch();
    return group;
}

QWidget* frmQOptions::make_diagrams() {
    QVBoxLayout* column;
    QWidget* group = group_box("2D diagram", column);
    chkUnloadGraph2D =
        check(column, "chkUnloadGraph2D", "delete when unit changes are made", "(= default setting)");
    options(column, "optKurvenMischen", optKurvenMischen,
            {{"always delete an existing diagramm before drawing the new one (= default)", nullptr},
             {"add any new curve when the units of the axes fit",
              "  applies only to diagrams of different curve type from the menu item \"Diagrams 2D\" "}});
    chkParSpeichern = check(column, "chkParSpeichern",
                            "Save parameter values for isothermal, isobaric and isochoric curves in the "
                            "project file LASTSESSION?",
                            "\"do not save\" => default values always T/cr), p(cr), v(cr)_calc");
    return group;
}

QWidget* frmQOptions::make_curves() {
    QVBoxLayout* column;
    QWidget* group = group_box("Curves", column);
    chkPartialKurve =
        check(column, "chkPartialKurve",
              "draw only partial curve \"gas phase\" for Fu(T) (isobaric) or Fu(p) (isothermal); "
              "i. e. only curve for T>T(LV) btw. p<p(LV)",
              " for the time beeing only applicable for virial EOS ");
    chkSKurveOhneKonnode =
        check(column, "chkSKurveOhneKonnode",
              "for cubic EOS: Draw instab./metastab. region when T < T(cr) (without tie line)",
              "Note: This optopn works only in the isothermal p-v diagram");
    chkCurveTpRestricted =
        check(column, "chkCurveTpRestricted", "draw only physically real region (T>T(SL) btw. p>p(SL))",
              " active = physically real representation  ");
    auto* grid = new QGridLayout;
    auto* caption = new TrimmedLabel(QStringLiteral("Calculated points per curve "));
    Slider1_punktdichte = named(new QSlider(Qt::Horizontal), "Slider1_punktdichte");
    Slider1_punktdichte->setRange(dens_min, dens_max);
    Slider1_punktdichte->setSingleStep(dens_step);
    Slider1_punktdichte->setPageStep(2 * dens_step);
    Slider1_punktdichte->setTickInterval(2 * dens_step);
    Slider1_punktdichte->setTickPosition(QSlider::TicksBelow);
    caption_for(caption, Slider1_punktdichte);
    lblDens = named(new QLabel, "lblDens");
    lblSlideMin = named(new QLabel(QStringLiteral("min")), "lblSlideMin");
    lblSlideMax = named(new QLabel(QStringLiteral("max")), "lblSlideMax");
    grid->addWidget(caption, 0, 0, 1, 2);
    grid->addWidget(lblDens, 0, 2, Qt::AlignRight);
    grid->addWidget(Slider1_punktdichte, 1, 0, 1, 3);
    grid->addWidget(lblSlideMin, 2, 0);
    grid->addWidget(lblSlideMax, 2, 2, Qt::AlignRight);
    column->addLayout(grid);
    connect(Slider1_punktdichte, &QSlider::sliderMoved, this, [this](int at) {
        Slider1_punktdichte->setSliderPosition((at + dens_step / 2) / dens_step * dens_step);
    });
    connect(Slider1_punktdichte, &QSlider::valueChanged, this,
            [this](int points) { lblDens->setText(QString::number(points)); });
    return group;
}

void frmQOptions::show_settings(const OptionsInput& input) {
    optMolarSpez[input.specific ? 1 : 0]->setChecked(true);
    chkReduziert->setChecked(input.chkReduziert);
    chkReduziert->setEnabled(input.chkReduziert_enabled);
    OptCalcMode[input.batch ? 0 : 1]->setChecked(true);
    cmbSepCSV->setCurrentIndex(delimiter_index(input.SepCSV));
    cmbSepXY->setCurrentIndex(delimiter_index(input.SepXY));
    chkUnloadGraph2D->setChecked(input.chkUnloadGraph2D);
    chkParSpeichern->setChecked(input.chkParSpeichern);
    chkPartialKurve->setChecked(input.chkPartialKurve);
    chkPartialKurve->setEnabled(input.chkPartialKurve_enabled);
    chkSKurveOhneKonnode->setChecked(input.chkSKurveOhneKonnode);
    chkCurveTpRestricted->setChecked(input.chkCurveTpRestricted);
    optKurvenMischen[input.KurvenMischen ? 1 : 0]->setChecked(true);
    Slider1_punktdichte->setValue(input.Dens);
    lblDens->setText(QString::number(Slider1_punktdichte->value()));
    optMolarSpez[input.specific ? 1 : 0]->setFocus();
}

OptionsInput frmQOptions::read_settings() const {
    OptionsInput input = opened_;
    input.specific = optMolarSpez[1]->isChecked();
    input.chkReduziert = chkReduziert->isChecked();
    input.batch = OptCalcMode[0]->isChecked();
    input.SepCSV = delimiter_of(cmbSepCSV);
    input.SepXY = delimiter_of(cmbSepXY);
    input.chkUnloadGraph2D = chkUnloadGraph2D->isChecked();
    input.chkParSpeichern = chkParSpeichern->isChecked();
    input.chkPartialKurve = chkPartialKurve->isChecked();
    input.chkSKurveOhneKonnode = chkSKurveOhneKonnode->isChecked();
    input.chkCurveTpRestricted = chkCurveTpRestricted->isChecked();
    input.KurvenMischen = optKurvenMischen[1]->isChecked();
    input.Dens = Slider1_punktdichte->value();
    return input;
}

void frmQOptions::take() {
    Document document = bench_.document();
    taken_ = apply_options(document, bench_.fluid(), read_settings(), bench_.messages());
    if (!taken_.taken) return;
    bench_.commit(std::move(document));
    accept();
}

void open_options(mdiQUOM& frame, int) {
    if (Document document = frame.bench().document(); take_back_reduced(document, frame.bench().fluid()))
        frame.bench().commit(std::move(document));
    frmQOptions window(frame.bench(), &frame);
    if (window.exec() != QDialog::Accepted) return;
    show_calculation_captions(frame);
    if (window.taken().unload_diagram) frame.unload("frmQGraph2D");
    frame.refresh();
}

void show_calculation_captions(mdiQUOM& frame) {
    for (const MenuCaption& entry : calc_menu_captions(frame.session().document.options.BatchMode)) {
        const QString name = QStringLiteral("mnuCalc_%1").arg(entry.index);
        if (auto* action = frame.findChild<QAction*>(name)) action->setText(shown(entry.caption));
    }
}

void open_reference_state(mdiQUOM& frame, int) { frmReferenz(frame.bench(), &frame).exec(); }

}  // namespace quom
