// Choosing a substance by name, synonym, formula, CAS number, system number, or from the list. While a name
// is typed the list shows what it is found in, and marks the best hit.
#pragma once
#include <QWidget>
#include <memory>
#include <string>

class QComboBox;
class QLabel;
class QListView;
class QModelIndex;
class QPushButton;

namespace quom {

class mdiQUOM;
class NameMemory;
class NoticeStrip;
class NumberBox;
class SubstanceList;
class ValueBox;

class frmQStoffWahl : public QWidget {
    Q_OBJECT
 public:
    static constexpr const char* Name = "frmQStoffWahl";
    // Opens the window, or says why it can not be opened: no database.
    static void open(mdiQUOM& frame);
    explicit frmQStoffWahl(mdiQUOM& frame);
    ~frmQStoffWahl() override;

    QComboBox* NameCombo;
    QListView* StoffListe;
    NumberBox* Text1;     // system number
    ValueBox* tex4;       // CAS number
    ValueBox* Text2;      // structure
    QLabel* lblMarks;     // which data are estimates, fits, extrapolated
    QLabel* lblFound;     // "11 of 496, best first"
    NoticeStrip* notice;  // why nothing was found
    ValueBox* txtDatenbank;
    QPushButton* cmdSynonyme;
    QPushButton* ESC;
    QPushButton* StoffOK;

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void build_layout();
    void connect_controls();
    void show_database();                     // list and count anew, the substance in force marked
    void show_rows(const std::string& text);  // those that the text is found in, none marked
    void search(const std::string& text);     // the same with the best hit marked
    void mark_row(int index);                 // marks substance index in the whole list
    void mark_first();                        // of the rows shown; what is typed stays
    void mark(const QModelIndex& at);
    void row_marked(const QModelIndex& at);
    void show_substance(int index);            // what the boxes tell of it; 0: nothing
    void write_name(const std::string& name);  // into the box, without a search
    void enter_name();
    void go_to_list();
    void type_system_no();
    void remember(int index);  // its name, in the list of the box
    void confirm();
    void leave();

    mdiQUOM& frame_;
    SubstanceList* rows_;
    std::unique_ptr<NameMemory> memory_;
    int index_at_opening_ = 0;
    std::string told_fault_;  // of the file of synonyms, that the user knows of
    bool typing_ = false;     // the box keeps what is typed when a row is marked
    bool writing_ = false;    // the window writes into the box
};

}  // namespace quom
