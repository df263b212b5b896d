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

bool isForSameController(const ControlChangeData &one, const ControlChangeData &other)
{
    return one.midiDeviceNumber == other.midiDeviceNumber && one.controllerNumber == other.controllerNumber;
}

/// The lists that make a unit which merges hold `wanted` in its order: what is out of order goes and comes again in one
/// and the same list.
std::vector<std::vector<ControlChangeData>> mergingLists(const std::vector<ControlChangeData> &held,
                                                         const std::vector<ControlChangeData> &wanted)
{
    std::vector<std::vector<ControlChangeData>> lists(1);
    const auto send = [&](const std::vector<ControlChangeData> &records) {
        if (lists.back().size() + records.size() > maxControlChanges) lists.emplace_back();
        lists.back().insert(lists.back().end(), records.begin(), records.end());
    };
    const auto drop = [](const ControlChangeData &record) {
        return ControlChangeData(record.midiDeviceNumber, record.controllerNumber, inactiveValue);
    };
    for (const ControlChangeData &record : held)
        if (std::ranges::none_of(wanted, [&](const auto &other) { return isForSameController(record, other); }))
            send({drop(record)});
    std::size_t kept = 0;  // so many of the wanted ones are held in their order; the others come behind them
    for (const ControlChangeData &record : held)
        if (kept < wanted.size() && isForSameController(record, wanted[kept])) ++kept;
    for (std::size_t place = 0; place < wanted.size(); ++place) {
        const ControlChangeData &record = wanted[place];
        if (place >= kept)
            send({drop(record), record});
        else if (std::ranges::find(held, record) == held.end())
            send({record});
    }
    for (auto &list : lists)
        fillUp(list);
    return lists;
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

std::uint8_t valueIn(const Messages &messages, const Messages::key_type &controller)
{
    const auto found = messages.find(controller);
    return found == messages.end() ? inactiveValue : found->second;
}

void setMessage(std::vector<ControlChangeData> &list, const ControlChangeData &change)
{
    list.push_back(change);
    list = withoutRest(list);
    if (change.value == inactiveValue)
        std::erase_if(list, [&](const ControlChangeData &record) { return isForSameController(record, change); });
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

std::vector<ControlChangeData> living(std::vector<ControlChangeData> list)
{
    std::erase_if(list, [](const ControlChangeData &record) { return record.value == inactiveValue; });
    return list;
}

std::vector<ControlChangeData> merged(std::vector<ControlChangeData> held,
                                      const std::vector<ControlChangeData> &written)
{
    for (const ControlChangeData &record : written) {
        const auto isMet = [&](const ControlChangeData &other) { return isForSameController(record, other); };
        const auto met = std::ranges::find_if(held, isMet);
        if (record.value == inactiveValue)
            std::erase_if(held, isMet);
        else if (met != held.end())
            met->value = record.value;
        else
            held.push_back(record);
    }
    return held;
}

std::vector<std::vector<ControlChangeData>> exactLists(const std::vector<ControlChangeData> &present,
                                                       const std::vector<ControlChangeData> &wanted,
                                                       ListHandling handling)
{
    if (living(present) == living(wanted) || handling == ListHandling::Unknown) return {};
    if (handling == ListHandling::Replaces) return {wanted};
    return wanted == merged({}, wanted) ? mergingLists(present, wanted) : controlChangeLists(present, wanted);
}
