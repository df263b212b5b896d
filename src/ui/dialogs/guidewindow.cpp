#include "ui/dialogs/guidewindow.h"

#include "model/datafromdevice.h"
#include "ui/look.h"

#include <QFile>
#include <QImage>
#include <QPushButton>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace {

constexpr QSize windowSize(760, 640);
constexpr int pictureWidth = 680;

/// Shows pictures in the width of its text, as sharp as the screen is.
class GuideText : public QTextBrowser
{
public:
    using QTextBrowser::QTextBrowser;

protected:
    QVariant loadResource(int type, const QUrl &name) override
    {
        if (type != QTextDocument::ImageResource) return QTextBrowser::loadResource(type, name);
        QImage picture(QStringLiteral(":/") + name.path());
        const int width = qRound(pictureWidth * devicePixelRatioF());
        if (picture.width() > width) picture = picture.scaledToWidth(width, Qt::SmoothTransformation);
        picture.setDevicePixelRatio(devicePixelRatioF());
        return picture;
    }
};

}  // namespace

GuideWindow::GuideWindow(QWidget *parent) : FramelessDialog(QStringLiteral("GuideWindow"), parent)
{
    setWindowTitle(tr("KORA guide"));
    setFixedSize(windowSize);

    auto *text = new GuideText;
    text->setObjectName(QStringLiteral("textBrowser_guide"));
    text->setAccessibleName(tr("Guide"));
    text->setFont(look::pixelFont(DataFromDevice::fontSettingsLabel));
    text->setStyleSheet(QStringLiteral("QTextBrowser { background-color: %1; color: white; border: 1px solid %1; }\n")
                            .arg(look::pageColor) +
                        look::focusRule(QStringLiteral("QTextBrowser:focus")));
    QFile guide(QStringLiteral(":/guide.md"));
    if (guide.open(QIODevice::ReadOnly)) text->setMarkdown(QString::fromUtf8(guide.readAll()));

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(20, 44, 20, 20);
    layout->addWidget(text);
    makeCloseButton();
}
