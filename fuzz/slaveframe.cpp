#include "protocol/slaveframe.h"

#include "fuzzing.h"
#include "unit/bitwisecrc.h"

// The parser of response frames, on the input as it is and on the input with a right checksum put in.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    const std::string text = textOf(bytes, size);
    succeeds([&] { SlaveFrame({bytes, bytes + size}); });

    const std::string whole = '\x02' + text + bitwiseCrcText(text) + '\x03';
    require(SlaveFrame::isCheckSumFromParsedFrameCorrect({whole.begin(), whole.end()}), "the checksum is right");
    succeeds([&] {
        const SlaveFrame frame({whole.begin(), whole.end()});
        const std::string written = frame.toString();
        const SlaveFrame again({written.begin(), written.end()});
        require(again.toString() == written, "a frame that was written reads as the same frame");
        require(again.status() == frame.status() && again.getFrameID() == frame.getFrameID(), "status and identifier");
    });
    return 0;
}
