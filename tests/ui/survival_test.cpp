// What the user did reaches the unit or is told; nothing goes where it was not meant.

#include "ui/editor.h"

#include <random>

using namespace std::chrono_literals;

namespace {

class Survival : public Editor
{
protected:
    Survival() : Editor(musicianContent(), shortTimeouts) {}

    void openSettings()
    {
        click("pushButton_settingsTab");
        requests();
    }
    QComboBox &keyboard() const { return find<QComboBox>("comboBox_keyboardType"); }
    static int countOf(const Requests &asked, const std::string &request)
    {
        return static_cast<int>(std::count(asked.begin(), asked.end(), request));
    }

    /// Opens a dialog by a click on a cell's button, lets `act` work on its boxes and ends it.
    void inDialog(const QString &table, int row, int column, const std::function<void(QWidget &)> &act,
                  const char *end = "pushButton_ok")
    {
        onDialog([=](QWidget &dialog) {
            if (act) act(dialog);
            QTest::mouseClick(dialog.findChild<QPushButton *>(end), Qt::LeftButton);
        });
        clickCell(table, row, column);
    }
    /// Chooses in a value box of the MIDI editor.
    static std::function<void(QWidget &)> value(int row, const QString &item)
    {
        return [=](QWidget &dialog) {
            auto *table = dialog.findChild<QTableWidget *>("tableWidget_controllersListTable");
            choose(*qobject_cast<QComboBox *>(table->cellWidget(row, 1)), item);
        };
    }
    std::string controlChanges(int preset) const
    {
        std::string text;
        const UnitMemory memory = unit.memory();
        for (const ControlChangeData &change : memory.presets[0][static_cast<std::size_t>(preset)].controlChanges)
            text += std::to_string(change.midiDeviceNumber) + '/' + std::to_string(change.controllerNumber) + '/' +
                    std::to_string(change.value) + ' ';
        return text;
    }
};

// --- Closing

TEST_F(Survival, ChangesMadeBeforeTheCloseReachTheUnitAndReadsAreSkipped)
{
    openSettings();
    unit.setDelay(50ms);
    click("pushButton_midiDevicesTab");
    keyboard().setCurrentIndex(1);
    edit("midiDevices", 0, 0).setText("LAST WORD");
    emit edit("midiDevices", 0, 0).editingFinished();
    closeWithin(3000);
    EXPECT_EQ(unit.memory().settings.keyboardType, KeyboardType::Azerty);
    EXPECT_EQ(unit.memory().midiDevices[0].name, "LAST WORD");
    EXPECT_EQ(countOf(taken(), "RMD|A10"), 0);
}

TEST_F(Survival, ASilentUnitHoldsTheCloseUpForOneTimeoutAndWhatWasLostIsTold)
{
    openSettings();
    unit.queueFault(Fault::silence());
    unit.queueFault(Fault::silence());
    for (const char *box : {"comboBox_keyboardType", "comboBox_loopsSplit", "comboBox_recallUserBanksOnly"})
        find<QComboBox>(box).setCurrentIndex(1 - find<QComboBox>(box).currentIndex());
    type(edit("footswitchFunction", 3, 4), "NEW");
    box("switch", 3, 5).setCurrentIndex((box("switch", 3, 5).currentIndex() + 1) % 4);
    const auto told = nextBox();
    closeWithin(5000);
    EXPECT_EQ(*told, "Error|5 changes did not reach the unit: SETTINGS: KEYBOARD TYPE; SETTINGS: LOOP SPLIT; "
                     "SETTINGS: RECALL USER BANKS ONLY; BANK 0, PRESET 2: NAME; BANK 0, PRESET 2: SWITCH 2");
    EXPECT_EQ(taken().size(), 1U);
}

TEST_F(Survival, AnAnswerInPiecesIsNoLostUnitAndARefusalIsToldAtTheEnd)
{
    openSettings();
    unit.queueFault(Fault::slowBytes(20ms));
    unit.queueFault(Fault::errorStatus(9, "Not now"));
    keyboard().setCurrentIndex(1);
    find<QComboBox>("comboBox_wahPad1").setCurrentIndex(5);
    const auto told = nextBox();
    closeWithin(9000);
    EXPECT_EQ(unit.memory().settings.keyboardType, KeyboardType::Azerty);
    EXPECT_EQ(*told, "Error|1 change did not reach the unit: SETTINGS: WAH PAD 1 (Not now)");
}

TEST_F(Survival, ClosingEndsASearchAtOnce)
{
    unit.unplug();
    click("pushButton_settingsTab");
    ASSERT_TRUE(becomes([this] { return !isConnected(); }));
    closeWithin(3000);
}

// --- Edits that build on each other

TEST_F(Survival, AMidiEditBuildsOnTheOneBeforeItThatTheUnitHasNotAnswered)
{
    for (const MidiLists lists : {MidiLists::Replace, MidiLists::Merge}) {
        unit.setMidiLists(lists);
        unit.alter([](UnitMemory &memory) { memory.presets[0][0].controlChanges = {{1, 3, 5}, {2, 1, 7}}; });
        clickCell("footswitchFunction", 0, 0);
        clickCell("footswitchFunction", 11, 0);
        ASSERT_TRUE(settles());
        unit.setDelay(30ms);
        inDialog("midi", 1, 4, value(2, "11"));        // device 1
        inDialog("midi", 1, 5, value(0, "INACTIVE"));  // device 2
        inDialog("midi", 1, 4, [](QWidget &dialog) {
            auto *table = dialog.findChild<QTableWidget *>("tableWidget_controllersListTable");
            EXPECT_EQ(qobject_cast<QComboBox *>(table->cellWidget(2, 1))->currentText(), "11");
        });
        EXPECT_TRUE(settles());
        EXPECT_EQ(controlChanges(0), "1/3/11 ");
        unit.setDelay(0ms);

        unit.queueFault(Fault::errorStatus(9, "No"));
        const auto told = nextBox();
        inDialog("midi", 1, 4, value(2, "99"));
        inDialog("midi", 1, 5, value(0, "TOGGLE"));
        EXPECT_TRUE(becomes([&] { return !told->isEmpty(); }) && settles());
        EXPECT_EQ(controlChanges(0), "1/3/11 2/1/254 ") << "the refused value does not ride along";
    }
}

TEST_F(Survival, ANewListOfControllersBuildsOnTheOneBeforeIt)
{
    const auto name = [](int row, const QString &text, const QString &shown) {
        return [=](QWidget &dialog) {
            auto *table = dialog.findChild<QTableWidget *>("tableWidget_controllersListTable");
            auto *const edit = qobject_cast<QLineEdit *>(table->cellWidget(row, 1));
            EXPECT_EQ(edit->text(), shown);
            type(*edit, text);
            EXPECT_TRUE(dialog.isVisible()) << "Enter in the list is not yet OK";
            auto *const number = qobject_cast<QComboBox *>(table->cellWidget(row, 2));
            EXPECT_EQ(number->toolTip(), "This name has no number: nothing can be sent");
            EXPECT_EQ(edit->accessibleDescription(), number->toolTip());
        };
    };
    const auto stored = [this](std::size_t slot) { return unit.memory().midiDevices[3].controllers[slot].name; };
    unit.alter([](UnitMemory &memory) { memory.midiDevices[3].controllers = {}; });
    click("pushButton_midiDevicesTab");
    requests();
    unit.setDelay(30ms);
    inDialog("midiDevices", 3, 4, name(0, "FIRST", ""));
    inDialog("midiDevices", 3, 4, name(1, "SECOND", ""));
    inDialog("midiDevices", 3, 4, name(0, "AGAIN", "FIRST"), "pushButton_cancel");
    EXPECT_EQ(requests().size(), 2U);
    EXPECT_EQ(stored(0) + stored(1), "FIRSTSECOND");

    unit.queueFault(Fault::errorStatus(9, "No"));
    const auto told = nextBox();
    inDialog("midiDevices", 3, 4, name(0, "REFUSED", "FIRST"));
    inDialog("midiDevices", 3, 4, name(2, "THIRD", ""));
    EXPECT_TRUE(becomes([&] { return !told->isEmpty(); }) && settles());
    EXPECT_EQ(stored(0) + stored(1) + stored(2), "FIRSTSECONDTHIRD");
}

TEST_F(Survival, OkWithoutAUnitIsToldAndTheDialogStaysUntilThereIsOne)
{
    for (const QString table : {"midi", "midiDevices"}) {
        const bool isList = table == "midiDevices";
        onDialog([&](QWidget &dialog) {
            unit.unplug();
            click("pushButton_settingsTab");
            EXPECT_TRUE(becomes([this] { return !isConnected(); }));
            QTest::mouseClick(dialog.findChild<QPushButton *>("pushButton_ok"), Qt::LeftButton);
        });
        const auto told = nextBox();
        onDialog([&](QWidget &dialog) {
            unit.plugIn();
            EXPECT_TRUE(becomes([this] { return isConnected(); }) && settles());
            taken();
            QTest::mouseClick(dialog.findChild<QPushButton *>("pushButton_ok"), Qt::LeftButton);
        });
        clickCell(table, 1, 4);
        EXPECT_EQ(*told, "Error|No unit is connected, so nothing was sent. OK sends it once a unit is found.");
        const Requests sent = requests();
        ASSERT_EQ(sent.size(), 1U);
        EXPECT_EQ(sent[0].substr(0, 9), isList ? "WMD|A2|FA" : "WBP|A0|B0");
    }
}

// --- Text that is being typed, banks that cannot be read

TEST_F(Survival, ARefreshLeavesTheTextThatIsBeingTyped)
{
    unit.setDelay(20ms);
    QLineEdit &name = edit("loops", 1, 3);
    click("pushButton_loopsTab");
    clickCell("loops", 0, 0);
    type(name, "TYPED MEANWH", Qt::Key_unknown);
    ASSERT_TRUE(settles());
    EXPECT_EQ(name.text(), "TYPED MEANWH");
    EXPECT_EQ(edit("loops", 2, 3).text().toStdString(), unit.memory().presets[1][1].name);
    QTest::keyClick(&name, Qt::Key_Return);
    ASSERT_TRUE(settles());
    EXPECT_EQ(unit.memory().presets[1][0].name, "TYPED MEANWH");
}

TEST_F(Survival, WhatCannotBeSentGoesBackAndABankThatCouldNotBeReadIsAskedForAgain)
{
    const auto told = nextBox();
    unit.queueFault(Fault::errorStatus(5, "Broken"));
    clickCell("loops", 0, 0);
    ASSERT_TRUE(becomes([&] { return !told->isEmpty(); }) && settles());
    taken();
    QLineEdit &number = edit("loops", 1, 0);
    QLineEdit &name = edit("loops", 1, 3);
    ComboBox &state = box("loops", 1, 4);
    EXPECT_EQ(number.text() + '|' + name.text() + '|' + state.currentText(), "1||");
    type(name, "LOST");
    choose(state, "ON");
    EXPECT_EQ(name.text() + '|' + state.currentText(), "|");
    EXPECT_EQ(requests(), Requests{});
    type(number, "1");
    EXPECT_EQ(requests().size(), 11U);
    EXPECT_EQ(name.text().toStdString(), unit.memory().presets[1][0].name);
    type(number, "1");
    EXPECT_EQ(requests(), Requests{}) << "a number that is shown and read asks for nothing";
}

TEST_F(Survival, WithoutAUnitEveryChoiceGoesBack)
{
    openSettings();
    unit.unplug();
    click("pushButton_midiMidiIn");
    ASSERT_TRUE(becomes([this] { return !isConnected(); }));
    const auto goesBack = [](QComboBox &box) {
        const int shown = box.currentIndex();
        box.setCurrentIndex(shown == 0 ? 1 : 0);
        EXPECT_EQ(box.currentIndex(), shown) << box.accessibleName().toStdString();
    };
    goesBack(keyboard());
    goesBack(find<QComboBox>("comboBox_switchOut1"));
    goesBack(box("footswitchFunction", 2, 2));
    goesBack(box("wahPads", 3, 3));
    goesBack(box("midiDevices", 3, 6));
    unit.plugIn();
    ASSERT_TRUE(becomes([this] { return isConnected() && settles(); }));
    EXPECT_EQ(countOf(taken(), "RBB|A0"), 1);
}

// --- Loads

TEST_F(Survival, ThirtyClicksReadTheFirstAndTheLastBank)
{
    unit.setDelay(5ms);
    clickCell("loops", 0, 0);
    EXPECT_TRUE(becomes([this] { return !unit.takeRequests().empty(); })) << "one click asks at once";
    for (int i = 1; i < 30; ++i)
        clickCell("loops", 0, 0);
    const Requests asked = requests();
    EXPECT_LE(asked.size(), 21U);
    EXPECT_EQ(asked[asked.size() - 11], "RBB|A30");
    EXPECT_EQ(edit("loops", 1, 0).text() + edit("loops", 1, 2).text(),
              "30" + QString::fromStdString(unit.memory().banks[30].name));
}

TEST_F(Survival, RequestsLostTogetherMakeOneSearchAndChangesWaitForTheSameUnit)
{
    openSettings();
    unit.queueFault(Fault::hangUp());
    click("pushButton_midiMidiIn");
    click("pushButton_midiSwitchOut");
    keyboard().setCurrentIndex(1);
    ASSERT_TRUE(becomes([this] { return !isConnected(); }));
    unit.plugIn();
    ASSERT_TRUE(becomes([this] { return isConnected() && settles(); }));
    EXPECT_EQ(countOf(taken(), "RDI"), 2);  // probe and identity
    EXPECT_EQ(unit.memory().settings.keyboardType, KeyboardType::Azerty);
}

TEST_F(Survival, ChangesDoNotGoToAnotherUnit)
{
    openSettings();
    unit.queueFault(Fault::hangUp());
    click("pushButton_midiMidiIn");
    keyboard().setCurrentIndex(1);
    ASSERT_TRUE(becomes([this] { return !isConnected(); }));
    unit.alter([](UnitMemory &memory) { memory.deviceInfo.secondText = "ANOTHER"; });
    const auto told = nextBox();
    unit.plugIn();
    ASSERT_TRUE(becomes([&] { return !told->isEmpty(); }));
    EXPECT_EQ(*told, "Error|1 change did not reach the unit: SETTINGS: KEYBOARD TYPE");
    EXPECT_TRUE(settles());
    EXPECT_EQ(unit.memory().settings.keyboardType, KeyboardType::Qwerty);
}

TEST_F(Survival, ARecordThatLosesTheUnitEveryTimeDoesNotMakeAnEndlessSearch)
{
    unit.queueFault(Fault::silence());      // the bank
    unit.queueFault(Fault::silence(), 23);  // and again, after the identity, bank 0 and the MIDI devices
    clickCell("loops", 0, 0);
    ASSERT_TRUE(becomes([this] { return !isConnected(); }));
    ASSERT_TRUE(becomes([this] { return isConnected() && settles() && isConnected(); }));
    QTest::qWait(100);
    const Requests asked = taken();
    EXPECT_EQ(countOf(asked, "RBB|A1") + countOf(asked, "RBP|A1|B0"), 2);
    EXPECT_TRUE(isConnected());
    type(edit("loops", 1, 0), "1");
    EXPECT_EQ(requests().size(), 11U) << "the user may try again";
}

// --- All at once

TEST_F(Survival, ALongRandomRunOfChangesEndsWithWhatTheUnitHolds)
{
    DataFromDevice *model = nullptr;
    QObject::connect(&window, &MainWindow::connected, [&](DataFromDevice *found) { model = found; });
    unit.alter([](UnitMemory &memory) { memory.expressionPedal.onTheFlyMode = false; });  // is never reported
    std::mt19937 random(20260712);
    const auto pick = [&](int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
    const auto readAll = [&] {
        for (const char *page : {"midiMidiIn", "midiExpressionPedal", "midiSwitchOut", "settingsTab"})
            click(QString("pushButton_") + page);
        ASSERT_TRUE(becomes([&] { return isConnected() && settles() && isConnected(); }));
    };
    const auto expectModel = [&] {
        const UnitMemory memory = unit.memory();
        EXPECT_EQ(*model->bankData[0].load(), memory.banks[0]);
        for (std::size_t index = 0; index < presetCount; ++index) {
            EXPECT_EQ(*model->presetData[0][index].load(), memory.presets[0][index]) << "preset " << index;
            EXPECT_EQ(*model->midiDevices[index].load(), memory.midiDevices[index]) << "device " << index;
        }
        EXPECT_EQ(*model->settings.load(), memory.settings);
        EXPECT_EQ(*model->midiInData.load(), memory.midiIn);
        EXPECT_EQ(*model->expressionPedalData.load(), memory.expressionPedal);
        EXPECT_EQ(*model->switchOutData.load(), memory.switchOuts);
    };
    QTimer replug;
    QObject::connect(&replug, &QTimer::timeout, [this] {
        if (unit.location().empty()) unit.plugIn();
    });
    replug.start(10);
    unit.queueFault(Fault::silence());
    readAll();  // once lost, the window announces the model
    readAll();
    std::vector<QWidget *> editors;
    for (QWidget *const editor : window.findChildren<QWidget *>())
        if (editor->isEnabled() && editor->accessibleName() != "Bank number" &&
            (qobject_cast<QComboBox *>(editor) || qobject_cast<QLineEdit *>(editor)))
            editors.push_back(editor);
    ASSERT_GT(editors.size(), 200U);
    const Fault faults[] = {Fault::errorStatus(77, "Not now"), Fault::noise(), Fault::lateAnswer(20ms),
                            Fault::hangUp()};
    for (int round = 0; round < 20; ++round) {
        const Fault &fault = faults[pick(4)];
        const auto box = fault.kind == Fault::Kind::ErrorStatus ? nextBox() : nullptr;
        unit.queueFault(fault, 5);
        for (int changes = 0; changes < 20; ++changes) {
            QWidget *const editor = editors[static_cast<std::size_t>(pick(static_cast<int>(editors.size())))];
            if (auto *const choice = qobject_cast<QComboBox *>(editor)) {
                if (choice->count() > 0) choice->setCurrentIndex(pick(choice->count()));
            } else if (auto *const name = qobject_cast<QLineEdit *>(editor)) {
                type(*name, QString("Näme %1 & <b>").arg(pick(1000)));
            }
            QTest::qWait(round % 3);  // one by one, or faster than the unit answers
        }
        ASSERT_TRUE(settles());
        readAll();
        ASSERT_TRUE(becomes([&] { return !box || !box->isEmpty(); }));
        expectModel();
    }
    EXPECT_GT(unit.takeRequests().size(), 300U);
}

}  // namespace
