#include "ui/preview/previewpanels.h"

#include <QPainter>

#include <algorithm>
#include <utility>

namespace preview {

namespace {

using Effect = PreviewScene::Effect;

constexpr QRectF headerRect{14, 322, 1270, 34};
constexpr QRectF signalPanel{14, 364, 626, 193};
constexpr QRectF midiPanel{650, 364, 404, 193};
constexpr QRectF pedalPanel{1064, 364, 220, 193};

bool on(Effect effect) { return effect == Effect::On || effect == Effect::Toggle; }
bool off(Effect effect) { return effect == Effect::Off || effect == Effect::Toggle; }

/// On the screen buttons take its right end.
QRectF headerOn(Medium medium)
{
    QRectF rect = headerRect;
    if (medium != Medium::Paper) rect.setRight(pictureButtonRect().left() - 10);
    return rect;
}

}  // namespace

Panels::Panels(QPainter &target, const PreviewScene &pictured, Medium onto, QVector<CutText> &cut)
    : Drawing(target, pictured, onto, cut), told(pictured.chosenFootswitch()), header(headerOn(onto))
{}

void Panels::paint()
{
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

void Panels::paintHeader()
{
    const bool paper = medium == Medium::Paper;
    const QColor color = told.color.isValid() ? told.color : ink.outline;
    plate(header, QPen(color, 2.5), paper ? ink.ground : color);
    const QColor words = paper ? ink.text : readableOn(color);
    const auto part = [this](double left, double width) {
        return QRectF(header.left() + left, header.top(), width, header.height());
    };
    const double summary = header.width() - 480;
    const double function = summary - 186;
    text(part(14, function - 28), QString::number(scene.chosen) + QStringLiteral("   ") + told.name, bold(18), words);
    text(part(function, 176), told.function, bold(13), words);
    text(part(summary, 466), told.summary, regular(14), words, Qt::AlignRight);
}

QRectF Panels::paintPanel(const QRectF &rect, const QString &title)
{
    plate(rect, ink.outline, ink.unit);
    const QRectF words(rect.left() + 12, rect.top() + 7, rect.width() - 24, 16);
    text(words, title, bold(11), ink.quiet);
    return words.translated(0, 21);
}

QRectF Panels::paintBox(int column, double y, const PreviewScene::Box &box)
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

void Panels::paintSignalPath()
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

void Panels::paintOutputs()
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

void Panels::paintMidi()
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
        lines += static_cast<int>(paragraphs.last().size());
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
    for (const QStringList &paragraph : std::as_const(paragraphs)) {
        disc({place.left() + 4, place.center().y()}, 3, Qt::NoPen, ink.lit);
        for (const QString &words : paragraph) {
            text(place.adjusted(indent, 0, 0, 0), words, regular(size), ink.text);
            place.translate(0, place.height());
        }
    }
}

void Panels::paintPedal()
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

}  // namespace preview
