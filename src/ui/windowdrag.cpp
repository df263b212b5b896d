#include "ui/windowdrag.h"

#include <QMouseEvent>
#include <QWidget>

WindowDrag::WindowDrag(int bandHeight) : height(bandHeight), anchor(0, bandHeight + 1) {}

void WindowDrag::press(const QMouseEvent *event) { anchor = event->localPos().toPoint(); }

void WindowDrag::move(const QMouseEvent *event, QWidget *window) const
{
    if (anchor.y() < height) window->move(event->globalPos() - anchor);
}

void WindowDrag::release() { anchor.setY(height + 1); }
