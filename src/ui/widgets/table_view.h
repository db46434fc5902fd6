// The one table for data: rows of the font's height, cells copied and pasted as text, the popup menu of the
// grids.
#pragma once
#include <QTableView>
#include <functional>

namespace quom {

class TableView : public QTableView {
    Q_OBJECT
 public:
    // What the popup menu offers besides "copy".
    enum Command { Paste = 1, Delete = 2, ZeroCells = 4, RemoveLines = 8 };

    explicit TableView(QWidget* parent = nullptr);
    // An editable table: commands is a sum of Command; run is called for "delete", "marked cell(s) => 0" and
    // "remove marked line(s)".
    void set_commands(int commands, std::function<void(Command)> run);
    void copy() const;  // marked cells, columns parted by a tab, rows by a line end
    void paste();       // from the current cell on, through the model
    QString marked_text() const;

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

 private:
    int commands_ = 0;
    std::function<void(Command)> run_;
};

}  // namespace quom
