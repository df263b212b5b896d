#include "device/translator.h"
#include "protocol/converter.h"
#include "simulator/commandframe.h"
#include "support/outcome.h"
#include "support/wire.h"

#include <boost/lexical_cast.hpp>
#include <gtest/gtest.h>

namespace {

const Translator translator;

SlaveFrame response(const std::string &data)
{
    return SlaveFrame(Converter::stringToVector(buildFrame("1", wire(data))));
}

PresetData preset(const std::string &data) { return *translator.fromReadPresetSettings_getPresetData(response(data)); }

}  // namespace

TEST(Translator, ReducesNumbersToTheirMembers)
{
    EXPECT_EQ(translator.fromReadDeviceInfo_getDeviceInfo(response("0|AKORA|B|C1|D4|E-2|F100000")),
              DeviceInfo("KORA", "", 1, 4, -2, 100000));
    EXPECT_EQ(*translator.fromReadBankSettings_getBankData(response("0|A5|BSET|C9|D300|E2|F255")),
              BankData("SET", static_cast<WahPadAction>(9), 44, WahPadAction::TurnLoopOn, 255));
    EXPECT_EQ(*translator.fromReadOtherSettings_getSettings(response("0|A2|B0|C2|D1|E7|F3|G-1|Hx|J2|K2")),
              (Settings{BankPresetChangeMode::Indirect, false, true, WahPadSetting::Loop1, WahPadSetting::Inactive,
                        ClickProtection::High, true, KeyboardType::Azerty, PresetChangeName::PresetOnly}));
    EXPECT_EQ(*translator.fromReadExpressionPedalSettings_getExpressionPedalData(
                  response("0|C3|D5|E256|F127|G4095|H65537|I0|J10|K20")),
              ExpressionPedalData(ExpressionPedalCharacteristic::SlowFast, ExpressionPedalPeriod::Ms64, 0, 127, 4095, 1,
                                  false, 10, 20, false));
}

TEST(Translator, DecodesPresetsFieldByField)
{
    PresetData expected;
    expected.name = "SOLO";
    expected.footswitchFunction = FootswitchType::MidiModifier;
    EXPECT_EQ(preset("0|CSOLO|D3"), expected);

    expected.programChanges[2] = 5;  // one sub-field alone is on the wire like a value
    EXPECT_EQ(preset("0|CSOLO|D3|Gc5"), expected);
    expected.programChanges[9] = 44;
    expected.controlChanges = {{1, 2, 254}, {10, 20, 0}, {3, 4, 5}};
    expected.expressionPedal = {7, 8, ExpressionPedalCharacteristic::FastSlow, 9, 10};
    EXPECT_EQ(preset("0|CSOLO|D3|GDA10,B20,C0;BA1,B2,C254;TA3,B4,C5;c5;j300;nA7,B8,C1,D9,E10"), expected);

    expected = PresetData();
    expected.controlChanges = {{1, 2, 3}};
    expected.bufferLoop = LoopType::Toggle;
    expected.loops[1] = LoopType::Inactive;
    expected.switches[5] = SwitchType::On;
    EXPECT_EQ(preset("0|C|D0|EA3;B2;C4;D2;E2;F2;G2|FA2;B2;C2;D2;E2;F1|GAA1,B2,C3"), expected);
}

TEST(Translator, NamesTheFieldThatIsMissing)
{
    const std::array<const char *, 2> presets[] = {{"0|D1", "C"},
                                                   {"0|CX", "D"},
                                                   {"0|CX|D1|EA1;B1;C1;D1;E1;F1", "E/G"},
                                                   {"0|CX|D1|F", "F/A"},
                                                   {"0|CX|D1|GBA1,C1;a4", "G/B/B"},
                                                   {"0|CX|D1|GnA1,B1,C1,D1", "G/n/E"}};
    for (const auto &[data, field] : presets)
        EXPECT_EQ(failureOf([&] { preset(data); }), std::string("the answer to RBP lacks field ") + field);
    const SlaveFrame device = response("0|BX|C1|D0|E1|FAX;B1|GAX");
    EXPECT_EQ(failureOf([&] { translator.fromReadMidiDeviceSettings_getMidiDevice(device); }),
              "the answer to RMD lacks field G/B");
    EXPECT_THROW(preset("0|CX|Dx"), boost::bad_lexical_cast);
}
