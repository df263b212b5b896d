#include "ui/tables/banknumberedit.h"

#include "model/records.h"
#include "ui/look.h"

#include <QIntValidator>
#include <QKeyEvent>
#include <QLocale>
#include <QSignalBlocker>
#include <QToolTip>

namespace {

constexpr int lastBank = bankCount - 1;

/// Also finishes an edit that is left empty.
class BankNumberValidator : public QIntValidator
{
public:
    explicit BankNumberValidator(QObject *parent) : QIntValidator(0, lastBank, parent) { setLocale(QLocale::c()); }
    void fixup(QString &input) const override
    {
        if (input.isEmpty()) input = parent()->property("shownBank").toString();
    }
};

}  // namespace

BankNumberEdit::BankNumberEdit(QWidget *parent) : QLineEdit(parent)
{
    look::dressEdit(this);
    setValidator(new BankNumberValidator(this));
    setMaxLength(2);
    setAlignment(Qt::AlignLeft);
    setAccessibleName(tr("Bank number"));
    showBank(0);
    connect(this, &QLineEdit::editingFinished, this, &BankNumberEdit::finish);
    connect(this, &QLineEdit::textEdited, this, [this] { setRefused(false); });
    connect(this, &QLineEdit::inputRejected, this, [this] { setRefused(true); });
}

void BankNumberEdit::showBank(int bank)
{
    shown = bank;
    setProperty("shownBank", QString::number(bank));
    showNumber(bank);
}

void BankNumberEdit::showNumber(int bank)
{
    const QSignalBlocker blocker(this);
    setText(QString::number(bank));  // also where it says so: what was typed is settled
    if (hasFocus()) selectAll();     // the next number is typed over it
}

void BankNumberEdit::finish()
{
    bool isNumber = false;
    const int typed = text().toInt(&isNumber);
    const int bank = isNumber && !isRefused ? typed : shown;
    const bool retype = isModified() && !isRefused;
    setRefused(false);
    showNumber(bank);  // "07" is bank 7
    if (bank != shown || retype) emit entered(bank);
}

void BankNumberEdit::setRefused(bool refused)
{
    if (refused == isRefused) return;
    isRefused = refused;
    look::setBackgroundLine(this,
                            QStringLiteral("background-color: %1;").arg(refused ? look::rejectColor : look::cellColor));
    if (refused)
        QToolTip::showText(mapToGlobal(QPoint(0, height())), tr("Banks are numbered 0 to %1").arg(lastBank), this);
}

void BankNumberEdit::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape) return QLineEdit::keyPressEvent(event);
    setRefused(false);
    showBank(shown);
}

void BankNumberEdit::focusInEvent(QFocusEvent *event)
{
    QLineEdit::focusInEvent(event);
    selectAll();
}

void BankNumberEdit::focusOutEvent(QFocusEvent *event)
{
    QLineEdit::focusOutEvent(event);
    if (isRefused) finish();
}

void BankNumberEdit::mouseReleaseEvent(QMouseEvent *event)
{
    QLineEdit::mouseReleaseEvent(event);
    if (!isModified()) selectAll();  // the press has put the cursor somewhere
}
