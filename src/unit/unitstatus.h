#pragma once

#include <string_view>

/// The status numbers with which the unit answers a command. Anything but `Ok` means that nothing was changed.
enum class UnitStatus : int {
    Ok = 0,
    WrongChecksum = 1,
    MalformedFrame = 2,
    UnknownCommand = 3,
    MissingAddress = 4,
    BadAddress = 5,
    UnknownField = 6,
    RepeatedField = 7,
    MissingField = 8,
    NotANumber = 9,
    OutOfRange = 10,
    ForbiddenByte = 11,
    FieldsOutOfOrder = 12,
    RepeatedIdentifier = 13,
    ListFull = 14,
    ChunkOutOfOrder = 20,
    ChunkNotHexadecimal = 21,
    ChunkTooLarge = 22,
    ImageTooLarge = 23,
    RestartTooEarly = 24,
};

/// The English text of a status number, as "RET" answers it in field B. Numbers the unit never uses have a text too.
std::string_view statusText(int status);
