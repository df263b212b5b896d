#include "protocol/crc16.h"

#include <array>
#include <boost/crc.hpp>

namespace {

using Table = std::array<std::uint16_t, 256>;

/// For each byte the checksum of that byte and so many zero bytes. What four bytes contribute can then be looked up
/// side by side instead of one after the other: three times as fast.
Table tableFor(int zeros)
{
    Table table{};
    for (std::size_t byte = 0; byte < table.size(); ++byte) {
        boost::crc_optimal<16, Crc16::POLYNOMIAL, 0, 0, true, true> crc;
        crc.process_byte(static_cast<unsigned char>(byte));
        for (int zero = 0; zero < zeros; ++zero)
            crc.process_byte(0);
        table[byte] = crc.checksum();
    }
    return table;
}

std::uint16_t checksumOf(const std::uint8_t *bytes, std::size_t count)
{
    static const std::array tables{tableFor(0), tableFor(1), tableFor(2), tableFor(3)};
    unsigned int crc = 0;
    for (; count >= 4; count -= 4, bytes += 4)
        crc = tables[3][bytes[0] ^ (crc & 0xFF)] ^ tables[2][bytes[1] ^ (crc >> 8)] ^ tables[1][bytes[2]] ^
              tables[0][bytes[3]];
    for (; count > 0; --count, ++bytes)
        crc = (crc >> 8) ^ tables[0][*bytes ^ (crc & 0xFF)];
    return static_cast<std::uint16_t>(crc);
}

}  // namespace

std::uint16_t Crc16::calculate(const std::vector<std::uint8_t> &bytes)
{
    return checksumOf(bytes.data(), bytes.size());
}

std::uint16_t Crc16::ofText(std::string_view text)
{
    return checksumOf(reinterpret_cast<const std::uint8_t *>(text.data()), text.size());
}
