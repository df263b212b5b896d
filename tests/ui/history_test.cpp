// Undo and redo by the window's keys, buttons and list.

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
};

}  // namespace

TEST_F(HistoryKeys, GoBackToWhereItHappened)
{
    click("pushButton_settingsTab");
    click("pushButton_midiDevicesTab");
    ASSERT_TRUE(settles());
    const std::tuple<const char *, QWidget *, std::function<void()>> changes[] = {
        {"widget_settings", &find<QComboBox>("comboBox_keyboardType"),
         [this] { choose(find<QComboBox>("comboBox_keyboardType"), "AZERTY"); }},
        {"tableWidget_midiDevices", &edit("midiDevices", 4, 0), [this] { type(edit("midiDevices", 4, 0), "<b>"); }},
        {"tableWidget_loops", &box("loops", 2, 5), [this] { choose(box("loops", 2, 5), "OFF"); }},
        {"tableWidget_midi", &cell<QWidget>("midi", 1, 4),
         [this] {
             onDialog([](QWidget &dialog) {
                 choose(*dialog.findChild<QComboBox *>("comboBox_programChangeNumber"), "77");
                 choose(*dialog.findChild<QComboBox *>("comboBox_toeUpValue"), "9");
                 dialog.findChild<QPushButton *>("pushButton_ok")->click();
             });
             clickCell("midi", 1, 4);
         }},
    };
    std::vector<UnitMemory> states{unit.memory()};
    for (const auto &[page, cell, change] : changes) {
        change();
        ASSERT_TRUE(settles());
        states.push_back(unit.memory());
    }
    type(edit("midi", 1, 0), "5");  // another bank
    for (std::size_t step = std::size(changes); step-- > 0;) {
        click(step < 2 ? "pushButton_libraryTab" : "pushButton_previewTab");
        ASSERT_TRUE(settles());  // the library is read before a cell is lit
        press(Qt::Key_Z);
        const auto &[page, cell, change] = changes[step];
        EXPECT_TRUE(unit.memory() == states[step]) << step;
        EXPECT_TRUE(find<QWidget>(page).isVisible() && cell->findChild<Highlight *>()) << step;
    }
    EXPECT_EQ(edit("midi", 1, 0).text(), "0");
    EXPECT_FALSE(find<QPushButton>("pushButton_undo").isEnabled());
    EXPECT_EQ(find<QPushButton>("pushButton_redo").toolTip(), "Redo: SETTINGS: KEYBOARD TYPE  QWERTY -> AZERTY");
    EXPECT_TRUE(becomes([&] { return !window.findChild<Highlight *>(); }));

    press(Qt::Key_Y);
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    click("pushButton_redo");
    ASSERT_TRUE(settles());
    EXPECT_TRUE(unit.memory() == states[3]);
    onDialog([](QWidget &dialog) {
        auto &list = *dialog.findChild<QListWidget *>("listWidget_history");
        EXPECT_TRUE(list.count() == 5 && list.currentRow() == 1 && list.currentItem()->text().startsWith("NOW:"));
        list.setCurrentRow(4);
        QTest::keyClick(&list, Qt::Key_Return);
    });
    press(Qt::Key_H);
    ASSERT_TRUE(becomes([&] { return unit.memory() == states[0]; }));
}

TEST_F(HistoryKeys, LeaveAloneWhatIsTypedAndWhatAnotherHandChanged)
{
    type(edit("loops", 1, 3), "ONE");
    type(edit("loops", 1, 3), "TWO", Qt::Key_unknown);
    press(Qt::Key_Z);
    EXPECT_TRUE(edit("loops", 1, 3).text() != "TWO" && unit.memory().presets[0][0].name == "ONE");
    press(Qt::Key_Z);
    EXPECT_NE(unit.memory().presets[0][0].name, "ONE");
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(unit.memory().presets[0][0].name, "ONE") << "not what was typed";
    unit.alter([](UnitMemory &memory) { memory.presets[0][0].name = "PANEL"; });
    const auto told = nextBox();
    click("pushButton_undo");
    ASSERT_TRUE(becomes([&] { return !told->isEmpty() && settles(); }));
    EXPECT_EQ(*told, "CHANGED MEANWHILE|BANK 0, PRESET 0: NAME\nhas been changed meanwhile and stays.");
    EXPECT_EQ(edit("loops", 1, 3).text(), "PANEL");
}
