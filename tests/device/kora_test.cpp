#include "device/kora.h"
#include "simulator/unitport.h"
#include "support/outcome.h"
#include "support/scriptedport.h"
#include "support/wire.h"

#include <gtest/gtest.h>

namespace {

KORA koraAt(const std::string &location, unsigned int timeout = 2000)
{
    return KORA(std::make_shared<Connection>(QString::fromStdString(location), timeout));
}

std::string reply(const std::string &data) { return buildFrame("6", wire(data)); }

std::vector<std::string> wired(std::vector<std::string> texts)
{
    std::transform(texts.begin(), texts.end(), texts.begin(), wire);
    return texts;
}

}  // namespace

// The payloads that a change of one stored value cannot show.
TEST(KORA, SendsWhateverItIsGiven)
{
    const std::array loops{LoopType::Off, LoopType::Off, LoopType::Toggle, LoopType::Off, LoopType::Off, LoopType::Off};
    const std::pair<std::function<void(KORA &)>, std::string> cases[] = {
        {[](KORA &kora) { kora.getPresetData(99, -1); }, "RBP|A99|B-1"},
        {[](KORA &kora) { kora.getMidiDevice(1); }, "RMD|A1"},
        {[&](KORA &kora) { kora.changeLoopType(LoopType::Off, loops, 4, 2, FootswitchType::LoopModifier); },
         "WBP|A4|B2|EA2;B2;C2;D3;E2;F2;G2|D2"},
        {[](KORA &kora) { kora.changeProgramValue(3, 7, 0, 300, FootswitchType::Preset); }, "WBP|A3|B7|Ga300|D0"},
        {[](KORA &kora) { kora.changeControlChangeData(0, 1, {}, FootswitchType::Preset); }, "WBP|A0|B1|G|D0"},
        {[](KORA &kora) {
             kora.changeControlChangeData(0, 0, std::vector<ControlChangeData>(25, {1, 2, 3}), FootswitchType::Preset);
         },
         "WBP|A0|B0|GAA1,B2,C3;BA1,B2,C3;CA1,B2,C3;DA1,B2,C3;EA1,B2,C3;FA1,B2,C3;GA1,B2,C3;HA1,B2,C3;IA1,B2,C3;"
         "JA1,B2,C3;KA1,B2,C3;LA1,B2,C3;MA1,B2,C3;NA1,B2,C3;OA1,B2,C3;PA1,B2,C3;QA1,B2,C3;RA1,B2,C3;SA1,B2,C3;"
         "TA1,B2,C3|D0"},
        {[](KORA &kora) { kora.changePresetNumberWahPad1(5, 300); }, "WBB|A5|D44"},
        {[](KORA &kora) { kora.changeChannel(511); }, "WMI|A255"},
        {[](KORA &kora) { kora.changeToeUp(-1); }, "WEP|E255"},
        {[](KORA &kora) { kora.changeToeDown(300); }, "WEP|F44"},
        {[](KORA &kora) { kora.changeMidiDeviceChannel(300, 2); }, "WMD|A2|C300"},
        {[](KORA &kora) { kora.changeSwitchOut(SwitchOutSetting::Pulse, 7); }, "WSO"},
        {[](KORA &kora) { kora.changeSwitchOut(SwitchOutSetting::Pulse, 257); }, "WSO|A2"},
    };
    for (const auto &[operation, request] : cases) {
        const ScriptedPort port({reply("0")});
        KORA kora = koraAt(port.location());
        failureOf([&] { operation(kora); });  // an answer without fields is not what a read hopes for
        EXPECT_EQ(port.requests(), wired({request}));
    }
    const ScriptedPort untouched({});
    KORA kora = koraAt(untouched.location());
    const auto write = [&](std::size_t names, std::size_t numbers) {
        kora.changeControllersNamesAndNumbers(std::vector<std::string>(names), std::vector<int>(numbers), 1);
    };
    EXPECT_NE(failureOf([&] { write(19, 20); }), "");
    EXPECT_NE(failureOf([&] { write(20, 21); }), "");
    EXPECT_EQ(untouched.requests(), wired({}));
}

TEST(KORA, FetchesTheTextOfAnError)
{
    const ScriptedPort port({reply("7|A1"), reply("5|A7|BNo such bank"), reply("-1"), reply("0|A-1"), reply("0|BX")});
    KORA kora = koraAt(port.location());
    EXPECT_EQ(failureOf([&] { kora.getBankName(1); }), "No such bank");
    EXPECT_EQ(kora.getLastErrorNumber(), 7);
    EXPECT_EQ(failureOf([&] { kora.getBankName(2); }), "the answer to RET lacks field B");
    EXPECT_EQ(kora.getLastErrorNumber(), -1);
    EXPECT_EQ(kora.getBankName(3), "X");
    EXPECT_EQ(kora.getLastErrorNumber(), 0);
    EXPECT_EQ(port.requests(), wired({"RBB|A1", "RET|A7", "RBB|A2", "RET|A-1", "RBB|A3"}));
}

TEST(KORA, PassesTheFailuresOfLinkAndFrameOn)
{
    const std::pair<Fault, const char *> cases[] = {{Fault::silence(), "Receiving timeout"},
                                                    {Fault::wrongChecksum(), "Incorrect Checksum"},
                                                    {Fault::zeroByte(), "Incorrect Checksum"},
                                                    {Fault::noise(), ""}};
    UnitPort unit;
    KORA kora = koraAt(unit.location(), 200);
    for (const auto &[fault, message] : cases) {
        unit.queueFault(fault);
        EXPECT_EQ(failureOf([&] { kora.getDeviceInfo(); }), message);
    }
    unit.queueFault(Fault::errorStatus());
    unit.queueFault(Fault::silence(), 0);  // spoils the request for the error's text
    EXPECT_EQ(failureOf([&] { kora.getDeviceInfo(); }), "Receiving timeout");
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
