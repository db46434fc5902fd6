#include "ui/charts/chart_ticks.h"

#include <qcustomplot.h>

#include "diagrams/ticks.h"

namespace quom {

namespace {

// Gives an axis the ticks that a function finds for its range.
template <class TicksOf>
class CoreTicker : public QCPAxisTicker {
 public:
    explicit CoreTicker(TicksOf ticks_of) : ticks_of_(ticks_of) {}
    void generate(const QCPRange& range, const QLocale&, QChar, int, QVector<double>& at,
                  QVector<double>* between, QVector<QString>* numbers) override {
        const Ticks ticks = ticks_of_(range.lower, range.upper);
        at = QVector<double>(ticks.at.begin(), ticks.at.end());
        if (between) *between = QVector<double>(ticks.between.begin(), ticks.between.end());
        if (!numbers) return;
        numbers->clear();
        for (const std::string& number : ticks.numbers) numbers->push_back(QString::fromStdString(number));
    }

 private:
    TicksOf ticks_of_;
};

template <class TicksOf>
QSharedPointer<QCPAxisTicker> ticker_of(TicksOf ticks_of) {
    return QSharedPointer<CoreTicker<TicksOf>>::create(ticks_of);
}

}  // namespace

QSharedPointer<QCPAxisTicker> linear_ticker(int most) {
    return ticker_of([most](double low, double high) { return linear_ticks(low, high, most); });
}

QSharedPointer<QCPAxisTicker> log_ticker(double dense) {
    return ticker_of([dense](double low, double high) { return log_ticks(low, high, dense); });
}

ChartTicks ticks_of(QCPAxisTicker& ticker, double low, double high) {
    QVector<double> at, between;
    QVector<QString> numbers;
    // A range of the chart library is put in order, so the order is looked at here.
    if (low < high)
        ticker.generate(QCPRange(low, high), QLocale::c(), QLatin1Char('g'), 6, at, &between, &numbers);
    return {{at.begin(), at.end()}, {between.begin(), between.end()}, {numbers.begin(), numbers.end()}};
}

}  // namespace quom
