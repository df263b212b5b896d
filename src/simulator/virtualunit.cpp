#include "simulator/virtualunit.h"

#include "simulator/recordfields.h"

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

    template <typename Record>
    void write(Record &record, Presence values = Presence::Required)
    {
        answer = FieldEncoder(FieldEncoder::Scope::Answer);
        if (values == Presence::Required && request.exhausted()) request.fail(UnitStatus::MissingField);
        Record changed = record;
        describe(request, changed);
        if (request.finish() == UnitStatus::Ok) record = std::move(changed);
    }

    FieldDecoder request;
    FieldEncoder answer{FieldEncoder::Scope::Answer};
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
    : memory_(std::move(memory)), restartTime_(restartTime)
{}

std::optional<std::string> VirtualUnit::answer(std::string_view frame)
{
    if (isSilent()) return std::nullopt;
    const ReceivedFrame received = parseFrame(frame);
    std::string fields;
    const UnitStatus status = received.status == UnitStatus::Ok ? execute(received.command, fields) : received.status;
    return buildFrame(received.id, std::to_string(static_cast<int>(status)) + fields);
}

UnitStatus VirtualUnit::execute(const Command &command, std::string &answerFields)
{
    static constexpr Row rows[] = {
        {"RDI", [](VirtualUnit &unit, Exchange &e) { e.read(unit.memory_.deviceInfo); }},
        {"RET", [](VirtualUnit &unit, Exchange &e) { unit.describeError(e); }},
        {"RBB", [](VirtualUnit &unit, Exchange &e) { e.read(bankAt(e, unit.memory_)); }},
        {"WBB", [](VirtualUnit &unit, Exchange &e) { e.write(bankAt(e, unit.memory_)); }},
        {"RBP", [](VirtualUnit &unit, Exchange &e) { e.read(presetAt(e, unit.memory_)); }},
        {"WBP", [](VirtualUnit &unit, Exchange &e) { e.write(presetAt(e, unit.memory_)); }},
        {"RMD", [](VirtualUnit &unit, Exchange &e) { e.read(midiDeviceAt(e, unit.memory_)); }},
        {"WMD", [](VirtualUnit &unit, Exchange &e) { e.write(midiDeviceAt(e, unit.memory_)); }},
        {"RMI", [](VirtualUnit &unit, Exchange &e) { e.read(unit.memory_.midiIn); }},
        {"WMI", [](VirtualUnit &unit, Exchange &e) { e.write(unit.memory_.midiIn); }},
        {"REP", [](VirtualUnit &unit, Exchange &e) { e.read(unit.memory_.expressionPedal); }},
        {"WEP", [](VirtualUnit &unit, Exchange &e) { e.write(unit.memory_.expressionPedal); }},
        {"RSO", [](VirtualUnit &unit, Exchange &e) { e.read(unit.memory_.switchOuts); }},
        {"WSO", [](VirtualUnit &unit, Exchange &e) { e.write(unit.memory_.switchOuts, Presence::Optional); }},
        {"ROS", [](VirtualUnit &unit, Exchange &e) { e.read(unit.memory_.settings); }},
        {"WOS", [](VirtualUnit &unit, Exchange &e) { e.write(unit.memory_.settings); }},
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

bool VirtualUnit::isSilent() const { return std::chrono::steady_clock::now() < silentUntil_; }

void VirtualUnit::setErrorText(int status, std::string text) { errorTexts_[status] = std::move(text); }

void VirtualUnit::describeError(Exchange &exchange) const
{
    const int status = exchange.request.address('A', anyNumber);
    const auto special = errorTexts_.find(status);
    exchange.answer.number('A', status, anyNumber);
    exchange.answer.text('B', special != errorTexts_.end() ? special->second : statusText(status));
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
        request.fail(allSent ? upload_.finish() : restart ? install() : upload_.addChunk(number, bytes));
}

UnitStatus VirtualUnit::install()
{
    std::vector<std::uint8_t> image;
    const UnitStatus status = upload_.takeImage(image);
    if (status != UnitStatus::Ok) return status;
    silentUntil_ = std::chrono::steady_clock::now() + restartTime_;
    if (!image.empty()) {  // Without data the unit only restarts.
        const FirmwareVersion version = firmwareVersion(image);
        memory_.deviceInfo.firmwareMajor = version.major;
        memory_.deviceInfo.firmwareMinor = version.minor;
        memory_.firmware = std::move(image);
    }
    return UnitStatus::Ok;
}
