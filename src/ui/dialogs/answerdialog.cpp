#include "ui/dialogs/answerdialog.h"

#include "ui/look.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>

namespace {}  // namespace

void AnswerDialog::on_pushButton_ok_clicked()
{
    const QString why = obstacle();
    if (why.isEmpty())
        accept();
    else
        tell(QStringLiteral("Error"), why);
}

void AnswerDialog::on_pushButton_cancel_clicked() { reject(); }

void AnswerDialog::keyPressEvent(QKeyEvent *event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && !qobject_cast<QPushButton *>(focusWidget()))
        focusNextChild();
    else
        FramelessDialog::keyPressEvent(event);
}

QHBoxLayout *AnswerDialog::makeAnswers()
{
    ok = makeButton(QStringLiteral("pushButton_ok"), QStringLiteral("OK"), look::acceptColor);
    connect(ok, &QPushButton::clicked, this, &AnswerDialog::on_pushButton_ok_clicked);
    QPushButton *const cancel =
        makeButton(QStringLiteral("pushButton_cancel"), QStringLiteral("CANCEL"), look::rejectColor);
    connect(cancel, &QPushButton::clicked, this, &AnswerDialog::on_pushButton_cancel_clicked);
    return makeAnswerRow({ok, cancel});
}

void AnswerDialog::enableOk(bool enabled) { ok->setEnabled(enabled); }
