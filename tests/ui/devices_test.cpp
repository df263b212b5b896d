// MIDI devices as a whole, from the menu and the list of controllers to the unit.

#include "controller/mydevices.h"
#include "model/devicemoves.h"
#include "model/midiuse.h"
#include "support/outgoing.h"
#include "support/randomcontent.h"
#include "ui/editor.h"
#include "ui/library/libraryview.h"

#include <QContextMenuEvent>
#include <QDir>
#include <QFileDialog>
#include <QMenu>

namespace {

class Devices : public Editor, public testing::WithParamInterface<MidiLists>
{
protected:
    void SetUp() override
    {
        Editor::SetUp();
        unit.setMidiLists(GetParam());
        unit.alter([](UnitMemory &memory) {
            RandomContent random(3, RandomContent::Values::Valid);
            for (const RecordId &id : allRecords())
                if (id.kind == RecordId::Kind::Preset && id.number >= 60) random.alter(memory, id, 1);
            for (auto &bank : memory.presets)
                for (PresetData &preset : bank)
                    preset.controlChanges = merged({}, preset.controlChanges);  // what any unit may hold
            memory.presets[7][1].controlChanges = {{1, 1, 10}, {1, 2, 20}, {3, 2, 30}};
            memory.presets[7][1].programChanges.fill(99);
        });
        start = unit.memory();
        click("pushButton_midiDevicesTab");
        ASSERT_TRUE(settles());
    }
    /// Chooses an entry of the menu of a device's name, by its row. What the box that follows says.
    QString choose(int row, const QString &entry, QMessageBox::StandardButton answer = QMessageBox::NoButton)
    {
        const auto told = answer == QMessageBox::NoButton ? std::make_shared<QString>("-") : nextBox(answer);
        QTimer::singleShot(0, [=] {
            auto &menu = dynamic_cast<QMenu &>(*QApplication::activePopupWidget());
            for (QAction *const action : menu.actions())
                if (action->text() == entry) menu.setActiveAction(action);
            QTest::keyClick(&menu, Qt::Key_Return);
            menu.close();
        });
        QContextMenuEvent event(QContextMenuEvent::Mouse, {5, 5}, {5, 5});
        QApplication::sendEvent(&edit("midiDevices", row, 0), &event);
        EXPECT_TRUE(becomes([&] { return !told->isEmpty() && settles(); }));
        return *told;
    }
    void expectUndone()
    {
        QApplication::setActiveWindow(&window);  // also after a dialog
        QTest::keyClick(&window, Qt::Key_Z, Qt::ControlModifier);
        ASSERT_TRUE(settles());
        EXPECT_TRUE(UnitContent(unit.memory()) == start);
    }

    UnitContent start;
};

INSTANTIATE_TEST_SUITE_P(Lists, Devices, testing::Values(MidiLists::Replace, MidiLists::Merge));

}  // namespace

TEST_P(Devices, AreSwappedAndPastedWithWhatPresetsSend)
{
    choose(0, "COPY");
    const arrange::Impact impact = arrange::impactOf(arrange::swapDevices(1, 3, true), start);
    const QString counts = QString("Yes changes %1 values in %2 presets").arg(impact.values).arg(impact.presets);
    const QString question = choose(2, "SWAP", QMessageBox::Yes);
    EXPECT_TRUE(question.contains("|CARRY ALONG WHAT PRESETS SEND?\n\n" + counts)) << question.toStdString();
    EXPECT_TRUE(outgoing(unit.memory()) == outgoing(start));
    EXPECT_EQ(unit.memory().midiDevices[2], start.midiDevices[0]);
    EXPECT_TRUE(choose(2, "PASTE", QMessageBox::Ok).contains("Nothing would change")) << "it has moved there";
    expectUndone();

    unit.takeRequests();
    nextBox(QMessageBox::Yes);
    const QString warning = choose(2, "PASTE", QMessageBox::No);
    EXPECT_TRUE(
        warning.contains("\nBANK 7, PRESET 1: MIDI 3 CONTROLLER 2\nBANK 7, PRESET 1: PROGRAM CHANGE OF MIDI 3"));
    EXPECT_TRUE(requests().empty()) << "all is known, and nothing is sent before the user agrees";
    choose(2, "PASTE", QMessageBox::No);  // the definition alone
    EXPECT_EQ(unit.memory().midiDevices[2], start.midiDevices[0]);
    EXPECT_TRUE(unit.memory().presets == start.presets);
}

TEST_P(Devices, TheListOfControllersIsReorderedAndTellsWhoUsesThem)
{
    const auto uses = [this] { return cell<QPushButton>("midiDevices", 0, 9).text(); };
    EXPECT_TRUE(becomes([&] { return uses().endsWith('+'); })) << "most banks have not been read";
    const auto question = nextBox(QMessageBox::Yes);
    onDialog([](QWidget &dialog) {
        QApplication::setActiveWindow(&dialog);
        auto &table = *dialog.findChild<QTableWidget *>();
        table.scrollToBottom();
        QTest::keyClick(table.cellWidget(0, 1), Qt::Key_Down, Qt::AltModifier);
        EXPECT_EQ(dialog.focusWidget(), table.cellWidget(1, 1)) << "the focus goes with the controller";
        EXPECT_TRUE(table.viewport()->rect().contains(table.cellWidget(1, 1)->geometry()));
        QTest::keyClicks(table.cellWidget(1, 1), "!");
        QTest::mousePress(table.cellWidget(2, 0), Qt::LeftButton);  // dragged to the top
        QMouseEvent move(QEvent::MouseMove, {}, {}, table.cellWidget(0, 0)->mapToGlobal(QPoint(5, 5)), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(table.cellWidget(2, 0), &move);
        dialog.findChild<QPushButton *>("pushButton_ok")->click();
    });
    clickCell("midiDevices", 0, 4);
    ASSERT_TRUE(becomes([&] { return !question->isEmpty() && settles(); }));
    auto expected = start.midiDevices[0].controllers;
    std::swap(expected[0], expected[2]);
    expected[2].name = "!";
    EXPECT_EQ(unit.memory().midiDevices[0].controllers, expected);
    EXPECT_EQ(unit.memory().presets[7][1].controlChanges[0], ControlChangeData(1, 3, 10));

    const UnitPart all{unit.memory(), allRecords()};
    EXPECT_TRUE(becomes([&] { return uses() == QString::number(usesOf(all, {1}).size()); })) << uses().toStdString();
    clickCell("midiDevices", 0, 9);
    EXPECT_EQ(window.findChild<LibraryView *>()->selection(), usesOf(all, {1}));
    onDialog([](QWidget &dialog) {
        dynamic_cast<QPushButton *>(dialog.findChild<QTableWidget *>()->cellWidget(2, 3))->click();
    });
    clickCell("midiDevices", 0, 4);
    EXPECT_EQ(window.findChild<LibraryView *>()->selection(), usesOf(all, {1, 3}));
    expectUndone();
}

TEST_P(Devices, AreKeptForAllUnits)
{
    QDir(MyDevices::usualFolder()).removeRecursively();
    onDialog([](QWidget &dialog) {
        EXPECT_EQ(dynamic_cast<QFileDialog &>(dialog).directory(), QDir(MyDevices::usualFolder()));
        static_cast<QDialog &>(dialog).reject();
    });
    choose(9, "TAKE FROM MY DEVICES...");
    choose(0, "SAVE TO MY DEVICES");
    choose(0, "SAVE TO MY DEVICES", QMessageBox::No);  // asks whether to replace it
    onDialog([path = MyDevices().pathFor(start.midiDevices[0].name)](QWidget &dialog) {
        dialog.findChild<QLineEdit *>("fileNameEdit")->setText(path);
        static_cast<QDialog &>(dialog).done(QDialog::Accepted);
    });
    choose(9, "TAKE FROM MY DEVICES...", QMessageBox::Yes);
    EXPECT_EQ(unit.memory().midiDevices[9], start.midiDevices[0]);
    EXPECT_EQ(MyDevices("x").pathFor("../Süß: 1/2"), "x/___Süß_ 1_2.kora");
}
