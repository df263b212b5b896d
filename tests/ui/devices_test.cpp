// MIDI devices as a whole, from the menu and the list of controllers to the unit.

#include "controller/mydevices.h"
#include "model/devicemoves.h"
#include "model/differences.h"
#include "model/midiuse.h"
#include "support/outgoing.h"
#include "ui/editor.h"

#include <QContextMenuEvent>
#include <QDir>
#include <QFileDialog>
#include <QMenu>

namespace {

class Devices : public Editor
{
protected:
    Devices()
    {
        unit.alter([](UnitMemory &memory) {
            memory.expressionPedal.onTheFlyMode = false;  // is never reported
            memory.presets[7][1].controlChanges = {{1, 1, 10}, {1, 2, 20}, {3, 2, 30}};
            memory.presets[7][1].programChanges = filled<midiDeviceCount>(none);
        });
        start = unit.memory();
        QDir(MyDevices::usualFolder()).removeRecursively();
    }
    void SetUp() override
    {
        Editor::SetUp();
        click("pushButton_midiDevicesTab");
        ASSERT_TRUE(settles());
    }

    /// Chooses an entry of the menu of a device's name, by its row.
    void choose(int row, const QString &entry)
    {
        QTimer::singleShot(0, [=] {
            auto *const menu = dynamic_cast<QMenu *>(QApplication::activePopupWidget());
            ASSERT_TRUE(menu);
            for (QAction *const action : menu->actions())
                if (action->text() == entry) menu->setActiveAction(action);
            QTest::keyClick(menu, Qt::Key_Return);
            menu->close();
        });
        QContextMenuEvent event(QContextMenuEvent::Mouse, {5, 5}, {5, 5});
        QApplication::sendEvent(&edit("midiDevices", row, 0), &event);
    }
    bool isTold(const std::shared_ptr<QString> &box) const
    {
        return becomes([&] { return !box->isEmpty(); }) && settles();
    }
    void undo()
    {
        QApplication::setActiveWindow(&window);  // also after a dialog
        QTest::keyClick(&window, Qt::Key_Z, Qt::ControlModifier);
        ASSERT_TRUE(settles());
    }
    QString uses(int row) { return cell<QPushButton>("midiDevices", row, 9).text(); }

    UnitContent start;
};

}  // namespace

TEST_F(Devices, AreSwappedAndPastedWithWhatPresetsSend)
{
    choose(0, "COPY");
    auto question = nextBox(QMessageBox::Yes);
    choose(2, "SWAP");
    ASSERT_TRUE(isTold(question));
    UnitContent swapped = start;
    arrange::swapDevices(1, 3, true).alter(swapped);
    EXPECT_TRUE(differences(unit.memory(), swapped, allRecords()).empty());
    EXPECT_TRUE(outgoing(unit.memory()) == outgoing(start));
    const arrange::Impact impact = arrange::impactOf(arrange::swapDevices(1, 3, true), start);
    EXPECT_TRUE(question->startsWith("SWAP MIDI DEVICE 1 WITH 3|CARRY ALONG WHAT PRESETS SEND?"));
    EXPECT_TRUE(
        question->contains(QString("Yes changes %1 values in %2 presets").arg(impact.values).arg(impact.presets)));
    question = nextBox(QMessageBox::No);
    choose(4, "PASTE");
    ASSERT_TRUE(isTold(question));
    EXPECT_TRUE(question->contains("200 presets send to MIDI DEVICE 5.")) << "what was copied has moved away";
    undo();
    EXPECT_EQ(UnitContent(unit.memory()), start);

    unit.takeRequests();
    question = nextBox(QMessageBox::Yes);
    auto warning = nextBox(QMessageBox::No);
    choose(2, "PASTE");
    ASSERT_TRUE(isTold(warning));
    EXPECT_TRUE(warning->contains("BANK 7, PRESET 1: MIDI 3 CONTROLLER 2")) << warning->toStdString();
    EXPECT_TRUE(taken().empty()) << "all is known, and nothing is sent before the user agrees";

    question = nextBox(QMessageBox::No);  // the definition alone
    choose(2, "PASTE");
    ASSERT_TRUE(isTold(question));
    EXPECT_EQ(unit.memory().midiDevices[2], start.midiDevices[0]);
    EXPECT_EQ(unit.memory().presets, start.presets);
}

TEST_F(Devices, TheListOfControllersIsReorderedAndTellsWhoUsesThem)
{
    EXPECT_TRUE(becomes([this] { return uses(0).endsWith('+'); }))
        << "most banks have not been read: " << uses(0).toStdString();
    const auto question = nextBox(QMessageBox::Yes);
    onDialog([](QWidget &dialog) {
        QApplication::setActiveWindow(&dialog);
        auto &table = *dialog.findChild<QTableWidget *>();
        table.cellWidget(0, 1)->setFocus();
        QTest::keyClick(table.cellWidget(0, 1), Qt::Key_Down, Qt::AltModifier);
        EXPECT_EQ(dialog.focusWidget(), table.cellWidget(1, 1)) << "the focus goes with the controller";
        QTest::keyClicks(table.cellWidget(1, 1), "!");
        QWidget *const handle = table.cellWidget(2, 0);  // dragged to the top
        QTest::mousePress(handle, Qt::LeftButton);
        QMouseEvent move(QEvent::MouseMove, {}, {}, table.cellWidget(0, 0)->mapToGlobal({5, 5}), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(handle, &move);
        QTest::mouseRelease(handle, Qt::LeftButton);
        dialog.findChild<QPushButton *>("pushButton_ok")->click();
    });
    clickCell("midiDevices", 0, 4);
    ASSERT_TRUE(isTold(question));
    const auto &before = start.midiDevices[0].controllers, &after = unit.memory().midiDevices[0].controllers;
    EXPECT_EQ(after[0], before[2]);
    EXPECT_EQ(after[1], before[1]);
    EXPECT_EQ(after[2].number, before[0].number);
    EXPECT_NE(after[2].name, before[0].name);
    EXPECT_EQ(unit.memory().presets[7][1].controlChanges[0], ControlChangeData(1, 3, 10));

    const UnitPart all{unit.memory(), allRecords()};
    ASSERT_TRUE(becomes([&] { return uses(0) == QString::number(usesOf(all, {1}).size()); })) << uses(0).toStdString();
    std::set<RecordId> asked;
    QObject::connect(&window, &MainWindow::presetsAsked, [&](const auto &presets) { asked = presets; });
    onDialog([](QWidget &dialog) {
        static_cast<QPushButton *>(dialog.findChild<QTableWidget *>()->cellWidget(2, 3))->click();
    });
    clickCell("midiDevices", 0, 4);
    EXPECT_EQ(asked, usesOf(all, {1, 3}));
    undo();
    EXPECT_EQ(UnitContent(unit.memory()), start);
}

TEST_F(Devices, AreKeptForAllUnits)
{
    choose(0, "SAVE TO MY DEVICES");
    const QString path = MyDevices().pathFor(start.midiDevices[0].name);
    ASSERT_TRUE(QFile::exists(path));
    const auto twice = nextBox(QMessageBox::No);
    choose(0, "SAVE TO MY DEVICES");
    EXPECT_TRUE(isTold(twice));

    onDialog([path](QWidget &dialog) {
        dialog.findChild<QLineEdit *>("fileNameEdit")->setText(path);
        static_cast<QDialog &>(dialog).done(QDialog::Accepted);
    });
    const auto question = nextBox(QMessageBox::Yes);
    choose(9, "TAKE FROM MY DEVICES...");
    ASSERT_TRUE(isTold(question));
    EXPECT_EQ(unit.memory().midiDevices[9], start.midiDevices[0]);
    EXPECT_EQ(MyDevices("x").pathFor("../Süß: 1/2"), "x/___Süß_ 1_2.kora");
    EXPECT_EQ(MyDevices("x").pathFor(""), "x/no name.kora");
}
