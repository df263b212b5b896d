#include "unit/fielddecoder.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace {

bool isControlByte(char byte)
{
    const auto value = static_cast<unsigned char>(byte);
    return value < 0x20 || value == 0x7F;
}

}  // namespace

FieldDecoder::FieldDecoder(std::vector<FieldText> fields, Presence presence, std::size_t level)
    : wanted(presence), depth(level)
{
    for (FieldText &field : fields)
        entries.push_back({std::move(field), false});
}

void FieldDecoder::text(char descriptor, std::string &value)
{
    const FieldText *field = take(descriptor);
    if (field == nullptr) return;
    if (std::ranges::any_of(field->body, isControlByte))
        fail(UnitStatus::ForbiddenByte);
    else
        value = field->body;
}

int FieldDecoder::address(char descriptor, const ValueRange &range)
{
    const auto next = std::ranges::find(entries, false, &Entry::taken);
    const FieldText *field = take(descriptor);
    if (field == nullptr) {
        fail(UnitStatus::MissingAddress);
        return range.low;
    }
    if (field != &next->field) fail(UnitStatus::FieldsOutOfOrder);
    return parseNumber(field->body, range, UnitStatus::BadAddress).value_or(range.low);
}

bool FieldDecoder::flag(char descriptor)
{
    const FieldText *field = take(descriptor);
    if (field != nullptr && !field->body.empty()) fail(UnitStatus::OutOfRange);
    return field != nullptr;
}

void FieldDecoder::accompanied(std::string_view descriptors, char companion)
{
    const std::string present = allDescriptors();
    if (present.find_first_of(descriptors) != std::string::npos && present.find(companion) == std::string::npos)
        fail(UnitStatus::MissingField);
}

void FieldDecoder::together(std::string_view descriptors)
{
    const std::string present = allDescriptors();
    if (present.find_first_of(descriptors) == std::string::npos || present.find(descriptors) != std::string::npos)
        return;
    const bool complete = std::ranges::all_of(
        descriptors, [&](char descriptor) { return present.find(descriptor) != std::string::npos; });
    fail(complete ? UnitStatus::FieldsOutOfOrder : UnitStatus::MissingField);
}

bool FieldDecoder::offers(char descriptor) const
{
    return std::ranges::any_of(
        entries, [&](const Entry &entry) { return !entry.taken && entry.field.descriptor == descriptor; });
}

bool FieldDecoder::exhausted() const { return std::ranges::all_of(entries, &Entry::taken); }

void FieldDecoder::fail(UnitStatus status)
{
    if (failure == UnitStatus::Ok) failure = status;
}

UnitStatus FieldDecoder::finish() const
{
    const auto left = std::ranges::find(entries, false, &Entry::taken);
    if (failure != UnitStatus::Ok || left == entries.end()) return failure;
    const bool repeated = std::any_of(
        entries.begin(), left, [&](const Entry &entry) { return entry.field.descriptor == left->field.descriptor; });
    return repeated ? UnitStatus::RepeatedField : UnitStatus::UnknownField;
}

const FieldText *FieldDecoder::take(char descriptor)
{
    const auto entry = std::ranges::find_if(
        entries, [&](const Entry &other) { return !other.taken && other.field.descriptor == descriptor; });
    if (entry == entries.end()) {
        if (wanted == Presence::Required) fail(UnitStatus::MissingField);
        return nullptr;
    }
    entry->taken = true;
    return &entry->field;
}

std::string FieldDecoder::allDescriptors() const
{
    std::string descriptors;
    for (const Entry &entry : entries)
        descriptors += entry.field.descriptor;
    return descriptors;
}

std::optional<int> FieldDecoder::parseNumber(const std::string &text, const ValueRange &range, UnitStatus outside)
{
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    // Only the one way in which a number is written is taken: no leading zeros, no plus sign, no minus zero.
    const bool isNumber = error == std::errc{} && text == std::to_string(value);
    if (isNumber && range.contains(value)) return value;
    fail(isNumber || error == std::errc::result_out_of_range ? outside : UnitStatus::NotANumber);
    return std::nullopt;
}

FieldDecoder FieldDecoder::partsOf(const FieldText &field, Presence presence) const
{
    static constexpr std::array separators{control::rs, control::us};
    auto parts = splitFields(field.body, separators.at(depth));
    FieldDecoder decoder(parts ? std::move(*parts) : std::vector<FieldText>(), presence, depth + 1);
    if (!parts) decoder.fail(UnitStatus::MalformedFrame);
    // The order of all sub-fields (A to T, a to j, n) is that of their characters.
    if (!std::ranges::is_sorted(decoder.allDescriptors())) decoder.fail(UnitStatus::FieldsOutOfOrder);
    return decoder;
}
