#include "ui/tabfootswitchfunction.h"

#include <QBrush>
#include <QColor>
#include <QComboBox>

namespace {

const QVector<look::Column> &columns()
{
    static const QVector<look::Column> all{
        {"B", 35}, {"P", 35}, {"FOOTSWITCH FUNCTION", 350}, {"BANK NAME", 385}, {"PRESET NAME", 385}};
    return all;
}

}  // namespace

TabFootswitchFunction::TabFootswitchFunction(QTableWidget *tableWidget)
    : BankTable(tableWidget, columns(), 42, presetCount, 0)
{
    addNumbers(1, 0);
    for (int preset = 0; preset < presetCount; ++preset) {
        QComboBox *const box =
            look::makeComboBox(labels<FootswitchType>(), look::functionColor(FootswitchType::Preset));
        for (int index = 0; index < box->count(); ++index)
            box->setItemData(index, QBrush(QColor(look::functionColor(fromIndex<FootswitchType>(index)))),
                             Qt::BackgroundRole);
        box->setAccessibleName(tr("Footswitch function of preset %1").arg(preset));
        const auto changed = qOverload<int>(&QComboBox::currentIndexChanged);
        connect(box, changed, this, &TabFootswitchFunction::setColorOfSelectedItemInCombobox);
        connect(box, changed, this, &TabFootswitchFunction::footswichFunctionChanged);
        place(preset, 2, box);
        functions << box;
    }
    addBankNames(3);
    addPresetNames(4);
    look::orderTabs(table);
}

void TabFootswitchFunction::loadDataFromDevice(DataFromDevice *dataFromDevice)
{
    BankTable::loadDataFromDevice(dataFromDevice);
    requestBank();
}

void TabFootswitchFunction::setColorOfSelectedItemInCombobox(int index)
{
    if (auto *const box = qobject_cast<QComboBox *>(sender()))
        look::wearFunctionColor(box, fromIndex<FootswitchType>(index));
}

void TabFootswitchFunction::changeFootswitchFunction()
{
    for (int preset = 0; preset < functions.size(); ++preset)
        if (const auto record = presetRecord(preset)) {
            // Silently: by now the unit may have taken the next choice, and what is shown here must not be sent.
            look::showIndex(functions[preset], toIndex(record->footswitchFunction));
            look::wearFunctionColor(functions[preset], record->footswitchFunction);
        }
}

void TabFootswitchFunction::footswichFunctionChanged()
{
    auto *const box = qobject_cast<QComboBox *>(sender());
    const int preset = functions.indexOf(box);
    if (preset < 0) return;
    if (!data) {
        box->setCurrentIndex(0);
        return;
    }
    const auto record = presetRecord(preset);
    const int chosen = box->currentIndex();
    if (!record || chosen < 0 || toIndex(record->footswitchFunction) == chosen) return;
    emit changeFootswitchFunctionSignal(fromIndex<FootswitchType>(chosen), currentBank(), preset);
}
