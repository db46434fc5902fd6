// A result in one line: read-only, in the fixed font, on the ground of results, as wide as its text.
#pragma once
#include <QLineEdit>

namespace quom {

class ValueBox : public QLineEdit {
    Q_OBJECT
 public:
    explicit ValueBox(QWidget* parent = nullptr, int least_characters = 16);
    // Text in a colour that is fixed for light grounds (black: the colour of text).
    void show_text(const QString& text, const QColor& on_light = Qt::black);
    // In the colour of what is not up to date.
    void set_stale(bool stale);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

 protected:
    void changeEvent(QEvent* event) override;

 private:
    void take_colours();
    QColor on_light_ = Qt::black;
    bool stale_ = false;
    int least_characters_;
};

}  // namespace quom
