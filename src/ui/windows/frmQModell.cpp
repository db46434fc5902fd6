#include "ui/windows/frmQModell.h"

#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <iterator>
#include <utility>

#include "base/number_text.h"
#include "forms/freshness.h"
#include "forms/model_form.h"
#include "ui/look/look.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/workbench.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/value_box.h"
#include "ui/windows/frmBParInput.h"

namespace quom {

namespace {

// The list with the model in force; without an entry where the list does not offer it.
template <class Code>
void show_list(ChoiceBox* box, const ModelList& list, Code in_force) {
    const QSignalBlocker quiet(box);
    box->clear();
    for (const ModelList::Entry& entry : list.entries)
        box->addItem(QString::fromStdString(entry.text).trimmed(), entry.code);
    box->show_taken(list.selected_code() == number_of(in_force) ? list.selected : -1);
}

int code_of(const QComboBox* box) { return box->currentData().toInt(); }

constexpr int TopicConcept = 50, TopicRhoL = 60;

ChoiceBox* combo(const char* name, QWidget* parent) {
    auto* box = named(new ChoiceBox(parent), name);
    box->setMinimumContentsLength(40);
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    return box;
}

}  // namespace

frmQModell::frmQModell(mdiQUOM& frame)
    : EOSKombi(combo("EOSKombi", this)),
      pkombi(combo("pkombi", this)),
      HLVKombi(combo("HLVKombi", this)),
      cpKombi(combo("cpKombi", this)),
      WatsonKombi(named(new QComboBox(this), "WatsonKombi")),
      lblWatson(new QLabel(QStringLiteral("WATSON-exponent:"), this)),
      PriorOpt{
          named(new QRadioButton(QStringLiteral("GLOBAL concept:  cubic equation of state (CEOS)"), this),
                "PriorOpt_0", QStringLiteral("GLOBAL concept: cubic equation of state (CEOS)")),
          named(new QRadioButton(QStringLiteral("PARTIAL concept:  equation for vapor pressure (EVP)"), this),
                "PriorOpt_1", QStringLiteral("PARTIAL concept: equation for vapor pressure (EVP)"))},
      rhoL_available(named(new ValueBox(this), "rhoL_available", QStringLiteral("L Density"))),
      rhoL_validity(named(new ValueBox(this), "rhoL_validity", QStringLiteral("L Density, validity"))),
      EOSHilfe(help_button("EOSHilfe", QStringLiteral("equation of state"), this)),
      PriorHilfe(help_button("PriorHilfe", QStringLiteral("GLOBAL and PARTIAL concept"), this)),
      pHilfe(help_button("pHilfe", QStringLiteral("vapor pressure equation"), this)),
      HLVHilfe(help_button("HLVHilfe", QStringLiteral("enthalpy of vaporization"), this)),
      cpHilfe(help_button("cpHilfe", QStringLiteral("ideal gas heat capacity"), this)),
      rhoLHilfe(help_button("rhoLHilfe", QStringLiteral("L density"), this)),
      lblNext(named(hint_label({}, this), "lblNext")),
      cmdOKModell(named(new QPushButton(QStringLiteral("O&K"), this), "cmdOKModell", QStringLiteral("OK"))),
      frame_(frame),
      form_(std::make_unique<ModelForm>()) {
    setObjectName(QLatin1String(Name));
    setWindowTitle(QStringLiteral("  Selection of Models "));
    HLVKombi->setMinimumContentsLength(24);
    WatsonKombi->setEditable(true);
    WatsonKombi->setMinimumContentsLength(5);
    WatsonKombi->setInsertPolicy(QComboBox::NoInsert);
    cmdOKModell->setDefault(true);
    cmdOKModell->setMinimumWidth(96);
    build_layout();
    connect_controls();
}

// A box that loses the focus on the way has nobody to tell any more.
frmQModell::~frmQModell() {
    for (ChoiceBox* box : {EOSKombi, pkombi, HLVKombi, cpKombi}) box->disconnect(this);
}

void frmQModell::build_layout() {
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(4);
    const auto add_section = [&](const char* caption, QWidget* control, auto... more) {
        if (layout->count() > 0) layout->addSpacing(6);
        QLabel* head = head_label(QLatin1String(caption), this);
        caption_for(head, control);
        layout->addWidget(head);
        auto* row = new QHBoxLayout;
        row->addWidget(control, 1);
        (row->addWidget(more), ...);
        layout->addLayout(row);
    };
    add_section("Equation of State (EOS)        Fu(T, p, V) = 0", EOSKombi, EOSHilfe);

    auto* group = new QGroupBox(QStringLiteral("Vapor pressure p(LV) or boiling temperature T(LV)"), this);
    auto* options = new QVBoxLayout;
    options->setSpacing(4);
    options->addWidget(new QLabel(QStringLiteral("calculated using ..."), group));
    for (QRadioButton* option : PriorOpt) options->addWidget(option);
    auto* inside = new QHBoxLayout(group);
    inside->addLayout(options, 1);
    inside->addWidget(PriorHilfe);
    layout->addSpacing(6);
    layout->addWidget(group);

    caption_for(lblWatson, WatsonKombi);
    add_section("Vapor pressure equation (EVP)  p(LV) = Fu(T)", pkombi, pHilfe);
    add_section("Enthalpy of vaporization  delta(LV)h = Fu(T)", HLVKombi, lblWatson, WatsonKombi, HLVHilfe);
    add_section("Ideal gas heat capacity  cp(IdGas) = Fu(T)", cpKombi, cpHilfe);
    add_section("L Density    rho(L) = Fu(T)", rhoL_available, rhoL_validity, rhoLHilfe);
    layout->addStretch();
    layout->addSpacing(6);
    layout->addWidget(rule(this));
    layout->addSpacing(6);
    lblNext->setWordWrap(false);
    layout->addWidget(lblNext);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(
        hint_label(QStringLiteral("this window - as the switching center of QUOM - should always "
                                  "remain open"),
                   this),
        1);
    bottom->addWidget(cmdOKModell);
    layout->addLayout(bottom);

    QWidget* const order[] = {EOSKombi, PriorOpt[0],    PriorOpt[1],   pkombi,     HLVKombi,   WatsonKombi,
                              cpKombi,  rhoL_available, rhoL_validity, EOSHilfe,   PriorHilfe, pHilfe,
                              HLVHilfe, cpHilfe,        rhoLHilfe,     cmdOKModell};
    for (std::size_t i = 1; i < std::size(order); ++i) setTabOrder(order[i - 1], order[i]);
}

void frmQModell::connect_controls() {
    for (ChoiceBox* box : {EOSKombi, pkombi, HLVKombi, cpKombi})
        connect(box, &ChoiceBox::shown, this, [this] { show_next(); });
    connect(EOSKombi, &ChoiceBox::chosen, this, [this](int, bool left) { choose_eos(left); });
    connect(pkombi, &ChoiceBox::chosen, this, [this] {
        pkombi_click(*form_, evp_of(code_of(pkombi)));
        changed();
    });
    connect(HLVKombi, &ChoiceBox::chosen, this, [this] {
        HLVKombi_Click(*form_, hlv_of(code_of(HLVKombi)));
        changed();
    });
    connect(cpKombi, &ChoiceBox::chosen, this, [this] {
        cpKombi_Click(*form_, cp_form_of(code_of(cpKombi)));
        changed();
    });
    connect(WatsonKombi, &QComboBox::currentTextChanged, this, [this](const QString& text) {
        const QString with_point = QString(text).replace(QLatin1Char(','), QLatin1Char('.'));
        if (with_point != text) return WatsonKombi->setEditText(with_point);
        WatsonKombi_Change(*form_, text.toStdString());
        changed();
    });
    for (int option = 0; option < 2; ++option)
        connect(PriorOpt[option], &QRadioButton::clicked, this, [this, option] {
            PriorOpt_Click(*form_, option);
            changed();
        });
    connect(cmdOKModell, &QPushButton::clicked, this, [this] { confirm(); });
    connect(&frame_.bench(), &Workbench::changed, this, &frmQModell::follow);

    const auto help = [this](QAbstractButton* button, auto topic) {
        connect(button, &QAbstractButton::clicked, this, [this, topic] { frame_.show_help(topic()); });
    };
    help(EOSHilfe, [this] { return eos_info(form_->models.EOSKode).help_topic; });
    help(PriorHilfe, [] { return TopicConcept; });
    help(pHilfe, [this] { return evp_info(form_->models.EVPKode).help_topic; });
    help(HLVHilfe, [this] { return hlv_info(form_->models.HLVKode).help_topic; });
    help(cpHilfe, [this] { return cp_info(form_->models.cpKode).help_topic; });
    help(rhoLHilfe, [] { return TopicRhoL; });
}

void frmQModell::open(mdiQUOM& frame) {
    auto* window = frame.find_or_make<frmQModell>();
    if (!window->isVisible()) window->fill();
    frame.open_child(window);
    window->EOSKombi->setFocus();
}

void frmQModell::fill(bool following) {
    const Session& s = frame_.session();
    *form_ =
        following && s.shell.ModelsConfirmed ? confirmed_model_form(s.document) : open_model_form(s.document);
    shown_models_ = frame_.bench().document().models;
    shown_input_ = frame_.bench().document().eos_input;
    setWindowTitle(QString::fromStdString(form_->substance.StoffName + " Calculation Models for "));
    {
        const QSignalBlocker quiet(WatsonKombi);
        WatsonKombi->clear();
        for (const std::string& text : form_->WatsonKombi) WatsonKombi->addItem(QString::fromStdString(text));
        if (form_->watson_selected >= 0)
            WatsonKombi->setCurrentIndex(form_->watson_selected);
        else
            WatsonKombi->setEditText(QString::fromStdString(genNum(form_->models.nWat)));
    }
    rhoL_available->show_text(QString::fromStdString(form_->rhoL.availability));
    rhoL_validity->show_text(QString::fromStdString(form_->rhoL.validity));
    constants_wanted_ = false;
    show_form();
    show_next();
    if (differs(*form_, frame_.bench().document())) changed();
}

void frmQModell::show_form() {
    show_list(EOSKombi, form_->EOSKombi, form_->models.EOSKode);
    show_list(pkombi, form_->pkombi, form_->models.EVPKode);
    show_list(HLVKombi, form_->HLVKombi, form_->models.HLVKode);
    show_list(cpKombi, form_->cpKombi, form_->models.cpKode);
    PriorOpt[form_->models.Konzept ? 0 : 1]->setChecked(true);
    PriorOpt[0]->setEnabled(form_->global_enabled());
    lblWatson->setVisible(form_->watson_shown());
    WatsonKombi->setVisible(form_->watson_shown());
}

void frmQModell::show_next() {
    const ChoiceBox* const boxes[] = {EOSKombi, pkombi, HLVKombi, cpKombi};
    const bool passing = std::ranges::any_of(boxes, &ChoiceBox::passing);
    const std::string text =
        passing ? "next: <Enter> takes the equation shown, <Esc> goes back" : next_step(frame_.session());
    lblNext->setText(QString::fromStdString(text));
}

// Models that somebody else put in force. A choice of this window alone is shown already; constants of the
// substance that differ make all lists anew.
void frmQModell::follow(const Changes& changes) {
    if (telling_ || !(changes.substance || changes.models) || !isVisible()) return;
    const Session& s = frame_.session();
    if (!fulfilled(s, Needs::substance)) return;
    const bool confirmed_others = s.shell.ModelsConfirmed && differs(*form_, s.document);
    if (form_->substance != s.substance() || !(shown_models_ == s.document.models) ||
        !(shown_input_ == s.document.eos_input) || confirmed_others)
        fill(true);
    else
        show_next();
}

void frmQModell::changed() {
    lblWatson->setVisible(form_->watson_shown());
    WatsonKombi->setVisible(form_->watson_shown());
    // Constants in force are those of the former selection: results stay, marked as such.
    Workbench& bench = frame_.bench();
    unconfirm_models(bench.session, model_change(*form_, bench.document()));
    frame_.unload("frmCalcIn");  // its questions are those of the former models
    const QScopedValueRollback own(telling_, true);
    bench.announce_models();
    show_next();
}

void frmQModell::take_shown() {
    for (ChoiceBox* box : {EOSKombi, pkombi, HLVKombi, cpKombi}) box->take();
}

// What the user went on to comes first: a modal window would swallow it.
void frmQModell::choose_eos(bool left) {
    EOSKombi_Click(*form_, eos_of(code_of(EOSKombi)));
    show_form();
    changed();
    constants_wanted_ = form_->needs_virial_input();
    if (left)
        QTimer::singleShot(0, this, [this] { ask_for_constants(); });
    else
        ask_for_constants();
}

void frmQModell::ask_for_constants() {
    if (std::exchange(constants_wanted_, false)) type_virial_constants();
}

void frmQModell::type_virial_constants() {
    frmBParInput input(form_->eos_input, this);
    if (input.exec() == QDialog::Accepted) form_->eos_input = input.constants();
}

void frmQModell::confirm() {
    take_shown();
    ask_for_constants();
    Workbench& bench = frame_.bench();
    const ModelSelection before = bench.document().models;
    const ModelOk ok = confirm_models(bench.session, *form_, bench.messages());
    // Another concept asks other questions before it calculates.
    const ModelSelection& now = bench.document().models;
    if (now.Konzept != before.Konzept || now.VPhaseOnly() != before.VPhaseOnly())
        frame_.unload_calculation_windows();
    shown_models_ = bench.document().models;
    shown_input_ = bench.document().eos_input;
    const QScopedValueRollback own(telling_, true);
    bench.announce(ok.changes);
    bench.announce_models();
    show_next();
}

}  // namespace quom
