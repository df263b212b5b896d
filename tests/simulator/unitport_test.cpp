#include "simulator/unitport.h"
#include "support/frames.h"

#include <algorithm>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

const std::string readIdentity = frame("1^RDI7329");
const std::string writeName = frame("13^WBB|A0|BFIRST9DB8");
const std::string identity = frame("1^0|A|B|C0|D0|E0|F061B8");
const std::string readMidiIn = frame("9^RMIE2CE");
const std::string midiIn = frame("9^0|A255|B1|C18D94");

/// The editor's end of the line: open for one exchange at a time, as the editor does it. `patience` is how long it
/// waits for the first byte.
std::string ask(const UnitPort &port, const std::string &request, std::chrono::milliseconds patience = 2s)
{
    const Descriptor line(::open(port.location().c_str(), O_RDWR | O_NOCTTY));
    EXPECT_EQ(::write(line.get(), request.data(), request.size()), static_cast<ssize_t>(request.size()));
    std::string received;
    pollfd watched{line.get(), POLLIN, 0};
    while (received.size() < 4000 && ::poll(&watched, 1, static_cast<int>(patience.count())) > 0) {
        patience = std::min<std::chrono::milliseconds>(patience, 1s);
        char byte = 0;
        if (::read(line.get(), &byte, 1) != 1) break;
        received += byte;
        if (byte == '\x03' && received.find('\x02') != std::string::npos) break;
    }
    return received;
}

TEST(UnitPort, AnswersOverTheLineAgainAndAgain)
{
    UnitPort port{UnitMemory()};
    std::vector<std::string> seen;
    port.onExchange([&](const std::string &request, const std::string &response) { seen = {request, response}; });
    EXPECT_EQ(ask(port, readIdentity), identity);
    EXPECT_TRUE(port.takeRequests().empty());
    port.recordRequests();
    for (int i = 0; i < 10; ++i) {
        ASSERT_EQ(ask(port, readMidiIn), midiIn);
        ASSERT_EQ(ask(port, "noise\x03\x02XY" + readIdentity), identity);
    }
    EXPECT_EQ(port.takeRequests().size(), 20U);
    port.unplug();
    EXPECT_EQ(seen, (std::vector{readIdentity, identity}));
}

TEST(UnitPort, KeepsItsMemoryWhenItHangsUpOrIsUnplugged)
{
    UnitPort port{UnitMemory()};
    port.queueFault(Fault::hangUp());
    EXPECT_LT(ask(port, writeName).size(), 10U);
    EXPECT_EQ(port.location(), "");
    port.plugIn();
    EXPECT_EQ(ask(port, readMidiIn), midiIn);
    const Descriptor line(::open(port.location().c_str(), O_RDWR | O_NOCTTY));
    port.unplug();
    pollfd watched{line.get(), POLLIN, 0};
    EXPECT_EQ(::poll(&watched, 1, 1000), 1);
    EXPECT_NE(watched.revents & POLLHUP, 0);
    port.plugIn();
    port.alter([](UnitMemory &memory) { memory.deviceInfo.thirdNumber = 5; });
    EXPECT_EQ(ask(port, readIdentity), frame("1^0|A|B|C0|D0|E5|F0ADB8"));
    EXPECT_EQ(port.memory().banks[0].name, "FIRST");
}

TEST(UnitPort, SpoilsOneExchangeAndCarriesOutTheCommandIfItAnswers)
{
    const std::string written = frame("13^027F6");
    const struct
    {
        Fault fault;
        std::string received;
        Clock::duration atLeast;
        const char *name;  ///< of the bank afterwards
    } table[] = {
        {Fault::silence(), "", 0ms, ""},
        {Fault::lateAnswer(60ms), written, 60ms, "FIRST"},
        {Fault::slowBytes(5ms), written, 5ms * 8, "FIRST"},
        {Fault::noise(), "\xFF\x1C~\x03#\x1D\x7F" + written, 0ms, "FIRST"},
        {Fault::wrongChecksum(), frame("13^027F0"), 0ms, "FIRST"},
        {Fault::cutOff(), written.substr(0, 5), 0ms, "FIRST"},
        {Fault::zeroByte(), written.substr(0, 5) + '\0' + written.substr(5), 0ms, "FIRST"},
        {Fault::errorStatus(9, "no"), frame("13^92136"), 0ms, ""},
    };
    for (const auto &row : table) {
        UnitPort port{UnitMemory()};
        port.queueFault(row.fault);
        port.setDelay(30ms);
        const auto start = Clock::now();
        EXPECT_EQ(ask(port, writeName, row.received.empty() ? 60ms : 2s), row.received);
        EXPECT_GE(Clock::now() - start, row.atLeast + 30ms);
        EXPECT_EQ(ask(port, writeName), frame("13^13C3E6"));  // an identifier that it has heard
        EXPECT_EQ(port.memory().banks[0].name, row.name) << static_cast<int>(row.fault.kind);
        EXPECT_EQ(ask(port, readIdentity), identity);
    }
}

TEST(UnitPort, CountsHealthyExchangesAndPassesOverTheQuestionForAnErrorText)
{
    UnitPort port{UnitMemory()};
    port.queueFault(Fault::errorStatus(3, "<i>\xC3\x9C</i>"), 2);
    port.queueFault(Fault::silence());
    port.queueFault(Fault::errorStatus(3, "x"), 0);
    port.queueFault(Fault::silence(), 0);
    const std::string question = frame("7^RET|A33DAF");
    const std::string text = "\x02" + wire("7^0|A3|B") + "<i>\xC3\x9C</i>3FBC\x03";
    const std::vector<std::pair<std::string, std::string>> exchanges = {
        {readIdentity, identity}, {readMidiIn, midiIn},     {readIdentity, frame("1^31A19")},
        {question, text},         {readMidiIn, ""},         {readIdentity, frame("1^31A19")},
        {question, ""},           {readIdentity, identity},
    };
    for (const auto &[request, response] : exchanges)
        EXPECT_EQ(ask(port, request, response.empty() ? 60ms : 2s), response);
}

TEST(UnitPort, WhatTheEditorDoesNotReadIsLostWhenItCloses)
{
    UnitPort port{UnitMemory()};
    for (const auto &fault : {Fault::lateAnswer(60ms), Fault::lateAnswer(0ms)}) {
        port.queueFault(fault);
        {
            const Descriptor line(::open(port.location().c_str(), O_RDWR | O_NOCTTY));
            EXPECT_EQ(::write(line.get(), readIdentity.data(), readIdentity.size()), 11);
            std::this_thread::sleep_for(20ms);
        }
        std::this_thread::sleep_for(600ms);
        EXPECT_EQ(ask(port, readMidiIn), midiIn);
    }
}

TEST(UnitPort, StopsAtOnceDuringAFault)
{
    for (const Fault &fault : {Fault(), Fault::lateAnswer(60s), Fault::slowBytes(60s), Fault::endlessStream()}) {
        std::optional<UnitPort> port(std::in_place, UnitMemory());
        port->queueFault(fault);
        port->setDelay(fault.kind == Fault::Kind::None ? 60s : 0s);
        ask(*port, readIdentity, 50ms);
        const auto start = Clock::now();
        port.reset();
        EXPECT_LT(Clock::now() - start, 2s);
    }
}

}  // namespace
