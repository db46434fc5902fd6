// Opening a project or a data file: folders, files, and what is in the file that is marked.
#pragma once
#include <QDialog>
#include <optional>
#include <string>

class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QPlainTextEdit;
class QPushButton;

namespace quom {

class Workbench;
class mdiQUOM;
struct FilePreview;

struct OpenQuestion {
    QString title;
    std::string folder;  // where it begins; one that is gone is the program folder
    std::string mask;    // "*.QC6", "*.BAQ"
    std::string name{};  // file that is marked at first, when it is there
};

struct OpenedFile {
    std::string path;                    // absolute
    std::optional<std::string> comment;  // of a project, when it was changed
};

// Accepted: file() is what was chosen.
class frmQCmnDlg : public QDialog {
    Q_OBJECT
 public:
    frmQCmnDlg(Workbench& bench, const OpenQuestion& question, QWidget* parent = nullptr);
    const OpenedFile& file() const { return file_; }

    QComboBox* drvOpenList;  // hidden where there is one root alone
    QLineEdit* txtFolder;
    QListWidget* dirOpenList;
    QLabel* lblFiles;
    QListWidget* filOpenList;
    QLineEdit* txtOpenFile;
    QGroupBox* fraViewStoff;
    QLabel *lblDate, *lblStoff, *lblBank, *lblExp;
    QPlainTextEdit* Text2;  // comment
    QLabel* StatusBar1;     // the database in force
    QPushButton *cmdReturn, *cmdOpenOK, *cmdOpenCancel;

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void done(int result) override;

 private:
    QWidget* make_folder_row();
    QWidget* make_lists();
    QWidget* make_preview();
    QWidget* make_name_row();
    void connect_controls();
    void go_to(const std::string& folder);
    void go_up();
    void enter_folder(const QListWidgetItem* item);
    void show_files();
    void mark(const std::string& name);  // the file of this name, or none
    void file_marked();
    void show_preview(const FilePreview& preview);
    void delete_file();
    void take();  // what stands in txtOpenFile
    std::string marked() const;

    Workbench& bench_;
    std::string folder_, mask_;
    std::string previewed_;  // path of the file that the preview shows, empty: none
    OpenedFile file_;
};

// Asks for a project or a data file; none: cancelled, and nothing has changed.
std::optional<OpenedFile> open_with_preview(mdiQUOM& frame, const OpenQuestion& question);

}  // namespace quom
