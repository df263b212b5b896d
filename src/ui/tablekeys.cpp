#include "ui/tablekeys.h"

#include <QKeyEvent>
#include <QTableWidget>

TableKeys::TableKeys(QTableWidget *ruledTable) : QObject(ruledTable), table(ruledTable)
{
    table->installEventFilter(this);
}

TableKeys *TableKeys::ofCell(const QWidget *cell)
{
    for (const QWidget *widget = cell; widget; widget = widget->parentWidget())
        if (qobject_cast<const QTableWidget *>(widget)) return widget->findChild<TableKeys *>();
    return nullptr;
}

bool TableKeys::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress) return QObject::eventFilter(watched, event);
    switch (static_cast<QKeyEvent *>(event)->key()) {
    case Qt::Key_Up:
        moveInColumn(-1);
        return true;
    case Qt::Key_Down:
        moveInColumn(1);
        return true;
    case Qt::Key_PageUp:
        emit paged(1);
        return true;
    case Qt::Key_PageDown:
        emit paged(-1);
        return true;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Escape:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        event->ignore();  // the window's
        return true;
    default:
        return true;
    }
}

void TableKeys::moveInColumn(int step)
{
    const QWidget *const focused = table->focusWidget();
    if (!focused || !table->isAncestorOf(focused)) return;
    const QModelIndex place = table->indexAt(focused->mapTo(table->viewport(), focused->rect().center()));
    for (int row = place.row() + step; row >= 0 && row < table->rowCount(); row += step) {
        QWidget *const cell = table->cellWidget(row, place.column());
        if (!cell || !cell->isEnabled() || cell->focusPolicy() == Qt::NoFocus) continue;
        cell->setFocus(Qt::TabFocusReason);
        return;
    }
}
