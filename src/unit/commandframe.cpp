#include "unit/commandframe.h"

#include "unit/bitwisecrc.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

using namespace control;

namespace {

constexpr std::size_t commandLength = 3;
constexpr std::size_t tailLength = 5;        // checksum and ETX
constexpr std::size_t longestFrame = 65536;  // bytes; more than any command needs

bool isFrameId(std::string_view text)
{
    std::uint64_t id = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), id);
    return error == std::errc{} && end == text.data() + text.size() && (text.size() == 1 || text.front() != '0');
}

}  // namespace

std::string takeFrame(std::string &bytes)
{
    for (std::size_t end = bytes.find(etx); end != std::string::npos; end = bytes.find(etx)) {
        const std::string upToEnd = bytes.substr(0, end + 1);
        bytes.erase(0, end + 1);
        if (const std::size_t start = upToEnd.rfind(stx); start != std::string::npos) return upToEnd.substr(start);
    }
    if (bytes.size() > longestFrame) bytes.clear();
    return {};
}

std::optional<std::vector<FieldText>> splitFields(std::string_view text, char separator)
{
    std::vector<FieldText> fields;
    for (std::size_t start = 0; !text.empty() && start <= text.size();) {
        const std::size_t end = std::min(text.find(separator, start), text.size());
        if (end == start) return std::nullopt;
        fields.push_back({text[start], std::string(text.substr(start + 1, end - start - 1))});
        start = end + 1;
    }
    return fields;
}

std::optional<Command> parseCommand(std::string_view data)
{
    const std::string_view name = data.substr(0, commandLength);
    if (name.size() < commandLength || !std::ranges::all_of(name, [](char c) { return c >= 'A' && c <= 'Z'; }))
        return std::nullopt;
    Command command{std::string(name), {}};
    data.remove_prefix(commandLength);
    if (data.empty()) return command;
    auto fields = splitFields(data.substr(1), gs);
    if (data.front() != gs || !fields || fields->empty()) return std::nullopt;
    command.fields = std::move(*fields);
    return command;
}

ReceivedFrame parseFrame(std::string_view bytes)
{
    ReceivedFrame frame{UnitStatus::MalformedFrame, "0", {}, {}};
    const std::size_t headerEnd = bytes.find(fs);
    if (headerEnd == std::string_view::npos || bytes.size() < headerEnd + 1 + tailLength || bytes.front() != stx ||
        bytes.back() != etx)
        return frame;

    const std::string_view checked = bytes.substr(1, bytes.size() - 1 - tailLength);
    const std::string_view id = checked.substr(0, headerEnd - 1);
    frame.data = checked.substr(headerEnd);
    if (isFrameId(id)) frame.id = id;
    if (bytes.substr(bytes.size() - tailLength, tailLength - 1) != bitwiseCrcText(checked)) {
        frame.status = UnitStatus::WrongChecksum;
        return frame;
    }
    constexpr std::string_view forbidden{"\0\x02\x03\x1C", 4};
    auto command = parseCommand(frame.data);
    if (!command || !isFrameId(id) || frame.data.find_first_of(forbidden) != std::string::npos) return frame;
    frame.command = std::move(*command);
    frame.status = UnitStatus::Ok;
    return frame;
}

std::string buildFrame(std::string_view id, std::string_view data)
{
    std::string checked(id);
    checked.append(1, fs).append(data);
    return stx + checked + bitwiseCrcText(checked) + etx;
}
