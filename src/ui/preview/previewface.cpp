#include "ui/preview/previewface.h"

#include "ui/look.h"

#include <QPainter>

namespace preview {

namespace {

using Effect = PreviewScene::Effect;

constexpr QRectF unitRect{14, 10, 1270, 302};
constexpr QRectF padRects[] = {{26, 20, 372, 66}, {900, 20, 372, 66}};
constexpr QRectF displayRect{454, 20, 390, 66};

}  // namespace

void Face::paint()
{
    paintGround();
    plate(unitRect, ink.outline, ink.unit, 14);
    paintDisplay();
    for (std::size_t pad = 0; pad < scene.wahPads.size(); ++pad)
        paintWahPad(padRects[pad], tr("WAH PAD %1").arg(pad + 1), scene.wahPads[pad]);
    for (int number = 0; number < presetCount; ++number)
        paintFootswitch(number);
}

void Face::paintGround()
{
    const QRectF all(QPointF(), canvas);
    painter.fillRect(all, medium == Medium::Paper ? ink.ground : QColor(look::windowColor));
    if (medium != Medium::Paper) plate(all, Qt::NoPen, ink.ground);
}

void Face::paintDisplay()
{
    plate(displayRect, QPen(ink.outline, 2), ink.display, 6);
    text({displayRect.left() + 14, displayRect.top(), 62, displayRect.height()}, QString::number(scene.bank), bold(44),
         ink.displayText, Qt::AlignRight);
    const QRectF words(displayRect.left() + 94, displayRect.top() + 9, displayRect.width() - 106, 16);
    text(words, tr("BANK"), regular(11), ink.displayText);
    text(words.adjusted(0, 16, 0, 32), scene.bankName, bold(24), ink.displayText);
}

void Face::paintWahPad(const QRectF &rect, const QString &title, const PreviewScene::WahPad &pad)
{
    plate(rect, ink.outline, ink.plate);
    const QRectF tread(rect.left() + 10, rect.top() + 9, 92, rect.height() - 18);
    plate(tread, ink.outline, ink.unit, 6);
    for (const double y : {tread.top() + 6, tread.top() + 12, tread.bottom() - 12, tread.bottom() - 6})
        line({{tread.left() + 6, y}, {tread.right() - 6, y}}, ink.outline);
    text(tread, title, bold(11), ink.text, Qt::AlignCenter);
    const QRectF words(tread.right() + 14, rect.top() + 10, rect.right() - tread.right() - 26, 20);
    if (pad.action.isEmpty()) return;
    text(words, pad.action, regular(13), ink.quiet);
    disc(words.topLeft() + QPointF(9, 34), 8, QPen(ink.text, 1.5), pad.color.isValid() ? pad.color : ink.plate);
    text(words.adjusted(26, 23, 0, 25), pad.target, bold(17), ink.text);
}

void Face::paintFootswitch(int number)
{
    const PreviewScene::Footswitch &pictured = scene.footswitches[static_cast<std::size_t>(number)];
    const QRectF rect = footswitchRect(number);
    const bool chosen = number == scene.chosen;
    const QColor &ground = chosen ? ink.chosenPlate : ink.plate;
    if (chosen && medium == Medium::FocusedScreen)
        plate(rect.adjusted(-3, -3, 3, 3), QPen(QColor(look::focusColor), 3), Qt::NoBrush, 10);
    plate(rect, chosen ? QPen(ink.text, 2.5) : QPen(ink.outline), ground);

    const QPointF center(rect.left() + 36, rect.center().y());
    const QColor &cap = pictured.color.isValid() ? pictured.color : ground;
    disc(center, 25, QPen(pictured.read ? ink.text : ink.outline, 2), cap);
    text({center - QPointF(25, 25), QSizeF(50, 50)}, QString::number(number), bold(24),
         medium == Medium::Paper || pictured.color.isValid() ? readableOn(cap) : ink.quiet, Qt::AlignCenter);
    const QRectF words(rect.left() + 70, rect.top() + 12, rect.width() - 76, 26);
    text(words, pictured.name, bold(18), ink.text);
    text(words.adjusted(0, 27, 0, 17), pictured.function, regular(11), ink.quiet);
    paintGlyphs(words.topLeft() + QPointF(1, 58), pictured);
}

void Face::paintGlyphs(QPointF place, const PreviewScene::Footswitch &pictured)
{
    constexpr double size = 7;
    const auto glyphs = [&](const QVector<PreviewScene::Box> &boxes, double radius, double gapAfterFirst) {
        for (const PreviewScene::Box &box : boxes) {
            const QRectF rect(place, QSizeF(size, size));
            if (box.effect == Effect::Untouched)
                line({rect.center() - QPointF(1, 0), rect.center() + QPointF(1, 0)}, QPen(ink.quiet, 1.5));
            else
                shape(rect, box.effect, radius, ink.lit);
            place.rx() += size + 2 + (&box == &boxes.first() ? gapAfterFirst : 0);
        }
        place.rx() += 5;
    };
    glyphs(pictured.path, 1, 4);
    glyphs(pictured.outputs, size / 2, 0);
    if (!pictured.midi.isEmpty()) text({place, QSizeF(30, size)}, tr("MIDI"), bold(10), ink.text);
}

}  // namespace preview
