// Choosing a substance by name, synonym, CAS number, system number, or from the list.
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
class NumberBox;
class SubstanceFilter;
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
    NumberBox* Text1;  // system number
    ValueBox* tex4;    // CAS number
    ValueBox* Text2;   // structure
    QLabel* lblMarks;  // which data are estimates, fits, extrapolated
    ValueBox* txtDatenbank;
    QPushButton* cmdSynonyme;
    QPushButton* ESC;
    QPushButton* StoffOK;

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void build_layout();
    void connect_controls();
    void show_database();                  // list and count anew, the substance in force marked
    void filter(const std::string& text);  // shows the lines that the text is found in; the choice stays
    void mark_row(int index);              // marks substance index in the list, whatever the filter was
    void row_marked(const QModelIndex& at);
    void show_substance(int index);  // what the boxes tell of it
    bool look_up();                  // FindSubstance on the name; false: not found, the user was told
    void enter_name();
    void type_system_no();
    void confirm();
    void leave();

    mdiQUOM& frame_;
    std::unique_ptr<SubstanceFilter> rows_;
    std::unique_ptr<NameMemory> memory_;
    int index_at_opening_ = 0;
    std::string synonym_fault_;  // what is wrong with the file of synonyms
    std::string fault_to_tell_;  // the same until the user was told
    bool filtering_ = false;
};

}  // namespace quom
