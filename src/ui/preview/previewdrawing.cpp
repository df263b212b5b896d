#include "ui/preview/previewdrawing.h"

#include "ui/look.h"

#include <QFontMetricsF>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QTextLayout>

namespace preview {

namespace {

using Effect = PreviewScene::Effect;

const Ink &inkOf(Medium medium)
{
    static const Ink screen{look::pageColor, look::windowColor, look::tabColor, "#4d4d55", "#77757a", look::cellColor,
                            "#bfeaf5",       Qt::white,         "#b9b7ba",      "#4fdc6a", "#2c7a40", Qt::black};
    static const Ink paper{Qt::white, Qt::white, Qt::white, Qt::white, "#808080", Qt::white,
                           Qt::black, Qt::black, "#505050", Qt::black, "#c0c0c0", Qt::white};
    return medium == Medium::Paper ? paper : screen;
}

}  // namespace

QColor readableOn(const QColor &ground) { return qGray(ground.rgb()) > 140 ? Qt::black : Qt::white; }

QFont regular(int pixels)
{
    QFont font(DataFromDevice::fontFamily);
    font.setPixelSize(pixels);
    // Hinted widths jump with the scale, and text that was measured to fit would not.
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

QFont bold(int pixels)
{
    QFont font = regular(pixels);
    font.setBold(true);
    return font;
}

QStringList brokenLines(const QString &text, const QFont &lineFont, double width)
{
    QTextLayout layout(text, lineFont);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    QStringList lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        lines << text.mid(line.textStart(), line.textLength()).trimmed();
    }
    layout.endLayout();
    return lines;
}

Drawing::Drawing(QPainter &target, const PreviewScene &pictured, Medium onto, QVector<CutText> &cut)
    : painter(target), scene(pictured), medium(onto), ink(inkOf(onto)), cutTexts(cut)
{}

void Drawing::plate(const QRectF &rect, const QPen &outline, const QBrush &fill, double radius)
{
    painter.setPen(outline);
    painter.setBrush(fill);
    painter.drawRoundedRect(rect, radius, radius);
}

void Drawing::disc(const QPointF &center, double radius, const QPen &outline, const QBrush &fill)
{
    painter.setPen(outline);
    painter.setBrush(fill);
    painter.drawEllipse(center, radius, radius);
}

void Drawing::line(const QVector<QPointF> &points, const QPen &pen)
{
    painter.setPen(pen);
    painter.drawPolyline(points);
}

void Drawing::text(const QRectF &rect, const QString &words, const QFont &lineFont, const QColor &color,
                   Qt::Alignment alignment)
{
    const QFontMetricsF metrics(lineFont);
    const QString shown = metrics.elidedText(words, Qt::ElideRight, rect.width());
    if (shown != words) cutTexts.append({rect, words});
    const double slack = rect.width() - metrics.horizontalAdvance(shown);
    const double x = alignment & Qt::AlignHCenter ? slack / 2 : alignment & Qt::AlignRight ? slack : 0;
    const QPointF baseline = rect.topLeft() + QPointF(x, (rect.height() - metrics.height()) / 2 + metrics.ascent());
    // Shapes: the machine that shows the file may lack the font, which only a PDF brings along.
    if (medium == Medium::Paper && painter.paintEngine()->type() != QPaintEngine::Pdf) {
        QPainterPath path;
        path.addText(baseline, lineFont, shown);
        painter.fillPath(path, color);
        return;
    }
    painter.setFont(lineFont);
    painter.setPen(color);
    painter.drawText(baseline, shown);
}

void Drawing::shape(const QRectF &rect, Effect effect, double radius, const QColor &halfFill)
{
    if (effect == Effect::Toggle) {
        QPainterPath whole;
        whole.addRoundedRect(rect, radius, radius);
        QPainterPath half;
        half.addPolygon(QVector<QPointF>{rect.topRight(), rect.bottomRight(), rect.bottomLeft()});
        painter.fillPath(whole.intersected(half), halfFill);
    }
    const QColor &outline = effect == Effect::Untouched ? ink.outline : effect == Effect::Off ? ink.quiet : ink.lit;
    plate(rect, QPen(outline, 1.5, effect == Effect::Untouched ? Qt::DotLine : Qt::SolidLine),
          effect == Effect::On ? ink.lit : QColor(Qt::transparent), radius);
}

}  // namespace preview
