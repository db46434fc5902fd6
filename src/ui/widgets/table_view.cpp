#include "ui/widgets/table_view.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>

namespace quom {

namespace {

constexpr struct {
    TableView::Command command;
    const char* caption;
} PopupItems[] = {{TableView::Paste, "paste"},
                  {TableView::Delete, "delete"},
                  {TableView::ZeroCells, "marked cell(s) => 0"},
                  {TableView::RemoveLines, "remove marked line(s)"}};

}  // namespace

TableView::TableView(QWidget* parent) : QTableView(parent) {
    setAlternatingRowColors(true);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
    verticalHeader()->setMinimumSectionSize(fontMetrics().height() + 4);
    setHorizontalScrollMode(ScrollPerPixel);
}

void TableView::set_commands(int commands, std::function<void(Command)> run) {
    commands_ = commands;
    run_ = std::move(run);
}

QString TableView::marked_text() const {
    QModelIndexList marked = selectionModel() ? selectionModel()->selectedIndexes() : QModelIndexList();
    std::sort(marked.begin(), marked.end());
    QString text;
    for (int i = 0; i < marked.size(); ++i) {
        if (i > 0) text += marked[i].row() == marked[i - 1].row() ? QLatin1Char('\t') : QLatin1Char('\n');
        text += marked[i].data().toString();
    }
    return text;
}

void TableView::copy() const { QApplication::clipboard()->setText(marked_text()); }

void TableView::paste() {
    const QModelIndex start = currentIndex();
    if (!start.isValid()) return;
    QString text = QApplication::clipboard()->text();
    text.remove(QLatin1Char('\r'));
    if (text.endsWith(QLatin1Char('\n'))) text.chop(1);
    int row = start.row();
    for (const QString& line : text.split(QLatin1Char('\n'))) {
        int column = start.column();
        for (const QString& cell : line.split(QLatin1Char('\t'))) {
            const QModelIndex at = model()->index(row, column++);
            if (at.isValid() && (at.flags() & Qt::ItemIsEditable)) model()->setData(at, cell.trimmed());
        }
        ++row;
    }
}

void TableView::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) return copy();
    if (event->matches(QKeySequence::Paste) && (commands_ & Paste)) return paste();
    if (event->key() == Qt::Key_Delete && (commands_ & Delete) && run_) return run_(Delete);
    QTableView::keyPressEvent(event);
}

void TableView::contextMenuEvent(QContextMenuEvent* event) {
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("mnuEdit1"));
    menu.addAction(QStringLiteral("copy"), this, &TableView::copy);
    for (const auto& item : PopupItems) {
        if (!(commands_ & item.command)) continue;
        menu.addAction(QLatin1String(item.caption), this, [this, command = item.command] {
            if (command == Paste)
                paste();
            else if (run_)
                run_(command);
        });
    }
    menu.exec(event->globalPos());
}

}  // namespace quom
