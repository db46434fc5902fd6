#include "ui/main/window_places.h"

#include <QApplication>
#include <QMdiSubWindow>
#include <QMouseEvent>
#include <QStyle>
#include <QTabBar>
#include <algorithm>

#include "ui/look/look.h"
#include "ui/main/mdi_area.h"
#include "ui/main/ui_memory.h"
#include "ui/main/window_table.h"

namespace quom {

namespace {

constexpr int cascade_step = 26;

Part part_of(const QMdiSubWindow* sub) {
    return sub->widget() ? window_row(sub->widget()->objectName()).part : Part::none;
}

bool is_normal(const QMdiSubWindow* sub) {
    return sub && !sub->isHidden() && !sub->isMaximized() && !sub->isMinimized() && !sub->isShaded();
}

int title_height(const QWidget* widget) {
    return widget->style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, widget) + 1;
}

// What the frame adds to its window.
QSize border_of(const QMdiSubWindow* sub) {
    const int frame = sub->style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth, nullptr, sub);
    return {2 * frame, sub->style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, sub) + frame};
}

// Bottom of a control of the window, from the top of its frame; 0 when it is not to be seen.
int bottom_of(const QMdiSubWindow* sub, const QWidget* control) {
    return control && control->isVisible() ? control->mapTo(sub, QPoint(0, control->height())).y() : 0;
}

// The state line of a result, by its class, for a result is not known here.
QWidget* strip_in(const QMdiSubWindow* sub) {
    for (QWidget* child : sub->findChildren<QWidget*>())
        if (child->inherits("quom::StateStrip")) return child;
    return nullptr;
}

QString key_of(const QMdiSubWindow* sub) { return QStringLiteral("places/") + sub->widget()->objectName(); }

}  // namespace

WindowPlaces::WindowPlaces(MdiArea& area, UiMemory& memory) : QObject(&area), area_(area), memory_(memory) {
    area_.installEventFilter(this);
    connect(&area_, &QMdiArea::subWindowActivated, this, &WindowPlaces::activated);
}

QMdiSubWindow* WindowPlaces::with_part(Part part) const {
    for (QMdiSubWindow* sub : area_.subWindowList())
        if (!sub->isHidden() && part_of(sub) == part && !entries_.value(sub).beside) return sub;
    return nullptr;
}

QSize WindowPlaces::wanted_size(QMdiSubWindow* sub) const {
    return natural_size(*sub->widget(), entries_.value(sub).first) + border_of(sub);
}

QSize WindowPlaces::least_size(QMdiSubWindow* sub) const {
    const QSize least = sub->widget()->minimumSizeHint() + border_of(sub);
    const QSize wanted = sub->maximumSize().boundedTo(wanted_size(sub));
    switch (entries_.value(sub).sizing) {
        case Sizing::fixed:
            return wanted;
        case Sizing::width_only:
            return {least.width(), wanted.height()};
        case Sizing::free:
            break;
    }
    return least;
}

PlaceSizes WindowPlaces::sizes_now() const {
    QMdiSubWindow* result = with_part(Part::result);
    QMdiSubWindow* models = with_part(Part::models);
    QMdiSubWindow* input = with_part(Part::input);
    PlaceSizes sizes;
    if (models) sizes.models = wanted_size(models);
    if (input) sizes.input = wanted_size(input);
    sizes.title = title_height(&area_);
    const int line = area_.fontMetrics().height();
    if (result)
        sizes.result = least_size(result);
    else if (known_result_.isValid())
        sizes.result = known_result_;
    else  // 76 characters of its list, and as many lines as its parts have
        sizes.result = {76 * QFontMetrics(fixed_font()).horizontalAdvance(QLatin1Char('0')) + 70, 30 * line};
    sizes.strip = result ? bottom_of(result, strip_in(result)) : 0;
    if (sizes.strip == 0) sizes.strip = sizes.title + 8 * line;
    sizes.tabs = result ? bottom_of(result, result->findChild<QTabBar*>()) : 0;
    if (sizes.tabs == 0) sizes.tabs = sizes.strip + 6 * line;
    return sizes;
}

// As the windows stand now.
Places WindowPlaces::places_now() const {
    Places now;
    if (const auto* models = with_part(Part::models)) now.models = models->geometry();
    if (const auto* input = with_part(Part::input)) now.input = input->geometry();
    if (const auto* result = with_part(Part::result)) now.result = result->geometry();
    return now;
}

// Kept as "x y width height", and behind it width and height of the area.
QRect WindowPlaces::kept_place(const QMdiSubWindow* sub) const {
    const QStringList parts = memory_.value(key_of(sub)).toString().split(QLatin1Char(' '));
    if (parts.size() != 6) return {};
    int n[6];
    for (int i = 0; i < 6; ++i) {
        bool number = false;
        n[i] = parts[i].toInt(&number);
        if (!number) return {};
    }
    if (QSize(n[4], n[5]) != area_.maximumViewportSize() || n[2] < 1 || n[3] < 1) return {};
    return {n[0], n[1], n[2], n[3]};
}

void WindowPlaces::keep_place(const QMdiSubWindow* sub) {
    if (!is_normal(sub) || !sub->widget()) return;
    const QRect at = sub->geometry();
    const QSize area = area_.maximumViewportSize();
    memory_.set(key_of(sub), QStringLiteral("%1 %2 %3 %4 %5 %6")
                                 .arg(at.x())
                                 .arg(at.y())
                                 .arg(at.width())
                                 .arg(at.height())
                                 .arg(area.width())
                                 .arg(area.height()));
}

void WindowPlaces::open(QMdiSubWindow* sub, const QWidget* beside) {
    const WindowRow& row = window_row(sub->widget()->objectName());
    Entry entry{row.first.isValid() ? row.first : sub->widget()->sizeHint(), row.sizing};
    entry.beside = beside && window_row(beside->objectName()).part == Part::none;
    entries_[sub] = entry;
    sub->installEventFilter(this);
    connect(sub, &QObject::destroyed, this, [this](QObject* gone) { entries_.remove(gone); });
    const QSize size = wanted_size(sub);
    if (row.sizing == Sizing::fixed) sub->setFixedSize(size);
    if (row.sizing == Sizing::width_only) sub->setFixedHeight(size.height());
    const Part part = part_of(sub);
    if (!entry.beside && (part == Part::input || part == Part::result)) {
        sub->show();  // one of the three
        arrange_calculation();
        if (part == Part::result) {
            known_result_ = least_size(sub);
            if (QWidget* strip = strip_in(sub)) strip->installEventFilter(this);
        }
        return;
    }
    open_alone(sub, beside);
}

void WindowPlaces::roll_up(QMdiSubWindow* sub, const QRect& title) {
    if (!sub->isShaded()) {
        if (sub->isMinimized() || sub->isMaximized()) sub->showNormal();
        sub->showShaded();
        sub->setMinimumWidth(1);  // else as wide as when it is open
    }
    sub->setGeometry(QRect(title.topLeft(), QSize(title.width(), sub->height())));
}

void WindowPlaces::arrange_calculation() {
    QMdiSubWindow* models = with_part(Part::models);
    QMdiSubWindow* input = with_part(Part::input);
    QMdiSubWindow* result = with_part(Part::result);
    const QSize area = area_.maximumViewportSize();
    const PlaceSizes sizes = sizes_now();
    KeptPlaces kept;
    if (models) kept.models = kept_place(models);
    if (input) kept.input = QRect(kept_place(input).topLeft(), sizes.input);
    if (input && kept_place(input).isNull()) kept.input = {};
    if (result) kept.result = kept_place(result);
    const Places p = with_kept(area, sizes, places(area, sizes), kept);
    if (models && p.models_rolled) {
        rolled_ = models;
        roll_up(models, p.models);
    } else if (models) {
        if (!is_normal(models)) models->showNormal();
        models->setGeometry(p.models);
    }
    if (models) models->lower();
    if (result) {
        result->setGeometry(p.result);
        result->raise();
    }
    if (input) {
        input->setGeometry(p.input);
        input->raise();
    }
}

// Where the user had it, else right of the other, else one step below the windows that are there; never over
// the state line of a result.
void WindowPlaces::open_alone(QMdiSubWindow* sub, const QWidget* beside) {
    const QSize area = area_.maximumViewportSize();
    const QSize least = least_size(sub), wanted = wanted_size(sub);
    const QRect kept = kept_place(sub);
    if (!kept.isNull() && QRect(QPoint(0, 0), area).contains(kept)) {
        sub->setGeometry(QRect(kept.topLeft(), kept.size().expandedTo(least).boundedTo(sub->maximumSize())));
        if (!hides_strip(sub)) return;
    }
    if (part_of(sub) == Part::beside_result && with_part(Part::result)) {
        sub->setGeometry(place_beside(area, sizes_now(), places_now(), wanted, least));
        return;
    }
    // A list gives way before the area has to be scrolled.
    const QSize size = wanted.boundedTo(area).expandedTo(least);
    int shown = 0;
    for (const QMdiSubWindow* other : area_.subWindowList())
        if (other != sub && !other->isHidden()) ++shown;
    QPoint at(place_gap + cascade_step * shown, place_gap + cascade_step * shown);
    if (const auto* left = beside ? qobject_cast<const QMdiSubWindow*>(beside->parentWidget()) : nullptr) {
        const QPoint right = left->geometry().topRight() + QPoint(place_gap + 1, 0);
        at = right.x() + size.width() <= area.width()
                 ? right
                 : left->geometry().topLeft() + QPoint(cascade_step, cascade_step);
    }
    sub->setGeometry(moved_in(area, QRect(at, size), size));
    clear_strip(sub);
}

bool WindowPlaces::hides_strip(const QMdiSubWindow* sub) const {
    QMdiSubWindow* result = with_part(Part::result);
    const auto stacked = area_.subWindowList(QMdiArea::StackingOrder);
    const auto level = [&](const QMdiSubWindow* at) { return stacked.indexOf(at); };
    return is_normal(result) && level(sub) > level(result) &&
           sub->geometry().intersects(strip_of(result->geometry(), sizes_now()));
}

void WindowPlaces::clear_strip(QMdiSubWindow* sub) {
    if (hides_strip(sub))
        sub->setGeometry(place_beside(area_.maximumViewportSize(), sizes_now(), places_now(),
                                      wanted_size(sub), least_size(sub)));
}

void WindowPlaces::closed() {
    if (!rolled_) return;
    for (const QMdiSubWindow* sub : area_.subWindowList())
        if (!sub->isHidden() && sub->widget() &&
            window_row(sub->widget()->objectName()).lifetime == Lifetime::calculation)
            return;
    QMdiSubWindow* models = rolled_;
    rolled_.clear();
    if (!models->isShaded() || models->isHidden()) return;
    const QRect kept = kept_place(models);
    models->showNormal();
    models->setGeometry(kept.isNull() ? QRect(QPoint(place_gap, place_gap), wanted_size(models)) : kept);
}

// The area has become smaller, or a window larger.
void WindowPlaces::move_in() {
    const QSize area = area_.maximumViewportSize();
    bool again = false;
    for (QMdiSubWindow* sub : area_.subWindowList()) {
        if (sub->isHidden() || sub->isMaximized()) continue;
        const QSize least = is_normal(sub) ? least_size(sub) : sub->size();
        if (const QRect in = moved_in(area, sub->geometry(), least); in != sub->geometry())
            sub->setGeometry(in);
    }
    for (QMdiSubWindow* sub : area_.subWindowList()) {
        if (sub->isHidden() || sub->isMaximized() || !hides_strip(sub)) continue;
        if (const Part part = part_of(sub); part == Part::models || part == Part::input)
            again = true;
        else
            clear_strip(sub);
    }
    if (again) arrange_calculation();
}

// The input stays above the result where it has to lie over it.
void WindowPlaces::activated(QMdiSubWindow* sub) {
    if (!sub || part_of(sub) != Part::result) return;
    QMdiSubWindow* input = with_part(Part::input);
    if (is_normal(input) && input->geometry().intersects(sub->geometry()) && !hides_strip(input))
        input->raise();
}

void WindowPlaces::spread(bool tiles) {
    // The result is served first and lies on top, then the others by their last use.
    QList<QMdiSubWindow*> windows;
    for (QMdiSubWindow* sub : area_.subWindowList(QMdiArea::ActivationHistoryOrder))
        if (!sub->isHidden() && sub->widget()) windows.prepend(sub);
    std::stable_partition(windows.begin(), windows.end(),
                          [](const QMdiSubWindow* sub) { return part_of(sub) == Part::result; });
    QMdiSubWindow* const active = area_.activeSubWindow();
    std::vector<SizeRange> ranges;
    for (QMdiSubWindow* sub : windows) {
        if (!is_normal(sub)) sub->showNormal();
        ranges.push_back({least_size(sub), sub->maximumSize()});
    }
    const QSize area = area_.maximumViewportSize();
    const int title = title_height(&area_);
    const auto places = tiles ? tiled(area, ranges, title) : cascaded(area, ranges, title);
    const auto open =
        std::count_if(places.begin(), places.end(), [](const auto& p) { return p.has_value(); });
    const auto row = rolled_row(area, static_cast<int>(windows.size() - open), title);
    for (qsizetype i = windows.size() - 1; i >= 0; --i) {
        const auto at = static_cast<std::size_t>(i);
        if (places[at])
            windows[i]->setGeometry(*places[at]);
        else
            roll_up(windows[i], row[at - static_cast<std::size_t>(open)]);
        windows[i]->raise();
    }
    if (tiles && active) area_.setActiveSubWindow(active);
}

void WindowPlaces::tile() { spread(true); }
void WindowPlaces::cascade() { spread(false); }

bool WindowPlaces::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &area_) {
        if (event->type() == QEvent::Resize) move_in();
        return false;
    }
    auto* sub = qobject_cast<QMdiSubWindow*>(watched);
    if (!sub) {  // the state line of a result
        if (event->type() == QEvent::Resize)
            QMetaObject::invokeMethod(this, &WindowPlaces::move_in, Qt::QueuedConnection);
        return false;
    }
    switch (event->type()) {
        case QEvent::MouseButtonPress:
            pressed_ = sub->geometry();
            break;
        case QEvent::MouseButtonRelease:
            if (!pressed_.isNull() && pressed_ != sub->geometry()) keep_place(sub);
            pressed_ = {};
            break;
        case QEvent::KeyPress: {  // moved or sized by the keys of its system menu
            const int key = static_cast<QKeyEvent*>(event)->key();
            if (key < Qt::Key_Left || key > Qt::Key_Down) break;
            QPointer<QMdiSubWindow> moved = sub;
            QMetaObject::invokeMethod(
                this,
                [this, moved, before = sub->geometry()] {
                    if (moved && moved->geometry() != before) keep_place(moved);
                },
                Qt::QueuedConnection);
            break;
        }
        case QEvent::WindowStateChange:  // unrolled by hand
            if (static_cast<QWindowStateChangeEvent*>(event)->oldState() & Qt::WindowMinimized)
                QMetaObject::invokeMethod(this, &WindowPlaces::move_in, Qt::QueuedConnection);
            break;
        default:
            break;
    }
    return false;
}

}  // namespace quom
