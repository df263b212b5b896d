#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

/// The checksum that ends every frame: CRC-16/ARC (polynomial 0x8005, initial value 0, bits reflected in and out).
class Crc16
{
public:
    virtual ~Crc16() = default;

    static constexpr std::uint16_t POLYNOMIAL = 0x8005;

    /// The checksum of `bytes`; 0 for none.
    static std::uint16_t calculate(const std::vector<std::uint8_t> &bytes);
    /// The checksum of the text's bytes.
    static std::uint16_t ofText(std::string_view text);
};
