#include "app/gestures.h"

#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QMouseEvent>
#include <QTimer>

namespace gestures {

void key(QWidget &widget, int code, const QString &text)
{
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, code, Qt::NoModifier, text);
        QApplication::sendEvent(&widget, &event);
    }
}

void clickOn(QWidget &widget)
{
    const QPoint center = widget.rect().center();
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, center, widget.mapToGlobal(center), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&widget, &event);
    }
}

void type(QLineEdit &edit, const QString &text)
{
    edit.setFocus();
    edit.selectAll();
    for (const QChar letter : text)
        key(edit, 0, letter);
    key(edit, Qt::Key_Return);
}

void chooseFrom(QComboBox &box, const QString &item)
{
    box.setFocus();
    box.showPopup();
    box.view()->setCurrentIndex(box.model()->index(box.findText(item), box.modelColumn()));
    key(*box.view(), Qt::Key_Return);
}

bool waitFor(const std::function<bool()> &reached)
{
    QElapsedTimer clock;
    clock.start();
    QTimer wakeUp;
    wakeUp.start(10);
    while (!reached()) {
        if (clock.elapsed() > patience) return false;
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

}  // namespace gestures
