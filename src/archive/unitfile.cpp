#include "archive/unitfile.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

namespace {

[[noreturn]] void refuse(const QString &path, const QString &reason)
{
    throw archive::Error((QFileInfo(path).fileName() + ": " + reason).toStdString());
}

}  // namespace

QByteArray archive::readBytes(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) refuse(path, file.errorString());
    QByteArray bytes = file.read(maxFileSize + 1);
    if (file.error() != QFile::NoError) refuse(path, file.errorString());
    return bytes;
}

void archive::writeBytes(const QString &path, const QByteArray &bytes)
{
    const QFileInfo present(path);
    if (present.exists() && !present.isFile() && !present.isDir()) {
        QFile file(path);
        const bool isOpen = file.open(QIODevice::WriteOnly | QIODevice::ExistingOnly);
        if (!isOpen || file.write(bytes) != bytes.size() || !file.flush()) refuse(path, file.errorString());
        return;
    }
    QSaveFile file(path);
    const bool isOpen = file.open(QIODevice::WriteOnly);
    if (isOpen) file.write(bytes);
    if (!isOpen || !file.commit()) refuse(path, file.errorString());
}

void archive::save(const QString &path, const UnitPart &part, const QDateTime &saved)
{
    writeBytes(path, toJson(part, saved));
}

QString archive::trySaving(const QString &path, const UnitPart &part, const QDateTime &saved)
{
    const QString folder = QFileInfo(path).path();
    if (!QDir().mkpath(folder)) return QStringLiteral("%1 cannot be made").arg(folder);
    try {
        save(path, part, saved);
    } catch (const Error &error) {
        return QString::fromUtf8(error.what());
    }
    return {};
}

UnitPart archive::load(const QString &path, const UnitContent &base)
{
    const QByteArray json = readBytes(path);
    try {
        return fromJson(json, base);
    } catch (const Error &error) {
        refuse(path, QString::fromUtf8(error.what()));
    }
}
