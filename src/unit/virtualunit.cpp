#include "unit/virtualunit.h"

#include "unit/recordfields.h"

#include <algorithm>
#include <iterator>
#include <utility>

/// One command being carried out. Failures collect in `request`; an address that fails is a valid one meanwhile, so
/// that handlers need no branches.
struct VirtualUnit::Exchange
{
    explicit Exchange(const Command &command) : request(command.fields, Presence::Optional) {}

    std::size_t address(char descriptor, const ValueRange &range)
    {
        const int number = request.address(descriptor, range);
        answer.number(descriptor, number, range);
        return static_cast<std::size_t>(number - range.low);
    }

    template <typename Record>
    void read(const Record &record)
    {
        describe(answer, record);
    }

    /// `options` go on to `describe`.
    template <typename Record, typename... Options>
    void write(Record &record, Presence values = Presence::Required, Options... options)
    {
        answer = FieldEncoder();
        if (values == Presence::Required && request.exhausted()) request.fail(UnitStatus::MissingField);
        Record changed = record;
        describe(request, changed, options...);
        if (request.finish() == UnitStatus::Ok) record = std::move(changed);
    }

    FieldDecoder request;
    FieldEncoder answer;
};

struct VirtualUnit::Row
{
    std::string_view command;
    void (*run)(VirtualUnit &unit, Exchange &exchange);
};

namespace {

auto &bankAt(auto &exchange, auto &memory) { return memory.banks[exchange.address('A', ranges::bank)]; }

auto &presetAt(auto &exchange, auto &memory)
{
    const std::size_t bank = exchange.address('A', ranges::bank);
    return memory.presets[bank][exchange.address('B', ranges::preset)];
}

auto &midiDeviceAt(auto &exchange, auto &memory)
{
    return memory.midiDevices[exchange.address('A', ranges::midiDevice)];
}

}  // namespace

VirtualUnit::VirtualUnit(UnitMemory memory, std::chrono::milliseconds restartTime)
    : stored(std::move(memory)), restartDuration(restartTime)
{}

std::optional<std::string> VirtualUnit::answer(std::string_view frame)
{
    if (isSilent()) return std::nullopt;
    const ReceivedFrame received = parseFrame(frame);
    std::string fields;
    const UnitStatus status = received.status != UnitStatus::Ok ? received.status
                              : isRepeated(received)            ? UnitStatus::RepeatedIdentifier
                                                                : execute(received.command, fields);
    return buildFrame(received.id, std::to_string(static_cast<int>(status)) + fields);
}

UnitStatus VirtualUnit::execute(const Command &command, std::string &answerFields)
{
    static constexpr Row rows[] = {
        {"RDI", [](VirtualUnit &unit, Exchange &e) { e.read(unit.stored.deviceInfo); }},
        {"RET", [](VirtualUnit &unit, Exchange &e) { unit.describeError(e); }},
        {"RBB", [](VirtualUnit &unit, Exchange &e) { e.read(bankAt(e, unit.stored)); }},
        {"WBB", [](VirtualUnit &unit, Exchange &e) { e.write(bankAt(e, unit.stored)); }},
        {"RBP", [](VirtualUnit &unit, Exchange &e) { e.read(presetAt(e, unit.stored)); }},
        {"WBP", [](VirtualUnit &unit, Exchange &e) { unit.writePreset(e); }},
        {"RMD", [](VirtualUnit &unit, Exchange &e) { e.read(midiDeviceAt(e, unit.stored)); }},
        {"WMD", [](VirtualUnit &unit, Exchange &e) { e.write(midiDeviceAt(e, unit.stored)); }},
        {"RMI", [](VirtualUnit &unit, Exchange &e) { e.read(unit.stored.midiIn); }},
        {"WMI", [](VirtualUnit &unit, Exchange &e) { e.write(unit.stored.midiIn); }},
        {"REP", [](VirtualUnit &unit, Exchange &e) { e.read(unit.stored.expressionPedal); }},
        {"WEP", [](VirtualUnit &unit, Exchange &e) { e.write(unit.stored.expressionPedal); }},
        {"RSO", [](VirtualUnit &unit, Exchange &e) { e.read(unit.stored.switchOuts); }},
        {"WSO", [](VirtualUnit &unit, Exchange &e) { e.write(unit.stored.switchOuts, Presence::Optional); }},
        {"ROS", [](VirtualUnit &unit, Exchange &e) { e.read(unit.stored.settings); }},
        {"WOS", [](VirtualUnit &unit, Exchange &e) { e.write(unit.stored.settings); }},
        {"WFD", [](VirtualUnit &unit, Exchange &e) { unit.writeFirmware(e.request); }},
    };
    const auto *row = std::ranges::find(rows, command.name, &Row::command);
    if (row == std::end(rows)) return UnitStatus::UnknownCommand;
    Exchange exchange(command);
    row->run(*this, exchange);
    const UnitStatus status = exchange.request.finish();
    if (status == UnitStatus::Ok) answerFields += exchange.answer.result();
    return status;
}

bool VirtualUnit::isRepeated(const ReceivedFrame &frame)
{
    return frame.status == UnitStatus::Ok && std::exchange(lastIdentifier, frame.id) == frame.id;
}

bool VirtualUnit::isSilent() const { return std::chrono::steady_clock::now() < silentUntil; }

void VirtualUnit::setErrorText(int status, std::string text) { errorTexts[status] = std::move(text); }

void VirtualUnit::describeError(Exchange &exchange) const
{
    const int status = exchange.request.address('A', anyNumber);
    const auto special = errorTexts.find(status);
    exchange.answer.number('A', status, anyNumber);
    exchange.answer.text('B', special != errorTexts.end() ? special->second : statusText(status));
}

void VirtualUnit::writePreset(Exchange &exchange)
{
    exchange.write(presetAt(exchange, stored), Presence::Required, midiLists);
}

void VirtualUnit::writeFirmware(FieldDecoder &request)
{
    const bool allSent = request.flag('C');
    const bool restart = !allSent && request.flag('D');
    int number = 0;
    std::string bytes;
    if (!allSent && !restart) {
        number = request.address('A', anyNumber);
        if (!request.offers('B')) request.fail(UnitStatus::MissingField);
        request.text('B', bytes);
    }
    if (request.finish() == UnitStatus::Ok)
        request.fail(allSent ? upload.finish() : restart ? install() : upload.addChunk(number, bytes));
}

UnitStatus VirtualUnit::install()
{
    std::vector<std::uint8_t> image;
    const UnitStatus status = upload.takeImage(image);
    if (status != UnitStatus::Ok) return status;
    silentUntil = std::chrono::steady_clock::now() + restartDuration;
    if (!image.empty()) {  // Without data the unit only restarts.
        const FirmwareVersion version = firmwareVersion(image);
        stored.deviceInfo.firmwareMajor = version.major;
        stored.deviceInfo.firmwareMinor = version.minor;
        stored.firmware = std::move(image);
    }
    return UnitStatus::Ok;
}
