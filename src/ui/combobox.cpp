#include "ui/combobox.h"

#include "ui/tablekeys.h"

#include <QKeyEvent>
#include <QSignalBlocker>
#include <QWheelEvent>

void ComboBox::showStored(int index)
{
    const QSignalBlocker blocker(this);
    stored = index;
    setCurrentIndex(index);
}

void ComboBox::setItems(const QStringList &items)
{
    const QSignalBlocker blocker(this);
    const int index = currentIndex();
    clear();
    addItems(items);
    setCurrentIndex(index);
}

void ComboBox::keyPressEvent(QKeyEvent *event)
{
    const bool withAlt = event->modifiers().testFlag(Qt::AltModifier);
    switch (event->key()) {
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_F4:
        return showPopup();
    case Qt::Key_Up:
    case Qt::Key_Down:
        if (withAlt) return showPopup();
        if (TableKeys::ofCell(this)) return event->ignore();
        focusNextPrevChild(event->key() == Qt::Key_Down);
        return;
    default:
        event->ignore();
    }
}

void ComboBox::wheelEvent(QWheelEvent *event) { event->ignore(); }
