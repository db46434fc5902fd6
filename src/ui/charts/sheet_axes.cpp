#include "ui/charts/sheet_axes.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

#include "ui/charts/sheet_style.h"

namespace quom {
namespace {

constexpr int MostNumbers = 9, UsualDigits = 6, MostDigits = 12;
constexpr double margin_right = 14;  // of the picture
// Of the picture beside the area of the axes: numbers, titles, margins.
constexpr double beside_width = 90, beside_height = 110;

bool fits(const Ticks& ticks, const ShownAxis& axis, double length, const NumberExtent& extent) {
    double last_end = -1e9;
    for (std::size_t i = 0; i < ticks.at.size(); ++i) {
        const double half = extent(ticks.numbers[i]) / 2, middle = axis.share(ticks.at[i]) * length;
        if (middle - half < last_end) return false;
        last_end = middle + half;
    }
    return true;
}

// Takes out numbers, not ticks, until they fit.
void thin_out(Ticks& ticks, const ShownAxis& axis, double length, const NumberExtent& extent) {
    const std::vector<std::string> all = ticks.numbers;
    for (std::size_t every = 2; every <= all.size() && !fits(ticks, axis, length, extent); ++every)
        for (std::size_t i = 0; i < all.size(); ++i) ticks.numbers[i] = i % every == 0 ? all[i] : "";
}

// Whether so many digits tell each number from its neighbours.
bool digits_suffice(const Ticks& ticks, int digits) {
    for (std::size_t i = 0; i + 1 < ticks.at.size(); ++i) {
        const double gap = ticks.at[i + 1] - ticks.at[i];
        for (const double x : {ticks.at[i], ticks.at[i + 1]}) {
            if (x == 0.0) continue;
            const double unit = std::pow(10.0, std::floor(std::log10(std::abs(x))) + 1.0 - digits);
            if (std::abs(std::round(x / unit) * unit - x) > 0.01 * gap) return false;
        }
    }
    return true;
}

// Numbers that are too short for the range would be wrong: as many digits more as it takes.
template <class TicksOfDigits>
Ticks with_enough_digits(const AxisDesign& design, TicksOfDigits ticks_of) {
    int digits = design.digits > 0 ? design.digits : UsualDigits;
    Ticks ticks = ticks_of(digits);
    while (digits < MostDigits && !digits_suffice(ticks, digits)) ticks = ticks_of(++digits);
    return ticks;
}

Ticks round_ticks(const AxisDesign& design, const ShownAxis& axis, int most, double dense) {
    return with_enough_digits(design, [&](int digits) {
        return axis.log ? log_ticks(axis.low, axis.high, dense, most, digits)
                        : linear_ticks(axis.low, axis.high, most, digits);
    });
}

}  // namespace

Ticks sheet_ticks(const AxisDesign& design, const ShownAxis& axis, double length, const NumberExtent& extent,
                  double dense) {
    Ticks ticks;
    if (design.step && !axis.log)
        ticks = with_enough_digits(
            design, [&](int digits) { return step_ticks(axis.low, axis.high, *design.step, digits); });
    if (!ticks.at.empty()) {
        thin_out(ticks, axis, length, extent);
        return ticks;
    }
    for (const double decades : {dense, 0.0}) {
        for (int most = MostNumbers; most >= 2; --most) {
            ticks = round_ticks(design, axis, most, decades);
            if (fits(ticks, axis, length, extent)) return ticks;
        }
        if (!axis.log) break;
    }
    thin_out(ticks, axis, length, extent);
    return ticks;
}

void SheetTicker::set(const AxisDesign& design, const ShownAxis& axis, TextTurn number_turn, double dense) {
    dense_ = dense;
    design_ = design;
    axis_ = axis;
    turn_ = number_turn;
}

double SheetTicker::length() const {
    const QRectF picture = plot_.viewport();
    return std::max(20.0, place_ == QCPAxis::atBottom ? picture.width() - beside_width
                                                      : picture.height() - beside_height);
}

Ticks SheetTicker::ticks() const {
    const QFontMetricsF metrics(sheet_font(design_.number_font));
    const bool along = (place_ == QCPAxis::atBottom) == (turn_ == TextTurn::horizontal);
    return sheet_ticks(
        design_, axis_, length(),
        [&](const std::string& number) {
            if (number.empty()) return 0.0;
            return along ? metrics.horizontalAdvance(sheet_text(number)) + 14 : 1.6 * metrics.height();
        },
        dense_);
}

void SheetTicker::leave_room(const Ticks& ticks) const {
    if (place_ != QCPAxis::atBottom) return;
    double room = 0;
    if (!ticks.at.empty()) {
        const QFontMetricsF metrics(sheet_font(design_.number_font));
        const double half = turn_ == TextTurn::horizontal
                                ? metrics.horizontalAdvance(sheet_text(ticks.numbers.back())) / 2
                                : metrics.height() / 2;
        room = half + 4 - margin_right - (1.0 - axis_.share(ticks.at.back())) * length();
    }
    area_.setMinimumMargins(QMargins(0, 0, std::max(0, static_cast<int>(std::ceil(room))), 0));
}

void SheetTicker::generate(const QCPRange&, const QLocale&, QChar, int, QVector<double>& at,
                           QVector<double>* between, QVector<QString>* numbers) {
    const Ticks found = ticks();
    leave_room(found);
    at = QVector<double>(found.at.begin(), found.at.end());
    if (between) *between = QVector<double>(found.between.begin(), found.between.end());
    if (!numbers) return;
    numbers->clear();
    for (const std::string& number : found.numbers) numbers->push_back(sheet_text(number));
}

}  // namespace quom
