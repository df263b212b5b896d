#include "ui/tabmididevices.h"

#include "ui/controllerlistwindow.h"
#include "ui/controlvalue.h"
#include "ui/look.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTableWidget>

namespace {

constexpr int nameColumn = 0;
constexpr int sendCCFirstColumn = 2;
constexpr int controllersColumn = 4;
constexpr QSize checkBoxSize(20, 20);
constexpr QSize pencilSize(16, 16);

struct ChoiceColumn
{
    int column;
    QString name;
    QStringList items;
    int initialIndex;
    int indexWithoutUnit;
    int (*storedIndex)(const MidiDevice &device);
    void (TabMidiDevices::*changed)(int index);
};

const std::array<ChoiceColumn, 6> &choiceColumns()
{
    using Device = const MidiDevice &;
    using Tab = TabMidiDevices;
    static const QStringList channels = QStringList("INACTIVE") + look::numberTexts(1, 16);
    static const QStringList notes = look::numberTexts(0, 127);
    static const QStringList oneEmpty{QString()};
    static const std::array<ChoiceColumn, 6> columns{{
        {1, "Channel", channels, 0, 0, [](Device d) { return d.channel == none ? 0 : d.channel; },
         &Tab::deviceChannelChanged},
        {3, "Tap tempo", labels<MidiDeviceTapTempo>(), 0, 0, [](Device d) { return toIndex(d.tapTempo); },
         &Tab::tapTempoChanged},
        {5, "Tap controller", oneEmpty, 0, -1, [](Device d) { return d.tapController - 1; },
         &Tab::tapControllerChanged},
        {6, "Tap controller value", controlValueTexts(), inactiveIndex, inactiveIndex,
         [](Device d) { return controlValueIndex(d.tapControllerValue); }, &Tab::tapControllerValueChanged},
        {7, "Tap tempo note number", notes, 0, 0, [](Device d) { return int(d.noteNumber); }, &Tab::noteNumberChanged},
        {8, "Tap tempo note", labels<TapTempoNote>(), 1, 1, [](Device d) { return toIndex(d.noteType); },
         &Tab::noteTypeChanged},
    }};
    return columns;
}

}  // namespace

TabMidiDevices::TabMidiDevices(QTableWidget *tableWidget) : table(tableWidget)
{
    look::prepareTable(table,
                       {{"DEVICE NAME", 160},
                        {"CHANNEL", 95},
                        {"SEND CC FIRST", 100},
                        {"TAP TEMPO", 145},
                        {"CONTROLLERS", 110},
                        {"TAP CONTROLLER", 130},
                        {"TAP CONTROLLER VALUE", 170},
                        {"TAP TEMPO NOTE NO", 150},
                        {"TAP TEMPO NOTE", 130}},
                       50);
    for (int row = 0; row < midiDeviceCount; ++row)
        addRow();
    look::orderTabs(table);
}

void TabMidiDevices::addRow()
{
    const int row = table->rowCount();
    table->insertRow(row);
    const auto put = [&](int column, QWidget *editor, const QString &name) {
        editor->setAccessibleName(tr("%1 of MIDI device %2").arg(name).arg(row + 1));
        table->setCellWidget(row, column, editor);
    };
    const auto makeButton = [&](void (TabMidiDevices::*clicked)()) {
        auto *button = new QPushButton;
        button->setFont(look::pixelFont(DataFromDevice::fontTableContent));
        button->setStyleSheet(look::plainButtonStyle(look::selectionColor));
        connect(button, &QPushButton::clicked, this, clicked);
        return button;
    };

    QLineEdit *const name = look::makeEdit();
    connect(name, &QLineEdit::editingFinished, this, &TabMidiDevices::deviceNameChanged);
    put(nameColumn, name, tr("Name"));
    names << name;

    QPushButton *const sendCCFirst = makeButton(&TabMidiDevices::sendFirstCCChanged);
    sendCCFirst->setIconSize(checkBoxSize);
    sendCCFirst->setToolTip(tr("Send the control changes before the program change"));
    table->setCellWidget(row, sendCCFirstColumn, sendCCFirst);
    sendCCFirstButtons << sendCCFirst;
    showSendCCFirst(row, false);

    QPushButton *const controllers = makeButton(&TabMidiDevices::controllersWidgetClicked);
    controllers->setText(QStringLiteral("EDIT"));
    controllers->setIcon(QIcon(QStringLiteral(":/images/edit.png")));
    controllers->setIconSize(pencilSize);
    put(controllersColumn, controllers, tr("Edit the controllers"));
    controllersButtons << controllers;

    for (std::size_t choice = 0; const ChoiceColumn &column : choiceColumns()) {
        QComboBox *const box = look::makeComboBox(column.items);
        box->setCurrentIndex(column.initialIndex);
        connect(box, qOverload<int>(&QComboBox::currentIndexChanged), this, column.changed);
        put(column.column, box, column.name);
        boxes[choice++] << box;
    }
}

void TabMidiDevices::show() { table->show(); }

void TabMidiDevices::hide() { table->hide(); }

bool TabMidiDevices::isVisible() const { return table->isVisible(); }

void TabMidiDevices::loadDataFromDevice(DataFromDevice *dataFromDevice) { data = dataFromDevice; }

std::shared_ptr<const MidiDevice> TabMidiDevices::storedDevice(int row) const
{
    return data ? data->midiDevices.at(static_cast<std::size_t>(row)).load() : nullptr;
}

void TabMidiDevices::gotMidiDevicesData()
{
    for (int row = 0; row < midiDeviceCount; ++row)
        if (const auto device = storedDevice(row)) showDevice(row, *device);
}

void TabMidiDevices::showDevice(int row, const MidiDevice &device)
{
    look::showText(names[row], QString::fromStdString(device.name));
    showSendCCFirst(row, device.sendCCFirst);

    QStringList controllers;
    for (const Controller &controller : device.controllers)
        controllers << QString::fromStdString(controller.name);
    QComboBox *const tapController = boxes[TapController][row];
    const QSignalBlocker blocker(tapController);
    tapController->clear();
    tapController->addItems(controllers);

    for (std::size_t choice = 0; const ChoiceColumn &column : choiceColumns())
        look::showIndex(boxes[choice++][row], column.storedIndex(device));
}

void TabMidiDevices::showSendCCFirst(int row, bool on)
{
    QPushButton *const button = sendCCFirstButtons[row];
    button->setIcon(on ? checkedIcon : uncheckedIcon);
    button->setAccessibleName(tr("Send CC first, MIDI device %1: %2").arg(row + 1).arg(on ? tr("on") : tr("off")));
}

void TabMidiDevices::deviceNameChanged()
{
    auto *const edit = qobject_cast<QLineEdit *>(sender());
    const int row = names.indexOf(edit);
    if (row < 0) return;
    const auto device = storedDevice(row);
    if (!device) {
        edit->clear();
        return;
    }
    const QString typed = edit->text();
    const QString stored = QString::fromStdString(device->name);
    if (typed == stored) return;
    look::showText(edit, stored);
    emit changeMidiDeviceNameSignal(typed, row + 1);
}

std::optional<int> TabMidiDevices::takeChoice(Choice choice, int index)
{
    auto *const box = qobject_cast<QComboBox *>(sender());
    const int row = boxes[choice].indexOf(box);
    if (row < 0) return std::nullopt;
    const ChoiceColumn &column = choiceColumns()[choice];
    const auto device = storedDevice(row);
    if (!device) {
        look::showIndex(box, column.indexWithoutUnit);
        return std::nullopt;
    }
    const int stored = column.storedIndex(*device);
    if (index == stored) return std::nullopt;
    if (choice != TapControllerValue) look::showIndex(box, stored);
    return row + 1;
}

void TabMidiDevices::deviceChannelChanged(int index)
{
    if (const auto device = takeChoice(Channel, index))
        emit changeMidiDeviceChannelSignal(index == 0 ? none : index, *device);
}

void TabMidiDevices::tapTempoChanged(int index)
{
    if (const auto device = takeChoice(TapTempo, index))
        emit changeTapTempo(fromIndex<MidiDeviceTapTempo>(index), *device);
}

void TabMidiDevices::tapControllerChanged(int currentIndex)
{
    if (const auto device = takeChoice(TapController, currentIndex))
        emit changeTapController(currentIndex + 1, *device);
}

void TabMidiDevices::tapControllerValueChanged(int index)
{
    if (const auto device = takeChoice(TapControllerValue, index))
        emit changeTapControllerValue(controlValueAt(index), *device);
}

void TabMidiDevices::noteNumberChanged(int index)
{
    if (const auto device = takeChoice(NoteNumber, index)) emit changeNoteNumber(index, *device);
}

void TabMidiDevices::noteTypeChanged(int index)
{
    if (const auto device = takeChoice(NoteType, index)) emit changeNoteType(fromIndex<TapTempoNote>(index), *device);
}

void TabMidiDevices::sendFirstCCChanged()
{
    const int row = sendCCFirstButtons.indexOf(qobject_cast<QPushButton *>(sender()));
    if (row < 0) return;
    const auto device = storedDevice(row);
    if (!device) return;
    showSendCCFirst(row, device->sendCCFirst);
    emit changeSendCCFirst(!device->sendCCFirst, row + 1);
}

void TabMidiDevices::controllersWidgetClicked()
{
    const int row = controllersButtons.indexOf(qobject_cast<QPushButton *>(sender()));
    if (row < 0 || !storedDevice(row)) return;
    if (controllerList) controllerList->deleteLater();
    controllerList = new ControllerListWindow(data, row, table->window());
    if (controllerList->exec() != QDialog::Accepted || !storedDevice(row)) return;  // the unit may have gone meanwhile
    emit controllersNamesOrNumberChanged(row + 1, controllerList->names(), controllerList->numbers());
}
