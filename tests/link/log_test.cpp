#include "link/connection.h"
#include "support/outcome.h"
#include "support/scriptedport.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>

namespace {

QStringList debugOutput;

/// Collects the debug output and starts with no log file.
class TrafficLog : public testing::Test
{
protected:
    TrafficLog() { file.remove(); }
    ~TrafficLog() override
    {
        Connection::enableLog = false;
        qInstallMessageHandler(previous);
        file.remove();
        debugOutput.clear();
    }

    QString fileContent()
    {
        return file.open(QIODevice::ReadOnly) ? QString::fromLatin1(file.readAll()) : QStringLiteral("no file");
    }

    QFile file{QCoreApplication::applicationDirPath() + "/log.txt"};
    const QtMessageHandler previous =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &context, const QString &text) {
            if (qstrcmp(context.category, "default") == 0) debugOutput << text;
        });
};

}  // namespace

TEST_F(TrafficLog, HoldsWhatWasSentAndReceived)
{
    const ScriptedPort port({buildFrame("7", "0\x1D%%ss%s")});
    Connection connection(QString::fromStdString(port.location()), 2000);
    std::string answer;
    Connection::enableLog = true;
    connection << buildFrame("7", "RMI");
    connection >> answer;
    ASSERT_EQ(debugOutput.size(), 2);
    const QString moment = R"(^\[\S+ \S+ \d+ \d\d:\d\d:\d\d \d{4}\]: PC )";
    const QRegularExpression sent(moment + ">> <STX>7<FS>RMI23A7<ETX>$"),
        received(moment + "<< <STX>7<FS>0<GS>281D<ETX>$");
    EXPECT_TRUE(sent.match(debugOutput[0]).hasMatch()) << qPrintable(debugOutput[0]);
    EXPECT_TRUE(received.match(debugOutput[1]).hasMatch()) << qPrintable(debugOutput[1]);
    EXPECT_EQ(fileContent(), debugOutput[0] + "\r\n" + debugOutput[1] + "\r\n");
}

TEST_F(TrafficLog, IsEmptyWhenOffAndForWhatWasNotSent)
{
    Connection::log(Connection::FrameDirection::Received, "text");
    Connection::enableLog = true;
    const PseudoTerminal nobodyReads;
    Connection connection(QString::fromStdString(nobodyReads.location()), 100);
    EXPECT_EQ(failureOf([&] { connection << std::string(200000, 'x'); }), "Sending timeout");
    EXPECT_EQ(debugOutput, QStringList());
    EXPECT_EQ(fileContent(), "no file");
}

TEST_F(TrafficLog, DoesWithoutAFileThatCannotBeWritten)
{
    Connection::enableLog = true;
    for (const char *target : {"/dev/full", "/no/such/directory/log.txt"}) {
        ASSERT_TRUE(QFile::link(target, file.fileName()));
        Connection::log(Connection::FrameDirection::Sent, "text");
        file.remove();
    }
    ASSERT_TRUE(QDir().mkdir(file.fileName()));  // refuses the superuser too
    Connection::log(Connection::FrameDirection::Sent, "text");
    ASSERT_TRUE(QDir().rmdir(file.fileName()));
    EXPECT_EQ(debugOutput.filter("]: PC >> text").size(), 3);
}

TEST_F(TrafficLog, HoldsWholeLinesOnlyWhenTheDiskFillsUp)
{
    Connection::enableLog = true;
    const std::string longText(30000, 'x');
    Connection::log(Connection::FrameDirection::Sent, longText);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const auto previousHandler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit full{40000, before.rlim_max};  // bytes: the second line ends in its middle
    setrlimit(RLIMIT_FSIZE, &full);
    Connection::log(Connection::FrameDirection::Received, longText);
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, previousHandler);
    Connection::log(Connection::FrameDirection::Received, "after");
    ASSERT_EQ(debugOutput.size(), 3);
    EXPECT_EQ(fileContent(), debugOutput[0] + "\r\n" + debugOutput[2] + "\r\n");
}
