#pragma once

#include "model/records.h"
#include "protocol/masterframe.h"

/// Puts setting values into a write frame: one function per setting, which appends the field named beside it. A path
/// such as G > n > A names a sub-field. Text is written unchanged; it must be free of control bytes.
class Decorator
{
public:
    virtual ~Decorator() = default;

    // Banks (WBB)
    void insertIntoWriteBankSettings_BankName(MasterFrame &frame, const std::string &name) const;         // B
    void insertIntoWriteBankSettings_WahPad1Action(MasterFrame &frame, WahPadAction action) const;        // C
    void insertIntoWriteBankSettings_WahPad1PresetNumber(MasterFrame &frame, std::uint8_t preset) const;  // D
    void insertIntoWriteBankSettings_WahPad2Action(MasterFrame &frame, WahPadAction action) const;        // E
    void insertIntoWriteBankSettings_WahPad2PresetNumber(MasterFrame &frame, std::uint8_t preset) const;  // F

    // Presets (WBP)
    void insertIntoWritePresetSettings_PresetName(MasterFrame &frame, const std::string &name) const;      // C
    void insertIntoWritePresetSettings_FootswitchType(MasterFrame &frame, FootswitchType function) const;  // D
    /// E > A (buffer), B to G (loops 1 to 6)
    void insertIntoWritePresetSettings_LoopsData(MasterFrame &frame, LoopType buffer,
                                                 const std::array<LoopType, loopCount> &loops) const;
    /// F > A to F (switches 1 to 6)
    void insertIntoWritePresetSettings_SwitchOutData(MasterFrame &frame,
                                                     const std::array<SwitchType, switchCount> &switches) const;
    /// G > X > A (device), B (controller), C (value) for X = A to T; entries after the 20th are not sent
    void insertIntoWritePresetSettings_ControlChangeData(MasterFrame &frame,
                                                         const std::vector<ControlChangeData> &changes) const;
    /// G > n > A (device), B (controller), C (characteristic), D (toe up), E (toe down)
    void insertIntoWritePresetSettings_PresetExpressionPedal(MasterFrame &frame,
                                                             const PresetExpressionPedal &pedal) const;
    /// G > a to j: the program number for MIDI device slot 0 to 9
    void insertIntoWritePresetSettings_MidiProgramValue(MasterFrame &frame, int slot, int value) const;

    // MIDI devices (WMD)
    void insertIntoWriteMidiDeviceSettings_Text(MasterFrame &frame, const std::string &name) const;             // B
    void insertIntoWriteMidiDeviceSettings_ChannelNumber(MasterFrame &frame, int channel) const;                // C
    void insertIntoWriteMidiDeviceSettings_SendFirstCC(MasterFrame &frame, bool on) const;                      // D
    void insertIntoWriteMidiDeviceSettings_MidiDeviceTapTempo(MasterFrame &frame, MidiDeviceTapTempo m) const;  // E
    /// F to Y, each > A (name), B (number). Fails unless there are exactly 20 names and 20 numbers.
    void insertIntoWriteMidiDeviceSettings_ControllerNamesAndNumbers(MasterFrame &frame,
                                                                     const std::vector<std::string> &names,
                                                                     const std::vector<int> &numbers) const;
    void insertIntoWriteMidiDeviceSettings_ControllerNumber(MasterFrame &frame, int controller) const;     // a
    void insertIntoWriteMidiDeviceSettings_ControllerValue(MasterFrame &frame, int value) const;           // b
    void insertIntoWriteMidiDeviceSettings_TapTempoNoteNumber(MasterFrame &frame, int note) const;         // c
    void insertIntoWriteMidiDeviceSettings_TapTempoNoteType(MasterFrame &frame, TapTempoNote type) const;  // d

    // MIDI in (WMI)
    void insertIntoWriteMidiInSettings_Channel(MasterFrame &frame, std::uint8_t channel) const;                // A
    void insertIntoWriteMidiInSettings_MidiInPCFunction(MasterFrame &frame, MidiInPCFunction function) const;  // B
    void insertIntoWriteMidiInSettings_MidiInCCFunction(MasterFrame &frame, MidiInCCFunction function) const;  // C

    // Expression pedal (WEP)
    void insertIntoWriteExpressionPedalSettings_ExpressionPedalCharacteristic(
        MasterFrame &frame, ExpressionPedalCharacteristic characteristic) const;  // C
    void insertIntoWriteExpressionPedalSettings_ExpressionPedalPeriod(MasterFrame &frame,
                                                                      ExpressionPedalPeriod period) const;         // D
    void insertIntoWriteExpressionPedalSettings_ExpressionPedalToeUp(MasterFrame &frame, std::uint8_t v) const;    // E
    void insertIntoWriteExpressionPedalSettings_ExpressionPedalToeDown(MasterFrame &frame, std::uint8_t v) const;  // F
    void insertIntoWriteExpressionPedalSettings_MidiDeviceNumber(MasterFrame &frame, std::uint8_t device) const;   // J
    void insertIntoWriteExpressionPedalSettings_ControllerNumber(MasterFrame &frame, std::uint8_t c) const;        // K

    /// Switch outs (WSO), A to F for switch-out numbers 1 to 6; any other number appends nothing.
    void insertIntoWriteSwitchOutSettings_SwitchOutSetting(MasterFrame &frame, std::uint8_t switchOut,
                                                           SwitchOutSetting setting) const;

    // Other settings (WOS)
    void insertIntoWriteOtherSettings_BankPresetChangeMode(MasterFrame &frame, BankPresetChangeMode mode) const;  // A
    void insertIntoWriteOtherSettings_RecallUsersBankOnlyFlag(MasterFrame &frame, bool on) const;                 // B
    void insertIntoWriteOtherSettings_OneTimeModeMidiSendFlag(MasterFrame &frame, bool on) const;                 // C
    void insertIntoWriteOtherSettings_WahPad1Setting(MasterFrame &frame, WahPadSetting setting) const;            // D
    void insertIntoWriteOtherSettings_WahPad2Setting(MasterFrame &frame, WahPadSetting setting) const;            // E
    void insertIntoWriteOtherSettings_ClickProtection(MasterFrame &frame, ClickProtection level) const;           // F
    void insertIntoWriteOtherSettings_LoopsSplitFlag(MasterFrame &frame, bool on) const;                          // G
    void insertIntoWriteOtherSettings_KeyboardType(MasterFrame &frame, KeyboardType type) const;                  // J
    void insertIntoWriteOtherSettings_PresetChangeNameSetting(MasterFrame &frame, PresetChangeName when) const;   // K

    // Firmware (WFD)
    /// A (chunk number, from 1), B (the bytes as hexadecimal text)
    void insertIntoWriteFirmware_FirmwareData(MasterFrame &frame, int chunkNumber,
                                              const std::vector<unsigned char> &bytes) const;
    void insertIntoWriteFirmware_AllDataSentFlag(MasterFrame &frame) const;  // C
    void insertIntoWriteFirmware_RestartDevice(MasterFrame &frame) const;    // D
};
