#include "ui/dialogs/midieditorwindow.h"

#include "model/midiuse.h"
#include "ui/combobox.h"
#include "ui/controlvalue.h"
#include "ui/namebutton.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

#include <utility>

namespace {

constexpr int noItem = -1;
constexpr int lineSpacing = 6;  // pixels

ComboBox *makeBox(QWidget *parent, const QStringList &items, const QString &color)
{
    ComboBox *const box = look::makeComboBox(parent, items);
    look::setBackgroundLine(box, QStringLiteral("  background-color:%1;").arg(color));
    return box;
}

}  // namespace

MidiEditorWindow::MidiEditorWindow(const PresetData &preset, const MidiDevice &definition, int device, QWidget *parent)
    : MidiDeviceDialog(QStringLiteral("MidiEditorWindow"), parent), deviceNumber(static_cast<std::uint8_t>(device + 1))
{
    const QString color = look::functionColor(preset.footswitchFunction);

    QStringList names;
    for (const std::uint8_t position : definedControllers(definition)) {
        positions << position;
        names << QString::fromStdString(definition.controllers.at(position - 1U).name);
    }

    auto *columns = new QHBoxLayout;
    columns->setSpacing(28);
    columns->addLayout(makeChoices(names, color));
    columns->addLayout(makeControllers(names, color));
    QVBoxLayout *const layout = makeRows();
    layout->addWidget(makeTitle(device, definition.name));
    presetPlace = makeLabel(QStringLiteral("label_preset"), QString(), DataFromDevice::fontSettingsLabel);
    presetPlace->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);  // nor does a long name of a preset
    presetPlace->hide();
    layout->addWidget(presetPlace);
    layout->addLayout(columns);
    layout->addLayout(makeAnswers());

    const std::uint8_t program = preset.programChanges.at(static_cast<std::size_t>(device));
    programChanges->setCurrentIndex(program == none ? 0 : program);
    showValues(preset.controlChanges);
    showPedal(preset.expressionPedal);
    for (const ComboBox *const box : findChildren<ComboBox *>())
        shown[box] = box->currentIndex();
    if (!drivesController(preset.expressionPedal))
        connect(pedalControllers, qOverload<int>(&QComboBox::currentIndexChanged), this,
                &MidiEditorWindow::proposePedal);
}

void MidiEditorWindow::setPlace(const QString &place, const QString &presetName)
{
    presetPlace->setText(presetName.isEmpty() ? place : place + QStringLiteral(": ") + presetName);
    presetPlace->show();
}

QVBoxLayout *MidiEditorWindow::makeChoices(const QStringList &controllerNames, const QString &color)
{
    const QFont &heading = DataFromDevice::fontSettingsLabel;
    const QFont &detail = DataFromDevice::fontTableContent;
    auto *column = new QVBoxLayout;
    column->setSpacing(lineSpacing);
    const auto addBox = [&](const QString &boxName, const QString &labelName, const QFont &font, const QString &text,
                            const QStringList &items) {
        QLabel *const label = makeLabel(labelName, text, font);
        ComboBox *const box = makeBox(this, items, color);
        box->setObjectName(boxName);
        box->setAccessibleName(text);
        box->setFixedSize(230, 28);
        label->setBuddy(box);
        column->addWidget(label);
        column->addWidget(box);
        return box;
    };

    programChanges = addBox("comboBox_programChangeNumber", "label_programChangeNumber", heading,
                            "PROGRAM CHANGE NUMBER", withInactive(look::numberTexts(1, 128)));
    column->addSpacing(16);
    column->addWidget(makeLabel("label_expressionPedal", "EXPRESSION PEDAL", heading));
    pedalControllers =
        addBox("comboBox_controllers", "label_controller", detail, "CONTROLLER",
               controllerNames.isEmpty() ? QStringList("NO CONTROLLERS DEFINED") : controllerNames + withInactive({}));
    characteristics = addBox("comboBox_characteristic", "label_characteristic", detail, "CHARACTERISTIC",
                             labels<ExpressionPedalCharacteristic>());
    toeUpValues = addBox("comboBox_toeUpValue", "label_toeUpValue", detail, "TOE UP VALUE", look::numberTexts(0, 127));
    toeDownValues =
        addBox("comboBox_toeDownValue", "label_toeDownValue", detail, "TOE DOWN VALUE", look::numberTexts(0, 127));
    column->addStretch();
    return column;
}

QVBoxLayout *MidiEditorWindow::makeControllers(const QStringList &controllerNames, const QString &color)
{
    QTableWidget *const table = makeTable({{"NAME", 170}, {"VALUE", 170}}, 375);
    const int count = static_cast<int>(controllerNames.size());
    table->setRowCount(count);
    for (int row = 0; row < count; ++row) {
        auto *name = new NameButton(table->viewport(), color);
        name->setName(controllerNames[row]);
        name->setFocusPolicy(Qt::NoFocus);
        name->setAutoDefault(false);
        table->setCellWidget(row, 0, name);

        ComboBox *const value = makeBox(table->viewport(), controlValueTexts(), color);
        value->setAccessibleName(tr("Value of %1").arg(controllerNames[row]));
        table->setCellWidget(row, 1, value);
        values << value;
    }

    auto *column = new QVBoxLayout;
    column->setSpacing(lineSpacing);
    column->addWidget(makeLabel("label_controllersList", "CONTROLLERS LIST", DataFromDevice::fontSettingsLabel));
    column->addWidget(table);
    return column;
}

void MidiEditorWindow::showValues(const std::vector<ControlChangeData> &controlChanges)
{
    for (ComboBox *const box : std::as_const(values))
        box->setCurrentIndex(inactiveIndex);
    for (const ControlChangeData &record : controlChanges) {
        const auto row = positions.indexOf(record.controllerNumber);
        const int index = record.value == inactiveValue ? noItem : controlValueIndex(record.value);
        if (record.midiDeviceNumber == deviceNumber && row >= 0 && index >= 0) values[row]->setCurrentIndex(index);
    }
}

void MidiEditorWindow::showPedal(const PresetExpressionPedal &pedal)
{
    const bool hasController = pedal.controllerNumber != none;
    for (ComboBox *const box : {pedalControllers, characteristics, toeUpValues, toeDownValues})
        box->setEnabled(!positions.isEmpty());
    if (!positions.isEmpty()) {
        int row = noItem;
        if (pedal.midiDeviceNumber == deviceNumber)
            row = static_cast<int>(hasController ? positions.indexOf(pedal.controllerNumber) : positions.size());
        pedalControllers->setCurrentIndex(row);
    }
    characteristics->setCurrentIndex(hasController ? toIndex(pedal.characteristic) : noItem);
    toeUpValues->setCurrentIndex(hasController ? pedal.toeUp : noItem);
    toeDownValues->setCurrentIndex(hasController ? pedal.toeDown : noItem);
}

void MidiEditorWindow::proposePedal()
{
    const bool isTouched = altered(characteristics) || altered(toeUpValues) || altered(toeDownValues);
    if (isTouched || pedalControllers->currentIndex() >= positions.size()) return;
    characteristics->setCurrentIndex(toIndex(ExpressionPedalCharacteristic::Linear));
    toeUpValues->setCurrentIndex(0);
    toeDownValues->setCurrentIndex(toeDownValues->count() - 1);
}

std::optional<int> MidiEditorWindow::altered(const ComboBox *box) const
{
    const int index = box->currentIndex();
    return index == shown.value(box) ? std::nullopt : std::optional(index);
}

MidiEdit MidiEditorWindow::edit() const
{
    const auto asByte = [](std::optional<int> index) {
        return index ? std::optional(static_cast<std::uint8_t>(*index)) : std::nullopt;
    };
    MidiEdit edit;
    edit.device = deviceNumber;
    edit.controllers.assign(positions.begin(), positions.end());
    if (const auto index = altered(programChanges)) edit.program = static_cast<std::uint8_t>(valueOrNone(*index));
    for (int row = 0; row < positions.size(); ++row)
        if (const auto index = altered(values[row])) edit.values[positions[row]] = controlValueAt(*index);
    if (const auto row = altered(pedalControllers))
        edit.pedal.controller = *row < positions.size() ? positions[*row] : none;
    if (const auto index = altered(characteristics))
        edit.pedal.characteristic = fromIndex<ExpressionPedalCharacteristic>(*index);
    edit.pedal.toeUp = asByte(altered(toeUpValues));
    edit.pedal.toeDown = asByte(altered(toeDownValues));
    return edit;
}
