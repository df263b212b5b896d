// The program as scripts run it: a process beside the virtual unit.

#include "archive/unitfile.h"
#include "model/differences.h"
#include "simulator/unitport.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <csignal>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

namespace {

// What a backup differs in from a unit that `backUpAndAlter` has altered.
const std::string twoLines = "SETTINGS: KEYBOARD TYPE: AZERTY -> QWERTY\nBANK 3: NAME: CHANGED -> ÜBER DEN DÄCHERN\n";
const std::string twoInAll = "2 values differ in 1 bank, global settings";

class Cli : public testing::Test
{
protected:
    Cli()
    {
        unit.alter([](UnitMemory &memory) { memory.expressionPedal.onTheFlyMode = false; });  // is never reported
        saved = unit.memory();
        qputenv("XDG_DATA_HOME", path("data").toUtf8());
        std::signal(SIGINT, SIG_DFL);
    }

    /// Runs the program with some words and returns its exit status; `shell` is what a shell makes of them.
    int run(const QString &words, const QByteArray &input = {}, const QString &shell = "exec \"$0\" \"$@\"")
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
        out = process.readAllStandardOutput().toStdString();
        err = process.readAllStandardError().toStdString();
        EXPECT_TRUE(err.empty() || (err.starts_with("kora-cli: ") && err.find('\n') == err.size() - 1)) << err;
        return process.exitCode();
    }
    void expect(const QString &words, int status, const std::string &output, const std::string &error = {})
    {
        EXPECT_EQ(run(words), status) << words.toStdString();
        EXPECT_EQ(out, output) << words.toStdString();
        EXPECT_EQ(err, error.empty() ? "" : "kora-cli: " + error + '\n');
    }
    QJsonObject object() const { return QJsonDocument::fromJson(QByteArray::fromStdString(out)).object(); }
    /// How many values the unit holds otherwise than expected; control changes may come in any order.
    std::size_t differing(const UnitContent &expected) const
    {
        return differences(unit.memory(), expected, allRecords()).size();
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
    UnitContent saved;             ///< what the unit holds at first
    std::string out, err;          ///< of the last run
    std::atomic<pid_t> child = 0;  ///< the one that runs
};

}  // namespace

TEST_F(Cli, InfoReadsNothingElseAndNeedsNoLibraryOfTheDesktop)
{
    const std::string port = unit.location();
    unit.recordRequests();
    expect("info", 0, "Port:      " + port + "\nTexts:     KORA, VIRTUAL UNIT\nFirmware:  1.4\nNumbers:   2, 1017\n");
    EXPECT_EQ(unit.takeRequests(), (std::vector<std::string>{"RDI", "RDI"}));
    run("--json info");
    EXPECT_EQ(object().keys().join(' '), "firmware numbers port texts");
    EXPECT_EQ(object()["texts"].toArray(), (QJsonArray{"KORA", "VIRTUAL UNIT"}));
    run("", {}, "ldd \"$0\" | grep -o 'libQt[56][A-Za-z]*' | cut -c 7- | sort -u");
    EXPECT_EQ(out, "Core\nSerialPort\n");
}

TEST_F(Cli, ABackupIsComparedAndRestored)
{
    backUpAndAlter();
    EXPECT_EQ(archive::load(path("a.kora")).content, saved);
    expect("compare a.kora --quiet", 1, twoLines, twoInAll);
    expect("restore a.kora --dry-run", 1, twoLines, twoInAll);
    expect("restore a.kora", 2, "", "there is no terminal to ask on: --yes is needed");
    expect("compare a.kora", 1, twoLines, twoInAll);
    const QJsonObject one{{"place", "SETTINGS: KEYBOARD TYPE"}, {"from", "AZERTY"}, {"to", "QWERTY"}};
    EXPECT_EQ(run("restore a.kora --json --only settings,midi-in --yes"), 0);
    EXPECT_EQ(object(), (QJsonObject{{"differences", QJsonArray{one}}, {"written", 1}, {"remaining", QJsonArray{}}}));
    expect("restore a.kora --banks 0-2,4 --yes", 0, "No value differs\n");
    EXPECT_EQ(run("restore - --yes --banks 3", {}, "exec \"$0\" \"$@\" <a.kora"), 0);
    EXPECT_EQ(differing(saved), 0U);
    expect("compare a.kora", 0, "No value differs\n");
    // The safety copies are where the editor looks for them; this one is from before both.
    const QDir copies(path("data/kora/safety"));
    EXPECT_EQ(run("restore --yes " + copies.filePath(copies.entryList({"kora-*-01.kora"}).value(0))), 0);
    expect("compare a.kora", 1, twoLines, twoInAll);
}

TEST_F(Cli, FilesAreComparedAndShownWithoutAUnit)
{
    backUpAndAlter();
    unit.alter([](UnitMemory &memory) { memory.expressionPedal.calibrationUp = 7; });
    EXPECT_EQ(run("backup b.kora"), 0);
    unit.unplug();
    const std::string apart = "SET ON THE UNIT, NOT COUNTED:\nEXPRESSION PEDAL: CALIBRATION UP VALUE: 7 -> 212\n";
    expect("compare b.kora a.kora", 1, twoLines + apart, twoInAll);
    // What a file leaves out is as in the other; what has no label stands as its number.
    const QByteArray part = R"({"format": "kora-unit", "version": 1, "expressionPedal": {"calibrationUp": 8},
        "midiDevices": [{"number": 2, "name": "ECHO"}], "banks": [{"number": 4, "name": "\u001b[m", "presets": [
        {"number": 5, "switches": ["ON", "OFF", "ON", 9, "ON", "ON"], "programChanges": [3, 7,)" +
                            QByteArray("null,").repeated(8).chopped(1) + R"(],
        "controlChanges": [{"device": 2, "controller": 20, "value": "TOGGLE"}]}]}]})";
    EXPECT_EQ(run("compare - a.kora --json", part), 1);
    EXPECT_EQ(object()["differences"].toArray().size(), 1 + 1 + 6 + 2 + 1);
    EXPECT_EQ(run("show - --banks 4", part), 0);
    EXPECT_TRUE(out.starts_with("BANK 4  \"\\x{1b}[m\"\n  WAH PAD 1 ACTION          ADD\n")) << out;
    const std::string lists = "SWITCH                    1 ON, 2 OFF, 3 ON, 4 9, 5 ON, 6 ON\n"
                              "    CONTROL CHANGE            ECHO CONTROLLER 20 TOGGLE\n"
                              "    PROGRAM CHANGE OF MIDI    MIDI 1 3, ECHO 7\n";
    EXPECT_NE(out.find(lists), std::string::npos) << out;
}

TEST_F(Cli, BanksAndPresetsAreCopiedSwappedAndCleared)
{
    for (const char *words : {"copy 7.3 8.0", "swap 9 10", "copy 11 12", "clear --banks 7 --yes"})
        EXPECT_EQ(run(words), 0) << words << err;
    saved.presets[8][0] = saved.presets[7][3];
    std::swap(saved.presets[9], saved.presets[10]);
    std::swap(saved.banks[9], saved.banks[10]);
    std::tie(saved.banks[12], saved.presets[12]) = std::tie(saved.banks[11], saved.presets[11]);
    std::tie(saved.banks[7], saved.presets[7]) = std::tuple(BankData(), UnitContent().presets[7]);
    EXPECT_EQ(differing(saved), 0U);
    EXPECT_EQ(run("clear --all --yes"), 0);
    EXPECT_EQ(differing(emptyContent()), 6U + 2U);  // the identity and the calibration
}

TEST_F(Cli, WrongUsageIsRefusedBeforeAnythingIsSent)
{
    unit.recordRequests();
    const QString usages =
        ";reset;info unit;backup;backup a b;show unit --banks 100;show unit --banks 9-0;show unit --banks 0,;"
        "show unit --banks +1;show unit --all;restore f --only knobs;restore f --only settings --banks 1;"
        "clear --yes;clear --all --banks 1 --yes;clear --all;copy 7 8.1;copy 7.10 8.1;swap 100 1;copy 1;"
        "compare - -;info --frob;info --wait 0;info --wait x;--port;firmware x";
    for (const QString &words : usages.split(';'))
        EXPECT_TRUE(run(words) == 2 && out.empty() && !err.empty()) << words.toStdString();
    EXPECT_TRUE(unit.takeRequests().empty());
}

TEST_F(Cli, EveryFailureHasItsStatus)
{
    backUpAndAlter();
    expect("info --port none --wait 1", 3, "", "No unit answers on none");
    expect("show none", 5, "", "none: No such file or directory");
    expect("compare a.kora /dev/null", 5, "", "/dev/null: line 1: illegal value");
    expect("backup /dev/full", 5, "", "full: No space left on device");
    EXPECT_EQ(run("info", {}, "exec \"$0\" \"$@\" >/dev/full"), 5);
    EXPECT_EQ(err, "kora-cli: standard output: No space left on device\n");
    EXPECT_EQ(run("show unit", {}, "\"$0\" \"$@\" | head -1; exit ${PIPESTATUS[0]}"), 128 + SIGPIPE);
    EXPECT_EQ(out + err, "UNIT\n");

    unit.queueFault(Fault::silence(), 2);
    expect("backup b.kora", 4, "", "The unit could not be read: Receiving timeout");
    EXPECT_FALSE(QFile::exists(path("b.kora")));
    unit.queueFault(Fault::errorStatus(99, "Busy"), 1 + 1115 + 1);  // the search, the reading, one of two writes
    const std::string still = "DIFFERS STILL: BANK 3: NAME: CHANGED, not ÜBER DEN DÄCHERN\n";
    expect("restore a.kora --yes", 4, twoLines + still, "Busy: 1 of 2 values were written");
    unit.onExchange([this](const std::string &request, const std::string &) {
        if (request.find("WBB") != std::string::npos) unit.alter([](auto &memory) { memory.banks[3].name = "MINE"; });
    });
    expect("restore a.kora --yes --quiet", 1, "", "1 of 1 values differ still");

    // Without a safety copy nothing is written, unless none is wanted.
    EXPECT_TRUE(QDir(path("data")).removeRecursively() && QFile(path("data")).open(QIODevice::WriteOnly));
    EXPECT_EQ(run("clear --all --yes"), 5);
    EXPECT_EQ(unit.memory().banks[0].name, saved.banks[0].name);
    EXPECT_EQ(run("clear --banks 0 --yes --no-safety-copy"), 0);

    EXPECT_EQ(run("firmware - --yes"), 5);
    EXPECT_EQ(run("firmware - --yes --no-safety-copy", QByteArray(983041, 'F')), 5);
    unit.queueFault(Fault::errorStatus(7, "Low\x1b[7m\nbattery"), 1 + 2);  // the search, two chunks
    EXPECT_EQ(run("firmware - --yes --no-safety-copy", QByteArray(2000, 'F')), 4);
    EXPECT_EQ(err, "kora-cli: Low\\x{1b}[7m\\x{0a}battery: the firmware was not installed, 2 of 4 chunks were sent\n");
    EXPECT_EQ(run("firmware - --yes --no-safety-copy", QByteArray(2000, 'F')), 0);
    EXPECT_EQ(unit.memory().firmware, std::vector<std::uint8_t>(2000, 'F'));
}

TEST_F(Cli, ASignalEndsItBetweenTwoExchanges)
{
    std::atomic<int> writes = 0;
    unit.onExchange([&](const std::string &request, const std::string &) {
        if (request.find("WBP") != std::string::npos && ++writes == 20) ::kill(child, SIGINT);
    });
    EXPECT_EQ(run("clear --all --yes --json"), 130);
    const int written = object()["written"].toInt();
    const int planned = static_cast<int>(object()["differences"].toArray().size());
    const QString told = QString("kora-cli: Interrupted: %1 of %2 values were written\n").arg(written).arg(planned);
    EXPECT_EQ(err, told.toStdString());
    EXPECT_EQ(differing(saved), static_cast<std::size_t>(written));
    EXPECT_EQ(object()["remaining"].toArray().size(), planned - written);
    // Also while it waits for input that does not come.
    EXPECT_EQ(run("show fifo", {}, "mkfifo fifo; \"$0\" \"$@\" & exec 3>fifo; kill $!; wait $!"), 128 + SIGTERM);
    EXPECT_EQ(err, "kora-cli: Interrupted: nothing was written\n");
}

TEST_F(Cli, ATerminalIsAskedAndShownProgressButNoControlBytes)
{
    backUpAndAlter();
    for (const std::string answer : {"n\n", "y\n"}) {
        PseudoTerminal terminal;
        EXPECT_EQ(::write(terminal.master(), answer.data(), answer.size()), 2);
        const QString shell = QString("exec \"$0\" \"$@\" <%1 2>%1").arg(terminal.location().c_str());
        EXPECT_EQ(run("restore a.kora", {}, shell), answer == "n\n" ? 1 : 0);
        EXPECT_EQ(differing(saved), answer == "n\n" ? 2U : 0U);
        std::string shown, question = "2 values differ in 1 bank, global settings. Write";
        for (pollfd some{terminal.master(), POLLIN, 0};
             shown.find(question) == std::string::npos && ::poll(&some, 1, 5000) > 0;) {
            std::array<char, 4096> piece;  // a terminal gives what it holds in pieces
            shown.append(piece.data(),
                         static_cast<std::size_t>(std::max(::read(some.fd, piece.data(), piece.size()), 0L)));
        }
        EXPECT_NE(shown.find("READING THE UNIT: 50 %"), std::string::npos) << shown;
        EXPECT_NE(shown.find(question), std::string::npos) << shown;
    }

    unit.alter([evil = "\x1b[m\x07\x7f\xc2\x9b\xe2\x80\xae"](UnitMemory &memory) {
        memory.deviceInfo.firstText = memory.banks[3].name = memory.midiDevices[0].name = evil;
    });
    run("", {}, "echo '{\"format\": \"kora-unit\", \"version\": 1, \"\\u001b\\u009b\": 1}' >\x1b.kora");
    for (const char *words : {"info", "info --json", "show unit", "show unit --json", "backup -", "compare a.kora",
                              "compare a.kora --json", "restore a.kora --yes", "show \x1b.kora", "info \x1b"}) {
        run(words);
        for (const QChar character : QString::fromStdString(out + err))
            EXPECT_TRUE(character.isPrint() || character == '\n') << words << ' ' << int{character.unicode()};
    }
}

TEST_F(Cli, CompletionKnowsCommandsOptionsPartsAndFiles)
{
    backUpAndAlter();
    for (const QString line :
         {"c=compare clear copy", "--json re=restore", "clear --a=--all", "info --a=", "restore a=a.kora",
          "show un=unit", "--banks 7 sw=swap", "copy 1 =", "restore f --only settings,midi-d=settings,midi-devices"}) {
        run(line.section('=', 0, 0), {},
            "shift 2; COMP_WORDS=(\"$0\" \"$@\"); COMP_CWORD=$#; source " KORA_COMPLETION
            "; _kora_cli \"$0\"; echo \"${COMPREPLY[*]}\"");
        EXPECT_EQ(out, line.section('=', 1).toStdString() + '\n') << line.toStdString();
    }
}
