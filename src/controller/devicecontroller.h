#pragma once

#include "controller/metatypes.h"
#include "controller/unitsearch.h"
#include "device/transfer.h"
#include "model/arrangement.h"
#include "model/datafromdevice.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <vector>

class KORA;

/// A global setting as data: which record, and which row of its table.
struct SettingId
{
    int record;  ///< in the order of `GlobalRecords`
    int row;
};
using GlobalRecords = std::tuple<Settings, MidiInData, ExpressionPedalData>;

template <auto Member>
constexpr SettingId settingId()
{
    return {indexOf<RecordOf<Member>, GlobalRecords>(), rowIndexOf<Member>()};
}

/// Where a global record stands in the model.
template <typename Record>
inline constexpr Snapshot<Record> DataFromDevice::*globalSlot = nullptr;
template <>
inline constexpr auto globalSlot<Settings> = &DataFromDevice::settings;
template <>
inline constexpr auto globalSlot<MidiInData> = &DataFromDevice::midiInData;
template <>
inline constexpr auto globalSlot<ExpressionPedalData> = &DataFromDevice::expressionPedalData;

/// The only object that talks to the unit. It lives on a thread of its own, where its slots run one at a time, in the
/// order of the requests; results come back as signals.
///
/// Banks count from 0 to 99, presets from 0 to 9, loop, switch and program-change slots from 0, MIDI devices from 1 to
/// 10, switch outs from 1 to 6. Every slot emits `deviceNotConnected` without a unit. A change whose record has not
/// been read yet does nothing. A change stores the new value only after the unit took it. A failure, an index out of
/// range included, emits `error` once and leaves the record as it was.
class DeviceController : public QObject
{
    Q_OBJECT

public:
    using Timeouts = ::Timeouts;

    /// `listPorts` names the ports to try, on the thread of the search; an empty one stands for the system's.
    explicit DeviceController(PortLister listPorts = systemPortLocations, QObject *parent = nullptr);
    ~DeviceController() override;

    /// Before the first search.
    void setTimeouts(Timeouts newTimeouts) { timeouts = newTimeouts; }
    /// While it is set, on the controller's thread, a change whose record has not been read yet reads it first.
    void setReadingFirst(bool readFirst) { isReadingFirst = readFirst; }
    /// Why a request has failed since the last call: what `error` told, or another reason why nothing was done; empty
    /// when none has failed.
    QString takeFailure();
    /// Ends the transfer that runs, between two exchanges. May be called from any thread.
    void stopTransfer() { isStoppingTransfer = true; }
    /// From now on reads end before their next exchange. May be called from any thread.
    void skipReads() { isSkippingReads = true; }

signals:
    /// A unit was found. The model holds its identity, if that could be read, and is empty otherwise. It lives until
    /// `releaseSuperseded` is told of a newer one.
    void found(DataFromDevice *data);
    /// Something was asked for without a unit.
    void deviceNotConnected();
    /// Why a request has failed: the unit's own text, or what happened to the exchange.
    void error(const QString &message);
    // What was read, or changed as the unit has taken it. A name comes with the signal, all else stands in the model.
    void gotBankName(const QString &name);
    void gotPresetName(const QString &name, int preset);
    void gotFootswitchFunction(FootswitchType function, int preset);
    void gotBankAndPresetData(int bank);
    void gotMidiDevicesData();
    void gotSettings();
    void gotMidiIn();
    void gotExpressionPedal();
    void gotSwitchOut();
    /// The unit has taken a firmware image and starts anew.
    void updateComplete();
    void updateFailed();
    /// Emitted during an upload whenever the percentage, 0 to 100, has grown.
    void updateProgress(int percent);
    /// The unit has taken a change of this record, or may have taken it; not told by reads and by `makeStep`.
    void recordChanged(const RecordChange &change);
    /// Ends every `makeStep`, after the signals that announce the records and before `error`.
    void stepMade(const StepReport &report);
    /// Ends every `arrange`, after the signals that announce the records.
    void arranged(const ArrangementReport &report);
    /// Emitted during a transfer after each record.
    void transferProgress(int done, int total);
    /// Ends every transfer, after the signals that announce the records.
    void transferred(const TransferReport &report);

public slots:
    /// Probes every port until one answers, then opens it, reads the unit's identity into a new model and emits
    /// `found`. Returns without a signal when the thread is asked to stop.
    void searchDevice();
    /// Reads the unit's identity into the model; no signal announces it.
    void getDeviceInfo();
    /// Lets the port go.
    void closeDevice();
    /// Frees the models that came before the one which the user interface now shows.
    void releaseSuperseded(DataFromDevice *current);

    // Reads. Records are stored as they arrive, also when a later one fails.
    void getBankName(int bank);
    void getPresetName(int bank, int preset);
    void getFootswitchFunction(int bank, int preset);
    void getBankAndPresetData(int bank);
    void getMidiDevicesData();
    void getSettings();
    void getMidiIn();
    void getExpressionPedal();
    void getSwitchOut();
    /// Nothing to read: a preset's pedal assignment comes with its preset.
    void getExpressionPedalData();

    /// Reads those of the records that have not been read yet, with the port held open, and announces all of them.
    void readUnknown(const std::set<RecordId> &records);

    // Banks and presets: announced by gotBankAndPresetData. Names lose their control characters.
    void changeBankName(const QString &name, int bank);
    void changePresetName(const QString &name, int bank, int preset);
    void changeFootswitchFunction(FootswitchType function, int bank, int preset);
    void changeLoopType(LoopType type, int bank, int preset, int loop);
    void changeBufferLoop(LoopType type, int bank, int preset);
    void changeSwitchType(SwitchType type, int bank, int preset, int switchSlot);
    void changeProgramChangeNumber(int bank, int preset, int deviceSlot, int value);
    void changePresetExpressionPedal(int bank, int preset, const PresetExpressionPedal &pedal);
    /// Sends and stores the first 20 entries.
    void changeControlChangeData(int bank, int preset, const QVector<ControlChangeData> &list);
    void changePresetWahPad1(int bank, WahPadAction action);
    void changePresetWahPad2(int bank, WahPadAction action);
    void changePresetNumberWahPad1(int bank, int number);
    void changePresetNumberWahPad2(int bank, int number);

    // MIDI devices, by number: announced by gotMidiDevicesData
    void changeMidiDeviceName(const QString &name, int number);
    void changeMidiDeviceChannel(int channel, int number);
    void changeSendCCFirst(bool on, int number);
    void changeTapTempo(MidiDeviceTapTempo mode, int number);
    void changeTapController(int controller, int number);
    void changeTapControllerValue(int value, int number);
    void changeNoteNumber(int note, int number);
    void changeNoteType(TapTempoNote type, int number);
    void controllersNamesOrNumberChanged(int number, const QVector<QString> &names, const QVector<int> &numbers);

    // Global settings: announced by gotSettings
    void changeLoopsSplit(bool on);
    void changeKeyboardType(KeyboardType type);
    void changeClickProtection(ClickProtection level);
    void changeOneTimeMidiModeSend(bool on);
    void changeRecallUserBanksOnly(bool on);
    void changeBankPresetChangeMode(BankPresetChangeMode mode);
    void changePresetChangeName(PresetChangeName when);
    void changeWahPad1(WahPadSetting setting);
    void changeWahPad2(WahPadSetting setting);

    // MIDI in: announced by gotMidiIn
    void changeChannel(int channel);
    void changeCCFunction(MidiInCCFunction function);
    void changePCFunction(MidiInPCFunction function);

    // Expression pedal: announced by gotExpressionPedal
    void changePeriod(ExpressionPedalPeriod period);
    void changeCharacteristic(ExpressionPedalCharacteristic characteristic);
    void changeToeUp(int value);
    void changeToeDown(int value);
    void changeMidiDeviceNumber(int number);
    void changeControllerNumber(int controller);

    /// Any number, flag or enumeration of the three records before; announced like its record's others.
    void changeSetting(SettingId id, int value);

    /// Announced by gotSwitchOut.
    void changeSwitchOut(SwitchOutSetting setting, int number);

    /// Installs the firmware image in the file at `path`: `updateComplete`, or `updateFailed` when it cannot be read or
    /// sent; `error` when there is no such file.
    void updateFirmware(const QString &path);

    /// Reads records into the model and announces them; `transferred` ends it, also when it fails.
    void readRecords(const std::set<RecordId> &records);
    /// Writes what differs and reads it back, as `Transfer::write`; otherwise as `readRecords`.
    void writeRecords(const TransferOrder &order);
    /// Reads the records of an arrangement, makes them as it wants them and reads them back, as one transfer;
    /// `arranged` ends it.
    void arrange(const Arrangement &arrangement);
    /// Makes changes again or takes them back, as one transfer: of the values in which the records before and after
    /// differ, those become as after which the unit still holds as before. `stepMade` ends it.
    void makeStep(const StepOrder &order);

private:
    static constexpr const char *noUnit = "No unit is connected";

    /// Emits `error` and keeps the message for `takeFailure`.
    void tellFailure(const QString &message);
    /// Returns whether there is a unit; tells when there is none.
    bool requireUnit();
    /// Runs one request: only with a unit, its failures turned into signals.
    void attempt(const std::function<void()> &work);
    /// Reads one record into its slot and announces it.
    template <typename Record>
    void read(Snapshot<Record> DataFromDevice::*slot, std::unique_ptr<Record> (KORA::*operation)(),
              void (DeviceController::*announce)());

    // devicecontroller_changes.cpp
    /// Lets `alter` work on a copy of the stored record, and stores and tells the copy if it returns: it sets the new
    /// value and sends the change. Returns whether there was a record; `address` is the record's on the unit.
    template <typename Record, typename Alter, typename... Address>
    bool change(Snapshot<Record> &slot, Alter alter, Address... address);
    template <typename Alter>
    void changeBank(int bank, Alter alter);
    template <typename Alter>
    void changePreset(int bank, int preset, Alter alter);
    template <typename Alter>
    void changeMidiDevice(int number, Alter alter);
    /// One value of a bank, of a MIDI device or of a global record.
    template <auto Member, typename Value>
    void changeOfBank(int bank, Value value);
    template <auto Member, typename Value>
    void changeOfMidiDevice(int number, Value value);
    template <auto Member, typename Value>
    void changeGlobal(Value value);
    /// The value of a row of a global record.
    template <typename Record>
    void changeRow(int row, int value);

    // devicecontroller_transfer.cpp
    /// What a transfer wrote: what the unit held before, what was wanted, and the record whose last answer was lost.
    struct Written
    {
        UnitPart before;
        const UnitContent *wanted;
        std::optional<RecordId> unclear;
    };
    Transfer::Watch transferWatch();
    /// Runs a transfer, if there is a unit, and notes how it ended.
    void conduct(TransferEnd &end, const std::function<Transfer::Outcome()> &work);
    /// Tells of a transfer that has lost the unit; other failures are told by the signal that ends it.
    void tellLoss(const TransferEnd &end);
    /// Reads records, or writes what is wanted.
    void transfer(const UnitPart &present, const std::set<RecordId> &records, const UnitContent *wanted);
    /// Reads records into `part`, lets `compose` make of what they hold what is wanted, and writes that.
    Transfer::Outcome remake(UnitPart &part, const std::set<RecordId> &records,
                             const std::function<UnitContent(const UnitPart &present)> &compose);
    /// Stores and announces what is known of these records, and tells what was written.
    void publish(const UnitPart &part, const std::set<RecordId> &records, const Written *written = nullptr);

    // devicecontroller_history.cpp
    /// Emits `recordChanged` for a change that was sent, or with records as the unit holds them.
    void tellSent(const RecordId &id, const AnyRecord &before, const AnyRecord &after, bool isConfirmed = true);
    void tellRead(const RecordId &id, const AnyRecord &before, const AnyRecord &after, bool isConfirmed = true);
    /// The preset before and after a change, as a unit that merges lists holds it.
    RecordChange::Versions mergedVersions(const RecordId &id, const Shared<PresetData> &before,
                                          const Shared<PresetData> &after);
    /// What a unit with this content is to hold after a step.
    UnitContent composeStep(const StepOrder &order, const UnitContent &present, StepReport &report);
    /// Learns from a preset that was read how the unit handles lists.
    void learnHandling(const RecordChange &change, const UnitContent &content);

    PortLister portLister;
    Timeouts timeouts;
    std::vector<std::unique_ptr<DataFromDevice>> models;  // the last one is `data`
    DataFromDevice *data = nullptr;
    std::unique_ptr<KORA> device;
    QString lastLocation;  // a copy of a unit tells the same identity, but handles lists in its own way
    /// What the model holds of a preset, and what a unit that merges lists holds then.
    struct MergedPreset
    {
        Shared<PresetData> stored;
        Shared<PresetData> merged;
    };
    std::map<RecordId, MergedPreset> mergedPresets;
    ListHandling listHandling = ListHandling::Unknown;
    QString failure;
    bool isReadingFirst = false;
    std::atomic<bool> isSkippingReads = false;
    std::atomic<bool> isStoppingTransfer = false;
};
