#include "controller/devicecontroller.h"
#include "ui/mainwindow.h"
#include "ui/previewwidget.h"
#include "ui/tabfootswitchfunction.h"
#include "ui/tabloops.h"
#include "ui/tabmidi.h"
#include "ui/tabmididevices.h"
#include "ui/tabswitch.h"
#include "ui/tabwahpads.h"

#include <QVBoxLayout>

#include <set>

void MainWindow::makeTabs()
{
    tabFootswitchFunction = std::make_unique<TabFootswitchFunction>(ui.tableWidget_footswitchFunction);
    tabLoops = std::make_unique<TabLoops>(ui.tableWidget_loops);
    tabSwitch = std::make_unique<TabSwitch>(ui.tableWidget_switch);
    tabMidi = std::make_unique<TabMidi>(ui.tableWidget_midi);
    tabMidiDevices = std::make_unique<TabMidiDevices>(ui.tableWidget_midiDevices);
    tabWahPads = std::make_unique<TabWahPads>(ui.tableWidget_wahPads);

    preview = new PreviewWidget(ui.widget_preview);
    auto *layout = new QVBoxLayout(ui.widget_preview);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(preview);
}

void MainWindow::connectTabs()
{
    DeviceController *const unit = controller.get();
    // The first request of a new connection is the footswitch table's bank.
    connect(this, &MainWindow::connected, tabFootswitchFunction.get(), &BankTable::loadDataFromDevice);
    connect(this, &MainWindow::connected, tabLoops.get(), &BankTable::loadDataFromDevice);
    connect(this, &MainWindow::connected, tabSwitch.get(), &BankTable::loadDataFromDevice);
    connect(this, &MainWindow::connected, tabWahPads.get(), &BankTable::loadDataFromDevice);
    connect(this, &MainWindow::connected, tabMidi.get(), &BankTable::loadDataFromDevice);
    connect(this, &MainWindow::connected, tabMidiDevices.get(), &TabMidiDevices::loadDataFromDevice);
    connect(this, &MainWindow::connected, preview, &PreviewWidget::loadDataFromDevice);

    for (BankTable *const tab : {static_cast<BankTable *>(tabLoops.get()), static_cast<BankTable *>(tabSwitch.get()),
                                 static_cast<BankTable *>(tabWahPads.get()), static_cast<BankTable *>(tabMidi.get()),
                                 static_cast<BankTable *>(tabFootswitchFunction.get())}) {
        connect(tab, &BankTable::getBankAndPresetData, unit, &DeviceController::getBankAndPresetData);
        connect(unit, &DeviceController::gotBankAndPresetData, tab, &BankTable::gotBankAndPresetData);
        connect(tab, &BankTable::changeBankNameSignal, unit, &DeviceController::changeBankName);
        connect(tab, &BankTable::changePresetNameSignal, unit, &DeviceController::changePresetName);
    }
    connect(preview, &PreviewWidget::getBankAndPresetData, unit, &DeviceController::getBankAndPresetData);
    connect(unit, &DeviceController::gotBankAndPresetData, preview, &PreviewWidget::gotBankAndPresetData);
    connect(unit, &DeviceController::gotMidiDevicesData, preview, &PreviewWidget::gotMidiDevicesData);

    connect(tabLoops.get(), &TabLoops::changeBufferLoop, unit, &DeviceController::changeBufferLoop);
    connect(tabLoops.get(), &TabLoops::changeLoopType, unit, &DeviceController::changeLoopType);
    connect(tabSwitch.get(), &TabSwitch::changeSwitchType, unit, &DeviceController::changeSwitchType);

    const TabWahPads *const pads = tabWahPads.get();
    connect(pads, &TabWahPads::changePresetNumberWahPad1, unit, &DeviceController::changePresetNumberWahPad1);
    connect(pads, &TabWahPads::changePresetNumberWahPad2, unit, &DeviceController::changePresetNumberWahPad2);
    connect(pads, &TabWahPads::changePresetWahPad1, unit, &DeviceController::changePresetWahPad1);
    connect(pads, &TabWahPads::changePresetWahPad2, unit, &DeviceController::changePresetWahPad2);

    const TabMidi *const midi = tabMidi.get();
    connect(midi, &TabMidi::getMidiDevicesData, unit, &DeviceController::getMidiDevicesData);
    connect(midi, &TabMidi::getExpressionPedalData, unit, &DeviceController::getExpressionPedalData);
    connect(midi, &TabMidi::changeProgramChangeNumber, unit, &DeviceController::changeProgramChangeNumber);
    connect(midi, &TabMidi::changePresetExpressionPedal, unit, &DeviceController::changePresetExpressionPedal);
    connect(midi, &TabMidi::changeControlChangeData, unit, &DeviceController::changeControlChangeData);
    connect(unit, &DeviceController::gotMidiDevicesData, midi, &TabMidi::gotMidiDevicesData);

    connect(tabFootswitchFunction.get(), &TabFootswitchFunction::changeFootswitchFunctionSignal, unit,
            &DeviceController::changeFootswitchFunction);

    const TabMidiDevices *const devices = tabMidiDevices.get();
    connect(unit, &DeviceController::gotMidiDevicesData, devices, &TabMidiDevices::gotMidiDevicesData);
    connect(devices, &TabMidiDevices::changeMidiDeviceNameSignal, unit, &DeviceController::changeMidiDeviceName);
    connect(devices, &TabMidiDevices::changeMidiDeviceChannelSignal, unit, &DeviceController::changeMidiDeviceChannel);
    connect(devices, &TabMidiDevices::changeSendCCFirst, unit, &DeviceController::changeSendCCFirst);
    connect(devices, &TabMidiDevices::changeTapTempo, unit, &DeviceController::changeTapTempo);
    connect(devices, &TabMidiDevices::changeTapController, unit, &DeviceController::changeTapController);
    connect(devices, &TabMidiDevices::changeTapControllerValue, unit, &DeviceController::changeTapControllerValue);
    connect(devices, &TabMidiDevices::changeNoteNumber, unit, &DeviceController::changeNoteNumber);
    connect(devices, &TabMidiDevices::changeNoteType, unit, &DeviceController::changeNoteType);
    connect(devices, &TabMidiDevices::controllersNamesOrNumberChanged, unit,
            &DeviceController::controllersNamesOrNumberChanged);
}

void MainWindow::requestOtherBanks()
{
    std::set<int> requested{tabFootswitchFunction->currentBank()};
    const auto request = [&](auto &view) {
        if (requested.insert(view.currentBank()).second) view.requestBank();
    };
    request(*tabLoops);
    request(*tabSwitch);
    request(*tabWahPads);
    request(*tabMidi);
    request(*preview);
}
