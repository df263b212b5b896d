#include "model/devicemoves.h"
#include "model/midiuse.h"
#include "support/outgoing.h"
#include "support/randomcontent.h"

#include <gtest/gtest.h>

namespace {

class DeviceMoves : public testing::TestWithParam<unsigned>
{
protected:
    int device() { return random.number(1, midiDeviceCount); }
    /// A controller dragged to another place of a list.
    ControllerOrder dragged()
    {
        ControllerOrder order = sameOrder;
        const int from = random.number(0, controllerCount - 1), to = random.number(0, controllerCount - 1);
        for (int place = from; place != to; place += from < to ? 1 : -1)
            std::swap(order.at(place), order.at(from < to ? place + 1 : place - 1));
        return order;
    }

    RandomContent random{GetParam(), RandomContent::Values::Valid};
    const UnitContent before = random.content();
    UnitContent content = before;
};

INSTANTIATE_TEST_SUITE_P(Contents, DeviceMoves, testing::Range(1U, 4U));

}  // namespace

TEST_P(DeviceMoves, WhatIsCarriedAlongSendsWhatItSent)
{
    const Outgoing sent = outgoing(before);
    for (int count = 0; count < 10; ++count) {
        const int one = device(), other = device();
        const bool isSwap = random.number(0, 1) == 1;
        const Arrangement move =
            isSwap ? arrange::swapDevices(one, other, true) : arrange::reorderControllers(one, {}, dragged(), true);
        move.alter(content);
        ASSERT_EQ(outgoing(content), sent) << move.words.toStdString();
    }
    EXPECT_NE(content.midiDevices, before.midiDevices);
}

TEST_P(DeviceMoves, WhatIsNotCarriedAlongStaysAsItIs)
{
    const ControllerOrder order = dragged();
    arrange::swapDevices(2, 9, false).alter(content);
    arrange::reorderControllers(4, {{{order[3], "MOVED"}}, {}}, order, false).alter(content);
    EXPECT_EQ(content.presets, before.presets);
    EXPECT_EQ(content.expressionPedal, before.expressionPedal);
    EXPECT_EQ(content.midiDevices[1], before.midiDevices[8]);
    EXPECT_EQ(content.midiDevices[3].controllers[3].name, "MOVED") << "an edit names the places before the move";
    EXPECT_EQ(content.midiDevices[3].tapController, before.midiDevices[3].tapController);
}

TEST_P(DeviceMoves, APastedDeviceTakesTheMessagesOfTheCopiedOneAndTellsWhatFallsTogether)
{
    const int from = 3, to = 7;
    const Arrangement paste = arrange::pasteDevice(before.midiDevices[from - 1], to, from);
    paste.alter(content);
    EXPECT_EQ(content.midiDevices[to - 1], before.midiDevices[from - 1]);
    int fallen = 0, presets = 0;
    for (const RecordId &id : allRecords()) {
        if (id.kind != RecordId::Kind::Preset) continue;
        const PresetData &was = before.presets.at(id.number).at(id.preset),
                         &is = content.presets.at(id.number).at(id.preset);
        Messages expected = plainMessages(was);
        const Messages messages = expected;
        for (const auto &[address, value] : messages)
            if (address.first == from) {
                fallen += static_cast<int>(messages.count({to, address.second}));
                expected[{to, address.second}] = value;
                expected.erase(address);
            }
        ASSERT_EQ(plainMessages(is), expected);
        auto programs = was.programChanges;
        fallen += programs[from - 1] != none && programs[to - 1] != none ? 1 : 0;
        if (programs[from - 1] != none) programs[to - 1] = std::exchange(programs[from - 1], none);
        ASSERT_EQ(is.programChanges, programs);
        const int pedal = was.expressionPedal.midiDeviceNumber;
        ASSERT_EQ(is.expressionPedal.midiDeviceNumber, pedal == from ? to : pedal);
        presets += is != was ? 1 : 0;
        ASSERT_FALSE(sendsTo(is, {from}));
        ASSERT_EQ(sendsTo(is, {to}), sendsTo(was, {from}) || sendsTo(was, {to}));
    }
    EXPECT_EQ(arrange::collisions(before, from, to).size(), fallen);
    EXPECT_EQ(arrange::impactOf(paste, before).presets, presets);
    EXPECT_TRUE(arrange::collisions(content, from, to).isEmpty());
}

TEST(Collisions, AndUsesAreToldByPlace)
{
    UnitContent content = emptyContent();
    PresetData &preset = content.presets[3][4];
    preset.controlChanges = {{1, 5, 10}, {2, 5, 20}, {1, 6, inactiveValue}, {2, 6, 30}};
    preset.programChanges[0] = 1;
    preset.programChanges[1] = 128;
    EXPECT_EQ(arrange::collisions(content, 1, 2),
              QStringList({"BANK 3, PRESET 4: MIDI 2 CONTROLLER 5", "BANK 3, PRESET 4: PROGRAM CHANGE OF MIDI 2"}));
    EXPECT_TRUE(arrange::collisions(content, 1, 3).isEmpty());
    EXPECT_EQ(arrange::impactOf(arrange::swapDevices(1, 2, true), content), (arrange::Impact{1, 6}));

    const UnitPart part{content, recordsOfBank(3)};
    EXPECT_EQ(usesOf(part, {2, 6}), (std::set<RecordId>{{RecordId::Kind::Preset, 3, 4}}));
    EXPECT_TRUE(usesOf(part, {1, 6}).empty()) << "the inactive value sends nothing";
}
