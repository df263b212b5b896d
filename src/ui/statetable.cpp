#include "ui/statetable.h"

#include <QComboBox>

namespace {

constexpr int firstStateColumn = 4;
constexpr int offIndex = 1;

QVector<look::Column> columns(int nameWidth, int stateWidth, const QStringList &stateHeaders)
{
    QVector<look::Column> all{{"B", 35}, {"P", 35}, {"BANK NAME", nameWidth}, {"PRESET NAME", nameWidth}};
    for (const QString &header : stateHeaders)
        all << look::Column{header, stateWidth};
    return all;
}

}  // namespace

StateTable::StateTable(QTableWidget *tableWidget, const Layout &layout)
    : BankTable(tableWidget, columns(layout.nameWidth, layout.stateWidth, layout.stateHeaders), 42, presetCount, 0),
      stateCount(layout.stateHeaders.size()), allowed(layout.allowed)
{
    addNumbers(1, 0);
    for (int preset = 0; preset < presetCount; ++preset)
        for (int column = 0; column < stateCount; ++column) {
            // Loops and switches have the same states.
            QComboBox *const box = look::makeComboBox(labels<LoopType>(), look::functionColor(FootswitchType::Preset));
            box->setCurrentIndex(offIndex);
            const QString &header = layout.stateHeaders[column];
            box->setAccessibleName(tr("%1 of preset %2").arg(header.left(1) + header.mid(1).toLower()).arg(preset));
            place(preset, firstStateColumn + column, box);
            boxes << box;
        }
    addBankNames(2);
    addPresetNames(3);
    look::orderTabs(table);
}

void StateTable::showStates()
{
    for (int preset = 0; preset < presetCount; ++preset) {
        const auto record = presetRecord(preset);
        if (!record) continue;
        for (int column = 0; column < stateCount; ++column) {
            QComboBox *const box = boxes[preset * stateCount + column];
            look::wearFunctionColor(box, record->footswitchFunction);
            look::showIndex(box, stateIndex(*record, column));
        }
    }
}

void StateTable::chooseState(int index)
{
    auto *const box = qobject_cast<QComboBox *>(sender());
    const int place = boxes.indexOf(box);
    if (place < 0) return;
    if (!data) {
        look::showIndex(box, offIndex);
        return;
    }
    const int preset = place / stateCount;
    const int column = place % stateCount;
    const auto record = presetRecord(preset);
    if (!record) return;
    if (allows(record->footswitchFunction, index))
        sendState(index, preset, column);
    else
        look::showIndex(box, stateIndex(*record, column));
}

bool StateTable::allows(FootswitchType function, int index) const
{
    const int row = toIndex(function);
    return row >= 0 && row < static_cast<int>(allowed.size()) && index >= 0 &&
           index < allowed[static_cast<std::size_t>(row)];
}
