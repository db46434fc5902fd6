#include "ui/windows/frmQStoffWahl.h"

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QVBoxLayout>
#include <utility>

#include "base/code_page.h"
#include "base/files.h"
#include "forms/shell.h"
#include "forms/substance_form.h"
#include "session/substance_names.h"
#include "substance/database.h"
#include "substance/search.h"
#include "substance/synonyms.h"
#include "ui/look/look.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/menu_actions.h"
#include "ui/main/workbench.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/notice_strip.h"
#include "ui/widgets/number_box.h"
#include "ui/widgets/table_copy.h"
#include "ui/widgets/value_box.h"
#include "ui/windows/frmQTextEdit.h"
#include "ui/windows/substance_list.h"

namespace quom {

frmQStoffWahl::frmQStoffWahl(mdiQUOM& frame)
    : NameCombo(named(new QComboBox(this), "NameCombo")),
      StoffListe(named(new QListView(this), "StoffListe", QStringLiteral("List of substances"))),
      Text1(named(new NumberBox(5, this), "Text1")),
      tex4(named(new ValueBox(this, 22), "tex4", QStringLiteral("CAS-RN"))),
      Text2(named(new ValueBox(this), "Text2", QStringLiteral("structure"))),
      lblMarks(named(hint_label({}, this), "lblMarks")),
      lblFound(named(hint_label({}, this), "lblFound")),
      notice(named(new NoticeStrip(this), "notice")),
      txtDatenbank(named(new ValueBox(this), "txtDatenbank")),
      cmdSynonyme(named(new QPushButton(QStringLiteral("List of synonyms for this substance"), this),
                        "cmdSynonyme", QStringLiteral("List of synonyms for this substance"))),
      ESC(named(new QPushButton(QStringLiteral("Cancel <Esc>"), this), "ESC", QStringLiteral("Cancel"))),
      StoffOK(named(new TrimmedButton(QStringLiteral(" Continue >\nLoad data"), this), "StoffOK",
                    QStringLiteral("Continue, load data"))),
      frame_(frame),
      rows_(new SubstanceList(frame.session(), this)),
      memory_(std::make_unique<NameMemory>()) {
    setObjectName(QLatin1String(Name));
    NameCombo->setEditable(true);
    NameCombo->setInsertPolicy(QComboBox::NoInsert);
    NameCombo->setCompleter(nullptr);
    NameCombo->setMinimumContentsLength(28);
    NameCombo->installEventFilter(this);
    NameCombo->lineEdit()->installEventFilter(this);
    StoffListe->setFont(fixed_font());
    StoffListe->setUniformItemSizes(true);
    StoffListe->setAlternatingRowColors(true);
    StoffListe->setModel(rows_);
    StoffListe->setItemDelegate(new SubstanceDelegate(*rows_, StoffListe));
    StoffListe->setMinimumHeight(160);
    StoffListe->setTabKeyNavigation(false);
    StoffListe->installEventFilter(this);
    StoffListe->setContextMenuPolicy(Qt::ActionsContextMenu);
    StoffListe->addAction(QStringLiteral("copy the list"), this, [this] { copy_table(rows_->table()); });
    StoffListe->addAction(QStringLiteral("save the list as..."), this,
                          [this] { save_table(this, rows_->table(), QStringLiteral("substances")); });
    StoffOK->setDefault(true);
    StoffOK->setMinimumWidth(96);
    Text2->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    build_layout();
    connect_controls();
}

frmQStoffWahl::~frmQStoffWahl() = default;

void frmQStoffWahl::build_layout() {
    auto* prompt = new QLabel(QStringLiteral("Input Name of substance/CASRN:"), this);
    caption_for(prompt, NameCombo);
    auto* languages = hint_label(QStringLiteral(" in german or english "), this);
    languages->setWordWrap(false);
    auto* keys =
        hint_label(QStringLiteral("confirm with <Enter> key; pressing <Enter> again leads directly to "
                                  "the \"Models\" window"),
                   this);
    auto* header = new QLabel(QString::fromUtf8(SubstanceListHeader), this);
    header->setFont(fixed_font());
    header->setBuddy(StoffListe);
    QPalette header_palette;
    header_palette.setColor(QPalette::WindowText, look_colour(LookColour::SectionHead));
    header->setPalette(header_palette);
    header->setIndent(1);
    lblFound->setWordWrap(false);
    lblFound->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto* number = new QLabel(QStringLiteral("MDB-Syst. No:"), this);
    caption_for(number, Text1);
    auto* database = new QLabel(QStringLiteral("Database:"), this);
    caption_for(database, txtDatenbank);

    auto* top = new QGridLayout;
    top->addWidget(prompt, 0, 0);
    top->addWidget(NameCombo, 0, 1);
    top->addWidget(languages, 0, 2);
    top->addWidget(keys, 1, 1, 1, 2);
    top->setColumnStretch(1, 1);
    auto* head = new QHBoxLayout;
    head->addWidget(header);
    head->addWidget(lblFound, 1);
    auto* numbers = new QHBoxLayout;
    numbers->addWidget(number);
    numbers->addWidget(Text1);
    numbers->addWidget(tex4);
    numbers->addWidget(Text2, 1);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(database);
    bottom->addWidget(txtDatenbank);
    bottom->addStretch();
    bottom->addWidget(cmdSynonyme);
    bottom->addWidget(ESC);
    bottom->addWidget(StoffOK);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(notice);
    layout->addLayout(head);
    layout->addWidget(StoffListe, 1);
    layout->addLayout(numbers);
    lblMarks->setMinimumHeight(2 * lblMarks->fontMetrics().lineSpacing());  // the list keeps its height
    layout->addWidget(lblMarks);
    layout->addWidget(rule(this));
    layout->addLayout(bottom);
    QWidget* const order[] = {NameCombo,    StoffListe,  Text1, tex4,   Text2,
                              txtDatenbank, cmdSynonyme, ESC,   StoffOK};
    for (std::size_t i = 1; i < std::size(order); ++i) setTabOrder(order[i - 1], order[i]);
}

void frmQStoffWahl::connect_controls() {
    connect(StoffListe->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& at) { row_marked(at); });
    connect(StoffListe, &QListView::doubleClicked, this, [this] { confirm(); });
    connect(NameCombo->lineEdit(), &QLineEdit::textChanged, this, [this](const QString& text) {
        if (!writing_) search(text.toStdString());
    });
    connect(Text1, &QLineEdit::textEdited, this, [this] { type_system_no(); });
    connect(cmdSynonyme, &QPushButton::clicked, this, [this] {
        const Session& s = frame_.session();
        const std::string casrn = read_substance_head(s.database, s.StoffIndex).CASRN;
        const SynonymList list = ShowSynonyms(s.ProgramPath, casrn);
        if (list.err && list.message) frame_.bench().tell(*list.message);
        if (!list.head.empty())
            frmQTextEdit::open(frame_, QStringLiteral(" List of synonyms"), list.head, list.synonyms);
    });
    connect(&frame_.bench(), &Workbench::moved, this, [this] {
        if (isVisible()) show_database();
    });
    connect(ESC, &QPushButton::clicked, this, [this] { leave(); });
    connect(StoffOK, &QPushButton::clicked, this, [this] { confirm(); });
}

void frmQStoffWahl::open(mdiQUOM& frame) {
    if (!fulfilled(frame.session(), Needs::database)) {
        frame.bench().tell(no_database());
        return;
    }
    auto* window = frame.find_or_make<frmQStoffWahl>();
    window->show_database();
    frame.open_child(window);
    window->NameCombo->setFocus();
    window->NameCombo->lineEdit()->selectAll();
    const std::string fault = substance_names(frame.session()).fault;
    if (fault != std::exchange(window->told_fault_, fault) && !fault.empty())
        frame.bench().tell(synonym_file_message(fault));
}

void frmQStoffWahl::show_database() {
    Session& s = frame_.session();
    if (s.names && !s.names->fault.empty()) s.names.reset();  // the file may have been mended
    index_at_opening_ = s.StoffIndex;
    setWindowTitle(QString::fromStdString(substance_caption(s.database)));
    txtDatenbank->show_text(QString::fromStdString(name_part(s.database.path)));
    show_rows({});
    const int active = s.document.substance.StoffIndexAktiv;
    mark_row(std::max(1, active));
}

void frmQStoffWahl::show_rows(const std::string& text) {
    Session& s = frame_.session();
    const NameIndex& names = substance_names(s).index;
    rows_->show(search_substances(s.database, names, s.document.options.Englisch, text));
    lblFound->setText(QString::fromStdString(rows_->search().count));
    notice->show_text(QString::fromStdString(rows_->search().notice));
}

void frmQStoffWahl::search(const std::string& text) {
    const QScopedValueRollback typing(typing_, true);
    const int before = frame_.session().StoffIndex;
    show_rows(text);
    if (!rows_->search().filtered) return mark_row(std::max(1, before));
    StoffListe->scrollToTop();
    mark(rows_->search().sure ? rows_->index(0) : QModelIndex());
}

void frmQStoffWahl::mark_row(int index) {
    if (rows_->search().filtered) show_rows({});
    mark(rows_->at_index(index));
}

void frmQStoffWahl::mark_first() {
    const QScopedValueRollback typing(typing_, true);
    if (rows_->rowCount() > 0) mark(rows_->index(0));
}

void frmQStoffWahl::mark(const QModelIndex& at) {
    const bool same = at == StoffListe->currentIndex();
    StoffListe->setCurrentIndex(at);
    if (at.isValid()) StoffListe->scrollTo(at);
    if (same) row_marked(at);  // nobody else tells
}

void frmQStoffWahl::row_marked(const QModelIndex& at) {
    const int index = rows_->index_of(at);
    frame_.bench().session.StoffIndex = index;
    show_substance(index);
    StoffOK->setEnabled(index > 0);
    cmdSynonyme->setEnabled(index > 0);
}

void frmQStoffWahl::show_substance(int index) {
    const SubstanceBoxes boxes = substance_boxes(frame_.session().database, index);
    tex4->show_text(QString::fromStdString(boxes.tex4));
    Text2->show_text(QString::fromStdString(boxes.Text2));
    Text2->setVisible(boxes.has_structure);
    const SubstanceRemarks remarks = substance_remarks(frame_.session(), index);
    lblMarks->setText(QString::fromStdString(remarks.line));
    lblMarks->setToolTip(QString::fromStdString(remarks.sentences));
    if (!typing_) write_name(boxes.NameCombo);
    Text1->setText(QString::fromStdString(boxes.Text1));
}

void frmQStoffWahl::write_name(const std::string& name) {
    const QScopedValueRollback writing(writing_, true);
    NameCombo->setEditText(QString::fromStdString(name));
}

// The marked row is taken; a guess is marked first, so that it is seen before it is taken.
void frmQStoffWahl::enter_name() {
    if (StoffListe->currentIndex().isValid())
        confirm();
    else
        mark_first();
}

void frmQStoffWahl::go_to_list() {
    if (!StoffListe->currentIndex().isValid()) mark_first();
    StoffListe->setFocus();
}

void frmQStoffWahl::type_system_no() {
    const SystemNoEntry entry =
        enter_system_no(frame_.session().database, Text1->text().toStdString(), frame_.session().StoffIndex);
    if (entry.clear) {
        QApplication::beep();
        Text1->clear();
    } else if (entry.found) {
        const QString typed = Text1->text();
        mark_row(entry.index);
        Text1->setText(typed);
    }
}

void frmQStoffWahl::remember(int index) {
    memory_->add(substance_boxes(frame_.session().database, index).NameCombo);
    const QScopedValueRollback writing(writing_, true);
    const QString shown = NameCombo->currentText();
    NameCombo->clear();
    for (const std::string& name : memory_->names()) NameCombo->addItem(QString::fromStdString(name));
    NameCombo->setEditText(shown);
}

void frmQStoffWahl::confirm() {
    const int index = rows_->index_of(StoffListe->currentIndex());
    if (index < 1) return;
    if (rows_->search().filtered) remember(index);
    take_substance(frame_, index);
}

void frmQStoffWahl::leave() {
    frame_.bench().session.StoffIndex = index_at_opening_;
    frame_.hide_child(this);
}

bool frmQStoffWahl::eventFilter(QObject* watched, QEvent* event) {
    // A name that was not typed gives way to what is typed next, also after a click into the box.
    QLineEdit* name = NameCombo->lineEdit();
    if (watched == name && event->type() == QEvent::MouseButtonRelease && !name->isModified() &&
        !name->hasSelectedText())
        name->selectAll();
    if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool enter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
    if (watched == StoffListe) {
        if (enter) confirm();
        return enter;
    }
    // Keys of the name: they come to the box or to its line edit, whichever has the focus. Escape goes from
    // the name to the list, and from the list out of the window; Alt+Down opens the names looked up last.
    if (enter) {
        enter_name();
        return true;
    }
    const bool down = key->key() == Qt::Key_Down && !(key->modifiers() & Qt::AltModifier);
    if (down || key->key() == Qt::Key_Escape) {
        go_to_list();
        return true;
    }
    return false;
}

}  // namespace quom
