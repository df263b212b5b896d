#include "link/trafficlog.h"

#include "protocol/converter.h"

#include <QCoreApplication>
#include <QDir>
#include <QLockFile>
#include <QStandardPaths>

#include <algorithm>

TrafficLog::TrafficLog(QStringList possibleFolders, qint64 fileLimit)
    : folders(std::move(possibleFolders)), limit(fileLimit)
{}

TrafficLog &TrafficLog::instance()
{
    static TrafficLog log(usualFolders());
    return log;
}

QStringList TrafficLog::usualFolders()
{
    return {QCoreApplication::applicationDirPath(), QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)};
}

void TrafficLog::write(std::string line)
{
    Converter::eraseAllSubStr(line, "%s");
    qDebug("%s", line.c_str());
    line += "\r\n";
    const auto size = static_cast<qint64>(line.size());

    const std::lock_guard lock(mutex);
    if (!openFor(size)) return;
    // Unbuffered, a line is one write: two editors that share the file do not mix their lines.
    const qint64 written = file.write(line.data(), size);
    if (written > 0 && written < size) file.resize(file.size() - written);  // disk full: no half lines
    if (holds == 0) file.close();
}

void TrafficLog::hold()
{
    const std::lock_guard lock(mutex);
    ++holds;
}

void TrafficLog::release()
{
    const std::lock_guard lock(mutex);
    if (--holds == 0) file.close();
}

bool TrafficLog::openFor(qint64 lineSize)
{
    if (file.isOpen() && hasRoom(lineSize)) return true;
    return std::ranges::any_of(folders, [&](const QString &folder) { return openIn(folder, lineSize); });
}

bool TrafficLog::openIn(const QString &folder, qint64 lineSize)
{
    file.close();  // a file that has become full may have been moved by another editor: the name counts
    file.setFileName(folder + "/log.txt");
    return QDir().mkpath(folder) && makeRoom(lineSize) &&
           file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered);
}

bool TrafficLog::makeRoom(qint64 lineSize)
{
    if (hasRoom(lineSize)) return true;
    // One editor at a time: who comes second finds the new file and leaves the old one alone.
    QLockFile moving(file.fileName() + ".lock");
    if (!moving.tryLock(1000)) return false;
    if (hasRoom(lineSize)) return true;
    const QString old = QFileInfo(file).path() + "/log.1.txt";
    QFile::remove(old);
    return QFile::rename(file.fileName(), old);
}
