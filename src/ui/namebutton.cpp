#include "ui/namebutton.h"

#include "model/datafromdevice.h"
#include "ui/look.h"

#include <QKeySequence>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <QTextDocument>

namespace {

constexpr int rightPadding = 3;  // pixels

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

void NameButton::paintEvent(QPaintEvent *)
{
    QStyleOptionButton option;
    initStyleOption(&option);
    const int width = style()->subElementRect(QStyle::SE_PushButtonContents, &option, this).width() - rightPadding;
    option.text = fontMetrics().elidedText(text(), Qt::ElideRight, width).replace('&', QLatin1String("&&"));
    QStylePainter(this).drawControl(QStyle::CE_PushButton, option);
}
