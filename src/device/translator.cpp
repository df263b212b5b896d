#include "device/translator.h"

#include "protocol/failure.h"

#include <algorithm>
#include <optional>
#include <type_traits>

namespace {

/// Reads members from the fields of one response, or from the sub-fields of one of its fields. Where that is in the
/// response is worked out only for the message about a missing field.
class Reader
{
public:
    Reader(const char *commandName, const SlaveFrame &response) : command(commandName), fields(&response.fields()) {}

    /// Every row of a record's table, in the order of the wire.
    template <HasTable Record>
    void read(Record &record) const
    {
        forEachField<Record>([&](const auto &row) { read(record, row); });
    }

    /// One row. A group that is not there leaves its members as they are.
    template <typename Record, typename Member>
    void read(Record &record, const FieldOf<Record, Member> &row) const
    {
        if (row.group == 0)
            read(record.*row.member, row.letter, row.optional);
        else if (const Field *group = find(row.group))
            Reader(*this, *group).read(record.*row.member, row.letter, row.optional);
    }

    template <typename Value>
    void read(Value &value, char letter, bool optional) const
    {
        if (const Field *field = optional ? find(letter) : &require(letter)) convert(*field, value);
    }

    /// An array's values come under consecutive letters.
    template <typename Value, std::size_t Count>
    void read(std::array<Value, Count> &values, char letter, bool optional) const
    {
        for (Value &value : values)
            read(value, letter++, optional);
    }

    /// A list holds what is there of its letters, without gaps.
    void read(std::vector<ControlChangeData> &list, char letter, bool) const
    {
        list.reserve(std::min(fields->size(), maxControlChanges));
        for (std::size_t entry = 0; entry < maxControlChanges; ++entry)
            if (const Field *field = find(letter++)) convert(*field, list.emplace_back());
    }

private:
    Reader(const Reader &outer, const Field &field)
        : command(outer.command), parent(&outer), opened(field.getDescriptor()), fields(&field.getSubfields())
    {
        if (!fields->empty() || field.getValuePart().empty()) return;
        // The wire cannot tell a single sub-field from a value, so the tree holds it as the value.
        compound = field;
        compound->insertSubField(field.getValuePart());
        fields = &compound->getSubfields();
    }

    const Field *find(char letter) const { return findField(*fields, letter).get_ptr(); }

    const Field &require(char letter) const
    {
        if (const Field *found = find(letter)) return *found;
        fail(std::string("the answer to ") + command + " lacks field " + path() + letter);
    }

    /// Of the field read from, "G/n/"; empty for the response itself.
    std::string path() const { return parent ? parent->path() + opened + '/' : std::string(); }

    template <typename Value>
    void convert(const Field &field, Value &value) const
    {
        if constexpr (HasTable<Value>)
            Reader(*this, field).read(value);
        else if constexpr (std::is_same_v<Value, std::string>)
            value = field.getValuePart();
        else if constexpr (std::is_same_v<Value, bool>)
            value = field.intValue() != 0;
        else
            value = static_cast<Value>(field.intValue());
    }

    const char *command;
    const Reader *parent = nullptr;
    char opened = 0;
    std::optional<Field> compound;
    const std::vector<Field> *fields;  // the response's, the field's or those of `compound`
};

}  // namespace

template <typename Record>
std::unique_ptr<Record> Translator::decode(const SlaveFrame &response) const
{
    auto record = std::make_unique<Record>();
    Reader(Table<Record>::read, response).read(*record);
    return record;
}

template <auto Member>
ValueOf<Member> Translator::decode(const SlaveFrame &response) const
{
    using Record = RecordOf<Member>;
    Record record;
    Reader(Table<Record>::read, response).read(record, rowOf<Member>());
    return record.*Member;
}

std::string Translator::fromReadErrorDescription_getErrorDescription(const SlaveFrame &response) const
{
    std::string text;
    Reader("RET", response).read(text, 'B', false);
    return text;
}

template std::unique_ptr<DeviceInfo> Translator::decode(const SlaveFrame &) const;
template std::unique_ptr<BankData> Translator::decode(const SlaveFrame &) const;
template std::unique_ptr<PresetData> Translator::decode(const SlaveFrame &) const;
template std::unique_ptr<MidiDevice> Translator::decode(const SlaveFrame &) const;
template std::unique_ptr<Settings> Translator::decode(const SlaveFrame &) const;
template std::unique_ptr<SwitchOutData> Translator::decode(const SlaveFrame &) const;
template std::unique_ptr<MidiInData> Translator::decode(const SlaveFrame &) const;
template std::unique_ptr<ExpressionPedalData> Translator::decode(const SlaveFrame &) const;
template std::string Translator::decode<&BankData::name>(const SlaveFrame &) const;
template std::string Translator::decode<&PresetData::name>(const SlaveFrame &) const;
template FootswitchType Translator::decode<&PresetData::footswitchFunction>(const SlaveFrame &) const;
