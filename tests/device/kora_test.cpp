#include "device/kora.h"
#include "link/connection.h"
#include "support/outcome.h"
#include "support/scriptedport.h"
#include "support/wire.h"

#include <gtest/gtest.h>

static std::string reply(const std::string &data) { return buildFrame("6", wire(data)); }

TEST(KORA, FetchesTheTextOfAnError)
{
    const ScriptedPort port({reply("7|A1"), reply("5|A7|BNo such bank"), reply("-1"), reply("0|A-1"), reply("0|BX"),
                             reply("8"), "\x02wrong checksum\x03", reply("0")});
    KORA kora(std::make_shared<Connection>(QString::fromStdString(port.location()), 2000));
    EXPECT_EQ(failureOf([&] { kora.getBankName(1); }), "No such bank");
    EXPECT_EQ(kora.getLastErrorNumber(), 7);
    EXPECT_EQ(failureOf([&] { kora.getBankName(2); }), "the answer to RET lacks field B");
    EXPECT_EQ(kora.getBankName(3), "X");
    EXPECT_EQ(kora.getLastErrorNumber(), 0);
    EXPECT_EQ(failureOf([&] { kora.getBankName(4); }), "Incorrect Checksum");
    kora.changeSwitchOut(SwitchOutSetting::Pulse, 257);  // the number's low 8 bits
    EXPECT_EQ(port.requests(), (std::vector{wire("RBB|A1"), wire("RET|A7"), wire("RBB|A2"), wire("RET|A-1"),
                                            wire("RBB|A3"), wire("RBB|A4"), wire("RET|A8"), wire("WSO|A2")}));
}

TEST(KORA, ComparesIdentifiersOnRequest)
{
    const ScriptedPort port({reply("0"), reply("0")});
    const auto connection = std::make_shared<Connection>(QString::fromStdString(port.location()), 2000);
    KORA kora(connection);
    *connection << buildFrame("5", "RDI");
    try {
        kora.getFrame(5);
        FAIL() << "accepted identifier 6";
    } catch (const std::runtime_error &refused) {
        EXPECT_STREQ(refused.what(), "Nieprawidlowy numer ramki");
    }
    *connection << buildFrame("6", "RDI");
    EXPECT_EQ(kora.getFrame(6).getFrameID(), 6u);
}
