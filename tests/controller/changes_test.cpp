#include "controller/connected.h"

namespace {

using C = DeviceController;

/// One change: how it is asked for and what goes to the unit.
struct Change
{
    std::function<void(C &)> ask;
    std::string request;
};

/// One of each pattern, with what only the controller does to a value: what each change sends from its widget is
/// tested in the window.
const Change changes[] = {
    {[](C &c) { c.changeBankName("A\x1D\x7F NÄME", 4); }, "WBB|A4|BA NÄME"},
    {[](C &c) { c.changePresetNumberWahPad2(4, 256); }, "WBB|A4|F0"},
    {[](C &c) { c.changeLoopType(LoopType::On, 4, 5, 5); }, "WBP|A4|B5|EA4;B3;C4;D4;E4;F4;G1|D2"},
    {[](C &c) { c.changeProgramChangeNumber(4, 5, 9, 128); }, "WBP|A4|B5|Gj128|D2"},
    {[](C &c) {
         c.changePresetExpressionPedal(4, 5, {10, 20, ExpressionPedalCharacteristic::SlowFast, 5, 127});
     },
     "WBP|A4|B5|GnA10,B20,C3,D5,E127|D2"},
    {[](C &c) {
         c.changeControlChangeData(4, 5, {{10, 1, 254}, {2, 20, 0}});
     },
     "WBP|A4|B5|GAA10,B1,C254;BA2,B20,C0|D2"},
    {[](C &c) { c.changeNoteNumber(127, 10); }, "WMD|A10|c127"},
    {[](C &c) {
         const QVector<QString> names = QVector<QString>(19, "N") << "Ä\x03";
         c.controllersNamesOrNumberChanged(10, names, QVector<int>(19, 7) << 255);
     },
     "WMD|A10|FAN;B7|GAN;B7|HAN;B7|IAN;B7|JAN;B7|KAN;B7|LAN;B7|MAN;B7|NAN;B7|OAN;B7|PAN;B7|QAN;B7|RAN;B7|SAN;B7"
     "|TAN;B7|UAN;B7|VAN;B7|WAN;B7|XAN;B7|YAÄ;B255"},
    {[](C &c) { c.changeKeyboardType(KeyboardType::Azerty); }, "WOS|J2"},
    {[](C &c) { c.changeSetting(settingId<&Settings::clickProtection>(), 3); }, "WOS|F3"},
    {[](C &c) { c.changeSetting(settingId<&ExpressionPedalData::toeDown>(), 9); }, "WEP|F9"},
    {[](C &c) { c.changeChannel(511); }, "WMI|A255"},
    {[](C &c) { c.changeToeUp(256 + 99); }, "WEP|E99"},
    {[](C &c) { c.changeSwitchOut(SwitchOutSetting::Momentary, 6); }, "WSO|F3"},
};

const std::map<std::string, std::string> announcements{{"WBB", "gotBankAndPresetData 4"},
                                                       {"WBP", "gotBankAndPresetData 4"},
                                                       {"WMD", "gotMidiDevicesData"},
                                                       {"WOS", "gotSettings"},
                                                       {"WMI", "gotMidiIn"},
                                                       {"WEP", "gotExpressionPedal"},
                                                       {"WSO", "gotSwitchOut"}};

class Changes : public Connected, public testing::WithParamInterface<Change>
{};

}  // namespace

TEST_P(Changes, AreSentThenStoredAndAnnounced)
{
    readAll();
    const UnitMemory before = unit.memory();
    GetParam().ask(controller);
    EXPECT_EQ(requests(), Events{GetParam().request});
    EXPECT_EQ(recorder.take(), Events{announcements.at(GetParam().request.substr(0, 3))});
    EXPECT_FALSE(unit.memory() == before) << "the row changes nothing";
    EXPECT_TRUE(modelled() == unit.memory());
}

TEST_P(Changes, ThatTheUnitRefusesLeaveTheModelAsItWas)
{
    readAll();
    unit.queueFault(Fault::errorStatus(10, "Zażółć"));
    GetParam().ask(controller);
    EXPECT_EQ(requests(), (Events{GetParam().request, "RET|A10"}));
    EXPECT_EQ(recorder.take(), Events{"error Zażółć"});
    EXPECT_TRUE(modelled() == unit.memory());
}

TEST_P(Changes, OfWhatWasNotReadOrWithoutAUnitSendNothing)
{
    GetParam().ask(controller);
    EXPECT_EQ(recorder.take(), Events{});
    controller.closeDevice();
    GetParam().ask(controller);
    EXPECT_EQ(recorder.take(), Events{"deviceNotConnected"});
    EXPECT_EQ(requests(), Events{});
}

INSTANTIATE_TEST_SUITE_P(, Changes, testing::ValuesIn(changes));
