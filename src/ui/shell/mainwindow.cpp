#include "ui/shell/mainwindow.h"

#include "link/connection.h"
#include "ui/combobox.h"
#include "ui/library/librarywidget.h"
#include "ui/look.h"
#include "ui/message.h"
#include "ui/preview/previewwidget.h"
#include "ui/shell/arranging.h"
#include "ui/shell/devicearranging.h"
#include "ui/shell/presetchanging.h"
#include "ui/shell/unitfiles.h"
#include "ui/tables/tabfootswitchfunction.h"
#include "ui/tables/tabloops.h"
#include "ui/tables/tabmidi.h"
#include "ui/tables/tabmididevices.h"
#include "ui/tables/tabswitch.h"
#include "ui/tables/tabwahpads.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QCoreApplication>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTableWidget>

#include <utility>

namespace {

constexpr int slowAfter = 300;   // ms that a change may take before it is shown to be on its way
constexpr int dragHeight = 200;  // pixels from the top

QString disconnectedText() { return QStringLiteral("DEVICE DISCONNECTED"); }

/// "2 changes did not reach the unit: SETTINGS: KEYBOARD TYPE; BANK 3: NAME"
QString undeliveredText(const QStringList &changes)
{
    return QStringLiteral("%1 %2 not reach the unit: %3")
        .arg(changes.size())
        .arg(changes.size() == 1 ? QStringLiteral("change did") : QStringLiteral("changes did"),
             changes.join(QLatin1String("; ")));
}

}  // namespace

MainWindow::MainWindow(PortLister listPorts, QWidget *parent, DeviceController::Timeouts timeouts,
                       InnerUnitMaker makeUnit)
    : QMainWindow(parent, Qt::Window | Qt::FramelessWindowHint | Qt::WindowTitleHint | Qt::CustomizeWindowHint),
      workFile(makeWorkFile(std::move(listPorts), std::move(makeUnit))),
      controller(std::make_unique<DeviceController>(workFile->ports())), requests(*controller, this),
      history(*controller, requests), aboutWindow(nullptr), guideWindow(nullptr), installDriversWindow(nullptr),
      ui(this), drag(dragHeight)
{
    setWindowIcon(look::icon("ico"));
    slowChange.setSingleShot(true);
    slowChange.setInterval(slowAfter);
    connectButtons();
    makeMenu();
    makeTabs();
    makeLibrary();
    makeSettingsPages();
    showDisconnected();
    makeController();
    makeKeys();

    controller->setTimeouts(timeouts);
    controller->moveToThread(&workerThread);
    requests.search([] {});  // begins with the thread
    workerThread.start();
}

MainWindow::~MainWindow() { stopWorker(); }

void MainWindow::connectButtons()
{
    using Clicked = void (MainWindow::*)();
    constexpr std::array<Clicked, PageCount> pageClicks{
        &MainWindow::on_pushButton_settingsTab_clicked,         &MainWindow::on_pushButton_presetsTab_clicked,
        &MainWindow::on_pushButton_midiDevicesTab_clicked,      &MainWindow::on_pushButton_midiMidiIn_clicked,
        &MainWindow::on_pushButton_midiExpressionPedal_clicked, &MainWindow::on_pushButton_midiSwitchOut_clicked,
        &MainWindow::on_pushButton_previewTab_clicked,          &MainWindow::on_pushButton_libraryTab_clicked};
    for (int index = 0; index < PageCount; ++index) {
        QPushButton *const button = ui.pages[static_cast<std::size_t>(index)].button;
        connect(button, &QPushButton::clicked, this, pageClicks[static_cast<std::size_t>(index)]);
        connect(button, &QPushButton::clicked, this,
                [this, index] { tabButtonClicked(static_cast<PageIndex>(index)); });
    }
    constexpr std::array<Clicked, SubTabCount> subTabClicks{
        &MainWindow::on_pushButton_footswitchFunctionTab_clicked, &MainWindow::on_pushButton_loopsTab_clicked,
        &MainWindow::on_pushButton_switchTab_clicked, &MainWindow::on_pushButton_midiTab_clicked,
        &MainWindow::on_pushButton_wahPads_clicked};
    for (std::size_t index = 0; index < SubTabCount; ++index)
        connect(ui.subTabs[index].button, &QPushButton::clicked, this, subTabClicks[index]);

    const auto clicks = [this](QPushButton *button, Clicked slot) {
        connect(button, &QPushButton::clicked, this, slot);
    };
    clicks(ui.pushButton_connection, &MainWindow::on_pushButton_connection_clicked);
    clicks(ui.pushButton_logo, &MainWindow::on_pushButton_logo_clicked);
    clicks(ui.pushButton_menu, &MainWindow::on_pushButton_menu_clicked);
    clicks(ui.pushButton_minimizeWindow, &MainWindow::on_pushButton_minimizeWindow_clicked);
    clicks(ui.pushButton_closeWindow, &MainWindow::on_pushButton_closeWindow_clicked);
    ui.label_deviceStatus->installEventFilter(this);
    ui.pages[PresetsPageIndex].button->setFocus();
    setAcceptDrops(true);
}

void MainWindow::makeMenu()
{
    menu = new QMenu(this);
    menu->setStyleSheet(look::menuStyle());
    firmwareEntry = menu->addAction(QStringLiteral("FIRMWARE UPGRADE"), this, &MainWindow::updateFirmware);
    std::array<QMenu *, 3> submenus{};
    for (std::size_t index = 0; const char *title : {"BACKUP", "RESTORE", "FACTORY RESET"}) {
        submenus[index] = menu->addMenu(QLatin1String(title));
        submenus[index++]->setStyleSheet(look::menuStyle());
    }
    makeUnitFiles(*submenus[0], *submenus[1], *submenus[2]);
    workFile->fillMenu(*menu);
    menu->addAction(QStringLiteral("HELP"), this, &MainWindow::showGuide);
}

void MainWindow::makeController()
{
    DeviceController *const unit = controller.get();
    connectSettings();
    connectFirmware();
    connect(&workerThread, &QThread::started, unit, &DeviceController::searchDevice);
    // The port's notifiers belong to the worker thread, so the port is let go there.
    connect(&workerThread, &QThread::finished, unit, &DeviceController::closeDevice, Qt::DirectConnection);
    connect(this, &MainWindow::searchForDevice, unit, &DeviceController::searchDevice);
    connect(unit, &DeviceController::found, this, &MainWindow::deviceFound);
    connect(unit, &DeviceController::error, this, &MainWindow::gotError);
    connectTabs();
    connectLibrary();
    connectHistory();
    connect(this, &MainWindow::connected, unit, &DeviceController::releaseSuperseded);
    connect(&requests, &RequestQueue::dropped, this, &MainWindow::showStored);
    connect(&requests, &RequestQueue::changing, this, [this](bool isUnderWay) {
        ui.label_pending->hide();
        isUnderWay ? slowChange.start() : slowChange.stop();
    });
    connect(&slowChange, &QTimer::timeout, ui.label_pending, &QWidget::show);
    connect(&requests, &RequestQueue::undelivered, this, &MainWindow::tellUndelivered);
}

// --- Connection

bool MainWindow::isConnected() const { return ui.label_deviceStatus->text() != disconnectedText(); }

void MainWindow::showDisconnected()
{
    look::makeIconButton(ui.pushButton_connection, plugRed, {36, 36}, tr("No unit found: help"));
    ui.label_deviceStatus->setText(disconnectedText());
    ui.label_deviceStatus->setToolTip(QString());
    ui.label_deviceStatus->setCursor(Qt::PointingHandCursor);  // the words open the same help as the plug
    files->setEnabled(false);
    library->unitLost();
    ui.label_deviceFirmware->clear();
    ui.label_noUnit->show();
    showHistory();
}

void MainWindow::deviceFound(DataFromDevice *newData)
{
    if (requests.isSearchWaiting()) return;  // its identity could not be read: the next search lets it go again
    data = newData;
    showConnected();
    files->setEnabled(true);
    ui.label_noUnit->hide();
    const auto info = data->deviceInfo.load();
    const std::string identity = info ? info->firstText + '\n' + info->secondText : std::string();
    requests.found(workFile->isOpen() ? workFile->identity() : QString::fromStdString(identity), [this] {
        emit connected(data);
        requestOtherBanks();
        requestShownSettings();
        if (library->isVisible()) library->opened();
    });
    showHistory();
}

void MainWindow::gotError(const QString &text)
{
    if (RequestQueue::isLoss(text)) {
        showDisconnected();
        requests.search([this] { emit searchForDevice(); });
        return;
    }
    if (isUploading) hideBusy();
    if (isClosing) return;  // told at the end
    message::tell(this, QStringLiteral("Error"), text);
}

QString MainWindow::obstacle() const
{
    return isConnected() ? QString()
                         : tr("No unit is connected, so nothing was sent. OK sends it once a unit is found.");
}

void MainWindow::tellUndelivered(const QStringList &changes)
{
    message::show(this, QStringLiteral("Error"), undeliveredText(changes));
}

void MainWindow::showStored()
{
    for (BankTable *const table : bankTables)
        table->showStored();
    tabMidiDevices->showStored();
    for (const SettingBox &setting : settingBoxes)
        setting.box->takeBack();
    for (ComboBox *const box : std::as_const(switchOutBoxes))
        box->takeBack();
}

void MainWindow::on_pushButton_connection_clicked()
{
    if (!isConnected())
        installDriversWindow.exec();
    else if (workFile->isUnsaved())
        workFile->save();
}

// --- Pages

void MainWindow::showPage(PageIndex index)
{
    for (std::size_t other = 0; other < PageCount; ++other)
        ui.pages[other].widget->setVisible(other == index);
}

void MainWindow::tabButtonClicked(PageIndex index)
{
    for (std::size_t other = 0; other < PageCount; ++other)
        ui.pages[other].button->setStyleSheet(look::tabButtonStyle(other == index));
}

void MainWindow::on_pushButton_settingsTab_clicked()
{
    showPage(SettingsPageIndex);
    if (isConnected()) emit getSettings();
}

void MainWindow::on_pushButton_presetsTab_clicked()
{
    showPage(PresetsPageIndex);
    for (BankTable *const table : bankTables)
        if (table->isVisible()) showChosenBank(*table);
}

void MainWindow::on_pushButton_midiDevicesTab_clicked()
{
    showPage(MidiDevicesPageIndex);
    if (isConnected()) emit getMidiDevicesData();
}

void MainWindow::on_pushButton_midiMidiIn_clicked()
{
    showPage(MidiInPageIndex);
    if (isConnected()) emit getMidiIn();
}

void MainWindow::on_pushButton_midiExpressionPedal_clicked()
{
    showPage(ExpressionPedalPageIndex);
    if (!isConnected()) return;
    emit getMidiDevicesData();  // first: the pedal's values choose from the lists that these fill
    emit getExpressionPedal();
}

void MainWindow::on_pushButton_midiSwitchOut_clicked()
{
    showPage(SwitchOutPageIndex);
    if (isConnected()) emit getSwitchOut();
}

void MainWindow::on_pushButton_previewTab_clicked()
{
    showPage(PreviewPageIndex);
    showChosenBank(*preview);
    preview->setFocus();  // the arrow keys choose a footswitch there
}

std::size_t MainWindow::shownSubTab() const
{
    std::size_t shown = 0;
    while (shown + 1 < SubTabCount && ui.subTabs[shown].table->isHidden())
        ++shown;
    return shown;
}

void MainWindow::showSubTab(SubTabIndex index)
{
    for (std::size_t other = 0; other < SubTabCount; ++other) {
        if (other != index) bankTables[other]->hide();
        ui.subTabs[other].button->setStyleSheet(look::tabButtonStyle(other == index));
    }
    bankTables[index]->show();
    showChosenBank(*bankTables[index]);
}

void MainWindow::on_pushButton_footswitchFunctionTab_clicked() { showSubTab(FootswitchFunctionTab); }

void MainWindow::on_pushButton_loopsTab_clicked() { showSubTab(LoopsTab); }

void MainWindow::on_pushButton_switchTab_clicked() { showSubTab(SwitchTab); }

void MainWindow::on_pushButton_midiTab_clicked() { showSubTab(MidiTab); }

void MainWindow::on_pushButton_wahPads_clicked() { showSubTab(WahPadsTab); }

// --- Window

void MainWindow::on_pushButton_logo_clicked() { aboutWindow.exec(); }

void MainWindow::showGuide()
{
    guideWindow.show();
    guideWindow.raise();
    guideWindow.activateWindow();
}

void MainWindow::on_pushButton_menu_clicked() { menu->popup(ui.pushButton_menu->mapToGlobal(QPoint(0, 29))); }

void MainWindow::on_pushButton_minimizeWindow_clicked() { setWindowState(windowState() | Qt::WindowMinimized); }

void MainWindow::on_pushButton_closeWindow_clicked() { close(); }

void MainWindow::toggleLog() { Connection::enableLog = !Connection::enableLog; }

void MainWindow::mousePressEvent(QMouseEvent *event) { drag.press(event); }

void MainWindow::mouseMoveEvent(QMouseEvent *event) { drag.move(event, this); }

void MainWindow::mouseReleaseEvent(QMouseEvent *) { drag.release(); }

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (isClosing || (workFile->isOpen() && !workFile->leave())) return event->ignore();
    isClosing = true;
    // A search and an upload end at once; changes still reach the unit.
    if (requests.isSearching() || isUploading) workerThread.requestInterruption();
    guideWindow.close();
    const QStringList lost = requests.finish();
    stopWorker();
    workFile->leave(false);  // with what a transfer has written meanwhile
    // What the worker announced meanwhile must not open a box after the window has gone.
    QCoreApplication::removePostedEvents(this, QEvent::MetaCall);
    if (!lost.isEmpty()) message::tell(this, QStringLiteral("Error"), undeliveredText(lost));
    QMainWindow::closeEvent(event);
}

void MainWindow::stopWorker()
{
    workerThread.requestInterruption();
    workerThread.quit();
    workerThread.wait();
}
