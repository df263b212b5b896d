#pragma once

#include <QString>

#include <functional>

/// A change that is worked out from what the unit holds by the time it is sent, as an edit made before the last one was
/// answered must be.
struct LateChange
{
    QString words;                  ///< for people: what it changes
    std::function<bool()> send;     ///< makes the request; false when what it builds on is not known any more
    std::function<void()> settled;  ///< called once the unit has taken or refused it, or it was given up
};

/// Hands a late change on to whoever asks the unit.
using Submit = std::function<void(const LateChange &change)>;

/// Sends at once; for a table that nobody has connected yet.
inline void submitAtOnce(const LateChange &change)
{
    change.send();
    change.settled();
}

/// What keeps an edit from being sent now, for people; empty when nothing does.
using Obstacle = std::function<QString()>;
