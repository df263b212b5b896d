#pragma once

#include "unit/unitstatus.h"

#include <cstdint>
#include <string_view>
#include <vector>

/// The version that a unit reports after it installed an image: the two halves of the image's CRC-16/ARC.
struct FirmwareVersion
{
    bool operator==(const FirmwareVersion &) const = default;

    int major = 0;  ///< 0 to 255, upper byte of the checksum
    int minor = 0;  ///< 0 to 255, lower byte of the checksum
};
FirmwareVersion firmwareVersion(const std::vector<std::uint8_t> &image);

/// Reads upper-case hexadecimal text, two digits a byte, and appends its bytes. False, with nothing appended, when it
/// is not such a text.
bool appendHexadecimal(std::vector<std::uint8_t> &bytes, std::string_view text);

/// The firmware image on its way into the unit ("WFD"): chunks in order, then the end, then the restart.
class FirmwareUpload
{
public:
    static constexpr std::size_t chunkSize = 512;  ///< bytes; only the last chunk may be shorter
    static constexpr int maxChunks = 1920;

    /// Takes chunk `number` (from 1). Number 1 always begins a new image, so that an upload that broke off can be
    /// tried again. A failure leaves what was taken before as it is.
    UnitStatus addChunk(int number, std::string_view hexadecimal);
    /// Marks the image as complete; one without any chunk is complete too.
    UnitStatus finish();
    /// Hands out the complete image and is empty again; `RestartTooEarly` before `finish`.
    UnitStatus takeImage(std::vector<std::uint8_t> &image);

private:
    std::vector<std::uint8_t> received;
    int chunkCount = 0;
    bool isComplete = false;
};
