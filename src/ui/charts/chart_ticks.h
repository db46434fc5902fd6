// The ticks of diagrams/ticks.h for axes of the chart library, and the same places and numbers for pictures
// that are painted by hand.
#pragma once
#include <QSharedPointer>
#include <QString>
#include <vector>

class QCPAxisTicker;

namespace quom {

// Steps of 1, 2 or 5 times a power of ten, at most this many.
QSharedPointer<QCPAxisTicker> linear_ticker(int most);
// 1, 2 and 5 of every decade up to so many decades, the powers of ten above.
QSharedPointer<QCPAxisTicker> log_ticker(double dense = 3);

struct ChartTicks {
    std::vector<double> at, between;  // with and without a number, from the lowest up
    std::vector<QString> numbers;     // of `at`
};
// The ticks from low to high (of a logarithmic axis above 0); none where low is not below high.
ChartTicks ticks_of(QCPAxisTicker& ticker, double low, double high);

}  // namespace quom
