#include "model/unitcontent.h"

namespace {

template <typename Record>
void chooseFirst(Record &record)
{
    forEachField<Record>([&](const auto &row) {
        using Value = std::decay_t<decltype(record.*row.member)>;
        if constexpr (std::is_enum_v<Value> || std::is_same_v<Value, bool>) record.*row.member = fromIndex<Value>(0);
    });
}

}  // namespace

std::set<RecordId> recordsOfBank(int bank)
{
    std::set<RecordId> records{{RecordId::Kind::Bank, bank, 0}};
    for (int preset = 0; preset < presetCount; ++preset)
        records.insert({RecordId::Kind::Preset, bank, preset});
    return records;
}

std::set<RecordId> recordsOfBanks(const std::set<int> &banks)
{
    std::set<RecordId> records;
    for (const int bank : banks)
        records.merge(recordsOfBank(bank));
    return records;
}

std::set<RecordId> allMidiDevices()
{
    std::set<RecordId> records;
    for (int number = 1; number <= midiDeviceCount; ++number)
        records.insert({RecordId::Kind::MidiDevice, number});
    return records;
}

const std::set<RecordId> &allRecords()
{
    static const std::set<RecordId> all = [] {
        using Kind = RecordId::Kind;
        std::set<RecordId> records{
            {Kind::DeviceInfo}, {Kind::Settings}, {Kind::MidiIn}, {Kind::ExpressionPedal}, {Kind::SwitchOuts}};
        records.merge(allMidiDevices());
        for (int bank = 0; bank < bankCount; ++bank)
            records.merge(recordsOfBank(bank));
        return records;
    }();
    return all;
}

UnitContent emptyContent()
{
    UnitContent content;
    chooseFirst(content.settings);
    chooseFirst(content.midiIn);
    chooseFirst(content.expressionPedal);
    content.expressionPedal.toeDown = 127;
    return content;
}
