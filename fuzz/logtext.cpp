#include "fuzzing.h"
#include "protocol/converter.h"

#include <algorithm>

// A line of the traffic log: printable, on one line, without the pattern that is erased from it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    std::string line = Converter::toLogString(textOf(bytes, size));
    require(std::ranges::all_of(line, [](char c) { return c >= ' '; }), "no control bytes are left");
    require(line.size() >= size, "no byte is left out");
    Converter::eraseAllSubStr(line, "%s");
    require(line.find("%s") == std::string::npos, "the pattern is erased");
    return 0;
}
