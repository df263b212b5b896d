#include "link/connection.h"
#include "link/innerline.h"
#include "simulator/unitport.h"
#include "support/outcome.h"
#include "support/scriptedport.h"

#include <QSerialPort>
#include <QThread>

#include <gtest/gtest.h>
#include <thread>
#include <unistd.h>

using namespace std::string_literals;

namespace {

// In milliseconds. A busy machine may rest for half a second; where no answer comes, there is nothing to miss.
constexpr unsigned int timeout = 1500, brief = 200;
constexpr const char *timedOut = "Receiving timeout";

const std::string identityRequest = "\x02\x31\x1CRDI7329\x03";

Connection connectionTo(const std::string &location, unsigned int milliseconds = timeout)
{
    return {QString::fromStdString(location), milliseconds};
}

std::string answerOn(Connection &connection, const std::string &request = identityRequest)
{
    std::string answer;
    connection << request;
    connection >> answer;
    return answer;
}

std::string failureOn(Connection &connection)
{
    return failureOf([&connection] { answerOn(connection); });
}

}  // namespace

TEST(Connection, CutsOneFrameOutOfWhatArrives)
{
    std::string longest = "\x02" + std::string(65533, 'x') + "\x03";
    const std::pair<std::string, std::string> cases[] = {
        {"\xFF#\x03\x1C\x02\x31\xFF\x03\x02more", "\x02\x31\xFF\x03"},
        {"noise\0001\x1C\x03"s, "1\x1C\x03"},
        {"\x02no\0end\x03"s, "\x02no"},
        {longest, longest},
    };
    for (const auto &[reply, frame] : cases) {
        const ScriptedPort port({reply});
        Connection connection = connectionTo(port.location());
        EXPECT_EQ(answerOn(connection, identityRequest + "\0never sent\x03"s), frame);
        EXPECT_EQ(port.requests(), std::vector<std::string>{"RDI"});
    }
    const ScriptedPort port({longest.insert(1, 1, 'x')});
    Connection connection = connectionTo(port.location());
    EXPECT_EQ(failureOn(connection), "The unit's answer is too long");
}

TEST(Connection, WaitsForEachByteNotForTheWholeAnswer)
{
    const PseudoTerminal line;
    Connection connection = connectionTo(line.location());
    connection.openConnection();
    const std::jthread talker([&line] {
        for (const char byte : "some noise\x02\x31\x1C the answer\x03"s) {
            std::this_thread::sleep_for(std::chrono::milliseconds(timeout / 16));
            EXPECT_EQ(::write(line.master(), &byte, 1), 1);
        }
    });
    EXPECT_EQ(connection.getFrameFromStream(), "\x02\x31\x1C the answer\x03");
}

// Whatever goes wrong, another program may have the port afterwards; a hold keeps it between exchanges only.
TEST(Connection, GivesUpAfterOneTimeoutAndClosesThePort)
{
    for (const char *fault : {"silence", "cut", "endless"}) {
        SCOPED_TRACE(fault);
        UnitPort unit;
        unit.queueFault(*Fault::named(fault), 1);
        Connection connection = connectionTo(unit.location()), other = connectionTo(unit.location());
        {
            const Connection::Hold hold = connection.hold();
            EXPECT_EQ(failureOn(connection), "");
            {
                const Connection::Hold nested = connection.hold();
            }
            EXPECT_EQ(failureOn(other), timedOut);
            EXPECT_EQ(other.getError(), QSerialPort::PermissionError);
            const auto waited = millisecondsOf([&] { EXPECT_EQ(failureOn(connection), timedOut); });
            EXPECT_GE(waited, timeout - 5);
            EXPECT_LT(waited, 2 * timeout);
            EXPECT_EQ(failureOn(other), "");
            EXPECT_EQ(failureOn(connection), "");
        }
        EXPECT_EQ(failureOn(other), "");
        const Connection::Hold hold = connection.hold();
        EXPECT_EQ(failureOn(connection), "");
        unit.unplug();
        EXPECT_EQ(failureOn(connection), timedOut);
    }
}

TEST(Connection, FindsALineWithinTheProgramWhichAnswersAtOnceOrNotAtAll)
{
    QByteArray reply, received;
    auto line = std::make_unique<InnerLine>([&](const QByteArray &bytes) {
        received = bytes;
        return reply;
    });
    const InnerLine another([](const QByteArray &) { return QByteArray(); });
    Connection connection = connectionTo(line->location().toStdString());
    reply = "noise\x02 answer\x03more";
    for (const bool isHeld : {false, true}) {
        const auto hold = isHeld ? std::make_unique<Connection::Hold>(connection) : nullptr;
        for (int i = 0; i < 2; ++i)
            EXPECT_EQ(answerOn(connection), "\x02 answer\x03");
        EXPECT_EQ(received.toStdString(), identityRequest);
    }
    const auto waited = millisecondsOf([&] {
        for (const char *const useless : {"", "noise", "\x02 answ"}) {
            reply = useless;
            EXPECT_EQ(failureOn(connection), timedOut);
        }
        reply = "\x02 answer\x03";
        EXPECT_EQ(failureOn(connection), "");
        line = nullptr;
        EXPECT_EQ(failureOn(connection), timedOut);
    });
    EXPECT_LT(waited, timeout);
    EXPECT_EQ(connection.getError(), QSerialPort::NoError);
}

TEST(Connection, EndsAtOnceWhenAskedToStopOrUnplugged)
{
    for (const std::string fault : {"endless", "slow", "silence"}) {
        UnitPort unit;
        unit.queueFault(*Fault::named(fault));
        const std::unique_ptr<QThread> worker(QThread::create([&] {
            Connection connection = connectionTo(unit.location(), 10000);
            EXPECT_EQ(failureOn(connection), timedOut) << fault;
        }));
        worker->start();
        EXPECT_FALSE(worker->wait(100)) << fault;
        if (fault == "endless")
            worker->requestInterruption();
        else
            unit.unplug();
        EXPECT_LT(millisecondsOf([&] { worker->wait(); }), 1000) << fault;
    }
}

TEST(Connection, DoesNotTakeAStaleAnswerForTheNext)
{
    const ScriptedPort port({"\x02\x31\x03\x02stale\x03", "\x02\x32\x03", ""});
    Connection connection = connectionTo(port.location());
    const Connection::Hold hold = connection.hold();
    EXPECT_EQ(answerOn(connection), "\x02\x31\x03");
    EXPECT_EQ(answerOn(connection), "\x02\x32\x03");

    const PseudoTerminal line;
    ASSERT_EQ(::write(line.master(), "\x02late\x03", 6), 6);
    Connection late = connectionTo(line.location(), brief);
    EXPECT_EQ(failureOn(late), timedOut);
}

TEST(Connection, WithoutAPortThatOpensFails)
{
    Connection absent = connectionTo("/dev/no-such-port"), portless(std::shared_ptr<QSerialPort>(), brief);
    EXPECT_EQ(failureOn(absent), timedOut);
    std::string answer;
    for (const std::string &message : {failureOn(portless), failureOf([&] { portless >> answer; }),
                                       failureOf([&] { portless.getCharWithTimeout(); })})
        EXPECT_EQ(message, "Buffer hasn't been initialized");
    EXPECT_EQ(portless.getError(), 0);
}

TEST(Connection, StaysOpenAfterASendingTimeoutExceptDuringAHold)
{
    const PseudoTerminal nobodyReads;
    Connection connection = connectionTo(nobodyReads.location(), brief),
               other = connectionTo(nobodyReads.location(), brief);
    const auto failureOfSend = [](Connection &by) { return failureOf([&by] { by << std::string(200000, 'x'); }); };
    EXPECT_EQ(failureOfSend(connection), "Sending timeout");
    EXPECT_EQ(failureOfSend(connection), timedOut);
    EXPECT_EQ(failureOfSend(other), timedOut);
    const Connection::Hold hold = connection.hold();
    EXPECT_EQ(failureOfSend(connection), "Sending timeout");
    EXPECT_EQ(failureOfSend(other), "Sending timeout");
}
