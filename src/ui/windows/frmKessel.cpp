#include "ui/windows/frmKessel.h"

#include <QAbstractButton>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>

#include "report/result_list.h"
#include "report/tank_view.h"
#include "ui/charts/tank_picture.h"
#include "ui/look/look.h"
#include "ui/main/beside.h"
#include "ui/main/workbench.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/stale_line.h"
#include "ui/widgets/value_box.h"

namespace quom {

frmKessel::frmKessel(Workbench& bench, QWidget* parent)
    : QWidget(parent),
      picTank(named(new TankPicture(this), "picTank", QStringLiteral("Tank"))),
      lblp(named(new QLabel(QStringLiteral("p"), this), "lblp")),
      txtLevel(named(new ValueBox(this, 26), "txtLevel", QStringLiteral("Filling level"))),
      txtp(named(new ValueBox(this, 26), "txtp")),
      lblError(named(new QLabel(this), "lblError")),
      cmdTankHelp(help_button("cmdTankHelp", QStringLiteral("Tank"), this)),
      bench_(bench) {
    setObjectName(QLatin1String(Name));
    lblError->setTextFormat(Qt::PlainText);
    lblError->setWordWrap(true);
    lblError->setFont(head_font());
    caption_for(lblp, txtp);
    auto* rows = new QGridLayout;
    rows->addWidget(txtLevel, 0, 0, 1, 3);
    rows->addWidget(lblp, 1, 0);
    rows->addWidget(txtp, 1, 1);
    rows->addWidget(cmdTankHelp, 1, 2);
    rows->setColumnStretch(1, 1);
    auto* layout = new QVBoxLayout(this);
    stale = new StaleLine({picTank, txtLevel, txtp, lblError}, this);
    layout->addWidget(stale);
    layout->addWidget(picTank, 1);
    layout->addWidget(lblError);
    layout->addLayout(rows);
    for (QWidget* row :
         {static_cast<QWidget*>(txtLevel), static_cast<QWidget*>(lblp), static_cast<QWidget*>(txtp)}) {
        QSizePolicy policy = row->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        row->setSizePolicy(policy);
    }
    connect(cmdTankHelp, &QAbstractButton::clicked, this, [this] { show_help_of(this); });
    connect(&bench_, &Workbench::changed, this, &frmKessel::document_changed);
    connect(&bench_, &Workbench::typed, this, &frmKessel::document_changed);
    refresh();
}

void frmKessel::refresh() {
    const Outcome* outcome = current_outcome(bench_.session);
    show_tank(outcome ? *outcome : Outcome{});
}

// Another calculation than that of a tank leaves the tank as it was, greyed.
void frmKessel::document_changed() {
    const QString& typed = bench_.typed_boxes();
    if (const auto words = why_stale(bench_.session, shown_))
        return stale->show_reason(QString::fromStdString(words->changed));
    const CalculationInput& calc = bench_.document().calc;
    if (mode_info(calc.CalcMode).family != ModeFamily::tank)
        return stale->show_reason(QStringLiteral("the calculation is not that of a tank any more"));
    if (stale->isVisibleTo(this) || result_in_force(bench_.session) != shown_) {
        const Outcome* outcome = current_outcome(bench_.session);
        show_tank(outcome ? *outcome : calculate(bench_.session, calc.CurrentPoint));
    }
    if (!typed.isEmpty())
        stale->show_reason(QString::fromStdString(typed_words(typed.toStdString(), {}).changed));
}

void frmKessel::show_tank(const Outcome& outcome) {
    shown_ = result_in_force(bench_.session);
    stale->show_reason({});
    const TankView view = tank_view(bench_.fluid(), outcome, bench_.document().calc.setup);
    setWindowTitle(QString::fromStdString(view.caption));
    txtLevel->show_text(QString::fromStdString(view.level));
    txtp->show_text(QString::fromStdString(view.pressure));
    txtLevel->setVisible(!view.level.empty());
    txtp->setVisible(!view.pressure.empty());
    lblp->setVisible(!view.pressure.empty());
    lblError->setText(
        QString::fromStdString(view.fault).trimmed().replace(QStringLiteral("\n "), QStringLiteral("\n")));
    take_colour();
    lblError->setVisible(!view.fault.empty());
    picTank->show_tank(view);
}

void frmKessel::take_colour() {
    QPalette palette;
    palette.setColor(QPalette::WindowText, shown_text_colour(QColor(static_cast<QRgb>(colour_red))));
    lblError->setPalette(palette);
}

void frmKessel::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ApplicationPaletteChange) take_colour();
}

}  // namespace quom
