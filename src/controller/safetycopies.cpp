#include "controller/safetycopies.h"

#include "archive/unitfile.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <algorithm>

SafetyCopies::SafetyCopies(QString copiesFolder) : place(std::move(copiesFolder)) {}

QString SafetyCopies::usualFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QStringLiteral("/safety");
}

QString SafetyCopies::save(const UnitPart &part, const QDateTime &moment) const
{
    const QString stem = place + QStringLiteral("/kora-") + moment.toString(QStringLiteral("yyyy-MM-dd-hhmmss"));
    QString path = stem + QStringLiteral(".kora");
    for (int number = 2; QFile::exists(path); ++number)
        path = QStringLiteral("%1-%2.kora").arg(stem).arg(number, 2, 10, QLatin1Char('0'));
    if (!QDir().mkpath(place)) return QStringLiteral("%1 cannot be made").arg(place);
    try {
        archive::save(path, part, moment.toUTC());
    } catch (const archive::Error &error) {
        return QString::fromUtf8(error.what());
    }
    const QStringList copies = newestFirst();
    for (const QString &old : copies.mid(kept))
        QFile::remove(old);
    return QString();
}

QStringList SafetyCopies::newestFirst() const
{
    // Without the extension: copies of the same second are told apart by a number behind it.
    QStringList paths = QDir(place).entryList({QStringLiteral("kora-*.kora")}, QDir::Files);
    std::sort(paths.begin(), paths.end(), [](const QString &one, const QString &other) {
        return one.section('.', 0, -2) > other.section('.', 0, -2);
    });
    for (QString &path : paths)
        path = QDir(place).filePath(path);
    return paths;
}
