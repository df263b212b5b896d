#include "protocol/crc16.h"

#include <boost/crc.hpp>

std::uint16_t Crc16::calculate(const std::vector<std::uint8_t> &bytes)
{
    boost::crc_optimal<16, POLYNOMIAL, 0, 0, true, true> crc;
    crc.process_bytes(bytes.data(), bytes.size());
    return crc.checksum();
}
