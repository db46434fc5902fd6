// The help pages of the program as texts: what the index, the search and the palette know of them.
#pragma once
#include <QString>
#include <QStringList>
#include <QVector>

namespace quom {

struct HelpPage {
    int topic = 0;
    QString title;
    QStringList headings;    // below the title
    QStringList paragraphs;  // plain text, without marks, one a paragraph or entry of a list
};

// File of a topic among the pages of the program (":/help/62-name.md"); empty when there is none.
QString help_page(int topic);
// Its text as it stands in the file; that of the index for topic 0, or for one without a page.
QString help_text(int topic);
// All pages by their topics.
QVector<HelpPage> help_pages();

// Where a page holds a text, in any case of letters: the title, or an excerpt of the paragraph around it.
struct HelpHit {
    int topic = 0;
    QString title, line;
};
// All pages with every word of the text, those with the whole text in their title first. Nothing for a text
// without a letter.
QVector<HelpHit> search_help(const QVector<HelpPage>& pages, const QString& text);

}  // namespace quom
