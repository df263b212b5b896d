#include "model/midiedit.h"

#include <gtest/gtest.h>
#include <tuple>

namespace {

using Changes = std::vector<ControlChangeData>;

std::string text(const Changes &list)
{
    std::string texts;
    for (const ControlChangeData &record : list)
        texts += std::to_string(record.midiDeviceNumber) + '/' + std::to_string(record.controllerNumber) + '/' +
                 std::to_string(record.value) + ' ';
    return texts;
}

}  // namespace

TEST(MidiEdit, MakesTheWholeListDropsFirstThenOthersThenValuesThenFillers)
{
    Changes full;
    for (std::uint8_t controller = 1; controller <= 18; ++controller)
        full.emplace_back(2, controller, controller);
    const std::string others = text(full);
    full.emplace_back(1, 1, 10);
    full.emplace_back(1, 2, 20);
    Changes edited(20, {20, 7, 255});  // filled up by an earlier edit
    edited[0] = {1, 2, 255};
    edited[1] = {2, 5, 255};
    Changes crowded = edited;
    for (std::size_t place = 2; place < 20; ++place)
        crowded[place] = {3, static_cast<std::uint8_t>(place), 1};
    const std::tuple<const char *, Changes, std::map<std::uint8_t, std::uint8_t>, std::string> cases[] = {
        {"others keep their order, one value is dropped, one changed, one stays",
         {{1, 1, 10}, {4, 1, 254}, {1, 2, 20}, {2, 5, 0}, {1, 3, 30}},
         {{1, 255}, {2, 21}},
         "1/1/255 4/1/254 2/5/0 1/2/21 1/3/30 "},
        {"nothing tells of a controller that was inactive", {{2, 5, 1}}, {{1, 255}}, "2/5/1 "},
        {"a stored controller that is not defined is left out", {{1, 9, 3}, {2, 9, 3}}, {{1, 4}}, "2/9/3 1/1/4 "},
        {"others are copied whatever they say", {{2, 20, 255}, {20, 3, 64}}, {}, "2/20/255 20/3/64 "},
        {"fillers are not", edited, {{3, 9}}, "1/2/255 2/5/255 1/3/9 "},
        {"more values than places", full, {{1, 11}, {2, 22}, {3, 33}}, others + "1/1/11 1/2/22 "},
        {"a dropped value takes a place", full, {{1, 255}, {2, 22}, {3, 33}}, "1/1/255 " + others + "1/2/22 "},
        {"another device's dropped value gives way",
         crowded,
         {{1, 1}},
         "1/2/255 " + text({crowded.begin() + 2, crowded.end()}) + "1/1/1 "},
    };
    for (const auto &[what, stored, values, expected] : cases) {
        MidiEdit edit;
        edit.controllers = {1, 2, 3};
        edit.values = values;
        PresetData preset;
        preset.controlChanges = stored;
        const Changes list = edit.controlChangesFor(preset);
        EXPECT_EQ(list.size(), 20U) << what;
        EXPECT_EQ(text(list).substr(0, expected.size()), expected) << what;
        for (std::size_t place = 0; place < list.size(); ++place)
            if (text({list.begin(), list.begin() + static_cast<std::ptrdiff_t>(place)}).size() >= expected.size()) {
                EXPECT_EQ(list[place], ControlChangeData(20, static_cast<std::uint8_t>(place + 1), 255)) << what;
            }
    }
}
