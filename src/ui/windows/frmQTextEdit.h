// A window of text to read: a head above, the text below.
#pragma once
#include <QWidget>

class QPushButton;

namespace quom {

class mdiQUOM;
class ResultList;

class frmQTextEdit : public QWidget {
    Q_OBJECT
 public:
    static constexpr const char* Name = "frmQTextEdit";
    // Shows caption and texts in the one window of this kind; an empty head hides its box.
    static frmQTextEdit* open(mdiQUOM& frame, const QString& caption, const std::string& head,
                              const std::string& text);
    explicit frmQTextEdit(mdiQUOM& frame);
    void show_texts(const std::string& head_text, const std::string& main_text);

    ResultList* head;
    ResultList* text;
    QPushButton* cmdClose;
};

}  // namespace quom
