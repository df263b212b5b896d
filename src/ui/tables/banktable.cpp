#include "ui/tables/banktable.h"

#include "ui/nameedit.h"
#include "ui/tablekeys.h"
#include "ui/tables/banknumberedit.h"

#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>

#include <utility>

namespace {

constexpr int bankColumn = 0;

/// Takes clicks on the whole of its cell, since its drawing fills that.
class ArrowButton : public QPushButton
{
public:
    using QPushButton::QPushButton;

protected:
    bool hitButton(const QPoint &place) const override { return rect().contains(place); }
};

}  // namespace

BankTable::BankTable(QTableWidget *tableWidget, const QVector<look::Column> &columns, int rowHeight, int editorRows,
                     int emptyRows)
    : table(tableWidget), firstRow(emptyRows + 1)
{
    look::prepareTable(table, columns, rowHeight);
    connect(table->findChild<TableKeys *>(), &TableKeys::paged, this,
            [this](int step) { changeBank(currentBank() + step); });
    table->setRowCount(emptyRows + 1 + editorRows + 1);
    arrowUp = addArrow("arrow-up", tr("Next bank"), 1);
    table->setCellWidget(firstRow - 1, bankColumn, arrowUp);
    for (int row = 0; row < editorRows; ++row) {
        auto *edit = new BankNumberEdit(table->viewport());
        connect(edit, &BankNumberEdit::entered, this, &BankTable::changeBank);
        place(row, bankColumn, edit);
        bankNumbers << edit;
    }
    arrowDown = addArrow("arrow-down", tr("Previous bank"), -1);
    table->setCellWidget(firstRow + editorRows, bankColumn, arrowDown);
    enableArrows();
    table->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(table, &QWidget::customContextMenuRequested, this, &BankTable::askForMenu);
}

void BankTable::askForMenu(const QPoint &place)
{
    const QModelIndex cell = table->indexAt(place);
    const int row = cell.row() - firstRow;
    if (!cell.isValid() || row < 0 || row >= bankNumbers.size()) return;
    const bool isPreset = cell.column() != bankColumn && bankNumbers.size() == presetCount;  // else of a wah pad
    const RecordId record =
        isPreset ? RecordId{RecordId::Kind::Preset, currentBank(), row} : RecordId{RecordId::Kind::Bank, currentBank()};
    emit menuAsked(record, table->viewport()->mapToGlobal(place));
}

QPushButton *BankTable::addArrow(const char *icon, const QString &name, int step)
{
    auto *arrow = new ArrowButton(table->viewport());
    arrow->resize(table->columnWidth(bankColumn), table->verticalHeader()->defaultSectionSize());
    arrow->setStyleSheet(QStringLiteral("border-radius: 5;\n"));
    look::makeIconButton(arrow, look::fadingIcon(icon), arrow->size(), name);
    connect(arrow, &QPushButton::clicked, this, [this, step] { changeBank(currentBank() + step); });
    return arrow;
}

void BankTable::place(int place, int column, QWidget *editor)
{
    editor->setContextMenuPolicy(Qt::NoContextMenu);  // it is the row's, not a text's
    table->setCellWidget(firstRow + place, column, editor);
}

QWidget *BankTable::editor(int place, int column) const { return table->cellWidget(firstRow + place, column); }

QVector<look::Column> BankTable::presetColumns(int nameWidth)
{
    return {{"B", 35}, {"P", 35}, {"BANK NAME", nameWidth}, {"PRESET NAME", nameWidth}};
}

void BankTable::addPresetColumns()
{
    addNumbers(1, 0);
    addBankNames(2);
    addPresetNames(3);
}

void BankTable::addNumbers(int column, int first, const QString &name)
{
    for (int row = 0; row < bankNumbers.size(); ++row) {
        auto *edit = new NameEdit(table->viewport(), QString::number(first + row));
        edit->setAlignment(Qt::AlignLeft);
        edit->setAccessibleName(name);
        edit->setEnabled(false);
        place(row, column, edit);
    }
}

void BankTable::addBankNames(int column)
{
    for (int row = 0; row < bankNumbers.size(); ++row) {
        auto *edit = new NameEdit(table->viewport());
        edit->setAccessibleName(tr("Bank name"));
        connect(edit, &QLineEdit::editingFinished, this, [this, edit] { bankNameChanged(edit); });
        place(row, column, edit);
        bankNames << edit;
    }
}

void BankTable::addPresetNames(int column)
{
    for (int row = 0; row < bankNumbers.size(); ++row) {
        auto *edit = new NameEdit(table->viewport());
        edit->setAccessibleName(tr("Name of preset %1").arg(row));
        connect(edit, &QLineEdit::editingFinished, this, [this, edit, row] { presetNameChanged(edit, row); });
        place(row, column, edit);
        presetNames << edit;
    }
}

void BankTable::show() { table->show(); }

void BankTable::hide() { table->hide(); }

bool BankTable::isVisible() const { return table->isVisible(); }

void BankTable::changeBank(int bank)
{
    if (shown.goTo(bank)) {
        showBankNumber();
        requestBank();
        emit bankChosen(bank);
    } else if (bank == currentBank()) {
        retry();
    }
}

void BankTable::enableArrows()
{
    arrowUp->setEnabled(currentBank() < bankCount - 1);
    arrowDown->setEnabled(currentBank() > 0);
}

void BankTable::follow(int bank)
{
    if (moveTo(bank)) requestBank();
}

bool BankTable::moveTo(int bank)
{
    if (!shown.goTo(bank)) return false;
    showBankNumber();
    if (shown.isRead()) showStored();
    return !shown.isRead();
}

void BankTable::showBankNumber()
{
    isUnreadable = false;
    enableArrows();
    for (BankNumberEdit *const edit : std::as_const(bankNumbers))
        edit->showBank(currentBank());
}

void BankTable::requestBank()
{
    if (shown.data()) emit getBankAndPresetData(currentBank());
}

void BankTable::retry()
{
    if (isUnreadable) requestBank();
}

void BankTable::readFailed(int bank)
{
    if (bank != currentBank() || !shown.data()) return;
    isUnreadable = true;
    for (int preset = 0; preset < presetCount; ++preset) {
        if (shown.preset(preset)) continue;
        if (preset < presetNames.size()) presetNames[preset]->showStored(QString());
        clearEditors(preset);
    }
    if (!shown.record()) {
        for (NameEdit *const edit : std::as_const(bankNames))
            edit->showStored(QString());
        clearEditors(-1);
    }
    showStored();
}

void BankTable::loadDataFromDevice(DataFromDevice *dataFromDevice)
{
    shown.setModel(dataFromDevice);
    isUnreadable = false;
}

void BankTable::gotBankAndPresetData(int bank)
{
    if (bank != currentBank() || !shown.data()) return;
    isUnreadable = isUnreadable && !shown.isRead();
    showStored();
}

void BankTable::showStored()
{
    changePresetName();
    changeBankName();
    refreshEditors();
}

void BankTable::changePresetName()
{
    for (int preset = 0; preset < presetNames.size(); ++preset)
        if (const auto record = shown.preset(preset))
            presetNames[preset]->showStored(QString::fromStdString(record->name));
}

void BankTable::changeBankName()
{
    const auto record = shown.record();
    if (!record) return;
    const QString name = QString::fromStdString(record->name);
    for (NameEdit *const edit : std::as_const(bankNames))
        edit->showStored(name);
}

void BankTable::bankNameChanged(NameEdit *edit)
{
    if (!edit->isAltered()) return;
    const QString typed = edit->text();
    edit->takeBack();
    if (shown.record()) emit changeBankNameSignal(typed, currentBank());
}

void BankTable::presetNameChanged(NameEdit *edit, int preset)
{
    if (!edit->isAltered()) return;
    const QString typed = edit->text();
    edit->takeBack();
    if (shown.preset(preset)) emit changePresetNameSignal(typed, currentBank(), preset);
}
