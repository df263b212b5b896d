#pragma once

#include "unit/commandframe.h"
#include "unit/fieldencoder.h"
#include "unit/unitstatus.h"
#include "unit/valuerange.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Takes the fields of a command into a record, strictly. The first failure is kept and shown by `finish`; a value
/// that fails is not stored.
class FieldDecoder
{
public:
    template <typename Record>
    using Ref = Record &;

    /// `presence` tells whether every described field must be there. `level` is 0 for the fields of a frame, 1 and 2
    /// for sub-fields.
    FieldDecoder(std::vector<FieldText> fields, Presence presence, std::size_t level = 0);

    void text(char descriptor, std::string &value);

    template <typename Value>
    void number(char descriptor, Value &value, const ValueRange &range)
    {
        if (const FieldText *field = take(descriptor))
            if (const auto parsed = parseNumber(field->body, range, UnitStatus::OutOfRange))
                value = static_cast<Value>(*parsed);
    }

    /// An addressing field: always required, before all fields not yet taken, with failures of its own. Gives the
    /// lowest address when it fails.
    int address(char descriptor, const ValueRange &range);

    /// Takes a field that has no value; false when it is not there.
    bool flag(char descriptor);

    /// A field with sub-fields, which `describe` takes from the decoder it is given.
    template <typename Describe>
    void group(char descriptor, Presence parts, const Describe &describe)
    {
        if (const FieldText *field = take(descriptor)) enter(*field, parts, describe);
    }

    /// As `group`, for a field that a frame may carry several times.
    template <typename Describe>
    void groups(char descriptor, Presence parts, const Describe &describe)
    {
        while (const FieldText *field = take(descriptor))
            enter(*field, parts, describe);
    }

    /// Refuses any of these fields without `companion`.
    void accompanied(std::string_view descriptors, char companion);
    /// Refuses these fields unless they come all together and in this order.
    void together(std::string_view descriptors);

    static bool carries(bool) { return true; }
    static bool carriesReadOnly() { return false; }

    /// Whether a field with that descriptor waits to be taken.
    bool offers(char descriptor) const;
    /// Whether all fields are taken.
    bool exhausted() const;

    void fail(UnitStatus status);
    /// The first failure; without one `UnknownField` or `RepeatedField` when fields are left, else `Ok`.
    UnitStatus finish() const;

private:
    struct Entry
    {
        FieldText field;
        bool taken = false;
    };

    template <typename Describe>
    void enter(const FieldText &field, Presence presence, const Describe &describe)
    {
        FieldDecoder parts = partsOf(field, presence);
        describe(parts);
        fail(parts.finish());
    }

    const FieldText *take(char descriptor);
    std::string allDescriptors() const;
    std::optional<int> parseNumber(const std::string &text, const ValueRange &range, UnitStatus outside);
    FieldDecoder partsOf(const FieldText &field, Presence presence) const;

    std::vector<Entry> entries;
    Presence wanted;
    std::size_t depth;
    UnitStatus failure = UnitStatus::Ok;
};
