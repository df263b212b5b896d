#include "device/kora.h"
#include "link/connection.h"
#include "support/outcome.h"
#include "support/scriptedport.h"
#include "support/wire.h"

#include <gtest/gtest.h>

namespace {

std::string reply(const std::string &data) { return buildFrame("6", wire(data)); }

/// What operations send, each given with its values.
template <typename... Values>
auto does(void (KORA::*operation)(Values...), std::type_identity_t<Values>... values)
{
    return [=](KORA &kora) { (kora.*operation)(values...); };
}
std::string sentBy(const auto &...operations)
{
    const ScriptedPort port(std::vector<std::string>(sizeof...(operations), reply("0")));
    KORA kora(std::make_shared<Connection>(QString::fromStdString(port.location()), 2000));
    (operations(kora), ...);
    std::string requests;
    for (const std::string &request : port.requests())
        requests += visible(request) + ' ';
    return requests;
}

}  // namespace

// The operations that the editor does not use: it changes these settings by their rows.
TEST(KORA, ChangesSettingsByName)
{
    using K = KORA;
    EXPECT_EQ(sentBy(does(&K::changePresetWahPad1, 4, WahPadAction{1}),
                     does(&K::changePresetWahPad2, 5, WahPadAction{2}), does(&K::changePresetNumberWahPad1, 6, 300),
                     does(&K::changePresetNumberWahPad2, 7, 3), does(&K::changeChannel, 511),
                     does(&K::changePCFunction, MidiInPCFunction{3}), does(&K::changeCCFunction, MidiInCCFunction{2}),
                     does(&K::changeSwitchOut, SwitchOutSetting{2}, 257)),
              "WBB|A4|C1 WBB|A5|E2 WBB|A6|D44 WBB|A7|F3 WMI|A255 WMI|B3 WMI|C2 WSO|A2 ");
    EXPECT_EQ(sentBy(does(&K::changeMidiDeviceChannel, 300, 1), does(&K::changeSendCCFirst, true, 2),
                     does(&K::changeTapTempo, MidiDeviceTapTempo{2}, 3), does(&K::changeTapController, 5, 4),
                     does(&K::changeTapControllerValue, 254, 5), does(&K::changeNoteNumber, 127, 6),
                     does(&K::changeNoteType, TapTempoNote{3}, 7)),
              "WMD|A1|C300 WMD|A2|D1 WMD|A3|E2 WMD|A4|a5 WMD|A5|b254 WMD|A6|c127 WMD|A7|d3 ");
    EXPECT_EQ(sentBy(does(&K::changeCharacteristic, ExpressionPedalCharacteristic{3}),
                     does(&K::changePeriod, ExpressionPedalPeriod{5}), does(&K::changeToeUp, -1),
                     does(&K::changeToeDown, 9), does(&K::changeMidiDeviceNumber, 10),
                     does(&K::changeControllerNumber, 20)),
              "WEP|C3 WEP|D5 WEP|E255 WEP|F9 WEP|J10 WEP|K20 ");
    EXPECT_EQ(sentBy(does(&K::changeBankPresetChangeMode, BankPresetChangeMode{2}),
                     does(&K::changeRecallUserBanksOnly, true), does(&K::changeOneTimeMidiModeSend, false),
                     does(&K::changeWahPad1, WahPadSetting{1}), does(&K::changeWahPad2, WahPadSetting{7}),
                     does(&K::changeClickProtection, ClickProtection{3}), does(&K::changeLoopsSplit, true),
                     does(&K::changeKeyboardType, KeyboardType{2}),
                     does(&K::changePresetChangeName, PresetChangeName{1})),
              "WOS|A2 WOS|B1 WOS|C0 WOS|D1 WOS|E7 WOS|F3 WOS|G1 WOS|J2 WOS|K1 ");
}

TEST(KORA, FetchesTheTextOfAnError)
{
    const ScriptedPort port({reply("7|A1"), reply("5|A7|BNo such bank"), reply("-1"), reply("0|A-1"), reply("0|BX"),
                             reply("8"), "\x02wrong checksum\x03"});
    KORA kora(std::make_shared<Connection>(QString::fromStdString(port.location()), 2000));
    EXPECT_EQ(failureOf([&] { kora.getBankName(1); }), "No such bank");
    EXPECT_EQ(kora.getLastErrorNumber(), 7);
    EXPECT_EQ(failureOf([&] { kora.getBankName(2); }), "the answer to RET lacks field B");
    EXPECT_EQ(kora.getBankName(3), "X");
    EXPECT_EQ(kora.getLastErrorNumber(), 0);
    EXPECT_EQ(failureOf([&] { kora.getBankName(4); }), "Incorrect Checksum");
    EXPECT_EQ(port.requests(), (std::vector{wire("RBB|A1"), wire("RET|A7"), wire("RBB|A2"), wire("RET|A-1"),
                                            wire("RBB|A3"), wire("RBB|A4"), wire("RET|A8")}));
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
