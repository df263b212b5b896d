#include "link/connection.h"
#include "link/trafficlog.h"
#include "support/outcome.h"
#include "support/scriptedport.h"

#include <QCoreApplication>
#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>

namespace {

QStringList debugOutput;

/// Collects the debug output and starts with no log file beside the program.
class Log : public testing::Test
{
protected:
    Log() { QFile::remove(usual); }
    ~Log() override
    {
        Connection::enableLog = false;
        qInstallMessageHandler(previous);
        QFile::remove(usual);
        debugOutput.clear();
    }

    QString content(const QString &name = "log.txt") const
    {
        QFile file(QDir(folder.path()).filePath(name));
        return file.open(QIODevice::ReadOnly) ? QString::fromLatin1(file.readAll()) : QStringLiteral("no file");
    }

    const QTemporaryDir folder;
    const QString path = folder.filePath("log.txt"), usual = QCoreApplication::applicationDirPath() + "/log.txt";
    const QtMessageHandler previous =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &context, const QString &text) {
            if (qstrcmp(context.category, "default") == 0) debugOutput << text;
        });
};

}  // namespace

TEST_F(Log, TellsWhatWasSentAndReceivedWhileOn)
{
    const ScriptedPort port({buildFrame("7", "0\x1D%%ss%s")});
    const PseudoTerminal nobodyReads;
    Connection connection(QString::fromStdString(port.location()), 2000),
        stuck(QString::fromStdString(nobodyReads.location()), 100);
    std::string answer;
    Connection::log(Connection::FrameDirection::Received, "while off");
    Connection::enableLog = true;
    EXPECT_EQ(failureOf([&] { stuck << std::string(200000, 'x'); }), "Sending timeout");
    connection << buildFrame("7", "RMI");
    connection >> answer;
    ASSERT_EQ(debugOutput.size(), 2);
    const QString moment = R"(^\[\S+ \S+ \d+ \d\d:\d\d:\d\d \d{4}\]: PC )";
    const QRegularExpression sent(moment + ">> <STX>7<FS>RMI23A7<ETX>$"),
        received(moment + "<< <STX>7<FS>0<GS>281D<ETX>$");
    EXPECT_TRUE(sent.match(debugOutput[0]).hasMatch()) << qPrintable(debugOutput[0]);
    EXPECT_TRUE(received.match(debugOutput[1]).hasMatch()) << qPrintable(debugOutput[1]);
    EXPECT_EQ(content(usual), debugOutput[0] + "\r\n" + debugOutput[1] + "\r\n");
}

TEST_F(Log, GoesToTheUsersFolderWhereTheProgramsIsReadOnly)
{
    const QString users = folder.filePath("not/there/yet");
    TrafficLog log({folder.path(), users});
    ASSERT_TRUE(QDir().mkdir(path));  // refuses the superuser too
    log.write("elsewhere");
    ASSERT_TRUE(QDir().rmdir(path));
    log.write("back");
    EXPECT_EQ(content(), "back\r\n");
    EXPECT_EQ(content(users + "/log.txt"), "elsewhere\r\n");
    EXPECT_EQ(debugOutput, (QStringList{"elsewhere", "back"}));
    qputenv("XDG_DATA_HOME", "/data");
    EXPECT_EQ(TrafficLog::usualFolders(), (QStringList{QCoreApplication::applicationDirPath(), "/data/test_link"}));
}

TEST_F(Log, HasWholeLinesOnlyWhenTheDiskFillsUp)
{
    TrafficLog log({folder.path()});
    log.hold();
    log.write(std::string(30000, 'x'));
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const auto previousHandler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit full{40000, before.rlim_max};  // bytes: the second line ends in its middle
    setrlimit(RLIMIT_FSIZE, &full);
    log.write(std::string(30000, 'y'));
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, previousHandler);
    log.write("after");
    ASSERT_EQ(debugOutput.size(), 3);
    EXPECT_EQ(content(), debugOutput[0] + "\r\nafter\r\n");
}

TEST_F(Log, KeepsOneGenerationOfAFullFile)
{
    for (const bool held : {false, true}) {
        QFile::remove(path);
        TrafficLog log({folder.path()}, 12), otherEditor({folder.path()}, 12);
        if (held) log.hold();
        for (const char *line : {"longer than a file", "22", "333", "4444", "55"})
            log.write(line);
        otherEditor.write("6");
        EXPECT_EQ(content("log.1.txt"), "4444\r\n55\r\n");
        log.write("7777");
        EXPECT_EQ(content(), "6\r\n7777\r\n") << "the other editor's file is moved, held: " << held;
        for (const char *line : {"8", "9", "0"}) {
            QFile::remove(path);
            log.write(line);
        }
        if (held) log.release();
        log.write("10");
        EXPECT_EQ(content(), held ? "10\r\n" : "0\r\n10\r\n");
    }
}
