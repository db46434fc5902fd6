// The help pages, by topic number, in a window of their own: index, search over all pages, back and forward.
#pragma once
#include <QWidget>
#include <vector>

#include "ui/windows/help_pages.h"

class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QPushButton;
class QTextBrowser;

namespace quom {

class HelpWindow : public QWidget {
    Q_OBJECT
 public:
    explicit HelpWindow(QWidget* parent);
    // Shows the page of a topic; topic 0, or one without a page, shows the index of all pages.
    void show_topic(int topic);
    int topic() const { return history_.empty() ? 0 : history_[at_].topic; }

    QPushButton* cmdBack;
    QPushButton* cmdForward;
    QPushButton* cmdIndex;
    QLineEdit* txtSearch;
    QLabel* lblFound;
    QListWidget* lstFound;
    QTextBrowser* browser;
    QPushButton* cmdClose;

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    struct Visit {
        int topic = 0;
        int scroll = 0;  // where the page was left
    };
    void build_layout();
    void connect_controls();
    void load(int topic);
    void visit(int topic);  // as a new page of the history; those behind it go
    void go(int step);
    void search();
    void open_hit(const QListWidgetItem* item);
    bool search_key(int key);

    QVector<HelpPage> pages_;
    std::vector<Visit> history_;
    std::size_t at_ = 0;
};

}  // namespace quom
