#pragma once

#include "protocol/frame.h"

/// A response frame, unit to host, verified and parsed.
class SlaveFrame : public Frame
{
public:
    /// An empty frame, without header and data part.
    SlaveFrame() = default;
    /// Parses a whole received frame; its first and last byte are not looked at. Fails ("Incorrect Checksum") on a
    /// wrong checksum or fewer than six bytes, and ("Frame without header end") when 0x1C is missing. Throws
    /// `boost::bad_lexical_cast` when a number of the header or the status is not one.
    explicit SlaveFrame(const std::vector<std::uint8_t> &bytes);

    /// The unit's verdict: 0 for success, otherwise its error number.
    int status() const;

    static bool isCheckSumFromParsedFrameCorrect(const std::vector<std::uint8_t> &bytes);

    void setData(const std::string &frameText) override;
};
