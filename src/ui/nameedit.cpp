#include "ui/nameedit.h"

#include "ui/look.h"

#include <QKeyEvent>
#include <QSignalBlocker>

NameEdit::NameEdit(QWidget *parent, const QString &text) : QLineEdit(text, parent), stored(text)
{
    look::dressEdit(this);
}

void NameEdit::showStored(const QString &text)
{
    const bool isTyped = isAltered();
    if (!isTyped && stored == text) return;
    const bool isBeingTyped = isTyped && hasFocus();
    stored = text;
    if (!isBeingTyped) takeBack();
}

void NameEdit::takeBack()
{
    if (!isAltered()) return;
    const QSignalBlocker blocker(this);
    setText(stored);
    if (!hasFocus()) setCursorPosition(0);
}

void NameEdit::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && isAltered())
        takeBack();
    else
        QLineEdit::keyPressEvent(event);
}
