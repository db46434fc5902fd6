#include "ui/public_readers.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QXmlStreamReader>

namespace quom::test {

Svg read_svg(const QByteArray& bytes) {
    Svg svg;
    QXmlStreamReader xml(bytes);
    bool in_text = false;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement()) {
            ++svg.elements[xml.name().toString()];
            if (xml.attributes().value(QLatin1String("fill")) == QLatin1String("none")) ++svg.open_paths;
            in_text = xml.name() == QLatin1String("text");
            if (in_text) svg.texts << QString();
        } else if (xml.isEndElement()) {
            in_text = false;
        } else if (xml.isCharacters() && in_text) {
            svg.texts.back() += xml.text();
        }
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    return svg;
}

QByteArray converted(const char* program, const QByteArray& bytes, const QStringList& arguments) {
    const QString path = QStandardPaths::findExecutable(QLatin1String(program));
    if (path.isEmpty()) return {};
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("in")));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    file.close();
    QProcess process;
    process.setWorkingDirectory(folder.path());
    process.start(path, arguments);
    EXPECT_TRUE(process.waitForFinished(60000));
    const std::string said = process.readAllStandardError().toStdString();
    if (said.find("failed to load *any* font") != std::string::npos) return {};
    EXPECT_EQ(process.exitCode(), 0) << said;
    QFile result(folder.filePath(QStringLiteral("out")));
    EXPECT_TRUE(result.open(QIODevice::ReadOnly));
    return result.readAll();
}

}  // namespace quom::test
