// The controls of the window and where they stand.
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>

#include "ui/charts/sheet_view.h"
#include "ui/look/look.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/traffic_lights.h"
#include "ui/widgets/colour_grid.h"
#include "ui/widgets/end_row.h"
#include "ui/widgets/flow_layout.h"
#include "ui/widgets/labels.h"
#include "ui/windows/data_controls.h"
#include "ui/windows/frmQGraph2D.h"

namespace quom {

namespace {

QFrame* upright_rule(QWidget* parent) {
    auto* line = new QFrame(parent);
    line->setFrameShape(QFrame::VLine);
    line->setFrameShadow(QFrame::Plain);
    line->setForegroundRole(QPalette::Mid);
    return line;
}

// What it shows is also what a screen reader tells.
QLabel* readout(QWidget* parent, const char* name, int characters) {
    auto* label = named(new QLabel(parent), name);
    label->setMinimumWidth(label->fontMetrics().averageCharWidth() * characters);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

}  // namespace

void frmQGraph2D::make_controls() {
    cmdDraw = data_button(this, "cmdDraw", "Draw curve");
    cmdDraw->setDefault(true);
    cmdZInput = data_button(this, "cmdZInput", "Input of diagram parameters");
    cmdZoom = data_button(this, "cmdZoom", "Zoom", " mark using the mouse ");
    cmdZoom->setCheckable(true);
    cmdZoomReset = data_button(this, "cmdZoomReset", "Reset", " undo zoom ");
    cmdChangeXY = data_button(this, "cmdChangeXY", "x <=> y", " interchanging x- and y-axis ");
    cmdChangeXY->setAccessibleName(QStringLiteral("interchanging x- and y-axis"));
    cmdFarbe = data_button(this, "cmdFarbe", "Color", " Select color for the next action ");
    cmdFarbVorwahl = data_button(this, "cmdFarbVorwahl", "...", " Select color for the next action ");
    cmdFarbVorwahl->setAccessibleName(QStringLiteral("Select color for the next action"));
    cmdEscGraph = data_button(this, "cmdEscGraph", "To the background <Esc>");
    colours = named(new ColourGrid(this), "colours");
    chart = named(new SheetView(frame_.session().diagram.sheet, this), "chart", QStringLiteral("Sheet"));
    lblX = readout(this, "lblX", 24);
    lblY = readout(this, "lblY", 24);
    lblPoint = readout(this, "lblPoint", 40);
    StatusBar2 = named(new QStatusBar(this), "StatusBar2");
    StatusBar2->setSizeGripEnabled(false);
    txtFarbeStatusbar2 = named(new TrafficLights(this), "txtFarbeStatusbar2");
    lblStatus = named(hint_label(QString(), this), "lblStatus");
    lblStatus->setWordWrap(false);
    lblStatus->setText(QStringLiteral(" right click => Diagram, Design, Edit text, move, legend on/off, "));
}

void frmQGraph2D::build_layout() {
    auto* commands = new FlowLayout(6, 4);
    const auto group = [&](std::initializer_list<QWidget*> controls, bool last = false) {
        auto* together = new QWidget(this);
        auto* row = new QHBoxLayout(together);
        row->setContentsMargins(0, 0, 0, 0);
        row->setSpacing(6);
        for (QWidget* control : controls) row->addWidget(control);
        if (!last) row->addWidget(upright_rule(together));
        commands->addWidget(together);
    };
    group({cmdDraw, cmdZInput});
    group({cmdZoom, cmdZoomReset, cmdChangeXY});
    group({cmdFarbe, cmdFarbVorwahl}, true);
    cmdFarbVorwahl->setFixedWidth(cmdFarbVorwahl->fontMetrics().averageCharWidth() * 6);

    // The text of a point gives way first.
    lblPoint->setMinimumWidth(0);
    lblPoint->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto* mouse = new QHBoxLayout;
    mouse->addWidget(lblX);
    mouse->addWidget(lblY);
    mouse->addWidget(lblPoint, 1);
    mouse->addWidget(cmdEscGraph);
    StatusBar2->addWidget(txtFarbeStatusbar2);
    StatusBar2->addWidget(lblStatus, 1);

    auto* layout = new QVBoxLayout(this);
    layout->setMenuBar(menus);
    layout->addLayout(commands);
    layout->addWidget(chart, 1);
    layout->addLayout(mouse);
    layout->addWidget(StatusBar2);
    set_tab_order({cmdDraw, cmdZInput, cmdZoom, cmdZoomReset, cmdChangeXY, cmdFarbe, cmdFarbVorwahl, chart,
                   cmdEscGraph});
}

}  // namespace quom
