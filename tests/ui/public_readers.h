// Pictures as other programs see them: SVG read as XML, other formats after a public converter.
#pragma once
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <map>

namespace quom::test {

// How often each element occurs, and all texts in their order.
struct Svg {
    std::map<QString, int> elements;
    QStringList texts;
    int open_paths = 0;  // without an area
};
Svg read_svg(const QByteArray& bytes);

// The file read by a public program, as SVG; empty where the program is not installed.
QByteArray converted(const char* program, const QByteArray& bytes, const QStringList& arguments);

}  // namespace quom::test
