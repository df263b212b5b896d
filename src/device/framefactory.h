#pragma once

#include "protocol/masterframe.h"
#include "protocol/slaveframe.h"

/// The one place that knows which command each operation sends and how it addresses what it reads or writes. Banks and
/// presets count from 0, MIDI devices from 1; numbers are written as they are, unchecked.
class FrameFactory
{
public:
    virtual ~FrameFactory() = default;

    MasterFrame readDeviceInfo() const;                           // RDI
    MasterFrame readErrorDescription(int error) const;            // RET A
    MasterFrame readBankSettings(int bank) const;                 // RBB A
    MasterFrame writeBankSettings(int bank) const;                // WBB A
    MasterFrame readPresetSettings(int bank, int preset) const;   // RBP A B
    MasterFrame writePresetSettings(int bank, int preset) const;  // WBP A B
    MasterFrame readMidiDeviceSettings(int device) const;         // RMD A
    MasterFrame writeMidiDeviceSettings(int device) const;        // WMD A
    MasterFrame readMidiInSettings() const;                       // RMI
    MasterFrame writeMidiInSettings() const;                      // WMI
    MasterFrame readExpressionPedalSettings() const;              // REP
    MasterFrame writeExpressionPedalSettings() const;             // WEP
    MasterFrame readSwitchOutSettings() const;                    // RSO
    MasterFrame writeSwitchOutSettings() const;                   // WSO
    MasterFrame readOtherSettings() const;                        // ROS
    MasterFrame writeOtherSettings() const;                       // WOS
    MasterFrame writeFirmware() const;                            // WFD

    /// Whether the unit reports an error: any status but 0.
    bool isError(const SlaveFrame &response) const;
};
