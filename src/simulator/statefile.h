#pragma once

#include "unit/unitmemory.h"

#include <QString>

// A unit's memory on disk: FILE is a file of the editor's (archive/unitfile.h), FILE.firmware the installed image. What
// FILE does not tell is at its default, and without FILE.firmware no image is installed.

/// Throws std::runtime_error when one of the files cannot be written.
void saveState(const QString &file, const UnitMemory &memory);
/// Throws std::runtime_error when one of the files cannot be read or FILE is refused.
UnitMemory loadState(const QString &file);
