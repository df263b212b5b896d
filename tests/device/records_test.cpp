#include "device/decorator.h"
#include "device/framefactory.h"
#include "device/translator.h"
#include "protocol/converter.h"
#include "support/outcome.h"
#include "support/wire.h"
#include "unit/commandframe.h"

#include <gtest/gtest.h>

namespace {

const FrameFactory commands;
const Translator decoded;
SlaveFrame reply(const std::string &data) { return SlaveFrame(Converter::stringToVector(buildFrame("1", wire(data)))); }
PresetData preset(const std::string &data) { return *decoded.fromReadPresetSettings_getPresetData(reply(data)); }

/// A function of the decorator with its values; `PUT` leaves out what all their names begin with.
template <typename... Values>
auto put(void (Decorator::*insert)(MasterFrame &, Values...) const, std::type_identity_t<Values>... values)
{
    return [=](MasterFrame &command) { (Decorator().*insert)(command, values...); };
}
#define PUT(name, ...) put(&Decorator::insertIntoWrite##name, __VA_ARGS__)

/// The data part of the command once all of `puts` have added theirs.
std::string with(MasterFrame command, const auto &...puts)
{
    (puts(command), ...);
    return visible(command.parseField());
}

}  // namespace

TEST(Records, AreAskedForByCommandAndAddress)
{
    std::string requests;
    for (const MasterFrame &command :
         {commands.readDeviceInfo(), commands.readBankSettings(99), commands.readPresetSettings(5, -6),
          commands.readMidiDeviceSettings(10), commands.readMidiInSettings(), commands.readExpressionPedalSettings(),
          commands.readSwitchOutSettings(), commands.readOtherSettings()})
        requests += with(command) + ' ';
    EXPECT_EQ(requests, "RDI RBB|A99 RBP|A5|B-6 RMD|A10 RMI REP RSO ROS ");
}

// Every member has a value of its own; numbers that are too large show where only their low bits count.
TEST(Records, GoBothWays)
{
    EXPECT_EQ(decoded.fromReadDeviceInfo_getDeviceInfo(reply("0|AKORA|B|C1|D4|E-2|F100000")),
              DeviceInfo("KORA", "", 1, 4, -2, 100000));
    EXPECT_EQ(*decoded.fromReadBankSettings_getBankData(reply("0|A99|BSET|C259|D300|E2|F255")),
              BankData("SET", WahPadAction{259}, 44, WahPadAction{2}, 255));
    EXPECT_EQ(with(commands.writeBankSettings(99), PUT(BankSettings_BankName, "SET"),
                   PUT(BankSettings_WahPad1Action, WahPadAction{259}), PUT(BankSettings_WahPad1PresetNumber, 44),
                   PUT(BankSettings_WahPad2Action, WahPadAction{2}), PUT(BankSettings_WahPad2PresetNumber, 255)),
              "WBB|A99|BSET|C3|D44|E2|F255");
    EXPECT_EQ(*decoded.fromReadMidiInSettings_getMidiInData(reply("0|A272|B3|C258")),
              MidiInData(16, MidiInPCFunction{3}, MidiInCCFunction{258}));
    EXPECT_EQ(with(commands.writeMidiInSettings(), PUT(MidiInSettings_Channel, 16),
                   PUT(MidiInSettings_MidiInPCFunction, MidiInPCFunction{3}),
                   PUT(MidiInSettings_MidiInCCFunction, MidiInCCFunction{258})),
              "WMI|A16|B3|C2");
    EXPECT_EQ(*decoded.fromReadExpressionPedalSettings_getExpressionPedalData(
                  reply("0|C3|D261|E256|F127|G4095|H65537|I-1|J10|K20")),
              ExpressionPedalData(ExpressionPedalCharacteristic{3}, ExpressionPedalPeriod{261}, 0, 127, 4095, 1, true,
                                  10, 20, false));
    EXPECT_EQ(with(commands.writeExpressionPedalSettings(),
                   PUT(ExpressionPedalSettings_ExpressionPedalCharacteristic, ExpressionPedalCharacteristic{3}),
                   PUT(ExpressionPedalSettings_ExpressionPedalPeriod, ExpressionPedalPeriod{261}),
                   PUT(ExpressionPedalSettings_ExpressionPedalToeUp, 0),
                   PUT(ExpressionPedalSettings_ExpressionPedalToeDown, 127),
                   PUT(ExpressionPedalSettings_MidiDeviceNumber, 10),
                   PUT(ExpressionPedalSettings_ControllerNumber, 20)),
              "WEP|C3|D5|E0|F127|J10|K20");
    using Mode = SwitchOutSetting;
    EXPECT_EQ(*decoded.fromReadSwitchOutSettings_getSwitchOutData(reply("0|A1|B2|C3|D4|E5|F261")),
              SwitchOutData({Mode{1}, Mode{2}, Mode{3}, Mode{4}, Mode{5}, Mode{261}}));
    EXPECT_EQ(with(commands.writeSwitchOutSettings(), PUT(SwitchOutSettings_SwitchOutSetting, 0, Mode{1}),
                   PUT(SwitchOutSettings_SwitchOutSetting, 1, Mode{2}),
                   PUT(SwitchOutSettings_SwitchOutSetting, 6, Mode{261}),
                   PUT(SwitchOutSettings_SwitchOutSetting, 7, Mode{1})),
              "WSO|A2|F5");
    EXPECT_EQ(*decoded.fromReadOtherSettings_getSettings(reply("0|A2|B0|C-2|D1|E7|F3|G1|Hx|J260|K1")),
              (Settings{BankPresetChangeMode{2}, false, true, WahPadSetting{1}, WahPadSetting{7}, ClickProtection{3},
                        true, KeyboardType{260}, PresetChangeName{1}}));
    EXPECT_EQ(with(commands.writeOtherSettings(), PUT(OtherSettings_BankPresetChangeMode, BankPresetChangeMode{2}),
                   PUT(OtherSettings_RecallUsersBankOnlyFlag, false), PUT(OtherSettings_OneTimeModeMidiSendFlag, true),
                   PUT(OtherSettings_WahPad1Setting, WahPadSetting{1}),
                   PUT(OtherSettings_WahPad2Setting, WahPadSetting{7}),
                   PUT(OtherSettings_ClickProtection, ClickProtection{3}), PUT(OtherSettings_LoopsSplitFlag, true),
                   PUT(OtherSettings_KeyboardType, KeyboardType{260}),
                   PUT(OtherSettings_PresetChangeNameSetting, PresetChangeName{1})),
              "WOS|A2|B0|C1|D1|E7|F3|G1|J4|K1");
}

TEST(Records, OfAMidiDeviceGoBothWays)
{
    MidiDevice device("AMP", 44, true, MidiDeviceTapTempo{2}, {}, 5, 254, 127, TapTempoNote{3});
    std::vector<std::string> names;
    std::vector<int> numbers;
    std::string fields;
    for (const char letter : std::string("FGHIJKLMNOPQRSTUVWXY")) {
        device.controllers[names.size()] = {std::string("CC ") + letter, static_cast<std::uint8_t>(letter)};
        names.push_back(std::string("CC ") + letter);
        numbers.push_back(256 + letter);
        fields += std::string("|") + letter + "ACC " + letter + ";B" + std::to_string(256 + letter);
    }
    const std::string data = "0|A10|BAMP|C300|D2|E2" + fields + "|a261|b254|c127|d3";
    EXPECT_EQ(*decoded.fromReadMidiDeviceSettings_getMidiDevice(reply(data)), device);
    EXPECT_EQ(with(commands.writeMidiDeviceSettings(10), PUT(MidiDeviceSettings_Text, "AMP"),
                   PUT(MidiDeviceSettings_ChannelNumber, 300), PUT(MidiDeviceSettings_SendFirstCC, true),
                   PUT(MidiDeviceSettings_MidiDeviceTapTempo, MidiDeviceTapTempo{2}),
                   PUT(MidiDeviceSettings_ControllerNamesAndNumbers, names, numbers),
                   PUT(MidiDeviceSettings_ControllerNumber, 5), PUT(MidiDeviceSettings_ControllerValue, 254),
                   PUT(MidiDeviceSettings_TapTempoNoteNumber, 127),
                   PUT(MidiDeviceSettings_TapTempoNoteType, TapTempoNote{3})),
              "WMD|A10|BAMP|C300|D1|E2" + fields + "|a5|b254|c127|d3");
}

TEST(Records, OfAPresetGoBothWays)
{
    const std::array loops{LoopType{2}, LoopType{3}, LoopType{4}, LoopType{5}, LoopType{6}, LoopType{7}};
    const std::array switches{SwitchType{6}, SwitchType{5}, SwitchType{4}, SwitchType{3}, SwitchType{2}, SwitchType{1}};
    const std::vector<ControlChangeData> changes{{1, 2, 254}, {10, 20, 0}}, tooMany(25, {1, 2, 3});
    const PresetExpressionPedal pedal(7, 8, ExpressionPedalCharacteristic{1}, 9, 10);
    EXPECT_EQ(preset("0|A5|B6|CSOLO|D259|EA1;B2;C3;D4;E5;F6;G7|FA6;B5;C4;D3;E2;F1|GTA10,B20,C0;AA1,B2,C254;"
                     "a35;b36;c37;d38;e39;f40;g41;h42;i43;j300;nA7,B8,C1,D9,E10"),
              PresetData("SOLO", FootswitchType{259}, LoopType{1}, loops, switches, changes,
                         {35, 36, 37, 38, 39, 40, 41, 42, 43, 44}, pedal));
    EXPECT_EQ(with(commands.writePresetSettings(5, 6), PUT(PresetSettings_PresetName, "SOLO"),
                   PUT(PresetSettings_FootswitchType, FootswitchType{259}),
                   PUT(PresetSettings_LoopsData, LoopType{1}, loops), PUT(PresetSettings_SwitchOutData, switches),
                   PUT(PresetSettings_ControlChangeData, changes), PUT(PresetSettings_MidiProgramValue, 9, 300),
                   PUT(PresetSettings_PresetExpressionPedal, pedal)),
              "WBP|A5|B6|CSOLO|D259|EA1;B2;C3;D4;E5;F6;G7|FA6;B5;C4;D3;E2;F1|"
              "GAA1,B2,C254;BA10,B20,C0|Gj300|GnA7,B8,C1,D9,E10");
    const std::string lists = with(commands.writePresetSettings(0, 1), PUT(PresetSettings_ControlChangeData, {}),
                                   PUT(PresetSettings_ControlChangeData, tooMany));
    EXPECT_TRUE(lists.starts_with("WBP|A0|B1|G|GAA1,B2,C3;B") && lists.ends_with(";TA1,B2,C3")) << lists;
    // What is left out, and one sub-field alone, which is on the wire like a value:
    EXPECT_EQ(preset("0|C|D0|Gc5"),
              PresetData("", FootswitchType{0}, LoopType{2}, filled<6>(LoopType{2}), filled<6>(SwitchType{2}), {},
                         {255, 255, 5, 255, 255, 255, 255, 255, 255, 255},
                         {255, 0, ExpressionPedalCharacteristic{2}, 0, 0}));
}

TEST(Records, NameTheFieldThatIsMissing)
{
    const std::array<const char *, 2> presets[] = {
        {"0|D1", "C"}, {"0|CX|D1|EA1;B1;C1;D1;E1;F1", "E/G"}, {"0|CX|D1|F", "F/A"}, {"0|CX|D1|GBA1,C1;a4", "G/B/B"}};
    for (const auto &[data, field] : presets)
        EXPECT_EQ(failureOf([&] { preset(data); }), std::string("the answer to RBP lacks field ") + field);
}
