#include "ui/windows/help_window.h"

#include <QDir>
#include <QFile>
#include <QPushButton>
#include <QTextBlock>
#include <QTextBrowser>
#include <QVBoxLayout>

#include "ui/look/look.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/window_keys.h"

namespace quom {

namespace {

const QString Folder = QStringLiteral(":/help");

int topic_of(const QString& file) { return file.section(QLatin1Char('-'), 0, 0).toInt(); }

QString read_page(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString index_page() {
    QStringList files = QDir(Folder).entryList({QStringLiteral("*.md")});
    std::sort(files.begin(), files.end(),
              [](const QString& a, const QString& b) { return topic_of(a) < topic_of(b); });
    QString text = QStringLiteral("# Index of the help pages\n\n");
    for (const QString& file : files) {
        const QString head = read_page(Folder + QLatin1Char('/') + file).section(QLatin1Char('\n'), 0, 0);
        text += QStringLiteral("- [%1](topic:%2)\n").arg(head.mid(2).trimmed()).arg(topic_of(file));
    }
    return text;
}

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

}  // namespace

QString help_page(int topic) {
    const QStringList files = QDir(Folder).entryList({QStringLiteral("%1-*.md").arg(topic)});
    return files.isEmpty() ? QString() : Folder + QLatin1Char('/') + files.front();
}

HelpWindow::HelpWindow(QWidget* parent) : QWidget(parent, Qt::Window), browser(new QTextBrowser(this)) {
    setObjectName(QStringLiteral("help_window"));
    setWindowTitle(QStringLiteral("QUOM-6 Help"));
    named(browser, "browser", QStringLiteral("Help page"));
    browser->setOpenLinks(false);
    browser->document()->setDocumentMargin(14);
    connect(browser, &QTextBrowser::anchorClicked, this,
            [this](const QUrl& url) { show_topic(url.path().toInt()); });
    auto* index = named(new QPushButton(QStringLiteral("&Index"), this), "cmdIndex", QStringLiteral("Index"));
    connect(index, &QPushButton::clicked, this, [this] { show_topic(0); });
    auto* close =
        named(new QPushButton(QStringLiteral("Close <Esc>"), this), "cmdClose", QStringLiteral("Close"));
    connect(close, &QPushButton::clicked, this, &QWidget::close);
    new WindowKeys(this);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(index);
    buttons->addStretch();
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(browser, 1);
    layout->addLayout(buttons);
    resize(720, 560);
}

void HelpWindow::show_topic(int topic) {
    const QString page = topic > 0 ? help_page(topic) : QString();
    browser->setMarkdown(page.isEmpty() ? index_page() : read_page(page));
    lay_out(browser->document());
    browser->moveCursor(QTextCursor::Start);
    show();
    raise();
    activateWindow();
    browser->setFocus();
}

}  // namespace quom
