#include "ui/windows/frmQGraph2D_Gestaltung.h"

#include <QColorDialog>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/main/mdiQUOM.h"
#include "ui/main/mdi_area.h"
#include "ui/main/workbench.h"
#include "ui/widgets/colour_grid.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/number_box.h"
#include "ui/windows/data_controls.h"
#include "ui/windows/design_box.h"
#include "ui/windows/frmQGraph2D.h"
#include "ui/windows/schrift_edit.h"

namespace quom {

namespace {

bool is_label(DesignText part) {
    return part == DesignText::curve_label || part == DesignText::points_label ||
           part == DesignText::mark_label;
}

// Leaves as much of the sheet in sight as there is room for.
void move_to_the_corner(const mdiQUOM& frame, QWidget* window) {
    QWidget* sub = window->parentWidget();
    const QSize room = frame.area->viewport()->size();
    if (sub) sub->move(std::max(0, room.width() - sub->width()), std::max(0, room.height() - sub->height()));
}

}  // namespace

frmQGraph2D_Gestaltung* frmQGraph2D_Gestaltung::open(mdiQUOM& frame, DesignPage page,
                                                     const DesignTarget& target, const char* control) {
    const bool is_new = frame.child(Name) == nullptr;
    auto* window = frame.find_or_make<frmQGraph2D_Gestaltung>();
    QWidget* sheet = frame.child(frmQGraph2D::Name);
    frame.open_child(window, sheet);
    if (is_new && sheet && sheet->parentWidget() && window->parentWidget() &&
        sheet->parentWidget()->geometry().intersects(window->parentWidget()->geometry()))
        move_to_the_corner(frame, window);
    window->show_page(page, target, control);
    return window;
}

frmQGraph2D_Gestaltung::frmQGraph2D_Gestaltung(mdiQUOM& frame)
    : tabs(named(new QTabWidget(this), "tabs", QStringLiteral("Pages of the design"))),
      frame_(frame),
      colours_(named(new ColourGrid(this), "colours")) {
    setObjectName(QLatin1String(Name));
    make_tabs();
    cmdPunkteGST_Close = data_button(this, "cmdPunkteGST_Close", "Close <Esc>");
    cmdPunkteGST_Close->setAccessibleName(QStringLiteral("Close"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(tabs, 1);
    auto* end = new QHBoxLayout;
    end->addWidget(hint_label(QStringLiteral("Every change is on the sheet at once.")), 1);
    end->addWidget(cmdPunkteGST_Close);
    layout->addLayout(end);
    leave_by(cmdPunkteGST_Close);
    connect(this, &InputWindow::left, this, [this] { frame_.unload(Name); });
    connect(tabs, &QTabWidget::currentChanged, this, &frmQGraph2D_Gestaltung::show_title);
    connect(cmbText, &QComboBox::activated, this, [this](int index) {
        text_ = cmbText->itemData(index).value<TextRef>();
        refresh();
    });
    connect(cmdDelSinglePoint, &QPushButton::toggled, this, [this](bool on) {
        if (graph()) graph()->arm_point_deletion(on);
    });
    connect(colours_, &ColourGrid::picked, this, [this](const QColor& color) {
        if (colour_box_) set(*colour_group_, *colour_box_, rgb(color.rgb() & 0xFFFFFF));
    });
    connect(colours_, &ColourGrid::more_wanted, this, [this] {
        if (!colour_box_) return;
        const QColor before(colour_box_->widget()->accessibleDescription());
        const QColor color = QColorDialog::getColor(before, this, QStringLiteral("Color"));
        if (color.isValid()) set(*colour_group_, *colour_box_, rgb(color.rgb() & 0xFFFFFF));
    });
    if (graph()) {
        connect(graph(), &frmQGraph2D::refreshed, this, &frmQGraph2D_Gestaltung::refresh);
        // The design goes with the window of its sheet.
        connect(
            graph(), &QObject::destroyed, this, [this] { frame_.unload(Name); }, Qt::QueuedConnection);
    }
    refresh();
}

frmQGraph2D* frmQGraph2D_Gestaltung::graph() const { return frame_.child<frmQGraph2D>(); }

void frmQGraph2D_Gestaltung::show_page(DesignPage page, const DesignTarget& target, const char* control) {
    if (page == DesignPage::texts) text_ = target.text;
    tabs->setCurrentIndex(static_cast<int>(page));
    refresh();
    const auto group = std::ranges::find_if(groups_, [&](const auto& g) {
        return g->page == page && (!g->number || g->target.number == target.number);
    });
    if (group == groups_.end()) return;
    QWidget* first = nullptr;
    for (const DesignBox* box : (*group)->boxes) {
        const bool wanted = !control || box->control().name == control;
        if (!first && wanted && box->widget()->isEnabled() && box->widget()->focusPolicy() != Qt::NoFocus)
            first = box->widget();
    }
    if (!first) return;
    first->setFocus();
    if (auto* line = qobject_cast<QLineEdit*>(first)) line->selectAll();
    if (auto* edit = qobject_cast<SchriftEdit*>(first)) edit->go_to_end();
}

void frmQGraph2D_Gestaltung::show_rows(const Group& group, bool used) {
    group.number->setVisible(used);
    for (const DesignBox* box : group.boxes) box->widget()->setVisible(used);
}

// The texts that there are; of one that has gone the header takes the place.
void frmQGraph2D_Gestaltung::show_texts() {
    const GraphDocument& sheet = *frame_.session().diagram.sheet;
    if (!has_text(sheet, text_)) text_ = {};
    const QSignalBlocker quiet(cmbText);
    cmbText->clear();
    for (const TextEntry& entry : design_texts(sheet)) {
        cmbText->addItem(shown(entry.caption).simplified(), QVariant::fromValue(entry.ref));
        if (entry.ref == text_) cmbText->setCurrentIndex(cmbText->count() - 1);
    }
}

void frmQGraph2D_Gestaltung::show_limits() {
    const GraphDocument& sheet = *frame_.session().diagram.sheet;
    const CoordinateTexts texts = coordinate_texts(sheet);
    const auto show = [&](NumberBox* box, std::size_t i) {
        if (!box->isModified()) box->setText(shown(texts[i]));
    };
    for (std::size_t i = 0; i < 4; ++i) show(txtCoord[i], i);
    for (std::size_t axis = 0; axis < 3; ++axis)
        for (std::size_t i = 0; i < 2; ++i) show(txtTabCoord[axis][i], (axis == 0 ? 0 : 2) + i);
}

void frmQGraph2D_Gestaltung::show_title() {
    const auto page = static_cast<DesignPage>(tabs->currentIndex());
    setWindowTitle(shown(design_title(page, text_)));
}

void frmQGraph2D_Gestaltung::refresh() {
    const auto& sheet = frame_.session().diagram.sheet;
    tabs->setEnabled(sheet.has_value());
    if (!sheet || filling_) return show_title();
    filling_ = true;
    show_texts();
    show_limits();
    int curves = 0, sets = 0;
    for (const auto& group : groups_) {
        group->target.text = text_;
        const int number = group->target.number;
        const bool is_curve = group->page == DesignPage::curves, is_set = group->page == DesignPage::points;
        if (is_curve || is_set) {
            const bool used = is_curve ? !sheet->curve(number).CurveFree : !sheet->set(number).PointFree;
            (is_curve ? curves : sets) += used;
            show_rows(*group, used);
            if (!used) continue;
        }
        for (DesignBox* box : group->boxes) box->show(*sheet, group->target);
    }
    const auto hint = [&](DesignPage page, const QString& text) {
        QLabel* label = hints_[static_cast<std::size_t>(page)];
        label->setText(text);
        label->setVisible(!text.isEmpty());
    };
    for (std::size_t page = 0; page < DesignPages; ++page) hint(static_cast<DesignPage>(page), {});
    hint(DesignPage::curves, curves > 0 ? QString() : QStringLiteral("There is no curve on the sheet."));
    hint(DesignPage::points, sets > 0 ? QString() : QStringLiteral("There are no points on the sheet."));
    for (const DesignPage page : {DesignPage::x_axis, DesignPage::y_axis, DesignPage::y2_axis})
        hint(page, shown(axes_hint(*sheet)));
    hint(DesignPage::texts,
         is_label(text_.part)
             ? QStringLiteral("The place of a label is counted in pixels from where it stands first.")
             : QStringLiteral("Places are percent of the sheet."));
    cmdDelSinglePoint->setEnabled(curves > 0);
    cmdDelSinglePoint->setChecked(graph() && graph()->point_deletion_armed());
    filling_ = false;
    show_title();
}

void frmQGraph2D_Gestaltung::changed() {
    if (graph())
        graph()->refresh();
    else
        refresh();
}

void frmQGraph2D_Gestaltung::set(Group& group, DesignBox& box, const DesignValue& value) {
    auto& sheet = frame_.session().diagram.sheet;
    if (!sheet) return;
    const DesignAnswer answer = box.control().set(*sheet, group.target, value);
    if (!answer.fault.empty()) return box.refuse(answer.fault);
    box.taken();
    changed();
    if (answer.message) frame_.bench().tell(*answer.message);
}

void frmQGraph2D_Gestaltung::ask_color(Group& group, DesignBox& box) {
    if (!frame_.session().diagram.sheet) return;
    colour_group_ = &group;
    colour_box_ = &box;
    colours_->show_slots(*frame_.session().diagram.sheet);
    colours_->popup(box.widget()->mapToGlobal(QPoint(0, box.widget()->height())));
}

// boxes: those of the place, the first of them being that limit.
void frmQGraph2D_Gestaltung::take_limits(NumberBox* const* boxes, std::size_t first, std::size_t count,
                                         LimitsIn where) {
    auto& sheet = frame_.session().diagram.sheet;
    if (!sheet) return;
    CoordinateTexts texts = coordinate_texts(*sheet);
    for (std::size_t i = 0; i < count; ++i) texts[first + i] = boxes[i]->typed();
    const CoordinatesRefused refused = take_design_limits(*sheet, texts, where);
    if (refused.box) return boxes[refused.box->box - first]->refuse(refused.box->rule);
    if (refused.message) {
        frame_.bench().tell(*refused.message);
        return;
    }
    for (std::size_t i = 0; i < count; ++i) boxes[i]->setModified(false);
    changed();
    if (const auto note = log_note(*sheet)) frame_.bench().tell(*note);
}

}  // namespace quom
