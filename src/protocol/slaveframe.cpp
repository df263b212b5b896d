#include "protocol/slaveframe.h"

#include "protocol/converter.h"
#include "protocol/crc16.h"
#include "protocol/failure.h"

#include <boost/algorithm/string.hpp>

namespace {

constexpr std::size_t trailerLength = 5;  // four checksum digits and the end byte

}  // namespace

SlaveFrame::SlaveFrame(const std::vector<std::uint8_t> &bytes)
{
    if (!isCheckSumFromParsedFrameCorrect(bytes)) fail("Incorrect Checksum");
    const std::string text = Converter::vectorToString(bytes);
    const std::size_t end = text.find(headerEnd, 1);
    if (end == std::string::npos || end >= text.size() - trailerLength) fail("Frame without header end");
    Frame::setHeader(text);
    SlaveFrame::setData(text);
}

int SlaveFrame::status() const { return data ? static_cast<const SlaveData &>(*data).descriptor : 0; }

bool SlaveFrame::isCheckSumFromParsedFrameCorrect(const std::vector<std::uint8_t> &bytes)
{
    if (bytes.size() <= trailerLength) return false;
    const auto digits = bytes.end() - trailerLength;
    const std::string received = boost::to_upper_copy(std::string(digits, digits + 4), std::locale::classic());
    return received == toHex(Crc16::calculate({bytes.begin() + 1, digits}), 4);
}

void SlaveFrame::setData(const std::string &frameText)
{
    const std::size_t start = frameText.find(headerEnd, 1) + 1;
    data = std::make_shared<SlaveData>(frameText.substr(start, frameText.size() - trailerLength - start));
}
