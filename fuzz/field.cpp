#include "protocol/field.h"

#include "fuzzing.h"

// The field tree: what was parsed and written once is read and written alike for ever after.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    if (size < 2) return 0;
    const auto level = static_cast<FieldLevel>(bytes[0] % 3);
    const Field parsed(level, textOf(bytes + 1, size - 1));
    const std::string written = parsed.toString();
    const Field again(level, written);
    require(again.toString() == written, "parsing what was written gives the same text");
    require(again.getDescriptor() == parsed.getDescriptor(), "the descriptor is kept");
    for (const Field &subfield : parsed.getSubfields())
        require(parsed.doesContain(subfield.getDescriptor()), "every sub-field is found");
    succeeds([&] { again.intValue(); });
    succeeds([&] { again.doubleValue(); });
    return 0;
}
