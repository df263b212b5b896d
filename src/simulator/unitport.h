#pragma once

#include "simulator/fault.h"
#include "simulator/pseudoterminal.h"
#include "unit/musiciancontent.h"
#include "unit/virtualunit.h"

#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

class TerminalLine;

/// A virtual unit on a serial line of its own, served by its own thread. Every function may be called from any thread.
/// An exchange is a command frame that arrives while the unit is not restarting, whatever comes of it.
class UnitPort
{
public:
    using ExchangeObserver = std::function<void(const std::string &request, const std::string &response)>;

    /// Plugs the unit in. `restartTime` is how long it is silent after a firmware restart. Throws std::system_error
    /// when the system has no pseudo-terminal left.
    explicit UnitPort(UnitMemory memory = musicianContent(),
                      std::chrono::milliseconds restartTime = std::chrono::milliseconds(500));
    /// Unplugs the unit, in the middle of an answer or a fault too.
    ~UnitPort();
    UnitPort(const UnitPort &) = delete;
    UnitPort &operator=(const UnitPort &) = delete;

    /// The path that the editor opens; empty while the unit is unplugged.
    std::string location() const;
    /// Hangs up, at once also during a fault. The memory is kept. Not for an observer.
    void unplug();
    /// Opens a new line, maybe at another path; does nothing while plugged in. Not for an observer.
    void plugIn();

    /// A copy of what the unit holds now.
    UnitMemory memory() const;
    /// Changes what the unit holds, as if it were done on its own panel.
    void alter(const std::function<void(UnitMemory &)> &change);

    /// What the unit makes of control changes from now on; `Replace` until then.
    void setMidiLists(MidiLists mode);
    /// Makes the unit as slow as hardware may be: every answer comes that much later.
    void setDelay(std::chrono::milliseconds time);

    /// From now on the unit keeps the commands that it gets.
    void recordRequests();
    /// The data parts ("WOS", GS, "J2") of all recorded command frames since the last call, in their order.
    std::vector<std::string> takeRequests();

    /// Spoils the next exchange that no fault queued before it spoils; a "RET" that asks for the text of a queued
    /// error status is passed over.
    void queueFault(Fault fault);
    /// Spoils the exchange that follows after so many healthy ones, counted from the fault queued before it or from
    /// now. Here every exchange counts, so 0 right after an error status spoils the "RET" itself.
    void queueFault(Fault fault, std::size_t healthyExchangesBefore);

    /// Called on the unit's thread after each command frame with the frames as they were on the line; the response is
    /// empty when there was none.
    void onExchange(ExchangeObserver observer);

private:
    struct QueuedFault
    {
        Fault fault;
        std::optional<std::size_t> healthyBefore;
    };
    struct Plan
    {
        Fault fault;
        std::string response;
        std::chrono::milliseconds delay;
        ExchangeObserver observer;
    };

    void serve(const std::stop_token &stop, PseudoTerminal &terminal);
    Plan planExchange(const std::string &request);
    Fault takeFault(const ReceivedFrame &request);
    bool play(TerminalLine &line, const Plan &plan);

    mutable std::mutex memoryMutex;  ///< guards what follows up to `exchangeObserver`
    VirtualUnit unit;
    std::optional<PseudoTerminal> pty;
    std::deque<QueuedFault> faults;
    std::optional<std::string> errorRequest;  ///< data part of the "RET" that an error status makes the editor send
    std::chrono::milliseconds delay{};
    std::optional<std::vector<std::string>> requests;  ///< while they are recorded
    ExchangeObserver exchangeObserver;

    std::mutex plugMutex;  ///< guards `server`
    std::jthread server;
};
