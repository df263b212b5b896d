#pragma once

#include <QPoint>

class QMouseEvent;
class QWidget;

/// Moves a window that has no system frame by a band along its top edge. The window hands over its mouse events.
class WindowDrag
{
public:
    /// The band is the window's top `bandHeight` pixels.
    explicit WindowDrag(int bandHeight);

    void press(const QMouseEvent *event);
    /// Keeps the pressed point under the pointer if it lies in the band.
    void move(const QMouseEvent *event, QWidget *window) const;
    void release();

private:
    int height;
    QPoint anchor;  ///< the pressed point in the window; below the band while nothing is dragged
};
