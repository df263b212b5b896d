#pragma once

#include "ui/tables/statetable.h"

/// The buffer and the six loops of each preset of a bank.
class TabLoops : public StateTable
{
    Q_OBJECT

public:
    /// Lays out a table of 11 columns and one row, which stays its owner's.
    explicit TabLoops(QTableWidget *tableWidget);

signals:
    void changeBufferLoop(LoopType type, int bank, int preset);
    /// `loop` counts from 0.
    void changeLoopType(LoopType type, int bank, int preset, int loop);

private:
    int stateIndex(const PresetData &preset, int column) const override;
    void sendState(int index, int preset, int column) override;
};
