#pragma once

#include "model/unitcontent.h"

#include <QByteArray>
#include <QString>

namespace cli {

/// The bytes of a file, or of standard input ("-"), at most one more than `limit`. Throws `Failure`.
QByteArray readFile(const QString &path, qint64 limit);

/// A unit's file, read once. Throws `Failure` when it cannot be read or is none.
class BackupFile
{
public:
    explicit BackupFile(const QString &path);

    /// What it tells; what it leaves out is as in `base`.
    UnitPart part(const UnitContent &base = {}) const;
    /// For people.
    const QString &name() const { return title; }

private:
    QString title;
    QByteArray json;
};

/// Writes a unit's file. Throws `Failure`.
void writeBackup(const QString &path, const UnitPart &part);

}  // namespace cli
