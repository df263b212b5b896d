#pragma once

#include "ui/tables/banktable.h"

#include <array>

class ComboBox;

/// What the two wah pads do in a bank: an action and the preset that it aims at.
class TabWahPads : public BankTable
{
    Q_OBJECT

public:
    /// Lays out a table of 5 columns and one row, which stays its owner's.
    explicit TabWahPads(QTableWidget *tableWidget);

signals:
    void changePresetWahPad1(int bank, WahPadAction action);
    void changePresetWahPad2(int bank, WahPadAction action);
    void changePresetNumberWahPad1(int bank, int preset);
    void changePresetNumberWahPad2(int bank, int preset);

private:
    struct Pad
    {
        WahPadAction BankData::*storedAction;
        std::uint8_t BankData::*storedTarget;
        void (TabWahPads::*changeAction)(int bank, WahPadAction action);
        void (TabWahPads::*changeTarget)(int bank, int preset);
        ComboBox *action = nullptr;
        ComboBox *target = nullptr;
    };

    void refreshEditors() override;
    void clearEditors(int preset) override;
    void changePresetNames();
    void changeWahPadSettings();
    void presetWahPadChanged(const Pad &pad, int index);
    void presetNumberWahPadChanged(const Pad &pad, int index);

    std::array<Pad, 2> pads{
        Pad{&BankData::wahPad1Action, &BankData::wahPad1PresetNumber, &TabWahPads::changePresetWahPad1,
            &TabWahPads::changePresetNumberWahPad1},
        Pad{&BankData::wahPad2Action, &BankData::wahPad2PresetNumber, &TabWahPads::changePresetWahPad2,
            &TabWahPads::changePresetNumberWahPad2},
    };
};
