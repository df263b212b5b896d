#pragma once

#include "link/connection.h"
#include "model/records.h"

#include <string>

/// What a value takes on the wire in bytes, its separator and letter included.
template <typename Value>
std::size_t wireLength(const Value &value)
{
    constexpr std::size_t separatorAndLetter = 2;
    if constexpr (std::is_same_v<Value, std::string>) {
        return separatorAndLetter + value.size();
    } else if constexpr (HasTable<Value>) {
        std::size_t length = separatorAndLetter;
        forEachField<Value>([&](const auto &row) { length += wireLength(value.*row.member); });
        return length;
    } else if constexpr (requires { value.size(); }) {
        std::size_t length = 0;
        for (const auto &each : value)
            length += wireLength(each);
        return length;
    } else {
        return separatorAndLetter + std::to_string(static_cast<int>(value)).size();
    }
}

/// The bytes of the frame that answers the reading of a record, at most.
template <HasTable Record>
std::size_t answerLength(const Record &record)
{
    constexpr std::size_t longestIdentifier = 10;                          // a counter that starts with the program
    constexpr std::size_t around = 1 + longestIdentifier + 1 + 1 + 4 + 1;  // STX, FS, status, checksum, ETX
    constexpr std::size_t addressAndGroups = 2 * 4 + 3 * 2;
    return around + addressAndGroups + wireLength(record);
}

/// Whether the unit could tell the record again: it would take a name of any length.
template <HasTable Record>
bool isReadable(const Record &record)
{
    return answerLength(record) <= Connection::maxFrameLength;
}
