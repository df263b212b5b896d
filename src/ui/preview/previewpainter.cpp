#include "ui/preview/previewpainter.h"

#include "ui/look.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QTextLayout>

#include <algorithm>

namespace preview {

namespace {

using Effect = PreviewScene::Effect;

constexpr QRectF unitRect{14, 10, 1270, 302};
constexpr QRectF padRects[] = {{26, 20, 372, 66}, {900, 20, 372, 66}};
constexpr QRectF displayRect{454, 20, 390, 66};
constexpr QRectF headerRect{14, 322, 1270, 34};
constexpr QRectF signalPanel{14, 364, 626, 193};
constexpr QRectF midiPanel{650, 364, 404, 193};
constexpr QRectF pedalPanel{1064, 364, 220, 193};

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

const Ink &inkOf(Medium medium)
{
    static const Ink screen{look::pageColor, look::windowColor, look::tabColor, "#4d4d55", "#77757a", look::cellColor,
                            "#bfeaf5",       Qt::white,         "#b9b7ba",      "#4fdc6a", "#2c7a40", Qt::black};
    static const Ink paper{Qt::white, Qt::white, Qt::white, Qt::white, "#808080", Qt::white,
                           Qt::black, Qt::black, "#505050", Qt::black, "#c0c0c0", Qt::white};
    return medium == Medium::Paper ? paper : screen;
}

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

/// The lines of a text that is broken to a width.
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

class ScenePainter
{
    Q_DECLARE_TR_FUNCTIONS(PreviewScene)

public:
    ScenePainter(QPainter &target, const PreviewScene &pictured, Medium onto)
        : painter(target), scene(pictured), told(pictured.chosenFootswitch()), medium(onto), ink(inkOf(onto))
    {}

    void paint()
    {
        painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
        paintGround();
        plate(unitRect, ink.outline, ink.unit, 14);
        paintDisplay();
        for (std::size_t pad = 0; pad < scene.wahPads.size(); ++pad)
            paintWahPad(padRects[pad], tr("WAH PAD %1").arg(pad + 1), scene.wahPads[pad]);
        for (int number = 0; number < presetCount; ++number)
            paintFootswitch(number);
        if (!scene.notice.isEmpty()) {
            const QRectF all = headerRect.united(signalPanel).united(pedalPanel);
            plate(all, ink.outline, ink.unit);
            text(all, scene.notice, regular(18), ink.text, Qt::AlignCenter);
            return;
        }
        paintHeader();
        paintSignalPath();
        paintOutputs();
        paintMidi();
        paintPedal();
    }

private:
    /// Every pixel of the canvas; on the screen it takes the form of a page.
    void paintGround()
    {
        const QRectF all(QPointF(), canvas);
        painter.fillRect(all, medium == Medium::Paper ? ink.ground : QColor(look::windowColor));
        if (medium != Medium::Paper) plate(all, Qt::NoPen, ink.ground);
    }

    void plate(const QRectF &rect, const QPen &outline, const QBrush &fill, double radius = 8)
    {
        painter.setPen(outline);
        painter.setBrush(fill);
        painter.drawRoundedRect(rect, radius, radius);
    }

    void disc(const QPointF &center, double radius, const QPen &outline, const QBrush &fill)
    {
        painter.setPen(outline);
        painter.setBrush(fill);
        painter.drawEllipse(center, radius, radius);
    }

    void line(const QVector<QPointF> &points, const QPen &pen)
    {
        painter.setPen(pen);
        painter.drawPolyline(points);
    }

    /// One line of text in the middle of the rectangle's height, elided where it does not fit.
    void text(const QRectF &rect, const QString &words, const QFont &lineFont, const QColor &color,
              Qt::Alignment alignment = Qt::AlignLeft)
    {
        const QFontMetricsF metrics(lineFont);
        const QString shown = metrics.elidedText(words, Qt::ElideRight, rect.width());
        const double slack = rect.width() - metrics.horizontalAdvance(shown);
        const double x = alignment & Qt::AlignHCenter ? slack / 2 : alignment & Qt::AlignRight ? slack : 0;
        const QPointF baseline = rect.topLeft() + QPointF(x, (rect.height() - metrics.height()) / 2 + metrics.ascent());
        if (medium == Medium::Paper) {  // shapes: the machine that shows the file may lack the font
            QPainterPath path;
            path.addText(baseline, lineFont, shown);
            painter.fillPath(path, color);
            return;
        }
        painter.setFont(lineFont);
        painter.setPen(color);
        painter.drawText(baseline, shown);
    }

    void paintDisplay()
    {
        plate(displayRect, QPen(ink.outline, 2), ink.display, 6);
        text({displayRect.left() + 14, displayRect.top(), 62, displayRect.height()}, QString::number(scene.bank),
             bold(44), ink.displayText, Qt::AlignRight);
        const QRectF words(displayRect.left() + 94, displayRect.top() + 9, displayRect.width() - 106, 16);
        text(words, tr("BANK"), regular(11), ink.displayText);
        text(words.adjusted(0, 16, 0, 32), scene.bankName, bold(24), ink.displayText);
    }

    void paintWahPad(const QRectF &rect, const QString &title, const PreviewScene::WahPad &pad)
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

    void paintFootswitch(int number)
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

    /// What the footswitch does, as a row of small shapes: the buffer, the loops, the switch outputs (round), MIDI.
    void paintGlyphs(QPointF place, const PreviewScene::Footswitch &pictured)
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

    /// A state told by fill and outline: filled, hollow, half filled, dotted.
    void shape(const QRectF &rect, Effect effect, double radius, const QColor &halfFill)
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

    void paintHeader()
    {
        const bool paper = medium == Medium::Paper;
        const QColor color = told.color.isValid() ? told.color : ink.outline;
        plate(headerRect, QPen(color, 2.5), paper ? ink.ground : color);
        const QColor words = paper ? ink.text : readableOn(color);
        const auto part = [](double left, double width) {
            return QRectF(headerRect.left() + left, headerRect.top(), width, headerRect.height());
        };
        text(part(14, 410), QString::number(scene.chosen) + QStringLiteral("   ") + told.name, bold(18), words);
        text(part(444, 230), told.function, bold(13), words);
        text(part(684, 572), told.summary, regular(14), words, Qt::AlignRight);
    }

    /// The panel with its title; returns the place of the first line below that.
    QRectF paintPanel(const QRectF &rect, const QString &title)
    {
        plate(rect, ink.outline, ink.unit);
        const QRectF words(rect.left() + 12, rect.top() + 7, rect.width() - 24, 16);
        text(words, title, bold(11), ink.quiet);
        return words.translated(0, 21);
    }

    /// The box of a loop (column 0: the buffer) or of a switch output.
    QRectF paintBox(int column, double y, const PreviewScene::Box &box)
    {
        const QRectF rect(signalPanel.left() + 48 + column * 76, y, 68, 38);
        const bool untouched = box.effect == Effect::Untouched;
        shape(rect, box.effect, 5, ink.halfLit);
        const QColor &words = box.effect == Effect::On ? ink.onLit : untouched ? ink.quiet : ink.text;
        const QRectF upper(rect.left() + 2, rect.top() + 2, rect.width() - 4, rect.height() / 2 - 2);
        text(upper, box.label, regular(11), words, Qt::AlignCenter);
        text(upper.translated(0, upper.height()), box.text, untouched ? regular(11) : bold(13), words, Qt::AlignCenter);
        return rect;
    }

    static bool on(Effect effect) { return effect == Effect::On || effect == Effect::Toggle; }
    static bool off(Effect effect) { return effect == Effect::Off || effect == Effect::Toggle; }

    /// The signal runs from IN to OUT: through a loop that is on, below one that is off.
    void paintSignalPath()
    {
        paintPanel(signalPanel, tr("SIGNAL PATH"));
        const double y = signalPanel.top() + 76;
        const double right = signalPanel.right() - 40;
        const QPen wire(ink.text, 2.2);
        QPointF from(signalPanel.left() + 34, y);
        text({from.x() - 22, y - 8, 18, 16}, tr("IN"), bold(11), ink.text);
        text({right + 8, y - 8, 28, 16}, tr("OUT"), bold(11), ink.text);
        for (int column = 0; column < told.path.size(); ++column) {
            const Effect effect = told.path[column].effect;
            const QRectF rect = paintBox(column, signalPanel.top() + 27, told.path[column]);
            const QPointF in(rect.left() + 12, y);
            const QPointF out(rect.right() - 12, y);
            const QPen way = effect == Effect::Toggle      ? QPen(ink.lit, 2, Qt::DashLine)
                             : effect == Effect::Untouched ? QPen(ink.quiet, 2.2, Qt::DotLine)
                                                           : wire;
            line({from, in}, wire);
            if (on(effect)) {
                line({in, {in.x(), rect.bottom() + 1}}, way);
                line({{out.x(), rect.bottom() + 1}, out}, way);
            }
            if (effect != Effect::On) line({in, out}, way);
            from = out;
        }
        line({from, {right, y}}, wire);
        painter.setPen(Qt::NoPen);
        painter.setBrush(ink.text);
        painter.drawPolygon(QVector<QPointF>{{right + 4, y}, {right - 5, y - 5}, {right - 5, y + 5}});
    }

    /// Every switch output is a contact: closed, open, either, or left as it is.
    void paintOutputs()
    {
        const double top = signalPanel.top() + 97;
        text({signalPanel.left() + 12, top, 200, 16}, tr("SWITCH OUTPUTS"), bold(11), ink.quiet);
        for (int column = 0; column < told.outputs.size(); ++column) {
            const Effect effect = told.outputs[column].effect;
            const QRectF rect = paintBox(column + 1, top + 20, told.outputs[column]);
            const QPointF pivot(rect.center().x() - 16, rect.bottom() + 18);
            const QPointF contact = pivot + QPointF(32, 0);
            const QPen blade = effect == Effect::Toggle ? QPen(ink.lit, 2, Qt::DashLine) : QPen(ink.text, 2);
            if (on(effect)) line({pivot, contact}, blade);
            if (off(effect)) line({pivot, contact - QPointF(4, 11)}, blade);
            for (const QPointF &end : {pivot, contact})
                disc(end, 3, Qt::NoPen, effect == Effect::Untouched ? ink.outline : ink.text);
        }
    }

    /// The sentences are broken into lines if there is room for all of them, else they are small with one line each.
    void paintMidi()
    {
        QRectF place = paintPanel(midiPanel, tr("MIDI"));
        if (told.midi.isEmpty()) return text(place, told.midiNote, regular(13), ink.quiet);
        constexpr double indent = 14;
        constexpr int smallRoom = 10;
        int size = 13;
        QVector<QStringList> paragraphs;
        int lines = 0;
        for (const QString &sentence : told.midi) {
            paragraphs << brokenLines(sentence, regular(size), place.width() - indent);
            lines += paragraphs.last().size();
        }
        if (lines > smallRoom - 1) {
            size = 11;
            paragraphs.clear();
            for (const QString &sentence : told.midi.mid(0, smallRoom))
                paragraphs << QStringList(sentence);
            if (told.midi.size() > smallRoom)
                paragraphs.last() = QStringList(tr("and %1 more").arg(told.midi.size() - smallRoom + 1));
        }
        place.setHeight(size + 4.5);
        for (const QStringList &paragraph : qAsConst(paragraphs)) {
            disc({place.left() + 4, place.center().y()}, 3, Qt::NoPen, ink.lit);
            for (const QString &words : paragraph) {
                text(place.adjusted(indent, 0, 0, 0), words, regular(size), ink.text);
                place.translate(0, place.height());
            }
        }
    }

    void paintPedal()
    {
        const PreviewScene::Pedal &pedal = told.pedal;
        const QRectF words = paintPanel(pedalPanel, tr("EXPRESSION PEDAL"));
        if (!pedal.assigned) return text(words, pedal.text, regular(13), ink.quiet);
        text(words, pedal.text, bold(13), ink.text);
        text(words.translated(0, 17), pedal.curve, regular(11), ink.quiet);

        const QRectF plot(words.left() + 30, words.top() + 42, words.width() - 60, 84);
        plate(plot, ink.outline, Qt::NoBrush, 0);
        constexpr int steps = 32;
        QVector<QPointF> curve;
        for (int step = 0; step <= steps; ++step) {
            const double travel = static_cast<double>(step) / steps;
            curve << QPointF(plot.left() + travel * plot.width(),
                             plot.bottom() - std::min(pedal.valueAt(travel) / 127, 1.0) * plot.height());
        }
        line(curve, QPen(ink.lit, 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        text({plot.left() - 31, curve.first().y() - 8, 26, 16}, QString::number(pedal.toeUp), bold(11), ink.text,
             Qt::AlignRight);
        text({plot.right() + 6, curve.last().y() - 8, 26, 16}, QString::number(pedal.toeDown), bold(11), ink.text);
        const QRectF below(words.left(), plot.bottom() + 9, words.width(), 16);
        text(below, tr("TOE UP"), regular(11), ink.quiet);
        text(below, tr("TOE DOWN"), regular(11), ink.quiet, Qt::AlignRight);
    }

    QPainter &painter;
    const PreviewScene &scene;
    const PreviewScene::Footswitch &told;
    Medium medium;
    const Ink &ink;
};

}  // namespace

void paint(QPainter &painter, const PreviewScene &scene, Medium medium)
{
    ScenePainter(painter, scene, medium).paint();
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

}  // namespace preview
