#include "controller/safetycopies.h"

#include "archive/unitfile.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

SafetyCopies::SafetyCopies(QString copiesFolder) : place(std::move(copiesFolder)) {}

QString SafetyCopies::usualFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QStringLiteral("/safety");
}

QString SafetyCopies::save(const UnitPart &part, const QDateTime &moment) const
{
    const QString stem = place + QStringLiteral("/kora-") + moment.toString(QStringLiteral("yyyy-MM-dd-hhmmss"));
    int number = 1;  // within the second, so that the order of the names is that of the copies
    const auto path = [&] { return QStringLiteral("%1-%2.kora").arg(stem).arg(number, 2, 10, QLatin1Char('0')); };
    while (QFile::exists(path()))
        ++number;
    QString problem = archive::trySaving(path(), part, moment.toUTC());
    if (!problem.isEmpty()) return problem;
    const QStringList copies = newestFirst();
    for (const QString &old : copies.mid(kept))
        QFile::remove(old);
    return QString();
}

QStringList SafetyCopies::newestFirst() const
{
    QStringList paths;
    const QDir directory(place);
    for (const QString &name :
         directory.entryList({QStringLiteral("kora-*.kora")}, QDir::Files, QDir::Name | QDir::Reversed))
        paths << directory.filePath(name);
    return paths;
}
