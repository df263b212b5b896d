#include "protocol/converter.h"

const std::map<char, std::string> Converter::asciiNames{
    {'\x02', "STX"}, {'\x03', "ETX"}, {'\x1C', "FS"}, {'\x1D', "GS"}, {'\x1E', "RS"}, {'\x1F', "US"},
};

// Between pointers to bytes of one type both are a plain copy of memory.
std::vector<std::uint8_t> Converter::stringToVector(const std::string &text)
{
    const auto *const bytes = reinterpret_cast<const std::uint8_t *>(text.data());
    return {bytes, bytes + text.size()};
}

std::string Converter::vectorToString(const std::vector<std::uint8_t> &bytes)
{
    return {reinterpret_cast<const char *>(bytes.data()), bytes.size()};
}

std::string Converter::toLogString(const std::string &text)
{
    std::string readable;
    for (const char character : text) {
        if (static_cast<signed char>(character) > 31) {
            readable += character;
            continue;
        }
        const auto name = asciiNames.find(character);
        readable += '<';
        readable +=
            name != asciiNames.end() ? name->second : "0x" + charToHexString(static_cast<unsigned char>(character));
        readable += '>';
    }
    return readable;
}

void Converter::eraseAllSubStr(std::string &text, const std::string &pattern)
{
    if (pattern.empty()) return;
    // What is kept holds no occurrence; one that the next character completes is the first of the whole text.
    std::size_t kept = 0;
    for (const char character : text) {
        text[kept++] = character;
        if (character == pattern.back() && std::string_view(text.data(), kept).ends_with(pattern))
            kept -= pattern.size();
    }
    text.resize(kept);
}

std::string Converter::vectorToHexString(const std::vector<std::uint8_t> &bytes)
{
    std::string text;
    text.reserve(2 * bytes.size());
    for (const std::uint8_t byte : bytes)
        text += charToHexString(byte);
    return text;
}

std::string Converter::charToHexString(unsigned char byte)
{
    static constexpr char digits[] = "0123456789ABCDEF";
    return {digits[byte >> 4], digits[byte & 0x0F]};
}
