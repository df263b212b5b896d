#include "ui/shell/arranging.h"

#include "archive/unitfile.h"
#include "controller/recordslots.h"
#include "controller/requestqueue.h"
#include "model/places.h"
#include "ui/look.h"
#include "ui/message.h"
#include "ui/shell/unitfiles.h"

#include <QClipboard>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMenu>
#include <QMimeData>

namespace {

constexpr int slowAfter = 500;  // ms

QString mimeType() { return QStringLiteral("application/x-kora"); }

/// Only banks and presets.
UnitPart banksIn(UnitPart part)
{
    std::erase_if(part.records, [](const RecordId &id) {
        return id.kind != RecordId::Kind::Bank && id.kind != RecordId::Kind::Preset;
    });
    return part;
}

}  // namespace

Arranging::Arranging(RequestQueue &queue, DeviceController &unit, Window owner)
    : requests(queue), window(std::move(owner))
{
    slow.setSingleShot(true);
    slow.setInterval(slowAfter);
    connect(&slow, &QTimer::timeout, this, [this] {
        isBusyShown = true;
        window.showBusy(tr("CHANGING THE UNIT"));
    });
    connect(&unit, &DeviceController::arranged, this, &Arranging::arranged);
    connect(&queue, &RequestQueue::otherUnit, this, [this] { copied.clear(); });
}

// --- The clipboard

bool Arranging::isKnown(const std::set<RecordId> &selection) const
{
    return data && !selection.empty() && knownPart(*data, selection).records == selection;
}

void Arranging::copy(const std::set<RecordId> &selection)
{
    if (!isKnown(selection)) return;
    const QByteArray json = archive::toJson(knownPart(*data, selection), QDateTime::currentDateTimeUtc());
    auto *const held = new QMimeData;
    held->setData(mimeType(), json);
    held->setText(QString::fromUtf8(json));
    QGuiApplication::clipboard()->setMimeData(held);
    copiedText = QString::fromUtf8(json);
    copied = selection;
    isCut = false;
}

void Arranging::cut(const std::set<RecordId> &selection)
{
    copy(selection);
    isCut = isOwn() && copied == selection;
}

QByteArray Arranging::clipboardJson()
{
    const QMimeData *const held = QGuiApplication::clipboard()->mimeData();
    if (!held) return {};
    return held->hasFormat(mimeType()) ? held->data(mimeType()) : held->text().toUtf8();
}

bool Arranging::isOwn() const { return !copied.empty() && QString::fromUtf8(clipboardJson()) == copiedText; }

bool Arranging::canPaste() const { return clipboardJson().trimmed().startsWith('{'); }

void Arranging::paste(const RecordId &target)
{
    UnitPart part;
    try {
        part = banksIn(archive::fromJson(clipboardJson(), emptyContent()));
    } catch (const archive::Error &error) {
        return tell(QStringLiteral("PASTE"),
                    tr("The clipboard holds no presets: %1").arg(QString::fromUtf8(error.what())));
    }
    if (part.records.empty()) return tell(QStringLiteral("PASTE"), tr("The clipboard holds no presets."));
    const bool holdsBanks = part.records.begin()->kind == RecordId::Kind::Bank;
    if (holdsBanks != (target.kind == RecordId::Kind::Bank))
        return tell(QStringLiteral("PASTE"), holdsBanks ? tr("The clipboard holds banks. Paste them over a bank.")
                                                        : tr("The clipboard holds presets. Paste them over a preset."));
    const bool isMove = std::exchange(isCut, false) && isOwn();
    pastePart(part, target, isMove ? copied : std::set<RecordId>());
}

void Arranging::pastePart(const UnitPart &part, const RecordId &target, const std::set<RecordId> &cutRecords)
{
    if (const int left = arrange::leftOut(part.records, target);
        left > 0 && !asks(QStringLiteral("PASTE"), tr("%1 of them find no place behind the last one. "
                                                      "Paste the others?")
                                                       .arg(left)))
        return;
    make(arrange::paste(part, target, cutRecords));
}

bool Arranging::canSwap(const RecordId &target) const { return isOwn() && arrange::canSwap(copied, target); }

void Arranging::swap(const RecordId &target)
{
    if (!canSwap(target)) return;
    isCut = false;
    make(arrange::swap(copied, target));
}

// --- What is asked

void Arranging::clear(const std::set<RecordId> &selection)
{
    const Arrangement arrangement = arrange::clear(selection);
    if (!selection.empty() && asks(QStringLiteral("CLEAR"), tr("%1?").arg(arrangement.words))) make(arrangement);
}

void Arranging::insertEmptyBank(int at)
{
    const int last = bankCount - 1;
    if (hasContent({last}) && !asks(QStringLiteral("INSERT EMPTY BANK"),
                                    tr("%1 holds presets. It is pushed out and lost. Go on?").arg(places::bank(last))))
        return;
    make(arrange::insertEmptyBank(at));
}

void Arranging::removeBanks(const std::set<int> &banks)
{
    const Arrangement arrangement = arrange::removeBanks(banks);
    if (banks.empty() || (hasContent(banks) && !asks(QStringLiteral("REMOVE BANK"), tr("%1?").arg(arrangement.words))))
        return;
    make(arrangement);
}

bool Arranging::hasContent(const std::set<int> &banks) const
{
    const std::set<RecordId> records = recordsOfBanks(banks);
    const UnitPart part = data ? knownPart(*data, records) : UnitPart();
    return part.records != records || !differences(part.content, emptyContent(), records).empty();
}

void Arranging::showMenu(const RecordId &place, const QPoint &position, const QList<QAction *> &others)
{
    const std::set<RecordId> selection =
        place.kind == RecordId::Kind::Bank ? recordsOfBank(place.number) : std::set<RecordId>{place};
    QMenu menu(window.widget);
    menu.setStyleSheet(look::menuStyle());
    look::addHeading(menu, places::record(place));
    const auto add = [&](const char *text, bool enabled, auto act) {
        menu.addAction(QLatin1String(text), this, act)->setEnabled(enabled);
    };
    add("COPY", isKnown(selection), [&] { copy(selection); });
    add("PASTE", window.canChange() && canPaste(), [&] { paste(place); });
    add("SWAP", window.canChange() && canSwap(place), [&] { swap(place); });
    add("CLEAR", window.canChange(), [&] { clear(selection); });
    if (!others.isEmpty()) menu.addSeparator();
    menu.addActions(others);
    menu.exec(position);
}

// --- What is not

void Arranging::swapPresets(const RecordId &one, const RecordId &other)
{
    if (one != other) make(arrange::swap({one}, other));
}

void Arranging::copyPreset(const RecordId &from, const RecordId &to)
{
    if (from != to) make(arrange::copy({from}, to));
}

void Arranging::moveBanks(const std::set<int> &banks, int to)
{
    const Arrangement arrangement = arrange::moveBanks(banks, to);
    if (!arrangement.records.empty()) make(arrangement);
}

// --- Files

void Arranging::exportBanks(const std::set<int> &banks)
{
    if (banks.empty() || !data) return;
    const QString suggested =
        banks.size() == 1 ? QStringLiteral("bank-%1.kora").arg(*banks.begin()) : QStringLiteral("banks.kora");
    const QString path = QFileDialog::getSaveFileName(window.widget, tr("Export banks to a file"),
                                                      QDir::home().filePath(suggested), unitFileFilter());
    if (path.isEmpty()) return;
    try {
        archive::save(path, knownPart(*data, recordsOfBanks(banks)));
    } catch (const archive::Error &error) {
        tell(QStringLiteral("EXPORT"), QString::fromUtf8(error.what()));
    }
}

void Arranging::importBanks(int to)
{
    const QString path =
        QFileDialog::getOpenFileName(window.widget, tr("Import banks from a file"), QDir::homePath(), unitFileFilter());
    if (path.isEmpty()) return;
    try {
        const UnitPart part = banksIn(archive::load(path, emptyContent()));
        if (part.records.empty())
            return tell(QStringLiteral("IMPORT"), tr("%1 holds no banks.").arg(QFileInfo(path).fileName()));
        pastePart(part, {RecordId::Kind::Bank, to});
    } catch (const archive::Error &error) {
        tell(QStringLiteral("IMPORT"), QString::fromUtf8(error.what()));
    }
}

// --- Requests

void Arranging::make(const Arrangement &arrangement)
{
    requests.change({arrangement.words, [this, arrangement] {
                         slow.start();
                         requests.onWorker(&DeviceController::arrange, arrangement)();
                         return true;
                     }});
}

void Arranging::arranged(const ArrangementReport &report)
{
    slow.stop();
    if (std::exchange(isBusyShown, false)) window.hideBusy();
    if (report.failure.isEmpty() && !report.stopped && report.remaining.empty()) return;
    const int left = static_cast<int>(report.remaining.size());
    QStringList lines{report.words};
    if (!report.failure.isEmpty()) lines << report.failure;
    if (report.stopped) lines << tr("It was stopped.");
    if (left < report.values)
        lines << tr("%1 of %2 values were changed; undo takes them back.").arg(report.values - left).arg(report.values);
    else
        lines << tr("Nothing was changed.");
    lines << message::fitting(remainingLines(report.remaining));
    tell(QStringLiteral("CHANGE INCOMPLETE"), lines.join(QLatin1Char('\n')));
}

bool Arranging::asks(const QString &title, const QString &question)
{
    return message::ask(window.widget, title, question) == QMessageBox::Yes;
}

void Arranging::tell(const QString &title, const QString &text) { message::tell(window.widget, title, text); }
