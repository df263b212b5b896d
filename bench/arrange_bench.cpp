// What it costs to move the last bank to the front, which shifts all others: against the bare exchange of the same
// frames with another unit.

#include "controller/devicecontroller.h"
#include "unit/commandframe.h"
#include "unitbench.h"

namespace {

/// A unit with a controller that has found it.
struct Arranged
{
    Arranged() { controller.searchDevice(); }
    /// Moves the last bank to the front, or back to the end. Whether all of it was made.
    bool move(bool isBack)
    {
        bool isWhole = false;
        const auto watch =
            QObject::connect(&controller, &DeviceController::arranged, [&](const ArrangementReport &report) {
                isWhole = report.failure.isEmpty() && report.remaining.empty();
            });
        controller.arrange(isBack ? arrange::moveBanks({0}, bankCount - 1) : arrange::moveBanks({bankCount - 1}, 0));
        QObject::disconnect(watch);
        return isWhole;
    }
    /// The frames of a move.
    std::vector<std::string> framesOf(bool isBack)
    {
        unit.takeRequests();
        move(isBack);
        std::vector<std::string> frames;
        for (const std::string &data : unit.takeRequests())
            frames.push_back(buildFrame(std::to_string(frames.size() + 1), data));
        return frames;
    }

    UnitPort unit{musicianContent(), std::chrono::milliseconds(0)};
    DeviceController controller{[this] { return QStringList(QString::fromStdString(unit.location())); }};
};

void bankMoving(benchmark::State &state)
{
    Arranged unit, recorder;
    Bench bare;
    recorder.unit.recordRequests();
    const auto there = recorder.framesOf(false), back = recorder.framesOf(true);
    bool isWhole = true;
    compare(
        state, 1.5, [&] { isWhole = unit.move(false) && unit.move(true) && isWhole; },
        [&] {
            bare.exchangeBare(there);
            bare.exchangeBare(back);
        });
    if (!isWhole || unit.unit.memory() != bare.unit.memory()) state.SkipWithError("not all was moved");
    state.counters["frames"] = static_cast<double>(there.size() + back.size());
}

BENCHMARK(bankMoving)->Iterations(5)->Unit(benchmark::kMillisecond);

}  // namespace
