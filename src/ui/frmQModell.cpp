#include "ui/frmQModell.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <iterator>

#include "base/number_text.h"
#include "engine/eos_parameters.h"
#include "engine/model_catalogue.h"
#include "engine/vaporization_enthalpy.h"
#include "ui/frmBParInput.h"
#include "ui/labels.h"
#include "ui/look.h"
#include "ui/mdiQUOM.h"
#include "ui/value_box.h"

namespace quom {

namespace {

void show_list(QComboBox* box, const ModelList& list) {
    const QSignalBlocker quiet(box);
    box->clear();
    for (const ModelList::Entry& entry : list.entries)
        box->addItem(QString::fromStdString(entry.text).trimmed(), entry.code);
    box->setCurrentIndex(list.selected);
}

int code_of(const QComboBox* box) { return box->currentData().toInt(); }

// Help topics by code.
constexpr struct {
    int first, last, topic;
} EosTopics[] = {{0, 0, 20}, {2, 4, 21}, {5, 6, 22}, {7, 8, 23}, {10, 10, 24}, {11, 15, 25}, {16, 16, 26}},
  EvpTopics[] = {{1, 2, 31}, {3, 3, 32}, {4, 4, 33}, {5, 5, 34}, {6, 7, 35}, {8, 8, 36}},
  HlvTopics[] = {{1, 1, 62}, {5, 6, 63}, {7, 7, 70}}, CpTopics[] = {{1, 1, 41}, {2, 2, 42}};
constexpr int TopicEvp = 30, TopicCp = 40, TopicConcept = 50, TopicRhoL = 60, TopicHlv = 15340;

template <class Topics>
int topic_of(const Topics& topics, int code, int otherwise) {
    for (const auto& row : topics)
        if (code >= row.first && code <= row.last) return row.topic;
    return otherwise;
}

QComboBox* combo(const char* name, QWidget* parent) {
    auto* box = named(new QComboBox(parent), name);
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
      cmdOKModell(named(new QPushButton(QStringLiteral("&OK"), this), "cmdOKModell", QStringLiteral("OK"))),
      frame_(frame),
      hlv_(std::make_unique<ModelList>()) {
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

frmQModell::~frmQModell() = default;

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
    Session& s = frame_.session();
    connect(EOSKombi, &QComboBox::currentIndexChanged, this, [this] { choose_eos(); });
    connect(pkombi, &QComboBox::currentIndexChanged, this, [this, &s] {
        pkombi_click(s, code_of(pkombi));
        changed();
    });
    connect(HLVKombi, &QComboBox::currentIndexChanged, this, [this, &s] {
        hlv_->selected = HLVKombi->currentIndex();
        HLVKombi_Click(s, code_of(HLVKombi));
        show_watson();
        changed();
    });
    connect(cpKombi, &QComboBox::currentIndexChanged, this, [this, &s] {
        cpKombi_Click(s, code_of(cpKombi));
        changed();
    });
    connect(WatsonKombi, &QComboBox::currentTextChanged, this, [this, &s](const QString& text) {
        const QString with_point = QString(text).replace(QLatin1Char(','), QLatin1Char('.'));
        if (with_point != text) return WatsonKombi->setEditText(with_point);
        WatsonKombi_Change(s, text.toStdString());
        changed();
    });
    for (int option = 0; option < 2; ++option)
        connect(PriorOpt[option], &QRadioButton::clicked, this, [this, &s, option] {
            PriorOpt_Click(s, option);
            changed();
        });
    connect(cmdOKModell, &QPushButton::clicked, this, [this] { confirm(); });

    const auto help = [this](QAbstractButton* button, auto topic) {
        connect(button, &QAbstractButton::clicked, this, [this, topic] { frame_.show_help(topic()); });
    };
    help(EOSHilfe, [&s] { return topic_of(EosTopics, s.models.EOSKode, 20); });
    help(PriorHilfe, [] { return TopicConcept; });
    help(pHilfe, [&s] { return topic_of(EvpTopics, s.models.EVPKode, TopicEvp); });
    help(HLVHilfe, [&s] { return topic_of(HlvTopics, s.models.HLVKode, TopicHlv); });
    help(cpHilfe, [&s] { return topic_of(CpTopics, s.models.cpKode, TopicCp); });
    help(rhoLHilfe, [] { return TopicRhoL; });
}

void frmQModell::open(mdiQUOM& frame) {
    auto* window = frame.child<frmQModell>();
    const bool is_new = window == nullptr;
    if (is_new) window = new frmQModell(frame);
    if (!window->isVisible()) window->fill();
    if (is_new)
        frame.open_child(window, {530, 0}, Sizing::width_only);
    else
        frame.show_child(window);
    window->EOSKombi->setFocus();
}

void frmQModell::fill() {
    Session& s = frame_.session();
    const ModelSelection before = s.models;
    setWindowTitle(QString::fromStdString(s.substance.StoffName + " Calculation Models for "));
    show_list(EOSKombi, AktualisiereEOSKombi(s));
    show_list(pkombi, AktualisierepKombi(s));
    *hlv_ = AktualisiereHLVKombi(s);
    EOSKombi_Click(s, code_of(EOSKombi), *hlv_);
    pkombi_click(s, code_of(pkombi));
    show_list(HLVKombi, *hlv_);
    HLVKombi_Click(s, code_of(HLVKombi));
    show_list(cpKombi, cp_list(s));
    cpKombi_Click(s, code_of(cpKombi));
    {
        const QSignalBlocker quiet(WatsonKombi);
        WatsonKombi->clear();
        int selected = 0;
        for (const std::string& text : watson_list(s)) {
            if (Val(text) == static_cast<double>(s.models.nWat)) selected = WatsonKombi->count();
            WatsonKombi->addItem(QString::fromStdString(text));
        }
        WatsonKombi->setCurrentIndex(selected);
        WatsonKombi_Change(s, WatsonKombi->currentText().toStdString());
    }
    const RhoLState rhoL = rhoL_state(s);
    rhoL_available->show_text(QString::fromStdString(rhoL.availability));
    rhoL_validity->show_text(QString::fromStdString(rhoL.validity));
    show_concept();
    show_watson();
    if (!(s.models == before)) changed();
}

void frmQModell::show_concept() {
    const ModelSelection& m = frame_.session().models;
    PriorOpt[m.Konzept ? 0 : 1]->setChecked(true);
    PriorOpt[0]->setEnabled(!m.VPhaseOnly);
}

void frmQModell::show_watson() {
    const bool shown = frame_.session().models.HLVKode == hlv_watson;
    lblWatson->setVisible(shown);
    WatsonKombi->setVisible(shown);
}

void frmQModell::changed() {
    Session& s = frame_.session();
    s.shell.ModelsConfirmed = false;  // constants in force are those of the former selection
    frame_.unload_calculation_windows();
    frame_.refresh();
}

void frmQModell::choose_eos() {
    Session& s = frame_.session();
    EOSKombi_Click(s, code_of(EOSKombi), *hlv_);
    show_list(HLVKombi, *hlv_);
    HLVKombi_Click(s, code_of(HLVKombi));
    show_concept();
    show_watson();
    changed();
    if (s.models.EOSKode == eos_virial_manual) frmBParInput(s, this).exec();
}

void frmQModell::confirm() {
    Session& s = frame_.session();
    const ModelOk ok = cmdOKModell_Click(s);
    s.shell.ModelsConfirmed = ok.err == 0;
    s.shell.ModelStatus = ok.ModelStatus;
    frame_.refresh();
}

}  // namespace quom
