#include "model/datafromdevice.h"

#include <gtest/gtest.h>
#include <latch>
#include <thread>

namespace {

/// A record all of whose parts tell the same number.
MidiDevice numbered(int number)
{
    MidiDevice device;
    device.name = std::string(64, 'x') + std::to_string(number);
    device.noteNumber = static_cast<std::uint8_t>(number % 128);
    for (Controller &controller : device.controllers)
        controller = {device.name, device.noteNumber};
    return device;
}

int numberOf(const MidiDevice &device) { return std::stoi(device.name.substr(64)); }

bool isWhole(const MidiDevice &device) { return device == numbered(numberOf(device)); }

}  // namespace

// Also built by ThreadSanitizer, without an event loop.
TEST(Snapshots, AreWholeAndInOrderWhileTheWriterReplacesThem)
{
    constexpr int lastNumber = 3000;
    Snapshot<MidiDevice> slot;
    std::atomic<int> broken = 0;
    std::latch seen(3);  // every reader holds the first record before it is replaced
    const auto read = [&] {
        int newest = -1;
        for (std::shared_ptr<const MidiDevice> held; newest < lastNumber;) {
            const auto record = slot.load();
            const int number = numberOf(*record);
            if (!isWhole(*record) || number < newest || (held && !isWhole(*held))) ++broken;
            if (number > newest) held = record;  // lives on while it is superseded
            if (newest < 0) seen.count_down();
            newest = number;
        }
    };
    slot.store(std::make_shared<const MidiDevice>(numbered(0)));
    std::vector<std::jthread> readers;
    for (int reader = 0; reader < 3; ++reader)
        readers.emplace_back(read);
    seen.wait();
    for (int number = 1; number <= lastNumber; ++number)
        slot.store(std::make_shared<const MidiDevice>(numbered(number)));
    readers.clear();
    EXPECT_EQ(broken, 0);
}
