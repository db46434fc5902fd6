#include "ui/windows/frmCEOSDiagnose.h"

#include <QGridLayout>
#include <QPainter>
#include <QPushButton>

#include "base/number_text.h"
#include "ui/charts/isotherm_picture.h"
#include "ui/main/beside.h"
#include "ui/main/workbench.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/stale_line.h"
#include "ui/widgets/value_box.h"

namespace quom {

namespace {

QString text_of(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

Stretch stretch_of(RootMeaning meaning) {
    switch (meaning) {
        case RootMeaning::metastable:
            return Stretch::metastable_L;
        case RootMeaning::unstable:
            return Stretch::unstable;
        default:
            return Stretch::one_phase;
    }
}

}  // namespace

// The line by which the picture draws the branch of a root.
class frmCEOSDiagnose::RootKey : public QWidget {
 public:
    explicit RootKey(QWidget* parent) : QWidget(parent) { setFixedSize(32, 16); }
    void show_meaning(RootMeaning meaning) {
        kind_ = stretch_of(meaning);
        update();
    }

 protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        draw_stretch_key(painter, rect(), kind_, screen_ink());
    }

 private:
    Stretch kind_ = Stretch::one_phase;
};

frmCEOSDiagnose::frmCEOSDiagnose(Workbench& bench, QWidget* parent)
    : QWidget(parent),
      lblEOS(named(head_label(QString(), this), "lblEOS")),
      lblState(named(new ValueBox(this), "lblState", QStringLiteral("State"))),
      picIsotherm(named(new IsothermView(this), "picIsotherm", QStringLiteral("p-v isotherm"))),
      cmdClose(
          named(new QPushButton(QStringLiteral("Close <Esc>"), this), "cmdClose", QStringLiteral("Close"))),
      bench_(bench) {
    setObjectName(QLatin1String(Name));
    setWindowTitle(text_of(diagnosis_caption));
    for (int i = 0; i < 3; ++i) {
        lblRoot[i] = named(new QLabel(this), qPrintable(QStringLiteral("lblRoot_%1").arg(i)));
        txtRoot[i] = named(new ValueBox(this, 44), qPrintable(QStringLiteral("txtRoot_%1").arg(i)),
                           QStringLiteral("v(%1)").arg(i + 1));
        key_[i] = new RootKey(this);
    }
    stale = new StaleLine({lblState, picIsotherm, txtRoot[0], txtRoot[1], txtRoot[2]}, this);
    cmdClose->setDefault(true);
    cmdClose->setMinimumWidth(96);
    connect(cmdClose, &QPushButton::clicked, this, [this] { drop_window(this); });
    build_layout();
}

void frmCEOSDiagnose::build_layout() {
    auto* head = new QHBoxLayout;
    head->addWidget(lblEOS);
    head->addStretch();
    head->addWidget(lblState);
    auto* roots = new QGridLayout;
    for (int i = 0; i < 3; ++i) {
        for (QWidget* widget : {static_cast<QWidget*>(lblRoot[i]), static_cast<QWidget*>(txtRoot[i])}) {
            QSizePolicy policy = widget->sizePolicy();
            policy.setRetainSizeWhenHidden(true);
            widget->setSizePolicy(policy);
        }
        roots->addWidget(key_[i], i, 0);
        roots->addWidget(lblRoot[i], i, 1);
        roots->addWidget(txtRoot[i], i, 2);
    }
    roots->setColumnStretch(2, 1);
    auto* bottom = new QHBoxLayout;
    bottom->addStretch();
    bottom->addWidget(cmdClose);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(stale);
    layout->addLayout(head);
    layout->addWidget(picIsotherm, 1);
    layout->addLayout(roots);
    layout->addWidget(rule(this));
    layout->addLayout(bottom);
    setTabOrder(lblState, picIsotherm);
    setTabOrder(picIsotherm, txtRoot[0]);
    setTabOrder(txtRoot[0], txtRoot[1]);
    setTabOrder(txtRoot[1], txtRoot[2]);
    setTabOrder(txtRoot[2], cmdClose);
    cmdClose->setFocus();
}

void frmCEOSDiagnose::show_stale(const QString& reason) { stale->show_reason(reason); }

void frmCEOSDiagnose::show_outcome(const Outcome& outcome) {
    stale->show_reason({});
    const UnitFactors factors = bench_.session.factors(outcome.T.value_or(0.0));
    const std::string_view v_unit = VolumeName(bench_.document().units);
    const EosDiagnosis diagnosis = diagnose_eos(bench_.fluid(), outcome, factors, v_unit);
    lblEOS->setText(diagnosis.available ? QString::fromStdString(diagnosis.heading)
                                        : QStringLiteral("no state of a cubic EOS"));
    lblState->show_text(diagnosis.available ? text_of("T/K = " + genNum(diagnosis.T) +
                                                      "   p/kPa = " + genNum(static_cast<float>(diagnosis.p)))
                                            : QString());
    picIsotherm->show_picture(diagnosis_picture(bench_.fluid(), outcome, factors, v_unit));
    for (std::size_t i = 0; i < 3; ++i) {
        const bool shown = i < diagnosis.lines.size();
        lblRoot[i]->setVisible(shown);
        txtRoot[i]->setVisible(shown);
        key_[i]->setVisible(shown);
        if (!shown) {
            txtRoot[i]->clear();
            continue;
        }
        const RootLine& line = diagnosis.lines[i];
        lblRoot[i]->setText(text_of(line.label));
        caption_for(lblRoot[i], txtRoot[i]);
        txtRoot[i]->show_text(text_of(line.value + ' ' + std::string(diagnosis.unit) + "   " +
                                      std::string(root_remark(line.meaning))));
        key_[i]->show_meaning(line.meaning);
    }
}

}  // namespace quom
