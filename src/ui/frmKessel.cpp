#include "ui/frmKessel.h"

#include <QAbstractButton>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>

#include "calc/tank_view.h"
#include "ui/beside.h"
#include "ui/labels.h"
#include "ui/look.h"
#include "ui/tank_picture.h"
#include "ui/value_box.h"

namespace quom {

namespace {

constexpr int HelpTopic = 81;

// A calculation that says nothing: boxes are answered by their defaults.
CalcBatchResult calculate_quietly(Session& s) {
    Messages* const listener = s.messages;
    s.messages = nullptr;
    CalcBatchResult result = CalcBatch(s, {.Mode = s.calc.CalcMode, .Point = 0, .Quiet = true});
    s.messages = listener;
    return result;
}

}  // namespace

frmKessel::frmKessel(Session& session, QWidget* parent)
    : QWidget(parent),
      picTank(named(new TankPicture(this), "picTank", QStringLiteral("Tank"))),
      lblp(named(new QLabel(QStringLiteral("p"), this), "lblp")),
      txtLevel(named(new ValueBox(this, 26), "txtLevel", QStringLiteral("Filling level"))),
      txtp(named(new ValueBox(this, 26), "txtp")),
      lblError(named(new QLabel(this), "lblError")),
      cmdTankHelp(help_button("cmdTankHelp", QStringLiteral("Tank"), this)),
      session_(session) {
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
    layout->addWidget(picTank, 1);
    layout->addWidget(lblError);
    layout->addLayout(rows);
    for (QWidget* row :
         {static_cast<QWidget*>(txtLevel), static_cast<QWidget*>(lblp), static_cast<QWidget*>(txtp)}) {
        QSizePolicy policy = row->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        row->setSizePolicy(policy);
    }
    connect(cmdTankHelp, &QAbstractButton::clicked, this, [this] { show_help_of(this, HelpTopic); });
    refresh();
}

void frmKessel::refresh() {
    const bool tank_mode = session_.calc.CalcMode == 9 || session_.calc.CalcMode == 10;
    const TankView view = tank_view(session_, tank_mode ? calculate_quietly(session_) : CalcBatchResult{});
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
