// What the editor's own work adds to an exchange, held against a bare use of QSerialPort. A ratio above its limit is a
// failure.

#include "archive/unitfile.h"
#include "device/transfer.h"
#include "protocol/converter.h"
#include "unitbench.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>
#include <vector>

namespace {

/// One exchange, against the bare one with the same request.
void exchange(benchmark::State &state)
{
    Bench bench;
    const MasterFrame request = FrameFactory().readOtherSettings();
    compare(
        state, 1.15, [&] { bench.kora.getSettings(); }, [&] { bench.exchangeBare(request); });
}

/// Encoding a command with all fields of a preset, and parsing and decoding an answer with all of them, against an
/// exchange.
void codec(benchmark::State &state)
{
    Bench bench;
    const PresetExpressionPedal pedal{10, 20, ExpressionPedalCharacteristic::SlowFast, 127, 126};
    const std::vector<ControlChangeData> changes(maxControlChanges, {10, 20, 127});
    PresetData preset = bench.unit.memory().presets[0][3];
    preset.controlChanges = changes;
    preset.programChanges.fill(128);
    preset.expressionPedal = pedal;
    UnitMemory memory;
    memory.presets[99][9] = preset;
    const std::string request = FrameFactory().readPresetSettings(99, 9).toString();
    const auto answer = Converter::stringToVector(*VirtualUnit(memory).answer(request));

    const auto encodeAndDecode = [&] {
        MasterFrame frame = FrameFactory().writePresetSettings(99, 9);
        const Decorator decorator;
        decorator.insertIntoWritePresetSettings_PresetName(frame, preset.name);
        decorator.insertIntoWritePresetSettings_FootswitchType(frame, preset.footswitchFunction);
        decorator.insertIntoWritePresetSettings_LoopsData(frame, preset.bufferLoop, preset.loops);
        decorator.insertIntoWritePresetSettings_SwitchOutData(frame, preset.switches);
        decorator.insertIntoWritePresetSettings_ControlChangeData(frame, changes);
        for (int slot = 0; slot < midiDeviceCount; ++slot)
            decorator.insertIntoWritePresetSettings_MidiProgramValue(frame, slot, 128);
        decorator.insertIntoWritePresetSettings_PresetExpressionPedal(frame, pedal);
        benchmark::DoNotOptimize(frame.toByteArray());
        if (*Translator().fromReadPresetSettings_getPresetData(SlaveFrame(answer)) != preset)
            state.SkipWithError("the preset is not read as it was answered");
    };
    compare(state, 0.05, encodeAndDecode, [&] { bench.kora.getSettings(); });
}

/// Each chunk of the largest firmware image, against the bare exchange of the same frame with another unit.
void upload(benchmark::State &state)
{
    Bench bench, bare;
    const std::vector<unsigned char> image(KORA::maxFirmwareSize, 0xA5), chunk(KORA::firmwareChunkSize, 0xA5);
    Comparison comparison;
    for ([[maybe_unused]] auto turn : state) {
        auto start = std::chrono::steady_clock::now();
        bench.kora.installFirmware(image, [&](int sent, int) {
            const std::chrono::duration<double> cost = std::chrono::steady_clock::now() - start;
            MasterFrame frame = FrameFactory().writeFirmware();
            Decorator().insertIntoWriteFirmware_FirmwareData(frame, sent, chunk);
            comparison.add(cost.count(), secondsOf([&] { bare.exchangeBare(frame); }));
            start = std::chrono::steady_clock::now();
        });
    }
    report(state, comparison, 1.15);
}

UnitPart wholeUnit(Bench &bench)
{
    UnitPart unit;
    Transfer(bench.kora).read(unit, allRecords());
    return unit;
}

/// Writing the file of a whole unit, against reading the unit.
void fileWriting(benchmark::State &state)
{
    Bench bench;
    const UnitPart unit = wholeUnit(bench);
    const QDateTime now = QDateTime::currentDateTimeUtc();
    compare(
        state, 0.5, [&] { benchmark::DoNotOptimize(archive::toJson(unit, now)); }, [&] { wholeUnit(bench); });
}

/// Parsing that file, against the same.
void fileParsing(benchmark::State &state)
{
    Bench bench;
    const QByteArray json = archive::toJson(wholeUnit(bench), QDateTime::currentDateTimeUtc());
    compare(
        state, 0.5, [&] { benchmark::DoNotOptimize(archive::fromJson(json)); }, [&] { wholeUnit(bench); });
}

BENCHMARK(exchange)->Iterations(1000);
BENCHMARK(codec)->Iterations(500);
BENCHMARK(fileWriting)->Iterations(20)->Unit(benchmark::kMillisecond);
BENCHMARK(fileParsing)->Iterations(20)->Unit(benchmark::kMillisecond);
BENCHMARK(upload)->Iterations(1)->Unit(benchmark::kMillisecond);

/// Prints the ratios as well, and knows whether all limits hold.
class LimitReporter : public benchmark::ConsoleReporter
{
public:
    LimitReporter() : ConsoleReporter(OO_None) {}

    void ReportRuns(const std::vector<Run> &runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run &run : runs) {
            allHold = allHold && !run.error_occurred;
            if (run.error_occurred) continue;
            const bool holds =
                isWithin(run.run_name.function_name.c_str(), run.counters.at("ratio"), run.counters.at("limit"));
            allHold = allHold && holds;
        }
    }

    bool allHold = true;
};

}  // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    LimitReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return reporter.allHold ? 0 : 1;
}
