#pragma once

#include "ui/tables/banktable.h"

class ComboBox;

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

private:
    void refreshEditors() override;
    void clearEditors(int preset) override;
    void footswichFunctionChanged(int index, int preset);
    /// Shows a function in its colour.
    static void showFunction(ComboBox *box, FootswitchType function);

    QVector<ComboBox *> functions;
};
