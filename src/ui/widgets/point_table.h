// The data points of a batch as a table: measured and calculated values side by side.
#pragma once
#include <QAbstractTableModel>
#include <vector>

#include "report/point_comparison.h"
#include "session/session.h"

namespace quom {

class PointTable : public QAbstractTableModel {
    Q_OBJECT
 public:
    explicit PointTable(const Session& session, QObject* parent = nullptr)
        : QAbstractTableModel(parent), session_(session) {}

    // Shows points and results as they are now; columns follow what they have.
    void refresh();
    void refresh_point(int point);
    const DeviationMeans& means() const { return means_; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
    enum class Content { phase, measured, calculated, difference, deviation };
    struct Column {
        Content content = Content::phase;
        std::size_t q = 0;  // the quantity
        bool operator==(const Column&) const = default;
    };
    std::vector<Column> columns_now() const;
    const BatchResult& result(std::size_t point) const;
    QString cell_text(std::size_t point, const Column& column) const;

    const Session& session_;
    std::vector<Column> columns_;
    int rows_ = 0;
    DeviationMeans means_;
};

}  // namespace quom
