#include "ui/editor.h"

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTimer>

using namespace std::chrono_literals;

namespace {

const QString timeout = "Receiving timeout";

struct Trouble
{
    const char *name;
    Fault fault;
    QString message;  ///< what the exchange fails with; empty when it succeeds nevertheless
    bool carriedOut;  ///< the unit did what the spoiled exchange asked for
};

const Trouble troubles[] = {
    {"Silence", Fault::silence(), timeout, false},
    {"LateAnswer", Fault::lateAnswer(300ms), "", true},
    {"AnswerAfterTheTimeout", Fault::lateAnswer(2100ms), timeout, true},
    {"SlowBytes", Fault::slowBytes(2ms), "", true},
    {"Noise", Fault::noise(), "", true},
    {"WrongChecksum", Fault::wrongChecksum(), "Incorrect Checksum", true},
    {"CutOff", Fault::cutOff(), timeout, true},
    {"ZeroByte", Fault::zeroByte(), "Incorrect Checksum", true},
    {"ErrorStatus", Fault::errorStatus(99, "<h1>Worn</h1> out"), "<h1>Worn</h1> out", false},
    {"EndlessStream", Fault::endlessStream(), timeout, false},
    {"HangUp", Fault::hangUp(), timeout, true},
};

/// One exchange of the running editor is spoiled. `reports` collects all that the user is told: message boxes as
/// "title|text" and losses of the unit as the status and firmware labels, each followed by what `observe` sees then.
class Faults : public Editor, public testing::WithParamInterface<Trouble>
{
protected:
    Faults()
    {
        unit.alter([](UnitMemory &memory) {
            memory.settings.keyboardType = KeyboardType::Qwerty;
            memory.settings.clickProtection = ClickProtection::Low;
            memory.deviceInfo.firmwareMajor = 3;
            memory.deviceInfo.firmwareMinor = 14;
        });
        QObject::connect(&window, &MainWindow::connected, [this](DataFromDevice *found) { model = found; });
        QObject::connect(&window, &MainWindow::searchForDevice, [this] { report(status(), firmware()); });
        QObject::connect(&dialogs, &QTimer::timeout, [this] { answerDialog(); });
        dialogs.start(5);
    }

    /// The next healthy exchange works, whatever came before.
    void TearDown() override
    {
        reports.clear();
        unit.alter([](UnitMemory &memory) { memory.settings.clickProtection = ClickProtection::High; });
        click("pushButton_settingsTab");
        const auto &box = find<QComboBox>("comboBox_clickProtection");
        EXPECT_TRUE(becomes([&] { return box.currentText() == "HIGH"; }));
        EXPECT_EQ(reports, QStringList());
        EXPECT_TRUE(isConnected());
        Editor::TearDown();
    }

    void report(const QString &heading, const QString &text)
    {
        reports << QStringList({heading, text, observe()}).join('|');
    }

    void answerDialog()
    {
        QWidget *const dialog = QApplication::activeModalWidget();
        if (auto *const files = qobject_cast<QFileDialog *>(dialog)) {
            files->findChild<QLineEdit *>("fileNameEdit")->setText(folder.filePath("image.bin"));
            static_cast<QDialog *>(files)->done(QDialog::Accepted);
        } else if (auto *const box = qobject_cast<QMessageBox *>(dialog)) {
            report(box->windowTitle(), box->text());
            if (box->windowTitle() == "Error") {
                EXPECT_EQ(box->textFormat(), Qt::PlainText);
                EXPECT_EQ(box->icon(), QMessageBox::Critical);
                EXPECT_EQ(box->standardButtons(), QMessageBox::Ok);
            }
            box->button(QMessageBox::Ok)->click();
        }
    }

    /// What the user is told of a spoiled exchange.
    static QStringList expectedReports(const QString &observed)
    {
        const QString message = GetParam().message;
        if (message.isEmpty()) return {};
        return {(message == timeout ? "DEVICE DISCONNECTED|" : "Error|" + message) + '|' + observed};
    }

    /// Spoils the exchange after `healthy` ones while `act` runs; a unit that hung up is plugged in again. Waits until
    /// the user was told or the work is done, and the editor has recovered.
    void spoil(std::size_t healthy, const std::function<void()> &act, const std::function<bool()> &isDone)
    {
        unit.queueFault(GetParam().fault, healthy);
        act();
        const bool fails = !GetParam().message.isEmpty();
        ASSERT_TRUE(becomes([&] { return fails ? !reports.isEmpty() : isDone(); }));
        if (unit.location().empty()) unit.plugIn();
        ASSERT_TRUE(becomes([this] { return isConnected() && !QApplication::activeModalWidget(); }));
        ASSERT_TRUE(settles());
    }

    QString firmware() const { return find<QLabel>("label_deviceFirmware").text(); }
    QComboBox &keyboard() const { return find<QComboBox>("comboBox_keyboardType"); }
    KeyboardType modelledKeyboard() const { return model->settings.load()->keyboardType; }

    QTemporaryDir folder;
    QTimer dialogs;
    QStringList reports;
    std::function<QString()> observe = [] { return QString(); };
    DataFromDevice *model = nullptr;
};

}  // namespace

TEST_P(Faults, InARead)
{
    click("pushButton_settingsTab");
    ASSERT_TRUE(becomes([this] { return keyboard().currentText() == "QWERTY"; }));
    unit.alter([](UnitMemory &memory) { memory.settings.keyboardType = KeyboardType::Azerty; });
    observe = [this] { return keyboard().currentText() + (modelledKeyboard() == KeyboardType::Qwerty ? "=" : "!"); };
    spoil(
        0, [this] { click("pushButton_settingsTab"); }, [this] { return keyboard().currentText() == "AZERTY"; });
    EXPECT_EQ(reports, expectedReports("QWERTY="));
    click("pushButton_settingsTab");
    EXPECT_TRUE(becomes([this] { return keyboard().currentText() == "AZERTY"; }));
}

TEST_P(Faults, InAChange)
{
    click("pushButton_settingsTab");
    ASSERT_TRUE(becomes([this] { return keyboard().currentText() == "QWERTY"; }));
    observe = [this] { return modelledKeyboard() == KeyboardType::Qwerty ? "old" : "new"; };
    spoil(
        0, [this] { choose(keyboard(), "AZERTY"); }, [this] { return modelledKeyboard() == KeyboardType::Azerty; });
    EXPECT_EQ(reports, expectedReports("old"));
    const KeyboardType kept = GetParam().carriedOut ? KeyboardType::Azerty : KeyboardType::Qwerty;
    EXPECT_EQ(unit.memory().settings.keyboardType, kept);
    click("pushButton_settingsTab");  // what the unit holds shows again, and can be changed
    EXPECT_TRUE(becomes([&] { return keyboard().currentText() == (GetParam().carriedOut ? "AZERTY" : "QWERTY"); }));
    choose(keyboard(), GetParam().carriedOut ? "QWERTY" : "AZERTY");
    EXPECT_TRUE(becomes([&] { return unit.memory().settings.keyboardType != kept; }));
}

TEST_P(Faults, InTheMiddleOfABank)
{
    const auto lastName = [this] { return cell<QLineEdit>("footswitchFunction", 10, 4).text(); };
    const auto page = [this](int arrowRow) { cell<QPushButton>("footswitchFunction", arrowRow, 0).click(); };
    const QString nameOfBank0 = lastName();
    unit.alter([](UnitMemory &memory) { memory.presets[1][9].name = "Encore"; });
    observe = [this] {
        const auto &presets = model->presetData[1];
        return QString::number(std::count_if(presets.begin(), presets.end(), [](auto &slot) { return !!slot.load(); }));
    };
    spoil(
        4, [&] { page(0); }, [&] { return lastName() == "Encore"; });
    EXPECT_EQ(reports, expectedReports("3"));
    // A unit that is found again is asked for the shown bank; otherwise the user pages back and forth.
    const bool isAsked = GetParam().message.isEmpty() || GetParam().message == timeout;
    EXPECT_EQ(lastName(), isAsked ? "Encore" : nameOfBank0);
    page(0);
    page(11);
    EXPECT_TRUE(becomes([&] { return lastName() == "Encore"; }));
    EXPECT_TRUE(settles());
}

TEST_P(Faults, InTheFirmwareUpload)
{
    QFile image(folder.filePath("image.bin"));
    ASSERT_TRUE(image.open(QIODevice::WriteOnly) && image.write(QByteArray(2000, 'k')) == 2000);
    image.close();
    const std::vector<std::uint8_t> before = unit.memory().firmware;
    const std::vector<std::uint8_t> sent(2000, 'k');
    const QString complete = "UPLOAD COMPLETE|NOW KORA WILL RESTART AND INSTALL NEW FIRMWARE.\n"
                             "AFTER INSTALATION, PLEASE RESTART THIS PROGRAM|DEVICE CONNECTED";
    observe = [this] { return status(); };
    const auto isTold = [this] { return !reports.isEmpty(); };
    spoil(
        2, [this] { window.updateFirmware(); }, isTold);
    const bool fails = !GetParam().message.isEmpty();
    EXPECT_EQ(reports, QStringList(fails ? "UPLOAD FAILED|FIRMWARE UPLOAD FAILED|DEVICE CONNECTED" : complete));
    EXPECT_EQ(unit.memory().firmware, fails ? before : sent);
    EXPECT_FALSE(find<QLabel>("label_loading").isVisible());
    EXPECT_TRUE(find<QWidget>("widget_presets").isEnabled());
    if (fails) {
        QTest::qWait(200);                // an answer that is late comes and goes: identifiers are not compared
        click("pushButton_settingsTab");  // a unit that hung up is found again
        ASSERT_TRUE(becomes([this] { return keyboard().currentText() == "QWERTY"; }) && settles());
        reports.clear();
        window.updateFirmware();
        ASSERT_TRUE(becomes(isTold));
        EXPECT_EQ(reports, QStringList(complete));
        EXPECT_EQ(unit.memory().firmware, sent);
    }
    QTest::qWait(100);  // the unit restarts
}

TEST_P(Faults, InTheSearch)
{
    for (const std::size_t exchange : {0U, 1U}) {  // the probe takes any answer; then the identity is read
        unit.unplug();
        click("pushButton_settingsTab");
        ASSERT_TRUE(becomes([this] { return !isConnected(); }));
        reports.clear();
        unit.queueFault(GetParam().fault, exchange);
        unit.plugIn();
        ASSERT_TRUE(becomes([this] { return unit.location().empty() || isConnected(); }));
        if (unit.location().empty()) unit.plugIn();
        const bool isUnread = exchange == 1 && GetParam().message != timeout && !GetParam().message.isEmpty();
        const QString version = isUnread ? "FIRMWARE 0.0" : "FIRMWARE 3.14";
        EXPECT_TRUE(becomes([&] { return isConnected() && firmware() == version && settles(); }));
        EXPECT_EQ(reports, exchange == 0 ? QStringList() : expectedReports(""));
    }
}

INSTANTIATE_TEST_SUITE_P(EveryKind, Faults, testing::ValuesIn(troubles),
                         [](const auto &row) { return std::string(row.param.name); });
