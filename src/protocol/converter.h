#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

/// Conversions between protocol text (8-bit characters), bytes, hexadecimal and log text.
class Converter
{
public:
    virtual ~Converter() = default;

    /// One byte per character, in order.
    static std::vector<std::uint8_t> stringToVector(const std::string &text);
    /// One character per byte, in order, zero bytes included.
    static std::string vectorToString(const std::vector<std::uint8_t> &bytes);

    /// The text with every byte outside 0x20 to 0x7F shown as its name or number: "<STX>", "<0x01>".
    static std::string toLogString(const std::string &text);

    /// Removes `pattern` until `text` holds it no more, so also where an erased occurrence brought two pieces together.
    static void eraseAllSubStr(std::string &text, const std::string &pattern);

    /// Two uppercase hexadecimal digits per byte, without separators.
    static std::string vectorToHexString(const std::vector<std::uint8_t> &bytes);
    static std::string charToHexString(unsigned char byte);

    /// The names of the six control bytes that frames are made of.
    static const std::map<char, std::string> asciiNames;
};

/// `value` in uppercase hexadecimal, with leading zeros up to twice the width of its type in bytes and at least
/// `minimumLength` characters.
template <std::unsigned_integral Value>
std::string toHex(Value value, std::size_t minimumLength = 0)
{
    std::string text;
    for (std::size_t byte = sizeof(Value); byte-- > 0;)
        text += Converter::charToHexString(static_cast<unsigned char>(value >> (8 * byte)));
    if (text.size() < minimumLength) text.insert(0, minimumLength - text.size(), '0');
    return text;
}
