#include "ui/widgets/result_list.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QSyntaxHighlighter>
#include <QTextBlock>
#include <QTextDocument>

#include "ui/look/look.h"

namespace quom {

namespace {

bool is_ruler(const QString& line) {
    const QString text = line.trimmed();
    if (text.size() < 8) return false;
    for (const QChar c : text)
        if (!QStringLiteral("*=-_").contains(c)) return false;
    return true;
}

// A line before a ruler is a head, but not every one: between rulers of "*" stands a head, before the upper
// one a value; and rulers of "-" stand around values.
bool is_head(const QTextBlock& line) {
    const QString below = line.next().text();
    if (!is_ruler(below)) return false;
    const QChar kind = below.trimmed().front();
    if (kind == QLatin1Char('*')) return is_ruler(line.previous().text());
    return kind == QLatin1Char('=') || !line.text().contains(QLatin1Char('='));
}

}  // namespace

// Rulers and heads in their own colours.
class ResultList::Heads : public QSyntaxHighlighter {
 public:
    using QSyntaxHighlighter::QSyntaxHighlighter;
    bool off = false;

 protected:
    void highlightBlock(const QString& text) override {
        if (off || text.trimmed().isEmpty()) return;
        QTextCharFormat format;
        if (is_ruler(text)) {
            format.setForeground(look_colour(LookColour::Ruler));
        } else if (is_head(currentBlock())) {
            format.setForeground(look_colour(LookColour::SectionHead));
            format.setFontWeight(QFont::Bold);
        } else {
            return;
        }
        setFormat(0, static_cast<int>(text.size()), format);
    }
};

ResultList::ResultList(QWidget* parent) : QPlainTextEdit(parent), heads_(new Heads(document())) {
    setReadOnly(true);
    setLineWrapMode(NoWrap);
    setFont(fixed_font());
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setTabChangesFocus(true);
    document()->setDocumentMargin(8);
    setMinimumWidth(text_width(*this, 76) + 30);
    take_colours();
}

void ResultList::show_text(const std::string& text, bool fault) {
    fault_ = fault;
    heads_->off = fault || stale_;
    take_colours();
    setPlainText(QString::fromStdString(text));
}

void ResultList::set_stale(bool stale) {
    if (stale == stale_) return;
    stale_ = stale;
    heads_->off = fault_ || stale_;
    take_colours();
    heads_->rehighlight();
}

QSize ResultList::sizeHint() const {
    return {text_width(*this, 76) + 30, fontMetrics().lineSpacing() * lines_ + 20};
}

void ResultList::set_lines(int lines) {
    lines_ = lines;
    updateGeometry();
}

void ResultList::changeEvent(QEvent* event) {
    QPlainTextEdit::changeEvent(event);
    if (event->type() != QEvent::ApplicationPaletteChange) return;
    take_colours();
    heads_->rehighlight();
}

void ResultList::contextMenuEvent(QContextMenuEvent* event) {
    QMenu menu(this);
    QAction* copy = menu.addAction(QStringLiteral("copy"), this, &QPlainTextEdit::copy);
    copy->setShortcut(QKeySequence::Copy);
    copy->setEnabled(textCursor().hasSelection());
    menu.addAction(QStringLiteral("copy all"), this,
                   [this] { QApplication::clipboard()->setText(toPlainText()); });
    menu.exec(event->globalPos());
}

void ResultList::take_colours() {
    QPalette palette;
    palette.setColor(QPalette::Base, look_colour(LookColour::ResultGround));
    palette.setColor(QPalette::Text, stale_ ? look_colour(LookColour::Hint)
                                            : shown_text_colour(fault_ ? QColor(128, 0, 0) : Qt::black));
    setPalette(palette);
}

}  // namespace quom
