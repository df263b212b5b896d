#pragma once

#include <limits>

/// The numbers that a field takes: `low` to `high`, and up to two values outside that have a meaning of their own.
struct ValueRange
{
    constexpr ValueRange(int lowest, int highest) : ValueRange(lowest, highest, lowest, lowest) {}
    constexpr ValueRange(int lowest, int highest, int special) : ValueRange(lowest, highest, special, special) {}
    constexpr ValueRange(int lowest, int highest, int special, int otherSpecial)
        : low(lowest), high(highest), special1(special), special2(otherSpecial)
    {}

    constexpr bool contains(int value) const
    {
        return (value >= low && value <= high) || value == special1 || value == special2;
    }

    int low;
    int high;
    int special1;
    int special2;
};

inline constexpr ValueRange anyNumber{std::numeric_limits<int>::min(), std::numeric_limits<int>::max()};
