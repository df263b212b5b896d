#include "unit/bitwisecrc.h"

std::uint16_t bitwiseCrc(std::string_view bytes)
{
    unsigned crc = 0;
    for (const char byte : bytes) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1) != 0 ? (crc >> 1) ^ 0xA001U : crc >> 1;
    }
    return static_cast<std::uint16_t>(crc);
}

std::string bitwiseCrcText(std::string_view bytes)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    const unsigned crc = bitwiseCrc(bytes);
    return {digits[crc >> 12], digits[crc >> 8 & 0xF], digits[crc >> 4 & 0xF], digits[crc & 0xF]};
}
