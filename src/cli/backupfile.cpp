#include "cli/backupfile.h"

#include "archive/unitfile.h"
#include "cli/failure.h"
#include "cli/interrupt.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

using namespace cli;

namespace {

QString nameOf(const QString &path) { return path == QLatin1String("-") ? QStringLiteral("standard input") : path; }

}  // namespace

QByteArray cli::readFile(const QString &path, qint64 limit)
{
    // By the system's own calls: a signal ends the wait for input that does not come.
    const bool isInput = path == QLatin1String("-");
    const int descriptor = isInput ? STDIN_FILENO : ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    QByteArray bytes;
    char piece[1 << 16];
    ssize_t count = descriptor < 0 ? -1 : 1;
    while (count > 0 && bytes.size() <= limit) {
        count = ::read(descriptor, piece, sizeof piece);
        bytes.append(piece, static_cast<int>(std::max<ssize_t>(count, 0)));
    }
    const int problem = errno;
    if (descriptor >= 0 && !isInput) ::close(descriptor);
    interrupt::check();
    if (count < 0) throw Failure{fileFailed, nameOf(path) + ": " + std::strerror(problem)};
    return bytes;
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
