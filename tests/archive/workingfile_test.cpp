// A file that is worked on: what stands in it after each save, and after a crash in the middle of one.

#include "archive/unitfile.h"
#include "archive/workingfile.h"

#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <chrono>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

class WorkingFileTest : public testing::Test
{
protected:
    archive::WorkingFile open(const QByteArray &json) const
    {
        archive::writeBytes(path, json);
        return archive::WorkingFile::open(path);
    }

    QJsonObject members() const
    {
        QJsonObject object = QJsonDocument::fromJson(archive::readBytes(path)).object();
        object.remove("saved");
        return object;
    }

    QTemporaryDir folder;
    QString path = folder.filePath("gig.kora");
};

TEST_F(WorkingFileTest, StaysThePartThatItWasButForWhatIsChangedBeyond)
{
    const QByteArray part = R"({"format":"kora-unit","version":1,"settings":{},"banks":[{"number":3,"name":"A",)"
                            R"("presets":[{"number":4,"loops":["ON","OFF","OFF","OFF","OFF","OFF"]}]},{"number":9}]})";
    archive::WorkingFile file = open(part);
    UnitContent content = emptyContent();
    content.banks[3].name = "A";
    content.presets[3][4].loops[0] = LoopType::On;
    EXPECT_EQ(file.content(), content) << "the rest is empty";
    file.save(content);
    EXPECT_EQ(members(), QJsonDocument::fromJson(part).object());

    content.banks[3].name = "";
    content.banks[7].wahPad1PresetNumber = 5;
    content.presets[3][6].controlChanges = {{1, 2, 3}};
    content.midiDevices[1].channel = 9;
    file.save(content);
    QJsonObject expected =
        QJsonDocument::fromJson(
            R"({"format":"kora-unit","version":1,"settings":{},"midiDevices":[{"number":2,"channel":9}],"banks":[)"
            R"({"number":3,"name":"","presets":[{"number":4,"loops":["ON","OFF","OFF","OFF","OFF","OFF"]},)"
            R"({"number":6,"controlChanges":[{"device":1,"controller":2,"value":3}]}]},)"
            R"({"number":7,"wahPad1":{"preset":5}},{"number":9}]})")
            .object();
    EXPECT_EQ(members(), expected) << QJsonDocument(members()).toJson().constData();

    archive::WorkingFile whole = archive::WorkingFile::create(path);
    content = emptyContent();
    content.presets[99][9].name = "LAST";
    whole.save(content);
    EXPECT_EQ(archive::load(path).content, content);
    EXPECT_EQ(archive::load(path).records.size(), allRecords().size() - 1) << "all but the unit's identity";
}

TEST_F(WorkingFileTest, KnowsWhenAnotherProgramHasChangedIt)
{
    archive::WorkingFile file = archive::WorkingFile::create(path);
    EXPECT_FALSE(file.isChangedByOthers());
    archive::save(path, {emptyContent(), recordsOfBank(1)});
    EXPECT_TRUE(file.isChangedByOthers());
    const QString elsewhere = folder.filePath("other.kora");
    EXPECT_THROW(file.saveAs(folder.filePath("none/other.kora"), file.content()), archive::Error);
    EXPECT_EQ(file.path(), path);
    file.saveAs(elsewhere, file.content());
    EXPECT_FALSE(file.isChangedByOthers());
    EXPECT_EQ(file.path(), elsewhere);
    QFile::remove(elsewhere);
    EXPECT_FALSE(file.isChangedByOthers()) << "nothing would be lost";
    EXPECT_THROW(open(R"({"format":"kora-unit","version":1,"banks":[{"number":3,"name":{"bytes":"4103"}}]})"),
                 archive::Error)
        << "a unit could not send it";
}

TEST_F(WorkingFileTest, IsWholeAfterAKillInTheMiddleOfSaving)
{
    const QByteArray json = archive::toJson({emptyContent(), allRecords()}, QDateTime::currentDateTimeUtc());
    archive::writeBytes(path, json);
    for (int kill = 0; kill < 60; ++kill) {
        int saves[2];
        ASSERT_EQ(pipe(saves), 0);
        const pid_t saver = fork();
        while (saver == 0) {
            archive::writeBytes(path, json);
            if (write(saves[1], "", 1) != 1) _exit(1);
        }
        char first = 0;
        EXPECT_EQ(read(saves[0], &first, 1), 1);
        std::this_thread::sleep_for(std::chrono::microseconds(kill * 97));
        ::kill(saver, SIGKILL);
        waitpid(saver, nullptr, 0);
        close(saves[0]);
        close(saves[1]);
        ASSERT_EQ(archive::readBytes(path), json);
    }
}

}  // namespace
