#include "ui/editor.h"

#include <QRegularExpression>

namespace {

/// Preset 4 of bank 0 has something to say to device 2, and device 2 holds its pedal.
UnitMemory content()
{
    UnitMemory memory;
    memory.deviceInfo.firstText = "KORA";
    for (std::size_t slot = 0; slot < midiDeviceCount; ++slot) {
        MidiDevice &device = memory.midiDevices[slot];
        device.name = "DEVICE " + std::to_string(slot + 1);
        device.controllers[0] = {"VOLUME", 7};
        device.controllers[2] = {"R&B <b>x</b>", 0};
        device.controllers[19] = {"LAST", 127};
    }
    memory.midiDevices[3] = MidiDevice();
    PresetData &preset = memory.presets[0][4];
    preset.name = "<&";
    preset.programChanges[1] = 128;
    preset.controlChanges = {{2, 1, 254}, {3, 1, 5}, {2, 20, 64}, {2, 2, 1}};
    preset.expressionPedal = {2, 20, ExpressionPedalCharacteristic::SlowFast, 10, 110};
    return memory;
}

/// The boxes of an editor in their order, the controllers' values last.
enum Box { Program, PedalController, Characteristic, ToeUp, ToeDown, Value };
using Choices = std::vector<std::pair<int, int>>;  // of a box and an index

class Midi : public Editor
{
protected:
    Midi() : Editor(content()) {}

    void readAgain()
    {
        clickCell("footswitchFunction", 0, 0);
        clickCell("footswitchFunction", 11, 0);
        click("pushButton_midiDevicesTab");
        requests();
    }

    /// Opens the editor of preset 4 for a device, 1 to 10, and chooses; what it showed first.
    QString edit(int device, const Choices &choices = {}, const char *end = "pushButton_ok")
    {
        QString texts;
        onDialog([&](QWidget &dialog) {
            texts = dialog.findChild<QLabel *>("label_midiDeviceName")->text();
            EXPECT_EQ(dialog.findChild<QLabel *>("label_preset")->text(), "BANK 0, PRESET 4: <&");
            const auto all = dialog.findChildren<ComboBox *>();
            for (const ComboBox *const box : all)
                texts += '|' + box->currentText();
            for (const auto &[box, index] : choices)
                choose(*all[box], all[box]->itemText(index));
            QTest::keyClick(all[Program], Qt::Key_Return);
            EXPECT_TRUE(all[Program]->view()->isVisible()) << "Enter opens the list and does not end the dialog";
            all[Program]->hidePopup();
            dialog.findChild<QPushButton *>(end)->click();
        });
        clickCell("midi", 5, device + 3);
        return texts;
    }

    QString shown(int device) { return edit(device, {}, "pushButton_cancel"); }

    /// The requests without the fillers of a list.
    QStringList sent()
    {
        QStringList texts;
        for (const std::string &request : requests())
            texts << QString::fromStdString(request).remove(QRegularExpression(";[A-T]A20,B\\d+,C255"));
        return texts;
    }
};

}  // namespace

TEST_F(Midi, TheEditorShowsWhatThePresetHolds)
{
    auto &button = cell<QPushButton>("midi", 5, 5);
    const QImage marked = button.grab().toImage();
    EXPECT_EQ(button.toolTip(), "DEVICE 2: PC 128, VOLUME toggles, LAST = 64, controller 2 = 1, PEDAL: LAST 10 to 110");
    EXPECT_EQ(shown(2), "MIDI 2 : DEVICE 2|128|LAST|SLOW/FAST|10|110|TOGGLE|INACTIVE|64");
    EXPECT_EQ(shown(3), "MIDI 3 : DEVICE 3|INACTIVE||SLOW/FAST|10|110|5|INACTIVE|INACTIVE") << "not its pedal";
    EXPECT_EQ(shown(4), "MIDI 4 : |INACTIVE|NO CONTROLLERS DEFINED|SLOW/FAST|10|110");
    unit.alter([](UnitMemory &memory) {
        memory.presets[0][4].expressionPedal.controllerNumber = none;
        memory.presets[0][5] = PresetData();
    });
    readAgain();
    EXPECT_NE(cell<QPushButton>("midi", 6, 5).grab().toImage(), marked) << "where something is sent there is a mark";
    EXPECT_EQ(shown(2), "MIDI 2 : DEVICE 2|128|INACTIVE||||TOGGLE|INACTIVE|64");
    unit.alter([](UnitMemory &memory) { memory.presets[0][4].expressionPedal.controllerNumber = 2; });
    readAgain();
    EXPECT_EQ(shown(2), "MIDI 2 : DEVICE 2|128||SLOW/FAST|10|110|TOGGLE|INACTIVE|64") << "controller not defined";
}

TEST_F(Midi, APedalThatDroveNothingIsProposedTheWholeRange)
{
    unit.alter([](UnitMemory &memory) {
        memory.presets[0][4].expressionPedal = PresetData().expressionPedal;
        memory.presets[0][4].controlChanges.clear();
    });
    readAgain();
    edit(3, {{PedalController, 0}});
    EXPECT_EQ(sent().last(), "WBP|A0|B4|GnA3,B1,C2,D0,E127|D0");
    const auto &button = cell<QPushButton>("midi", 5, 6);
    EXPECT_EQ(button.toolTip(), "DEVICE 3: PEDAL: VOLUME 0 to 127");
}

TEST_F(Midi, TheEditorSendsWhatWasChosen)
{
    const QString list = "WBP|A0|B4|GAA3,B1,C5;BA2,B1,C254;CA2,B20,C64|D0", pedal = "WBP|A0|B4|GnA2,B20,C3,D10,E110|D0";
    const QString list3 = "WBP|A0|B4|GAA2,B1,C254;BA2,B20,C64;CA2,B2,C1;DA3,B1,C5|D0";
    const std::tuple<int, Choices, QStringList> cases[] = {
        {2, {}, {list, pedal}},
        {2, {{Program, 0}}, {"WBP|A0|B4|Gb255|D0", list, pedal}},
        {2,
         {{Value, 128}, {Value + 1, 129}, {Value + 2, 0}},
         {"WBP|A0|B4|GAA2,B1,C255;BA3,B1,C5;CA2,B3,C254;DA2,B20,C0|D0", pedal}},
        {2,
         {{PedalController, 1}, {Characteristic, 0}, {ToeUp, 127}, {ToeDown, 9}},
         {list, "WBP|A0|B4|GnA2,B3,C1,D127,E9|D0"}},
        {2, {{PedalController, 3}}, {list, "WBP|A0|B4|GnA2,B255,C3,D10,E110|D0"}},
        // device 2 holds the pedal
        {3, {{PedalController, 3}}, {list3}},
        {3, {{PedalController, 0}}, {list3, "WBP|A0|B4|GnA3,B1,C3,D10,E110|D0"}},
        // no controllers are defined
        {4, {{Program, 9}}, {"WBP|A0|B4|Gd9|D0", "WBP|A0|B4|GAA2,B1,C254;BA3,B1,C5;CA2,B20,C64;DA2,B2,C1|D0"}},
    };
    for (const auto &[device, choices, expected] : cases) {
        unit.alter([](UnitMemory &memory) { memory = content(); });
        readAgain();
        edit(device, choices, "pushButton_cancel");
        EXPECT_EQ(sent(), QStringList());
        edit(device, choices);
        EXPECT_EQ(sent(), expected);
    }
}

TEST_F(Midi, OnlyPlainPresetsAndMidiModifiersOpenTheEditor)
{
    const QString colors[] = {"#8b0000", "#5c7728", "#0005f3", "#fa830f"};
    for (int function = 0; function < 4; ++function) {
        unit.alter([&](UnitMemory &memory) {
            memory.presets[0][4].footswitchFunction = static_cast<FootswitchType>(function);
        });
        readAgain();
        const auto &button = cell<QPushButton>("midi", 5, 13);
        EXPECT_EQ(button.text(), "DEVICE 10");
        EXPECT_TRUE(button.styleSheet().endsWith("\nbackground-color: " + colors[function]));
        const bool sends = function == 0 || function == 3;
        EXPECT_EQ(button.isEnabled(), sends);
        EXPECT_EQ(button.toolTip().endsWith("modifier sends no MIDI"), !sends);
        if (sends)
            edit(10, {}, "pushButton_cancel");
        else
            clickCell("midi", 5, 13);
    }
}

TEST_F(Midi, DialogsLeaveNothingBehind)
{
    QSet<int> counts;
    for (int round = 0; round < 3; ++round) {
        edit(1);
        onDialog([](QWidget &dialog) { dialog.findChild<QPushButton *>("pushButton_cancel")->click(); });
        clickCell("midiDevices", 1, 4);
        requests();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        counts << static_cast<int>(QApplication::allWidgets().size());
    }
    EXPECT_EQ(counts.size(), 1) << "a dialog stays until the next one takes its place";
}
