#include "ui/preview/previewwidget.h"
#include "ui/shell/mainwindow.h"

#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>

void MainWindow::makeKeys()
{
    const auto onKeys = [this](const QKeySequence &keys, auto act) {
        connect(new QShortcut(keys, centralWidget()), &QShortcut::activated, this, act);
    };
    for (int index = 0; index < PageCount; ++index)
        onKeys(static_cast<int>(Qt::ALT) + Qt::Key_1 + index, [this, index] {
            QPushButton *const button = ui.pages[static_cast<std::size_t>(index)].button;
            if (!button->isEnabled()) return;
            button->click();
            focusFirstEditor();
        });
    onKeys(QKeySequence(QStringLiteral("Ctrl+Tab")), [this] { goToSubTab(shownSubTab() + 1); });
    onKeys(QKeySequence(QStringLiteral("Ctrl+Shift+Tab")), [this] { goToSubTab(shownSubTab() + SubTabCount - 1); });
    onKeys(QKeySequence(QStringLiteral("Shift+F10")), [this] { askForMenu(); });
    onKeys(QKeySequence(QKeySequence::HelpContents), [this] { showGuide(); });
    onKeys(QKeySequence(QStringLiteral("Ctrl+Shift+L")), [this] { toggleLog(); });
    for (QPushButton *const button : findChildren<QPushButton *>())
        button->setAutoDefault(true);  // Enter presses it, as Space does
}

void MainWindow::goToSubTab(std::size_t index)
{
    if (!ui.page(PresetsPageIndex)->isVisible()) return;
    ui.subTabs[index % SubTabCount].button->click();
    focusFirstEditor();
}

void MainWindow::focusFirstEditor()
{
    const auto isShownEditor = [](const QWidget *widget) {
        const bool isEditor = qobject_cast<const QLineEdit *>(widget) || qobject_cast<const QComboBox *>(widget) ||
                              qobject_cast<const PreviewWidget *>(widget);
        return isEditor && widget->isVisible() && widget->isEnabled();
    };
    for (const Page &page : ui.pages) {
        if (!page.widget->isVisible()) continue;
        for (QWidget *widget = page.widget->nextInFocusChain(); widget != page.widget;
             widget = widget->nextInFocusChain())
            if (page.widget->isAncestorOf(widget) && isShownEditor(widget)) return widget->setFocus(Qt::TabFocusReason);
    }
}

void MainWindow::askForMenu()
{
    QWidget *const focused = focusWidget();
    if (!focused) return;
    const QPoint place = focused->inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
    QContextMenuEvent event(QContextMenuEvent::Keyboard, place, focused->mapToGlobal(place));
    QApplication::sendEvent(focused, &event);
}
