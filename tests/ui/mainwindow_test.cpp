#include "link/connection.h"
#include "support/wire.h"
#include "ui/dialogs/aboutwindow.h"
#include "ui/editor.h"
#include "ui/dialogs/installdriverswindow.h"
#include "ui/dialogs/midieditorwindow.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QProgressBar>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>

namespace {

/// Runs `act` on the next modal dialog.
void onDialog(const std::function<void(QWidget &)> &act)
{
    auto *watch = new QTimer(qApp);
    QObject::connect(watch, &QTimer::timeout, qApp, [watch, act] {
        QWidget *const dialog = QApplication::activeModalWidget();
        if (!dialog) return;
        watch->deleteLater();
        watch->stop();
        act(*dialog);
    });
    watch->start(10);
}

void accept(QWidget &box) { dynamic_cast<QMessageBox &>(box).button(QMessageBox::Ok)->click(); }

}  // namespace

TEST_F(Editor, ShowsTheUnitAndItsFirmware)
{
    const DeviceInfo info = unit.memory().deviceInfo;
    EXPECT_EQ(find<QLabel>("label_deviceFirmware").text(),
              QString("FIRMWARE %1.%2").arg(info.firmwareMajor).arg(info.firmwareMinor));
    EXPECT_EQ(window.windowTitle(), "KORA");
    EXPECT_EQ(window.size(), QSize(1322, 709));
    EXPECT_TRUE(find<QWidget>("tableWidget_footswitchFunction").isVisible());
}

TEST_F(Editor, AConnectionAsksForOneBankTheMidiDevicesAndTheOpenPage)
{
    unit.unplug();
    click("pushButton_settingsTab");
    ASSERT_TRUE(becomes([this] { return !isConnected(); }));
    unit.plugIn();
    ASSERT_TRUE(becomes([this] { return isConnected(); }));
    std::vector<std::string> expected{"RDI", "RDI", wire("RBB|A0")};
    for (const char *preset : {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"})
        expected.push_back(wire(std::string("RBP|A0|B") + preset));
    for (const char *device : {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10"})
        expected.push_back(wire(std::string("RMD|A") + device));
    expected.push_back("ROS");  // the page that is open
    EXPECT_EQ(requests(), expected);
}

TEST_F(Editor, EveryTableShowsItsOwnBankAgainAfterAReconnection)
{
    click("pushButton_loopsTab");
    auto &number = cell<QLineEdit>("loops", 1, 0);
    number.setText("5");
    QTest::keyClick(&number, Qt::Key_Return);
    EXPECT_EQ(requests().size(), 11U);
    unit.unplug();
    click("pushButton_settingsTab");
    ASSERT_TRUE(becomes([this] { return !isConnected(); }));
    unit.alter([](UnitMemory &memory) { memory.banks[5].name = "CHANGED"; });
    unit.plugIn();
    ASSERT_TRUE(becomes([&] { return cell<QLineEdit>("loops", 1, 2).text() == "CHANGED"; }));
    const auto asked = requests();
    EXPECT_EQ(std::count(asked.begin(), asked.end(), wire("RBB|A0")), 1);
    EXPECT_EQ(std::count(asked.begin(), asked.end(), wire("RBB|A5")), 1);
}

TEST_F(Editor, ALostUnitIsNoticedWithoutABoxAndFoundAgainEveryTime)
{
    for (int round = 0; round < 5; ++round) {
        unit.unplug();
        for (const char *page : {"pushButton_settingsTab", "pushButton_midiMidiIn", "pushButton_midiSwitchOut"})
            click(page);  // each request times out and asks for a search of its own
        ASSERT_TRUE(becomes([this] { return status() == "DEVICE DISCONNECTED"; }));
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
        EXPECT_EQ(find<QLabel>("label_deviceFirmware").text(), "");
        unit.plugIn();
        ASSERT_TRUE(becomes([this] { return isConnected(); }));
        // No search is left that would let the unit go behind the green plug.
        ASSERT_TRUE(settles());
    }
}

TEST_F(Editor, ASecondEditorOnThePortGetsOnWithTheFirst)
{
    MainWindow second(unitsPort);
    second.show();
    const auto bothConnected = [&] {
        return isConnected() && second.findChild<QLabel *>("label_deviceStatus")->text() == status();
    };
    ASSERT_TRUE(becomes(bothConnected));
    auto *const secondPage = second.findChild<QPushButton *>("pushButton_settingsTab");
    auto *const secondBox = second.findChild<QComboBox *>("comboBox_clickProtection");
    for (int round = 0; round < 10; ++round) {  // the one that finds the port held searches until it is free
        click("pushButton_settingsTab");
        secondPage->click();
        QTest::qWait(round);
    }
    ASSERT_TRUE(becomes([&] { return bothConnected() && settles() && bothConnected(); }));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    choose(*secondBox, secondBox->currentText() == "LOW" ? "HIGH" : "LOW");
    EXPECT_TRUE(settles());
    click("pushButton_settingsTab");
    EXPECT_TRUE(
        becomes([&] { return find<QComboBox>("comboBox_clickProtection").currentText() == secondBox->currentText(); }));
    second.close();
}

TEST_F(Editor, MenuOffersTheUpgradeAndThreeEmptySubmenus)
{
    window.move(-600, 0);  // the menu would be moved to stay on the small screen of the offscreen platform
    click("pushButton_menu");
    auto *const menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    QStringList texts;
    for (const QAction *const action : menu->actions())
        texts << action->text() + (action->menu() ? QString(": %1").arg(action->menu()->actions().size()) : QString());
    EXPECT_EQ(texts, QStringList({"FIRMWARE UPGRADE", "BACKUP: 0", "RESTORE: 0", "FACTORY RESET: 0"}));
    EXPECT_EQ(menu->pos(), find<QPushButton>("pushButton_menu").mapToGlobal({0, 29}));
    menu->close();
}

TEST_F(Editor, WindowsAreDraggedByTheirTopOnly)
{
    DataFromDevice model;
    AboutWindow about;
    InstallDriversWindow drivers;
    MidiEditorWindow editor(&model, 0, 0, 0, nullptr);
    const std::pair<QWidget *, int> bands[] = {{&window, 200}, {&about, 60}, {&drivers, 60}, {&editor, 60}};
    for (const auto &[widget, band] : bands) {
        const auto mouse = [dragged = widget](QEvent::Type type, const QPoint &point) {
            QMouseEvent event(type, point, dragged->pos() + point, Qt::LeftButton, Qt::LeftButton, {});
            QCoreApplication::sendEvent(dragged, &event);
            return dragged->pos();
        };
        widget->move(100, 100);
        EXPECT_EQ(mouse(QEvent::MouseMove, {5, 5}), QPoint(100, 100)) << "before a press";
        mouse(QEvent::MouseButtonPress, {300, band});
        EXPECT_EQ(mouse(QEvent::MouseMove, {340, 80}), QPoint(100, 100)) << "pressed below the band";
        mouse(QEvent::MouseButtonPress, {300, band - 1});
        EXPECT_EQ(mouse(QEvent::MouseMove, {330, band + 20}), QPoint(130, 121));
        mouse(QEvent::MouseButtonRelease, {300, band - 1});
        EXPECT_EQ(mouse(QEvent::MouseMove, {0, 0}), QPoint(130, 121)) << "after the release";
    }
}

TEST_F(Editor, TheShortcutTurnsTheTrafficLogOnAndOff)
{
    const bool before = Connection::enableLog;
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    for (const bool expected : {!before, before}) {
        QTest::keyClick(&window, Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
        EXPECT_EQ(Connection::enableLog, expected);
    }
}

// --- Firmware

class Upload : public Editor
{
protected:
    QTemporaryDir folder;

    QString image(int bytes)
    {
        QFile file(folder.filePath("image.bin"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(QByteArray(bytes, 'k')) == bytes);
        return file.fileName();
    }

    void start(const QString &path)
    {
        onDialog([path](QWidget &dialog) {
            auto &files = dynamic_cast<QFileDialog &>(dialog);
            EXPECT_EQ(files.windowTitle(), "Open KORA Firmware File");
            EXPECT_EQ(files.nameFilters(), QStringList("KORA Firmware (*.bin)"));
            files.findChild<QLineEdit *>("fileNameEdit")->setText(path);
            static_cast<QDialog &>(files).done(path.isEmpty() ? QDialog::Rejected : QDialog::Accepted);
        });
        window.updateFirmware();
    }

    bool isBusy() const
    {
        const bool veil = find<QLabel>("label_loading").isVisible();
        EXPECT_EQ(find<QLabel>("label_loadingText").isVisible(), veil);
        EXPECT_EQ(find<QProgressBar>("progressBar_loading").isVisible(), veil);
        return veil;
    }

    QString waitForBox()
    {
        QString title;
        onDialog([&title](QWidget &box) {
            title = box.windowTitle() + '|' + dynamic_cast<QMessageBox &>(box).text();
            accept(box);
        });
        EXPECT_TRUE(becomes([&] { return !title.isEmpty(); }));
        QTest::qWait(10);
        return title;
    }
};

TEST_F(Upload, CompletesAndShowsHowFarItIs)
{
    const QSignalSpy progress(&find<QProgressBar>("progressBar_loading"), &QProgressBar::valueChanged);
    start(image(20000));
    EXPECT_TRUE(isBusy());
    EXPECT_EQ(find<QLabel>("label_loadingText").text(), "SENDING NEW FIRMWARE TO DEVICE. PLEASE WAIT");
    const QSignalSpy second(&window, &MainWindow::updateFirmwareSignal);
    window.updateFirmware();
    EXPECT_EQ(second.size(), 0);
    EXPECT_EQ(waitForBox(), "UPLOAD COMPLETE|NOW KORA WILL RESTART AND INSTALL NEW FIRMWARE.\n"
                            "AFTER INSTALATION, PLEASE RESTART THIS PROGRAM");
    EXPECT_FALSE(isBusy());
    EXPECT_EQ(unit.memory().firmware, std::vector<std::uint8_t>(20000, 'k'));
    EXPECT_GT(progress.size(), 10);
    EXPECT_EQ(find<QProgressBar>("progressBar_loading").value(), 100);
}

TEST_F(Upload, EndsInTheRightBox)
{
    start(QString());
    EXPECT_FALSE(isBusy());
    EXPECT_EQ(requests(), std::vector<std::string>());

    start(folder.filePath("missing.bin"));
    EXPECT_TRUE(isBusy());
    EXPECT_EQ(waitForBox(), "Error|File doesn't exist");
    EXPECT_FALSE(isBusy());
}

TEST_F(Upload, ClosingTheWindowStopsBetweenTwoChunks)
{
    start(image(983040));
    ASSERT_TRUE(becomes([this] { return find<QProgressBar>("progressBar_loading").value() >= 1; }));
    QElapsedTimer clock;
    clock.start();
    window.close();
    EXPECT_LT(clock.elapsed(), 1000);
    const auto sent = unit.takeRequests();
    EXPECT_LT(sent.size(), 1900U);
    EXPECT_EQ(sent.back().substr(0, 5), wire("WFD|A"));
}
