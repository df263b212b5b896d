#include "cli/backupfile.h"
#include "cli/change.h"
#include "cli/commands.h"
#include "cli/failure.h"
#include "cli/interrupt.h"
#include "model/arrangement.h"
#include "protocol/failure.h"

#include <algorithm>

using namespace cli;

namespace {

/// What is read before `records` are written: the whole unit if a safety copy is made of it.
const std::set<RecordId> &recordsToRead(const Arguments &arguments, const std::set<RecordId> &records)
{
    return arguments.noSafetyCopy || arguments.dryRun ? records : allRecords();
}

RecordId recordOf(const Slot &slot)
{
    using Kind = RecordId::Kind;
    return slot.preset ? RecordId{Kind::Preset, slot.bank, *slot.preset} : RecordId{Kind::Bank, slot.bank};
}

/// The records of a bank, or of one preset.
std::set<RecordId> recordsOf(const Slot &slot)
{
    return slot.preset ? std::set<RecordId>{recordOf(slot)} : recordsOfBank(slot.bank);
}

/// Uploads an image and counts the chunks that the unit takes; what it failed with, or nothing.
std::optional<std::string> upload(KORA &unit, const QByteArray &image, Console &console, int &sent)
{
    auto failure = caught([&] {
        unit.installFirmware({image.begin(), image.end()}, [&](int chunk, int total) {
            sent = chunk;
            console.progress(QStringLiteral("SENDING THE FIRMWARE"), chunk, total);
            if (interrupt::caughtSignal() != 0) fail("Interrupted");
        });
    });
    console.hideProgress();
    return failure;
}

}  // namespace

int cli::restore(const Arguments &arguments, Console &console)
{
    const BackupFile file(arguments.operands[0]);
    const std::set<RecordId> records = arguments.covered(file.part().records);
    if (records.empty()) throw Failure{fileFailed, file.name() + ": tells nothing of what is to be restored"};
    ConnectedUnit unit(arguments, console);
    const UnitPart present = unit.read(recordsToRead(arguments, records));
    return Change(arguments, console, unit, present).make(file.part(present.content).content, records);
}

int cli::clear(const Arguments &arguments, Console &console)
{
    requireAnswer(arguments);
    std::set<RecordId> records = arguments.covered(allRecords());
    records.erase({RecordId::Kind::DeviceInfo});
    ConnectedUnit unit(arguments, console);
    return Change(arguments, console, unit, unit.read(recordsToRead(arguments, records))).make(emptyContent(), records);
}

int cli::copyOrSwap(const Arguments &arguments, Console &console)
{
    const Slot first = parseSlot(arguments.operands[0]), second = parseSlot(arguments.operands[1]);
    const bool isSwap = arguments.command == Command::Swap;
    const Arrangement arrangement =
        isSwap ? arrange::swap(recordsOf(first), recordOf(second)) : arrange::copy(recordsOf(first), recordOf(second));
    ConnectedUnit unit(arguments, console);
    UnitPart present = unit.read(arrangement.records);
    UnitContent wanted = present.content;
    arrangement.alter(wanted);
    if (!isSwap) present.records = recordsOf(second);  // the safety copy is of what is written over
    const std::set<RecordId> written = present.records;
    return Change(arguments, console, unit, std::move(present)).make(wanted, written);
}

int cli::firmware(const Arguments &arguments, Console &console)
{
    const QString &path = arguments.operands[0];
    requireAnswer(arguments);
    const QByteArray image = readFile(path, static_cast<qint64>(KORA::maxFirmwareSize));
    if (image.isEmpty()) throw Failure{fileFailed, path + ": the firmware image is empty"};
    if (image.size() > static_cast<int>(KORA::maxFirmwareSize))
        throw Failure{fileFailed, path + ": the firmware image is too large"};
    ConnectedUnit unit(arguments, console);
    askFirst(arguments, console,
             QStringLiteral("Send %1 bytes of firmware to the unit on %2?").arg(image.size()).arg(unit.port()));
    if (!arguments.noSafetyCopy) saveSafetyCopy(arguments, console, unit.read(allRecords()));

    int sent = 0;
    const auto failure = interrupt::caughtSignal() != 0 ? "Interrupted" : upload(unit.device(), image, console, sent);
    if (failure) {
        const int number = interrupt::caughtSignal();
        throw Failure{number != 0 ? signalled + number : unitFailed,
                      QStringLiteral("%1: the firmware was not installed, %2 of %3 chunks were sent")
                          .arg(QString::fromStdString(*failure))
                          .arg(sent)
                          .arg((image.size() + KORA::firmwareChunkSize - 1) / KORA::firmwareChunkSize)};
    }
    console.object({{"bytes", image.size()}});
    console.report(
        QStringLiteral("%1 bytes were sent. The unit restarts and installs the new firmware.").arg(image.size()));
    return done;
}
