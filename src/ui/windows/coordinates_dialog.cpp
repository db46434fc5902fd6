#include "ui/windows/coordinates_dialog.h"

#include <QGridLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "diagrams/graph_view.h"
#include "ui/main/workbench.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/number_box.h"
#include "ui/widgets/refusal_line.h"
#include "ui/windows/input_window.h"

namespace quom {

CoordinatesDialog::CoordinatesDialog(Workbench& bench, QWidget* parent) : QDialog(parent), bench_(bench) {
    setObjectName(QStringLiteral("CoordinatesDialog"));
    setWindowTitle(shown(coordinates_title));
    const GraphDocument& sheet = *bench_.session.diagram.sheet;
    const CoordinateTexts texts = coordinate_texts(sheet);
    constexpr const char* names[] = {"txtXMin", "txtXMax", "txtYMin", "txtYMax"};
    constexpr const char* captions[] = {"X minimum", "X maximum", "Y minimum", "Y maximum"};
    auto* layout = new QVBoxLayout(this);
    auto* grid = new QGridLayout;
    int row = 0;
    for (int i = 0; i < 4; ++i) {
        if (i % 2 == 0) {
            const std::string& title = i == 0 ? shown_x_title(sheet) : shown_y_title(sheet);
            grid->addWidget(head_label(QString::fromStdString(title)), row++, 0, 1, 3);
        }
        limit[i] = named(new NumberBox(14), names[i]);
        limit[i]->setText(QString::fromStdString(texts[static_cast<std::size_t>(i)]));
        add_form_row(grid, row, new TrimmedLabel(QLatin1String(captions[i])), limit[i]);
        add_refusal_line(grid, row + 1, limit[i]);
        row += 2;
    }
    layout->addLayout(grid);
    cmdOK = named(new QPushButton(QStringLiteral("OK")), "cmdOK", QStringLiteral("OK"));
    cmdCancel =
        named(new QPushButton(QStringLiteral("Cancel <Esc>")), "cmdCancel", QStringLiteral("Cancel <Esc>"));
    add_end_row(layout, cmdCancel, cmdOK);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    set_tab_order({limit[0], limit[1], limit[2], limit[3], cmdCancel, cmdOK});
    limit[3]->press_on_enter(cmdOK);
    connect(cmdOK, &QPushButton::clicked, this, &CoordinatesDialog::take);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    limit[0]->setFocus();
    limit[0]->selectAll();
}

void CoordinatesDialog::take() {
    auto& sheet = bench_.session.diagram.sheet;
    if (!sheet) return reject();
    CoordinateTexts texts;
    for (std::size_t i = 0; i < texts.size(); ++i) texts[i] = limit[i]->typed();
    const CoordinatesRefused refused = take_coordinates(*sheet, texts);
    if (refused.box) return limit[refused.box->box]->refuse(refused.box->rule);
    if (refused.message) {
        bench_.tell(*refused.message);
        return;
    }
    accept();
}

}  // namespace quom
