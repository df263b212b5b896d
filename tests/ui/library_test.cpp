// The library: all banks at a glance, found, renamed, opened and arranged from there.

#include "ui/editor.h"
#include "ui/library/librarymodel.h"
#include "ui/library/libraryview.h"
#include "ui/library/librarywidget.h"
#include "ui/preview/previewwidget.h"

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QProgressBar>
#include <QWindow>

namespace {

/// Drops what is dragged as soon as a drag begins, since there is no pointer that could move it.
class DropAt : public QObject
{
public:
    DropAt(LibraryView &libraryView, const QPoint &target, Qt::DropAction chosen)
        : view(libraryView), place(target), action(chosen)
    {
        view.installEventFilter(this);
        EXPECT_TRUE(view.viewport()->acceptDrops());
    }

protected:
    bool eventFilter(QObject * /*view*/, QEvent *event) override
    {
        if (event->type() != QEvent::ChildAdded) return false;  // of the drag
        QMimeData data;
        data.setData(LibraryModel::dragType(), {});
        QDragEnterEvent enter(place, action, &data, Qt::LeftButton, {});
        QDropEvent drop(place, action, &data, Qt::LeftButton, {});
        for (QDropEvent *const part : {static_cast<QDropEvent *>(&enter), &drop}) {
            part->setDropAction(action);
            QApplication::sendEvent(view.viewport(), part);
        }
        return false;
    }

private:
    LibraryView &view;
    QPoint place;
    Qt::DropAction action;
};

class Library : public Editor
{
protected:
    Library() : Editor(content()) {}

    /// A musician's content without the names that the tests look for, but for a few.
    static UnitMemory content()
    {
        UnitMemory memory = musicianContent();
        for (auto &bank : memory.presets)
            for (PresetData &preset : bank) {
                preset.name = "P";
                preset.programChanges[3] = none;
                std::erase_if(preset.controlChanges, [](const auto &change) { return change.midiDeviceNumber == 4; });
                preset.expressionPedal = {};
            }
        memory.banks[41].name = "R\u00caVERIE";
        memory.presets[7][2].name = "Straße";
        memory.midiDevices[3].name = "ECHO";
        memory.midiDevices[3].controllers[6] = {"ROOM", 20};
        memory.presets[50][1].programChanges[3] = 5;
        memory.presets[51][2].controlChanges = {{4, 1, 64}};
        memory.presets[52][3].expressionPedal = {4, 1, ExpressionPedalCharacteristic::Linear, 0, 127};
        memory.presets[53][4].controlChanges = {{4, 1, inactiveValue}};  // sends nothing
        for (const std::size_t bank : {50U, 51U, 52U, 53U, 54U})
            for (PresetData &preset : memory.presets[bank])
                preset.footswitchFunction = FootswitchType::Preset;
        memory.presets[54][5].footswitchFunction = FootswitchType::LoopModifier;  // neither does this
        memory.presets[54][5].programChanges[3] = 5;
        return memory;
    }

    LibraryView &table() const { return find<LibraryView>("tableView_library"); }
    QModelIndex at(int row, int column) const { return table().model()->index(row, column); }
    QString text(int row, int column) const { return at(row, column).data().toString(); }

    void open()
    {
        click("pushButton_libraryTab");
        ASSERT_TRUE(settles());
    }
    void select(const std::vector<std::pair<int, int>> &cells)
    {
        table().setFocus();
        table().clearSelection();
        const QModelIndex current = at(cells.front().first, cells.front().second);
        table().selectionModel()->setCurrentIndex(current, QItemSelectionModel::Select);
        for (const auto &[row, column] : cells)
            table().selectionModel()->select(at(row, column), QItemSelectionModel::Select);
    }
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QApplication::setActiveWindow(&window);  // also after a dialog
        table().setFocus();
        QTest::keyClick(&table(), static_cast<Qt::Key>(key), modifiers);
        ASSERT_TRUE(settles());
    }
    void trigger(const QString &text)
    {
        for (QAction *const action : table().actions())
            if (action->text() == text) {
                EXPECT_TRUE(action->isEnabled()) << text.toStdString();
                action->trigger();
            }
        ASSERT_TRUE(settles());
    }
    /// Drags a cell, with all that is selected if it is, to another one.
    void drag(std::pair<int, int> from, std::pair<int, int> to, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        const auto place = [this](std::pair<int, int> cell) {
            return table().visualRect(at(cell.first, cell.second)).center();
        };
        const QPoint start = place(from);
        DropAt dropping(table(), place(to), modifiers == Qt::ControlModifier ? Qt::CopyAction : Qt::MoveAction);
        QTest::mousePress(table().viewport(), Qt::LeftButton, {}, start);
        for (const int distance : {1, 2}) {  // the first begins the drag, the second makes it
            const QPoint moved = start + distance * QPoint(QApplication::startDragDistance(), 0);
            QMouseEvent move(QEvent::MouseMove, moved, table().viewport()->mapToGlobal(moved), Qt::NoButton,
                             Qt::LeftButton, {});
            QApplication::sendEvent(table().viewport(), &move);
        }
        QTest::mouseRelease(table().viewport(), Qt::LeftButton, modifiers, place(to));
        ASSERT_TRUE(settles());
    }
    /// The banks that are shown, each with the columns that shine.
    QString found(const QString &search)
    {
        type(find<QLineEdit>("lineEdit_find"), search, Qt::Key_unknown);
        QStringList shown;
        for (int row = 0; row < table().model()->rowCount(); ++row) {
            QString bank = text(row, 0);
            for (int column = 1; column < LibraryModel::ColumnCount; ++column)
                if (at(row, column).data(LibraryModel::MatchRole).toBool()) bank += '/' + QString::number(column);
            shown << bank;
        }
        return shown.join(' ');
    }
};

}  // namespace

TEST_F(Library, ReadsWhatIsNotKnownWhenItIsOpenedAndStaysUsable)
{
    EXPECT_EQ(requests(), Requests());
    unit.setDelay(std::chrono::milliseconds(1));
    click("pushButton_libraryTab");
    auto &progress = find<QProgressBar>("progressBar_library");
    EXPECT_EQ(text(0, 1), "OPENING SET");  // known
    EXPECT_EQ(text(3, 1), "");
    select({{3, 1}});
    const QAction &copy = *table().actions().at(3);
    EXPECT_EQ(copy.text() + (copy.isEnabled() ? "+" : "-"), "COPY-");
    ASSERT_TRUE(becomes([&] { return text(3, 1) == "\u00dcBER DEN D\u00c4CHERN"; }));
    EXPECT_TRUE(copy.isEnabled());
    EXPECT_TRUE(progress.isVisible() && progress.value() >= 4 && progress.value() < 90);
    click("pushButton_settingsTab");  // gets in between
    ASSERT_TRUE(becomes([&] { return find<QComboBox>("comboBox_keyboardType").currentIndex() >= 0; }));
    click("pushButton_libraryTab");
    EXPECT_EQ(text(99, 1), "");
    click("pushButton_stopReading");
    ASSERT_TRUE(settles());
    EXPECT_EQ(text(99, 1), "");
    click("pushButton_presetsTab");
    open();  // what the user has stopped does not begin by itself
    EXPECT_EQ(text(99, 1), "");
    click("pushButton_stopReading");
    ASSERT_TRUE(settles());
    EXPECT_EQ(text(99, 1), "BANK 99");
    EXPECT_EQ(at(8, 2 + 9).data(Qt::BackgroundRole).value<QColor>(), QColor(250, 131, 15));
    EXPECT_FALSE(progress.isVisible());
    Requests asked = requests();
    EXPECT_EQ(std::erase(asked, "ROS"), 1U);
    std::sort(asked.begin(), asked.end());
    EXPECT_EQ(asked.size(), 99U * 11);
    EXPECT_EQ(std::adjacent_find(asked.begin(), asked.end()), asked.end());

    unit.unplug();
    ASSERT_TRUE(becomes([&] {
        click("pushButton_settingsTab");
        return !isConnected();
    }));
    click("pushButton_libraryTab");
    unit.alter([](UnitMemory &memory) { memory.banks[99].name = "NEW"; });
    unit.plugIn();
    ASSERT_TRUE(becomes([&] { return text(99, 1) == "NEW"; }));
}

TEST_F(Library, FindsNamesWithoutCaseAndAccentsAndWhatIsSentToADevice)
{
    open();
    EXPECT_EQ(found("reverie"), "41/1");
    EXPECT_EQ(found("STRASSE"), "7/4 19/1");
    EXPECT_EQ(found("n\u0303ana"), "14/1");
    EXPECT_EQ(found("ech"), "50/3 51/4 52/5");
    QTest::keyClick(&find<QLineEdit>("lineEdit_find"), Qt::Key_Down);
    EXPECT_TRUE(table().hasFocus());
    EXPECT_EQ(table().currentIndex(), at(0, 3));
    EXPECT_EQ(found("nowhere"), "");
    unit.alter([](UnitMemory &memory) { memory.banks[9].name = "NOWHERE"; });
    type(edit("loops", 1, 0), "9");  // a bank that is read while something is searched for
    ASSERT_TRUE(settles());
    EXPECT_EQ(table().model()->rowCount(), 1);
    find<QLineEdit>("lineEdit_find").setFocus();
    QTest::keyClick(&find<QLineEdit>("lineEdit_find"), Qt::Key_Escape);
    EXPECT_EQ(table().model()->rowCount(), 100);
    table().setFocus();
    QTest::keyClick(&table(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(find<QLineEdit>("lineEdit_find").hasFocus());
}

TEST_F(Library, TellsTheStatesOfACellApartAndOpensItsMenu)
{
    open();
    std::vector<QImage> looks;
    const auto lookOf = [&](int row) { return table().viewport()->grab(table().visualRect(at(row, 5))).toImage(); };
    const auto look = [&](int row) { looks.push_back(lookOf(row)); };
    look(7);
    select({{7, 4}, {7, 5}});
    look(7);  // selected
    select({{7, 5}});
    look(7);  // the current one, too
    select({{3, 2}});
    window.findChild<LibraryWidget *>()->lightUp({{RecordId::Kind::Preset, 7, 3}});
    look(7);
    EXPECT_TRUE(becomes([&] { return lookOf(7) == looks.front(); })) << "the light goes out";
    found("stra");
    look(0);  // beside one that is found
    for (std::size_t one = 0; one < looks.size(); ++one)
        for (std::size_t other = 0; other < one; ++other)
            EXPECT_NE(looks[one], looks[other]) << one << " and " << other;

    QContextMenuEvent event(QContextMenuEvent::Mouse, {5, 5}, {5, 5});
    QApplication::sendEvent(table().viewport(), &event);
    QStringList entries;
    auto &menu = dynamic_cast<QMenu &>(*QApplication::activePopupWidget());
    for (const QAction *const action : menu.actions())
        if (!action->isSeparator()) entries << action->text();
    EXPECT_EQ(entries.join('|'),
              "OPEN|RENAME|CUT|COPY|PASTE|SWAP|CLEAR|CHANGE IN SELECTION...|INSERT EMPTY BANK|REMOVE BANK|MOVE UP|MOVE "
              "DOWN|EXPORT...|IMPORT...|SAVE SHEETS...");
    expectLit(menu, menu.actions().front());
    menu.close();
}

TEST_F(Library, RenamesInPlaceAndOpensABank)
{
    open();
    requests();
    const auto rename = [this](int row, int column, int key, const QString &name, Qt::Key end) {
        select({{row, column}});
        QTest::keyClick(&table(), static_cast<Qt::Key>(key));
        auto *const editor = table().viewport()->findChild<QLineEdit *>();
        ASSERT_TRUE(editor);
        type(*editor, name, end);
        EXPECT_TRUE(becomes([this] { return !table().viewport()->findChild<QLineEdit *>(); }));
    };
    rename(12, 1, Qt::Key_F2, "HAVEN", Qt::Key_Return);
    rename(12, 5, Qt::Key_Q, "QUIET", Qt::Key_Return);
    rename(12, 6, Qt::Key_F2, "NOT THIS", Qt::Key_Escape);
    rename(12, 7, Qt::Key_F2, "P", Qt::Key_Return);  // as it was
    EXPECT_EQ(requests(), (Requests{"WBB|A12|BHAVEN", "WBP|A12|B3|CQUIET"}));
    EXPECT_EQ(text(12, 1) + text(12, 5), "HAVENQUIET");

    nextBox();
    unit.queueFault(Fault::errorStatus());
    type(edit("loops", 1, 0), "9");  // which all pages would ask for anew
    requests();
    select({{12, 5}});
    press(Qt::Key_Return);
    EXPECT_TRUE(find<QWidget>("widget_presets").isVisible());
    click("pushButton_previewTab");
    click("pushButton_presetsTab");
    for (const char *name : {"footswitchFunction", "loops", "switch", "midi"})
        EXPECT_EQ(edit(name, 5, 0).text() + edit(name, 4, name[0] == 'f' ? 4 : 3).text(), "12QUIET") << name;
    EXPECT_EQ(window.findChild<PreviewWidget *>()->currentBank(), 12);
    EXPECT_EQ(requests(), Requests());

    open();
    const QPoint cell = table().visualRect(at(11, 5)).center();
    QTest::mouseClick(table().viewport(), Qt::LeftButton, {}, cell);
    QTest::mouseDClick(table().viewport(), Qt::LeftButton, {}, cell);
    EXPECT_TRUE(find<QWidget>("widget_presets").isVisible());
    EXPECT_EQ(edit("loops", 5, 0).text(), "11");
}

TEST_F(Library, ArrangesByKeysMouseAndMenuAndShowsWhatUndoTakesBack)
{
    open();
    const UnitMemory before = unit.memory();
    drag({3, 4}, {5, 6});
    EXPECT_TRUE(unit.memory().presets[5][4] == before.presets[3][2]);
    EXPECT_TRUE(unit.memory().presets[3][2] == before.presets[5][4]);
    drag({3, 4}, {6, 2}, Qt::ControlModifier);
    EXPECT_TRUE(unit.memory().presets[6][0] == unit.memory().presets[3][2]);
    select({{10, 0}, {12, 0}});
    drag({12, 0}, {14, 3});
    EXPECT_TRUE(unit.memory().banks[13] == before.banks[10] && unit.memory().banks[14] == before.banks[12]);
    unit.setDelay(std::chrono::milliseconds(15));  // so that the page is veiled meanwhile
    press(Qt::Key_Up, Qt::AltModifier);            // the banks that were moved are selected
    unit.setDelay(std::chrono::milliseconds(0));
    press(Qt::Key_Up, Qt::AltModifier);
    EXPECT_TRUE(unit.memory().banks[11] == before.banks[10] && unit.memory().banks[10] == before.banks[11]);
    for (int step = 0; step < 5; ++step)
        press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(unit.memory() == before);
    EXPECT_TRUE(table().isVisible());
    EXPECT_TRUE(at(3, 4).data(LibraryModel::LitRole).toBool() && at(5, 6).data(LibraryModel::LitRole).toBool());
    EXPECT_TRUE(becomes([&] { return !at(3, 4).data(LibraryModel::LitRole).toBool(); }));

    select({{41, 3}, {7, 4}, {50, 3}});
    press(Qt::Key_C, Qt::ControlModifier);
    select({{98, 10}});
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_TRUE(unit.memory().presets[98][8] == before.presets[7][2]);
    EXPECT_TRUE(unit.memory().presets[99][0] == before.presets[50][1]);
    select({{60, 2}});
    trigger("SWAP");
    EXPECT_TRUE(unit.memory().presets[60][0] == before.presets[7][2]);
    EXPECT_TRUE(unit.memory().presets[50][1] == before.presets[60][2]);
    select({{41, 1}});
    const auto asked = nextBox(QMessageBox::Yes);
    press(Qt::Key_Delete);
    EXPECT_TRUE(asked->startsWith("CLEAR|"));
    EXPECT_EQ(text(41, 1), "");
    select({{41, 0}});
    trigger("REMOVE BANK");
    EXPECT_TRUE(unit.memory().banks[41].name == before.banks[42].name);
}

TEST_F(Library, StopsAtARecordThatTheUnitRefusesAndReadsOn)
{
    QGuiApplication::clipboard()->clear();
    const auto told = nextBox();
    unit.queueFault(Fault::errorStatus(), 25);
    open();
    EXPECT_TRUE(told->startsWith("Error|"));
    EXPECT_EQ(text(2, 1), "NIGHT BUS");
    EXPECT_EQ(text(4, 1), "");
    select({{4, 1}});
    const auto entries = [this](bool areEnabled) {
        QStringList texts;
        for (const QAction *const action : table().actions())
            if (action->isEnabled() == areEnabled) texts << action->text();
        return texts.join('|');
    };
    EXPECT_EQ(entries(true), "OPEN|RENAME|CLEAR|CHANGE IN SELECTION...|INSERT EMPTY BANK|REMOVE BANK|MOVE UP|MOVE "
                             "DOWN|IMPORT...|SAVE SHEETS...");
    EXPECT_EQ(entries(false), "CUT|COPY|PASTE|SWAP|EXPORT...");  // not known, and nothing was copied
    click("pushButton_stopReading");
    ASSERT_TRUE(settles());
    EXPECT_EQ(text(99, 1), "BANK 99");
    EXPECT_TRUE(at(4, 1).data(LibraryModel::KnownRole).toBool());
    unit.unplug();
    ASSERT_TRUE(becomes([&] {
        click("pushButton_settingsTab");
        return !isConnected();
    }));
    click("pushButton_libraryTab");
    select({{4, 1}});
    EXPECT_EQ(entries(true), "OPEN|COPY|EXPORT...|SAVE SHEETS...");
    table().clearSelection();
    EXPECT_EQ(entries(true), "OPEN");  // the current cell
}

TEST_F(Library, ChangesAllSelectedPresetsByOneDialog)
{
    unit.alter([](UnitMemory &memory) {  // P, S, L, M, P, S, ...
        for (std::size_t preset = 0; preset < presetCount; ++preset) {
            memory.presets[60][preset] = {};
            memory.presets[60][preset].name = "PAPA";
            memory.presets[60][preset].footswitchFunction = fromIndex<FootswitchType>(static_cast<int>(preset) % 4);
        }
        memory.presets[60][4].controlChanges = {{4, 7, 64}};
    });
    const UnitMemory before = unit.memory();
    unit.setDelay(std::chrono::milliseconds(1));
    click("pushButton_libraryTab");
    click("pushButton_stopReading");  // what is not known is read for the dialog
    ASSERT_TRUE(settles());
    unit.setDelay({});
    const auto left = [](const char *presets) {
        return QString("\n%1 presets stay as they are: their function does not allow it.").arg(presets);
    };
    struct Case
    {
        const char *kind;
        std::vector<std::pair<const char *, const char *>> choices;
        int needed;  // so many of the choices must be made before OK is offered
        QString count;
        std::function<bool(const std::array<PresetData, presetCount> &presets)> isMade;
    };
    const PresetExpressionPedal pedal(4, 7, ExpressionPedalCharacteristic::Linear, 5, 127);
    const Case cases[] = {
        {"FOOTSWITCH FUNCTION",
         {{"function", "M - MIDI MODIFIER"}},
         1,
         "8 presets change, 8 values.",
         [](auto &presets) { return presets[9].footswitchFunction == FootswitchType::MidiModifier; }},
        {"BUFFER OR LOOP",
         {{"loop", "LOOP 2"}, {"loopState", "TOGGLE"}},
         2,
         "2 presets change, 2 values." + left("8"),
         [](auto &presets) { return presets[2].loops[1] == LoopType::Toggle && presets[0].loops[1] == LoopType::Off; }},
        {"SWITCH",
         {{"switch", "SWITCH 6"}, {"switchState", "ON"}},
         2,
         "6 presets change, 6 values." + left("4"),
         [](auto &presets) { return presets[0].switches[5] == SwitchType::On; }},
        {"PROGRAM CHANGE",
         {{"programDevice", "MIDI 4 : ECHO"}, {"program", "12"}},
         2,
         "5 presets change, 5 values." + left("5"),
         [](auto &presets) { return presets[3].programChanges[3] == 12; }},
        {"CONTROL CHANGE",
         {{"controlDevice", "MIDI 4 : ECHO"}, {"control", "ROOM"}, {"controlWhere", "64"}, {"controlValue", "80"}},
         4,
         "1 preset changes, 1 value.",
         [](auto &presets) { return presets[4].controlChanges == std::vector{ControlChangeData(4, 7, 80)}; }},
        {"EXPRESSION PEDAL",
         {{"pedalDevice", "MIDI 4 : ECHO"}, {"pedalController", "ROOM"}, {"toeUpValue", "5"}},
         2,
         "5 presets change, 20 values." + left("5"),
         [=](auto &presets) { return presets[8].expressionPedal == pedal; }},
        {"NAME",
         {{"text", "PA"}, {"replacement", "MA"}},
         1,
         "10 presets change, 10 values.",
         [](auto &presets) { return presets[9].name == "MAMA"; }},
    };
    for (const Case &each : cases) {
        onDialog([&](QWidget &dialog) {
            const auto box = [&](const QString &role) { return dialog.findChild<QComboBox *>("comboBox_" + role); };
            auto &ok = *dialog.findChild<QPushButton *>("pushButton_ok");
            choose(*box("change"), each.kind);
            EXPECT_FALSE(ok.isEnabled());
            int made = 0;
            for (const auto &[role, item] : each.choices) {
                if (box(role))
                    choose(*box(role), item);
                else
                    dialog.findChild<QLineEdit *>(QString("lineEdit_") + role)->setText(item);
                EXPECT_EQ(ok.isEnabled(), ++made >= each.needed) << each.kind << ", " << role;
            }
            EXPECT_EQ(dialog.findChild<QLabel *>("label_count")->text(), each.count);
            ok.click();
        });
        select({{60, 0}});
        trigger("CHANGE IN SELECTION...");
        EXPECT_TRUE(each.isMade(unit.memory().presets[60])) << each.kind;
        press(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_TRUE(unit.memory() == before) << each.kind;
    }
}
