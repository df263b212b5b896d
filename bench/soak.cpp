#include "simulator/unitport.h"
#include "ui/shell/mainwindow.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QMessageBox>
#include <QPixmapCache>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <malloc.h>

// The real main window works with a virtual unit for a long time: it pages banks, opens pages, changes settings, meets
// faults and loses the unit. What it holds on the heap must not grow. Usage: kora_soak [EXCHANGES]

namespace {

constexpr long allowedGrowth = 64;  // kB of the heap between the first and the second half
constexpr std::size_t samples = 10;

/// What the program holds on the heap, in kB, apart from Qt's cache of pictures, which has a limit of its own.
long heapInUse()
{
    QPixmapCache::clear();
    const auto heap = ::mallinfo2();
    return static_cast<long>((heap.uordblks + heap.hblkhd) / 1024);
}

/// What the system has given to the program, in kB
long residentMemory()
{
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (long size = 0; word == "VmRSS:" && status >> size) return size;
    return 0;
}

class Soak
{
public:
    Soak()
    {
        unit.onExchange([this](const std::string &, const std::string &) { ++exchanges; });
        QObject::connect(&watch, &QTimer::timeout, [] {
            if (auto *const box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget()))
                box->button(QMessageBox::Ok)->click();
        });
        watch.start(5);
        window.show();
        waitForUnit();
    }
    ~Soak() { unit.onExchange({}); }
    Soak(const Soak &) = delete;
    Soak &operator=(const Soak &) = delete;

    std::size_t exchangeCount() const { return exchanges; }
    int reconnectionCount() const { return reconnections; }

    /// Every bank is read once, so that the model has its full size.
    void warmUp()
    {
        page("loops", 0, 99);
        page("loops", 11, 99);
        round();
    }

    void round()
    {
        for (const char *table : {"footswitchFunction", "loops", "switch", "midi", "wahPads"}) {
            const bool pads = QLatin1String(table) == QLatin1String("wahPads");
            page(table, pads ? 2 : 0, 2);
            page(table, pads ? 5 : 11, 2);
        }
        for (const char *name : {"settingsTab", "midiDevicesTab", "midiMidiIn", "midiExpressionPedal", "midiSwitchOut",
                                 "previewTab", "libraryTab", "presetsTab"})
            click(*window.findChild<QPushButton *>(QStringLiteral("pushButton_") + QLatin1String(name)));
        auto *const keyboard = window.findChild<QComboBox *>(QStringLiteral("comboBox_keyboardType"));
        for (const Fault &fault : {Fault::noise(), Fault::wrongChecksum(), Fault::errorStatus()}) {
            unit.queueFault(fault);
            keyboard->setCurrentIndex(1 - keyboard->currentIndex());
            settle();
        }
        reconnect();
    }

private:
    void settle()
    {
        for (std::size_t seen = exchanges - 1; seen != exchanges;) {
            seen = exchanges;
            QTest::qWait(15);
        }
    }

    void click(QPushButton &button)
    {
        button.click();
        settle();
    }

    void page(const char *table, int arrowRow, int times)
    {
        auto *const widget = window.findChild<QTableWidget *>(QStringLiteral("tableWidget_") + QLatin1String(table));
        for (int i = 0; i < times; ++i)
            click(*qobject_cast<QPushButton *>(widget->cellWidget(arrowRow, 0)));
    }

    bool isConnected() const
    {
        return window.findChild<QLabel *>(QStringLiteral("label_deviceStatus"))->text() ==
               QLatin1String("DEVICE CONNECTED");
    }

    void waitForUnit()
    {
        if (!QTest::qWaitFor([this] { return isConnected(); }, 20000)) {
            std::cerr << "the unit is not found\n";
            std::exit(EXIT_FAILURE);
        }
        settle();
    }

    void reconnect()
    {
        unit.unplug();
        window.findChild<QPushButton *>(QStringLiteral("pushButton_settingsTab"))->click();
        if (!QTest::qWaitFor([this] { return !isConnected(); }, 5000)) std::cerr << "the loss is not noticed\n";
        unit.plugIn();
        waitForUnit();
        ++reconnections;
    }

    std::atomic<std::size_t> exchanges = 0;
    int reconnections = 0;
    UnitPort unit;
    MainWindow window{[this] {
        const std::string location = unit.location();
        return location.empty() ? QStringList() : QStringList(QString::fromStdString(location));
    }};
    QTimer watch;
};

}  // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    const std::size_t wanted = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 8000;
    Soak soak;
    soak.warmUp();
    const std::size_t start = soak.exchangeCount();
    std::vector<long> memory;
    while (memory.size() < samples) {
        do
            soak.round();
        while (soak.exchangeCount() - start < wanted * (memory.size() + 1) / samples);
        memory.push_back(heapInUse());
        std::cout << soak.exchangeCount() << " exchanges, " << soak.reconnectionCount() << " reconnections, "
                  << memory.back() << " kB on the heap, " << residentMemory() << " kB resident" << std::endl;
    }
    const auto middle = memory.begin() + samples / 2;
    const long growth = *std::max_element(middle, memory.end()) - *std::max_element(memory.begin(), middle);
    std::cout << "growth of the heap in the second half: " << growth << " kB (at most " << allowedGrowth << ")\n";
    return growth <= allowedGrowth ? EXIT_SUCCESS : EXIT_FAILURE;
}
