#pragma once

#include "model/records.h"
#include "protocol/slaveframe.h"

#include <memory>
#include <string>

/// Turns an accepted response into the record that its command reads, as the record's table tells.
///
/// A field that a decoder needs and does not find fails by the convention of protocol/failure.h, with a message that
/// names command and field ("the answer to RBP lacks field C"). A value that is no number throws
/// `boost::bad_lexical_cast`. Numbers outside an enumeration are stored as they are; 8-bit and 16-bit members take the
/// low bits.
class Translator
{
public:
    virtual ~Translator() = default;

    // The records and the members that can be decoded are named at the end of translator.cpp.
    /// A whole record: every row of its table.
    template <typename Record>
    std::unique_ptr<Record> decode(const SlaveFrame &response) const;
    /// One member of a record; the response's other fields are not looked at.
    template <auto Member>
    ValueOf<Member> decode(const SlaveFrame &response) const;

    DeviceInfo fromReadDeviceInfo_getDeviceInfo(const SlaveFrame &response) const
    {
        return *decode<DeviceInfo>(response);
    }
    std::string fromReadBankSettings_getBankName(const SlaveFrame &response) const
    {
        return decode<&BankData::name>(response);
    }
    std::unique_ptr<BankData> fromReadBankSettings_getBankData(const SlaveFrame &response) const
    {
        return decode<BankData>(response);
    }
    std::string fromReadPresetSettings_getPresetName(const SlaveFrame &response) const
    {
        return decode<&PresetData::name>(response);
    }
    FootswitchType fromReadPresetSettings_getFootswitchFunction(const SlaveFrame &response) const
    {
        return decode<&PresetData::footswitchFunction>(response);
    }
    std::unique_ptr<PresetData> fromReadPresetSettings_getPresetData(const SlaveFrame &response) const
    {
        return decode<PresetData>(response);
    }
    std::unique_ptr<MidiDevice> fromReadMidiDeviceSettings_getMidiDevice(const SlaveFrame &response) const
    {
        return decode<MidiDevice>(response);
    }
    std::unique_ptr<Settings> fromReadOtherSettings_getSettings(const SlaveFrame &response) const
    {
        return decode<Settings>(response);
    }
    std::unique_ptr<SwitchOutData> fromReadSwitchOutSettings_getSwitchOutData(const SlaveFrame &response) const
    {
        return decode<SwitchOutData>(response);
    }
    std::unique_ptr<MidiInData> fromReadMidiInSettings_getMidiInData(const SlaveFrame &response) const
    {
        return decode<MidiInData>(response);
    }
    std::unique_ptr<ExpressionPedalData>
    fromReadExpressionPedalSettings_getExpressionPedalData(const SlaveFrame &response) const
    {
        return decode<ExpressionPedalData>(response);
    }
    std::string fromReadErrorDescription_getErrorDescription(const SlaveFrame &response) const;
};
