#include "ui/preview/previewpainter.h"

#include "ui/preview/previewface.h"
#include "ui/preview/previewpanels.h"

#include <QPainter>

namespace preview {

QVector<CutText> paint(QPainter &painter, const PreviewScene &scene, Medium medium)
{
    QVector<CutText> cut;
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    Face(painter, scene, medium, cut).paint();
    Panels(painter, scene, medium, cut).paint();
    return cut;
}

QRectF footswitchRect(int number)
{
    constexpr QSizeF size(241.2, 100);
    const int column = number % switchesInRow;
    const int row = number < switchesInRow ? 1 : 0;
    return {QPointF(26 + column * (size.width() + 10), 96 + row * (size.height() + 8)), size};
}

QRectF arrowDownRect() { return {406, 34, 40, 38}; }

QRectF arrowUpRect() { return {852, 34, 40, 38}; }

QRectF pictureButtonRect() { return {1030, 322, 122, 34}; }

QRectF sheetsButtonRect() { return {1162, 322, 122, 34}; }

}  // namespace preview
