#include "cli/connectedunit.h"

#include "cli/failure.h"
#include "cli/interrupt.h"
#include "controller/unitsearch.h"

#include <QDeadlineTimer>

using namespace cli;

namespace {

constexpr Timeouts timeouts;

QString search(const Arguments &arguments)
{
    PortLister ports = systemPortLocations;
    if (!arguments.port.isEmpty()) ports = [&] { return QStringList(arguments.port); };
    const QDeadlineTimer deadline(1000LL * arguments.wait);
    const auto stop = [&] { return interrupt::caughtSignal() != 0 || deadline.hasExpired(); };
    if (const auto location = findUnit(ports, stop, timeouts.probe, timeouts.searchPause)) return *location;
    interrupt::check();
    throw Failure{noUnit, arguments.port.isEmpty() ? QStringLiteral("No unit was found")
                                                   : QStringLiteral("No unit answers on %1").arg(arguments.port)};
}

}  // namespace

ConnectedUnit::ConnectedUnit(const Arguments &arguments, Console &owner)
    : console(owner), location(search(arguments)),
      unit(std::make_unique<KORA>(std::make_shared<Connection>(location, timeouts.working)))
{}

Transfer ConnectedUnit::transfer(const char *what)
{
    return Transfer(*unit, {[this, what](int done, int total) { console.progress(QLatin1String(what), done, total); },
                            [] { return interrupt::caughtSignal() != 0; }});
}

UnitPart ConnectedUnit::read(const std::set<RecordId> &records)
{
    UnitPart part;
    const Transfer::Outcome outcome = transfer("READING THE UNIT").read(part, records);
    console.hideProgress();
    if (outcome.stopped) interrupt::check();
    if (outcome.failure)
        throw Failure{unitFailed,
                      QStringLiteral("The unit could not be read: %1").arg(QString::fromStdString(*outcome.failure))};
    return part;
}

Transfer::Outcome ConnectedUnit::write(UnitPart &present, const UnitContent &wanted, const std::set<RecordId> &records)
{
    Transfer::Outcome outcome = transfer("WRITING TO THE UNIT").write(present, wanted, records);
    console.hideProgress();
    return outcome;
}
