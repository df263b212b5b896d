#pragma once

#include "simulator/unitport.h"
#include "support/wire.h"
#include "ui/combobox.h"
#include "ui/dialogs/framelessdialog.h"
#include "ui/look.h"
#include "ui/shell/mainwindow.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <deque>
#include <functional>
#include <gtest/gtest.h>

// NOLINTNEXTLINE(readability-identifier-naming): the name that failing comparisons look for
inline void PrintTo(const QString &text, std::ostream *out) { *out << '"' << text.toStdString() << '"'; }

using Requests = std::vector<std::string>;

/// Every visible child lies inside its parent, and no two siblings of a layered window overlap.
inline void expectTidy(const QWidget &parent)
{
    const auto children = parent.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    for (const QWidget *const child : children) {
        if (!child->isVisible() || child->isWindow()) continue;
        EXPECT_TRUE(parent.rect().contains(child->geometry())) << child->objectName().toStdString();
        for (const QWidget *const other : children) {
            if (other == child || !other->isVisible() || other->isWindow()) continue;
            EXPECT_FALSE(child->geometry().intersects(other->geometry()))
                << child->objectName().toStdString() << " and " << other->objectName().toStdString();
        }
    }
}

/// Every visible editor and button inside has a name, and texts and items are in a font of the window's own.
inline void expectDressed(const QWidget &parent)
{
    for (const QWidget *const widget : parent.findChildren<QWidget *>()) {
        if (!widget->isVisible() || widget->window() != parent.window()) continue;
        const QString text = widget->property("text").toString() + widget->property("currentText").toString();
        if ((widget->focusPolicy() & Qt::TabFocus) && widget->focusProxy() == nullptr) {
            EXPECT_FALSE((widget->accessibleName() + text).isEmpty()) << widget->objectName().toStdString();
        }
        const bool hasItems = widget->inherits("QAbstractItemView") && !widget->inherits("QHeaderView");
        if (!text.isEmpty() || hasItems) {
            EXPECT_GT(widget->font().pixelSize(), 0) << (widget->objectName() + text).toStdString();
        }
    }
}

/// The entry that Return would take stands out of a menu that looks as the others do.
inline void expectLit(QMenu &menu, QAction *entry)
{
    menu.setActiveAction(entry);
    const QImage shown = menu.grab().toImage();
    for (QAction *const action : menu.actions())
        if (!action->isSeparator()) {
            EXPECT_EQ(shown.pixelColor(menu.actionGeometry(action).topLeft() + QPoint(3, 3)),
                      QColor(action == entry ? look::selectionColor : look::pageColor))
                << action->text().toStdString();
        }
}

/// The product's, so that no machine is busy enough to take an answer for lost; only the search does not rest.
inline constexpr DeviceController::Timeouts patientTimeouts{1000, 2000, 20};
/// For tests in which answers do get lost. The probe's is the product's: one that is lost would shift what is spoiled.
inline constexpr DeviceController::Timeouts shortTimeouts{1000, 1000, 20};

/// The real main window with a virtual unit behind a pseudo-terminal. A dialog that no test expects fails it at once.
class Editor : public testing::Test
{
protected:
    /// What the virtual unit holds at first: a musician's content, or something that tells every value apart.
    explicit Editor(const UnitMemory &memory = musicianContent(), DeviceController::Timeouts timeouts = patientTimeouts,
                    const InnerUnitMaker &makeUnit = {})
        : unit(memory, std::chrono::milliseconds(50)), window(unitsPort, nullptr, timeouts, makeUnit)
    {
        unit.recordRequests();
        QObject::connect(&dialogWatch, &QTimer::timeout, [this] { meetDialog(); });
        dialogWatch.start(5);
    }
    void SetUp() override
    {
        window.show();
        QApplication::setActiveWindow(&window);
        ASSERT_TRUE(becomes([this] { return isConnected(); }));
        ASSERT_TRUE(settles());
        unit.takeRequests();
    }

    void TearDown() override
    {
        EXPECT_TRUE(dialogs.empty() && boxes.empty()) << "a dialog that was expected did not open";
        window.close();
        EXPECT_FALSE(window.isVisible());
    }

    // --- Widgets

    template <typename Widget>
    Widget &find(const QString &name) const
    {
        auto *const found = window.findChild<Widget *>(name);
        if (!found) throw std::runtime_error("no widget " + name.toStdString());
        return *found;
    }

    /// The widget in a cell of "tableWidget_" + `table`.
    template <typename Widget>
    Widget &cell(const QString &table, int row, int column) const
    {
        return dynamic_cast<Widget &>(*find<QTableWidget>("tableWidget_" + table).cellWidget(row, column));
    }
    ComboBox &box(const QString &table, int row, int column) const { return cell<ComboBox>(table, row, column); }
    QLineEdit &edit(const QString &table, int row, int column) const { return cell<QLineEdit>(table, row, column); }

    void click(const QString &button) { QTest::mouseClick(&find<QPushButton>(button), Qt::LeftButton); }
    void clickCell(const QString &table, int row, int column) { cell<QPushButton>(table, row, column).click(); }

    /// Opens the box's list, moves to the item and takes it.
    static void choose(QComboBox &box, const QString &item)
    {
        ASSERT_GE(box.findText(item), 0) << item.toStdString();
        box.showPopup();
        box.view()->setCurrentIndex(box.model()->index(box.findText(item), 0));
        QTest::keyClick(box.view(), Qt::Key_Return);
    }

    /// Types over what an edit holds, key by key.
    static void type(QLineEdit &edit, const QString &text, Qt::Key end = Qt::Key_Return)
    {
        edit.setFocus();
        edit.selectAll();
        QTest::keyClick(&edit, Qt::Key_Delete);
        for (const QChar letter : text)
            QTest::sendKeyEvent(QTest::Click, &edit, Qt::Key_unknown, QString(letter), Qt::NoModifier);
        if (end != Qt::Key_unknown) QTest::keyClick(&edit, end);
    }

    // --- Dialogs

    /// Lets `act` work on the next dialog that is no message box, in the order of the calls. One that it leaves open
    /// goes to the next act.
    void onDialog(std::function<void(QWidget &)> act) { dialogs.push_back(std::move(act)); }

    /// "title|text" of the next message box, which is answered.
    std::shared_ptr<QString> nextBox(QMessageBox::StandardButton answer = QMessageBox::Ok)
    {
        return nextBox([answer](QMessageBox &message) {
            auto *const button = message.button(answer);
            EXPECT_TRUE(button) << "no such answer to " << message.text().toStdString();
            if (button)
                button->click();
            else
                message.close();
        });
    }
    std::shared_ptr<QString> nextBox(const std::function<void(QMessageBox &)> &answer)
    {
        auto text = std::make_shared<QString>();
        boxes.push_back([=](QWidget &dialog) {
            auto &message = dynamic_cast<QMessageBox &>(dialog);
            EXPECT_EQ(message.textFormat() == Qt::RichText, false);
            *text = message.windowTitle() + '|' + message.text();
            answer(message);
        });
        return text;
    }

    /// The next file dialog gets this path.
    void onFileDialog(const QString &path)
    {
        onDialog([path](QWidget &dialog) {
            dynamic_cast<QFileDialog &>(dialog).findChild<QLineEdit *>("fileNameEdit")->setText(path);
            static_cast<QDialog &>(dynamic_cast<QFileDialog &>(dialog)).done(QDialog::Accepted);
        });
    }

    QAction &entry(const QString &text) const
    {
        const auto actions = window.findChildren<QAction *>();
        return **std::ranges::find(actions, text, &QAction::text);
    }
    /// Chooses an entry of the menu; the file dialog that it opens gets `path`.
    void trigger(const QString &text, const QString &path = QString())
    {
        if (!path.isEmpty()) onFileDialog(path);
        entry(text).trigger();
    }

    void closeWithin(int milliseconds)
    {
        QElapsedTimer clock;
        clock.start();
        window.close();
        EXPECT_LT(clock.elapsed(), milliseconds);
        EXPECT_FALSE(window.isVisible());
    }

    // --- Waiting: long enough on any machine for what does come

    QString status() const { return find<QLabel>("label_deviceStatus").text(); }
    bool isConnected() const { return status() == "DEVICE CONNECTED"; }

    static constexpr int longest = 40000;  ///< milliseconds

    static bool becomes(const std::function<bool()> &condition) { return QTest::qWaitFor(condition, longest); }

    /// Waits until the editor asks for nothing more.
    bool settles() const
    {
        const auto *const queue = window.findChild<RequestQueue *>();
        QElapsedTimer clock;
        for (clock.start(); !queue->isIdle() && !clock.hasExpired(longest);)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);  // at the latest the watch's
        QCoreApplication::processEvents();
        return queue->isIdle();
    }

    /// Everything asked for since the last call, once nothing more comes, with visible separators.
    Requests requests()
    {
        EXPECT_TRUE(settles());
        return taken();
    }
    Requests taken()
    {
        Requests texts = unit.takeRequests();
        std::transform(texts.begin(), texts.end(), texts.begin(), visible);
        return texts;
    }

    UnitPort unit;
    PortLister unitsPort = [this] {
        const std::string location = unit.location();
        return location.empty() ? QStringList() : QStringList(QString::fromStdString(location));
    };
    MainWindow window;

private:
    void meetDialog()
    {
        QWidget *const dialog = QApplication::activeModalWidget();
        if (!dialog || dialog == met) return;
        const auto *const message = qobject_cast<QMessageBox *>(dialog);
        auto &awaited = message ? boxes : dialogs;
        if (awaited.empty()) {
            ADD_FAILURE() << "unexpected dialog " << dialog->windowTitle().toStdString() << ": "
                          << (message ? message->text() : dialog->objectName()).toStdString();
            dialog->close();
            return;
        }
        const auto act = std::move(awaited.front());
        awaited.pop_front();
        QWidget *const outer = std::exchange(met, dialog);
        if (qobject_cast<FramelessDialog *>(dialog)) {
            expectTidy(*dialog);
            expectDressed(*dialog);
        }
        act(*dialog);
        met = outer;
    }

    QTimer dialogWatch;
    std::deque<std::function<void(QWidget &)>> dialogs;
    std::deque<std::function<void(QWidget &)>> boxes;
    QWidget *met = nullptr;  // being acted upon
};
