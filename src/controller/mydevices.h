#pragma once

#include "model/unitcontent.h"

#include <QString>

/// Definitions of MIDI devices that the user keeps for all units: small files of a unit that hold one device each,
/// named for it.
class MyDevices
{
public:
    explicit MyDevices(QString devicesFolder = usualFolder());

    /// "devices" in the user's own data folder.
    static QString usualFolder();

    const QString &folder() const { return place; }
    /// Where a device of this name is kept. What no file name can carry becomes "_".
    QString pathFor(const std::string &name) const;
    /// Keeps a definition in place of one that has its path. Returns why it could not be kept; empty when it was.
    QString save(const MidiDevice &device) const;
    /// The first device that a file or the clipboard tells of. Throws `archive::Error` if there is none.
    static MidiDevice deviceIn(const UnitPart &part);

private:
    QString place;
};
