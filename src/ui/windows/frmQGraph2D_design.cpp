// Design from the sheet: the entries of its context menu, and what is moved with the mouse.
#include <QMenu>
#include <algorithm>
#include <array>

#include "base/number_text.h"
#include "ui/charts/sheet_view.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/workbench.h"
#include "ui/windows/frmQGraph2D.h"
#include "ui/windows/frmQGraph2D_Gestaltung.h"

namespace quom {

namespace {

struct PartRow {
    SheetPart part;
    DesignText text;
};
constexpr auto part_rows = std::to_array<PartRow>({{SheetPart::header, DesignText::header},
                                                   {SheetPart::footer, DesignText::footer},
                                                   {SheetPart::text, DesignText::text},
                                                   {SheetPart::x_title, DesignText::x_title},
                                                   {SheetPart::y_title, DesignText::y_title},
                                                   {SheetPart::curve_label, DesignText::curve_label},
                                                   {SheetPart::points_label, DesignText::points_label},
                                                   {SheetPart::mark_label, DesignText::mark_label}});

std::optional<TextRef> text_of(const SheetHit& hit) {
    const auto* row = std::ranges::find(part_rows, hit.part, &PartRow::part);
    if (row == part_rows.end()) return std::nullopt;
    return TextRef{row->text, hit.number};
}

// Number of the curve or the set that is meant: under the mouse, by its label, else the first one there is.
template <class Slots, class Free>
int slot_meant(const Slots& all, Free is_free, int hit) {
    if (hit > 0) return hit;
    const auto found = std::ranges::find(all, false, is_free);
    return found == all.end() ? 0 : static_cast<int>(found - all.begin()) + 1;
}

constexpr int LargestCorrections = 3;  // of a label that keeps inside the axes

}  // namespace

void frmQGraph2D::add_design_entries(QMenu* menu, const QPoint& global) {
    const QPointF at = chart->mapFromGlobal(global);
    const SheetHit hit = chart->part_at(at);
    const auto point = chart->point_at(at);
    const auto add = [&](const char* name, const QString& caption, DesignPage page,
                         const DesignTarget& target, bool enabled = true, const char* control = nullptr) {
        QAction* action = add_entry(menu, name, caption, nullptr);
        action->setEnabled(enabled);
        action->setToolTip({});
        action->setStatusTip({});
        connect(action, &QAction::triggered, this, [this, page, target, control] {
            frmQGraph2D_Gestaltung::open(frame_, page, target, control);
        });
    };
    const bool on_legend = hit.part == SheetPart::legend;
    add("mnuDesign", QStringLiteral("Design"), on_legend ? DesignPage::legend : DesignPage::sheet, {});
    add("mnuDesignMore", QStringLiteral("Design of the axes ..."), DesignPage::x_axis, {});
    const int of_curve = hit.part == SheetPart::curve_label ? hit.number
                         : point && !point->of_set          ? point->slot
                                                            : 0;
    const int of_set = hit.part == SheetPart::points_label ? hit.number
                       : point && point->of_set            ? point->slot
                                                           : 0;
    const int slot = slot_meant(sheet()->curves, &CurveSlot::CurveFree, of_curve);
    const int set = slot_meant(sheet()->sets, &PointSlot::PointFree, of_set);
    const auto whose = [](const char* what, const char* letter, int number) {
        QString text = QLatin1String(what);
        return number > 0 ? text + QLatin1Char(' ') + QLatin1String(letter) + QString::number(number) : text;
    };
    add("mnuKurvenDesign", whose("Design curve", "C.", of_curve), DesignPage::curves, {.number = slot},
        slot > 0);
    add("mnuPunktDesign", whose("Design points", "P.", of_set), DesignPage::points, {.number = set}, set > 0);
    const std::optional<TextRef> text = text_of(hit);
    add("mnuTextDesign", QStringLiteral("Edit text"), DesignPage::texts, {.text = text.value_or(TextRef())});
    if (on_legend)
        add("mnuMove", QStringLiteral("move"), DesignPage::legend, {}, true, "cmbLegende");
    else
        add("mnuMove", QStringLiteral("move"), DesignPage::texts, {.text = text.value_or(TextRef())},
            text && hit.part != SheetPart::x_title && hit.part != SheetPart::y_title, "txtTextX");
}

void frmQGraph2D::arm_point_deletion(bool on) {
    if (point_deletion_armed_ == on) return;
    point_deletion_armed_ = on;
    emit refreshed();
}

void frmQGraph2D::connect_drag() {
    connect(chart, &SheetView::drag_began, this, [this] { before_drag_ = sheet(); });
    connect(chart, &SheetView::dragged, this, &frmQGraph2D::drag_part);
    connect(chart, &SheetView::drag_ended, this, [this](bool given_up) {
        if (given_up && sheet() && before_drag_) sheet() = before_drag_;
        before_drag_.reset();
        refresh();
    });
}

// The upper left corner of a part goes to a place in the view; what keeps it inside has the last word.
void frmQGraph2D::drag_part(const SheetHit& part, const QPointF& corner) {
    if (!sheet()) return;
    const QRectF area = chart->area();
    if (part.part == SheetPart::legend) {
        place_legend(*sheet(), (corner.x() - area.left()) / area.width(),
                     (corner.y() - area.top()) / area.height());
        return chart->follow();
    }
    const std::optional<TextRef> text = text_of(part);
    if (!text) return;
    if (part.part == SheetPart::header || part.part == SheetPart::footer || part.part == SheetPart::text) {
        // At 0, 0 heading and footer would be back in their lines.
        place_text(*sheet(), *text, std::max(corner.x(), 1.0) / chart->width(), corner.y() / chart->height());
        return chart->follow();
    }
    // A label is moved from its first place, which the drawing knows: corrected until it stands there.
    for (int i = 0; i < LargestCorrections; ++i) {
        const QRectF box = chart->box_of(part);
        const QRectF inside = area.adjusted(3, 3, -3 - box.width(), -3 - box.height());
        const QPointF wanted(std::clamp(corner.x(), inside.left(), std::max(inside.left(), inside.right())),
                             std::clamp(corner.y(), inside.top(), std::max(inside.top(), inside.bottom())));
        const QPointF off = wanted - box.topLeft();
        if (box.isEmpty() || off.manhattanLength() < 1) return;
        shift_label(*sheet(), *text, off.x(), off.y());
        chart->refresh();
    }
}

}  // namespace quom
