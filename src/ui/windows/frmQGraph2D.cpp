#include "ui/windows/frmQGraph2D.h"

#include <QColorDialog>
#include <QMdiSubWindow>
#include <QPushButton>

#include "forms/diagram_form.h"
#include "forms/shell.h"
#include "session/data_diagnosis.h"
#include "ui/charts/sheet_view.h"
#include "ui/main/diagram_windows.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/mdi_area.h"
#include "ui/main/traffic_lights.h"
#include "ui/main/workbench.h"
#include "ui/widgets/colour_grid.h"
#include "ui/widgets/labels.h"
#include "ui/windows/frmCompare.h"
#include "ui/windows/frmTpVSInputBox.h"
#include "ui/windows/input_window.h"

namespace quom {

frmQGraph2D* frmQGraph2D::open(mdiQUOM& frame) {
    auto* window = frame.find_or_make<frmQGraph2D>();
    frame.open_child(window);
    window->refresh();
    return window;
}

frmQGraph2D::frmQGraph2D(mdiQUOM& frame) : frame_(frame) {
    setObjectName(QLatin1String(Name));
    make_controls();
    make_menus();
    build_layout();
    connect_controls();
    refresh();
}

std::optional<GraphDocument>& frmQGraph2D::sheet() const { return frame_.session().diagram.sheet; }

void frmQGraph2D::connect_controls() {
    connect(cmdDraw, &QPushButton::clicked, this, &frmQGraph2D::draw);
    connect(cmdZInput, &QPushButton::clicked, this, &frmQGraph2D::open_parameter_box);
    connect(cmdZoom, &QPushButton::toggled, this, [this](bool on) { chart->arm_zoom(on); });
    connect(cmdZoomReset, &QPushButton::clicked, this, &frmQGraph2D::reset_zoom);
    connect(cmdChangeXY, &QPushButton::clicked, this, &frmQGraph2D::interchange);
    connect(cmdEscGraph, &QPushButton::clicked, this, &frmQGraph2D::to_background);
    for (QPushButton* button : {cmdFarbe, cmdFarbVorwahl})
        connect(button, &QPushButton::clicked, this, [this, button] {
            if (!sheet()) return;
            colours->show_slots(*sheet());
            colours->popup(button->mapToGlobal(QPoint(0, button->height())));
        });
    connect(colours, &ColourGrid::picked, this, &frmQGraph2D::pick_colour);
    connect(colours, &ColourGrid::more_wanted, this, [this] {
        if (!sheet()) return;
        const QColor now = shown_colour(next_curve_color(*sheet()));
        const QColor picked = QColorDialog::getColor(now, this, QStringLiteral("Color"));
        if (picked.isValid()) pick_colour(picked);
    });
    connect(chart, &SheetView::zoomed, this, &frmQGraph2D::zoom_to);
    connect(chart, &SheetView::mouse_at, this, &frmQGraph2D::show_mouse);
    connect(chart, &SheetView::mouse_left, this, [this] {
        for (QLabel* label : {lblX, lblY, lblPoint}) label->clear();
    });
    connect(chart, &SheetView::point_clicked, this, &frmQGraph2D::ask_point);
    connect_drag();
    connect(chart, &SheetView::menu_wanted, this, &frmQGraph2D::show_context_menu);
    connect(&frame_.bench(), &Workbench::changed, this, &frmQGraph2D::session_changed);
}

// The window goes with its sheet.
void frmQGraph2D::session_changed() { sheet() ? refresh() : close_diagram_windows(frame_); }

void frmQGraph2D::refresh() {
    if (!sheet()) return;
    const Session& session = frame_.session();
    setWindowTitle(QString::fromStdString(sheet_caption(session.substance().StoffName)));
    const bool drawable = sheet()->diagram.kind != Kind::none;
    cmdDraw->setEnabled(drawable);
    cmdDraw->setToolTip(drawable ? QString()
                                 : QStringLiteral("a graph of data points has no curves to draw"));
    cmdZInput->setEnabled(has_parameter(session));
    const bool substance = fulfilled(session, Needs::substance);
    txtFarbeStatusbar2->SetzeAmpel(substance ? DatenSituation(session.substance()).AmpelStufe : 0);
    show_interchanged();
    show_colour();
    show_insert_states();
    show_delete_entries();
    chart->refresh();
    emit refreshed();
    if (auto* comparison = frame_.child<frmCompare>()) comparison->sheet_changed();
}

void frmQGraph2D::draw() { draw_next_curve(frame_); }

void frmQGraph2D::open_parameter_box() { show_parameter_box(frame_, has_parameter(frame_.session())); }

void frmQGraph2D::zoom_to(const CurveRange& shown) {
    if (sheet() && zoom(*sheet(), shown)) refresh();
}

void frmQGraph2D::reset_zoom() {
    if (!sheet()) return;
    zoom_reset(*sheet());
    cmdZoom->setChecked(false);
    refresh();
}

void frmQGraph2D::interchange() {
    if (!sheet()) return;
    quom::cmdChangeXY(*sheet());
    refresh();
}

void frmQGraph2D::show_interchanged() {
    cmdChangeXY->setToolTip(shown(interchange_hint(*sheet())));
    if (!sheet()->Interchanged) return cmdChangeXY->setPalette({});
    QPalette changed = palette();
    changed.setColor(QPalette::Button, shown_colour(interchanged_button));
    changed.setColor(QPalette::ButtonText, Qt::black);
    cmdChangeXY->setPalette(changed);
}

void frmQGraph2D::pick_colour(const QColor& colour) {
    if (!sheet()) return;
    sheet()->NextColor = rgb(colour.rgb() & 0xFFFFFF);
    show_colour();
    if (auto* box = frame_.child<frmTpVSInputBox>()) box->recolour_curve();
}

// The swatch of the next action.
void frmQGraph2D::show_colour() {
    const QColor colour = shown_colour(next_curve_color(*sheet()));
    cmdFarbe->setIcon(swatch(colour, 14, devicePixelRatioF()));
    cmdFarbe->setAccessibleDescription(colour.name());
}

void frmQGraph2D::to_background() {
    // Escape ends the zoom before it leaves the window.
    if (chart->zoom_armed()) return cmdZoom->setChecked(false);
    auto* own = qobject_cast<QMdiSubWindow*>(parentWidget());
    if (!own) return;
    const auto others = frame_.area->subWindowList(QMdiArea::StackingOrder);
    own->lower();
    for (auto it = others.rbegin(); it != others.rend(); ++it)
        if (*it != own && (*it)->isVisible()) return frame_.area->setActiveSubWindow(*it);
}

void frmQGraph2D::show_mouse(double x, double y, const std::optional<PointRef>& point) {
    if (!sheet()) return;
    const MouseTexts texts = mouse_texts(*sheet(), frame_.session().diagram.units, x, y);
    lblX->setText(QString::fromStdString(texts.x));
    lblY->setText(QString::fromStdString(texts.y));
    lblPoint->setText(point ? QString::fromStdString(point_text(*sheet(), *point)) : QString());
}

// Of a curve only single points can be deleted, where the design has not armed it: its line would hide which
// one is meant.
void frmQGraph2D::ask_point(const PointRef& point) {
    if (!sheet()) return;
    const bool armed = std::exchange(point_deletion_armed_, false);
    if (armed) emit refreshed();
    if (!point.of_set && !armed && sheet()->curve(point.slot).series.style.line != LinePattern::points_only)
        return;
    if (frame_.bench().tell(delete_point_question(*sheet(), point)) != Answer::yes) return;
    delete_point(*sheet(), point);
    refresh();
}

}  // namespace quom
