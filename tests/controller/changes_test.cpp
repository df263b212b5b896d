#include "controller/connected.h"

namespace {

using C = DeviceController;

/// What only the controller does to a value; what each change sends from its widget is tested in the window.
const std::tuple<std::function<void(C &)>, std::string, std::string> changes[] = {
    // how it is asked for, what goes to the unit, what is announced
    {[](C &c) { c.changeBankName("A\x1D\x7F NÄME", 4); }, "WBB|A4|BA NÄME", "gotBankAndPresetData 4"},
    {[](C &c) { c.changePresetNumberWahPad2(4, 256); }, "WBB|A4|F0", "gotBankAndPresetData 4"},
    {[](C &c) {
         const QVector<QString> names = QVector<QString>(19, "N") << "Ä\x03";
         c.controllersNamesOrNumberChanged(10, names, QVector<int>(19, 7) << 255);
     },
     "WMD|A10|FAN;B7|GAN;B7|HAN;B7|IAN;B7|JAN;B7|KAN;B7|LAN;B7|MAN;B7|NAN;B7|OAN;B7|PAN;B7|QAN;B7|RAN;B7|SAN;B7"
     "|TAN;B7|UAN;B7|VAN;B7|WAN;B7|XAN;B7|YAÄ;B255",
     "gotMidiDevicesData"},
    {[](C &c) { c.changeSetting(settingId<&Settings::clickProtection>(), 3); }, "WOS|F3", "gotSettings"},
    {[](C &c) { c.changeSetting(settingId<&ExpressionPedalData::toeDown>(), 9); }, "WEP|F9", "gotExpressionPedal"},
    {[](C &c) { c.changeChannel(511); }, "WMI|A255", "gotMidiIn"},
    {[](C &c) { c.changeSwitchOut(SwitchOutSetting::Momentary, 6); }, "WSO|F3", "gotSwitchOut"},
};

using Changes = Connected;

}  // namespace

TEST_F(Changes, AreStoredAndAnnouncedOnlyWhenTheUnitHasTakenThem)
{
    for (const auto &change : changes) {
        std::get<0>(change)(controller);
        EXPECT_EQ(recorder.take(), Events{}) << "not read yet";
    }
    EXPECT_EQ(requests(), Events{});
    readAll();
    for (const auto &[ask, request, announced] : changes) {
        unit.queueFault(Fault::errorStatus(10, "Zażółć"));
        ask(controller);
        EXPECT_EQ(requests(), (Events{request, "RET|A10"}));
        EXPECT_EQ(recorder.take(), Events{"error Zażółć"});
        EXPECT_TRUE(modelled() == unit.memory());

        const UnitMemory before = unit.memory();
        ask(controller);
        EXPECT_EQ(requests(), Events{request});
        EXPECT_EQ(recorder.take(), Events{announced});
        EXPECT_FALSE(unit.memory() == before) << "the row changes nothing";
        EXPECT_TRUE(modelled() == unit.memory());
    }
    controller.closeDevice();
    for (const auto &change : changes) {
        std::get<0>(change)(controller);
        EXPECT_EQ(recorder.take(), Events{"deviceNotConnected"});
    }
}

TEST_F(Changes, ANameThatCouldNeverBeReadBackIsRefused)
{
    readAll();
    const QString endless(1 << 16, 'N');
    const std::function<void()> asks[] = {
        [&] { controller.changeBankName(endless, 4); },
        [&] { controller.changePresetName(endless, 4, 0); },
        [&] { controller.changeMidiDeviceName(endless, 1); },
        [&] { controller.controllersNamesOrNumberChanged(1, QVector<QString>(20, endless), QVector<int>(20, 0)); },
    };
    for (const auto &ask : asks) {
        ask();
        EXPECT_EQ(recorder.take(), Events{"error The name is too long: the unit could not be read any more"});
        EXPECT_EQ(requests(), Events{});
    }
}
