// One exchange of the running editor is spoiled, in each of its works.

#include "ui/editor.h"

#include <QFileDialog>
#include <QTemporaryDir>

using namespace std::chrono_literals;

namespace {

const QString lost = "DEVICE DISCONNECTED";

struct Trouble
{
    const char *name;
    Fault fault;
    QString told;     ///< what the user is told; empty when the exchange succeeds nevertheless
    bool carriedOut;  ///< the unit did what the spoiled exchange asked for
};

const Trouble troubles[] = {
    {"Silence", Fault::silence(), lost, false},
    {"LateAnswer", Fault::lateAnswer(60ms), "", true},
    {"AnswerAfterTheTimeout", Fault::lateAnswer(2200ms), lost, true},
    {"SlowBytes", Fault::slowBytes(2ms), "", true},
    {"Noise", Fault::noise(), "", true},
    {"WrongChecksum", Fault::wrongChecksum(), "Error|Incorrect Checksum", true},
    {"CutOff", Fault::cutOff(), lost, true},
    {"ZeroByte", Fault::zeroByte(), "Error|Incorrect Checksum", true},
    {"ErrorStatus", Fault::errorStatus(99, "<h1>Worn</h1> out"), "Error|<h1>Worn</h1> out", false},
    {"EndlessStream", Fault::endlessStream(), lost, false},
    {"HangUp", Fault::hangUp(), lost, true},
};

class Faults : public Editor, public testing::WithParamInterface<Trouble>
{
protected:
    Faults() : Editor(musicianContent(), GetParam().told == lost ? shortTimeouts : patientTimeouts)
    {
        unit.alter([](UnitMemory &memory) {
            memory.settings.keyboardType = KeyboardType::Qwerty;
            memory.deviceInfo.firmwareMajor = 3;
            memory.deviceInfo.firmwareMinor = 14;
        });
        QObject::connect(&window, &MainWindow::searchForDevice, [this] {
            told << status();
            EXPECT_EQ(firmware(), "");
        });
        QObject::connect(&window, &MainWindow::connected, [this](DataFromDevice *found) { model = found; });
    }

    bool fails() const { return !GetParam().told.isEmpty(); }

    /// Spoils the exchange after `healthy` ones while `act` runs; a unit that hung up is plugged in again. Waits until
    /// the user was told or the work is done, and the editor has recovered.
    void spoil(std::size_t healthy, const std::function<void()> &act, const std::function<bool()> &isDone)
    {
        std::shared_ptr<QString> box;
        if (GetParam().told.startsWith("Error")) box = nextBox();
        unit.queueFault(GetParam().fault, healthy);
        act();
        ASSERT_TRUE(becomes([&] { return !fails() ? isDone() : box ? !box->isEmpty() : !told.isEmpty(); }));
        if (unit.location().empty()) unit.plugIn();
        ASSERT_TRUE(becomes([this] { return isConnected() && settles() && isConnected(); }));
        if (box) told << *box;
        EXPECT_EQ(toldOnce().join(' '), GetParam().told);
        told.clear();
    }

    /// A unit that is plugged in again at once can be lost once more with its old terminal.
    QStringList toldOnce()
    {
        told.removeDuplicates();
        return told;
    }
    QString firmware() const { return find<QLabel>("label_deviceFirmware").text(); }
    QComboBox &keyboard() const { return find<QComboBox>("comboBox_keyboardType"); }
    void openSettings(const char *keyboardShown)
    {
        click("pushButton_settingsTab");
        EXPECT_TRUE(settles());
        EXPECT_EQ(keyboard().currentText(), keyboardShown);
    }

    QStringList told;
    DataFromDevice *model = nullptr;
};

class LongFaults : public Faults  // with one fault of each consequence
{};

std::string nameOf(const testing::TestParamInfo<Trouble> &row) { return row.param.name; }

}  // namespace

TEST_P(Faults, InAChange)
{
    openSettings("QWERTY");
    const KeyboardType kept = GetParam().carriedOut ? KeyboardType::Azerty : KeyboardType::Qwerty;
    spoil(
        0, [this] { choose(keyboard(), "AZERTY"); },
        [&] { return model->settings.load()->keyboardType == KeyboardType::Azerty; });
    EXPECT_EQ(unit.memory().settings.keyboardType, kept);
    openSettings(GetParam().carriedOut ? "AZERTY" : "QWERTY");
    choose(keyboard(), GetParam().carriedOut ? "QWERTY" : "AZERTY");
    EXPECT_TRUE(settles());
    EXPECT_NE(unit.memory().settings.keyboardType, kept);
}

TEST_P(Faults, InTheMiddleOfABank)
{
    unit.alter([](UnitMemory &memory) { memory.presets[1][9].name = "Encore"; });
    QLineEdit &firstName = edit("footswitchFunction", 1, 4);
    QLineEdit &lastName = edit("footswitchFunction", 10, 4);
    spoil(
        4, [&] { clickCell("footswitchFunction", 0, 0); }, [&] { return lastName.text() == "Encore"; });
    // A unit that is found again is asked for the shown bank. What stays unread shows as such, and is asked for again.
    EXPECT_EQ(edit("footswitchFunction", 1, 0).text(), "1");
    EXPECT_EQ(firstName.text().toStdString(), unit.memory().presets[1][0].name);
    const bool unread = GetParam().told.startsWith("Error");
    EXPECT_EQ(lastName.text(), unread ? "" : "Encore");
    EXPECT_EQ(box("footswitchFunction", 10, 2).currentIndex() == -1, unread);
    click("pushButton_presetsTab");
    EXPECT_TRUE(settles());
    EXPECT_EQ(lastName.text(), "Encore");
}

TEST_P(LongFaults, InTheSearch)
{
    for (const std::size_t exchange : {0U, 1U}) {  // the probe takes any answer; then the identity is read
        unit.unplug();
        click("pushButton_settingsTab");
        ASSERT_TRUE(becomes([this] { return !isConnected(); }));
        told.clear();
        const bool isTold = exchange == 1 && GetParam().told.startsWith("Error");
        const auto box = isTold ? nextBox() : nullptr;
        unit.queueFault(GetParam().fault, exchange);
        unit.plugIn();
        ASSERT_TRUE(becomes([this] { return unit.location().empty() || isConnected(); }));
        const bool hungUp = unit.location().empty();
        if (hungUp) unit.plugIn();
        const QString version = isTold ? "FIRMWARE 0.0" : "FIRMWARE 3.14";
        EXPECT_TRUE(becomes([&] { return isConnected() && firmware() == version && settles(); }));
        EXPECT_TRUE(!box || *box == GetParam().told);
        if (hungUp && exchange == 0) told.clear();  // it may be lost once more with its old terminal
        EXPECT_EQ(toldOnce(), exchange == 1 && GetParam().told == lost ? QStringList(lost) : QStringList());
    }
}

TEST_P(LongFaults, InTheFirmwareUpload)
{
    const QTemporaryDir folder;
    QFile image(folder.filePath("image.bin"));
    ASSERT_TRUE(image.open(QIODevice::WriteOnly) && image.write(QByteArray(2000, 'k')) == 2000);
    image.close();
    const std::vector<std::uint8_t> before = unit.memory().firmware;
    const std::vector<std::uint8_t> sent(2000, 'k');
    const auto upload = [&] {
        onDialog([&](QWidget &dialog) {
            dialog.findChild<QLineEdit *>("fileNameEdit")->setText(image.fileName());
            static_cast<QDialog &>(dynamic_cast<QFileDialog &>(dialog)).done(QDialog::Accepted);
        });
        const auto box = nextBox();
        window.updateFirmware();
        EXPECT_TRUE(becomes([&] { return !box->isEmpty() && settles(); }));
        EXPECT_FALSE(find<QLabel>("label_loading").isVisible());
        EXPECT_TRUE(find<QWidget>("widget_presets").isEnabled());
        return *box;
    };
    const QString complete = "UPLOAD COMPLETE|NOW KORA WILL RESTART AND INSTALL NEW FIRMWARE.\n"
                             "AFTER INSTALATION, PLEASE RESTART THIS PROGRAM";
    unit.queueFault(GetParam().fault, allRecords().size() + 2);  // a safety copy comes first
    EXPECT_EQ(upload(), fails() ? "UPLOAD FAILED|FIRMWARE UPLOAD FAILED" : complete);
    EXPECT_EQ(unit.memory().firmware, fails() ? before : sent);
    if (fails()) {
        QTest::qWait(120);  // an answer that is late comes and goes: identifiers are not compared
        if (unit.location().empty()) unit.plugIn();
        openSettings("QWERTY");
        ASSERT_TRUE(becomes([this] { return isConnected() && settles(); }));
        EXPECT_EQ(upload(), complete);
        EXPECT_EQ(unit.memory().firmware, sent);
    }
}

INSTANTIATE_TEST_SUITE_P(EveryKind, Faults, testing::ValuesIn(troubles), nameOf);
INSTANTIATE_TEST_SUITE_P(EveryConsequence, LongFaults,
                         testing::Values(troubles[0], troubles[1], troubles[5], troubles[8], troubles[10]), nameOf);

/// With the timeouts of the product.
class RealTimeouts : public Editor
{
protected:
    RealTimeouts() : Editor(musicianContent(), {}) {}
};

TEST_F(RealTimeouts, AreOneSecondForTheSearchAndTwoForAnAnswer)
{
    QElapsedTimer clock;
    unit.queueFault(Fault::lateAnswer(1200ms));
    click("pushButton_settingsTab");
    EXPECT_TRUE(settles());
    EXPECT_TRUE(isConnected());
    unit.queueFault(Fault::silence());
    unit.queueFault(Fault::lateAnswer(400ms), 0);
    unit.queueFault(Fault::lateAnswer(1200ms), 1);
    clock.start();
    click("pushButton_settingsTab");
    ASSERT_TRUE(becomes([this] { return !isConnected(); }));
    EXPECT_GE(clock.elapsed(), 1950);
    EXPECT_LT(clock.elapsed(), 3900);
    ASSERT_TRUE(becomes([this] { return isConnected() && settles(); }));
}

TEST_F(RealTimeouts, AChangeThatTakesLongIsMarkedAtTheStatus)
{
    click("pushButton_settingsTab");
    ASSERT_TRUE(settles());
    const QLabel &mark = find<QLabel>("label_pending");
    const std::pair<Fault, const char *> slowOnes[] = {{Fault::lateAnswer(1200ms), "AZERTY"},
                                                       {Fault::silence(), "QWERTY"}};
    for (const auto &[slow, type] : slowOnes) {
        QElapsedTimer clock;
        clock.start();
        unit.queueFault(slow);
        choose(find<QComboBox>("comboBox_keyboardType"), type);
        ASSERT_TRUE(becomes([&] { return mark.isVisible(); }));
        EXPECT_GE(clock.elapsed(), 270);
        ASSERT_TRUE(becomes([&] { return !mark.isVisible(); }));
    }
    ASSERT_TRUE(becomes([this] { return isConnected() && settles(); }));
}
