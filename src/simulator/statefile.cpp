#include "simulator/statefile.h"

#include "simulator/recordfields.h"
#include "simulator/virtualunit.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace {

constexpr std::pair<char, std::string_view> controlNames[] = {
    {control::stx, "STX"}, {control::etx, "ETX"}, {control::fs, "FS"},
    {control::gs, "GS"},   {control::rs, "RS"},   {control::us, "US"},
};
constexpr std::size_t firmwareBytesPerLine = 512;
constexpr std::string_view digits = "0123456789ABCDEF";

std::string nameOf(char byte)
{
    for (const auto &[named, name] : controlNames)
        if (named == byte) return std::string(name);
    const auto value = static_cast<unsigned char>(byte);
    return {'0', 'x', digits[value >> 4], digits[value & 0xF]};
}

/// The reverse of `escaped` for the separators; empty when a bracket is not one of them.
std::optional<std::string> unescaped(std::string_view text)
{
    std::string bytes;
    while (!text.empty()) {
        const std::size_t plain = std::min(text.find('<'), text.size());
        bytes.append(text.substr(0, plain));
        text.remove_prefix(plain);
        if (text.starts_with("<<")) {
            bytes += '<';
            text.remove_prefix(2);
        } else if (!text.empty()) {
            const std::string_view bracket = text.substr(0, std::min(text.find('>'), text.size() - 1) + 1);
            const auto *row = std::ranges::find_if(
                controlNames, [&](const auto &entry) { return bracket == "<" + std::string(entry.second) + ">"; });
            if (row == std::end(controlNames)) return std::nullopt;
            bytes += row->first;
            text.remove_prefix(bracket.size());
        }
    }
    return bytes;
}

/// The lines of a state file as they are gathered.
class StateText
{
public:
    template <typename Describe>
    void add(std::string_view command, const Describe &describeLine)
    {
        FieldEncoder fields(FieldEncoder::Scope::Write);
        describeLine(fields);
        lines += escaped(std::string(command) + fields.result()) + '\n';
    }

    /// The line of a write command with its address (a letter and a number each).
    template <typename Record>
    void addWrite(std::string_view command, const Record &record, std::optional<int> a = {}, std::optional<int> b = {})
    {
        add(command, [&](FieldEncoder &fields) {
            if (a) fields.number('A', *a, anyNumber);
            if (b) fields.number('B', *b, anyNumber);
            describe(fields, record);
        });
    }

    std::string take() { return std::move(lines); }

private:
    std::string lines = "# Memory of a virtual unit\n";
};

/// The line "CAL".
template <typename Fields>
void describeMeasured(Fields &fields, RecordIn<Fields, ExpressionPedalData> pedal)
{
    describeCalibration(fields, pedal);
    fields.number('L', pedal.onTheFlyMode, ranges::flag);
}

std::string hexadecimal(const std::uint8_t *bytes, std::size_t count)
{
    std::string text;
    for (std::size_t i = 0; i < count; ++i)
        text.append({digits[bytes[i] >> 4], digits[bytes[i] & 0xF]});
    return text;
}

UnitStatus restore(VirtualUnit &unit, const Command &command)
{
    FieldDecoder fields(command.fields, Presence::Required);
    if (command.name == "IDN") {
        describe(fields, unit.memory().deviceInfo);
    } else if (command.name == "CAL") {
        describeMeasured(fields, unit.memory().expressionPedal);
    } else if (command.name == "IMG") {
        std::string text;
        fields.text('A', text);
        if (!appendHexadecimal(unit.memory().firmware, text)) fields.fail(UnitStatus::ChunkNotHexadecimal);
    } else {
        std::string answer;
        return command.name.starts_with('W') ? unit.execute(command, answer) : UnitStatus::UnknownCommand;
    }
    return fields.finish();
}

}  // namespace

std::string escaped(std::string_view text)
{
    std::string line;
    for (const char byte : text) {
        const auto value = static_cast<unsigned char>(byte);
        if (value < 0x20 || value == 0x7F)
            line += '<' + nameOf(byte) + '>';
        else
            line.append(byte == '<' ? 2 : 1, byte);
    }
    return line;
}

std::string toStateText(const UnitMemory &memory)
{
    StateText text;
    text.add("IDN", [&](FieldEncoder &fields) { describe(fields, memory.deviceInfo); });
    text.addWrite("WOS", memory.settings);
    text.addWrite("WSO", memory.switchOuts);
    text.addWrite("WMI", memory.midiIn);
    text.addWrite("WEP", memory.expressionPedal);
    text.add("CAL", [&](FieldEncoder &fields) { describeMeasured(fields, memory.expressionPedal); });
    for (int slot = 0; slot < midiDeviceCount; ++slot)
        text.addWrite("WMD", memory.midiDevices[static_cast<std::size_t>(slot)], slot + 1);
    for (int bank = 0; bank < bankCount; ++bank) {
        const auto index = static_cast<std::size_t>(bank);
        text.addWrite("WBB", memory.banks[index], bank);
        for (int preset = 0; preset < presetCount; ++preset)
            text.addWrite("WBP", memory.presets[index][static_cast<std::size_t>(preset)], bank, preset);
    }
    for (std::size_t start = 0; start < memory.firmware.size(); start += firmwareBytesPerLine)
        text.add("IMG", [&](FieldEncoder &fields) {
            const std::size_t count = std::min(firmwareBytesPerLine, memory.firmware.size() - start);
            fields.text('A', hexadecimal(memory.firmware.data() + start, count));
        });
    return text.take();
}

UnitMemory fromStateText(std::string_view text)
{
    VirtualUnit unit{UnitMemory()};
    std::istringstream lines{std::string(text)};
    int number = 0;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        if (line.empty() || line.front() == '#') continue;
        const auto bytes = unescaped(line);
        const auto command = bytes ? parseCommand(*bytes) : std::nullopt;
        const UnitStatus status = command ? restore(unit, *command) : UnitStatus::MalformedFrame;
        if (status != UnitStatus::Ok)
            throw std::runtime_error("line " + std::to_string(number) + ": " +
                                     std::string(statusText(static_cast<int>(status))));
    }
    return unit.memory();
}

void saveState(const std::filesystem::path &file, const UnitMemory &memory)
{
    std::filesystem::path draft = file;
    draft += ".new";
    std::ofstream stream(draft, std::ios::binary);
    stream << toStateText(memory);
    stream.close();
    std::error_code error;
    if (stream) std::filesystem::rename(draft, file, error);
    if (!stream || error) throw std::runtime_error(file.string() + ": cannot be written");
}

UnitMemory loadState(const std::filesystem::path &file)
{
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    if (!stream || !(text << stream.rdbuf())) throw std::runtime_error(file.string() + ": cannot be read, or is empty");
    try {
        return fromStateText(text.str());
    } catch (const std::runtime_error &error) {
        throw std::runtime_error(file.string() + ", " + error.what());
    }
}
