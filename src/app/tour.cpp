#include "app/tour.h"

#include "app/gestures.h"
#include "controller/requestqueue.h"
#include "ui/shell/mainwindow.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTextStream>
#include <QTimer>

#include <cstdlib>

using namespace gestures;

namespace {

constexpr int rounding = 8;  // of 255, by which one processor's edge of a letter or a curve may differ from another's

bool looksLike(const QImage &picture, const QImage &other)
{
    if (picture.size() != other.size()) return false;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb one = picture.pixel(x, y), two = other.pixel(x, y);
            if (std::abs(qRed(one) - qRed(two)) > rounding || std::abs(qGreen(one) - qGreen(two)) > rounding ||
                std::abs(qBlue(one) - qBlue(two)) > rounding)
                return false;
        }
    return true;
}

}  // namespace

Tour::Tour(MainWindow &editor, UnitPort &virtualUnit, const QString &directory, const QString &documented)
    : window(editor), unit(virtualUnit), pictures(QDir(directory).absolutePath()), documents(documented)
{
    pictures.mkpath(QStringLiteral("."));
    for (const QString &file : pictures.entryList({QStringLiteral("*.kora")}))
        pictures.remove(file);  // of an earlier tour: a dialog would ask whether to replace it
}

void Tour::run()
{
    connection();
    footswitchTable();
    loopsTable();
    switchTable();
    midiDevicesTable();
    midiTable();
    wahPadsTable();
    settingsPage();
    midiInPage();
    expressionPedalPage();
    switchOutPage();
    previewPage();
    libraryPage();
    moveDevices();
    files();
    workOnAFile();
    refusedChange();
    informationWindows();
    firmwareUpload();
    lostUnit();
    QTextStream(stdout) << passedSteps << " passed, 0 failed" << Qt::endl;
}

void Tour::check(const QString &step, const std::function<bool()> &reached)
{
    if (!waitFor(reached)) fail(step);
    ++passedSteps;
    QTextStream(stdout) << "ok      " << step << Qt::endl;
}

void Tour::fail(const QString &step)
{
    window.grab().save(pictures.filePath(QStringLiteral("failed.png")));
    QTextStream(stdout) << "FAILED  " << step << "; see failed.png\n" << passedSteps << " passed, 1 failed" << Qt::endl;
    std::quick_exit(EXIT_FAILURE);  // whatever dialog is open
}

void Tour::checkUnit(const QString &step, const std::function<bool(const UnitMemory &)> &holds)
{
    check(step, [&] { return holds(unit.memory()); });
}

void Tour::awaitAnswers()
{
    const auto *const requests = window.findChild<RequestQueue *>();
    if (!waitFor([&] { return requests->isIdle(); })) fail(QStringLiteral("all is answered"));
}

void Tour::picture(const QString &name, QWidget *widget)
{
    QApplication::processEvents();
    const QString file = QStringLiteral("%1-%2.png").arg(++pictureCount, 2, 10, QLatin1Char('0')).arg(name);
    const QString documented = QStringLiteral("%1/%2.png").arg(documents, name);
    const bool isDocumented = !documents.isEmpty() && QFile::exists(documented);
    check("picture " + file, [&] {
        const QPixmap shown = (widget ? widget : &window)->grab();
        return shown.save(pictures.filePath(file)) && (!isDocumented || looksLike(shown.toImage(), QImage(documented)));
    });
}

void Tour::withDialogs(const std::function<void()> &open, const std::vector<Act> &acts)
{
    std::size_t done = 0;
    QPointer<QWidget> answered;
    QTimer watch;
    QTimer patienceEnds;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        QWidget *const dialog = QApplication::activeModalWidget();
        if (!dialog || dialog == answered || done == acts.size()) return;
        answered = dialog;
        acts[done++](*dialog);
        patienceEnds.start(patience);
    });
    QObject::connect(&patienceEnds, &QTimer::timeout, [this] { fail(QStringLiteral("the dialog closes")); });
    watch.start(20);
    open();
    check(QStringLiteral("the dialog opened and closed"),
          [&] { return done == acts.size() && !QApplication::activeModalWidget(); });
}

int Tour::presetWith(FootswitchType function) const
{
    const UnitMemory memory = unit.memory();
    const auto &presets = memory.presets[0];
    const auto found = std::find_if(presets.begin(), presets.end(), [function](const PresetData &preset) {
        return preset.footswitchFunction == function;
    });
    return static_cast<int>(found - presets.begin());
}

void Tour::click(const char *button) { clickOn(find<QPushButton>(window, button)); }

void Tour::choose(const char *box, const QString &item) { chooseFrom(find<QComboBox>(window, box), item); }

void Tour::connection()
{
    auto &status = find<QLabel>(window, "label_deviceStatus");
    auto &firmware = find<QLabel>(window, "label_deviceFirmware");
    check(QStringLiteral("the editor finds the unit"), [&] { return status.text() == "DEVICE CONNECTED"; });
    const DeviceInfo info = unit.memory().deviceInfo;
    check(QStringLiteral("the firmware version is the unit's"), [&] {
        return firmware.text() == QStringLiteral("FIRMWARE %1.%2").arg(info.firmwareMajor).arg(info.firmwareMinor);
    });
}
