#include "ui/message.h"

void message::tell(QWidget *parent, const QString &title, const QString &text, QMessageBox::Icon icon)
{
    QMessageBox box(icon, title, QString(), QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText);
    box.setText(text);
    box.exec();
}

void message::show(QWidget *parent, const QString &title, const QString &text)
{
    auto *box = new QMessageBox(QMessageBox::Critical, title, QString(), QMessageBox::Ok, parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextFormat(Qt::PlainText);
    box->setText(text);
    box->open();
}

QMessageBox::StandardButton message::ask(QWidget *parent, const QString &title, const QString &question,
                                         Answers answers, QMessageBox::Icon icon)
{
    QMessageBox box(icon, title, QString(), answers.offered, parent);
    box.setTextFormat(Qt::PlainText);
    box.setText(question);
    box.setDefaultButton(answers.usual);
    return static_cast<QMessageBox::StandardButton>(box.exec());
}

QStringList message::fitting(const QStringList &lines)
{
    constexpr int most = 12;
    return lines.size() > most ? QStringList(lines.mid(0, most)) << QStringLiteral("...") : lines;
}
