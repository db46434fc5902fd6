// How a window ends and how Tab goes through it.
#pragma once
#include <vector>

class QPushButton;
class QVBoxLayout;
class QWidget;

namespace quom {

// The row of buttons that ends a window: a rule above, the confirming one last, at least 96 wide and default.
void add_end_row(QVBoxLayout* layout, QPushButton* leave, QPushButton* confirm);

// Tab goes through the controls in this order; those that are null are left out.
void set_tab_order(const std::vector<QWidget*>& controls);

}  // namespace quom
