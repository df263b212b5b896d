#pragma once

#include <QMessageBox>
#include <QStringList>

// Message boxes. All that they say is plain text, since much of it comes from the unit, from files and from the user.
namespace message {

/// Tells something, and waits until it has been read.
void tell(QWidget *parent, const QString &title, const QString &text, QMessageBox::Icon icon = QMessageBox::Critical);
/// Tells something and goes on meanwhile.
void show(QWidget *parent, const QString &title, const QString &text);

struct Answers
{
    QMessageBox::StandardButtons offered = QMessageBox::Yes | QMessageBox::No;
    QMessageBox::StandardButton usual = QMessageBox::No;  ///< what Enter answers
};
/// Asks something, and returns the answer.
QMessageBox::StandardButton ask(QWidget *parent, const QString &title, const QString &question, Answers answers = {},
                                QMessageBox::Icon icon = QMessageBox::Question);

/// As many of the lines as a box has room for; an ellipsis stands for the others.
QStringList fitting(const QStringList &lines);

}  // namespace message
