#include "ui/tables/tabfootswitchfunction.h"

#include "ui/combobox.h"

#include <QTableWidget>

TabFootswitchFunction::TabFootswitchFunction(QTableWidget *tableWidget)
    : BankTable(tableWidget,
                {{"B", 35}, {"P", 35}, {"FOOTSWITCH FUNCTION", 350}, {"BANK NAME", 385}, {"PRESET NAME", 385}}, 42,
                presetCount, 0)
{
    addNumbers(1, 0);
    for (int preset = 0; preset < presetCount; ++preset) {
        ComboBox *const box = look::makeFunctionBox(table->viewport());
        box->setAccessibleName(tr("Footswitch function of preset %1").arg(preset));
        connect(box, qOverload<int>(&QComboBox::currentIndexChanged), this,
                [this, preset](int index) { footswichFunctionChanged(index, preset); });
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

void TabFootswitchFunction::showFunction(ComboBox *box, FootswitchType function)
{
    box->showStored(toIndex(function));
    look::wearFunctionColor(box, function);
}

void TabFootswitchFunction::refreshEditors()
{
    for (int preset = 0; preset < functions.size(); ++preset)
        if (const auto record = shown.preset(preset)) showFunction(functions[preset], record->footswitchFunction);
}

void TabFootswitchFunction::clearEditors(int preset)
{
    if (preset >= 0) functions[preset]->showStored(-1);
}

void TabFootswitchFunction::footswichFunctionChanged(int index, int preset)
{
    const auto record = shown.preset(preset);
    if (!record) return functions[preset]->takeBack();
    const auto chosen = fromIndex<FootswitchType>(index);
    look::wearFunctionColor(functions[preset], chosen);
    if (index >= 0 && chosen != record->footswitchFunction)
        emit changeFootswitchFunctionSignal(chosen, currentBank(), preset);
}
