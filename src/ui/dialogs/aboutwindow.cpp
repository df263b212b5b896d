#include "ui/dialogs/aboutwindow.h"

#include "model/datafromdevice.h"
#include "ui/look.h"

#include <QDesktopServices>
#include <QLabel>
#include <QPushButton>
#include <QUrl>

namespace {

constexpr QSize windowSize(466, 350);
constexpr QSize logoSize(251, 81);
const QString linkColor = QStringLiteral("#fa830f");
const QString homePage = QStringLiteral("https://example.com/kora");

QString linkTo(const QString &target, const QString &text)
{
    return QStringLiteral("<a href=\"%1\" style=\"color: %2;\">%3</a>").arg(target, linkColor, text);
}

void openLink(const QString &link) { QDesktopServices::openUrl(QUrl(link)); }

}  // namespace

AboutWindow::AboutWindow(QWidget *parent) : FramelessDialog(QStringLiteral("AboutWindow"), parent)
{
    setFixedSize(windowSize);

    auto *logo = new QPushButton(this);
    logo->setObjectName(QStringLiteral("pushButton_logo"));
    logo->setStyleSheet(look::plainButtonStyle(QStringLiteral("transparent")));
    logo->setGeometry(QRect(QPoint(24, 32), logoSize));
    look::makeIconButton(logo, look::icon("logo"), logoSize, tr("Open the KORA home page"));
    logo->setAutoDefault(false);
    connect(logo, &QPushButton::clicked, this, &AboutWindow::on_pushButton_logo_clicked);

    QLabel *const about = makeRichLabel(
        QStringLiteral("label_about"),
        tr("This editor is made for the KORA, a guitar floor controller with six effect loops, six switch outputs, wah "
           "pads, an expression pedal and MIDI. It shows what the connected unit holds and writes every change to it "
           "at once.<br><br>Manual and news: %1")
            .arg(linkTo(homePage + QStringLiteral("/editor"), QStringLiteral("example.com/kora/editor"))),
        Qt::AlignLeft | Qt::AlignTop);
    about->setWordWrap(true);
    about->setGeometry(24, 136, 418, 160);
    connect(about, &QLabel::linkActivated, this, &AboutWindow::on_label_about_linkActivated);

    QLabel *const footer =
        makeRichLabel(QStringLiteral("label_footer"),
                      tr("Made by the KORA editor team, %1")
                          .arg(linkTo(QStringLiteral("mailto:kora@example.com"), QStringLiteral("kora@example.com"))),
                      Qt::AlignRight | Qt::AlignVCenter);
    footer->setGeometry(24, 306, 418, 28);
    connect(footer, &QLabel::linkActivated, this, &AboutWindow::on_label_footer_linkActivated);

    makeCloseButton();
}

QLabel *AboutWindow::makeRichLabel(const QString &objectName, const QString &text, Qt::Alignment alignment)
{
    QLabel *const label = makeLabel(objectName, text, DataFromDevice::fontSettingsLabel);
    label->setTextFormat(Qt::RichText);
    label->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    label->setAlignment(alignment);
    label->setStyleSheet(QStringLiteral("QLabel { border: 1px solid transparent; }\n") +
                         look::focusRule(QStringLiteral("QLabel:focus")));
    return label;
}

void AboutWindow::on_label_about_linkActivated(const QString &link) { openLink(link); }

void AboutWindow::on_label_footer_linkActivated(const QString &link) { openLink(link); }

void AboutWindow::on_pushButton_logo_clicked() { openLink(homePage); }
