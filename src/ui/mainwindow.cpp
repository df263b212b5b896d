#include "ui/mainwindow.h"

#include "controller/devicecontroller.h"
#include "link/connection.h"
#include "ui/look.h"
#include "ui/previewwidget.h"
#include "ui/tabfootswitchfunction.h"
#include "ui/tabloops.h"
#include "ui/tabmidi.h"
#include "ui/tabmididevices.h"
#include "ui/tabswitch.h"
#include "ui/tabwahpads.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QShortcut>
#include <QTableWidget>

namespace {

constexpr int dragHeight = 200;  // pixels from the top

QString connectedText() { return QStringLiteral("DEVICE CONNECTED"); }
QString disconnectedText() { return QStringLiteral("DEVICE DISCONNECTED"); }

}  // namespace

MainWindow::MainWindow(PortLister listPorts, QWidget *parent)
    : QMainWindow(parent), aboutWindow(nullptr), installDriversWindow(nullptr), ui(this), drag(dragHeight)
{
    setWindowIcon(QIcon(QStringLiteral(":/images/ico.png")));
    connectButtons();
    makeMenu();
    makeTabs();
    makeSettingsPages();
    showDisconnected();
    makeController(std::move(listPorts));
    auto *logShortcut = new QShortcut(QKeySequence(QStringLiteral("Ctrl+Shift+L")), centralWidget());
    connect(logShortcut, &QShortcut::activated, this, &MainWindow::toggleLog);

    controller->moveToThread(&workerThread);
    workerThread.start();
}

MainWindow::~MainWindow() { stopWorker(); }

void MainWindow::connectButtons()
{
    const auto clicks = [this](QPushButton *button, void (MainWindow::*slot)()) {
        connect(button, &QPushButton::clicked, this, slot);
    };
    clicks(ui.pushButton_settingsTab, &MainWindow::on_pushButton_settingsTab_clicked);
    clicks(ui.pushButton_presetsTab, &MainWindow::on_pushButton_presetsTab_clicked);
    clicks(ui.pushButton_midiDevicesTab, &MainWindow::on_pushButton_midiDevicesTab_clicked);
    clicks(ui.pushButton_midiMidiIn, &MainWindow::on_pushButton_midiMidiIn_clicked);
    clicks(ui.pushButton_midiExpressionPedal, &MainWindow::on_pushButton_midiExpressionPedal_clicked);
    clicks(ui.pushButton_midiSwitchOut, &MainWindow::on_pushButton_midiSwitchOut_clicked);
    clicks(ui.pushButton_previewTab, &MainWindow::on_pushButton_previewTab_clicked);
    clicks(ui.pushButton_footswitchFunctionTab, &MainWindow::on_pushButton_footswitchFunctionTab_clicked);
    clicks(ui.pushButton_loopsTab, &MainWindow::on_pushButton_loopsTab_clicked);
    clicks(ui.pushButton_switchTab, &MainWindow::on_pushButton_switchTab_clicked);
    clicks(ui.pushButton_midiTab, &MainWindow::on_pushButton_midiTab_clicked);
    clicks(ui.pushButton_wahPads, &MainWindow::on_pushButton_wahPads_clicked);
    clicks(ui.pushButton_connection, &MainWindow::on_pushButton_connection_clicked);
    clicks(ui.pushButton_logo, &MainWindow::on_pushButton_logo_clicked);
    clicks(ui.pushButton_menu, &MainWindow::on_pushButton_menu_clicked);
    clicks(ui.pushButton_minimizeWindow, &MainWindow::on_pushButton_minimizeWindow_clicked);
    clicks(ui.pushButton_closeWindow, &MainWindow::on_pushButton_closeWindow_clicked);

    pageButtons = {ui.pushButton_settingsTab, ui.pushButton_presetsTab,          ui.pushButton_midiDevicesTab,
                   ui.pushButton_midiMidiIn,  ui.pushButton_midiExpressionPedal, ui.pushButton_midiSwitchOut,
                   ui.pushButton_previewTab};
    for (QPushButton *const button : qAsConst(pageButtons))
        clicks(button, &MainWindow::tabButtonClicked);
    ui.pushButton_presetsTab->setStyleSheet(look::tabButtonStyle(true));
    ui.pushButton_presetsTab->setFocus();

    subTabButtons = {ui.pushButton_footswitchFunctionTab, ui.pushButton_loopsTab, ui.pushButton_switchTab,
                     ui.pushButton_midiTab, ui.pushButton_wahPads};
    showSubTab(ui.pushButton_footswitchFunctionTab, ui.tableWidget_footswitchFunction);
}

void MainWindow::makeMenu()
{
    menu = new QMenu(this);
    menu->setStyleSheet(look::menuStyle());
    menu->addAction(QStringLiteral("FIRMWARE UPGRADE"), this, &MainWindow::updateFirmware);
    for (const char *title : {"BACKUP", "RESTORE", "FACTORY RESET"})
        menu->addMenu(QLatin1String(title))->setStyleSheet(look::menuStyle());
}

void MainWindow::makeController(PortLister listPorts)
{
    controller = std::make_unique<DeviceController>(std::move(listPorts));
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
    connect(this, &MainWindow::connected, unit, &DeviceController::releaseSuperseded);
}

// --- Connection

bool MainWindow::isConnected() const { return ui.label_deviceStatus->text() == connectedText(); }

void MainWindow::showDisconnected()
{
    look::makeIconButton(ui.pushButton_connection, plugRed, {36, 36}, tr("No unit found: help"));
    ui.label_deviceStatus->setText(disconnectedText());
    ui.label_deviceFirmware->clear();
}

void MainWindow::deviceFound(DataFromDevice *newData)
{
    // Several requests may have timed out when the unit was lost, and each has asked for a search. Until the last of
    // them has found a unit, the next one is already letting it go again.
    if (--pendingSearches > 0) return;
    pendingSearches = 0;
    look::makeIconButton(ui.pushButton_connection, plugGreen, {36, 36}, tr("The unit is connected"));
    ui.label_deviceStatus->setText(connectedText());
    data = newData;
    if (const auto info = data->deviceInfo.load())
        ui.label_deviceFirmware->setText(
            QStringLiteral("FIRMWARE %1.%2").arg(info->firmwareMajor).arg(info->firmwareMinor));
    emit connected(data);
    requestOtherBanks();
    requestShownSettings();
}

void MainWindow::gotError(const QString &message)
{
    if (message == QLatin1String("Receiving timeout")) {
        showDisconnected();
        ++pendingSearches;
        emit searchForDevice();
        return;
    }
    if (message == QLatin1String("File doesn't exist")) hideBusy();
    QMessageBox box(QMessageBox::Critical, QStringLiteral("Error"), QString(), QMessageBox::Ok, this);
    box.setTextFormat(Qt::PlainText);
    box.setText(message);
    box.exec();
}

void MainWindow::on_pushButton_connection_clicked()
{
    if (ui.label_deviceStatus->text() == disconnectedText()) installDriversWindow.exec();
}

// --- Pages

QVector<QWidget *> MainWindow::pages() const
{
    return {ui.widget_settings,        ui.widget_presets,   ui.tableWidget_midiDevices, ui.widget_midiIn,
            ui.widget_expressionPedal, ui.widget_switchOut, ui.widget_preview};
}

void MainWindow::showPage(QWidget *page)
{
    for (QWidget *const other : pages())
        other->setVisible(other == page);
}

void MainWindow::tabButtonClicked()
{
    for (QPushButton *const button : qAsConst(pageButtons))
        button->setStyleSheet(look::tabButtonStyle(button == sender()));
}

void MainWindow::on_pushButton_settingsTab_clicked()
{
    showPage(ui.widget_settings);
    if (isConnected()) emit getSettings();
}

void MainWindow::on_pushButton_presetsTab_clicked() { showPage(ui.widget_presets); }

void MainWindow::on_pushButton_midiDevicesTab_clicked()
{
    showPage(ui.tableWidget_midiDevices);
    if (isConnected()) emit getMidiDevicesData();
}

void MainWindow::on_pushButton_midiMidiIn_clicked()
{
    showPage(ui.widget_midiIn);
    if (isConnected()) emit getMidiIn();
}

void MainWindow::on_pushButton_midiExpressionPedal_clicked()
{
    showPage(ui.widget_expressionPedal);
    if (!isConnected()) return;
    emit getMidiDevicesData();  // first: the pedal's values choose from the lists that these fill
    emit getExpressionPedal();
}

void MainWindow::on_pushButton_midiSwitchOut_clicked()
{
    showPage(ui.widget_switchOut);
    if (isConnected()) emit getSwitchOut();
}

void MainWindow::on_pushButton_previewTab_clicked()
{
    showPage(ui.widget_preview);
    preview->setFocus();  // the arrow keys choose a footswitch there
}

void MainWindow::showSubTab(QPushButton *button, QWidget *subTab)
{
    for (QWidget *const other : {ui.tableWidget_footswitchFunction, ui.tableWidget_loops, ui.tableWidget_switch,
                                 ui.tableWidget_midi, ui.tableWidget_wahPads})
        other->setVisible(other == subTab);
    for (QPushButton *const other : qAsConst(subTabButtons))
        other->setStyleSheet(look::tabButtonStyle(other == button));
}

void MainWindow::on_pushButton_footswitchFunctionTab_clicked()
{
    showSubTab(ui.pushButton_footswitchFunctionTab, ui.tableWidget_footswitchFunction);
}

void MainWindow::on_pushButton_loopsTab_clicked() { showSubTab(ui.pushButton_loopsTab, ui.tableWidget_loops); }

void MainWindow::on_pushButton_switchTab_clicked() { showSubTab(ui.pushButton_switchTab, ui.tableWidget_switch); }

void MainWindow::on_pushButton_midiTab_clicked() { showSubTab(ui.pushButton_midiTab, ui.tableWidget_midi); }

void MainWindow::on_pushButton_wahPads_clicked() { showSubTab(ui.pushButton_wahPads, ui.tableWidget_wahPads); }

// --- Window

void MainWindow::on_pushButton_logo_clicked() { aboutWindow.exec(); }

void MainWindow::on_pushButton_menu_clicked() { menu->popup(ui.pushButton_menu->mapToGlobal({0, 29})); }

void MainWindow::on_pushButton_minimizeWindow_clicked() { setWindowState(windowState() | Qt::WindowMinimized); }

void MainWindow::on_pushButton_closeWindow_clicked() { close(); }

void MainWindow::toggleLog() { Connection::enableLog = !Connection::enableLog; }

void MainWindow::mousePressEvent(QMouseEvent *event) { drag.press(event); }

void MainWindow::mouseMoveEvent(QMouseEvent *event) { drag.move(event, this); }

void MainWindow::mouseReleaseEvent(QMouseEvent *) { drag.release(); }

void MainWindow::closeEvent(QCloseEvent *event)
{
    stopWorker();
    // What the worker announced meanwhile must not open a box after the window has gone.
    QCoreApplication::removePostedEvents(this, QEvent::MetaCall);
    QMainWindow::closeEvent(event);
}

void MainWindow::stopWorker()
{
    workerThread.requestInterruption();
    workerThread.quit();
    workerThread.wait();
}
