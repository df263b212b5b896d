#include "ui/library/libraryview.h"

#include "model/qtversions.h"
#include "ui/library/librarydelegate.h"
#include "ui/library/librarymodel.h"
#include "ui/look.h"

#include <QDrag>
#include <QDropEvent>
#include <QHeaderView>
#include <QItemSelection>
#include <QItemSelectionModel>
#include <QMimeData>
#include <QPainter>

namespace {

constexpr int lineHeight = 26;
constexpr int numberWidth = 36;
constexpr int presetWidth = 106;

/// What hangs at the pointer: what is dragged, in a word.
QPixmap dragPicture(const QWidget &widget, const QString &text)
{
    const QSize size(presetWidth, lineHeight);
    QPixmap picture(size * widget.devicePixelRatioF());
    picture.setDevicePixelRatio(widget.devicePixelRatioF());
    picture.fill(QColor(look::selectionColor));
    QPainter painter(&picture);
    painter.setFont(widget.font());
    painter.setPen(Qt::white);
    painter.drawText(QRect(QPoint(7, 0), size), static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter), text);
    return picture;
}

}  // namespace

LibraryView::LibraryView(QWidget *parent) : QTableView(parent)
{
    setStyleSheet(QStringLiteral("QTableView { background-color: %1; color: white; border: none; }\n"
                                 "QHeaderView { background-color: %1; }\n"
                                 "QHeaderView::section { background-color: %1; color: white; border: none;"
                                 " padding-left: 7px; }\n"
                                 "QTableView:focus { border: 1px solid %2; }")
                      .arg(look::pageColor, look::focusColor));
    setFont(look::pixelFont(DataFromDevice::fontTableContent));
    setItemDelegate(new LibraryDelegate(this));
    setShowGrid(false);
    setWordWrap(false);
    setFrameShape(QFrame::NoFrame);
    setVerticalScrollMode(ScrollPerPixel);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(EditKeyPressed | AnyKeyPressed);
    setTabKeyNavigation(false);
    setDragEnabled(true);
    viewport()->setAcceptDrops(true);
    setDropIndicatorShown(true);
    setDragDropOverwriteMode(true);
    setDefaultDropAction(Qt::MoveAction);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(lineHeight);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setSectionsClickable(false);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setFixedHeight(30);
}

void LibraryView::setModel(QAbstractItemModel *model)
{
    QTableView::setModel(model);
    for (int column = 0; column < model->columnCount(); ++column)
        setColumnWidth(column, column == LibraryModel::NumberColumn ? numberWidth : presetWidth);
    horizontalHeader()->setSectionResizeMode(LibraryModel::NameColumn, QHeaderView::Stretch);  // what is left
}

int LibraryView::bankOf(const QModelIndex &index) const
{
    return index.sibling(index.row(), LibraryModel::NumberColumn).data().toInt();
}

RecordId LibraryView::recordOf(const QModelIndex &index) const
{
    return LibraryModel::recordAt(bankOf(index), index.column());
}

std::set<RecordId> LibraryView::selection() const
{
    std::set<RecordId> records;
    for (const QModelIndex &index : selectedIndexes())
        records.merge(LibraryModel::recordsAt(bankOf(index), index.column()));
    return records;
}

std::set<int> LibraryView::selectedBanks() const
{
    std::set<int> banks;
    for (const QModelIndex &index : selectedIndexes())
        banks.insert(bankOf(index));
    return banks;
}

std::optional<RecordId> LibraryView::currentRecord() const
{
    return currentIndex().isValid() ? std::optional(recordOf(currentIndex())) : std::nullopt;
}

void LibraryView::selectBanks(int first, int count)
{
    QItemSelection rows;
    QModelIndex current;
    for (int row = 0; row < model()->rowCount(); ++row) {
        const QModelIndex start = model()->index(row, LibraryModel::NumberColumn);
        const int bank = bankOf(start);
        if (bank < first || bank >= first + count) continue;
        rows.select(start, start);
        if (!current.isValid()) current = start;
    }
    if (!current.isValid()) return;
    setCurrentIndex(current);
    selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect);
}

// --- Drag and drop

void LibraryView::startDrag(Qt::DropActions actions)
{
    const QModelIndex start = currentIndex();
    if (!start.isValid()) return;
    dragged.clear();
    draggedBanks.clear();
    for (const QModelIndex &index : selectedIndexes())
        if (start.column() == LibraryModel::NumberColumn)
            draggedBanks.insert(bankOf(index));
        else if (index.column() >= LibraryModel::FirstPresetColumn)
            dragged.insert(recordOf(index));
    const std::size_t count = dragged.size() + draggedBanks.size();
    if (count == 0) return;
    auto *const drag = new QDrag(this);
    auto *const mime = new QMimeData;
    mime->setData(LibraryModel::dragType(), {});
    drag->setMimeData(mime);
    const QString name =
        start.sibling(start.row(), draggedBanks.empty() ? start.column() : LibraryModel::NameColumn).data().toString();
    drag->setPixmap(dragPicture(*this, count == 1 ? name : QStringLiteral("× %1").arg(count)));
    drag->exec(actions, Qt::MoveAction);
    dragged.clear();
    draggedBanks.clear();
}

void LibraryView::dragEnterEvent(QDragEnterEvent *event)
{
    if (isDragging()) QTableView::dragEnterEvent(event);
}

void LibraryView::dropEvent(QDropEvent *event)
{
    const QModelIndex target = indexAt(placeOf(*event).toPoint());
    stopAutoScroll();
    setState(NoState);
    viewport()->update();
    if (!isDragging() || !target.isValid()) return event->ignore();
    event->accept();
    if (!draggedBanks.empty())
        emit banksDropped(draggedBanks, bankOf(target));
    else if (target.column() >= LibraryModel::FirstPresetColumn)
        emit presetsDropped(dragged, recordOf(target), event->dropAction() == Qt::CopyAction);
}
