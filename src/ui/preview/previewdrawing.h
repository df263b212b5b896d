#pragma once

#include "ui/preview/previewpainter.h"

#include <QBrush>
#include <QColor>
#include <QFont>
#include <QPen>

namespace preview {

/// The colours of a medium. Paper takes dark lines on white: a ground of colour would only cost ink.
struct Ink
{
    QColor ground;
    QColor unit;
    QColor plate;        ///< of a footswitch or a wah pad
    QColor chosenPlate;  ///< of the footswitch that is told in full
    QColor outline;
    QColor display;
    QColor displayText;
    QColor text;
    QColor quiet;    ///< what matters less
    QColor lit;      ///< what is on
    QColor halfLit;  ///< the filled half of a box that toggles: text runs across
    QColor onLit;    ///< text on what is on
};

/// Black or white, whichever is readable on the ground.
QColor readableOn(const QColor &ground);

QFont regular(int pixels);
QFont bold(int pixels);
/// The lines of a text that is broken to a width.
QStringList brokenLines(const QString &text, const QFont &lineFont, double width);

/// The shapes and texts of which the parts of the picture are made, in the colours of a medium.
class Drawing
{
public:
    /// Adds the texts that it cuts to `cut`. All references outlive the drawing.
    Drawing(QPainter &target, const PreviewScene &pictured, Medium onto, QVector<CutText> &cut);

protected:
    void plate(const QRectF &rect, const QPen &outline, const QBrush &fill, double radius = 8);
    void disc(const QPointF &center, double radius, const QPen &outline, const QBrush &fill);
    void line(const QVector<QPointF> &points, const QPen &pen);
    /// One line of text in the middle of the rectangle's height, elided where it does not fit.
    void text(const QRectF &rect, const QString &words, const QFont &lineFont, const QColor &color,
              Qt::Alignment alignment = Qt::AlignLeft);
    /// A state told by fill and outline: filled, hollow, half filled, dotted.
    void shape(const QRectF &rect, PreviewScene::Effect effect, double radius, const QColor &halfFill);

    QPainter &painter;
    const PreviewScene &scene;
    const Medium medium;
    const Ink &ink;

private:
    QVector<CutText> &cutTexts;
};

}  // namespace preview
