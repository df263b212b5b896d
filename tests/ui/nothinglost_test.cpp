#include "ui/editor.h"

#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QTimer>

#include <random>

using namespace std::chrono_literals;

namespace {

struct Run
{
    const char *name;
    std::vector<Fault> faults;
    bool staysTrue;  ///< a change that the editor takes for failed was not carried out
};

const Run runs[] = {
    {"Refusals",
     {Fault::errorStatus(77, "Not now"), Fault::noise(), Fault::slowBytes(1ms), Fault::lateAnswer(20ms)},
     true},
    {"SpoiledAnswers", {Fault::wrongChecksum(), Fault::zeroByte(), Fault::hangUp()}, false},
};

/// A long random run of changes over all pages and tables.
class NothingLost : public Editor, public testing::WithParamInterface<Run>
{
protected:
    NothingLost()
    {
        unit.alter([](UnitMemory &memory) { memory.expressionPedal.onTheFlyMode = false; });  // is never reported
        QObject::connect(&window, &MainWindow::connected, [this](DataFromDevice *found) { model = found; });
        QObject::connect(&watch, &QTimer::timeout, [this] {
            if (auto *const box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                ++boxes;
                box->button(QMessageBox::Ok)->click();
            } else if (unit.location().empty()) {
                unit.plugIn();
            }
        });
        watch.start(1);
    }

    /// Asks for everything that is shown; what was shown of a refused choice goes.
    void readAll()
    {
        for (const char *page : {"settingsTab", "midiMidiIn", "midiExpressionPedal", "midiSwitchOut"}) {
            click(QString("pushButton_") + page);
            ASSERT_TRUE(settles());
        }
        for (const int arrowRow : {0, 11}) {  // to bank 1 and back
            cell<QPushButton>("footswitchFunction", arrowRow, 0).click();
            ASSERT_TRUE(settles());
        }
        ASSERT_TRUE(becomes([this] { return isConnected(); }) && settles());
    }

    /// One random choice in a random box, or one random name.
    void change()
    {
        QWidget *const editor = editors[std::size_t(pick(int(editors.size())))];
        if (auto *const box = qobject_cast<QComboBox *>(editor)) {
            if (box->count() > 0) box->setCurrentIndex(pick(box->count()));
        } else if (auto *const edit = qobject_cast<QLineEdit *>(editor)) {
            edit->setText(QString("Näme %1 & <b>").arg(pick(1000)));
            QTest::keyClick(edit, Qt::Key_Return);
        }
    }

    int pick(int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); }

    /// All that the model holds is what the unit holds.
    void expectModel() const
    {
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
    }

    /// All that is shown is what the unit holds.
    void expectWidgets() const
    {
        const UnitMemory memory = unit.memory();
        const auto shows = [this](const QString &box, auto value) {
            EXPECT_EQ(find<QComboBox>("comboBox_" + box).currentIndex(), int(value)) << box.toStdString();
        };
        const auto position = [](auto enumeration) { return int(enumeration) - 1; };
        const auto orNone = [](int value) { return value == 255 ? 0 : value; };
        shows("loopsSplit", memory.settings.loopsSplit);
        shows("keyboardType", position(memory.settings.keyboardType));
        shows("clickProtection", position(memory.settings.clickProtection));
        shows("oneTimeModeMidiSend", memory.settings.oneTimeMidiModeSend);
        shows("recallUserBanksOnly", memory.settings.recallUserBanksOnly);
        shows("bankPresetChangeMode", position(memory.settings.bankPresetChangeMode));
        shows("presetChangeName", position(memory.settings.presetChangeName));
        shows("wahPad1", position(memory.settings.wahPad1));
        shows("wahPad2", position(memory.settings.wahPad2));
        shows("channel", orNone(memory.midiIn.channel));
        shows("PCFunction", position(memory.midiIn.pcFunction));
        shows("CCFunction", position(memory.midiIn.ccFunction));
        shows("period", position(memory.expressionPedal.period));
        shows("characteristic", position(memory.expressionPedal.characteristic));
        shows("toeUpValue", memory.expressionPedal.toeUp);
        shows("toeDownValue", memory.expressionPedal.toeDown);
        shows("midiDeviceNumber", orNone(memory.expressionPedal.midiDeviceNumber));
        for (int number = 1; number <= 6; ++number)
            shows(QString("switchOut%1").arg(number), position(memory.switchOuts.switchOuts[std::size_t(number - 1)]));

        const auto text = [this](const QString &table, int row, int column) {
            return cell<QLineEdit>(table, row, column).text().toStdString();
        };
        const auto index = [this](const QString &table, int row, int column) {
            return cell<QComboBox>(table, row, column).currentIndex();
        };
        EXPECT_EQ(text("wahPads", 3, 1), memory.banks[0].name);
        EXPECT_EQ(index("wahPads", 3, 3), position(memory.banks[0].wahPad1Action));
        EXPECT_EQ(index("wahPads", 4, 4), int(memory.banks[0].wahPad2PresetNumber));
        for (int row = 0; row < 10; ++row) {
            const PresetData &preset = memory.presets[0][std::size_t(row)];
            EXPECT_EQ(text("footswitchFunction", row + 1, 3), memory.banks[0].name);
            EXPECT_EQ(text("footswitchFunction", row + 1, 4), preset.name);
            EXPECT_EQ(index("footswitchFunction", row + 1, 2), int(preset.footswitchFunction));
            const MidiDevice &device = memory.midiDevices[std::size_t(row)];
            EXPECT_EQ(text("midiDevices", row, 0), device.name);
            EXPECT_EQ(index("midiDevices", row, 1), orNone(device.channel));
            EXPECT_EQ(index("midiDevices", row, 3), position(device.tapTempo));
            EXPECT_EQ(index("midiDevices", row, 7), int(device.noteNumber));
        }
    }

    std::mt19937 random{20260712};
    std::vector<QWidget *> editors;
    QTimer watch;
    int boxes = 0;
    DataFromDevice *model = nullptr;
};

}  // namespace

TEST_P(NothingLost, InALongRandomRunOfChanges)
{
    readAll();
    for (QWidget *const editor : window.findChildren<QWidget *>())
        if (editor->isEnabled() && editor->accessibleName() != "Bank number" &&
            (qobject_cast<QComboBox *>(editor) || qobject_cast<QLineEdit *>(editor)))
            editors.push_back(editor);
    ASSERT_GT(editors.size(), 200U);

    const UnitMemory before = unit.memory();
    unit.takeRequests();
    for (int round = 0; round < 100; ++round) {
        unit.queueFault(GetParam().faults[std::size_t(pick(int(GetParam().faults.size())))], 5);
        for (int changes = 0; changes < 20; ++changes) {
            change();
            QTest::qWait(round % 3);  // one by one, or faster than the unit answers
        }
        ASSERT_TRUE(becomes([this] { return isConnected() && !QApplication::activeModalWidget() && settles(); }));
        if (!GetParam().staysTrue && round % 10 == 9) readAll();
    }
    EXPECT_GT(unit.takeRequests().size(), 1000U);
    EXPECT_GT(boxes, 10);
    EXPECT_NE(unit.memory(), before);
    if (GetParam().staysTrue) expectModel();
    readAll();
    expectModel();
    expectWidgets();
}

INSTANTIATE_TEST_SUITE_P(With, NothingLost, testing::ValuesIn(runs),
                         [](const auto &row) { return std::string(row.param.name); });
