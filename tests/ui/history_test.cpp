// Undo and redo by the window's keys, buttons and list.

#include "model/differences.h"
#include "ui/editor.h"
#include "ui/highlight.h"

#include <QListWidget>

namespace {

class HistoryKeys : public Editor
{
protected:
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::ControlModifier)
    {
        QApplication::setActiveWindow(&window);  // also after a dialog
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
        ASSERT_TRUE(settles());
    }
    QString tip(const char *button) const { return find<QPushButton>(button).toolTip(); }
};

}  // namespace

TEST_F(HistoryKeys, GoBackToWhereItHappened)
{
    std::vector<UnitMemory> states{unit.memory()};
    const auto done = [&] {
        ASSERT_TRUE(settles());
        states.push_back(unit.memory());
    };
    click("pushButton_settingsTab");
    ASSERT_TRUE(settles());
    choose(find<QComboBox>("comboBox_keyboardType"), "AZERTY");
    done();
    click("pushButton_midiDevicesTab");
    type(edit("midiDevices", 4, 0), "<b>");
    done();
    click("pushButton_presetsTab");
    type(edit("loops", 1, 0), "9");
    ASSERT_TRUE(settles());
    type(edit("loops", 3, 3), "LEAD");
    done();
    type(edit("loops", 1, 0), "0");
    ASSERT_TRUE(settles());
    choose(box("loops", 2, 5), "OFF");
    done();
    type(edit("midi", 1, 0), "5");
    ASSERT_TRUE(settles());
    onDialog([&](QWidget &dialog) {
        choose(*dialog.findChild<QComboBox *>("comboBox_programChangeNumber"), "77");
        auto &controllers = *dialog.findChild<QComboBox *>("comboBox_controllers");
        choose(controllers, controllers.itemText(1));
        dialog.findChild<QPushButton *>("pushButton_ok")->click();
    });
    clickCell("midi", 1, 4);
    done();

    const std::pair<const char *, QWidget *> places[] = {{"widget_settings", &find<QComboBox>("comboBox_keyboardType")},
                                                         {"tableWidget_midiDevices", &edit("midiDevices", 4, 0)},
                                                         {"tableWidget_loops", &edit("loops", 3, 3)},
                                                         {"tableWidget_loops", &box("loops", 2, 5)},
                                                         {"tableWidget_midi", &cell<QWidget>("midi", 1, 4)}};
    EXPECT_EQ(tip("pushButton_undo"), "Undo: 3 values in BANK 5, PRESET 0");
    for (std::size_t step = std::size(places); step-- > 0;) {
        click("pushButton_previewTab");
        press(Qt::Key_Z);
        EXPECT_TRUE(unit.memory() == states[step]) << step;
        EXPECT_TRUE(find<QWidget>(places[step].first).isVisible()) << step;
        EXPECT_TRUE(places[step].second->findChild<Highlight *>()) << step;
    }
    EXPECT_FALSE(find<QPushButton>("pushButton_undo").isEnabled());
    EXPECT_EQ(tip("pushButton_redo"), "Redo: SETTINGS: KEYBOARD TYPE  QWERTY -> AZERTY");
    EXPECT_TRUE(becomes([&] { return !window.findChild<Highlight *>(); }));

    click("pushButton_redo");
    press(Qt::Key_Y);
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(unit.memory() == states[3]);
    onDialog([](QWidget &dialog) {
        auto &list = *dialog.findChild<QListWidget *>("listWidget_history");
        EXPECT_EQ(list.count(), 6);
        EXPECT_EQ(list.currentItem()->text(),
                  "NOW:  BANK 9, PRESET 2: NAME  " + list.currentItem()->text().section("  ", 2));
        list.setCurrentRow(0);
        QTest::keyClick(&list, Qt::Key_Return);
    });
    press(Qt::Key_H);
    ASSERT_TRUE(becomes([&] { return unit.memory() == states[5]; }));
}

TEST_F(HistoryKeys, LeaveAloneWhatIsTypedAndWhatAnotherHandChanged)
{
    type(edit("loops", 1, 3), "ONE");
    type(edit("loops", 1, 3), "TWO", Qt::Key_unknown);
    press(Qt::Key_Z);
    EXPECT_TRUE(edit("loops", 1, 3).text() != "TWO" && unit.memory().presets[0][0].name == "ONE");
    unit.alter([](UnitMemory &memory) { memory.presets[0][0].name = "PANEL"; });
    const auto told = nextBox();
    click("pushButton_undo");
    ASSERT_TRUE(becomes([&] { return !told->isEmpty() && settles(); }));
    EXPECT_EQ(*told, "CHANGED MEANWHILE|BANK 0, PRESET 0: NAME\nhas been changed meanwhile and stays.");
    EXPECT_EQ(unit.memory().presets[0][0].name, "PANEL");
    EXPECT_EQ(edit("loops", 1, 3).text(), "PANEL");
}
