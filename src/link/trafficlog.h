#pragma once

#include <QFile>
#include <QStringList>

#include <mutex>
#include <string>

/// The traffic log: lines on the debug output and in the file log.txt. Any thread may write, and editors that share the
/// file do not mix their lines.
///
/// The file lies in the first of some folders where it can be written; missing folders are made. Before a line takes it
/// over the limit it becomes log.1.txt, in place of the last one of that name, and a new file begins.
class TrafficLog
{
public:
    static constexpr qint64 defaultLimit = 10'000'000;  ///< bytes

    explicit TrafficLog(QStringList possibleFolders, qint64 fileLimit = defaultLimit);

    /// This process's log, in `usualFolders`.
    static TrafficLog &instance();
    /// The program's folder, then the user's own data folder: a package installs the program where nobody may write.
    static QStringList usualFolders();

    /// Writes the line without any "%s", to the file with "\r\n" behind it. A file that cannot be opened is left out
    /// silently, and so is a line that does not fit on the disk as a whole.
    void write(std::string line);

    /// From here to `release` the file stays open between lines. Calls may nest.
    void hold();
    void release();

private:
    bool openFor(qint64 lineSize);
    bool openIn(const QString &folder, qint64 lineSize);
    bool makeRoom(qint64 lineSize);
    bool hasRoom(qint64 lineSize) const { return file.size() == 0 || file.size() + lineSize <= limit; }

    const QStringList folders;
    const qint64 limit;
    std::mutex mutex;  // guards what follows
    QFile file;
    int holds = 0;
};
