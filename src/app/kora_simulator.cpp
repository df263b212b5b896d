#include "simulator/statefile.h"
#include "simulator/stopsignals.h"
#include "simulator/unitport.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <map>
#include <stdexcept>

namespace {

const QString stateOption = QStringLiteral("state");
const QString faultOption = QStringLiteral("fault");
const QString linkOption = QStringLiteral("link");
const QString delayOption = QStringLiteral("delay");
const QString midiListsOption = QStringLiteral("midi-lists");

/// A faulty command line; what() tells which part.
struct UsageError : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

/// Reads "N:KIND" options: the number of the exchange, from 1, and the fault that spoils it.
std::map<std::size_t, Fault> parseFaults(const QStringList &options)
{
    std::map<std::size_t, Fault> faults;
    for (const QString &option : options) {
        bool isNumber = false;
        const uint exchange = option.section(':', 0, 0).toUInt(&isNumber);
        const auto fault = Fault::named(option.section(':', 1).toStdString());
        if (!isNumber || exchange == 0 || !fault || !faults.emplace(exchange, *fault).second)
            throw UsageError("--fault " + option.toStdString() + ": expected the number of an exchange and one of " +
                             Fault::names());
    }
    return faults;
}

/// Reads milliseconds, 0 to 60000.
std::chrono::milliseconds parseDelay(const QString &option)
{
    bool isNumber = false;
    const uint milliseconds = option.toUInt(&isNumber);
    if (!isNumber || milliseconds > 60000)
        throw UsageError("--delay " + option.toStdString() + ": expected a number from 0 to 60000");
    return std::chrono::milliseconds(milliseconds);
}

MidiLists parseMidiLists(const QString &option)
{
    if (option == QLatin1String("replace")) return MidiLists::Replace;
    if (option == QLatin1String("merge")) return MidiLists::Merge;
    throw UsageError("--midi-lists " + option.toStdString() + ": expected replace or merge");
}

void queueFaults(UnitPort &port, const std::map<std::size_t, Fault> &faults)
{
    std::size_t next = 1;
    for (const auto &[exchange, fault] : faults) {
        port.queueFault(fault, exchange - next);
        next = exchange + 1;
    }
}

/// A symbolic link to the port under a path of the user's choice, removed at the end.
class Link
{
public:
    explicit Link(std::filesystem::path path) : place(std::move(path)) {}
    Link(const Link &) = delete;
    Link &operator=(const Link &) = delete;
    ~Link() { remove(); }

    void pointTo(const std::string &target)
    {
        if (place.empty()) return;
        remove();
        std::filesystem::create_symlink(target, place);
    }

private:
    void remove() const
    {
        std::error_code ignored;
        if (std::filesystem::is_symlink(place, ignored)) std::filesystem::remove(place, ignored);
    }

    std::filesystem::path place;
};

void announce(const UnitPort &port, Link &link)
{
    link.pointTo(port.location());
    std::cout << port.location() << std::endl;
}

/// A frame with its control bytes by name in angle brackets, and a "<" doubled.
std::string shown(const std::string &frame)
{
    static const std::map<char, std::string> names{{control::stx, "STX"}, {control::etx, "ETX"}, {control::fs, "FS"},
                                                   {control::gs, "GS"},   {control::rs, "RS"},   {control::us, "US"}};
    std::string line;
    for (const char byte : frame) {
        const auto name = names.find(byte);
        const auto value = static_cast<unsigned char>(byte);
        if (name != names.end())
            line += '<' + name->second + '>';
        else if (value < 0x20 || value == 0x7F)
            line += "<0x" + QByteArray(1, byte).toHex().toUpper().toStdString() + '>';
        else
            line.append(byte == '<' ? 2 : 1, byte);
    }
    return line;
}

void print(const std::string &request, const std::string &response)
{
    std::cout << "PC >> " << shown(request) << '\n';
    if (!response.empty()) std::cout << "PC << " << shown(response) << '\n';
    std::cout << std::flush;
}

/// Serves until it is told to stop. A unit that hung up is plugged in again after two seconds.
void serve(UnitPort &port, Link &link, const StopSignals &stops)
{
    while (!stops.arriveWithin(std::chrono::seconds(2))) {
        if (port.location().empty()) {
            port.plugIn();
            announce(port, link);
        }
    }
}

int run(const QCommandLineParser &options)
{
    const QString stateFile = options.value(stateOption);
    const auto faults = parseFaults(options.values(faultOption));
    const auto delay = parseDelay(options.value(delayOption));
    const auto midiLists = parseMidiLists(options.value(midiListsOption));

    const StopSignals stops;  // before the unit's thread starts
    UnitPort port(QFile::exists(stateFile) ? loadState(stateFile) : musicianContent());
    Link link(options.value(linkOption).toStdString());
    queueFaults(port, faults);
    port.setDelay(delay);
    port.setMidiLists(midiLists);
    announce(port, link);
    port.onExchange(print);
    serve(port, link, stops);
    port.unplug();
    if (!stateFile.isEmpty()) saveState(stateFile, port.memory());
    return EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kora-simulator"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KORA_VERSION));
    QCommandLineParser options;
    options.setApplicationDescription(QStringLiteral(
        "A unit without hardware. Prints the path of its serial port, then every frame that the editor sends (PC >>) "
        "and receives (PC <<), until it is interrupted."));
    options.addHelpOption();
    options.addVersionOption();
    options.addOptions({
        {stateOption,
         QStringLiteral(
             "Read the unit's memory from FILE, as the editor's backups are, if it exists, and keep it there "
             "at the end. The firmware image lies beside it, in FILE.firmware."),
         QStringLiteral("FILE")},
        {faultOption,
         QStringLiteral("Spoil exchange number N (from 1); may be given several times. KIND is one of ") +
             QString::fromStdString(Fault::names()) + '.',
         QStringLiteral("N:KIND")},
        {delayOption, QStringLiteral("Give every answer MS milliseconds later (0 to 60000, default 0)."),
         QStringLiteral("MS"), QStringLiteral("0")},
        {midiListsOption,
         QStringLiteral("What control changes sent to a preset do to its list, which is not known of hardware: replace "
                        "it (the default), or merge into it, each for its own device and controller. MODE is replace "
                        "or merge."),
         QStringLiteral("MODE"), QStringLiteral("replace")},
        {linkOption, QStringLiteral("Keep a symbolic link to the port at PATH."), QStringLiteral("PATH")},
    });
    options.process(application);
    try {
        return run(options);
    } catch (const std::exception &error) {
        std::cerr << "kora-simulator: " << error.what() << std::endl;
        return EXIT_FAILURE;
    }
}
