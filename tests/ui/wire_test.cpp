// Everything that the user can set, once: the choice, its literal request, and what is shown before and after.

#include "ui/editor.h"

#include <QHelpEvent>
#include <QRegularExpression>
#include <QToolTip>

namespace {

/// The unit's content before each choice.
UnitMemory baseline()
{
    UnitMemory memory;
    memory.deviceInfo = DeviceInfo("KORA", "SN-1", 3, 14, 1, 2);
    memory.expressionPedal = ExpressionPedalData(ExpressionPedalCharacteristic::Linear, ExpressionPedalPeriod::Ms4, 0,
                                                 127, 100, 4000, false, 1, 1, false);
    for (int number = 1; number <= midiDeviceCount; ++number)
        memory.midiDevices[static_cast<std::size_t>(number - 1)].name = "DEVICE " + std::to_string(number);
    for (int number = 1; number <= controllerCount; ++number)
        memory.midiDevices[0].controllers[static_cast<std::size_t>(number - 1)].name = "CC " + std::to_string(number);
    memory.midiDevices[9].controllers = memory.midiDevices[0].controllers;
    memory.banks[0] = BankData("HOME", WahPadAction::TurnLoopOn, 4, WahPadAction::ChangeToPreset, 9);
    for (std::size_t preset = 0; preset < presetCount; ++preset)
        memory.presets[0][preset].name = "HOME " + std::to_string(preset);
    memory.presets[0][6].footswitchFunction = FootswitchType::LoopModifier;
    memory.presets[0][7].footswitchFunction = FootswitchType::SwitchModifier;
    return memory;
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
    const char *request;   // empty: the choice sends nothing
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
    {pedalTab, "CALIBRATION UP VALUE", "comboBox_calibrationUpValue", "0..4095", nullptr, "", "5"},
    {pedalTab, "CALIBRATION DOWN VALUE", "comboBox_calibrationDownValue", "0..4095", nullptr, "", "4095"},
    {pedalTab, "CALIBRATION INVERSION", "comboBox_calibrationInversion", "NO,YES", "YES", "", "YES"},
    {pedalTab, "ON THE FLY MODE", "comboBox_onTheFlyMode", "NO,YES", nullptr, "", ""},
    {pedalTab, "MIDI DEVICE", "comboBox_midiDeviceNumber", "INACTIVE,DEVICE 1..10", "INACTIVE", "WEP|J255", "DEVICE 1"},
    {pedalTab, "CONTROLLER", "comboBox_controllerNumber", "INACTIVE,CC 1..20", "CC 20", "WEP|K20", "CC 7"},
    {switchOutTab, "SWITCH OUT 1", "comboBox_switchOut1", modes, "MOMENTARY", "WSO|A3", "PULSE"},
    {switchOutTab, "SWITCH OUT 2", "comboBox_switchOut2", modes, "PULSE", "WSO|B2", "LATCHING"},
    {switchOutTab, "SWITCH OUT 3", "comboBox_switchOut3", modes, "PULSE", "WSO|C2", "MOMENTARY"},
    {switchOutTab, "SWITCH OUT 4", "comboBox_switchOut4", modes, "MOMENTARY", "WSO|D3", "MOMENTARY"},
    {switchOutTab, "SWITCH OUT 5", "comboBox_switchOut5", modes, "PULSE", "WSO|E2", "PULSE"},
    {switchOutTab, "SWITCH OUT 6", "comboBox_switchOut6", modes, "PULSE", "WSO|F2", "LATCHING"},
};

/// A box of a table, and what a choice in it sends. Preset 6 is a loop modifier, preset 7 a switch modifier.
struct CellChoice
{
    const char *table;
    int row, column;
    const char *items;
    const char *chosen;
    const char *request;
};

const char *const states = "ON,OFF,TOGGLE,INACTIVE";
const char *const targets = "0: HOME 0,1: HOME 1,2: HOME 2,3: HOME 3,4: HOME 4,5: HOME 5,6: HOME 6,7: HOME 7,"
                            "8: HOME 8,9: HOME 9";

const CellChoice cellChoices[] = {
    {"footswitchFunction", 10, 2, "P - PRESET,S - SWITCH MODIFIER,L - LOOP MODIFIER,M - MIDI MODIFIER",
     "M - MIDI MODIFIER", "WBP|A0|B9|D3"},
    {"loops", 7, 4, states, "INACTIVE", "WBP|A0|B6|EA4;B2;C2;D2;E2;F2;G2|D2"},
    {"loops", 7, 5, states, "TOGGLE", "WBP|A0|B6|EA2;B3;C2;D2;E2;F2;G2|D2"},
    {"loops", 7, 10, states, "ON", "WBP|A0|B6|EA2;B2;C2;D2;E2;F2;G1|D2"},
    {"switch", 8, 4, states, "INACTIVE", "WBP|A0|B7|FA4;B2;C2;D2;E2;F2|D1"},
    {"switch", 8, 9, states, "TOGGLE", "WBP|A0|B7|FA2;B2;C2;D2;E2;F3|D1"},
    {"wahPads", 3, 3, "ADD,TURN LOOP ON,CHANGE TO PRESET", "CHANGE TO PRESET", "WBB|A0|C3"},
    {"wahPads", 3, 4, targets, "9: HOME 9", "WBB|A0|D9"},
    {"wahPads", 4, 3, "ADD,TURN LOOP ON,CHANGE TO PRESET", "ADD", "WBB|A0|E1"},
    {"wahPads", 4, 4, targets, "0: HOME 0", "WBB|A0|F0"},
    {"midiDevices", 9, 1, "INACTIVE,1..16", "16", "WMD|A10|C16"},
    {"midiDevices", 9, 3, "UNUSED,TAP CTRL,TAP TEMPO NOTE", "TAP TEMPO NOTE", "WMD|A10|E3"},
    {"midiDevices", 9, 5, "CC 1..20", "CC 20", "WMD|A10|a20"},
    {"midiDevices", 9, 6, "0..127,INACTIVE,TOGGLE", "TOGGLE", "WMD|A10|b254"},
    {"midiDevices", 9, 7, "0..127", "127", "WMD|A10|c127"},
    {"midiDevices", 9, 8, "ON,OFF,TOGGLE", "TOGGLE", "WMD|A10|d3"},
};

struct NameEntry
{
    const char *table;
    int row, column;
    const char *typed;
    const char *request;
    const char *shown;
};

const NameEntry nameEntries[] = {
    {"footswitchFunction", 1, 3, "ÜBER \"A\" <b>&amp;", "WBB|A0|BÜBER \"A\" <b>&amp;", "ÜBER \"A\" <b>&amp;"},
    {"loops", 4, 2, "Żółty\x7F\x1C", "WBB|A0|BŻółty", "Żółty"},
    {"wahPads", 4, 1, "", "WBB|A0|B", ""},
    {"footswitchFunction", 10, 4, "%1 \x1D\x02LAST", "WBP|A0|B9|C%1 LAST", "%1 LAST"},
    {"switch", 1, 3, "FIRST", "WBP|A0|B0|CFIRST", "FIRST"},
    {"midi", 5, 3, "", "WBP|A0|B4|C", ""},
    {"midiDevices", 9, 0, "ÉCHO\x1E", "WMD|A10|BÉCHO", "ÉCHO"},
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

class Wire : public Editor
{
protected:
    Wire() : Editor(baseline()) {}

    void open(const char *button)
    {
        click(button);
        requests();
    }
    /// Reads bank 0 and the devices anew.
    void readAgain()
    {
        clickCell("footswitchFunction", 0, 0);
        clickCell("footswitchFunction", 11, 0);
        open("pushButton_midiDevicesTab");
    }
};

}  // namespace

TEST_F(Wire, EverySettingIsSentOnceAndItsBoxFollowsTheUnit)
{
    for (const Choice &choice : choices) {
        SCOPED_TRACE(choice.box);
        unit.alter([](UnitMemory &memory) { memory = baseline(); });
        open(choice.button);
        auto &box = find<ComboBox>(choice.box);
        ASSERT_TRUE(box.isVisible());
        EXPECT_EQ(itemsOf(box), itemsOf(QString(choice.items)));
        EXPECT_EQ(box.accessibleName(), choice.label);
        for (const QLabel *const label : window.findChildren<QLabel *>())
            EXPECT_EQ(label->buddy() == &box, label->text() == choice.label && label->toolTip().endsWith('.'));
        EXPECT_EQ(box.isEnabled(), choice.chosen != nullptr);
        if (choice.chosen) {
            choose(box, choice.chosen);
            EXPECT_EQ(requests(), *choice.request ? Requests{choice.request} : Requests{});
            EXPECT_EQ(box.currentText(), choice.chosen);
        }
        unit.alter(changeOnUnit);
        open(choice.button);
        EXPECT_EQ(box.currentText(), choice.followed);
        EXPECT_EQ(requests(), Requests{});
    }
    EXPECT_EQ(find<QWidget>("comboBox_switchOut4").y(), find<QWidget>("comboBox_switchOut1").y())
        << "three in a column";
}

TEST_F(Wire, EveryBoxOfTheTablesSendsAnotherValueThanTheStoredOne)
{
    for (const CellChoice &choice : cellChoices) {
        SCOPED_TRACE(choice.request);
        unit.alter([](UnitMemory &memory) { memory = baseline(); });
        readAgain();
        ComboBox &shown = box(choice.table, choice.row, choice.column);
        EXPECT_EQ(itemsOf(shown), itemsOf(QString::fromUtf8(choice.items)));
        const QString stored = shown.currentText();
        choose(shown, choice.chosen);
        const QString table = choice.table;
        const bool goesBack = table == "midiDevices" && choice.column != 6;
        EXPECT_EQ(shown.currentText(), goesBack ? stored : QString(choice.chosen)) << "until the unit has it";
        EXPECT_EQ(requests(), Requests{choice.request});
        EXPECT_EQ(shown.currentText(), choice.chosen);
        choose(shown, choice.chosen);
        EXPECT_EQ(requests(), Requests{});
        choose(shown, stored);
        EXPECT_EQ(requests().size(), 1U);
        readAgain();
        EXPECT_EQ(shown.currentText(), stored);
    }
    EXPECT_EQ(box("midiDevices", 9, 6).toolTip(), "Used while TAP TEMPO is TAP CTRL");
    EXPECT_EQ(box("midiDevices", 9, 7).toolTip(), "Used while TAP TEMPO is TAP TEMPO NOTE");
    choose(box("midiDevices", 9, 3), "TAP CTRL");
    EXPECT_EQ(requests(), Requests{"WMD|A10|E2"});
    EXPECT_EQ(box("midiDevices", 9, 6).toolTip(), "");
    clickCell("midiDevices", 9, 2);
    EXPECT_TRUE(cell<QPushButton>("midiDevices", 9, 2).accessibleName().endsWith("off")) << "until the unit has it";
    EXPECT_EQ(requests(), Requests{"WMD|A10|D1"});
    EXPECT_TRUE(cell<QPushButton>("midiDevices", 9, 2).accessibleName().endsWith("on"));
}

TEST_F(Wire, NamesAreSentWithoutControlBytesAndOnlyWhenAltered)
{
    for (const NameEntry &entry : nameEntries) {
        SCOPED_TRACE(entry.request);
        QLineEdit &name = edit(entry.table, entry.row, entry.column);
        const QString stored = name.text();
        type(name, QString::fromUtf8(entry.typed));
        EXPECT_EQ(name.text(), stored) << "until the unit has it";
        EXPECT_EQ(requests(), Requests{entry.request});
        EXPECT_EQ(name.text(), QString::fromUtf8(entry.shown));
        QTest::keyClick(&name, Qt::Key_Return);
        type(name, name.text());
        type(name, "other", Qt::Key_Escape);
        EXPECT_EQ(name.text(), QString::fromUtf8(entry.shown)) << "Escape brings the unit's text back";
        QTest::keyClick(&name, Qt::Key_Return);
        EXPECT_EQ(requests(), Requests{});
    }
}

TEST_F(Wire, ANameThatCouldNeverBeReadBackIsRefused)
{
    QLineEdit &name = edit("footswitchFunction", 1, 3);
    const auto told = nextBox();
    name.setText(QString(21840, QChar(0x20AC)));  // three bytes each
    QTest::keyClick(&name, Qt::Key_Return);
    EXPECT_EQ(requests().size(), 0U);
    EXPECT_EQ(told->toStdString(), "Error|The name is too long: the unit could not be read any more");
    EXPECT_TRUE(name.text() == "HOME");
    name.setText(QString(21790, QChar(0x20AC)));
    QTest::keyClick(&name, Qt::Key_Return);
    EXPECT_EQ(requests().size(), 1U);
    readAgain();
    EXPECT_EQ(name.text().size(), 21790);
    QHelpEvent tip(QEvent::ToolTip, {}, {});
    QCoreApplication::sendEvent(&name, &tip);
    EXPECT_EQ(QToolTip::text(), name.text()) << "which is cut";
}

TEST_F(Wire, TheFunctionDecidesWhichStatesMayBeChosen)
{
    const struct
    {
        const char *table;
        int column;
        const char *allowed[4];  // by function: which of ON, OFF, TOGGLE, INACTIVE
    } rules[] = {{"loops", 4, {"++--", "----", "++++", "----"}},
                 {"loops", 10, {"++--", "----", "++++", "----"}},
                 {"switch", 9, {"++--", "++++", "----", "----"}}};
    const QString colors[] = {"#8b0000", "#5c7728", "#0005f3", "#fa830f"};
    for (int function = 0; function < 4; ++function)
        for (int chosen = 0; chosen < 4; ++chosen) {
            const int stored = (chosen + 1) % 4;
            unit.alter([&](UnitMemory &memory) {
                PresetData &preset = memory.presets[0][3];
                preset.footswitchFunction = static_cast<FootswitchType>(function);
                preset.bufferLoop = static_cast<LoopType>(stored + 1);
                preset.loops.fill(static_cast<LoopType>(stored + 1));
                preset.switches.fill(static_cast<SwitchType>(stored + 1));
            });
            readAgain();
            for (const auto &rule : rules) {
                SCOPED_TRACE(std::string(rule.table) + std::to_string(function) + std::to_string(chosen));
                ComboBox &shown = box(rule.table, 4, rule.column);
                EXPECT_TRUE(shown.styleSheet().contains("\nbackground-color: " + colors[function] + ";\n"));
                EXPECT_EQ(shown.currentIndex(), stored);
                const bool accepted = rule.allowed[function][chosen] == '+';
                shown.showPopup();
                const QModelIndex item = shown.model()->index(chosen, 0);
                EXPECT_EQ(item.flags().testFlag(Qt::ItemIsEnabled), accepted);
                EXPECT_EQ(item.data(Qt::ToolTipRole).toString().isEmpty(), accepted);
                shown.hidePopup();
                shown.setCurrentIndex(chosen);
                EXPECT_EQ(shown.currentIndex(), accepted ? chosen : stored);
                EXPECT_EQ(requests().size(), accepted ? 1U : 0U);
            }
        }
}

TEST_F(Wire, ADeviceChoiceRebuildsTheControllersWithoutSendingOne)
{
    unit.alter([](UnitMemory &memory) { memory.midiDevices[1].controllers[0].name = "DETUNE"; });
    open(pedalTab);
    auto &controllers = find<ComboBox>("comboBox_controllerNumber");
    choose(find<ComboBox>("comboBox_midiDeviceNumber"), "DEVICE 2");
    EXPECT_EQ(requests(), Requests{"WEP|J2"});
    EXPECT_EQ(controllers.itemText(1), "DETUNE");
    EXPECT_EQ(controllers.currentIndex(), 1);
    choose(find<ComboBox>("comboBox_midiDeviceNumber"), "INACTIVE");
    EXPECT_EQ(requests(), Requests{"WEP|J255"});
    EXPECT_EQ(itemsOf(controllers), QStringList("INACTIVE"));
}
