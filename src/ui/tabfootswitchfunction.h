#pragma once

#include "ui/banktable.h"

class QComboBox;

/// The footswitch function of each preset of a bank, which governs what the other tabs let the user do with the preset.
class TabFootswitchFunction : public BankTable
{
    Q_OBJECT

public:
    /// Lays out a table of 5 columns and one row, which stays its owner's.
    explicit TabFootswitchFunction(QTableWidget *tableWidget);

signals:
    void changeFootswitchFunctionSignal(FootswitchType function, int bank, int preset);

public slots:
    /// Also asks for the shown bank; the answer refreshes every table that shows this bank.
    void loadDataFromDevice(DataFromDevice *dataFromDevice) override;
    /// Gives the sender the colour of the function that stands in its row `index`.
    void setColorOfSelectedItemInCombobox(int index);
    void footswichFunctionChanged();

private:
    void refreshEditors() override { changeFootswitchFunction(); }
    void changeFootswitchFunction();

    QVector<QComboBox *> functions;
};
