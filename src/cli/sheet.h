#pragma once

#include "model/unitcontent.h"

#include <QStringList>

namespace cli {

/// What some records of a content hold, as lines for people: a line a setting, the values of a list side by side
/// without those that are none, MIDI devices and their controllers by name where the content knows one.
QStringList sheetOf(const UnitContent &content, const std::set<RecordId> &records);

}  // namespace cli
