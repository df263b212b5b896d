#include "unit/virtualunit.h"

#include "fuzzing.h"
#include "unit/bitwisecrc.h"
#include "unit/musiciancontent.h"

namespace {

std::string answered(VirtualUnit &unit, const std::string &frame)
{
    const auto answer = unit.answer(frame);
    require(answer.has_value(), "a unit that does not restart answers");
    require(answer->front() == '\x02' && answer->back() == '\x03' && answer->find('\x1C') < answer->size() - 5,
            "the answer is a whole frame");
    return *answer;
}

}  // namespace

// The virtual unit's own parser: the input as it is, then as the checked part of a frame, whose command must have
// changed nothing unless the unit says so.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    static const UnitMemory initial = musicianContent();
    static VirtualUnit unit(initial, std::chrono::milliseconds(0));
    const std::string text = textOf(bytes, size);
    answered(unit, text);
    // Else an input could be refused for nothing but the identifier of the last one.
    static const std::string between = buildFrame("18446744073709551615", "RDI");
    answered(unit, between);
    const std::string answer = answered(unit, '\x02' + text + bitwiseCrcText(text) + '\x03');
    const bool accepted = answer[answer.find('\x1C') + 1] == '0';
    if (!accepted) require(unit.memory() == initial, "a command that was refused has changed nothing");
    if (accepted && unit.memory() != initial) unit.memory() = initial;
    return 0;
}
