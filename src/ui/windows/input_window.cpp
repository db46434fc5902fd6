#include "ui/windows/input_window.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QPushButton>
#include <algorithm>
#include <utility>

#include "ui/widgets/labels.h"

namespace quom {

void InputWindow::leave_by(QPushButton* button) {
    connect(button, &QPushButton::clicked, this, &InputWindow::leave);
}

void InputWindow::leave() {
    if (std::exchange(done_, true)) return;
    emit left();
    close();
}

void InputWindow::closeEvent(QCloseEvent* event) {
    leave();
    QWidget::closeEvent(event);
}

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

void set_tab_order(std::initializer_list<QWidget*> controls) {
    QWidget* before = nullptr;
    for (QWidget* control : controls) {
        if (!control) continue;
        if (before) QWidget::setTabOrder(before, control);
        before = control;
    }
}

}  // namespace quom
