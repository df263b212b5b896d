#include "ui/banktable.h"

#include <QHeaderView>
#include <QIntValidator>
#include <QLineEdit>
#include <QLocale>
#include <QPointer>
#include <QPushButton>
#include <QTableWidget>

namespace {

constexpr int lastBank = bankCount - 1;
constexpr int bankColumn = 0;

/// Accepts bank numbers; an edit that is left empty takes the shown bank's number again.
class BankNumberValidator : public QIntValidator
{
public:
    explicit BankNumberValidator(const BankTable *table, QObject *parent)
        : QIntValidator(0, lastBank, parent), bankTable(table)
    {
        setLocale(QLocale::c());
    }
    void fixup(QString &input) const override
    {
        if (bankTable) input = QString::number(bankTable->currentBank());
    }

private:
    QPointer<const BankTable> bankTable;  // the edits may outlive it
};

}  // namespace

BankTable::BankTable(QTableWidget *tableWidget, const QVector<look::Column> &columns, int rowHeight, int editorRows,
                     int emptyRows)
    : table(tableWidget), firstRow(emptyRows + 1)
{
    look::prepareTable(table, columns, rowHeight);
    table->setRowCount(emptyRows + 1 + editorRows + 1);
    arrowUp = addArrow(QStringLiteral(":/images/arrow-up.png"), tr("Next bank"));
    table->setCellWidget(firstRow - 1, bankColumn, arrowUp);
    for (int row = 0; row < editorRows; ++row) {
        QLineEdit *const edit = look::makeEdit(QString::number(bankNumber));
        edit->setValidator(new BankNumberValidator(this, edit));
        edit->setMaxLength(2);
        edit->setAlignment(Qt::AlignLeft);
        edit->setAccessibleName(tr("Bank number"));
        connect(edit, &QLineEdit::editingFinished, this, &BankTable::changeBank);
        place(row, bankColumn, edit);
        bankNumbers << edit;
    }
    arrowDown = addArrow(QStringLiteral(":/images/arrow-down.png"), tr("Previous bank"));
    table->setCellWidget(firstRow + editorRows, bankColumn, arrowDown);
}

QPushButton *BankTable::addArrow(const QString &icon, const QString &name)
{
    auto *arrow = new QPushButton;
    arrow->resize(table->columnWidth(bankColumn), table->verticalHeader()->defaultSectionSize());
    arrow->setStyleSheet(QStringLiteral("border-radius: 5;\n"));
    look::makeIconButton(arrow, QIcon(icon), arrow->size(), name);
    connect(arrow, &QPushButton::clicked, this, &BankTable::changeBank);
    return arrow;
}

void BankTable::place(int place, int column, QWidget *editor)
{
    table->setCellWidget(firstRow + place, column, editor);
}

void BankTable::addNumbers(int column, int first, const QString &name)
{
    for (int row = 0; row < bankNumbers.size(); ++row) {
        QLineEdit *const edit = look::makeEdit(QString::number(first + row));
        edit->setAlignment(Qt::AlignLeft);
        edit->setAccessibleName(name);
        edit->setEnabled(false);
        place(row, column, edit);
    }
}

void BankTable::addBankNames(int column)
{
    for (int row = 0; row < bankNumbers.size(); ++row) {
        QLineEdit *const edit = look::makeEdit();
        edit->setAccessibleName(tr("Bank name"));
        connect(edit, &QLineEdit::editingFinished, this, &BankTable::bankNameChanged);
        place(row, column, edit);
        bankNames << edit;
    }
}

void BankTable::addPresetNames(int column)
{
    for (int row = 0; row < bankNumbers.size(); ++row) {
        QLineEdit *const edit = look::makeEdit();
        edit->setAccessibleName(tr("Name of preset %1").arg(row));
        connect(edit, &QLineEdit::editingFinished, this, &BankTable::presetNameChanged);
        place(row, column, edit);
        presetNames << edit;
    }
}

void BankTable::show() { table->show(); }

void BankTable::hide() { table->hide(); }

bool BankTable::isVisible() const { return table->isVisible(); }

std::shared_ptr<const BankData> BankTable::bankRecord() const
{
    return data ? data->bankData[static_cast<std::size_t>(bankNumber)].load() : nullptr;
}

std::shared_ptr<const PresetData> BankTable::presetRecord(int preset) const
{
    return data ? data->presetData[static_cast<std::size_t>(bankNumber)][static_cast<std::size_t>(preset)].load()
                : nullptr;
}

void BankTable::changeBank()
{
    if (auto *const edit = qobject_cast<QLineEdit *>(sender())) {
        bool isNumber = false;
        const int typed = edit->text().toInt(&isNumber);
        const int bank = isNumber ? typed : bankNumber;
        look::showText(edit, QString::number(bank));  // "07" is bank 7
        if (bank == bankNumber) return;
        bankNumber = bank;
    } else if (sender() == arrowUp && bankNumber < lastBank) {
        ++bankNumber;
    } else if (sender() == arrowDown && bankNumber > 0) {
        --bankNumber;
    } else {
        return;
    }
    changeBankNumber();
}

void BankTable::changeBankNumber()
{
    for (QLineEdit *const edit : qAsConst(bankNumbers))
        look::showText(edit, QString::number(bankNumber));
    requestBank();
}

void BankTable::requestBank()
{
    if (data) emit getBankAndPresetData(bankNumber);
}

void BankTable::loadDataFromDevice(DataFromDevice *dataFromDevice) { data = dataFromDevice; }

void BankTable::gotBankAndPresetData(int bank)
{
    if (bank != bankNumber || !data) return;
    changePresetName();
    changeBankName();
    refreshEditors();
}

void BankTable::changePresetName()
{
    for (int preset = 0; preset < presetNames.size(); ++preset)
        if (const auto record = presetRecord(preset)) showName(presetNames[preset], record->name);
}

void BankTable::changeBankName()
{
    const auto record = bankRecord();
    if (!record) return;
    for (QLineEdit *const edit : qAsConst(bankNames))
        showName(edit, record->name);
}

void BankTable::bankNameChanged()
{
    auto *const edit = qobject_cast<QLineEdit *>(sender());
    if (!bankNames.contains(edit)) return;
    if (const auto name = takeNewName(edit, bankRecord())) emit changeBankNameSignal(*name, bankNumber);
}

void BankTable::presetNameChanged()
{
    auto *const edit = qobject_cast<QLineEdit *>(sender());
    const int preset = presetNames.indexOf(edit);
    if (preset < 0) return;
    if (const auto name = takeNewName(edit, presetRecord(preset)))
        emit changePresetNameSignal(*name, bankNumber, preset);
}

void BankTable::showName(QLineEdit *edit, const std::string &name)
{
    look::showText(edit, QString::fromStdString(name));
    shownNames[edit] = edit->text();
}

template <typename Record>
std::optional<QString> BankTable::takeNewName(QLineEdit *edit, const std::shared_ptr<const Record> &record)
{
    if (!data) {
        edit->clear();
        return std::nullopt;
    }
    const QString typed = edit->text();
    // Until the answer to a request arrives, the edit shows another bank's name: leaving it must not rename this bank.
    if (!record || typed == shownNames.value(edit) || typed == QString::fromStdString(record->name))
        return std::nullopt;
    showName(edit, record->name);
    return typed;
}
