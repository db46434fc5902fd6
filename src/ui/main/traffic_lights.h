// The traffic lights of the data situation: colour, bars and word.
#pragma once
#include <QWidget>

namespace quom {

class TrafficLights : public QWidget {
    Q_OBJECT
 public:
    explicit TrafficLights(QWidget* parent = nullptr);
    // Level 1 green to 4 red; any other number: no colour, no word.
    void SetzeAmpel(int level);
    int level() const { return level_; }
    QColor colour() const;  // of the ground
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
    void paintEvent(QPaintEvent* event) override;

 private:
    int level_ = 0;
};

}  // namespace quom
