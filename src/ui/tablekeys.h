#pragma once

#include <QObject>

class QTableWidget;
class QWidget;

/// The keys of a table whose cells are editors: the arrows go to the next editor of the column or row. In a text, Left
/// and Right do so from its ends, and as long as it is selected as a whole and not altered. What moves a table's own
/// invisible current cell otherwise does nothing; the page keys are announced.
class TableKeys : public QObject
{
    Q_OBJECT

public:
    /// Rules over `ruledTable` and goes with it.
    explicit TableKeys(QTableWidget *ruledTable);

    /// The keys of the table that a widget is a cell of; null outside tables.
    static TableKeys *ofCell(const QWidget *cell);

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    /// 1 for Page Up, -1 for Page Down
    void paged(int step);

private:
    /// To the next editor in steps of so many rows and columns.
    void move(int rows, int columns);

    QTableWidget *table;
};
