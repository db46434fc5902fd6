// Icons from the SVG files of the program, drawn in the colours of the theme at any size.
#pragma once
#include <QIcon>
#include <QString>

namespace quom {

// Icon of icons/<name>.svg.
QIcon svg_icon(const QString& name);

}  // namespace quom
