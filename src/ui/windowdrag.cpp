#include "ui/windowdrag.h"

#include "model/qtversions.h"

#include <QMouseEvent>
#include <QWidget>

WindowDrag::WindowDrag(int bandHeight) : height(bandHeight), anchor(0, bandHeight + 1) {}

void WindowDrag::press(const QMouseEvent *event) { anchor = placeOf(*event).toPoint(); }

void WindowDrag::move(const QMouseEvent *event, QWidget *window) const
{
    if (anchor.y() < height) window->move(screenPlaceOf(*event) - anchor);
}

void WindowDrag::release() { anchor.setY(height + 1); }
