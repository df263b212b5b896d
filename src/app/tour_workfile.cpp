#include "app/gestures.h"
#include "app/tour.h"
#include "archive/unitfile.h"
#include "model/differences.h"
#include "ui/shell/mainwindow.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace gestures;

void Tour::workOnAFile()
{
    const auto isSame = [](const UnitContent &one, const UnitContent &other) {
        return differences(one, other, allRecords()).empty();
    };
    auto &status = find<QLabel>(window, "label_deviceStatus");
    const UnitContent unitsContent = unit.memory();
    const QString file = pictures.filePath(QStringLiteral("gig.kora"));
    archive::save(file, {unitsContent, allRecords()});
    withDialog([&] { trigger("WORK ON A FILE..."); }, chooseFile(file));
    check(QStringLiteral("the editor works on the file"), [&] { return status.text() == "WORKING ON gig.kora"; });

    awaitAnswers();
    UnitContent expected = unitsContent;
    changeEveryPage(expected);
    picture(QStringLiteral("working-on-a-file"));
    check(QStringLiteral("the file holds what was changed in every page"),
          [&] { return isSame(archive::load(file).content, expected); });

    trigger("BACK TO THE UNIT");
    check(QStringLiteral("the editor is back at the unit"), [&] { return status.text() == "DEVICE CONNECTED"; });
    checkUnit(QStringLiteral("the unit holds what it held before"),
              [&](const UnitMemory &memory) { return isSame(memory, unitsContent); });
    withDialogs([&] { trigger("FROM FILE..."); },
                {chooseFile(file), answerDifferences(QStringLiteral("bring-home"), "pushButton_restore"),
                 closeBox(QStringLiteral("RESTORE COMPLETE"))});
    checkUnit(QStringLiteral("the unit holds what the file holds"),
              [&](const UnitMemory &memory) { return isSame(memory, archive::load(file).content); });
}

void Tour::changeEveryPage(UnitContent &expected)
{
    click("pushButton_settingsTab");
    choose("comboBox_wahPad2", QStringLiteral("LOOP 4"));
    expected.settings.wahPad2 = WahPadSetting::Loop4;
    click("pushButton_midiMidiIn");
    choose("comboBox_channel", QStringLiteral("3"));
    expected.midiIn.channel = 3;
    click("pushButton_midiExpressionPedal");
    choose("comboBox_toeUpValue", QStringLiteral("18"));
    expected.expressionPedal.toeUp = 18;
    click("pushButton_midiSwitchOut");
    choose("comboBox_switchOut4", QStringLiteral("PULSE"));
    expected.switchOuts.switchOuts[3] = SwitchOutSetting::Pulse;
    click("pushButton_midiDevicesTab");
    type(cell<QLineEdit>(window, "tableWidget_midiDevices", 9, 0), QStringLiteral("ROOM"));
    expected.midiDevices[9].name = "ROOM";
    changePresets(expected);
}

void Tour::changePresets(UnitContent &expected)
{
    PresetData &preset = expected.presets[7][0];
    click("pushButton_presetsTab");
    click("pushButton_footswitchFunctionTab");
    chooseFrom(cell<QComboBox>(window, "tableWidget_footswitchFunction", 1, 2), QStringLiteral("P - PRESET"));
    type(cell<QLineEdit>(window, "tableWidget_footswitchFunction", 1, 4), QStringLiteral("ON THE BUS"));
    preset.footswitchFunction = FootswitchType::Preset;
    preset.name = "ON THE BUS";
    awaitAnswers();
    const auto otherState = [](QComboBox &box) {
        const QString other = box.currentText() == "ON" ? QStringLiteral("OFF") : QStringLiteral("ON");
        chooseFrom(box, other);
        return other == "ON";
    };
    click("pushButton_loopsTab");
    const bool isLoopOn = otherState(cell<QComboBox>(window, "tableWidget_loops", 1, 5));
    preset.loops[0] = isLoopOn ? LoopType::On : LoopType::Off;
    click("pushButton_switchTab");
    const bool isSwitchOn = otherState(cell<QComboBox>(window, "tableWidget_switch", 1, 4));
    preset.switches[0] = isSwitchOn ? SwitchType::On : SwitchType::Off;
    click("pushButton_midiTab");
    withDialog([&] { clickOn(cell<QPushButton>(window, "tableWidget_midi", 1, 13)); },
               [&](QWidget &dialog) {
                   chooseFrom(find<QComboBox>(dialog, "comboBox_programChangeNumber"), QStringLiteral("34"));
                   clickOn(find<QPushButton>(dialog, "pushButton_ok"));
               });
    preset.programChanges[9] = 34;
    click("pushButton_wahPads");
    chooseFrom(cell<QComboBox>(window, "tableWidget_wahPads", 3, 3), QStringLiteral("ADD"));
    expected.banks[7].wahPad1Action = WahPadAction::Add;
}
