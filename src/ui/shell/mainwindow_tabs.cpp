#include "model/places.h"
#include "ui/library/librarywidget.h"
#include "ui/preview/previewwidget.h"
#include "ui/shell/arranging.h"
#include "ui/shell/devicearranging.h"
#include "ui/shell/mainwindow.h"
#include "ui/shell/unitfiles.h"
#include "ui/tables/tabfootswitchfunction.h"
#include "ui/tables/tabloops.h"
#include "ui/tables/tabmidi.h"
#include "ui/tables/tabmididevices.h"
#include "ui/tables/tabswitch.h"
#include "ui/tables/tabwahpads.h"

#include <QTableWidget>
#include <QVBoxLayout>

#include <set>

namespace {

using Unit = DeviceController;

/// What a change of a bank is about: its signal begins with the bank.
auto ofBank(const char *what)
{
    return [what](int bank, auto...) { return places::bank(bank) + QStringLiteral(": ") + QLatin1String(what); };
}

/// What a change of a MIDI device is about: its signal ends with the device.
auto ofMidiDevice(const char *what)
{
    return [what](auto, int number) { return places::midiDevice(number) + QStringLiteral(": ") + QLatin1String(what); };
}

QString presetWords(int bank, int preset, const QString &what)
{
    return places::preset(bank, preset) + QStringLiteral(": ") + what;
}

}  // namespace

void MainWindow::makeTabs()
{
    tabFootswitchFunction = std::make_unique<TabFootswitchFunction>(ui.table(FootswitchFunctionTab));
    tabLoops = std::make_unique<TabLoops>(ui.table(LoopsTab));
    tabSwitch = std::make_unique<TabSwitch>(ui.table(SwitchTab));
    tabMidi = std::make_unique<TabMidi>(ui.table(MidiTab));
    tabMidiDevices = std::make_unique<TabMidiDevices>(static_cast<QTableWidget *>(ui.page(MidiDevicesPageIndex)));
    tabWahPads = std::make_unique<TabWahPads>(ui.table(WahPadsTab));
    bankTables = {tabFootswitchFunction.get(), tabLoops.get(), tabSwitch.get(), tabMidi.get(), tabWahPads.get()};

    preview = new PreviewWidget(ui.page(PreviewPageIndex));
    auto *layout = new QVBoxLayout(ui.page(PreviewPageIndex));
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(preview);
}

void MainWindow::connectTabs()
{
    // The first request of a new connection is the footswitch table's bank.
    for (BankTable *const table : bankTables)
        connect(this, &MainWindow::connected, table, &BankTable::loadDataFromDevice);
    connect(this, &MainWindow::connected, tabMidiDevices.get(), &TabMidiDevices::loadDataFromDevice);
    connect(this, &MainWindow::connected, preview, &PreviewWidget::loadDataFromDevice);
    connectBanks();
    connectPreview();
    connectBankChanges();
    connectMidi();
}

void MainWindow::connectBanks()
{
    Unit *const unit = controller.get();
    for (std::size_t index = 0; index < bankTables.size(); ++index) {
        BankTable *const tab = bankTables[index];
        requests.connectRead(tab, &BankTable::getBankAndPresetData, &Unit::getBankAndPresetData,
                             ui.subTabs[index].table->objectName(), [this](int bank) { bankReadFailed(bank); });
        connect(unit, &Unit::gotBankAndPresetData, tab, &BankTable::gotBankAndPresetData);
        connect(tab, &BankTable::bankChosen, this, [this](int bank) { chosenBank = bank; });
        connect(tab, &BankTable::menuAsked, this,
                [this](const RecordId &place, const QPoint &position) { arranging->showMenu(place, position); });
        connectNames(tab);
    }
    connectNames(library);
}

void MainWindow::connectPreview()
{
    Unit *const unit = controller.get();
    requests.connectRead(preview, &PreviewWidget::getBankAndPresetData, &Unit::getBankAndPresetData, "preview",
                         [this](int bank) { bankReadFailed(bank); });
    connect(unit, &Unit::gotBankAndPresetData, preview, &PreviewWidget::gotBankAndPresetData);
    connect(unit, &Unit::gotMidiDevicesData, preview, &PreviewWidget::gotMidiDevicesData);
    connect(preview, &PreviewWidget::bankChosen, this, [this](int bank) { chosenBank = bank; });
    connect(preview, &PreviewWidget::menuAsked, this, [this](const RecordId &place, const QPoint &position) {
        arranging->showMenu(place, position, preview->actions());
    });
    connect(preview, &PreviewWidget::sheetsAsked, files.get(), [this](int bank) { files->saveSheets({bank}); });
    connect(preview, &PreviewWidget::allSheetsAsked, files.get(), &UnitFiles::saveAllSheets);
}

void MainWindow::connectBankChanges()
{
    requests.connectChange(tabFootswitchFunction.get(), &TabFootswitchFunction::changeFootswitchFunctionSignal,
                           &Unit::changeFootswitchFunction, [](FootswitchType, int bank, int preset) {
                               return presetWords(bank, preset, "FOOTSWITCH FUNCTION");
                           });
    requests.connectChange(tabLoops.get(), &TabLoops::changeBufferLoop, &Unit::changeBufferLoop,
                           [](LoopType, int bank, int preset) { return presetWords(bank, preset, "BUFFER"); });
    requests.connectChange(tabLoops.get(), &TabLoops::changeLoopType, &Unit::changeLoopType,
                           [](LoopType, int bank, int preset, int loop) {
                               return presetWords(bank, preset, QStringLiteral("LOOP %1").arg(loop + 1));
                           });
    requests.connectChange(tabSwitch.get(), &TabSwitch::changeSwitchType, &Unit::changeSwitchType,
                           [](SwitchType, int bank, int preset, int slot) {
                               return presetWords(bank, preset, QStringLiteral("SWITCH %1").arg(slot + 1));
                           });

    TabWahPads *const pads = tabWahPads.get();
    requests.connectChange(pads, &TabWahPads::changePresetNumberWahPad1, &Unit::changePresetNumberWahPad1,
                           ofBank("WAH PAD 1 PRESET"));
    requests.connectChange(pads, &TabWahPads::changePresetNumberWahPad2, &Unit::changePresetNumberWahPad2,
                           ofBank("WAH PAD 2 PRESET"));
    requests.connectChange(pads, &TabWahPads::changePresetWahPad1, &Unit::changePresetWahPad1,
                           ofBank("WAH PAD 1 ACTION"));
    requests.connectChange(pads, &TabWahPads::changePresetWahPad2, &Unit::changePresetWahPad2,
                           ofBank("WAH PAD 2 ACTION"));
}

template <typename View>
void MainWindow::connectNames(View *view)
{
    requests.connectChange(view, &View::changeBankNameSignal, &Unit::changeBankName,
                           [](const QString &, int bank) { return places::bank(bank) + ": NAME"; });
    requests.connectChange(view, &View::changePresetNameSignal, &Unit::changePresetName,
                           [](const QString &, int bank, int preset) { return presetWords(bank, preset, "NAME"); });
}

void MainWindow::connectMidi()
{
    Unit *const unit = controller.get();
    const Submit submit = [this](const LateChange &change) {
        requests.change({change.words, change.send, change.settled});
    };
    const Obstacle unitIsGone = [this] { return obstacle(); };

    TabMidi *const midi = tabMidi.get();
    midi->setSubmit(submit, unitIsGone);
    requests.connectRead(midi, &TabMidi::getMidiDevicesData, &Unit::getMidiDevicesData, "midiDevices", [] {});
    connect(midi, &TabMidi::getExpressionPedalData, unit, &Unit::getExpressionPedalData);
    // These are made by a submitted edit when its turn has come.
    connect(midi, &TabMidi::changeProgramChangeNumber, unit, &Unit::changeProgramChangeNumber);
    connect(midi, &TabMidi::changePresetExpressionPedal, unit, &Unit::changePresetExpressionPedal);
    connect(midi, &TabMidi::changeControlChangeData, unit, &Unit::changeControlChangeData);
    connect(unit, &Unit::gotMidiDevicesData, midi, &TabMidi::gotMidiDevicesData);

    TabMidiDevices *const devices = tabMidiDevices.get();
    devices->setSubmit(submit, unitIsGone);
    connect(devices, &TabMidiDevices::controllersNamesOrNumberChanged, unit, &Unit::controllersNamesOrNumberChanged);
    connect(unit, &Unit::gotMidiDevicesData, devices, &TabMidiDevices::gotMidiDevicesData);
    connect(unit, &Unit::gotBankAndPresetData, devices, &TabMidiDevices::countUses);
    connect(devices, &TabMidiDevices::menuAsked, deviceArranging.get(), &DeviceArranging::showMenu);
    connect(devices, &TabMidiDevices::controllersMoved, deviceArranging.get(), &DeviceArranging::reorderControllers);
    const auto changes = [&](auto signal, auto slot, const char *what) {
        requests.connectChange(devices, signal, slot, ofMidiDevice(what));
    };
    changes(&TabMidiDevices::changeMidiDeviceNameSignal, &Unit::changeMidiDeviceName, "NAME");
    changes(&TabMidiDevices::changeMidiDeviceChannelSignal, &Unit::changeMidiDeviceChannel, "CHANNEL");
    changes(&TabMidiDevices::changeSendCCFirst, &Unit::changeSendCCFirst, "SEND CC FIRST");
    changes(&TabMidiDevices::changeTapTempo, &Unit::changeTapTempo, "TAP TEMPO");
    changes(&TabMidiDevices::changeTapController, &Unit::changeTapController, "TAP CONTROLLER");
    changes(&TabMidiDevices::changeTapControllerValue, &Unit::changeTapControllerValue, "TAP CONTROLLER VALUE");
    changes(&TabMidiDevices::changeNoteNumber, &Unit::changeNoteNumber, "TAP TEMPO NOTE NO");
    changes(&TabMidiDevices::changeNoteType, &Unit::changeNoteType, "TAP TEMPO NOTE");
}

void MainWindow::requestOtherBanks()
{
    std::set<int> requested{tabFootswitchFunction->currentBank()};
    const auto request = [&](auto &view) {
        if (requested.insert(view.currentBank()).second) view.requestBank();
    };
    for (BankTable *const table : bankTables)
        request(*table);
    request(*preview);
}

void MainWindow::bankReadFailed(int bank)
{
    for (BankTable *const table : bankTables)
        table->readFailed(bank);
    preview->readFailed(bank);
}
