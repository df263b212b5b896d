#include "app/fileunit.h"
#include "controller/requestqueue.h"
#include "controller/safetycopies.h"
#include "simulator/unitport.h"
#include "ui/library/librarywidget.h"
#include "ui/shell/mainwindow.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPixmapCache>
#include <QPushButton>
#include <QStandardPaths>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <malloc.h>

// The real main window works with a virtual unit for a long time: it pages banks, opens pages, changes settings, backs
// up and restores, undoes, arranges presets and MIDI devices, saves sheets, works on a file, meets faults and loses the
// unit. What it holds on the heap, its open files and its safety copies must not grow. Usage: kora_soak [EXCHANGES]

namespace {

constexpr int allowedFiles = PseudoTerminal::keptPaths;
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

int openFiles() { return static_cast<int>(QDir(QStringLiteral("/proc/self/fd")).count()); }

template <typename Parent>
QAction &actionOf(const Parent &actions, const char *text)
{
    const auto found = std::ranges::find(actions, QLatin1String(text), &QAction::text);
    if (found == actions.end()) qFatal("no action %s", text);
    return **found;
}

class Soak
{
public:
    Soak()
    {
        unit.onExchange([this](const std::string &, const std::string &) { ++exchanges; });
        QObject::connect(&watch, &QTimer::timeout, [this] { answerDialog(); });
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
            click(button(name));
        auto *const keyboard = window.findChild<QComboBox *>(QStringLiteral("comboBox_keyboardType"));
        for (const Fault &fault : {Fault::noise(), Fault::wrongChecksum(), Fault::errorStatus()}) {
            unit.queueFault(fault);
            keyboard->setCurrentIndex(1 - keyboard->currentIndex());
            settle();
        }
        arrange();
        useFiles();
        while (button("undo").isEnabled())  // the history has a bound of its own, which would be reached much later
            click(button("undo"));
        reconnect();
    }

private:
    /// Agrees to whatever is asked.
    void answerDialog()
    {
        QWidget *const dialog = QApplication::activeModalWidget();
        if (auto *const box = qobject_cast<QMessageBox *>(dialog)) {
            QAbstractButton *const yes = box->button(QMessageBox::Yes);
            (yes ? yes : box->button(QMessageBox::Ok))->click();
        } else if (auto *const chooser = qobject_cast<QFileDialog *>(dialog)) {
            chooser->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(chosenFile);
            static_cast<QDialog *>(chooser)->done(QDialog::Accepted);
        } else if (dialog) {
            auto *const restore = dialog->findChild<QPushButton *>(QStringLiteral("pushButton_restore"));
            auto *const cancel = dialog->findChild<QPushButton *>(QStringLiteral("pushButton_cancel"));
            if (restore && restore->isVisible() && restore->isEnabled())
                restore->click();
            else if (cancel && cancel->isVisible())
                cancel->click();
        }
    }

    /// Chooses an entry of the menu; a file dialog that it opens gets this file.
    void trigger(const char *entry, const QString &file = QString())
    {
        chosenFile = folder.filePath(file);
        actionOf(window.findChildren<QAction *>(), entry).trigger();
        settle();
    }

    void chooseInLibrary(int bank, int column, const char *entry)
    {
        auto *const table = window.findChild<QTableView *>(QStringLiteral("tableView_library"));
        table->setCurrentIndex(table->model()->index(bank, column));
        actionOf(table->actions(), entry).trigger();
        settle();
    }

    void chooseOfDevice(int row, const char *entry)
    {
        QTimer::singleShot(0, [entry] {  // while the menu is open
            auto &menu = dynamic_cast<QMenu &>(*QApplication::activePopupWidget());
            menu.setActiveAction(&actionOf(menu.actions(), entry));
            QTest::keyClick(&menu, Qt::Key_Return);
        });
        auto *const table = window.findChild<QTableWidget *>(QStringLiteral("tableWidget_midiDevices"));
        QContextMenuEvent event(QContextMenuEvent::Mouse, {5, 5}, {5, 5});
        QApplication::sendEvent(table->cellWidget(row, 0), &event);
        settle();
    }

    /// Presets, banks, devices and their undoing.
    void arrange()
    {
        click(button("libraryTab"));
        chooseInLibrary(7, 4, "COPY");
        chooseInLibrary(reconnections % 7, 5, "SWAP");
        chooseInLibrary(60, 3, "PASTE");
        chooseInLibrary(20, 0, "MOVE UP");
        chooseInLibrary(30, 0, "INSERT EMPTY BANK");
        chooseInLibrary(30, 0, "REMOVE BANK");
        chooseInLibrary(50, 2, "CLEAR");
        click(button("midiDevicesTab"));
        chooseOfDevice(9, "COPY");
        chooseOfDevice(0, "SWAP");
        click(button("undo"));
        click(button("redo"));
    }

    void useFiles()
    {
        trigger("WHOLE UNIT...", QStringLiteral("unit.kora"));
        trigger("CLEAR THIS BANK...");
        trigger("COMPARE WITH FILE...", QStringLiteral("unit.kora"));
        trigger("FROM FILE...", QStringLiteral("unit.kora"));
        chosenFile = folder.filePath(QStringLiteral("sheets.pdf"));
        emit window.findChild<LibraryWidget *>()->sheetsAsked({0, 1, 2});
        trigger("WORK ON A FILE...", QStringLiteral("unit.kora"));
        awaitStatus(QStringLiteral("WORKING ON unit.kora"));
        click(button("settingsTab"));
        auto *const protection = window.findChild<QComboBox *>(QStringLiteral("comboBox_clickProtection"));
        protection->setCurrentIndex(1 - protection->currentIndex());
        settle();
        trigger("BACK TO THE UNIT");
        waitForUnit();
    }

    QPushButton &button(const char *name) const
    {
        return *window.findChild<QPushButton *>(QStringLiteral("pushButton_") + QLatin1String(name));
    }

    void settle()
    {
        const auto *const requests = window.findChild<RequestQueue *>();
        do
            QTest::qWait(5);
        while (!requests->isIdle() || QApplication::activeModalWidget());
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

    QString status() const { return window.findChild<QLabel *>(QStringLiteral("label_deviceStatus"))->text(); }
    bool isConnected() const { return status() == QLatin1String("DEVICE CONNECTED"); }

    void awaitStatus(const QString &text)
    {
        if (!QTest::qWaitFor([&] { return status() == text; }, 20000)) {
            std::cerr << "the status does not become " << text.toStdString() << '\n';
            std::exit(EXIT_FAILURE);
        }
        settle();
    }
    void waitForUnit() { awaitStatus(QStringLiteral("DEVICE CONNECTED")); }

    void reconnect()
    {
        unit.unplug();
        window.findChild<QPushButton *>(QStringLiteral("pushButton_settingsTab"))->click();
        if (!QTest::qWaitFor([this] { return !isConnected(); }, 5000)) std::cerr << "the loss is not noticed\n";
        unit.plugIn();
        waitForUnit();
        ++reconnections;
    }

    QTemporaryDir folder;
    QString chosenFile;
    std::atomic<std::size_t> exchanges = 0;
    int reconnections = 0;
    UnitPort unit;
    MainWindow window{[this] {
                          const std::string location = unit.location();
                          return location.empty() ? QStringList() : QStringList(QString::fromStdString(location));
                      },
                      nullptr,
                      {},
                      makeFileUnit};
    QTimer watch;
};

}  // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QStandardPaths::setTestModeEnabled(true);  // safety copies do not go to the user's
    const std::size_t wanted = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 800'000;
    Soak soak;
    soak.warmUp();
    const int filesAtStart = openFiles();
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
    const int files = openFiles() - filesAtStart;
    const auto copies = SafetyCopies().newestFirst().size();
    std::cout << "growth of the heap in the second half: " << growth << " kB (at most " << allowedGrowth << "), "
              << files << " more files open (at most " << allowedFiles << "), " << copies << " safety copies (at most "
              << SafetyCopies::kept << ")\n";
    return growth <= allowedGrowth && files <= allowedFiles && copies <= SafetyCopies::kept ? EXIT_SUCCESS
                                                                                            : EXIT_FAILURE;
}
