#include "ui/tables/tabloops.h"

namespace {

constexpr int bufferColumn = 0;  // the loops follow

}  // namespace

TabLoops::TabLoops(QTableWidget *tableWidget)
    : StateTable(tableWidget, {.nameWidth = 154,
                               .stateWidth = 116,
                               .stateHeaders = {"BUFFER", "LOOP 1", "LOOP 2", "LOOP 3", "LOOP 4", "LOOP 5", "LOOP 6"},
                               .allowed = allowedStates<LoopType>,
                               .thing = tr("loop")})
{}

int TabLoops::stateIndex(const PresetData &preset, int column) const
{
    return toIndex(column == bufferColumn ? preset.bufferLoop : preset.loops[static_cast<std::size_t>(column - 1)]);
}

void TabLoops::sendState(int index, int preset, int column)
{
    const auto type = fromIndex<LoopType>(index);
    if (column == bufferColumn)
        emit changeBufferLoop(type, currentBank(), preset);
    else
        emit changeLoopType(type, currentBank(), preset, column - 1);
}
