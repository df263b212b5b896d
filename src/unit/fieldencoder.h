#pragma once

#include "unit/commandframe.h"
#include "unit/valuerange.h"

#include <array>
#include <string>
#include <string_view>

/// Whether a field's sub-fields may be left out.
enum class Presence { Optional, Required };

/// Writes the fields of a record as frame text, in the order in which they are described.
class FieldEncoder
{
public:
    template <typename Record>
    using Ref = const Record &;

    /// `level` is 0 for the fields of a frame, 1 and 2 for sub-fields.
    explicit FieldEncoder(std::size_t level = 0) : depth(level) {}

    void text(char descriptor, std::string_view value);

    template <typename Value>
    void number(char descriptor, Value value, const ValueRange &)
    {
        text(descriptor, std::to_string(static_cast<int>(value)));
    }

    /// A field with sub-fields, which `describe` adds to the encoder it is given. Left out when it adds none.
    template <typename Describe>
    void group(char descriptor, Presence, const Describe &describe)
    {
        FieldEncoder parts(depth + 1);
        describe(parts);
        if (!parts.encoded.empty()) text(descriptor, parts.encoded);
    }

    template <typename Describe>
    void groups(char descriptor, Presence parts, const Describe &describe)
    {
        group(descriptor, parts, describe);
    }

    static void accompanied(std::string_view, char) {}
    static void together(std::string_view) {}

    /// Whether a field is written that only has something to say when `meaningful`.
    static bool carries(bool meaningful) { return meaningful; }
    static bool carriesReadOnly() { return true; }

    const std::string &result() const { return encoded; }

private:
    std::size_t depth;
    std::string encoded;
};
