#include "ui/namebutton.h"

#include "model/datafromdevice.h"
#include "ui/look.h"

#include <QKeyEvent>
#include <QKeySequence>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <QTextDocument>

namespace {

constexpr int rightPadding = 3;  // pixels
constexpr int markRoom = 16;     // pixels
constexpr double markRadius = 3.5;
constexpr double disabledOpacity = 0.45;

}  // namespace

QString plainToolTip(const QString &text)
{
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal) : text;
}

NameButton::NameButton(QWidget *parent, const QString &color) : QPushButton(parent)
{
    setFont(look::pixelFont(DataFromDevice::fontTableContent));
    setStyleSheet(QStringLiteral("border-radius: 5;\ncolor: white;\n text-align: left;\n padding-left: 10px;\n"
                                 "background-color: ") +
                  color);
}

void NameButton::setName(const QString &name)
{
    setText(name);
    setShortcut(QKeySequence());
    setToolTip(plainToolTip(name));
}

void NameButton::setMarked(bool marked)
{
    if (marked == isMarked) return;
    isMarked = marked;
    update();
}

void NameButton::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Down && event->modifiers().testFlag(Qt::AltModifier))
        click();
    else
        QPushButton::keyPressEvent(event);
}

void NameButton::paintEvent(QPaintEvent *)
{
    QStyleOptionButton option;
    initStyleOption(&option);
    const int room = isMarked ? markRoom : rightPadding;
    const int width = style()->subElementRect(QStyle::SE_PushButtonContents, &option, this).width() - room;
    option.text = fontMetrics().elidedText(text(), Qt::ElideRight, width).replace('&', QLatin1String("&&"));
    QStylePainter painter(this);
    if (!isEnabled()) painter.setOpacity(disabledOpacity);
    painter.drawControl(QStyle::CE_PushButton, option);
    if (!isMarked) return;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawEllipse(QPointF(this->width() - markRoom / 2.0, height() / 2.0), markRadius, markRadius);
}
