#include "ui/tables/tabswitch.h"

TabSwitch::TabSwitch(QTableWidget *tableWidget)
    : StateTable(tableWidget, {.nameWidth = 161,
                               .stateWidth = 133,
                               .stateHeaders = {"SWITCH 1", "SWITCH 2", "SWITCH 3", "SWITCH 4", "SWITCH 5", "SWITCH 6"},
                               .allowed = allowedStates<SwitchType>,
                               .thing = tr("switch")})
{}

int TabSwitch::stateIndex(const PresetData &preset, int column) const
{
    return toIndex(preset.switches[static_cast<std::size_t>(column)]);
}

void TabSwitch::sendState(int index, int preset, int column)
{
    emit changeSwitchType(fromIndex<SwitchType>(index), currentBank(), preset, column);
}
