#pragma once

#include "model/controlchanges.h"
#include "model/unitcontent.h"

#include <functional>
#include <optional>
#include <set>
#include <string>

class KORA;

/// Reads and writes many records of a unit, with the port held open from the first exchange to the last.
class Transfer
{
public:
    /// How a transfer is followed, on its own thread.
    struct Watch
    {
        /// Called with the records done so far and those to be done in all; what was written counts once more when it
        /// is read back.
        std::function<void(int done, int total)> progress = [](int, int) {};
        /// Asked before every exchange; true ends the transfer there.
        std::function<bool()> stop = [] { return false; };
    };

    struct Outcome
    {
        std::optional<std::string> failure;  ///< what the exchange failed with that ended the transfer
        bool stopped = false;
        std::set<RecordId> written;  ///< records of which the unit has accepted at least one value
        /// Of this record the unit may hold wanted values that `present` does not tell: the last answer was lost.
        std::optional<RecordId> unclear;
    };

    explicit Transfer(KORA &connectedUnit);
    Transfer(KORA &connectedUnit, Watch follower);

    /// Reads records into `part`, each as it arrives.
    Outcome read(UnitPart &part, const std::set<RecordId> &records);
    /// Reads those that `part` does not know.
    Outcome readUnknown(UnitPart &part, const std::set<RecordId> &records);

    /// From now on `write` makes presets exactly as wanted, not only what they do: lists of control changes in their
    /// order, a pedal's controller that may read as 0. How the unit handles lists it finds out, if it is not known.
    void makeExact(ListHandling knownHandling) { handling = knownHandling; }
    /// How the unit handles lists, as far as that is known.
    ListHandling listHandling() const { return handling.value_or(ListHandling::Unknown); }

    /// Makes the unit hold these records as in `wanted`. Only what differs from `present`, what the unit holds now, is
    /// sent: a setting at a time, a preset's function first; never what is set on the unit itself. What `present` does
    /// not know is read before. Afterwards what was touched is read back, also after a stop, a refusal or a lost
    /// answer, so that `present` tells what the unit holds; if the line is lost, it tells what the unit has accepted.
    ///
    /// Fails before anything is sent when a name cannot be sent, or not be read back.
    Outcome write(UnitPart &present, const UnitContent &wanted, const std::set<RecordId> &records);

private:
    class Writer;

    Outcome run(const std::function<void(Outcome &outcome)> &work);
    void readRecord(UnitPart &part, const RecordId &id);
    /// Fails when the transfer is to stop.
    void goOn(Outcome &outcome) const;
    void advance(std::size_t total, int records = 1);

    KORA &unit;
    Watch watch;
    std::optional<ListHandling> handling;  ///< set when presets are made exact
    int done = 0;
    std::set<RecordId> touched;  ///< what has to be read back
};
