#include "unit/firmwareupload.h"

#include "unit/bitwisecrc.h"

#include <utility>

FirmwareVersion firmwareVersion(const std::vector<std::uint8_t> &image)
{
    const int crc = bitwiseCrc(std::string(image.begin(), image.end()));
    return {crc >> 8, crc & 0xFF};
}

bool appendHexadecimal(std::vector<std::uint8_t> &bytes, std::string_view text)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    if (text.size() % 2 != 0 || text.find_first_not_of(digits) != std::string_view::npos) return false;
    for (std::size_t i = 0; i < text.size(); i += 2)
        bytes.push_back(static_cast<std::uint8_t>(digits.find(text[i]) << 4 | digits.find(text[i + 1])));
    return true;
}

UnitStatus FirmwareUpload::addChunk(int number, std::string_view hexadecimal)
{
    const bool lastWasFull = received.size() == static_cast<std::size_t>(chunkCount) * chunkSize;
    if (number != 1 && (isComplete || !lastWasFull || number != chunkCount + 1)) return UnitStatus::ChunkOutOfOrder;
    if (number > maxChunks) return UnitStatus::ImageTooLarge;
    if (hexadecimal.size() > 2 * chunkSize) return UnitStatus::ChunkTooLarge;
    std::vector<std::uint8_t> bytes;
    if (hexadecimal.empty() || !appendHexadecimal(bytes, hexadecimal)) return UnitStatus::ChunkNotHexadecimal;
    if (number == 1) *this = FirmwareUpload();
    received.insert(received.end(), bytes.begin(), bytes.end());
    chunkCount = number;
    return UnitStatus::Ok;
}

UnitStatus FirmwareUpload::finish()
{
    isComplete = true;
    return UnitStatus::Ok;
}

UnitStatus FirmwareUpload::takeImage(std::vector<std::uint8_t> &image)
{
    if (!isComplete) return UnitStatus::RestartTooEarly;
    image = std::exchange(*this, FirmwareUpload()).received;
    return UnitStatus::Ok;
}
