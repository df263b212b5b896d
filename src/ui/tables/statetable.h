#pragma once

#include "model/functionrules.h"
#include "ui/tables/banktable.h"

class ComboBox;

/// What the loops tab and the switch tab share: a box for each state of each preset, in the colour of the preset's
/// footswitch function. The function also decides which states may be chosen: the others are grey in
/// the open list, and a refused choice snaps back, unsent.
class StateTable : public BankTable
{
protected:
    struct Layout
    {
        int nameWidth;             ///< pixels, of the columns of bank and preset names
        int stateWidth;            ///< pixels, of each state column
        QStringList stateHeaders;  ///< one for each state column
        AllowedStates allowed;
        QString thing;  ///< "loop" or "switch": what is in a state
    };

    StateTable(QTableWidget *tableWidget, const Layout &layout);

    void refreshEditors() override;
    void clearEditors(int preset) override;

    /// The box row of a stored state; columns count from 0.
    virtual int stateIndex(const PresetData &preset, int column) const = 0;
    virtual void sendState(int index, int preset, int column) = 0;

private:
    void chooseState(int index, int preset, int column);
    /// Why a state may not be chosen for a preset; empty when it may.
    QString refusal(int index, int preset) const;

    AllowedStates allowed;
    QString thing;
    QVector<QVector<ComboBox *>> boxes;  // by preset, then column
};
