#include "ui/shell/unitfiles.h"

#include "archive/unitfile.h"
#include "controller/recordslots.h"
#include "controller/requestqueue.h"
#include "model/places.h"
#include "ui/dialogs/differencesdialog.h"
#include "ui/message.h"
#include "ui/preview/sheets.h"

#include <QAction>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>

QString unitFileFilter() { return QObject::tr("KORA files (*.kora)"); }

UnitFiles::UnitFiles(RequestQueue &queue, DeviceController &unit, Window owner, SafetyCopies safetyCopies)
    : requests(queue), controller(unit), window(std::move(owner)), copies(std::move(safetyCopies))
{
    connect(&controller, &DeviceController::transferred, this, &UnitFiles::transferred);
}

void UnitFiles::fillMenus(QMenu &backup, QMenu &restore, QMenu &reset)
{
    const auto add = [this](QMenu &menu, const char *text, auto chosen) {
        entries.push_back(menu.addAction(QLatin1String(text), this, chosen));
    };
    add(backup, "WHOLE UNIT...", [this] {
        backUp(QStringLiteral("kora-%1.kora").arg(QDate::currentDate().toString(Qt::ISODate)), allRecords());
    });
    add(backup, "THIS BANK...", [this] {
        const int bank = window.shownBank();
        backUp(QStringLiteral("bank-%1.kora").arg(bank), recordsOfBank(bank));
    });
    add(restore, "FROM FILE...", [this] { restoreFrom(openPath(tr("Restore from file"))); });
    add(restore, "COMPARE WITH FILE...", [this] { compareWith(openPath(tr("Compare with file"))); });
    add(restore, "BEFORE THE LAST RESTORE...", [this] {
        QDir().mkpath(copies.folder());
        restoreFrom(openPath(tr("Restore a safety copy"), copies.folder()));
    });
    add(reset, "CLEAR THIS BANK...", [this] { clear(recordsOfBank(window.shownBank())); });
    add(reset, "CLEAR WHOLE UNIT...", [this] { clear(allRecords()); });
}

void UnitFiles::setEnabled(bool enabled)
{
    for (QAction *const entry : entries)
        entry->setEnabled(enabled);
}

void UnitFiles::cancel() { controller.stopTransfer(); }

// --- What the entries do

void UnitFiles::backUp(const QString &suggestedName, const std::set<RecordId> &records)
{
    const QString path = QFileDialog::getSaveFileName(window.widget, tr("Back up to file"),
                                                      QDir::home().filePath(suggestedName), unitFileFilter());
    if (path.isEmpty()) return;
    read(records, tr("READING THE UNIT"), [this, path](const TransferReport &report) {
        try {
            archive::save(path, *report.unit);
            tell(QStringLiteral("BACKUP COMPLETE"), tr("%1 holds %2 records of the unit.")
                                                        .arg(QFileInfo(path).fileName())
                                                        .arg(report.unit->records.size()));
        } catch (const archive::Error &error) {
            tell(QStringLiteral("Error"), QString::fromUtf8(error.what()), true);
        }
    });
}

void UnitFiles::restoreFrom(const QString &path)
{
    if (!load(path)) return;
    read(allRecords(), tr("READING THE UNIT"), [this, path](const TransferReport &report) {
        if (const auto part = load(path, report.unit->content)) offer(*report.unit, *part, QFileInfo(path).fileName());
    });
}

void UnitFiles::compareWith(const QString &path)
{
    if (!load(path)) return;
    read(allRecords(), tr("READING THE UNIT"), [this, path](const TransferReport &report) {
        if (const auto part = load(path, report.unit->content))
            DifferencesDialog(differences(report.unit->content, part->content, part->records),
                              DifferencesDialog::Purpose::Compare, QFileInfo(path).fileName(), window.widget)
                .exec();
    });
}

void UnitFiles::clear(const std::set<RecordId> &records)
{
    UnitPart empty{emptyContent(), records};
    empty.records.erase({RecordId::Kind::DeviceInfo});
    read(allRecords(), tr("READING THE UNIT"), [this, empty](const TransferReport &report) mutable {
        const ExpressionPedalData &held = report.unit->content.expressionPedal;
        ExpressionPedalData &pedal = empty.content.expressionPedal;  // its calibration is not what is cleared
        pedal.calibrationUp = held.calibrationUp;
        pedal.calibrationDown = held.calibrationDown;
        pedal.calibrationInversion = held.calibrationInversion;
        offer(*report.unit, empty, tr("EMPTY"));
    });
}

void UnitFiles::offer(const UnitPart &present, const UnitPart &part, const QString &name)
{
    DifferencesDialog dialog(differences(present.content, part.content, part.records),
                             DifferencesDialog::Purpose::Restore, name, window.widget);
    if (dialog.exec() == QDialog::Accepted && !dialog.chosen().empty()) write(present, dialog.chosen(), part.content);
}

void UnitFiles::write(const UnitPart &present, const std::vector<Difference> &chosen, const UnitContent &source)
{
    if (!isSafe(present)) return;
    auto wanted = std::make_shared<UnitContent>(present.content);
    std::set<RecordId> records;
    for (const Difference &difference : chosen) {
        apply(difference, *wanted, source);
        records.insert(difference.record);
    }
    window.showBusy(tr("WRITING TO THE UNIT"));
    waiting = [this, wanted, chosen](const TransferReport &report) { tellResult(report, *wanted, chosen); };
    requests.exclusive(requests.onWorker(&DeviceController::writeRecords,
                                         TransferOrder{std::make_shared<const UnitPart>(present), wanted, records}));
}

void UnitFiles::tellResult(const TransferReport &report, const UnitContent &wanted,
                           const std::vector<Difference> &chosen)
{
    std::set<RecordId> records;
    for (const Difference &difference : chosen)
        records.insert(difference.record);
    const std::vector<Difference> left = writableDifferences(report.unit->content, wanted, records);
    if (left.empty() && report.failure.isEmpty()) {
        tell(QStringLiteral("RESTORE COMPLETE"), tr("%1 values were written and read back.").arg(chosen.size()));
        return;
    }
    QStringList lines;
    if (!report.failure.isEmpty()) lines << report.failure;
    if (report.stopped) lines << tr("It was stopped.");
    lines << tr("%1 of %2 values differ still:").arg(left.size()).arg(chosen.size());
    lines << message::fitting(remainingLines(left));
    tell(QStringLiteral("RESTORE INCOMPLETE"), lines.join(QLatin1Char('\n')), true);
}

// --- Sheets

void UnitFiles::saveSheets(const std::set<int> &banks)
{
    if (banks.empty()) return;
    const QString name = banks.size() == 1 ? QStringLiteral("bank-%1.pdf").arg(*banks.begin()) : QString();
    saveSheetsOf(banks, name, [banks] { return banks; });
}

void UnitFiles::saveAllSheets()
{
    std::set<int> all;
    for (int bank = 0; bank < bankCount; ++bank)
        all.insert(bank);
    saveSheetsOf(all, QString(), [this] { return sheets::banksWithContent(*data); });
}

void UnitFiles::saveSheetsOf(const std::set<int> &banks, const QString &suggestedName,
                             std::function<std::set<int>()> chosen)
{
    const QString path = pathOfSheets(suggestedName);
    if (path.isEmpty()) return;
    std::set<RecordId> needed = recordsOfBanks(banks);
    needed.merge(allMidiDevices());  // the messages tell their names
    readUnknown(needed, [this, path, chosen = std::move(chosen)] { writeSheets(path, chosen()); });
}

void UnitFiles::writeSheets(const QString &path, const std::set<int> &banks)
{
    const QString problem = sheets::save(path, *data, banks, window.name(), QDate::currentDate());
    if (!problem.isEmpty()) return tell(QStringLiteral("Error"), problem, true);
    const QString shown = banks.size() == 1 ? places::bank(*banks.begin()) : tr("%1 banks").arg(banks.size());
    tell(QStringLiteral("SHEETS SAVED"), tr("%1 shows %2.").arg(QFileInfo(path).fileName(), shown));
}

QString UnitFiles::pathOfSheets(const QString &suggestedName)
{
    QFileDialog dialog(window.widget, tr("Save sheets"), QDir::homePath(), tr("PDF files (*.pdf)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("pdf"));
    dialog.selectFile(suggestedName.isEmpty() ? QStringLiteral("banks.pdf") : suggestedName);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

// --- Safety copies

bool UnitFiles::isSafe(const UnitPart &present)
{
    const QString problem = copies.save(present, QDateTime::currentDateTime());
    return problem.isEmpty() || asksToGoOn(problem);
}

void UnitFiles::protect(const std::function<void()> &then)
{
    window.showBusy(tr("MAKING A SAFETY COPY"));
    waiting = [this, then](const TransferReport &report) {
        if (report.stopped) return;
        const bool goesOn = report.failure.isEmpty() ? isSafe(*report.unit) : asksToGoOn(report.failure);
        if (goesOn) then();
    };
    requests.exclusive(requests.onWorker(&DeviceController::readRecords, allRecords()));
}

bool UnitFiles::asksToGoOn(const QString &why)
{
    return message::ask(window.widget, QStringLiteral("SAFETY COPY"),
                        tr("What the unit holds could not be saved: %1\nGo on without a safety copy?").arg(why), {},
                        QMessageBox::Warning) == QMessageBox::Yes;
}

// --- Files, reading, messages

QString UnitFiles::openPath(const QString &title, const QString &folder)
{
    return QFileDialog::getOpenFileName(window.widget, title, folder.isEmpty() ? QDir::homePath() : folder,
                                        unitFileFilter());
}

std::optional<UnitPart> UnitFiles::load(const QString &path, const UnitContent &base)
{
    if (path.isEmpty()) return std::nullopt;
    try {
        return archive::load(path, base);
    } catch (const archive::Error &error) {
        tell(QStringLiteral("Error"), QString::fromUtf8(error.what()), true);
        return std::nullopt;
    }
}

void UnitFiles::read(const std::set<RecordId> &records, const QString &busyText, Then then)
{
    if (!requests.isConnected())
        return tell(QStringLiteral("Error"), tr("The unit could not be read: %1").arg(tr("No unit is connected")),
                    true);
    window.showBusy(busyText);
    waiting = [this, then = std::move(then)](const TransferReport &report) {
        if (!report.failure.isEmpty())
            tell(QStringLiteral("Error"), tr("The unit could not be read: %1").arg(report.failure), true);
        else if (!report.stopped)
            then(report);
    };
    requests.exclusive(requests.onWorker(&DeviceController::readRecords, records));
}

void UnitFiles::readUnknown(std::set<RecordId> records, const std::function<void()> &then)
{
    if (data)
        for (const RecordId &known : knownPart(*data, records).records)
            records.erase(known);
    if (records.empty()) return then();
    read(records, tr("READING THE UNIT"), [this, then](const TransferReport &) {
        if (data) then();
    });
}

void UnitFiles::transferred(const TransferReport &report)
{
    window.hideBusy();
    if (const Then then = std::exchange(waiting, {})) then(report);
}

void UnitFiles::tell(const QString &title, const QString &text, bool isError)
{
    message::tell(window.widget, title, text, isError ? QMessageBox::Critical : QMessageBox::Information);
}
