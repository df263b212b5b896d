#include "ui/dialogs/guidewindow.h"

#include "model/datafromdevice.h"
#include "ui/look.h"

#include <QFile>
#include <QPushButton>
#include <QTextBrowser>
#include <QVBoxLayout>

GuideWindow::GuideWindow(QWidget *parent) : FramelessDialog(QStringLiteral("GuideWindow"), parent)
{
    setWindowTitle(tr("KORA guide"));
    setFixedSize(760, 640);

    auto *text = new QTextBrowser;
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
