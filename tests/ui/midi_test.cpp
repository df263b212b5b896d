#include "controller/devicecontroller.h"
#include "simulator/unitport.h"
#include "ui/aboutwindow.h"
#include "ui/controllerlistwindow.h"
#include "ui/installdriverswindow.h"
#include "ui/midieditorwindow.h"
#include "ui/namebutton.h"
#include "ui/tabmidi.h"
#include "ui/tabmididevices.h"

#include <QApplication>
#include <QComboBox>
#include <QDesktopServices>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QTableWidget>
#include <QTextBrowser>
#include <QTextDocumentFragment>
#include <QThread>
#include <QTimer>
#include <QtTest/QTest>

#include <gtest/gtest.h>

namespace {

using Changes = std::vector<ControlChangeData>;

std::string text(int value) { return std::to_string(value); }
std::string text(const QString &value) { return value.toStdString(); }
std::string text(const ControlChangeData &record)
{
    return text(record.midiDeviceNumber) + '/' + text(record.controllerNumber) + '/' + text(record.value);
}
std::string text(const PresetExpressionPedal &pedal)
{
    return text(pedal.midiDeviceNumber) + '/' + text(pedal.controllerNumber) + '/' +
           text(static_cast<int>(pedal.characteristic)) + '/' + text(pedal.toeUp) + '/' + text(pedal.toeDown);
}
template <typename Enum>
requires std::is_enum_v<Enum> std::string text(Enum value) { return text(static_cast<int>(value)); }
template <template <typename...> typename List, typename... Value>
std::string text(const List<Value...> &list)
{
    std::string texts;
    for (const auto &value : list)
        texts += (texts.empty() && &value == &list.front() ? "" : " ") + text(value);
    return texts;
}

// --- The new control change list

TEST(NewControlChanges, FillUpToTwentyRecords)
{
    EXPECT_EQ(text(newControlChanges({}, 1, {{2, 64}}, 3)),
              "1/2/64 3/2/255 3/3/255 3/4/255 3/5/255 3/6/255 3/7/255 3/8/255 3/9/255 3/10/255 3/11/255 3/12/255 "
              "3/13/255 3/14/255 3/15/255 3/16/255 3/17/255 3/18/255 3/19/255 3/20/255");
    EXPECT_EQ(text(newControlChanges({}, 10, {}, 0).mid(18)), "20/19/255 20/20/255") << "preset 0";
}

TEST(NewControlChanges, DropThenOthersThenChoices)
{
    const Changes full{{2, 1, 1}, {2, 2, 2}, {2, 3, 3},  {2, 4, 4}, {2, 5, 5},  {2, 6, 6}, {2, 7, 7},
                       {2, 8, 8}, {2, 9, 9}, {2, 10, 0}, {3, 1, 1}, {3, 2, 2},  {3, 3, 3}, {3, 4, 4},
                       {3, 5, 5}, {3, 6, 6}, {3, 7, 7},  {3, 8, 8}, {1, 1, 10}, {1, 2, 20}};
    const std::string others = text(Changes(full.begin(), full.begin() + 18));
    const struct
    {
        const char *what;
        Changes stored;
        QVector<ControllerChoice> choices;
        std::string records;  // before the first filler
    } cases[] = {
        {"others keep their order, one value is dropped, one changed",
         {{1, 5, 10}, {4, 1, 254}, {1, 6, 20}, {2, 5, 0}},
         {{5, 255}, {6, 21}, {7, 254}},
         "1/5/255 4/1/254 2/5/0 1/6/21 1/7/254"},
        {"nothing tells of a controller that was inactive", {{2, 5, 1}}, {{5, 255}}, "2/5/1"},
        {"a stored controller without a row is left out", {{1, 9, 3}, {2, 9, 3}}, {{5, 4}}, "2/9/3 1/5/4"},
        {"others are copied whatever they are", {{2, 20, 255}, {20, 3, 255}}, {}, "2/20/255 20/3/255"},
        {"more choices than places", full, {{1, 11}, {2, 22}, {3, 33}}, others + " 1/1/11 1/2/22"},
        {"a dropped value takes a place", full, {{1, 255}, {2, 22}, {3, 33}}, "1/1/255 " + others + " 1/2/22"},
    };
    for (const auto &test : cases) {
        const QVector<ControlChangeData> list = newControlChanges(test.stored, 1, test.choices, 7);
        EXPECT_EQ(list.size(), 20) << test.what;
        const std::string records = text(list);
        EXPECT_EQ(records.substr(0, records.find(" 7/")), test.records) << test.what;
    }
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

template <typename Record>
void put(Snapshot<Record> &slot, const Record &record)
{
    slot.store(std::make_shared<const Record>(record));
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
        devices.loadDataFromDevice(model.get());
        midi.loadDataFromDevice(model.get());
        show();
    }
    void show()
    {
        devices.gotMidiDevicesData();
        midi.gotMidiDevicesData();
        midi.gotBankAndPresetData(0);
    }

    template <typename Widget>
    Widget *deviceCell(int number, int column)
    {
        return qobject_cast<Widget *>(devicesTable.cellWidget(number - 1, column));
    }
    QPushButton *midiButton(int preset, int slot)
    {
        return qobject_cast<QPushButton *>(midiTable.cellWidget(preset + 1, slot + 4));
    }

    /// Clicks a button, lets `act` work on the dialog that opens and answers it. Returns whether one opened.
    template <typename Dialog>
    bool answer(QWidget *button, const char *answerButton, std::function<void(Dialog &)> act = {})
    {
        bool opened = false;
        QTimer::singleShot(0, [&] {
            auto *const dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
            opened = dialog;
            if (!opened) return;
            if (act) act(*dialog);
            dialog->template findChild<QPushButton *>(answerButton)->click();
        });
        static_cast<QPushButton *>(button)->click();
        QApplication::processEvents();
        return opened;
    }
    std::string takeSent() { return std::exchange(sent, {}); }

    QTableWidget devicesTable{0, 9};
    QTableWidget midiTable{1, 14};
    TabMidiDevices devices{&devicesTable};
    TabMidi midi{&midiTable};
    std::unique_ptr<DataFromDevice> model = std::make_unique<DataFromDevice>();
    std::string sent;
};

struct Choice
{
    QString box;  // "comboBox_" left out; or the row of a controller
    int index;
};

QComboBox *value(QWidget &dialog, int row)
{
    auto *const table = dialog.findChild<QTableWidget *>("tableWidget_controllersListTable");
    return qobject_cast<QComboBox *>(table->cellWidget(row, 1));
}

void choose(QWidget &dialog, const QVector<Choice> &choices)
{
    for (const Choice &choice : choices) {
        bool isRow = false;
        const int row = choice.box.toInt(&isRow);
        auto *const box = isRow ? value(dialog, row) : dialog.findChild<QComboBox *>("comboBox_" + choice.box);
        box->setCurrentIndex(choice.index);
    }
}

const char *const ok = "pushButton_ok";
const char *const cancel = "pushButton_cancel";

// --- The table of MIDI devices

TEST_F(Tabs, EachDeviceColumnSendsTheChoiceAndShowsTheStoredValue)
{
    load();
    MidiDevice amp = device("AMP");
    amp.channel = 3;
    amp.tapTempo = MidiDeviceTapTempo::TapCtrl;
    amp.tapController = 2;
    amp.tapControllerValue = 64;
    amp.noteNumber = 60;
    amp.noteType = TapTempoNote::Toggle;
    put(model->midiDevices[1], amp);
    show();
    const struct
    {
        int number, column, index;
        const char *sent;
        int shownAfter;
    } cases[] = {
        {2, 1, 0, "channel 255 2", 3},
        {2, 1, 16, "channel 16 2", 3},
        {10, 1, 5, "channel 5 10", 0},
        {2, 3, 0, "tapTempo 1 2", 1},
        {2, 3, 2, "tapTempo 3 2", 1},
        {2, 5, 0, "tapController 1 2", 1},
        {2, 5, 19, "tapController 20 2", 1},
        {2, 6, 129, "tapControllerValue 254 2", 129},
        {2, 6, 128, "tapControllerValue 255 2", 128},
        {2, 6, 0, "tapControllerValue 0 2", 0},
        {2, 7, 127, "noteNumber 127 2", 60},
        {2, 8, 0, "noteType 1 2", 2},
        {10, 8, 0, "noteType 1 10", 1},
    };
    for (const auto &test : cases) {
        auto *const box = deviceCell<QComboBox>(test.number, test.column);
        box->setCurrentIndex(test.index);
        EXPECT_EQ(takeSent(), test.sent);
        EXPECT_EQ(box->currentIndex(), test.shownAfter) << test.sent;
    }
    show();
    EXPECT_EQ(deviceCell<QComboBox>(2, 6)->currentIndex(), 64) << "the refresh shows the stored value again";
    EXPECT_EQ(deviceCell<QComboBox>(2, 5)->itemText(19), "LAST");
    EXPECT_EQ(takeSent(), "") << "a refresh sends nothing";
}

TEST_F(Tabs, DeviceNameAndFlagShowTheStoredValueUntilTheUnitTookTheNewOne)
{
    load();
    MidiDevice record = device("ÉCHO");
    record.sendCCFirst = true;
    put(model->midiDevices[9], record);
    show();
    auto *const flag = deviceCell<QPushButton>(10, 2);
    flag->click();
    EXPECT_EQ(takeSent(), "sendCCFirst 0 10");
    EXPECT_TRUE(flag->accessibleName().endsWith("on"));
    record.sendCCFirst = false;
    put(model->midiDevices[9], record);
    show();
    EXPECT_TRUE(flag->accessibleName().endsWith("off"));

    auto *const name = deviceCell<QLineEdit>(10, 0);
    name->setText("R&B");
    QTest::keyClick(name, Qt::Key_Return);
    QTest::keyClick(name, Qt::Key_Return);
    EXPECT_EQ(takeSent(), "name R&B 10") << "once, though the edit is finished twice";
    EXPECT_EQ(name->text(), "ÉCHO");
}

TEST_F(Tabs, WithoutAUnitChoicesFallBackAndNothingIsSent)
{
    const int expected[][3] = {{1, 0, 0}, {3, 0, 0}, {5, 0, -1}, {6, 128, 128}, {7, 0, 0}, {8, 1, 1}};
    for (const auto &[column, initial, fallback] : expected) {
        auto *const box = deviceCell<QComboBox>(1, column);
        EXPECT_EQ(box->currentIndex(), initial) << column;
        box->addItem("another");
        box->setCurrentIndex(box->count() - 1);
        EXPECT_EQ(box->currentIndex(), fallback) << column;
    }
    auto *const name = deviceCell<QLineEdit>(1, 0);
    QTest::keyClicks(name, "X\r");
    EXPECT_EQ(name->text(), "");
    deviceCell<QPushButton>(1, 2)->click();
    EXPECT_FALSE(answer<QDialog>(deviceCell<QPushButton>(1, 4), cancel));
    EXPECT_FALSE(answer<QDialog>(midiButton(0, 0), cancel));
    EXPECT_EQ(takeSent(), "");
}

TEST_F(Tabs, ControllerListSendsAllTwentyOnOkOnly)
{
    load();
    const auto rename = [](ControllerListWindow &dialog) {
        auto *const table = dialog.findChild<QTableWidget *>("tableWidget_controllersListTable");
        EXPECT_EQ(qobject_cast<QPushButton *>(table->cellWidget(19, 0))->text(), "20");
        const auto number = [&](int row) { return qobject_cast<QComboBox *>(table->cellWidget(row, 2)); };
        EXPECT_EQ(number(0)->currentIndex(), 7);
        EXPECT_EQ(number(1)->currentText(), "INACTIVE");
        auto *const name = qobject_cast<QLineEdit *>(table->cellWidget(1, 1));
        name->setText("PAN");
        QTest::keyClick(name, Qt::Key_Return);
        EXPECT_TRUE(dialog.isVisible()) << "Enter in the list is not yet OK";
        number(1)->setCurrentIndex(10);
        number(2)->setCurrentIndex(128);
    };
    answer<ControllerListWindow>(deviceCell<QPushButton>(4, 4), cancel, rename);
    EXPECT_EQ(takeSent(), "");
    answer<ControllerListWindow>(deviceCell<QPushButton>(4, 4), ok, rename);
    EXPECT_EQ(takeSent(), "controllers 4 VOLUME PAN R&B <b>x</b>                 LAST "
                          "7 10 255 255 255 255 255 255 255 255 255 255 255 255 255 255 255 255 255 127");
}

// --- The editor

PresetData preset(FootswitchType function = FootswitchType::Preset)
{
    PresetData record;
    record.footswitchFunction = function;
    record.programChanges[1] = 128;
    record.controlChanges = {{2, 1, 254}, {3, 1, 5}, {2, 20, 64}, {2, 3, 255}, {2, 2, 1}};
    record.expressionPedal = {2, 20, ExpressionPedalCharacteristic::SlowFast, 10, 110};
    return record;
}

TEST_F(Tabs, EditorShowsWhatThePresetHolds)
{
    load();
    put(model->presetData[0][4], preset());
    const auto shown = [&](int slot) {
        MidiEditorWindow dialog(model.get(), 0, 4, slot, nullptr);
        QStringList texts(dialog.findChild<QLabel *>("label_midiDeviceName")->text());
        for (const char *box : {"comboBox_programChangeNumber", "comboBox_controllers", "comboBox_characteristic",
                                "comboBox_toeUpValue", "comboBox_toeDownValue"})
            texts << QString::number(dialog.findChild<QComboBox *>(box)->currentIndex());
        for (int row = 0; row < 3; ++row)
            texts << (value(dialog, row) ? value(dialog, row)->currentText() : "none");
        return texts.join(' ');
    };
    EXPECT_EQ(shown(1), "MIDI 2 : DEVICE 2 128 2 2 10 110 TOGGLE INACTIVE 64");
    EXPECT_EQ(shown(2), "MIDI 3 : DEVICE 3 0 -1 2 10 110 5 INACTIVE INACTIVE") << "another device has the pedal";

    PresetData record = preset();
    record.expressionPedal.controllerNumber = none;
    put(model->presetData[0][4], record);
    EXPECT_EQ(shown(1), "MIDI 2 : DEVICE 2 128 3 -1 -1 -1 TOGGLE INACTIVE 64") << "the row past the controllers";
    record.expressionPedal.controllerNumber = 2;
    put(model->presetData[0][4], record);
    EXPECT_EQ(shown(1), "MIDI 2 : DEVICE 2 128 -1 2 10 110 TOGGLE INACTIVE 64") << "a controller that is not defined";

    put(model->midiDevices[1], MidiDevice());
    EXPECT_EQ(shown(1), "MIDI 2 :  128 0 2 10 110 none none none");
    const MidiEditorWindow dialog(model.get(), 0, 4, 1, nullptr);
    EXPECT_EQ(dialog.findChild<QComboBox *>("comboBox_controllers")->currentText(), "NO CONTROLLERS DEFINED");
}

TEST_F(Tabs, EditorSendsWhatWasChosen)
{
    const std::string rest = "CC 0 4 3/1/5 2/1/254 2/20/64";
    const std::string rest3 = "CC 0 4 2/1/254 2/20/64 2/2/1 3/1/5";
    const std::string pedal = " | pedal 0 4 2/20/3/10/110";
    const struct
    {
        int slot;
        QVector<Choice> choices;
        std::string sent;
    } cases[] = {
        {1, {}, rest + pedal},
        {1, {{"programChangeNumber", 1}}, "PC 0 4 1 1 | " + rest + pedal},
        {1, {{"programChangeNumber", 0}}, "PC 0 4 1 255 | " + rest + pedal},
        {1, {{"0", 128}, {"1", 129}, {"2", 0}}, "CC 0 4 2/1/255 3/1/5 2/3/254 2/20/0" + pedal},
        {1,
         {{"controllers", 1}, {"characteristic", 0}, {"toeUpValue", 127}, {"toeDownValue", 0}},
         rest + " | pedal 0 4 2/3/1/127/0"},
        {1, {{"controllers", 3}}, rest + " | pedal 0 4 2/255/3/10/110"},
        // device 2 holds the pedal
        {2, {}, rest3},
        {2, {{"controllers", 3}}, rest3},
        {2, {{"controllers", 0}}, rest3 + " | pedal 0 4 3/1/3/10/110"},
        // no controllers are defined
        {3, {{"programChangeNumber", 9}}, "PC 0 4 3 9 | CC 0 4 2/1/254 3/1/5 2/20/64 2/2/1"},
    };
    load();
    put(model->presetData[0][4], preset());
    put(model->midiDevices[3], MidiDevice());
    for (const auto &test : cases) {
        const auto act = [&](MidiEditorWindow &dialog) { choose(dialog, test.choices); };
        answer<MidiEditorWindow>(midiButton(4, test.slot), cancel, act);
        EXPECT_EQ(takeSent(), "");
        answer<MidiEditorWindow>(midiButton(4, test.slot), ok, act);
        EXPECT_EQ(takeSent(), test.sent);
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
    EXPECT_EQ(midiButton(9, 9)->styleSheet(), "border-radius: 5;\ncolor: white;\n text-align: left;\n padding-left: "
                                              "10px;\nbackground-color: #fa830f");
    model->midiDevices[0].store(nullptr);
    EXPECT_FALSE(answer<MidiEditorWindow>(midiButton(9, 0), cancel))
        << "messages that cannot be shown must not be replaced";
}

TEST_F(Tabs, OkAppliesToThePresetTheDialogWasOpenedFor)
{
    load();
    put(model->presetData[0][4], preset());
    const auto replaceModel = [&](bool withRecords) {
        auto next = std::make_unique<DataFromDevice>();
        PresetData record;
        record.controlChanges = {{9, 1, 1}};
        if (withRecords) {
            put(next->presetData[0][4], record);
            put(next->midiDevices[1], device("OTHER"));
        }
        devices.loadDataFromDevice(next.get());
        midi.loadDataFromDevice(next.get());
        model = std::move(next);
        show();
    };

    answer<MidiEditorWindow>(midiButton(4, 1), ok, [&](MidiEditorWindow &dialog) {
        qobject_cast<QPushButton *>(midiTable.cellWidget(0, 0))->click();
        put(model->presetData[1][4], preset(FootswitchType::LoopModifier));
        midi.gotBankAndPresetData(1);
        put(model->midiDevices[1], MidiDevice());
        show();
        choose(dialog, {{"programChangeNumber", 5}});
    });
    EXPECT_EQ(midi.currentBank(), 1);
    EXPECT_EQ(takeSent(), "PC 0 4 1 5 | CC 0 4 3/1/5 2/1/254 2/20/64 | pedal 0 4 2/20/3/10/110");
    qobject_cast<QPushButton *>(midiTable.cellWidget(11, 0))->click();

    replaceModel(true);
    answer<MidiEditorWindow>(midiButton(4, 1), ok, [&](MidiEditorWindow &dialog) {
        value(dialog, 0)->setCurrentIndex(3);
        replaceModel(true);
    });
    EXPECT_EQ(takeSent(), "CC 0 4 9/1/1 2/1/3") << "another unit with this preset has come";
    EXPECT_TRUE(answer<MidiEditorWindow>(midiButton(4, 1), ok, [&](auto &) { replaceModel(false); }));
    EXPECT_EQ(takeSent(), "") << "the record is gone";

    replaceModel(true);
    EXPECT_TRUE(answer<ControllerListWindow>(devicesTable.cellWidget(1, 4), ok, [&](auto &) { replaceModel(false); }));
    EXPECT_EQ(takeSent(), "");
}

TEST_F(Tabs, NamesFromTheUnitShowAsTheyAre)
{
    load();
    const QString name = "R&B <b>x</b>";
    put(model->midiDevices[0], device(name.toStdString()));
    put(model->presetData[0][0], PresetData());
    show();
    EXPECT_EQ(midiButton(0, 0)->text(), name);
    EXPECT_TRUE(midiButton(0, 0)->shortcut().isEmpty()) << "Alt+B must not open an editor";
    answer<MidiEditorWindow>(midiButton(0, 0), ok, [&](MidiEditorWindow &dialog) {
        for (const QLabel *const label : dialog.findChildren<QLabel *>())
            EXPECT_EQ(label->textFormat(), Qt::PlainText) << label->objectName().toStdString();
        const QString tip = dialog.findChild<QLabel *>("label_midiDeviceName")->toolTip();
        EXPECT_EQ(QTextDocumentFragment::fromHtml(tip).toPlainText(), name);
    });

    NameButton shown("#000000");
    shown.setName("R&B");
    QPushButton escaped("R&&B");
    escaped.setStyleSheet(shown.styleSheet());
    escaped.setFont(shown.font());
    shown.resize(90, 38);
    escaped.resize(90, 38);
    EXPECT_EQ(shown.grab().toImage(), escaped.grab().toImage());
}

TEST_F(Tabs, DialogsLeaveNothingBehind)
{
    load();
    put(model->presetData[0][0], PresetData());
    const auto widgets = QApplication::allWidgets().size();
    for (int i = 0; i < 20; ++i) {
        EXPECT_TRUE(answer<MidiEditorWindow>(midiButton(0, 0), i % 2 ? ok : cancel));
        EXPECT_TRUE(answer<ControllerListWindow>(deviceCell<QPushButton>(1, 4), i % 2 ? ok : cancel));
    }
    EXPECT_EQ(QApplication::allWidgets().size(), widgets);
}

// --- Dragging and links

void mouse(QWidget &window, QEvent::Type type, const QPoint &point)
{
    QMouseEvent event(type, point, window.mapToGlobal(point), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &event);
}

TEST(FramelessDialogs, AreDraggedByTheirTopSixtyPixels)
{
    DataFromDevice model;
    AboutWindow about;
    InstallDriversWindow drivers;
    ControllerListWindow controllers(&model, 0, nullptr);
    MidiEditorWindow editor(&model, 0, 0, 0, nullptr);
    for (QWidget *const dialog : std::initializer_list<QWidget *>{&about, &drivers, &controllers, &editor}) {
        EXPECT_EQ(dialog->windowTitle(), "Dialog");
        dialog->move(100, 100);
        mouse(*dialog, QEvent::MouseMove, {5, 5});
        EXPECT_EQ(dialog->pos(), QPoint(100, 100)) << "before a press";
        mouse(*dialog, QEvent::MouseButtonPress, {10, 60});
        mouse(*dialog, QEvent::MouseMove, {40, 80});
        EXPECT_EQ(dialog->pos(), QPoint(100, 100)) << "pressed below the band";
        mouse(*dialog, QEvent::MouseButtonPress, {10, 59});
        mouse(*dialog, QEvent::MouseMove, {40, 80});
        EXPECT_EQ(dialog->pos(), QPoint(130, 121));
        mouse(*dialog, QEvent::MouseButtonRelease, {10, 59});
        mouse(*dialog, QEvent::MouseMove, {0, 0});
        EXPECT_EQ(dialog->pos(), QPoint(130, 121)) << "after the release";
    }
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
    UrlCatcher desktop;
    for (const char *const scheme : {"https", "mailto"})
        QDesktopServices::setUrlHandler(scheme, &desktop, "setSource");
    AboutWindow dialog;
    for (const char *const name : {"label_about", "label_footer"}) {
        auto *const label = dialog.findChild<QLabel *>(name);
        EXPECT_FALSE(label->openExternalLinks());
        emit label->linkActivated(label->text().section('"', 1, 1));
    }
    dialog.findChild<QPushButton *>("pushButton_logo")->click();
    EXPECT_EQ(desktop.opened.join(' '),
              "https://example.com/kora/editor mailto:kora@example.com https://example.com/kora");
    for (const char *const scheme : {"https", "mailto"})
        QDesktopServices::unsetUrlHandler(scheme);
}

// --- From the widgets to the unit

/// Joins the tabs to a unit on a line of its own.
struct TabsOnUnit : Tabs
{
    TabsOnUnit()
    {
        using Controller = DeviceController;
        QObject::connect(&controller, &Controller::found, &midi, [this](DataFromDevice *data) {
            found = data;
            devices.loadDataFromDevice(data);
            midi.loadDataFromDevice(data);
            midi.requestBank();
        });
        QObject::connect(&controller, &Controller::error, &midi, [this](const QString &text) { errors << text; });
        QObject::connect(&controller, &Controller::gotMidiDevicesData, &devices, &TabMidiDevices::gotMidiDevicesData);
        QObject::connect(&controller, &Controller::gotMidiDevicesData, &midi, &TabMidi::gotMidiDevicesData);
        QObject::connect(&controller, &Controller::gotBankAndPresetData, &midi, &TabMidi::gotBankAndPresetData);
        const auto forward = [this](auto &tab, auto signal, auto slot) {
            QObject::connect(&tab, signal, &controller, slot);
        };
        using Devices = TabMidiDevices;
        forward(midi, &TabMidi::getMidiDevicesData, &Controller::getMidiDevicesData);
        forward(midi, &TabMidi::getBankAndPresetData, &Controller::getBankAndPresetData);
        forward(midi, &TabMidi::changeProgramChangeNumber, &Controller::changeProgramChangeNumber);
        forward(midi, &TabMidi::changeControlChangeData, &Controller::changeControlChangeData);
        forward(midi, &TabMidi::changePresetExpressionPedal, &Controller::changePresetExpressionPedal);
        forward(devices, &Devices::changeMidiDeviceNameSignal, &Controller::changeMidiDeviceName);
        forward(devices, &Devices::changeMidiDeviceChannelSignal, &Controller::changeMidiDeviceChannel);
        forward(devices, &Devices::controllersNamesOrNumberChanged, &Controller::controllersNamesOrNumberChanged);
        QObject::connect(&worker, &QThread::started, &controller, &Controller::searchDevice);
        controller.moveToThread(&worker);
        worker.start();
    }
    ~TabsOnUnit() override
    {
        worker.requestInterruption();
        worker.quit();
        worker.wait();
    }

    UnitPort unit;
    QThread worker;
    DeviceController controller{[this] { return QStringList(QString::fromStdString(unit.location())); }};
    DataFromDevice *found = nullptr;
    QStringList errors;
};

TEST_F(TabsOnUnit, DefineADeviceAndLetAPresetSendToIt)
{
    const auto waitFor = [](auto condition) { return QTest::qWaitFor(condition, 5000); };
    ASSERT_TRUE(waitFor([&] { return found && found->presetData[0][9].load(); }));
    ASSERT_TRUE(waitFor([&] { return midiButton(0, 1)->text() == "HALLRÄUME"; }));

    deviceCell<QLineEdit>(10, 0)->setText("ORGUE À ROUE");
    QTest::keyClick(deviceCell<QLineEdit>(10, 0), Qt::Key_Return);
    deviceCell<QComboBox>(10, 1)->setCurrentIndex(4);
    answer<ControllerListWindow>(deviceCell<QPushButton>(10, 4), ok, [](ControllerListWindow &dialog) {
        auto *const table = dialog.findChild<QTableWidget *>();
        for (const int row : {0, 4}) {
            qobject_cast<QLineEdit *>(table->cellWidget(row, 1))->setText(row ? "ROTOR" : "VOLUME");
            qobject_cast<QComboBox *>(table->cellWidget(row, 2))->setCurrentIndex(row ? 80 : 7);
        }
    });
    ASSERT_TRUE(waitFor([&] { return deviceCell<QComboBox>(10, 5)->itemText(4) == "ROTOR"; }));
    MidiDevice organ = musicianContent().midiDevices[9];
    organ.name = "ORGUE À ROUE";
    organ.channel = 4;
    organ.controllers[0] = {"VOLUME", 7};
    organ.controllers[4] = {"ROTOR", 80};
    EXPECT_EQ(unit.memory().midiDevices[9], organ);

    unit.takeRequests();
    answer<MidiEditorWindow>(midiButton(0, 9), ok, [](MidiEditorWindow &dialog) {
        choose(dialog, {{"programChangeNumber", 12}, {"0", 100}, {"1", 129}, {"controllers", 1}});
        choose(dialog, {{"characteristic", 2}, {"toeUpValue", 10}, {"toeDownValue", 110}});
    });
    ASSERT_TRUE(waitFor([&] { return found->presetData[0][0].load()->expressionPedal.toeDown == 110; }));
    const PresetData clean = unit.memory().presets[0][0];
    EXPECT_EQ(clean.programChanges[9], 12);
    EXPECT_EQ(text(clean.controlChanges), "1/3/0 3/1/0 10/1/100 10/5/254");
    EXPECT_EQ(text(clean.expressionPedal), "10/5/3/10/110");
    QStringList requests;  // with | for GS, ; for RS and , for US
    for (const std::string &request : unit.takeRequests())
        requests << QString::fromStdString(request).replace('\x1d', '|').replace('\x1e', ';').replace('\x1f', ',');
    ASSERT_EQ(requests.size(), 3);
    EXPECT_EQ(requests[0], "WBP|A0|B0|Gj12|D0");
    EXPECT_TRUE(requests[1].startsWith("WBP|A0|B0|GAA1,B3,C0;BA3,B1,C0;CA10,B1,C100;DA10,B5,C254;EA20,B5,C255;"));
    EXPECT_EQ(requests[2], "WBP|A0|B0|GnA10,B5,C3,D10,E110|D0");

    // The next edit finds room for new messages, although the list sent before was full.
    answer<MidiEditorWindow>(midiButton(0, 1), ok, [](auto &dialog) { choose(dialog, {{"2", 77}}); });
    const std::string list = "1/3/0 3/1/0 10/1/100 10/5/254 2/3/77";
    EXPECT_TRUE(waitFor([&] { return text(unit.memory().presets[0][0].controlChanges) == list; }));
    EXPECT_EQ(errors, QStringList());
}

}  // namespace
