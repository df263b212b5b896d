#pragma once

#include "support/wire.h"

/// A frame around protocol text with visible separators, which includes its checksum.
inline std::string frame(const std::string &text) { return "\x02" + wire(text) + "\x03"; }
