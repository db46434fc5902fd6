// A box whose entries can be looked through by keys and wheel without being taken. What is shown is taken by
// Enter, by a click in its list, and by leaving the box; Escape shows again what was taken last.
#pragma once
#include <QComboBox>

namespace quom {

class ChoiceBox : public QComboBox {
    Q_OBJECT
 public:
    explicit ChoiceBox(QWidget* parent = nullptr);

    // Shows entry index as the one that is taken, without a signal.
    void show_taken(int index);
    // Takes what is shown. A box that shows what was taken does nothing.
    // left: the user goes on to something else, whose event comes next.
    void take(bool left = false);
    // Whether another entry is shown than the one that was taken.
    bool passing() const { return currentIndex() != taken_; }

 signals:
    void chosen(int index, bool left);  // the entry was taken
    void shown();                       // another entry is shown, or the taken one again

 protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

 private:
    int taken_ = -1;
    bool looking_ = false;  // keys or wheel change the entry: it is not taken yet
};

}  // namespace quom
