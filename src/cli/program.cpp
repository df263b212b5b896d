#include "cli/program.h"

#include "cli/commands.h"
#include "cli/console.h"
#include "cli/failure.h"
#include "cli/interrupt.h"
#include "model/qtversions.h"

#include <QCoreApplication>

#include <clocale>

using namespace cli;

namespace {

int execute(const Arguments &arguments, Console &console)
{
    switch (arguments.command) {
    case Command::Help:
        console.content(helpText().toUtf8());
        return done;
    case Command::Version:
        console.show(versionText());
        return done;
    case Command::Info:
        return info(arguments, console);
    case Command::Backup:
        return backup(arguments, console);
    case Command::Restore:
        return restore(arguments, console);
    case Command::Compare:
        return compare(arguments, console);
    case Command::Show:
        return show(arguments, console);
    case Command::Clear:
        return clear(arguments, console);
    case Command::Copy:
    case Command::Swap:
        return copyOrSwap(arguments, console);
    case Command::Firmware:
        break;
    }
    return firmware(arguments, console);
}

/// Runs `work`, which returns a status; tells what it failed with.
template <typename Work>
int statusOf(Work work)
{
    try {
        return work();
    } catch (const Failure &failure) {
        Console::error(failure.reason);
        return failure.status;
    }
}

}  // namespace

int cli::run(int argc, char **argv)
{
    occupyStandardStreams();
    interrupt::install();
    readArgumentsAsUtf8();
    // What Qt has to say is no line of this program.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    const QCoreApplication application(argc, argv);
    std::setlocale(LC_ALL, "C");
    QCoreApplication::setApplicationName(QStringLiteral("kora"));  // as the editor's: names the user's data folder

    return statusOf([] {
        const Arguments arguments = parseArguments(QCoreApplication::arguments());
        Console console(arguments.json, arguments.quiet);
        // Results come before the line that says what went wrong, also when it did.
        Failure failure{done, {}};
        try {
            failure.status = execute(arguments, console);
        } catch (const Failure &thrown) {
            failure = thrown;
        }
        const int output = statusOf([&] {
            console.flush();
            return done;
        });
        Console::error(failure.reason);
        return output != done && failure.status <= differs ? output : failure.status;
    });
}
