#include "model/datafromdevice.h"

#include <gtest/gtest.h>
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

bool isWhole(const MidiDevice &device)
{
    const int number = std::stoi(device.name.substr(64));
    return device == numbered(number);
}

}  // namespace

// Also built by ThreadSanitizer, without an event loop.
TEST(Snapshots, AreWholeAndInOrderWhileTheWriterReplacesThem)
{
    constexpr int lastNumber = 3000;
    Snapshot<MidiDevice> slot;
    std::atomic<int> broken = 0;
    std::atomic<int> reads = 0;
    const auto read = [&] {
        int newest = -1;
        for (std::shared_ptr<const MidiDevice> held; newest < lastNumber;) {
            const auto record = slot.load();
            if (!record) continue;
            const int number = std::stoi(record->name.substr(64));
            if (!isWhole(*record) || number < newest || (held && !isWhole(*held))) ++broken;
            if (number > newest) held = record;  // lives on while it is superseded
            newest = number;
            ++reads;
        }
    };
    std::vector<std::jthread> readers;
    for (int reader = 0; reader < 3; ++reader)
        readers.emplace_back(read);
    slot.store(std::make_shared<const MidiDevice>(numbered(0)));
    for (int number = 1; number <= lastNumber; ++number) {
        MidiDevice changed = *slot.load();
        changed = numbered(number);
        slot.store(std::make_shared<const MidiDevice>(std::move(changed)));
    }
    readers.clear();
    EXPECT_EQ(broken, 0);
    EXPECT_GT(reads, 3);
}
