#include "archive/unitfile.h"
#include "support/randomcontent.h"

#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using Kind = RecordId::Kind;

const QDateTime savedAt = QDateTime::fromString(QStringLiteral("2026-11-24T21:12:20+01:00"), Qt::ISODate);

// Members in Qt's order, without the line breaks and indents.
const QString smallFile =
    QStringLiteral(
        R"({"banks": [{"name": "CAF\u0001É","number": 7,"presets": [)"
        R"({"bufferLoop": 9,"controlChanges": [{"controller": 20,"device": 10,"value": "TOGGLE"},)"
        R"({"controller": 1,"device": {"number": 20},"value": "INACTIVE"}],)"
        R"("expressionPedal": {"characteristic": "SLOW/FAST","controller": 0,"device": null,"toeDown": 127,"toeUp": 1},)"
        R"("footswitchFunction": "M - MIDI MODIFIER","loops": ["ON","OFF","TOGGLE","INACTIVE","OFF",0],)"
        R"("name": {"bytes": "c9"},"number": 9,"programChanges": [128,null,1,2,null,null,null,null,null,null],)"
        R"("switches": ["ON","OFF","TOGGLE","INACTIVE","OFF","OFF"]}],)"
        R"("wahPad1": {"action": "CHANGE TO PRESET","preset": 9},"wahPad2": {"action": "ADD","preset": {"number": 10}}}],)"
        R"("expressionPedal": {"calibrationDown": 4095,"calibrationInversion": true,"calibrationUp": 7,)"
        R"("characteristic": "FAST/SLOW","controller": null,"midiDevice": 3,"period": "8 [ms] ","toeDown": 2,"toeUp": 1},)"
        R"("format": "kora-unit","midiDevices": [{"channel": 16,"controllers": [{"name": "MIX \"B\"","number": 127}%1],)"
        R"("name": "DELAY","noteNumber": {"number": 255},"noteType": "TOGGLE","number": 2,"sendCCFirst": true,)"
        R"("tapController": 20,"tapControllerValue": "INACTIVE","tapTempo": "TAP CTRL"}],)"
        R"("midiIn": {"ccFunction": "UNUSED","channel": null,"pcFunction": "UNUSED"},)"
        R"("saved": "2026-11-24T20:12:20Z",)"
        R"("switchOuts": ["LATCHING","PULSE","MOMENTARY","LATCHING","LATCHING",-4],)"
        R"("unit": {"firmware": "3.-17","numbers": [7,-9],"texts": ["KORA",{"bytes": "001d"}]},"version": 1})")
        .arg(QStringLiteral(R"(,{"name": "","number": null})").repeated(19));

UnitPart smallPart()
{
    UnitPart part;
    UnitContent &content = part.content;
    content.deviceInfo = {"KORA", std::string("\0\x1D", 2), 3, -17, 7, -9};
    content.expressionPedal = {
        ExpressionPedalCharacteristic::FastSlow, ExpressionPedalPeriod::Ms8, 1, 2, 7, 4095, true, 3, none, false};
    content.switchOuts.switchOuts = {SwitchOutSetting::Latching,  SwitchOutSetting::Pulse,
                                     SwitchOutSetting::Momentary, SwitchOutSetting::Latching,
                                     SwitchOutSetting::Latching,  SwitchOutSetting{-4}};
    content.midiDevices[1] = {
        "DELAY", 16, true, MidiDeviceTapTempo::TapCtrl, {}, 20, inactiveValue, 255, TapTempoNote::Toggle};
    content.midiDevices[1].controllers[0] = {"MIX \"B\"", 127};
    content.banks[7] = {"CAF\x01É", WahPadAction::ChangeToPreset, 9, WahPadAction::Add, 10};
    content.presets[7][9] = {
        "\xC9",
        FootswitchType::MidiModifier,
        LoopType{9},
        {LoopType::On, LoopType::Off, LoopType::Toggle, LoopType::Inactive, LoopType::Off, LoopType{0}},
        {SwitchType::On, SwitchType::Off, SwitchType::Toggle, SwitchType::Inactive, SwitchType::Off, SwitchType::Off},
        {{10, 20, toggleValue}, {20, 1, inactiveValue}},
        {128, none, 1, 2, none, none, none, none, none, none},
        {none, 0, ExpressionPedalCharacteristic::SlowFast, 1, 127}};
    part.records = {{Kind::DeviceInfo},    {Kind::MidiIn},  {Kind::ExpressionPedal}, {Kind::SwitchOuts},
                    {Kind::MidiDevice, 2}, {Kind::Bank, 7}, {Kind::Preset, 7, 9}};
    return part;
}

TEST(UnitFile, IsTheSameBytesForTheSamePart)
{
    const QByteArray json = archive::toJson(smallPart(), savedAt);
    EXPECT_EQ(QString(json).remove(QRegularExpression(QStringLiteral("\n *"))), smallFile) << json.constData();
    EXPECT_TRUE(json.startsWith("{\n    \"banks\": [\n        {\n            \"name\": \"CAF"));
    EXPECT_EQ(archive::fromJson(smallFile.toUtf8()), smallPart());
}

TEST(UnitFile, KeepsAnyContent)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("unit.kora"));
    for (unsigned seed = 0; seed < 4; ++seed) {
        const UnitPart part{RandomContent(seed).content(), allRecords()};
        archive::save(path, part, savedAt);
        EXPECT_EQ(archive::load(path), part) << seed;
    }
    EXPECT_THROW(archive::save(folder.path(), {}), archive::Error);
    EXPECT_THROW(archive::load(QStringLiteral("/dev/zero")), archive::Error);
}

TEST(UnitFile, KnowsSettingsByTheirNames)
{
    const UnitPart part = archive::fromJson(
        R"({"format": "kora-unit", "version": 1, "settings": {"bankPresetChangeMode": "INDIRECT",)"
        R"("recallUserBanksOnly": true, "oneTimeMidiModeSend": true, "wahPad1": "LOOP 3", "wahPad2": "LOOP 4",)"
        R"("clickProtection": "MID", "loopsSplit": true, "keyboardType": "AZERTY", "presetChangeName": "PRESET ONLY"}})");
    EXPECT_EQ(part.content.settings, (Settings{.bankPresetChangeMode = BankPresetChangeMode::Indirect,
                                               .recallUserBanksOnly = true,
                                               .oneTimeMidiModeSend = true,
                                               .wahPad1 = WahPadSetting::Loop3,
                                               .wahPad2 = WahPadSetting::Loop4,
                                               .clickProtection = ClickProtection::Mid,
                                               .loopsSplit = true,
                                               .keyboardType = KeyboardType::Azerty,
                                               .presetChangeName = PresetChangeName::PresetOnly}));
}

TEST(UnitFile, TakesWhatItDoesNotTellFromTheBase)
{
    UnitContent base = RandomContent(1, RandomContent::Values::Valid).content();
    const UnitPart part = archive::fromJson(
        R"({"format":"kora-unit","version":1,"settings":{},"midiIn":{"pcFunction":1},"banks":[{"number":5},)"
        R"({"number":3,"wahPad2":{"preset":4},"presets":[{"number":1},{"number":8,"expressionPedal":{"toeUp":3}}]}]})",
        base);
    base.midiIn.pcFunction = MidiInPCFunction::Unused;
    base.banks[3].wahPad2PresetNumber = 4;
    base.presets[3][8].expressionPedal.toeUp = 3;
    EXPECT_EQ(part, (UnitPart{base, {{Kind::MidiIn}, {Kind::Bank, 3}, {Kind::Preset, 3, 8}}}));
}

TEST(UnitFile, IsRefusedWithThePlace)
{
    const std::pair<const char *, const char *> table[] = {
        {R"({"version": 1})", R"(format: "kora-unit" is expected)"},
        {R"({"format": "kora-unit", "version": 2, "tuners": []})", "version: a later editor wrote this file"},
        {"{\n\"banks\": [}", "line 2: object is missing after a comma"},
        {R"(-"saved": 20261124)", R"(saved: a time like "2026-11-24T20:12:20Z" is expected)"},
        {R"(-"onTheFlyMode": true)", "onTheFlyMode: unknown member"},
        {R"(-"unit": {"texts": ["A", "B"], "firmware": "3"})", R"(unit.firmware: a text like "3.17" is expected)"},
        {R"(-"unit": {"numbers": [1, 2147483648]})", "unit.numbers[1]: a whole number is expected"},
        {R"(-"settings": {"loopsSplit": 1})", "settings.loopsSplit: true or false is expected"},
        {R"(-"settings": {"keyboardType": 1.5})", R"(settings.keyboardType: one of "QWERTY", "AZERTY" is expected)"},
        {R"(-"midiIn": {"channel": 0})", "midiIn.channel: a whole number from 1 to 16 or null is expected"},
        {R"(-"expressionPedal": {"toeUp": {"number": 256}})",
         "expressionPedal.toeUp: a whole number from 0 to 127 is expected"},
        {R"(-"midiDevices": {"number": 1})", "midiDevices: an array is expected"},
        {R"(-"midiDevices": [{"number": 11}])", "midiDevices[0].number: a whole number from 1 to 10 is expected"},
        {R"(-"midiDevices": [{"number": 1, "tapControllerValue": "NONE"}])",
         R"(midiDevices[0].tapControllerValue: a whole number from 0 to 127, "TOGGLE" or "INACTIVE" is expected)"},
        {R"(-"banks": [{"number": 4}, {"number": 4}])", "banks[1].number: 4 is told twice"},
        {R"(-"banks": [{"number": 4, "name": "A\u001dB"}])",
         "banks[0].name: a text without control characters is expected"},
        {R"(-"banks": [{"number": 4, "name": {"bytes": 4}}])", "banks[0].name: a text is expected"},
        {R"(-"banks": [{"number": 4, "wahPad1": {"loop": 1}}])", "banks[0].wahPad1.loop: unknown member"},
        {R"(-"banks": [{"number": 4, "presets": [{"number": 9}, {"number": 9}]}])",
         "banks[0].presets[1].number: 9 is told twice"},
        {R"(-"banks": [{"number": 4, "presets": [{"number": 9, "loops": ["ON", "OF", "ON", "ON", "ON", "ON"]}]}])",
         R"(banks[0].presets[0].loops[1]: one of "ON", "OFF", "TOGGLE", "INACTIVE" is expected)"},
        {R"(-"banks": [{"number": 4, "presets": [{"number": 9, "controlChanges": [{"device": 1, "controller": 1}]}]}])",
         "banks[0].presets[0].controlChanges[0]: device, controller and value are expected"},
    };
    for (const auto &[text, message] : table) {
        QByteArray json = text;
        if (json.startsWith('-')) json.replace(0, 1, R"({"format": "kora-unit", "version": 1, )").append('}');
        try {
            archive::fromJson(json);
            ADD_FAILURE() << text;
        } catch (const archive::Error &error) {
            EXPECT_STREQ(error.what(), message);
        }
    }
    EXPECT_THROW(archive::fromJson(QByteArray(archive::maxFileSize, '[')), archive::Error);
}

}  // namespace
