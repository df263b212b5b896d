#include "ui/midieditorwindow.h"

#include "ui/controlvalue.h"
#include "ui/namebutton.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

constexpr int noItem = -1;
constexpr int lineSpacing = 6;  // pixels
const QString inactive = QStringLiteral("INACTIVE");

QComboBox *makeBox(const QStringList &items, const QString &color)
{
    QComboBox *const box = look::makeComboBox(items);
    look::setBackgroundLine(box, QStringLiteral("  background-color:%1;").arg(color));
    return box;
}

}  // namespace

MidiEditorWindow::MidiEditorWindow(DataFromDevice *model, int bank, int preset, int device, QWidget *parent)
    : MidiDeviceDialog(QStringLiteral("MidiEditorWindow"), parent), deviceNumber(static_cast<std::uint8_t>(device + 1))
{
    const auto slot = static_cast<std::size_t>(device);
    const PresetData stored =
        copyOf(model->presetData.at(static_cast<std::size_t>(bank)).at(static_cast<std::size_t>(preset)));
    const MidiDevice definition = copyOf(model->midiDevices.at(slot));
    const QString color = look::functionColor(stored.footswitchFunction);

    QStringList names;
    for (std::uint8_t position = 1; const Controller &controller : definition.controllers) {
        if (controller.number != none) {
            positions << position;
            names << QString::fromStdString(controller.name);
        }
        ++position;
    }

    auto *columns = new QHBoxLayout;
    columns->setSpacing(28);
    columns->addLayout(makeChoices(names, color));
    columns->addLayout(makeControllers(names, color));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(20, 20, 20, 20);
    layout->setSpacing(16);
    layout->addWidget(makeTitle(device, definition.name));
    layout->addLayout(columns);
    layout->addLayout(makeAnswers());

    const std::uint8_t program = stored.programChanges.at(slot);
    programChanges->setCurrentIndex(program == none ? 0 : program);
    showValues(stored.controlChanges);
    showPedal(stored.expressionPedal);
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
        QComboBox *const box = makeBox(items, color);
        box->setParent(this);
        box->setObjectName(boxName);
        box->setAccessibleName(text);
        box->setFixedSize(230, 28);
        label->setBuddy(box);
        column->addWidget(label);
        column->addWidget(box);
        return box;
    };

    programChanges = addBox("comboBox_programChangeNumber", "label_programChangeNumber", heading,
                            "PROGRAM CHANGE NUMBER", QStringList(inactive) + look::numberTexts(1, 128));
    column->addSpacing(16);
    column->addWidget(makeLabel("label_expressionPedal", "EXPRESSION PEDAL", heading));
    pedalControllers = addBox("comboBox_controllers", "label_controller", detail, "CONTROLLER",
                              controllerNames.isEmpty() ? QStringList("NO CONTROLLERS DEFINED")
                                                        : controllerNames + QStringList(inactive));
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
    table->setRowCount(controllerNames.size());
    QWidget *previous = toeDownValues;
    for (int row = 0; row < controllerNames.size(); ++row) {
        auto *name = new NameButton(color);
        name->setName(controllerNames[row]);
        name->setFocusPolicy(Qt::NoFocus);
        name->setAutoDefault(false);
        table->setCellWidget(row, 0, name);

        QComboBox *const value = makeBox(controlValueTexts(), color);
        value->setAccessibleName(tr("Value of %1").arg(controllerNames[row]));
        table->setCellWidget(row, 1, value);
        values << value;
        setTabOrder(previous, value);
        previous = value;
    }

    auto *column = new QVBoxLayout;
    column->setSpacing(lineSpacing);
    column->addWidget(makeLabel("label_controllersList", "CONTROLLERS LIST", DataFromDevice::fontSettingsLabel));
    column->addWidget(table);
    return column;
}

void MidiEditorWindow::showValues(const std::vector<ControlChangeData> &controlChanges)
{
    for (QComboBox *const box : qAsConst(values))
        box->setCurrentIndex(inactiveIndex);
    for (const ControlChangeData &record : controlChanges) {
        const int row = positions.indexOf(record.controllerNumber);
        const int index = record.value == inactiveValue ? noItem : controlValueIndex(record.value);
        if (record.midiDeviceNumber == deviceNumber && row >= 0 && index >= 0) values[row]->setCurrentIndex(index);
    }
}

void MidiEditorWindow::showPedal(const PresetExpressionPedal &pedal)
{
    const bool hasController = pedal.controllerNumber != none;
    for (QComboBox *const box : {pedalControllers, characteristics, toeUpValues, toeDownValues})
        box->setEnabled(!positions.isEmpty());
    if (!positions.isEmpty()) {
        int row = noItem;
        if (pedal.midiDeviceNumber == deviceNumber)
            row = hasController ? positions.indexOf(pedal.controllerNumber) : positions.size();
        pedalControllers->setCurrentIndex(row);
    }
    characteristics->setCurrentIndex(hasController ? toIndex(pedal.characteristic) : noItem);
    toeUpValues->setCurrentIndex(hasController ? pedal.toeUp : noItem);
    toeDownValues->setCurrentIndex(hasController ? pedal.toeDown : noItem);
}

std::optional<std::uint8_t> MidiEditorWindow::programChange() const
{
    const int index = programChanges->currentIndex();
    if (index == noItem) return std::nullopt;
    return index == 0 ? none : static_cast<std::uint8_t>(index);
}

QVector<ControllerChoice> MidiEditorWindow::controllerChoices() const
{
    QVector<ControllerChoice> choices;
    for (int row = 0; row < positions.size(); ++row)
        choices << ControllerChoice{positions[row], controlValueAt(values[row]->currentIndex())};
    return choices;
}

std::optional<PresetExpressionPedal> MidiEditorWindow::changedPedal(const PresetExpressionPedal &stored) const
{
    if (positions.isEmpty()) return std::nullopt;
    const int row = pedalControllers->currentIndex();
    const bool chosen = row >= 0 && row < positions.size();
    PresetExpressionPedal pedal = stored;
    if (stored.midiDeviceNumber != deviceNumber) {
        if (!chosen) return std::nullopt;  // "inactive" takes the pedal away from this device only
        pedal.midiDeviceNumber = deviceNumber;
    }
    if (row != noItem) pedal.controllerNumber = chosen ? positions[row] : none;
    const int characteristic = characteristics->currentIndex();
    if (characteristic != noItem) pedal.characteristic = fromIndex<ExpressionPedalCharacteristic>(characteristic);
    if (toeUpValues->currentIndex() != noItem) pedal.toeUp = static_cast<std::uint8_t>(toeUpValues->currentIndex());
    if (toeDownValues->currentIndex() != noItem)
        pedal.toeDown = static_cast<std::uint8_t>(toeDownValues->currentIndex());
    return pedal;
}
