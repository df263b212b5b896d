#include "device/kora.h"

#include "protocol/converter.h"
#include "protocol/failure.h"

#include <QThread>

#include <algorithm>
#include <stdexcept>

static std::uint8_t low8(int number) { return static_cast<std::uint8_t>(number); }

KORA::KORA(std::shared_ptr<Connection> sharedConnection) : connection(std::move(sharedConnection)) {}

KORA::~KORA() { connection->closeConnection(); }

SlaveFrame KORA::listen()
{
    std::string text;
    *connection >> text;
    return SlaveFrame(Converter::stringToVector(text));
}

SlaveFrame KORA::getFrame(unsigned long long id)
{
    SlaveFrame response = listen();
    if (response.getFrameID() != id) throw std::runtime_error("Nieprawidlowy numer ramki");
    return response;
}

void KORA::checkError(const SlaveFrame &response)
{
    lastErrorNumber = response.status();
    if (frameFactory.isError(response)) fail(getErrorDescription(response));
}

std::string KORA::getErrorDescription(const SlaveFrame &response)
{
    // Sent and heard without a check of its own, so that an error about an error ends here.
    *connection << frameFactory.readErrorDescription(response.status());
    return translator.fromReadErrorDescription_getErrorDescription(listen());
}

SlaveFrame KORA::exchange(const MasterFrame &command)
{
    *connection << command;
    SlaveFrame response = listen();
    checkError(response);
    return response;
}

DeviceInfo KORA::getDeviceInfo()
{
    return read(frameFactory.readDeviceInfo(), &Translator::fromReadDeviceInfo_getDeviceInfo);
}

std::string KORA::getBankName(int bank)
{
    return read(frameFactory.readBankSettings(bank), &Translator::fromReadBankSettings_getBankName);
}

std::unique_ptr<BankData> KORA::getBankData(int bank)
{
    return read(frameFactory.readBankSettings(bank), &Translator::fromReadBankSettings_getBankData);
}

std::string KORA::getPresetName(int bank, int preset)
{
    return read(frameFactory.readPresetSettings(bank, preset), &Translator::fromReadPresetSettings_getPresetName);
}

FootswitchType KORA::getFootswitchFunction(int bank, int preset)
{
    return read(frameFactory.readPresetSettings(bank, preset),
                &Translator::fromReadPresetSettings_getFootswitchFunction);
}

std::unique_ptr<PresetData> KORA::getPresetData(int bank, int preset)
{
    return read(frameFactory.readPresetSettings(bank, preset), &Translator::fromReadPresetSettings_getPresetData);
}

std::unique_ptr<MidiDevice> KORA::getMidiDevice(int device)
{
    return read(frameFactory.readMidiDeviceSettings(device), &Translator::fromReadMidiDeviceSettings_getMidiDevice);
}

std::unique_ptr<Settings> KORA::getSettings()
{
    return read(frameFactory.readOtherSettings(), &Translator::fromReadOtherSettings_getSettings);
}

std::unique_ptr<SwitchOutData> KORA::getSwitchOutData()
{
    return read(frameFactory.readSwitchOutSettings(), &Translator::fromReadSwitchOutSettings_getSwitchOutData);
}

std::unique_ptr<MidiInData> KORA::getMidiInData()
{
    return read(frameFactory.readMidiInSettings(), &Translator::fromReadMidiInSettings_getMidiInData);
}

std::unique_ptr<ExpressionPedalData> KORA::getExpressionPedalData()
{
    return read(frameFactory.readExpressionPedalSettings(),
                &Translator::fromReadExpressionPedalSettings_getExpressionPedalData);
}

void KORA::changeBankName(const std::string &name, int bank)
{
    write(frameFactory.writeBankSettings(bank), &Decorator::insertIntoWriteBankSettings_BankName, name);
}

void KORA::changePresetWahPad1(int bank, WahPadAction action)
{
    write(frameFactory.writeBankSettings(bank), &Decorator::insertIntoWriteBankSettings_WahPad1Action, action);
}

void KORA::changePresetWahPad2(int bank, WahPadAction action)
{
    write(frameFactory.writeBankSettings(bank), &Decorator::insertIntoWriteBankSettings_WahPad2Action, action);
}

void KORA::changePresetNumberWahPad1(int bank, int preset)
{
    write(frameFactory.writeBankSettings(bank), &Decorator::insertIntoWriteBankSettings_WahPad1PresetNumber,
          low8(preset));
}

void KORA::changePresetNumberWahPad2(int bank, int preset)
{
    write(frameFactory.writeBankSettings(bank), &Decorator::insertIntoWriteBankSettings_WahPad2PresetNumber,
          low8(preset));
}

void KORA::changePresetName(const std::string &name, int bank, int preset)
{
    write(frameFactory.writePresetSettings(bank, preset), &Decorator::insertIntoWritePresetSettings_PresetName, name);
}

void KORA::changeFootswitchFunction(FootswitchType function, int bank, int preset)
{
    write(frameFactory.writePresetSettings(bank, preset), &Decorator::insertIntoWritePresetSettings_FootswitchType,
          function);
}

void KORA::changeLoopType(LoopType buffer, const std::array<LoopType, loopCount> &loops, int bank, int preset,
                          FootswitchType function)
{
    writeWith(function, frameFactory.writePresetSettings(bank, preset),
              &Decorator::insertIntoWritePresetSettings_LoopsData, buffer, loops);
}

void KORA::changeSwitchType(const std::array<SwitchType, switchCount> &switches, int bank, int preset,
                            FootswitchType function)
{
    writeWith(function, frameFactory.writePresetSettings(bank, preset),
              &Decorator::insertIntoWritePresetSettings_SwitchOutData, switches);
}

void KORA::changeProgramValue(int bank, int preset, int slot, int value, FootswitchType function)
{
    writeWith(function, frameFactory.writePresetSettings(bank, preset),
              &Decorator::insertIntoWritePresetSettings_MidiProgramValue, slot, value);
}

void KORA::changePresetExpressionPedal(int bank, int preset, const PresetExpressionPedal &pedal,
                                       FootswitchType function)
{
    writeWith(function, frameFactory.writePresetSettings(bank, preset),
              &Decorator::insertIntoWritePresetSettings_PresetExpressionPedal, pedal);
}

void KORA::changeControlChangeData(int bank, int preset, const std::vector<ControlChangeData> &list,
                                   FootswitchType function)
{
    writeWith(function, frameFactory.writePresetSettings(bank, preset),
              &Decorator::insertIntoWritePresetSettings_ControlChangeData, list);
}

void KORA::changeMidiDeviceName(const std::string &name, int device)
{
    write(frameFactory.writeMidiDeviceSettings(device), &Decorator::insertIntoWriteMidiDeviceSettings_Text, name);
}

void KORA::changeMidiDeviceChannel(int channel, int device)
{
    write(frameFactory.writeMidiDeviceSettings(device), &Decorator::insertIntoWriteMidiDeviceSettings_ChannelNumber,
          channel);
}

void KORA::changeSendCCFirst(bool on, int device)
{
    write(frameFactory.writeMidiDeviceSettings(device), &Decorator::insertIntoWriteMidiDeviceSettings_SendFirstCC, on);
}

void KORA::changeTapTempo(MidiDeviceTapTempo mode, int device)
{
    write(frameFactory.writeMidiDeviceSettings(device),
          &Decorator::insertIntoWriteMidiDeviceSettings_MidiDeviceTapTempo, mode);
}

void KORA::changeTapController(int controller, int device)
{
    write(frameFactory.writeMidiDeviceSettings(device), &Decorator::insertIntoWriteMidiDeviceSettings_ControllerNumber,
          controller);
}

void KORA::changeTapControllerValue(int value, int device)
{
    write(frameFactory.writeMidiDeviceSettings(device), &Decorator::insertIntoWriteMidiDeviceSettings_ControllerValue,
          value);
}

void KORA::changeNoteNumber(int note, int device)
{
    write(frameFactory.writeMidiDeviceSettings(device),
          &Decorator::insertIntoWriteMidiDeviceSettings_TapTempoNoteNumber, note);
}

void KORA::changeNoteType(TapTempoNote type, int device)
{
    write(frameFactory.writeMidiDeviceSettings(device), &Decorator::insertIntoWriteMidiDeviceSettings_TapTempoNoteType,
          type);
}

void KORA::changeControllersNamesAndNumbers(const std::vector<std::string> &names, const std::vector<int> &numbers,
                                            int device)
{
    write(frameFactory.writeMidiDeviceSettings(device),
          &Decorator::insertIntoWriteMidiDeviceSettings_ControllerNamesAndNumbers, names, numbers);
}

void KORA::changeChannel(int channel)
{
    write(frameFactory.writeMidiInSettings(), &Decorator::insertIntoWriteMidiInSettings_Channel, low8(channel));
}

void KORA::changePCFunction(MidiInPCFunction function)
{
    write(frameFactory.writeMidiInSettings(), &Decorator::insertIntoWriteMidiInSettings_MidiInPCFunction, function);
}

void KORA::changeCCFunction(MidiInCCFunction function)
{
    write(frameFactory.writeMidiInSettings(), &Decorator::insertIntoWriteMidiInSettings_MidiInCCFunction, function);
}

void KORA::changeCharacteristic(ExpressionPedalCharacteristic characteristic)
{
    write(frameFactory.writeExpressionPedalSettings(),
          &Decorator::insertIntoWriteExpressionPedalSettings_ExpressionPedalCharacteristic, characteristic);
}

void KORA::changePeriod(ExpressionPedalPeriod period)
{
    write(frameFactory.writeExpressionPedalSettings(),
          &Decorator::insertIntoWriteExpressionPedalSettings_ExpressionPedalPeriod, period);
}

void KORA::changeToeUp(int value)
{
    write(frameFactory.writeExpressionPedalSettings(),
          &Decorator::insertIntoWriteExpressionPedalSettings_ExpressionPedalToeUp, low8(value));
}

void KORA::changeToeDown(int value)
{
    write(frameFactory.writeExpressionPedalSettings(),
          &Decorator::insertIntoWriteExpressionPedalSettings_ExpressionPedalToeDown, low8(value));
}

void KORA::changeMidiDeviceNumber(int device)
{
    write(frameFactory.writeExpressionPedalSettings(),
          &Decorator::insertIntoWriteExpressionPedalSettings_MidiDeviceNumber, low8(device));
}

void KORA::changeControllerNumber(int controller)
{
    write(frameFactory.writeExpressionPedalSettings(),
          &Decorator::insertIntoWriteExpressionPedalSettings_ControllerNumber, low8(controller));
}

void KORA::changeSwitchOut(SwitchOutSetting setting, int number)
{
    write(frameFactory.writeSwitchOutSettings(), &Decorator::insertIntoWriteSwitchOutSettings_SwitchOutSetting,
          low8(number), setting);
}

void KORA::changeBankPresetChangeMode(BankPresetChangeMode mode)
{
    write(frameFactory.writeOtherSettings(), &Decorator::insertIntoWriteOtherSettings_BankPresetChangeMode, mode);
}

void KORA::changeRecallUserBanksOnly(bool on)
{
    write(frameFactory.writeOtherSettings(), &Decorator::insertIntoWriteOtherSettings_RecallUsersBankOnlyFlag, on);
}

void KORA::changeOneTimeMidiModeSend(bool on)
{
    write(frameFactory.writeOtherSettings(), &Decorator::insertIntoWriteOtherSettings_OneTimeModeMidiSendFlag, on);
}

void KORA::changeWahPad1(WahPadSetting setting)
{
    write(frameFactory.writeOtherSettings(), &Decorator::insertIntoWriteOtherSettings_WahPad1Setting, setting);
}

void KORA::changeWahPad2(WahPadSetting setting)
{
    write(frameFactory.writeOtherSettings(), &Decorator::insertIntoWriteOtherSettings_WahPad2Setting, setting);
}

void KORA::changeClickProtection(ClickProtection level)
{
    write(frameFactory.writeOtherSettings(), &Decorator::insertIntoWriteOtherSettings_ClickProtection, level);
}

void KORA::changeLoopsSplit(bool on)
{
    write(frameFactory.writeOtherSettings(), &Decorator::insertIntoWriteOtherSettings_LoopsSplitFlag, on);
}

void KORA::changeKeyboardType(KeyboardType type)
{
    write(frameFactory.writeOtherSettings(), &Decorator::insertIntoWriteOtherSettings_KeyboardType, type);
}

void KORA::changePresetChangeName(PresetChangeName when)
{
    write(frameFactory.writeOtherSettings(), &Decorator::insertIntoWriteOtherSettings_PresetChangeNameSetting, when);
}

void KORA::installFirmware(const std::vector<unsigned char> &image, const UploadProgress &progress)
{
    if (image.size() > maxFirmwareSize) fail("The firmware image is too large");
    const auto total = static_cast<int>((image.size() + firmwareChunkSize - 1) / firmwareChunkSize);
    for (int chunk = 0; chunk < total; ++chunk) {
        if (QThread::currentThread()->isInterruptionRequested()) fail("The firmware upload was stopped");
        const std::size_t start = static_cast<std::size_t>(chunk) * firmwareChunkSize;
        const std::size_t length = std::min(firmwareChunkSize, image.size() - start);
        const auto first = image.begin() + static_cast<std::ptrdiff_t>(start);
        write(frameFactory.writeFirmware(), &Decorator::insertIntoWriteFirmware_FirmwareData, chunk + 1,
              std::vector<unsigned char>(first, first + static_cast<std::ptrdiff_t>(length)));
        if (progress) progress(chunk + 1, total);
    }
    write(frameFactory.writeFirmware(), &Decorator::insertIntoWriteFirmware_AllDataSentFlag);
    write(frameFactory.writeFirmware(), &Decorator::insertIntoWriteFirmware_RestartDevice);
}
