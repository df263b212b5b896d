#pragma once

#include "model/unitcontent.h"

#include <QString>

#include <functional>
#include <list>
#include <utility>

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

/// The edits of one table that the unit has not answered yet.
template <typename Edit>
class LateEdits
{
public:
    void setSubmit(Submit submitter, Obstacle obstacle)
    {
        submitChange = std::move(submitter);
        outerObstacle = std::move(obstacle);
    }

    /// What keeps an edit from being sent now, for people; empty when nothing does.
    QString obstacle() const { return outerObstacle(); }

    /// A record as it is once the edits have been taken that wait for it.
    template <typename Record>
    Record expected(const RecordId &id, Record stored) const
    {
        for (const auto &[other, edit] : waiting)
            if (other == id) stored = edit.appliedTo(std::move(stored));
        return stored;
    }

    /// Hands an edit of a record on; `send` makes its requests when its turn has come.
    void submit(const QString &words, const RecordId &id, const Edit &edit, std::function<bool()> send)
    {
        const auto place = waiting.insert(waiting.end(), {id, edit});
        submitChange({words, std::move(send), [this, place] { waiting.erase(place); }});
    }

private:
    std::list<std::pair<RecordId, Edit>> waiting;
    Submit submitChange = submitAtOnce;
    Obstacle outerObstacle = [] { return QString(); };
};
