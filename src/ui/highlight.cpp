#include "ui/highlight.h"

#include <QPainter>

namespace {

constexpr qreal radius = 5;  // pixels, as the editors have
constexpr int frame = 2;     // pixels
constexpr int veil = 110;    // opacity of the ground at first, of 255

}  // namespace

void Highlight::lightUp(QWidget *widget)
{
    delete widget->findChild<Highlight *>(QString(), Qt::FindDirectChildrenOnly);
    (new Highlight(widget))->show();
}

Highlight::Highlight(QWidget *widget) : QWidget(widget)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setGeometry(widget->rect());
    fading.setStartValue(1.0);
    fading.setEndValue(0.0);
    fading.setDuration(duration);
    fading.setEasingCurve(QEasingCurve::InCubic);
    connect(&fading, &QVariantAnimation::valueChanged, this, qOverload<>(&QWidget::update));
    connect(&fading, &QVariantAnimation::finished, this, &QObject::deleteLater);
    fading.start();
}

void Highlight::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(fading.currentValue().toReal());
    painter.setPen(QPen(Qt::white, frame));
    painter.setBrush(QColor(255, 255, 255, veil));
    painter.drawRoundedRect(QRectF(rect()).adjusted(frame, frame, -frame, -frame), radius, radius);
}
