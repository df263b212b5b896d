#include "support/wire.h"
#include "ui/dialogs/aboutwindow.h"
#include "ui/dialogs/controllerlistwindow.h"
#include "ui/editor.h"
#include "ui/dialogs/midieditorwindow.h"
#include "ui/namebutton.h"
#include "ui/tables/tabmidi.h"
#include "ui/tables/tabmididevices.h"

#include <QApplication>
#include <QDesktopServices>
#include <QLineEdit>
#include <QTableWidget>
#include <QTextBrowser>
#include <QTimer>

#include <tuple>

namespace {

using Changes = std::vector<ControlChangeData>;

template <typename Number>
std::string text(Number value)
{
    return std::to_string(static_cast<int>(value));
}
std::string text(const QString &value) { return value.toStdString(); }
std::string text(const ControlChangeData &record)
{
    return text(record.midiDeviceNumber) + '/' + text(record.controllerNumber) + '/' + text(record.value);
}
std::string text(const PresetExpressionPedal &pedal)
{
    return text(pedal.midiDeviceNumber) + '/' + text(pedal.controllerNumber) + '/' + text(pedal.characteristic) + '/' +
           text(pedal.toeUp) + '/' + text(pedal.toeDown);
}
template <template <typename...> typename List, typename... Value>
std::string text(const List<Value...> &list)
{
    std::string texts;
    for (const auto &value : list)
        texts += text(value) + ' ';
    return texts.substr(0, texts.find_last_not_of(' ') + 1);
}

// --- The new control change list

TEST(NewControlChanges, DropThenOthersThenChoicesThenFillers)
{
    const Changes full{{2, 1, 1}, {2, 2, 2}, {2, 3, 3},  {2, 4, 4}, {2, 5, 5},  {2, 6, 6}, {2, 7, 7},
                       {2, 8, 8}, {2, 9, 9}, {2, 10, 0}, {3, 1, 1}, {3, 2, 2},  {3, 3, 3}, {3, 4, 4},
                       {3, 5, 5}, {3, 6, 6}, {3, 7, 7},  {3, 8, 8}, {1, 1, 10}, {1, 2, 20}};
    const std::string others = text(Changes(full.begin(), full.begin() + 18));
    Changes edited(20, {4, 7, 255});
    edited[0] = {1, 5, 255};
    edited[1] = {2, 5, 3};
    // The records expected are those before the first filler.
    const std::tuple<const char *, Changes, QVector<ControllerChoice>, std::string> cases[] = {
        {"others keep their order, one value is dropped, one changed",
         {{1, 5, 10}, {4, 1, 254}, {1, 6, 20}, {2, 5, 0}},
         {{5, 255}, {6, 21}, {7, 254}},
         "1/5/255 4/1/254 2/5/0 1/6/21 1/7/254"},
        {"nothing tells of a controller that was inactive", {{2, 5, 1}}, {{5, 255}}, "2/5/1"},
        {"a stored controller without a row is left out", {{1, 9, 3}, {2, 9, 3}}, {{5, 4}}, "2/9/3 1/5/4"},
        {"others are copied whatever they are", {{2, 20, 255}, {20, 3, 255}}, {}, "2/20/255 20/3/255"},
        {"more choices than places", full, {{1, 11}, {2, 22}, {3, 33}}, others + " 1/1/11 1/2/22"},
        {"what an earlier edit left in the list takes no place", edited, {{5, 255}, {6, 9}}, "2/5/3 1/6/9"},
        {"a dropped value takes a place", full, {{1, 255}, {2, 22}, {3, 33}}, "1/1/255 " + others + " 1/2/22"},
    };
    for (const auto &[what, stored, choices, expected] : cases) {
        const QVector<ControlChangeData> list = newControlChanges(stored, 1, choices, 7);
        EXPECT_EQ(list.size(), 20) << what;
        const std::string records = text(list);
        EXPECT_EQ(records.substr(0, records.find(" 7/")), expected) << what;
    }
    EXPECT_EQ(text(newControlChanges({}, 1, {{2, 64}}, 3)),
              "1/2/64 3/2/255 3/3/255 3/4/255 3/5/255 3/6/255 3/7/255 3/8/255 "
              "3/9/255 3/10/255 3/11/255 3/12/255 "
              "3/13/255 3/14/255 3/15/255 3/16/255 3/17/255 3/18/255 3/19/255 "
              "3/20/255");
    EXPECT_EQ(text(newControlChanges({}, 10, {}, 0).mid(18)), "20/19/255 20/20/255") << "preset 0";
}

// --- Both tabs on a model

MidiDevice device(const std::string &name)
{
    MidiDevice record;
    record.name = name;
    record.controllers[0] = {"VOLUME", 7};
    record.controllers[2] = {"R&B <b>x</b>", 0};
    record.controllers[19] = {"LAST", 127};
    return record;
}

PresetData preset(FootswitchType function = FootswitchType::Preset)
{
    PresetData record;
    record.footswitchFunction = function;
    record.programChanges[1] = 128;
    record.controlChanges = {{2, 1, 254}, {3, 1, 5}, {2, 20, 64}, {2, 3, 255}, {2, 2, 1}};
    record.expressionPedal = {2, 20, ExpressionPedalCharacteristic::SlowFast, 10, 110};
    return record;
}

template <typename Record>
void put(Snapshot<Record> &slot, const Record &record)
{
    slot.store(std::make_shared<const Record>(record));
}

template <typename Widget>
Widget *cell(const QTableWidget &table, int row, int column)
{
    return qobject_cast<Widget *>(table.cellWidget(row, column));
}

const char *const ok = "pushButton_ok";
const char *const cancel = "pushButton_cancel";

/// Clicks a button, lets `act` work on the dialog that opens and answers it.
/// Returns whether one opened.
template <typename Dialog>
bool answer(QPushButton *button, const char *answerButton, std::function<void(Dialog &)> act = {})
{
    bool opened = false;
    QTimer::singleShot(0, [&] {
        auto *const dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
        opened = dialog;
        if (!opened) return;
        if (act) act(*dialog);
        dialog->template findChild<QPushButton *>(answerButton)->click();
    });
    button->click();
    QApplication::processEvents();
    return opened;
}

/// The boxes of an editor in their order, the controllers' values last.
enum Box { Program, PedalController, Characteristic, ToeUp, ToeDown, Value };
using Choices = std::vector<std::pair<int, int>>;  // of a box and an index

void pick(const MidiEditorWindow &editor, const Choices &choices)
{
    const auto boxes = editor.findChildren<QComboBox *>();
    for (const auto &[box, index] : choices)
        boxes[box]->setCurrentIndex(index);
}

/// Both tabs with what they send, as texts.
struct Tabs : testing::Test
{
    Tabs()
    {
        log(devices, &TabMidiDevices::changeMidiDeviceNameSignal, "name");
        log(devices, &TabMidiDevices::changeMidiDeviceChannelSignal, "channel");
        log(devices, &TabMidiDevices::changeSendCCFirst, "sendCCFirst");
        log(devices, &TabMidiDevices::changeTapTempo, "tapTempo");
        log(devices, &TabMidiDevices::changeTapController, "tapController");
        log(devices, &TabMidiDevices::changeTapControllerValue, "tapControllerValue");
        log(devices, &TabMidiDevices::changeNoteNumber, "noteNumber");
        log(devices, &TabMidiDevices::changeNoteType, "noteType");
        log(devices, &TabMidiDevices::controllersNamesOrNumberChanged, "controllers");
        log(midi, &TabMidi::changeProgramChangeNumber, "PC");
        log(midi, &TabMidi::changeControlChangeData, "CC");
        log(midi, &TabMidi::changePresetExpressionPedal, "pedal");
    }

    template <typename Tab, typename... Values>
    void log(Tab &tab, void (Tab::*signal)(Values...), const std::string &name)
    {
        QObject::connect(&tab, signal, [=, this](Values... values) {
            const std::string call = name + ((' ' + text(values)) + ...);
            sent += (sent.empty() ? "" : " | ") + call.substr(0, call.find(" 4/"));  // without preset 4's fillers
        });
    }

    void load()
    {
        for (std::size_t slot = 0; slot < 10; ++slot)
            put(model->midiDevices[slot], device("DEVICE " + std::to_string(slot + 1)));
        put(model->presetData[0][4], preset());
        show(model.get());
    }
    void show(DataFromDevice *data)
    {
        devices.loadDataFromDevice(data);
        midi.loadDataFromDevice(data);
        devices.gotMidiDevicesData();
        midi.gotMidiDevicesData();
        midi.gotBankAndPresetData(0);
    }

    QPushButton *midiButton(int number, int slot) { return cell<QPushButton>(midiTable, number + 1, slot + 4); }
    QPushButton *controllersButton(int slot) { return cell<QPushButton>(devicesTable, slot, 4); }
    std::string takeSent() { return std::exchange(sent, {}); }

    QTableWidget devicesTable{0, 9};
    QTableWidget midiTable{1, 14};
    TabMidiDevices devices{&devicesTable};
    TabMidi midi{&midiTable};
    std::unique_ptr<DataFromDevice> model = std::make_unique<DataFromDevice>();
    std::string sent;
};

TEST_F(Tabs, EachDeviceColumnSendsTheChoiceAndShowsTheStoredValue)
{
    load();
    MidiDevice amp = device("ÉCHO");
    amp.channel = 3;
    amp.sendCCFirst = true;
    amp.tapController = 2;
    amp.tapControllerValue = 64;
    amp.noteNumber = 60;
    amp.noteType = TapTempoNote::Toggle;
    put(model->midiDevices[9], amp);
    show(model.get());
    const std::tuple<int, int, int, const char *, int> cases[] = {
        {9, 1, 0, "channel 255 10", 3},
        {9, 1, 16, "channel 16 10", 3},
        {0, 1, 5, "channel 5 1", 0},
        {9, 3, 2, "tapTempo 3 10", 0},
        {9, 5, 19, "tapController 20 10", 1},
        {9, 6, 129, "tapControllerValue 254 10", 129},
        {9, 6, 128, "tapControllerValue 255 10", 128},
        {9, 7, 127, "noteNumber 127 10", 60},
        {9, 8, 0, "noteType 1 10", 2},
    };
    for (const auto &[row, column, index, expected, shownAfter] : cases) {
        auto *const box = cell<QComboBox>(devicesTable, row, column);
        box->setCurrentIndex(index);
        EXPECT_EQ(takeSent(), expected);
        EXPECT_EQ(box->currentIndex(), shownAfter) << expected;
    }
    auto *const flag = cell<QPushButton>(devicesTable, 9, 2);
    flag->click();
    EXPECT_EQ(takeSent(), "sendCCFirst 0 10");
    EXPECT_TRUE(flag->accessibleName().endsWith("on"));
    auto *const name = cell<QLineEdit>(devicesTable, 9, 0);
    name->setText("R&B");
    QTest::keyClick(name, Qt::Key_Return);
    QTest::keyClick(name, Qt::Key_Return);
    EXPECT_EQ(takeSent(), "name R&B 10") << "once, though the edit is finished twice";
    EXPECT_EQ(name->text(), "ÉCHO");

    show(model.get());
    EXPECT_EQ(cell<QComboBox>(devicesTable, 9, 6)->currentIndex(), 64) << "the stored value is shown again";
    EXPECT_EQ(takeSent(), "") << "a refresh sends nothing";
}

TEST_F(Tabs, WithoutAUnitChoicesFallBackAndNothingIsSent)
{
    const int expected[][2] = {{1, 0}, {3, 0}, {5, -1}, {6, 128}, {7, 0}, {8, 1}};
    for (const auto &[column, fallback] : expected) {
        auto *const box = cell<QComboBox>(devicesTable, 0, column);
        box->addItem("another");
        box->setCurrentIndex(box->count() - 1);
        EXPECT_EQ(box->currentIndex(), fallback) << column;
    }
    auto *const name = cell<QLineEdit>(devicesTable, 0, 0);
    QTest::keyClicks(name, "X\r");
    EXPECT_EQ(name->text(), "");
    cell<QPushButton>(devicesTable, 0, 2)->click();
    EXPECT_FALSE(answer<QDialog>(controllersButton(0), cancel));
    EXPECT_FALSE(answer<QDialog>(midiButton(0, 0), cancel));
    EXPECT_EQ(takeSent(), "");
}

TEST_F(Tabs, ControllerListSendsAllTwentyOnOkOnly)
{
    load();
    const auto edit = [](ControllerListWindow &dialog) {
        const QTableWidget &table = *dialog.findChild<QTableWidget *>("tableWidget_controllersListTable");
        auto *const name = cell<QLineEdit>(table, 1, 1);
        name->setText("PAN");
        QTest::keyClick(name, Qt::Key_Return);
        EXPECT_TRUE(dialog.isVisible()) << "Enter in the list is not yet OK";
        cell<QComboBox>(table, 1, 2)->setCurrentIndex(10);
        cell<QComboBox>(table, 2, 2)->setCurrentIndex(128);
    };
    answer<ControllerListWindow>(controllersButton(3), cancel, edit);
    EXPECT_EQ(takeSent(), "");
    answer<ControllerListWindow>(controllersButton(3), ok, edit);
    EXPECT_EQ(takeSent(), "controllers 4 VOLUME PAN R&B <b>x</b>                 LAST "
                          "7 10 255 255 255 255 255 255 255 255 255 255 255 255 255 255 255 "
                          "255 255 127");
}

TEST_F(Tabs, EditorShowsWhatThePresetHolds)
{
    load();
    const auto shown = [&](int slot, std::uint8_t pedalController) {
        PresetData record = preset();
        record.expressionPedal.controllerNumber = pedalController;
        record.controlChanges.emplace_back(2, 20, inactiveValue);  // takes nothing back
        put(model->presetData[0][4], record);
        const MidiEditorWindow dialog(model.get(), 0, 4, slot, nullptr);
        QStringList texts(dialog.findChild<QLabel *>("label_midiDeviceName")->text());
        for (const QComboBox *const box : dialog.findChildren<QComboBox *>())
            texts << box->currentText();
        return texts.join('|');
    };
    EXPECT_EQ(shown(1, 20), "MIDI 2 : DEVICE 2|128|LAST|SLOW/FAST|10|110|TOGGLE|INACTIVE|64");
    EXPECT_EQ(shown(2, 20), "MIDI 3 : DEVICE 3|INACTIVE||SLOW/FAST|10|110|5|INACTIVE|INACTIVE") << "not its pedal";
    EXPECT_EQ(shown(1, none), "MIDI 2 : DEVICE 2|128|INACTIVE||||TOGGLE|INACTIVE|64");
    EXPECT_EQ(shown(1, 2), "MIDI 2 : DEVICE 2|128||SLOW/FAST|10|110|TOGGLE|INACTIVE|64") << "controller not defined";
    put(model->midiDevices[1], MidiDevice());
    EXPECT_EQ(shown(1, 2), "MIDI 2 : |128|NO CONTROLLERS DEFINED|SLOW/FAST|10|110");
}

TEST_F(Tabs, EditorSendsWhatWasChosen)
{
    const std::string rest = "CC 0 4 2/3/255 3/1/5 2/1/254 2/20/64";
    const std::string rest3 = "CC 0 4 2/1/254 2/20/64 2/3/255 2/2/1 3/1/5";
    const std::string pedal = " | pedal 0 4 2/20/3/10/110";
    const std::tuple<int, Choices, std::string> cases[] = {
        {1, {}, rest + pedal},
        {1, {{Program, 0}}, "PC 0 4 1 255 | " + rest + pedal},
        {1, {{Value, 128}, {Value + 1, 129}, {Value + 2, 0}}, "CC 0 4 2/1/255 3/1/5 2/3/254 2/20/0" + pedal},
        {1, {{PedalController, 1}, {Characteristic, 0}, {ToeUp, 127}}, rest + " | pedal 0 4 2/3/1/127/110"},
        {1, {{PedalController, 3}}, rest + " | pedal 0 4 2/255/3/10/110"},
        // device 2 holds the pedal
        {2, {{PedalController, 3}}, rest3},
        {2, {{PedalController, 0}}, rest3 + " | pedal 0 4 3/1/3/10/110"},
        // no controllers are defined
        {3, {{Program, 9}}, "PC 0 4 3 9 | CC 0 4 2/1/254 3/1/5 2/20/64 2/3/255 2/2/1"},
    };
    load();
    put(model->midiDevices[3], MidiDevice());
    for (const auto &[slot, choices, expected] : cases) {
        const auto act = [&choices = choices](MidiEditorWindow &dialog) { pick(dialog, choices); };
        answer<MidiEditorWindow>(midiButton(4, slot), cancel, act);
        EXPECT_EQ(takeSent(), "");
        answer<MidiEditorWindow>(midiButton(4, slot), ok, act);
        EXPECT_EQ(takeSent(), expected);
    }
}

TEST_F(Tabs, ModifierPresetsAndUnreadDevicesOpenNothing)
{
    load();
    for (const int function : {0, 1, 2, 3}) {
        put(model->presetData[0][9], preset(static_cast<FootswitchType>(function)));
        midi.gotBankAndPresetData(0);
        EXPECT_EQ(answer<MidiEditorWindow>(midiButton(9, 0), cancel), function == 0 || function == 3) << function;
    }
    EXPECT_TRUE(midiButton(9, 9)->styleSheet().endsWith("background-color: #fa830f"));
    model->midiDevices[0].store(nullptr);
    EXPECT_FALSE(answer<MidiEditorWindow>(midiButton(9, 0), cancel)) << "what cannot be shown must not be replaced";
}

TEST_F(Tabs, OkAppliesToThePresetTheDialogWasOpenedFor)
{
    load();
    answer<MidiEditorWindow>(midiButton(4, 1), ok, [&](MidiEditorWindow &dialog) {
        cell<QPushButton>(midiTable, 0, 0)->click();
        put(model->presetData[1][4], preset(FootswitchType::LoopModifier));
        put(model->midiDevices[1], MidiDevice());
        show(model.get());
        midi.gotBankAndPresetData(1);
        pick(dialog, {{Program, 5}});
    });
    EXPECT_EQ(midi.currentBank(), 1);
    EXPECT_EQ(takeSent(), "PC 0 4 1 5 | CC 0 4 2/3/255 3/1/5 2/1/254 2/20/64 | pedal 0 4 2/20/3/10/110");
    cell<QPushButton>(midiTable, 11, 0)->click();

    const auto replaceModel = [&](bool withRecords) {
        auto next = std::make_unique<DataFromDevice>();
        PresetData record;
        record.controlChanges = {{9, 1, 1}};
        if (withRecords) {
            put(next->presetData[0][4], record);
            put(next->midiDevices[1], device("OTHER"));
        }
        show(next.get());
        model = std::move(next);
    };
    replaceModel(true);
    answer<MidiEditorWindow>(midiButton(4, 1), ok, [&](MidiEditorWindow &dialog) {
        pick(dialog, {{Value, 3}});
        replaceModel(true);
    });
    EXPECT_EQ(takeSent(), "CC 0 4 9/1/1 2/1/3") << "another unit with this preset has come";
    EXPECT_TRUE(answer<MidiEditorWindow>(midiButton(4, 1), ok, [&](auto &) { replaceModel(false); }));
    replaceModel(true);
    EXPECT_TRUE(answer<ControllerListWindow>(controllersButton(1), ok, [&](auto &) { replaceModel(false); }));
    EXPECT_EQ(takeSent(), "") << "the records are gone";
}

TEST_F(Tabs, DialogsLeaveNothingBehind)
{
    load();
    QSet<int> counts;
    for (const char *const button : {ok, cancel, ok}) {
        EXPECT_TRUE(answer<MidiEditorWindow>(midiButton(4, 0), button));
        EXPECT_TRUE(answer<ControllerListWindow>(controllersButton(0), button));
        counts << QApplication::allWidgets().size();
    }
    EXPECT_EQ(counts.size(), 1) << "a dialog stays until the next one takes its place";
}

// --- Names and links

TEST(NameButtons, ShowMarkupAndAmpersandsAsTheyAre)
{
    NameButton shown("#000000");
    shown.setName("R&B <b>x</b>");
    EXPECT_EQ(shown.text(), "R&B <b>x</b>");
    EXPECT_TRUE(shown.shortcut().isEmpty()) << "Alt+B must not open an editor";
    QPushButton escaped("R&&B <b>x</b>");
    escaped.setStyleSheet(shown.styleSheet());
    escaped.setFont(shown.font());
    shown.resize(200, 38);
    escaped.resize(200, 38);
    EXPECT_EQ(shown.grab().toImage(), escaped.grab().toImage());
}

/// Takes the place of the desktop's browser and mail program.
class UrlCatcher : public QTextBrowser
{
public:
    void setSource(const QUrl &url) override { opened << url.toString(); }
    QStringList opened;
};

TEST(AboutDialog, OpensItsLinksThroughTheDesktop)
{
    UrlCatcher desktop;  // its handlers go with it
    for (const char *const scheme : {"https", "mailto"})
        QDesktopServices::setUrlHandler(scheme, &desktop, "setSource");
    AboutWindow dialog;
    for (const char *const name : {"label_about", "label_footer"}) {
        auto *const label = dialog.findChild<QLabel *>(name);
        EXPECT_FALSE(label->openExternalLinks());
        emit label->linkActivated(label->text().section('"', 1, 1));
    }
    dialog.findChild<QPushButton *>("pushButton_logo")->click();
    EXPECT_EQ(desktop.opened.join(' '), "https://example.com/kora/editor mailto:kora@example.com "
                                        "https://example.com/kora");
}

// --- From the widgets to the unit

TEST_F(Editor, APresetSendsToADeviceAndAnotherEditFindsRoomForMore)
{
    EXPECT_EQ(cell<QPushButton>("midi", 1, 5).text(), "HALLRÄUME");
    answer<MidiEditorWindow>(&cell<QPushButton>("midi", 1, 6), ok, [](MidiEditorWindow &dialog) {
        pick(dialog, {{Program, 12}, {PedalController, 1}, {Characteristic, 2}, {ToeUp, 10}, {Value, 100}});
    });
    QStringList sent;
    for (const std::string &request : requests())
        sent << QString::fromStdString(visible(request));
    ASSERT_EQ(sent.size(), 3);
    EXPECT_EQ(sent[0], "WBP|A0|B0|Gc12|D0");
    EXPECT_TRUE(sent[1].startsWith("WBP|A0|B0|GAA1,B3,C0;BA3,B1,C100;")) << sent[1].toStdString();
    EXPECT_TRUE(sent[2].startsWith("WBP|A0|B0|GnA3,B2,C3,D10,E")) << sent[2].toStdString();

    // The list sent before was full of fillers.
    answer<MidiEditorWindow>(&cell<QPushButton>("midi", 1, 5), ok, [](MidiEditorWindow &dialog) {
        pick(dialog, {{Value + 2, 77}});
    });
    EXPECT_TRUE(settles());
    EXPECT_EQ(text(unit.memory().presets[0][0].controlChanges), "1/3/0 3/1/100 2/3/77");
}

}  // namespace
