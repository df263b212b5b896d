// What the editor's own work adds to the transfer of a whole unit: against the bare exchange of the same frames with
// another unit, on a port that stays open as well.

#include "device/transfer.h"
#include "model/values.h"
#include "unit/commandframe.h"
#include "unitbench.h"

#include <cstdio>

namespace {

/// Another value for everything.
UnitContent differentFrom(UnitContent content)
{
    const auto change = [](const ValuePlace &, const auto &row, auto &value) {
        using Value = std::decay_t<decltype(value)>;
        if constexpr (std::is_same_v<Value, std::string>)
            value += "'";
        else if constexpr (std::is_same_v<Value, bool> || std::is_enum_v<Value>)
            value = fromIndex<Value>((toIndex(value) + 1) % labels<Value>().size());
        else
            value = static_cast<Value>(value == row.range.low ? row.range.low + 1 : row.range.low);
    };
    for (const RecordId &id : allRecords())
        visitRecord(content, id, [&](auto &record) { forEachValue(change, record); });
    return content;
}

/// The frames that a unit has got since the last call.
std::vector<std::string> framesAt(Bench &bench)
{
    static int identifier = 0;
    std::vector<std::string> frames;
    for (const std::string &data : bench.unit.takeRequests())
        frames.push_back(buildFrame(std::to_string(++identifier), data));
    return frames;
}

void reading(benchmark::State &state, double limit)
{
    Bench bench, bare, recorder;
    recorder.unit.recordRequests();
    const auto read = [](Bench &from) {
        UnitPart unit;
        Transfer(from.kora).read(unit, allRecords());
        return unit.records.size();
    };
    const std::size_t records = read(recorder);
    const std::vector<std::string> frames = framesAt(recorder);
    compare(
        state, limit, [&] { read(bench); }, [&] { bare.exchangeBare(frames); });
    if (records != allRecords().size() || frames.size() != records) state.SkipWithError("not all was read");
}

void unitReading(benchmark::State &state) { reading(state, 1.5); }

/// As everybody runs the editor. The debug output goes nowhere.
void unitReadingLogged(benchmark::State &state)
{
    if (std::freopen("/dev/null", "w", stderr) == nullptr) return;
    Connection::enableLog = true;
    reading(state, 2.5);
    Connection::enableLog = false;
}

/// Writing another content, and then the first again.
void unitWriting(benchmark::State &state)
{
    Bench bench, bare, recorder;
    const UnitContent first = musicianContent(), second = differentFrom(first);
    const auto write = [](Bench &to, const UnitContent &from, const UnitContent &content) {
        UnitPart present{from, allRecords()};
        return !Transfer(to.kora).write(present, content, allRecords()).failure;
    };
    recorder.unit.recordRequests();
    const bool isThere = write(recorder, first, second);
    const auto there = framesAt(recorder);
    const bool isBack = write(recorder, second, first);
    const auto back = framesAt(recorder);
    compare(
        state, 1.5, [&] { write(bench, first, second) && write(bench, second, first); },
        [&] {
            bare.exchangeBare(there);
            bare.exchangeBare(back);
        });
    if (!isThere || !isBack || bench.unit.memory() != bare.unit.memory()) state.SkipWithError("not all was written");
    state.counters["frames"] = static_cast<double>(there.size() + back.size());
}

BENCHMARK(unitReading)->Iterations(20)->Unit(benchmark::kMillisecond);
BENCHMARK(unitReadingLogged)->Iterations(20)->Unit(benchmark::kMillisecond);
BENCHMARK(unitWriting)->Iterations(5)->Unit(benchmark::kMillisecond);

}  // namespace
