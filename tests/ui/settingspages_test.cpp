#include "support/wire.h"
#include "ui/editor.h"

#include <QSignalSpy>

namespace {

using Requests = std::vector<std::string>;

/// The unit's settings before each choice.
void baseline(UnitMemory &memory)
{
    memory.settings = Settings();
    memory.midiIn = MidiInData();
    memory.switchOuts = SwitchOutData();
    memory.expressionPedal = ExpressionPedalData(ExpressionPedalCharacteristic::Linear, ExpressionPedalPeriod::Ms4, 0,
                                                 127, 100, 4000, false, 1, 1, false);
    memory.midiDevices[0].name = "DELAY";
    memory.midiDevices[0].controllers[0] = {"MIX", 20};
    memory.midiDevices[0].controllers[19] = {"HOLD", 21};
}

struct Choice
{
    const char *button;
    QString label;
    QString box;
    QStringList firstItems;
    QString lastItem;
    int items;
    QString chosen;
    const char *request;  // literal data part; empty: the choice sends nothing
    QString changed;      // after the unit's value was changed on the unit and the page opened anew
    std::function<void(UnitMemory &)> change;
};

const char *const settingsTab = "pushButton_settingsTab";
const char *const midiInTab = "pushButton_midiMidiIn";
const char *const pedalTab = "pushButton_midiExpressionPedal";
const char *const switchOutTab = "pushButton_midiSwitchOut";

const Choice choices[] = {
    {settingsTab,
     "LOOP SPLIT",
     "comboBox_loopsSplit",
     {"NO"},
     "YES",
     2,
     "YES",
     "WOS|G1",
     "NO",
     [](auto &m) { m.settings.loopsSplit = false; }},
    {settingsTab,
     "KEYBOARD TYPE",
     "comboBox_keyboardType",
     {"QWERTY"},
     "AZERTY",
     2,
     "AZERTY",
     "WOS|J2",
     "QWERTY",
     [](auto &m) { m.settings.keyboardType = KeyboardType::Qwerty; }},
    {settingsTab,
     "CLICK PROTECTION",
     "comboBox_clickProtection",
     {"LOW", "MID"},
     "HIGH",
     3,
     "HIGH",
     "WOS|F3",
     "MID",
     [](auto &m) { m.settings.clickProtection = ClickProtection::Mid; }},
    {settingsTab,
     "ONE TIME MIDI SEND MODE",
     "comboBox_oneTimeModeMidiSend",
     {"NO"},
     "YES",
     2,
     "YES",
     "WOS|C1",
     "NO",
     [](auto &m) { m.settings.oneTimeMidiModeSend = false; }},
    {settingsTab,
     "RECALL USER BANKS ONLY",
     "comboBox_recallUserBanksOnly",
     {"NO"},
     "YES",
     2,
     "YES",
     "WOS|B1",
     "NO",
     [](auto &m) { m.settings.recallUserBanksOnly = false; }},
    {settingsTab,
     "BANK/PRESET CHANGE MODE",
     "comboBox_bankPresetChangeMode",
     {"DIRECT"},
     "INDIRECT",
     2,
     "INDIRECT",
     "WOS|A2",
     "DIRECT",
     [](auto &m) { m.settings.bankPresetChangeMode = BankPresetChangeMode::Direct; }},
    {settingsTab,
     "PRESET CHANGE NAME",
     "comboBox_presetChangeName",
     {"ALWAYS"},
     "PRESET ONLY",
     2,
     "PRESET ONLY",
     "WOS|K2",
     "ALWAYS",
     [](auto &m) { m.settings.presetChangeName = PresetChangeName::Always; }},
    {settingsTab,
     "WAH PAD 1",
     "comboBox_wahPad1",
     {"LOOP 1", "LOOP 2"},
     "INACTIVE",
     7,
     "LOOP 6",
     "WOS|D6",
     "LOOP 3",
     [](auto &m) { m.settings.wahPad1 = WahPadSetting::Loop3; }},
    {settingsTab,
     "WAH PAD 2",
     "comboBox_wahPad2",
     {"LOOP 1", "LOOP 2"},
     "INACTIVE",
     7,
     "LOOP 1",
     "WOS|E1",
     "INACTIVE",
     [](auto &m) { m.settings.wahPad2 = WahPadSetting::Inactive; }},
    {midiInTab,
     "CHANNEL",
     "comboBox_channel",
     {"INACTIVE", "1"},
     "16",
     17,
     "12",
     "WMI|A12",
     "INACTIVE",
     [](auto &m) { m.midiIn.channel = 255; }},
    {midiInTab,
     "PC FUNCTION",
     "comboBox_PCFunction",
     {"UNUSED", "BANK 1-10"},
     "BANK + PRESET",
     3,
     "BANK + PRESET",
     "WMI|B3",
     "BANK 1-10",
     [](auto &m) { m.midiIn.pcFunction = MidiInPCFunction::Bank1To10; }},
    {midiInTab,
     "CC FUNCTION",
     "comboBox_CCFunction",
     {"UNUSED"},
     "NUMBER-BANK, VALUE-PRESET",
     2,
     "NUMBER-BANK, VALUE-PRESET",
     "WMI|C2",
     "UNUSED",
     [](auto &m) { m.midiIn.ccFunction = MidiInCCFunction::Unused; }},
    {pedalTab,
     "PERIOD",
     "comboBox_period",
     {"4 [ms] ", "8 [ms] ", "16 [ms]", "32 [ms]"},
     "64 [ms]",
     5,
     "32 [ms]",
     "WEP|D4",
     "8 [ms] ",
     [](auto &m) { m.expressionPedal.period = ExpressionPedalPeriod::Ms8; }},
    {pedalTab,
     "CHARACTERISTIC",
     "comboBox_characteristic",
     {"FAST/SLOW", "LINEAR"},
     "SLOW/FAST",
     3,
     "SLOW/FAST",
     "WEP|C3",
     "FAST/SLOW",
     [](auto &m) { m.expressionPedal.characteristic = ExpressionPedalCharacteristic::FastSlow; }},
    {pedalTab,
     "TOE UP VALUE",
     "comboBox_toeUpValue",
     {"0", "1"},
     "127",
     128,
     "99",
     "WEP|E99",
     "3",
     [](auto &m) { m.expressionPedal.toeUp = 3; }},
    {pedalTab,
     "TOE DOWN VALUE",
     "comboBox_toeDownValue",
     {"0", "1"},
     "127",
     128,
     "0",
     "WEP|F0",
     "77",
     [](auto &m) { m.expressionPedal.toeDown = 77; }},
    {pedalTab,
     "CALIBRATION INVERSION",
     "comboBox_calibrationInversion",
     {"NO"},
     "YES",
     2,
     "YES",
     "",
     "YES",
     [](auto &m) { m.expressionPedal.calibrationInversion = true; }},
    {pedalTab,
     "MIDI DEVICE",
     "comboBox_midiDeviceNumber",
     {"INACTIVE", "DELAY"},
     "",
     11,
     "INACTIVE",
     "WEP|J255",
     "DELAY",
     [](auto &m) { m.expressionPedal.midiDeviceNumber = 1; }},
    {pedalTab,
     "CONTROLLER",
     "comboBox_controllerNumber",
     {"INACTIVE", "MIX"},
     "HOLD",
     21,
     "HOLD",
     "WEP|K20",
     "INACTIVE",
     [](auto &m) { m.expressionPedal.controllerNumber = 255; }},
    {switchOutTab,
     "SWITCH OUT 1",
     "comboBox_switchOut1",
     {"LATCHING", "PULSE"},
     "MOMENTARY",
     3,
     "PULSE",
     "WSO|A2",
     "LATCHING",
     [](auto &m) { m.switchOuts.switchOuts[0] = SwitchOutSetting::Latching; }},
    {switchOutTab,
     "SWITCH OUT 2",
     "comboBox_switchOut2",
     {"LATCHING", "PULSE"},
     "MOMENTARY",
     3,
     "PULSE",
     "WSO|B2",
     "LATCHING",
     [](auto &m) { m.switchOuts.switchOuts[1] = SwitchOutSetting::Latching; }},
    {switchOutTab,
     "SWITCH OUT 3",
     "comboBox_switchOut3",
     {"LATCHING", "PULSE"},
     "MOMENTARY",
     3,
     "PULSE",
     "WSO|C2",
     "LATCHING",
     [](auto &m) { m.switchOuts.switchOuts[2] = SwitchOutSetting::Latching; }},
    {switchOutTab,
     "SWITCH OUT 4",
     "comboBox_switchOut4",
     {"LATCHING", "PULSE"},
     "MOMENTARY",
     3,
     "MOMENTARY",
     "WSO|D3",
     "PULSE",
     [](auto &m) { m.switchOuts.switchOuts[3] = SwitchOutSetting::Pulse; }},
    {switchOutTab,
     "SWITCH OUT 5",
     "comboBox_switchOut5",
     {"LATCHING", "PULSE"},
     "MOMENTARY",
     3,
     "PULSE",
     "WSO|E2",
     "LATCHING",
     [](auto &m) { m.switchOuts.switchOuts[4] = SwitchOutSetting::Latching; }},
    {switchOutTab,
     "SWITCH OUT 6",
     "comboBox_switchOut6",
     {"LATCHING", "PULSE"},
     "MOMENTARY",
     3,
     "PULSE",
     "WSO|F2",
     "LATCHING",
     [](auto &m) { m.switchOuts.switchOuts[5] = SwitchOutSetting::Latching; }},
};

class SettingsPages : public Editor
{
protected:
    void open(const char *button)
    {
        click(button);
        EXPECT_TRUE(settles());
        unit.takeRequests();
    }
};

}  // namespace

TEST_F(SettingsPages, EveryChoiceIsSentOnceAndTheBoxFollowsTheUnit)
{
    for (const Choice &choice : choices) {
        SCOPED_TRACE(choice.box.toStdString());
        unit.alter(baseline);
        open(choice.button);
        auto &box = find<QComboBox>(choice.box);
        ASSERT_TRUE(box.isVisible());
        EXPECT_EQ(box.count(), choice.items);
        for (int item = 0; item < choice.firstItems.size(); ++item)
            EXPECT_EQ(box.itemText(item), choice.firstItems[item]);
        if (!choice.lastItem.isEmpty()) {
            EXPECT_EQ(box.itemText(choice.items - 1), choice.lastItem);
        }
        EXPECT_EQ(box.accessibleName(), choice.label);

        choose(box, choice.chosen);
        EXPECT_EQ(requests(), *choice.request ? Requests{wire(choice.request)} : Requests{});
        EXPECT_EQ(box.currentText(), choice.chosen);

        unit.alter(choice.change);
        open(choice.button);
        EXPECT_EQ(box.currentText(), choice.changed);
        EXPECT_EQ(requests(), Requests{});
    }
}

TEST_F(SettingsPages, OpeningAPageAsksForItsValuesOnlyWhileConnected)
{
    Requests pedal;
    for (int device = 1; device <= 10; ++device)
        pedal.push_back(wire("RMD|A" + std::to_string(device)));
    pedal.emplace_back("REP");
    const std::pair<const char *, Requests> expected[] = {
        {"pushButton_presetsTab", {}},
        {settingsTab, {"ROS"}},
        {"pushButton_previewTab", {}},
        {midiInTab, {"RMI"}},
        {pedalTab, pedal},
        {"pushButton_midiDevicesTab", Requests(pedal.begin(), pedal.end() - 1)},
        {switchOutTab, {"RSO"}},
    };
    for (const auto &[button, asked] : expected) {
        click(button);
        EXPECT_EQ(requests(), asked) << button;
    }

    unit.unplug();
    click(settingsTab);
    ASSERT_TRUE(becomes([this] { return status() == "DEVICE DISCONNECTED"; }));
    const QSignalSpy settings(&window, &MainWindow::getSettings);
    const QSignalSpy midiDevices(&window, &MainWindow::getMidiDevicesData);
    const QSignalSpy switchOut(&window, &MainWindow::getSwitchOut);
    for (const auto &page : expected)
        click(page.first);
    EXPECT_EQ(settings.size() + midiDevices.size() + switchOut.size(), 0);
    EXPECT_TRUE(find<QWidget>("widget_switchOut").isVisible());
}

TEST_F(SettingsPages, TheUnitsOwnCalibrationIsShownButCannotBeChanged)
{
    unit.alter(baseline);
    open(pedalTab);
    const std::pair<const char *, QString> boxes[] = {{"comboBox_calibrationUpValue", "100"},
                                                      {"comboBox_calibrationDownValue", "4000"},
                                                      {"comboBox_onTheFlyMode", ""}};
    for (const auto &[name, shown] : boxes) {
        EXPECT_FALSE(find<QComboBox>(name).isEnabled()) << name;
        EXPECT_EQ(find<QComboBox>(name).currentText(), shown) << name;
    }
    EXPECT_EQ(find<QComboBox>("comboBox_calibrationUpValue").count(), 4096);
}

TEST_F(SettingsPages, ADeviceChoiceRebuildsTheControllersWithoutSendingOne)
{
    unit.alter([](UnitMemory &memory) {
        baseline(memory);
        memory.midiDevices[1].name = "PITCH";
        memory.midiDevices[1].controllers[0].name = "DETUNE";
    });
    open(pedalTab);
    auto &controllers = find<QComboBox>("comboBox_controllerNumber");
    choose(find<QComboBox>("comboBox_midiDeviceNumber"), "PITCH");
    EXPECT_EQ(requests(), Requests{wire("WEP|J2")});
    EXPECT_EQ(controllers.itemText(1), "DETUNE");
    EXPECT_EQ(controllers.currentIndex(), 1);
    choose(find<QComboBox>("comboBox_midiDeviceNumber"), "INACTIVE");
    EXPECT_EQ(requests(), Requests{wire("WEP|J255")});
    EXPECT_EQ(controllers.count(), 1);
    EXPECT_EQ(controllers.itemText(0), "INACTIVE");
}
