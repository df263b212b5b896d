// A file that is worked on: what stands in it after each save, and after a crash in the middle of one.

#include "archive/unitfile.h"
#include "archive/workingfile.h"

#include <QJsonDocument>
#include <QTemporaryDir>

#include <csignal>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

const QTemporaryDir folder;
const QString path = folder.filePath("gig.kora");

TEST(WorkingFile, StaysThePartThatItWasButForWhatIsChangedBeyond)
{
    const auto parsed = [](const QByteArray &json) {
        QJsonObject object = QJsonDocument::fromJson(json).object();
        object.remove("saved");
        return object;
    };
    const QByteArray part = R"({"format":"kora-unit","version":1,"settings":{},"banks":[{"number":3,"name":"A",)"
                            R"("presets":[{"number":4,"loops":["ON","OFF","OFF","OFF","OFF","OFF"]}]},{"number":9}]})";
    archive::writeBytes(path, part);
    archive::WorkingFile file = archive::WorkingFile::open(path);
    UnitContent content = emptyContent();
    content.banks[3].name = "A";
    content.presets[3][4].loops[0] = LoopType::On;
    EXPECT_EQ(file.content(), content) << "the rest is empty";
    file.save(content);
    EXPECT_EQ(parsed(archive::readBytes(path)), parsed(part));

    content.banks[3].name = "";
    content.banks[7].wahPad1PresetNumber = 5;
    content.presets[3][6].controlChanges = {{1, 2, 3}};
    content.midiDevices[1].channel = 9;
    file.save(content);
    EXPECT_EQ(parsed(archive::readBytes(path)),
              parsed(R"({"format":"kora-unit","version":1,"settings":{},"midiDevices":[{"number":2,"channel":9}],)"
                     R"("banks":[{"number":3,"name":"","presets":[{"number":4,"loops":["ON","OFF","OFF","OFF","OFF",)"
                     R"("OFF"]},{"number":6,"controlChanges":[{"device":1,"controller":2,"value":3}]}]},)"
                     R"({"number":7,"wahPad1":{"preset":5}},{"number":9}]})"));
    archive::writeBytes(path, R"({"format":"kora-unit","version":1,"banks":[{"number":3,"name":{"bytes":"4103"}}]})");
    EXPECT_THROW(archive::WorkingFile::open(path), archive::Error) << "a unit could not send it";
}

TEST(WorkingFile, IsWholeAfterAKillInTheMiddleOfSaving)
{
    const QByteArray json = archive::toJson({emptyContent(), allRecords()}, QDateTime::currentDateTimeUtc());
    archive::writeBytes(path, json);
    for (int kill = 0; kill < 60; ++kill) {
        const pid_t saver = fork();
        if (saver == 0)
            for (;;)
                archive::writeBytes(path, json);
        usleep(5000 + static_cast<useconds_t>(kill) * 97);
        ::kill(saver, SIGKILL);
        waitpid(saver, nullptr, 0);
        ASSERT_EQ(archive::readBytes(path), json);
    }
}

}  // namespace
