#include "unit/unitstatus.h"

#include <algorithm>
#include <iterator>
#include <utility>

std::string_view statusText(int status)
{
    static constexpr std::pair<UnitStatus, std::string_view> texts[] = {
        {UnitStatus::Ok, "No error"},
        {UnitStatus::WrongChecksum, "Wrong checksum"},
        {UnitStatus::MalformedFrame, "Malformed frame"},
        {UnitStatus::UnknownCommand, "Unknown command"},
        {UnitStatus::MissingAddress, "Address missing"},
        {UnitStatus::BadAddress, "No such bank, preset or device"},
        {UnitStatus::UnknownField, "Field not known or not writable"},
        {UnitStatus::RepeatedField, "Field given twice"},
        {UnitStatus::MissingField, "Field missing"},
        {UnitStatus::NotANumber, "Number expected"},
        {UnitStatus::OutOfRange, "Value out of range"},
        {UnitStatus::ForbiddenByte, "Control byte in text"},
        {UnitStatus::FieldsOutOfOrder, "Fields out of order"},
        {UnitStatus::RepeatedIdentifier, "Frame identifier of the last command"},
        {UnitStatus::ListFull, "No room for another control change"},
        {UnitStatus::ChunkOutOfOrder, "Firmware data out of order"},
        {UnitStatus::ChunkNotHexadecimal, "Firmware data not hexadecimal"},
        {UnitStatus::ChunkTooLarge, "Firmware data too long"},
        {UnitStatus::ImageTooLarge, "Firmware image too large"},
        {UnitStatus::RestartTooEarly, "Firmware image not complete"},
    };
    const auto *row = std::ranges::find_if(texts, [&](const auto &entry) { return int(entry.first) == status; });
    return row != std::end(texts) ? row->second : "Unknown error";
}
