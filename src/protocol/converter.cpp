#include "protocol/converter.h"

const std::map<char, std::string> Converter::asciiNames{
    {'\x02', "STX"}, {'\x03', "ETX"}, {'\x1C', "FS"}, {'\x1D', "GS"}, {'\x1E', "RS"}, {'\x1F', "US"},
};

std::vector<std::uint8_t> Converter::stringToVector(const std::string &text) { return {text.begin(), text.end()}; }

std::string Converter::vectorToString(const std::vector<std::uint8_t> &bytes) { return {bytes.begin(), bytes.end()}; }

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
    for (auto found = text.find(pattern); found != std::string::npos; found = text.find(pattern))
        text.erase(found, pattern.size());
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
