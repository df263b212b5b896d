#pragma once

#include <QStringList>

#include <cstdint>

// Lists whose first item stands for none.

/// "INACTIVE", then the items
QStringList withInactive(const QStringList &items);
/// The value of an item of such a list of channels, devices, controllers or programs.
int valueOrNone(int index);
int indexOrNone(int value);

// The value of a control change as combo boxes offer it: 0 to 127, then two items with a meaning of their own.

inline constexpr int inactiveIndex = 128;
inline constexpr int toggleIndex = 129;

/// "0" to "127", "INACTIVE"
const QStringList &controllerNumberTexts();
/// "0" to "127", "INACTIVE", "TOGGLE"
const QStringList &controlValueTexts();

/// The combo-box row of a value, -1 for one that no unit should hold.
int controlValueIndex(std::uint8_t value);
/// The value of a combo-box row; no row at all is inactive.
std::uint8_t controlValueAt(int index);
