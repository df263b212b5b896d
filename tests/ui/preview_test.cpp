#include "ui/preview/previewpainter.h"
#include "ui/preview/previewwidget.h"

#include <QFileDialog>
#include <QImage>
#include <QMessageBox>
#include <QPushButton>
#include <QSvgRenderer>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>
#include <tuple>

namespace {

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
        delay.name = "DELAY";
        delay.channel = 3;
        delay.controllers[0] = {"MIX", 14};
        delay.controllers[1] = {"BYPASS", 102};
        delay.controllers[2] = {"", 20};
        data.midiDevices[1] = std::make_shared<MidiDevice>(delay);
    }

    void store(int preset, const PresetData &record)
    {
        data.presetData[0][static_cast<std::size_t>(preset)] = std::make_shared<PresetData>(record);
    }
    PreviewScene::Footswitch told(int preset) const { return PreviewScene::of(&data, 0, preset).chosenFootswitch(); }

    DataFromDevice data;
    MidiDevice delay;
};

/// What happens to each box: 1 on, 0 off, t toggle, - nothing.
QString effects(const QVector<PreviewScene::Box> &boxes)
{
    QString letters;
    for (const PreviewScene::Box &box : boxes)
        letters += "10t-"[static_cast<int>(box.effect)];
    return letters;
}

TEST_F(PreviewTest, FunctionDecidesWhatChanges)
{
    const QString none = "MIDI stays as it is: nothing is sent";
    const QString messages = "DELAY, channel 3: program 12; MIX = 64; BYPASS toggles";
    const QString kept = "The pedal stays as it is";
    const QStringList cases[] = {
        {"P - PRESET", "#8b0000", "Sets the buffer, all loops and all switch outputs, and sends MIDI", "110t-1-",
         "01t00-", messages, "MIX of DELAY"},
        {"S - SWITCH MODIFIER", "#5c7728", "Changes switch outputs only; loops and MIDI stay as they are", "-------",
         "01t00-", none, kept},
        {"L - LOOP MODIFIER", "#0005f3", "Changes loops only; switch outputs and MIDI stay as they are", "110t-1-",
         "------", none, kept},
        {"M - MIDI MODIFIER", "#fa830f", "Sends MIDI only; loops and switch outputs stay as they are", "-------",
         "------", messages, "MIX of DELAY"},
    };
    for (int preset = 0; preset < 4; ++preset) {
        const PreviewScene::Footswitch shown = told(preset);
        EXPECT_EQ(QStringList({shown.function, shown.color.name(), shown.summary, effects(shown.path),
                               effects(shown.outputs), shown.midi.join('|') + shown.midiNote, shown.pedal.text}),
                  cases[preset]);
        EXPECT_EQ(shown.pedal.assigned, preset == 0 || preset == 3);
    }
    store(4, busyPreset(static_cast<FootswitchType>(4)));
    EXPECT_EQ(told(4).summary, "This function is not known");
    EXPECT_EQ(told(0).path[4].text, "INACTIVE");
}

TEST_F(PreviewTest, MidiIsToldInWords)
{
    delay.name = "AMP";
    delay.sendCCFirst = true;
    data.midiDevices[0] = std::make_shared<MidiDevice>(delay);
    data.midiDevices[4] = std::make_shared<MidiDevice>();
    const std::tuple<std::vector<ControlChangeData>, std::size_t, QStringList> cases[] = {
        {{{1, 1, inactiveValue}}, 0, {}},
        {{{1, 2, toggleValue}, {1, 1, 0}}, 1, {"AMP, channel 3: BYPASS toggles; MIX = 0; program 128"}},
        {{{2, 3, 127}, {1, 1, 5}}, 2, {"AMP, channel 3: MIX = 5", "DELAY, channel 3: program 128; CC 20 = 127"}},
        {{{2, 21, 9}}, 0, {"DELAY, channel 3: controller slot 21 (undefined) = 9"}},
        {{}, 5, {"MIDI 5, no channel set: program 128"}},
        {{{8, 6, 1}}, 8, {"MIDI 8, not read yet: program 128; controller slot 6 = 1"}},
        {{{20, 1, 1}}, 0, {"MIDI 20, not read yet: controller slot 1 = 1"}},
    };
    for (const auto &[changes, programDevice, sentences] : cases) {
        PresetData preset;
        preset.controlChanges = changes;
        if (programDevice > 0) preset.programChanges[programDevice - 1] = 128;
        store(0, preset);
        EXPECT_EQ(told(0).midi, sentences);
        EXPECT_EQ(told(0).midiNote, sentences.isEmpty() ? "Sends no MIDI messages" : "");
    }
    EXPECT_EQ(told(0).pedal.text, "No controller is assigned");
}

TEST(PreviewPedal, CurveFollowsTheCharacteristic)
{
    const double middles[] = {52, 102, 77};  // of a pedal from 127 to 27, by the place in the list below
    using Characteristic = ExpressionPedalCharacteristic;
    for (int i = 0;
         const auto characteristic : {Characteristic::FastSlow, Characteristic::SlowFast, Characteristic::Linear}) {
        const PreviewScene::Pedal pedal{true, {}, {}, characteristic, 127, 27};
        EXPECT_EQ(pedal.valueAt(0), 127);
        EXPECT_EQ(pedal.valueAt(0.5), middles[i++]);
        EXPECT_EQ(pedal.valueAt(1), 27);
    }
}

TEST_F(PreviewTest, TellsTheBankAndWhatIsMissing)
{
    const PreviewScene read = PreviewScene::of(&data, 0, 3);
    EXPECT_EQ(read.wahPads[0].color, QColor("#fa830f"));
    EXPECT_EQ(read.description(),
              "Bank 0: ÜBER ALLES. Footswitch 3: SOLO, M - MIDI MODIFIER. Sends MIDI only; loops and switch outputs "
              "stay as they are. BUFFER –. LOOP 1 –. LOOP 2 –. LOOP 3 –. LOOP 4 –. LOOP 5 –. LOOP 6 –. SWITCH 1 –. "
              "SWITCH 2 –. SWITCH 3 –. SWITCH 4 –. SWITCH 5 –. SWITCH 6 –. DELAY, channel 3: program 12; MIX = 64; "
              "BYPASS toggles. Expression pedal: MIX of DELAY, 20 to 100, SLOW/FAST. Wah pad 1: CHANGE TO PRESET, "
              "preset 3: SOLO. Wah pad 2: TURN LOOP ON, preset 12");
    EXPECT_EQ(PreviewScene::of(nullptr, 0, 0).description(),
              "Bank 0: no unit found yet. No unit has been found yet. Its banks show here when it is connected.");
    const PreviewScene unread = PreviewScene::of(&data, 99, 0);
    EXPECT_EQ(unread.description(), "Bank 99: not read yet. Bank 99 has not been read yet.");
    EXPECT_EQ(unread.wahPads[0].action, "");
    EXPECT_EQ(PreviewScene::of(&data, 1, 7).notice, "Preset 7 of bank 1 has not been read yet.");
}

TEST_F(PreviewTest, ChoosesByKeyAndMouse)
{
    PreviewWidget widget;
    widget.loadDataFromDevice(&data);
    const std::pair<Qt::Key, int> presses[] = {{Qt::Key_Left, 0}, {Qt::Key_Down, 0}, {Qt::Key_Right, 1},
                                               {Qt::Key_Up, 6},   {Qt::Key_Up, 6},   {Qt::Key_Right, 7},
                                               {Qt::Key_Down, 2}, {Qt::Key_Left, 1}};
    for (const auto &[key, chosen] : presses) {
        QTest::keyClick(&widget, key);
        EXPECT_EQ(widget.scene().chosen, chosen);
    }
    widget.resize(649, 567);  // half the width: the picture is half as large and in the middle of the height
    const std::pair<QPoint, int> clicks[] = {{{40, 142 + 125}, 0}, {{600, 142 + 60}, 9}, {{40, 20}, 9}};
    for (const auto &[point, chosen] : clicks) {
        QTest::mouseClick(&widget, Qt::LeftButton, {}, point);
        EXPECT_EQ(widget.scene().chosen, chosen);
    }
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

    QImage screen(widget.size(), QImage::Format_RGB32);
    screen.fill(Qt::magenta);
    widget.render(&screen, {}, {}, {});
    EXPECT_NE(screen.pixelColor(0, 0), QColor(Qt::magenta)) << "scraps of the page before";

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
    EXPECT_EQ(QSvgRenderer(folder.filePath("stage.svg")).viewBoxF(), QRectF(0, 0, 1298, 567));

    EXPECT_FALSE(widget.savePicture(folder.filePath("no <b>folder</b>/bank.png")));
    const auto *message = widget.findChild<QMessageBox *>();
    ASSERT_TRUE(message);
    EXPECT_EQ(message->textFormat(), Qt::PlainText);
    EXPECT_TRUE(message->text().contains("no <b>folder</b>/bank.png"));
}

}  // namespace
