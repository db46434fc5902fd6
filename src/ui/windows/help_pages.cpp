#include "ui/windows/help_pages.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <algorithm>

namespace quom {

namespace {

const QString Folder = QStringLiteral(":/help");

int topic_of(const QString& file) { return file.section(QLatin1Char('-'), 0, 0).toInt(); }

QStringList files_by_topic() {
    QStringList files = QDir(Folder).entryList({QStringLiteral("*.md")});
    std::sort(files.begin(), files.end(),
              [](const QString& a, const QString& b) { return topic_of(a) < topic_of(b); });
    return files;
}

QString read_page(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// "[text](topic:2)" is its text; stars, back ticks and the back slash before a mark go.
QString plain(QString line) {
    const QRegularExpression link(QStringLiteral("\\[([^\\]]*)\\]\\([^)]*\\)"));
    const QRegularExpression mark(QStringLiteral("\\\\([*_`\\[\\]\\\\])|\\*\\*|[*`]"));
    line.replace(link, QStringLiteral("\\1"));
    return line.replace(mark, QStringLiteral("\\1")).simplified();
}

bool begins_paragraph(const QString& line) {
    const QRegularExpression entry(QStringLiteral("^\\s*([-*]|\\d+\\.)\\s"));
    return line.startsWith(QStringLiteral("    ")) || entry.match(line).hasMatch();
}

HelpPage page_of(const QString& file) {
    HelpPage page{.topic = topic_of(file), .title = {}, .headings = {}, .paragraphs = {}};
    bool open = false;
    for (const QString& line : read_page(Folder + QLatin1Char('/') + file).split(QLatin1Char('\n'))) {
        if (line.startsWith(QLatin1Char('#'))) {
            const QString head = plain(line.section(QLatin1Char(' '), 1));
            if (page.title.isEmpty())
                page.title = head;
            else
                page.headings << head;
            page.paragraphs << head;
            open = false;
        } else if (line.trimmed().isEmpty()) {
            open = false;
        } else if (open && !begins_paragraph(line)) {
            page.paragraphs.back() += QLatin1Char(' ') + plain(line);
        } else {
            page.paragraphs << plain(line);
            open = true;
        }
    }
    return page;
}

// The paragraph around the place, whole words, in one line.
QString excerpt(const QString& paragraph, qsizetype at) {
    constexpr qsizetype Before = 30, Length = 110;
    if (paragraph.size() <= Length) return paragraph;
    qsizetype begin = std::max<qsizetype>(0, at - Before);
    if (begin > 0) begin = paragraph.indexOf(QLatin1Char(' '), begin) + 1;
    if (begin > at) begin = at;
    qsizetype end = std::min(paragraph.size(), begin + Length);
    if (end < paragraph.size()) end = std::max(paragraph.lastIndexOf(QLatin1Char(' '), end), at);
    return (begin > 0 ? QStringLiteral("... ") : QString()) + paragraph.mid(begin, end - begin) +
           (end < paragraph.size() ? QStringLiteral(" ...") : QString());
}

}  // namespace

QString help_page(int topic) {
    const QStringList files = QDir(Folder).entryList({QStringLiteral("%1-*.md").arg(topic)});
    return files.isEmpty() ? QString() : Folder + QLatin1Char('/') + files.front();
}

QString help_text(int topic) {
    if (const QString path = topic > 0 ? help_page(topic) : QString(); !path.isEmpty())
        return read_page(path);
    QString text = QStringLiteral("# Index of the help pages\n\n");
    for (const QString& file : files_by_topic()) {
        const QString head = read_page(Folder + QLatin1Char('/') + file).section(QLatin1Char('\n'), 0, 0);
        text += QStringLiteral("- [%1](topic:%2)\n").arg(head.mid(2).trimmed()).arg(topic_of(file));
    }
    return text;
}

QVector<HelpPage> help_pages() {
    QVector<HelpPage> pages;
    for (const QString& file : files_by_topic()) pages.push_back(page_of(file));
    return pages;
}

QVector<HelpHit> search_help(const QVector<HelpPage>& pages, const QString& text) {
    const QString whole = text.simplified();
    if (whole.isEmpty()) return {};
    const QStringList words = whole.split(QLatin1Char(' '));
    QVector<HelpHit> in_title, in_text;
    for (const HelpPage& page : pages) {
        if (page.title.contains(whole, Qt::CaseInsensitive)) {
            in_title.push_back({page.topic, page.title, page.paragraphs.value(1)});
            continue;
        }
        // The paragraph with the text as it is typed, else the first with the first of its words.
        const QString all = page.paragraphs.join(QLatin1Char('\n'));
        if (!std::all_of(words.begin(), words.end(),
                         [&](const QString& word) { return all.contains(word, Qt::CaseInsensitive); }))
            continue;
        for (const QString& wanted : {whole, words.front()}) {
            const auto found =
                std::find_if(page.paragraphs.begin(), page.paragraphs.end(),
                             [&](const QString& p) { return p.contains(wanted, Qt::CaseInsensitive); });
            if (found == page.paragraphs.end()) continue;
            in_text.push_back(
                {page.topic, page.title, excerpt(*found, found->indexOf(wanted, 0, Qt::CaseInsensitive))});
            break;
        }
    }
    return in_title + in_text;
}

}  // namespace quom
