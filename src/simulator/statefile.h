#pragma once

#include "simulator/unitmemory.h"

#include <filesystem>
#include <string>
#include <string_view>

// A unit's memory as a text file: one line for each write command that restores a part of it, written as the log shows
// frames (<GS>, <RS>, <US>; a "<" of a name is doubled), and three kinds of lines of their own: "IDN" for the
// identity, "CAL" for what the unit measures and sets itself, "IMG" for the installed firmware in pieces of
// hexadecimal text. Empty lines and lines that begin with "#" say nothing. What no line mentions stays at its default.

/// Control bytes by their names in angle brackets, a "<" doubled, everything else unchanged.
std::string escaped(std::string_view text);

std::string toStateText(const UnitMemory &memory);
/// Throws std::runtime_error with line number and reason when a line is not understood or its values are refused.
UnitMemory fromStateText(std::string_view text);

/// Writes the file anew and puts it in place only when it is complete. Throws std::runtime_error when it cannot.
void saveState(const std::filesystem::path &file, const UnitMemory &memory);
/// Throws std::runtime_error when the file cannot be read or a line is not understood.
UnitMemory loadState(const std::filesystem::path &file);
