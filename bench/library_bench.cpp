// What it costs to show and to scroll a full library, and to search in it, and how long the window stands still while a
// library is read and arranged. The exit status tells whether all are within their limits.

#include "comparison.h"
#include "controller/requestqueue.h"
#include "model/datafromdevice.h"
#include "simulator/unitport.h"
#include "ui/library/libraryview.h"
#include "ui/library/librarywidget.h"
#include "ui/shell/mainwindow.h"
#include "ui/shell/startup.h"
#include "unit/musiciancontent.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>

#include <algorithm>
#include <array>
#include <chrono>
#include <functional>
#include <memory>
#include <vector>

namespace {

constexpr double frameLimit = 16;  // ms
constexpr double filterLimit = 5;  // ms
constexpr int showings = 20;
constexpr int scrollStep = 13;  // pixels
constexpr int searches = 40;
constexpr double pauseLimit = 50;                  // ms
constexpr std::chrono::milliseconds answersIn(5);  // each exchange
constexpr int sessions = 3;                        // what the machine spoils in one is not in all

/// The model of a unit that has been read to the end.
std::unique_ptr<DataFromDevice> fullModel()
{
    const UnitMemory memory = musicianContent();
    auto data = std::make_unique<DataFromDevice>();
    for (std::size_t bank = 0; bank < bankCount; ++bank) {
        data->bankData[bank] = std::make_shared<const BankData>(memory.banks[bank]);
        for (std::size_t preset = 0; preset < presetCount; ++preset)
            data->presetData[bank][preset] = std::make_shared<const PresetData>(memory.presets[bank][preset]);
    }
    for (std::size_t device = 0; device < midiDeviceCount; ++device)
        data->midiDevices[device] = std::make_shared<const MidiDevice>(memory.midiDevices[device]);
    return data;
}

/// The longest but for one in a hundred, which the machine spoils.
double longest(std::vector<double> milliseconds)
{
    std::ranges::sort(milliseconds);
    return milliseconds[milliseconds.size() - 1 - milliseconds.size() / 100];
}

template <typename Work>
double millisecondsOf(const Work &work)
{
    return secondsOf(work) * 1000;
}

bool measureFrames(QTableView &table, QPushButton &away, QPushButton &page)
{
    std::vector<double> showing, scrolling;
    for (int round = 0; round < showings; ++round) {
        away.click();
        QApplication::processEvents();
        showing.push_back(millisecondsOf([&] {
            page.click();
            QApplication::processEvents();
        }));
    }
    QScrollBar &bar = *table.verticalScrollBar();
    for (int place = 0; place < bar.maximum(); place += scrollStep)
        scrolling.push_back(millisecondsOf([&] {
            bar.setValue(place);
            QApplication::processEvents();
        }));
    const bool isShown = isWithin("show_library_ms", longest(showing), frameLimit);
    return isWithin("scroll_library_ms", longest(scrolling), frameLimit) && isShown;
}

bool measureFind(QLineEdit &find)
{
    std::vector<double> filtering;
    for (int round = 0; round < searches; ++round)
        for (const char *text : {"r", "re", "reverie", "delay", "nowhere", ""}) {
            filtering.push_back(millisecondsOf([&] { find.setText(QLatin1String(text)); }));
            QApplication::processEvents();
        }
    return isWithin("filter_library_ms", longest(filtering), filterLimit);
}

/// The longest that the window was busy until `reached` holds.
double longestPause(const std::function<bool()> &reached)
{
    double pause = 0;
    while (!reached())
        pause = std::max(pause, millisecondsOf([] { QApplication::processEvents(); }));
    return pause;
}

/// Reads the whole library of a slow unit, moves ten banks, and takes that back.
double pauseOfSession()
{
    UnitPort unit;
    unit.setDelay(answersIn);
    MainWindow window([&unit] { return QStringList(QString::fromStdString(unit.location())); });
    window.show();
    auto &table = *window.findChild<LibraryView *>();
    const auto *const requests = window.findChild<RequestQueue *>();
    const auto *const status = window.findChild<QLabel *>(QStringLiteral("label_deviceStatus"));
    const auto isIdle = [requests] { return requests->isIdle(); };
    longestPause([&] { return status->text() == QLatin1String("DEVICE CONNECTED") && isIdle(); });
    window.findChild<QPushButton *>(QStringLiteral("pushButton_libraryTab"))->click();
    const double reading = longestPause(isIdle);
    emit table.banksDropped({9}, 0);
    const double moving = longestPause(isIdle);
    window.findChild<QPushButton *>(QStringLiteral("pushButton_undo"))->click();
    return std::max({reading, moving, longestPause(isIdle)});
}

bool measurePauses()
{
    std::array<double, sessions> pauses{};
    std::ranges::generate(pauses, pauseOfSession);
    return isWithin("pause_library_ms", *std::ranges::min_element(pauses), pauseLimit);
}

}  // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    startup::prepareScreen();
    const QApplication application(argc, argv);
    startup::prepareApplication();

    const auto data = fullModel();
    MainWindow window([] { return QStringList(); });
    window.show();
    window.findChild<LibraryWidget *>()->loadDataFromDevice(data.get());
    const auto button = [&](const char *name) { return window.findChild<QPushButton *>(QLatin1String(name)); };
    const bool isSmooth = measureFrames(*window.findChild<QTableView *>(QStringLiteral("tableView_library")),
                                        *button("pushButton_settingsTab"), *button("pushButton_libraryTab"));
    const bool isFound = measureFind(*window.findChild<QLineEdit *>(QStringLiteral("lineEdit_find")));
    const bool isResponsive = measurePauses();
    return isSmooth && isFound && isResponsive ? 0 : 1;
}
