#include "support/wire.h"
#include "ui/editor.h"

#include <QRegularExpression>
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
    for (int number = 1; number <= midiDeviceCount; ++number)
        memory.midiDevices[static_cast<std::size_t>(number - 1)].name = "DEVICE " + std::to_string(number);
    for (int number = 1; number <= controllerCount; ++number)
        memory.midiDevices[0].controllers[static_cast<std::size_t>(number - 1)].name = "CC " + std::to_string(number);
}

/// Other values for everything, as if they had been set on the unit itself.
void changeOnUnit(UnitMemory &memory)
{
    memory.settings = {.bankPresetChangeMode = BankPresetChangeMode::Indirect,
                       .recallUserBanksOnly = true,
                       .oneTimeMidiModeSend = true,
                       .wahPad1 = WahPadSetting::Loop3,
                       .wahPad2 = WahPadSetting::Loop4,
                       .clickProtection = ClickProtection::Mid,
                       .loopsSplit = true,
                       .keyboardType = KeyboardType::Azerty,
                       .presetChangeName = PresetChangeName::PresetOnly};
    memory.midiIn = MidiInData(16, MidiInPCFunction::Bank1To10, MidiInCCFunction::NumberBankValuePreset);
    memory.expressionPedal = ExpressionPedalData(ExpressionPedalCharacteristic::FastSlow, ExpressionPedalPeriod::Ms8, 3,
                                                 77, 5, 4095, true, 1, 7, false);
    memory.switchOuts.switchOuts = {SwitchOutSetting::Pulse,     SwitchOutSetting::Latching,
                                    SwitchOutSetting::Momentary, SwitchOutSetting::Momentary,
                                    SwitchOutSetting::Pulse,     SwitchOutSetting::Latching};
}

struct Choice
{
    const char *button;
    const char *label;
    const char *box;
    const char *items;  // comma-separated; "a..b" counts
    const char *chosen;
    const char *request;   // literal data part; empty: the choice sends nothing
    const char *followed;  // shown once changeOnUnit() was done and the page opened anew
};

const char *const settingsTab = "pushButton_settingsTab";
const char *const midiInTab = "pushButton_midiMidiIn";
const char *const pedalTab = "pushButton_midiExpressionPedal";
const char *const switchOutTab = "pushButton_midiSwitchOut";
const char *const loops = "LOOP 1..6,INACTIVE";
const char *const modes = "LATCHING,PULSE,MOMENTARY";

const Choice choices[] = {
    {settingsTab, "LOOP SPLIT", "comboBox_loopsSplit", "NO,YES", "YES", "WOS|G1", "YES"},
    {settingsTab, "KEYBOARD TYPE", "comboBox_keyboardType", "QWERTY,AZERTY", "AZERTY", "WOS|J2", "AZERTY"},
    {settingsTab, "CLICK PROTECTION", "comboBox_clickProtection", "LOW,MID,HIGH", "HIGH", "WOS|F3", "MID"},
    {settingsTab, "ONE TIME MIDI SEND MODE", "comboBox_oneTimeModeMidiSend", "NO,YES", "YES", "WOS|C1", "YES"},
    {settingsTab, "RECALL USER BANKS ONLY", "comboBox_recallUserBanksOnly", "NO,YES", "YES", "WOS|B1", "YES"},
    {settingsTab, "BANK/PRESET CHANGE MODE", "comboBox_bankPresetChangeMode", "DIRECT,INDIRECT", "INDIRECT", "WOS|A2",
     "INDIRECT"},
    {settingsTab, "PRESET CHANGE NAME", "comboBox_presetChangeName", "ALWAYS,PRESET ONLY", "PRESET ONLY", "WOS|K2",
     "PRESET ONLY"},
    {settingsTab, "WAH PAD 1", "comboBox_wahPad1", loops, "LOOP 6", "WOS|D6", "LOOP 3"},
    {settingsTab, "WAH PAD 2", "comboBox_wahPad2", loops, "LOOP 1", "WOS|E1", "LOOP 4"},
    {midiInTab, "CHANNEL", "comboBox_channel", "INACTIVE,1..16", "12", "WMI|A12", "16"},
    {midiInTab, "PC FUNCTION", "comboBox_PCFunction", "UNUSED,BANK 1-10,BANK + PRESET", "BANK + PRESET", "WMI|B3",
     "BANK 1-10"},
    {midiInTab, "CC FUNCTION", "comboBox_CCFunction", "UNUSED,NUMBER-BANK; VALUE-PRESET", "NUMBER-BANK, VALUE-PRESET",
     "WMI|C2", "NUMBER-BANK, VALUE-PRESET"},
    {pedalTab, "PERIOD", "comboBox_period", "4 [ms] ,8 [ms] ,16 [ms],32 [ms],64 [ms]", "32 [ms]", "WEP|D4", "8 [ms] "},
    {pedalTab, "CHARACTERISTIC", "comboBox_characteristic", "FAST/SLOW,LINEAR,SLOW/FAST", "SLOW/FAST", "WEP|C3",
     "FAST/SLOW"},
    {pedalTab, "TOE UP VALUE", "comboBox_toeUpValue", "0..127", "99", "WEP|E99", "3"},
    {pedalTab, "TOE DOWN VALUE", "comboBox_toeDownValue", "0..127", "0", "WEP|F0", "77"},
    {pedalTab, "CALIBRATION INVERSION", "comboBox_calibrationInversion", "NO,YES", "YES", "", "YES"},
    {pedalTab, "MIDI DEVICE", "comboBox_midiDeviceNumber", "INACTIVE,DEVICE 1..10", "INACTIVE", "WEP|J255", "DEVICE 1"},
    {pedalTab, "CONTROLLER", "comboBox_controllerNumber", "INACTIVE,CC 1..20", "CC 20", "WEP|K20", "CC 7"},
    {switchOutTab, "SWITCH OUT 1", "comboBox_switchOut1", modes, "MOMENTARY", "WSO|A3", "PULSE"},
    {switchOutTab, "SWITCH OUT 2", "comboBox_switchOut2", modes, "PULSE", "WSO|B2", "LATCHING"},
    {switchOutTab, "SWITCH OUT 3", "comboBox_switchOut3", modes, "PULSE", "WSO|C2", "MOMENTARY"},
    {switchOutTab, "SWITCH OUT 4", "comboBox_switchOut4", modes, "MOMENTARY", "WSO|D3", "MOMENTARY"},
    {switchOutTab, "SWITCH OUT 5", "comboBox_switchOut5", modes, "PULSE", "WSO|E2", "PULSE"},
    {switchOutTab, "SWITCH OUT 6", "comboBox_switchOut6", modes, "PULSE", "WSO|F2", "LATCHING"},
};

/// The items that a row's text stands for; ';' stands for a comma within an item.
QStringList itemsOf(const QString &text)
{
    QStringList items;
    for (const QString &part : text.split(',')) {
        const QRegularExpressionMatch range = QRegularExpression("^(.*?)(\\d+)\\.\\.(\\d+)$").match(part);
        if (!range.hasMatch())
            items << QString(part).replace(';', ',');
        else
            for (int number = range.captured(2).toInt(); number <= range.captured(3).toInt(); ++number)
                items << range.captured(1) + QString::number(number);
    }
    return items;
}

QStringList itemsOf(const QComboBox &box)
{
    QStringList items;
    for (int row = 0; row < box.count(); ++row)
        items << box.itemText(row);
    return items;
}

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
        SCOPED_TRACE(choice.box);
        unit.alter(baseline);
        open(choice.button);
        auto &box = find<QComboBox>(choice.box);
        ASSERT_TRUE(box.isVisible());
        EXPECT_EQ(itemsOf(box), itemsOf(QString(choice.items)));
        EXPECT_EQ(box.accessibleName(), choice.label);

        choose(box, choice.chosen);
        EXPECT_EQ(requests(), *choice.request ? Requests{wire(choice.request)} : Requests{});
        EXPECT_EQ(box.currentText(), choice.chosen);

        unit.alter(changeOnUnit);
        open(choice.button);
        EXPECT_EQ(box.currentText(), choice.followed);
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
