#include "ui/library/libraryreading.h"

void LibraryReading::setUnit(DataFromDevice *newUnit)
{
    unit = newUnit;
    portion = 0;
    stop();
}

void LibraryReading::start()
{
    if (running || !unit) return;
    goOn();
}

void LibraryReading::stop()
{
    running = false;
    emit changed();
}

void LibraryReading::announced()
{
    if (running && unknown(portion).empty()) goOn();
}

void LibraryReading::goOn()
{
    std::set<RecordId> records;
    while (!isComplete() && (records = unknown(portion)).empty())
        ++portion;
    running = !isComplete();
    if (running) emit wanted(records);
    emit changed();
}

std::set<RecordId> LibraryReading::unknown(int number) const
{
    std::set<RecordId> records;
    if (number == 0) {
        for (int device = 1; device <= midiDeviceCount; ++device)
            if (!unit->midiDevices[static_cast<std::size_t>(device - 1)].load())
                records.insert({RecordId::Kind::MidiDevice, device});
        return records;
    }
    const int bank = number - 1;
    const auto index = static_cast<std::size_t>(bank);
    if (!unit->bankData[index].load()) records.insert({RecordId::Kind::Bank, bank});
    for (int preset = 0; preset < presetCount; ++preset)
        if (!unit->presetData[index][static_cast<std::size_t>(preset)].load())
            records.insert({RecordId::Kind::Preset, bank, preset});
    return records;
}
