#pragma once

#include <algorithm>
#include <string>
#include <utility>

/// Protocol text written readably: | for FS, ; for GS, / for RS, a comma for US.
inline std::string wire(std::string text)
{
    for (const auto &[readable, byte] : {std::pair{'|', '\x1C'}, {';', '\x1D'}, {'/', '\x1E'}, {',', '\x1F'}})
        std::replace(text.begin(), text.end(), readable, byte);
    return text;
}

/// A frame around such a text, which includes its checksum.
inline std::string frame(const std::string &text) { return "\x02" + wire(text) + "\x03"; }
