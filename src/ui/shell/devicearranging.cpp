#include "ui/shell/devicearranging.h"

#include "archive/unitfile.h"
#include "controller/recordslots.h"
#include "model/midiuse.h"
#include "model/places.h"
#include "ui/look.h"
#include "ui/message.h"
#include "ui/shell/arranging.h"
#include "ui/shell/unitfiles.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>

namespace {

std::set<RecordId> recordOf(int device) { return {{RecordId::Kind::MidiDevice, device}}; }

/// Throws `archive::Error` if there is none.
MidiDevice deviceOnClipboard()
{
    return MyDevices::deviceIn(archive::fromJson(Arranging::clipboardJson(), emptyContent()));
}

}  // namespace

DeviceArranging::DeviceArranging(Arranging &arranger, UnitFiles &unitFiles, Window owner, MyDevices kept)
    : arranging(arranger), files(unitFiles), window(std::move(owner)), myDevices(std::move(kept))
{}

std::shared_ptr<const MidiDevice> DeviceArranging::stored(int device) const
{
    return data ? data->midiDevices.at(static_cast<std::size_t>(device) - 1).load() : nullptr;
}

std::optional<int> DeviceArranging::copiedDevice() const
{
    const std::set<RecordId> copied = arranging.ownCopy();
    if (copied.size() != 1 || copied.begin()->kind != RecordId::Kind::MidiDevice) return std::nullopt;
    const int number = copied.begin()->number;
    const auto now = stored(number);
    return now && *now == deviceOnClipboard() ? std::optional(number) : std::nullopt;
}

void DeviceArranging::showMenu(int device, const QPoint &position)
{
    QMenu menu(window.widget);
    menu.setStyleSheet(look::menuStyle());
    look::addHeading(menu, places::midiDevice(device));
    const auto add = [&](const char *text, bool enabled, auto act) {
        menu.addAction(QLatin1String(text), this, act)->setEnabled(enabled);
    };
    const bool isKnown = stored(device) != nullptr, canChange = window.canChange() && isKnown;
    const std::optional<int> copied = copiedDevice();
    add("COPY", isKnown, [&] { arranging.copy(recordOf(device)); });
    add("PASTE", canChange && arranging.canPaste(), [&] { paste(device); });
    add("SWAP", canChange && copied && *copied != device, [&] { swap(device); });
    menu.addSeparator();
    add("SAVE TO MY DEVICES", isKnown, [&] { save(device); });
    add("TAKE FROM MY DEVICES...", canChange, [&] { take(device); });
    menu.exec(position);
}

void DeviceArranging::paste(int device)
{
    const std::optional<int> from = copiedDevice();
    try {
        const MidiDevice definition = deviceOnClipboard();
        offer({device,
               [=](bool carriesAlong) {
                   return arrange::pasteDevice(definition, device, carriesAlong ? from : std::nullopt);
               },
               from, from.has_value() && *from != device});
    } catch (const archive::Error &error) {
        tell(QStringLiteral("PASTE"),
             tr("The clipboard holds no MIDI device: %1").arg(QString::fromUtf8(error.what())));
    }
}

void DeviceArranging::swap(int device)
{
    const std::optional<int> other = copiedDevice();
    if (!other || *other == device) return;
    offer({device, [=](bool carriesAlong) { return arrange::swapDevices(*other, device, carriesAlong); }, {}});
}

void DeviceArranging::reorderControllers(int device, const ControllerEdit &edit, const ControllerOrder &order)
{
    offer({device,
           [=](bool carriesAlong) { return arrange::reorderControllers(device, edit, order, carriesAlong); },
           {}});
}

// --- My devices

void DeviceArranging::save(int device)
{
    const auto definition = stored(device);
    if (!definition) return;
    const QString title = QStringLiteral("SAVE TO MY DEVICES");
    const QString name = QFileInfo(myDevices.pathFor(definition->name)).completeBaseName();
    if (QFileInfo::exists(myDevices.pathFor(definition->name)) &&
        asks(title, tr("My devices hold %1 already. Replace it?").arg(name), QMessageBox::Yes | QMessageBox::No,
             QMessageBox::No) != QMessageBox::Yes)
        return;
    if (const QString problem = myDevices.save(*definition); !problem.isEmpty()) tell(title, problem);
}

void DeviceArranging::take(int device)
{
    QDir().mkpath(myDevices.folder());
    const QString path =
        QFileDialog::getOpenFileName(window.widget, tr("Take from my devices"), myDevices.folder(), unitFileFilter());
    if (path.isEmpty()) return;
    try {
        const MidiDevice definition = MyDevices::deviceIn(archive::load(path, emptyContent()));
        offer({device, [=](bool) { return arrange::pasteDevice(definition, device); }, {}, false});
    } catch (const archive::Error &error) {
        tell(QStringLiteral("TAKE FROM MY DEVICES"),
             QStringLiteral("%1: %2").arg(QFileInfo(path).fileName(), QString::fromUtf8(error.what())));
    }
}

// --- What is asked

void DeviceArranging::offer(const Offer &offer)
{
    if (data) files.readUnknown(allRecords(), [this, offer] { ask(offer); });
}

void DeviceArranging::ask(const Offer &offer)
{
    if (!data) return;
    const UnitPart present = knownPart(*data, allRecords());
    const Arrangement alone = offer.arrangement(false), carrying = offer.arrangement(true);
    const arrange::Impact without = arrange::impactOf(alone, present.content);
    const arrange::Impact with = arrange::impactOf(carrying, present.content);
    const auto counts = [](const arrange::Impact &impact) {
        return tr("%1 values in %2 presets and the MIDI devices").arg(impact.values).arg(impact.presets);
    };
    if (offer.canCarry && with != without) {
        const auto answer = asks(alone.words,
                                 tr("CARRY ALONG WHAT PRESETS SEND?\n\nYes changes %1: they go on sending to the same "
                                    "device and controller.\nNo changes %2: presets keep numbers and positions, "
                                    "whatever stands there then.")
                                     .arg(counts(with), counts(without)),
                                 QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Yes);
        if (answer == QMessageBox::No) arranging.make(alone);
        if (answer != QMessageBox::Yes) return;
        if (!offer.carriedFrom || goesOnWith(arrange::collisions(present.content, *offer.carriedFrom, offer.device)))
            arranging.make(carrying);
        return;
    }
    QString text = tr("This changes %1.").arg(counts(without));
    if (const std::size_t uses = usesOf(present, {offer.device}).size(); uses > 0 && !offer.canCarry)
        text += QLatin1Char('\n') + tr("%1 presets send to %2. They keep its number and the positions of controllers.")
                                        .arg(uses)
                                        .arg(places::midiDevice(offer.device));
    if (without.values == 0)
        tell(alone.words, tr("Nothing would change."));
    else if (asks(alone.words, text + QLatin1Char('\n') + tr("Go on?"), QMessageBox::Yes | QMessageBox::No,
                  QMessageBox::Yes) == QMessageBox::Yes)
        arranging.make(alone);
}

bool DeviceArranging::goesOnWith(const QStringList &collisions)
{
    if (collisions.isEmpty()) return true;
    QStringList lines{tr("%1 messages that are carried along fall on one that is sent there already, which goes:")
                          .arg(collisions.size())};
    lines << message::fitting(collisions);
    lines << tr("Go on?");
    return asks(QStringLiteral("MESSAGES FALL TOGETHER"), lines.join(QLatin1Char('\n')),
                QMessageBox::Yes | QMessageBox::No, QMessageBox::No) == QMessageBox::Yes;
}

QMessageBox::StandardButton DeviceArranging::asks(const QString &title, const QString &text,
                                                  QMessageBox::StandardButtons buttons,
                                                  QMessageBox::StandardButton usual)
{
    return message::ask(window.widget, title, text, {buttons, usual});
}

void DeviceArranging::tell(const QString &title, const QString &text) { message::show(window.widget, title, text); }
