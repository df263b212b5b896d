#include "ui/tables/tabmididevices.h"

#include "controller/recordslots.h"
#include "model/places.h"
#include "ui/combobox.h"
#include "ui/controlvalue.h"
#include "ui/dialogs/controllerlistwindow.h"
#include "ui/look.h"
#include "ui/nameedit.h"

#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>

namespace {

constexpr int nameColumn = 0;
constexpr int sendCCFirstColumn = 2;
constexpr int controllersColumn = 4;
constexpr int usesColumn = 9;
constexpr int countAfter = 50;  // ms
constexpr QSize checkBoxSize(20, 20);
constexpr QSize pencilSize(16, 16);

}  // namespace

struct ChoiceColumn
{
    int column;
    QString name;
    QStringList items;
    int initialIndex;
    int indexWithoutUnit;
    int (*storedIndex)(const MidiDevice &device);
    void (TabMidiDevices::*changed)(int index, int device);

    static const std::array<ChoiceColumn, TabMidiDevices::ChoiceCount> &all();
};

const std::array<ChoiceColumn, TabMidiDevices::ChoiceCount> &ChoiceColumn::all()
{
    using Device = const MidiDevice &;
    using Tab = TabMidiDevices;
    static const QStringList notes = look::numberTexts(0, 127);
    static const QStringList oneEmpty{QString()};
    static const std::array<ChoiceColumn, Tab::ChoiceCount> columns{{
        {1, "Channel", withInactive(look::numberTexts(1, 16)), 0, 0, [](Device d) { return indexOrNone(d.channel); },
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
                        {"TAP TEMPO NOTE", 130},
                        {"PRESETS", 90}},
                       50);
    QHeaderView *const header = table->horizontalHeader();
    if (header->length() > table->width()) header->setSectionResizeMode(nameColumn, QHeaderView::Stretch);
    for (int row = 0; row < midiDeviceCount; ++row)
        addRow();
    look::orderTabs(table);
    counting.setSingleShot(true);
    counting.setInterval(countAfter);
    connect(&counting, &QTimer::timeout, this, &TabMidiDevices::showUses);
}

void TabMidiDevices::addRow()
{
    const int row = table->rowCount();
    table->insertRow(row);
    const auto makeButton = [&](int column, auto clicked) {
        auto *button = new QPushButton(table->viewport());
        button->setFont(look::pixelFont(DataFromDevice::fontTableContent));
        button->setStyleSheet(look::plainButtonStyle(look::selectionColor));
        connect(button, &QPushButton::clicked, this, clicked);
        table->setCellWidget(row, column, button);
        return button;
    };

    auto *name = new NameEdit(table->viewport());
    connect(name, &QLineEdit::editingFinished, this, [this, row] { deviceNameChanged(row); });
    name->setContextMenuPolicy(Qt::CustomContextMenu);  // it is the device's, not the text's
    connect(name, &QWidget::customContextMenuRequested, this,
            [this, name, row](const QPoint &place) { emit menuAsked(row + 1, name->mapToGlobal(place)); });
    put(row, nameColumn, name, tr("Name"));
    names << name;

    QPushButton *const sendCCFirst = makeButton(sendCCFirstColumn, [this, row] { sendFirstCCChanged(row); });
    sendCCFirst->setIconSize(checkBoxSize);
    sendCCFirst->setToolTip(tr("Send the control changes before the program change"));
    sendCCFirstButtons << sendCCFirst;
    showSendCCFirst(row, false);

    QPushButton *const controllers = makeButton(controllersColumn, [this, row] { controllersWidgetClicked(row); });
    controllers->setText(QStringLiteral("EDIT"));
    controllers->setIcon(look::icon("edit"));
    controllers->setIconSize(pencilSize);
    controllers->setAccessibleName(tr("Edit the controllers of MIDI device %1").arg(row + 1));

    QPushButton *const uses = makeButton(usesColumn, [this, row] {
        if (data) emit presetsAsked(usesOf(knownPresets(), {row + 1}));
    });
    uses->setAccessibleName(tr("Presets that send to MIDI device %1").arg(row + 1));
    uses->setToolTip(tr("How many presets send to it; a click shows them"));
    uses->setEnabled(false);
    useButtons << uses;
    addChoiceBoxes(row);
}

void TabMidiDevices::addChoiceBoxes(int row)
{
    for (int choice = 0; choice < ChoiceCount; ++choice) {
        const ChoiceColumn &column = ChoiceColumn::all()[static_cast<std::size_t>(choice)];
        ComboBox *const box = look::makeComboBox(table->viewport(), column.items);
        box->showStored(column.initialIndex);
        connect(box, qOverload<int>(&QComboBox::currentIndexChanged), this,
                [this, choice, row](int index) { choiceChanged(static_cast<Choice>(choice), row, index); });
        put(row, column.column, box, column.name);
        boxes[static_cast<std::size_t>(choice)] << box;
    }
}

void TabMidiDevices::put(int row, int column, QWidget *editor, const QString &name)
{
    editor->setAccessibleName(tr("%1 of MIDI device %2").arg(name).arg(row + 1));
    table->setCellWidget(row, column, editor);
}

void TabMidiDevices::loadDataFromDevice(DataFromDevice *dataFromDevice) { data = dataFromDevice; }

std::shared_ptr<const MidiDevice> TabMidiDevices::storedDevice(int row) const
{
    return data ? data->midiDevices.at(static_cast<std::size_t>(row)).load() : nullptr;
}

void TabMidiDevices::gotMidiDevicesData()
{
    for (int row = 0; row < midiDeviceCount; ++row)
        if (const auto device = storedDevice(row)) showDevice(row, *device);
    countUses();
}

void TabMidiDevices::countUses() { counting.start(); }

UnitPart TabMidiDevices::knownPresets() const
{
    static const std::set<RecordId> presets = [] {
        std::set<RecordId> all = allRecords();
        std::erase_if(all, [](const RecordId &id) { return id.kind != RecordId::Kind::Preset; });
        return all;
    }();
    return data ? knownPart(*data, presets) : UnitPart();
}

QString TabMidiDevices::usesText(const UnitPart &presets, const MidiTarget &target)
{
    const QString count = QString::number(usesOf(presets, target).size());
    return presets.records.size() < std::size_t{bankCount} * presetCount ? count + QLatin1Char('+') : count;
}

void TabMidiDevices::showUses()
{
    if (!table->isVisible()) return;
    const UnitPart presets = knownPresets();
    for (int row = 0; row < useButtons.size(); ++row) {
        useButtons[row]->setText(usesText(presets, {row + 1}));
        useButtons[row]->setEnabled(true);
    }
}

void TabMidiDevices::showDevice(int row, const MidiDevice &device)
{
    names[row]->showStored(QString::fromStdString(device.name));
    showSendCCFirst(row, device.sendCCFirst);

    QStringList controllers;
    for (const Controller &controller : device.controllers)
        controllers << QString::fromStdString(controller.name);
    boxes[TapController][row]->setItems(controllers);

    for (std::size_t choice = 0; const ChoiceColumn &column : ChoiceColumn::all())
        boxes[choice++][row]->showStored(column.storedIndex(device));
    showTapColumns(row, device.tapTempo);
}

void TabMidiDevices::showTapColumns(int row, MidiDeviceTapTempo mode)
{
    const auto show = [&](std::initializer_list<Choice> columns, MidiDeviceTapTempo user) {
        const QString reason = mode == user
                                   ? QString()
                                   : tr("Used while TAP TEMPO is %1").arg(labels<MidiDeviceTapTempo>()[toIndex(user)]);
        for (const Choice column : columns)
            boxes[column][row]->setIdle(reason);
    };
    show({TapController, TapControllerValue}, MidiDeviceTapTempo::TapCtrl);
    show({NoteNumber, NoteType}, MidiDeviceTapTempo::TapTempoNote);
}

void TabMidiDevices::showSendCCFirst(int row, bool on)
{
    QPushButton *const button = sendCCFirstButtons[row];
    button->setIcon(on ? checkedIcon : uncheckedIcon);
    button->setAccessibleName(tr("Send CC first, MIDI device %1: %2").arg(row + 1).arg(on ? tr("on") : tr("off")));
}

void TabMidiDevices::deviceNameChanged(int row)
{
    NameEdit *const edit = names[row];
    if (!edit->isAltered()) return;
    const QString typed = edit->text();
    edit->takeBack();
    if (storedDevice(row)) emit changeMidiDeviceNameSignal(typed, row + 1);
}

void TabMidiDevices::choiceChanged(Choice choice, int row, int index)
{
    const ChoiceColumn &column = ChoiceColumn::all()[choice];
    ComboBox *const box = boxes[choice][row];
    const auto device = storedDevice(row);
    if (!device) return box->showStored(column.indexWithoutUnit);
    const int stored = column.storedIndex(*device);
    if (index == stored) return;
    if (choice != TapControllerValue) box->showStored(stored);
    (this->*column.changed)(index, row + 1);
}

void TabMidiDevices::deviceChannelChanged(int index, int device)
{
    emit changeMidiDeviceChannelSignal(valueOrNone(index), device);
}

void TabMidiDevices::tapTempoChanged(int index, int device)
{
    emit changeTapTempo(fromIndex<MidiDeviceTapTempo>(index), device);
}

void TabMidiDevices::tapControllerChanged(int index, int device) { emit changeTapController(index + 1, device); }

void TabMidiDevices::tapControllerValueChanged(int index, int device)
{
    emit changeTapControllerValue(controlValueAt(index), device);
}

void TabMidiDevices::noteNumberChanged(int index, int device) { emit changeNoteNumber(index, device); }

void TabMidiDevices::noteTypeChanged(int index, int device)
{
    emit changeNoteType(fromIndex<TapTempoNote>(index), device);
}

void TabMidiDevices::sendFirstCCChanged(int row)
{
    const auto device = storedDevice(row);
    if (!device) return;
    showSendCCFirst(row, device->sendCCFirst);
    emit changeSendCCFirst(!device->sendCCFirst, row + 1);
}

void TabMidiDevices::controllersWidgetClicked(int row)
{
    const auto stored = storedDevice(row);
    if (!stored) return;
    const RecordId id{RecordId::Kind::MidiDevice, row + 1};
    const MidiDevice expected = edits.expected(id, *stored);
    if (controllerList) controllerList->deleteLater();
    controllerList = new ControllerListWindow(expected, row, table->window());
    controllerList->setObstacle([this, row] {
        QString outer = edits.obstacle();
        if (!outer.isEmpty() || storedDevice(row)) return outer;
        return tr("This MIDI device has not been read from the unit that is connected now.");
    });
    const UnitPart presets = knownPresets();
    QStringList counts;
    for (int controller = 1; controller <= controllerCount; ++controller) {
        const bool isDefined = expected.controllers.at(static_cast<std::size_t>(controller) - 1) != Controller();
        const MidiTarget target{row + 1, controller};
        counts << (isDefined || !usesOf(presets, target).empty() ? usesText(presets, target) : QString());
    }
    controllerList->showUses(counts);
    if (controllerList->exec() != QDialog::Accepted) return;
    const ControllerEdit edit = controllerList->edit();
    if (controllerList->order() == sameOrder)
        edits.submit(places::midiDevice(row + 1) + QStringLiteral(": CONTROLLERS"), id, edit,
                     [this, row, edit] { return send(row, edit); });
    else
        emit controllersMoved(row + 1, edit, controllerList->order());
    if (const auto asked = controllerList->askedUses())
        emit presetsAsked(usesOf(presets, {row + 1, static_cast<int>(*asked) + 1}));
}

bool TabMidiDevices::send(int row, const ControllerEdit &edit)
{
    const auto stored = storedDevice(row);
    if (!stored) return false;
    QVector<QString> texts;
    QVector<int> numbers;
    for (const Controller &controller : edit.appliedTo(*stored).controllers) {
        texts << QString::fromStdString(controller.name);
        numbers << controller.number;
    }
    emit controllersNamesOrNumberChanged(row + 1, texts, numbers);
    return true;
}
