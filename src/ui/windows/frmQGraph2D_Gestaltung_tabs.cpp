// The pages of the window, built from the tables of controls.
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QTabWidget>
#include <QVBoxLayout>

#include "ui/widgets/labels.h"
#include "ui/widgets/number_box.h"
#include "ui/widgets/refusal_line.h"
#include "ui/windows/data_controls.h"
#include "ui/windows/design_box.h"
#include "ui/windows/frmQGraph2D_Gestaltung.h"

namespace quom {

namespace {

constexpr const char* LimitNames[] = {"txtXMin", "txtXMax", "txtYMin", "txtYMax"};
constexpr const char* LimitCaptions[] = {"X minimum", "X maximum", "Y minimum", "Y maximum"};

// A page that scrolls where it is higher than the window.
QVBoxLayout* scrolled(QWidget* tab) {
    auto* outer = new QVBoxLayout(tab);
    outer->setContentsMargins(0, 0, 0, 0);
    auto* area = new QScrollArea(tab);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    auto* inside = new QWidget;
    area->setWidget(inside);
    outer->addWidget(area);
    return new QVBoxLayout(inside);
}

bool is_action(const DesignBox& box) { return box.control().type == ControlType::action; }

}  // namespace

void frmQGraph2D_Gestaltung::make_tabs() {
    for (const DesignPageInfo& info : design_pages()) {
        auto* tab = new QWidget;
        tab->setObjectName(shown(info.name));
        tabs->addTab(tab, shown(info.caption));
        QVBoxLayout* column = scrolled(tab);
        QLabel* hint = hint_label(QString());
        hints_[static_cast<std::size_t>(info.page)] = hint;
        column->addWidget(hint);
        if (info.page == DesignPage::curves) {
            add_rows(column, info.page, CurveSlots, "C.");
            cmdDelSinglePoint = data_button(this, "cmdDelSinglePoint", "Delete a single point",
                                            "the next click on a point of a curve offers its deletion");
            cmdDelSinglePoint->setCheckable(true);
            column->addLayout(control_row({cmdDelSinglePoint}));
        } else if (info.page == DesignPage::points) {
            add_rows(column, info.page, PointSlots, "P.");
        } else {
            add_form(column, info.page);
        }
        column->addStretch(1);
    }
}

DesignBox* frmQGraph2D_Gestaltung::add_box(Group& group, const DesignControl& control, const QString& suffix,
                                           const QString& whose, QWidget* parent) {
    auto* box = new DesignBox(control, suffix, whose, parent);
    group.boxes.push_back(box);
    connect(box, &DesignBox::set, this, [this, &group, box](const DesignValue& value) {
        if (!filling_) set(group, *box, value);
    });
    connect(box, &DesignBox::color_wanted, this, [this, &group, box] { ask_color(group, *box); });
    return box;
}

void frmQGraph2D_Gestaltung::add_rows(QVBoxLayout* column, DesignPage page, int rows, const char* letter) {
    const std::vector<DesignControl> controls = design_controls(page);
    auto* grid = new QGridLayout;
    grid->setVerticalSpacing(4);
    int at = 1;
    for (const DesignControl& control : controls) {
        if (control.type != ControlType::action) grid->addWidget(head_label(shown(control.caption)), 0, at);
        if (control.type == ControlType::line) grid->setColumnStretch(at, 1);
        ++at;
    }
    for (int row = 1; row <= rows; ++row) {
        auto& group = *groups_.emplace_back(std::make_unique<Group>());
        group.page = page;
        group.target.number = row;
        const QString number = QLatin1String(letter) + QString::number(row);
        group.number = new QLabel(number);
        grid->addWidget(group.number, row, 0);
        for (std::size_t i = 0; i < controls.size(); ++i) {
            const bool flag = controls[i].type == ControlType::flag;
            QWidget* widget =
                add_box(group, controls[i], QStringLiteral("_%1").arg(row), number, this)->widget();
            grid->addWidget(widget, row, static_cast<int>(i) + 1, flag ? Qt::AlignHCenter : Qt::Alignment());
        }
    }
    column->addLayout(grid);
}

QWidget* frmQGraph2D_Gestaltung::limits_group(DesignPage page) {
    auto* box = new QGroupBox(QStringLiteral("Limits"));
    auto* grid = new QGridLayout(box);
    const bool sheet = page == DesignPage::sheet;
    const std::size_t axis =
        sheet ? 0 : static_cast<std::size_t>(page) - static_cast<std::size_t>(DesignPage::x_axis);
    const std::size_t first = axis == 0 ? 0 : 2, count = sheet ? 4 : 2;
    NumberBox** boxes = sheet ? txtCoord : txtTabCoord[axis];
    QPushButton* take = nullptr;
    if (page != DesignPage::y2_axis) {
        take = data_button(this,
                           sheet ? "cmdCoord_OK" : qPrintable(QStringLiteral("cmdTabCoord_OK_%1").arg(axis)),
                           "Take the limits");
        (sheet ? cmdCoord_OK : cmdTabCoord_OK[axis]) = take;
        const LimitsIn where = sheet ? LimitsIn::design_short : LimitsIn::design_tab;
        connect(take, &QPushButton::clicked, this,
                [this, boxes, first, count, where] { take_limits(boxes, first, count, where); });
    }
    for (std::size_t i = 0; i < count; ++i) {
        const QByteArray place = sheet ? QByteArray() : '_' + QByteArray::number(static_cast<int>(axis));
        boxes[i] = named(new NumberBox(14), LimitNames[first + i] + place);
        boxes[i]->setEnabled(take != nullptr);
        const int row = static_cast<int>(i);
        add_form_row(grid, 2 * row, new TrimmedLabel(QLatin1String(LimitCaptions[first + i])), boxes[i]);
        add_refusal_line(grid, 2 * row + 1, boxes[i]);
        if (take && i + 1 == count) {
            boxes[i]->press_on_enter(take);
            grid->addWidget(take, 2 * row, 2);
        }
    }
    if (!take) grid->addWidget(hint_label(QStringLiteral("Y2 follows Y: limits, scale and grid.")), 0, 2);
    grid->setColumnStretch(3, 1);
    return box;
}

// Label and control; what belongs to options, a number of its own, stands right of them.
void frmQGraph2D_Gestaltung::add_form_control(QGridLayout* grid, const std::vector<DesignBox*>& boxes,
                                              std::size_t i) {
    DesignBox& box = *boxes[i];
    const DesignControl& control = box.control();
    const auto is = [&](std::size_t k, ControlType type) {
        return k < boxes.size() && boxes[k]->control().type == type &&
               boxes[k]->control().group == control.group;
    };
    if (control.type == ControlType::number && i > 0 && is(i - 1, ControlType::options)) return;
    const int row = grid->rowCount();
    if (control.type == ControlType::flag || is_action(box)) {
        grid->addWidget(box.widget(), row, 1, Qt::AlignLeft);
        return;
    }
    auto* label = new TrimmedLabel(shown(control.caption));
    if (control.type == ControlType::options) {
        grid->addWidget(label, row, 0, Qt::AlignRight | Qt::AlignVCenter);
        auto* line = new QHBoxLayout;
        line->addWidget(box.widget());
        if (is(i + 1, ControlType::number)) {
            auto* number = static_cast<NumberBox*>(boxes[i + 1]->widget());
            line->addWidget(number);
            grid->addWidget(new RefusalLine(number), row + 1, 1, 1, 2);
        }
        line->addStretch();
        grid->addLayout(line, row, 1);
        return;
    }
    const QString name = box.widget()->accessibleName();
    const bool wide = control.type == ControlType::text;
    grid->addWidget(label, row, 0, Qt::AlignRight | (wide ? Qt::AlignTop : Qt::AlignVCenter));
    label->setBuddy(box.widget());
    grid->addWidget(box.widget(), row, 1, 1, wide ? 2 : 1, wide ? Qt::Alignment() : Qt::AlignLeft);
    box.widget()->setAccessibleName(name);
    if (auto* number = qobject_cast<NumberBox*>(box.widget()))
        grid->addWidget(new RefusalLine(number), row + 1, 1, 1, 2);
    if (!wide) return;
    QLabel* hint = hint_label(QStringLiteral("add a new line: <Ctrl><Enter>"));
    hint->setTextFormat(Qt::PlainText);
    hint->setWordWrap(false);
    grid->addWidget(hint, row + 1, 1, 1, 2);
}

void frmQGraph2D_Gestaltung::add_form(QVBoxLayout* column, DesignPage page) {
    if (page == DesignPage::texts) {
        cmbText = named(new QComboBox, "cmbText", QStringLiteral("Text of the sheet"));
        cmbText->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        cmbText->setMinimumContentsLength(30);
        column->addLayout(control_row({cmbText}));
    }
    if (page == DesignPage::sheet || (page >= DesignPage::x_axis && page <= DesignPage::y2_axis))
        column->addWidget(limits_group(page));
    auto& group = *groups_.emplace_back(std::make_unique<Group>());
    group.page = page;
    group.target.axis = page;
    for (const DesignControl& control : design_controls(page)) add_box(group, control, {}, {}, this);
    QGridLayout* grid = nullptr;
    std::string_view open = "none";
    QBoxLayout* actions = nullptr;
    for (std::size_t i = 0; i < group.boxes.size(); ++i) {
        DesignBox& box = *group.boxes[i];
        if (box.control().group != open) {
            open = box.control().group;
            QWidget* in = open.empty() ? new QWidget : new QGroupBox(shown(open));
            grid = new QGridLayout(in);
            grid->setColumnStretch(2, 1);
            if (open.empty()) grid->setContentsMargins(0, 0, 0, 0);
            column->addWidget(in);
            actions = nullptr;
        }
        if (!is_action(box)) {
            add_form_control(grid, group.boxes, i);
            actions = nullptr;
            continue;
        }
        if (!actions) {
            actions = new QHBoxLayout;
            grid->addLayout(actions, grid->rowCount(), 0, 1, 3, Qt::AlignLeft);
        }
        actions->addWidget(box.widget());
    }
}

}  // namespace quom
