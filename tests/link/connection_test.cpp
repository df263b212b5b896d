#include "link/connection.h"
#include "simulator/unitport.h"
#include "support/outcome.h"
#include "support/scriptedport.h"

#include <QThread>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

using namespace std::string_literals;

namespace {

constexpr unsigned int timeout = 200;  // ms
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
    EXPECT_EQ(failureOf([&] { answerOn(connection); }), timedOut);
}

TEST(Connection, WaitsForEachByteNotForTheWholeAnswer)
{
    UnitPort unit;
    unit.queueFault(Fault::slowBytes(std::chrono::milliseconds(20)));
    Connection connection = connectionTo(unit.location());
    EXPECT_GT(millisecondsOf([&] { EXPECT_TRUE(answerOn(connection).ends_with('\x03')); }), 2 * timeout);
}

TEST(Connection, LetsNoiseComeSlowly)
{
    const PseudoTerminal line;
    Connection connection = connectionTo(line.location());
    connection.openConnection();
    const std::jthread talker([&line] {
        for (const char byte : "#~#~#~#~#~#~\x02\x31\x03"s) {
            std::this_thread::sleep_for(std::chrono::milliseconds(30));
            EXPECT_EQ(::write(line.master(), &byte, 1), 1);
        }
    });
    EXPECT_EQ(connection.getFrameFromStream(), "\x02\x31\x03");
}

// Whatever goes wrong, the port is closed afterwards: the next exchange opens it again.
TEST(Connection, GivesUpAfterOneTimeoutAndClosesThePort)
{
    for (const char *fault : {"silence", "cut", "endless"}) {
        UnitPort unit;
        unit.queueFault(*Fault::named(fault));
        Connection connection = connectionTo(unit.location());
        const auto waited = millisecondsOf([&] { EXPECT_EQ(failureOf([&] { answerOn(connection); }), timedOut); });
        EXPECT_GE(waited, timeout - 5) << fault;
        EXPECT_LT(waited, 2 * timeout) << fault;
        connection.setTimeout(2000);
        const std::string answer = answerOn(connection, "\x02\x32\x1CRDI736D\x03");
        EXPECT_NE(answer.find("VIRTUAL UNIT"), std::string::npos) << fault;
    }
}

TEST(Connection, EndsAtOnceWhenAskedToStopOrUnplugged)
{
    for (const std::string fault : {"endless", "slow", "silence"}) {
        UnitPort unit;
        unit.queueFault(*Fault::named(fault));
        const std::unique_ptr<QThread> worker(QThread::create([&] {
            Connection connection = connectionTo(unit.location(), 10000);
            EXPECT_EQ(failureOf([&] { answerOn(connection); }), timedOut) << fault;
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
    const PseudoTerminal line;
    ASSERT_EQ(::write(line.master(), "\x02late\x03", 6), 6);
    Connection connection = connectionTo(line.location());
    EXPECT_EQ(failureOf([&] { answerOn(connection); }), timedOut);
}

TEST(Connection, WithoutAPortThatOpensFails)
{
    Connection absent = connectionTo("/dev/no-such-port");
    EXPECT_EQ(failureOf([&] { absent << identityRequest; }), timedOut);

    Connection portless(std::shared_ptr<QSerialPort>(), timeout);
    std::string answer;
    for (const std::string &message :
         {failureOf([&] { portless << identityRequest; }), failureOf([&] { portless >> answer; }),
          failureOf([&] { portless.getCharWithTimeout(); })})
        EXPECT_EQ(message, "Buffer hasn't been initialized");
    EXPECT_EQ(portless.getError(), 0);
}

TEST(Connection, StaysOpenAfterASendingTimeout)
{
    const PseudoTerminal nobodyReads;
    Connection connection = connectionTo(nobodyReads.location());
    const std::vector<unsigned char> tooMuch(200000, 'x');
    const auto send = [&] { connection << tooMuch; };
    EXPECT_EQ(failureOf(send), "Sending timeout");
    EXPECT_EQ(failureOf(send), timedOut);
    connection.closeConnection();
    EXPECT_EQ(failureOf(send), "Sending timeout");
}

TEST(Connection, FailsOnAPortThatAnotherOneHoldsOrThatIsForbidden)
{
    const UnitPort unit;
    Connection holder = connectionTo(unit.location());
    Connection other = connectionTo(unit.location());
    holder.openConnection();
    EXPECT_EQ(failureOf([&] { answerOn(other); }), timedOut);
    EXPECT_EQ(other.getError(), QSerialPort::PermissionError);
    holder.closeConnection();
    EXPECT_TRUE(answerOn(other).ends_with('\x03'));

    const uid_t user = ::geteuid();
    ASSERT_EQ(::chmod(unit.location().c_str(), 0), 0);
    ASSERT_EQ(::seteuid(user == 0 ? 65534 : user), 0);  // nobody: the superuser may open everything
    EXPECT_EQ(failureOf([&] { answerOn(other); }), timedOut);
    EXPECT_EQ(other.getError(), QSerialPort::PermissionError);
    ASSERT_EQ(::seteuid(user), 0);
}
