#include "cli/backupfile.h"

#include "archive/unitfile.h"
#include "cli/console.h"
#include "cli/failure.h"
#include "cli/interrupt.h"

#include <QFile>

using namespace cli;

namespace {

QString nameOf(const QString &path) { return path == QLatin1String("-") ? QStringLiteral("standard input") : path; }

}  // namespace

QByteArray cli::readFile(const QString &path, qint64 limit)
{
    return interrupt::await([=] {
        QFile file(path);
        const bool isOpen =
            path == QLatin1String("-") ? file.open(standardInput, QIODevice::ReadOnly) : file.open(QIODevice::ReadOnly);
        QByteArray bytes;
        for (QByteArray piece; isOpen && !(piece = file.read(limit + 1 - bytes.size())).isEmpty();)
            bytes += piece;
        if (file.error() != QFile::NoError) throw Failure{fileFailed, nameOf(path) + ": " + file.errorString()};
        return bytes;
    });
}

BackupFile::BackupFile(const QString &path) : title(nameOf(path)), json(readFile(path, archive::maxFileSize))
{
    static_cast<void>(part());
}

UnitPart BackupFile::part(const UnitContent &base) const
{
    try {
        return archive::fromJson(json, base);
    } catch (const archive::Error &error) {
        throw Failure{fileFailed, title + ": " + QString::fromUtf8(error.what())};
    }
}

void cli::writeBackup(const QString &path, const UnitPart &part)
{
    try {
        archive::save(path, part);
    } catch (const archive::Error &error) {
        throw Failure{fileFailed, QString::fromUtf8(error.what())};
    }
}
