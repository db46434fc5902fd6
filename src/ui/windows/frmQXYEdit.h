// The editor of X-Y data: pairs typed or pasted, converted, sorted, their file.
#pragma once
#include <QWidget>
#include <string>

#include "fitting/xy_data.h"
#include "session/session.h"
#include "ui/widgets/data_grid.h"

class QAbstractButton;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace quom {

class NoticeStrip;
class NumberBox;
class mdiQUOM;

class frmQXYEdit : public QWidget, private GridLines {
    Q_OBJECT
 public:
    static constexpr const char* Name = "frmQXYEdit";
    // Shows the window; there is one.
    static frmQXYEdit* open(mdiQUOM& frame);
    explicit frmQXYEdit(mdiQUOM& frame);

    NumberBox *txtX, *txtY;
    QRadioButton* optInputMode[2];  // add line, edit line
    QLabel* lblZeile;
    QPushButton* OKinput;
    QPushButton* cmdManip;
    QGroupBox* fraManip;  // the panel of conversions
    QRadioButton* optManip[6];
    NumberBox* txtW;
    QPushButton *cmdExecManip, *cmdCloseManip;
    QPushButton *cmdLoad, *cmdSave;
    QLineEdit* txtComment;
    NoticeStrip* notice;  // what cannot be taken
    DataGrid* grid;
    QPushButton *XSort, *YSort, *cmdAus, *cmdErase, *cmdClipEinfuegen, *cmdChangeXY;
    QRadioButton* optIsPoints[2];  // as points, as curve
    QPushButton *cmdDrawXY, *cmdFitting;
    QLabel* lblStatus;  // what was loaded
    QPushButton *cmdPrint, *cmdClose;
    QAbstractButton* cmdHelp;

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

 private:
    // GridLines
    QStringList heads() const override;
    QString off_hint() const override;
    int count() const override;
    QString text(int line, int column) const override;
    bool off(int line) const override;
    std::string broken_rule_of(int column, double value) const override;
    void write(const std::vector<GridNumber>& numbers) override;
    void toggle(GridRange lines) override;
    void insert_clipboard() override;
    void remove_marked() override;

    void make_controls();
    void build_layout();
    QWidget* make_input_group();
    QWidget* make_conversion_group();
    QWidget* make_drawing_group();
    void connect_controls();
    const XYData& data() const;
    template <class Change>
    void change(Change make);
    void show_document();
    void show_point();
    void show_line_number();
    void enter_line();
    void convert();
    void load();
    void print();

    mdiQUOM& frame_;
};

}  // namespace quom
