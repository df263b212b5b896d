#include "archive/unitfile.h"

#include <QFileInfo>
#include <QSaveFile>

namespace {

[[noreturn]] void refuse(const QString &path, const QString &reason)
{
    throw archive::Error((QFileInfo(path).fileName() + ": " + reason).toStdString());
}

}  // namespace

void archive::save(const QString &path, const UnitPart &part, const QDateTime &saved)
{
    const QByteArray json = toJson(part, saved);
    const QFileInfo present(path);
    if (present.exists() && !present.isFile() && !present.isDir()) {
        QFile file(path);
        const bool isOpen = file.open(QIODevice::WriteOnly | QIODevice::ExistingOnly);
        if (!isOpen || file.write(json) != json.size() || !file.flush()) refuse(path, file.errorString());
        return;
    }
    QSaveFile file(path);
    const bool isOpen = file.open(QIODevice::WriteOnly);
    if (isOpen) file.write(json);
    if (!isOpen || !file.commit()) refuse(path, file.errorString());
}

UnitPart archive::load(const QString &path, const UnitContent &base)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) refuse(path, file.errorString());
    const QByteArray json = file.read(maxFileSize + 1);
    if (file.error() != QFile::NoError) refuse(path, file.errorString());
    try {
        return fromJson(json, base);
    } catch (const Error &error) {
        refuse(path, QString::fromUtf8(error.what()));
    }
}
