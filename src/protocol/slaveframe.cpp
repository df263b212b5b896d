#include "protocol/slaveframe.h"

#include "protocol/converter.h"
#include "protocol/crc16.h"
#include "protocol/failure.h"

#include <algorithm>

namespace {

constexpr std::size_t trailerLength = 5;  // four checksum digits and the end byte

char upperCase(char digit) { return digit >= 'a' && digit <= 'f' ? static_cast<char>(digit - 'a' + 'A') : digit; }

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
    const std::string_view frame(reinterpret_cast<const char *>(bytes.data()), bytes.size());
    const std::string_view checked = frame.substr(1, frame.size() - trailerLength - 1);
    const std::string_view digits = frame.substr(frame.size() - trailerLength, 4);
    return std::ranges::equal(digits, toHex(Crc16::ofText(checked), 4), {}, upperCase);
}

void SlaveFrame::setData(const std::string &frameText)
{
    const std::size_t start = frameText.find(headerEnd, 1) + 1;
    data = std::make_shared<SlaveData>(
        std::string_view(frameText).substr(start, frameText.size() - trailerLength - start));
}
