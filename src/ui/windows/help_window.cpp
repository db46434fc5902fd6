#include "ui/windows/help_window.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QStyledItemDelegate>
#include <QTextBlock>
#include <QTextBrowser>
#include <QVBoxLayout>

#include "ui/look/look.h"
#include "ui/look/svg_icons.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/window_keys.h"

namespace quom {

namespace {

constexpr std::size_t LongestHistory = 100;
constexpr int RowsShown = 6;

// Heads a little larger than the text, formulas in the fixed font, room between the paragraphs.
void lay_out(QTextDocument* document) {
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        QTextCursor cursor(block);
        QTextBlockFormat paragraph = block.blockFormat();
        paragraph.setBottomMargin(block.textList() ? 3 : 8);
        cursor.setBlockFormat(paragraph);
        cursor.select(QTextCursor::BlockUnderCursor);
        QTextCharFormat letters;
        if (paragraph.headingLevel() > 0) {
            letters.setFont(head_font(), QTextCharFormat::FontPropertiesAll);
            letters.setFontPointSize(head_font().pointSizeF() * 1.4);
            cursor.setCharFormat(letters);
        } else if (paragraph.hasProperty(QTextFormat::BlockCodeFence) ||
                   block.charFormat().fontFixedPitch()) {
            letters.setFont(fixed_font());
            cursor.setCharFormat(letters);
        }
    }
}

// Title of the page, and below it the line that was found.
class HitRow : public QStyledItemDelegate {
 public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const override {
        return {100, QFontMetrics(head_font()).height() + option.fontMetrics.height() + 8};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& given, const QModelIndex& at) const override {
        QStyleOptionViewItem option = given;
        initStyleOption(&option, at);
        const QString text = option.text;
        option.text.clear();
        option.widget->style()->drawControl(QStyle::CE_ItemViewItem, &option, painter, option.widget);
        const bool marked = option.state & QStyle::State_Selected;
        const auto group = option.state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
        const QRect lines = option.rect.adjusted(8, 4, -8, -4);
        const auto draw = [&](const QFont& font, const QString& words, Qt::Alignment side,
                              QPalette::ColorRole plain) {
            painter->setFont(font);
            painter->setPen(option.palette.color(group, marked ? QPalette::HighlightedText : plain));
            painter->drawText(lines, int(side) | Qt::TextSingleLine,
                              QFontMetrics(font).elidedText(words, Qt::ElideRight, lines.width()));
        };
        painter->save();
        draw(head_font(), text.section(QLatin1Char('\n'), 0, 0), Qt::AlignTop, QPalette::Text);
        draw(option.font, text.section(QLatin1Char('\n'), 1), Qt::AlignBottom, QPalette::PlaceholderText);
        painter->restore();
    }
};

QPushButton* button(const char* name, const char* caption, QWidget* parent) {
    return named(new QPushButton(QLatin1String(caption), parent), name, QLatin1String(caption));
}

}  // namespace

HelpWindow::HelpWindow(QWidget* parent)
    : QWidget(parent, Qt::Window),
      cmdBack(button("cmdBack", "&Back", this)),
      cmdForward(button("cmdForward", "&Forward", this)),
      cmdIndex(button("cmdIndex", "&Index", this)),
      txtSearch(named(new QLineEdit(this), "txtSearch")),
      lblFound(named(hint_label({}, this), "lblFound")),
      lstFound(named(new QListWidget(this), "lstFound", QStringLiteral("Pages found"))),
      browser(named(new QTextBrowser(this), "browser", QStringLiteral("Help page"))),
      cmdClose(button("cmdClose", "Close <Esc>", this)),
      pages_(help_pages()) {
    setObjectName(QStringLiteral("help_window"));
    setWindowTitle(QStringLiteral("QUOM-6 Help"));
    browser->setOpenLinks(false);
    browser->document()->setDocumentMargin(14);
    browser->document()->setUndoRedoEnabled(false);
    txtSearch->setPlaceholderText(QStringLiteral("in all pages"));
    txtSearch->setClearButtonEnabled(true);
    lstFound->setItemDelegate(new HitRow(lstFound));
    lstFound->setUniformItemSizes(true);
    lstFound->setAlternatingRowColors(true);
    lstFound->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    lstFound->hide();
    lblFound->setWordWrap(false);
    cmdBack->setToolTip(QStringLiteral("Alt+Left"));
    cmdForward->setToolTip(QStringLiteral("Alt+Right"));
    build_layout();
    connect_controls();
    new WindowKeys(this);
    resize(760, 600);
}

void HelpWindow::build_layout() {
    auto* caption = new QLabel(QStringLiteral("&Search"), this);
    caption_for(caption, txtSearch, QStringLiteral("in all pages"));
    auto* top = new QHBoxLayout;
    for (QPushButton* b : {cmdBack, cmdForward, cmdIndex}) top->addWidget(b);
    top->addSpacing(10);
    top->addWidget(caption);
    top->addWidget(txtSearch, 1);
    top->addWidget(lblFound);
    auto* bottom = new QHBoxLayout;
    bottom->addStretch();
    bottom->addWidget(cmdClose);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(lstFound);
    layout->addWidget(browser, 1);
    layout->addLayout(bottom);
    QWidget* const order[] = {cmdBack, cmdForward, cmdIndex, txtSearch, lstFound, browser, cmdClose};
    for (std::size_t i = 1; i < std::size(order); ++i) setTabOrder(order[i - 1], order[i]);
}

void HelpWindow::connect_controls() {
    connect(cmdBack, &QPushButton::clicked, this, [this] { go(-1); });
    connect(cmdForward, &QPushButton::clicked, this, [this] { go(1); });
    connect(cmdIndex, &QPushButton::clicked, this, [this] { visit(0); });
    connect(cmdClose, &QPushButton::clicked, this, &QWidget::close);
    connect(browser, &QTextBrowser::anchorClicked, this,
            [this](const QUrl& url) { visit(url.path().toInt()); });
    connect(txtSearch, &QLineEdit::textChanged, this, &HelpWindow::search);
    connect(lstFound, &QListWidget::itemClicked, this, &HelpWindow::open_hit);
    const auto key = [this](const QKeySequence& keys, auto run) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, run);
    };
    key(Qt::ALT | Qt::Key_Left, [this] { go(-1); });
    key(Qt::ALT | Qt::Key_Right, [this] { go(1); });
    key(Qt::CTRL | Qt::Key_F, [this] {
        txtSearch->setFocus();
        txtSearch->selectAll();
    });
    txtSearch->installEventFilter(this);
    lstFound->installEventFilter(this);
}

void HelpWindow::show_topic(int topic) {
    txtSearch->clear();
    visit(topic);
    show();
    raise();
    activateWindow();
    browser->setFocus();
}

void HelpWindow::load(int topic) {
    browser->setMarkdown(help_text(topic));
    lay_out(browser->document());
    browser->moveCursor(QTextCursor::Start);
    cmdBack->setEnabled(at_ > 0);
    cmdForward->setEnabled(at_ + 1 < history_.size());
}

void HelpWindow::visit(int topic) {
    if (help_page(topic).isEmpty()) topic = 0;
    if (!history_.empty()) {
        history_[at_].scroll = browser->verticalScrollBar()->value();
        history_.resize(at_ + 1);
    }
    if (history_.empty() || history_.back().topic != topic) history_.push_back({.topic = topic});
    if (history_.size() > LongestHistory) history_.erase(history_.begin());
    at_ = history_.size() - 1;
    load(topic);
}

void HelpWindow::go(int step) {
    if (step < 0 ? at_ == 0 : at_ + 1 >= history_.size()) return;
    history_[at_].scroll = browser->verticalScrollBar()->value();
    at_ = step < 0 ? at_ - 1 : at_ + 1;
    load(history_[at_].topic);
    browser->verticalScrollBar()->setValue(history_[at_].scroll);
    browser->setFocus();
}

void HelpWindow::search() {
    const QString text = txtSearch->text().simplified();
    lstFound->clear();
    for (const HelpHit& hit : search_help(pages_, text)) {
        auto* item = new QListWidgetItem(hit.title + QLatin1Char('\n') + hit.line, lstFound);
        item->setData(Qt::UserRole, hit.topic);
    }
    const int found = lstFound->count();
    lblFound->setText(
        text.isEmpty() ? QString()
        : found == 0
            ? QStringLiteral("Nothing found.")
            : QStringLiteral("%1 page%2").arg(found).arg(found == 1 ? QString() : QStringLiteral("s")));
    lstFound->setVisible(found > 0);
    if (found == 0) return;
    lstFound->setCurrentRow(0);
    lstFound->setFixedHeight(std::min(found, RowsShown) * lstFound->sizeHintForRow(0) +
                             2 * lstFound->frameWidth());
}

void HelpWindow::open_hit(const QListWidgetItem* item) {
    if (!item) return;
    visit(item->data(Qt::UserRole).toInt());
    const QString text = txtSearch->text().simplified();
    if (!browser->find(text)) browser->find(text.section(QLatin1Char(' '), 0, 0));
    browser->setFocus();
}

// In the box: Down goes into the list, Enter opens the marked page, Escape empties the box.
bool HelpWindow::search_key(int key) {
    switch (key) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            open_hit(lstFound->currentItem());
            return true;
        case Qt::Key_Down:
            if (lstFound->count() > 0) lstFound->setFocus();
            return true;
        case Qt::Key_Escape:
            if (txtSearch->text().isEmpty()) return false;
            txtSearch->clear();
            return true;
        default:
            return false;
    }
}

bool HelpWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (watched == txtSearch) return search_key(key);
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        open_hit(lstFound->currentItem());
        return true;
    }
    const bool leaves = key == Qt::Key_Escape || (key == Qt::Key_Up && lstFound->currentRow() <= 0);
    if (leaves) txtSearch->setFocus();
    return leaves;
}

}  // namespace quom
