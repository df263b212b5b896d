#include "model/differences.h"
#include "support/randomcontent.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

using Kind = RecordId::Kind;

TEST(Differences, TellPlaceAndBothValuesForPeople)
{
    UnitContent from;
    from.presets[3][4].controlChanges = {{1, 3, 64}, {2, 1, 5}, {20, 1, 7}, {1, 9, 0}};
    UnitContent to = from;
    to.settings.keyboardType = KeyboardType::Azerty;
    to.settings.loopsSplit = true;
    to.switchOuts.switchOuts[1] = static_cast<SwitchOutSetting>(77);
    to.expressionPedal.toeUp = 12;
    to.expressionPedal.calibrationUp = 4095;
    to.deviceInfo.firmwareMajor = -3;
    to.midiDevices[1].controllers[4] = {" A\"\x01", 127};
    to.banks[3].wahPad1Action = WahPadAction::TurnLoopOn;
    to.banks[3].name = "B\xFC";
    to.banks[99].name = "\x1D";
    to.presets[3][4].loops[1] = LoopType::Toggle;
    to.presets[3][4].programChanges[1] = 128;
    to.presets[3][4].expressionPedal.midiDeviceNumber = 10;
    to.presets[3][4].expressionPedal.controllerNumber = none;  // as good as 0
    to.presets[3][4].controlChanges = {{1, 9, 0}, {1, 9, 255}, {1, 3, toggleValue}, {5, 1, 127}, {11, 1, 7}};

    const auto found = differences(from, to, allRecords());
    QStringList lines;
    for (const Difference &difference : found)
        lines << difference.place + " | " + difference.from + " | " + difference.to + (difference.writable ? "" : " -");
    const QStringList expected{
        "UNIT: FIRMWARE MAJOR | 0 | -3 -",
        "SETTINGS: LOOP SPLIT | NO | YES",
        "SETTINGS: KEYBOARD TYPE | QWERTY | AZERTY",
        "EXPRESSION PEDAL: TOE UP VALUE | 0 | 12",
        "EXPRESSION PEDAL: CALIBRATION UP VALUE | 0 | 4095 -",
        "SWITCH OUT 2 | LATCHING | 77",
        "MIDI DEVICE 2, CONTROLLER 5: NAME | \"\" | \" A\\\"\\x{01}\"",
        "MIDI DEVICE 2, CONTROLLER 5: NUMBER | NONE | 127",
        "BANK 3: NAME | \"\" | \"B\\x{fc}\"",
        "BANK 3: WAH PAD 1 ACTION | ADD | TURN LOOP ON",
        "BANK 99: NAME | \"\" | \"\\x{1d}\" -",
        "BANK 3, PRESET 4: LOOP 2 | OFF | TOGGLE",
        "BANK 3, PRESET 4: MIDI 1 CONTROLLER 3 | 64 | TOGGLE",
        "BANK 3, PRESET 4: MIDI 2 CONTROLLER 1 | 5 | INACTIVE",
        "BANK 3, PRESET 4: MIDI 5 CONTROLLER 1 | INACTIVE | 127",
        "BANK 3, PRESET 4: PROGRAM CHANGE OF MIDI 2 | NONE | 128",
        "BANK 3, PRESET 4, EXPRESSION PEDAL: MIDI DEVICE | NONE | 10",
    };
    EXPECT_EQ(lines.join('\n').toStdString(), expected.join('\n').toStdString());
    EXPECT_EQ(summaryOf(found),
              "14 values differ in 1 bank, 1 MIDI device, global settings, expression pedal, switch outs");
    EXPECT_EQ(differences(from, to, {{Kind::Bank, 3}, {Kind::MidiIn}}).size(), 2U);
    const auto shown = valuesOf(to, {Kind::SwitchOuts});
    EXPECT_TRUE(shown.at(0).inRange && !shown.at(1).inRange && shown.at(1).writable);
}

TEST(Differences, AppliedOneByOneMakeTheContentsEqual)
{
    const std::set<RecordId> records{{Kind::DeviceInfo},     {Kind::Settings}, {Kind::ExpressionPedal},
                                     {Kind::MidiDevice, 10}, {Kind::Bank, 99}, {Kind::Preset, 0, 0},
                                     {Kind::Preset, 99, 9}};
    for (unsigned seed = 0; seed < 50; ++seed) {
        RandomContent random(seed);
        UnitContent target, source;
        for (const RecordId &id : records) {
            random.alter(target, id, 1);
            random.alter(source, id, 1);
        }
        auto left = differences(target, source, records);
        for (std::size_t count = left.size(); count > 0; --count) {
            ASSERT_EQ(left.size(), count) << seed;
            const auto chosen = left.begin() + random.number(0, static_cast<int>(count) - 1);
            apply(*chosen, target, source);
            left.erase(chosen);
            if (count % 8 == 1) left = differences(target, source, records);
        }
        EXPECT_LE(target.presets[99][9].controlChanges.size(), maxControlChanges) << seed;
    }
}

}  // namespace
