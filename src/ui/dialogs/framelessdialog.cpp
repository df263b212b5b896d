#include "ui/dialogs/framelessdialog.h"

#include "model/datafromdevice.h"
#include "ui/look.h"
#include "ui/message.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMoveEvent>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include <utility>

namespace {

constexpr int dragBand = 60;  // pixels
constexpr QSize answerSize(120, 32);
constexpr QSize crossSize(16, 16);
constexpr int crossButton = 28;    // pixels, both ways
constexpr int placedAfter = 1000;  // ms

QString dialogStyle()
{
    // The ground is the main window's, so a line tells where the dialog ends.
    return look::windowStyle() + QStringLiteral("QDialog { border: 1px solid %1; }\n").arg(look::selectionColor);
}

}  // namespace

FramelessDialog::FramelessDialog(const QString &objectName, QWidget *parent) : QDialog(parent), drag(dragBand)
{
    setObjectName(objectName);
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowTitleHint | Qt::CustomizeWindowHint);
    setWindowTitle(QStringLiteral("Dialog"));
    setStyleSheet(dialogStyle());
    setFont(look::pixelFont(DataFromDevice::fontTableContent));
}

void FramelessDialog::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (event->spontaneous()) return;
    asked = pos();
    QTimer::singleShot(placedAfter, this, [this] { asked.reset(); });
}

void FramelessDialog::moveEvent(QMoveEvent *event)
{
    QDialog::moveEvent(event);
    // Asked while it still places the dialog, a window manager tells a place on the way there, and lists would open
    // beside their boxes. Moved once more, the dialog is told where it is.
    if (event->spontaneous() && asked && event->pos() != *asked) move(*std::exchange(asked, std::nullopt));
}

void FramelessDialog::mousePressEvent(QMouseEvent *event) { drag.press(event); }

void FramelessDialog::mouseMoveEvent(QMouseEvent *event) { drag.move(event, this); }

void FramelessDialog::mouseReleaseEvent(QMouseEvent *) { drag.release(); }

void FramelessDialog::on_pushButton_closeWindow_clicked() { reject(); }

void FramelessDialog::tell(const QString &title, const QString &text) { message::show(this, title, text); }

QLabel *FramelessDialog::makeLabel(const QString &objectName, const QString &text, const QFont &font)
{
    auto *label = new QLabel(this);
    label->setObjectName(objectName);
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    label->setFont(look::pixelFont(font));
    return label;
}

QPushButton *FramelessDialog::makeButton(const QString &objectName, const QString &text, const QString &hoverColor)
{
    auto *button = new QPushButton(text, this);
    button->setObjectName(objectName);
    button->setFont(look::pixelFont(DataFromDevice::fontTabs));
    button->setStyleSheet(look::answerButtonStyle(hoverColor));
    return button;
}

QVBoxLayout *FramelessDialog::makeRows()
{
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins(20, 20, 20, 20);
    rows->setSpacing(16);
    return rows;
}

QHBoxLayout *FramelessDialog::makeAnswerRow(std::initializer_list<QPushButton *> buttons)
{
    auto *row = new QHBoxLayout;
    row->setSpacing(12);
    row->addStretch();
    for (QPushButton *const button : buttons) {
        button->setFixedSize(answerSize);
        row->addWidget(button);
    }
    return row;
}

void FramelessDialog::makeCloseButton()
{
    auto *cross = new QPushButton(this);
    cross->setObjectName(QStringLiteral("pushButton_closeWindow"));
    cross->setStyleSheet(look::plainButtonStyle(look::rejectColor));
    cross->setGeometry(width() - crossButton - 8, 8, crossButton, crossButton);
    look::makeIconButton(cross, look::icon("close"), crossSize, tr("Close"));
    cross->setDefault(true);
    connect(cross, &QPushButton::clicked, this, &FramelessDialog::on_pushButton_closeWindow_clicked);
}
