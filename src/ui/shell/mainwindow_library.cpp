#include "ui/library/librarywidget.h"
#include "ui/preview/previewwidget.h"
#include "ui/shell/mainwindow.h"
#include "ui/shell/presetchanging.h"
#include "ui/shell/unitfiles.h"
#include "ui/tables/banktable.h"
#include "ui/tables/tabmididevices.h"

#include <QPushButton>
#include <QVBoxLayout>

void MainWindow::makeLibrary()
{
    library = new LibraryWidget(
        *arranging, [this] { return canChange(); }, ui.page(LibraryPageIndex));
    auto *layout = new QVBoxLayout(ui.page(LibraryPageIndex));
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(library);
}

void MainWindow::connectLibrary()
{
    using Unit = DeviceController;
    const Unit *const unit = controller.get();
    connect(this, &MainWindow::connected, library, &LibraryWidget::loadDataFromDevice);
    requests.connectRead(library, &LibraryWidget::recordsWanted, &Unit::readUnknown, QStringLiteral("library"),
                         [this](const std::set<RecordId> &) { library->readFailed(); });
    connect(unit, &Unit::gotBankAndPresetData, library, &LibraryWidget::gotBankAndPresetData);
    connect(unit, &Unit::gotMidiDevicesData, library, &LibraryWidget::gotMidiDevicesData);
    connect(library, &LibraryWidget::sheetsAsked, files.get(), &UnitFiles::saveSheets);
    connect(library, &LibraryWidget::changeAsked, presetChanging.get(), &PresetChanging::offer);
    connect(library, &LibraryWidget::bankOpened, this, &MainWindow::openBank);
    connect(tabMidiDevices.get(), &TabMidiDevices::presetsAsked, this, [this](const std::set<RecordId> &presets) {
        ui.pages[LibraryPageIndex].button->click();
        library->select(presets);
    });
}

void MainWindow::on_pushButton_libraryTab_clicked()
{
    showPage(LibraryPageIndex);
    if (isConnected()) library->opened();
}

void MainWindow::openBank(int bank)
{
    jumpTo(bank);
    ui.pages[PresetsPageIndex].button->click();
    focusFirstEditor();
}

void MainWindow::jumpTo(int bank)
{
    chosenBank = bank;
    bool isUnread = preview->moveTo(bank);
    for (BankTable *const table : bankTables)
        isUnread = table->moveTo(bank) || isUnread;
    if (isUnread) bankTables[shownSubTab()]->requestBank();
}

bool MainWindow::showInLibrary(const std::vector<Difference> &values)
{
    if (!library->isVisible()) return false;
    std::set<RecordId> records;
    for (const Difference &value : values) {
        if (value.record.kind < RecordId::Kind::Bank) return false;
        records.insert(value.record);
    }
    library->lightUp(records);
    jumpTo(values.front().record.number);
    return true;
}
