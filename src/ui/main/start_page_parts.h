// What the start page is made of beside its rows: cards, numbered steps, key caps that flow into lines.
#pragma once
#include <QFrame>
#include <QVBoxLayout>
#include <QVector>

namespace quom {

// A ground of its own with a thin frame; the parts stand below each other.
class StartCardFrame : public QFrame {
    Q_OBJECT
 public:
    explicit StartCardFrame(QWidget* parent);
    void add_head(const QString& text);
    QVBoxLayout* column;

 protected:
    void paintEvent(QPaintEvent* event) override;
};

// A number in a ring.
class StepRing : public QWidget {
    Q_OBJECT
 public:
    StepRing(int number, QWidget* parent);

 protected:
    void paintEvent(QPaintEvent* event) override;

 private:
    int number_;
};

// Keys as caps, each with a word behind it, in as many lines as the width needs.
class KeyCaps : public QWidget {
    Q_OBJECT
 public:
    struct Key {
        QString cap, word;
    };
    KeyCaps(QVector<Key> keys, QWidget* parent);
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

 protected:
    void paintEvent(QPaintEvent* event) override;

 private:
    struct Place {
        QRect cap, word;
    };
    QVector<Place> places(int width) const;
    QVector<Key> keys_;
};

}  // namespace quom
