#include "controller/connected.h"
#include "controller/unitsearch.h"
#include "support/outcome.h"
#include "support/scriptedport.h"

#include <QPointer>
#include <QThread>

#include <ctime>

TEST(Discovery, TakesTheFirstPortThatAnswers)
{
    const ScriptedPort silent({});
    UnitPort unit, second;
    unit.recordRequests();
    second.recordRequests();
    DeviceController controller([&] {
        QStringList locations{"/dev/no-such-port"};
        for (const auto &location : {silent.location(), unit.location(), second.location()})
            locations << QString::fromStdString(location);
        return locations;
    });
    Recorder recorder(controller);
    QObject::connect(&controller, &DeviceController::found,
                     [&](DataFromDevice *data) { EXPECT_EQ(*data->deviceInfo.load(), unit.memory().deviceInfo); });
    const auto searched = millisecondsOf([&] { controller.searchDevice(); });
    EXPECT_GE(searched, 995);
    EXPECT_LT(searched, 1990);
    EXPECT_EQ(recorder.take(), Events{"found"});
    EXPECT_EQ(silent.requests(), Events{"RDI"});
    EXPECT_EQ(unit.takeRequests(), (Events{"RDI", "RDI"}));
    EXPECT_EQ(second.takeRequests(), Events{});
}

TEST(Discovery, TakesAnyAnswerAndReportsAnIdentityThatCannotBeRead)
{
    const ScriptedPort port({"\x02whatever\x03", buildFrame("1", wire("0|AKORA|B|Cone|D|E|F"))});
    DeviceController controller([&] { return QStringList{QString::fromStdString(port.location())}; });
    Recorder recorder(controller);
    QObject::connect(&controller, &DeviceController::found,
                     [](DataFromDevice *data) { EXPECT_EQ(*data->deviceInfo.load(), DeviceInfo()); });
    controller.searchDevice();
    EXPECT_EQ(recorder.take(), (Events{"found", "error Error in communication"}));
}

TEST(Discovery, DropsTheUnitBeforeItSearchesAgain)
{
    UnitPort unit;
    DeviceController controller([&] {
        controller.getSettings();  // as if asked for during the search
        return QStringList{QString::fromStdString(unit.location())};
    });
    Recorder recorder(controller);
    std::vector<QPointer<DataFromDevice>> models;
    QObject::connect(&controller, &DeviceController::found, [&](DataFromDevice *data) { models.emplace_back(data); });
    controller.searchDevice();
    controller.searchDevice();
    EXPECT_EQ(recorder.take(), (Events{"found", "found", "deviceNotConnected", "deviceNotConnected"}));
    ASSERT_EQ(models.size(), 2u);
    EXPECT_TRUE(models[0]) << "the window may still show it";
    controller.releaseSuperseded(models[1]);
    EXPECT_FALSE(models[0]);
    EXPECT_TRUE(models[1]);
}

TEST(Discovery, AsksNoMorePortsOnceItIsStopped)
{
    UnitPort unit;
    unit.recordRequests();
    bool stopped = false;
    const PortLister listAndStop = [&] {
        stopped = true;
        return QStringList{QString::fromStdString(unit.location())};
    };
    EXPECT_FALSE(findUnit(
        listAndStop, [&] { return stopped; }, 1000, 0));
    EXPECT_EQ(unit.takeRequests(), Events{});
}

#ifdef __SANITIZE_ADDRESS__
constexpr double allowance = 0.3;  // the sanitizers slow everything down
#else
constexpr double allowance = 0.1;  // of one core
#endif

TEST(Discovery, IdlesUntilItIsStopped)
{
    double busySeconds = 1;
    Events events;
    const std::unique_ptr<QThread> worker(QThread::create([&] {
        DeviceController controller([] {
            systemPortLocations();  // at its real cost, but no real port is touched
            return QStringList();
        });
        Recorder recorder(controller);
        controller.searchDevice();
        timespec used{};
        ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
        busySeconds = static_cast<double>(used.tv_sec) + 1e-9 * static_cast<double>(used.tv_nsec);
        events = recorder.take();
    }));
    worker->start();
    EXPECT_FALSE(worker->wait(1500));
    worker->requestInterruption();
    EXPECT_LT(millisecondsOf([&] { worker->wait(); }), 1000);
    EXPECT_LT(busySeconds, allowance * 1.5);
    EXPECT_EQ(events, Events{});
}
