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
    std::vector<ControlChangeData> target = withoutRest(wanted);
    if (target.size() > maxControlChanges) target.resize(maxControlChanges);
    const Messages kept = messagesOf(target);
    const Messages held = messagesOf(present);
    if (held == kept) return {};
    std::vector<ControlChangeData> first;
    for (const auto &[controller, value] : held)
        if (!kept.contains(controller)) first.emplace_back(controller.first, controller.second, inactiveValue);
    const bool fits = first.size() + target.size() <= maxControlChanges;
    const auto room = static_cast<std::ptrdiff_t>(std::min(target.size(), maxControlChanges - first.size()));
    first.insert(first.end(), target.begin(), target.begin() + room);
    std::vector<std::vector<ControlChangeData>> lists{std::move(first)};
    if (!fits) lists.push_back(target);
    for (auto &list : lists)
        fillUp(list);
    return lists;
}
