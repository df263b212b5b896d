#include "device/transfer.h"

#include "device/answerlength.h"
#include "device/kora.h"
#include "model/values.h"
#include "protocol/failure.h"

#include <QThread>

#include <algorithm>
#include <iterator>

namespace {

/// Reads the record that `id` names into `record`.
template <typename Record>
void readInto(Record &record, KORA &unit, const RecordId &id)
{
    if constexpr (std::is_same_v<Record, PresetData>)
        record = std::move(*unit.read<Record>(id.number, id.preset));
    else if constexpr (std::is_same_v<Record, BankData> || std::is_same_v<Record, MidiDevice>)
        record = std::move(*unit.read<Record>(id.number));
    else
        record = std::move(*unit.read<Record>());
}

/// Fails when a text that is to be sent breaks the frame, or makes the record too long to be read back.
template <typename Record>
void requireSendable(const Record &present, const Record &wanted)
{
    if (Table<Record>::write == nullptr || present == wanted) return;
    if (!isReadable(wanted)) fail("A name is too long: the unit could not be read any more");
    const auto check = [](const ValuePlace &, const auto &row, const auto &held, const auto &value) {
        if constexpr (std::is_same_v<std::decay_t<decltype(value)>, std::string>)
            if (held != value && !isWritable(row, value)) fail("A name has a character that cannot be sent");
    };
    forEachValue(check, present, wanted);
}

}  // namespace

Transfer::Transfer(KORA &connectedUnit) : Transfer(connectedUnit, Watch()) {}

Transfer::Transfer(KORA &connectedUnit, Watch follower) : unit(connectedUnit), watch(std::move(follower)) {}

Transfer::Outcome Transfer::run(const std::function<void(Outcome &outcome)> &work)
{
    Outcome outcome;
    outcome.failure = caught([&] { work(outcome); });
    if (outcome.stopped) outcome.failure.reset();
    return outcome;
}

void Transfer::goOn(Outcome &outcome) const
{
    outcome.stopped = watch.stop();
    if (outcome.stopped) fail("The transfer was stopped");
}

void Transfer::advance(std::size_t total, int records)
{
    done += records;
    watch.progress(done, static_cast<int>(total));
}

void Transfer::readRecord(UnitPart &part, const RecordId &id)
{
    visitRecord(part.content, id, [&](auto &record) { readInto(record, unit, id); });
    part.records.insert(id);
}

Transfer::Outcome Transfer::read(UnitPart &part, const std::set<RecordId> &records)
{
    const Connection::Hold hold = unit.hold();
    done = 0;
    return run([&](Outcome &outcome) {
        for (const RecordId &id : records) {
            goOn(outcome);
            readRecord(part, id);
            advance(records.size());
        }
    });
}

Transfer::Outcome Transfer::readUnknown(UnitPart &part, const std::set<RecordId> &records)
{
    std::set<RecordId> unknown;
    std::ranges::set_difference(records, part.records, std::inserter(unknown, unknown.end()));
    return unknown.empty() ? Outcome() : read(part, unknown);
}

/// Makes one record of the unit as wanted, exchange by exchange; what was accepted is taken over into the present one.
class Transfer::Writer
{
public:
    Writer(Transfer &owner, Outcome &result, const RecordId &record)
        : transfer(owner), unit(owner.unit), outcome(result), id(record)
    {}

    /// Settings, MIDI in and the expression pedal.
    template <typename Record>
    void write(Record &present, const Record &wanted)
    {
        writeMembers(present, wanted);
    }
    void write(DeviceInfo &, const DeviceInfo &) {}
    void write(SwitchOutData &present, const SwitchOutData &wanted)
    {
        for (std::size_t slot = 0; slot < wanted.switchOuts.size(); ++slot)
            make(present.switchOuts[slot], wanted.switchOuts[slot],
                 [&] { unit.changeSwitchOut(wanted.switchOuts[slot], static_cast<int>(slot) + 1); });
    }
    void write(BankData &present, const BankData &wanted) { writeMembers(present, wanted, id.number); }
    void write(MidiDevice &present, const MidiDevice &wanted) { writeMembers(present, wanted, id.number); }
    void write(PresetData &present, const PresetData &wanted);

private:
    /// Does the exchange that makes `present` what is wanted, unless it is that already.
    template <typename Value, typename Exchange>
    void make(Value &present, const Value &wanted, Exchange exchange)
    {
        if (present == wanted) return;
        send(exchange);
        present = wanted;
    }

    void writeLists(PresetData &present, const std::vector<std::vector<ControlChangeData>> &lists,
                    FootswitchType function)
    {
        for (const auto &list : lists) {
            send([&] { unit.changeControlChangeData(id.number, id.preset, list, function); });
            present.controlChanges = list;
        }
    }
    void writeExactList(PresetData &present, const PresetData &wanted);

    template <typename Exchange>
    void send(Exchange exchange)
    {
        transfer.goOn(outcome);
        transfer.touched.insert(id);  // also if it fails: then nobody knows what the unit holds until it is read
        outcome.unclear = id;
        exchange();
        outcome.unclear.reset();
        outcome.written.insert(id);
    }

    /// Every member that goes out in a field of its own.
    template <typename Record, typename... Address>
    void writeMembers(Record &present, const Record &wanted, Address... address)
    {
        forEachMember<Record>([&]<auto Member>() {
            constexpr auto row = rowOf<Member>();
            if constexpr (!row.readOnly && row.group == 0)
                make(present.*Member, wanted.*Member, [&] { unit.change<Member>(wanted.*Member, address...); });
        });
    }

    Transfer &transfer;
    KORA &unit;
    Outcome &outcome;
    const RecordId id;
};

void Transfer::Writer::writeExactList(PresetData &present, const PresetData &wanted)
{
    ListHandling &handling = *transfer.handling;
    const std::vector<ControlChangeData> &target = wanted.controlChanges;
    if (handling == ListHandling::Unknown && living(present.controlChanges) != living(target)) {
        auto lists = controlChangeLists(present.controlChanges, target);
        if (lists.empty()) lists = {target};  // sends the same
        std::vector<ControlChangeData> mergedList = present.controlChanges;
        for (const auto &list : lists)
            mergedList = merged(std::move(mergedList), list);
        writeLists(present, lists, wanted.footswitchFunction);
        readInto(present, unit, id);
        const auto held = living(present.controlChanges);
        const bool isReplaced = held == living(lists.back());
        if (isReplaced != (held == living(mergedList)))
            handling = isReplaced ? ListHandling::Replaces : ListHandling::Merges;
    }
    writeLists(present, exactLists(present.controlChanges, target, handling), wanted.footswitchFunction);
}

void Transfer::Writer::write(PresetData &present, const PresetData &wanted)
{
    const int bank = id.number, preset = id.preset;
    const FootswitchType function = wanted.footswitchFunction;
    make(present.footswitchFunction, function, [&] { unit.changeFootswitchFunction(function, bank, preset); });
    make(present.name, wanted.name, [&] { unit.changePresetName(wanted.name, bank, preset); });
    auto loops = std::pair(present.bufferLoop, present.loops);
    make(loops, std::pair(wanted.bufferLoop, wanted.loops),
         [&] { unit.changeLoopType(wanted.bufferLoop, wanted.loops, bank, preset, function); });
    std::tie(present.bufferLoop, present.loops) = loops;
    make(present.switches, wanted.switches, [&] { unit.changeSwitchType(wanted.switches, bank, preset, function); });
    if (transfer.handling)
        writeExactList(present, wanted);
    else
        writeLists(present, controlChangeLists(present.controlChanges, wanted.controlChanges), function);
    for (std::size_t slot = 0; slot < wanted.programChanges.size(); ++slot)
        make(present.programChanges[slot], wanted.programChanges[slot], [&] {
            unit.changeProgramValue(bank, preset, static_cast<int>(slot), wanted.programChanges[slot], function);
        });
    // A pedal that controls nothing may read as 0; written it is none, unless all is to become as it was.
    const auto written = [isExact = transfer.handling.has_value()](PresetExpressionPedal pedal) {
        if (!isExact && rowOf<&PresetExpressionPedal::controllerNumber>().range.isNone(pedal.controllerNumber))
            pedal.controllerNumber = none;
        return pedal;
    };
    const PresetExpressionPedal pedal = written(wanted.expressionPedal);
    if (pedal != written(present.expressionPedal))
        make(present.expressionPedal, pedal, [&] { unit.changePresetExpressionPedal(bank, preset, pedal, function); });
}

Transfer::Outcome Transfer::write(UnitPart &present, const UnitContent &wanted, const std::set<RecordId> &records)
{
    const Connection::Hold hold = unit.hold();
    if (Outcome outcome = readUnknown(present, records); outcome.failure || outcome.stopped) return outcome;

    const std::size_t total = 2 * records.size();
    done = 0;
    touched.clear();
    Outcome outcome = run([&](Outcome &result) {
        const auto check = [](const auto &record, const auto &target) { requireSendable(record, target); };
        for (const RecordId &id : records)
            visitRecords(present.content, wanted, id, check);
        for (const RecordId &id : records) {
            const auto write = [&](auto &record, const auto &target) {
                Writer(*this, result, id).write(record, target);
            };
            visitRecords(present.content, wanted, id, write);
            advance(total, touched.contains(id) ? 1 : 2);
        }
    });
    // What was sent is told truly only once it is read back; when the window closes there is nobody to tell.
    if (QThread::currentThread()->isInterruptionRequested()) return outcome;
    const auto unread = caught([&] {
        for (const RecordId &id : touched) {
            readRecord(present, id);
            if (outcome.unclear == id) outcome.unclear.reset();
            advance(total);
        }
    });
    if (unread && !outcome.failure) outcome.failure = unread;
    return outcome;
}
