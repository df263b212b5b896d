#include "device/kora.h"
#include "device/transfer.h"
#include "model/differences.h"
#include "simulator/unitport.h"
#include "support/randomcontent.h"
#include "support/wire.h"

#include <gtest/gtest.h>

namespace {

using Kind = RecordId::Kind;

/// Gives some records new values: some stay as they are, and lists may have all that a list may have.
void alter(UnitContent &content, RandomContent &random)
{
    for (const RecordId &id : someRecords)
        random.alter(content, id, random.number(0, 2) * 0.5);
    static constexpr std::uint8_t devices[] = {1, 10, 77}, values[] = {0, 127, toggleValue, inactiveValue};
    for (const std::size_t bank : {0U, 99U})
        for (PresetData &preset : content.presets[bank]) {
            if (random.number(0, 1) == 0) continue;
            preset.controlChanges.resize(static_cast<std::size_t>(random.number(0, 20)));
            for (ControlChangeData &change : preset.controlChanges)
                change = {devices[random.number(0, 2)], static_cast<std::uint8_t>(random.number(1, 4)),
                          values[random.number(0, 3)]};
        }
}

std::set<RecordId> differing(const UnitContent &one, const UnitContent &other,
                             const std::set<RecordId> &among = someRecords)
{
    std::set<RecordId> records;
    for (const Difference &difference : differences(one, other, among))
        if (difference.writable) records.insert(difference.record);
    return records;
}

std::unique_ptr<KORA> handleOf(const UnitPort &unit, unsigned int timeout = 2000)
{
    return std::make_unique<KORA>(std::make_shared<Connection>(QString::fromStdString(unit.location()), timeout));
}

void tryToWrite(const Fault &fault, bool stops, MidiLists lists, unsigned seed)
{
    RandomContent random(seed, RandomContent::Values::Valid);
    UnitMemory held;
    alter(held, random);
    UnitContent wanted = held;
    alter(wanted, random);
    UnitPort unit(held);
    unit.setMidiLists(lists);
    auto kora = handleOf(unit, fault.kind == Fault::Kind::Silence ? 200 : 2000);
    UnitPart present;
    ASSERT_FALSE(Transfer(*kora).read(present, someRecords).failure);

    int exchanges = random.number(0, 80), left = 0;
    unit.queueFault(fault, static_cast<std::size_t>(exchanges));
    const Transfer::Watch watch{[&](int done, int total) { EXPECT_GE(left = total - done, 0); },
                                [&] { return stops && exchanges-- == 0; }};
    const auto outcome = Transfer(*kora, watch).write(present, wanted, someRecords);
    const bool isRefused = fault.kind == Fault::Kind::ErrorStatus, isFailure = fault.kind != Fault::Kind::None;
    EXPECT_EQ(outcome.stopped, stops);
    EXPECT_EQ(outcome.failure.has_value(), isFailure) << outcome.failure.value_or("");

    const UnitContent now = unit.memory();
    EXPECT_EQ(differing(now, wanted).empty() && left == 0, !stops && !isFailure);
    // Only of an exchange whose answer was lost it is uncertain what became of it.
    EXPECT_LE(differing(now, present.content).size(), outcome.failure == "Receiving timeout" ? 1U : 0U);
    std::set<RecordId> changed = differing(now, held, allRecords());
    for (const RecordId &id : outcome.written)
        changed.erase(id);
    EXPECT_LE(changed.size(), isFailure && !isRefused ? 1U : 0U);

    unit.plugIn();
    kora = handleOf(unit);
    UnitPart unknown;
    Transfer(*kora).write(unknown, held, someRecords);
    EXPECT_TRUE(differing(unit.memory(), held, allRecords()).empty());
    unit.recordRequests();
    EXPECT_TRUE(Transfer(*kora).write(unknown, held, someRecords).written.empty() && unit.takeRequests().empty());
}

}  // namespace

TEST(Transfer, WritesWhatItTellsAndNothingElse)
{
    const std::pair<Fault, bool> disturbances[] = {{{}, false},
                                                   {{}, true},
                                                   {Fault::errorStatus(), false},
                                                   {Fault::wrongChecksum(), false},
                                                   {Fault::silence(), false},
                                                   {Fault::hangUp(), false}};
    for (unsigned seed = 0; seed < 3; ++seed)
        for (const MidiLists lists : {MidiLists::Replace, MidiLists::Merge})
            for (const auto &[fault, stops] : disturbances) {
                SCOPED_TRACE(testing::Message() << "fault " << static_cast<int>(fault.kind) << (stops ? " stop" : "")
                                                << " lists " << static_cast<int>(lists) << " seed " << seed);
                tryToWrite(fault, stops, lists, seed);
            }
}

TEST(Transfer, SendsOneSettingAtATimeAndAPresetsFunctionFirst)
{
    UnitMemory held;
    for (std::uint8_t controller = 1; controller <= 20; ++controller)
        held.presets[2][5].controlChanges.emplace_back(1, controller, controller);
    held.presets[2][6].controlChanges = {{1, 3, 5}, {77, 1, 9}};
    held.presets[2][7].controlChanges = {{1, 3, 5}, {1, 3, 7}};
    UnitContent wanted = held;
    wanted.deviceInfo.firmwareMajor = 9;
    wanted.settings.loopsSplit = true;
    wanted.expressionPedal.calibrationUp = 9;
    wanted.switchOuts.switchOuts[5] = SwitchOutSetting::Pulse;
    wanted.midiDevices[9].controllers[19] = {"MIX", 7};
    wanted.banks[2].wahPad2PresetNumber = 4;
    PresetData &preset = wanted.presets[2][5];
    preset.name = "SOLO";
    preset.footswitchFunction = FootswitchType::MidiModifier;
    preset.loops[5] = LoopType::Toggle;
    preset.programChanges[9] = 128;
    preset.expressionPedal = {none, 0, ExpressionPedalCharacteristic::Linear, 3, 4};
    preset.controlChanges = {{2, 9, 255}, {1, 20, 64}, {2, 9, 254}};
    wanted.presets[2][6].controlChanges = {{2, 1, 0}, {2, 1, 127}};
    wanted.presets[2][7].controlChanges = {{1, 3, 9}, {55, 1, 2}};

    UnitPort unit(held);
    const auto kora = handleOf(unit);
    unit.recordRequests();
    UnitPart present{held, allRecords()};
    Transfer(*kora).write(present, wanted, allRecords());
    std::string requests;
    for (std::string request : unit.takeRequests()) {
        request = visible(request);
        if (const auto fillers = request.find("A20,B"); fillers != std::string::npos)
            request.replace(fillers, request.rfind('|') - fillers, "...");
        requests += request + '\n';
    }
    std::string controllers, dropped;
    for (char letter = 'F'; letter < 'Y'; ++letter)
        controllers += std::string("|") + letter + "A;B255";
    for (int number = 1; number < 20; ++number)
        dropped += static_cast<char>('@' + number) + ("A1,B" + std::to_string(number)) + ",C255;";
    EXPECT_EQ(requests, "WOS|G1\nWSO|F2\nWMD|A10" + controllers + "|YAMIX;B7\nWBB|A2|F4\n" +
                            "WBP|A2|B5|D3\nWBP|A2|B5|CSOLO\nWBP|A2|B5|EA2;B2;C2;D2;E2;F2;G3|D3\n" + "WBP|A2|B5|G" +
                            dropped + "TA1,B20,C64|D3\nWBP|A2|B5|GAA2,B9,C254;BA1,B20,C64;C...|D3\n" +
                            "WBP|A2|B5|Gj128|D3\nWBP|A2|B5|GnA255,B255,C2,D3,E4|D3\n" +
                            "WBP|A2|B6|GAA1,B3,C255;BA77,B1,C255;CA2,B1,C127;D...|D0\n" +
                            "WBP|A2|B7|GAA1,B3,C255;B...|D0\nWBP|A2|B7|GAA1,B3,C9;B...|D0\n" +
                            "ROS\nRSO\nRMD|A10\nRBB|A2\nRBP|A2|B5\nRBP|A2|B6\nRBP|A2|B7\n");

    // A line that breaks between the two lists leaves known what the unit holds.
    unit.alter([&](UnitMemory &memory) { memory = held; });
    unit.queueFault(Fault::hangUp(), 4);
    present.content = held;
    EXPECT_EQ(Transfer(*kora).write(present, wanted, {{Kind::Preset, 2, 5}}).failure, "Receiving timeout");
    EXPECT_EQ(messagesOf(present.content.presets[2][5].controlChanges), (Messages{{{1, 20}, 64}}));
}

TEST(Transfer, TriesValuesWithoutALabelButNoNamesThatCannotBeSentOrReadBack)
{
    UnitPort unit{UnitMemory()};
    const auto kora = handleOf(unit);
    UnitPart present{{}, allRecords()};
    UnitContent wanted;
    wanted.settings.loopsSplit = true;
    wanted.settings.keyboardType = KeyboardType{3};
    for (const std::string &name : {std::string("A\x1D"), std::string(65535, 'A')}) {
        wanted.midiDevices[9].controllers[19].name = name;
        EXPECT_TRUE(Transfer(*kora).write(present, wanted, allRecords()).failure);
    }
    EXPECT_EQ(unit.memory(), UnitMemory());
    EXPECT_EQ(Transfer(*kora).write(present, wanted, {{Kind::Settings}, {Kind::Bank}}).failure, "Value out of range");
    EXPECT_TRUE(present.content.settings.loopsSplit && unit.memory().settings == present.content.settings);
}
