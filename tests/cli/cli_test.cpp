// The program as scripts run it: a process beside the virtual unit.

#include "archive/unitfile.h"
#include "model/differences.h"
#include "simulator/unitport.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryDir>

#include <csignal>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

struct Result
{
    int status;
    std::string out, err;
};

// What a backup is told to differ in from a unit that `backUpAndAlter` has altered.
const std::string twoLines = "SETTINGS: KEYBOARD TYPE: AZERTY -> QWERTY\nBANK 3: NAME: CHANGED -> ÜBER DEN DÄCHERN\n";
const std::string twoInAll = "2 values differ in 1 bank, global settings\n";

class Cli : public testing::Test
{
protected:
    Cli()
    {
        unit.alter([](UnitMemory &memory) { memory.expressionPedal.onTheFlyMode = false; });  // is never reported
        saved = unit.memory();
        qputenv("XDG_DATA_HOME", path("data").toUtf8());
        qputenv("LC_ALL", "C");
        std::signal(SIGINT, SIG_DFL);
    }

    /// Runs the program with some words and input; `shell` is what a shell makes of them ("$0" is the program).
    Result run(const QString &words, const QByteArray &input = {}, const QString &shell = "exec \"$0\" \"$@\"")
    {
        const std::string port = unit.location();
        QProcess process;
        process.setWorkingDirectory(folder.path());
        QStringList arguments{"-c", shell, KORA_CLI};
        if (!words.contains("--port")) arguments << "--port" << QString::fromStdString(port.empty() ? "none" : port);
        process.start("bash", arguments + words.split(' '));
        EXPECT_TRUE(process.waitForStarted());
        child = static_cast<pid_t>(process.processId());
        process.write(input);
        process.closeWriteChannel();
        EXPECT_TRUE(process.waitForFinished(60000) && process.exitStatus() == QProcess::NormalExit);
        const QByteArray error = process.readAllStandardError();
        EXPECT_EQ(error.count('\n'), error.isEmpty() ? 0 : 1) << error.constData();
        return {process.exitCode(), process.readAllStandardOutput().toStdString(), error.toStdString()};
    }
    void expect(const QString &words, int status, const std::string &out, const std::string &err = {})
    {
        const Result result = run(words);
        EXPECT_EQ(result.status, status) << words.toStdString();
        EXPECT_EQ(result.out, out) << words.toStdString();
        EXPECT_EQ(result.err, err.empty() ? "" : "kora-cli: " + err + '\n');
    }
    QJsonObject json(const QString &words, const QByteArray &input = {})
    {
        return QJsonDocument::fromJson(QByteArray::fromStdString(run("--json " + words, input).out)).object();
    }
    /// The unit holds what is expected; control changes in any order.
    void expectContent(const UnitContent &expected)
    {
        for (const Difference &difference : differences(unit.memory(), expected, allRecords()))
            ADD_FAILURE() << (difference.place + ": " + difference.from + ", not " + difference.to).toStdString();
    }
    QString path(const char *name) const { return folder.filePath(name); }
    /// Makes the unit hold two values otherwise than a.kora, which holds all that it held.
    void backUpAndAlter()
    {
        expect("backup a.kora", 0, "a.kora holds 1115 records of the unit.\n");
        unit.alter([](UnitMemory &memory) {
            memory.banks[3].name = "CHANGED";
            memory.settings.keyboardType = KeyboardType::Azerty;
        });
    }

    QTemporaryDir folder;
    UnitPort unit;
    UnitContent saved;  ///< what the unit holds at first
    std::atomic<pid_t> child = 0;
};

}  // namespace

TEST_F(Cli, InfoReadsNothingElseAndNeedsNoLibraryOfTheDesktop)
{
    const std::string port = unit.location();
    unit.recordRequests();
    expect("info", 0, "Port:      " + port + "\nTexts:     KORA, VIRTUAL UNIT\nFirmware:  1.4\nNumbers:   2, 1017\n");
    EXPECT_EQ(unit.takeRequests(), (std::vector<std::string>{"RDI", "RDI"}));
    const QJsonArray texts{"KORA", "VIRTUAL UNIT"}, numbers{2, 1017};
    EXPECT_EQ(json("info"),
              (QJsonObject{{"port", port.c_str()}, {"texts", texts}, {"firmware", "1.4"}, {"numbers", numbers}}));
    const std::string libraries = run("", {}, "ldd \"$0\"").out;
    EXPECT_TRUE(libraries.find("Qt5Core") != std::string::npos && libraries.find("Qt5Gui") == std::string::npos);
}

TEST_F(Cli, ABackupIsComparedAndRestored)
{
    backUpAndAlter();
    EXPECT_EQ(archive::load(path("a.kora")).content, saved);
    expect("compare a.kora", 1, twoLines + twoInAll);
    expect("compare a.kora --quiet", 1, "");
    expect("restore a.kora --dry-run", 1, twoLines + twoInAll);
    expect("restore a.kora", 2, "", "there is no terminal to ask on: --yes is needed");
    EXPECT_EQ(unit.memory().banks[3].name, "CHANGED");

    const QJsonObject setting{{"place", "SETTINGS: KEYBOARD TYPE"}, {"from", "AZERTY"}, {"to", "QWERTY"}};
    EXPECT_EQ(json("restore a.kora --only settings,midi-in --yes"),
              (QJsonObject{{"differences", QJsonArray{setting}}, {"written", 1}, {"remaining", QJsonArray{}}}));
    expect("restore a.kora --banks 0-2,4 --yes", 0, "No value differs\n");
    EXPECT_EQ(run("restore - --yes --banks 3", {}, "exec \"$0\" \"$@\" <a.kora").status, 0);
    expectContent(saved);
    expect("compare a.kora", 0, "No value differs\n");

    // The safety copies are where the editor looks for them; this one is from before both.
    const QDir copies(path("data/kora/safety"));
    EXPECT_EQ(run("restore --yes " + copies.filePath(copies.entryList({"kora-*[0-9][0-9][0-9].kora"}).value(0))).status,
              0);
    EXPECT_EQ(run("compare a.kora").out, twoLines + twoInAll);
}

TEST_F(Cli, FilesAreComparedAndShownWithoutAUnit)
{
    backUpAndAlter();
    unit.alter([](UnitMemory &memory) { memory.expressionPedal.calibrationUp = 7; });
    EXPECT_EQ(run("backup b.kora").status, 0);
    unit.unplug();
    const std::string apart = "SET ON THE UNIT, NOT COUNTED:\nEXPRESSION PEDAL: CALIBRATION UP VALUE: 7 -> 212\n";
    expect("compare b.kora a.kora", 1, twoLines + apart + twoInAll);
    // What a file leaves out is as in the other; what no label fits stands as its number.
    const QByteArray part = R"({"format": "kora-unit", "version": 1, "expressionPedal": {"calibrationUp": 8},
        "midiDevices": [{"number": 2, "name": "ECHO", "controllers": [)" +
                            QByteArray(R"({"name": "MIX", "number": 17},)").repeated(20).chopped(1) + R"(]}], "banks": [
        {"number": 4, "name": "\u001b[m", "presets": [{"number": 5, "switches": ["ON", "OFF", "ON", 9, "ON", "ON"],
        "controlChanges": [{"device": 2, "controller": 20, "value": "TOGGLE"}, {"device": 3, "controller": 1, "value": 5}],
        "programChanges": [null, 7, null, null, null, null, null, null, null, null]}]}]})";
    const QJsonObject compared = json("compare - a.kora", part);
    EXPECT_EQ(compared["differences"].toArray().size(), 39 + 1 + 6 + 2 + 1);
    EXPECT_EQ(compared["setOnUnit"].toArray().size(), 1);
    const std::string shown = run("show - --banks 4", part).out;
    EXPECT_TRUE(shown.starts_with("BANK 4  \"\\x{1b}[m\"\n  WAH PAD 1 ACTION          ADD\n")) << shown;
    EXPECT_TRUE(shown.find(R"(
    SWITCH                    1 ON, 2 OFF, 3 ON, 4 9, 5 ON, 6 ON
    CONTROL CHANGE            ECHO MIX TOGGLE, MIDI 3 CONTROLLER 1 5
    PROGRAM CHANGE OF MIDI    ECHO 7
)") != std::string::npos)
        << shown;
}

TEST_F(Cli, BanksAndPresetsAreCopiedSwappedAndCleared)
{
    for (const char *words : {"copy 7.3 8.0", "swap 9 10", "copy 11 12", "clear --banks 7 --yes"})
        EXPECT_EQ(run(words).status, 0) << words;
    saved.presets[8][0] = saved.presets[7][3];
    std::swap(saved.presets[9], saved.presets[10]);
    std::swap(saved.banks[9], saved.banks[10]);
    std::tie(saved.banks[12], saved.presets[12]) = std::tie(saved.banks[11], saved.presets[11]);
    std::tie(saved.banks[7], saved.presets[7]) = std::tuple(BankData(), UnitContent().presets[7]);
    expectContent(saved);
    EXPECT_EQ(run("clear --all --yes").status, 0);
    std::vector<Difference> left = differences(unit.memory(), emptyContent(), allRecords());
    std::erase_if(left, [](const Difference &difference) { return difference.setOnUnit; });
    EXPECT_TRUE(left.empty());
}

TEST_F(Cli, FirmwareIsUploaded)
{
    const auto firmware = [this](int size, int status, const std::string &err) {
        const Result result = run("firmware - --yes", QByteArray(size, 'F'));
        EXPECT_EQ(result.status, status);
        EXPECT_EQ(result.err, err);
    };
    firmware(0, 5, "kora-cli: -: the firmware image is empty\n");
    firmware(983041, 5, "kora-cli: -: the firmware image is too large\n");
    unit.queueFault(Fault::errorStatus(7, "Low\x1b[7m\nbattery"), 1 + 1115 + 2);  // the search, the copy, two chunks
    firmware(2000, 4,
             "kora-cli: Low\\x{1b}[7m\\x{0a}battery: the firmware was not installed, 2 of 4 chunks were sent\n");
    EXPECT_TRUE(unit.memory().firmware.empty());
    firmware(2000, 0, "");
    EXPECT_EQ(unit.memory().firmware, std::vector<std::uint8_t>(2000, 'F'));
}

TEST_F(Cli, WrongUsageIsRefusedBeforeAnythingIsSent)
{
    unit.recordRequests();
    for (const char *words : {"",
                              "reset",
                              "info unit",
                              "backup",
                              "backup a b",
                              "show unit --banks 100",
                              "show unit --banks 9-0",
                              "show unit --banks 0,",
                              "show unit --banks +1",
                              "show unit --all",
                              "restore f --only knobs",
                              "restore f --only settings --banks 1",
                              "clear --yes",
                              "clear --all --banks 1 --yes",
                              "clear --all",
                              "copy 7 8.1",
                              "copy 7.10 8.1",
                              "swap 100 1",
                              "copy 1",
                              "compare - -",
                              "info --frob",
                              "info --wait 0",
                              "info --wait x",
                              "--port",
                              "firmware x"}) {
        const Result result = run(words);
        EXPECT_EQ(result.status, 2) << words;
        EXPECT_TRUE(result.out.empty() && result.err.starts_with("kora-cli: ")) << words;
    }
    EXPECT_TRUE(unit.takeRequests().empty());
}

TEST_F(Cli, EveryFailureHasItsStatus)
{
    backUpAndAlter();
    expect("info --port none --wait 1", 3, "", "No unit answers on none");
    expect("show none", 5, "", "none: No such file or directory");
    expect("compare a.kora /dev/null", 5, "", "/dev/null: line 1: illegal value");
    expect("backup /dev/full", 5, "", "full: No space left on device");
    const Result full = run("info", {}, "exec \"$0\" \"$@\" >/dev/full");
    EXPECT_EQ(full.status, 5);
    EXPECT_EQ(full.err, "kora-cli: standard output: No space left on device\n");
    EXPECT_EQ(run("info", {}, "exec \"$0\" \"$@\" >&-").status, 5);
    const Result piped = run("show unit", {}, "\"$0\" \"$@\" | head -1; exit ${PIPESTATUS[0]}");
    EXPECT_EQ(piped.status, 128 + SIGPIPE);
    EXPECT_EQ(piped.out + piped.err, "UNIT\n");

    unit.queueFault(Fault::silence(), 2);
    expect("backup b.kora", 4, "", "The unit could not be read: Receiving timeout");
    EXPECT_FALSE(QFile::exists(path("b.kora")));
    unit.queueFault(Fault::errorStatus(99, "Busy"), 1 + 1115 + 1);  // the search, the reading, one of two writes
    const std::string still = "DIFFERS STILL: BANK 3: NAME: CHANGED, not ÜBER DEN DÄCHERN\n";
    expect("restore a.kora --yes", 4, twoLines + still, "Busy: 1 of 2 values were written");
    unit.onExchange([this](const std::string &request, const std::string &) {
        if (request.find("WBB") != std::string::npos)
            unit.alter([](UnitMemory &memory) { memory.banks[3].name = "MINE"; });
    });
    expect("restore a.kora --yes --quiet", 1, "", "1 of 1 values differ still");

    // Without a safety copy nothing is written, unless none is wanted.
    EXPECT_TRUE(QDir(path("data")).removeRecursively() && QFile(path("data")).open(QIODevice::WriteOnly));
    EXPECT_EQ(run("clear --all --yes").status, 5);
    EXPECT_EQ(unit.memory().banks[0].name, saved.banks[0].name);
    EXPECT_EQ(run("clear --banks 0 --yes --no-safety-copy").status, 0);
    EXPECT_EQ(unit.memory().banks[0].name, "");
}

TEST_F(Cli, ASignalEndsItBetweenTwoExchanges)
{
    std::atomic<int> writes = 0;
    unit.onExchange([&](const std::string &request, const std::string &) {
        if (request.find("WBP") != std::string::npos && ++writes == 20) ::kill(child, SIGINT);
    });
    const Result result = run("clear --all --yes --json");
    EXPECT_EQ(result.status, 130);
    const QJsonObject told = QJsonDocument::fromJson(QByteArray::fromStdString(result.out)).object();
    const int written = told["written"].toInt(), planned = told["differences"].toArray().size();
    EXPECT_EQ(result.err, "kora-cli: Interrupted: " + std::to_string(written) + " of " + std::to_string(planned) +
                              " values were written\n");
    EXPECT_EQ(differences(unit.memory(), saved, allRecords()).size(), static_cast<std::size_t>(written));
    EXPECT_EQ(told["remaining"].toArray().size(), planned - written);
}

TEST_F(Cli, ATerminalIsAskedAndShownProgressButNoControlBytes)
{
    backUpAndAlter();
    for (const std::string answer : {"n\n", "y\n"}) {
        PseudoTerminal terminal;
        EXPECT_EQ(::write(terminal.master(), answer.data(), answer.size()), 2);
        const QString redirected = "exec \"$0\" \"$@\" <%1 2>%1";
        const Result result = run("restore a.kora", {}, redirected.arg(QString::fromStdString(terminal.location())));
        EXPECT_EQ(result.status, answer == "n\n" ? 1 : 0);
        EXPECT_EQ(unit.memory().banks[3].name, answer == "n\n" ? "CHANGED" : saved.banks[3].name);
        std::string shown(65536, '\0');
        shown.resize(
            static_cast<std::size_t>(std::max<ssize_t>(::read(terminal.master(), shown.data(), shown.size()), 0)));
        EXPECT_NE(shown.find("READING THE UNIT: 50 %"), std::string::npos) << shown;
        EXPECT_NE(shown.find("2 values differ in 1 bank, global settings. Write this to the unit on"),
                  std::string::npos);
    }

    unit.alter([](UnitMemory &memory) {
        memory.deviceInfo.firstText = memory.banks[3].name = memory.midiDevices[0].name =
            "\x1b[m\x07\x7f\xc2\x9b\xe2\x80\xae";
    });
    QFile file(path("\x1b.kora"));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) &&
                file.write(R"({"format": "kora-unit", "version": 1, "\u001b\u009b": 1})") > 0);
    file.close();
    for (const char *words : {"info", "info --json", "show unit", "show unit --json", "backup -", "compare a.kora",
                              "compare a.kora --json", "restore a.kora --yes", "show \x1b.kora", "info \x1b"}) {
        const Result result = run(words);
        for (const QChar character : QString::fromStdString(result.out + result.err))
            EXPECT_TRUE(character.isPrint() || character == '\n') << words << ' ' << character.unicode();
    }
}

TEST_F(Cli, CompletionKnowsCommandsOptionsPartsAndFiles)
{
    backUpAndAlter();
    const std::pair<const char *, const char *> lines[] = {{"c", "compare clear copy"},
                                                           {"--json re", "restore"},
                                                           {"clear --a", "--all"},
                                                           {"info --a", ""},
                                                           {"restore a", "a.kora"},
                                                           {"show un", "unit"},
                                                           {"--banks 7 sw", "swap"},
                                                           {"copy 1 ", ""},
                                                           {"restore --only settings,midi-d", "settings,midi-devices"}};
    for (const auto &[words, expected] : lines) {
        const Result result = run(words, {},
                                  "shift 2; COMP_WORDS=(\"$0\" \"$@\"); COMP_CWORD=$#; source " KORA_COMPLETION
                                  "; _kora_cli \"$0\"; echo \"${COMPREPLY[*]}\"");
        EXPECT_EQ(result.out, expected + std::string("\n")) << words;
    }
}
