#include "app/gestures.h"
#include "app/tour.h"
#include "ui/shell/mainwindow.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

using namespace gestures;

// --- Global settings

void Tour::settingsPage()
{
    click("pushButton_settingsTab");
    check(QStringLiteral("the settings page shows the unit's values"),
          [&] { return find<QComboBox>(window, "comboBox_keyboardType").currentIndex() >= 0; });
    choose("comboBox_keyboardType", QStringLiteral("AZERTY"));
    checkUnit(QStringLiteral("keyboard type AZERTY"),
              [](const UnitMemory &memory) { return memory.settings.keyboardType == KeyboardType::Azerty; });
    choose("comboBox_clickProtection", QStringLiteral("HIGH"));
    checkUnit(QStringLiteral("click protection HIGH"),
              [](const UnitMemory &memory) { return memory.settings.clickProtection == ClickProtection::High; });
    choose("comboBox_wahPad2", QStringLiteral("LOOP 5"));
    checkUnit(QStringLiteral("wah pad 2 on loop 5"),
              [](const UnitMemory &memory) { return memory.settings.wahPad2 == WahPadSetting::Loop5; });
    picture(QStringLiteral("settings"));
}

void Tour::midiInPage()
{
    click("pushButton_midiMidiIn");
    check(QStringLiteral("the MIDI IN page shows the unit's values"),
          [&] { return find<QComboBox>(window, "comboBox_PCFunction").currentIndex() >= 0; });
    choose("comboBox_channel", QStringLiteral("12"));
    checkUnit(QStringLiteral("MIDI IN channel 12"),
              [](const UnitMemory &memory) { return memory.midiIn.channel == 12; });
    picture(QStringLiteral("midi-in"));
}

void Tour::expressionPedalPage()
{
    click("pushButton_midiExpressionPedal");
    check(QStringLiteral("the expression pedal page shows the unit's values"),
          [&] { return find<QComboBox>(window, "comboBox_toeDownValue").currentIndex() >= 0; });
    choose("comboBox_toeUpValue", QStringLiteral("17"));
    checkUnit(QStringLiteral("toe up value 17"),
              [](const UnitMemory &memory) { return memory.expressionPedal.toeUp == 17; });
    choose("comboBox_midiDeviceNumber", QString::fromStdString(unit.memory().midiDevices[0].name));
    checkUnit(QStringLiteral("the pedal drives MIDI device 1"),
              [](const UnitMemory &memory) { return memory.expressionPedal.midiDeviceNumber == 1; });
    choose("comboBox_controllerNumber", QString::fromStdString(unit.memory().midiDevices[0].controllers[1].name));
    checkUnit(QStringLiteral("the pedal drives its second controller"),
              [](const UnitMemory &memory) { return memory.expressionPedal.controllerNumber == 2; });
    awaitAnswers();
    picture(QStringLiteral("expression-pedal"));
}

void Tour::switchOutPage()
{
    click("pushButton_midiSwitchOut");
    check(QStringLiteral("the switch out page shows the unit's values"),
          [&] { return find<QComboBox>(window, "comboBox_switchOut6").currentIndex() >= 0; });
    choose("comboBox_switchOut4", QStringLiteral("MOMENTARY"));
    checkUnit(QStringLiteral("switch out 4 MOMENTARY"),
              [](const UnitMemory &memory) { return memory.switchOuts.switchOuts[3] == SwitchOutSetting::Momentary; });
    picture(QStringLiteral("switch-out"));
}

// --- Presets: row 0 holds the arrow up, presets 0 to 9 stand in rows 1 to 10

void Tour::footswitchTable()
{
    const char *const table = "tableWidget_footswitchFunction";
    const auto bankShown = [&](int bank) {
        return [this, table, bank] {
            const QString name = QString::fromStdString(unit.memory().banks[static_cast<std::size_t>(bank)].name);
            return cell<QLineEdit>(window, table, 1, 3).text() == name;
        };
    };
    check(QStringLiteral("the first bank is shown"), bankShown(0));
    picture(QStringLiteral("footswitch-functions"));
    clickOn(cell<QPushButton>(window, table, 0, 0));
    check(QStringLiteral("the arrow pages to bank 1"), bankShown(1));
    type(cell<QLineEdit>(window, table, 1, 0), QStringLiteral("07"));
    check(QStringLiteral("typing 07 pages to bank 7"), bankShown(7));
    picture(QStringLiteral("bank-7"));
    type(cell<QLineEdit>(window, table, 1, 3), QStringLiteral("Fête d'été"));
    checkUnit(QStringLiteral("bank 7 has its new name"),
              [](const UnitMemory &memory) { return memory.banks[7].name == "Fête d'été"; });
    type(cell<QLineEdit>(window, table, 4, 4), QStringLiteral("SOLO \"Öl\""));
    checkUnit(QStringLiteral("preset 3 of bank 7 has its new name"),
              [](const UnitMemory &memory) { return memory.presets[7][3].name == "SOLO \"Öl\""; });
    chooseFrom(cell<QComboBox>(window, table, 4, 2), QStringLiteral("M - MIDI MODIFIER"));
    checkUnit(QStringLiteral("preset 3 of bank 7 is a MIDI modifier"), [](const UnitMemory &memory) {
        return memory.presets[7][3].footswitchFunction == FootswitchType::MidiModifier;
    });
    awaitAnswers();
    picture(QStringLiteral("bank-7-changed"));
    type(cell<QLineEdit>(window, table, 1, 0), QStringLiteral("0"));
    check(QStringLiteral("typing 0 pages back, for all tables"), bankShown(0));
}

void Tour::loopsTable()
{
    click("pushButton_loopsTab");
    const int preset = presetWith(FootswitchType::LoopModifier);
    const auto loop = [=](const UnitMemory &memory) { return memory.presets[0][preset].loops[2]; };
    const LoopType wanted = loop(unit.memory()) == LoopType::Toggle ? LoopType::Inactive : LoopType::Toggle;
    chooseFrom(cell<QComboBox>(window, "tableWidget_loops", preset + 1, 7), labels<LoopType>().at(toIndex(wanted)));
    checkUnit(QStringLiteral("loop 3 of a loop modifier changes"),
              [&](const UnitMemory &memory) { return loop(memory) == wanted; });
    picture(QStringLiteral("loops"));
}

void Tour::switchTable()
{
    click("pushButton_switchTab");
    const int preset = presetWith(FootswitchType::Preset);
    const auto switchOutput = [=](const UnitMemory &memory) { return memory.presets[0][preset].switches[1]; };
    const SwitchType wanted = switchOutput(unit.memory()) == SwitchType::On ? SwitchType::Off : SwitchType::On;
    chooseFrom(cell<QComboBox>(window, "tableWidget_switch", preset + 1, 5), labels<SwitchType>().at(toIndex(wanted)));
    checkUnit(QStringLiteral("switch 2 of a plain preset changes"),
              [&](const UnitMemory &memory) { return switchOutput(memory) == wanted; });
    picture(QStringLiteral("switches"));
}

void Tour::wahPadsTable()
{
    click("pushButton_presetsTab");
    click("pushButton_wahPads");
    const char *const table = "tableWidget_wahPads";
    chooseFrom(cell<QComboBox>(window, table, 3, 3), QStringLiteral("ADD"));
    chooseFrom(cell<QComboBox>(window, table, 3, 3), QStringLiteral("CHANGE TO PRESET"));
    checkUnit(QStringLiteral("wah pad 1 changes to a preset"),
              [](const UnitMemory &memory) { return memory.banks[0].wahPad1Action == WahPadAction::ChangeToPreset; });
    auto &target = cell<QComboBox>(window, table, 3, 4);
    chooseFrom(target, target.itemText(6));
    checkUnit(QStringLiteral("wah pad 1 changes to preset 6"),
              [](const UnitMemory &memory) { return memory.banks[0].wahPad1PresetNumber == 6; });
    awaitAnswers();
    picture(QStringLiteral("wah-pads"));
}

// --- MIDI

void Tour::midiDevicesTable()
{
    click("pushButton_midiDevicesTab");
    const char *const table = "tableWidget_midiDevices";
    check(QStringLiteral("the MIDI devices are shown"),
          [&] { return cell<QLineEdit>(window, table, 0, 0).text() == unit.memory().midiDevices[0].name.c_str(); });
    type(cell<QLineEdit>(window, table, 9, 0), QStringLiteral("HALL"));
    checkUnit(QStringLiteral("MIDI device 10 has a name"),
              [](const UnitMemory &memory) { return memory.midiDevices[9].name == "HALL"; });
    chooseFrom(cell<QComboBox>(window, table, 9, 1), QStringLiteral("9"));
    checkUnit(QStringLiteral("MIDI device 10 listens on channel 9"),
              [](const UnitMemory &memory) { return memory.midiDevices[9].channel == 9; });
    withDialog([&] { clickOn(cell<QPushButton>(window, table, 9, 4)); },
               [&](QWidget &dialog) {
                   const char *const list = "tableWidget_controllersListTable";
                   type(cell<QLineEdit>(dialog, list, 0, 1), QStringLiteral("MIX"));
                   chooseFrom(cell<QComboBox>(dialog, list, 0, 2), QStringLiteral("21"));
                   type(cell<QLineEdit>(dialog, list, 1, 1), QStringLiteral("DECAY"));
                   chooseFrom(cell<QComboBox>(dialog, list, 1, 2), QStringLiteral("22"));
                   picture(QStringLiteral("controller-list"), &dialog);
                   clickOn(find<QPushButton>(dialog, "pushButton_ok"));
               });
    checkUnit(QStringLiteral("MIDI device 10 has two controllers"), [](const UnitMemory &memory) {
        const auto &controllers = memory.midiDevices[9].controllers;
        return controllers[0] == Controller{"MIX", 21} && controllers[1] == Controller{"DECAY", 22};
    });
    check(QStringLiteral("the presets of three banks that send to MIDI device 1 are counted"),
          [&] { return cell<QPushButton>(window, table, 0, 9).text() == "21+"; });
    picture(QStringLiteral("midi-devices"));
}

void Tour::midiTable()
{
    click("pushButton_presetsTab");
    click("pushButton_midiTab");
    const char *const table = "tableWidget_midi";
    check(QStringLiteral("the buttons carry the devices' names"),
          [&] { return cell<QPushButton>(window, table, 1, 13).text() == "HALL"; });
    withDialog([&] { clickOn(cell<QPushButton>(window, table, 1, 13)); },
               [&](QWidget &dialog) {
                   const char *const list = "tableWidget_controllersListTable";
                   chooseFrom(find<QComboBox>(dialog, "comboBox_programChangeNumber"), QStringLiteral("33"));
                   chooseFrom(cell<QComboBox>(dialog, list, 0, 1), QStringLiteral("64"));
                   chooseFrom(cell<QComboBox>(dialog, list, 1, 1), QStringLiteral("TOGGLE"));
                   chooseFrom(find<QComboBox>(dialog, "comboBox_controllers"), QStringLiteral("DECAY"));
                   chooseFrom(find<QComboBox>(dialog, "comboBox_characteristic"), QStringLiteral("SLOW/FAST"));
                   chooseFrom(find<QComboBox>(dialog, "comboBox_toeUpValue"), QStringLiteral("5"));
                   chooseFrom(find<QComboBox>(dialog, "comboBox_toeDownValue"), QStringLiteral("120"));
                   picture(QStringLiteral("midi-editor"), &dialog);
                   clickOn(find<QPushButton>(dialog, "pushButton_ok"));
               });
    const auto preset = [](const UnitMemory &memory) -> const PresetData & { return memory.presets[0][0]; };
    checkUnit(QStringLiteral("preset 0 sends program change 33 to MIDI device 10"),
              [&](const UnitMemory &memory) { return preset(memory).programChanges[9] == 33; });
    checkUnit(QStringLiteral("preset 0 sets and toggles the two controllers"), [&](const UnitMemory &memory) {
        const auto &changes = preset(memory).controlChanges;
        const auto sends = [&](std::uint8_t controller, std::uint8_t value) {
            return std::count(changes.begin(), changes.end(), ControlChangeData(10, controller, value)) == 1;
        };
        return sends(1, 64) && sends(2, toggleValue);
    });
    checkUnit(QStringLiteral("the pedal drives DECAY while preset 0 is on"), [&](const UnitMemory &memory) {
        return preset(memory).expressionPedal ==
               PresetExpressionPedal(10, 2, ExpressionPedalCharacteristic::SlowFast, 5, 120);
    });
    picture(QStringLiteral("midi"));
}

void Tour::previewPage()
{
    click("pushButton_previewTab");
    picture(QStringLiteral("preview"));
}
