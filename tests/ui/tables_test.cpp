#include "ui/editor.h"

#include <QHeaderView>

namespace {

/// A table as it is laid out: each column's header and width, and the rows with editors.
struct Layout
{
    const char *table;
    const char *columns;
    int firstRow, lastRow, rowHeight;
};

const Layout layouts[] = {
    {"footswitchFunction", "B 35,P 35,FOOTSWITCH FUNCTION 350,BANK NAME 385,PRESET NAME 385", 1, 10, 42},
    {"loops",
     "B 35,P 35,BANK NAME 154,PRESET NAME 154,BUFFER 116,LOOP 1 116,LOOP 2 116,LOOP 3 116,LOOP 4 116,LOOP 5 116,"
     "LOOP 6 116",
     1, 10, 42},
    {"switch",
     "B 35,P 35,BANK NAME 161,PRESET NAME 161,SWITCH 1 133,SWITCH 2 133,SWITCH 3 133,SWITCH 4 133,SWITCH 5 133,"
     "SWITCH 6 133",
     1, 10, 42},
    {"midi",
     "B 35,P 35,BANK NAME 110,PRESET NAME 110,MIDI 1 90,MIDI 2 90,MIDI 3 90,MIDI 4 90,MIDI 5 90,MIDI 6 90,MIDI 7 90,"
     "MIDI 8 90,MIDI 9 90,MIDI 10 90",
     1, 10, 42},
    {"wahPads", "B 35,BANK NAME 370, 35,WAH PAD 380,PRESET 370", 3, 4, 52},
};
const Layout devices{"midiDevices",
                     "DEVICE NAME 160,CHANNEL 95,SEND CC FIRST 100,TAP TEMPO 145,CONTROLLERS 110,TAP CONTROLLER 130,"
                     "TAP CONTROLLER VALUE 170,TAP TEMPO NOTE NO 150,TAP TEMPO NOTE 130,PRESETS 90",
                     0, 9, 50};

class Tables : public Editor
{
protected:
    void expectLayout(const Layout &layout) const
    {
        const auto &table = find<QTableWidget>(QString("tableWidget_") + layout.table);
        QStringList columns;
        for (int column = 0; column < table.columnCount(); ++column)
            columns << table.horizontalHeaderItem(column)->text() + ' ' + QString::number(table.columnWidth(column));
        EXPECT_EQ(columns.join(',').toStdString(), layout.columns);
        EXPECT_EQ(table.rowHeight(layout.firstRow), layout.rowHeight);
        EXPECT_EQ(table.horizontalHeader()->defaultAlignment(), Qt::AlignLeft | Qt::AlignVCenter);
        for (int row = 0; row < table.rowCount(); ++row)
            EXPECT_EQ(table.cellWidget(row, 1) != nullptr, row >= layout.firstRow && row <= layout.lastRow);
    }
};

}  // namespace

TEST_F(Tables, AreLaidOut)
{
    for (const Layout &layout : layouts) {
        expectLayout(layout);
        const bool pads = layout.firstRow == 3;
        EXPECT_EQ(find<QTableWidget>(QString("tableWidget_") + layout.table).rowCount(), layout.lastRow + 2);
        for (int row = layout.firstRow; row <= layout.lastRow; ++row) {
            const QLineEdit &number = edit(layout.table, row, pads ? 2 : 1);
            EXPECT_EQ(number.text(), QString::number(row - layout.firstRow + (pads ? 1 : 0)));
            EXPECT_FALSE(number.isEnabled());
        }
    }
    expectLayout(devices);
}

TEST_F(Tables, PageByArrowsKeysAndNumber)
{
    const struct
    {
        QString action;  // "+", "-", "PgUp", "PgDown", or what is typed after a click
        int bank;
        bool asks;
    } steps[] = {{"+", 1, true},      {"98", 98, true}, {"PgUp", 99, true}, {"+", 99, false}, {"PgUp", 99, false},
                 {"07", 7, true},     {"57", 57, true}, {"150", 57, false}, {"", 57, false},  {"-1", 1, true},
                 {"PgDown", 0, true}, {"-", 0, false},  {"3\x1B", 0, false}};
    for (const Layout &layout : layouts) {
        SCOPED_TRACE(layout.table);
        const QString table = layout.table;
        click("pushButton_" + (table == "wahPads" ? table : table + "Tab"));
        for (const auto &step : steps) {
            QLineEdit &number = edit(table, layout.lastRow, 0);
            if (step.action == "+" || step.action == "-") {
                auto &arrow = cell<QWidget>(table, step.action == "+" ? layout.firstRow - 1 : layout.lastRow + 1, 0);
                QTest::mouseClick(&arrow, Qt::LeftButton, {}, {0, 20});
            } else if (step.action.startsWith("Pg")) {
                QTest::keyClick(&box("midiDevices", 0, 1), Qt::Key_PageUp);  // pages nothing
                QTest::keyClick(&edit(table, layout.firstRow, 1),
                                step.action == "PgUp" ? Qt::Key_PageUp : Qt::Key_PageDown);
            } else {
                QTest::mouseClick(&number, Qt::LeftButton, {}, {4, 10});
                for (const QChar digit : step.action)
                    QTest::keyClick(&number, digit == '\x1B' ? Qt::Key_Escape : Qt::Key(digit.unicode()));
                EXPECT_EQ(number.styleSheet().contains("#ab0000"), step.action == "150") << "refused visibly";
                QTest::keyClick(&number, Qt::Key_Return);
                EXPECT_FALSE(number.styleSheet().contains("#ab0000"));
                EXPECT_EQ(number.selectedText(), number.text()) << "the next number is typed over it";
            }
            EXPECT_EQ(cell<QPushButton>(table, layout.firstRow - 1, 0).isEnabled(), step.bank < 99);
            EXPECT_EQ(cell<QPushButton>(table, layout.lastRow + 1, 0).isEnabled(), step.bank > 0);
            const Requests asked = requests();
            EXPECT_EQ(asked.size(), step.asks ? 11U : 0U) << step.action.toStdString();
            if (step.asks && !asked.empty()) {
                EXPECT_EQ(asked[0], "RBB|A" + std::to_string(step.bank));
            }
            for (int row = layout.firstRow; row <= layout.lastRow; ++row)
                EXPECT_EQ(edit(table, row, 0).text(), QString::number(step.bank));
        }
        EXPECT_EQ(edit(table, layout.firstRow,
                       table == "footswitchFunction" ? 3
                       : table == "wahPads"          ? 1
                                                     : 2)
                      .text(),
                  QString::fromStdString(unit.memory().banks[0].name));
    }
}

TEST_F(Tables, OnlyWhatChangedIsRestyled)
{
    struct StyleChanges : QObject
    {
        bool eventFilter(QObject * /*watched*/, QEvent *event) override
        {
            count += event->type() == QEvent::StyleChange;
            return false;
        }
        int count = 0;
    } changes;
    for (int row = 1; row <= 10; ++row)
        for (int column = 4; column <= 10; ++column)
            box("loops", row, column).installEventFilter(&changes);
    type(edit("loops", 1, 3), "RENAMED");
    requests();
    EXPECT_EQ(changes.count, 0);
    choose(box("footswitchFunction", 1, 2), unit.memory().presets[0][0].footswitchFunction == FootswitchType::Preset
                                                ? "L - LOOP MODIFIER"
                                                : "P - PRESET");
    requests();
    EXPECT_EQ(changes.count, 7);
}

TEST_F(Tables, AClosedBoxIsNotChangedByKeysOrTheWheel)
{
    ComboBox &state = box("loops", 5, 6);
    click("pushButton_loopsTab");
    const QString stored = state.currentText();
    for (const Qt::Key key : {Qt::Key_End, Qt::Key_O, Qt::Key_T, Qt::Key_Home, Qt::Key_PageDown}) {
        state.setFocus();
        QTest::keyClick(&state, key);
    }
    QWheelEvent wheel({5, 5}, {5, 5}, {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&state, &wheel);
    EXPECT_EQ(state.currentText(), stored);
    requests();
    state.setFocus();
    QTest::keyClick(&state, Qt::Key_Down);
    EXPECT_EQ(QApplication::focusWidget(), &box("loops", 6, 6));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
    EXPECT_EQ(QApplication::focusWidget(), &state);
    for (const auto &[key, modifier] : {std::pair(Qt::Key_Space, Qt::NoModifier),
                                        {Qt::Key_Return, Qt::NoModifier},
                                        {Qt::Key_Down, Qt::AltModifier}}) {
        QTest::keyClick(&state, key, modifier);
        EXPECT_TRUE(state.view()->isVisible());
        EXPECT_EQ(state.view()->currentIndex().row(), state.currentIndex());
        EXPECT_GE(state.view()->visualRect(state.view()->currentIndex()).height(), 26);
        state.hidePopup();
    }
    EXPECT_EQ(requests(), Requests{});
    ComboBox &note = box("midiDevices", 3, 7);
    choose(note, "100");
    ASSERT_TRUE(settles());
    note.showPopup();
    for (const int beside : {99, 101})
        EXPECT_TRUE(note.view()->viewport()->rect().contains(note.view()->visualRect(note.model()->index(beside, 0))));
    note.hidePopup();
}

TEST_F(Tables, LeftAndRightGoThroughARowAndItsTexts)
{
    click("pushButton_midiTab");
    QWidget *const name = &edit("midi", 9, 3);
    const std::pair<std::vector<Qt::Key>, QWidget *> moves[] = {
        {{Qt::Key_Left, Qt::Key_Right, Qt::Key_Right}, name},
        {{Qt::Key_Right, Qt::Key_Right}, &cell<QWidget>("midi", 9, 5)},
        {{Qt::Key_Left, Qt::Key_Left}, name},
        {{Qt::Key_Home, Qt::Key_Right, Qt::Key_Left, Qt::Key_A, Qt::Key_Right}, name},
        {{Qt::Key_Escape, Qt::Key_End, Qt::Key_Right}, &cell<QWidget>("midi", 9, 4)}};
    edit("midi", 9, 0).setFocus(Qt::TabFocusReason);
    for (const auto &[keys, place] : moves) {
        for (const Qt::Key key : keys)
            QTest::keyClick(QApplication::focusWidget(), key);
        EXPECT_EQ(QApplication::focusWidget(), place) << keys.size();
    }
    EXPECT_EQ(requests(), Requests{});
}
