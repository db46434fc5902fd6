#include "ui/charts/chart_ticks.h"

#include <qcustomplot.h>

#include <algorithm>
#include <cmath>

#include "base/number_text.h"

namespace quom {

namespace {

constexpr int TickDigits = 6;
constexpr double DenseDecades = 3;  // up to these 2 and 5 have numbers too

// 1, 2 or 5 times a power of ten, at least `least`.
double round_step(double least) {
    const double decade = std::pow(10.0, std::floor(std::log10(least)));
    for (const double factor : {1.0, 2.0, 5.0})
        if (factor * decade >= least * (1.0 - 1e-9)) return factor * decade;
    return 10.0 * decade;
}

class LinearTicker : public QCPAxisTicker {
 public:
    explicit LinearTicker(int most) { setTickCount(std::max(most, 1)); }

 protected:
    double getTickStep(const QCPRange& range) override { return round_step(range.size() / mTickCount); }
    // Whole multiples, and one beyond each end. Steps below 1 are divided by: 3 x 0.1 is not 0.3, 3/10 is.
    QVector<double> createTickVector(double step, const QCPRange& range) override {
        QVector<double> ticks;
        const double per_1 = step < 1.0 ? std::round(1.0 / step) : 0.0;
        const double last = std::ceil(range.upper / step - 1e-10);
        for (double i = std::floor(range.lower / step + 1e-10); i <= last; ++i)
            ticks.push_back(per_1 > 0.0 ? i / per_1 : i * step);
        return ticks;
    }
    int getSubTickCount(double step) override {
        const double mantissa = step / std::pow(10.0, std::floor(std::log10(step) + 1e-9));
        return std::lround(mantissa) == 2 ? 3 : 4;
    }
    QString getTickLabel(double tick, const QLocale&, QChar, int) override { return tick_number(tick); }
};

class LogTicker : public QCPAxisTickerLog {
 protected:
    QVector<double> createTickVector(double, const QCPRange& range) override {
        const bool dense = std::log10(range.upper / range.lower) < DenseDecades;
        return dense ? multiples({1, 2, 5}, range) : multiples({1}, range);
    }
    QVector<double> createSubTickVector(int, const QVector<double>& ticks) override {
        if (ticks.isEmpty()) return {};
        return multiples({1, 2, 3, 4, 5, 6, 7, 8, 9}, QCPRange(ticks.front() / 10, ticks.back() * 10));
    }
    QString getTickLabel(double tick, const QLocale&, QChar, int) override { return tick_number(tick); }

 private:
    static QVector<double> multiples(std::initializer_list<int> factors, const QCPRange& range) {
        QVector<double> ticks;
        const int last = static_cast<int>(std::floor(std::log10(range.upper)));
        for (int k = static_cast<int>(std::floor(std::log10(range.lower))); k <= last; ++k)
            for (const int factor : factors)
                if (const double tick = factor * std::pow(10.0, k);
                    tick >= range.lower && tick <= range.upper)
                    ticks.push_back(tick);
        return ticks;
    }
};

}  // namespace

QSharedPointer<QCPAxisTicker> linear_ticker(int most) { return QSharedPointer<LinearTicker>::create(most); }
QSharedPointer<QCPAxisTicker> log_ticker() { return QSharedPointer<LogTicker>::create(); }

ChartTicks ticks_of(QCPAxisTicker& ticker, double low, double high) {
    if (!(low < high) || !std::isfinite(high - low)) return {};
    QVector<double> at, between;
    QVector<QString> numbers;
    ticker.generate(QCPRange(low, high), QLocale::c(), QLatin1Char('g'), TickDigits, at, &between, &numbers);
    ChartTicks ticks{{at.begin(), at.end()}, {}, {numbers.begin(), numbers.end()}};
    for (const double x : between)
        if (x >= low && x <= high && !at.contains(x)) ticks.between.push_back(x);
    return ticks;
}

QString tick_number(double x) {
    constexpr QChar Minus(0x2212), ThinBlank(0x2009);
    QString text = QString::fromStdString(digitsNum(x, TickDigits)).replace(QLatin1Char('-'), Minus);
    const qsizetype begin = text.startsWith(Minus) ? 1 : 0;
    qsizetype end = text.indexOf(QLatin1Char('.'));
    if (end < 0) end = text.contains(QLatin1Char('E')) ? begin : text.size();
    if (end - begin >= 5) text.insert(end - 3, ThinBlank);
    return text;
}

}  // namespace quom
