#pragma once

#include "device/decorator.h"
#include "device/framefactory.h"
#include "device/translator.h"
#include "link/connection.h"

#include <functional>
#include <memory>

/// The host's handle on one connected unit. Every operation is one exchange: a command out, a response back, no retry;
/// when the unit reports an error, one more exchange fetches its text.
///
/// Operations fail by the convention of protocol/failure.h: with the link's messages, "Incorrect Checksum", the unit's
/// own text, or the translator's. A header or value that is no number throws `boost::bad_lexical_cast`. Arguments are
/// sent unchecked, except the counts of controller names and numbers. Banks count from 0 to 99, presets from 0 to 9,
/// MIDI devices from 1 to 10; the field that carries each value stands in decorator.h and translator.cpp.
class KORA
{
public:
    /// Takes a share of the connection; nothing is sent.
    explicit KORA(std::shared_ptr<Connection> sharedConnection);
    virtual ~KORA();
    KORA(const KORA &) = delete;
    KORA &operator=(const KORA &) = delete;

    /// Receives and parses the next response.
    SlaveFrame listen();
    /// `listen()`, then throws a `std::runtime_error` (by value) unless the response carries frame identifier `id`.
    SlaveFrame getFrame(unsigned long long id);
    /// Fails with the unit's own text unless the response's status is 0.
    void checkError(const SlaveFrame &response);
    /// Asks the unit ("RET") for its text for the response's status number.
    std::string getErrorDescription(const SlaveFrame &response);
    /// Status number of the last checked response.
    int getLastErrorNumber() const { return lastErrorNumber; }
    void checkConnection() {}

    // Reads
    DeviceInfo getDeviceInfo();
    std::string getBankName(int bank);
    std::unique_ptr<BankData> getBankData(int bank);
    std::string getPresetName(int bank, int preset);
    FootswitchType getFootswitchFunction(int bank, int preset);
    std::unique_ptr<PresetData> getPresetData(int bank, int preset);
    std::unique_ptr<MidiDevice> getMidiDevice(int device);
    std::unique_ptr<Settings> getSettings();
    std::unique_ptr<SwitchOutData> getSwitchOutData();
    std::unique_ptr<MidiInData> getMidiInData();
    std::unique_ptr<ExpressionPedalData> getExpressionPedalData();

    // Banks (WBB)
    void changeBankName(const std::string &name, int bank);
    void changePresetWahPad1(int bank, WahPadAction action);
    void changePresetWahPad2(int bank, WahPadAction action);
    void changePresetNumberWahPad1(int bank, int preset);
    void changePresetNumberWahPad2(int bank, int preset);

    // Presets (WBP). All but the first two also send the preset's current footswitch function (field D).
    void changePresetName(const std::string &name, int bank, int preset);
    void changeFootswitchFunction(FootswitchType function, int bank, int preset);
    void changeLoopType(LoopType buffer, const std::array<LoopType, loopCount> &loops, int bank, int preset,
                        FootswitchType function);
    void changeSwitchType(const std::array<SwitchType, switchCount> &switches, int bank, int preset,
                          FootswitchType function);
    void changeProgramValue(int bank, int preset, int slot, int value, FootswitchType function);
    void changePresetExpressionPedal(int bank, int preset, const PresetExpressionPedal &pedal, FootswitchType function);
    void changeControlChangeData(int bank, int preset, const std::vector<ControlChangeData> &list,
                                 FootswitchType function);

    // MIDI devices (WMD), numbers 1 to 10
    void changeMidiDeviceName(const std::string &name, int device);
    void changeMidiDeviceChannel(int channel, int device);
    void changeSendCCFirst(bool on, int device);
    void changeTapTempo(MidiDeviceTapTempo mode, int device);
    void changeTapController(int controller, int device);
    void changeTapControllerValue(int value, int device);
    void changeNoteNumber(int note, int device);
    void changeNoteType(TapTempoNote type, int device);
    void changeControllersNamesAndNumbers(const std::vector<std::string> &names, const std::vector<int> &numbers,
                                          int device);

    // MIDI in (WMI)
    void changeChannel(int channel);
    void changePCFunction(MidiInPCFunction function);
    void changeCCFunction(MidiInCCFunction function);

    // Expression pedal (WEP)
    void changeCharacteristic(ExpressionPedalCharacteristic characteristic);
    void changePeriod(ExpressionPedalPeriod period);
    void changeToeUp(int value);
    void changeToeDown(int value);
    void changeMidiDeviceNumber(int device);
    void changeControllerNumber(int controller);

    // Switch outs (WSO), numbers 1 to 6
    void changeSwitchOut(SwitchOutSetting setting, int number);

    // Other settings (WOS)
    void changeBankPresetChangeMode(BankPresetChangeMode mode);
    void changeRecallUserBanksOnly(bool on);
    void changeOneTimeMidiModeSend(bool on);
    void changeWahPad1(WahPadSetting setting);
    void changeWahPad2(WahPadSetting setting);
    void changeClickProtection(ClickProtection level);
    void changeLoopsSplit(bool on);
    void changeKeyboardType(KeyboardType type);
    void changePresetChangeName(PresetChangeName when);

    /// Called after every accepted chunk with the number of chunks sent so far and of all chunks.
    using UploadProgress = std::function<void(int sent, int total)>;
    /// Uploads a firmware image (WFD) in chunks of 512 bytes and restarts the unit. Fails before anything is sent when
    /// the image exceeds `maxFirmwareSize`, and between two chunks when the thread is asked to stop.
    void installFirmware(const std::vector<unsigned char> &image, const UploadProgress &progress = {});

    static constexpr std::size_t firmwareChunkSize = 512;                     ///< bytes
    static constexpr std::size_t maxFirmwareSize = 1920 * firmwareChunkSize;  ///< bytes

private:
    SlaveFrame exchange(const MasterFrame &command);

    template <typename Decode>
    auto read(const MasterFrame &command, Decode decode)
    {
        return (translator.*decode)(exchange(command));
    }

    /// One setting: the command, the decorator's function for the setting and its value.
    template <typename Insert, typename... Values>
    void write(MasterFrame command, Insert insert, const Values &...values)
    {
        (decorator.*insert)(command, values...);
        exchange(command);
    }

    /// A preset's setting together with its footswitch function.
    template <typename Insert, typename... Values>
    void writeWith(FootswitchType function, MasterFrame command, Insert insert, const Values &...values)
    {
        (decorator.*insert)(command, values...);
        write(command, &Decorator::insertIntoWritePresetSettings_FootswitchType, function);
    }

    std::shared_ptr<Connection> connection;
    FrameFactory frameFactory;
    Translator translator;
    Decorator decorator;
    std::int32_t lastErrorNumber = 0;
};
