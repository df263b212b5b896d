#include "model/devicemoves.h"
#include "model/midiuse.h"
#include "support/outgoing.h"
#include "support/randomcontent.h"

#include <gtest/gtest.h>

namespace {

class DeviceMoves : public testing::TestWithParam<unsigned>
{
protected:
    RandomContent random{GetParam(), RandomContent::Values::Valid};
    const UnitContent before = random.content();
    UnitContent content = before;
};

INSTANTIATE_TEST_SUITE_P(Contents, DeviceMoves, testing::Range(1U, 4U));

}  // namespace

TEST_P(DeviceMoves, WhatIsCarriedAlongSendsWhatItSent)
{
    for (int count = 0; count < 10; ++count) {
        const int one = random.number(1, 10), other = random.number(1, 10);
        ControllerOrder order = sameOrder;  // a controller dragged to another place
        const int from = random.number(0, 19), to = random.number(0, 19), step = from < to ? 1 : -1;
        for (int place = from; place != to; place += step)
            std::swap(order.at(place), order.at(place + step));
        const Arrangement moves[] = {arrange::swapDevices(one, other, true),
                                     arrange::reorderControllers(one, {}, order, true)};
        moves[random.number(0, 1)].alter(content);
        ASSERT_TRUE(outgoing(content) == outgoing(before));
    }
    EXPECT_NE(content.midiDevices, before.midiDevices);
}

TEST_P(DeviceMoves, APastedDeviceTakesTheMessagesOfTheCopiedOneAndTellsWhatFallsTogether)
{
    UnitContent plain = before;  // the messages of two devices that are called the same
    plain.midiDevices[6] = before.midiDevices[2];
    std::size_t fallen = 0;
    for (auto &bank : plain.presets)
        for (PresetData &preset : bank) {
            const Messages sent = plainMessages(preset);
            const auto goes = [&](const auto &message) {
                return message.first.first == 7 && sent.contains({3, message.first.second});
            };
            fallen += static_cast<std::size_t>(std::ranges::count_if(sent, goes));
            std::erase_if(preset.controlChanges, [&](const auto &record) {
                return goes(std::pair(std::pair(record.midiDeviceNumber, record.controllerNumber), 0));
            });
            if (preset.programChanges[2] == none || preset.programChanges[6] == none) continue;
            preset.programChanges[6] = none;
            ++fallen;
        }
    arrange::pasteDevice(before.midiDevices[2], 7, 3).alter(content);
    EXPECT_TRUE(outgoing(content) == outgoing(plain));
    EXPECT_TRUE(usesOf({content, allRecords()}, {3}).empty());
    EXPECT_EQ(std::size_t(arrange::collisions(before, 3, 7).size()), fallen);
}
