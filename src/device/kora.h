#pragma once

#include "device/decorator.h"
#include "device/framefactory.h"
#include "device/translator.h"
#include "link/connection.h"

#include <concepts>
#include <functional>
#include <memory>

/// The host's handle on one connected unit. Every operation is one exchange: a command out, a response back, no retry;
/// when the unit reports an error, one more exchange fetches its text.
///
/// Operations fail by the convention of protocol/failure.h: with the link's messages, "Incorrect Checksum", the unit's
/// own text, or the translator's. A header or value that is no number throws `boost::bad_lexical_cast`. Arguments are
/// sent unchecked, except the counts of controller names and numbers. Banks count from 0 to 99, presets from 0 to 9,
/// MIDI devices from 1 to 10; command and field of each value stand in its record's table (model/records.h).
class KORA
{
public:
    /// Takes a share of the connection; nothing is sent.
    explicit KORA(std::shared_ptr<Connection> sharedConnection);
    virtual ~KORA();
    KORA(const KORA &) = delete;
    KORA &operator=(const KORA &) = delete;

    /// While the result lives, the port stays open between exchanges.
    Connection::Hold hold() { return connection->hold(); }

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
    /// Exchanges so far that ended without an answer that could be read: nobody knows what the unit made of them.
    int unansweredCount() const { return unanswered; }
    /// Does nothing: every exchange finds out by itself.
    void checkConnection() {}

    // Every record and every setting by its row. The address is what the operations below take as well: nothing, a
    // bank, a bank and a preset, or a MIDI device.
    /// Reads a record: `read<Settings>()`, `read<PresetData>(bank, preset)`.
    template <typename Record>
    std::unique_ptr<Record> read(std::same_as<int> auto... address)
    {
        return translator.decode<Record>(exchange(frameFactory.read<Record>(address...)));
    }
    /// Reads a record for one of its members: `read<&BankData::name>(bank)`.
    template <auto Member>
    ValueOf<Member> read(std::same_as<int> auto... address)
    {
        return translator.decode<Member>(exchange(frameFactory.read<RecordOf<Member>>(address...)));
    }
    /// Writes one member: `change<&Settings::keyboardType>(type)`, `change<&BankData::name>(name, bank)`.
    template <auto Member>
    void change(const Passed<ValueOf<Member>> &value, std::same_as<int> auto... address)
    {
        static_assert(rowOf<Member>().group == 0, "goes out with the footswitch function: changePreset");
        MasterFrame command = frameFactory.write<RecordOf<Member>>(address...);
        decorator.insert<Member>(command, value);
        exchange(command);
    }
    /// Writes members of one group of a preset and, behind them, the preset's current footswitch function.
    template <auto... Members>
    void changePreset(int bank, int preset, FootswitchType function, const Passed<ValueOf<Members>> &...values)
    {
        MasterFrame command = frameFactory.writePresetSettings(bank, preset);
        decorator.insert<Members...>(command, values...);
        decorator.insert<&PresetData::footswitchFunction>(command, function);
        exchange(command);
    }

    // Reads
    DeviceInfo getDeviceInfo() { return *read<DeviceInfo>(); }
    std::string getBankName(int bank) { return read<&BankData::name>(bank); }
    std::unique_ptr<BankData> getBankData(int bank) { return read<BankData>(bank); }
    std::string getPresetName(int bank, int preset) { return read<&PresetData::name>(bank, preset); }
    FootswitchType getFootswitchFunction(int bank, int preset)
    {
        return read<&PresetData::footswitchFunction>(bank, preset);
    }
    std::unique_ptr<PresetData> getPresetData(int bank, int preset) { return read<PresetData>(bank, preset); }
    std::unique_ptr<MidiDevice> getMidiDevice(int device) { return read<MidiDevice>(device); }
    std::unique_ptr<Settings> getSettings() { return read<Settings>(); }
    std::unique_ptr<SwitchOutData> getSwitchOutData() { return read<SwitchOutData>(); }
    std::unique_ptr<MidiInData> getMidiInData() { return read<MidiInData>(); }
    std::unique_ptr<ExpressionPedalData> getExpressionPedalData() { return read<ExpressionPedalData>(); }

    // Banks
    void changeBankName(const std::string &name, int bank) { change<&BankData::name>(name, bank); }
    void changePresetWahPad1(int bank, WahPadAction action) { change<&BankData::wahPad1Action>(action, bank); }
    void changePresetWahPad2(int bank, WahPadAction action) { change<&BankData::wahPad2Action>(action, bank); }
    void changePresetNumberWahPad1(int bank, int preset) { change<&BankData::wahPad1PresetNumber>(preset, bank); }
    void changePresetNumberWahPad2(int bank, int preset) { change<&BankData::wahPad2PresetNumber>(preset, bank); }

    // Presets
    void changePresetName(const std::string &name, int bank, int preset)
    {
        change<&PresetData::name>(name, bank, preset);
    }
    void changeFootswitchFunction(FootswitchType function, int bank, int preset)
    {
        change<&PresetData::footswitchFunction>(function, bank, preset);
    }
    void changeLoopType(LoopType buffer, const std::array<LoopType, loopCount> &loops, int bank, int preset,
                        FootswitchType function)
    {
        changePreset<&PresetData::bufferLoop, &PresetData::loops>(bank, preset, function, buffer, loops);
    }
    void changeSwitchType(const std::array<SwitchType, switchCount> &switches, int bank, int preset,
                          FootswitchType function)
    {
        changePreset<&PresetData::switches>(bank, preset, function, switches);
    }
    /// The program for one MIDI device, by its slot (device number - 1).
    void changeProgramValue(int bank, int preset, int slot, int value, FootswitchType function);
    void changePresetExpressionPedal(int bank, int preset, const PresetExpressionPedal &pedal, FootswitchType function)
    {
        changePreset<&PresetData::expressionPedal>(bank, preset, function, pedal);
    }
    /// The first 20 entries of the list.
    void changeControlChangeData(int bank, int preset, const std::vector<ControlChangeData> &list,
                                 FootswitchType function)
    {
        changePreset<&PresetData::controlChanges>(bank, preset, function, list);
    }

    // MIDI devices
    void changeMidiDeviceName(const std::string &name, int device) { change<&MidiDevice::name>(name, device); }
    void changeMidiDeviceChannel(int channel, int device) { change<&MidiDevice::channel>(channel, device); }
    void changeSendCCFirst(bool on, int device) { change<&MidiDevice::sendCCFirst>(on, device); }
    void changeTapTempo(MidiDeviceTapTempo mode, int device) { change<&MidiDevice::tapTempo>(mode, device); }
    void changeTapController(int controller, int device) { change<&MidiDevice::tapController>(controller, device); }
    void changeTapControllerValue(int value, int device) { change<&MidiDevice::tapControllerValue>(value, device); }
    void changeNoteNumber(int note, int device) { change<&MidiDevice::noteNumber>(note, device); }
    void changeNoteType(TapTempoNote type, int device) { change<&MidiDevice::noteType>(type, device); }
    /// Sends nothing and fails unless there are exactly 20 names and 20 numbers.
    void changeControllersNamesAndNumbers(const std::vector<std::string> &names, const std::vector<int> &numbers,
                                          int device);

    // MIDI in
    void changeChannel(int channel) { change<&MidiInData::channel>(channel); }
    void changePCFunction(MidiInPCFunction function) { change<&MidiInData::pcFunction>(function); }
    void changeCCFunction(MidiInCCFunction function) { change<&MidiInData::ccFunction>(function); }

    // Expression pedal
    void changeCharacteristic(ExpressionPedalCharacteristic characteristic)
    {
        change<&ExpressionPedalData::characteristic>(characteristic);
    }
    void changePeriod(ExpressionPedalPeriod period) { change<&ExpressionPedalData::period>(period); }
    void changeToeUp(int value) { change<&ExpressionPedalData::toeUp>(value); }
    void changeToeDown(int value) { change<&ExpressionPedalData::toeDown>(value); }
    void changeMidiDeviceNumber(int device) { change<&ExpressionPedalData::midiDeviceNumber>(device); }
    void changeControllerNumber(int controller) { change<&ExpressionPedalData::controllerNumber>(controller); }

    // Switch outs, numbers 1 to 6
    void changeSwitchOut(SwitchOutSetting setting, int number);

    // Other settings
    void changeBankPresetChangeMode(BankPresetChangeMode mode) { change<&Settings::bankPresetChangeMode>(mode); }
    void changeRecallUserBanksOnly(bool on) { change<&Settings::recallUserBanksOnly>(on); }
    void changeOneTimeMidiModeSend(bool on) { change<&Settings::oneTimeMidiModeSend>(on); }
    void changeWahPad1(WahPadSetting setting) { change<&Settings::wahPad1>(setting); }
    void changeWahPad2(WahPadSetting setting) { change<&Settings::wahPad2>(setting); }
    void changeClickProtection(ClickProtection level) { change<&Settings::clickProtection>(level); }
    void changeLoopsSplit(bool on) { change<&Settings::loopsSplit>(on); }
    void changeKeyboardType(KeyboardType type) { change<&Settings::keyboardType>(type); }
    void changePresetChangeName(PresetChangeName when) { change<&Settings::presetChangeName>(when); }

    /// Called after every accepted chunk with the number of chunks sent so far and of all chunks.
    using UploadProgress = std::function<void(int sent, int total)>;
    /// Uploads a firmware image (WFD) in chunks of 512 bytes and restarts the unit. Fails before anything is sent when
    /// the image exceeds `maxFirmwareSize`, and between two chunks when the thread is asked to stop.
    void installFirmware(const std::vector<unsigned char> &image, const UploadProgress &progress = {});

    static constexpr std::size_t firmwareChunkSize = 512;                     ///< bytes
    static constexpr std::size_t maxFirmwareSize = 1920 * firmwareChunkSize;  ///< bytes

private:
    SlaveFrame exchange(const MasterFrame &command);

    /// Sends the command with what the decorator's function makes of the values.
    template <typename Insert, typename... Values>
    void write(MasterFrame command, Insert insert, const Values &...values);

    std::shared_ptr<Connection> connection;
    FrameFactory frameFactory;
    Translator translator;
    Decorator decorator;
    std::int32_t lastErrorNumber = 0;
    int unanswered = 0;
};
