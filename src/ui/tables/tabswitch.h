#pragma once

#include "ui/tables/statetable.h"

/// The six switch outputs of each preset of a bank.
class TabSwitch : public StateTable
{
    Q_OBJECT

public:
    /// Lays out a table of 10 columns and one row, which stays its owner's.
    explicit TabSwitch(QTableWidget *tableWidget);

signals:
    /// `switchSlot` counts from 0.
    void changeSwitchType(SwitchType type, int bank, int preset, int switchSlot);

private:
    int stateIndex(const PresetData &preset, int column) const override;
    void sendState(int index, int preset, int column) override;
};
