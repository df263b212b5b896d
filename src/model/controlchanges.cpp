#include "model/controlchanges.h"

#include <algorithm>

namespace {

constexpr std::uint8_t noDevice = 20;  // what fillers name

/// The records of a list that say something, one for each controller, in their order.
std::vector<ControlChangeData> withoutRest(const std::vector<ControlChangeData> &list)
{
    Messages left = messagesOf(list);
    std::vector<ControlChangeData> records;
    for (const ControlChangeData &record : list) {
        const auto found = left.find({record.midiDeviceNumber, record.controllerNumber});
        if (found == left.end()) continue;
        records.emplace_back(record.midiDeviceNumber, record.controllerNumber, found->second);
        left.erase(found);
    }
    return records;
}

}  // namespace

Messages messagesOf(const std::vector<ControlChangeData> &list)
{
    Messages messages;
    for (const ControlChangeData &record : list)
        if (record.value != inactiveValue && range::device.contains(record.midiDeviceNumber))
            messages[{record.midiDeviceNumber, record.controllerNumber}] = record.value;
    return messages;
}

void setMessage(std::vector<ControlChangeData> &list, const ControlChangeData &change)
{
    list.push_back(change);
    list = withoutRest(list);
    if (change.value == inactiveValue)
        std::erase_if(list, [&](const ControlChangeData &record) {
            return record.midiDeviceNumber == change.midiDeviceNumber &&
                   record.controllerNumber == change.controllerNumber;
        });
}

bool isFiller(const ControlChangeData &record)
{
    return record.value == inactiveValue && !range::device.contains(record.midiDeviceNumber);
}

void fillUp(std::vector<ControlChangeData> &list)
{
    while (list.size() < maxControlChanges)
        list.emplace_back(noDevice, static_cast<std::uint8_t>(list.size() + 1), inactiveValue);
}

std::vector<std::vector<ControlChangeData>> controlChangeLists(const std::vector<ControlChangeData> &present,
                                                               const std::vector<ControlChangeData> &wanted)
{
    if (present == wanted || messagesOf(present) == messagesOf(wanted)) return {};
    std::vector<ControlChangeData> target = withoutRest(wanted);
    if (target.size() > maxControlChanges) target.resize(maxControlChanges);
    const Messages values = messagesOf(target);

    // Whatever is held goes unless it is wanted: what sends nothing may take a place in a list that is merged, too.
    std::map<Messages::key_type, int> held;
    for (const ControlChangeData &record : present)
        ++held[{record.midiDeviceNumber, record.controllerNumber}];
    std::vector<ControlChangeData> dropped;
    std::vector<ControlChangeData> kept;
    bool isDroppedAndWanted = false;
    for (const auto &[controller, records] : held) {
        const auto value = values.find(controller);
        const bool isWanted = value != values.end();
        if (isWanted && records == 1)
            kept.emplace_back(controller.first, controller.second, value->second);
        else
            dropped.emplace_back(controller.first, controller.second, inactiveValue);
        isDroppedAndWanted = isDroppedAndWanted || (isWanted && records > 1);
    }

    const bool fits = !isDroppedAndWanted && dropped.size() + target.size() <= maxControlChanges;
    const auto &rest = fits ? target : kept;
    dropped.insert(dropped.end(), rest.begin(), rest.end());
    std::vector<std::vector<ControlChangeData>> lists{std::move(dropped)};
    if (!fits) lists.push_back(std::move(target));
    for (auto &list : lists)
        fillUp(list);
    return lists;
}
