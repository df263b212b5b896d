#include "ui/tables/statetable.h"

#include "ui/combobox.h"

#include <QTableWidget>

#include <utility>

namespace {

constexpr int firstStateColumn = 4;
constexpr int onIndex = 0;
constexpr int offIndex = 1;
constexpr int noItem = -1;

QVector<look::Column> withStates(QVector<look::Column> columns, int width, const QStringList &headers)
{
    for (const QString &header : headers)
        columns << look::Column{header, width};
    return columns;
}

}  // namespace

StateTable::StateTable(QTableWidget *tableWidget, const Layout &layout)
    : BankTable(tableWidget, withStates(presetColumns(layout.nameWidth), layout.stateWidth, layout.stateHeaders), 42,
                presetCount, 0),
      allowed(layout.allowed), thing(layout.thing), boxes(presetCount)
{
    for (int preset = 0; preset < presetCount; ++preset)
        for (int column = 0; column < layout.stateHeaders.size(); ++column) {
            // Loops and switches have the same states.
            ComboBox *const box =
                look::makeComboBox(table->viewport(), labels<LoopType>(), look::functionColor(FootswitchType::Preset));
            box->showStored(offIndex);
            box->setBoldItem(onIndex);
            box->setRefusal([this, preset](int index) { return refusal(index, preset); });
            const QString &header = layout.stateHeaders[column];
            box->setAccessibleName(tr("%1 of preset %2").arg(header.left(1) + header.mid(1).toLower()).arg(preset));
            connect(box, qOverload<int>(&QComboBox::currentIndexChanged), this,
                    [this, preset, column](int index) { chooseState(index, preset, column); });
            place(preset, firstStateColumn + column, box);
            boxes[preset] << box;
        }
    addPresetColumns();
    look::orderTabs(table);
}

void StateTable::refreshEditors()
{
    for (int preset = 0; preset < presetCount; ++preset) {
        const auto record = shown.preset(preset);
        if (!record) continue;
        for (int column = 0; column < boxes[preset].size(); ++column) {
            look::wearFunctionColor(boxes[preset][column], record->footswitchFunction);
            boxes[preset][column]->showStored(stateIndex(*record, column));
        }
    }
}

void StateTable::clearEditors(int preset)
{
    if (preset < 0) return;
    for (ComboBox *const box : std::as_const(boxes[preset]))
        box->showStored(noItem);
}

void StateTable::chooseState(int index, int preset, int column)
{
    const auto record = shown.preset(preset);
    if (record && allows(allowed, record->footswitchFunction, index))
        sendState(index, preset, column);
    else
        boxes[preset][column]->takeBack();
}

QString StateTable::refusal(int index, int preset) const
{
    const auto record = shown.preset(preset);
    if (!record || allows(allowed, record->footswitchFunction, index)) return QString();
    switch (record->footswitchFunction) {
    case FootswitchType::Preset:
        return tr("A plain preset sets each %1 ON or OFF").arg(thing);
    case FootswitchType::SwitchModifier:
        return tr("A switch modifier leaves every %1 as it is").arg(thing);
    case FootswitchType::LoopModifier:
        return tr("A loop modifier leaves every %1 as it is").arg(thing);
    case FootswitchType::MidiModifier:
        return tr("A MIDI modifier leaves every %1 as it is").arg(thing);
    }
    return tr("This function is not known");
}
