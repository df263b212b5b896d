#include "ui/tablekeys.h"

#include <QAbstractButton>
#include <QChildEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTableWidget>

namespace {

/// Whether Left or Right has nothing to do in a text any more.
bool isThrough(const QLineEdit &edit, const QKeyEvent &key)
{
    if (key.isAutoRepeat()) return false;  // a key that is held stays in the text
    if (edit.hasSelectedText()) return edit.selectedText() == edit.text() && !edit.isModified();
    return edit.cursorPosition() == (key.key() == Qt::Key_Left ? 0 : edit.text().size());
}

/// Whether a key is the table's though its cell would take it.
bool passesBy(const QObject *cell, const QKeyEvent &key)
{
    const bool isSideways = key.key() == Qt::Key_Left || key.key() == Qt::Key_Right;
    const bool isArrow = isSideways || key.key() == Qt::Key_Up || key.key() == Qt::Key_Down;
    if (!isArrow || (key.modifiers() & ~Qt::KeypadModifier)) return false;
    if (qobject_cast<const QAbstractButton *>(cell)) return true;  // it would look for any button nearby
    const auto *const edit = qobject_cast<const QLineEdit *>(cell);
    return edit && isSideways && isThrough(*edit, key);
}

}  // namespace

TableKeys::TableKeys(QTableWidget *ruledTable) : QObject(ruledTable), table(ruledTable)
{
    table->installEventFilter(this);
    table->viewport()->installEventFilter(this);  // tells of the cells
}

TableKeys *TableKeys::ofCell(const QWidget *cell)
{
    for (const QWidget *widget = cell; widget; widget = widget->parentWidget())
        if (qobject_cast<const QTableWidget *>(widget)) return widget->findChild<TableKeys *>();
    return nullptr;
}

bool TableKeys::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ChildAdded && watched == table->viewport())
        static_cast<QChildEvent *>(event)->child()->installEventFilter(this);
    if (event->type() != QEvent::KeyPress) return QObject::eventFilter(watched, event);
    const auto &key = *static_cast<QKeyEvent *>(event);
    if (watched != table && !passesBy(watched, key)) return false;
    switch (key.key()) {
    case Qt::Key_Up:
        move(-1, 0);
        return true;
    case Qt::Key_Down:
        move(1, 0);
        return true;
    case Qt::Key_Left:
        move(0, -1);
        return true;
    case Qt::Key_Right:
        move(0, 1);
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

void TableKeys::move(int rows, int columns)
{
    const QWidget *const focused = table->focusWidget();
    if (!focused || !table->isAncestorOf(focused)) return;
    const QModelIndex start = table->indexAt(focused->mapTo(table->viewport(), focused->rect().center()));
    const auto isInside = [](int place, int count) { return place >= 0 && place < count; };
    int row = start.row() + rows, column = start.column() + columns;
    for (; isInside(row, table->rowCount()) && isInside(column, table->columnCount()); row += rows, column += columns) {
        QWidget *const cell = table->cellWidget(row, column);
        if (!cell || !cell->isEnabled() || cell->focusPolicy() == Qt::NoFocus) continue;
        cell->setFocus(Qt::TabFocusReason);
        return;
    }
}
