#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// The CRC-16/ARC of some bytes, computed bit by bit. It shares no code with the editor's checksum, so that a mistake
/// there cannot hide here.
std::uint16_t bitwiseCrc(std::string_view bytes);

/// The checksum as four uppercase hexadecimal digits.
std::string bitwiseCrcText(std::string_view bytes);
