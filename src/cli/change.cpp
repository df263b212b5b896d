#include "cli/change.h"

#include "cli/failure.h"
#include "cli/interrupt.h"
#include "controller/safetycopies.h"

#include <algorithm>

using namespace cli;

namespace {

/// How many of the planned differences do not remain.
int countWritten(const std::vector<Difference> &planned, const std::vector<Difference> &remaining)
{
    std::set<std::pair<RecordId, ValueId>> left;
    for (const Difference &difference : remaining)
        left.emplace(difference.record, difference.value);
    return static_cast<int>(std::ranges::count_if(planned, [&](const Difference &difference) {
        return !left.contains({difference.record, difference.value});
    }));
}

}  // namespace

Change::Change(const Arguments &given, Console &owner, ConnectedUnit &connected, UnitPart held)
    : arguments(given), console(owner), unit(connected), present(std::move(held))
{}

int Change::make(const UnitContent &wanted, const std::set<RecordId> &records)
{
    planned = DifferenceList(present.content, wanted, records).counted;
    if (planned.empty() || arguments.dryRun) {
        tell(0, planned);
        if (!planned.empty()) throw Failure{differs, summaryOfAll(planned)};
        console.report(summaryOfAll(planned));
        return done;
    }
    if (arguments.command == Command::Restore || arguments.command == Command::Clear)
        askFirst(arguments, console,
                 QStringLiteral("%1. Write this to the unit on %2?").arg(summaryOfAll(planned), unit.port()));
    saveSafetyCopy(arguments, console, present);
    write(wanted, records);
    return done;
}

void Change::write(const UnitContent &wanted, const std::set<RecordId> &records)
{
    UnitContent target = present.content;
    std::set<RecordId> touched;
    for (const Difference &difference : planned) {
        if (!difference.writable) continue;  // it remains, and is told
        apply(difference, target, wanted);
        touched.insert(difference.record);
    }
    const Transfer::Outcome outcome = unit.write(present, target, touched);
    const std::vector<Difference> remaining = DifferenceList(present.content, wanted, records).counted;
    const int written = countWritten(planned, remaining);
    tell(written, remaining);

    const QString count = QStringLiteral("%1 of %2 values were written").arg(written).arg(planned.size());
    if (outcome.failure) throw Failure{unitFailed, QString::fromStdString(*outcome.failure) + ": " + count};
    if (outcome.stopped) throw Failure{signalled + interrupt::caughtSignal(), QStringLiteral("Interrupted: ") + count};
    if (!remaining.empty())
        throw Failure{differs,
                      QStringLiteral("%1 of %2 values differ still").arg(remaining.size()).arg(planned.size())};
    console.report(QStringLiteral("%1 values were written and read back.").arg(written));
}

void Change::tell(int written, const std::vector<Difference> &remaining) const
{
    console.object({{"differences", toJson(planned)}, {"written", written}, {"remaining", toJson(remaining)}});
    for (const Difference &difference : planned)
        arguments.dryRun ? console.show(lineOf(difference)) : console.report(lineOf(difference));
    if (arguments.dryRun) return;
    for (const QString &line : remainingLines(remaining))
        console.report(QStringLiteral("DIFFERS STILL: ") + line);
}

void cli::requireAnswer(const Arguments &arguments)
{
    if (!arguments.yes && !Console::canAsk())
        throw Failure{wrongUsage, QStringLiteral("there is no terminal to ask on: --yes is needed")};
}

void cli::askFirst(const Arguments &arguments, Console &console, const QString &question)
{
    requireAnswer(arguments);
    if (!arguments.yes && !console.confirms(question)) throw Failure{differs, QStringLiteral("Nothing was written")};
}

void cli::saveSafetyCopy(const Arguments &arguments, Console &console, const UnitPart &part)
{
    if (arguments.noSafetyCopy) return;
    const QString problem = SafetyCopies().save(part, QDateTime::currentDateTime());
    if (problem.isEmpty()) return;
    const QString reason = QStringLiteral("What the unit holds could not be saved: %1").arg(problem);
    if (!Console::canAsk() || !console.confirms(reason + ". Go on without a safety copy?"))
        throw Failure{fileFailed, reason + "; nothing was written"};
}
