#pragma once

#include "ui/preview/previewscene.h"

#include <QRectF>
#include <QSizeF>

class QPainter;

/// Paints a preview scene on a canvas of its own units, which the painter's transform brings to any size.
namespace preview {

inline constexpr QSizeF canvas{1298, 567};
inline constexpr int switchesInRow = 5;

enum class Medium { Screen, FocusedScreen, Paper };

/// A text that the picture shows shortened, and where.
struct CutText
{
    QRectF place;
    QString whole;
};

/// Paints every pixel of the canvas; returns the texts that did not fit.
QVector<CutText> paint(QPainter &painter, const PreviewScene &scene, Medium medium);

/// Where footswitch `number` (0 to 9) lies: 0 to 4 in the row by the player's foot, 5 to 9 above.
QRectF footswitchRect(int number);
/// Where the buttons that page the bank lie, beside the display.
QRectF arrowDownRect();
QRectF arrowUpRect();
/// Where the buttons that save the picture and sheets lie, on the screen: at the end of the chosen footswitch's header.
QRectF pictureButtonRect();
QRectF sheetsButtonRect();

}  // namespace preview
