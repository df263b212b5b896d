#include "ui/combobox.h"

#include "ui/tablekeys.h"

#include <QAbstractItemView>
#include <QChildEvent>
#include <QKeyEvent>
#include <QSignalBlocker>
#include <QStandardItemModel>
#include <QStyleOptionComboBox>
#include <QStylePainter>
#include <QStyledItemDelegate>
#include <QWheelEvent>

namespace {

constexpr double idleOpacity = 0.45;

}  // namespace

void ComboBox::showStored(int index)
{
    stored = index;
    if (index == currentIndex()) return;
    const QSignalBlocker blocker(this);
    setCurrentIndex(index);
}

void ComboBox::setIdle(const QString &reason)
{
    setToolTip(reason);
    if (isIdle == !reason.isEmpty()) return;
    isIdle = !reason.isEmpty();
    update();
}

void ComboBox::setItems(const QStringList &items)
{
    const int index = currentIndex();
    bool areShown = items.size() == count();
    for (int row = 0; areShown && row < items.size(); ++row)
        areShown = items[row] == itemText(row);
    if (areShown) return;
    const QSignalBlocker blocker(this);
    clear();
    addItems(items);
    setCurrentIndex(index);
}

QSize ComboBox::sizeHint() const
{
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QSize line(0, qMax(fontMetrics().height(), iconSize().height()) + 2);
    return style()->sizeFromContents(QStyle::CT_ComboBox, &option, line, this);
}

void ComboBox::showPopup()
{
    prepareList();
    if (refusal) greyRefusedItems();
    QComboBox::showPopup();
    // One item more than the current one, so that the list does not seem to end there.
    const int last = qMin(currentIndex() + 1, count() - 1);
    for (const int shown : {last, qMax(currentIndex() - 1, 0), currentIndex()})
        view()->scrollTo(model()->index(shown, modelColumn()));
}

void ComboBox::greyRefusedItems()
{
    auto *const items = qobject_cast<QStandardItemModel *>(model());
    for (int row = 0; items && row < items->rowCount(); ++row) {
        const QString reason = refusal(row);
        items->item(row)->setEnabled(reason.isEmpty());
        items->item(row)->setToolTip(reason);
    }
}

void ComboBox::paintEvent(QPaintEvent *)
{
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    if (isIdle) painter.setOpacity(idleOpacity);
    painter.setPen(palette().color(QPalette::Text));
    if (currentIndex() >= 0 && currentIndex() == boldItem) {
        QFont bold = font();
        bold.setBold(true);
        painter.setFont(bold);
    }
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

void ComboBox::childEvent(QChildEvent *event)
{
    QComboBox::childEvent(event);
    // Whoever asks for the view has it made; what is being made is not to be touched yet.
    if (event->added() && !hasList) QMetaObject::invokeMethod(this, &ComboBox::prepareList, Qt::QueuedConnection);
}

void ComboBox::changeEvent(QEvent *event)
{
    // These QComboBox hands on to its list, which it makes for that and whose items it measures.
    const bool concernsList = event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange;
    if (concernsList && !hasList)
        return QWidget::changeEvent(event);  // NOLINT(bugprone-parent-virtual-call): see above
    QComboBox::changeEvent(event);
}

void ComboBox::prepareList()
{
    if (hasList) return;
    hasList = true;
    setItemDelegate(new QStyledItemDelegate(this));  // the box's own ignores the style sheet's row height
    view()->setTextElideMode(Qt::ElideRight);
    for (const QEvent::Type missed : {QEvent::StyleChange, QEvent::FontChange}) {
        QEvent event(missed);
        changeEvent(&event);
    }
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
