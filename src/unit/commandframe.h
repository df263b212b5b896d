#pragma once

#include "unit/unitstatus.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The control bytes of the frame format.
namespace control {
inline constexpr char stx = 0x02;
inline constexpr char etx = 0x03;
inline constexpr char fs = 0x1C;
inline constexpr char gs = 0x1D;  ///< before every field of the data part
inline constexpr char rs = 0x1E;  ///< between the sub-fields of a field
inline constexpr char us = 0x1F;  ///< between the sub-fields of a sub-field
}  // namespace control

/// One field as received. Whether the body is a value or a list of sub-fields only the command can tell.
struct FieldText
{
    bool operator==(const FieldText &) const = default;

    char descriptor = 0;
    std::string body;
};

/// The data part of a command frame: three upper-case letters and the top-level fields in their order.
struct Command
{
    std::string name;
    std::vector<FieldText> fields;
};

/// What the unit makes of the bytes of one frame. `command` is meaningful while `status` is `Ok`.
struct ReceivedFrame
{
    UnitStatus status = UnitStatus::Ok;
    std::string id = "0";  ///< decimal frame identifier, "0" when the frame has none that can be read
    std::string data;      ///< the bytes between FS and checksum, empty when there is no FS
    Command command;
};

/// Takes the first whole frame off the received bytes and drops what is before it; empty while there is none.
std::string takeFrame(std::string &bytes);

/// Reads a frame from its STX to its ETX and accepts nothing that the frame format does not name: the identifier is a
/// plain decimal number, the checksum has upper-case digits, no field is empty.
ReceivedFrame parseFrame(std::string_view bytes);

/// Reads a data part ("WBB", GS, "A0", ...); empty when it is malformed.
std::optional<Command> parseCommand(std::string_view data);

/// Splits sub-fields at `separator`; empty when a piece is empty. An empty text has no sub-fields.
std::optional<std::vector<FieldText>> splitFields(std::string_view text, char separator);

/// A whole frame around a data part: STX, identifier, FS, data, checksum, ETX.
std::string buildFrame(std::string_view id, std::string_view data);
