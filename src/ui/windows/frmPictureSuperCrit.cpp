#include "ui/windows/frmPictureSuperCrit.h"

#include <QGridLayout>
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

// By the number of the region.
constexpr const char* RegionTexts[] = {"below the critical point",
                                       "supercritical L-phase (T < T(cr), p > p(cr))",
                                       "supercritical phase (L) = (V) (T > T(cr), p > p(cr))",
                                       "supercritical V-phase (T > T(cr), p < p(cr))", "critical point"};

QString text_of(const std::string& text) { return QString::fromStdString(text); }

std::string value_text(const char* label, double value) {
    return value > 0.0 ? label + genNum(static_cast<float>(value)) + "   " : std::string();
}

}  // namespace

frmPictureSuperCrit::frmPictureSuperCrit(Workbench& bench, QWidget* parent)
    : QWidget(parent),
      lblRegion(named(head_label(QString(), this), "lblRegion")),
      txtState(named(new ValueBox(this), "txtState")),
      txtCritical(named(new ValueBox(this), "txtCritical")),
      picRegions(named(new IsothermView(this), "picRegions",
                       QStringLiteral("p-v diagram of the regions about the critical point"))),
      stale(new StaleLine({txtState, txtCritical, picRegions}, this)),
      cmdClose(
          named(new QPushButton(QStringLiteral("Close <Esc>"), this), "cmdClose", QStringLiteral("Close"))),
      bench_(bench) {
    setObjectName(QLatin1String(Name));
    setWindowTitle(QStringLiteral("Supercritical states"));
    cmdClose->setDefault(true);
    cmdClose->setMinimumWidth(96);
    connect(cmdClose, &QPushButton::clicked, this, [this] { drop_window(this); });
    auto* values = new QGridLayout;
    auto* state = new QLabel(QStringLiteral("State:"), this);
    auto* critical = new QLabel(QStringLiteral("Critical point:"), this);
    caption_for(state, txtState);
    caption_for(critical, txtCritical);
    values->addWidget(state, 0, 0);
    values->addWidget(txtState, 0, 1);
    values->addWidget(critical, 1, 0);
    values->addWidget(txtCritical, 1, 1);
    values->setColumnStretch(1, 1);
    auto* bottom = new QHBoxLayout;
    bottom->addStretch();
    bottom->addWidget(cmdClose);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(stale);
    layout->addWidget(lblRegion);
    layout->addWidget(picRegions, 1);
    layout->addLayout(values);
    layout->addWidget(rule(this));
    layout->addLayout(bottom);
    cmdClose->setFocus();
}

void frmPictureSuperCrit::show_stale(const QString& reason) { stale->show_reason(reason); }

void frmPictureSuperCrit::show_state(double T, double p) {
    stale->show_reason({});
    const IsothermPicture picture =
        region_picture(bench_.fluid(), T, p, bench_.session.factors(T), VolumeName(bench_.document().units));
    lblRegion->setText(QLatin1String(RegionTexts[picture.region]));
    txtState->show_text(text_of(value_text("T/K = ", T) + value_text("p/kPa = ", p)).trimmed());
    txtCritical->show_text(
        text_of(value_text("T(cr)/K = ", picture.Tcr) + value_text("p(cr)/kPa = ", picture.pcr)).trimmed());
    picRegions->show_picture(picture);
}

}  // namespace quom
