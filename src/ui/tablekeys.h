#pragma once

#include <QObject>

class QTableWidget;
class QWidget;

/// The keys of a table whose cells are editors: Up and Down go to the next editor of the column. What moves a table's
/// own invisible current cell otherwise does nothing; the page keys are announced.
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
    void moveInColumn(int step);

    QTableWidget *table;
};
