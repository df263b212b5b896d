#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>

class QIODevice;

/// A line within the program: `Connection` finds it by its location, as it finds a serial port, and a unit that lives
/// in the same program answers at once. Destruction hangs up; from then on the line is silent.
class InnerLine
{
public:
    /// What the other end sends when it receives some bytes. It is called on the threads of the connections, once at a
    /// time, and not any more when the line has gone.
    using OtherEnd = std::function<QByteArray(const QByteArray &received)>;

    explicit InnerLine(OtherEnd otherEnd);
    ~InnerLine();
    InnerLine(const InnerLine &) = delete;
    InnerLine &operator=(const InnerLine &) = delete;

    /// "line 1 of the editor": no other line of the program ever has the same, and no port is called so.
    const QString &location() const { return place; }

    /// A closed device on the line of this location; null when there is none. May be called on any thread.
    static std::unique_ptr<QIODevice> deviceAt(const QString &location);

private:
    QString place;
};
