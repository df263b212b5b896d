#include "simulator/statefile.h"
#include "unit/musiciancontent.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

TEST(StateFile, RestoresEverything)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("state"));
    UnitMemory full = musicianContent();
    full.firmware.assign(1025, 0xFF);
    full.firmware[0] = 0;
    full.expressionPedal.onTheFlyMode = false;  // no file tells it, as no unit does
    for (const UnitMemory &memory : {full, UnitMemory()}) {
        saveState(file, memory);
        EXPECT_EQ(loadState(file), memory);
    }
    EXPECT_THROW(loadState(folder.filePath(QStringLiteral("none"))), std::runtime_error);
    ASSERT_TRUE(QFile::remove(file + ".firmware") && QDir().mkdir(file + ".firmware"));
    EXPECT_THROW(loadState(file), std::runtime_error) << "an image that cannot be read is not none";
    EXPECT_THROW(saveState(folder.filePath(QStringLiteral("none/state")), full), std::runtime_error);
}
