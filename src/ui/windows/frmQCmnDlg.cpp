#include "ui/windows/frmQCmnDlg.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStorageInfo>
#include <QVBoxLayout>
#include <algorithm>

#include "base/files.h"
#include "forms/open_form.h"
#include "forms/refusal.h"
#include "ui/look/look.h"
#include "ui/look/svg_icons.h"
#include "ui/main/mdiQUOM.h"
#include "ui/widgets/dialogs.h"
#include "ui/widgets/labels.h"
#include "ui/windows/input_window.h"

namespace quom {

namespace {

const QString SizeKey = QStringLiteral("open_dialog/size");
constexpr QSize FirstSize(860, 500);

// Roots that a user may look for files in: those of the system, and media.
QStringList roots() {
    QStringList list;
    for (const QFileInfo& root : QDir::drives()) list << root.absolutePath();
    for (const QStorageInfo& volume : QStorageInfo::mountedVolumes()) {
        const QString path = volume.rootPath();
        const bool media = path.startsWith(QStringLiteral("/media/")) ||
                           path.startsWith(QStringLiteral("/run/media/")) ||
                           path.startsWith(QStringLiteral("/mnt/"));
        if (media && volume.isReady() && !list.contains(path)) list << path;
    }
    return list;
}

// The root that a folder is on: the longest that it begins with.
int root_of(const QComboBox* list, const QString& folder) {
    int best = -1;
    for (int i = 0; i < list->count(); ++i)
        if (folder.startsWith(list->itemText(i)) &&
            (best < 0 || list->itemText(i).size() > list->itemText(best).size()))
            best = i;
    return best;
}

// A text of the preview that can be marked and copied.
QLabel* preview_label(const char* name, QWidget* parent) {
    auto* label = named(new QLabel(parent), name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    return label;
}

void add_item(QListWidget* list, const std::string& name, const QIcon& icon = {}) {
    auto* item = new QListWidgetItem(icon, QString::fromStdString(name), list);
    item->setSizeHint({0, list->fontMetrics().height() + 6});
}

// In one line: a comment is one line of its file.
std::string comment_text(const QPlainTextEdit* box) {
    QString text = box->toPlainText();
    return text.replace(QLatin1Char('\n'), QLatin1Char(' ')).trimmed().toStdString();
}

}  // namespace

frmQCmnDlg::frmQCmnDlg(Workbench& bench, const OpenQuestion& question, QWidget* parent)
    : QDialog(parent), bench_(bench), mask_(question.mask) {
    setObjectName(QStringLiteral("frmQCmnDlg"));
    setWindowTitle(question.title.isEmpty() ? QStringLiteral("Standard Dialogs") : question.title);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(make_folder_row());
    auto* middle = new QHBoxLayout;
    middle->addWidget(make_lists(), 3);
    middle->addWidget(make_preview(), 2);
    layout->addLayout(middle, 1);
    layout->addWidget(make_name_row());
    StatusBar1 = named(hint_label(QString::fromStdString(database_line(bench.session)), this), "StatusBar1");
    StatusBar1->setWordWrap(false);
    layout->addWidget(StatusBar1);
    cmdOpenOK = named(new QPushButton(QStringLiteral("OK, Load")), "cmdOpenOK", QStringLiteral("OK, Load"));
    cmdOpenCancel = named(new QPushButton(QStringLiteral("Cancel <Esc>")), "cmdOpenCancel",
                          QStringLiteral("Cancel <Esc>"));
    add_end_row(layout, cmdOpenCancel, cmdOpenOK);
    cmdOpenCancel->setAutoDefault(false);
    set_tab_order({drvOpenList, cmdReturn, dirOpenList, filOpenList, Text2, txtOpenFile, cmdOpenCancel,
                   cmdOpenOK, txtFolder});
    connect_controls();

    const QString folder = QString::fromStdString(question.folder);
    go_to(!folder.isEmpty() && QDir(folder).exists() ? question.folder : bench.session.ProgramPath);
    if (!question.name.empty()) mark(question.name);
    filOpenList->setFocus();
    resize(bench.memory.value(SizeKey, FirstSize).toSize().expandedTo(sizeHint()));
}

QWidget* frmQCmnDlg::make_folder_row() {
    auto* row = new QWidget(this);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    drvOpenList = named(new QComboBox(row), "drvOpenList", QStringLiteral("Drive"));
    drvOpenList->addItems(roots());
    drvOpenList->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    drvOpenList->setMinimumContentsLength(10);
    drvOpenList->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    drvOpenList->setVisible(drvOpenList->count() > 1);
    auto* label = new QLabel(QStringLiteral("Folder:"), row);
    txtFolder = named(new QLineEdit(row), "txtFolder");
    txtFolder->setReadOnly(true);
    txtFolder->setFrame(false);
    caption_for(label, txtFolder);
    const QString caption = QStringLiteral(" Parent Directory ");
    cmdReturn = named(new TrimmedButton(caption, row), "cmdReturn", caption);
    cmdReturn->setAutoDefault(false);
    layout->addWidget(label);
    layout->addWidget(drvOpenList);
    layout->addWidget(txtFolder, 1);
    layout->addWidget(cmdReturn);
    return row;
}

QWidget* frmQCmnDlg::make_lists() {
    auto* lists = new QWidget(this);
    auto* grid = new QGridLayout(lists);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setVerticalSpacing(4);
    const auto add = [&](int column, QLabel* head, const char* name, int digits) {
        auto* list = named(new QListWidget(lists), name);
        list->setUniformItemSizes(true);
        list->setIconSize({16, 16});
        list->setTextElideMode(Qt::ElideMiddle);
        list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        list->setMinimumWidth(text_width(*list, digits));
        list->setMinimumHeight(list->fontMetrics().height() * 10);
        head->setBuddy(list);
        list->setAccessibleName(head->text());
        list->installEventFilter(this);
        grid->addWidget(head, 0, column);
        grid->addWidget(list, 1, column);
        return list;
    };
    lblFiles = named(head_label({}, lists), "lblFiles");
    dirOpenList = add(0, head_label(QStringLiteral("Folders"), lists), "dirOpenList", 18);
    filOpenList = add(1, lblFiles, "filOpenList", 26);
    filOpenList->setAccessibleName(QStringLiteral("Files"));
    grid->setColumnStretch(0, 2);
    grid->setColumnStretch(1, 3);
    return lists;
}

QWidget* frmQCmnDlg::make_preview() {
    const std::string_view title = preview_title(mask_);
    fraViewStoff = named(new QGroupBox(shown(title), this), "fraViewStoff", shown(title));
    auto* grid = new QGridLayout(fraViewStoff);
    grid->setColumnStretch(1, 1);
    const bool project = !is_data_file_name(mask_);
    lblDate = preview_label("lblDate", fraViewStoff);
    lblStoff = preview_label("lblStoff", fraViewStoff);
    lblBank = preview_label("lblBank", fraViewStoff);
    lblExp = preview_label("lblExp", fraViewStoff);
    const auto add = [&](int row, const char* caption, QLabel* value) {
        auto* label = hint_label(QLatin1String(caption), fraViewStoff);
        label->setWordWrap(false);
        grid->addWidget(label, row, 0, Qt::AlignLeft | Qt::AlignTop);
        grid->addWidget(value, row, 1);
    };
    add(0, "Date", lblDate);
    add(1, "Substance", lblStoff);
    if (project) add(2, "Database", lblBank);
    lblBank->setVisible(project);
    add(3, "Exper. data", lblExp);
    const QString caption = project
                                ? QStringLiteral(" file comment (can be changed when saving the project) ")
                                : QStringLiteral("file comment");
    auto* head = new TrimmedLabel(caption, fraViewStoff);
    Text2 = named(new QPlainTextEdit(fraViewStoff), "Text2");
    Text2->setReadOnly(true);
    Text2->setTabChangesFocus(true);
    Text2->setMinimumHeight(Text2->fontMetrics().lineSpacing() * 4);
    caption_for(head, Text2);
    grid->setRowMinimumHeight(4, 6);
    grid->addWidget(head, 5, 0, 1, 2);
    grid->addWidget(Text2, 6, 0, 1, 2);
    grid->setRowStretch(6, 1);
    fraViewStoff->setMinimumWidth(
        std::max(text_width(*fraViewStoff, 40), fraViewStoff->minimumSizeHint().width()));
    return fraViewStoff;
}

QWidget* frmQCmnDlg::make_name_row() {
    auto* row = new QWidget(this);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* label = new QLabel(QStringLiteral("File name:"), row);
    txtOpenFile = named(new QLineEdit(row), "txtOpenFile");
    caption_for(label, txtOpenFile);
    layout->addWidget(label);
    layout->addWidget(txtOpenFile, 1);
    return row;
}

void frmQCmnDlg::connect_controls() {
    connect(drvOpenList, &QComboBox::activated, this,
            [this] { go_to(drvOpenList->currentText().toStdString()); });
    connect(cmdReturn, &QPushButton::clicked, this, &frmQCmnDlg::go_up);
    connect(dirOpenList, &QListWidget::itemDoubleClicked, this,
            [this](const QListWidgetItem* item) { enter_folder(item); });
    connect(filOpenList, &QListWidget::itemSelectionChanged, this, &frmQCmnDlg::file_marked);
    connect(filOpenList, &QListWidget::itemDoubleClicked, this, &frmQCmnDlg::take);
    // Another name than that of the marked file: its preview goes.
    connect(txtOpenFile, &QLineEdit::textEdited, this,
            [this](const QString& text) { mark(text.trimmed().toStdString()); });
    connect(cmdOpenOK, &QPushButton::clicked, this, &frmQCmnDlg::take);
    connect(cmdOpenCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmQCmnDlg::go_to(const std::string& folder) {
    folder_ = absolute_path(folder);
    const QString path = QString::fromStdString(folder_);
    txtFolder->setText(QDir::toNativeSeparators(path));
    txtFolder->setToolTip(txtFolder->text());
    drvOpenList->setCurrentIndex(root_of(drvOpenList, path));
    cmdReturn->setEnabled(!QDir(path).isRoot());
    dirOpenList->clear();
    const QIcon icon = svg_icon(QStringLiteral("load-project"));
    for (const std::string& name : folders_in(folder_)) add_item(dirOpenList, name, icon);
    show_files();
}

void frmQCmnDlg::go_up() {
    QDir folder(QString::fromStdString(folder_));
    const QString left = folder.dirName();
    if (!folder.cdUp()) return;
    go_to(folder.absolutePath().toStdString());
    for (QListWidgetItem* item : dirOpenList->findItems(left, Qt::MatchExactly | Qt::MatchCaseSensitive))
        dirOpenList->setCurrentItem(item);
}

void frmQCmnDlg::enter_folder(const QListWidgetItem* item) {
    if (item) go_to(join_path(folder_, item->text().toStdString()));
}

void frmQCmnDlg::show_files() {
    {
        const QSignalBlocker quiet(filOpenList);
        filOpenList->clear();
        for (const std::string& name : files_in(folder_, mask_)) add_item(filOpenList, name);
    }
    const int count = filOpenList->count();
    lblFiles->setText(QStringLiteral("Files %1 (%2)")
                          .arg(QString::fromStdString(mask_),
                               count == 0 ? QStringLiteral("none in this folder") : QString::number(count)));
    file_marked();
}

std::string frmQCmnDlg::marked() const {
    const QList<QListWidgetItem*> items = filOpenList->selectedItems();
    return items.isEmpty() ? std::string() : items.front()->text().toStdString();
}

void frmQCmnDlg::mark(const std::string& name) {
    const QString text = QString::fromStdString(name);
    QListWidgetItem* wanted = nullptr;
    for (QListWidgetItem* item : filOpenList->findItems(text, Qt::MatchFixedString))
        if (!wanted || item->text() == text) wanted = item;
    if (!wanted) return filOpenList->clearSelection();
    filOpenList->setCurrentItem(wanted);
    wanted->setSelected(true);
}

void frmQCmnDlg::file_marked() {
    const std::string name = marked();
    previewed_ = name.empty() ? std::string() : join_path(folder_, name);
    if (!name.empty() && txtOpenFile->text().compare(QString::fromStdString(name), Qt::CaseInsensitive) != 0)
        txtOpenFile->setText(QString::fromStdString(name));
    if (name.empty() && !txtOpenFile->hasFocus()) txtOpenFile->clear();
    const FilePreview preview = name.empty() ? FilePreview{} : file_preview(previewed_, bench_.session);
    show_preview(preview);
    if (!preview.refusal) return;
    // After the press that marked the file; a box would swallow its end.
    QMetaObject::invokeMethod(
        this,
        [this, path = previewed_, message = *preview.refusal] {
            if (isVisible() && path == previewed_) bench_.tell(message);
        },
        Qt::QueuedConnection);
}

void frmQCmnDlg::show_preview(const FilePreview& preview) {
    lblDate->setText(QString::fromStdString(preview.date));
    lblStoff->setText(QString::fromStdString(preview.substance));
    lblBank->setText(QString::fromStdString(preview.database));
    lblExp->setText(QString::fromStdString(preview.data));
    Text2->setPlainText(QString::fromStdString(preview.comment));
    Text2->document()->setModified(false);
    Text2->setReadOnly(previewed_.empty() || preview.refusal || !is_project_name(previewed_));
}

void frmQCmnDlg::delete_file() {
    const std::string name = marked();
    if (name.empty() || bench_.tell(delete_question(name)) != Answer::yes) return;
    const int row = filOpenList->currentRow();
    QFile file(QString::fromStdString(join_path(folder_, name)));
    if (!file.remove())
        bench_.tell(refusal_message("File " + name + ": " + file.errorString().toStdString()));
    show_files();
    if (filOpenList->count() > 0) filOpenList->setCurrentRow(std::min(row, filOpenList->count() - 1));
}

void frmQCmnDlg::take() {
    const TypedName typed = typed_name(txtOpenFile->text().toStdString(), folder_, mask_);
    switch (typed.kind) {
        case TypedName::Kind::nothing:
            bench_.tell(no_such_file());
            return;
        case TypedName::Kind::mask:
            mask_ = typed.text;
            go_to(typed.folder);
            return;
        case TypedName::Kind::folder:
            txtOpenFile->clear();
            go_to(typed.text);
            return;
        case TypedName::Kind::file:
            break;
    }
    file_.path = typed.text;
    if (typed.text == absolute_path(previewed_) && Text2->document()->isModified())
        file_.comment = comment_text(Text2);
    accept();
}

bool frmQCmnDlg::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Backspace) {
        go_up();
        return true;
    }
    if (watched == dirOpenList && (key == Qt::Key_Return || key == Qt::Key_Enter)) {
        enter_folder(dirOpenList->currentItem());
        return true;
    }
    if (watched == filOpenList && key == Qt::Key_Delete) {
        delete_file();
        return true;
    }
    // The first key goes to the first file, not to the one behind it.
    if (watched == filOpenList && key == Qt::Key_Down && marked().empty() && filOpenList->count() > 0) {
        filOpenList->setCurrentRow(0, QItemSelectionModel::ClearAndSelect);
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void frmQCmnDlg::done(int result) {
    bench_.memory.set(SizeKey, size());
    QDialog::done(result);
}

std::optional<OpenedFile> open_with_preview(mdiQUOM& frame, const OpenQuestion& question) {
    std::optional<OpenedFile> opened;
    const auto ask = [&](QWidget* parent) -> std::optional<QString> {
        frmQCmnDlg window(frame.bench(), question, parent);
        if (window.exec() != QDialog::Accepted) return std::nullopt;
        opened = window.file();
        return QString::fromStdString(opened->path);
    };
    const auto path = frame.dialogs().open_file(&frame, {.title = question.title,
                                                         .start = QString::fromStdString(question.folder),
                                                         .filter = QString::fromStdString(question.mask),
                                                         .suffix = {},
                                                         .own = ask});
    if (!path) return std::nullopt;
    if (!opened) opened = OpenedFile{path->toStdString(), {}};
    return opened;
}

}  // namespace quom
