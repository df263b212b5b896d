#include "controller/devicecontroller.h"
#include "simulator/unitport.h"
#include "support/wire.h"
#include "ui/tabfootswitchfunction.h"
#include "ui/tabloops.h"
#include "ui/tabswitch.h"
#include "ui/tabwahpads.h"

#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QIntValidator>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QStyleOptionComboBox>
#include <QTableWidget>
#include <QTest>
#include <QThread>

#include <gtest/gtest.h>
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
    explicit Stage(const Kind &tabKind)
        : kind(tabKind), at(kind.at), table(new QTableWidget(1, at.columns, &window)),
          tab((window.setStyleSheet(look::windowStyle()), kind.make(table)))
    {
        window.resize(1322, 709);
        table->setGeometry(66, 140, 1194, 543);
        window.show();
        QApplication::setActiveWindow(&window);
    }

    QLineEdit *edit(int row, int column) const { return qobject_cast<QLineEdit *>(table->cellWidget(row, column)); }
    QComboBox *box(int row, int column) const { return qobject_cast<QComboBox *>(table->cellWidget(row, column)); }
    void click(int row) const { qobject_cast<QPushButton *>(table->cellWidget(row, 0))->click(); }
    void clickUp() const { click(at.firstRow - 1); }
    void clickDown() const { click(at.lastRow + 1); }

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
        tab->gotBankAndPresetData(0);
    }

    const Kind &kind;
    const Places &at;
    QWidget window;
    QTableWidget *table;
    DataFromDevice data;
    std::unique_ptr<BankTable> tab;
};

/// Everything that a tab sends, as text: "changeBufferLoop 3 0 4".
class Sent
{
public:
    explicit Sent(const Stage &stage)
    {
        const QMetaObject *const meta = stage.tab->metaObject();
        for (int i = QObject::staticMetaObject.methodCount(); i < meta->methodCount(); ++i)
            if (meta->method(i).methodType() == QMetaMethod::Signal)
                spies.push_back(std::make_unique<QSignalSpy>(stage.tab.get(), meta->method(i)));
    }

    QStringList take()
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

private:
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
    if (!box) return qobject_cast<const QPushButton *>(cell) ? "arrow" : "nothing";
    QStringList items;
    for (int i = 0; i < box->count(); ++i)
        items << box->itemText(i);
    return items.join('/') + " at " + QString::number(box->currentIndex());
}

void expectRoomForEveryItem(const QComboBox *box)
{
    QStyleOptionComboBox option;
    option.initFrom(box);
    const QRect room = box->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, box);
    for (int i = 0; i < box->count(); ++i)
        EXPECT_LE(box->fontMetrics().horizontalAdvance(box->itemText(i)) + 4, room.width());
}

struct BankTables : testing::TestWithParam<const Kind *>
{
    Stage stage{*GetParam()};
    const Kind &kind = stage.kind;
    const Places &at = stage.at;
};
INSTANTIATE_TEST_SUITE_P(All, BankTables, testing::Values(&functions, &loops, &switches, &wahPads));

TEST_P(BankTables, AreLaidOut)
{
    EXPECT_EQ(stage.table->rowCount(), at.lastRow + 2);
    for (int row = 0; row <= at.lastRow + 1; ++row)
        for (int column = 0; column < at.columns; ++column) {
            SCOPED_TRACE(testing::Message() << row << ", " << column);
            EXPECT_EQ(stage.table->rowHeight(row), at.rowHeight);
            const QWidget *const cell = stage.table->cellWidget(row, column);
            if (row < at.firstRow || row > at.lastRow) {
                EXPECT_EQ(describe(cell), column == 0 && row >= at.firstRow - 1 ? "arrow" : "nothing");
                continue;
            }
            const int last = kind.cells.size() - 1;
            const QString expected = QString(kind.cells[qMin(column, last)])
                                         .replace("%1", QString::number(row - at.firstRow + at.firstNumber))
                                         .replace("%2", QString::number(column - last + 1));
            EXPECT_EQ(stage.table->horizontalHeaderItem(column)->text() + ' ' +
                          QString::number(stage.table->columnWidth(column)) + ' ' + describe(cell),
                      expected);
            EXPECT_FALSE(cell->accessibleName().isEmpty());
            if (const auto *box = stage.box(row, column)) expectRoomForEveryItem(box);
        }
    const QImage header = stage.table->horizontalHeader()->grab().toImage();
    EXPECT_EQ(header.pixelColor(30, 3).name(), "#525051");
    const auto *const validator = qobject_cast<const QIntValidator *>(stage.edit(at.firstRow, 0)->validator());
    ASSERT_TRUE(validator);
    EXPECT_EQ(validator->bottom(), 0);
    EXPECT_EQ(validator->top(), 99);
    EXPECT_EQ(stage.edit(at.firstRow, 0)->maxLength(), 2);
    const auto *const arrow = qobject_cast<QPushButton *>(stage.table->cellWidget(at.firstRow - 1, 0));
    EXPECT_EQ(arrow->size(), QSize(35, at.rowHeight));
    EXPECT_EQ(arrow->iconSize(), arrow->size());
}

TEST_P(BankTables, TabWalksTheRowsCellByCell)
{
    for (int row = at.firstRow; row <= at.lastRow; ++row)
        for (int column = 0; column < at.columns; ++column) {
            QWidget *const cell = stage.table->cellWidget(row, column);
            if (!cell->isEnabled()) continue;
            if (row == at.firstRow && column == 0) cell->setFocus();
            ASSERT_EQ(QApplication::focusWidget(), cell) << row << ", " << column;
            EXPECT_EQ(cell->grab().toImage().pixelColor(17, 2), Qt::white) << "the frame of the focus";
            QTest::keyClick(cell, Qt::Key_Tab);
            EXPECT_NE(cell->grab().toImage().pixelColor(17, 2), Qt::white);
        }
}

TEST_P(BankTables, PageByArrowsAndByNumber)
{
    Sent sent(stage);
    const auto expectBank = [&](const QString &bank, const QStringList &requests) {
        for (int row = at.firstRow; row <= at.lastRow; ++row)
            EXPECT_EQ(stage.edit(row, 0)->text(), bank);
        EXPECT_EQ(sent.take(), requests);
    };
    stage.clickDown();
    expectBank("0", nothing);
    type(stage.edit(at.firstRow, 0), "98");
    expectBank("98", nothing);  // no unit yet
    stage.tab->loadDataFromDevice(&stage.data);
    expectBank("98", GetParam() == &functions ? QStringList("getBankAndPresetData 98") : nothing);
    stage.clickUp();
    expectBank("99", {"getBankAndPresetData 99"});
    stage.clickUp();
    expectBank("99", nothing);
    type(stage.edit(at.lastRow, 0), "07");
    expectBank("7", {"getBankAndPresetData 7"});
    for (const char *same : {"7", "07", "", "+7"}) {
        type(stage.edit(at.firstRow, 0), same);
        expectBank("7", nothing);
    }
    type(stage.edit(at.firstRow, 0), "1", false);
    expectBank("1", {"getBankAndPresetData 1"});
    stage.clickDown();
    expectBank("0", {"getBankAndPresetData 0"});
    stage.clickDown();
    expectBank("0", nothing);
}

TEST_P(BankTables, NamesComeThroughUnharmed)
{
    const std::pair<std::string, QString> names[]{
        {"\xC3\x9C\x42\x45R D\xC3\x89J\xC3\x80 \xC5\xBB\xC3\x93\xC5\x81TY", QString::fromUtf16(u"ÜBER DÉJÀ ŻÓŁTY")},
        {"A \"B\" 'C' <b>&amp;</b> %1", "A \"B\" 'C' <b>&amp;</b> %1"},
        {std::string(200, 'W'), QString(200, 'W')},
        {"", ""},
    };
    stage.showBank();
    Sent sent(stage);
    for (const auto &[bytes, shown] : names) {
        stage.showBank();
        sent.take();
        type(stage.edit(at.firstRow, at.bankNames), shown);
        EXPECT_EQ(sent.take(), QStringList("changeBankNameSignal " + shown + " 0"));
        EXPECT_EQ(stage.edit(at.firstRow, at.bankNames)->text(), "HOME");
        if (at.presetNames) {
            type(stage.edit(4, at.presetNames), shown, false);
            EXPECT_EQ(sent.take(), QStringList("changePresetNameSignal " + shown + " 0 3"));
            EXPECT_EQ(stage.edit(4, at.presetNames)->text(), "HOME 3");
        }

        stage.showBank(bytes);
        sent.take();
        for (int row = at.firstRow; row <= at.lastRow; ++row) {
            EXPECT_EQ(stage.edit(row, at.bankNames)->text(), shown);
            type(stage.edit(row, at.bankNames), shown);
        }
        if (at.presetNames) {
            EXPECT_EQ(stage.edit(10, at.presetNames)->text(), shown + " 9");
        }
        EXPECT_EQ(sent.take(), nothing);
    }
}

TEST_P(BankTables, ANameLeftWhileItsBankIsBeingReadRenamesNothing)
{
    stage.showBank();
    stage.store(1, "NEXT");  // read before
    Sent sent(stage);
    stage.clickUp();
    for (int column : {at.bankNames, at.presetNames}) {
        stage.edit(at.firstRow, column)->setFocus();
        stage.edit(at.firstRow, column)->clearFocus();
    }
    EXPECT_EQ(sent.take(), QStringList("getBankAndPresetData 1"));
    stage.tab->gotBankAndPresetData(1);
    EXPECT_EQ(stage.edit(at.firstRow, at.bankNames)->text(), "NEXT");
}

TEST_P(BankTables, BeforeAUnitIsThereNothingCanBeChanged)
{
    Sent sent(stage);
    QComboBox *const box = stage.box(4, at.boxes);
    const int index = box->currentIndex();
    box->setCurrentIndex(2);
    EXPECT_EQ(box->currentIndex(), index);
    type(stage.edit(4, at.bankNames), "NAME");
    EXPECT_EQ(stage.edit(4, at.bankNames)->text(), "");
    EXPECT_EQ(sent.take(), nothing);
}

/// Counts the style changes of a table's cells.
class StyleChanges : public QObject
{
public:
    explicit StyleChanges(const Stage &stage)
    {
        for (int row = 0; row < stage.table->rowCount(); ++row)
            for (int column = 0; column < stage.at.columns; ++column)
                if (QWidget *const cell = stage.table->cellWidget(row, column)) cell->installEventFilter(this);
    }
    int take() { return std::exchange(count, 0); }
    bool eventFilter(QObject * /*watched*/, QEvent *event) override
    {
        count += event->type() == QEvent::StyleChange;
        return false;
    }

private:
    int count = 0;
};

TEST_P(BankTables, CellsAreRestyledOnlyWhenTheFunctionChanges)
{
    const QString colors[]{"#8b0000", "#5c7728", "#0005f3", "#fa830f"};
    stage.showBank();
    Sent sent(stage);
    StyleChanges changes(stage);
    for (int function : {1, 2, 3, 0}) {
        stage.store(0, "HOME", static_cast<FootswitchType>(function));
        stage.data.presetData[0][8].store(nullptr);  // unread: stays as it is
        stage.tab->gotBankAndPresetData(1);          // another bank
        EXPECT_EQ(changes.take(), 0);
        stage.tab->gotBankAndPresetData(0);
        EXPECT_EQ(changes.take(), 9 * at.coloured);
        stage.tab->gotBankAndPresetData(0);
        EXPECT_EQ(changes.take(), 0);
        for (int column = at.boxes; column < at.boxes + at.coloured; ++column) {
            const auto color = [&](int row) {
                return stage.box(row, column)->grab().toImage().pixelColor(20, 6).name();
            };
            EXPECT_TRUE(stage.box(1, column)->styleSheet().contains("\nbackground-color: " + colors[function] + ";\n"));
            EXPECT_EQ(color(1), colors[function]);
            EXPECT_EQ(color(9), colors[0]);
        }
    }
    EXPECT_EQ(sent.take(), nothing);
}

struct Rule
{
    const Kind &kind;
    const char *allowed[4];  ///< by function: which of ON, OFF, TOGGLE, INACTIVE may be chosen
    int column;
    QString sent;
};
const Rule rules[]{
    {loops, {"++--", "----", "++++", "----"}, 4, "changeBufferLoop %1 0 6"},
    {loops, {"++--", "----", "++++", "----"}, 5, "changeLoopType %1 0 6 0"},
    {loops, {"++--", "----", "++++", "----"}, 10, "changeLoopType %1 0 6 5"},
    {switches, {"++--", "++++", "----", "----"}, 4, "changeSwitchType %1 0 6 0"},
    {switches, {"++--", "++++", "----", "----"}, 9, "changeSwitchType %1 0 6 5"},
};

TEST(StateTables, TheFunctionDecidesWhichStatesMayBeChosen)
{
    for (const Rule &rule : rules) {
        Stage stage(rule.kind);
        for (int function = 0; function < 4; ++function)
            for (int chosen = 0; chosen < 4; ++chosen) {
                SCOPED_TRACE(rule.sent.toStdString() + ", function " + std::to_string(function));
                const int stored = (chosen + 1) % 4;
                stage.showBank("HOME", static_cast<FootswitchType>(function), stored + 1);
                Sent sent(stage);
                QComboBox *const box = stage.box(7, rule.column);
                EXPECT_EQ(box->currentIndex(), stored);
                box->setCurrentIndex(chosen);
                const bool accepted = rule.allowed[function][chosen] == '+';
                EXPECT_EQ(sent.take(), accepted ? QStringList(rule.sent.arg(chosen + 1)) : nothing);
                EXPECT_EQ(box->currentIndex(), accepted ? chosen : stored);
            }
    }
}

TEST(Boxes, SendOtherValuesThanTheStoredOne)
{
    struct
    {
        const Kind &kind;
        int row, column, stored, chosen;
        QString sent;
    } const cases[]{
        {functions, 10, 2, 2, 3, "changeFootswitchFunctionSignal 3 0 9"},
        {wahPads, 3, 3, 1, 2, "changePresetWahPad1 0 3"},
        {wahPads, 4, 3, 2, 0, "changePresetWahPad2 0 1"},
        {wahPads, 3, 4, 4, 9, "changePresetNumberWahPad1 0 9"},
        {wahPads, 4, 4, 9, 4, "changePresetNumberWahPad2 0 4"},
    };
    for (const auto &c : cases) {
        Stage stage(c.kind);
        stage.showBank("HOME", FootswitchType::LoopModifier);
        Sent sent(stage);
        QComboBox *const box = stage.box(c.row, c.column);
        EXPECT_EQ(box->currentIndex(), c.stored);
        box->setCurrentIndex(c.chosen);
        EXPECT_EQ(sent.take(), QStringList(c.sent));
        EXPECT_EQ(box->currentIndex(), c.chosen);
        box->setCurrentIndex(c.stored);
        EXPECT_EQ(sent.take(), nothing);
    }
}

TEST(Boxes, ListTheTargetsOfAWahPadEvenIfAPresetIsUnread)
{
    Stage stage(wahPads);
    stage.showBank();
    stage.data.presetData[0][3].store(nullptr);
    stage.tab->gotBankAndPresetData(0);
    EXPECT_EQ(describe(stage.box(3, 4)), "0: HOME 0/1: HOME 1/2: HOME 2/3: /4: HOME 4/5: HOME 5/6: HOME 6/7: HOME 7/"
                                         "8: HOME 8/9: HOME 9 at 4");
}

TEST(Paging, AThousandBanksLeaveNothingBehind)
{
    struct Counted : PresetData
    {
        explicit Counted(int &count) : alive(count) { ++alive; }
        Counted(const Counted &) = delete;
        ~Counted() { --alive; }
        int &alive;
    };
    int alive = 0;
    Stage stage(functions);
    Stage pads(wahPads);
    stage.tab->loadDataFromDevice(&stage.data);
    pads.tab->loadDataFromDevice(&stage.data);
    QObject::connect(stage.tab.get(), &BankTable::getBankAndPresetData, [&](int bank) {
        for (auto &slot : stage.data.presetData[static_cast<std::size_t>(bank)])
            slot.store(std::make_shared<const Counted>(alive));
        for (const Stage *shown : {&stage, &pads})
            shown->tab->gotBankAndPresetData(bank);
    });
    const auto count = [&] {
        return stage.window.findChildren<QObject *>().size() + pads.window.findChildren<QObject *>().size();
    };
    for (int page = 0, before = 0; page < 1000; ++page) {
        for (const Stage *shown : {&pads, &stage})
            page % 198 < 99 ? shown->clickUp() : shown->clickDown();
        if (page == 0) before = count();
        ASSERT_EQ(count(), before);
    }
    EXPECT_EQ(alive, 100 * presetCount);
}

/// The tables, a controller on its own thread and a unit on a serial line.
struct OnAUnit : testing::Test
{
    OnAUnit() : controller([this] { return QStringList(QString::fromStdString(unit.location())); })
    {
        using Controller = DeviceController;
        QObject::connect(&worker, &QThread::started, &controller, &Controller::searchDevice);
        for (const Stage *stage : {&onLoops, &onSwitches, &onWahPads, &onFunctions}) {
            BankTable *const tab = stage->tab.get();
            QObject::connect(&controller, &Controller::found, tab, &BankTable::loadDataFromDevice);
            QObject::connect(tab, &BankTable::getBankAndPresetData, &controller, &Controller::getBankAndPresetData);
            QObject::connect(&controller, &Controller::gotBankAndPresetData, tab, &BankTable::gotBankAndPresetData);
            QObject::connect(tab, &BankTable::changeBankNameSignal, &controller, &Controller::changeBankName);
            QObject::connect(tab, &BankTable::changePresetNameSignal, &controller, &Controller::changePresetName);
        }
        connectTab(onFunctions, &TabFootswitchFunction::changeFootswitchFunctionSignal,
                   &Controller::changeFootswitchFunction);
        connectTab(onLoops, &TabLoops::changeBufferLoop, &Controller::changeBufferLoop);
        connectTab(onLoops, &TabLoops::changeLoopType, &Controller::changeLoopType);
        connectTab(onSwitches, &TabSwitch::changeSwitchType, &Controller::changeSwitchType);
        connectTab(onWahPads, &TabWahPads::changePresetWahPad1, &Controller::changePresetWahPad1);
        connectTab(onWahPads, &TabWahPads::changePresetNumberWahPad2, &Controller::changePresetNumberWahPad2);
        QObject::connect(&controller, &Controller::gotBankAndPresetData, &onFunctions.window, [this] {
            shown << onFunctions.edit(1, 3)->text();
            ++answers;
        });
        controller.moveToThread(&worker);
        worker.start();
        waitForAnswers(1);
    }
    ~OnAUnit() override
    {
        worker.requestInterruption();
        worker.quit();
        worker.wait();
    }
    template <typename Tab, typename... Arguments>
    void connectTab(const Stage &stage, void (Tab::*change)(Arguments...), void (DeviceController::*slot)(Arguments...))
    {
        QObject::connect(static_cast<Tab *>(stage.tab.get()), change, &controller, slot);
    }
    void waitForAnswers(int count)
    {
        EXPECT_TRUE(QTest::qWaitFor([&] { return answers >= count; }, 10000));
        answers = 0;
    }
    void expectRequest(const std::string &request)
    {
        waitForAnswers(1);
        EXPECT_EQ(unit.takeRequests(), std::vector{wire(request)});
    }

    UnitPort unit;
    Stage onFunctions{functions}, onLoops{loops}, onSwitches{switches}, onWahPads{wahPads};
    QThread worker;
    DeviceController controller;
    int answers = 0;
    QSet<QString> shown;  ///< the bank names that came up
};

TEST_F(OnAUnit, EveryChangeArrivesInItsMemory)
{
    for (const Stage *stage : {&onFunctions, &onLoops, &onSwitches, &onWahPads})
        type(stage->edit(stage->at.firstRow, 0), "1");
    waitForAnswers(4);
    EXPECT_EQ(onWahPads.edit(3, 1)->text(), QString::fromUtf16(u"CAFÉ BLEU"));
    unit.takeRequests();
    type(onSwitches.edit(1, 2), QString::fromUtf16(u"ÉTUDE <i>\"7\"</i>"));
    expectRequest("WBB|A1|B\xC3\x89TUDE <i>\"7\"</i>");
    type(onLoops.edit(3, 3), QString::fromUtf16(u"ŻAL"));
    expectRequest("WBP|A1|B2|C\xC5\xBB\x41L");
    onFunctions.box(1, 2)->setCurrentIndex(2);
    expectRequest("WBP|A1|B0|D2");
    EXPECT_TRUE(onLoops.box(1, 5)->styleSheet().contains("background-color: #0005f3;"));
    onLoops.box(1, 4)->setCurrentIndex(2);
    expectRequest("WBP|A1|B0|EA3;B2;C2;D2;E2;F2;G1|D2");
    onLoops.box(1, 10)->setCurrentIndex(3);
    expectRequest("WBP|A1|B0|EA3;B2;C2;D2;E2;F2;G4|D2");
    onSwitches.box(2, 6)->setCurrentIndex(0);
    expectRequest("WBP|A1|B1|FA2;B1;C1;D2;E2;F2|D0");
    onWahPads.box(3, 3)->setCurrentIndex(0);
    expectRequest("WBB|A1|C1");
    onWahPads.box(4, 4)->setCurrentIndex(8);
    expectRequest("WBB|A1|F8");

    const UnitMemory memory = unit.memory();
    EXPECT_EQ(memory.banks[1].name, "\xC3\x89TUDE <i>\"7\"</i>");
    EXPECT_EQ(memory.banks[1].wahPad1Action, WahPadAction::Add);
    EXPECT_EQ(memory.banks[1].wahPad2PresetNumber, 8);
    EXPECT_EQ(memory.presets[1][0].footswitchFunction, FootswitchType::LoopModifier);
    EXPECT_EQ(memory.presets[1][0].bufferLoop, LoopType::Toggle);
    EXPECT_EQ(memory.presets[1][0].loops[5], LoopType::Inactive);
    EXPECT_EQ(memory.presets[1][1].switches[2], SwitchType::On);
    EXPECT_EQ(memory.presets[1][2].name, "\xC5\xBB\x41L");
    // Each table shows what the user has changed in another one.
    EXPECT_EQ(onFunctions.edit(9, 3)->text(), QString::fromUtf16(u"ÉTUDE <i>\"7\"</i>"));
    EXPECT_EQ(onWahPads.box(3, 4)->itemText(2), QString::fromUtf16(u"2: ŻAL"));
}

TEST_F(OnAUnit, AUserWhoIsFasterThanTheUnitEndsOnTheShownBank)
{
    for (int i = 0; i < 30; ++i)
        onFunctions.clickUp();
    waitForAnswers(30);
    EXPECT_EQ(shown, QSet<QString>({"OPENING SET", "ENCORE"}));  // none of the banks on the way
    EXPECT_EQ(onFunctions.edit(1, 0)->text(), "30");
    EXPECT_EQ(onFunctions.edit(1, 3)->text(), "ENCORE");
    EXPECT_EQ(onFunctions.edit(7, 4)->text(), "DELAY");
    EXPECT_EQ(onFunctions.box(7, 2)->currentIndex(), 2);
    EXPECT_EQ(onLoops.edit(1, 2)->text(), "OPENING SET");  // stands on its own bank
}

}  // namespace
