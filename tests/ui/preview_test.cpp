#include "ui/previewpainter.h"
#include "ui/previewwidget.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QImage>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QSvgRenderer>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace {

using Effect = PreviewScene::Effect;

/// A preset that has something to say of everything, under any function.
PresetData busyPreset(FootswitchType function)
{
    PresetData preset;
    preset.name = "SOLO";
    preset.footswitchFunction = function;
    preset.bufferLoop = LoopType::On;
    preset.loops = {LoopType::On,       LoopType::Off, LoopType::Toggle,
                    LoopType::Inactive, LoopType::On,  static_cast<LoopType>(9)};
    preset.switches = {SwitchType::Off, SwitchType::On,  SwitchType::Toggle,
                       SwitchType::Off, SwitchType::Off, SwitchType::Inactive};
    preset.programChanges[1] = 12;
    preset.controlChanges = {{2, 1, 64}, {2, 2, toggleValue}, {2, 3, inactiveValue}};
    preset.expressionPedal = {2, 1, ExpressionPedalCharacteristic::SlowFast, 20, 100};
    return preset;
}

MidiDevice delay()
{
    MidiDevice device;
    device.name = "DELAY";
    device.channel = 3;
    device.controllers[0] = {"MIX", 14};
    device.controllers[1] = {"BYPASS", 102};
    device.controllers[2] = {"", 20};
    return device;
}

/// Two banks are read: bank 0 with four presets, one of each function, and bank 1 with its name alone.
class PreviewTest : public testing::Test
{
protected:
    PreviewTest()
    {
        data.bankData[0] =
            std::make_shared<BankData>("ÜBER\nALLES", WahPadAction::ChangeToPreset, 3, WahPadAction::TurnLoopOn, 12);
        data.bankData[1] = std::make_shared<BankData>();
        for (int function = 0; function < 4; ++function)
            store(function, busyPreset(static_cast<FootswitchType>(function)));
        data.midiDevices[1] = std::make_shared<MidiDevice>(delay());
    }

    void store(int preset, const PresetData &record)
    {
        data.presetData[0][static_cast<std::size_t>(preset)] = std::make_shared<PresetData>(record);
    }
    PreviewScene::Footswitch told(int preset) const { return PreviewScene::of(&data, 0, preset).chosenFootswitch(); }

    DataFromDevice data;
};

QVector<Effect> effects(const QVector<PreviewScene::Box> &boxes)
{
    QVector<Effect> result;
    for (const PreviewScene::Box &box : boxes)
        result << box.effect;
    return result;
}

TEST_F(PreviewTest, FunctionDecidesWhatChanges)
{
    const QVector<Effect> path{Effect::On,        Effect::On, Effect::Off,      Effect::Toggle,
                               Effect::Untouched, Effect::On, Effect::Untouched};
    const QVector<Effect> outputs{Effect::Off, Effect::On, Effect::Toggle, Effect::Off, Effect::Off, Effect::Untouched};
    const struct
    {
        const char *function, *color, *summary;
        bool loops, switches, midi;
    } cases[] = {
        {"P - PRESET", "#8b0000", "Sets the buffer, all loops and all switch outputs, and sends MIDI", true, true,
         true},
        {"S - SWITCH MODIFIER", "#5c7728", "Changes switch outputs only; loops and MIDI stay as they are", false, true,
         false},
        {"L - LOOP MODIFIER", "#0005f3", "Changes loops only; switch outputs and MIDI stay as they are", true, false,
         false},
        {"M - MIDI MODIFIER", "#fa830f", "Sends MIDI only; loops and switch outputs stay as they are", false, false,
         true},
    };
    for (int preset = 0; preset < 4; ++preset) {
        const auto &expected = cases[preset];
        SCOPED_TRACE(expected.function);
        const PreviewScene::Footswitch footswitch = told(preset);
        EXPECT_EQ(footswitch.name, "SOLO");
        EXPECT_EQ(footswitch.function, expected.function);
        EXPECT_EQ(footswitch.color, QColor(expected.color));
        EXPECT_EQ(footswitch.summary, expected.summary);
        EXPECT_EQ(effects(footswitch.path), expected.loops ? path : QVector<Effect>(7, Effect::Untouched));
        EXPECT_EQ(effects(footswitch.outputs), expected.switches ? outputs : QVector<Effect>(6, Effect::Untouched));
        EXPECT_EQ(footswitch.midi, expected.midi ? QStringList("DELAY, channel 3: program 12; MIX = 64; BYPASS toggles")
                                                 : QStringList());
        EXPECT_EQ(footswitch.midiNote, expected.midi ? "" : "MIDI stays as it is: nothing is sent");
        EXPECT_EQ(footswitch.pedal.assigned, expected.midi);
        EXPECT_EQ(footswitch.pedal.text, expected.midi ? "MIX of DELAY" : "The pedal stays as it is");
    }
    store(4, busyPreset(static_cast<FootswitchType>(4)));
    EXPECT_EQ(told(4).summary, "This function is not known");
    EXPECT_EQ(told(0).path[4], (PreviewScene::Box{"LOOP 4", "INACTIVE", Effect::Untouched}));
    EXPECT_EQ(told(2).path[3], (PreviewScene::Box{"LOOP 3", "TOGGLE", Effect::Toggle}));
    EXPECT_EQ(told(2).outputs[1], (PreviewScene::Box{"SWITCH 2", "–", Effect::Untouched}));
}

TEST_F(PreviewTest, MidiIsToldInWords)
{
    MidiDevice amp = delay();
    amp.name = "AMP";
    amp.sendCCFirst = true;
    data.midiDevices[0] = std::make_shared<MidiDevice>(amp);
    data.midiDevices[4] = std::make_shared<MidiDevice>();
    const struct
    {
        std::vector<ControlChangeData> changes;
        int programDevice;
        QStringList sentences;
    } cases[] = {
        {{}, 0, {}},
        {{{1, 1, inactiveValue}}, 0, {}},
        {{{1, 2, toggleValue}, {1, 1, 0}}, 1, {"AMP, channel 3: BYPASS toggles; MIX = 0; program 128"}},
        {{{2, 3, 127}, {1, 1, 5}}, 2, {"AMP, channel 3: MIX = 5", "DELAY, channel 3: program 128; CC 20 = 127"}},
        {{{2, 4, 9}, {2, 21, 9}},
         0,
         {"DELAY, channel 3: controller slot 4 (undefined) = 9; controller slot 21 (undefined) = 9"}},
        {{}, 5, {"MIDI 5, no channel set: program 128"}},
        {{{8, 6, 1}}, 8, {"MIDI 8, not read yet: program 128; controller slot 6 = 1"}},
        {{{20, 1, 1}}, 0, {"MIDI 20, not read yet: controller slot 1 = 1"}},
    };
    for (const auto &[changes, programDevice, sentences] : cases) {
        PresetData preset;
        preset.controlChanges = changes;
        if (programDevice > 0) preset.programChanges[static_cast<std::size_t>(programDevice - 1)] = 128;
        store(0, preset);
        EXPECT_EQ(told(0).midi, sentences);
        EXPECT_EQ(told(0).midiNote, sentences.isEmpty() ? "Sends no MIDI messages" : "");
    }
    EXPECT_EQ(told(0).pedal.text, "No controller is assigned");
}

TEST(PreviewPedal, CurveFollowsTheCharacteristic)
{
    using Characteristic = ExpressionPedalCharacteristic;
    const auto middle = [](Characteristic characteristic, int toeUp, int toeDown) {
        const PreviewScene::Pedal pedal{true, {}, {}, characteristic, toeUp, toeDown};
        EXPECT_EQ(pedal.valueAt(0), toeUp);
        EXPECT_EQ(pedal.valueAt(1), toeDown);
        return pedal.valueAt(0.5);
    };
    EXPECT_EQ(middle(Characteristic::Linear, 0, 100), 50);
    EXPECT_EQ(middle(Characteristic::FastSlow, 0, 100), 75);
    EXPECT_EQ(middle(Characteristic::SlowFast, 0, 100), 25);
    EXPECT_EQ(middle(Characteristic::FastSlow, 127, 27), 52);
}

TEST_F(PreviewTest, TellsTheBankAndWhatIsMissing)
{
    const PreviewScene read = PreviewScene::of(&data, 0, 3);
    EXPECT_EQ(read.bankName, "ÜBER ALLES");
    EXPECT_EQ(read.notice, "");
    EXPECT_EQ(read.wahPads[0], (PreviewScene::WahPad{"CHANGE TO PRESET", "3: SOLO", QColor("#fa830f")}));
    EXPECT_EQ(read.wahPads[1], (PreviewScene::WahPad{"TURN LOOP ON", "12", QColor()}));
    EXPECT_TRUE(read.description().contains("Bank 0: ÜBER ALLES. Footswitch 3: SOLO, M - MIDI MODIFIER."));
    EXPECT_TRUE(read.description().contains("Expression pedal: MIX of DELAY, 20 to 100, SLOW/FAST. Wah pad 1"));

    const PreviewScene noUnit = PreviewScene::of(nullptr, 0, 0);
    EXPECT_EQ(noUnit.notice, "No unit has been found yet. Its banks show here when it is connected.");
    EXPECT_EQ(noUnit.bankName, "no unit found yet");
    const PreviewScene unread = PreviewScene::of(&data, 99, 0);
    EXPECT_EQ(unread.notice, "Bank 99 has not been read yet.");
    EXPECT_EQ(unread.bankName, "not read yet");
    EXPECT_EQ(unread.wahPads[0].action, "");
    EXPECT_EQ(PreviewScene::of(&data, 1, 7).notice, "Preset 7 of bank 1 has not been read yet.");
}

TEST_F(PreviewTest, PagesAndFollowsTheShownBank)
{
    PreviewWidget widget;
    QSignalSpy requests(&widget, &PreviewWidget::getBankAndPresetData);
    QTest::keyClick(&widget, Qt::Key_PageUp);
    EXPECT_EQ(widget.currentBank(), 1);
    QTest::keyClick(&widget, Qt::Key_PageDown);
    QTest::keyClick(&widget, Qt::Key_PageDown);
    EXPECT_EQ(widget.currentBank(), 0);
    widget.loadDataFromDevice(&data);
    EXPECT_EQ(widget.scene().bankName, "ÜBER ALLES");
    EXPECT_EQ(requests.count(), 0);

    for (QPushButton *const arrow : widget.findChildren<QPushButton *>())
        if (arrow->accessibleName() == "Next bank") arrow->click();
    EXPECT_EQ(requests.takeFirst(), QVariantList{1});
    for (int press = 0; press < 120; ++press)
        QTest::keyClick(&widget, Qt::Key_PageUp);
    EXPECT_EQ(widget.scene().bank, 99);
    EXPECT_EQ(requests.count(), 98);
    EXPECT_EQ(requests.last(), QVariantList{99});

    data.bankData[99] = std::make_shared<BankData>("ENCORE", WahPadAction::Add, 0, WahPadAction::Add, 0);
    data.presetData[99][0] = std::make_shared<PresetData>(busyPreset(FootswitchType::Preset));
    widget.gotBankAndPresetData(98);
    EXPECT_EQ(widget.scene().bankName, "not read yet");
    widget.gotBankAndPresetData(99);
    EXPECT_EQ(widget.scene().bankName, "ENCORE");
    data.midiDevices[1] = std::make_shared<MidiDevice>();
    widget.gotMidiDevicesData();
    EXPECT_EQ(widget.scene().chosenFootswitch().pedal.text, "controller slot 1 (undefined) of MIDI 2");
    widget.loadDataFromDevice(nullptr);
    EXPECT_EQ(widget.scene().bankName, "no unit found yet");
}

TEST_F(PreviewTest, ChoosesByKeyAndMouse)
{
    PreviewWidget widget;
    widget.loadDataFromDevice(&data);
    EXPECT_EQ(widget.scene().chosen, 0);
    const QVector<QPair<Qt::Key, int>> presses{{Qt::Key_Left, 0}, {Qt::Key_Down, 0}, {Qt::Key_Right, 1},
                                               {Qt::Key_Up, 6},   {Qt::Key_Up, 6},   {Qt::Key_Right, 7},
                                               {Qt::Key_Down, 2}, {Qt::Key_Left, 1}};
    for (const auto &[key, chosen] : presses) {
        QTest::keyClick(&widget, key);
        EXPECT_EQ(widget.scene().chosen, chosen);
    }
    widget.resize(649, 567);  // half the width: the picture is half as large and in the middle of the height
    QTest::mouseClick(&widget, Qt::LeftButton, {}, {40, 142 + 125});
    EXPECT_EQ(widget.scene().chosen, 0);
    QTest::mouseClick(&widget, Qt::LeftButton, {}, {600, 142 + 60});
    EXPECT_EQ(widget.scene().chosen, 9);
    QTest::mouseClick(&widget, Qt::LeftButton, {}, {40, 20});
    EXPECT_EQ(widget.scene().chosen, 9);
}

TEST_F(PreviewTest, SavesAPictureThatOthersCanOpen)
{
    const QTemporaryDir folder;
    PreviewWidget widget;
    widget.loadDataFromDevice(&data);
    ASSERT_TRUE(widget.savePicture(folder.filePath("bank.png")));
    const QImage image(folder.filePath("bank.png"));
    EXPECT_EQ(image.size(), QSize(3894, 1701));
    EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::white));
    ASSERT_TRUE(widget.savePicture(folder.filePath("bank.SVG")));
    QSvgRenderer drawing(folder.filePath("bank.SVG"));
    EXPECT_TRUE(drawing.isValid());
    EXPECT_EQ(drawing.viewBoxF(), QRectF(0, 0, 1298, 567));

    EXPECT_FALSE(widget.savePicture(folder.filePath("no <b>folder</b>/bank.png")));
    const auto *message = widget.findChild<QMessageBox *>();
    ASSERT_TRUE(message);
    EXPECT_EQ(message->textFormat(), Qt::PlainText);
    EXPECT_TRUE(message->text().contains("no <b>folder</b>/bank.png"));
}

TEST_F(PreviewTest, ShortcutAsksWhereToSave)
{
    const QTemporaryDir folder;
    PreviewWidget widget;
    widget.loadDataFromDevice(&data);
    widget.show();
    QApplication::setActiveWindow(&widget);
    widget.setFocus();
    QTest::keyClick(&widget, Qt::Key_S, Qt::ControlModifier);
    auto *const dialog = widget.findChild<QFileDialog *>();
    ASSERT_TRUE(dialog);
    dialog->setDirectory(folder.path());
    dialog->selectNameFilter("SVG drawing (*.svg)");
    emit dialog->filterSelected("SVG drawing (*.svg)");
    dialog->selectFile("stage");
    static_cast<QDialog *>(dialog)->accept();
    EXPECT_TRUE(QFileInfo::exists(folder.filePath("stage.svg")));
}

}  // namespace
