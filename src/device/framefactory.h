#pragma once

#include "model/records.h"
#include "protocol/masterframe.h"
#include "protocol/slaveframe.h"

#include <concepts>
#include <initializer_list>

/// The one place that knows which command each operation sends and how it addresses what it reads or writes. Banks and
/// presets count from 0, MIDI devices from 1; numbers are written as they are, unchecked.
class FrameFactory
{
public:
    virtual ~FrameFactory() = default;

    /// The command that reads a record; the numbers of its address go into fields A and B.
    template <typename Record>
    MasterFrame read(std::same_as<int> auto... address) const
    {
        return command(Table<Record>::read, {address...});
    }
    /// The command that writes to a record, as yet without a value.
    template <typename Record>
    MasterFrame write(std::same_as<int> auto... address) const
    {
        static_assert(Table<Record>::write != nullptr, "the unit does not take it");
        return command(Table<Record>::write, {address...});
    }

    MasterFrame readDeviceInfo() const { return read<DeviceInfo>(); }
    MasterFrame readErrorDescription(int error) const { return command("RET", {error}); }
    MasterFrame readBankSettings(int bank) const { return read<BankData>(bank); }
    MasterFrame writeBankSettings(int bank) const { return write<BankData>(bank); }
    MasterFrame readPresetSettings(int bank, int preset) const { return read<PresetData>(bank, preset); }
    MasterFrame writePresetSettings(int bank, int preset) const { return write<PresetData>(bank, preset); }
    MasterFrame readMidiDeviceSettings(int device) const { return read<MidiDevice>(device); }
    MasterFrame writeMidiDeviceSettings(int device) const { return write<MidiDevice>(device); }
    MasterFrame readMidiInSettings() const { return read<MidiInData>(); }
    MasterFrame writeMidiInSettings() const { return write<MidiInData>(); }
    MasterFrame readExpressionPedalSettings() const { return read<ExpressionPedalData>(); }
    MasterFrame writeExpressionPedalSettings() const { return write<ExpressionPedalData>(); }
    MasterFrame readSwitchOutSettings() const { return read<SwitchOutData>(); }
    MasterFrame writeSwitchOutSettings() const { return write<SwitchOutData>(); }
    MasterFrame readOtherSettings() const { return read<Settings>(); }
    MasterFrame writeOtherSettings() const { return write<Settings>(); }
    MasterFrame writeFirmware() const { return command("WFD", {}); }

    /// Whether the unit reports an error: any status but 0.
    bool isError(const SlaveFrame &response) const { return response.status() != 0; }

private:
    static MasterFrame command(const char *descriptor, std::initializer_list<int> address);
};
