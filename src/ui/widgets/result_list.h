// The one list of results: fixed font, read-only, copied as text; heads and rulers stand out by colour only,
// the text stays as it is.
#pragma once
#include <QPlainTextEdit>
#include <string>

namespace quom {

class ResultList : public QPlainTextEdit {
    Q_OBJECT
 public:
    explicit ResultList(QWidget* parent = nullptr);
    // Shows the lines of UTF-8 text; a fault colours all of them.
    void show_text(const std::string& text, bool fault = false);
    // All in the colour of what is not up to date.
    void set_stale(bool stale);
    // Height that the list asks for, in lines; 24 unless told.
    void set_lines(int lines);
    QSize sizeHint() const override;

 protected:
    void changeEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

 private:
    void take_colours();
    class Heads;
    Heads* heads_;
    bool fault_ = false, stale_ = false;
    int lines_ = 24;
};

}  // namespace quom
