#include "model/datafromdevice.h"

#include <gtest/gtest.h>

namespace {

template <typename Enum>
void expectRows(int first, const QStringList &texts)
{
    EXPECT_EQ(labels<Enum>(), texts);
    for (int index = 0; index < texts.size(); ++index) {
        EXPECT_EQ(static_cast<int>(fromIndex<Enum>(index)), first + index) << qPrintable(texts[index]);
        EXPECT_EQ(toIndex(static_cast<Enum>(first + index)), index) << qPrintable(texts[index]);
    }
}

}  // namespace

TEST(Enumerations, HaveTheirLabelsAndValues)
{
    expectRows<FootswitchType>(0, {"P - PRESET", "S - SWITCH MODIFIER", "L - LOOP MODIFIER", "M - MIDI MODIFIER"});
    expectRows<LoopType>(1, {"ON", "OFF", "TOGGLE", "INACTIVE"});
    expectRows<SwitchType>(1, {"ON", "OFF", "TOGGLE", "INACTIVE"});
    expectRows<WahPadAction>(1, {"ADD", "TURN LOOP ON", "CHANGE TO PRESET"});
    expectRows<WahPadSetting>(1, {"LOOP 1", "LOOP 2", "LOOP 3", "LOOP 4", "LOOP 5", "LOOP 6", "INACTIVE"});
    expectRows<ClickProtection>(1, {"LOW", "MID", "HIGH"});
    expectRows<KeyboardType>(1, {"QWERTY", "AZERTY"});
    expectRows<BankPresetChangeMode>(1, {"DIRECT", "INDIRECT"});
    expectRows<PresetChangeName>(1, {"ALWAYS", "PRESET ONLY"});
    expectRows<MidiInPCFunction>(1, {"UNUSED", "BANK 1-10", "BANK + PRESET"});
    expectRows<MidiInCCFunction>(1, {"UNUSED", "NUMBER-BANK, VALUE-PRESET"});
    expectRows<ExpressionPedalPeriod>(1, {"4 [ms] ", "8 [ms] ", "16 [ms]", "32 [ms]", "64 [ms]"});
    expectRows<ExpressionPedalCharacteristic>(1, {"FAST/SLOW", "LINEAR", "SLOW/FAST"});
    expectRows<SwitchOutSetting>(1, {"LATCHING", "PULSE", "MOMENTARY"});
    expectRows<MidiDeviceTapTempo>(1, {"UNUSED", "TAP CTRL", "TAP TEMPO NOTE"});
    expectRows<TapTempoNote>(1, {"ON", "OFF", "TOGGLE"});
    expectRows<bool>(0, {"NO", "YES"});
}

TEST(Records, HaveTheirDefaults)
{
    EXPECT_EQ(PresetData(), PresetData("", FootswitchType::Preset, LoopType::Off, filled<6>(LoopType::Off),
                                       filled<6>(SwitchType::Off), {}, filled<10>(std::uint8_t{255}),
                                       {255, 0, ExpressionPedalCharacteristic::Linear, 0, 0}));
    EXPECT_EQ(PresetExpressionPedal().controllerNumber, 255);
    EXPECT_EQ(DataFromDevice::footswitchColors.at(FootswitchType::MidiModifier), QColor("#fa830f"));
}
