#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

/// How many pieces `text` falls into when it is cut at every separator: one more than it has separators.
inline std::size_t pieceCount(std::string_view text, char separator)
{
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), separator)) + 1;
}

/// Calls `take` with each of those pieces in order, empty ones included.
template <typename Take>
void forEachPiece(std::string_view text, char separator, Take take)
{
    for (auto end = text.find(separator); end != std::string_view::npos; end = text.find(separator)) {
        take(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    take(text);
}
