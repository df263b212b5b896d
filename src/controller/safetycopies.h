#pragma once

#include "model/unitcontent.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

/// Copies of what a unit held before much of it was written over, so that this can be taken back. The newest 20 are
/// kept.
class SafetyCopies
{
public:
    static constexpr int kept = 20;

    explicit SafetyCopies(QString copiesFolder = usualFolder());

    /// "safety" in the user's own data folder.
    static QString usualFolder();

    const QString &folder() const { return place; }
    /// Saves a copy named for the moment. Returns why it could not be made; empty when it was.
    QString save(const UnitPart &part, const QDateTime &moment) const;
    /// The paths of the copies, the newest first.
    QStringList newestFirst() const;

private:
    QString place;
};
