// The small file of the windows: kept over two programs; a broken one means defaults.
#include "ui/main/ui_memory.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace quom {
namespace {

TEST(UiMemory, KeepsValuesInItsFileAndOtherwiseOnlyWhileItLives) {
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("deep/er/workbench.ini"));
    const QString key = QStringLiteral("result/digits");
    {
        UiMemory memory(file);
        EXPECT_EQ(memory.value(key, 7).toInt(), 7);
        memory.set(key, 10);
    }
    EXPECT_EQ(UiMemory(file).value(key, 7).toInt(), 10);
    UiMemory unwritten;
    unwritten.set(key, 15);
    EXPECT_EQ(unwritten.value(key).toInt(), 15);
    EXPECT_EQ(UiMemory().value(key, 7).toInt(), 7);
}

TEST(UiMemory, AForeignFileMeansDefaults) {
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("workbench.ini"));
    for (const char* text : {"version=999\n[result]\ndigits=10\n", "\xff\xfe garbage [[[", ""}) {
        QFile written(file);
        ASSERT_TRUE(written.open(QIODevice::WriteOnly));
        written.write(text);
        written.close();
        EXPECT_EQ(UiMemory(file).value(QStringLiteral("result/digits"), 7).toInt(), 7) << text;
    }
}

}  // namespace
}  // namespace quom
