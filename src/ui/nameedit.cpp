#include "ui/nameedit.h"

#include "ui/look.h"
#include "ui/namebutton.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QSignalBlocker>
#include <QStyleOptionFrame>
#include <QStylePainter>
#include <QToolTip>

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

QRect NameEdit::textPlace() const
{
    constexpr int margin = 2;  // the one that QLineEdit leaves on both sides of its text
    QStyleOptionFrame option;
    initStyleOption(&option);
    return style()->subElementRect(QStyle::SE_LineEditContents, &option, this).adjusted(margin, 0, -margin, 0);
}

bool NameEdit::isCut() const { return fontMetrics().horizontalAdvance(text()) > textPlace().width(); }

void NameEdit::paintEvent(QPaintEvent *event)
{
    if (hasFocus() || !isCut()) return QLineEdit::paintEvent(event);
    QStylePainter painter(this);
    QStyleOptionFrame option;
    initStyleOption(&option);
    painter.drawPrimitive(QStyle::PE_PanelLineEdit, option);
    painter.setPen(palette().color(QPalette::Text));
    const QRect place = textPlace();
    painter.drawText(place, static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter),
                     fontMetrics().elidedText(text(), Qt::ElideRight, place.width()));
}

bool NameEdit::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip || !isCut()) return QLineEdit::event(event);
    QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), plainToolTip(text()), this);
    return true;
}

void NameEdit::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && isAltered())
        takeBack();
    else
        QLineEdit::keyPressEvent(event);
}
