#include "ui/editor.h"
#include "ui/tables/tabfootswitchfunction.h"
#include "ui/tables/tabloops.h"
#include "ui/tables/tabswitch.h"
#include "ui/tables/tabwahpads.h"

#include <QApplication>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTimer>

#include <memory>
#include <string>
#include <vector>

// NOLINTNEXTLINE(readability-identifier-naming): the name that failing comparisons look for
void PrintTo(const QString &text, std::ostream *out) { *out << '"' << text.toStdString() << '"'; }

namespace {

const QStringList nothing;

template <typename Tab>
std::unique_ptr<BankTable> make(QTableWidget *table)
{
    return std::make_unique<Tab>(table);
}

struct Places
{
    int columns, firstRow, lastRow, bankNames;
    int presetNames;  ///< 0: has none
    int boxes;        ///< first column with a box
    int coloured;     ///< boxes of a row that wear the colour of the function
    int rowHeight, firstNumber;
};
/// One of the tables, as the user sees it.
struct Kind
{
    std::unique_ptr<BankTable> (*make)(QTableWidget *);
    Places at;
    QStringList cells;  ///< header, width, editor and what it shows; the last one stands for all that follow
};
const Kind functions{make<TabFootswitchFunction>,
                     {5, 1, 10, 3, 4, 2, 1, 42, 0},
                     {"B 35 edit 0", "P 35 number %1",
                      "FOOTSWITCH FUNCTION 350 P - PRESET/S - SWITCH MODIFIER/L - LOOP MODIFIER/M - MIDI MODIFIER at 0",
                      "BANK NAME 385 edit ", "PRESET NAME 385 edit "}};
const Kind loops{make<TabLoops>,
                 {11, 1, 10, 2, 3, 4, 7, 42, 0},
                 {"B 35 edit 0", "P 35 number %1", "BANK NAME 154 edit ", "PRESET NAME 154 edit ",
                  "BUFFER 116 ON/OFF/TOGGLE/INACTIVE at 1", "LOOP %2 116 ON/OFF/TOGGLE/INACTIVE at 1"}};
const Kind switches{make<TabSwitch>,
                    {10, 1, 10, 2, 3, 4, 6, 42, 0},
                    {"B 35 edit 0", "P 35 number %1", "BANK NAME 161 edit ", "PRESET NAME 161 edit ",
                     "SWITCH %2 133 ON/OFF/TOGGLE/INACTIVE at 1"}};
const Kind wahPads{make<TabWahPads>,
                   {5, 3, 4, 1, 0, 3, 0, 52, 1},
                   {"B 35 edit 0", "BANK NAME 370 edit ", " 35 number %1",
                    "WAH PAD 380 ADD/TURN LOOP ON/CHANGE TO PRESET at 0", "PRESET 370  at -1"}};

/// A tab on a table in a window, and a model for it.
struct Stage
{
    explicit Stage(const Kind &tabKind) : at(tabKind.at), table(new QTableWidget(1, at.columns, &window))
    {
        window.setStyleSheet(look::windowStyle());
        tab = tabKind.make(table);
        table->resize(1194, 543);
        window.show();
        QApplication::setActiveWindow(&window);
        const QMetaObject *const meta = tab->metaObject();
        for (int i = QObject::staticMetaObject.methodCount(); i < meta->methodCount(); ++i)
            if (meta->method(i).methodType() == QMetaMethod::Signal)
                spies.push_back(std::make_unique<QSignalSpy>(tab.get(), meta->method(i)));
    }

    template <typename Cell>
    Cell *cell(int row, int column) const
    {
        return qobject_cast<Cell *>(table->cellWidget(row, column));
    }
    QLineEdit *edit(int row, int column) const { return cell<QLineEdit>(row, column); }
    QComboBox *box(int row, int column) const { return cell<QComboBox>(row, column); }
    void clickUp() const { cell<QPushButton>(at.firstRow - 1, 0)->click(); }
    void clickDown() const { cell<QPushButton>(at.lastRow + 1, 0)->click(); }

    /// Stores a bank of this name and its presets, all with this function and these states.
    void store(int bank, const std::string &name, FootswitchType function = FootswitchType::Preset, int state = 2)
    {
        const auto slot = static_cast<std::size_t>(bank);
        data.bankData[slot].store(
            std::make_shared<const BankData>(name, WahPadAction::TurnLoopOn, 4, WahPadAction::ChangeToPreset, 9));
        for (std::size_t p = 0; p < presetCount; ++p)
            data.presetData[slot][p].store(std::make_shared<const PresetData>(
                name + " " + std::to_string(p), function, static_cast<LoopType>(state),
                filled<loopCount>(static_cast<LoopType>(state)), filled<switchCount>(static_cast<SwitchType>(state)),
                std::vector<ControlChangeData>(), filled<midiDeviceCount>(none), PresetExpressionPedal()));
    }
    /// Stores that in bank 0 and lets the tab show it.
    void showBank(const std::string &name = "HOME", FootswitchType function = FootswitchType::Preset, int state = 2)
    {
        store(0, name, function, state);
        tab->loadDataFromDevice(&data);
        takeSent();
        tab->gotBankAndPresetData(0);
    }

    /// Everything that the tab has sent since the last call, as text: "changeBufferLoop 3 0 4".
    QStringList takeSent()
    {
        QStringList texts;
        for (const auto &spy : spies)
            for (; !spy->isEmpty(); spy->removeFirst()) {
                texts << QString::fromLatin1(spy->signal()).section('(', 0, 0);
                for (const QVariant &value : spy->first())  // enumerations have the size of an int
                    texts.last() += ' ' + (value.type() == QVariant::String
                                               ? value.toString()
                                               : QString::number(*static_cast<const int *>(value.constData())));
            }
        return texts;
    }

    const Places &at;
    QWidget window;
    QTableWidget *table;
    DataFromDevice data;
    std::unique_ptr<BankTable> tab;
    std::vector<std::unique_ptr<QSignalSpy>> spies;
};

/// Types over what an edit holds, like a user, then leaves the edit.
void type(QLineEdit *edit, const QString &text, bool byReturn = true)
{
    edit->setFocus();
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    edit->insert(text);
    if (byReturn) QTest::keyClick(edit, Qt::Key_Return);
    edit->clearFocus();
}

QString describe(const QWidget *cell)
{
    if (const auto *edit = qobject_cast<const QLineEdit *>(cell))
        return (edit->isEnabled() ? "edit " : "number ") + edit->text();
    const auto *const box = qobject_cast<const QComboBox *>(cell);
    QStringList items;
    for (int i = 0; box && i < box->count(); ++i)
        items << box->itemText(i);
    return items.join('/') + " at " + QString::number(box ? box->currentIndex() : -2);
}

struct BankTables : testing::TestWithParam<const Kind *>
{
    Stage stage{*GetParam()};
    const Places &at = stage.at;
};
INSTANTIATE_TEST_SUITE_P(All, BankTables, testing::Values(&functions, &loops, &switches, &wahPads));

TEST_P(BankTables, AreLaidOutAndWalkedCellByCell)
{
    const QStringList &cells = GetParam()->cells;
    const int last = cells.size() - 1;
    ASSERT_EQ(stage.table->rowCount(), at.lastRow + 2);
    stage.edit(at.firstRow, 0)->setFocus();
    for (int row = at.firstRow; row <= at.lastRow; ++row)
        for (int column = 0; column < at.columns; ++column) {
            QWidget *const cell = stage.table->cellWidget(row, column);
            EXPECT_EQ(stage.table->horizontalHeaderItem(column)->text() + ' ' +
                          QString::number(stage.table->columnWidth(column)) + ' ' + describe(cell),
                      QString(cells[qMin(column, last)])
                          .replace("%1", QString::number(row - at.firstRow + at.firstNumber))
                          .replace("%2", QString::number(column - last + 1)));
            EXPECT_EQ(stage.table->rowHeight(row), at.rowHeight);
            if (!cell->isEnabled()) continue;
            ASSERT_EQ(QApplication::focusWidget(), cell) << row << ", " << column;
            QTest::keyClick(cell, Qt::Key_Tab);
        }
}

TEST_P(BankTables, PageByArrowsAndByNumber)
{
    const struct
    {
        QString action, bank;
        bool asks;
    } steps[] = {
        {"up", "1", true},  {"98", "98", true},  {"up", "99", true},   {"up", "99", false}, {"07", "7", true},
        {"07", "7", false}, {"", "7", false},    {"+7", "7", false},   {"-1", "7", false},  {"x", "7", false},
        {"1", "1", true},   {"down", "0", true}, {"down", "0", false},
    };
    stage.showBank();
    for (const auto &step : steps) {
        if (step.action == "up")
            stage.clickUp();
        else if (step.action == "down")
            stage.clickDown();
        else
            type(stage.edit(at.lastRow, 0), step.action);
        for (int row = at.firstRow; row <= at.lastRow; ++row)
            EXPECT_EQ(stage.edit(row, 0)->text(), step.bank) << step.action.toStdString();
        EXPECT_EQ(stage.takeSent(), step.asks ? QStringList("getBankAndPresetData " + step.bank) : nothing);
    }
}

TEST_P(BankTables, NamesComeThroughUnharmed)
{
    const std::pair<std::string, QString> names[]{
        {"\xC3\x9C\x42\x45R D\xC3\x89J\xC3\x80 \xC5\xBB\xC3\x93\xC5\x81TY", QString::fromUtf16(u"ÜBER DÉJÀ ŻÓŁTY")},
        {"A \"B\" 'C' <b>&amp;</b> %1", "A \"B\" 'C' <b>&amp;</b> %1"},
        {std::string(200, 'W'), QString(200, 'W')},
        {"", ""},
    };
    for (const auto &[bytes, shown] : names)
        for (const int column : {at.bankNames, at.presetNames}) {
            if (column == 0) continue;
            const bool ofBank = column == at.bankNames;
            QLineEdit *const edit = stage.edit(4, column);
            stage.showBank();
            type(edit, shown, ofBank);
            EXPECT_EQ(stage.takeSent(), QStringList(ofBank ? "changeBankNameSignal " + shown + " 0"
                                                           : "changePresetNameSignal " + shown + " 0 3"));
            EXPECT_EQ(edit->text(), ofBank ? "HOME" : "HOME 3") << "until the unit has it";
            stage.showBank(bytes);
            EXPECT_EQ(edit->text(), ofBank ? shown : shown + " 3");
            type(edit, edit->text());
            EXPECT_EQ(stage.takeSent(), nothing);
        }
}

TEST_P(BankTables, WithoutAUnitOrItsRecordsNothingCanBeChanged)
{
    QComboBox *const box = stage.box(4, at.boxes);
    const int index = box->currentIndex();
    box->setCurrentIndex(2);
    EXPECT_EQ(box->currentIndex(), index);
    type(stage.edit(4, at.bankNames), "NAME");
    EXPECT_EQ(stage.edit(4, at.bankNames)->text(), "");
    type(stage.edit(4, 0), "98");
    EXPECT_EQ(stage.takeSent(), nothing);
    stage.tab->loadDataFromDevice(&stage.data);
    EXPECT_EQ(stage.takeSent(), GetParam() == &functions ? QStringList("getBankAndPresetData 98") : nothing);

    type(stage.edit(4, 0), "0");
    stage.showBank();
    stage.store(1, "NEXT");  // known from before, but being read again
    stage.clickUp();
    for (const int column : {at.bankNames, at.presetNames}) {
        stage.edit(4, column)->setFocus();
        stage.edit(4, column)->clearFocus();
    }
    EXPECT_EQ(stage.takeSent(), QStringList("getBankAndPresetData 1"));
}

struct StyleChanges : QObject
{
    bool eventFilter(QObject * /*watched*/, QEvent *event) override
    {
        count += event->type() == QEvent::StyleChange;
        return false;
    }
    int count = 0;
};

TEST_P(BankTables, BoxesAreRestyledOnlyWhenTheFunctionChanges)
{
    const QString colors[]{"#8b0000", "#5c7728", "#0005f3", "#fa830f"};
    stage.showBank();
    StyleChanges changes;
    for (QWidget *const cell : stage.table->viewport()->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
        cell->installEventFilter(&changes);
    for (const int function : {1, 2, 3, 0}) {
        stage.store(0, "HOME", static_cast<FootswitchType>(function));
        stage.data.presetData[0][8].store(nullptr);  // unread: stays as it is
        const std::pair<int, int> refreshes[]{{1, 0}, {0, 9 * at.coloured}, {0, 0}};
        for (const auto &[bank, expected] : refreshes) {
            stage.tab->gotBankAndPresetData(bank);
            EXPECT_EQ(std::exchange(changes.count, 0), expected);
        }
        for (int column = at.boxes; column < at.boxes + at.coloured; ++column)
            for (const int row : {1, 9})
                EXPECT_EQ(stage.box(row, column)->grab().toImage().pixelColor(20, 6).name(),
                          colors[row == 9 ? 0 : function]);
    }
    EXPECT_EQ(stage.takeSent(), nothing);
}

TEST(StateTables, TheFunctionDecidesWhichStatesMayBeChosen)
{
    const struct
    {
        const Kind &kind;
        const char *allowed[4];  ///< by function: which of ON, OFF, TOGGLE, INACTIVE may be chosen
        int column;
        QString sent;
    } rules[]{
        {loops, {"++--", "----", "++++", "----"}, 4, "changeBufferLoop %1 0 6"},
        {loops, {"++--", "----", "++++", "----"}, 10, "changeLoopType %1 0 6 5"},
        {switches, {"++--", "++++", "----", "----"}, 9, "changeSwitchType %1 0 6 5"},
    };
    for (const auto &rule : rules) {
        Stage stage(rule.kind);
        QComboBox *const box = stage.box(7, rule.column);
        for (int function = 0; function < 4; ++function)
            for (int chosen = 0; chosen < 4; ++chosen) {
                SCOPED_TRACE(rule.sent.toStdString() + ", function " + std::to_string(function));
                const int stored = (chosen + 1) % 4;
                stage.showBank("HOME", static_cast<FootswitchType>(function), stored + 1);
                EXPECT_EQ(box->currentIndex(), stored);
                box->setCurrentIndex(chosen);
                const bool accepted = rule.allowed[function][chosen] == '+';
                EXPECT_EQ(stage.takeSent(), accepted ? QStringList(rule.sent.arg(chosen + 1)) : nothing);
                EXPECT_EQ(box->currentIndex(), accepted ? chosen : stored);
            }
    }
}

TEST(Boxes, SendOtherValuesThanTheStoredOne)
{
    const struct
    {
        const Kind &kind;
        int row, column, stored, chosen;
        QString sent;
    } cases[]{
        {functions, 10, 2, 2, 3, "changeFootswitchFunctionSignal 3 0 9"},
        {wahPads, 3, 3, 1, 2, "changePresetWahPad1 0 3"},
        {wahPads, 4, 3, 2, 0, "changePresetWahPad2 0 1"},
        {wahPads, 3, 4, 4, 9, "changePresetNumberWahPad1 0 9"},
        {wahPads, 4, 4, 9, 4, "changePresetNumberWahPad2 0 4"},
    };
    for (const auto &c : cases) {
        Stage stage(c.kind);
        stage.showBank("HOME", FootswitchType::LoopModifier);
        stage.data.presetData[0][3].store(nullptr);  // a target without a name
        stage.tab->gotBankAndPresetData(0);
        QComboBox *const box = stage.box(c.row, c.column);
        EXPECT_EQ(box->currentIndex(), c.stored);
        if (c.column == 4) {  // lists the presets
            EXPECT_EQ(box->itemText(3) + box->itemText(9), "3: 9: HOME 9");
        }
        box->setCurrentIndex(c.chosen);
        EXPECT_EQ(stage.takeSent(), QStringList(c.sent));
        box->setCurrentIndex(c.stored);
        EXPECT_EQ(stage.takeSent(), nothing);
    }
}

TEST_F(Editor, FastClicksEndOnTheShownBankWithoutThoseOnTheWay)
{
    auto &name = cell<QLineEdit>("footswitchFunction", 1, 3);
    QSet<QString> shown;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] { shown << name.text(); });
    watch.start(0);
    for (int i = 0; i < 30; ++i)
        cell<QPushButton>("footswitchFunction", 0, 0).click();
    EXPECT_TRUE(settles());
    EXPECT_EQ(shown, QSet<QString>({"OPENING SET", "ENCORE"}));
    EXPECT_EQ(cell<QLineEdit>("footswitchFunction", 1, 0).text(), "30");
    EXPECT_EQ(cell<QComboBox>("footswitchFunction", 7, 2).currentIndex(), 2);
    EXPECT_EQ(cell<QLineEdit>("loops", 1, 2).text(), QString::fromStdString(unit.memory().banks[0].name));
}

}  // namespace
