#include "ui/widgets/end_row.h"

#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/widgets/labels.h"

namespace quom {

void add_end_row(QVBoxLayout* layout, QPushButton* leave, QPushButton* confirm) {
    confirm->setDefault(true);
    confirm->setMinimumWidth(std::max(96, confirm->sizeHint().width()));
    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(leave);
    row->addWidget(confirm);
    layout->addSpacing(4);
    layout->addWidget(rule());
    layout->addLayout(row);
}

void set_tab_order(const std::vector<QWidget*>& controls) {
    QWidget* before = nullptr;
    for (QWidget* control : controls) {
        if (!control) continue;
        if (before) QWidget::setTabOrder(before, control);
        before = control;
    }
}

}  // namespace quom
