#pragma once

#include "model/records.h"

#include <map>
#include <utility>
#include <vector>

// A preset's list of control changes as it goes to a unit. Nobody knows whether a unit replaces the list that it holds
// by the one that is written, or merges the two; what is sent ends right with both.

/// Values by MIDI device and controller.
using Messages = std::map<std::pair<std::uint8_t, std::uint8_t>, std::uint8_t>;
/// What a list sends. Records that send nothing or name no device count for nothing; of several for a controller the
/// last counts.
Messages messagesOf(const std::vector<ControlChangeData> &list);
/// What is sent to a controller; `inactiveValue` if it is nothing.
std::uint8_t valueIn(const Messages &messages, const Messages::key_type &controller);
/// Makes a list send this value, or nothing to the controller if it is `inactiveValue`. The other records that send
/// something keep their order, the rest goes. The list may grow beyond 20.
void setMessage(std::vector<ControlChangeData> &list, const ControlChangeData &change);

/// What an edit filled a list up with: it names no device and sends nothing.
bool isFiller(const ControlChangeData &record);
/// Fills a list up to 20 records, so that a unit that merges sees no fewer than one that replaces.
void fillUp(std::vector<ControlChangeData> &list);

/// The lists to be written, one after the other, that make a unit which holds `present` send what `wanted` says, its
/// first 20 messages: none when it does already; one that drops what goes and has all that is wanted; or two when that
/// has no room, or when a controller that is wanted has several records that must go. Then the first one drops and has
/// what stays, so that the unit sends what stands in it, whether it merges or not.
std::vector<std::vector<ControlChangeData>> controlChangeLists(const std::vector<ControlChangeData> &present,
                                                               const std::vector<ControlChangeData> &wanted);

/// A list without the records that send nothing, which a unit may or may not keep.
std::vector<ControlChangeData> living(std::vector<ControlChangeData> list);

/// What a unit does with the lists that it is sent.
enum class ListHandling { Unknown, Replaces, Merges };

/// What a unit that merges holds after `written` was sent to it: each record replaces, adds or (with the inactive
/// value) drops its controller.
std::vector<ControlChangeData> merged(std::vector<ControlChangeData> held,
                                      const std::vector<ControlChangeData> &written);

/// The lists that make a unit which holds `present` and handles lists so hold exactly what lives in `wanted`, in its
/// order; none if the handling is unknown. Where a unit that merges can hold no such list, what it sends is right.
/// After each of the lists a controller is sent either the present or the wanted value.
std::vector<std::vector<ControlChangeData>> exactLists(const std::vector<ControlChangeData> &present,
                                                       const std::vector<ControlChangeData> &wanted,
                                                       ListHandling handling);
