// Reads back what vector files hold: a reader of records for tests, written from the published record
// formats.
#pragma once
#include <gtest/gtest.h>

#include <QByteArray>
#include <QColor>
#include <QPoint>
#include <QRect>
#include <QString>
#include <map>
#include <vector>

namespace quom::test {

struct ReadPen {
    int style = 0;  // PS_SOLID 0, PS_DASH 1, PS_DOT 2, PS_DASHDOT 3, PS_DASHDOTDOT 4, PS_NULL 5
    int width = 0;
    QColor color;
};
struct ReadBrush {
    int style = 0;  // BS_SOLID 0, BS_NULL 1, BS_HATCHED 2
    QColor color;
};
struct ReadFont {
    int height = 0, tenths = 0, weight = 0;
    QString family;
};
struct ReadLine {
    std::vector<QPoint> points;
    ReadPen pen;
    QRect clip;  // invalid without one
};
struct ReadArea {
    std::vector<std::vector<QPoint>> polygons;
    ReadPen pen;
    ReadBrush brush;
    int fill_mode = 0;  // ALTERNATE 1, WINDING 2
};
struct ReadText {
    QPoint at;
    QString text;  // of WMF: one character a byte
    ReadFont font;
    QColor color;
    std::vector<int> advances;
};

// Everything a metafile draws, with the objects that were selected when it was drawn.
struct Metafile {
    QSize window, viewport;
    std::vector<ReadLine> lines;
    std::vector<ReadArea> areas;
    std::vector<ReadArea> ellipses;  // of two corners
    std::vector<ReadText> texts;
    std::vector<QRect> clips, images;
    int path_clips = 0, most_alive = 0;
    std::vector<QString> text_list() const;
};

// Test failures where sizes, counts or handles of the file do not agree with its header.
Metafile read_emf(const QByteArray& bytes);
Metafile read_wmf(const QByteArray& bytes);

}  // namespace quom::test
