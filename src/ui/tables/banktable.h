#pragma once

#include "controller/metatypes.h"
#include "model/unitcontent.h"
#include "ui/look.h"
#include "ui/shownbank.h"

#include <QObject>
#include <QString>
#include <QVector>

class BankNumberEdit;
class NameEdit;
class QPushButton;
class QTableWidget;
class QWidget;

/// What the five bank tables share: paging through the banks, bank and preset names, the refresh from the model. A tab
/// fills a table of the main window with editors, one row per preset (or wah pad), and shows one bank at a time.
///
/// A name goes back to the stored one as soon as its change is on its way and shows when the unit has taken it; a box
/// keeps the user's choice until the next refresh. What cannot be sent goes back in both.
class BankTable : public QObject
{
    Q_OBJECT

public:
    void show();
    void hide();
    bool isVisible() const;

    /// The shown bank, 0 to 99.
    int currentBank() const { return shown.number(); }
    /// Shows the bank that was chosen elsewhere; it is asked for only where it has not been read.
    void follow(int bank);
    /// The same without asking for it; whether it has to be read.
    bool moveTo(int bank);
    /// The editor of preset (or pad) `place` in a column.
    QWidget *editor(int place, int column) const;
    /// Asks for the shown bank; nothing without a unit.
    void requestBank();
    /// Asks again for the shown bank if it could not be read.
    void retry();
    /// That bank could not be read. If it is shown, what is not known of it is shown as unknown.
    void readFailed(int bank);
    /// Brings back what the model holds, where it is known.
    void showStored();

signals:
    void getBankAndPresetData(int bank);
    /// The user has gone to another bank.
    void bankChosen(int bank);
    /// The user asks what can be done with a bank or a preset.
    void menuAsked(const RecordId &place, const QPoint &position);
    void changeBankNameSignal(const QString &name, int bank);
    void changePresetNameSignal(const QString &name, int bank, int preset);

public slots:
    virtual void loadDataFromDevice(DataFromDevice *dataFromDevice);
    /// Refreshes the table if it shows that bank.
    void gotBankAndPresetData(int bank);

protected:
    /// Lays out the table: `emptyRows` rows, the arrow-up button, `editorRows` rows with a bank-number edit each, the
    /// arrow-down button.
    BankTable(QTableWidget *tableWidget, const QVector<look::Column> &columns, int rowHeight, int editorRows,
              int emptyRows);

    /// The columns that the tables of presets begin with.
    static QVector<look::Column> presetColumns(int nameWidth);
    /// Preset numbers, bank and preset names in those columns.
    void addPresetColumns();
    /// Disabled edits that count from `first`, told apart from other numbers by an accessible name.
    void addNumbers(int column, int first, const QString &name = tr("Preset number"));
    void addBankNames(int column);
    void addPresetNames(int column);
    /// Puts an editor of preset (or pad) `place` into its row.
    void place(int place, int column, QWidget *editor);

    /// Refreshes what the tab shows besides bank and preset names, where it is known.
    virtual void refreshEditors() = 0;
    /// Shows no value in the editors of a preset that is not known, or of the bank (`preset` -1).
    virtual void clearEditors(int preset) = 0;

    QTableWidget *table;
    ShownBank shown;

private:
    void changeBank(int bank);
    void showBankNumber();
    void askForMenu(const QPoint &place);
    /// Where there is no bank to go to, an arrow is grey.
    void enableArrows();
    void changePresetName();
    void changeBankName();
    void bankNameChanged(NameEdit *edit);
    void presetNameChanged(NameEdit *edit, int preset);
    QPushButton *addArrow(const char *icon, const QString &name, int step);

    int firstRow;
    QPushButton *arrowUp;
    QPushButton *arrowDown;
    bool isUnreadable = false;  ///< the shown bank could not be read
    QVector<BankNumberEdit *> bankNumbers;
    QVector<NameEdit *> bankNames;
    QVector<NameEdit *> presetNames;
};
