// The help pages, by topic number, in a window of their own.
#pragma once
#include <QWidget>

class QTextBrowser;

namespace quom {

// File of a topic among the pages of the program (":/help/62-name.md"); empty when there is none.
QString help_page(int topic);

class HelpWindow : public QWidget {
    Q_OBJECT
 public:
    explicit HelpWindow(QWidget* parent);
    // Shows the page of a topic; topic 0, or one without a page, shows the index of all pages.
    void show_topic(int topic);
    QTextBrowser* browser;
};

}  // namespace quom
