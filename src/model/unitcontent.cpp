#include "model/unitcontent.h"

std::set<RecordId> recordsOfBank(int bank)
{
    std::set<RecordId> records{{RecordId::Kind::Bank, bank, 0}};
    for (int preset = 0; preset < presetCount; ++preset)
        records.insert({RecordId::Kind::Preset, bank, preset});
    return records;
}

const std::set<RecordId> &allRecords()
{
    static const std::set<RecordId> all = [] {
        using Kind = RecordId::Kind;
        std::set<RecordId> records{
            {Kind::DeviceInfo}, {Kind::Settings}, {Kind::MidiIn}, {Kind::ExpressionPedal}, {Kind::SwitchOuts}};
        for (int number = 1; number <= midiDeviceCount; ++number)
            records.insert({Kind::MidiDevice, number, 0});
        for (int bank = 0; bank < bankCount; ++bank)
            records.merge(recordsOfBank(bank));
        return records;
    }();
    return all;
}
