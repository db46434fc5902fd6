#include "ui/windows/frmQStoffWahl.h"

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QScrollBar>
#include <QSortFilterProxyModel>
#include <QVBoxLayout>
#include <utility>

#include "base/code_page.h"
#include "base/files.h"
#include "forms/shell.h"
#include "forms/substance_form.h"
#include "substance/database.h"
#include "substance/search.h"
#include "substance/synonyms.h"
#include "ui/look/look.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/menu_actions.h"
#include "ui/main/workbench.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/number_box.h"
#include "ui/widgets/value_box.h"
#include "ui/windows/frmQTextEdit.h"

namespace quom {

namespace {

// The lines of the list, read from the tables of the database in force.
class SubstanceLines : public QAbstractListModel {
 public:
    explicit SubstanceLines(const Session& session) : session_(session) {}
    void reload() {
        beginResetModel();
        endResetModel();
    }
    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : session_.database.StoffAnzahl();
    }
    QVariant data(const QModelIndex& at, int role) const override {
        if (!at.isValid()) return {};
        if (role == Qt::SizeHintRole) return QSize(0, QFontMetrics(fixed_font()).height() + 4);
        if (role != Qt::DisplayRole) return {};
        const std::string line = substance_list_line(at.row() + 1, row(at.row()));
        return QString::fromStdString(std::string(trim_right(line)));
    }
    const SubstanceRow& row(int i) const { return session_.database.rows[static_cast<std::size_t>(i)]; }

 private:
    const Session& session_;
};

}  // namespace

// Shows the lines that what is being typed is found in, best first; all of them while nothing is typed or
// found.
class SubstanceFilter : public QSortFilterProxyModel {
 public:
    explicit SubstanceFilter(const Session& session) : session_(session), lines_(session) {
        setSourceModel(&lines_);
    }
    // Takes the names of the database in force; returns what is wrong with the file of synonyms.
    std::string reload() {
        SynonymFileBytes synonyms = read_synonym_file(session_.ProgramPath);
        names_ = NameIndex(session_.database, synonyms.bytes);
        place_.clear();
        lines_.reload();
        set_text({});
        return std::move(synonyms.fault);
    }
    void set_text(const std::string& text) {
        place_.clear();
        int shown = 0;
        for (const int index : filtered_rows(names_, text)) {
            place_.resize(static_cast<std::size_t>(session_.database.StoffAnzahl()));
            place_[static_cast<std::size_t>(index) - 1] = ++shown;
        }
        invalidate();
        sort(is_filtered() ? 0 : -1);
    }
    int index_of(const QModelIndex& at) const { return at.isValid() ? mapToSource(at).row() + 1 : 0; }
    QModelIndex at_index(int index) const { return mapFromSource(lines_.index(index - 1)); }
    bool is_filtered() const { return !place_.empty(); }
    const NameIndex& names() const { return names_; }

 protected:
    bool filterAcceptsRow(int row, const QModelIndex&) const override {
        return !is_filtered() || place(row) != 0;
    }
    bool lessThan(const QModelIndex& a, const QModelIndex& b) const override {
        return place(a.row()) < place(b.row());
    }

 private:
    int place(int row) const {
        const auto at = static_cast<std::size_t>(row);
        return at < place_.size() ? place_[at] : 0;
    }
    const Session& session_;
    SubstanceLines lines_;
    NameIndex names_;
    std::vector<int>
        place_;  // of each row in the list shown, from 1; 0: not shown; empty: all in their order
};

frmQStoffWahl::frmQStoffWahl(mdiQUOM& frame)
    : NameCombo(named(new QComboBox(this), "NameCombo")),
      StoffListe(named(new QListView(this), "StoffListe", QStringLiteral("List of substances"))),
      Text1(named(new NumberBox(5, this), "Text1")),
      tex4(named(new ValueBox(this, 22), "tex4", QStringLiteral("CAS-RN"))),
      Text2(named(new ValueBox(this), "Text2", QStringLiteral("structure"))),
      lblMarks(named(hint_label({}, this), "lblMarks")),
      txtDatenbank(named(new ValueBox(this), "txtDatenbank")),
      cmdSynonyme(named(new QPushButton(QStringLiteral("List of synonyms for this substance"), this),
                        "cmdSynonyme", QStringLiteral("List of synonyms for this substance"))),
      ESC(named(new QPushButton(QStringLiteral("Cancel <Esc>"), this), "ESC", QStringLiteral("Cancel"))),
      StoffOK(named(new TrimmedButton(QStringLiteral(" Continue >\nLoad data"), this), "StoffOK",
                    QStringLiteral("Continue, load data"))),
      frame_(frame),
      rows_(std::make_unique<SubstanceFilter>(frame.session())),
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
    StoffListe->setModel(rows_.get());
    StoffListe->setMinimumHeight(160);
    StoffListe->setTabKeyNavigation(false);
    StoffListe->installEventFilter(this);
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
    layout->addWidget(header);
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
    connect(NameCombo->lineEdit(), &QLineEdit::textEdited, this,
            [this](const QString& text) { filter(text.toStdString()); });
    connect(NameCombo, &QComboBox::textActivated, this, [this] { filter({}); });
    connect(Text1, &QLineEdit::textEdited, this, [this] { type_system_no(); });
    connect(cmdSynonyme, &QPushButton::clicked, this, [this] {
        const Session& s = frame_.session();
        const std::string casrn = read_substance_head(s.database, s.StoffIndex).CASRN;
        const SynonymList list = ShowSynonyms(s.ProgramPath, casrn);
        if (list.err && list.message) frame_.bench().tell(*list.message);
        if (!list.head.empty())
            frmQTextEdit::open(frame_, QStringLiteral(" List of synonyms"), list.head, list.synonyms);
    });
    connect(ESC, &QPushButton::clicked, this, [this] { leave(); });
    connect(StoffOK, &QPushButton::clicked, this, [this] { confirm(); });
}

void frmQStoffWahl::open(mdiQUOM& frame) {
    if (!fulfilled(frame.session(), Needs::database)) {
        frame.bench().tell(no_database());
        return;
    }
    auto* window = frame.child<frmQStoffWahl>();
    const bool is_new = window == nullptr;
    if (is_new) window = new frmQStoffWahl(frame);
    window->show_database();
    if (is_new)
        frame.open_child(window, {680, 560}, Sizing::free);
    else
        frame.show_child(window);
    window->NameCombo->setFocus();
    window->NameCombo->lineEdit()->selectAll();
    if (const std::string fault = std::exchange(window->fault_to_tell_, {}); !fault.empty())
        frame.bench().tell(synonym_file_message(fault));
}

void frmQStoffWahl::show_database() {
    const Session& s = frame_.session();
    index_at_opening_ = s.StoffIndex;
    setWindowTitle(QString::fromStdString(substance_caption(s.database)));
    txtDatenbank->show_text(QString::fromStdString(name_part(s.database.path)));
    std::string fault = rows_->reload();
    if (fault != synonym_fault_) fault_to_tell_ = fault;
    synonym_fault_ = std::move(fault);
    const int active = s.document.substance.StoffIndexAktiv;
    mark_row(active > 0 ? active : 1);
}

void frmQStoffWahl::filter(const std::string& text) {
    filtering_ = true;
    rows_->set_text(text);
    StoffListe->setCurrentIndex(rows_->at_index(frame_.session().StoffIndex));
    filtering_ = false;
}

void frmQStoffWahl::mark_row(int index) {
    if (rows_->is_filtered()) filter({});
    const QModelIndex at = rows_->at_index(index);
    StoffListe->setCurrentIndex(at);
    StoffListe->scrollTo(at);
    row_marked(at);  // also when the row was marked before
}

void frmQStoffWahl::row_marked(const QModelIndex& at) {
    const int index = rows_->index_of(at);
    if (index == 0 || filtering_) return;  // the choice stays when the filter hides its row
    frame_.bench().session.StoffIndex = index;
    show_substance(index);
}

void frmQStoffWahl::show_substance(int index) {
    const SubstanceBoxes boxes = substance_boxes(frame_.session().database, index);
    tex4->show_text(QString::fromStdString(boxes.tex4));
    Text2->show_text(QString::fromStdString(boxes.Text2));
    Text2->setVisible(boxes.has_structure);
    const SubstanceRemarks remarks = substance_remarks(frame_.session(), index);
    lblMarks->setText(QString::fromStdString(remarks.line));
    lblMarks->setToolTip(QString::fromStdString(remarks.sentences));
    NameCombo->setEditText(QString::fromStdString(boxes.NameCombo));
    Text1->setText(QString::fromStdString(boxes.Text1));
}

bool frmQStoffWahl::look_up() {
    const SubstanceHit hit = look_up_substance(
        frame_.session(), rows_->names(), NameCombo->currentText().toStdString(), frame_.bench().messages());
    mark_row(hit.index > 0 ? hit.index : 1);
    return hit.found;
}

void frmQStoffWahl::enter_name() {
    const int before = frame_.session().StoffIndex;
    if (!look_up()) return;
    if (frame_.session().StoffIndex == before) return confirm();
    memory_->add(NameCombo->currentText().toStdString());
    const QString shown = NameCombo->currentText();
    NameCombo->clear();
    for (const std::string& name : memory_->names()) NameCombo->addItem(QString::fromStdString(name));
    NameCombo->setEditText(shown);
    NameCombo->setFocus();
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

void frmQStoffWahl::confirm() {
    if (!NameCombo->currentText().trimmed().isEmpty() && !look_up()) return;
    take_substance(frame_, frame_.session().StoffIndex);
}

void frmQStoffWahl::leave() {
    frame_.bench().session.StoffIndex = index_at_opening_;
    frame_.hide_child(this);
}

bool frmQStoffWahl::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (watched == StoffListe) {
        if (!enter) return false;
        confirm();
        return true;
    }
    if (enter) {
        if (watched == NameCombo->lineEdit()) enter_name();
        return true;
    }
    // Escape goes from the name to the list, and from the list out of the window.
    if (key == Qt::Key_Escape || (key == Qt::Key_Down && rows_->is_filtered())) {
        StoffListe->setFocus();
        return true;
    }
    return false;
}

}  // namespace quom
