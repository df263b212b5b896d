#include "protocol/header.h"

#include "fuzzing.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    succeeds([&] {
        const Header parsed(textOf(bytes, size));
        const std::string written = parsed.toString();
        require(Header(written).toString() == written, "parsing what was written gives the same text");
    });
    return 0;
}
