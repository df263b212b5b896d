#include "simulator/unitport.h"

#include "simulator/terminalline.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace {

constexpr std::string_view noise = "\xFF\x1C~\x03#\x1D\x7F";
constexpr std::string_view streamFiller = "the unit talks and talks, but no frame begins. ";

std::string spoiled(Fault::Kind kind, std::string response)
{
    switch (kind) {
    case Fault::Kind::Noise:
        return std::string(noise) + response;
    case Fault::Kind::WrongChecksum: {
        char &digit = response.at(response.size() - 2);
        digit = digit == '0' ? '1' : '0';
        return response;
    }
    case Fault::Kind::CutOff:
    case Fault::Kind::HangUp:
        return response.substr(0, response.size() / 2);
    case Fault::Kind::ZeroByte:
        return response.insert(response.size() / 2, 1, '\0');
    default:
        return response;
    }
}

}  // namespace

UnitPort::UnitPort(UnitMemory memory, std::chrono::milliseconds restartTime) : unit(std::move(memory), restartTime)
{
    plugIn();
}

UnitPort::~UnitPort() { unplug(); }

std::string UnitPort::location() const
{
    const std::lock_guard lock(memoryMutex);
    return pty ? pty->location() : std::string();
}

void UnitPort::unplug()
{
    const std::lock_guard plugLock(plugMutex);
    server = {};
    const std::lock_guard lock(memoryMutex);
    pty.reset();
}

void UnitPort::plugIn()
{
    const std::lock_guard plugLock(plugMutex);
    if (!location().empty()) return;
    server = {};  // A server that hung up by itself may be on its last lines.
    const std::lock_guard lock(memoryMutex);
    pty.emplace();
    server = std::jthread([this, &terminal = *pty](const std::stop_token &stop) { serve(stop, terminal); });
}

UnitMemory UnitPort::memory() const
{
    const std::lock_guard lock(memoryMutex);
    return unit.memory();
}

void UnitPort::alter(const std::function<void(UnitMemory &)> &change)
{
    const std::lock_guard lock(memoryMutex);
    change(unit.memory());
}

void UnitPort::setMidiLists(MidiLists mode)
{
    const std::lock_guard lock(memoryMutex);
    unit.setMidiLists(mode);
}

void UnitPort::setDelay(std::chrono::milliseconds time)
{
    const std::lock_guard lock(memoryMutex);
    delay = time;
}

void UnitPort::recordRequests()
{
    const std::lock_guard lock(memoryMutex);
    if (!requests) requests.emplace();
}

std::vector<std::string> UnitPort::takeRequests()
{
    const std::lock_guard lock(memoryMutex);
    return requests ? std::exchange(*requests, {}) : std::vector<std::string>();
}

void UnitPort::queueFault(Fault fault)
{
    const std::lock_guard lock(memoryMutex);
    faults.push_back({std::move(fault), std::nullopt});
}

void UnitPort::queueFault(Fault fault, std::size_t healthyExchangesBefore)
{
    const std::lock_guard lock(memoryMutex);
    faults.push_back({std::move(fault), healthyExchangesBefore});
}

void UnitPort::onExchange(ExchangeObserver observer)
{
    const std::lock_guard lock(memoryMutex);
    exchangeObserver = std::move(observer);
}

void UnitPort::serve(const std::stop_token &stop, PseudoTerminal &terminal)
{
    TerminalLine line(terminal, stop);
    std::string bytes;
    while (line.receive(bytes)) {
        for (std::string request = takeFrame(bytes); !request.empty(); request = takeFrame(bytes)) {
            const Plan plan = planExchange(request);
            const bool goesOn = play(line, plan);
            if (plan.observer) plan.observer(request, plan.response);
            if (!goesOn) return;
        }
    }
}

UnitPort::Plan UnitPort::planExchange(const std::string &request)
{
    const std::lock_guard lock(memoryMutex);
    const ReceivedFrame received = parseFrame(request);
    if (requests) requests->push_back(received.data);
    if (unit.isSilent()) return {{}, {}, {}, exchangeObserver};

    Plan plan{takeFault(received), {}, delay, exchangeObserver};
    if (plan.fault.carriesOut()) {
        plan.response = spoiled(plan.fault.kind, unit.answer(request).value_or(std::string()));
        return plan;
    }
    unit.overhear(received);
    if (plan.fault.kind == Fault::Kind::ErrorStatus) {
        const std::string status = std::to_string(plan.fault.status);
        unit.setErrorText(plan.fault.status, plan.fault.text);
        errorRequest = std::string("RET") + control::gs + 'A' + status;
        plan.response = buildFrame(received.id, status);
    }
    return plan;
}

Fault UnitPort::takeFault(const ReceivedFrame &request)
{
    const bool asksForError = std::exchange(errorRequest, std::nullopt) == request.data;
    if (faults.empty()) return {};
    QueuedFault &next = faults.front();
    if (!next.healthyBefore && asksForError) return {};
    if (next.healthyBefore.value_or(0) > 0) {
        --*next.healthyBefore;
        return {};
    }
    Fault fault = std::move(next.fault);
    faults.pop_front();
    return fault;
}

bool UnitPort::play(TerminalLine &line, const Plan &plan)
{
    if (!plan.response.empty() && !line.pause(plan.delay)) return false;
    switch (plan.fault.kind) {
    case Fault::Kind::LateAnswer:
        return line.pause(plan.fault.delay) && line.send(plan.response);
    case Fault::Kind::SlowBytes:
        return std::ranges::all_of(plan.response, [&](const char &byte) {
            return line.send({&byte, 1}) && line.pause(plan.fault.delay);
        });
    case Fault::Kind::EndlessStream:
        return line.streamUntilReceived(streamFiller);
    case Fault::Kind::HangUp: {
        line.send(plan.response);
        const std::lock_guard lock(memoryMutex);
        pty.reset();
        return false;
    }
    default:
        return line.send(plan.response);
    }
}
