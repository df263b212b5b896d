#pragma once

#include "model/unitcontent.h"

#include <cstdint>
#include <vector>

/// Everything that a unit keeps while it is switched off.
struct UnitMemory : UnitContent
{
    bool operator==(const UnitMemory &) const = default;

    std::vector<std::uint8_t> firmware;  ///< the image installed last
};
