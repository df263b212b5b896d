#include "ui/preview/previewpainter.h"
#include "ui/preview/previewwidget.h"

#include <QApplication>
#include <QFileDialog>
#include <QHelpEvent>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QSvgRenderer>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolTip>

#include <gtest/gtest.h>

namespace {

using preview::Medium;
using Numbers = QVector<int>;

QImage pictureOf(const PreviewScene &scene, Medium medium = Medium::Screen, Qt::GlobalColor on = Qt::magenta)
{
    QImage image(1298, 567, QImage::Format_RGB32);
    image.fill(on);
    QPainter painter(&image);
    preview::paint(painter, scene, medium);
    return image;
}

/// Whether each of the places differs, and nothing else.
bool differAt(const QVector<QRect> &places, QImage before, QImage after)
{
    bool all = true;
    for (const QRect &place : places)
        all = all && before.copy(place) != after.copy(place);
    for (const QRect &place : places)
        for (QImage *const image : {&before, &after})
            QPainter(image).fillRect(place, Qt::black);
    return all && before == after;
}

/// Bank 0 has presets of each function in turn and of one that is none, bank 1 has a record and no presets.
class Preview : public testing::Test
{
protected:
    Preview()
    {
        data.bankData[0] =
            std::make_shared<BankData>("ÜBER\nALLES", WahPadAction::ChangeToPreset, 3, WahPadAction::TurnLoopOn, 12);
        data.bankData[1] = std::make_shared<BankData>();
        PresetData preset;  // says something of everything
        preset.name = "SOLO";
        preset.bufferLoop = LoopType::On;
        preset.loops = {LoopType::On,       LoopType::Off, LoopType::Toggle,
                        LoopType::Inactive, LoopType::On,  static_cast<LoopType>(9)};
        preset.switches = {SwitchType::Off, SwitchType::On,  SwitchType::Toggle,
                           SwitchType::Off, SwitchType::Off, SwitchType::Inactive};
        preset.programChanges[1] = 12;
        preset.controlChanges = {{2, 1, 64}, {2, 2, toggleValue}, {2, 3, inactiveValue}};
        preset.expressionPedal = {2, 1, ExpressionPedalCharacteristic::SlowFast, 20, 100};
        for (std::size_t number = 0; number < presetCount; ++number) {
            preset.footswitchFunction = static_cast<FootswitchType>(number % 5);
            data.presetData[0][number] = std::make_shared<PresetData>(preset);
        }
        MidiDevice delay;
        delay.name = "DELAY";
        delay.channel = 3;
        delay.controllers = {{{"MIX", 14}, {"BYPASS", 102}, {"", 20}}};
        data.midiDevices[1] = std::make_shared<MidiDevice>(delay);
        QObject::connect(&page, &PreviewWidget::getBankAndPresetData, [this](int bank) { requests << bank; });
        page.show();
        QApplication::setActiveWindow(&page);
        page.setFocus();
        page.loadDataFromDevice(&data);
        scene = page.scene();
    }

    QPushButton &button(int index) const { return *page.findChildren<QPushButton *>().at(index); }
    /// What the scene says after each key: arrows, page keys (^ and v), Backspace and Escape (b and e), digits. Half a
    /// second passes before each; a dot stands for a bit more than half a second.
    Numbers after(const char *keys, int PreviewScene::*value)
    {
        const QMap<char, int> named{{'l', Qt::Key_Left},      {'r', Qt::Key_Right},  {'u', Qt::Key_Up},
                                    {'d', Qt::Key_Down},      {'^', Qt::Key_PageUp}, {'v', Qt::Key_PageDown},
                                    {'b', Qt::Key_Backspace}, {'e', Qt::Key_Escape}};
        Numbers values;
        for (; *keys; ++keys) {
            QKeyEvent press(QEvent::KeyPress, named.value(*keys, *keys), Qt::NoModifier);
            press.setTimestamp(now += *keys == '.' ? 501 : 500);
            QCoreApplication::sendEvent(&page, &press);
            values << page.scene().*value;
        }
        return values;
    }

    DataFromDevice data;
    PreviewWidget page;
    PreviewScene scene;
    Numbers requests;
    ulong now = 5000;
};

TEST_F(Preview, TellsABankInWordsAndWhatIsMissing)
{
    const QString loops = "BUFFER ON. LOOP 1 ON. LOOP 2 OFF. LOOP 3 TOGGLE. LOOP 4 INACTIVE. LOOP 5 ON. LOOP 6 –. ";
    const QString outputs =
        "SWITCH 1 OFF. SWITCH 2 ON. SWITCH 3 TOGGLE. SWITCH 4 OFF. SWITCH 5 OFF. SWITCH 6 INACTIVE. ";
    const QString sent =
        "DELAY, channel 3: program 12; MIX = 64; BYPASS toggles. Expression pedal: MIX of DELAY, 20 to "
        "100, SLOW/FAST";
    const std::tuple<QString, bool, bool, bool> functions[] = {
        // what it does; whether it acts on loops, on switch outputs, and sends MIDI
        {"P - PRESET. Sets the buffer, all loops and all switch outputs, and sends MIDI. ", true, true, true},
        {"S - SWITCH MODIFIER. Changes switch outputs only; loops and MIDI stay as they are. ", false, true, false},
        {"L - LOOP MODIFIER. Changes loops only; switch outputs and MIDI stay as they are. ", true, false, false},
        {"M - MIDI MODIFIER. Sends MIDI only; loops and switch outputs stay as they are. ", false, false, true},
        {"–. This function is not known. ", false, false, false}};
    const auto told = [this](int bank, int preset) { return PreviewScene::of(&data, bank, preset).description(); };
    for (int preset = 0; preset < 5; ++preset) {
        const auto &[words, actsOnLoops, actsOnOutputs, sendsMidi] = functions[preset];
        const QString text = told(0, preset);
        EXPECT_TRUE(text.startsWith(QString("Bank 0: ÜBER ALLES. Footswitch %1: SOLO, %2").arg(preset).arg(words)));
        EXPECT_EQ(text.contains(loops), actsOnLoops) << preset;
        EXPECT_EQ(text.contains(outputs), actsOnOutputs) << preset;
        EXPECT_EQ(text.contains(sent), sendsMidi) << preset;
        EXPECT_EQ(text.contains("MIDI stays as it is: nothing is sent. The pedal stays as it is"), !sendsMidi);
        EXPECT_TRUE(text.endsWith(". Wah pad 1: CHANGE TO PRESET, preset 3: SOLO. Wah pad 2: TURN LOOP ON, preset 12"));
    }
    EXPECT_EQ(told(99, 0), "Bank 99: not read yet. Bank 99 has not been read yet.");
    EXPECT_EQ(told(1, 7), "Bank 1: . Preset 7 of bank 1 has not been read yet.");

    MidiDevice device;
    device.sendCCFirst = true;
    data.midiDevices[4] = std::make_shared<MidiDevice>(device);
    const std::pair<std::vector<ControlChangeData>, QString> midi[] = {
        {{{5, 1, 0}, {2, 3, 127}},
         "DELAY, channel 3: CC 20 = 127|MIDI 5, no channel set: controller slot 1 (undefined) = 0; program 128"},
        {{{20, 1, 1}}, "MIDI 5, no channel set: program 128|MIDI 20, not read yet: controller slot 1 = 1"},
    };
    for (const auto &[changes, sentences] : midi) {
        PresetData preset;
        preset.controlChanges = changes;
        preset.programChanges[4] = 128;
        data.presetData[0][0] = std::make_shared<PresetData>(preset);
        EXPECT_EQ(PreviewScene::of(&data, 0, 0).chosenFootswitch().midi.join('|'), sentences);
    }
}

TEST_F(Preview, EveryValueShowsAtItsPlaceAlone)
{
    PreviewScene::Footswitch &chosen = scene.footswitches[0];
    chosen.midi = QStringList{"ONE", "TWO", "THREE"};
    const QImage before = pictureOf(scene);
    const auto shows = [&](auto &value, auto other, const QVector<QRect> &places) {
        const auto kept = std::exchange(value, other);
        EXPECT_TRUE(differAt(places, before, pictureOf(scene))) << places[0].x() << ", " << places[0].y();
        value = kept;
    };
    const QRect header(12, 320, 1010, 38);
    const QRect midi(660, 390, 386, 60);
    const QRect pedal(1074, 390, 206, 158);
    const QRect curve(1104, 432, 140, 88);
    shows(scene.bank, 57, {{468, 30, 62, 46}});
    shows(scene.bankName, "?", {{548, 42, 290, 38}});
    shows(scene.chosen, 6, {{24, 202, 246, 104}, {275, 94, 246, 104}, header, {60, 389, 528, 54}, midi, pedal});
    shows(scene.notice, "?", {{12, 320, 1274, 239}});
    shows(chosen.summary, "?", {{540, 322, 470, 34}});
    shows(chosen.midi, QStringList(), {{227, 270, 36, 15}, midi});
    shows(chosen.pedal.text, "?", {{1074, 390, 200, 20}});
    shows(chosen.pedal.curve, "?", {{1074, 408, 200, 18}});
    shows(chosen.pedal.toeUp, 90, {{1074, 424, 30, 100}, curve});
    shows(chosen.pedal.toeDown, 7, {{1244, 424, 36, 100}, curve});
    shows(chosen.pedal.assigned, false, {pedal});
    for (const std::size_t pad : {0U, 1U}) {
        const int x = pad == 0 ? 142 : 1016;
        shows(scene.wahPads[pad].action, "?", {{x, 30, 246, 20}});
        shows(scene.wahPads[pad].target, "?", {{x + 24, 52, 222, 26}});
        shows(scene.wahPads[pad].color, Qt::cyan, {{x, 55, 18, 18}});
    }
    for (int i = 0; i < presetCount; ++i) {
        const QPoint corner(qRound(26 + 251.2 * (i % 5)), i < 5 ? 204 : 96);
        const auto place = [&](const QRect &part) {
            return i == 0 ? QVector{part.translated(corner), header} : QVector{part.translated(corner)};
        };
        PreviewScene::Footswitch &footswitch = scene.footswitches[static_cast<std::size_t>(i)];
        shows(footswitch.name, "?", place({69, 10, 170, 29}));
        shows(footswitch.function, "?", place({69, 38, 170, 18}));
        shows(footswitch.color, Qt::cyan, place({10, 24, 53, 53}));
    }
    using Effect = PreviewScene::Effect;
    for (int i = 0; i < 7; ++i)
        shows(chosen.path[i].effect, i == 3 ? Effect::On : Effect::Toggle,
              {{96 + 9 * i + (i > 0 ? 4 : 0), 273, 9, 9}, {60 + 76 * i, 389, 72, 54}});
    for (int i = 0; i < 6; ++i)
        shows(chosen.outputs[i].effect, i == 2 ? Effect::On : Effect::Toggle,
              {{168 + 9 * i, 273, 9, 9}, {136 + 76 * i, 479, 72, 63}});
    for (int i = 0; i < 3; ++i)
        shows(chosen.midi[i], "?", {{674, 391 + qRound(17.5 * i), 370, 19}});
    shows(chosen.midi[2], QString(60, 'x'), {{674, 426, 370, 19}, {674, 444, 370, 18}});
    EXPECT_TRUE(differAt({{21, 199, 252, 110}}, before, pictureOf(scene, Medium::FocusedScreen)));
}

TEST_F(Preview, ShowsStatesAndCurvesAndFillsItsGround)
{
    for (const Medium medium : {Medium::Screen, Medium::Paper})
        EXPECT_EQ(pictureOf(scene, medium), pictureOf(scene, medium, Qt::green));

    const auto colorsAt = [&](const QVector<QPoint> &points) {
        const QMap<QRgb, char> letters{{0xff4fdc6a, 'l'}, {0xff2c7a40, 'h'}, {0xffffffff, 'w'}, {0xff2f2f31, '.'},
                                       {0xff000000, 'b'}, {0xff525051, 'p'}, {0xff404042, 't'}, {0xff4d4d55, 'c'},
                                       {0xff8b0000, 'P'}, {0xfffa830f, 'M'}, {0xff5c7728, 'S'}, {0xff0005f3, 'L'}};
        std::string colors;
        for (const QPoint &point : points)
            colors += letters.value(pictureOf(scene).pixel(point), '?');
        return colors;
    };
    // Window, page, unit, display, footswitches 0 to 3
    EXPECT_EQ(colorsAt({{0, 0}, {5, 300}, {450, 15}, {460, 30}, {45, 240}, {296, 240}, {547, 240}, {798, 240}}),
              ".p.bPSLM");
    const char *const effects[] = {"llw.w.", "...w.w", ".hllll", "...?.."};
    const int outputs[] = {1, 0, 2, 5};  // those in the state of loops 1 to 4
    for (int loop = 0; loop < 4; ++loop) {
        const QPoint box(138 + 76 * loop, 391);
        const QPoint pivot(156 + 76 * outputs[loop], 537);
        // Upper left and lower right of a loop's box, the way into it, the way past it; a contact closed, and open
        EXPECT_EQ(colorsAt({box + QPoint(5, 5), box + QPoint(63, 33), box + QPoint(12, 43), box + QPoint(40, 49),
                            pivot + QPoint(16, 0), pivot + QPoint(14, -6)}),
                  effects[loop]);
    }
    PreviewScene::Footswitch &chosen = scene.footswitches[0];
    const int middles[] = {455, 476, 497};  // fast first, linear, slow first
    for (int curve = 0; curve < 3; ++curve) {
        chosen.pedal = {true, {}, {}, static_cast<ExpressionPedalCharacteristic>(curve + 1), 0, 127};
        EXPECT_EQ(colorsAt({{1106, 518}, {1174, middles[curve]}, {1242, 434}}), "lll") << curve;
    }
    QImage plate(36, 15, QImage::Format_RGB32);
    plate.fill(0xff4d4d55);
    chosen.midi.clear();
    EXPECT_EQ(pictureOf(scene).copy(227, 270, 36, 15), plate);  // where a footswitch that sends MIDI says so
}

TEST_F(Preview, GoesToBanksByKeysDigitsAndArrows)
{
    EXPECT_FALSE(button(0).isEnabled());
    EXPECT_EQ(after("v^5 71.2b4e089v99^", &PreviewScene::bank),
              Numbers({0, 1, 5, 5, 57, 1, 1, 2, 2, 4, 4, 0, 8, 9, 8, 9, 99, 99}));
    EXPECT_EQ(std::exchange(requests, {}), Numbers({1, 5, 57, 1, 2, 4, 0, 8, 9, 8, 9, 99}));
    EXPECT_FALSE(button(1).isEnabled());
    button(0).click();
    button(1).setFocus();
    button(1).click();
    EXPECT_TRUE(page.hasFocus());  // not SAVE PICTURE, which is next
    after("..1", &PreviewScene::bank);
    button(0).click();
    EXPECT_EQ(requests, Numbers({98, 99, 1, 0}));
}

TEST_F(Preview, ShowsWhatTheModelHoldsAndAsksAgainForWhatFailed)
{
    const auto isShown = [this](const QString &text) {
        // What is on the screen, not what it would be if it were painted now
        return QTest::qWaitFor(
                   [this] { return page.screen()->grabWindow(page.winId()).toImage() == page.grab().toImage(); }) &&
               page.accessibleDescription().contains(text);
    };
    EXPECT_TRUE(isShown("Bank 0: ÜBER ALLES"));
    data.bankData[0] = std::make_shared<BankData>();
    page.gotBankAndPresetData(1);
    EXPECT_TRUE(isShown("Bank 0: ÜBER ALLES"));
    page.gotBankAndPresetData(0);
    EXPECT_TRUE(isShown("Bank 0: ."));
    data.midiDevices[1] = std::make_shared<MidiDevice>();
    page.gotMidiDevicesData();
    EXPECT_TRUE(isShown("controller slot 1 (undefined) of MIDI 2"));

    const auto retryAfter = [this](int failed) {
        page.readFailed(failed);
        page.retry();
    };
    retryAfter(1);
    EXPECT_EQ(requests, Numbers());
    retryAfter(0);
    after("0", &PreviewScene::bank);
    page.gotBankAndPresetData(0);
    retryAfter(1);
    EXPECT_EQ(requests, Numbers({0, 0}));
    page.readFailed(0);
    after("^", &PreviewScene::bank);
    retryAfter(0);
    EXPECT_EQ(requests, Numbers({0, 0, 1}));
    page.readFailed(1);
    page.gotBankAndPresetData(1);  // without its presets
    retryAfter(0);
    EXPECT_EQ(requests, Numbers({0, 0, 1, 1}));
    page.readFailed(1);
    page.loadDataFromDevice(&data);  // begins anew
    page.retry();
    page.loadDataFromDevice(nullptr);
    retryAfter(0);
    after("^", &PreviewScene::bank);
    EXPECT_EQ(requests.size(), 4);
    EXPECT_TRUE(isShown("Bank 2: no unit found yet"));
}

TEST_F(Preview, ChoosesByKeyAndMouseAndTellsWhatIsCut)
{
    PresetData preset;
    preset.name = "<b>A name</b> that is wider than a footswitch";
    data.presetData[0][0] = std::make_shared<PresetData>(preset);
    page.gotBankAndPresetData(0);
    EXPECT_EQ(after("ldruurdl", &PreviewScene::chosen), Numbers({0, 0, 1, 6, 6, 7, 2, 1}));
    page.resize(649, 567);  // half the width: the picture is half as large and in the middle of the height
    EXPECT_EQ(page.grab().toImage().pixelColor(0, 0), QColor("#2f2f31"));
    const QRect buttons[] = {{203, 159, 20, 19}, {426, 159, 20, 19}, {515, 303, 61, 17}, {581, 303, 61, 17}};
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(button(i).geometry(), buttons[i]);
    const std::tuple<Qt::MouseButton, QPoint, int> clicks[] = {
        {Qt::LeftButton, {40, 267}, 0}, {Qt::LeftButton, {600, 202}, 9}, {Qt::RightButton, {40, 267}, 9}};
    for (const auto &[mouseButton, point, footswitch] : clicks) {
        QTest::mouseClick(&page, mouseButton, {}, point);
        EXPECT_EQ(page.scene().chosen, footswitch);
    }
    std::vector<RecordId> menus;
    QObject::connect(&page, &PreviewWidget::menuAsked, [&](const RecordId &of) { menus.push_back(of); });
    for (const QPoint &point : {QPoint(300, 400), QPoint(70, 255)}) {
        QTimer::singleShot(0, [] {
            if (auto *const menu = QApplication::activePopupWidget()) menu->close();  // of the page itself
        });
        QContextMenuEvent event(QContextMenuEvent::Mouse, point, point);
        QCoreApplication::sendEvent(&page, &event);
    }
    EXPECT_EQ(menus, std::vector{RecordId(RecordId::Kind::Preset, 0, 0)});
    const std::pair<QPoint, std::string> tips[] = {
        {{190, 255}, ""}, {{70, 255}, "<p>&lt;b&gt;A name&lt;/b&gt; that is wider than a footswitch</p>"}};
    for (const auto &[point, text] : tips) {
        QHelpEvent event(QEvent::ToolTip, point, page.mapToGlobal(point));
        QCoreApplication::sendEvent(&page, &event);
        EXPECT_EQ(QToolTip::text().toStdString(), text);
    }
}

TEST_F(Preview, SavesAPictureThatOthersCanOpen)
{
    const QTemporaryDir folder;
    ASSERT_TRUE(page.savePicture(folder.filePath("bank.png")));
    const QImage image(folder.filePath("bank.png"));
    EXPECT_EQ(image.size(), QSize(3894, 1701));
    EXPECT_EQ(image.dotsPerMeterX(), 14058);  // as wide as A4 without its margins
    EXPECT_EQ(image.pixelColor(3 * 143, 3 * 396), QColor(Qt::black));

    button(2).click();
    ASSERT_TRUE(page.findChild<QFileDialog *>());
    delete page.findChild<QFileDialog *>();
    QTest::keyClick(&page, Qt::Key_S, Qt::ControlModifier);
    auto *const dialog = page.findChild<QFileDialog *>();
    ASSERT_TRUE(dialog);
    EXPECT_EQ(dialog->acceptMode(), QFileDialog::AcceptSave);
    dialog->setDirectory(folder.path());
    emit dialog->filterSelected("SVG drawing (*.svg)");
    dialog->selectFile("stage");
    static_cast<QDialog *>(dialog)->accept();
    QSvgRenderer drawing(folder.filePath("stage.svg"));
    EXPECT_EQ(drawing.viewBoxF(), QRectF(0, 0, 1298, 567));
    QImage drawn(1298, 567, QImage::Format_RGB32);
    drawn.fill(Qt::white);
    QPainter painter(&drawn);
    drawing.render(&painter);
    EXPECT_EQ(drawn.pixelColor(143, 396), QColor(Qt::black));

    EXPECT_FALSE(page.savePicture(folder.filePath("no <b>folder</b>/bank.png")));
    const auto *message = page.findChild<QMessageBox *>();
    ASSERT_TRUE(message);
    EXPECT_EQ(message->textFormat(), Qt::PlainText);
    EXPECT_TRUE(message->text().contains("no <b>folder</b>/bank.png"));
}

}  // namespace
