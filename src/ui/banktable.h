#pragma once

#include "controller/metatypes.h"
#include "model/datafromdevice.h"
#include "ui/look.h"

#include <QHash>
#include <QObject>
#include <QString>
#include <QVector>

#include <memory>
#include <optional>
#include <string>

class QLineEdit;
class QPushButton;
class QTableWidget;
class QWidget;

/// What the five bank tables share: paging through the banks, bank and preset names, the refresh from the model. A tab
/// fills a table of the main window with editors, one row per preset (or wah pad), and shows one bank at a time.
///
/// An edit sends the change and goes back to the stored value; the new one shows when the unit has taken it.
class BankTable : public QObject
{
    Q_OBJECT

public:
    void show();
    void hide();
    bool isVisible() const;

    /// The shown bank, 0 to 99.
    int currentBank() const { return bankNumber; }
    /// Asks for the shown bank; nothing without a unit.
    void requestBank();

signals:
    void getBankAndPresetData(int bank);
    void changeBankNameSignal(const QString &name, int bank);
    void changePresetNameSignal(const QString &name, int bank, int preset);

public slots:
    /// Pages to the typed number (a bank-number edit) or by one (an arrow button).
    void changeBank();
    virtual void loadDataFromDevice(DataFromDevice *dataFromDevice);
    /// Refreshes the table if it shows that bank.
    void gotBankAndPresetData(int bank);
    void bankNameChanged();
    void presetNameChanged();

protected:
    /// Lays out the table: `emptyRows` rows, the arrow-up button, `editorRows` rows with a bank-number edit each, the
    /// arrow-down button.
    BankTable(QTableWidget *tableWidget, const QVector<look::Column> &columns, int rowHeight, int editorRows,
              int emptyRows);

    /// Disabled edits that count from `first`, told apart from other numbers by an accessible name.
    void addNumbers(int column, int first, const QString &name = tr("Preset number"));
    void addBankNames(int column);
    void addPresetNames(int column);
    /// Puts an editor of preset (or pad) `place` into its row.
    void place(int place, int column, QWidget *editor);

    /// Refreshes what the tab shows besides bank and preset names.
    virtual void refreshEditors() = 0;

    /// The shown bank's record; null when it has not been read.
    std::shared_ptr<const BankData> bankRecord() const;
    /// A preset of the shown bank; null when it has not been read.
    std::shared_ptr<const PresetData> presetRecord(int preset) const;

    QTableWidget *table;
    DataFromDevice *data = nullptr;

private:
    void changeBankNumber();
    void changePresetName();
    void changeBankName();
    QPushButton *addArrow(const QString &icon, const QString &name);
    void showName(QLineEdit *edit, const std::string &name);
    /// The name that the user has made of the record's in this edit, which goes back to the stored one; nothing when
    /// there is nothing to send.
    template <typename Record>
    std::optional<QString> takeNewName(QLineEdit *edit, const std::shared_ptr<const Record> &record);

    int firstRow;
    int bankNumber = 0;
    QVector<QLineEdit *> bankNumbers;
    QVector<QLineEdit *> bankNames;
    QVector<QLineEdit *> presetNames;
    QHash<const QLineEdit *, QString> shownNames;  ///< what each name edit was last made to show
    QPushButton *arrowUp = nullptr;
    QPushButton *arrowDown = nullptr;
};
