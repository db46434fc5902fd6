// The editor of a text of the sheet: <Ctrl><Enter> adds a line, Enter and Tab go on to the next control.
#pragma once
#include <QPlainTextEdit>

namespace quom {

class SchriftEdit : public QPlainTextEdit {
    Q_OBJECT
 public:
    explicit SchriftEdit(QWidget* parent = nullptr);
    // Shows a text with its end mark; the same text is left alone while it is edited.
    void show_text(const QString& text);
    // The cursor before the end mark.
    void go_to_end();
    QSize sizeHint() const override;

 signals:
    void edited(const QString& text);

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

 private:
    QString shown_;
};

}  // namespace quom
