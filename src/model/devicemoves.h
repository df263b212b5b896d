#pragma once

#include "model/arrangement.h"
#include "model/controlleredit.h"

#include <QStringList>

#include <array>
#include <optional>

// Arrangements of MIDI devices and of their controllers. Presets and the global pedal name a device by its number and a
// controller by its position in the device's list. What is carried along names the same thing as before: program
// changes, control changes and expression pedals of all presets, the global pedal, a device's tap controller. Numbers
// out of range throw `std::out_of_range`.

/// By place in a device's list, from 0: where the controller that comes there has stood so far.
using ControllerOrder = std::array<std::size_t, controllerCount>;

/// Nothing is moved.
inline constexpr ControllerOrder sameOrder = [] {
    ControllerOrder order{};
    for (std::size_t place = 0; place < order.size(); ++place)
        order[place] = place;
    return order;
}();

namespace arrange {

/// Two definitions change places.
Arrangement swapDevices(int one, int other, bool carriesAlong);
/// A definition takes the place of device `to`. With `carriedFrom`, what is sent to that device is sent to `to` from
/// then on; where both are sent something to the same place, it is that.
Arrangement pasteDevice(const MidiDevice &definition, int to, std::optional<int> carriedFrom = std::nullopt);
/// Controllers are edited, and stand in another order.
Arrangement reorderControllers(int device, const ControllerEdit &edit, const ControllerOrder &order, bool carriesAlong);

/// Where messages to one device, carried along to another, fall on a message that goes there already: "BANK 3, PRESET
/// 4: MIDI 2 CONTROLLER 5".
QStringList collisions(const UnitContent &content, int from, int to);

/// How much an arrangement alters.
struct Impact
{
    bool operator==(const Impact &) const = default;

    int presets = 0;
    int values = 0;  ///< of them and of all other records
};
/// What it would alter in a content that holds all of its records.
Impact impactOf(const Arrangement &arrangement, const UnitContent &content);

}  // namespace arrange
